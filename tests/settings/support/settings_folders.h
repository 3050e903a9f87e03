// The settings of the process on folders of the test's own, with the data that ships: no file of the user's is touched.
#pragma once

#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/locale.h"
#include "zelclr/settings/color_settings_manager.h"
#include "zelclr/settings/proof_color_settings_manager.h"

#include <chrono>
#include <thread>

namespace tests {

inline Bytes BytesOf(const std::string &text)
{
  return {text.begin(), text.end()};
}

/// With the first place of one text taken by another, which must be there.
inline std::string Replaced(std::string text, const std::string &from, const std::string &to)
{
  const auto at = text.find(from);
  if (at == std::string::npos)
    throw std::runtime_error("no " + from + " in\n" + text);
  return text.replace(at, from.size(), to);
}

/// Whether it becomes true in that time.
template <class Condition>
bool Within(std::chrono::milliseconds time, Condition holds)
{
  const auto latest = std::chrono::steady_clock::now() + time;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > latest)
      return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

struct Host : ZelUtl::ApplicationHost
{
  unsigned GetOpenDocumentCount() const override { return 0; }
  std::wstring GetApplicationName() const override { return name; }
  bool IsConfigurationInitialized() const override { return configured; }
  ZelUtl::Document *GetActiveDocument() const override { return active; }
  ColorSystem::ViewProofSettings *GetViewProofSettings(ZelUtl::Document &document) const override
  {
    return &document == active ? view : other;
  }

  std::wstring name = L"Draw";
  bool configured = true;
  ZelUtl::Document *active = nullptr;
  ColorSystem::ViewProofSettings *view = nullptr;
  ColorSystem::ViewProofSettings *other = nullptr;
};

/// A new user: no file, the application "Draw", in the United States.
class SettingsFolders : public OwnFolders
{
protected:
  SettingsFolders() : OwnFolders(FolderOfShippedData())
  {
    SetVariable("XDG_RUNTIME_DIR", folder.Path()); // the mutex is the test's own
    ZelUtl::SetApplicationHost(&host);
    ZelLocale::SetLocale({"US", "en"});
  }
  ~SettingsFolders() override
  {
    Restart();
    ZelUtl::SetFileFaults({});
    ZelUtl::SetApplicationHost(nullptr);
    ZelLocale::ResetLocale();
    UnsetVariable("XDG_RUNTIME_DIR");
  }

  /// As if the process began again.
  static void Restart()
  {
    ColorSystem::ColorSettingsManager::Shutdown();
    ColorSystem::ProofColorSettingsManager::Shutdown();
  }
  static ColorSystem::ColorSettingsManager &Settings() { return ColorSystem::ColorSettingsManager::GetInstance(); }
  static const ColorSystem::ColorSettings &InForce()
  {
    return ColorSystem::ColorSettings::GetApplicationColorSettings();
  }
  static std::shared_ptr<ColorSystem::ColorProfile> Shipped(const wchar_t *name)
  {
    auto profile = Manager().GetColorProfile(name);
    if (profile == nullptr)
      throw std::runtime_error("a shipped profile is missing");
    return profile;
  }
  static std::vector<std::wstring> NamesOfPresets()
  {
    std::vector<std::wstring> names;
    for (const auto &preset : Settings().EnumerateColorSettings())
      names.push_back(preset->GetName());
    return names;
  }
  /// An installation of the test's own: the shipped profiles and nothing else.
  std::string UseOwnData()
  {
    const std::string data = folder.Path("own");
    std::filesystem::create_directories(data + "/color");
    std::filesystem::copy(PathOf(shipped + "/color/profiles"), data + "/color/profiles");
    ZelUtl::Folders folders = ZelUtl::GetFolders();
    folders.data = data;
    ZelUtl::SetFolders(folders);
    ColorSystem::ColorProfileManager::Shutdown();
    return data;
  }

  const std::string shipped = ZelUtl::GetFolders().data;
  const std::string user = folder.Path("user");
  const std::string file = user + "/color/Settings/ColorSettings.xml";
  const std::string proofFile = user + "/color/Settings/ProofColorSettings.xml";
  Host host;
};

} // namespace tests
