// A stand-in for the system's colour management that keeps a record of every call, its arguments and its order, and
// fails where it is told to. Its colours are complements, so that pixels show what was done to them.
//
// It is loaded before the library looks for "mscms.dll": a name that is loaded already is found by that name. Wine
// needs WINEDLLOVERRIDES=mscms=n,b to take a library that is not its own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace tests {

class MscmsDouble
{
public:
  /// From that folder beside the test.
  explicit MscmsDouble(const wchar_t *folder)
  {
    std::wstring program(32768, L'\0');
    program.resize(::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    const auto path = std::filesystem::path(program).parent_path() / folder / L"mscms.dll";
    library_ = ::LoadLibraryW(path.c_str());
    if (library_ == nullptr || ::GetProcAddress(library_, "TakeRecord") == nullptr)
      throw std::runtime_error("the double of mscms.dll is not what was loaded: is WINEDLLOVERRIDES set?");
  }
  ~MscmsDouble() { ::FreeLibrary(library_); }
  MscmsDouble(const MscmsDouble &) = delete;
  MscmsDouble &operator=(const MscmsDouble &) = delete;

  /// The calls since the last time, a line each.
  std::vector<std::string> TakeCalls() const
  {
    std::istringstream record(Function<const char *()>("TakeRecord")());
    std::vector<std::string> calls;
    for (std::string line; std::getline(record, line);)
      calls.push_back(line);
    return calls;
  }
  /// That call of the function fails, counted from here: 1 is the next. 0 ends it.
  void FailCall(const char *function, int call) const { Function<void(const char *, int)>("FailCall")(function, call); }
  /// Of profiles and transforms.
  int OpenHandles() const { return Function<int()>("OpenHandles")(); }
  /// What WcsCreateIccProfile makes of any device model.
  void SetMadeProfile(const std::vector<std::uint8_t> &bytes) const
  {
    Function<void(const std::uint8_t *, unsigned)>("SetMadeProfile")(bytes.data(), static_cast<unsigned>(bytes.size()));
  }

private:
  template <class Signature>
  Signature *Function(const char *name) const
  {
    return reinterpret_cast<Signature *>(reinterpret_cast<void (*)()>(::GetProcAddress(library_, name)));
  }

  HMODULE library_;
};

/// The first base of a fixture whose library is to find the double.
struct WithMscmsDouble
{
  explicit WithMscmsDouble(const wchar_t *folder = L"double") : system(folder) {}
  const MscmsDouble system;
};

} // namespace tests
