// Any bytes as the files of colour settings, of proof settings and of regions: read or refused, and what was read comes
// back from the file after it was written. An input is all three files; its root element says whose it is.

#include "zelclr/platform/application.h"
#include "zelclr/platform/folders.h"
#include "zelclr/settings/color_settings_manager.h"
#include "zelclr/settings/proof_color_settings_manager.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace ColorSystem;

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

/// Not configured while the managers begin, so that they neither watch nor write by themselves.
struct Host : ZelUtl::ApplicationHost
{
  unsigned GetOpenDocumentCount() const override { return 0; }
  bool IsConfigurationInitialized() const override { return configured; }
  bool configured = false;
};

/// Folders in memory with the shipped profiles.
struct Place
{
  Place()
  {
    ZelUtl::Folders folders = ZelUtl::GetFolders();
    std::filesystem::create_directories(root + "/data/color");
    std::filesystem::create_directories(root + "/data/config");
    std::filesystem::create_directories(root + "/user/color/Settings");
    std::filesystem::remove(root + "/data/color/profiles");
    std::filesystem::create_directory_symlink(folders.data + "/color/profiles", root + "/data/color/profiles");
    folders.data = root + "/data";
    folders.user = root + "/user";
    folders.systemProfiles.clear();
    ZelUtl::SetFolders(folders);
    ZelUtl::SetApplicationHost(&host);
    ColorSettingsManager::GetInstance();
    ProofColorSettingsManager::GetInstance();
    host.configured = true;
  }

  void Put(const std::string &path, const std::uint8_t *data, std::size_t size) const
  {
    std::ofstream(root + path, std::ios::binary | std::ios::trunc)
      .write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
  }

  const std::string root = "/dev/shm/zelclr-fuzz-settings-" + std::to_string(::getpid());
  Host host;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  static auto &place = *new Place;
  place.Put("/data/config/ColorManagementRegions.xml", data, size);
  place.Put("/user/color/Settings/ColorSettings.xml", data, size);
  place.Put("/user/color/Settings/ProofColorSettings.xml", data, size);
  Demand(!ColorSettingsManager::GetLocaleDefaultSettingsName().empty());

  auto &settings = ColorSettingsManager::GetInstance();
  ColorSettingsManager::ReLoad();
  if (const auto presets = settings.EnumerateColorSettings(); !presets.empty()) {
    const ColorSettings first(*presets.front());
    Demand(first.GetDefaultColorContext().GetColorProfiles().size() >= 3);
    Demand(settings.AddColorSettings(first) && settings.SetApplicationColorSettings(first));
    ColorSettingsManager::ReLoad();
    const auto again = settings.GetColorSettings(first.GetName());
    Demand(again != nullptr && *again == first && settings.CanRemoveColorSetting(first.GetName()));
    Demand(ColorSettings::GetApplicationColorSettings() == first);
  }

  auto &proofs = ProofColorSettingsManager::GetInstance();
  ProofColorSettingsManager::ReLoad();
  if (const auto presets = proofs.EnumerateProofColorSettings(); !presets.empty()) {
    const ProofColorSettings first(*presets.front());
    Demand(proofs.AddProofColorSettings(first));
    ProofColorSettingsManager::ReLoad();
    const auto again = proofs.GetProofColorSettings(first.GetName());
    Demand(again != nullptr && *again == first);
  }
  return 0;
}
