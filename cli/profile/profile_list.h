// The installed profiles, and where they are looked for.
//
// Errors: throws Failure.
#pragma once

#include "cli/output.h"
#include "zelclr/colorsystem/color_profile.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cli {

struct ProfileFilter
{
  std::optional<ColorSystem::ColorModel> model;
  std::optional<ColorSystem::DeviceClass> deviceClass;
};

/// Prints the profiles that the filter lets through, by model, class and name.
void ListProfiles(const ProfileFilter &filter, const Output &output);
/// Prints the folders in the order in which they are searched.
void ListFolders(const Output &output);
/// Prints the path of a profile, and nothing else.
void PrintPath(const std::string &nameOrPath, const Output &output);

/// Words of the command line and what each stands for.
template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;
Choices<ColorSystem::ColorModel> ModelChoices();
Choices<ColorSystem::DeviceClass> ClassChoices();

} // namespace cli
