// The tool as its users run it: a shell's words in, text and an exit code out.
#pragma once

#include "tests/support/temporary_folder.h"

#include <string>

namespace tests {

struct ToolResult
{
  int exitCode;       ///< -1 when a signal ended it
  std::string output; ///< standard output
  std::string errors; ///< standard error
};

/// `settings` are variables of the environment, "NAME=value", with blanks between. In posix/ and windows/.
ToolResult RunTool(const std::string &words, const std::string &settings = "");

} // namespace tests
