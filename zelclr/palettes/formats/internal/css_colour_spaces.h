// The colour spaces that style sheets and design tokens name.
// Source: W3C, CSS Color Module Level 4, 7 to 11 and 18 (matrices, curves); B. Ottosson, "A perceptual color space for
// image processing", 2020 (Oklab).
//
//   name                          components                              becomes
//   srgb, srgb-linear             red, green, blue of 0 to 1              RGB
//   hsl, hwb                      degrees, then percent                   RGB
//   display-p3, a98-rgb,          red, green, blue of 0 to 1              RGB, beyond 0 to 1 where sRGB ends
//   prophoto-rgb, rec2020
//   oklab, oklch                  L of 0 to 1; a, b or chroma, degrees    RGB, likewise
//   lab, lch                      L* of 0 to 100; a*, b* or chroma, degrees; D50      Lab
//   xyz-d50, xyz-d65              Y of 1 is white                         Lab
//
// Threads: plain functions. Errors: an empty result with a reason.
#pragma once

#include "zelclr/palettes/formats/swatch_book.h"

namespace ZelClr {

/// How far beyond 0 to 1 RGB may go: farther than every display and every camera.
inline constexpr double kMostBeyondRgb = 3.0;

/// The swatch, without a name. RGB components may lie beyond 0 to 1 by kMostBeyondRgb, a* and b* within 160, chroma of
/// Lab within 230; hues turn.
std::optional<Swatch> SwatchOfCssSpace(std::string_view space, const std::array<double, 3> &components,
                                       std::string &reason);

} // namespace ZelClr
