// The commands of the tool. The one header that brings the command line's library, which takes long to compile: what
// adds no options includes cli/failure.h alone.
#pragma once

#include "cli/failure.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>

namespace cli {

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
