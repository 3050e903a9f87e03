// Gray of RGB by the luma weights of ITU-R BT.601, in whole numbers.
//
// Threads and errors: plain arithmetic.
#pragma once

#include <cstdint>

namespace ZelClr::Formulas {

/// Components 0 to 255; truncated.
constexpr int GrayFromRgb(int red, int green, int blue)
{
  return (299 * red + 587 * green + 114 * blue) / 1000;
}

/// Components 0 to 255, result 0 to 65280.
///
/// KEPT: white (255, 255, 255) gives 65280, the weighted gray times 256, where one would expect 65535; stored data
/// depends on it. The weights are in 16384ths.
constexpr int Gray16FromRgb(int red, int green, int blue)
{
  return (4899 * red + 9617 * green + 1868 * blue) >> 6;
}

/// Components and result 0 to 65535; truncated.
constexpr std::uint32_t Gray16FromRgb48(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
  return (299 * red + 587 * green + 114 * blue) / 1000;
}

} // namespace ZelClr::Formulas
