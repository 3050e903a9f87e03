// The styles of a sheet: what its palette has, shared with all who hold them.
#include "zelclr/harmony/color_style_sheet.h"

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/harmony/harmony_rules.h"
#include "zelclr/harmony/internal/moved_colour.h"
#include "zelclr/harmony/internal/sheet_editing.h"
#include "zelclr/palettes/internal/color_space_names.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>

namespace ZelClr {

using ZelUtl::FoldedCase;
using ZelUtl::WideFromUtf8;

namespace {

/// A name as palettes give it back.
std::wstring NameAsStored(const std::wstring &name)
{
  return WideFromUtf8(NameFromWide(name));
}

/// To the last byte: comparison leaves out what rounds to the same percentage, and palettes.
bool IsSameRecord(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b)
{
  return a.GetType() == b.GetType() && a.GetPaletteGuid() == b.GetPaletteGuid() &&
         std::memcmp(a.GetRAWColor(), b.GetRAWColor(), 16) == 0;
}

} // namespace

// Programs that import the class take this by its address where they are not optimised.
constexpr std::wstring_view ColorStyleSheet::kStylesChanged;
constexpr std::wstring_view ColorStyleSheet::kHarmoniesChanged;
constexpr std::wstring_view ColorStyleSheet::kExternalStylesChanged;
constexpr std::wstring_view ColorStyleSheet::kExternalIDChanged;

ColorStyleSheet::ColorStyleSheet(WClrPalette *palette)
{
  SetStylesPalette(palette);
}

ColorStyleSheet::~ColorStyleSheet()
{
  if (palette_ != nullptr)
    palette_->UnregisterListener(*this);
}

void ColorStyleSheet::SetStylesPalette(WClrPalette *palette)
{
  if (palette == palette_)
    return;
  if (palette_ != nullptr)
    palette_->UnregisterListener(*this);
  palette_ = palette;
  if (palette_ != nullptr)
    palette_->RegisterListener(*this);
  Edit([this] { Follow(true); });
}

ColorSystem::ColorContext ColorStyleSheet::GetColorContext() const
{
  return provider_ != nullptr ? provider_->GetColorContext() : ColorSystem::ColorContext::GetActiveColorContext();
}

// --- Following the palette ------------------------------------------------------------------------------------------

void ColorStyleSheet::OnPropertiesChanged(std::wstring_view names)
{
  const auto tells = [names](std::wstring_view name) { return names.find(name) != std::wstring_view::npos; };
  if (editing_ == 0 && (tells(L"Colors") || tells(L"ShowColorNames")))
    Edit([&] { Follow(tells(L"PaletteName")); });
}

void ColorStyleSheet::OnBroadcasterGone() noexcept
{
  palette_ = nullptr;
  try {
    Edit([this] { Follow(true); });
  } catch (...) {
    // Nobody is left to hear of it; what has not gone yet goes with the next edit.
  }
}

void ColorStyleSheet::Tell(std::wstring_view news)
{
  if (std::find(news_.begin(), news_.end(), news) == news_.end())
    news_.push_back(news);
}

/// The end of an edit.
void ColorStyleSheet::Settle()
{
  {
    const EditScope scope(editing_);
    Follow(false);
  }
  std::wstring names;
  for (const std::wstring_view news : std::exchange(news_, {}))
    names.append(names.empty() ? L"" : L",").append(news);
  if (!names.empty())
    Broadcast(names);
}

/// Brings the styles to what the palette has. A palette that was read anew is taken as it is: nothing in it was
/// renamed, and no harmony moves.
void ColorStyleSheet::Follow(bool isReload)
{
  if (!HasNames()) {
    Tell(kStylesChanged);
    if (!isReload)
      FollowRename();
    ReadNames();
  }
  ReadValues(isReload);
}

/// Whether the palette has the names that it had.
bool ColorStyleSheet::HasNames() const
{
  if (palette_ == nullptr)
    return places_.empty();
  const WXmlColorPalette &xml = palette_->GetXmlPalette();
  if (xml.GetColorCount() != places_.size())
    return false;
  for (std::size_t i = 0; i < places_.size(); ++i) {
    if (xml.GetColor(i).name != places_[i].name)
      return false;
  }
  return true;
}

/// One name that is another now, and nothing else, is a style that was renamed.
void ColorStyleSheet::FollowRename()
{
  const std::size_t count = palette_ == nullptr ? 0 : palette_->GetXmlPalette().GetColorCount();
  const Place *renamed = nullptr;
  std::wstring name;
  for (std::size_t i = 0; i < places_.size() && count == places_.size(); ++i) {
    const std::string &now = palette_->GetXmlPalette().GetColor(i).name;
    if (now == places_[i].name)
      continue;
    if (renamed != nullptr)
      return;
    renamed = &places_[i];
    name = WideFromUtf8(now);
  }
  if (renamed == nullptr || renamed->style == nullptr || name.empty())
    return;
  const std::wstring former = FoldedCase(renamed->style->name);
  const std::wstring key = FoldedCase(name);
  if (key != former && styles_.contains(key))
    return;
  auto style = styles_.extract(former);
  style.key() = key;
  style.mapped().name = name;
  styles_.insert(std::move(style));

  if (Harmony *const harmony = HarmonyOf(former)) {
    if (key != former)
      Leave(key); // no harmony waits for such a style any more
    harmony->SetColor(static_cast<std::size_t>(harmony->FindColor(former)), name);
    harmonyOf_.erase(former);
    harmonyOf_[key] = harmony;
    Tell(kHarmoniesChanged);
  }
  for (ExternalColorStyle &external : external_) {
    if (FoldedCase(external.alias) == former) {
      external.alias = name;
      Tell(kExternalStylesChanged);
    }
  }
  IndexAliases();
}

void ColorStyleSheet::ReadNames()
{
  auto former = std::exchange(styles_, {});
  places_.clear();
  styleOfCell_.clear();
  const std::size_t count = palette_ == nullptr ? 0 : palette_->GetXmlPalette().GetColorCount();
  for (std::size_t i = 0; i < count; ++i) {
    const std::string &utf8 = palette_->GetXmlPalette().GetColor(i).name;
    const std::wstring name = WideFromUtf8(utf8);
    const auto [style, isFirst] = styles_.try_emplace(FoldedCase(name));
    places_.push_back({utf8, nullptr});
    if (name.empty() || !isFirst)
      continue;
    Style &made = style->second;
    if (auto known = former.extract(style->first))
      made = std::move(known.mapped());
    else
      made.reference = CLR_COLORSPEC::MakeReference(CLR_COLORSPEC());
    made.name = name;
    places_.back().style = &made;
    styleOfCell_[made.reference.GetReference()] = &made;
  }
  styles_.erase(std::wstring());
  Forget(former);
}

/// What styles leave behind when they go; as fast for all as for one.
void ColorStyleSheet::Forget(const std::map<std::wstring, Style> &gone)
{
  std::set<Harmony *> left;
  for (const auto &[key, style] : gone) {
    const auto harmony = harmonyOf_.find(key);
    if (harmony == harmonyOf_.end())
      continue;
    left.insert(harmony->second);
    harmonyOf_.erase(harmony);
  }
  for (Harmony *const harmony : left)
    harmony->RemoveColorsIf([&](const std::wstring &name) { return gone.contains(FoldedCase(name)); });
  if (!left.empty())
    Tell(kHarmoniesChanged);
  const auto isGone = [&](const ExternalColorStyle &external) { return gone.contains(FoldedCase(external.alias)); };
  if (!gone.empty() && std::erase_if(external_, isGone) > 0) {
    IndexAliases();
    Tell(kExternalStylesChanged);
  }
}

void ColorStyleSheet::ReadValues(bool isReload)
{
  std::vector<std::pair<Style *, std::size_t>> changed;
  for (std::size_t i = 0; i < places_.size(); ++i) {
    Style *const style = places_[i].style;
    CLR_COLORSPEC now; // what a reference stands for
    if (style != nullptr)
      now.Copy(palette_->GetXmlPalette().GetColorSpec(i));
    if (style != nullptr && !IsSameRecord(style->value, now))
      changed.emplace_back(style, i);
  }
  if (changed.empty())
    return;
  Tell(kStylesChanged);
  Members members;
  Harmony *const harmony = isReload || changed.size() > 1 ? nullptr : HarmonyOf(changed.front().first->name);
  if (harmony != nullptr && !changed.front().first->value.IsInvalid())
    members = MembersOf(*harmony);
  bool isNew = false;
  for (const auto &[style, place] : changed) {
    isNew = isNew || style->value.IsInvalid();
    SetValue(*style, palette_->GetXmlPalette().GetColorSpec(place));
  }
  // The base of a harmony that somebody else changed takes it along.
  if (!members.empty() && members.front().style == changed.front().first && CanEdit()) {
    if (const auto to = Target(members.front().style->value, members.front().position)) {
      std::vector<HSB> from;
      for (const Member &member : members)
        from.push_back(member.position);
      members.front().style->position = to;
      MoveOthers(members, Harmony::CreateHarmonyRule(harmony->GetRuleType())->Drag(from, 0, *to), 0);
    }
  }
  if (isNew)
    ResolveWaiting();
}

/// The document's palette may have colours that wait for new styles.
void ColorStyleSheet::ResolveWaiting() const
{
  if (!WClrPaletteMgr::HasInstance())
    return;
  const WClrPaletteMgr &manager = WClrPaletteMgr::GetInstance();
  const ZelUtl::Document *const document = manager.FindDocumentFromPaletteID(palette_);
  WClrPalette *const colors = document == nullptr ? nullptr : manager.FindDocumentPaletteID(*document);
  if (colors != nullptr)
    colors->ResolveColorStyleReferences();
}

void ColorStyleSheet::SetValue(Style &style, const CLR_COLORSPEC &value)
{
  style.value.Copy(value);
  style.position.reset();
  style.reference.SetReferenceColorValue(style.value);
}

// --- Finding --------------------------------------------------------------------------------------------------------

std::vector<std::wstring> ColorStyleSheet::GetColorStyleNames() const
{
  std::vector<std::wstring> names;
  for (const Place &place : places_) {
    if (place.style != nullptr)
      names.push_back(place.style->name);
  }
  return names;
}

ColorStyleSheet::Style *ColorStyleSheet::FindStyle(std::wstring_view name)
{
  const auto style = styles_.find(FoldedCase(std::wstring(name)));
  return style == styles_.end() ? nullptr : &style->second;
}

const CLR_COLORSPEC *ColorStyleSheet::FindColorStyle(std::wstring_view name) const
{
  const std::wstring key = FoldedCase(std::wstring(name));
  auto style = styles_.find(key);
  if (style == styles_.end()) {
    const auto alias = aliasOf_.find(key);
    style = alias == aliasOf_.end() ? style : styles_.find(alias->second);
  }
  return style == styles_.end() ? nullptr : &style->second.reference;
}

std::wstring ColorStyleSheet::NameOfColorStyle(const CLR_COLORSPEC &reference) const
{
  const auto style = styleOfCell_.find(reference.GetReference());
  return style == styleOfCell_.end() ? std::wstring() : style->second->name;
}

std::wstring ColorStyleSheet::UniqueColorStyleName(const std::wstring &name) const
{
  const std::wstring wanted = NameAsStored(name);
  std::wstring unique = wanted;
  for (int number = 2; styles_.contains(FoldedCase(unique)); ++number)
    unique = wanted + L" (" + std::to_wstring(number) + L")";
  return unique;
}

int ColorStyleSheet::PlaceOf(const Style &style) const
{
  return palette_ == nullptr ? -1 : palette_->GetXmlPalette().FindName(ZelUtl::Utf8FromWide(style.name));
}

// --- Editing --------------------------------------------------------------------------------------------------------

bool ColorStyleSheet::AddColorStyle(const std::wstring &name, const CLR_COLORSPEC &color, int index)
{
  const std::wstring stored = NameAsStored(name);
  if (!CanEdit() || stored.empty() || FindStyle(stored) != nullptr)
    return false;
  CLR_COLORSPEC plain;
  plain.Copy(color);
  return Edit([&] {
    return palette_->InsertColor(index == -1 ? palette_->GetPaletteSize() : index, {plain, stored}) >= 0;
  });
}

/// Changes the colour in the palette, and for all holders. A position says where on the wheel it was meant to be.
bool ColorStyleSheet::Store(Style &style, const CLR_COLORSPEC &color, const std::optional<HSB> &position)
{
  const int place = PlaceOf(style);
  if (!palette_->ChangeColor(place, {color, style.name}))
    return false;
  SetValue(style, palette_->GetXmlPalette().GetColorSpec(static_cast<std::size_t>(place)));
  style.position = position;
  Tell(kStylesChanged);
  return true;
}

bool ColorStyleSheet::ChangeColorStyle(std::wstring_view name, const CLR_COLORSPEC &color)
{
  Style *const style = FindStyle(name);
  if (!CanEdit() || style == nullptr)
    return false;
  CLR_COLORSPEC plain;
  plain.Copy(color);
  const Harmony *const harmony = HarmonyOf(name);
  const Members members = harmony == nullptr ? Members() : MembersOf(*harmony);
  const auto member =
    std::find_if(members.begin(), members.end(), [&](const Member &other) { return other.style == style; });
  const auto to = member == members.end() ? std::nullopt : Target(plain, member->position);
  if (!to)
    return Edit([&] { return Store(*style, plain, std::nullopt); });

  std::vector<HSB> from;
  for (const Member &other : members)
    from.push_back(other.position);
  const auto index = static_cast<std::size_t>(member - members.begin());
  const auto places = Harmony::CreateHarmonyRule(harmony->GetRuleType())->Drag(from, index, *to);
  const auto constrained = Internal::MovedColour(plain, *to, places[index], Converter());
  const bool isLoose = !constrained && Internal::IsInk(plain); // an ink stays what it is
  return Edit([&] {
    if (!Store(*style, constrained.value_or(plain), isLoose ? *to : places[index]))
      return false;
    MoveOthers(members, places, index);
    return true;
  });
}

bool ColorStyleSheet::RenameColorStyle(std::wstring_view name, const std::wstring &newName)
{
  const Style *const style = FindStyle(name);
  const std::wstring stored = NameAsStored(newName);
  if (!CanEdit() || style == nullptr || stored.empty())
    return false;
  const Style *const other = FindStyle(stored);
  if (other != nullptr && other != style)
    return false;
  return Edit([&] { return palette_->ChangeColorName(PlaceOf(*style), stored); });
}

bool ColorStyleSheet::RemoveColorStyle(std::wstring_view name)
{
  const Style *const style = FindStyle(name);
  return CanEdit() && style != nullptr && Edit([&] { return palette_->RemoveColor(PlaceOf(*style)); });
}

bool ColorStyleSheet::SortColorStylesByHarmony()
{
  return CanEdit() && Edit([this] {
           int next = 0;
           for (const auto &harmony : harmonies_) {
             for (const std::wstring &name : harmony->GetColors()) {
               if (const Style *const style = FindStyle(name))
                 palette_->MoveColor(PlaceOf(*style), next++);
             }
           }
           return true;
         });
}

// --- Outside --------------------------------------------------------------------------------------------------------

void ColorStyleSheet::SetExternalID(const std::wstring &id)
{
  if (id == externalID_)
    return;
  Edit([&] {
    externalID_ = id;
    Tell(kExternalIDChanged);
  });
}

/// The first of several styles of one outer name counts.
void ColorStyleSheet::IndexAliases()
{
  aliasOf_.clear();
  for (const auto part : {&ExternalColorStyle::original, &ExternalColorStyle::id}) {
    for (const ExternalColorStyle &style : external_) {
      if (!(style.*part).empty())
        aliasOf_.try_emplace(FoldedCase(style.*part), FoldedCase(style.alias));
    }
  }
}

bool ColorStyleSheet::SetExternalColorStyle(const ExternalColorStyle &style)
{
  if (style.alias.empty())
    return false;
  return Edit([&] {
    const std::wstring key = FoldedCase(style.alias);
    const auto known = std::find_if(external_.begin(), external_.end(),
                                    [&](const auto &other) { return FoldedCase(other.alias) == key; });
    if (known != external_.end())
      *known = style;
    else
      external_.push_back(style);
    IndexAliases();
    ResolveWaiting();
    Tell(kExternalStylesChanged);
    return true;
  });
}

bool ColorStyleSheet::RemoveExternalColorStyle(std::wstring_view alias)
{
  return Edit([&] {
    const std::wstring key = FoldedCase(std::wstring(alias));
    if (std::erase_if(external_, [&](const auto &style) { return FoldedCase(style.alias) == key; }) == 0)
      return false;
    IndexAliases();
    Tell(kExternalStylesChanged);
    return true;
  });
}

} // namespace ZelClr
