// Adding profiles to the collection: those of documents, those of the user, and old ones under new names.
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/icc_color_profile.h"
#include "zelclr/colorsystem/internal/profile_files.h"
#include "zelclr/colorsystem/wcs_color_profile.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/icc_file.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ColorSystem {

using Internal::kMostProfileBytes;
using ZelUtl::ReadLock;
using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;
using ZelUtl::WriteLock;

namespace {

bool IsLegacyName(const std::wstring &name)
{
  const std::wstring folded = ZelUtl::FoldedCase(name);
  return folded.find(L"copyright") != std::wstring::npos && folded.find(L"zelan") != std::wstring::npos;
}

} // namespace

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
  const std::wstring extension = Internal::ExtensionOf(path);
  if (extension != L".xml" && extension != L".icc" && extension != L".icm") {
    std::string reason;
    // The name comes from the bytes, whatever the file is called.
    const auto foreign = std::make_shared<IccColorProfile>(path, false);
    if (!foreign->IsValid()) { // of a device model, what is made of it is kept
      std::wstring name;
      const auto made = WcsColorProfile::IccBytesOf(path, name);
      return AddInUserFolder(made, name);
    }
    const auto bytes = ZelUtl::ReadFile(Utf8FromWide(path), kMostProfileBytes, reason);
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

} // namespace ColorSystem
