#include "zelclr/colorsystem/internal/baking.h"

#include "zelclr/colorsystem/internal/baked_rows.h"
#include "zelclr/colorsystem/internal/matrices.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace ColorSystem::Internal {

namespace {

constexpr std::size_t kMostNodes = std::size_t{1} << 20; // 8 MB
constexpr PixelFormat Fine(ColorModel model)
{
  return {model, SampleType::UInt16};
}

/// The channel of the model that a place in a pixel's memory holds.
unsigned ChannelAt(const PixelFormat &format, unsigned place)
{
  return format.IsReversed() ? format.ColourChannels() - 1 - place : place;
}

std::uint16_t *Samples(ColorData &pixels)
{
  return reinterpret_cast<std::uint16_t *>(pixels.GetRow(0)); // its own buffer: aligned
}

std::uint16_t AtNode(std::size_t node, unsigned grid)
{
  return static_cast<std::uint16_t>((node * 65535 + (grid - 1) / 2) / (grid - 1));
}

/// 65535 becomes 32767, which stands for 32768.
std::uint16_t NodeNumber(std::uint16_t sample)
{
  return static_cast<std::uint16_t>(std::min(32767u, (sample * 32768u + 32767u) / 65535u));
}

// --- Matrices --------------------------------------------------------------------------------------------------------

/// The value whose light is nearest, by the light half-way between a value and the next. Empty for a curve that falls.
std::shared_ptr<const BakedMatrix::Encoding> EncodingOf(const ZelUtl::IccCurve &curve)
{
  const auto encoding = std::make_shared<BakedMatrix::Encoding>();
  double ends[255];
  for (unsigned value = 0; value < 255; ++value)
    ends[value] = curve.At((value + 0.5) / 255.0) * 65535.0;
  if (!std::is_sorted(std::begin(ends), std::end(ends)))
    return nullptr;
  unsigned value = 0;
  for (std::size_t entry = 0; entry < encoding->size(); ++entry) {
    // An entry stands for the middle of the amounts that are looked up by it: one each in the dark, four above.
    const double light = entry < BakedMatrix::kDark
                           ? static_cast<double>(entry)
                           : BakedMatrix::kDark + 4.0 * static_cast<double>(entry - BakedMatrix::kDark) + 1.5;
    while (value < 255 && ends[value] <= light)
      ++value;
    (*encoding)[entry] = static_cast<std::uint8_t>(value);
  }
  return encoding;
}

bool IsSame(const ZelUtl::IccCurve &a, const ZelUtl::IccCurve &b)
{
  const auto numbers = [](const ZelUtl::IccCurve &c) { return std::array{c.gamma, c.a, c.b, c.c, c.d, c.e, c.f}; };
  return a.table == b.table && numbers(a) == numbers(b);
}

/// Whether random colours come out as the conversion itself has them, but for rounding.
bool Agrees(const BakedMatrix &matrix, const PixelFormat &source, const PixelFormat &destination,
            const FineConversion &convert)
{
  constexpr std::uint32_t kColours = 1024;
  const auto from = CreateColorData(Fine(source.model), kColours, 1);
  const auto to = CreateColorData(Fine(destination.model), kColours, 1);
  std::array<std::uint8_t, 3 * kColours> before, after;
  std::mt19937 random(1);
  for (std::size_t i = 0; i < before.size(); ++i) {
    const unsigned value = i < 3 * 256 ? static_cast<unsigned>(i / 3) : random() & 0xFF; // grays first
    before[i] = static_cast<std::uint8_t>(value);
    Samples(*from)[i / 3 * 3 + ChannelAt(source, static_cast<unsigned>(i % 3))] =
      static_cast<std::uint16_t>(value * 257);
  }
  if (!convert(*from, *to))
    return false;
  ConvertBakedRow(matrix, {}, before.data(), {}, after.data(), kColours);
  double sum = 0.0, most = 0.0;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const double exact = Samples(*to)[i / 3 * 3 + ChannelAt(destination, static_cast<unsigned>(i % 3))] / 257.0;
    const double error = std::abs(exact - after[i]);
    sum += error;
    most = std::max(most, error);
  }
  return sum <= 0.27 * static_cast<double>(after.size()) && most <= 1.5; // a quarter and a half are rounding
}

} // namespace

