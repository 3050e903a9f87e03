#include "zelclr/platform/console.h"

#include "zelclr/platform/text.h"

#include <windows.h>

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
