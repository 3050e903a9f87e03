// Changes of scale between whole numbers, as the record stores them.
//
// Threads and errors: plain arithmetic.
#pragma once

#include <algorithm>
#include <cstdint>

namespace ZelClr {

/// value * numerator / denominator, rounded half away from zero; the denominator is positive.
constexpr int MulDiv(int value, int numerator, int denominator)
{
  const int product = value * numerator;
  return (product + (product < 0 ? -(denominator / 2) : denominator / 2)) / denominator;
}

/// 0-100 to 0-255; a percentage above 100 saturates.
constexpr std::uint8_t ByteFromPercent(int percent)
{
  return static_cast<std::uint8_t>(std::min(MulDiv(percent, 255, 100), 255));
}

/// 0-255 to 0-100.
constexpr std::uint8_t PercentFromByte(int byte)
{
  return static_cast<std::uint8_t>(MulDiv(byte, 100, 255));
}

/// 0-255 to 0-65535: the byte repeated in both halves.
constexpr std::uint16_t WordFromByte(int byte)
{
  return static_cast<std::uint16_t>(byte * 257);
}

/// 0-65535 to 0-255 by its upper half: truncation.
constexpr std::uint8_t ByteFromWord(int word)
{
  return static_cast<std::uint8_t>(word >> 8);
}

} // namespace ZelClr
