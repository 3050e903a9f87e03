// Spot colours beyond one palette.

#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"

#include <algorithm>

using ZelClr::SpotColorDefinitionLookupData;
using ZelUtils::Guid;

namespace ClrModel = ZelClr::ClrModel;

namespace {

bool HasSpotInk(const WClrPalette &palette)
{
  const WXmlColorPalette &xml = palette.GetXmlPalette();
  for (std::size_t i = 0; i < xml.GetColorSpaceCount(); ++i) {
    if (!xml.GetColorSpace(i).process)
      return true;
  }
  return false;
}

int NumberOfSpot(const CLR_COLORSPEC &color)
{
  return color.GetComponent<std::int16_t>(0);
}

} // namespace

WClrPaletteMgr::Palettes WClrPaletteMgr::EnumerateSpotColorPalettes() const
{
  Palettes palettes = GetPaletteList();
  std::erase_if(palettes, [](const WClrPalette *palette) { return !HasSpotInk(*palette); });
  return palettes;
}

bool WClrPaletteMgr::FindSpotColor(const WClrPalette &palette, const SpotColorDefinitionLookupData &lookup,
                                   CLR_COLORSPEC &color) const
{
  WClrPalette::ColorSpaceInfo ink;
  const int colorID =
    palette.GetColorSpaceColorID(lookup.colorSpaceName.empty() ? lookup.colorName : lookup.colorSpaceName);
  if (lookup.alternatives.empty() || colorID < 0 || !palette.GetColorSpaceInfo(colorID, ink) || ink.process)
    return false;
  const bool looksSo =
    std::all_of(lookup.alternatives.begin(), lookup.alternatives.end(), [&](const auto &alternative) {
      const CLR_COLORSPEC look = ZelClr::StorableColor(alternative.second);
      return std::find(ink.definitions.begin(), ink.definitions.end(), look) != ink.definitions.end();
    });
  return looksSo && palette.GetPaletteColorFromID(palette.GetPaletteGuid(), colorID, 100, color);
}

WClrPaletteMgr::PaletteResult WClrPaletteMgr::FindOrAddSpotColor(WClrPalette *palette,
                                                                 const SpotColorDefinitionLookupData &lookup,
                                                                 CLR_COLORSPEC &color)
{
  if (HasPalette(palette) && FindSpotColor(*palette, lookup, color))
    return PaletteResult::AlreadyThere;
  for (const WClrPalette *known : EnumerateSpotColorPalettes()) {
    if (FindSpotColor(*known, lookup, color))
      return PaletteResult::AlreadyThere;
  }
  return AddSpotColor(palette, lookup, color);
}

bool WClrPaletteMgr::RemapUnknownSpotToDocumentPalette(Document &document, CLR_COLORSPEC &color)
{
  if (color.IsReference()) {
    CLR_COLORSPEC value;
    value.Copy(color);
    if (!RemapUnknownSpotToDocumentPalette(document, value))
      return false;
    color.SetReferenceColorValue(value);
    return true;
  }
  if (color.GetType() != ClrModel::Spot)
    return false;
  const Guid guid = color.GetPaletteGuid();
  const std::uint16_t density = color.GetDensity();
  CLR_COLORSPEC found;
  if (const Guid mapped = GetMappedPaletteGuid(document, guid); mapped != guid) {
    const WClrPalette *const palette = GetPaletteIDFromGuid(mapped);
    if (palette != nullptr && palette->GetPaletteColorFromID(mapped, NumberOfSpot(color), density, found)) {
      color = found;
      return true;
    }
  }
  const WClrPalette *const own = GetPaletteIDFromGuid(guid);
  const SpotColorDefinition *const definition = color.GetSpotDefinition();
  if ((own != nullptr && own->IsValidColorID(guid, NumberOfSpot(color))) || definition == nullptr ||
      definition->GetAlternativeColors().empty())
    return false;
  const SpotColorDefinitionLookupData lookup = {definition->GetColorName(), definition->GetColorSpaceName(),
                                                definition->GetAlternativeColors()};
  const PaletteResult result = AddSpotColor(CreateDocumentPalette(document), lookup, found);
  if (result != PaletteResult::Ok && result != PaletteResult::AlreadyThere)
    return false;
  found.SetDensity(density);
  color = found;
  return true;
}

Guid WClrPaletteMgr::GetOriginalPaletteGuid(const CLR_COLORSPEC &color) const
{
  const Guid guid = color.GetPaletteGuid();
  const WClrPalette *const palette = FindPalette(guid);
  const int index = palette == nullptr                  ? -1
                    : color.GetType() == ClrModel::Spot ? palette->ColorIDToIndex(guid, NumberOfSpot(color))
                                                        : palette->GetColorIndex(color);
  if (index < 0)
    return guid;
  const Guid original = palette->GetXmlPalette().GetColor(static_cast<std::size_t>(index)).originalPalette;
  return original.IsNull() ? guid : original;
}

WClrPalette *WClrPaletteMgr::GetOriginalPalette(const CLR_COLORSPEC &color)
{
  return GetPaletteIDFromGuid(GetOriginalPaletteGuid(color));
}
