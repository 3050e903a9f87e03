#include "tests/support/tool.h"

#include "tests/support/windows/command_line.h"

#include <windows.h>

#include <map>
#include <stdexcept>

namespace tests {

namespace {

/// A stream of a child's: a file that it inherits.
HANDLE Stream(const std::string &path, bool output)
{
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const HANDLE file =
    ::CreateFileW(ZelUtl::WideFromUtf8(path).c_str(), output ? GENERIC_WRITE : GENERIC_READ,
                  FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, output ? CREATE_ALWAYS : OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    throw std::runtime_error("cannot open " + path);
  return file;
}

/// This process's environment with these settings, as CreateProcessW takes it.
std::wstring EnvironmentWith(const std::string &settings)
{
  std::map<std::wstring, std::wstring> variables;
  const auto set = [&variables](const std::wstring &text) {
    const auto equals = text.find(L'=', 1); // the system has variables whose names begin with one
    if (equals != std::wstring::npos)
      variables[text.substr(0, equals)] = text.substr(equals);
  };
  wchar_t *const all = ::GetEnvironmentStringsW();
  for (const wchar_t *one = all; *one != L'\0'; one += std::wcslen(one) + 1)
    set(one);
  ::FreeEnvironmentStringsW(all);
  for (const std::string &setting : ShellCommandOf("NO_COLOR= TERM=xterm " + settings).words)
    set(ZelUtl::WideFromUtf8(setting));
  std::wstring block;
  for (const auto &[name, value] : variables)
    block.append(name).append(value) += L'\0';
  return block + L'\0';
}

} // namespace

ToolResult RunTool(const std::string &words, const std::string &settings)
{
  const TemporaryFolder folder;
  ShellCommand command = ShellCommandOf(words);
  command.words.insert(command.words.begin(), ZELCLR_TOOL);
  std::wstring line = CommandLineOf(command.words);
  std::wstring environment = EnvironmentWith(settings);
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = Stream(command.input, false);
  startup.hStdOutput = Stream(command.output.empty() ? folder.Path("output") : command.output, true);
  startup.hStdError = Stream(folder.Path("errors"), true);
  PROCESS_INFORMATION process = {};
  const bool started =
    ::CreateProcessW(ZelUtl::WideFromUtf8(ZELCLR_TOOL).c_str(), line.data(), nullptr, nullptr, TRUE,
                     CREATE_UNICODE_ENVIRONMENT, environment.data(), nullptr, &startup, &process) != 0;
  for (const HANDLE stream : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
    ::CloseHandle(stream);
  if (!started)
    throw std::runtime_error("cannot run " + words);
  DWORD status = 0;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::GetExitCodeProcess(process.hProcess, &status);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return {static_cast<int>(status), TextOf(folder.Path("output")), TextOf(folder.Path("errors"))};
}

} // namespace tests
