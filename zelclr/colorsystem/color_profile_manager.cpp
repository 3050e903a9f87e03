#include "zelclr/colorsystem/color_profile_manager.h"

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/icc_color_profile.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/icc_file.h"
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
constexpr const wchar_t *kSystemRgbFile = L"sRGB Color Space Profile.icm";
constexpr const wchar_t *kLibraryRgbFile = L"sRGB_IEC61966-2-1_no_black_scaling.icc";
constexpr const char *kProfilesBelow = "color/profiles";
constexpr int kDeepest = 8;
constexpr std::size_t kMostProfileBytes = std::size_t{64} << 20;

/// Never destroyed but by Shutdown: watchers cannot be waited for while the process ends.
ZelUtl::Singleton<ColorProfileManager> &Manager()
{
  static auto &manager = *new ZelUtl::Singleton<ColorProfileManager>;
  return manager;
}

std::wstring Below(const std::string &folder, const char *path)
{
  return folder.empty() ? std::wstring() : WideFromUtf8(ZelUtl::JoinPath(folder, path));
}

std::wstring Joined(const std::wstring &folder, const std::wstring &name)
{
  return WideFromUtf8(ZelUtl::JoinPath(Utf8FromWide(folder), Utf8FromWide(name)));
}

bool IsFile(const std::wstring &path)
{
  return !path.empty() && ZelUtl::StampOfFile(Utf8FromWide(path)).has_value();
}

std::wstring ExtensionOf(const std::wstring &path)
{
  return WideFromUtf8(ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(Utf8FromWide(path))));
}

/// Device models are read by their own engine, ICC files by any other.
std::shared_ptr<ColorManagementSystem> EngineFor(const std::wstring &path)
{
  return ColorManagementSystem::Get(ExtensionOf(path) == L".cdmp" ? ColorManagementModule::Wcs
                                                                  : ColorManagementModule::Linear);
}

bool IsProfileFileName(const std::string &name)
{
  const std::wstring wide = WideFromUtf8(name);
  const auto engine = EngineFor(wide);
  return engine != nullptr && ExtensionOf(wide) != L".tmp" &&
         MatchesProfilePatterns(wide, engine->GetProfileFilePatterns());
}

std::shared_ptr<BaseColorProfile> FirstWhere(const std::vector<std::shared_ptr<BaseColorProfile>> &profiles,
                                             const auto &matches)
{
  const auto profile = std::find_if(profiles.begin(), profiles.end(), matches);
  return profile == profiles.end() ? nullptr : *profile;
}

bool IsLegacyName(const std::wstring &name)
{
  const std::wstring folded = ZelUtl::FoldedCase(name);
  return folded.find(L"copyright") != std::wstring::npos && folded.find(L"zelan") != std::wstring::npos;
}

} // namespace

// --- Life -----------------------------------------------------------------------------------------------------------

ColorProfileManager::ColorProfileManager()
{
  const ZelUtl::Folders folders = ZelUtl::GetFolders();
  folders_.library = Below(folders.data, kProfilesBelow);
  folders_.user = Below(folders.user, kProfilesBelow);
  folders_.adobe = Below(folders.programs, "Adobe/Color/Profiles");
  folders_.adobeRecommended = Below(folders.programs, "Adobe/Color/Profiles/Recommended");
  for (const std::string &folder : folders.systemProfiles)
    folders_.system.push_back(WideFromUtf8(folder));
}

ColorProfileManager::~ColorProfileManager() = default;

ColorProfileManager &ColorProfileManager::GetInstance()
{
  return Manager().Get([] { return std::unique_ptr<ColorProfileManager>(new ColorProfileManager); });
}

void ColorProfileManager::Shutdown()
{
  if (!Manager().HasInstance())
    return;
  GetInstance().StopTrackingProfileNameChanges();
  Manager().Release();
}

void ColorProfileManager::LoadColorManagementModules()
{
  for (const auto module : {ColorManagementModule::Icm, ColorManagementModule::Wcs, ColorManagementModule::Adobe,
                            ColorManagementModule::Linear, ColorManagementModule::LCMS})
    ColorManagementSystem::Get(module);
}

// --- The collection -------------------------------------------------------------------------------------------------

