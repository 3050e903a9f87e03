#include "cli/palette/installed.h"

#include "cli/failure.h"
#include "cli/output.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"

namespace cli {

namespace {

std::string PathOf(const WClrPalette &palette)
{
  return ZelUtl::Utf8FromWide(palette.GetFileName());
}

bool HasFileName(const WClrPalette &palette, const std::wstring &folded)
{
  const std::string name = ZelUtl::FileNameOfPath(PathOf(palette));
  const std::string stem = name.substr(0, name.rfind('.'));
  return ZelUtl::FoldedCase(ZelUtl::WideFromUtf8(name)) == folded ||
         ZelUtl::FoldedCase(ZelUtl::WideFromUtf8(stem)) == folded;
}

bool HasName(const WClrPalette &palette, const std::wstring &folded)
{
  return ZelUtl::FoldedCase(palette.GetPaletteName()) == folded ||
         ZelUtl::FoldedCase(ZelUtl::WideFromUtf8(palette.GetXmlPalette().GetHeader().name)) == folded;
}

/// Null when there is none; throws Failure when the name is that of several.
const WClrPalette *FindInstalled(const std::string &name)
{
  if (const auto guid = ZelUtils::Guid::FromText(std::string_view(name)))
    return WClrPaletteMgr::GetInstance().GetPaletteIDFromGuid(*guid);
  const std::wstring folded = ZelUtl::FoldedCase(ZelUtl::WideFromUtf8(name));
  const WClrPaletteMgr::Palettes installed = InstalledPalettes();
  for (const auto matches : {&HasFileName, &HasName}) {
    std::vector<const WClrPalette *> found;
    for (const WClrPalette *const palette : installed) {
      if (matches(*palette, folded))
        found.push_back(palette);
    }
    if (found.size() == 1)
      return found.front();
    if (found.empty())
      continue;
    std::string files;
    for (const WClrPalette *const palette : found)
      files += (files.empty() ? "" : ", ") + Harmless(ZelUtl::FileNameOfPath(PathOf(*palette)));
    throw Failure(ExitCode::Usage, "\"" + Harmless(name) + "\" is the name of " + std::to_string(found.size()) +
                                     " palettes; name one by its file: " + files);
  }
  return nullptr;
}

} // namespace

WClrPaletteMgr::Palettes InstalledPalettes()
{
  WClrPaletteMgr &manager = WClrPaletteMgr::GetInstance();
  manager.DiscoverAllPalettes();
  return manager.GetPaletteList();
}

LoadedPalette LoadedFrom(const WClrPalette &palette)
{
  return LoadedFromOwn(palette.GetXmlPalette(), PathOf(palette));
}

LoadedPalette OpenPalette(const std::string &nameOrPath)
{
  if (nameOrPath.empty())
    throw Failure(ExitCode::Usage, "the name of the palette is empty");
  const bool bare = ZelUtl::FileNameOfPath(nameOrPath) == nameOrPath;
  if (nameOrPath == "-" || !bare || ZelUtl::StampOfFile(nameOrPath))
    return LoadPalette(nameOrPath);
  if (const WClrPalette *const palette = FindInstalled(nameOrPath)) {
    // Of a palette of another program its file says more; a packed one has no file of its name.
    const std::string path = PathOf(*palette);
    return ZelUtl::StampOfFile(path) ? LoadPalette(path) : LoadedFrom(*palette);
  }
  std::string reason;
  if (!ZelUtl::ReadFile(nameOrPath, ZelClr::kMostPaletteBytes, reason))
    throw Failure(ExitCode::Unreadable, Harmless(nameOrPath) + ": not installed; as a file: " + reason);
  return LoadPalette(nameOrPath);
}

} // namespace cli
