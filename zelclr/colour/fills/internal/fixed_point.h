// Real numbers as the fixed point numbers of fills.
//
// Threads and errors: plain arithmetic.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ZelClr {

/// value * scale, rounded half away from zero and cut off to 16 bits; 0 for what is no number.
inline std::int16_t FixedFromReal(double value, double scale)
{
  const double scaled = value * scale;
  return std::isnan(scaled) ? std::int16_t{0}
                            : static_cast<std::int16_t>(std::clamp(std::round(scaled), -32768.0, 32767.0));
}

} // namespace ZelClr
