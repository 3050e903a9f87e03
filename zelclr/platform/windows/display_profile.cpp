#include "zelclr/platform/display_profile.h"

#include "zelclr/platform/text.h"

#include <windows.h>

namespace ZelUtl {

namespace {

/// The default profile of a display adapter's output, "\\\\.\\DISPLAY1"; empty when it has none.
std::string ProfileOf(const wchar_t *device)
{
  const HDC context = ::CreateDCW(L"DISPLAY", device, nullptr, nullptr);
  if (context == nullptr)
    return {};
  DWORD length = 0;
  ::GetICMProfileW(context, &length, nullptr);
  std::wstring path(length, L'\0');
  const bool found = length > 0 && ::GetICMProfileW(context, &length, path.data()) != 0;
  ::DeleteDC(context);
  return found ? Utf8FromWide(path.c_str()) : std::string();
}

} // namespace

std::vector<Display> AttachedDisplays()
{
  std::vector<Display> displays;
  DISPLAY_DEVICEW output = {};
  output.cb = sizeof output;
  for (DWORD i = 0; ::EnumDisplayDevicesW(nullptr, i, &output, 0) != 0; ++i) {
    if ((output.StateFlags & DISPLAY_DEVICE_ATTACHED_TO_DESKTOP) == 0)
      continue;
    DISPLAY_DEVICEW monitor = {};
    monitor.cb = sizeof monitor;
    const bool named = ::EnumDisplayDevicesW(output.DeviceName, 0, &monitor, 0) != 0;
    Display display{Utf8FromWide(output.DeviceName), Utf8FromWide(named ? monitor.DeviceString : output.DeviceString),
                    ProfileOf(output.DeviceName)};
    const bool primary = (output.StateFlags & DISPLAY_DEVICE_PRIMARY_DEVICE) != 0;
    displays.insert(primary ? displays.begin() : displays.end(), std::move(display));
  }
  return displays;
}

} // namespace ZelUtl
