#include "zelclr/platform/display_profile.h"

#include "zelclr/platform/console.h"
#include "zelclr/platform/folders.h"

#include <utility>
#include <vector>

namespace ZelUtl {

namespace {

std::string PathOfSessionsProfile()
{
  const std::string home = EnvironmentVariable("HOME").value_or("");
  std::string data = EnvironmentVariable("XDG_DATA_HOME").value_or("");
  if (data.empty() && !home.empty())
    data = JoinPath(home, ".local/share");
  if (data.empty())
    return {};
  const std::string folder = JoinPath(data, "icc");
  std::vector<std::string> displays;
  for (const std::string &name : FilesOfFolder(folder)) {
    if (name.starts_with("edid-") && ExtensionOfPath(name) == ".icc")
      displays.push_back(name);
  }
  return displays.size() == 1 ? JoinPath(folder, displays.front()) : std::string();
}

} // namespace

std::vector<Display> AttachedDisplays()
{
  std::string path = PathOfSessionsProfile();
  return path.empty() ? std::vector<Display>() : std::vector{Display{"", "", std::move(path)}};
}

} // namespace ZelUtl
