#include "zelclr/platform/windows/open_file.h"

#include <windows.h>

namespace ZelUtl {

void *OpenForReading(const std::wstring &path)
{
  constexpr DWORD kPause = 5, kMostPauses = 20;
  for (DWORD pauses = 0;; ++pauses) {
    const HANDLE file =
      ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_SHARING_VIOLATION || pauses == kMostPauses)
      return file;
    ::Sleep(kPause);
  }
}

} // namespace ZelUtl
