// The installed colour profiles of the process.
//
// The folders, in the order in which they are searched: the user's, the library's, the recommended and the other
// profiles of the Adobe folder, the system's in their order; the last three kinds with their subfolders, to a depth of
// eight. Of files of one name the first is taken. What is looked for are the files that an engine of this system can
// read (*.icc, *.icm, *.cc, and *.cdmp where device models can be used); of them those that are valid are in the
// collection.
//
// A profile is one shared object for its path for as long as the manager lives. Only headers and descriptions are read.
//
// Threads: all operations may be called by many threads. Errors: null, false, empty lists.
#pragma once

#include "zelclr/colorsystem/base_color_profile.h"
#include "zelclr/platform/event.h"
#include "zelclr/platform/folder_watch.h"
#include "zelclr/platform/singleton.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace ColorSystem {

class ZELCLR_API ColorProfileManager
{
public:
  using Profile = std::shared_ptr<ColorProfile>;
  using Profiles = std::vector<Profile>;

  /// The one manager, created by the first call.
  static ColorProfileManager &GetInstance();
  /// Ends the watching, waits for it, and destroys the manager; nobody may use it meanwhile. The next GetInstance
  /// starts anew.
  static void Shutdown();
  ~ColorProfileManager();

  // --- Finding ------------------------------------------------------------------------------------------------------

  /// The profile whose file has that name; else, in the order of the folders: the same without regard to case, that
  /// display name, the same without regard to case; else the transient profile or the file at that path. The
  /// placeholder names "sRGB-Placeholder!" (the library's RGB profile) and "sRGB-System-Placeholder!" (the system's,
  /// else the library's) stand for no file. Null when none is found or it is not valid.
  Profile GetColorProfile(const wchar_t *name);
  /// The profiles of one model in the order of their display names; with `transientToo` those of documents, too.
  Profiles GetColorProfiles(bool transientToo, ColorModel model);
  /// One list for each model that has profiles, in the order of the models.
  std::vector<Profiles> GetColorProfiles();
  /// The profiles of displays, one list for each display: as long as displays cannot be told apart, one list of all.
  std::vector<Profiles> GetDisplayColorProfiles();
  /// The profiles of one class; with a text, those whose device model or manufacturer contains it.
  Profiles GetDeviceColorProfiles(DeviceClass deviceClass, const wchar_t *device);
  /// The names of the files in a folder that an engine could read, ordered, without its subfolders.
  std::vector<std::wstring> EnumerateProfilesOnDisk(const std::wstring &folder);

  // --- The collection -----------------------------------------------------------------------------------------------

  /// Builds the collection when it was not built yet.
  void CreateColorProfilesCollection();
  /// Looks again, since files of this folder have changed: what is new comes in, what changed is read anew, what is
  /// gone goes; files that did not change are not read.
  void UpdateProfilesCollection(const std::wstring &folder);
  /// Looks again at everything and tells the listeners; false when no folder could be read.
  bool Reload();

  /// The profile of a file, entered in the collection. A file that is neither .xml, .icc nor .icm is first copied into
  /// the user's folder, under its display name with the extension "icc"; where a file of that name has another content,
  /// with a number behind the name.
  Profile AddColorProfile(const std::wstring &path);
  /// The shared profile object of a file, without entering it. A transient one is found by GetColorProfile like any
  /// other; its file belongs to it and goes with DeleteUnusedTransientProfiles.
  Profile CreateColorProfile(const std::wstring &path, bool transient);
  /// Forgets the transient profiles that nobody else holds, and deletes their files.
  void DeleteUnusedTransientProfiles();

  /// A profile whose display name holds both "copyright" and the maker's word, in any case, is replaced by the one in
  /// the collection that has its new name, else by a copy of that name in the user's folder; any other profile stays.
  /// False when the copy cannot be written, with the profile as it was.
  bool FixLegacyProfileDisplayName(Profile &profile);
  /// The name of the profile's file without its extension, underscores as blanks; where that holds the two words as
  /// well, "Legacy" with the model's name and the size in bytes.
  std::wstring GenerateNewProfileNameForLegacyProfile(ColorProfile &profile);

  // --- Watching -----------------------------------------------------------------------------------------------------

  /// Watches all folders; the collection follows their changes and listeners are told, on the watch's own thread.
  void StartTrackingProfileNameChanges();
  void StartTrackingProfileNameChanges(const std::wstring &folder);
  void StopTrackingProfileNameChanges();
  /// Called after the collection has changed.
  void RegisterToColorProfilesChange(const ZelUtl::Delegate &listener) { listeners_.Register(listener); }
  void UnRegisterToColorProfilesChange(const ZelUtl::Delegate &listener) { listeners_.Unregister(listener); }
  void UpdateListeners() { listeners_.Notify(); }

