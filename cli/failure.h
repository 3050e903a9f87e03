// How a command ends: the exit codes, and the way to fail.
#pragma once

#include <stdexcept>
#include <string>

namespace cli {

/// Frozen: scripts depend on them.
enum class ExitCode
{
  Fine = 0,
  Findings = 1,
  Usage = 2,
  Unreadable = 3,
  Missing = 4
};

/// Ends the command: `message` goes to standard error.
struct Failure : std::runtime_error
{
  Failure(ExitCode exitCode, const std::string &message) : std::runtime_error(message), code(exitCode) {}
  ExitCode code;
};

} // namespace cli
