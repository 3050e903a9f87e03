// The arithmetic of formula_pixels.h on single pixels, in floats that are channels of 0 to 1, made for loops that the
// compiler vectorises: no branches, no calls, no table. Nothing here depends on the instruction set.
//
// The curves and the matrices are those of convert/formulas/srgb_lab.h. Their powers are roots by Halley's method on a
// first guess from the bits of the float, to a relative error of 2e-7; sums in which terms of both signs may cancel are
// made in doubles. Results lie within 1e-6 of the formulas in doubles.
//
// Threads and errors: plain arithmetic; NaN in may give any number out.
#pragma once

#include "zelclr/colorsystem/internal/xyz_of_d65.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace ColorSystem::Steps {

/// As SetSample cuts off: a NaN becomes 0.
inline float Cut(float value)
{
  const float low = value > 0.0f ? value : 0.0f;
  return low < 1.0f ? low : 1.0f;
}

/// 0x1p23 (n + 1)/n bias - bits / n, as the bits of a float: t^(-1/n) within 4 %. `top` is chosen for the least error
/// on the range in use.
inline float RootGuess(float t, float top, float part)
{
  return std::bit_cast<float>(
    static_cast<std::int32_t>(top - static_cast<float>(std::bit_cast<std::int32_t>(t)) * part));
}

/// t^(1/3) for t of 0.007 to 1.1. With r = 1 - t z^3 for z near t^(-1/3):
///   t^(-1/3) = z (1 - r)^(-1/3) = z (1 + r/3 + 2 r^2/9 + 14 r^3/81 + ...)
///   t^(1/3) = t z^2 (1 - r)^(-2/3) = t z^2 (1 + 2 r/3 + 5 r^2/9 + ...)
inline float CubeRoot(float t)
{
  float z = RootGuess(t, 1419902766.0f, 1.0f / 3.0f);
  const float r = 1.0f - t * z * z * z;
  z = z + z * (r * (1.0f / 3.0f + r * (2.0f / 9.0f + r * (14.0f / 81.0f))));
  const float root = t * (z * z);
  const float rest = 1.0f - root * z;
  return root + root * (rest * (2.0f / 3.0f + rest * (5.0f / 9.0f)));
}

/// x^2.4 for x of 0.09 to 1: x^3 w with w = (x^3)^(-1/5); (1 - r)^(-1/5) = 1 + r/5 + 3 r^2/25 + 11 r^3/125 + ...
inline float PowerOf2Point4(float x)
{
  const float t = x * x * x;
  float w = RootGuess(t, 1277912490.0f, 1.0f / 5.0f);
  const float w2 = w * w;
  const float r = 1.0f - t * w * (w2 * w2);
  w = w + w * (r * (1.0f / 5.0f + r * (3.0f / 25.0f + r * (11.0f / 125.0f))));
  const float power = t * w;
  const float v2 = w * w;
  const float rest = 1.0f - power * (v2 * v2);
  return power + power * (rest * (1.0f / 5.0f + rest * (3.0f / 25.0f)));
}

/// Encoded 0 to 1 as linear light.
inline float Linear(float encoded)
{
  const float power = PowerOf2Point4((encoded + 0.055f) / 1.055f);
  return encoded <= 0.04045f ? encoded / 12.92f : power;
}

/// Linear light, cut off to 0 to 1, encoded: l^(1/2.4) = l^(1/4) (l^(1/2))^(1/3).
inline float Encoded(float linear)
{
  const float light = Cut(linear);
  const float root = std::sqrt(light);
  const float power = 1.055f * (std::sqrt(root) * CubeRoot(root)) - 0.055f;
  return light <= 0.0031308f ? light * 12.92f : power;
}

/// f of CIE Lab.
inline float LabCurve(float t)
{
  const float root = CubeRoot(t);
  return t > 216.0f / 24389.0f ? root : t * (841.0f / 108.0f) + 4.0f / 29.0f;
}

template <class Real>
inline Real InverseLabCurve(Real f)
{
  return f > static_cast<Real>(6.0 / 29.0) ? f * f * f
                                           : (f - static_cast<Real>(4.0 / 29.0)) * static_cast<Real>(108.0 / 841.0);
}

template <class Real>
struct Three
{
  Real first;
  Real second;
  Real third;
};

template <class Real>
inline Three<Real> Times(const Matrix &m, const Three<Real> &v)
{
  const auto sum = [&](const Triple &row) {
    return static_cast<Real>(row[0]) * v.first + static_cast<Real>(row[1]) * v.second +
           static_cast<Real>(row[2]) * v.third;
  };
  return {sum(m[0]), sum(m[1]), sum(m[2])};
}

