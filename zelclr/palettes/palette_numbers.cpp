#include "zelclr/palettes/internal/palette_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>

namespace ZelClr::Internal {

namespace {

std::string_view WithoutLeadingBlanks(std::string_view text)
{
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
  return text;
}

/// Blanks and a plus sign, which std::from_chars does not know.
std::string_view StartOfNumber(std::string_view text)
{
  text = WithoutLeadingBlanks(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-')
    text.remove_prefix(1);
  return text;
}

/// Of a number that is too large or too small for its type: whether it is too large. That is so when its first digit
/// but 0 stands before the point, by the exponent.
bool IsTooLarge(std::string_view number)
{
  const std::size_t e = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, e);
  const std::string_view exponent = StartOfNumber(number.substr(std::min(e + 1, number.size())));
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
  std::int64_t order = 0;
  if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), order).ec == std::errc::result_out_of_range)
    return !exponent.starts_with('-');
  return order > first - point;
}

/// Up to 15 digits with a point among them, as nearly all numbers are, and the comma behind them. They and the power of
/// ten are exact, so that their quotient is rounded once, as the number should be.
std::optional<double> NextPlainFraction(std::string_view &rest)
{
  constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  std::int64_t number = 0;
  std::size_t digits = 0;
  std::size_t digitsBeforePoint = std::string_view::npos;
  std::size_t i = 0;
  for (; i < rest.size() && rest[i] != ','; ++i) {
    if (rest[i] >= '0' && rest[i] <= '9' && digits < std::size(kPowers) - 1) {
      number = number * 10 + (rest[i] - '0');
      ++digits;
    } else if (rest[i] == '.' && digitsBeforePoint == std::string_view::npos) {
      digitsBeforePoint = digits;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0)
    return std::nullopt;
  rest.remove_prefix(std::min(i + 1, rest.size()));
  return static_cast<double>(number) / kPowers[digits - std::min(digitsBeforePoint, digits)];
}

template <class Number>
Number Next(std::string_view &rest)
{
  const std::size_t comma = rest.find(',');
  const std::string_view text = StartOfNumber(rest.substr(0, comma));
  rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);

  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) {
    if (!IsTooLarge(text.substr(0, static_cast<std::size_t>(end - text.data()))))
      return 0;
    return text.front() == '-' ? std::numeric_limits<Number>::lowest() : std::numeric_limits<Number>::max();
  }
  return error == std::errc{} && std::isfinite(number) ? number : 0;
}

} // namespace

double NextFraction(std::string_view &rest)
{
  const auto plain = NextPlainFraction(rest);
  return plain ? *plain : Next<double>(rest);
}

float NextFloat(std::string_view &rest)
{
  return Next<float>(rest);
}

int WholeNumber(std::string_view text)
{
  text = StartOfNumber(text);
  int number = 0;
  const auto error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
  if (error == std::errc::result_out_of_range)
    return text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
  return error == std::errc{} ? number : 0;
}

int UnitOfFraction(double fraction, int scale)
{
  return static_cast<int>(std::clamp(fraction, 0.0, 1.0) * scale + 0.5);
}

std::string ShortestFraction(int unit, int scale)
{
  // n / 10^d, divided once and so rounded once, is the very number that reading the decimals gives.
  for (std::int64_t power = 1;; power *= 10) {
    const std::int64_t n = (2 * unit * power + scale) / (2 * std::int64_t{scale});
    if (UnitOfFraction(static_cast<double>(n) / static_cast<double>(power), scale) != unit)
      continue;
    if (n == 0 || n == power)
      return n == 0 ? "0" : "1";
    return "0." + std::to_string(power + n).substr(1); // with its leading zeros
  }
}

} // namespace ZelClr::Internal
