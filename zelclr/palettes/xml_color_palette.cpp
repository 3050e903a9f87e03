#include "zelclr/palettes/xml_color_palette.h"

#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/internal/palette_numbers.h"
#include "zelclr/palettes/internal/xml_palette.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/thread_lock.h"
#include "zelclr/platform/xml_reader.h"

#include <algorithm>
#include <utility>

using namespace ZelClr;
using namespace ZelClr::Internal;

struct WXmlColorPalette::State : XmlPalette
{};

namespace {

constexpr const char *kSchemaFile = "ColorPaletteSchema.xsd";

struct SchemaFallback
{
  ZelUtl::ThreadLock lock;
  std::string path ZELCLR_GUARDED_BY(lock);
};

SchemaFallback &Fallback()
{
  static SchemaFallback fallback;
  return fallback;
}

/// Empty when there is none.
std::string SchemaPath()
{
  const std::string folder = ZelUtl::INIGetColorDir();
  const std::string installed = folder.empty() ? std::string() : ZelUtl::JoinPath(folder, kSchemaFile);
  if (!installed.empty() && ZelUtl::StampOfFile(installed))
    return installed;
  const ZelUtl::ReadLock guard(Fallback().lock);
  return Fallback().path;
}

template <class Items>
int FirstPlace(const Items &list, auto found)
{
  return found.empty() ? -1 : static_cast<int>(list.PlaceOf(*found.front()));
}

} // namespace

// Programs that import the class take this by its address where they are not optimised.
constexpr int WXmlColorPalette::kDefaultGridWidth;

WXmlColorPalette::WXmlColorPalette() : state_(std::make_unique<State>()) {}
WXmlColorPalette::~WXmlColorPalette() = default;
WXmlColorPalette::WXmlColorPalette(const WXmlColorPalette &other) : state_(std::make_unique<State>(*other.state_)) {}
WXmlColorPalette &WXmlColorPalette::operator=(const WXmlColorPalette &other)
{
  return *this = WXmlColorPalette(other);
}
WXmlColorPalette::WXmlColorPalette(WXmlColorPalette &&) noexcept = default;
WXmlColorPalette &WXmlColorPalette::operator=(WXmlColorPalette &&) noexcept = default;

// --- File ------------------------------------------------------------------------------------------------------------

bool WXmlColorPalette::LoadFromFile(const std::string &path, bool validate, std::string &reason)
{
  Clear();
  const auto bytes = ZelUtl::ReadFile(path, ZelUtl::kMostXmlBytes, reason);
  if (!bytes)
    return false;
  if (validate) {
    const std::string schema = SchemaPath();
    if (schema.empty()) {
      reason = std::string("the schema ") + kSchemaFile + " is not installed";
      return false;
    }
    if (!ZelUtl::ValidateXml(*bytes, schema, reason))
      return false;
  }
  return LoadFromBytes(*bytes, reason);
}

bool WXmlColorPalette::LoadFromBytes(std::string_view xml, std::string &reason)
{
  Clear();
  auto fresh = std::make_unique<State>();
  if (!ReadXmlPalette(*fresh, xml, reason))
    return false;
  state_ = std::move(fresh);
  return true;
}

bool WXmlColorPalette::LoadFromString(std::wstring_view xml, std::string &reason)
{
  Clear();
  auto fresh = std::make_unique<State>();
  if (!ReadXmlPalette(*fresh, xml, reason))
    return false;
  state_ = std::move(fresh);
  return true;
}

void WXmlColorPalette::SetColorPaletteSchemaFallbackPath(const std::wstring &path)
{
  const ZelUtl::WriteLock guard(Fallback().lock);
  Fallback().path = ZelUtl::Utf8FromWide(path);
}

std::string WXmlColorPalette::Bytes(bool styleReferences) const
{
  return XmlFromPalette(*state_, styleReferences).Bytes();
}

std::wstring WXmlColorPalette::Text(bool styleReferences) const
{
  return XmlFromPalette(*state_, styleReferences).Text();
}

bool WXmlColorPalette::SaveToFile(const std::string &path, bool styleReferences, std::string &reason) const
{
  return XmlFromPalette(*state_, styleReferences).Save(path, reason);
}

