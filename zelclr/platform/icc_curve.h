// One-dimensional curves of ICC profiles.
// Source: ICC.1:2022, 10.6 (curveType), 10.18 (parametricCurveType).
//
// Threads: values. Errors: an empty result for bytes that are no curve.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ZelUtl {

struct IccCurve
{
  std::vector<double> table; ///< 0 to 1 at equal steps; empty for a parametric curve
  // Parametric: (a x + b)^gamma + e from d on, c x + f below.
  double gamma = 1.0;
  double a = 1.0, b = 0.0, c = 0.0, d = 0.0, e = 0.0, f = 0.0;

  /// `x` 0 to 1; the result is cut off to 0 to 1.
  double At(double x) const;
};

/// More than a curve of a real profile has.
inline constexpr std::size_t kMostIccCurveBytes = 12 + 2 * 65536;

std::optional<IccCurve> IccCurveFromTag(std::span<const std::uint8_t> tag);

} // namespace ZelUtl
