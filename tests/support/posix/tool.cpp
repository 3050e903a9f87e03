#include "tests/support/tool.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <stdexcept>

namespace tests {

ToolResult RunTool(const std::string &words, const std::string &settings)
{
  const TemporaryFolder folder;
  const std::string command =
    "NO_COLOR= TERM=xterm " + settings + " " ZELCLR_TOOL " " + words + " 2>" + folder.Path("errors");
  std::FILE *const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr)
    throw std::runtime_error("cannot run " + command);
  ToolResult result{};
  std::array<char, 4096> buffer;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe))
    result.output.append(buffer.data(), count);
  const int status = ::pclose(pipe);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result.errors = TextOf(folder.Path("errors"));
  return result;
}

} // namespace tests
