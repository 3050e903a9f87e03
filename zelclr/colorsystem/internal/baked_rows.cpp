// Compiled once for each instruction set that is worth having; the best one that the processor has runs.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "zelclr/colorsystem/internal/baked_rows.cpp"
#include "zelclr/colorsystem/internal/baked_rows.h"

#include "zelclr/platform/internal/each_target.h"
#include "zelclr/platform/internal/pixel_rows-inl.h"

#include <algorithm>
#include <array>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace ColorSystem {
namespace HWY_NAMESPACE {

using Internal::BakedMatrix;
using Internal::BakedPixels;
using Internal::BakedTable;
constexpr std::size_t kBlock = 128; // pixels: a multiple of every vector's length
namespace hn = hwy::HWY_NAMESPACE;

// A block of pixels goes through four steps, each over arrays that stay in the first-level cache, and each a function
// of its own: what all of them together would make is more than compilers take in their stride.
//
//   packed samples -> planes of samples -> places (a node, the way to its neighbours, their weights)
//                  -> sums of four lanes to a pixel -> packed samples

// --- Samples into planes ---------------------------------------------------------------------------------------------

template <class Sample>
using Planes = Sample[5][kBlock];

template <class Sample>
void TakeApart(const Sample *HWY_RESTRICT packed, unsigned channels, Planes<Sample> &planes)
{
  const hn::ScalableTag<Sample> d;
  using V = hn::Vec<decltype(d)>;
  if (channels == 3) {
    for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
      V a, b, c;
      hn::LoadInterleaved3(d, packed + 3 * i, a, b, c);
      hn::Store(a, d, planes[0] + i);
      hn::Store(b, d, planes[1] + i);
      hn::Store(c, d, planes[2] + i);
    }
  } else if (channels == 4) {
    for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
      V a, b, c, e;
      hn::LoadInterleaved4(d, packed + 4 * i, a, b, c, e);
      hn::Store(a, d, planes[0] + i);
      hn::Store(b, d, planes[1] + i);
      hn::Store(c, d, planes[2] + i);
      hn::Store(e, d, planes[3] + i);
    }
  } else {
    for (std::size_t i = 0; i < kBlock; ++i)
      for (unsigned channel = 0; channel < channels; ++channel)
        planes[channel][i] = packed[i * channels + channel];
  }
}

// --- Places ----------------------------------------------------------------------------------------------------------

/// The weights of a pixel's nodes add up to this: 255, as samples of 8 bits divide a cell without a remainder, or 2^13.
template <class Sample>
constexpr int kOne = std::is_same_v<Sample, std::uint8_t> ? 255 : 8192;

/// Where a block's pixels are in the grid. Nodes are numbered from the first; `steps` lead from the pixel's first node
/// to those between it and the opposite corner of the cell.
template <int kInputs>
struct Places
{
  alignas(64) std::uint32_t first[kBlock];
  alignas(64) std::uint16_t steps[kInputs > 1 ? kInputs - 1 : 1][kBlock];
  alignas(64) std::uint16_t weights[4 * kBlock]; // of the first four nodes, or of two of them
  alignas(64) std::uint16_t last[2 * kBlock];    // of the fifth, and nothing
};

/// The cell of samples along one input, and how far into it, of kOne. Full scale is the end of the last cell.
template <class D16, class V = hn::Vec<D16>>
HWY_INLINE void CellOf(D16 d, const std::uint8_t *samples, unsigned cells, V &cell, V &fraction)
{
  const hn::Rebind<std::uint8_t, D16> d8;
  const V place = hn::Mul(hn::PromoteTo(d, hn::Load(d8, samples)), hn::Set(d, static_cast<std::uint16_t>(cells)));
  const V quotient = hn::ShiftRight<7>(hn::MulHigh(place, hn::Set(d, 0x8081))); // by 255
  cell = hn::Min(quotient, hn::Set(d, static_cast<std::uint16_t>(cells - 1)));
  fraction = hn::Sub(place, hn::Mul(cell, hn::Set(d, 255)));
}