ColorProfileManager::Implementation ColorProfileManager::ProfileAtNoLock(const std::wstring &path)
{
  const auto stamp = ZelUtl::StampOfFile(Utf8FromWide(path));
  if (const auto known = known_.find(path); known != known_.end()) {
    const Implementation profile = known->second;
    if (stamp && profile->GetStamp() == *stamp)
      return profile;
    profile->UpdateFromDisk();
    return profile->IsValid() ? profile : nullptr;
  }
  const auto engine = stamp ? EngineFor(path) : nullptr;
  const Profile made = engine == nullptr ? nullptr : engine->CreateProfile(path, false);
  auto profile = std::static_pointer_cast<BaseColorProfile>(made); // what engines make is of that class
  if (profile != nullptr)
    known_[path] = profile;
  return profile;
}

void ColorProfileManager::EnterNoLock(const Implementation &profile)
{
  if (profile != nullptr && !profile->IsTransient() && takenNames_.insert(profile->GetName()).second)
    collection_.push_back(profile);
}

void ColorProfileManager::EnterFolderNoLock(const std::wstring &folder, int depth)
{
  if (depth < 0)
    return;
  const std::string path = Utf8FromWide(folder);
  std::vector<std::string> subfolders;
  for (const std::string &name : ZelUtl::FilesOfFolder(path, &subfolders)) {
    if (IsProfileFileName(name) && !takenNames_.contains(WideFromUtf8(name)))
      EnterNoLock(ProfileAtNoLock(WideFromUtf8(ZelUtl::JoinPath(path, name))));
  }
  for (const std::string &name : subfolders)
    EnterFolderNoLock(WideFromUtf8(ZelUtl::JoinPath(path, name)), depth - 1);
}

void ColorProfileManager::ScanNoLock()
{
  collection_.clear();
  takenNames_.clear();
  found_.clear();
  scanned_ = true;
  for (const std::wstring &path : added_)
    EnterNoLock(ProfileAtNoLock(path));
  for (const SearchedFolder &folder : FoldersNoLock())
    EnterFolderNoLock(folder.path, folder.depth);
}

/// In the order of the search, without those that are unknown.
std::vector<ColorProfileManager::SearchedFolder> ColorProfileManager::FoldersNoLock() const
{
  std::vector<SearchedFolder> folders = {
    {folders_.user, 0}, {folders_.library, 0}, {folders_.adobeRecommended, kDeepest}, {folders_.adobe, kDeepest}};
  for (const std::wstring &folder : folders_.system)
    folders.push_back({folder, kDeepest});
  std::erase_if(folders, [](const SearchedFolder &folder) { return folder.path.empty(); });
  return folders;
}

void ColorProfileManager::CreateColorProfilesCollection()
{
  const WriteLock guard(lock_);
  if (!scanned_)
    ScanNoLock();
}

bool ColorProfileManager::Rescan()
{
  const WriteLock guard(lock_);
  ScanNoLock();
  const auto folders = FoldersNoLock();
  return std::any_of(folders.begin(), folders.end(),
                     [](const SearchedFolder &folder) { return ZelUtl::IsFolder(Utf8FromWide(folder.path)); });
}

void ColorProfileManager::UpdateProfilesCollection(const std::wstring & /*folder*/)
{
  Rescan();
}

bool ColorProfileManager::Reload()
{
  const bool found = Rescan();
  UpdateListeners();
  return found;
}

std::vector<ColorProfileManager::Implementation> ColorProfileManager::Collected(bool transientToo)
{
  const WriteLock guard(lock_);
  if (!scanned_)
    ScanNoLock();
  auto collected = collection_;
  if (transientToo) {
    for (const auto &[path, profile] : known_) {
      if (profile->IsTransient() && profile->IsValid())
        collected.push_back(profile);
    }
  }
  return collected;
}

// --- Finding --------------------------------------------------------------------------------------------------------

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
  if (!scanned_ && IsProfileFileName(Utf8FromWide(name)) &&
      name == WideFromUtf8(ZelUtl::FileNameOfPath(Utf8FromWide(name))))
  {
    for (const std::wstring &folder : {folders_.user, folders_.library}) {
      if (auto profile = folder.empty() ? nullptr : ProfileAtNoLock(Joined(folder, name)))
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
    if (IsProfileFileName(name))
      names.push_back(WideFromUtf8(name));
  }
  return names;
}

