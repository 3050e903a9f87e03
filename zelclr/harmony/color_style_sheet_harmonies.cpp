// The harmonies of a sheet: which styles they group, and how those move.
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/harmony/color_style_sheet.h"
#include "zelclr/harmony/harmony_rules.h"
#include "zelclr/harmony/internal/moved_colour.h"
#include "zelclr/harmony/internal/sheet_editing.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ZelClr {

using ZelUtl::FoldedCase;

namespace {

std::vector<Harmony::HSB> PlacesOf(const auto &members)
{
  std::vector<Harmony::HSB> places;
  for (const auto &member : members)
    places.push_back(member.position);
  return places;
}

} // namespace

// --- Places on the wheel --------------------------------------------------------------------------------------------

/// Places that were worked out by another context are not known any more.
const ColorSystem::ColorConverter &ColorStyleSheet::Converter()
{
  const ColorSystem::ColorContext context = GetColorContext();
  if (converter_ == nullptr || !(converter_->GetTargetColorContext() == context)) {
    converter_ = std::make_shared<const ColorSystem::ColorConverter>(context, context);
    for (auto &[key, style] : styles_)
      style.position.reset();
  }
  return *converter_;
}

std::optional<Harmony::HSB> ColorStyleSheet::PositionOf(Style &style)
{
  const ColorSystem::ColorConverter &converter = Converter();
  if (!style.position)
    style.position = HSB::Of(style.value, converter);
  return style.position;
}

ColorStyleSheet::Members ColorStyleSheet::MembersOf(const Harmony &harmony)
{
  Members members;
  for (const std::wstring &name : harmony.GetColors()) {
    Style *const style = FindStyle(name);
    if (const auto position = style == nullptr ? std::nullopt : PositionOf(*style))
      members.push_back({style, *position});
  }
  return members;
}

/// Where a colour is to go that was somewhere else; one without saturation has no hue of its own.
std::optional<Harmony::HSB> ColorStyleSheet::Target(const CLR_COLORSPEC &color, const HSB &former)
{
  auto to = HSB::Of(color, Converter());
  if (to && (to->saturation == 0 || to->brightness == 0))
    to->hue = former.hue;
  return to;
}

/// All but one of the members go where they are told.
void ColorStyleSheet::MoveOthers(const Members &members, std::span<const HSB> to, std::size_t dragged)
{
  for (std::size_t i = 0; i < members.size(); ++i) {
    Style &style = *members[i].style;
    const auto moved =
      i == dragged ? std::nullopt : Internal::MovedColour(style.value, members[i].position, to[i], Converter());
    if (moved)
      Store(style, *moved, to[i]);
    else if (i != dragged && !Internal::IsInk(style.value))
      style.position = to[i];
  }
}

std::vector<std::optional<Harmony::HSB>> ColorStyleSheet::GetPositions(std::size_t index)
{
  std::vector<std::optional<HSB>> positions;
  if (index >= harmonies_.size())
    return positions;
  for (const std::wstring &name : harmonies_[index]->GetColors()) {
    Style *const style = FindStyle(name);
    positions.push_back(style == nullptr ? std::nullopt : PositionOf(*style));
  }
  return positions;
}

// --- Which harmony a style is in ------------------------------------------------------------------------------------

Harmony *ColorStyleSheet::HarmonyOf(std::wstring_view style) const
{
  const auto harmony = harmonyOf_.find(FoldedCase(std::wstring(style)));
  return harmony == harmonyOf_.end() ? nullptr : harmony->second;
}

int ColorStyleSheet::IndexOf(const Harmony &harmony) const
{
  const auto found =
    std::find_if(harmonies_.begin(), harmonies_.end(), [&](const auto &other) { return other.get() == &harmony; });
  return static_cast<int>(found - harmonies_.begin());
}

const Harmony *ColorStyleSheet::GetHarmony(std::size_t index) const
{
  return index < harmonies_.size() ? harmonies_[index].get() : nullptr;
}

int ColorStyleSheet::FindHarmonyOf(std::wstring_view style) const
{
  const Harmony *const harmony = HarmonyOf(style);
  return harmony == nullptr ? -1 : IndexOf(*harmony);
}

/// A name that no harmony has.
bool ColorStyleSheet::Join(Harmony &harmony, std::size_t place, const std::wstring &name)
{
  if (name.empty() || place > harmony.GetColorCount() || !harmonyOf_.try_emplace(FoldedCase(name), &harmony).second)
    return false;
  harmony.InsertColor(place, name);
  Tell(kHarmoniesChanged);
  return true;
}

void ColorStyleSheet::Leave(const std::wstring &key)
{
  const auto harmony = harmonyOf_.find(key);
  if (harmony == harmonyOf_.end())
    return;
  harmony->second->RemoveColor(static_cast<std::size_t>(harmony->second->FindColor(key)));
  harmonyOf_.erase(harmony);
  Tell(kHarmoniesChanged);
}

