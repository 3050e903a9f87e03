#include "zelclr/platform/folders.h"

#include <dlfcn.h>

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

} // namespace ZelUtl
