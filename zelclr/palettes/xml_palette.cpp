#include "zelclr/palettes/internal/xml_palette.h"

#include "zelclr/palettes/internal/palette_numbers.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/palettes/spot_color_definition_manager.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace ZelClr::Internal {

namespace {

using Resource = WXmlColorPalette::Resource;

/// The only text; else the one in this language, else in the language alone ("de" for "de-AT"). Tags count whatever
/// their case.
const std::string *TextInLanguage(const Resource &resource, std::string_view language)
{
  if (resource.texts.size() == 1)
    return &resource.texts.front().second;
  const std::string whole = ZelUtl::LowerAscii(language);
  for (const std::string &wanted : {whole, whole.substr(0, whole.find('-'))}) {
    for (const auto &[tag, text] : resource.texts) {
      if (ZelUtl::LowerAscii(tag) == wanted)
        return &text;
    }
  }
  return nullptr;
}

/// All tints of an ink share one definition, which is called like the ink: on press they are one plate.
const SpotColorDefinition *DefinitionOf(PaletteSpace &space)
{
  if (!space.definition) {
    SpotColorDefinitionLookupData values;
    values.colorName = values.colorSpaceName = ZelUtl::WideFromUtf8(space.space.name);
    for (const WXmlDefinitionColor &look : space.space.definitions) {
      if (!look.color.IsInvalid())
        values.alternatives.try_emplace(look.color.GetType(), look.color);
    }
    space.definition = SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(values).get();
  }
  return space.definition;
}

} // namespace

XmlPalette::XmlPalette(const XmlPalette &other)
  : header(other.header),
    resources(other.resources),
    pages(other.pages),
    gridWidth(other.gridWidth),
    waiting(other.waiting),
    texts(other.texts)
{
  for (const auto &space : other.spaces)
    spaces.Append(std::make_unique<PaletteSpace>()).space = space->space;
  for (const auto &color : other.colors)
    colors.Append(std::make_unique<PaletteColor>()).color = color->color;
}

void XmlPalette::ChooseTexts(std::string_view language)
{
  texts.clear();
  for (const Resource &resource : resources) {
    if (const std::string *const text = TextInLanguage(resource, language))
      texts[resource.id] = *text;
  }
}

const std::string &XmlPalette::DisplayText(const std::string &resid, const std::string &plain) const
{
  if (resid.empty())
    return plain;
  const auto text = texts.find(resid);
  return text == texts.end() ? plain : text->second;
}

PaletteSpace *XmlPalette::FindSpace(const WXmlColor &color)
{
  if (ModelFromSpaceName(color.colorSpace) != ClrModel::Invalid)
    return nullptr;
  const auto found = spacesByName.Find(std::string_view(color.colorSpace));
  return found.empty() ? nullptr : found.front();
}

void XmlPalette::WorkOut(PaletteColor &entry)
{
  if (entry.isWorkedOut)
    return;
  entry.isWorkedOut = true;
  entry.colorID = -1;
  const WXmlColor &color = entry.color;
  PaletteSpace *const space = FindSpace(color);
  if (space)
    entry.colorID = space->space.fixedID;

  if (!color.styleColor.IsInvalid()) {
    entry.record = color.styleColor;
  } else if (!space) {
    entry.record = ColorFromPaletteValues(ModelFromSpaceName(color.colorSpace), color.tints);
  } else {
    const auto density = static_cast<std::uint16_t>(UnitOfFraction(TintOfText(color.tints), 100));
    if (space->space.process) {
      const auto &looks = space->space.definitions;
      const auto look = std::find_if(looks.begin(), looks.end(), [](const auto &l) { return !l.color.IsInvalid(); });
      entry.record = look == looks.end() ? CLR_COLORSPEC() : look->color;
      entry.record.SetDensity(density);
    } else {
      CLR_COLORSPEC::MakeSPOT(entry.record, header.guid, static_cast<std::int16_t>(space->space.fixedID), density,
                              DefinitionOf(*space));
    }
  }
}

