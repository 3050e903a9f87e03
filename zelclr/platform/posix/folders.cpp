#include "zelclr/platform/folders.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace ZelUtl {

namespace {

namespace fs = std::filesystem;

/// Relative values are to be ignored, says the XDG Base Directory Specification.
std::string Environment(const char *name)
{
  const char *const value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : "";
}

/// share/zelclr beside lib/libZelClr.so, wherever that was installed to: lib may have folders of its own.
std::string DataFolder()
{
  Dl_info place = {};
  if (::dladdr(reinterpret_cast<const void *>(&DataFolder), &place) == 0 || place.dli_fname == nullptr)
    return {};
  std::error_code error;
  fs::path folder = fs::canonical(place.dli_fname, error).parent_path();
  for (int floors = 0; !error && floors < 3 && folder.has_relative_path(); ++floors) {
    folder = folder.parent_path();
    const std::string data = (folder / "share" / "zelclr").string();
    if (IsFolder(data))
      return data;
  }
  return {};
}

std::string AtHome(const char *path)
{
  const std::string home = Environment("HOME");
  return home.empty() ? "" : JoinPath(home, path);
}

std::string UserData()
{
  const std::string folder = Environment("XDG_DATA_HOME");
  return folder.empty() ? AtHome(".local/share") : folder;
}

} // namespace

std::string CustomaryUserFolder()
{
  const std::string userData = UserData();
  return userData.empty() ? "" : JoinPath(userData, "zelclr");
}

Folders CustomaryFolders()
{
  const std::string userData = UserData();

  Folders folders;
  folders.data = DataFolder();
  folders.user = CustomaryUserFolder();
  folders.temporary = Environment("TMPDIR");
  if (!IsFolder(folders.temporary))
    folders.temporary = "/tmp";
  const std::string system[] = {userData.empty() ? "" : JoinPath(userData, "icc"),
                                AtHome(".color/icc"),
                                "/usr/local/share/color/icc",
                                "/usr/share/color/icc",
                                "/var/lib/colord/icc",
                                "/var/lib/color/icc"};
  for (const std::string &folder : system) {
    if (IsFolder(folder))
      folders.systemProfiles.push_back(folder);
  }
  return folders;
}

bool IsFolder(const std::string &path)
{
  std::error_code error;
  return !path.empty() && fs::is_directory(path, error);
}

bool MakeFolders(const std::string &path, std::string &reason)
{
  std::error_code error;
  fs::create_directories(path, error);
  if (error)
    reason = error.message();
  return !error;
}

bool MakePrivateFolder(const std::string &path, std::string &reason)
{
  std::error_code error;
  if (fs::create_directory(path, error))
    fs::permissions(path, fs::perms::owner_all, error);
  if (error)
    reason = error.message();
  return !error;
}

std::vector<std::string> FilesOfFolder(const std::string &folder, std::vector<std::string> *subfolders)
{
  std::vector<std::string> files;
  std::error_code error;
  // Whatever happens to the folder meanwhile, the listing ends there.
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code unknown;
    if (entry->is_regular_file(unknown))
      files.push_back(entry->path().filename().string());
    else if (subfolders != nullptr && entry->is_directory(unknown))
      subfolders->push_back(entry->path().filename().string());
  }
  std::sort(files.begin(), files.end());
  if (subfolders != nullptr)
    std::sort(subfolders->begin(), subfolders->end());
  return files;
}

bool IsFileWritable(const std::string &path)
{
  std::error_code error;
  const auto permissions = fs::status(path, error).permissions();
  return !error && (permissions & fs::perms::owner_write) != fs::perms::none;
}

bool SetFileWritable(const std::string &path, bool writable)
{
  const auto all = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  std::error_code error;
  fs::permissions(path, writable ? fs::perms::owner_write : all,
                  writable ? fs::perm_options::add : fs::perm_options::remove, error);
  return !error;
}

bool DeleteFileAt(const std::string &path)
{
  std::error_code error;
  return fs::remove(path, error);
}

} // namespace ZelUtl
