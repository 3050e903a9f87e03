// RGB and YIQ, the NTSC television model: Y 0 to 255, I and Q halved and offset so that 100 is neutral.
// Source of the coefficients: FCC 47 CFR 73.682 (1953), rounded to three digits.
//
// Threads and errors: plain arithmetic. Built without fused multiply-add, or a last bit may differ.
#pragma once

#include <algorithm>
#include <cmath>

namespace ZelClr::Formulas {

struct Yiq
{
  int y;
  int i;
  int q;
};

struct RealRgb
{
  double red;
  double green;
  double blue;
};

/// Components 0 to 255. I and Q are cut off to 0 to 255; Y needs no cutting within the range of the components.
inline Yiq YiqFromRgb(double red, double green, double blue)
{
  const double y = std::floor(0.299 * red + 0.587 * green + 0.114 * blue + 0.5);
  const double i = std::floor((0.596 * red - 0.274 * green - 0.322 * blue + 200.0) * 0.5 + 0.5);
  const double q = std::floor((0.211 * red - 0.523 * green + 0.312 * blue + 200.0) * 0.5 + 0.5);
  return {static_cast<int>(y), static_cast<int>(std::clamp(i, 0.0, 255.0)),
          static_cast<int>(std::clamp(q, 0.0, 255.0))};
}

/// Bytes in, components 0 to 255 out, cut off but not rounded.
///
/// KEPT: the half is added to Y, I and Q before the coefficients, where one would expect it added to the results for
/// rounding; stored data depends on it.
inline RealRgb RgbFromYiq(int storedY, int storedI, int storedQ)
{
  const double y = storedY + 0.5;
  const double i = 2.0 * storedI - 200.0 + 0.5;
  const double q = 2.0 * storedQ - 200.0 + 0.5;
  return {std::clamp(y + 0.956 * i + 0.621 * q, 0.0, 255.0), std::clamp(y - 0.272 * i - 0.647 * q, 0.0, 255.0),
          std::clamp(y - 1.106 * i + 1.703 * q, 0.0, 255.0)};
}

} // namespace ZelClr::Formulas
