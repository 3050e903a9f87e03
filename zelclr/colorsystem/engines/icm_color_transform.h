// Transforms of the operating system's colour management: Image Color Management, the Windows Color System, and the
// module that other programs install. Where the platform has none, none is made.
//
// Formats: 8 bits in every model, both flags for Rgb only; 16 bits in every model but Hexachrome, with both flags; no
// floats. What is not among them makes no transform, nor does a format of another model than its profile's.
// Black-point compensation is not to be had here: the option is without effect.
//
// Threads and errors: as ColorTransform.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/platform/system_colour_management.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ColorSystem {

/// Its handle is the system's transform; its formats are the system's bitmap formats, where it has one of that layout.
class IcmColorTransform : public BaseColorTransform<ZelUtl::SystemColourManagement::Transform,
                                                    std::optional<ZelUtl::SystemColourManagement::BitmapFormat>>
{
public:
  static std::shared_ptr<ColorTransform> Create(const ColorProfile &source, const ColorProfile &destination,
                                                const TransformOptions &options);
  /// The marks of a check are full in all channels; the system tells what the proof profile cannot show.
  static std::shared_ptr<ColorTransform> CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                     const ColorProfile *display, const TransformOptions &options);
  bool Convert(const ColorData &source, ColorData &destination) const override;

protected:
  /// What sets the engines apart.
  struct Kind
  {
    ZelUtl::SystemColourManagement::ProfileInterface profiles;
    std::uint32_t flags;
    std::uint32_t module; ///< that is selected while a transform is made
  };
  static const Kind kIcm, kWcs, kAdobe;

  explicit IcmColorTransform(const TransformOptions &options);

  static std::shared_ptr<ColorTransform> CreateAs(const Kind &kind, const ColorProfile &source,
                                                  const ColorProfile &destination, const TransformOptions &options);
  static std::shared_ptr<ColorTransform> CreateProofAs(const Kind &kind, const ColorProfile &source,
                                                       const ColorProfile &proof, const ColorProfile *display,
                                                       const TransformOptions &options);

private:
  bool Translate(const ColorData &source, ColorData &destination) const;
  bool TranslateBitmaps(const ColorData &source, ColorData &destination) const;
  bool TranslateByColours(const ColorData &source, ColorData &destination) const;
  bool TranslateInSteps(const ColorData &source, ColorData &destination) const;
  bool IsMask() const { return handle_ == nullptr && steps_.empty(); }
  /// A byte for each pixel, 0 for those that the proof profile can show.
  std::optional<std::vector<std::uint8_t>> OutOfGamut(const ColorData &source) const;

  /// Of a proof where the system makes no chain of three profiles: to the proof profile, and from there.
  std::vector<std::shared_ptr<ColorTransform>> steps_;
  PixelFormat between_;
  /// From the source to the proof profile, where what that cannot show is marked; a mask has no other transform.
  ZelUtl::SystemColourManagement::Transform check_;
};

class WcsColorTransform : public IcmColorTransform
{
public:
  static std::shared_ptr<ColorTransform> Create(const ColorProfile &source, const ColorProfile &destination,
                                                const TransformOptions &options);
  static std::shared_ptr<ColorTransform> CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                     const ColorProfile *display, const TransformOptions &options);
};

/// An ICM transform, made while the other module is selected.
class AdobeCmmColorTransform : public IcmColorTransform
{
public:
  static std::shared_ptr<ColorTransform> Create(const ColorProfile &source, const ColorProfile &destination,
                                                const TransformOptions &options);
  static std::shared_ptr<ColorTransform> CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                     const ColorProfile *display, const TransformOptions &options);
};

} // namespace ColorSystem
