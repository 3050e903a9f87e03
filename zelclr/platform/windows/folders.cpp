#include "zelclr/platform/folders.h"

#include "zelclr/platform/text.h"

#include <windows.h>

#include <filesystem>
#include <vector>

namespace ZelUtl {

namespace {

namespace fs = std::filesystem;

std::wstring Environment(const wchar_t *name)
{
  std::wstring value(32768, L'\0');
  value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

std::string Below(const std::wstring &folder, const char *name)
{
  return folder.empty() ? "" : JoinPath(Utf8FromWide(folder), name);
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
  fs::path folder = fs::path(file).parent_path();
  for (int floors = 0; floors < 3 && folder.has_relative_path(); ++floors) {
    const std::string data = Utf8FromWide((folder / L"share" / L"zelclr").wstring());
    if (IsFolder(data))
      return data;
    folder = folder.parent_path();
  }
  return {};
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
  folders.programs = Below(Environment(L"CommonProgramFiles"), "");
  std::wstring temporary(32768, L'\0');
  temporary.resize(::GetTempPathW(static_cast<DWORD>(temporary.size()), temporary.data()));
  folders.temporary = Utf8FromWide(temporary);
  const std::string system = Below(Environment(L"SystemRoot"), "System32/spool/drivers/color");
  if (IsFolder(system))
    folders.systemProfiles.push_back(system);
  return folders;
}

} // namespace ZelUtl
