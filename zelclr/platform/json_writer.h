// JSON text of a value.
//
// Threads: a plain function. Errors: none; what JSON has no words for is written as null.
#pragma once

#include "zelclr/platform/json_reader.h"

#include <string>

namespace ZelUtl {

/// UTF-8, a line to a value and two blanks to a level; small lists of plain values stand in one line. Numbers come back
/// to the last bit. Null stands for numbers that are not finite and for what lies deeper than kMostJsonDepth; malformed
/// UTF-8 becomes U+FFFD.
ZELCLR_API std::string JsonText(const JsonValue &value);

} // namespace ZelUtl
