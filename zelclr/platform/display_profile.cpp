#include "zelclr/platform/display_profile.h"

#include "zelclr/platform/console.h"

namespace ZelUtl {

std::string PathOfDisplayProfile()
{
  const std::string path = EnvironmentVariable("ZELCLR_DISPLAY_PROFILE").value_or("");
  if (!path.empty())
    return path;
  const std::vector<Display> displays = AttachedDisplays();
  return displays.empty() ? std::string() : displays.front().profile;
}

} // namespace ZelUtl
