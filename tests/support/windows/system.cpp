#include "tests/support/system.h"

#include "tests/support/windows/command_line.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>

namespace tests {

namespace {

constexpr DWORD kKilledStatus = 0xDEAD; // no exit code of a test's

} // namespace

std::string MakeFolderAside()
{
  static unsigned count = 0;
  std::wstring parent(MAX_PATH + 1, L'\0');
  parent.resize(::GetTempPathW(static_cast<DWORD>(parent.size()), parent.data()));
  for (int tries = 0; tries < 1000; ++tries) {
    const std::wstring path =
      parent + L"zelclr_test_" + std::to_wstring(::GetCurrentProcessId()) + L"_" + std::to_wstring(++count);
    if (::CreateDirectoryW(path.c_str(), nullptr) != 0) {
      std::string made = ZelUtl::Utf8FromWide(path);
      std::replace(made.begin(), made.end(), '\\', '/');
      return made;
    }
  }
  throw std::runtime_error("no temporary folder");
}

// The standard library's own way tries for ever.
void RemoveFolder(const std::string &path)
{
  std::vector<std::string> folders;
  for (const std::string &file : ZelUtl::FilesOfFolder(path, &folders))
    ZelUtl::DeleteFileAt(path + "/" + file);
  for (const std::string &folder : folders)
    RemoveFolder(path + "/" + folder);
  ZelUtl::DeleteFileAt(path);
}

void SetVariable(const char *name, const std::string &value)
{
  ::SetEnvironmentVariableW(ZelUtl::WideFromUtf8(name).c_str(), ZelUtl::WideFromUtf8(value).c_str());
}

void UnsetVariable(const char *name)
{
  ::SetEnvironmentVariableW(ZelUtl::WideFromUtf8(name).c_str(), nullptr);
}

std::string UserBelow(const std::string &folder)
{
  return "APPDATA=" + folder;
}

std::string UsersFolderName()
{
  return "ZelClr";
}

std::vector<std::string> PipeAndDevice(const std::string & /*folder*/)
{
  const std::string name = "//./pipe/zelclr_test_" + std::to_string(::GetCurrentProcessId());
  // It goes with the process.
  static const HANDLE pipe = ::CreateNamedPipeW(ZelUtl::WideFromUtf8(name).c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE,
                                                PIPE_UNLIMITED_INSTANCES, 100, 100, 0, nullptr);
  if (pipe == INVALID_HANDLE_VALUE)
    throw std::runtime_error("no pipe at " + name);
  return {name, "NUL"};
}

std::string FullDevice()
{
  return {};
}

bool NamesAreBytes()
{
  return false;
}

bool LinkFolder(const std::string & /*target*/, const std::string & /*link*/)
{
  return false;
}

Process StartThisProgram(const std::vector<std::string> &words)
{
  std::wstring program(32768, L'\0');
  program.resize(::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
  std::vector<std::string> all = {ZelUtl::Utf8FromWide(program)};
  all.insert(all.end(), words.begin(), words.end());
  std::wstring line = CommandLineOf(all);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  // Where hundreds come and go in a second Wine fails now and then, by an error of its own.
  for (int tries = 1; ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                       &startup, &process) == 0;
       ++tries)
  {
    if (::GetLastError() != ERROR_INTERNAL_ERROR || tries == 10)
      throw std::runtime_error("cannot start this program again: error " + std::to_string(::GetLastError()));
    ::Sleep(100);
  }
  ::CloseHandle(process.hThread);
  return reinterpret_cast<Process>(process.hProcess);
}

int WaitFor(Process process)
{
  const auto handle = reinterpret_cast<HANDLE>(process);
  DWORD status = 0;
  if (::WaitForSingleObject(handle, INFINITE) != WAIT_OBJECT_0 || ::GetExitCodeProcess(handle, &status) == 0)
    throw std::runtime_error("no such child");
  ::CloseHandle(handle);
  return status == kKilledStatus ? kKilled : static_cast<int>(status);
}

void Kill(Process process)
{
  ::TerminateProcess(reinterpret_cast<HANDLE>(process), kKilledStatus);
}

void KillThisProcess()
{
  ::TerminateProcess(::GetCurrentProcess(), kKilledStatus);
  std::abort();
}

} // namespace tests
