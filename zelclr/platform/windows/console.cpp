#include "zelclr/platform/console.h"

#include "zelclr/platform/text.h"

// The second needs the first.
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace ZelUtl {

bool StandardOutputIsTerminal()
{
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

bool StandardErrorIsTerminal()
{
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

std::vector<std::string> ProgramArguments(int count, char **words)
{
  // The words of main are in the system's code page, which has not every letter.
  wchar_t **const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (wide == nullptr)
    return {words, words + count};
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i)
    arguments.push_back(Utf8FromWide(wide[i]));
  ::LocalFree(wide);
  return arguments;
}

void PrepareStandardStreams()
{
  for (std::FILE *const stream : {stdin, stdout, stderr})
    ::_setmode(::_fileno(stream), _O_BINARY);
  for (const DWORD stream : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
    const HANDLE handle = ::GetStdHandle(stream);
    DWORD mode = 0;
    if (::GetConsoleMode(handle, &mode) != 0)
      ::SetConsoleMode(handle, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
  if (!StandardOutputIsTerminal() && !StandardErrorIsTerminal())
    return;
  static const UINT before = ::GetConsoleOutputCP(); // the console's, which outlives us
  ::SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { ::SetConsoleOutputCP(before); });
  std::setvbuf(stdout, nullptr, _IOFBF, 65536); // by single bytes, letters would fall apart
}

bool StandardOutputTakesEscapes()
{
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0 &&
         (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::optional<std::string> EnvironmentVariable(const char *name)
{
  const std::wstring wideName = WideFromUtf8(name);
  std::vector<wchar_t> value(256);
  for (;;) {
    ::SetLastError(ERROR_SUCCESS);
    const DWORD length = ::GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && ::GetLastError() == ERROR_ENVVAR_NOT_FOUND)
      return std::nullopt;
    if (length < value.size())
      return Utf8FromWide({value.data(), length});
    value.resize(length);
  }
}

} // namespace ZelUtl
