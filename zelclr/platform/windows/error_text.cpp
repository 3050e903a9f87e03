#include "zelclr/platform/windows/error_text.h"

#include "zelclr/platform/text.h"

#include <windows.h>

#include <system_error>

namespace ZelUtl {

std::string ErrorText(unsigned long error)
{
  // The same words as on other systems where there are any; Windows has its own in the user's language only.
  const std::error_condition common = std::system_category().default_error_condition(static_cast<int>(error));
  if (common.category() == std::generic_category())
    return common.message();
  wchar_t *text = nullptr;
  const DWORD length = ::FormatMessageW(
    FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
    MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), reinterpret_cast<wchar_t *>(&text), 0, nullptr);
  const std::string message = length != 0 ? Utf8FromWide({text, length}) : "error " + std::to_string(error);
  ::LocalFree(text);
  return std::string(Trimmed(message));
}

std::string LastErrorText()
{
  return ErrorText(::GetLastError());
}

} // namespace ZelUtl
