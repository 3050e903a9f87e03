#include "zelclr/platform/dynamic_library.h"

#include <windows.h>

#include <cstring>

namespace ZelUtl {

std::shared_ptr<const DynamicLibrary> DynamicLibrary::Load(const char *name)
{
  // The program's own folder and the system's: the working directory is in neither.
  void *const handle =
    std::strpbrk(name, "/\\") == nullptr ? ::LoadLibraryExA(name, nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS) : nullptr;
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