// --- Adding ---------------------------------------------------------------------------------------------------------

ColorProfileManager::Profile ColorProfileManager::AddInUserFolder(const std::vector<std::uint8_t> &bytes,
                                                                  const std::wstring &name)
{
  std::string folder;
  {
    const ReadLock guard(lock_);
    folder = Utf8FromWide(folders_.user);
  }
  std::string reason;
  if (bytes.empty() || folder.empty() || !ZelUtl::MakeFolders(folder, reason))
    return nullptr;
  const std::string_view content(reinterpret_cast<const char *>(bytes.data()), bytes.size());
  const std::string stem = ZelUtl::ValidFileName(Utf8FromWide(name));
  for (int number = 1;; ++number) {
    const std::string path =
      ZelUtl::JoinPath(folder, stem + (number == 1 ? "" : " " + std::to_string(number)) + ".icc");
    const bool free = !ZelUtl::StampOfFile(path);
    const auto present = free ? std::nullopt : ZelUtl::ReadFile(path, kMostProfileBytes, reason);
    if (!free && (!present || *present != content))
      continue;
    if (free && !ZelUtl::ReplaceFile(path, content, reason))
      return nullptr;
    return AddColorProfile(WideFromUtf8(path));
  }
}

ColorProfileManager::Profile ColorProfileManager::AddColorProfile(const std::wstring &path)
{
  const std::wstring extension = ExtensionOf(path);
  if (extension != L".xml" && extension != L".icc" && extension != L".icm") {
    const auto engine = EngineFor(path);
    std::string reason;
    // The name comes from the bytes, whatever the file is called.
    const auto foreign = std::make_shared<IccColorProfile>(path, false);
    const auto bytes =
      foreign->IsValid() ? ZelUtl::ReadFile(Utf8FromWide(path), kMostProfileBytes, reason) : std::nullopt;
    if (!bytes)
      return nullptr;
    return AddInUserFolder(std::vector<std::uint8_t>(bytes->begin(), bytes->end()), foreign->GetDisplayName());
  }
  Implementation profile;
  {
    const WriteLock guard(lock_);
    profile = ProfileAtNoLock(path);
    if (profile == nullptr)
      return nullptr;
    if (std::find(added_.begin(), added_.end(), path) == added_.end())
      added_.push_back(path);
    ScanNoLock();
  }
  UpdateListeners();
  return profile;
}

ColorProfileManager::Profile ColorProfileManager::CreateColorProfile(const std::wstring &path, bool transient)
{
  const WriteLock guard(lock_);
  auto profile = ProfileAtNoLock(path);
  if (profile != nullptr)
    profile->SetTransient(transient);
  found_.clear();
  return profile;
}

void ColorProfileManager::DeleteUnusedTransientProfiles()
{
  const WriteLock guard(lock_);
  found_.clear(); // it holds profiles, too
  for (auto known = known_.begin(); known != known_.end();) {
    const Implementation &profile = known->second;
    if (!profile->IsTransient() || profile.use_count() > 1) {
      ++known;
      continue;
    }
    profile->SetTransient(false); // its file may be written to, and deleted, again
    ZelUtl::DeleteFileAt(Utf8FromWide(known->first));
    known = known_.erase(known);
  }
}

// --- Legacy names ---------------------------------------------------------------------------------------------------

std::wstring ColorProfileManager::GenerateNewProfileNameForLegacyProfile(ColorProfile &profile)
{
  const std::string file = Utf8FromWide(profile.GetName());
  std::string stem = file.substr(0, file.size() - ZelUtl::ExtensionOfPath(file).size());
  std::replace(stem.begin(), stem.end(), '_', ' ');
  const std::wstring name = WideFromUtf8(ZelUtl::Trimmed(stem));
  if (!name.empty() && !IsLegacyName(name))
    return name;
  return WideFromUtf8("Legacy " + std::string(NameOfColorModel(profile.GetColorModel())) + " " +
                      std::to_string(profile.GetSize()));
}