template <class D16, class V = hn::Vec<D16>>
HWY_INLINE void CellOf(D16 d, const std::uint16_t *samples, unsigned cells, V &cell, V &fraction)
{
  const V sample = hn::Load(d, samples);
  const V factor = hn::Set(d, static_cast<std::uint16_t>(cells));
  const V high = hn::MulHigh(sample, factor);
  const V low = hn::Mul(sample, factor);
  // From 65535ths to 65536ths of a cell: sample * cells * (1 + 1/65536), rounded.
  const V more = hn::Add(high, hn::ShiftRight<15>(low));
  const V rest = hn::Add(low, more);
  const V carry = hn::VecFromMask(d, hn::Lt(rest, low)); // all ones, which is -1
  const V quotient = hn::Sub(high, carry);
  const auto isEnd = hn::Eq(quotient, factor);
  cell = hn::Add(quotient, hn::VecFromMask(d, isEnd));
  fraction = hn::IfThenElse(isEnd, hn::Set(d, kOne<std::uint16_t>), hn::ShiftRight<3>(rest));
}

/// Puts the larger of two keys first.
template <class V>
HWY_INLINE void Order(V &a, V &b)
{
  const V larger = hn::Max(a, b);
  b = hn::Min(a, b);
  a = larger;
}

/// A way of table.grid^power nodes.
constexpr std::uint16_t Way(unsigned grid, int power)
{
  unsigned way = 1;
  for (int i = 0; i < power; ++i)
    way *= grid;
  return static_cast<std::uint16_t>(way);
}

/// The way along the input that a key names in its two low bits.
template <int kInputs, class D16, class V = hn::Vec<D16>>
HWY_INLINE V WayOf(D16 d, V key, unsigned grid)
{
  const V input = hn::And(key, hn::Set(d, 3));
  V way = hn::Set(d, 1); // along the last
  for (int i = 0; i < kInputs - 1; ++i)
    way = hn::IfThenElse(hn::Eq(input, hn::Set(d, static_cast<std::uint16_t>(i))),
                         hn::Set(d, Way(grid, kInputs - 1 - i)), way);
  return way;
}

template <int kInputs, class Sample>
void FindPlaces(const Planes<Sample> &planes, unsigned grid, Places<kInputs> &places)
{
  const hn::ScalableTag<std::uint16_t> d;
  using V = hn::Vec<decltype(d)>;
  const V one = hn::Set(d, kOne<Sample>);
  const V nodes = hn::Set(d, static_cast<std::uint16_t>(grid));

  // The first inputs' share of a node's number, and that of the others.
  alignas(64) std::uint16_t highs[kBlock];
  alignas(64) std::uint16_t lows[kBlock];

  for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
    V cells[kInputs];
    V keys[kInputs]; // how far into the cell, and along which input
    for (int input = 0; input < kInputs; ++input) {
      CellOf(d, planes[input] + i, grid - 1, cells[input], keys[input]);
      keys[input] = hn::Or(hn::ShiftLeft<2>(keys[input]), hn::Set(d, static_cast<std::uint16_t>(input)));
    }

    hn::Store(kInputs == 1 ? hn::Zero(d) : hn::Add(hn::Mul(cells[0], nodes), cells[1 % kInputs]), d, highs + i);
    hn::Store(kInputs == 4 ? hn::Add(hn::Mul(cells[2 % kInputs], nodes), cells[3 % kInputs])
                           : cells[kInputs / 2 * 2 % kInputs],
              d, lows + i);

    const auto into = [](V key) HWY_ATTR { return hn::ShiftRight<2>(key); };
    if constexpr (kInputs == 1) {
      const V far = into(keys[0]);
      hn::StoreInterleaved2(hn::Sub(one, far), far, d, places.weights + 2 * i);
    } else if constexpr (kInputs == 3) {
      Order(keys[0], keys[1]);
      Order(keys[1], keys[2]);
      Order(keys[0], keys[1]);
      const V a = into(keys[0]), b = into(keys[1]), c = into(keys[2]);
      hn::Store(WayOf<3>(d, keys[0], grid), d, places.steps[0] + i);
      const V all = hn::Set(d, static_cast<std::uint16_t>(Way(grid, 2) + Way(grid, 1) + 1));
      hn::Store(hn::Sub(all, WayOf<3>(d, keys[2], grid)), d, places.steps[1] + i);
      hn::StoreInterleaved4(hn::Sub(one, a), hn::Sub(a, b), hn::Sub(b, c), c, d, places.weights + 4 * i);
    } else {
      Order(keys[0], keys[1]);
      Order(keys[2], keys[3]);
      Order(keys[0], keys[2]);
      Order(keys[1], keys[3]);
      Order(keys[1], keys[2]);
      const V a = into(keys[0]), b = into(keys[1]), c = into(keys[2]), e = into(keys[3]);
      const V step = WayOf<4>(d, keys[0], grid);
      hn::Store(step, d, places.steps[0] + i);
      hn::Store(hn::Add(step, WayOf<4>(d, keys[1], grid)), d, places.steps[1] + i);
      const V all = hn::Set(d, static_cast<std::uint16_t>(Way(grid, 3) + Way(grid, 2) + Way(grid, 1) + 1));
      hn::Store(hn::Sub(all, WayOf<4>(d, keys[3], grid)), d, places.steps[2] + i);
      hn::StoreInterleaved4(hn::Sub(one, a), hn::Sub(a, b), hn::Sub(b, c), hn::Sub(c, e), d, places.weights + 4 * i);
      hn::StoreInterleaved2(e, hn::Zero(d), d, places.last + 2 * i);
    }
  }
  const std::uint32_t weight = kInputs == 4 ? grid * grid : grid;
  for (std::size_t i = 0; i < kBlock; ++i)
    places.first[i] = highs[i] * weight + lows[i];
}

