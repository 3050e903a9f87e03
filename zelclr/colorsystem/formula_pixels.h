// Pixels between models by formula, without profiles.
//
// On channels of 0 to 1:
//   Rgb to Cmyk        k = min(1 - r, 1 - g, 1 - b), c = 1 - r - k, and so m, y     (formulas/cmyk.h, added inks)
//   Cmyk to Rgb        r = 1 - min(1, c + k), and so g, b
//   Rgb to Grayscale   0.299 r + 0.587 g + 0.114 b                                  (formulas/gray.h)
//   Rgb and Lab        sRGB in CIE Lab on D50, stored as L*/100, (a* + 128)/255, (b* + 128)/255   (formulas/srgb_lab.h)
//   Cmyk, Hexachrome   the same four inks with no orange and no green; back, orange is all of it yellow and half of it
//                      magenta, green all of it cyan and yellow                     (formulas/cmyk.h)
// Every other pair goes by way of Rgb, and results are cut off to 0 to 1.
//
// Threads: plain functions. Errors: false for models without a formula and for views of different sizes.
#pragma once

#include "zelclr/colorsystem/color_data.h"

namespace ColorSystem {

/// Whether both are among Rgb, Cmyk, Grayscale, Lab and Hexachrome.
bool HasFormula(ColorModel from, ColorModel to);

/// Any sample types and flags. Alpha is copied where both views have it, else full. The views may be of one buffer when
/// their pixels have one size and their rows one stride.
bool ConvertByFormula(const ColorData &source, ColorData &destination);

} // namespace ColorSystem