void WXmlColorPalette::Clear()
{
  state_ = std::make_unique<State>();
}

// --- Header and texts ------------------------------------------------------------------------------------------------

const WXmlColorPalette::Header &WXmlColorPalette::GetHeader() const
{
  return state_->header;
}

void WXmlColorPalette::SetHeader(Header header)
{
  if (header.guid != state_->header.guid)
    state_->ForgetRecords(); // spot colours carry it
  state_->header = std::move(header);
}

const std::string &WXmlColorPalette::GetDisplayName() const
{
  return state_->DisplayText(state_->header.resid, state_->header.name);
}

const std::vector<WXmlColorPalette::Resource> &WXmlColorPalette::GetResources() const
{
  return state_->resources;
}

void WXmlColorPalette::SetResources(std::vector<Resource> resources)
{
  state_->resources = std::move(resources);
  state_->ChooseTexts(ZelLocale::GetUILanguage());
}

// --- Colour spaces ---------------------------------------------------------------------------------------------------

std::size_t WXmlColorPalette::GetColorSpaceCount() const
{
  return state_->spaces.Size();
}

const WXmlColorSpace &WXmlColorPalette::GetColorSpace(std::size_t index) const
{
  static const WXmlColorSpace kNone;
  return index < state_->spaces.Size() ? state_->spaces[index].space : kNone;
}

int WXmlColorPalette::FindColorSpace(std::string_view name) const
{
  return FirstPlace(state_->spaces, state_->spacesByName.Find(name));
}

int WXmlColorPalette::FindColorSpaceOfID(int colorID) const
{
  return FirstPlace(state_->spaces, state_->spacesByID.Find(colorID));
}

void WXmlColorPalette::AddColorSpace(WXmlColorSpace space)
{
  for (WXmlDefinitionColor &look : space.definitions)
    ReadDefinitionColor(look);
  auto added = std::make_unique<PaletteSpace>();
  added->space = std::move(space);
  PaletteSpace &entry = state_->spaces.Append(std::move(added));
  state_->spacesByName.Add(entry);
  state_->spacesByID.Add(entry);
  state_->ForgetRecordsOfSpace(entry.space.name); // colours may have waited for it
}

bool WXmlColorPalette::ReplaceColorSpace(std::size_t index, WXmlColorSpace space)
{
  if (index >= state_->spaces.Size())
    return false;
  PaletteSpace &entry = state_->spaces[index];
  const std::string oldName = entry.space.name;
  const bool isRenamed = space.name != oldName;
  if (isRenamed && (FindColorSpace(space.name) >= 0 || ModelFromSpaceName(space.name) != ClrModel::Invalid))
    return false;
  const bool hasColors = FindColorSpace(oldName) == static_cast<int>(index);

  for (WXmlDefinitionColor &look : space.definitions)
    ReadDefinitionColor(look);
  state_->spacesByName.Remove(entry);
  state_->spacesByID.Remove(entry);
  entry.space = std::move(space);
  entry.definition = nullptr;
  state_->spacesByName.Add(entry);
  state_->spacesByID.Add(entry);

  if (isRenamed && hasColors) {
    const auto found = state_->bySpace.Find(std::string_view(oldName));
    const std::vector<PaletteColor *> users(found.begin(), found.end());
    if (users.size() > decltype(state_->bySpace)::kFewItems)
      state_->ForgetIndices();
    for (PaletteColor *const color : users) {
      state_->TakeOutOfIndices(*color);
      color->color.colorSpace = entry.space.name;
      color->isWorkedOut = false;
      state_->PutIntoIndices(*color);
    }
    for (UnresolvedStyle &waiting : state_->waiting) {
      if (waiting.color.colorSpace == oldName)
        waiting.color.colorSpace = entry.space.name;
    }
  }
  state_->ForgetRecordsOfSpace(oldName); // of another colour space that has the name, too
  state_->ForgetRecordsOfSpace(entry.space.name);
  return true;
}