// --- Sums ------------------------------------------------------------------------------------------------------------

#if HWY_TARGET == HWY_SCALAR

/// Four lanes without vectors.
struct V16
{
  std::int16_t a[4];
  std::int16_t b[4];
};
struct V32
{
  std::int32_t lanes[4];
};

HWY_INLINE V32 AllOf(std::int32_t value)
{
  return {{value, value, value, value}};
}

HWY_INLINE V16 Pair(const std::uint16_t *a, const std::uint16_t *b)
{
  V16 pair;
  std::memcpy(pair.a, a, sizeof pair.a);
  std::memcpy(pair.b, b, sizeof pair.b);
  return pair;
}

HWY_INLINE V16 PairWeights(const std::uint16_t *weights)
{
  V16 lanes;
  std::fill_n(lanes.a, 4, static_cast<std::int16_t>(weights[0]));
  std::fill_n(lanes.b, 4, static_cast<std::int16_t>(weights[1]));
  return lanes;
}

HWY_INLINE V32 AddProducts(V16 nodes, V16 weights, V32 sum)
{
  for (int i = 0; i < 4; ++i)
    sum.lanes[i] += nodes.a[i] * weights.a[i] + nodes.b[i] * weights.b[i];
  return sum;
}

template <int kShift>
HWY_INLINE void StoreBytes(V32 a, V32 b, std::uint8_t *out)
{
  for (int i = 0; i < 4; ++i) {
    out[i] = static_cast<std::uint8_t>(a.lanes[i] >> kShift);
    out[4 + i] = static_cast<std::uint8_t>(b.lanes[i] >> kShift);
  }
}

template <int kShift>
HWY_INLINE void StoreWords(V32 sum, std::uint16_t *out)
{
  for (int i = 0; i < 4; ++i) {
    const int value = sum.lanes[i] >> kShift;
    out[i] = static_cast<std::uint16_t>(value + (value >> 15));
  }
}

HWY_INLINE V32 SumOf(const std::int32_t *a, const std::int32_t *b, const std::int32_t *c)
{
  V32 sum;
  for (int i = 0; i < 4; ++i)
    sum.lanes[i] = a[i] + b[i] + c[i];
  return sum;
}

/// The places of eight amounts of light in their tables.
HWY_INLINE void StoreEntries(V32 a, V32 b, std::uint16_t *out)
{
  for (int i = 0; i < 8; ++i) {
    const std::int32_t sum = (i < 4 ? a.lanes[i] : b.lanes[i - 4]) >> BakedMatrix::kLightBits;
    out[i] = BakedMatrix::EntryOf(static_cast<std::uint16_t>(std::clamp(sum, -32768, 32767) + 32768));
  }
}

#else

using D16 = hn::FixedTag<std::int16_t, 8>;
using D32 = hn::FixedTag<std::int32_t, 4>;
using V16 = hn::Vec<D16>;
using V32 = hn::Vec<D32>;

HWY_INLINE V32 AllOf(std::int32_t value)
{
  return hn::Set(D32(), value);
}

