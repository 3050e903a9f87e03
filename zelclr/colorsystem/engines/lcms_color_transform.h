// Transforms of Little CMS: the profiles themselves are evaluated for every pixel, at most half a step off the result
// in floats. Tables are the business of BakingColorTransform.
//
// Formats: samples of 8 bits in every model, both flags for Rgb only; of 16 bits Rgb and Cmyk plain and reversed, the
// other models plain, Hexachrome not at all; no floats. What is not among them makes no transform.
//
// KEPT: Hls and Hsv are handed over as three inks, where one would expect their own kind; profiles of these models are
// refused by the library then, and always were.
//
// Threads and errors: as ColorTransform.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/platform/little_cms.h"

#include <memory>

namespace ColorSystem {

class LcmsColorTransform : public BaseColorTransform<ZelUtl::LittleCms::Transform, ZelUtl::LittleCmsFormat>
{
public:
  static std::shared_ptr<ColorTransform> Create(const ColorProfile &source, const ColorProfile &destination,
                                                const TransformOptions &options);
  static std::shared_ptr<ColorTransform> CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                     const ColorProfile *display, const TransformOptions &options);

  bool Convert(const ColorData &source, ColorData &destination) const override;

private:
  LcmsColorTransform(std::shared_ptr<const ZelUtl::LittleCms> library, ZelUtl::LittleCms::Transform handle,
                     const TransformOptions &options);
  /// `make(library, source format, destination format)` opens the profiles and makes the library's transform.
  template <class Make>
  static std::shared_ptr<ColorTransform> Made(const TransformOptions &options, Make make);

  std::shared_ptr<const ZelUtl::LittleCms> library_;
};

/// The library's layout of a format; None when there is none.
ZelUtl::LittleCmsFormat LittleCmsFormatOf(const PixelFormat &format);

} // namespace ColorSystem
