#include "zelclr/settings/proof_color_settings_manager.h"

#include "zelclr/platform/folders.h"
#include "zelclr/settings/internal/settings_store.h"
#include "zelclr/settings/internal/settings_xml.h"

namespace ColorSystem {

namespace {

std::string FileBelow(const std::string &folder)
{
  return folder.empty() ? folder : ZelUtl::JoinPath(ZelUtl::JoinPath(folder, "Settings"), "ProofColorSettings.xml");
}

constexpr SettingsForm<ProofColorSettings> kForm = {
  "ProofColorSettingsCollection",
  "ProofColorSettingsPresets",
  "ProofColorSettingsDefaults",
  "ProofColorSettings",
  "d8247fb9-69e2-42a9-b5ee-5c427d19df24",
  &ProofColorSettingsManager::GetUserSettingsStoragePath,
  &ProofColorSettingsManager::GetFactorySettingsStoragePath,
  [](ProofColorSettings &settings, const ZelUtl::WXmlNode &element) {
    return Internal::ReadProofColorSettings(settings, element);
  },
  [](const ProofColorSettings &settings, const ZelUtl::WXmlNode &parent, std::wstring_view id) {
    return Internal::WriteProofColorSettings(settings, parent, id);
  },
  [](const SettingsForm<ProofColorSettings>::Presets &) {
    return ProofColorSettingsManager::GetFactoryProofColorSettings();
  },
  &ProofColorSettingsManager::GetFactoryProofColorSettings,
  [] {},
  [](const ProofColorSettings &) {},
  [] {}};

/// Never destroyed but by Shutdown: watchers cannot be waited for while the process ends.
ZelUtl::Singleton<ProofColorSettingsManager> &Manager()
{
  static auto &manager = *new ZelUtl::Singleton<ProofColorSettingsManager>;
  return manager;
}

} // namespace

ProofColorSettingsManager::ProofColorSettingsManager()
  : store_(std::make_unique<SettingsStore<ProofColorSettings>>(kForm))
{}

ProofColorSettingsManager::~ProofColorSettingsManager() = default;

ProofColorSettingsManager &ProofColorSettingsManager::GetInstance()
{
  return Manager().Get([] { return std::unique_ptr<ProofColorSettingsManager>(new ProofColorSettingsManager); });
}

void ProofColorSettingsManager::Shutdown()
{
  Manager().Release();
}

std::vector<std::shared_ptr<ProofColorSettings>> ProofColorSettingsManager::EnumerateProofColorSettings() const
{
  return store_->Enumerate();
}

std::shared_ptr<ProofColorSettings> ProofColorSettingsManager::GetProofColorSettings(const std::wstring &name) const
{
  return store_->Find(name);
}

const ProofColorSettings &ProofColorSettingsManager::GetApplicationProofColorSettings() const
{
  return store_->Application();
}

bool ProofColorSettingsManager::SetApplicationProofColorSettings(const ProofColorSettings &settings)
{
  return store_->SetApplication(settings);
}

bool ProofColorSettingsManager::AreApplicationProofColorSettingsDefaults() const
{
  return store_->IsFromDefaults();
}

bool ProofColorSettingsManager::AddProofColorSettings(const ProofColorSettings &settings)
{
  return store_->Add(settings);
}

bool ProofColorSettingsManager::AddProofColorSettings(const std::vector<std::shared_ptr<ProofColorSettings>> &all,
                                                      bool replace, std::wstring &taken)
{
  return store_->AddAll(all, replace, taken);
}

std::string ProofColorSettingsManager::GetWriteFailure() const
{
  return store_->WriteFailure();
}

bool ProofColorSettingsManager::RemoveColorSetting(const std::wstring &name)
{
  return store_->Remove(name);
}

bool ProofColorSettingsManager::CanRemoveColorSetting(const std::wstring &name) const
{
  return store_->CanRemove(name);
}

void ProofColorSettingsManager::ReLoad()
{
  GetInstance().store_->Reload();
}

std::shared_ptr<ProofColorSettings> ProofColorSettingsManager::GetFactoryProofColorSettings()
{
  return std::make_shared<ProofColorSettings>();
}

std::string ProofColorSettingsManager::GetFactorySettingsStoragePath()
{
  return FileBelow(ZelUtl::INIGetColorDir());
}

std::string ProofColorSettingsManager::GetUserSettingsStoragePath()
{
  return FileBelow(ZelUtl::GetUserProfileColorDir());
}

} // namespace ColorSystem
