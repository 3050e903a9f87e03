#include "zelclr/colorsystem/gamut_check.h"

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/formula_pixels.h"
#include "zelclr/colorsystem/internal/record_samples.h"
#include "zelclr/convert/formulas/colour_difference.h"

#include <algorithm>

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
  return engine == nullptr ? nullptr : engine->CreateTransform(from, to, options);
}

Formulas::Lab LabAt(const ColorData &lab, std::uint32_t row, std::uint32_t column)
{
  return {lab.GetSample(row, column, 0) * 100.0, lab.GetSample(row, column, 1) * 255.0 - 128.0,
          lab.GetSample(row, column, 2) * 255.0 - 128.0};
}

} // namespace

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
  const auto toDevice = Transform(*source_, format, *device_, deviceFormat);
  const auto meant = labProfile == nullptr ? nullptr : Transform(*source_, format, *labProfile, kLab16);
  const auto shown = labProfile == nullptr ? nullptr : Transform(*device_, deviceFormat, *labProfile, kLab16);
  if (toDevice == nullptr || meant == nullptr || shown == nullptr || source.GetWidth() == 0)
    return true;

  // Bands of fewer pixels than engines convert by a table: what is near the edge must be exact.
  const std::uint32_t columns = std::min(source.GetWidth(), kBandPixels / 2);
  const std::uint32_t rows = std::clamp(kBandPixels / 2 / columns, 1u, std::max(source.GetHeight(), 1u));
  const std::size_t pixelSize = source.GetPixelFormat().BytesPerPixel();
  for (std::uint32_t top = 0; top < source.GetHeight(); top += rows) {
    for (std::uint32_t left = 0; left < source.GetWidth(); left += columns) {
      const std::uint32_t height = std::min(rows, source.GetHeight() - top);
      const std::uint32_t width = std::min(columns, source.GetWidth() - left);
      const auto part = CreateColorData(source.GetPixelFormat(), width, height, source.GetRowStride(),
                                        const_cast<std::uint8_t *>(source.GetRow(top)) + left * pixelSize);
      const auto pixels = CreateColorData(format, width, height);
      const auto device = CreateColorData(deviceFormat, width, height);
      const auto before = CreateColorData(kLab16, width, height);
      const auto after = CreateColorData(kLab16, width, height);
      if (!ConvertByFormula(*part, *pixels) || !meant->Convert(*pixels, *before) ||
          !toDevice->Convert(*pixels, *device) || !shown->Convert(*device, *after))
        return false;
      for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column)
          distances[(std::size_t{top} + row) * source.GetWidth() + left + column] =
            static_cast<float>(Formulas::Ciede2000(LabAt(*before, row, column), LabAt(*after, row, column)));
      }
    }
  }
  return true;
}

} // namespace ColorSystem