void WXmlColorPalette::RemoveUnusedColorSpaces()
{
  std::vector<const PaletteSpace *> used;
  used.reserve(GetColorCount());
  for (const auto &color : state_->colors)
    used.push_back(state_->FindSpace(color->color));
  for (const UnresolvedStyle &waiting : state_->waiting)
    used.push_back(state_->FindSpace(waiting.color));
  std::sort(used.begin(), used.end(), std::less<>());

  state_->spacesByName.Forget();
  state_->spacesByID.Forget();
  state_->spaces.RemoveIf(
    [&](const PaletteSpace &space) { return !std::binary_search(used.begin(), used.end(), &space, std::less<>()); });
}

// --- Colours ---------------------------------------------------------------------------------------------------------

std::size_t WXmlColorPalette::GetColorCount() const
{
  return state_->colors.Size();
}

const WXmlColor &WXmlColorPalette::GetColor(std::size_t index) const
{
  static const WXmlColor kNone;
  return index < state_->colors.Size() ? state_->colors[index].color : kNone;
}

const CLR_COLORSPEC &WXmlColorPalette::GetColorSpec(std::size_t index) const
{
  static const CLR_COLORSPEC kNone;
  if (index >= state_->colors.Size())
    return kNone;
  state_->WorkOut(state_->colors[index]);
  return state_->colors[index].record;
}

CLR_COLORSPEC WXmlColorPalette::GetColorSpecInModel(std::size_t index, unsigned model) const
{
  const WXmlColor &color = GetColor(index);
  const std::string_view name = SpaceNameFromModel(model);
  if (name.empty())
    return {};
  if (color.colorSpace == name)
    return ColorFromPaletteValues(model, color.tints);
  const PaletteSpace *const space = state_->FindSpace(color);
  if (!space)
    return {};
  for (const WXmlDefinitionColor &look : space->space.definitions) {
    if (look.model != name && !(model == ClrModel::Rgb255 && look.model == "sRGB"))
      continue;
    CLR_COLORSPEC spec = look.color;
    spec.SetDensity(static_cast<std::uint16_t>(UnitOfFraction(GetTint(index), 100)));
    return spec;
  }
  return {};
}

const std::string &WXmlColorPalette::GetColorDisplayName(std::size_t index) const
{
  const WXmlColor &color = GetColor(index);
  return state_->DisplayText(color.resid, color.name);
}

int WXmlColorPalette::GetColorID(std::size_t index) const
{
  if (index >= state_->colors.Size())
    return -1;
  state_->WorkOut(state_->colors[index]);
  return state_->colors[index].colorID;
}

double WXmlColorPalette::GetTint(std::size_t index) const
{
  const WXmlColor &color = GetColor(index);
  return state_->FindSpace(color) ? TintOfText(color.tints) : 1;
}

void WXmlColorPalette::InsertColor(std::size_t index, WXmlColor color)
{
  std::vector<WXmlColor> colors;
  colors.push_back(std::move(color));
  InsertColors(index, std::move(colors));
}

void WXmlColorPalette::InsertColors(std::size_t index, std::vector<WXmlColor> colors)
{
  index = std::min(index, GetColorCount());
  const std::size_t page = state_->pages.PageOf(index == GetColorCount() || index == 0 ? index : index - 1);
  state_->Insert(index, page, std::move(colors));
}

void WXmlColorPalette::ReplaceColor(std::size_t index, WXmlColor color)
{
  if (index >= GetColorCount())
    return;
  PaletteColor &entry = state_->colors[index];
  state_->TakeOutOfIndices(entry);
  entry.color = std::move(color);
  entry.isWorkedOut = false;
  state_->PutIntoIndices(entry);
}

void WXmlColorPalette::RemoveColor(std::size_t index)
{
  if (index < GetColorCount())
    state_->Remove(index);
}

void WXmlColorPalette::RemoveAllColors()
{
  state_->ForgetIndices();
  state_->colors.Clear();
  state_->waiting.clear();
  state_->pages = {};
}

void WXmlColorPalette::MoveColor(std::size_t from, std::size_t to)
{
  if (from >= GetColorCount() || to >= GetColorCount() || from == to)
    return;
  PaletteColor &entry = state_->colors[from];
  state_->TakeOutOfIndices(entry);
  state_->colors.Move(from, to);
  state_->PutIntoIndices(entry);
}

