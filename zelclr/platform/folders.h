// The folders that the library looks in, and what stands in them.
//
// Threads: plain functions. Paths are UTF-8. Errors: empty results, false; where there is a `reason`, it is stored in
// English.
#pragma once

#include "zelclr/platform/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZelUtl {

/// Where things are. The host sets them before it uses the library; else they are the system's customary ones.
struct Folders
{
  std::string data; ///< installed beside the library: share/zelclr; empty when it is not there
  std::string user; ///< what the library keeps for the user, made when something is written: ~/.local/share/zelclr
  std::string temporary;
  std::string programs;                    ///< shared files of programs; empty where there is no such folder
  std::vector<std::string> systemProfiles; ///< colour profiles of the operating system, those that exist
};

/// Without a host: `data` is found from the place of the library's own file, `user` and `systemProfiles` follow XDG and
/// the environment of this moment on Linux, %APPDATA% and the system's colour folder on Windows.
ZELCLR_API Folders GetFolders();
ZELCLR_API void SetFolders(const Folders &folders);
/// Back to the customary ones.
ZELCLR_API void ResetFolders();
/// `user` of GetFolders, found without the others.
ZELCLR_API std::string GetUserFolder();

/// "color" in the user's folder: the user's settings and profiles. Empty without such a folder; it need not be there.
ZELCLR_API std::string GetUserProfileColorDir();
/// "color" in the installation's folder: what ships. Empty without such a folder.
ZELCLR_API std::string INIGetColorDir();
/// "config" in the installation's folder. Empty without such a folder.
ZELCLR_API std::string INIGetConfigDir();

/// "folder/name", without a second slash.
ZELCLR_API std::string JoinPath(std::string_view folder, std::string_view name);
/// "name.icc" of "folder/name.icc"; ".icc" of that, "" where there is none.
ZELCLR_API std::string FileNameOfPath(std::string_view path);
ZELCLR_API std::string ExtensionOfPath(std::string_view path);
/// The path without its file name; empty when it has none.
ZELCLR_API std::string FolderOfPath(std::string_view path);
/// The path from the root on, without "." and "..", by the folder that the process is in; as it stands where that is
/// not known. Links stay.
ZELCLR_API std::string AbsolutePath(const std::string &path);
/// A file name for every system out of any text: without path separators, reserved and control characters, blanks and
/// points at its ends, with "_" before what Windows takes for a device; "Unnamed" when nothing is left; at most 200
/// bytes and that sign.
ZELCLR_API std::string ValidFileName(std::string_view text);
/// A new folder of a name that nobody can guess, for the user alone, in the temporary folder; empty when it cannot be
/// made.
ZELCLR_API std::string MakeTemporaryFolder(std::string &reason);

// In posix/ and windows/.

ZELCLR_API bool IsFolder(const std::string &path);
ZELCLR_API bool MakeFolders(const std::string &path, std::string &reason);
/// For the user alone.
bool MakePrivateFolder(const std::string &path, std::string &reason);

/// The names of the files of a folder, ordered; those of the folders in it in `subfolders` when that is given.
ZELCLR_API std::vector<std::string> FilesOfFolder(const std::string &folder,
                                                  std::vector<std::string> *subfolders = nullptr);

/// Whether the file may be written to by its owner; read-only ones refuse.
ZELCLR_API bool IsFileWritable(const std::string &path);
ZELCLR_API bool SetFileWritable(const std::string &path, bool writable);
/// A read-only file, too, and a folder that is empty.
ZELCLR_API bool DeleteFileAt(const std::string &path);

Folders CustomaryFolders();
std::string CustomaryUserFolder();

} // namespace ZelUtl
