// Finding profiles: by name, by model, by device.
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/internal/profile_files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ColorSystem {

using ZelUtl::ReadLock;
using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;
using ZelUtl::WriteLock;

namespace {

constexpr const wchar_t *kRgbPlaceholder = L"sRGB-Placeholder!";
constexpr const wchar_t *kSystemRgbPlaceholder = L"sRGB-System-Placeholder!";

std::shared_ptr<BaseColorProfile> FirstWhere(const std::vector<std::shared_ptr<BaseColorProfile>> &profiles,
                                             const auto &matches)
{
  const auto profile = std::find_if(profiles.begin(), profiles.end(), matches);
  return profile == profiles.end() ? nullptr : *profile;
}

} // namespace

ColorProfileManager::Implementation ColorProfileManager::FindInCollectionNoLock(const std::wstring &name) const
{
  const std::wstring folded = ZelUtl::FoldedCase(name);
  if (auto profile = FirstWhere(collection_, [&](const Implementation &p) { return p->GetName() == name; }))
    return profile;
  if (auto profile =
        FirstWhere(collection_, [&](const Implementation &p) { return ZelUtl::FoldedCase(p->GetName()) == folded; }))
    return profile;
  if (auto profile = FirstWhere(collection_, [&](const Implementation &p) { return p->GetDisplayName() == name; }))
    return profile;
  return FirstWhere(collection_,
                    [&](const Implementation &p) { return ZelUtl::FoldedCase(p->GetDisplayName()) == folded; });
}

ColorProfileManager::Implementation ColorProfileManager::FindNoLock(const std::wstring &name)
{
  if (name == kRgbPlaceholder || name == kSystemRgbPlaceholder) {
    FindRgbProfilesNoLock();
    const bool system = name == kSystemRgbPlaceholder && !rgb_.systemPath.empty();
    return ProfileAtNoLock(system ? rgb_.systemPath : rgb_.path);
  }
  // The files that the library asks for by itself need no look at all the others: these two folders come first.
  if (!scanned_ && Internal::IsProfileFileName(Utf8FromWide(name)) &&
      name == WideFromUtf8(ZelUtl::FileNameOfPath(Utf8FromWide(name))))
  {
    for (const std::wstring &folder : {folders_.user, folders_.library}) {
      if (auto profile = folder.empty() ? nullptr : ProfileAtNoLock(Internal::Joined(folder, name)))
        return profile;
    }
  }
  if (!scanned_)
    ScanNoLock();
  if (auto profile = FindInCollectionNoLock(name))
    return profile;
  for (const auto &[path, profile] : known_) {
    if (profile->IsTransient() && (profile->GetName() == name || path == name) && profile->IsValid())
      return profile;
  }
  return ProfileAtNoLock(name);
}

ColorProfileManager::Profile ColorProfileManager::GetColorProfile(const wchar_t *name)
{
  if (name == nullptr || name[0] == L'\0')
    return nullptr;
  const std::wstring key = name;
  {
    const ReadLock guard(lock_);
    if (const auto found = found_.find(key); found != found_.end())
      return found->second;
  }
  const WriteLock guard(lock_);
  auto profile = FindNoLock(key);
  if (profile != nullptr)
    found_[key] = profile;
  return profile;
}

ColorProfileManager::Profiles ColorProfileManager::GetColorProfiles(bool transientToo, ColorModel model)
{
  std::vector<std::pair<std::wstring, Profile>> named;
  for (const Implementation &profile : Collected(transientToo)) {
    if (profile->GetColorModel() == model)
      named.emplace_back(profile->GetDisplayName(), profile);
  }
  std::stable_sort(named.begin(), named.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
  Profiles profiles;
  for (auto &[name, profile] : named)
    profiles.push_back(std::move(profile));
  return profiles;
}

std::vector<ColorProfileManager::Profiles> ColorProfileManager::GetColorProfiles()
{
  std::set<ColorModel> models;
  for (const Implementation &profile : Collected(false))
    models.insert(profile->GetColorModel());
  std::vector<Profiles> lists;
  for (const ColorModel model : models)
    lists.push_back(GetColorProfiles(false, model));
  return lists;
}

std::vector<ColorProfileManager::Profiles> ColorProfileManager::GetDisplayColorProfiles()
{
  return {GetDeviceColorProfiles(DeviceClass::Display, nullptr)};
}

ColorProfileManager::Profiles ColorProfileManager::GetDeviceColorProfiles(DeviceClass deviceClass,
                                                                          const wchar_t *device)
{
  const std::wstring wanted = ZelUtl::FoldedCase(device == nullptr ? L"" : device);
  Profiles profiles;
  for (const Implementation &profile : Collected(false)) {
    const bool named =
      wanted.empty() || ZelUtl::FoldedCase(profile->GetDeviceModelDescription()).find(wanted) != std::wstring::npos ||
      ZelUtl::FoldedCase(profile->GetDeviceManufacturerDescription()).find(wanted) != std::wstring::npos;
    if (named && profile->GetDeviceClass() == deviceClass)
      profiles.push_back(profile);
  }
  return profiles;
}

std::vector<std::wstring> ColorProfileManager::EnumerateProfilesOnDisk(const std::wstring &folder)
{
  std::vector<std::wstring> names;
  for (const std::string &name : ZelUtl::FilesOfFolder(Utf8FromWide(folder))) {
    if (Internal::IsProfileFileName(name))
      names.push_back(WideFromUtf8(name));
  }
  return names;
}

} // namespace ColorSystem
