#include "zelclr/palettes/internal/managed_values.h"

#include "zelclr/colorsystem/internal/record_samples.h"

#include <algorithm>
#include <map>

namespace ZelClr {

namespace {

using ColorSystem::ColorConverter;
using ColorSystem::ColorData;
using ColorSystem::ColorModel;
using ColorSystem::Internal::RecordPixel;

struct PlacedPixel
{
  std::size_t place;
  RecordPixel pixel;
};

using Result = std::vector<std::optional<ManagedValues>>;

// Below the size from which engines take a sampled table, so that one colour and many come out alike.
constexpr std::size_t kMostPixels = 32'768;

bool PixelOfColor(const CLR_COLORSPEC &color, ColorModel wanted, RecordPixel &pixel)
{
  using ColorSystem::SimpleColorConverter;
  CLR_COLORSPEC normalized;
  const bool known = color.GetType() == ClrModel::Spot
                       ? SimpleColorConverter::NormalizeSpotColorSpecToProcess(color, wanted, normalized)
                       : SimpleColorConverter::NormalizeColorSpec(color, normalized);
  return known && ColorSystem::Internal::PixelFromRecord(normalized, pixel);
}

/// Pixels of one model.
void Convert(std::span<const PlacedPixel> pixels, ColorModel target, const ColorConverter &converter, Result &result)
{
  const auto format = ColorSystem::Internal::RecordPixelFormat(pixels.front().pixel.model);
  const auto count = static_cast<std::uint32_t>(pixels.size());
  const auto source = ColorSystem::CreateColorData(format, count, 1);
  const auto converted = ColorSystem::CreateColorData({target, ColorSystem::SampleType::UInt16}, count, 1);
  std::uint8_t *row = source->GetRow(0);
  for (const PlacedPixel &placed : pixels)
    row = std::copy_n(placed.pixel.bytes.begin(), format.BytesPerPixel(), row);
  if (!converter.ConvertColorData(*source, *converted))
    return;
  for (std::uint32_t i = 0; i < count; ++i) {
    ManagedValues &values = result[pixels[i].place].emplace();
    for (unsigned channel = 0; channel < values.size(); ++channel)
      values[channel] = double{converted->GetSample(0, i, channel)};
  }
}

Result ValuesOfColors(std::span<const CLR_COLORSPEC> colors, ColorModel target, const ColorConverter &converter)
{
  std::map<ColorModel, std::vector<PlacedPixel>> families;
  for (std::size_t i = 0; i < colors.size(); ++i) {
    PlacedPixel placed{i, {}};
    if (PixelOfColor(colors[i], target, placed.pixel))
      families[placed.pixel.model].push_back(placed);
  }
  Result result(colors.size());
  for (const auto &[model, pixels] : families) {
    for (std::size_t first = 0; first < pixels.size(); first += kMostPixels)
      Convert(std::span(pixels).subspan(first, std::min(kMostPixels, pixels.size() - first)), target, converter,
              result);
  }
  return result;
}

} // namespace

Result RgbOfColors(std::span<const CLR_COLORSPEC> colors, const ColorConverter &converter)
{
  return ValuesOfColors(colors, ColorModel::Rgb, converter);
}

Result LabOfColors(std::span<const CLR_COLORSPEC> colors, const ColorConverter &converter)
{
  Result result = ValuesOfColors(colors, ColorModel::Lab, converter);
  for (auto &values : result) {
    if (values)
      *values = {(*values)[0] * 100.0, (*values)[1] * 255.0 - 128.0, (*values)[2] * 255.0 - 128.0};
  }
  return result;
}

} // namespace ZelClr
