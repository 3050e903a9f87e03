// The curve of a blend: how much of the next colour is there at a share of the way. docs/fountains.md draws it.
//
// With the midpoint m and the acceleration a, at the share t of the way from one stop to the next:
//
//   u = t (1 - m) / (m (1 - t) + (1 - m) t)      the midpoint: u(m) = 1/2; the odds t : 1 - t grow by (1 - m) : m
//
//   w = (1 - a) u + a q(u)                       the acceleration, by method:
//     steady:  q(u) = u^2                         the speed dw/du = 1 - a + 2 a u grows evenly
//     eased:   q(u) = 3 u^2 - 2 u^3               no speed at both ends, when a = 1
//     smooth:  q(u) = 6 u^5 - 15 u^4 + 10 u^3     nor any change of speed
//
// Each is a polynomial or a fraction without a pole, so smooth; each rises all the way, for no slope is below zero:
// u' > 0, and q' is between 0 and 2, so that w' = 1 + a (q' - 1) is at least 0. 0 and 1 are met exactly. Without
// acceleration w = u, whatever the method. Turned round, u(1 - t) with 1 - m is 1 - u(t), and so with eased and smooth.
//
// Threads and errors: plain arithmetic. m is cut off to 0.01 to 0.99, a to -1 to 1.
#pragma once

#include "zelclr/colour/fills/clr_fountcolor_array.h"

#include <algorithm>

namespace ZelClr {

struct BlendCurve
{
  double midpoint = 0.5;
  double acceleration = 0.0;
  ClrBlendRateMethod method = ClrBlendRateMethod_Steady;

  /// Of the segment that starts at the stop.
  static BlendCurve Of(const CLR_FOUNTCOLOR_ARRAY &fountain, const CLR_FOUNTCOLOR &stop)
  {
    return {std::clamp(stop.GetBlendRateValue(), 0.01, 0.99),
            std::clamp(fountain.GetBlendRateAcceleration(), -1.0, 1.0), fountain.GetBlendRateMethod()};
  }

  double operator()(double t) const
  {
    if (!(t > 0.0))
      return 0.0;
    if (t >= 1.0)
      return 1.0;
    if (midpoint == 0.5 && acceleration == 0.0) // the most common one
      return t;
    const double u = t * (1.0 - midpoint) / (midpoint + (1.0 - 2.0 * midpoint) * t);
    return std::clamp((1.0 - acceleration) * u + acceleration * Bent(u), 0.0, 1.0);
  }

private:
  double Bent(double u) const
  {
    if (method != ClrBlendRateMethod_Eased && method != ClrBlendRateMethod_Smooth)
      return u * u;
    // The upper half is the lower one turned round: there small numbers stay exact, and so the curve monotone.
    return u > 0.5 ? 1.0 - LowerHalf(1.0 - u) : LowerHalf(u);
  }
  double LowerHalf(double u) const
  {
    return method == ClrBlendRateMethod_Eased ? u * u * (3.0 - 2.0 * u) : u * u * u * (10.0 + u * (6.0 * u - 15.0));
  }
};

} // namespace ZelClr
