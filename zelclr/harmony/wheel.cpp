#include "zelclr/harmony/wheel.h"

#include "zelclr/harmony/internal/wheel_tables.h"

#include <cmath>

namespace ZelClr {

namespace {

int Entry(const std::array<std::int16_t, 360> &table, int hue)
{
  return hue < 0 || hue >= 360 ? 0 : table[static_cast<std::size_t>(hue)];
}

} // namespace

double WrappedDegrees(double degrees)
{
  const double rest = std::remainder(degrees, 360.0); // -180 to 180
  return rest == -180.0 ? 180.0 : rest;
}

int WheelHueFromHsb(int hue)
{
  return Entry(Internal::kWheelFromHsb, hue);
}

int HsbHueFromWheel(int hue)
{
  return Entry(Internal::kHsbFromWheel, hue);
}

} // namespace ZelClr
