// A style sheet as JSON and back: docs/color_style_sheet.md.
#include "zelclr/harmony/color_style_sheet.h"
#include "zelclr/harmony/internal/sheet_editing.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/json_writer.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/xml_json.h"

#include <algorithm>
#include <cmath>

namespace ZelClr {

using ZelUtils::Guid;
using ZelUtl::FindMember;
using ZelUtl::JsonValue;
using ZelUtl::Utf8FromWide;
using ZelUtl::WideFromUtf8;

namespace {

/// Frozen: stored style sheets have them.
constexpr std::string_view kID = "css-id";
constexpr std::string_view kPalette = "palette_xml";
constexpr std::string_view kGuid = "guid";
constexpr std::string_view kRuledHarmonies = "ruled-harmonies";
constexpr std::string_view kRule = "rule";
constexpr std::string_view kColors = "colors";
constexpr std::string_view kOlderHarmonies = "harmonies";
constexpr std::string_view kType = "type";
constexpr std::string_view kExternalInfo = "external-info";
constexpr std::string_view kAlias = "alias";
constexpr std::string_view kExternalStyleID = "id";
constexpr std::string_view kOriginal = "original";

void Put(JsonValue::Members &members, std::string_view name, JsonValue value)
{
  const auto known =
    std::find_if(members.begin(), members.end(), [=](const auto &member) { return member.name == name; });
  if (known != members.end())
    known->value = std::move(value);
  else
    members.push_back({std::string(name), std::move(value)});
}

/// The text of a member; empty when it is missing, nothing when it is no text.
std::optional<std::wstring> TextOf(const JsonValue &object, std::string_view name)
{
  const JsonValue *const member = FindMember(object, name);
  if (member == nullptr)
    return std::wstring();
  return member->Text() == nullptr ? std::nullopt : std::optional(WideFromUtf8(*member->Text()));
}

/// A whole number of 0 to below the limit; nothing for any other value.
std::optional<std::size_t> WholeOf(const JsonValue &value, std::size_t limit)
{
  const double *const number = value.Number();
  const bool fits = number != nullptr && *number >= 0.0 && *number < static_cast<double>(limit);
  return fits && std::floor(*number) == *number ? std::optional(static_cast<std::size_t>(*number)) : std::nullopt;
}

} // namespace

// --- Writing --------------------------------------------------------------------------------------------------------

bool ColorStyleSheet::ExportJson(JsonValue &value) const
{
  std::string reason;
  const auto document =
    palette_ == nullptr ? std::nullopt : ZelUtl::WXmlDoc::FromBytes(palette_->GetXmlPalette().Bytes(false), reason);
  if (!document)
    return false;
  if (value.Object() == nullptr)
    value = {JsonValue::Members()};
  auto &members = std::get<JsonValue::Members>(value.value);
  // What another sheet left there would be read as this one's.
  std::erase_if(members, [](const ZelUtl::JsonMember &member) {
    return member.name == kID || member.name == kExternalInfo || member.name == kOlderHarmonies;
  });
  if (!externalID_.empty())
    Put(members, kID, {Utf8FromWide(externalID_)});
  Put(members, kPalette, ZelUtl::JsonFromXml(document->Root()));
  Put(members, kRuledHarmonies, ExportRuledHarmoniesJson());
  if (!external_.empty())
    Put(members, kExternalInfo, ExportExternalInfoJson());
  return true;
}

JsonValue ColorStyleSheet::ExportRuledHarmoniesJson() const
{
  JsonValue::Array list;
  for (const auto &harmony : harmonies_) {
    JsonValue::Array colors;
    for (const std::wstring &name : harmony->GetColors())
      colors.push_back({Utf8FromWide(name)});
    JsonValue::Members element;
    Put(element, kRule, {std::string(Harmony::RuleName(harmony->GetRuleType()))});
    Put(element, kColors, {std::move(colors)});
    list.push_back({std::move(element)});
  }
  return {std::move(list)};
}

JsonValue ColorStyleSheet::ExportExternalInfoJson() const
{
  JsonValue::Array list;
  for (const ExternalColorStyle &style : external_) {
    if (style.id.empty() && !style.original.empty())
      continue;
    JsonValue::Members element;
    Put(element, kAlias, {Utf8FromWide(style.alias)});
    Put(element, kExternalStyleID, {Utf8FromWide(style.id)});
    Put(element, kOriginal, {Utf8FromWide(style.original)});
    list.push_back({std::move(element)});
  }
  return {std::move(list)};
}

std::string ColorStyleSheet::ExportJsonText() const
{
  JsonValue value;
  return ExportJson(value) ? ZelUtl::JsonText(value) : std::string();
}

// --- Reading --------------------------------------------------------------------------------------------------------

bool ColorStyleSheet::ImportJson(const JsonValue &value)
{
  return Edit([&] {
    const auto id = TextOf(value, kID);
    if (value.Object() == nullptr || !id)
      return false;
    if (!id->empty())
      SetExternalID(*id);
    const JsonValue *const palette = FindMember(value, kPalette);
    if (palette_ == nullptr || palette == nullptr || !ImportPaletteJson(*palette) || !ImportHarmoniesJson(value))
      return false;
    const JsonValue *const external = FindMember(value, kExternalInfo);
    return external == nullptr || ImportExternalInfoJson(*external);
  });
}

bool ColorStyleSheet::ImportJsonText(std::string_view text, std::string &reason)
{
  std::size_t line = 0;
  const auto value = ZelUtl::ReadJson(text, line, reason);
  if (!value) {
    reason = line == 0 ? reason : "line " + std::to_string(line) + ": " + reason;
    return false;
  }
  const bool isRead = ImportJson(*value);
  if (!isRead)
    reason = "no style sheet, or none that this one can take";
  return isRead;
}

/// The palette begins anew, and with it harmonies and aliases, which are about its colours.
bool ColorStyleSheet::ImportPaletteJson(const JsonValue &palette)
{
  std::string reason;
  const auto document = ZelUtl::XmlFromJson(palette, reason);
  if (!document)
    return false;
  // A style is a colour of its own here; one that followed another would follow what is about to go.
  for (ZelUtl::WXmlNode &color : document->Root().SelectNodes("colors/page/color[@colorStyleRef]"))
    color.RemoveAttribute("colorStyleRef");
  WXmlColorPalette incoming;
  const Guid former = palette_->GetPaletteGuid();
  if (!incoming.LoadFromBytes(document->Bytes(), reason) || !palette_->RestoreFromString(document->Text()))
    return false;

  while (!harmonies_.empty())
    DeleteHarmony(harmonies_.size() - 1);
  if (!std::exchange(external_, {}).empty())
    Tell(kExternalStylesChanged);
  IndexAliases();
  const auto guid = document->Root().Attribute(kGuid);
  TakeIdentifier(former, guid ? Guid::FromText(std::wstring_view(*guid)) : std::nullopt);
  NameColors();
  const WXmlColorPalette::Header &header = incoming.GetHeader();
  if (header.maxColors == -1 || palette_->GetPaletteSize() <= header.maxColors)
    palette_->SetPaletteSizeLimit(header.maxColors);
  palette_->SetLocked(header.locked);
  Tell(kStylesChanged);
  Follow(true);
  return true;
}

/// The palette takes the identifier that the sheet states, which records of spot colours carry, unless it states none
/// or another palette has it by now: then it keeps its own. Either way the document finds such records under both.
void ColorStyleSheet::TakeIdentifier(const Guid &former, const std::optional<Guid> &stated)
{
  const bool isManaged = WClrPaletteMgr::HasInstance();
  const auto isOf = [this](const Guid &guid, const WClrPalette *other) {
    return other != palette_ && other->GetPaletteGuid() == guid;
  };
  bool isFree = stated && !stated->IsNull();
  if (isFree && isManaged) {
    const auto list = WClrPaletteMgr::GetInstance().GetPaletteList();
    isFree = std::none_of(list.begin(), list.end(), [&](const auto *other) { return isOf(*stated, other); });
  }
  const Guid taken = isFree || former.IsNull() ? stated.value_or(Guid()) : former;
  palette_->SetPaletteGuid(taken);
  auto *const document = isManaged ? WClrPaletteMgr::GetInstance().FindDocumentFromPaletteID(palette_) : nullptr;
  for (const Guid &other : {former, stated.value_or(Guid())}) {
    if (document != nullptr && other != taken)
      WClrPaletteMgr::GetInstance().MapPaletteGuid(*document, other, taken);
  }
}

/// Gives every colour a name of its own, so that each is a style: those without one a name for what they look like,
/// later ones of the same name a number behind it.
void ColorStyleSheet::NameColors()
{
  std::map<std::wstring, int> numbers; // of names, folded: the next to try
  const auto isTaken = [&](const std::wstring &name) { return numbers.contains(ZelUtl::FoldedCase(name)); };
  std::vector<int> unnamed;
  for (int i = 0; i < palette_->GetPaletteSize(); ++i) {
    const std::wstring name = WideFromUtf8(palette_->GetXmlPalette().GetColor(static_cast<std::size_t>(i)).name);
    if (name.empty() || isTaken(name))
      unnamed.push_back(i);
    else
      numbers[ZelUtl::FoldedCase(name)] = 2;
  }
  for (const int i : unnamed) {
    std::wstring wanted = WideFromUtf8(palette_->GetXmlPalette().GetColor(static_cast<std::size_t>(i)).name);
    if (wanted.empty())
      wanted = palette_->GetGeneratedName(palette_->GetColorSpec(i));
    if (wanted.empty())
      wanted = L"Color";
    int &number = numbers.try_emplace(ZelUtl::FoldedCase(wanted), 1).first->second;
    std::wstring name = wanted;
    while (number > 1 && isTaken(name))
      name = wanted + L" (" + std::to_wstring(number++) + L")";
    number = std::max(number, 2);
    numbers.try_emplace(ZelUtl::FoldedCase(name), 2);
    palette_->ChangeColorName(i, name);
  }
}

bool ColorStyleSheet::ImportHarmoniesJson(const JsonValue &value)
{
  const JsonValue *const ruled = FindMember(value, kRuledHarmonies);
  if (ruled != nullptr && ImportRuledHarmoniesJson(*ruled))
    return true;
  const JsonValue *const older = FindMember(value, kOlderHarmonies);
  return older != nullptr && ImportLegacyHeronHarmoniesJson(*older);
}

/// One after the other: what stands before a fault is kept, the harmony with the fault too. A name that stands twice,
/// in one harmony or in two, counts where it stands first.
bool ColorStyleSheet::ImportRuledHarmoniesJson(const JsonValue &value)
{
  const auto *const list = value.Items();
  return list != nullptr && std::all_of(list->begin(), list->end(), [this](const JsonValue &element) {
           if (element.Object() == nullptr || CreateHarmony(-1) < 0)
             return false;
           Harmony &harmony = *harmonies_.back();
           const auto rule = TextOf(element, kRule);
           if (!rule)
             return false;
           harmony.SetRuleType(Harmony::RuleFromName(Utf8FromWide(*rule)));
           const JsonValue *const colors = FindMember(element, kColors);
           if (colors == nullptr)
             return true;
           const auto *const names = colors->Items();
           const auto isText = [](const JsonValue &name) { return name.Text() != nullptr; };
           if (names == nullptr || !std::all_of(names->begin(), names->end(), isText))
             return false;
           for (const JsonValue &name : *names)
             Join(harmony, harmony.GetColorCount(), WideFromUtf8(*name.Text()));
           return true;
         });
}

/// The older form knows rules by their numbers and colours by their places in the palette. Read whole or not at all,
/// and in place of what was read of the other form: the same harmonies would stand twice.
bool ColorStyleSheet::ImportLegacyHeronHarmoniesJson(const JsonValue &value)
{
  struct Older
  {
    RuleType rule = RuleType::Custom;
    std::vector<std::size_t> colors;
  };
  const auto *const list = value.Items();
  if (list == nullptr)
    return false;
  std::vector<Older> harmonies;
  const auto count = static_cast<std::size_t>(palette_->GetPaletteSize());
  for (const JsonValue &element : *list) {
    Older harmony;
    if (const JsonValue *const type = FindMember(element, kType)) {
      if (type->Number() == nullptr)
        return false;
      const auto rule = WholeOf(*type, std::size_t{Harmony::kRuleTypes});
      harmony.rule = static_cast<RuleType>(rule.value_or(0));
    }
    const JsonValue *const colors = element.Items() != nullptr ? &element : FindMember(element, kColors);
    if (colors == nullptr || colors->Items() == nullptr)
      return false;
    for (const JsonValue &color : *colors->Items()) {
      const auto place = WholeOf(color, count);
      if (!place)
        return false;
      harmony.colors.push_back(*place);
    }
    harmonies.push_back(std::move(harmony));
  }
  while (!harmonies_.empty())
    DeleteHarmony(harmonies_.size() - 1);
  for (const Older &older : harmonies) {
    if (CreateHarmony(-1) < 0)
      return false;
    Harmony &harmony = *harmonies_.back();
    harmony.SetRuleType(older.rule);
    for (const std::size_t place : older.colors) {
      if (places_[place].style != nullptr)
        Join(harmony, harmony.GetColorCount(), places_[place].style->name);
    }
  }
  return true;
}

/// Read whole or not at all. Of one alias the last element counts.
bool ColorStyleSheet::ImportExternalInfoJson(const JsonValue &value)
{
  const auto *const list = value.Items();
  if (list == nullptr)
    return false;
  std::vector<ExternalColorStyle> styles;
  std::map<std::wstring, std::size_t> placeOf;
  for (const JsonValue &element : *list) {
    const auto alias = TextOf(element, kAlias);
    const auto id = TextOf(element, kExternalStyleID);
    const auto original = TextOf(element, kOriginal);
    if (element.Object() == nullptr || !alias || alias->empty() || !id || !original)
      return false;
    const auto [place, isNew] = placeOf.try_emplace(ZelUtl::FoldedCase(*alias), styles.size());
    if (isNew)
      styles.emplace_back();
    styles[place->second] = {*alias, *id, *original};
  }
  external_ = std::move(styles);
  IndexAliases();
  ResolveWaiting();
  Tell(kExternalStylesChanged);
  return true;
}

} // namespace ZelClr
