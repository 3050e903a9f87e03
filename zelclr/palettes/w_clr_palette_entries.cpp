// What a colour becomes when it enters a palette: values of a model, or a tint of an ink that the palette has or gets.
#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/internal/color_space_names.h"
#include "zelclr/palettes/internal/loaded_palettes.h"
#include "zelclr/palettes/internal/new_color_spaces.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace Model = ZelClr::ClrModel;

namespace ZelClr {

WXmlColorSpace SpaceOfLooks(std::string name, std::span<const CLR_COLORSPEC> looks, bool process, std::size_t *leftOut)
{
  WXmlColorSpace space;
  space.name = std::move(name);
  space.process = process;
  for (const CLR_COLORSPEC &look : looks) {
    const CLR_COLORSPEC color = StorableColor(look);
    const std::string model(SpaceNameFromModel(color.GetType()));
    if (color.IsInvalid() && leftOut != nullptr)
      ++*leftOut;
    const bool isThere = std::any_of(space.definitions.begin(), space.definitions.end(),
                                     [&](const auto &definition) { return definition.model == model; });
    if (!color.IsInvalid() && !isThere)
      space.definitions.push_back({model, PaletteValuesFromColor(color), color});
  }
  return space;
}

std::string TintsOfDensity(unsigned density)
{
  return ZelUtl::TextFromNumber(std::min(density, 100u) / 100.0);
}

} // namespace ZelClr

namespace {

std::vector<CLR_COLORSPEC> LooksOf(const SpotColorDefinition &definition)
{
  std::vector<CLR_COLORSPEC> looks;
  for (const auto &[model, look] : definition.GetAlternativeColors())
    looks.push_back(look);
  return looks;
}

} // namespace

/// The palette of an identifier, this one or another; null when there is none. A null identifier is this palette's
/// only.
const WClrPalette *WClrPalette::PaletteOf(const Guid &guid) const
{
  if (guid == GetPaletteGuid())
    return this;
  return guid.IsNull() ? nullptr : ZelClr::FindLoadedPalette(guid);
}

/// The colour itself or, for one that is only a number in a palette, what stands there; invalid when that is not known.
CLR_COLORSPEC WClrPalette::LookedUp(const CLR_COLORSPEC &color) const
{
  CLR_COLORSPEC plain;
  plain.Copy(color);
  const unsigned model = plain.GetType();
  CLR_COLORSPEC found;
  if (model == Model::IndexedUserInk && plain.GetPaletteGuid().IsNull()) {
    CLR_COLORSPEC::MakeProcessFromUserInks(plain, found);
    return found;
  }
  const bool isNumber = model == Model::Index || model == Model::Pantone || model == Model::PantoneHex ||
                        model == Model::IndexedUserInk ||
                        (model == Model::Spot && plain.GetSpotDefinition() == nullptr);
  if (!isNumber)
    return plain;
  const WClrPalette *const palette = PaletteOf(plain.GetPaletteGuid());
  if (palette == nullptr)
    return found;
  if (model == Model::Index)
    found.Copy(palette->GetColorSpec(plain.GetComponent<std::uint16_t>(0)));
  else
    palette->GetPaletteColorFromID(plain.GetPaletteGuid(), plain.GetComponent<std::int16_t>(0), plain.GetDensity(),
                                   found);
  return found;
}

CLR_COLORSPEC WClrPalette::ConvertColorToInternal(const CLR_COLORSPEC &color) const
{
  const CLR_COLORSPEC found = LookedUp(color);
  if (found.GetType() != Model::Spot)
    return ZelClr::StorableColor(found);
  const SpotColorDefinition *const definition = found.GetSpotDefinition();
  const bool isKnown =
    definition != nullptr && !ZelClr::SpaceOfLooks({}, LooksOf(*definition), false).definitions.empty();
  return isKnown ? found : CLR_COLORSPEC();
}

bool WClrPalette::MakeColor(const PaletteEntry &entry, WXmlColor &made, NewSpaces &added) const
{
  if (entry.color.GetType() == Model::DeviceN)
    return false;
  made.name = ZelClr::NameFromWide(entry.name);
  const WClrPalette *palette = this;
  if (entry.color.IsReference()) {
    if (!ZelClr::NameOfColorStyle(entry.color).empty())
      made.styleColor = entry.color;
    else
      palette = PaletteOf(entry.color.GetPaletteGuid());
    if (palette == nullptr)
      return false;
  }
  CLR_COLORSPEC plain;
  plain.Copy(entry.color);
  if (plain.GetPaletteGuid() != GetPaletteGuid())
    made.originalPalette = plain.GetPaletteGuid();
  const CLR_COLORSPEC color = palette->ConvertColorToInternal(plain);
  if (color.IsInvalid())
    return false;
  // A process colour of a palette of inks is the look of an ink, once it has a name.
  if (color.GetType() == Model::Spot || (plain.IsSpot() && !made.name.empty()))
    return MakeColorOfInk(color, made, added);
  made.colorSpace = ZelClr::SpaceNameFromModel(color.GetType());
  made.tints = ZelClr::PaletteValuesFromColor(color);
  return true;
}

