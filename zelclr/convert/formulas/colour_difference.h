// CIEDE2000, the difference of two colours as people see it: about 1 is just visible side by side, 5 plain.
// Source: CIE 142-2001; G. Sharma, W. Wu, E. Dalal, "The CIEDE2000 Color-Difference Formula", Color Research and
// Application 30(1), 2005, whose test pairs the tests replay.
//
// Threads and errors: plain arithmetic.
#pragma once

#include "zelclr/convert/formulas/record_lab.h"

#include <algorithm>

namespace ZelClr::Formulas {

/// Symmetric; 0 exactly for equal colours. Lab of both on the same white; kL = kC = kH = 1.
inline double Ciede2000(const Lab &first, const Lab &second)
{
  constexpr double kPi = 3.14159265358979323846;
  constexpr double kDegree = kPi / 180.0;
  const auto power7 = [](double c) { return c * c * c * c * c * c * c; };
  const auto chromaWeight = [&](double c) { return std::sqrt(power7(c) / (power7(c) + 6103515625.0)); }; // 25^7
  const auto hueOf = [&](double a, double b) {
    const double hue = a == 0.0 && b == 0.0 ? 0.0 : std::atan2(b, a);
    return hue < 0.0 ? hue + 2.0 * kPi : hue;
  };

  const double meanChroma = (std::hypot(first.a, first.b) + std::hypot(second.a, second.b)) / 2.0;
  const double stretch = 1.5 - 0.5 * chromaWeight(meanChroma); // 1 + G
  const double a1 = stretch * first.a;
  const double a2 = stretch * second.a;
  const double c1 = std::hypot(a1, first.b);
  const double c2 = std::hypot(a2, second.b);
  const double h1 = hueOf(a1, first.b);
  const double h2 = hueOf(a2, second.b);

  const bool neutral = c1 * c2 == 0.0;
  const bool acrossZero = std::abs(h1 - h2) > kPi;
  double deltaHue = neutral ? 0.0 : h2 - h1;
  if (!neutral && acrossZero)
    deltaHue += deltaHue > 0.0 ? -2.0 * kPi : 2.0 * kPi;
  double meanHue = h1 + h2;
  if (!neutral)
    meanHue = (acrossZero ? meanHue + (meanHue < 2.0 * kPi ? 2.0 * kPi : -2.0 * kPi) : meanHue) / 2.0;

  const double dL = second.l - first.l;
  const double dC = c2 - c1;
  const double dH = 2.0 * std::sqrt(c1 * c2) * std::sin(deltaHue / 2.0);
  const double meanL = (first.l + second.l) / 2.0;
  const double meanC = (c1 + c2) / 2.0;

  const double t = 1.0 - 0.17 * std::cos(meanHue - 30.0 * kDegree) + 0.24 * std::cos(2.0 * meanHue) +
                   0.32 * std::cos(3.0 * meanHue + 6.0 * kDegree) - 0.20 * std::cos(4.0 * meanHue - 63.0 * kDegree);
  const double fromMiddle = (meanL - 50.0) * (meanL - 50.0);
  const double sL = 1.0 + 0.015 * fromMiddle / std::sqrt(20.0 + fromMiddle);
  const double sC = 1.0 + 0.045 * meanC;
  const double sH = 1.0 + 0.015 * meanC * t;
  const double fromBlue = (meanHue / kDegree - 275.0) / 25.0;
  const double turn = 30.0 * kDegree * std::exp(-fromBlue * fromBlue);
  const double rT = -std::sin(2.0 * turn) * 2.0 * chromaWeight(meanC);

  const double l = dL / sL;
  const double c = dC / sC;
  const double h = dH / sH;
  return std::sqrt(std::max(0.0, l * l + c * c + h * h + rT * c * h));
}

} // namespace ZelClr::Formulas
