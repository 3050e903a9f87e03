// Edits of a palette. Each is checked whole before anything changes, and told to panels once.
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/internal/color_space_names.h"
#include "zelclr/palettes/internal/new_color_spaces.h"
#include "zelclr/palettes/internal/palette_lookups.h"
#include "zelclr/palettes/internal/palette_properties.h"
#include "zelclr/palettes/palette_color_values.h"

#include <algorithm>
#include <iterator>

namespace Model = ZelClr::ClrModel;
namespace Properties = ZelClr::PaletteProperties;

void WClrPalette::Edited(std::wstring_view properties)
{
  lookups_.reset();
  SetChanged(true);
  Broadcast(properties);
}

void WClrPalette::AddSpaces(NewSpaces &added)
{
  lastColorID_ = added.lastColorID;
  for (WXmlColorSpace &space : added.spaces)
    xml_.AddColorSpace(std::move(space));
}

/// Whether so many more may come.
bool WClrPalette::HasRoomFor(std::size_t count) const
{
  const int limit = GetPaletteSizeLimit();
  const std::size_t most =
    limit == -1 ? ZelClr::kMostSwatches : std::min(ZelClr::kMostSwatches, static_cast<std::size_t>(limit));
  return xml_.GetColorCount() <= most && count <= most - xml_.GetColorCount();
}

bool WClrPalette::Insert(int index, std::span<const PaletteEntry> entries)
{
  if (IsLocked() || index < 0 || index > GetPaletteSize() || !HasRoomFor(entries.size()))
    return false;
  NewSpaces added = NoNewSpaces();
  std::vector<WXmlColor> colors(entries.size());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!MakeColor(entries[i], colors[i], added))
      return false;
  }
  if (entries.empty())
    return true;
  AddSpaces(added);
  xml_.InsertColors(static_cast<std::size_t>(index), std::move(colors));
  Edited(Properties::kColors);
  return true;
}

int WClrPalette::InsertColor(int index, const PaletteEntry &entry)
{
  return Insert(index, {&entry, 1}) ? index : -1;
}

bool WClrPalette::InsertColors(int index, const std::vector<PaletteEntry> &entries)
{
  return Insert(index, entries);
}

int WClrPalette::AddColor(const PaletteEntry &entry)
{
  return InsertColor(GetPaletteSize(), entry);
}

bool WClrPalette::ChangeColor(int index, const PaletteEntry &entry)
{
  NewSpaces added = NoNewSpaces();
  WXmlColor color;
  if (IsLocked() || !IsIndex(index) || !MakeColor(entry, color, added))
    return false;
  const WXmlColor &old = xml_.GetColor(static_cast<std::size_t>(index));
  if (color.name == old.name || entry.name == GetColorName(index)) { // as told: with the prefix, in the user's language
    color.name = old.name;
    color.resid = old.resid;
  }
  color.frequencyOrder = old.frequencyOrder;
  AddSpaces(added);
  xml_.ReplaceColor(static_cast<std::size_t>(index), std::move(color));
  Edited(Properties::kColorValues);
  return true;
}

bool WClrPalette::ChangeColorName(int index, const std::wstring &name)
{
  if (IsLocked() || !IsIndex(index))
    return false;
  WXmlColor color = xml_.GetColor(static_cast<std::size_t>(index));
  color.name = ZelClr::NameFromWide(name);
  color.resid.clear(); // or the text in the user's language would go on hiding the new name
  xml_.ReplaceColor(static_cast<std::size_t>(index), std::move(color));
  Edited(Properties::kArrangement);
  return true;
}

bool WClrPalette::RemoveColor(int index)
{
  if (IsLocked() || !IsIndex(index))
    return false;
  // Its ink stays: documents may have colours of it, and when it comes back by its name it has the old ID.
  xml_.RemoveColor(static_cast<std::size_t>(index));
  Edited(Properties::kColors);
  return true;
}

void WClrPalette::RemoveAllColors()
{
  if (IsLocked() || GetPaletteSize() == 0)
    return;
  xml_.RemoveAllColors();
  Edited(Properties::kColors);
}

