#include "zelclr/platform/text.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace ZelUtl {

namespace {

constexpr char32_t kReplacement = U'\uFFFD';

bool IsScalarValue(char32_t codePoint)
{
  return codePoint < 0xD800 || (codePoint > 0xDFFF && codePoint <= 0x10FFFF);
}

template <class Number, class... Format>
std::string NumberText(Number number, Format... format)
{
  std::array<char, 400> buffer; // a double without exponent has at most 309 digits before the point
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format...);
  return error == std::errc{} ? std::string(buffer.data(), end) : std::string();
}

} // namespace

std::wstring WideFromUtf8(std::string_view text)
{
  std::string valid;
  valid.reserve(text.size());
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), kReplacement);
  std::wstring wide;
  wide.reserve(valid.size());
  if constexpr (sizeof(wchar_t) == 2)
    utf8::unchecked::utf8to16(valid.begin(), valid.end(), std::back_inserter(wide));
  else
    utf8::unchecked::utf8to32(valid.begin(), valid.end(), std::back_inserter(wide));
  return wide;
}

std::string Utf8FromWide(std::wstring_view text)
{
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto codePoint = static_cast<char32_t>(text[i]);
    if constexpr (sizeof(wchar_t) == 2) {
      const auto next = i + 1 < text.size() ? static_cast<char32_t>(text[i + 1]) : 0;
      if (codePoint >= 0xD800 && codePoint < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
        codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
        ++i;
      }
    }
    utf8::unchecked::append(IsScalarValue(codePoint) ? codePoint : kReplacement, std::back_inserter(narrow));
  }
  return narrow;
}

std::wstring WideFromUtf16(std::u16string_view text)
{
  std::string narrow;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t codePoint = text[i];
    const char32_t next = i + 1 < text.size() ? text[i + 1] : U'\0';
    if (codePoint >= 0xD800 && codePoint < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
      ++i;
    }
    utf8::unchecked::append(IsScalarValue(codePoint) ? codePoint : kReplacement, std::back_inserter(narrow));
  }
  return WideFromUtf8(narrow);
}

std::u16string Utf16FromWide(std::wstring_view text)
{
  const std::string narrow = Utf8FromWide(text);
  std::u16string utf16;
  utf8::unchecked::utf8to16(narrow.begin(), narrow.end(), std::back_inserter(utf16));
  return utf16;
}

bool IsValidUtf8(std::string_view text)
{
  return utf8::is_valid(text.begin(), text.end());
}

std::optional<double> DoubleFromText(std::string_view text)
{
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(number))
    return std::nullopt;
  return number;
}

std::string TextFromNumber(double number)
{
  return NumberText(number);
}

std::string TextFromNumber(float number)
{
  return NumberText(number);
}

std::string TextFromNumber(double number, int decimals)
{
  std::string text = NumberText(number, std::chars_format::fixed, decimals);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
      text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string LowerAscii(std::string_view text)
{
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
  return lower;
}

std::string_view Trimmed(std::string_view text)
{
  constexpr std::string_view kBlanks = " \t\r\n\v\f";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace ZelUtl
