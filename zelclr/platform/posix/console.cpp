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

std::optional<std::string> EnvironmentVariable(const char *name)
{
  const char *value = std::getenv(name);
  return value ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace ZelUtl
