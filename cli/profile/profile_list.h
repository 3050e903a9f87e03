// The installed profiles, and where they are looked for.
//
// Errors: throws Failure.
#pragma once

#include "cli/output.h"
#include "zelclr/colorsystem/color_profile.h"

#include <map>
#include <optional>
#include <string>

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

/// The names of models and classes on the command line: all of them in a row, and what each stands for.
std::string OptionsOfModels();
std::string OptionsOfClasses();
std::map<std::string, ColorSystem::ColorModel> ModelsByOption();
std::map<std::string, ColorSystem::DeviceClass> ClassesByOption();

} // namespace cli
