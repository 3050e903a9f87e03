// Blocks of pixels of every layout, taken apart into planes of single channels and put together again, for one
// instruction set. The planes count as the model names the channels, alpha last.
#if defined(ZELCLR_FORMULA_PLANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELCLR_FORMULA_PLANES_INL_H
#undef ZELCLR_FORMULA_PLANES_INL_H
#else
#define ZELCLR_FORMULA_PLANES_INL_H
#endif

#include "zelclr/colorsystem/pixel_format.h"
#include "zelclr/platform/internal/pixel_rows-inl.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace ColorSystem {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Pixels of a block.
constexpr std::size_t kBlock = 256;
/// Pixels that can be packed and unpacked in place: a multiple of every vector's length.
constexpr std::size_t kStep = 64;
/// What the count of fewer is rounded up to, for the arithmetic.
constexpr std::size_t kShortStep = 16;
constexpr std::size_t kMostChannels = 7; // six inks and alpha

template <class Sample>
using Planes = Sample (*)[kBlock];

/// Where each sample of a pixel belongs.
struct Places
{
  explicit Places(const PixelFormat &format)
    : colours(format.ColourChannels()),
      channels(format.ChannelsPerPixel()),
      alpha(format.HasAlpha()),
      bytes(format.BytesPerPixel())
  {
    for (std::size_t place = 0; place < channels; ++place)
      channel[place] = format.IsReversed() && place < colours ? colours - 1 - place : place;
  }

  std::size_t colours;
  std::size_t channels;
  bool alpha;
  std::size_t bytes; ///< of a pixel
  std::size_t channel[kMostChannels] = {};
};

/// The integer of twice the size, for pairs of samples.
template <class Sample>
using Pair = std::conditional_t<sizeof(Sample) == 1, std::uint16_t, std::uint32_t>;

/// `count` pixels of `places.channels` samples. Where the count is no multiple of kStep, `packed` and the planes are
/// read and written up to the next one.
template <class Sample>
HWY_INLINE void TakeApart(const std::uint8_t *packed, const Places &places, std::size_t count, Planes<Sample> planes)
{
  const hn::ScalableTag<Sample> d;
  using V = hn::Vec<decltype(d)>;
  const auto *samples = reinterpret_cast<const Sample *>(packed);
  const auto plane = [&](std::size_t place) HWY_ATTR { return planes[places.channel[place]]; };
  if (places.channels == 1) {
    std::memcpy(planes[0], packed, count * sizeof(Sample));
  } else if (places.channels == 3) {
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
      V a, b, c;
      hn::LoadInterleaved3(d, samples + 3 * i, a, b, c);
      hn::Store(a, d, plane(0) + i);
      hn::Store(b, d, plane(1) + i);
      hn::Store(c, d, plane(2) + i);
    }
  } else if (places.channels == 4) {
    for (std::size_t i = 0; i < count; i += hn::Lanes(d)) {
      V a, b, c, e;
      hn::LoadInterleaved4(d, samples + 4 * i, a, b, c, e);
      hn::Store(a, d, plane(0) + i);
      hn::Store(b, d, plane(1) + i);
      hn::Store(c, d, plane(2) + i);
      hn::Store(e, d, plane(3) + i);
    }
  } else if (sizeof(Sample) < 4 && places.channels == 6) { // three pairs
    using Both = Pair<Sample>;
    const hn::ScalableTag<Both> pairs;
    alignas(64) Both both[3][kBlock];
    const auto *words = reinterpret_cast<const Both *>(packed);
    for (std::size_t i = 0; i < count; i += hn::Lanes(pairs)) {
      hn::Vec<decltype(pairs)> a, b, c;
      hn::LoadInterleaved3(pairs, words + 3 * i, a, b, c);
      hn::Store(a, pairs, both[0] + i);
      hn::Store(b, pairs, both[1] + i);
      hn::Store(c, pairs, both[2] + i);
    }
    for (std::size_t place = 0; place < 6; place += 2) {
      const Both *HWY_RESTRICT from = both[place / 2];
      Sample *HWY_RESTRICT low = plane(place);
      Sample *HWY_RESTRICT high = plane(place + 1);
      for (std::size_t i = 0; i < count; ++i) {
        low[i] = static_cast<Sample>(from[i]);
        high[i] = static_cast<Sample>(static_cast<std::uint32_t>(from[i]) >> (8 * sizeof(Sample)));
      }
    }
  } else {
    for (std::size_t place = 0; place < places.channels; ++place) {
      Sample *HWY_RESTRICT to = plane(place);
      for (std::size_t i = 0; i < count; ++i)
        std::memcpy(to + i, packed + (i * places.channels + place) * sizeof(Sample), sizeof(Sample));
    }
  }
}