/// A node and its neighbour, lane beside lane.
HWY_INLINE V16 Pair(const std::uint16_t *a, const std::uint16_t *b)
{
  const hn::FixedTag<std::int16_t, 4> dNode;
  const D16 d;
  const auto load = [&](const std::uint16_t *node) HWY_ATTR {
    return hn::ZeroExtendVector(d, hn::LoadU(dNode, reinterpret_cast<const std::int16_t *>(node)));
  };
  return hn::InterleaveLower(d, load(a), load(b));
}

/// The weights of a pair, for all of its lanes.
HWY_INLINE V16 PairWeights(const std::uint16_t *weights)
{
  std::int32_t both;
  std::memcpy(&both, weights, sizeof both);
  return hn::BitCast(D16(), hn::Set(D32(), both));
}

/// a0 b0 + a1 b1, a2 b2 + a3 b3, ... added to `sum`.
HWY_INLINE V32 AddProducts(V16 a, V16 b, V32 sum)
{
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128 // this order is that of the instruction
  V32 none = hn::Zero(D32());
  return hn::ReorderWidenMulAccumulate(D32(), a, b, sum, none);
#else
  const V32 x = hn::BitCast(D32(), a), y = hn::BitCast(D32(), b);
  const auto low = [](V32 v) HWY_ATTR { return hn::ShiftRight<16>(hn::ShiftLeft<16>(v)); };
  const auto high = [](V32 v) HWY_ATTR { return hn::ShiftRight<16>(v); };
  return hn::Add(sum, hn::Add(hn::Mul(low(x), low(y)), hn::Mul(high(x), high(y))));
#endif
}

/// Eight lanes, the lower bits dropped. They fit.
template <int kShift>
HWY_INLINE void StoreBytes(V32 a, V32 b, std::uint8_t *out)
{
  const hn::FixedTag<std::uint8_t, 8> d;
  hn::StoreU(hn::DemoteTo(d, hn::ReorderDemote2To(D16(), hn::ShiftRight<kShift>(a), hn::ShiftRight<kShift>(b))), d,
             out);
}

/// Four lanes of 0 to 65534, which become 0 to 65535.
template <int kShift>
HWY_INLINE void StoreWords(V32 sum, std::uint16_t *out)
{
  const hn::FixedTag<std::uint16_t, 4> d;
  const V32 value = hn::ShiftRight<kShift>(sum);
  hn::StoreU(hn::DemoteTo(d, hn::Add(value, hn::ShiftRight<15>(value))), d, out);
}

HWY_INLINE V32 SumOf(const std::int32_t *a, const std::int32_t *b, const std::int32_t *c)
{
  const D32 d;
  return hn::Add(hn::Add(hn::LoadU(d, a), hn::LoadU(d, b)), hn::LoadU(d, c));
}

/// The places of eight amounts of light in their tables: BakedMatrix::EntryOf of each.
HWY_INLINE void StoreEntries(V32 a, V32 b, std::uint16_t *out)
{
  const hn::FixedTag<std::uint16_t, 8> d;
  constexpr int kBits = BakedMatrix::kLightBits;
  const V16 clipped = hn::ReorderDemote2To(D16(), hn::ShiftRight<kBits>(a), hn::ShiftRight<kBits>(b));
  const auto amount = hn::Xor(hn::BitCast(d, clipped), hn::Set(d, 0x8000));
  constexpr std::uint16_t kSkipped = BakedMatrix::kDark - BakedMatrix::kDark / 4;
  hn::StoreU(hn::Min(amount, hn::Add(hn::ShiftRight<2>(amount), hn::Set(d, kSkipped))), d, out);
}

#endif

/// The way from a cell's first corner to the opposite one, in numbers of the table.
template <int kInputs>
constexpr std::size_t WayAcross(unsigned grid)
{
  std::size_t way = 0;
  for (int power = 0; power < kInputs; ++power)
    way += Way(grid, power);
  return 4 * way;
}