bool ColorProfileManager::FixLegacyProfileDisplayName(Profile &profile)
{
  if (profile == nullptr || !IsLegacyName(profile->GetDisplayName()))
    return true;
  const std::wstring name = GenerateNewProfileNameForLegacyProfile(*profile);
  for (const Implementation &candidate : Collected(false)) {
    if (candidate->GetDisplayName() == name) {
      profile = candidate;
      return true;
    }
  }
  std::string reason;
  const auto bytes = ZelUtl::ReadFile(Utf8FromWide(profile->GetPath()), kMostProfileBytes, reason);
  if (!bytes)
    return false;
  const auto renamed =
    ZelUtl::WithIccDescription({reinterpret_cast<const std::uint8_t *>(bytes->data()), bytes->size()}, name);
  Profile copy = AddInUserFolder(renamed, name);
  if (copy == nullptr)
    return false;
  profile = std::move(copy);
  return true;
}

// --- Watching -------------------------------------------------------------------------------------------------------

void ColorProfileManager::OnFolderChanged(const std::string &folder)
{
  UpdateProfilesCollection(WideFromUtf8(folder));
  UpdateListeners();
}

void ColorProfileManager::StartTrackingProfileNameChanges()
{
  const WriteLock guard(lock_);
  for (const SearchedFolder &folder : FoldersNoLock())
    WatchNoLock(folder);
}

void ColorProfileManager::StartTrackingProfileNameChanges(const std::wstring &folder)
{
  const WriteLock guard(lock_);
  WatchNoLock({folder, 0});
}

void ColorProfileManager::WatchNoLock(const SearchedFolder &folder)
{
  if (watch_ == nullptr)
    watch_ = std::make_unique<ZelUtl::FolderWatch>([this](const std::string &changed) { OnFolderChanged(changed); });
  watch_->Watch(Utf8FromWide(folder.path), folder.depth);
}

void ColorProfileManager::StopTrackingProfileNameChanges()
{
  std::unique_ptr<ZelUtl::FolderWatch> watch;
  {
    const WriteLock guard(lock_);
    watch = std::move(watch_);
  }
  if (watch != nullptr) // outside the lock, which the listener may be waiting for
    watch->Stop();
}

// --- Folders and the default RGB profiles ---------------------------------------------------------------------------

namespace {

const wchar_t *PointerTo(const std::wstring &folder)
{
  return folder.empty() ? nullptr : folder.c_str();
}

} // namespace

std::wstring ColorProfileManager::GetZelanColorDir()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.library;
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

std::wstring ColorProfileManager::GetZelanUserColorDir()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.user;
}

std::wstring ColorProfileManager::GetAdobeColorDir()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.adobe;
}

std::wstring ColorProfileManager::GetAdobeRecommendedColorDir()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.adobeRecommended;
}

std::vector<std::wstring> ColorProfileManager::GetSystemColorDirs()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.system;
}

const wchar_t *ColorProfileManager::GetZelanColorDirPtr()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return PointerTo(manager.folders_.library);
}

const wchar_t *ColorProfileManager::GetZelanUserColorDirPtr()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return PointerTo(manager.folders_.user);
}

const wchar_t *ColorProfileManager::GetAdobeColorDirPtr()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return PointerTo(manager.folders_.adobe);
}

const wchar_t *ColorProfileManager::GetAdobeRecommendedColorDirPtr()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return PointerTo(manager.folders_.adobeRecommended);
}

const std::vector<std::wstring> *ColorProfileManager::GetSystemColorDirsPtr()
{
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.folders_.system.empty() ? nullptr : &manager.folders_.system;
}

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

std::wstring ColorProfileManager::GetRgbSystemProfile()
{
  GetRgbProfiles();
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.rgb_.systemPath;
}

std::wstring ColorProfileManager::GetRgbSystemProfileName()
{
  GetRgbProfiles();
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.rgb_.systemName;
}

std::wstring ColorProfileManager::GetRgbProfile()
{
  GetRgbProfiles();
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.rgb_.path;
}

std::wstring ColorProfileManager::GetRgbProfileName()
{
  GetRgbProfiles();
  ColorProfileManager &manager = GetInstance();
  const ReadLock guard(manager.lock_);
  return manager.rgb_.name;
}

} // namespace ColorSystem
