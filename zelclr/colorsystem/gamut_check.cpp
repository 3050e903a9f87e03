#include "zelclr/colorsystem/gamut_check.h"

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/formula_pixels.h"
#include "zelclr/colorsystem/internal/baked_rows.h"
#include "zelclr/colorsystem/internal/baking.h"
#include "zelclr/colorsystem/internal/record_samples.h"
#include "zelclr/convert/formulas/colour_difference.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace ColorSystem {

namespace {

namespace Formulas = ZelClr::Formulas;

constexpr std::uint32_t kBandPixels = 65536;
constexpr PixelFormat kLab16 = {ColorModel::Lab, SampleType::UInt16};

std::shared_ptr<ColorTransform> Transform(const ColorProfile &from, const PixelFormat &fromFormat,
                                          const ColorProfile &to, const PixelFormat &toFormat)
{
  const auto engine = ColorManagementSystem::GetCurrent();
  TransformOptions options;
  options.source = fromFormat;
  options.destination = toFormat;
  options.precision = TransformPrecision::Exact;
  return engine == nullptr ? nullptr : engine->CreateTransform(from, to, options);
}

Formulas::Lab LabOf(const std::uint16_t *words)
{
  return {words[0] / 655.35, words[1] / 257.0 - 128.0, words[2] / 257.0 - 128.0};
}

/// The three ways of a round trip, exact for as many pixels as a band has.
struct RoundTrip
{
  PixelFormat from, device;
  std::shared_ptr<ColorTransform> meant, toDevice, shown;

  /// Of so many pixels without gaps, one distance each.
  bool Distances(std::vector<std::uint8_t> &pixels, std::uint32_t count, std::vector<float> &distances) const
  {
    std::vector<std::uint16_t> before(std::size_t{count} * 3), after(std::size_t{count} * 3);
    const auto view = CreateColorData(from, count, 1, 0, pixels.data());
    const auto printed = CreateColorData(device, count, 1);
    const auto beforeView = CreateColorData(kLab16, count, 1, 0, before.data());
    const auto afterView = CreateColorData(kLab16, count, 1, 0, after.data());
    if (!meant->Convert(*view, *beforeView) || !toDevice->Convert(*view, *printed) ||
        !shown->Convert(*printed, *afterView))
      return false;
    distances.resize(count);
    for (std::size_t i = 0; i < count; ++i)
      distances[i] = static_cast<float>(Formulas::Ciede2000(LabOf(&before[3 * i]), LabOf(&after[3 * i])));
    return true;
  }
};

/// Pixels without gaps, those that stand behind their like left out; `places` says for each where it is kept.
std::uint32_t LeaveOutRepeats(std::vector<std::uint8_t> &pixels, std::size_t size, std::vector<std::uint32_t> &places)
{
  std::uint8_t *kept = pixels.data();
  places.assign(pixels.size() / size, 0);
  for (std::size_t i = 1; i < places.size(); ++i) {
    const std::uint8_t *const pixel = pixels.data() + i * size;
    if (std::memcmp(pixel, kept, size) != 0) {
      kept += size;
      std::memmove(kept, pixel, size);
    }
    places[i] = static_cast<std::uint32_t>(static_cast<std::size_t>(kept - pixels.data()) / size);
  }
  return places.back() + 1;
}

} // namespace

// Programs that import the class take this by its address where they are not optimised.
constexpr double GamutCheck::kTolerance;

GamutCheck::GamutCheck(std::shared_ptr<ColorProfile> source, std::shared_ptr<ColorProfile> device)
  : source_(std::move(source)),
    device_(std::move(device))
{}

bool GamutCheck::Holds(const CLR_COLORSPEC &normalized) const
{
  Internal::RecordPixel pixel;
  float distance = 0.0f;
  if (!Internal::PixelFromRecord(normalized, pixel))
    return true;
  const auto view = CreateColorData(Internal::RecordPixelFormat(pixel.model), 1, 1, 0, pixel.bytes.data());
  return !Distances(*view, std::span(&distance, 1)) || distance <= kTolerance;
}

