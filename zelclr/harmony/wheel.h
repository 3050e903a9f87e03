// The artist's wheel: the circle of hues on which the distances between the primaries are those that painters use, and
// harmonies are worked out. Red is at 0, yellow at 108, green at 168, blue at 275 of 360 degrees.
//
// Threads: plain functions. Errors: none; every number is some hue.
#pragma once

#include "zelclr/platform/export.h"

namespace ZelClr {

/// The whole turns taken off: 0 to 359.
constexpr int WithinTurn(int degrees)
{
  const int rest = degrees % 360;
  return rest < 0 ? rest + 360 : rest;
}

/// The shortest way from one hue to another, in degrees: above -180, to 180. Whole degrees stay exact.
ZELCLR_API double WrappedDegrees(double degrees);

/// The hue on the wheel, 0 to 359, of an HSB hue. One of 360 or more, or below 0, gives 0.
ZELCLR_API int WheelHueFromHsb(int hue);
/// The HSB hue, 0 to 359, of a hue on the wheel, likewise. The two are each other's inverse within one degree, but for
/// the HSB hues 354, 355 and 359, where the wheel is narrowest.
ZELCLR_API int HsbHueFromWheel(int hue);

} // namespace ZelClr
