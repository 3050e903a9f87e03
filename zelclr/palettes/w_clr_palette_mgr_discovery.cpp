// How the manager finds and loads the files of palettes.

#include "zelclr/colour/palette_types.h"
#include "zelclr/palettes/fixed_palettes.h"
#include "zelclr/palettes/internal/palette_paths.h"
#include "zelclr/palettes/palette_exchange.h"
#include "zelclr/palettes/palette_folders.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/resources.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>

using ZelUtils::Guid;
using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;
using namespace ZelUtils::literals;

namespace {

struct DiscoveryStep
{
  std::wstring (*folder)();
  const wchar_t *below; ///< of that folder
  bool recursive;
};

constexpr std::array<DiscoveryStep, 7> kSteps = {{
  {&ZelClr::GetInstalledPalettesDir, L"", false},
  {&ZelClr::GetInstalledPalettesDir, L"/Process", false},
  {&ZelClr::GetInstalledPalettesDir, L"/Spot", true},
  {&ZelClr::GetInstalledPalettesDir, L"/Process/PANTONE", true},
  {&ZelClr::GetUserCustomPalettesDir, L"", true},
  {&ZelClr::GetInstalledPalettesDir, L"/Process/CMYK", true},
  {&ZelClr::GetInstalledPalettesDir, L"/Process/RGB", true},
}};
constexpr int kDeepestFolder = 16; // ends rings of links

/// Whether another file of the folder is loaded in place of this one.
bool IsStoodFor(const std::string &path)
{
  const std::string extension = ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path));
  return (extension == ".cpl" || extension == ".zip") && ZelUtl::StampOfFile(ZelClr::Internal::XmlPathOf(path));
}

} // namespace

Guid WClrPaletteMgr::GenericPaletteClass()
{
  return ZelClr::PaletteIdentifierFromType(ZelClr::PaletteType::None);
}

Guid WClrPaletteMgr::DocumentPaletteClass()
{
  return "{B0C857F6-C078-4705-B3CB-20F0D12A6630}"_guid;
}

Guid WClrPaletteMgr::StylesPaletteClass()
{
  return "{804D4DD8-2A6D-4E28-A303-D60BB09D7093}"_guid;
}

bool WClrPaletteMgr::DiscoverPalettes(bool reset)
{
  if (reset) {
    nextStep_ = 0;
    missing_.clear();
    return true;
  }
  if (nextStep_ == kSteps.size())
    return false;
  const DiscoveryStep &step = kSteps[nextStep_++];
  if (const std::wstring folder = step.folder(); !folder.empty())
    LoadPalettes(folder + step.below, step.recursive);
  return true;
}

void WClrPaletteMgr::DiscoverAllPalettes()
{
  while (DiscoverPalettes(false)) {
  }
}

void WClrPaletteMgr::LoadPalettes(const std::wstring &folder, bool recursive)
{
  LoadPalettesWithin(Utf8FromWide(folder), recursive ? kDeepestFolder : 0);
}

void WClrPaletteMgr::LoadPalettesWithin(const std::string &folder, int depth)
{
  std::vector<std::string> subfolders;
  for (const std::string &name : ZelUtl::FilesOfFolder(folder, &subfolders)) {
    const std::string path = ZelUtl::JoinPath(folder, name);
    if (!IsStoodFor(path))
      LoadPalette(WideFromUtf8(path));
  }
  if (depth == 0)
    return;
  for (const std::string &name : subfolders)
    LoadPalettesWithin(ZelUtl::JoinPath(folder, name), depth - 1);
}

WClrPalette *WClrPaletteMgr::LoadPalette(const std::wstring &path, const Guid &paletteClass, bool validate)
{
  if (paletteClass == DocumentPaletteClass()) {
    const std::wstring name = Framework::Resources::GetString("33d3f765-8839-43bd-81e6-757137de71da");
    return MakeTemporaryPalette(name.empty() ? L"Document Palette" : name, kDocumentPaletteFileName);
  }
  if (paletteClass == StylesPaletteClass()) {
    const std::wstring name = Framework::Resources::GetString("4a04e5fe-32aa-49c8-80c8-ef4ad263ce32");
    return MakeTemporaryPalette(name.empty() ? L"Color Styles" : name, L"ColorStyles.xml");
  }
  if (paletteClass != GenericPaletteClass() || path.empty())
    return nullptr;
  const std::wstring inForce = WideFromUtf8(ZelClr::Internal::PathInForce(Utf8FromWide(path)));
  if (WClrPalette *const known = GetPaletteID(inForce))
    return known;
  auto palette = InstantiatePalette(inForce, validate);
  if (!palette)
    return nullptr;
  const Guid guid = palette->GetPaletteGuid();
  if (WClrPalette *const known = FindPalette(guid))
    return known;
  if (const ZelClr::FixedPalette *const row = ZelClr::FindFixedPalette(guid)) {
    const std::string fixedPath = ZelClr::Internal::PathOfFixedPalette(*row);
    const std::string own = Utf8FromWide(palette->GetFileName());
    if (!fixedPath.empty() && !ZelClr::Internal::IsSamePath(ZelClr::Internal::XmlPathOf(fixedPath), own)) {
      if (WClrPalette *const fixed = LoadFixedPalette(*row))
        return fixed;
    }
  }
  missing_.erase(guid);
  return Hold(std::move(palette));
}

std::unique_ptr<WClrPalette> WClrPaletteMgr::InstantiatePalette(const std::wstring &path, bool validate)
{
  constexpr std::array<std::string_view, 3> kOwnExtensions = {".xml", ".zip", ".cpl"};
  const std::string extension = ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(Utf8FromWide(path)));
  if (std::find(kOwnExtensions.begin(), kOwnExtensions.end(), extension) != kOwnExtensions.end()) {
    auto palette = std::make_unique<WClrPalette>();
    if (palette->LoadPalette(path, validate) != 0)
      return palette;
    palette->SetFileName({}); // whatever it holds now, the file stays as it is
  }
  return ZelClr::LoadForeignPalette(path);
}

/// Null when what is in the file is another palette.
WClrPalette *WClrPaletteMgr::LoadFixedPalette(const ZelClr::FixedPalette &row)
{
  if (missing_.contains(row.identifier))
    return nullptr;
  const std::wstring path = WideFromUtf8(ZelClr::Internal::PathOfFixedPalette(row));
  auto palette = path.empty() ? nullptr : InstantiatePalette(path);
  if (palette && palette->GetPaletteGuid() == row.identifier)
    return Hold(std::move(palette));
  missing_.insert(row.identifier);
  return nullptr;
}

WClrPalette *WClrPaletteMgr::GetPaletteIDFromGuidWithoutDiscovery(const Guid &guid)
{
  if (WClrPalette *const known = FindPalette(guid))
    return known;
  const ZelClr::FixedPalette *const row = ZelClr::FindFixedPalette(guid);
  return row == nullptr ? nullptr : LoadFixedPalette(*row);
}

WClrPalette *WClrPaletteMgr::GetPaletteIDFromGuid(const Guid &guid)
{
  if (guid.IsNull())
    return nullptr;
  if (WClrPalette *const known = GetPaletteIDFromGuidWithoutDiscovery(guid))
    return known;
  DiscoverAllPalettes();
  return FindPalette(guid);
}
