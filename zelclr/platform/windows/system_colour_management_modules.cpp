// The colour-matching modules that other programs have installed.
#include "zelclr/platform/system_colour_management.h"

#include <windows.h>

#include <optional>
#include <string>

namespace ZelUtl::SystemColourManagement {

namespace {

constexpr const wchar_t *kModules = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ICM\\ICMatchers";

/// The text of a value of the list, with variables of the environment in it replaced; empty when there is none, or
/// none of text.
std::wstring RegisteredModule(const wchar_t *name)
{
  HKEY key = nullptr;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kModules, 0, KEY_READ, &key) != ERROR_SUCCESS)
    return {};
  std::wstring text(32768, L'\0');
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  const bool found =
    ::RegGetValueW(key, nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &size) == ERROR_SUCCESS; // terminates it
  ::RegCloseKey(key);
  text.resize(found ? text.find(L'\0') : 0);
  return text;
}

/// A whole path loads what lies beside it, too; a bare name is looked for in the system's folder.
bool Exports(const std::wstring &library, const char *function)
{
  const bool whole = library.size() > 2 && (library[1] == L':' || library.starts_with(L"\\\\"));
  if (!whole && library.find_first_of(L"\\/:") != std::wstring::npos)
    return false;
  const HMODULE module = ::LoadLibraryExW(library.c_str(), nullptr,
                                          whole ? LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS
                                                : LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (module == nullptr)
    return false;
  const bool exports = ::GetProcAddress(module, function) != nullptr;
  ::FreeLibrary(module);
  return exports;
}

} // namespace

bool HasAdobeModule()
{
  static const bool has = [] {
    const std::wstring library = RegisteredModule(L"ADBE");
    return HasIcm() && !library.empty() && Exports(library, "CMTranslateColors");
  }();
  return has;
}

} // namespace ZelUtl::SystemColourManagement
