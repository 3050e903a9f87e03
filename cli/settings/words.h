// What people call the values of settings.
//
// Threads and errors: constant tables.
#pragma once

#include "cli/profile/words.h"
#include "zelclr/settings/color_settings.h"

namespace cli {

struct PolicyWords
{
  ColorSystem::ColorPolicyAction action;
  const char *option; ///< on the command line and in JSON
  const char *name;
};

inline constexpr PolicyWords kPolicyWords[] = {
  {ColorSystem::ColorPolicyAction::AssignEmbeddedProfile, "assign-embedded", "the file's profile, numbers kept"},
  {ColorSystem::ColorPolicyAction::ConvertToEmbeddedProfile, "convert-embedded", "the file's profile, looks kept"},
  {ColorSystem::ColorPolicyAction::AssignBaselineProfile, "assign-baseline", "our profile, numbers kept"},
  {ColorSystem::ColorPolicyAction::ConvertToBaselineProfile, "convert-baseline", "our profile, looks kept"},
};

inline const PolicyWords &WordsOf(ColorSystem::ColorPolicyAction action)
{
  return kPolicyWords[static_cast<std::size_t>(action)];
}

struct ModuleWords
{
  ColorSystem::ColorManagementModule module;
  const char *option;
  const char *name;
};

inline constexpr ModuleWords kModuleWords[] = {
  {ColorSystem::ColorManagementModule::Icm, "icm", "Image Color Management"},
  {ColorSystem::ColorManagementModule::Wcs, "wcs", "Windows Color System"},
  {ColorSystem::ColorManagementModule::Adobe, "adobe", "Adobe's module"},
  {ColorSystem::ColorManagementModule::Linear, "linear", "by formula, without profiles"},
  {ColorSystem::ColorManagementModule::LCMS, "lcms", "Little CMS"},
};

inline const ModuleWords &WordsOf(ColorSystem::ColorManagementModule module)
{
  return kModuleWords[static_cast<std::size_t>(module)];
}

} // namespace cli
