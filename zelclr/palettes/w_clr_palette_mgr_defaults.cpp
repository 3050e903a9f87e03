// The palette that documents start with, the one that spot colours are looked for in, and lists in the preferences.

#include "zelclr/palettes/default_spot_palette.h"
#include "zelclr/palettes/palette_folders.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/preferences.h"
#include "zelclr/platform/text.h"

#include <algorithm>

using ZelUtils::Guid;

namespace {

constexpr const char *kSection = "palettes";
constexpr std::size_t kMostRecent = 10;

using Paths = std::vector<std::wstring>;

/// A line to a path.
struct StoredPaths
{
  static std::string ToText(const Paths &paths)
  {
    std::string text;
    for (const std::wstring &path : paths)
      text += ZelUtl::Utf8FromWide(path) + '\n';
    return text;
  }
  static std::optional<Paths> FromText(std::string_view text)
  {
    Paths paths;
    while (!text.empty()) {
      const auto end = std::min(text.find('\n'), text.size());
      if (end > 0)
        paths.push_back(ZelUtl::WideFromUtf8(text.substr(0, end)));
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    return paths;
  }
};

using PathsPreference = ZelUtl::CPrefObject<Paths, StoredPaths>;

PathsPreference RecentPalettes()
{
  return {kSection, "Recent", {}};
}

PathsPreference UserLoadedPalettes()
{
  return {kSection, "UserLoaded", {}};
}

ZelUtl::CPrefObject<std::wstring> DefaultPalettePreference()
{
  return {kSection, "DefaultPalette", {}};
}

/// Whether the preferences can hold it.
bool CanBeListed(const std::wstring &path)
{
  return !path.empty() && path.find(L'\n') == std::wstring::npos;
}

} // namespace

// --- Default palettes -----------------------------------------------------------------------------------------------

WClrPalette *WClrPaletteMgr::GetDefaultPalette()
{
  return default_ == nullptr ? LoadDefaultPalette() : default_;
}

bool WClrPaletteMgr::SetDefaultPalette(WClrPalette *palette)
{
  if (palette != nullptr && !HasPalette(palette))
    return false;
  default_ = palette;
  DefaultPalettePreference().Set(palette == nullptr ? std::wstring() : palette->GetFileName());
  return true;
}

WClrPalette *WClrPaletteMgr::LoadDefaultPalette()
{
  const std::wstring preferred = DefaultPalettePreference().Get();
  const bool isDocuments =
    ZelUtl::FileNameOfPath(ZelUtl::Utf8FromWide(preferred)) == ZelUtl::Utf8FromWide(kDocumentPaletteFileName);
  WClrPalette *palette = isDocuments         ? GetActiveDocumentPaletteID()
                         : preferred.empty() ? nullptr
                                             : LoadPalette(preferred);
  const std::wstring installed = ZelClr::GetInstalledPalettesDir();
  for (const std::wstring &path :
       {ZelClr::GetPalettesDir() + L"/dynamic.xml", installed + L"/dynamic.xml", installed + L"/defrgb.xml"})
  {
    if (palette == nullptr)
      palette = LoadPalette(path);
  }
  return default_ = palette;
}

Guid WClrPaletteMgr::GetDefaultSpotPaletteGuid()
{
  if (!defaultSpotPalette_)
    defaultSpotPalette_ = ZelClr::ReadDefaultSpotPalette();
  return *defaultSpotPalette_;
}

bool WClrPaletteMgr::SetDefaultSpotPaletteGuid(const Guid &guid)
{
  if (!ZelClr::WriteDefaultSpotPalette(guid))
    return false;
  defaultSpotPalette_ = guid;
  return true;
}

// --- Lists ----------------------------------------------------------------------------------------------------------

std::vector<std::wstring> WClrPaletteMgr::GetRecentPalettes()
{
  return RecentPalettes().Get();
}

void WClrPaletteMgr::AddRecentPalette(const std::wstring &path)
{
  if (!CanBeListed(path))
    return;
  Paths paths = GetRecentPalettes();
  std::erase(paths, path);
  paths.insert(paths.begin(), path);
  paths.resize(std::min(paths.size(), kMostRecent));
  RecentPalettes().Set(paths);
}

std::vector<std::wstring> WClrPaletteMgr::GetUserLoadedCustomPalettesList()
{
  return UserLoadedPalettes().Get();
}

void WClrPaletteMgr::AddUserLoadedCustomPalette(const std::wstring &path)
{
  Paths paths = GetUserLoadedCustomPalettesList();
  if (!CanBeListed(path) || std::find(paths.begin(), paths.end(), path) != paths.end())
    return;
  paths.push_back(path);
  UserLoadedPalettes().Set(paths);
}

void WClrPaletteMgr::RemoveUserLoadedCustomPalette(const std::wstring &path)
{
  Paths paths = GetUserLoadedCustomPalettesList();
  if (std::erase(paths, path) != 0)
    UserLoadedPalettes().Set(paths);
}

std::vector<WClrPaletteMgr::PaletteEntry> WClrPaletteMgr::BuildUniqueColorList(const std::vector<PaletteEntry> &entries)
{
  std::vector<PaletteEntry> unique;
  std::set<CLR_COLORSPEC> known;
  for (const PaletteEntry &entry : entries) {
    if (!entry.color.IsInvalid() && known.insert(entry.color).second)
      unique.push_back(entry);
  }
  return unique;
}

std::vector<WClrPaletteMgr::PaletteEntry> WClrPaletteMgr::BuildUniqueColorList(const Palettes &palettes) const
{
  std::vector<PaletteEntry> entries;
  for (const WClrPalette *palette : palettes) {
    for (int i = 0; i < GetPaletteSize(palette); ++i)
      entries.push_back({palette->GetColorSpec(i), palette->GetColorName(i)});
  }
  return BuildUniqueColorList(entries);
}
