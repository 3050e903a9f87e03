// The lines of a text file, with their numbers.
//
// Threads: a value. Errors: none; every sequence of bytes is lines.
#pragma once

#include "zelclr/platform/text.h"

#include <string_view>

namespace ZelClr {

/// Lines longer than this are mistakes or attacks.
inline constexpr std::size_t kMostLineBytes = 4096;
inline constexpr const char *kLineTooLong = "a line of more than 4096 bytes";

/// Takes a text apart at line ends (LF, CR LF or CR); a byte order mark at its start is skipped.
class TextLines
{
public:
  explicit TextLines(std::string_view text) : rest_(text)
  {
    if (rest_.starts_with("\xEF\xBB\xBF"))
      rest_.remove_prefix(3);
  }

  /// The next line, without blanks at both sides; false at the end.
  bool Next(std::string_view &line)
  {
    if (rest_.empty())
      return false;
    ++number_;
    const auto end = rest_.find_first_of("\r\n");
    line = ZelUtl::Trimmed(rest_.substr(0, end));
    if (end == std::string_view::npos) {
      rest_ = {};
      return true;
    }
    rest_.remove_prefix(rest_.substr(end).starts_with("\r\n") ? end + 2 : end + 1);
    return true;
  }
  std::size_t Number() const { return number_; }

private:
  std::string_view rest_;
  std::size_t number_ = 0;
};

/// Takes the text up to the next blank off the front, and the blanks behind it.
inline std::string_view NextWord(std::string_view &line)
{
  const auto end = line.find_first_of(" \t");
  const std::string_view word = line.substr(0, end);
  line = end == std::string_view::npos ? std::string_view() : ZelUtl::Trimmed(line.substr(end));
  return word;
}

} // namespace ZelClr
