#include "zelclr/platform/folders.h"

#include "zelclr/platform/text.h"
#include "zelclr/platform/windows/error_text.h"
#include "zelclr/platform/windows/native_path.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace ZelUtl {

namespace {

/// With "/" between names, as everywhere in the library.
std::string PathFrom(const std::wstring &native)
{
  std::string path = Utf8FromWide(native);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::string Environment(const wchar_t *name)
{
  std::wstring value(32768, L'\0');
  value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return PathFrom(value);
}

std::string Below(const std::string &folder, const char *name)
{
  return folder.empty() ? "" : JoinPath(folder, name);
}

/// share/zelclr beside bin/libZelClr.dll, or data beside the library itself.
std::string DataFolder()
{
  HMODULE module = nullptr;
  std::wstring file(32768, L'\0');
  if (::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<const wchar_t *>(&DataFolder), &module) == 0)
    return {};
  file.resize(::GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size())));
  std::string folder = FolderOfPath(PathFrom(file));
  for (int floors = 0; floors < 3 && !folder.empty(); ++floors) {
    const std::string data = JoinPath(folder, "share/zelclr");
    if (IsFolder(data))
      return data;
    folder = FolderOfPath(folder);
  }
  return {};
}

DWORD AttributesOf(const std::string &path)
{
  return ::GetFileAttributesW(NativePath(path).c_str());
}

bool Has(DWORD attributes, DWORD attribute)
{
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

} // namespace

std::string CustomaryUserFolder()
{
  return Below(Environment(L"APPDATA"), "ZelClr");
}

Folders CustomaryFolders()
{
  Folders folders;
  folders.data = DataFolder();
  folders.user = CustomaryUserFolder();
  folders.programs = Environment(L"CommonProgramFiles");
  std::wstring temporary(32768, L'\0');
  temporary.resize(::GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data()));
  folders.temporary = PathFrom(temporary);
  const std::string system = Below(Environment(L"SystemRoot"), "System32/spool/drivers/color");
  if (IsFolder(system))
    folders.systemProfiles.push_back(system);
  return folders;
}

bool IsFolder(const std::string &path)
{
  return Has(AttributesOf(path), FILE_ATTRIBUTE_DIRECTORY);
}

bool MakeFolders(const std::string &path, std::string &reason)
{
  if (IsFolder(path))
    return true;
  const std::string parent = FolderOfPath(path);
  if (!parent.empty() && parent != path && !parent.ends_with(':') && !MakeFolders(parent, reason))
    return false;
  if (::CreateDirectoryW(NativePath(path).c_str(), nullptr) != 0 || IsFolder(path))
    return true;
  reason = LastErrorText();
  return false;
}

/// The user's own temporary folder hands down who may look into it: the user and those who administer the machine.
bool MakePrivateFolder(const std::string &path, std::string &reason)
{
  if (::CreateDirectoryW(NativePath(path).c_str(), nullptr) != 0)
    return true;
  reason = LastErrorText();
  return false;
}

std::vector<std::string> FilesOfFolder(const std::string &folder, std::vector<std::string> *subfolders)
{
  std::vector<std::string> files;
  WIN32_FIND_DATAW entry = {};
  const HANDLE listing = ::FindFirstFileExW(NativePath(JoinPath(folder, "*")).c_str(), FindExInfoBasic, &entry,
                                            FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (folder.empty() || listing == INVALID_HANDLE_VALUE)
    return files;
  do {
    const std::string name = Utf8FromWide(entry.cFileName);
    if (!Has(entry.dwFileAttributes, FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE))
      files.push_back(name);
    else if (subfolders != nullptr && name != "." && name != "..")
      subfolders->push_back(name);
  } while (::FindNextFileW(listing, &entry) != 0);
  ::FindClose(listing);
  std::sort(files.begin(), files.end());
  if (subfolders != nullptr)
    std::sort(subfolders->begin(), subfolders->end());
  return files;
}

bool IsFileWritable(const std::string &path)
{
  const DWORD attributes = AttributesOf(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !Has(attributes, FILE_ATTRIBUTE_READONLY);
}

bool SetFileWritable(const std::string &path, bool writable)
{
  const DWORD attributes = AttributesOf(path);
  if (attributes == INVALID_FILE_ATTRIBUTES)
    return false;
  const DWORD others = attributes & ~DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_NORMAL};
  const DWORD wanted = writable ? others : others | FILE_ATTRIBUTE_READONLY;
  return ::SetFileAttributesW(NativePath(path).c_str(), wanted == 0 ? FILE_ATTRIBUTE_NORMAL : wanted) != 0;
}

bool DeleteFileAt(const std::string &path)
{
  const std::wstring native = NativePath(path);
  const DWORD attributes = ::GetFileAttributesW(native.c_str());
  if (Has(attributes, FILE_ATTRIBUTE_DIRECTORY))
    return ::RemoveDirectoryW(native.c_str()) != 0;
  const bool readOnly = Has(attributes, FILE_ATTRIBUTE_READONLY);
  if (readOnly)
    SetFileWritable(path, true);
  if (::DeleteFileW(native.c_str()) != 0)
    return true;
  if (readOnly)
    SetFileWritable(path, false);
  return false;
}

} // namespace ZelUtl
