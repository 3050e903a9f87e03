// The two kinds of settings, colour settings and proof settings: what the commands ask of either.
//
// Threads and errors: those of the managers behind.
#pragma once

#include "zelclr/settings/settings_exchange.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

using ColorSystem::ColorSettings;
using ColorSystem::ProofColorSettings;

template <class Settings>
struct SettingsKind
{
  const char *title;
  const char *command;
  const char *schema;   ///< the first part of the schemas of its documents
  const char *variable; ///< names another factory file; null when nothing does
  std::vector<std::shared_ptr<Settings>> (*presets)();
  const Settings &(*inForce)();
  bool (*use)(const Settings &settings);
  bool (*add)(const std::vector<std::shared_ptr<Settings>> &all, bool replace, std::wstring &taken);
  bool (*remove)(const std::wstring &name);
  std::string (*writeFailure)();
  std::string (*userPath)();
  std::string (*factoryPath)();
  /// The preset that the user's country starts with; empty when that does not count.
  std::wstring (*localeDefault)();
  std::wstring (*localizedName)(const Settings &settings);
  std::optional<ColorSystem::SettingsContents<Settings>> (*read)(std::string_view bytes, std::string &reason);
};

template <class Settings>
const SettingsKind<Settings> &Kind();
template <>
const SettingsKind<ColorSettings> &Kind();
template <>
const SettingsKind<ProofColorSettings> &Kind();

} // namespace cli
