// Transforms of Little CMS.
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

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

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
  /// Opens the profiles and makes the library's transform, exact or faster.
  using Make = std::function<ZelUtl::LittleCms::Transform(const ZelUtl::LittleCms &, bool exact)>;

  LcmsColorTransform(std::shared_ptr<const ZelUtl::LittleCms> library, ZelUtl::LittleCms::Transform exact,
                     const TransformOptions &options, Make make, std::vector<std::string> paths);
  static std::shared_ptr<ColorTransform> Made(const TransformOptions &options, Make make,
                                              std::vector<std::string> paths);
  const ZelUtl::LittleCms::Transform &HandleFor(const ColorData &source) const;

  std::shared_ptr<const ZelUtl::LittleCms> library_;
  Make make_;
  std::vector<std::string> paths_; // of the profiles, and the state of the files when the exact transform was made
  std::vector<std::optional<ZelUtl::FileStamp>> stamps_;
  mutable std::once_flag fastOnce_;
  mutable ZelUtl::LittleCms::Transform fast_; // null when it could not be made
};

/// The library's layout of a format; None when there is none.
ZelUtl::LittleCmsFormat LittleCmsFormatOf(const PixelFormat &format);

} // namespace ColorSystem
