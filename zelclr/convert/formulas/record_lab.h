// The Lab and XYZ arithmetic of the record's own byte models: LAB, LAB255 and XYZ. For colours as people see them, with
// a white and primaries that are stated, use srgb_lab.h.
// Source: CIE 15:2004, 8.2.1; the white is X = 0.95, Y = 1, Z = 1.0877 (first and last in single precision).
//
// Threads and errors: plain arithmetic. Built without fused multiply-add, or a last bit may differ.
#pragma once

#include <cmath>

namespace ZelClr::Formulas {

struct Lab
{
  double l;
  double a;
  double b;
};

struct Xyz
{
  double x;
  double y;
  double z;
};

inline constexpr double kRecordWhiteX = 0.949999988079071;
inline constexpr double kRecordWhiteZ = 1.0877000093460083;

/// What a stored byte stands for: L* = byte * 100 / 255, a* and b* = byte * 60 / 127.
inline constexpr double kLabLPerByte = 0.39215686274509803;
inline constexpr double kLabAbPerByte = 0.47244094488188976;

/// The straight part of the CIE 1976 curve, below (6/29)^3 = 0.008856: f(t) = 7.787 t + 16/116.
inline constexpr double kLabSlope = 7.787;
inline constexpr double kLabOffset = 16.0 / 116.0;
inline constexpr double kLabEpsilon = 0.008856;
inline constexpr double kLabKappa = 903.3;

/// The byte L, a, b of LAB as L*, a*, b*.
constexpr Lab LabFromRecord(int l, int a, int b)
{
  return {l * kLabLPerByte, a * kLabAbPerByte, b * kLabAbPerByte};
}

/// L*, a*, b* as XYZ, Y = 1 for white.
///
///   fy = (L + 16)/116   fx = fy + a/500   fz = fy - b/200   Y = fy^3, or L/903.3 up to L = 7.9996248
///   X = Xn fx^3   Z = Zn fz^3,   on the straight part, f up to 6/29, (f - 16/116)/7.787 instead of the cube
inline Xyz XyzFromLab(const Lab &lab)
{
  constexpr double kCorner = 0.2068927064827586; // 24/116
  const bool dark = lab.l <= 7.9996248;
  const double y = lab.l / kLabKappa;
  const double fy = dark ? y * kLabSlope + kLabOffset : (lab.l + 16.0) / 116.0;
  const double fx = lab.a / 500.0 + fy;
  const double fz = fy - lab.b / 200.0;
  const double x = (kCorner - fy) * 500.0 >= lab.a ? (fx - kLabOffset) / kLabSlope : fx * fx * fx;
  const double z = (kCorner - fy) * 200.0 >= lab.b ? (fz - kLabOffset) / kLabSlope : fz * fz * fz;
  return {kRecordWhiteX * x, dark ? y : fy * fy * fy, kRecordWhiteZ * z};
}

/// XYZ as L*, a*, b*, with the cube root as a processor rounds it best: that of 64 is 4.
///
/// KEPT: where Z/Zn is at most 0.008856, b* repeats the term of a*, 500 (fx - fy), where one would expect
/// 200 (fy - fz); stored data depends on it.
inline Lab LabFromXyz(const Xyz &xyz)
{
  const auto f = [](double t) { return t <= kLabEpsilon ? kLabSlope * t + kLabOffset : std::cbrt(t); };
  const double fx = f(xyz.x / kRecordWhiteX);
  const double fy = f(xyz.y);
  const double z = xyz.z / kRecordWhiteZ;
  const double a = 500.0 * (fx - fy);
  return {xyz.y <= kLabEpsilon ? kLabKappa * xyz.y : 116.0 * fy - 16.0, a,
          z <= kLabEpsilon ? a : 200.0 * (fy - std::cbrt(z))};
}

} // namespace ZelClr::Formulas
