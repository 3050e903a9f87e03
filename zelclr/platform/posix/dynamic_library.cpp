#include "zelclr/platform/dynamic_library.h"

#include <dlfcn.h>

#include <cstring>

namespace ZelUtl {

std::shared_ptr<const DynamicLibrary> DynamicLibrary::Load(const char *name)
{
  // A name with a slash would be a path, relative to the working directory.
  void *const handle = std::strchr(name, '/') == nullptr ? ::dlopen(name, RTLD_NOW | RTLD_LOCAL) : nullptr;
  return handle == nullptr ? nullptr : std::shared_ptr<const DynamicLibrary>(new DynamicLibrary(handle));
}

DynamicLibrary::~DynamicLibrary()
{
  ::dlclose(handle_);
}

DynamicLibrary::AnyFunction DynamicLibrary::Address(const char *name) const
{
  return reinterpret_cast<AnyFunction>(::dlsym(handle_, name));
}

} // namespace ZelUtl
