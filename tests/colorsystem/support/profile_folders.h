// The profile manager on folders of the test's own: nothing that this machine has installed is seen.
#pragma once

#include "tests/support/icc_profile.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/icc_color_profile.h"
#include "zelclr/platform/folders.h"

#include <gtest/gtest.h>

namespace tests {

/// "data/color/profiles/", "user/color/profiles/", "programs/Adobe/Color/Profiles/", "system1/" and "system2/".
class OwnFolders : public testing::Test
{
protected:
  explicit OwnFolders(const std::string &data = {})
  {
    ZelUtl::Folders folders;
    folders.data = data.empty() ? folder.Path("data") : data;
    folders.user = folder.Path("user");
    folders.temporary = folder.Path();
    folders.programs = folder.Path("programs");
    folders.systemProfiles = {folder.Path("system1"), folder.Path("system2")};
    ColorSystem::ColorProfileManager::Shutdown();
    ZelUtl::SetFolders(folders);
  }
  ~OwnFolders() override
  {
    ColorSystem::ColorProfileManager::Shutdown();
    ZelUtl::ResetFolders();
  }

  static ColorSystem::ColorProfileManager &Manager() { return ColorSystem::ColorProfileManager::GetInstance(); }
  std::shared_ptr<ColorSystem::IccColorProfile> ProfileOf(const std::string &name, const Bytes &bytes) const
  {
    return std::make_shared<ColorSystem::IccColorProfile>(ZelUtl::WideFromUtf8(folder.Write(name, bytes)), false);
  }

  TemporaryFolder folder;
};

inline std::string FolderOfShippedData()
{
  ZelUtl::ResetFolders();
  return ZelUtl::GetFolders().data;
}

/// The profiles that come with the library, and no others.
class ShippedProfiles : public OwnFolders
{
protected:
  ShippedProfiles() : OwnFolders(FolderOfShippedData()) {}

  static std::shared_ptr<ColorSystem::ColorProfile> Shipped(const wchar_t *name)
  {
    auto profile = Manager().GetColorProfile(name);
    if (profile == nullptr)
      throw std::runtime_error("a shipped profile is missing");
    return profile;
  }
  const std::shared_ptr<ColorSystem::ColorProfile> srgb = Shipped(L"sRGB_v4.icc");
  const std::shared_ptr<ColorSystem::ColorProfile> swop = Shipped(L"USWebCoatedSWOP.icc");
  const std::shared_ptr<ColorSystem::ColorProfile> gray = Shipped(L"Gray Gamma 22.icc");
  const std::shared_ptr<ColorSystem::ColorProfile> lab = Shipped(L"CIE Lab.icc");
  const std::shared_ptr<ColorSystem::ColorProfile> six = Shipped(L"Hexachrome.icc");
};

} // namespace tests