// Of XYZ on D50 the steps use the ratios to white, X/Xn, Y/Yn and Z/Zn, for which f of Lab is made.
inline constexpr Matrix kOverWhite = Diagonal({1.0 / kWhiteOfD50[0], 1.0 / kWhiteOfD50[1], 1.0 / kWhiteOfD50[2]});
inline constexpr Matrix kTimesWhite = Diagonal(kWhiteOfD50);
inline constexpr Matrix kD50FromLinear = Rows(ZelClr::Formulas::kXyzFromLinearSrgb);
inline constexpr Matrix kLinearFromD50 = Rows(ZelClr::Formulas::kLinearSrgbFromXyz);
inline constexpr Matrix kRatiosFromLinear = ColorSystem::Times(kOverWhite, kD50FromLinear);
inline constexpr Matrix kLinearFromRatios = ColorSystem::Times(kLinearFromD50, kTimesWhite);
inline constexpr Matrix kXyzFromLinear = ColorSystem::Times(kXyzChannelsFromD50, kD50FromLinear);
inline constexpr Matrix kLinearFromXyz = ColorSystem::Times(kLinearFromD50, kD50FromXyzChannels);
inline constexpr Matrix kRatiosFromXyz = ColorSystem::Times(kOverWhite, kD50FromXyzChannels);
inline constexpr Matrix kXyzFromRatios = ColorSystem::Times(kXyzChannelsFromD50, kTimesWhite);

inline constexpr float kNeutral = 128.0f / 255.0f; // of a and b

inline Three<float> LinearRgb(float red, float green, float blue)
{
  return {Linear(red), Linear(green), Linear(blue)};
}

inline Three<float> EncodedRgb(const Three<double> &linear)
{
  return {Encoded(static_cast<float>(linear.first)), Encoded(static_cast<float>(linear.second)),
          Encoded(static_cast<float>(linear.third))};
}

/// L = 116 fy - 16, a = 500 (fx - fy), b = 200 (fy - fz), as channels.
inline Three<float> LabFromRatios(const Three<float> &ratios)
{
  const float fx = LabCurve(ratios.first);
  const float fy = LabCurve(ratios.second);
  const float fz = LabCurve(ratios.third);
  return {1.16f * fy - 0.16f, (fx - fy) * (500.0f / 255.0f) + kNeutral, (fy - fz) * (200.0f / 255.0f) + kNeutral};
}

template <class Real>
inline Real LabY(float l)
{
  return (static_cast<Real>(l) + static_cast<Real>(0.16)) / static_cast<Real>(1.16);
}

template <class Real>
inline Three<Real> RatiosFromLab(float l, float a, float b)
{
  const Real neutral = static_cast<Real>(128.0 / 255.0);
  const Real fy = LabY<Real>(l);
  const Real fx = fy + (static_cast<Real>(a) - neutral) * static_cast<Real>(255.0 / 500.0);
  const Real fz = fy - (static_cast<Real>(b) - neutral) * static_cast<Real>(255.0 / 200.0);
  return {InverseLabCurve(fx), InverseLabCurve(fy), InverseLabCurve(fz)};
}

/// n / 125 for n below 43,000, truncated: 33555 / 2^22 is 1.4e-7 more than 1 / 125, too little to matter.
constexpr std::uint16_t Part125(std::uint16_t n)
{
  return static_cast<std::uint16_t>(static_cast<std::uint16_t>(std::uint32_t{n} * 33555u >> 16) >> 6);
}

/// (299 r + 587 g + 114 b + 500) / 1000 of bytes, truncated: the nearest to the weighted gray, ties up. All in 16 bits:
///   299 = 8 37 + 3   587 = 8 73 + 3   114 = 8 14 + 2   1000 = 8 125
constexpr std::uint16_t NearestGray(std::uint16_t red, std::uint16_t green, std::uint16_t blue)
{
  const auto rest = static_cast<std::uint16_t>(static_cast<std::uint16_t>(3 * red + 3 * green + 2 * blue + 500) >> 3);
  return Part125(static_cast<std::uint16_t>(37 * red + 73 * green + 14 * blue + rest));
}

/// The same of components of 0 to 510, twice those of bytes.
///   299 = 16 18 + 11   587 = 16 36 + 11   114 = 16 7 + 2   2000 = 16 125
constexpr std::uint16_t NearestGrayOfTwice(std::uint16_t red, std::uint16_t green, std::uint16_t blue)
{
  const auto rest =
    static_cast<std::uint16_t>(static_cast<std::uint16_t>(11 * red + 11 * green + 2 * blue + 1000) >> 4);
  return Part125(static_cast<std::uint16_t>(18 * red + 36 * green + 7 * blue + rest));
}

} // namespace ColorSystem::Steps
