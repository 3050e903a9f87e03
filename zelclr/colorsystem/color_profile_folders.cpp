// The folders of profiles, and the default RGB profiles in them.
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/internal/profile_files.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ColorSystem {

using Internal::Joined;
using ZelUtl::ReadLock;
using ZelUtl::WideFromUtf8;
using ZelUtl::WriteLock;

namespace {

constexpr const wchar_t *kSystemRgbFile = L"sRGB Color Space Profile.icm";
constexpr const wchar_t *kLibraryRgbFile = L"sRGB_IEC61966-2-1_no_black_scaling.icc";
constexpr const char *kProfilesBelow = "color/profiles";
constexpr int kDeepest = 8;

std::wstring Below(const std::string &folder, const char *path)
{
  return folder.empty() ? std::wstring() : WideFromUtf8(ZelUtl::JoinPath(folder, path));
}

bool IsFile(const std::wstring &path)
{
  return !path.empty() && ZelUtl::StampOfFile(ZelUtl::Utf8FromWide(path)).has_value();
}

} // namespace

// --- Folders ---------------------------------------------------------------------------------------------------------

ColorProfileManager::FolderPaths ColorProfileManager::InstalledFolders()
{
  const ZelUtl::Folders folders = ZelUtl::GetFolders();
  FolderPaths paths{Below(folders.data, kProfilesBelow),
                    Below(folders.user, kProfilesBelow),
                    Below(folders.programs, "Adobe/Color/Profiles"),
                    Below(folders.programs, "Adobe/Color/Profiles/Recommended"),
                    {}};
  for (const std::string &folder : folders.systemProfiles)
    paths.system.push_back(WideFromUtf8(folder));
  return paths;
}

std::vector<ColorProfileManager::SearchedFolder> ColorProfileManager::FoldersNoLock() const
{
  std::vector<SearchedFolder> folders = {
    {folders_.user, 0}, {folders_.library, 0}, {folders_.adobeRecommended, kDeepest}, {folders_.adobe, kDeepest}};
  for (const std::wstring &folder : folders_.system)
    folders.push_back({folder, kDeepest});
  std::erase_if(folders, [](const SearchedFolder &folder) { return folder.path.empty(); });
  return folders;
}

std::wstring ColorProfileManager::FolderPath(std::wstring FolderPaths::*folder)
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.*folder;
}

const wchar_t *ColorProfileManager::FolderPathPtr(std::wstring FolderPaths::*folder)
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  const std::wstring &path = manager.folders_.*folder;
  return path.empty() ? nullptr : path.c_str();
}

void ColorProfileManager::SetZelanColorDir(const std::wstring &folder)
{
  ColorProfileManager &manager = GetInstance();
  const WriteLock guard(manager.lock_);
  manager.folders_.library = folder;
  manager.rgb_ = {};
  if (manager.scanned_)
    manager.ScanNoLock();
  manager.found_.clear();
}

std::wstring ColorProfileManager::GetZelanColorDir()
{
  return FolderPath(&FolderPaths::library);
}

std::wstring ColorProfileManager::GetZelanUserColorDir()
{
  return FolderPath(&FolderPaths::user);
}

std::wstring ColorProfileManager::GetAdobeColorDir()
{
  return FolderPath(&FolderPaths::adobe);
}

std::wstring ColorProfileManager::GetAdobeRecommendedColorDir()
{
  return FolderPath(&FolderPaths::adobeRecommended);
}

std::vector<std::wstring> ColorProfileManager::GetSystemColorDirs()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.system;
}

const wchar_t *ColorProfileManager::GetZelanColorDirPtr()
{
  return FolderPathPtr(&FolderPaths::library);
}

const wchar_t *ColorProfileManager::GetZelanUserColorDirPtr()
{
  return FolderPathPtr(&FolderPaths::user);
}

const wchar_t *ColorProfileManager::GetAdobeColorDirPtr()
{
  return FolderPathPtr(&FolderPaths::adobe);
}

const wchar_t *ColorProfileManager::GetAdobeRecommendedColorDirPtr()
{
  return FolderPathPtr(&FolderPaths::adobeRecommended);
}

const std::vector<std::wstring> *ColorProfileManager::GetSystemColorDirsPtr()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.system.empty() ? nullptr : &manager.folders_.system;
}

// --- The default RGB profiles ----------------------------------------------------------------------------------------

void ColorProfileManager::FindRgbProfilesNoLock()
{
  if (rgb_.systemPath.empty()) {
    const auto found = std::find_if(folders_.system.begin(), folders_.system.end(),
                                    [](const std::wstring &folder) { return IsFile(Joined(folder, kSystemRgbFile)); });
    if (found != folders_.system.end()) {
      rgb_.systemPath = Joined(*found, kSystemRgbFile);
      rgb_.systemName = kSystemRgbFile;
    }
  }
  if (rgb_.path.empty()) {
    rgb_.name = rgb_.systemPath.empty() ? kLibraryRgbFile : rgb_.systemName;
    rgb_.path = !rgb_.systemPath.empty()   ? rgb_.systemPath
                : folders_.library.empty() ? std::wstring()
                                           : Joined(folders_.library, kLibraryRgbFile);
  }
}

void ColorProfileManager::GetRgbProfiles()
{
  ColorProfileManager &manager = GetInstance();
  const WriteLock guard(manager.lock_);
  manager.FindRgbProfilesNoLock();
}

std::wstring ColorProfileManager::RgbValue(std::wstring RgbProfiles::*value)
{
  ColorProfileManager &manager = GetInstance();
  const WriteLock guard(manager.lock_);
  manager.FindRgbProfilesNoLock();
  return manager.rgb_.*value;
}

std::wstring ColorProfileManager::GetRgbSystemProfile()
{
  return RgbValue(&RgbProfiles::systemPath);
}

std::wstring ColorProfileManager::GetRgbSystemProfileName()
{
  return RgbValue(&RgbProfiles::systemName);
}

std::wstring ColorProfileManager::GetRgbProfile()
{
  return RgbValue(&RgbProfiles::path);
}

std::wstring ColorProfileManager::GetRgbProfileName()
{
  return RgbValue(&RgbProfiles::name);
}

} // namespace ColorSystem
