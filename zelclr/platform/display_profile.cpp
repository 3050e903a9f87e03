#include "zelclr/platform/display_profile.h"

#include "zelclr/platform/console.h"

namespace ZelUtl {

std::string PathOfDisplayProfile()
{
  const std::string path = EnvironmentVariable("ZELCLR_DISPLAY_PROFILE").value_or("");
  return path.empty() ? PathOfSystemDisplayProfile() : path;
}

} // namespace ZelUtl
