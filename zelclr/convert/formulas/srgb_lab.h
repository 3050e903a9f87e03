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

/// Linear sRGB to XYZ on D50. The rows are the D65 primaries adapted to D50, scaled so that equal components are
/// exactly neutral.
inline constexpr double kXyzFromLinearSrgb[3][3] = {
  {0.4360747, 0.3850649, 0.1430604}, {0.2225045, 0.7168786, 0.0606169}, {0.0139322, 0.0971045, 0.7138633}};
/// The inverse, to ten digits, so that white comes back as white.
inline constexpr double kLinearSrgbFromXyz[3][3] = {{3.1338499321, -1.6168462864, -0.4907404753},
                                                    {-0.9787692256, 1.9161436613, 0.0334411760},
                                                    {0.0719766267, -0.2290914049, 1.4058571239}};

constexpr double RowTimes(const double (&row)[3], double x, double y, double z)
{
  return row[0] * x + row[1] * y + row[2] * z;
}

/// XYZ on D50, Y = 1 for white, of encoded sRGB components 0 to 1.
inline Xyz XyzFromSrgb(double red, double green, double blue)
{
  const double r = LinearFromSrgb(red);
  const double g = LinearFromSrgb(green);
  const double b = LinearFromSrgb(blue);
  return {RowTimes(kXyzFromLinearSrgb[0], r, g, b), RowTimes(kXyzFromLinearSrgb[1], r, g, b),
          RowTimes(kXyzFromLinearSrgb[2], r, g, b)};
}

/// Encoded sRGB components, cut off to 0 to 1, of XYZ on D50.
inline RealRgb SrgbFromXyz(const Xyz &xyz)
{
  const auto encode = [&](const double(&row)[3]) {
    return std::clamp(SrgbFromLinear(RowTimes(row, xyz.x, xyz.y, xyz.z)), 0.0, 1.0);
  };
  return {encode(kLinearSrgbFromXyz[0]), encode(kLinearSrgbFromXyz[1]), encode(kLinearSrgbFromXyz[2])};
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
