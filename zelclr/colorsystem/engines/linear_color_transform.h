// Transforms by formula, without profiles: see formula_pixels.h. They exist on every system.
//
// Threads and errors: as ColorTransform.
#pragma once

#include "zelclr/colorsystem/engines/icm_color_transform.h"

namespace ColorSystem {

/// Between Rgb, Cmyk, Grayscale, Lab and Hexachrome by formula; any other pair is an ICM transform, where there are
/// such.
class LinearColorTransform : public IcmColorTransform
{
public:
  static std::shared_ptr<ColorTransform> Create(const ColorProfile &source, const ColorProfile &destination,
                                                const TransformOptions &options);
  /// The source as the proof's model can hold it, in the destination's. By formula every colour is in gamut: a mask
  /// is 0.
  static std::shared_ptr<ColorTransform> CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                     const ColorProfile *display, const TransformOptions &options);
  bool Convert(const ColorData &source, ColorData &destination) const override;

private:
  LinearColorTransform(const TransformOptions &options, ColorModel between, bool mask)
    : IcmColorTransform(options),
      between_(between),
      mask_(mask)
  {}

  ColorModel between_; // the model of the destination's profile, or of the proof's
  bool mask_;
};

} // namespace ColorSystem
