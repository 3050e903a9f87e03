#include "zelclr/platform/dynamic_library.h"

#include "zelclr/platform/text.h"

#include <windows.h>

#include <cstring>
#include <string>

namespace ZelUtl {

namespace {

/// The folder of this library's own file with its last separator.
std::wstring OwnFolder()
{
  HMODULE module = nullptr;
  std::wstring file(32768, L'\0');
  if (::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<const wchar_t *>(&OwnFolder), &module) == 0)
    return {};
  file.resize(::GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size())));
  return file.substr(0, file.find_last_of(L'\\') + 1);
}

} // namespace

std::shared_ptr<const DynamicLibrary> DynamicLibrary::Load(const char *name)
{
  if (std::strpbrk(name, "/\\:") != nullptr)
    return nullptr;
  // The program's own folder, the system's, and the folder of this library: the working directory is in none of them.
  const std::wstring wide = WideFromUtf8(name);
  void *handle = ::LoadLibraryExW(wide.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
  if (const std::wstring folder = OwnFolder(); handle == nullptr && !folder.empty())
    handle = ::LoadLibraryExW((folder + wide).c_str(), nullptr,
                              LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
  return handle == nullptr ? nullptr : std::shared_ptr<const DynamicLibrary>(new DynamicLibrary(handle));
}

DynamicLibrary::~DynamicLibrary()
{
  ::FreeLibrary(static_cast<HMODULE>(handle_));
}

DynamicLibrary::AnyFunction DynamicLibrary::Address(const char *name) const
{
  return reinterpret_cast<AnyFunction>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

} // namespace ZelUtl
