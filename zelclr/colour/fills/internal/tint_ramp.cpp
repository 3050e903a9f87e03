#include "zelclr/colour/fills/internal/tint_ramp.h"

#include "zelclr/colour/fills/internal/hue_blend.h"
#include "zelclr/colour/scaling.h"

namespace ZelClr {

namespace {

using Formulas::Rgb;

template <class At>
std::shared_ptr<const TintRamp> RampOf(At at)
{
  auto ramp = std::make_shared<TintRamp>();
  for (int gray = 0; gray < 256; ++gray)
    ramp->colours[static_cast<std::size_t>(gray)] = TintRamp::Packed(at(gray));
  return ramp;
}

RealRgb RealOf(const Rgb &rgb)
{
  return {rgb.red / 255.0, rgb.green / 255.0, rgb.blue / 255.0};
}

int ByteOf(double component)
{
  return static_cast<int>(std::clamp(component, 0.0, 1.0) * 255.0 + 0.5);
}

} // namespace

std::shared_ptr<const TintRamp> ToneRamp(const Rgb &colour)
{
  const int middle = Formulas::GrayFromRgb(colour.red, colour.green, colour.blue);
  return RampOf([&](int gray) {
    const auto at = [&](int component) {
      if (gray == middle)
        return component;
      return gray < middle ? MulDiv(component, gray, middle)
                           : component + MulDiv(255 - component, gray - middle, 255 - middle);
    };
    return Rgb{at(colour.red), at(colour.green), at(colour.blue)};
  });
}

std::shared_ptr<const TintRamp> BlendRamp(const Rgb &black, const Rgb &white, ClrBlendMode mode)
{
  if (mode != ClrBlendMode_Hue && mode != ClrBlendMode_HueBack) {
    return RampOf([&](int gray) {
      const auto at = [gray](int from, int to) { return from + MulDiv(to - from, gray, 255); };
      return Rgb{at(black.red, white.red), at(black.green, white.green), at(black.blue, white.blue)};
    });
  }
  const HueBlend blend(RealOf(black), RealOf(white), mode == ClrBlendMode_HueBack);
  return RampOf([&](int gray) {
    if (gray == 0 || gray == 255)
      return gray == 0 ? black : white;
    const RealRgb at = blend.At(gray / 255.0);
    return Rgb{ByteOf(at.red), ByteOf(at.green), ByteOf(at.blue)};
  });
}

} // namespace ZelClr