  // --- Folders ------------------------------------------------------------------------------------------------------
  // Asked for once and kept for the life of the manager; empty, and null, where there is none.

  static std::wstring GetZelanColorDir();
  static void SetZelanColorDir(const std::wstring &folder);
  static std::wstring GetZelanUserColorDir();
  static std::wstring GetAdobeColorDir();
  static std::wstring GetAdobeRecommendedColorDir();
  static std::vector<std::wstring> GetSystemColorDirs();
  /// They live until Shutdown, the first of them until SetZelanColorDir.
  static const wchar_t *GetZelanColorDirPtr();
  static const wchar_t *GetZelanUserColorDirPtr();
  static const wchar_t *GetAdobeColorDirPtr();
  static const wchar_t *GetAdobeRecommendedColorDirPtr();
  static const std::vector<std::wstring> *GetSystemColorDirsPtr();

  // --- The default RGB profiles -------------------------------------------------------------------------------------

  /// Finds the four values below. The system's is "sRGB Color Space Profile.icm", in the first system folder that has
  /// it; the library's is the same, else its own "sRGB_IEC61966-2-1_no_black_scaling.icc".
  static void GetRgbProfiles();
  /// Paths and file names; empty for the system's when there is none.
  static std::wstring GetRgbSystemProfile();
  static std::wstring GetRgbSystemProfileName();
  static std::wstring GetRgbProfile();
  static std::wstring GetRgbProfileName();

  /// Asks for every engine once, so that those of this system are there.
  static void LoadColorManagementModules();

private:
  template <class T>
  friend class ZelUtl::Singleton;
  using Implementation = std::shared_ptr<BaseColorProfile>;

  struct FolderPaths
  {
    std::wstring library, user, adobe, adobeRecommended;
    std::vector<std::wstring> system;
  };
  struct SearchedFolder
  {
    std::wstring path;
    int depth; ///< of the subfolders that are searched, too
  };
  struct RgbProfiles
  {
    std::wstring systemPath, systemName, path, name;
  };

  ColorProfileManager();

  static FolderPaths InstalledFolders();
  static std::wstring FolderPath(std::wstring FolderPaths::*folder);
  static const wchar_t *FolderPathPtr(std::wstring FolderPaths::*folder);
  static std::wstring RgbValue(std::wstring RgbProfiles::*value);

  /// In the order of the search, without those that are unknown.
  std::vector<SearchedFolder> FoldersNoLock() const ZELCLR_REQUIRES_SHARED(lock_);
  void WatchNoLock(const SearchedFolder &folder) ZELCLR_REQUIRES(lock_);
  void ScanNoLock() ZELCLR_REQUIRES(lock_);
  void EnterFolderNoLock(const std::wstring &folder, int depth) ZELCLR_REQUIRES(lock_);
  void EnterNoLock(const Implementation &profile) ZELCLR_REQUIRES(lock_);
  Implementation ProfileAtNoLock(const std::wstring &path) ZELCLR_REQUIRES(lock_);
  Implementation FindNoLock(const std::wstring &name) ZELCLR_REQUIRES(lock_);
  Implementation FindInCollectionNoLock(const std::wstring &name) const ZELCLR_REQUIRES_SHARED(lock_);
  void FindRgbProfilesNoLock() ZELCLR_REQUIRES(lock_);
  /// The collection, scanned when it was not yet.
  std::vector<Implementation> Collected(bool transientToo);
  Profile AddInUserFolder(const std::vector<std::uint8_t> &bytes, const std::wstring &name);
  bool Rescan();
  void OnFolderChanged(const std::string &folder);

  ZelUtl::ThreadLock lock_;
  FolderPaths folders_ ZELCLR_GUARDED_BY(lock_);
  RgbProfiles rgb_ ZELCLR_GUARDED_BY(lock_);
  /// Every valid profile that was made, by its path, in or out of the collection.
  std::map<std::wstring, Implementation> known_ ZELCLR_GUARDED_BY(lock_);
  /// In the order of the search; the paths that were added by hand come first in every scan.
  std::vector<Implementation> collection_ ZELCLR_GUARDED_BY(lock_);
  std::vector<std::wstring> added_ ZELCLR_GUARDED_BY(lock_);
  /// What was found under a name; forgotten with every change.
  std::unordered_map<std::wstring, Implementation> found_ ZELCLR_GUARDED_BY(lock_);
  std::set<std::wstring> takenNames_ ZELCLR_GUARDED_BY(lock_);
  bool scanned_ ZELCLR_GUARDED_BY(lock_) = false;
  std::unique_ptr<ZelUtl::FolderWatch> watch_ ZELCLR_GUARDED_BY(lock_);
  ZelUtl::Event listeners_;
};

} // namespace ColorSystem