bool CanBake(const PixelFormat &source, const PixelFormat &destination)
{
  const auto bytes = [](const PixelFormat &format) { return format.BytesPerSample() <= 2; };
  const unsigned inputs = source.ColourChannels();
  return bytes(source) && bytes(destination) && (inputs == 1 || inputs == 3 || inputs == 4) &&
         destination.ColourChannels() <= 4;
}

unsigned StandardGrid(const PixelFormat &source)
{
  switch (source.ColourChannels()) {
  case 1:
    return 256;
  case 3:
    return 33;
  default:
    return 17;
  }
}

BakedNodes NodesFor(const PixelFormat &source, unsigned grid)
{
  const unsigned inputs = source.ColourChannels();
  grid = std::clamp(grid, 2u, 256u);
  const auto count = [&] {
    std::size_t nodes = 1;
    for (unsigned input = 0; input < inputs; ++input)
      nodes *= grid;
    return nodes;
  };
  while (count() > kMostNodes)
    --grid;
  BakedNodes nodes = {grid, CreateColorData(Fine(source.model), static_cast<std::uint32_t>(count()), 1)};
  std::uint16_t *sample = Samples(*nodes.pixels);
  for (std::size_t node = 0; node < nodes.pixels->GetWidth(); ++node, sample += inputs) {
    std::size_t rest = node;
    for (unsigned place = inputs; place-- > 0; rest /= grid)
      sample[ChannelAt(source, place)] = AtNode(rest % grid, grid);
  }
  return nodes;
}

std::optional<BakedTable> BakeTable(const PixelFormat &source, const PixelFormat &destination, unsigned grid,
                                    const FineConversion &convert)
{
  const BakedNodes nodes = NodesFor(source, grid);
  const std::size_t all = nodes.pixels->GetWidth();
  const auto to = CreateColorData(Fine(destination.model), nodes.pixels->GetWidth(), 1);
  if (!convert(*nodes.pixels, *to))
    return std::nullopt;
  BakedTable table = {source.ColourChannels(), destination.ColourChannels(), nodes.grid, {}};
  table.nodes.resize(4 * all);
  for (std::size_t node = 0; node < all; ++node)
    for (unsigned place = 0; place < table.outputs; ++place)
      table.nodes[4 * node + place] = NodeNumber(Samples(*to)[node * table.outputs + ChannelAt(destination, place)]);
  return table;
}

std::optional<BakedMatrix> BakeMatrix(const PixelFormat &source, const ZelUtl::IccMatrix &from,
                                      const PixelFormat &destination, const ZelUtl::IccMatrix &to,
                                      const FineConversion &convert)
{
  for (const PixelFormat &format : {source, destination})
    if (format.model != ColorModel::Rgb || format.BytesPerSample() != 1)
      return std::nullopt;
  const Matrix matrix = ProductOf(InverseOf(ColumnsOf(to.colorants)), ColumnsOf(from.colorants));
  for (const auto &row : matrix)
    for (const double number : row)
      if (!(std::abs(number) < 1000.0)) // what is not finite, too; and sums stay within 31 bits
        return std::nullopt;

  BakedMatrix baked{};
  constexpr double kScale = 65535.0 * (1 << BakedMatrix::kLightBits);
  for (unsigned input = 0; input < 3; ++input) {
    const unsigned channel = ChannelAt(source, input);
    const double bias = input == 0 ? 32767.5 * (1 << BakedMatrix::kLightBits) : 0.0;
    for (unsigned value = 0; value < 256; ++value) {
      const double light = from.curves[channel].At(value / 255.0);
      for (unsigned output = 0; output < 3; ++output) {
        const double share = matrix[ChannelAt(destination, output)][channel] * light * kScale;
        baked.shares[input][value][output] =
          static_cast<std::int32_t>(std::lround(std::clamp(share - bias, -5e8, 5e8)));
      }
    }
  }
  for (unsigned output = 0; output < 3; ++output) {
    const ZelUtl::IccCurve &curve = to.curves[ChannelAt(destination, output)];
    const bool isFirst = output == 0 || !IsSame(curve, to.curves[ChannelAt(destination, 0)]);
    baked.encodings[output] = isFirst ? EncodingOf(curve) : baked.encodings[0];
    if (baked.encodings[output] == nullptr)
      return std::nullopt;
  }
  return Agrees(baked, source, destination, convert) ? std::optional(std::move(baked)) : std::nullopt;
}

} // namespace ColorSystem::Internal
