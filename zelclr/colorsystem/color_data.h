// Views of rectangular pixel buffers, which transforms read and write.
//
// Threads: a view is a pointer with numbers; many may read one buffer, one may write it.
// Errors: constructors throw ColorSystemError for a buffer that cannot be; after that, addresses are not checked.
#pragma once

#include "zelclr/colorsystem/pixel_format.h"
#include "zelclr/platform/export.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

namespace ColorSystem {

class ZELCLR_API ColorData
{
public:
  virtual ~ColorData();
  ColorData(const ColorData &) = delete;
  ColorData &operator=(const ColorData &) = delete;

  std::uint32_t GetWidth() const { return width_; }
  std::uint32_t GetHeight() const { return height_; }
  /// Bytes from one row to the next.
  std::uint32_t GetRowStride() const { return rowStride_; }
  const PixelFormat &GetPixelFormat() const { return format_; }
  ColorModel GetColorModel() const { return format_.model; }
  bool OwnsBuffer() const { return owned_ != nullptr; }

  std::uint8_t *GetRow(std::uint32_t row) { return pixels_ + std::size_t{row} * rowStride_; }
  const std::uint8_t *GetRow(std::uint32_t row) const { return pixels_ + std::size_t{row} * rowStride_; }

  /// The bytes of one sample. Channels count as the model names them, whatever their order in memory; the one behind
  /// them is alpha.
  virtual std::uint8_t *GetSampleAddress(std::uint32_t row, std::uint32_t column, unsigned channel) = 0;
  const std::uint8_t *GetSampleAddress(std::uint32_t row, std::uint32_t column, unsigned channel) const
  {
    return const_cast<ColorData *>(this)->GetSampleAddress(row, column, channel);
  }
  /// The sample divided by its full scale: 0 to 1.
  virtual float GetSample(std::uint32_t row, std::uint32_t column, unsigned channel) const = 0;
  /// The value times the full scale, rounded to the nearest and cut off to 0 and the full scale (a NaN becomes 0);
  /// floats are stored as they are.
  virtual void SetSample(std::uint32_t row, std::uint32_t column, unsigned channel, float value) = 0;

  /// Gives every pixel full alpha; does nothing for a format without.
  void FillAlpha();

protected:
  /// `rowStride` 0 is the length of a row rounded up to 4 bytes. `buffer` stays the caller's and must have
  /// rowStride * (height - 1) bytes and one row; null gives the view a buffer of its own, of rowStride * height bytes,
  /// zero.
  ColorData(const PixelFormat &format, std::uint32_t width, std::uint32_t height, std::uint32_t rowStride,
            void *buffer);

private:
  PixelFormat format_;
  std::uint32_t width_;
  std::uint32_t height_;
  std::uint32_t rowStride_;
  std::unique_ptr<std::uint8_t[]> owned_;
  std::uint8_t *pixels_;
};

namespace Detail {

template <class Sample>
struct StoredSample // of the packed types, one of the four in a word
{
  using Type = Sample;
};
template <>
struct StoredSample<std::uint32_t>
{
  using Type = std::uint8_t;
};
template <>
struct StoredSample<std::uint64_t>
{
  using Type = std::uint16_t;
};

template <class Sample>
inline constexpr SampleType kSampleType = SampleType::UInt8;
template <>
inline constexpr SampleType kSampleType<std::uint16_t> = SampleType::UInt16;
template <>
inline constexpr SampleType kSampleType<float> = SampleType::Float32;
template <>
inline constexpr SampleType kSampleType<std::uint32_t> = SampleType::Packed32;
template <>
inline constexpr SampleType kSampleType<std::uint64_t> = SampleType::Packed64;

} // namespace Detail

/// The view of one sample type. The twenty: uint8_t 255, uint16_t 65535, float 1, uint32_t 255 (Packed32) and uint64_t
/// 65535 (Packed64), each with both values of both flags.
template <class Sample, bool kReversed, bool kAlpha, int kFullScale>
class ZELCLR_API TypedColorData final : public ColorData
{
public:
  TypedColorData(ColorModel model, std::uint32_t width, std::uint32_t height, std::uint32_t rowStride = 0,
                 void *buffer = nullptr)
    : ColorData({model, Detail::kSampleType<Sample>, kReversed, kAlpha}, width, height, rowStride, buffer)
  {}

  using ColorData::GetSampleAddress;
  std::uint8_t *GetSampleAddress(std::uint32_t row, std::uint32_t column, unsigned channel) override
  {
    return GetRow(row) + Offset(column, channel);
  }
  float GetSample(std::uint32_t row, std::uint32_t column, unsigned channel) const override
  {
    Stored sample;
    std::memcpy(&sample, GetRow(row) + Offset(column, channel), sizeof sample);
    return static_cast<float>(sample) / static_cast<float>(kFullScale);
  }
  void SetSample(std::uint32_t row, std::uint32_t column, unsigned channel, float value) override
  {
    Stored sample;
    if constexpr (std::is_floating_point_v<Stored>)
      sample = value;
    else // the comparison is false for a NaN
      sample = value > 0.0f ? static_cast<Stored>(std::lround(std::min(value, 1.0f) * static_cast<double>(kFullScale)))
                            : Stored{0};
    std::memcpy(GetRow(row) + Offset(column, channel), &sample, sizeof sample);
  }

private:
  using Stored = typename Detail::StoredSample<Sample>::Type;

  std::size_t Offset(std::uint32_t column, unsigned channel) const
  {
    const PixelFormat &format = GetPixelFormat();
    const unsigned colours = format.ColourChannels();
    const unsigned place = format.IsReversed() && channel < colours ? colours - 1 - channel : channel;
    return (std::size_t{column} * format.ChannelsPerPixel() + place) * sizeof(Stored);
  }
};

/// The view of a format; see the constructor of ColorData for the arguments and what throws.
ZELCLR_API std::unique_ptr<ColorData> CreateColorData(const PixelFormat &format, std::uint32_t width,
                                                      std::uint32_t height, std::uint32_t rowStride = 0,
                                                      void *buffer = nullptr);

} // namespace ColorSystem
