#include "zelclr/colorsystem/internal/raster_rows.h"

#include "zelclr/colorsystem/internal/record_samples.h"
#include "zelclr/colorsystem/simple_color_converter.h"
#include "zelclr/colour/colour_models.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace ColorSystem::Internal {

namespace {

namespace ClrModel = ZelClr::ClrModel;

/// Models of three bytes whose numbers only records understand, and the pixels that they become. XYZ255 is on another
/// white than pixels of Xyz.
constexpr std::pair<unsigned, ColorModel> kByRecord[] = {{ClrModel::Cmy255, ColorModel::Cmyk},
                                                         {ClrModel::Yiq255, ColorModel::Rgb},
                                                         {ClrModel::Lab, ColorModel::Lab},
                                                         {ClrModel::Xyz, ColorModel::Lab}};
constexpr std::size_t kRecordBytes = 3;

/// Samples of 8 bits whose full scale is another than 255.
bool IsScaled(const RasterFormat &raster)
{
  return raster.format.type == SampleType::UInt8 && raster.fullScale != 255.0;
}

/// Every sample of the rows from one scale to the other, rounded and cut off.
void Rescale(const ColorData &source, double from, ColorData &destination, double to)
{
  const std::size_t samples = std::size_t{source.GetWidth()} * source.GetPixelFormat().ChannelsPerPixel();
  for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
    std::transform(source.GetRow(row), source.GetRow(row) + samples, destination.GetRow(row), [&](std::uint8_t sample) {
      return static_cast<std::uint8_t>(std::min(sample * to / from, to) + 0.5);
    });
  }
}

bool ReadRecords(const ColorData &bytes, unsigned type, ColorData &pixels)
{
  RecordPixel pixel;
  const std::size_t size = pixels.GetPixelFormat().BytesPerPixel();
  CLR_COLORSPEC record, normalized;
  record.SetType(static_cast<std::uint16_t>(type));
  for (std::uint32_t row = 0; row < bytes.GetHeight(); ++row) {
    const std::uint8_t *from = bytes.GetRow(row);
    std::uint8_t *to = pixels.GetRow(row);
    for (std::uint32_t column = 0; column < bytes.GetWidth(); ++column, from += kRecordBytes, to += size) {
      for (std::size_t i = 0; i < kRecordBytes; ++i)
        record.SetComponent(i, from[i]);
      if (!PixelFromRecord(record, pixel) &&
          !(SimpleColorConverter::NormalizeColorSpec(record, normalized) && PixelFromRecord(normalized, pixel)))
        return false;
      std::memcpy(to, pixel.bytes.data(), size);
    }
  }
  return true;
}

bool WriteRecords(const ColorData &pixels, unsigned type, ColorData &bytes)
{
  RecordPixel pixel;
  pixel.model = pixels.GetColorModel();
  const std::size_t size = pixels.GetPixelFormat().BytesPerPixel();
  CLR_COLORSPEC record;
  for (std::uint32_t row = 0; row < bytes.GetHeight(); ++row) {
    const std::uint8_t *from = pixels.GetRow(row);
    std::uint8_t *to = bytes.GetRow(row);
    for (std::uint32_t column = 0; column < bytes.GetWidth(); ++column, from += size, to += kRecordBytes) {
      std::memcpy(pixel.bytes.data(), from, size);
      if (!RecordFromPixel(pixel, type, 255, record))
        return false;
      std::memcpy(to, record.GetRAWColor(), kRecordBytes);
    }
  }
  return true;
}

/// Where the pixels of a raster are converted: in place, or in a buffer of their own, which is null then.
std::unique_ptr<ColorData> StagingFor(const RasterFormat &raster, std::uint32_t width, std::uint32_t height)
{
  if (raster.recordType != 0)
    return CreateColorData(RecordPixelFormat(raster.format.model), width, height);
  return IsScaled(raster) ? CreateColorData(raster.format, width, height) : nullptr;
}

/// The view as the raster lies: three bytes to a pixel where only records understand it.
std::unique_ptr<ColorData> ViewOf(const RasterFormat &raster, std::uint32_t width, std::uint32_t height,
                                  std::uint32_t stride, void *pixels)
{
  const PixelFormat bytes = {ColorModel::Rgb, SampleType::UInt8};
  return CreateColorData(raster.recordType != 0 ? bytes : raster.format, width, height, stride, pixels);
}

} // namespace

std::optional<RasterFormat> RasterFormatOf(unsigned type)
{
  ColorModel model{};
  double fullScale = 0.0;
  if (!SimpleColorConverter::ColorTypeToColorModel(type, model, fullScale) || model == ColorModel::Spot ||
      model == ColorModel::Registration || model == ColorModel::Hls || model == ColorModel::Hsv)
    return std::nullopt;
  const auto *const byRecord = std::find_if(std::begin(kByRecord), std::end(kByRecord),
                                            [type](const auto &candidate) { return candidate.first == type; });
  if (byRecord != std::end(kByRecord))
    return RasterFormat{{byRecord->second, SampleType::UInt8}, fullScale, type};
  const SampleType sample = type == ClrModel::ScRgb ? SampleType::Float32
                            : fullScale == 65535.0  ? SampleType::UInt16
                                                    : SampleType::UInt8;
  const bool reversed = type == ClrModel::Rgb255 || type == ClrModel::Bgra;
  const bool alpha = type == ClrModel::Rgba || type == ClrModel::Bgra;
  return RasterFormat{{model, sample, reversed, alpha}, fullScale};
}

bool ConvertRaster(const SimpleColorConverter &converter, const void *source, const RasterFormat &from,
                   std::uint32_t sourceStride, void *destination, const RasterFormat &to,
                   std::uint32_t destinationStride, std::uint32_t width, std::uint32_t height)
{
  // A view to be read only; the interface of views knows no other.
  const auto sourceView = ViewOf(from, width, height, sourceStride, const_cast<void *>(source));
  const auto destinationView = ViewOf(to, width, height, destinationStride, destination);
  const auto stagedSource = StagingFor(from, width, height);
  const auto stagedDestination = StagingFor(to, width, height);
  if (from.recordType != 0) {
    if (!ReadRecords(*sourceView, from.recordType, *stagedSource))
      return false;
  } else if (stagedSource != nullptr)
    Rescale(*sourceView, from.fullScale, *stagedSource, 255.0);
  if (!converter.ConvertColorData(stagedSource != nullptr ? *stagedSource : *sourceView,
                                  stagedDestination != nullptr ? *stagedDestination : *destinationView))
    return false;
  if (to.recordType != 0)
    return WriteRecords(*stagedDestination, to.recordType, *destinationView);
  if (stagedDestination != nullptr)
    Rescale(*stagedDestination, 255.0, *destinationView, to.fullScale);
  return true;
}

} // namespace ColorSystem::Internal
