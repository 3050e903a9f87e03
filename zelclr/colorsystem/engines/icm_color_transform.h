// Transforms of the operating system's colour management: Image Color Management, the Windows Color System, and the
// module that other programs install. Where the platform has none, none is made.
//
// Threads and errors: as ColorTransform.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colorsystem/color_transform.h"

#include <cstdint>
#include <memory>

namespace ColorSystem {

/// Its handle is the system's transform, its formats are the system's bitmap formats.
class IcmColorTransform : public BaseColorTransform<std::shared_ptr<void>, std::uint32_t>
{
public:
  static std::shared_ptr<ColorTransform> Create(const ColorProfile &source, const ColorProfile &destination,
                                                const TransformOptions &options);
  static std::shared_ptr<ColorTransform> CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                     const ColorProfile *display, const TransformOptions &options);
  bool Convert(const ColorData &source, ColorData &destination) const override;

protected:
  explicit IcmColorTransform(const TransformOptions &options) : BaseColorTransform(nullptr, options, 0, 0) {}
};

class WcsColorTransform : public IcmColorTransform
{};

/// An ICM transform, made while the other module is selected.
class AdobeCmmColorTransform : public IcmColorTransform
{};

} // namespace ColorSystem
