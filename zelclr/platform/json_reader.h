// JSON from files that anybody may have written, as a value; and texts for JSON.
//
// What is refused: more than kMostJsonDepth levels, more than kMostJsonValues values, a name that stands twice in one
// object, numbers that are not finite, text that is not UTF-8. A byte order mark is skipped.
// Threads: values and plain functions. Errors: an empty result, with the line and the reason in English.
#pragma once

#include "zelclr/platform/export.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ZelUtl {

inline constexpr int kMostJsonDepth = 64;
inline constexpr std::size_t kMostJsonValues = 4'000'000;

struct JsonMember;

struct JsonValue
{
  using Array = std::vector<JsonValue>;
  using Members = std::vector<JsonMember>; ///< in the order of the document

  std::variant<std::monostate, bool, double, std::string, Array, Members> value;

  const double *Number() const { return std::get_if<double>(&value); }
  const std::string *Text() const { return std::get_if<std::string>(&value); }
  const Array *Items() const { return std::get_if<Array>(&value); }
  const Members *Object() const { return std::get_if<Members>(&value); }
};

struct JsonMember
{
  std::string name;
  JsonValue value;
};

/// The member of that name; null when it is missing, or when this is no object.
ZELCLR_API const JsonValue *FindMember(const JsonValue &object, std::string_view name);

/// `line` is from 1, 0 when the fault has none.
ZELCLR_API std::optional<JsonValue> ReadJson(std::string_view text, std::size_t &line, std::string &reason);

/// The text between quotation marks, its special characters escaped; malformed UTF-8 becomes U+FFFD.
ZELCLR_API std::string QuotedJson(std::string_view text);

} // namespace ZelUtl
