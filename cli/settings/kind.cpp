#include "cli/settings/kind.h"

#include "zelclr/settings/color_settings_manager.h"
#include "zelclr/settings/proof_color_settings_manager.h"

namespace cli {

namespace {

using ColorSystem::ColorSettingsManager;
using ColorSystem::ProofColorSettingsManager;

constexpr SettingsKind<ColorSettings> kColourKind = {
  "Colour settings",
  "zelclr settings",
  "zelclr.settings",
  "ZELCLR_COLORSETTINGS_XML",
  [] { return ColorSettingsManager::GetInstance().EnumerateColorSettings(); },
  &ColorSettings::GetApplicationColorSettings,
  [](const ColorSettings &settings) {
    return ColorSettingsManager::GetInstance().SetApplicationColorSettings(settings);
  },
  [](const std::vector<std::shared_ptr<ColorSettings>> &all, bool replace, std::wstring &taken) {
    return ColorSettingsManager::GetInstance().AddColorSettings(all, replace, taken);
  },
  [](const std::wstring &name) { return ColorSettingsManager::GetInstance().RemoveColorSetting(name); },
  [] { return ColorSettingsManager::GetInstance().GetWriteFailure(); },
  &ColorSettingsManager::GetUserSettingsStoragePath,
  &ColorSettingsManager::GetFactorySettingsStoragePath,
  &ColorSettingsManager::GetLocaleDefaultSettingsName,
  [](const ColorSettings &settings) { return settings.GetLocalizedName(); },
  &ColorSystem::ColorSettingsFromXml,
};

constexpr SettingsKind<ProofColorSettings> kProofKind = {
  "Proof settings",
  "zelclr settings proof",
  "zelclr.settings.proof",
  nullptr,
  [] { return ProofColorSettingsManager::GetInstance().EnumerateProofColorSettings(); },
  []() -> const ProofColorSettings & {
    return ProofColorSettingsManager::GetInstance().GetApplicationProofColorSettings();
  },
  [](const ProofColorSettings &settings) {
    return ProofColorSettingsManager::GetInstance().SetApplicationProofColorSettings(settings);
  },
  [](const std::vector<std::shared_ptr<ProofColorSettings>> &all, bool replace, std::wstring &taken) {
    return ProofColorSettingsManager::GetInstance().AddProofColorSettings(all, replace, taken);
  },
  [](const std::wstring &name) { return ProofColorSettingsManager::GetInstance().RemoveColorSetting(name); },
  [] { return ProofColorSettingsManager::GetInstance().GetWriteFailure(); },
  &ProofColorSettingsManager::GetUserSettingsStoragePath,
  &ProofColorSettingsManager::GetFactorySettingsStoragePath,
  [] { return std::wstring(); },
  [](const ProofColorSettings &settings) { return settings.GetName(); },
  &ColorSystem::ProofColorSettingsFromXml,
};

} // namespace

template <>
const SettingsKind<ColorSettings> &Kind()
{
  return kColourKind;
}

template <>
const SettingsKind<ProofColorSettings> &Kind()
{
  return kProofKind;
}

} // namespace cli
