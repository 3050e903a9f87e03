// What the commands on settings do, for both kinds.
//
// Errors: throws Failure; a change that fails has changed nothing.
#pragma once

#include "cli/output.h"
#include "cli/settings/options.h"

#include <optional>
#include <string>

namespace cli {

/// The presets, and which are in force.
template <class Settings>
ExitCode ListSettings(const Output &output);
/// Every value of a preset, or of what is in force.
template <class Settings>
ExitCode ShowSettings(const std::optional<std::string> &name, const Output &output);
/// The files, and in what state they are.
template <class Settings>
ExitCode ShowFiles(const Output &output);

template <class Settings>
void UsePreset(const std::string &name, const Output &output);

struct Addition
{
  std::string name;
  std::optional<std::string> from; ///< the preset that it starts as; else what is in force
  bool replace = false;
  bool use = false;
};
template <class Settings>
void AddPreset(const Addition &addition, const Edits<Settings> &edits, const Output &output);
template <class Settings>
void RemovePreset(const std::string &name, const Output &output);

/// What is in force, a preset, or all presets of the user, as a settings file; "-" prints it.
template <class Settings>
void ExportSettings(const std::optional<std::string> &name, bool all, const std::string &path, const Output &output);
/// Adds the presets of a settings file, or the one of a file of its own, but no factory's: all of them or none.
template <class Settings>
void ImportSettings(const std::string &path, bool replace, const Output &output);

} // namespace cli
