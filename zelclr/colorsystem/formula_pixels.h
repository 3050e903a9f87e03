// Pixels between models by formula, without profiles. All thirty ordered pairs of Rgb, Cmyk, Hexachrome, Grayscale, Lab
// and Xyz.
//
// On channels of 0 to 1:
//   Rgb to Cmyk             k = min(1 - r, 1 - g, 1 - b), c = 1 - r - k, and so m, y
//   Cmyk to Rgb             r = 1 - min(1, c + k), and so g, b                   (both in formulas/cmyk.h, added inks)
//   Rgb to Grayscale        0.299 r + 0.587 g + 0.114 b, of the encoded components          (formulas/gray.h)
//   Grayscale to Rgb        three times the gray
//   Grayscale to the inks   k = 1 - gray alone
//   Cmyk to Hexachrome      the same four inks, no orange, no green
//   Hexachrome to Cmyk      orange is all of it yellow and half of it magenta, green all of it cyan and yellow; sums
//                           beyond 1 count as 1
//   Rgb and Lab, Xyz        sRGB in linear light                                 (formulas/srgb_lab.h)
//   Lab and Xyz             CIE Lab, adapted between the two whites by the linear Bradford matrix
//   Grayscale and Lab, Xyz  the neutral of the same luminance: gray is encoded as sRGB is, chroma is dropped
// Every other pair goes by way of Rgb, and from Hexachrome by way of Cmyk, without rounding between.
//
// Primaries are those of sRGB throughout. Lab is on D50, as in profiles, stored as L*/100, (a* + 128)/255 and
// (b* + 128)/255. Xyz is on D65, the white of sRGB, stored as X/0.95046, Y and Z/1.08906: what D65_XYZ.icc, the profile
// of that model, has for channels; white is 1, 1, 1.
//
// Channels beyond 0 to 1 count as 0 or 1, NaN as 0, and results are cut off likewise. They are rounded to the nearest
// sample. From 8 bits to 8 bits, Rgb, Cmyk, Grayscale and Hexachrome are exact among each other, halves going up;
// everything else is calculated in floats, within 1e-6 of the formula before it is rounded. Results are the same on
// every processor.
//
// Threads: plain functions. Errors: false for models without a formula and for views of different sizes.
#pragma once

#include "zelclr/colorsystem/color_data.h"

#include <array>

namespace ColorSystem {

/// Whether both are among Rgb, Cmyk, Grayscale, Lab, Hexachrome and Xyz.
ZELCLR_API bool HasFormula(ColorModel from, ColorModel to);

/// Any sample types and flags. Alpha is copied where both views have it, else full; from Cmyk to Rgb it is always full.
/// The views may be of one buffer when their pixels have one size and their rows one stride. Nothing but the pixels of
/// `destination` is written, and nothing at all when the result is false.
///
/// KEPT: Cmyk with alpha to Rgb with alpha fills alpha, where one would expect it to be copied; callers depend on it.
ZELCLR_API bool ConvertByFormula(const ColorData &source, ColorData &destination);

/// Three channels as the pixels of a model have them: see above.
using FormulaColor = std::array<double, 3>;

/// The same formulas on one colour, in doubles. Nothing is cut off but the result in RGB.
ZELCLR_API FormulaColor ConvertLabToXyz(const FormulaColor &lab);
ZELCLR_API FormulaColor ConvertXyzToLab(const FormulaColor &xyz);
ZELCLR_API FormulaColor ConvertXyzToRgb(const FormulaColor &xyz);
ZELCLR_API FormulaColor ConvertRgbToXyz(const FormulaColor &rgb);

} // namespace ColorSystem