/// The four lanes of a pixel, in kOne times the nodes' scale, added to `sum`.
template <int kInputs>
HWY_INLINE V32 AddNodes(const std::uint16_t *nodes, const Places<kInputs> &places, std::size_t across, std::size_t i,
                        V32 sum)
{
  const std::uint16_t *const first = nodes + 4 * std::size_t{places.first[i]};
  const std::uint16_t *const opposite = first + across;
  if constexpr (kInputs == 1) {
    const std::uint16_t *const weights = places.weights + 2 * i;
    return AddProducts(Pair(first, opposite), PairWeights(weights), sum);
  } else {
    const std::uint16_t *const weights = places.weights + 4 * i;
    const auto node = [&](int step) HWY_ATTR { return first + 4 * std::size_t{places.steps[step][i]}; };
    sum = AddProducts(Pair(first, node(0)), PairWeights(weights), sum);
    if constexpr (kInputs == 3) {
      return AddProducts(Pair(node(1), opposite), PairWeights(weights + 2), sum);
    } else {
      sum = AddProducts(Pair(node(1), node(2)), PairWeights(weights + 2), sum);
      return AddProducts(Pair(opposite, opposite), PairWeights(places.last + 2 * i), sum);
    }
  }
}

/// Four samples to a pixel.
template <int kInputs>
void Blend(const BakedTable &table, const Places<kInputs> &places, std::uint8_t *HWY_RESTRICT out)
{
  constexpr int kShift = 15; // 255 * 32767 becomes 255
  const std::uint16_t *const nodes = table.nodes.data();
  const std::size_t across = WayAcross<kInputs>(table.grid);
  const V32 half = AllOf(1 << (kShift - 1));
  for (std::size_t i = 0; i < kBlock; i += 2)
    StoreBytes<kShift>(AddNodes(nodes, places, across, i, half), AddNodes(nodes, places, across, i + 1, half),
                       out + 4 * i);
}

template <int kInputs>
void Blend(const BakedTable &table, const Places<kInputs> &places, std::uint16_t *HWY_RESTRICT out)
{
  constexpr int kShift = 12; // 8192 * 32767 becomes 65534
  const std::uint16_t *const nodes = table.nodes.data();
  const std::size_t across = WayAcross<kInputs>(table.grid);
  const V32 half = AllOf(1 << (kShift - 1));
  for (std::size_t i = 0; i < kBlock; ++i)
    StoreWords<kShift>(AddNodes(nodes, places, across, i, half), out + 4 * i);
}

// --- Light -----------------------------------------------------------------------------------------------------------

/// Where the light of each pixel's outputs is in their tables, four lanes to a pixel.
void SumLight(const BakedMatrix &matrix, const Planes<std::uint8_t> &planes, std::uint16_t *HWY_RESTRICT entries)
{
  // Twice the samples, since addresses count eight bytes and a share has sixteen.
  alignas(64) std::uint16_t places[3][kBlock];
  for (int input = 0; input < 3; ++input)
    for (std::size_t i = 0; i < kBlock; ++i)
      places[input][i] = static_cast<std::uint16_t>(planes[input][i] * 2);
  const auto share = [&](int input, std::size_t i) HWY_ATTR {
    const auto *const bytes =
      reinterpret_cast<const std::uint8_t *>(matrix.shares[static_cast<std::size_t>(input)].data());
    return reinterpret_cast<const std::int32_t *>(bytes + 8 * std::size_t{places[input][i]});
  };
  const auto sum = [&](std::size_t i) HWY_ATTR { return SumOf(share(0, i), share(1, i), share(2, i)); };
  for (std::size_t i = 0; i < kBlock; i += 2)
    StoreEntries(sum(i), sum(i + 1), entries + 4 * i);
}

void Encode(const BakedMatrix &matrix, const std::uint16_t *HWY_RESTRICT entries, Planes<std::uint8_t> &planes)
{
  for (std::size_t output = 0; output < 3; ++output) {
    const std::uint8_t *const encoding = matrix.encodings[output]->data();
    const std::uint16_t *HWY_RESTRICT entry = entries + output;
    std::uint8_t *HWY_RESTRICT plane = planes[output];
    for (std::size_t i = 0; i < kBlock; i += 4, entry += 16) {
      plane[i] = encoding[entry[0]];
      plane[i + 1] = encoding[entry[4]];
      plane[i + 2] = encoding[entry[8]];
      plane[i + 3] = encoding[entry[12]];
    }
  }
}

// --- Lanes into samples ----------------------------------------------------------------------------------------------