/// A tint of the palette's own ink, of the one that has its name, or of a new one.
bool WClrPalette::MakeColorOfInk(const CLR_COLORSPEC &color, WXmlColor &made, NewSpaces &added) const
{
  std::string ink = made.name;
  std::vector<CLR_COLORSPEC> looks{color};
  if (color.GetType() == Model::Spot) {
    const SpotColorDefinition &definition = *color.GetSpotDefinition();
    looks = LooksOf(definition);
    made.tints = ZelClr::TintsOfDensity(color.GetDensity());
    const std::wstring &name =
      definition.GetColorSpaceName().empty() ? definition.GetColorName() : definition.GetColorSpaceName();
    if (!name.empty())
      ink = ZelClr::NameFromWide(name);
    const int own = xml_.FindColorSpaceOfID(color.GetComponent<std::int16_t>(0));
    if (!color.GetPaletteGuid().IsNull() && color.GetPaletteGuid() == GetPaletteGuid() && own >= 0) {
      made.colorSpace = xml_.GetColorSpace(static_cast<std::size_t>(own)).name;
      return true;
    }
  }
  if (made.name.empty())
    made.name = ink;
  made.colorSpace = FindInkOfName(ink);
  if (!made.colorSpace.empty())
    return true;
  if (const auto earlier = added.inkOf.find(ink); earlier != added.inkOf.end()) {
    made.colorSpace = earlier->second;
    return true;
  }
  if (AddToNew(ZelClr::SpaceOfLooks(ink, looks, false), added) != PaletteResult::Ok)
    return false;
  made.colorSpace = added.spaces.back().name;
  added.inkOf.emplace(ink, made.colorSpace);
  return true;
}

/// The spot colour space of the colour of this name, else the one of this name; empty when there is none.
std::string WClrPalette::FindInkOfName(const std::string &name) const
{
  if (const int index = xml_.FindName(name); index >= 0) {
    const WXmlColorSpace *const space = SpaceOf(static_cast<std::size_t>(index));
    if (space != nullptr && !space->process)
      return space->name;
  }
  const int index = xml_.FindColorSpace(ZelClr::WithoutApostrophes(name));
  const bool isInk = index >= 0 && !xml_.GetColorSpace(static_cast<std::size_t>(index)).process;
  return isInk ? xml_.GetColorSpace(static_cast<std::size_t>(index)).name : std::string();
}

/// Of the colour spaces that have this one's name, or had to be counted up from it, the one of the same looks; empty
/// when there is none.
std::string WClrPalette::FindSpaceOfLooks(const WXmlColorSpace &space) const
{
  std::string found;
  ZelClr::UniqueSpaceName(space.name, [&](const std::string &name) {
    const int index = xml_.FindColorSpace(name);
    if (index < 0)
      return false;
    const WXmlColorSpace &other = xml_.GetColorSpace(static_cast<std::size_t>(index));
    const auto isLook = [&other](const WXmlDefinitionColor &wanted) {
      return std::any_of(other.definitions.begin(), other.definitions.end(), [&](const WXmlDefinitionColor &look) {
        return look.model == wanted.model && look.color == wanted.color;
      });
    };
    if (other.process != space.process || !std::all_of(space.definitions.begin(), space.definitions.end(), isLook))
      return true;
    found = name;
    return false;
  });
  return found;
}

WClrPalette::NewSpaces WClrPalette::NoNewSpaces() const
{
  NewSpaces added;
  added.lastColorID = lastColorID_;
  return added;
}

/// Gives the space a name and an ID of its own.
ZelClr::PaletteResult WClrPalette::AddToNew(WXmlColorSpace space, NewSpaces &added) const
{
  if (ZelClr::WithoutApostrophes(space.name).empty() || space.definitions.empty())
    return PaletteResult::BadArgument;
  if (xml_.GetColorSpaceCount() + added.spaces.size() >= ZelClr::kMostColorID)
    return PaletteResult::Full;
  space.name = ZelClr::UniqueSpaceName(
    space.name, [&](const std::string &name) { return xml_.FindColorSpace(name) >= 0 || added.names.contains(name); });
  do
    added.lastColorID = added.lastColorID % ZelClr::kMostColorID + 1;
  while (xml_.FindColorSpaceOfID(added.lastColorID) >= 0);
  space.fixedID = added.lastColorID;
  added.names.insert(space.name);
  added.spaces.push_back(std::move(space));
  return PaletteResult::Ok;
}

/// Of those that records hold; 0 when there is none.
int WClrPalette::HighestColorID() const
{
  int highest = 0;
  for (std::size_t i = 0; i < xml_.GetColorSpaceCount(); ++i) {
    const int id = xml_.GetColorSpace(i).fixedID;
    if (id > highest && id <= ZelClr::kMostColorID)
      highest = id;
  }
  return highest;
}