bool WClrPalette::MoveColor(int from, int to)
{
  if (IsLocked() || !IsIndex(from) || !IsIndex(to))
    return false;
  if (from == to)
    return true;
  xml_.MoveColor(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
  Edited(Properties::kArrangement);
  return true;
}

void WClrPalette::ClearPalette()
{
  if (IsLocked())
    return;
  WXmlColorPalette::Header header = xml_.GetHeader();
  header.resid.clear(); // its texts go
  xml_.Clear();
  xml_.SetHeader(std::move(header));
  Edited(Properties::kEverything);
}

// --- Inks -----------------------------------------------------------------------------------------------------------

ZelClr::PaletteResult WClrPalette::AddColorSpace(const std::wstring &name,
                                                 const std::vector<CLR_COLORSPEC> &definitions, bool process,
                                                 int &colorID)
{
  if (IsLocked())
    return PaletteResult::Locked;
  std::size_t unknown = 0;
  WXmlColorSpace space = ZelClr::SpaceOfLooks(ZelClr::NameFromWide(name), definitions, process, &unknown);
  NewSpaces added = NoNewSpaces();
  const PaletteResult result = unknown > 0 ? PaletteResult::BadArgument : AddToNew(std::move(space), added);
  if (result != PaletteResult::Ok)
    return result;
  colorID = added.lastColorID;
  AddSpaces(added);
  Edited(Properties::kColorSpaces);
  return PaletteResult::Ok;
}

ZelClr::PaletteResult WClrPalette::AddSpotColor(const ZelClr::SpotColorDefinitionLookupData &lookup,
                                                CLR_COLORSPEC &color)
{
  std::vector<CLR_COLORSPEC> looks;
  for (const auto &[model, look] : lookup.alternatives)
    looks.push_back(look);
  const std::wstring &name = lookup.colorSpaceName.empty() ? lookup.colorName : lookup.colorSpaceName;
  WXmlColorSpace ink = ZelClr::SpaceOfLooks(ZelClr::NameFromWide(name), looks, false);
  if (ZelClr::WithoutApostrophes(ink.name).empty() || ink.definitions.empty())
    return PaletteResult::BadArgument;

  WXmlColor added;
  added.name = ZelClr::NameFromWide(lookup.colorName.empty() ? name : lookup.colorName);
  added.colorSpace = FindSpaceOfLooks(ink);
  if (const int space = xml_.FindColorSpace(added.colorSpace); !added.colorSpace.empty()) {
    const int id = xml_.GetColorSpace(static_cast<std::size_t>(space)).fixedID;
    for (const int index : xml_.FindColorID(GetPaletteGuid(), id)) {
      if (xml_.GetTint(static_cast<std::size_t>(index)) == 1.0) {
        color = xml_.GetColorSpec(static_cast<std::size_t>(index));
        return PaletteResult::AlreadyThere;
      }
    }
  }
  if (IsLocked())
    return PaletteResult::Locked;
  if (!HasRoomFor(1))
    return PaletteResult::Full;
  NewSpaces spaces = NoNewSpaces();
  if (added.colorSpace.empty()) {
    if (const PaletteResult result = AddToNew(std::move(ink), spaces); result != PaletteResult::Ok)
      return result;
    added.colorSpace = spaces.spaces.front().name;
  }
  AddSpaces(spaces);
  xml_.InsertColor(xml_.GetColorCount(), std::move(added));
  color = xml_.GetColorSpec(xml_.GetColorCount() - 1);
  Edited(Properties::kColors);
  return PaletteResult::Ok;
}

bool WClrPalette::ConvertToProcess(int index)
{
  if (IsLocked() || !IsIndex(index))
    return false;
  const auto place = static_cast<std::size_t>(index);
  const WXmlColorSpace *const ink = SpaceOf(place);
  const CLR_COLORSPEC look = ZelClr::StorableColor(ProcessColor(place));
  if (ink == nullptr || ink->process || look.IsInvalid())
    return false;
  WXmlColor color = xml_.GetColor(place);
  color.colorSpace = ZelClr::SpaceNameFromModel(look.GetType());
  color.tints = ZelClr::PaletteValuesFromColor(look);
  color.styleColor = CLR_COLORSPEC();
  xml_.ReplaceColor(place, std::move(color));
  xml_.RemoveUnusedColorSpaces();
  Edited(Properties::kColorValues);
  return true;
}

bool WClrPalette::ConvertToSpot(int index)
{
  if (IsLocked() || !IsIndex(index))
    return false;
  const auto place = static_cast<std::size_t>(index);
  WXmlColor color = xml_.GetColor(place);
  const WXmlColorSpace *const old = SpaceOf(place);
  if (old != nullptr && !old->process)
    return false;
  if (color.name.empty())
    color.name = ZelClr::NameFromWide(GetGeneratedName(GetColorSpec(index)));
  WXmlColorSpace ink;
  if (old != nullptr) {
    ink = *old;
    ink.process = false;
    ink.version = 0;
  } else {
    const CLR_COLORSPEC look = ProcessColor(place);
    ink = ZelClr::SpaceOfLooks({}, {&look, 1}, false);
    color.tints = "1";
  }
  ink.name = color.name;
  if (ink.definitions.empty())
    return false;
  NewSpaces added = NoNewSpaces();
  color.colorSpace = FindSpaceOfLooks(ink);
  if (color.colorSpace.empty()) {
    if (AddToNew(std::move(ink), added) != PaletteResult::Ok)
      return false;
    color.colorSpace = added.spaces.front().name;
  }
  color.styleColor = CLR_COLORSPEC();
  AddSpaces(added);
  xml_.ReplaceColor(place, std::move(color));
  xml_.RemoveUnusedColorSpaces();
  Edited(Properties::kColorValues);
  return true;
}

// --- Pages and styles -----------------------------------------------------------------------------------------------

void WClrPalette::FlattenPages()
{
  if (IsLocked() || xml_.GetPageCount() == 1)
    return;
  xml_.FlattenPages();
  Edited(Properties::kArrangement);
}

std::size_t WClrPalette::ResolveColorStyleReferences()
{
  const std::size_t resolved = xml_.ResolveColorStyleReferences();
  if (resolved > 0) { // the file has them already
    lookups_.reset();
    Broadcast(Properties::kColors);
  }
  return resolved;
}