bool GamutCheck::Distances(const ColorData &source, std::span<float> distances) const
{
  const auto labProfile = ColorContext().GetColorProfile(ColorModel::Lab);
  const ColorModel sourceModel = source_->GetColorModel();
  const ColorModel deviceModel = device_->GetColorModel();
  if (source.GetColorModel() != sourceModel || distances.size() < std::size_t{source.GetWidth()} * source.GetHeight())
    return false;
  std::fill(distances.begin(), distances.end(), 0.0f);
  const PixelFormat format = Internal::RecordPixelFormat(sourceModel);
  const PixelFormat deviceFormat = Internal::RecordPixelFormat(deviceModel);
  if (labProfile == nullptr || source.GetWidth() == 0)
    return true;
  const RoundTrip trip = {format, deviceFormat, Transform(*source_, format, *labProfile, kLab16),
                          Transform(*source_, format, *device_, deviceFormat),
                          Transform(*device_, deviceFormat, *labProfile, kLab16)};
  if (trip.meant == nullptr || trip.toDevice == nullptr || trip.shown == nullptr)
    return true;

  // Bands, to bound the memory.
  const std::uint32_t columns = std::min(source.GetWidth(), kBandPixels / 2);
  const std::uint32_t rows = std::clamp(kBandPixels / 2 / columns, 1u, std::max(source.GetHeight(), 1u));
  const unsigned pixelSize = source.GetPixelFormat().BytesPerPixel();
  std::vector<std::uint8_t> pixels;
  std::vector<std::uint32_t> places;
  std::vector<float> judged;
  for (std::uint32_t top = 0; top < source.GetHeight(); top += rows) {
    for (std::uint32_t left = 0; left < source.GetWidth(); left += columns) {
      const std::uint32_t height = std::min(rows, source.GetHeight() - top);
      const std::uint32_t width = std::min(columns, source.GetWidth() - left);
      const auto part = CreateColorData(source.GetPixelFormat(), width, height, source.GetRowStride(),
                                        const_cast<std::uint8_t *>(source.GetRow(top)) + std::size_t{left} * pixelSize);
      pixels.resize(std::size_t{width} * height * format.BytesPerPixel());
      const auto all = CreateColorData(format, width, height, width * format.BytesPerPixel(), pixels.data());
      if (!ConvertByFormula(*part, *all) ||
          !trip.Distances(pixels, LeaveOutRepeats(pixels, format.BytesPerPixel(), places), judged))
        return false;
      for (std::size_t i = 0; i < places.size(); ++i)
        distances[(top + i / width) * source.GetWidth() + left + i % width] = judged[places[i]];
    }
  }
  return true;
}

namespace {

using MaskTables =
  UsageCountedItemCache<ColorTransformKey, std::shared_ptr<const Internal::BakedTable>, 16, ColorTransformKeyHash>;

MaskTables &TheMaskTables()
{
  static MaskTables tables;
  return tables;
}

/// One output: distances of 0 to twice the tolerance.
std::shared_ptr<const Internal::BakedTable> MaskTableOf(const GamutCheck &check, const PixelFormat &format)
{
  const auto nodes = Internal::NodesFor(format, Internal::StandardGrid(format));
  std::vector<float> distances(nodes.pixels->GetWidth());
  if (!check.Distances(*nodes.pixels, distances))
    return nullptr;
  const auto table = std::make_shared<Internal::BakedTable>();
  table->inputs = format.ColourChannels();
  table->outputs = 1;
  table->grid = nodes.grid;
  table->nodes.resize(4 * distances.size());
  for (std::size_t i = 0; i < distances.size(); ++i) {
    const double share = std::min(distances[i] / (2.0 * GamutCheck::kTolerance), 1.0);
    table->nodes[4 * i] = static_cast<std::uint16_t>(std::lround(share * 32767.0));
  }
  return table;
}

} // namespace

bool GamutCheck::Mask(const ColorData &source, std::span<std::uint8_t> mask) const
{
  const PixelFormat &format = source.GetPixelFormat();
  const std::size_t width = source.GetWidth();
  if (source.GetColorModel() != source_->GetColorModel() || mask.size() < width * source.GetHeight() ||
      !Internal::CanBake(format, {ColorModel::Grayscale, SampleType::UInt8}))
    return false;
  ColorTransformKey key;
  const auto engine = ColorManagementSystem::GetCurrent(); // another has other distances
  key.contents = {source_->GetContentNumber(), device_->GetContentNumber(),
                  engine == nullptr ? 0 : 1 + static_cast<std::uint64_t>(engine->GetModule())};
  key.options.source = format;
  auto table = TheMaskTables().Find(key).value_or(nullptr);
  if (table == nullptr) {
    table = MaskTableOf(*this, format);
    if (table == nullptr)
      return false;
    TheMaskTables().Add(key, table);
  }
  for (std::uint32_t row = 0; row < source.GetHeight(); ++row)
    Internal::ConvertBakedRow(*table, {format.BytesPerSample(), format.HasAlpha()}, source.GetRow(row), {},
                              mask.data() + row * width, width);
  for (std::uint8_t &pixel : mask.first(width * source.GetHeight()))
    pixel = pixel > 127 ? 255 : 0;
  return true;
}

} // namespace ColorSystem
