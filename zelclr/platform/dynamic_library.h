// Libraries that are found at run time, by name.
//
// Threads: values. Errors: a library or a function that is not there is not there.
#pragma once

#include <memory>

namespace ZelUtl {

/// A loaded library; it stays loaded for as long as someone holds it.
class DynamicLibrary
{
public:
  /// Looks along the loader's own search path, on Windows in the folder of this library, too, and never in the working
  /// directory. `name` is without a folder: "liblcms2.so.2", "lcms2.dll". Null when it cannot be loaded.
  static std::shared_ptr<const DynamicLibrary> Load(const char *name);

  ~DynamicLibrary();
  DynamicLibrary(const DynamicLibrary &) = delete;
  DynamicLibrary &operator=(const DynamicLibrary &) = delete;

  /// Stores the address of a function; false, and null stored, when the library has none of that name.
  template <class Function>
  bool Resolve(const char *name, Function *&function) const
  {
    function = reinterpret_cast<Function *>(Address(name));
    return function != nullptr;
  }

private:
  using AnyFunction = void (*)();

  explicit DynamicLibrary(void *handle) : handle_(handle) {}
  AnyFunction Address(const char *name) const;

  void *handle_;
};

} // namespace ZelUtl