// --- Editing --------------------------------------------------------------------------------------------------------

int ColorStyleSheet::CreateHarmony(int index)
{
  constexpr std::size_t kMostHarmonies = 100'000;
  const int count = static_cast<int>(harmonies_.size());
  if (index < -1 || index > count || harmonies_.size() >= kMostHarmonies)
    return -1;
  return Edit([&] {
    const int place = index == -1 ? count : index;
    harmonies_.insert(harmonies_.begin() + place, std::make_unique<Harmony>());
    Tell(kHarmoniesChanged);
    return place;
  });
}

bool ColorStyleSheet::DeleteHarmony(std::size_t index)
{
  if (index >= harmonies_.size())
    return false;
  return Edit([&] {
    for (const std::wstring &name : harmonies_[index]->GetColors())
      harmonyOf_.erase(FoldedCase(name));
    harmonies_.erase(harmonies_.begin() + static_cast<std::ptrdiff_t>(index));
    Tell(kHarmoniesChanged);
    return true;
  });
}

bool ColorStyleSheet::MoveHarmony(std::size_t from, std::size_t to)
{
  if (from >= harmonies_.size() || to >= harmonies_.size())
    return false;
  return Edit([&] {
    auto harmony = std::move(harmonies_[from]);
    harmonies_.erase(harmonies_.begin() + static_cast<std::ptrdiff_t>(from));
    harmonies_.insert(harmonies_.begin() + static_cast<std::ptrdiff_t>(to), std::move(harmony));
    Tell(kHarmoniesChanged);
    return true;
  });
}

bool ColorStyleSheet::AddToHarmony(std::size_t index, std::wstring_view style, int place)
{
  const Style *const found = FindStyle(style);
  if (index >= harmonies_.size() || found == nullptr)
    return false;
  Harmony &harmony = *harmonies_[index];
  const bool isInIt = HarmonyOf(style) == &harmony;
  const auto count = static_cast<int>(harmony.GetColorCount()) - (isInIt ? 1 : 0); // without it
  if (place < -1 || place > count)
    return false;
  return Edit([&] {
    Leave(FoldedCase(found->name));
    return Join(harmony, static_cast<std::size_t>(place == -1 ? count : place), found->name);
  });
}

bool ColorStyleSheet::RemoveFromHarmony(std::wstring_view style)
{
  return HarmonyOf(style) != nullptr && Edit([&] {
           Leave(FoldedCase(std::wstring(style)));
           return true;
         });
}

bool ColorStyleSheet::SetHarmonyRule(std::size_t index, RuleType rule)
{
  if (index >= harmonies_.size() || !CanEdit())
    return false;
  return Edit([&] {
    harmonies_[index]->SetRuleType(rule);
    Tell(kHarmoniesChanged);
    const Members members = MembersOf(*harmonies_[index]);
    if (rule != RuleType::Custom)
      MoveOthers(members, Harmony::CreateHarmonyRule(rule)->Arranged(PlacesOf(members)), 0);
    return true;
  });
}

int ColorStyleSheet::GenerateHarmony(RuleType rule, std::wstring_view baseStyle, std::size_t count)
{
  Style *const base = FindStyle(baseStyle);
  const auto position = base == nullptr ? std::nullopt : PositionOf(*base);
  constexpr std::size_t kMostColors = 1000; // more than the wheel has degrees
  if (!CanEdit() || !position || count == 0 || count > kMostColors)
    return -1;
  const auto places = Harmony::GenerateHarmonyRuleColors(rule, *position, count);
  std::vector<PaletteEntry> added;
  for (int number = 2; added.size() + 1 < count; ++number) {
    const std::wstring name = base->name + L" " + std::to_wstring(number);
    if (FindStyle(name) != nullptr)
      continue;
    const HSB &place = places[added.size() + 1];
    added.push_back({place.GetColorSpec(Internal::ModelAt(base->value, place, Converter()), Converter()), name});
  }
  const std::wstring name = base->name;
  return Edit([&] {
    const int index = CreateHarmony(-1);
    if (index < 0 || !palette_->InsertColors(PlaceOf(*base) + 1, added)) {
      DeleteHarmony(static_cast<std::size_t>(index));
      return -1;
    }
    Follow(false);
    harmonies_.back()->SetRuleType(rule);
    AddToHarmony(harmonies_.size() - 1, name);
    for (std::size_t i = 0; i < added.size(); ++i) {
      AddToHarmony(harmonies_.size() - 1, added[i].name);
      if (Style *const style = FindStyle(added[i].name))
        style->position = places[i + 1];
    }
    return index;
  });
}

} // namespace ZelClr
