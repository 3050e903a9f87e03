// Text between the outer world and the library: UTF-8 and wide strings, numbers in the C locale.
//
// Wide strings are UTF-16 where wchar_t has 16 bits and UTF-32 where it has 32.
// Threads: plain functions. The process's locale is never read or changed.
// Errors: bad UTF becomes U+FFFD; text that is not a number gives an empty optional.
#pragma once

#include "zelclr/platform/export.h"

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>

namespace ZelUtl {

/// Wide text of UTF-8; each malformed sequence becomes U+FFFD.
ZELCLR_API std::wstring WideFromUtf8(std::string_view text);
/// UTF-8 of wide text; each lone surrogate or number beyond U+10FFFF becomes U+FFFD.
ZELCLR_API std::string Utf8FromWide(std::wstring_view text);
/// Wide text of UTF-16 and back; lone surrogates and numbers beyond U+10FFFF become U+FFFD.
ZELCLR_API std::wstring WideFromUtf16(std::u16string_view text);
ZELCLR_API std::u16string Utf16FromWide(std::wstring_view text);
ZELCLR_API bool IsValidUtf8(std::string_view text);

/// The number that the whole text states; no blanks, no plus sign, no locale. Never infinite and never NaN.
ZELCLR_API std::optional<double> DoubleFromText(std::string_view text);
/// The shortest text that reads back as the same number, without an exponent unless that is shorter.
ZELCLR_API std::string TextFromNumber(double number);
ZELCLR_API std::string TextFromNumber(float number);
/// The number with at most `decimals` digits behind the point and no trailing zeros.
ZELCLR_API std::string TextFromNumber(double number, int decimals);

/// The whole number that the whole text states, empty when it does not fit into `Integer`.
template <std::integral Integer>
std::optional<Integer> IntegerFromText(std::string_view text, int base = 10)
{
  Integer number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc{} || end != text.data() + text.size())
    return std::nullopt;
  return number;
}

/// ASCII letters lowered, everything else as it stands.
ZELCLR_API std::string LowerAscii(std::string_view text);
/// Every letter of every script lowered that has one lower form; for names that are looked for without regard to case.
ZELCLR_API std::wstring FoldedCase(std::wstring text);
/// The text without ASCII blanks, tabs and line ends at both sides.
ZELCLR_API std::string_view Trimmed(std::string_view text);

} // namespace ZelUtl
