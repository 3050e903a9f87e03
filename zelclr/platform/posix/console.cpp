#include "zelclr/platform/console.h"

#include <unistd.h>

#include <cstdlib>

namespace ZelUtl {

bool StandardOutputIsTerminal()
{
  return ::isatty(STDOUT_FILENO) == 1;
}

bool StandardErrorIsTerminal()
{
  return ::isatty(STDERR_FILENO) == 1;
}

std::vector<std::string> ProgramArguments(int count, char **words)
{
  return {words, words + count};
}

void PrepareStandardStreams() {}

bool StandardOutputTakesEscapes()
{
  return StandardOutputIsTerminal() && EnvironmentVariable("TERM") != "dumb";
}

std::optional<std::string> EnvironmentVariable(const char *name)
{
  const char *value = std::getenv(name);
  return value ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace ZelUtl
