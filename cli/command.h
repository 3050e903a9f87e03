// What the commands of the tool share: the options that all have, the exit codes, the way to fail.
#pragma once

#include "cli/output.h"

#include <CLI/CLI.hpp>

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

/// Adds a command to the tool. Its callback writes data to standard output, everything else to standard error, and
/// leaves the exit code behind.
void AddContrast(CLI::App &app, Output &output, ExitCode &exitCode);
void AddConvert(CLI::App &app, Output &output, ExitCode &exitCode);
void AddGradient(CLI::App &app, Output &output, ExitCode &exitCode);
void AddHarmony(CLI::App &app, Output &output, ExitCode &exitCode);
void AddImage(CLI::App &app, Output &output, ExitCode &exitCode);
void AddInfo(CLI::App &app, Output &output, ExitCode &exitCode);
void AddPalette(CLI::App &app, Output &output, ExitCode &exitCode);
void AddProfile(CLI::App &app, Output &output, ExitCode &exitCode);
void AddProof(CLI::App &app, Output &output, ExitCode &exitCode);
void AddReport(CLI::App &app, Output &output, ExitCode &exitCode);
void AddSettings(CLI::App &app, Output &output, ExitCode &exitCode);

} // namespace cli
