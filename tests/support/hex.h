// Bytes as text, for files that are typed by hand.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tests {

/// Pairs of hexadecimal digits, and ASCII between single quotes; blanks mean nothing: "'ASEF' 0001 0000".
inline std::string Hex(std::string_view text)
{
  std::string bytes;
  bool isQuoted = false;
  int high = -1;
  for (const char c : text) {
    if (c == '\'') {
      isQuoted = !isQuoted;
    } else if (isQuoted) {
      bytes += c;
    } else if (c != ' ') {
      const auto digit = std::string_view("0123456789ABCDEF").find(c);
      if (digit == std::string_view::npos)
        throw std::invalid_argument("no hexadecimal digit");
      if (high >= 0)
        bytes += static_cast<char>(high * 16 + static_cast<int>(digit));
      high = high >= 0 ? -1 : static_cast<int>(digit);
    }
  }
  if (high >= 0 || isQuoted)
    throw std::invalid_argument("half a byte");
  return bytes;
}

/// The number, most significant byte first.
inline std::string Big(std::uint32_t number, int size)
{
  std::string bytes;
  while (size-- > 0)
    bytes += static_cast<char>(number >> (8 * size));
  return bytes;
}

/// The number, least significant byte first.
inline std::string Little(std::uint32_t number, int size)
{
  const std::string bytes = Big(number, size);
  return {bytes.rbegin(), bytes.rend()};
}

} // namespace tests
