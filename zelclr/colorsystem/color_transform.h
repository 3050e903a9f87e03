// Transforms: what turns the pixels of one profile into those of another. The engines make them.
//
// Threads: one transform may be used by many threads at once.
// Errors: false, with the destination unspecified.
#pragma once

#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colorsystem/color_model.h"

namespace ColorSystem {

/// How a transform trades time for exactness.
enum class TransformPrecision : std::uint8_t
{
  /// Colours and small buffers exactly, and tables when enough pixels are asked for: see BakingColorTransform. What a
  /// buffer becomes may then depend, by the error of the tables, on what was converted before.
  Automatic,
  /// Every pixel by the profiles themselves, at most half a step of 8 bits off.
  Exact,
  /// Every pixel by tables, the first one, too, where the formats allow for it.
  Baked
};

/// What a transform is made for, beside its profiles.
struct TransformOptions
{
  /// From the source to the destination; of a proof transform, from the source to what is proofed.
  RenderingIntent intent = RenderingIntent::RelativeColorimetric;
  /// Of a proof transform, from what is proofed to the display.
  RenderingIntent displayIntent = RenderingIntent::RelativeColorimetric;
  bool blackPointCompensation = false;
  /// Of a proof transform: mark what the proof profile cannot show.
  bool gamutCheck = false;
  TransformPrecision precision = TransformPrecision::Automatic;
  /// Of tables: nodes along each channel of the source, at most 2^20 in all; 0 for 33 of three channels, 17 of four.
  /// Little is gained for one channel, and nothing for Rgb profiles that are curves and a matrix, which need no grid.
  std::uint16_t gridPoints = 0;
  PixelFormat source;
  PixelFormat destination;

  friend bool operator==(const TransformOptions &, const TransformOptions &) = default;
};

class ZELCLR_API ColorTransform
{
public:
  virtual ~ColorTransform() = default;

  /// Both views must have the formats that the transform was made for and one size. The destination's alpha is copied
  /// from the source where it has one, else full. The views may be of one buffer when their pixels have one size.
  /// A transform made to check the gamut without a display writes its mask here: 0 in gamut, full scale out of it.
  virtual bool Convert(const ColorData &source, ColorData &destination) const = 0;
};

/// Where source and destination need no conversion: copies nothing and succeeds.
class ZELCLR_API NullColorTransform final : public ColorTransform
{
public:
  bool Convert(const ColorData & /*source*/, ColorData & /*destination*/) const override { return true; }
};

/// What transforms of engines share: the engine's own handle, and the formats that they were made for.
template <class Handle, class Format>
class BaseColorTransform : public ColorTransform
{
protected:
  BaseColorTransform(Handle handle, const TransformOptions &options, Format sourceFormat, Format destinationFormat)
    : handle_(std::move(handle)),
      options_(options),
      sourceFormat_(sourceFormat),
      destinationFormat_(destinationFormat)
  {}

  bool Fits(const ColorData &source, const ColorData &destination) const
  {
    return source.GetPixelFormat() == options_.source && destination.GetPixelFormat() == options_.destination &&
           source.GetWidth() == destination.GetWidth() && source.GetHeight() == destination.GetHeight();
  }

  Handle handle_;
  TransformOptions options_;
  Format sourceFormat_;
  Format destinationFormat_;
};

} // namespace ColorSystem