void WXmlColorPalette::Reorder(std::span<const std::size_t> order)
{
  state_->ForgetIndices();
  state_->colors.Reorder(order);
}

// --- Look-ups --------------------------------------------------------------------------------------------------------

int WXmlColorPalette::FindName(std::string_view name) const
{
  return FirstPlace(state_->colors, state_->byName.Find(name));
}

int WXmlColorPalette::FindColor(const CLR_COLORSPEC &color) const
{
  return FirstPlace(state_->colors, state_->FindRecord(color));
}

int WXmlColorPalette::FindColor(const CLR_COLORSPEC &color, std::string_view name) const
{
  const auto ofValue = state_->FindRecord(color);
  const auto ofName = state_->byName.Find(name);
  for (const PaletteColor *const entry : ofValue.size() < ofName.size() ? ofValue : ofName) {
    if (entry->color.name == name && entry->record == color)
      return static_cast<int>(state_->colors.PlaceOf(*entry));
  }
  return -1;
}

std::vector<int> WXmlColorPalette::FindColorID(const ZelUtils::Guid &palette, int colorID) const
{
  std::vector<int> indices;
  if (palette != state_->header.guid)
    return indices;
  for (const PaletteColor *const entry : state_->FindID(colorID))
    indices.push_back(static_cast<int>(state_->colors.PlaceOf(*entry)));
  return indices;
}

bool WXmlColorPalette::HasModel(unsigned model) const
{
  const auto isOfModel = [model, name = SpaceNameFromModel(model)](std::string_view text) {
    return (!name.empty() && text == name) || (model != ClrModel::Invalid && ModelFromSpaceName(text) == model);
  };
  return std::any_of(state_->colors.begin(), state_->colors.end(),
                     [&](const auto &color) { return isOfModel(color->color.colorSpace); }) ||
         std::any_of(state_->spaces.begin(), state_->spaces.end(), [&](const auto &space) {
           const auto &looks = space->space.definitions;
           return std::any_of(looks.begin(), looks.end(), [&](const auto &look) { return isOfModel(look.model); });
         });
}

// --- Pages -----------------------------------------------------------------------------------------------------------

int WXmlColorPalette::GetGridWidth() const
{
  return state_->gridWidth;
}

void WXmlColorPalette::SetGridWidth(int width)
{
  state_->gridWidth = std::clamp(width, 1, kMostGridWidth);
}

int WXmlColorPalette::GetPageCount() const
{
  return static_cast<int>(state_->pages.Count());
}

int WXmlColorPalette::GetPage(std::size_t index) const
{
  return static_cast<int>(state_->pages.PageOf(index));
}

int WXmlColorPalette::GetIndexOnPage(std::size_t index) const
{
  return static_cast<int>(index - state_->pages.StartOf(state_->pages.PageOf(index)));
}

void WXmlColorPalette::AddPage()
{
  state_->pages.Append(GetColorCount());
}

void WXmlColorPalette::FlattenPages()
{
  state_->pages = {};
  for (UnresolvedStyle &waiting : state_->waiting)
    waiting.page = 0;
}

// --- Styles ----------------------------------------------------------------------------------------------------------

const std::vector<WXmlColorPalette::UnresolvedStyle> &WXmlColorPalette::GetUnresolvedStyles() const
{
  return state_->waiting;
}

std::size_t WXmlColorPalette::ResolveColorStyleReferences()
{
  std::vector<UnresolvedStyle> all;
  all.swap(state_->waiting);
  std::size_t resolved = 0;
  for (UnresolvedStyle &waiting : all) {
    waiting.index += resolved;
    CLR_COLORSPEC style;
    if (FindColorStyle(state_->header.guid, waiting.style, style) != ColorStyleAnswer::Found) {
      state_->waiting.push_back(std::move(waiting));
      continue;
    }
    waiting.color.styleColor = std::move(style);
    const std::size_t page = state_->PageOfWaiting(waiting);
    std::vector<WXmlColor> colors;
    colors.push_back(std::move(waiting.color));
    state_->Insert(waiting.index, page, std::move(colors));
    ++resolved;
  }
  return resolved;
}