template <class Sample>
void PutTogether(const Sample *HWY_RESTRICT lanes, unsigned colours, const Sample *HWY_RESTRICT alpha,
                 Sample *HWY_RESTRICT packed)
{
  const hn::ScalableTag<Sample> d;
  using V = hn::Vec<decltype(d)>;
  if (colours == 3) {
    for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
      V a, b, c, none;
      hn::LoadInterleaved4(d, lanes + 4 * i, a, b, c, none);
      if (alpha == nullptr)
        hn::StoreInterleaved3(a, b, c, d, packed + 3 * i);
      else
        hn::StoreInterleaved4(a, b, c, hn::Load(d, alpha + i), d, packed + 4 * i);
    }
    return;
  }
  if (colours == 4 && alpha == nullptr) {
    std::memcpy(packed, lanes, 4 * kBlock * sizeof(Sample));
    return;
  }
  if (colours == 1 && alpha == nullptr) {
    for (std::size_t i = 0; i < kBlock; ++i)
      packed[i] = lanes[4 * i];
    return;
  }
  for (std::size_t i = 0; i < kBlock; ++i) {
    for (unsigned colour = 0; colour < colours; ++colour)
      *packed++ = lanes[4 * i + colour];
    if (alpha != nullptr)
      *packed++ = alpha[i];
  }
}

// --- Rows ------------------------------------------------------------------------------------------------------------

HWY_INLINE void Rescale(const std::uint8_t *from, std::uint8_t *to, std::size_t count)
{
  std::memcpy(to, from, count);
}
HWY_INLINE void Rescale(const std::uint16_t *from, std::uint16_t *to, std::size_t count)
{
  std::memcpy(to, from, count * sizeof *to);
}
HWY_INLINE void Rescale(const std::uint8_t *from, std::uint16_t *to, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    to[i] = static_cast<std::uint16_t>(from[i] * 257);
}
HWY_INLINE void Rescale(const std::uint16_t *from, std::uint8_t *to, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    to[i] = static_cast<std::uint8_t>((from[i] * 255u + 32895u) >> 16); // by 257, to the nearest
}

/// Planes into lanes, by samples of 16 bits unless both are of 8.
template <int kInputs, class In, class Out>
void ConvertPlanes(const BakedTable &table, const Planes<In> &planes, Out *lanes)
{
  using Sample = std::conditional_t<std::is_same_v<In, Out>, In, std::uint16_t>;
  Places<kInputs> places;
  if constexpr (std::is_same_v<In, Sample>) {
    FindPlaces<kInputs, Sample>(planes, table.grid, places);
  } else {
    alignas(64) Planes<Sample> fine;
    for (int input = 0; input < kInputs; ++input)
      Rescale(planes[input], fine[input], kBlock);
    FindPlaces<kInputs, Sample>(fine, table.grid, places);
  }

  if constexpr (std::is_same_v<Out, Sample>) {
    Blend<kInputs>(table, places, lanes);
  } else {
    alignas(64) Sample fine[4 * kBlock];
    Blend<kInputs>(table, places, fine);
    Rescale(fine, lanes, 4 * kBlock);
  }
}

template <int kInputs, class In, class Out>
void ConvertBlock(const BakedTable &table, bool alphaIn, const In *source, bool alphaOut, Out *destination)
{
  alignas(64) Planes<In> planes;
  TakeApart(source, kInputs + (alphaIn ? 1u : 0u), planes);
  alignas(64) Out lanes[4 * kBlock];
  ConvertPlanes<kInputs>(table, planes, lanes);
  alignas(64) Out alpha[kBlock];
  if (alphaOut && alphaIn)
    Rescale(planes[kInputs], alpha, kBlock);
  else if (alphaOut)
    std::fill_n(alpha, kBlock, static_cast<Out>(~Out{0}));
  PutTogether(lanes, table.outputs, alphaOut ? alpha : nullptr, destination);
}

template <int kInputs>
void ConvertBlock(const BakedMatrix &matrix, bool alphaIn, const std::uint8_t *source, bool alphaOut,
                  std::uint8_t *destination)
{
  alignas(64) Planes<std::uint8_t> planes;
  TakeApart(source, alphaIn ? 4 : 3, planes);
  alignas(64) std::uint16_t entries[4 * kBlock];
  SumLight(matrix, planes, entries);
  Encode(matrix, entries, planes);
  if (!alphaIn)
    std::fill_n(planes[3], kBlock, std::uint8_t{255});
  const hn::ScalableTag<std::uint8_t> d;
  const auto plane = [&](int i, std::size_t at) HWY_ATTR { return hn::Load(d, planes[i] + at); };
  for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
    if (alphaOut)
      hn::StoreInterleaved4(plane(0, i), plane(1, i), plane(2, i), plane(3, i), d, destination + 4 * i);
    else
      hn::StoreInterleaved3(plane(0, i), plane(1, i), plane(2, i), d, destination + 3 * i);
  }
}