/// The inverse of TakeApart.
template <class Sample>
HWY_INLINE void PutTogether(Planes<Sample> planes, const Places &places, std::size_t count, std::uint8_t *packed)
{
  const hn::ScalableTag<Sample> d;
  auto *samples = reinterpret_cast<Sample *>(packed);
  const auto plane = [&](std::size_t place) HWY_ATTR { return planes[places.channel[place]]; };
  const auto load = [&](std::size_t place, std::size_t i) HWY_ATTR { return hn::Load(d, plane(place) + i); };
  if (places.channels == 1) {
    std::memcpy(packed, planes[0], count * sizeof(Sample));
  } else if (places.channels == 3) {
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
      hn::StoreInterleaved3(load(0, i), load(1, i), load(2, i), d, samples + 3 * i);
  } else if (places.channels == 4) {
    for (std::size_t i = 0; i < count; i += hn::Lanes(d))
      hn::StoreInterleaved4(load(0, i), load(1, i), load(2, i), load(3, i), d, samples + 4 * i);
  } else if (sizeof(Sample) < 4 && places.channels == 6) {
    using Both = Pair<Sample>;
    const hn::ScalableTag<Both> pairs;
    alignas(64) Both both[3][kBlock];
    for (std::size_t place = 0; place < 6; place += 2) {
      Both *HWY_RESTRICT to = both[place / 2];
      const Sample *HWY_RESTRICT low = plane(place);
      const Sample *HWY_RESTRICT high = plane(place + 1);
      for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<Both>(static_cast<std::uint32_t>(low[i]) | static_cast<std::uint32_t>(high[i])
                                                                         << (8 * sizeof(Sample)));
    }
    auto *words = reinterpret_cast<Both *>(packed);
    for (std::size_t i = 0; i < count; i += hn::Lanes(pairs))
      hn::StoreInterleaved3(hn::Load(pairs, both[0] + i), hn::Load(pairs, both[1] + i), hn::Load(pairs, both[2] + i),
                            pairs, words + 3 * i);
  } else {
    for (std::size_t place = 0; place < places.channels; ++place) {
      const Sample *HWY_RESTRICT from = plane(place);
      for (std::size_t i = 0; i < count; ++i)
        std::memcpy(packed + (i * places.channels + place) * sizeof(Sample), from + i, sizeof(Sample));
    }
  }
}

/// Whether samples, and pairs where they are moved in pairs, can be addressed as what they are.
inline bool IsAligned(const std::uint8_t *pixels, const Places &places)
{
  const std::size_t unit = places.bytes / places.channels * (places.channels == 6 ? 2 : 1);
  return reinterpret_cast<std::uintptr_t>(pixels) % std::min(unit, sizeof(float)) == 0;
}

/// Calls `take(pixels, count)` and `put(pixels, count)` with whole steps of pixels, of the buffers themselves, and at
/// last with a copy of those that do not fill one, followed by zeros. Samples at odd addresses are all copied.
template <class Take, class Put>
HWY_INLINE void ForEachBlock(const std::uint8_t *source, std::uint8_t *destination, std::size_t width,
                             const Places &from, const Places &to, Take take, Put put)
{
  const bool aligned = IsAligned(source, from) && IsAligned(destination, to);
  for (std::size_t done = 0; done < width;) {
    const std::size_t left = std::min(width - done, aligned ? kBlock : kStep);
    const std::uint8_t *in = source + done * from.bytes;
    std::uint8_t *out = destination + done * to.bytes;
    if (aligned && left >= kStep) {
      const std::size_t count = left / kStep * kStep;
      take(in, count);
      put(out, count);
      done += count;
      continue;
    }
    alignas(64) std::uint8_t last[kStep * kMostChannels * sizeof(float)];
    std::memcpy(last, in, left * from.bytes);
    std::memset(last + left * from.bytes, 0, (kStep - left) * from.bytes);
    const std::size_t count = (left + kShortStep - 1) / kShortStep * kShortStep;
    take(last, count);
    put(last, count);
    std::memcpy(out, last, left * to.bytes);
    done += left;
  }
}

} // namespace HWY_NAMESPACE
} // namespace ColorSystem
HWY_AFTER_NAMESPACE();

#endif
