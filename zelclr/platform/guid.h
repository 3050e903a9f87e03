// Identifiers: 128-bit values that name palettes for ever.
//
// Threads: a value; distinct values may be used from any thread.
// Errors: text that is not an identifier gives an empty optional.
#pragma once

#include "zelclr/platform/export.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ZelUtils {

/// A 128-bit identifier, all zero when default-constructed.
///
/// The bytes stand as in the memory of the system's own identifier structure: a 32-bit and two 16-bit numbers, least
/// significant byte first, then eight bytes in order. Comparison is bytewise in this order.
struct Guid
{
private:
  static constexpr std::size_t kTextLength = 38;
  // Where the two digits of each byte stand in the text.
  static constexpr std::array<std::uint8_t, 16> kDigitOfByte = {7,  5,  3,  1,  12, 10, 17, 15,
                                                                20, 22, 25, 27, 29, 31, 33, 35};

  template <class Char>
  static constexpr int Digit(Char c)
  {
    if (c >= Char('0') && c <= Char('9'))
      return static_cast<int>(c - Char('0'));
    if (c >= Char('A') && c <= Char('F'))
      return static_cast<int>(c - Char('A')) + 10;
    if (c >= Char('a') && c <= Char('f'))
      return static_cast<int>(c - Char('a')) + 10;
    return -1;
  }

public:
  std::array<std::uint8_t, 16> bytes{};

  constexpr bool IsNull() const { return *this == Guid{}; }
  friend constexpr bool operator==(const Guid &, const Guid &) = default;
  friend constexpr auto operator<=>(const Guid &, const Guid &) = default;

  /// The identifier of the canonical text "{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}": braces, upper or lower case.
  template <class Char>
  static constexpr std::optional<Guid> FromText(std::basic_string_view<Char> text)
  {
    if (text.size() != kTextLength || text.front() != Char('{') || text.back() != Char('}'))
      return std::nullopt;
    Guid guid;
    for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
      const int high = Digit(text[kDigitOfByte[i]]);
      const int low = Digit(text[kDigitOfByte[i] + 1u]);
      if (high < 0 || low < 0)
        return std::nullopt;
      guid.bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
    }
    for (const std::size_t hyphen : {9u, 14u, 19u, 24u}) {
      if (text[hyphen] != Char('-'))
        return std::nullopt;
    }
    return guid;
  }
  static constexpr std::optional<Guid> FromText(std::string_view text) { return FromText<char>(text); }
  static constexpr std::optional<Guid> FromText(std::wstring_view text) { return FromText<wchar_t>(text); }

  /// The canonical text, with braces and in upper case.
  ZELCLR_API std::string ToText() const;
  ZELCLR_API std::wstring ToWideText() const;

private:
  template <class Text>
  Text AsText() const;
};
static_assert(sizeof(Guid) == 16);

inline namespace literals {
/// An identifier in source text; text that is no identifier does not compile.
consteval Guid operator""_guid(const char *text, std::size_t length)
{
  return *Guid::FromText(std::string_view(text, length));
}
} // namespace literals

/// A fresh identifier that no other machine makes: version 4 of RFC 9562, from the system's source of chance.
ZELCLR_API Guid NewGuid();

} // namespace ZelUtils