std::span<PaletteColor *const> XmlPalette::FindRecord(const CLR_COLORSPEC &record)
{
  for (std::size_t i = byRecord.IsMade() ? colors.Size() : 0; i < colors.Size(); ++i)
    WorkOut(colors[i]);
  return byRecord.Find(record);
}

std::span<PaletteColor *const> XmlPalette::FindID(int colorID)
{
  for (std::size_t i = byID.IsMade() ? colors.Size() : 0; i < colors.Size(); ++i)
    WorkOut(colors[i]);
  return byID.Find(colorID);
}

void XmlPalette::TakeOutOfIndices(PaletteColor &color)
{
  byName.Remove(color);
  bySpace.Remove(color);
  byRecord.Remove(color);
  byID.Remove(color);
}

void XmlPalette::PutIntoIndices(PaletteColor &color)
{
  if (byRecord.IsMade() || byID.IsMade())
    WorkOut(color);
  byName.Add(color);
  bySpace.Add(color);
  byRecord.Add(color);
  byID.Add(color);
}

void XmlPalette::ForgetIndices()
{
  byName.Forget();
  bySpace.Forget();
  byRecord.Forget();
  byID.Forget();
}

void XmlPalette::ForgetRecords()
{
  byRecord.Forget();
  byID.Forget();
  for (const auto &color : colors)
    color->isWorkedOut = false;
}

void XmlPalette::ForgetRecordsOfSpace(std::string_view name)
{
  const auto users = bySpace.Find(name);
  if (users.size() > OrderedPositions<PaletteColor, IDOfColor>::kFewItems) {
    byRecord.Forget();
    byID.Forget();
  }
  for (PaletteColor *const color : users) {
    byRecord.Remove(*color);
    byID.Remove(*color);
    color->isWorkedOut = false;
  }
  for (PaletteColor *const color : users) {
    if (byRecord.IsMade() || byID.IsMade())
      WorkOut(*color);
    byRecord.Add(*color);
    byID.Add(*color);
  }
}

void XmlPalette::Insert(std::size_t index, std::size_t page, std::vector<WXmlColor> added)
{
  PlacedList<PaletteColor>::Items items;
  items.reserve(added.size());
  for (WXmlColor &color : added)
    items.emplace_back(std::make_unique<PaletteColor>())->color = std::move(color);
  const std::size_t count = items.size();
  colors.Insert(index, std::move(items));
  pages.Insert(count, page);
  const std::span inserted(colors.begin() + static_cast<std::ptrdiff_t>(index), count);
  if (byRecord.IsMade() || byID.IsMade()) {
    for (const auto &color : inserted)
      WorkOut(*color);
  }
  byName.Add(inserted);
  bySpace.Add(inserted);
  byRecord.Add(inserted);
  byID.Add(inserted);
  for (auto &colour : waiting) {
    if (colour.index > index)
      colour.index += count;
  }
}

void XmlPalette::Remove(std::size_t index)
{
  TakeOutOfIndices(colors[index]);
  const int emptied = static_cast<int>(pages.Remove(index, colors.Size()));
  colors.Remove(index);
  for (auto &colour : waiting) {
    if (colour.index > index)
      --colour.index;
    if (colour.page > emptied)
      --colour.page;
  }
}

std::size_t XmlPalette::PageOfWaiting(const WXmlColorPalette::UnresolvedStyle &colour) const
{
  const std::size_t before = colour.index == 0 ? 0 : pages.PageOf(colour.index - 1);
  const std::size_t behind = pages.PageOf(colour.index);
  return std::clamp(static_cast<std::size_t>(std::max(colour.page, 0)), before, behind);
}

double TintOfText(std::string_view tints)
{
  return std::clamp(NextFraction(tints), 0.0, 1.0);
}

void ReadDefinitionColor(WXmlDefinitionColor &definition)
{
  const CLR_COLORSPEC stated = ColorFromPaletteValues(ModelFromSpaceName(definition.model), definition.tints);
  if (!stated.IsInvalid())
    definition.color = stated;
}

} // namespace ZelClr::Internal
