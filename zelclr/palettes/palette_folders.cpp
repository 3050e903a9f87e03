#include "zelclr/palettes/palette_folders.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>

namespace ZelClr {

using ZelUtils::Guid;
using namespace ZelUtils::literals;

namespace {

struct PaletteFolder
{
  std::wstring_view name;
  Guid identifier;
};

/// Frozen: panels keep the identifiers.
constexpr std::array<PaletteFolder, 8> kPaletteFolders = {{
  {L"Misc", "{A671BC65-7716-4EF3-A5B9-FBB56FD43185}"_guid},
  {L"Nature", "{210785E9-BB31-45F3-A835-7CF0D2CAE9F5}"_guid},
  {L"People", "{37980775-5263-497D-B38F-FED2784C7FFC}"_guid},
  {L"Things", "{AE4957D6-686F-4A80-ABC1-FC8C82A04CE5}"_guid},
  {L"Spot", "{873C783C-9732-4CE7-A52F-66DC8C8F7E45}"_guid},
  {L"Previous Version", "{E19237E0-57E3-48FE-87CD-A2A2F0F325AB}"_guid},
  {L"Process", "{888E60BD-E82E-478B-A3D0-D773DBBF614C}"_guid},
  {L"256 Colors", "{BAA43936-0EA0-48ED-AABD-7ABEC710762D}"_guid},
}};

std::wstring PalettesIn(const std::string &colorFolder)
{
  return colorFolder.empty() ? std::wstring() : ZelUtl::WideFromUtf8(ZelUtl::JoinPath(colorFolder, "Palettes"));
}

} // namespace

std::wstring GetInstalledPalettesDir()
{
  return PalettesIn(ZelUtl::INIGetColorDir());
}

std::wstring GetPalettesDir()
{
  const std::wstring user = PalettesIn(ZelUtl::GetUserProfileColorDir());
  return user.empty() ? GetInstalledPalettesDir() : user;
}

std::wstring GetUserCustomPalettesDir()
{
  const std::wstring user = PalettesIn(ZelUtl::GetUserProfileColorDir());
  return user.empty() ? user : user + L"/Custom";
}

Guid PaletteFolderIdentifier(std::wstring_view name)
{
  const auto row = std::find_if(kPaletteFolders.begin(), kPaletteFolders.end(),
                                [&](const PaletteFolder &folder) { return folder.name == name; });
  return row == kPaletteFolders.end() ? Guid() : row->identifier;
}

} // namespace ZelClr
