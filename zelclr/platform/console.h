// What a command-line tool asks of the terminal and the environment.
//
// Threads: plain functions. Errors: what is not known is empty or false.
#pragma once

#include "zelclr/platform/export.h"

#include <optional>
#include <string>

namespace ZelUtl {

ZELCLR_API bool StandardOutputIsTerminal();
ZELCLR_API bool StandardErrorIsTerminal();

/// The value of an environment variable, UTF-8; empty when it is not set.
ZELCLR_API std::optional<std::string> EnvironmentVariable(const char *name);

} // namespace ZelUtl
