// sRGB, CIE XYZ and CIE Lab as measured colours: linear light, sRGB primaries, the D50 white of the ICC's profile
// connection space.
// Sources: IEC 61966-2-1 (transfer curve, primaries); ICC.1:2022, 7.2.16 (D50 = 0.9642, 1, 0.8249) and Annex E
// (adaptation by the linear Bradford matrix); CIE 15:2018, 8.2.1 (Lab).
//
// Threads and errors: plain arithmetic.
#pragma once

#include "zelclr/convert/formulas/record_lab.h"
#include "zelclr/convert/formulas/yiq.h"

#include <algorithm>
#include <cmath>

namespace ZelClr::Formulas {

/// Encoded 0 to 1 as linear light 0 to 1.
inline double LinearFromSrgb(double encoded)
{
  return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

inline double SrgbFromLinear(double linear)
{
  return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

inline constexpr Xyz kD50White = {0.9642, 1.0, 0.8249};

/// XYZ on D50, Y = 1 for white, of encoded sRGB components 0 to 1. The rows are the D65 primaries adapted to D50,
/// scaled so that equal components are exactly neutral.
inline Xyz XyzFromSrgb(double red, double green, double blue)
{
  const double r = LinearFromSrgb(red);
  const double g = LinearFromSrgb(green);
  const double b = LinearFromSrgb(blue);
  return {0.4360747 * r + 0.3850649 * g + 0.1430604 * b, 0.2225045 * r + 0.7168786 * g + 0.0606169 * b,
          0.0139322 * r + 0.0971045 * g + 0.7138633 * b};
}

/// Encoded sRGB components, cut off to 0 to 1, of XYZ on D50.
inline RealRgb SrgbFromXyz(const Xyz &xyz)
{
  const auto encode = [](double linear) { return std::clamp(SrgbFromLinear(linear), 0.0, 1.0); };
  return {encode(3.1338561 * xyz.x - 1.6168667 * xyz.y - 0.4906146 * xyz.z),
          encode(-0.9787684 * xyz.x + 1.9161415 * xyz.y + 0.0334540 * xyz.z),
          encode(0.0719453 * xyz.x - 0.2289914 * xyz.y + 1.4052427 * xyz.z)};
}

/// Lab on D50: f(t) = cube root of t above (6/29)^3, else (841/108) t + 4/29.
inline Lab CieLabFromXyz(const Xyz &xyz)
{
  const auto f = [](double t) { return t > 216.0 / 24389.0 ? std::cbrt(t) : t * 841.0 / 108.0 + 4.0 / 29.0; };
  const double fx = f(xyz.x / kD50White.x);
  const double fy = f(xyz.y / kD50White.y);
  const double fz = f(xyz.z / kD50White.z);
  return {116.0 * fy - 16.0, 500.0 * (fx - fy), 200.0 * (fy - fz)};
}

inline Xyz XyzFromCieLab(const Lab &lab)
{
  const auto cube = [](double f) { return f > 6.0 / 29.0 ? f * f * f : (f - 4.0 / 29.0) * 108.0 / 841.0; };
  const double fy = (lab.l + 16.0) / 116.0;
  return {kD50White.x * cube(fy + lab.a / 500.0), kD50White.y * cube(fy), kD50White.z * cube(fy - lab.b / 200.0)};
}

/// Bytes of sRGB as Lab on D50.
inline Lab CieLabFromRgb(int red, int green, int blue)
{
  return CieLabFromXyz(XyzFromSrgb(red / 255.0, green / 255.0, blue / 255.0));
}

} // namespace ZelClr::Formulas
