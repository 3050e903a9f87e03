#include "zelclr/colorsystem/color_data.h"

#include "zelclr/colorsystem/color_system_error.h"

#include <limits>
#include <new>

namespace ColorSystem {

namespace {

std::uint32_t CheckedStride(const PixelFormat &format, std::uint32_t width, std::uint32_t height, std::uint32_t stride)
{
  const std::uint64_t row = std::uint64_t{format.BytesPerPixel()} * width;
  const std::uint64_t used = stride == 0 ? (row + 3) / 4 * 4 : stride;
  if (used < row)
    throw ColorSystemError("ColorData: The row stride is too small");
  if (used > std::numeric_limits<std::uint32_t>::max() ||
      used * height > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()))
    throw ColorSystemError("ColorData: The buffer is too large");
  return static_cast<std::uint32_t>(used);
}

template <class Sample, int kFullScale>
std::unique_ptr<ColorData> Create(const PixelFormat &format, std::uint32_t width, std::uint32_t height,
                                  std::uint32_t stride, void *buffer)
{
  const auto make = [&]<bool kReversed, bool kAlpha>() -> std::unique_ptr<ColorData> {
    return std::make_unique<TypedColorData<Sample, kReversed, kAlpha, kFullScale>>(format.model, width, height, stride,
                                                                                   buffer);
  };
  if (format.reversed)
    return format.alpha ? make.template operator()<true, true>() : make.template operator()<true, false>();
  return format.alpha ? make.template operator()<false, true>() : make.template operator()<false, false>();
}

} // namespace

ColorData::ColorData(const PixelFormat &format, std::uint32_t width, std::uint32_t height, std::uint32_t rowStride,
                     void *buffer)
  : format_(format),
    width_(width),
    height_(height),
    rowStride_(CheckedStride(format, width, height, rowStride)),
    pixels_(static_cast<std::uint8_t *>(buffer))
{
  if (buffer != nullptr)
    return;
  const std::size_t size = std::size_t{rowStride_} * height_;
  owned_.reset(new (std::nothrow) std::uint8_t[size]());
  if (owned_ == nullptr)
    throw ColorSystemError("ColorData: No memory for the buffer");
  pixels_ = owned_.get();
}

ColorData::~ColorData() = default;

void ColorData::FillAlpha()
{
  if (!format_.HasAlpha())
    return;
  for (std::uint32_t row = 0; row < height_; ++row) {
    for (std::uint32_t column = 0; column < width_; ++column)
      SetSample(row, column, format_.ColourChannels(), 1.0f);
  }
}

std::unique_ptr<ColorData> CreateColorData(const PixelFormat &format, std::uint32_t width, std::uint32_t height,
                                           std::uint32_t rowStride, void *buffer)
{
  switch (format.type) {
  case SampleType::UInt8:
    return Create<std::uint8_t, 255>(format, width, height, rowStride, buffer);
  case SampleType::UInt16:
    return Create<std::uint16_t, 65535>(format, width, height, rowStride, buffer);
  case SampleType::Float32:
    return Create<float, 1>(format, width, height, rowStride, buffer);
  case SampleType::Packed32:
    return Create<std::uint32_t, 255>(format, width, height, rowStride, buffer);
  case SampleType::Packed64:
    return Create<std::uint64_t, 65535>(format, width, height, rowStride, buffer);
  }
  throw ColorSystemError("ColorData: Unknown sample type");
}

} // namespace ColorSystem