/// Whether all pixels of a row are the first one.
HWY_INLINE bool IsFlat(const std::uint8_t *pixels, std::size_t count, std::size_t size)
{
  return std::memcmp(pixels, pixels + size, (count - 1) * size) == 0;
}

template <int kInputs, class In, class Out, class Baked>
void ConvertSamples(const Baked &baked, unsigned outputs, bool alphaIn, const std::uint8_t *source, bool alphaOut,
                    std::uint8_t *destination, std::size_t pixels)
{
  const std::size_t in = (kInputs + (alphaIn ? 1 : 0)) * sizeof(In);
  const std::size_t out = (outputs + (alphaOut ? 1 : 0)) * sizeof(Out);
  // Copied, for the last block may be shorter, and samples of 16 bits may lie at odd addresses.
  alignas(64) In from[5 * kBlock] = {};
  alignas(64) Out to[5 * kBlock];
  bool isFlat = false; // what `from` holds, and `to` its conversion
  while (pixels != 0) {
    const std::size_t count = std::min(pixels, kBlock);
    const bool wasFlat = isFlat;
    isFlat = count == kBlock && IsFlat(source, count, in);
    if (!isFlat || !wasFlat || std::memcmp(from, source, in) != 0) {
      std::memcpy(from, source, count * in);
      ConvertBlock<kInputs>(baked, alphaIn, from, alphaOut, to);
    }
    std::memcpy(destination, to, count * out);
    source += count * in;
    destination += count * out;
    pixels -= count;
  }
}

template <int kInputs>
void ConvertInputs(const BakedTable &table, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                   std::uint8_t *destination, std::size_t pixels)
{
  using Byte = std::uint8_t;
  using Word = std::uint16_t;
  if (from.bytesPerSample == 1 && to.bytesPerSample == 1)
    ConvertSamples<kInputs, Byte, Byte>(table, table.outputs, from.alpha, source, to.alpha, destination, pixels);
  else if (from.bytesPerSample == 1)
    ConvertSamples<kInputs, Byte, Word>(table, table.outputs, from.alpha, source, to.alpha, destination, pixels);
  else if (to.bytesPerSample == 1)
    ConvertSamples<kInputs, Word, Byte>(table, table.outputs, from.alpha, source, to.alpha, destination, pixels);
  else
    ConvertSamples<kInputs, Word, Word>(table, table.outputs, from.alpha, source, to.alpha, destination, pixels);
}

void ConvertRowByTable(const BakedTable &table, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                       std::uint8_t *destination, std::size_t pixels)
{
  if (table.inputs == 1)
    ConvertInputs<1>(table, from, source, to, destination, pixels);
  else if (table.inputs == 3)
    ConvertInputs<3>(table, from, source, to, destination, pixels);
  else
    ConvertInputs<4>(table, from, source, to, destination, pixels);
}

void ConvertRowByMatrix(const BakedMatrix &matrix, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                        std::uint8_t *destination, std::size_t pixels)
{
  ConvertSamples<3, std::uint8_t, std::uint8_t>(matrix, 3, from.alpha, source, to.alpha, destination, pixels);
}

} // namespace HWY_NAMESPACE
} // namespace ColorSystem
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ColorSystem::Internal {

HWY_EXPORT(ConvertRowByTable);
HWY_EXPORT(ConvertRowByMatrix);

void ConvertBakedRow(const BakedTable &table, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                     std::uint8_t *destination, std::size_t pixels)
{
  HWY_DYNAMIC_DISPATCH(ConvertRowByTable)(table, from, source, to, destination, pixels);
}

void ConvertBakedRow(const BakedMatrix &matrix, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                     std::uint8_t *destination, std::size_t pixels)
{
  HWY_DYNAMIC_DISPATCH(ConvertRowByMatrix)(matrix, from, source, to, destination, pixels);
}

} // namespace ColorSystem::Internal
#endif
