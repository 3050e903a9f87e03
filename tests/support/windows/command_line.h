// Words to a command line and back.
#pragma once

#include <string>
#include <vector>

namespace tests {

/// The line of which CommandLineToArgvW makes these words of UTF-8 again.
std::wstring CommandLineOf(const std::vector<std::string> &words);

/// What a shell makes of a line: words, and where the standard streams lead.
struct ShellCommand
{
  std::vector<std::string> words;
  std::string input = "NUL"; ///< a file, as of "<file"
  std::string output;        ///< a file, as of ">file"; empty where it is to be captured
};

/// As far as the tests use a shell: blanks, both quotes, backslashes and redirections. Throws at anything else.
ShellCommand ShellCommandOf(const std::string &line);

} // namespace tests
