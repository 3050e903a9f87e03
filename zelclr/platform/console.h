// What a command-line tool asks of the terminal and the environment.
//
// Threads: plain functions. Errors: what is not known is empty or false.
#pragma once

#include "zelclr/platform/export.h"

#include <optional>
#include <string>
#include <vector>

namespace ZelUtl {

ZELCLR_API bool StandardOutputIsTerminal();
ZELCLR_API bool StandardErrorIsTerminal();
/// Whether it is a terminal that obeys escape sequences. On Windows they are switched on by PrepareStandardStreams.
ZELCLR_API bool StandardOutputTakesEscapes();

/// What main was called with in UTF-8, the program's own name first.
ZELCLR_API std::vector<std::string> ProgramArguments(int count, char **words);

/// For the start of main: the standard streams then carry bytes as they are, and a console takes UTF-8 until the
/// process ends.
ZELCLR_API void PrepareStandardStreams();

/// The value of an environment variable, UTF-8; empty when it is not set.
ZELCLR_API std::optional<std::string> EnvironmentVariable(const char *name);

} // namespace ZelUtl
