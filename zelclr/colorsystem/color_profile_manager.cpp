// The manager's life, its collection, and the watch that keeps it true.
#include "zelclr/colorsystem/color_profile_manager.h"

#include "zelclr/colorsystem/internal/profile_files.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ColorSystem {

using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;
using ZelUtl::WriteLock;

namespace {

/// Never destroyed but by Shutdown: watchers cannot be waited for while the process ends.
ZelUtl::Singleton<ColorProfileManager> &Manager()
{
  static auto &manager = *new ZelUtl::Singleton<ColorProfileManager>;
  return manager;
}

} // namespace

// --- Life -----------------------------------------------------------------------------------------------------------

ColorProfileManager::ColorProfileManager() : folders_(InstalledFolders()) {}

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
  const auto engine = stamp ? Internal::EngineFor(path) : nullptr;
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
    if (Internal::IsProfileFileName(name) && !takenNames_.contains(WideFromUtf8(name)))
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

} // namespace ColorSystem
