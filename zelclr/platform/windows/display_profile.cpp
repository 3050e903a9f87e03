#include "zelclr/platform/display_profile.h"

#include "zelclr/platform/text.h"

#include <windows.h>

#include <vector>

namespace ZelUtl {

std::string PathOfSystemDisplayProfile()
{
  const HDC screen = ::GetDC(nullptr);
  if (screen == nullptr)
    return {};
  DWORD length = MAX_PATH;
  std::vector<wchar_t> path(length);
  bool found = ::GetICMProfileW(screen, &length, path.data()) != 0;
  if (!found && length > path.size()) {
    path.resize(length);
    found = ::GetICMProfileW(screen, &length, path.data()) != 0;
  }
  ::ReleaseDC(nullptr, screen);
  path.push_back(L'\0');
  return found ? Utf8FromWide(path.data()) : std::string();
}

} // namespace ZelUtl
