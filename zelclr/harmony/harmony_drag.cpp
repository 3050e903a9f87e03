#include "zelclr/harmony/harmony_drag.h"

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/harmony/internal/moved_colour.h"
#include "zelclr/harmony/internal/sheet_editing.h"

#include <algorithm>

namespace ZelClr {

HarmonyDrag::HarmonyDrag(ColorStyleSheet &sheet, std::wstring_view style) : sheet_(sheet)
{
  ColorStyleSheet::Style *const dragged = sheet.FindStyle(style);
  if (dragged == nullptr || !sheet.CanEdit() || !sheet.PositionOf(*dragged))
    return;
  const Harmony *const harmony = sheet.HarmonyOf(style);
  const auto members =
    harmony != nullptr ? sheet.MembersOf(*harmony) : ColorStyleSheet::Members{{dragged, *dragged->position}};
  for (const auto &member : members) {
    if (member.style == dragged)
      index_ = colours_.size();
    colours_.push_back({member.style->name, member.style->reference, member.style->value});
    start_.push_back(member.position);
  }
  positions_ = start_;
  rule_ = Harmony::CreateHarmonyRule(harmony != nullptr ? harmony->GetRuleType() : Harmony::RuleType::Custom);
  converter_ = sheet.converter_;
}

HarmonyDrag::~HarmonyDrag()
{
  try {
    Cancel();
  } catch (...) {
    // Nobody is left to hear of it; the palette never changed.
  }
}

void HarmonyDrag::MoveTo(const HSB &place)
{
  if (!IsValid())
    return;
  const std::vector<HSB> positions = rule_->Drag(start_, index_, place);
  for (std::size_t i = 0; i < colours_.size(); ++i) {
    Colour &colour = colours_[i];
    if (positions[i] == positions_[i])
      continue;
    if (i == index_ && Internal::IsInk(colour.start) && !(positions[i] == start_[i])) {
      const CLR_COLORSPEC mixture =
        positions[i].GetColorSpec(Internal::ModelAt(colour.start, positions[i], *converter_), *converter_);
      colour.reference.SetReferenceColorValue(mixture);
      continue;
    }
    const auto moved = Internal::MovedColour(colour.start, start_[i], positions[i], *converter_);
    colour.reference.SetReferenceColorValue(moved ? *moved : colour.start);
  }
  positions_ = positions;
  sheet_.Broadcast(ColorStyleSheet::kStylesChanged);
}

bool HarmonyDrag::Finish()
{
  if (!IsValid())
    return false;
  if (!sheet_.CanEdit()) {
    Cancel();
    return false;
  }
  const std::vector<Colour> colours = std::exchange(colours_, {});
  sheet_.Edit([&] {
    for (std::size_t i = 0; i < colours.size(); ++i) {
      ColorStyleSheet::Style *const style = sheet_.FindStyle(colours[i].name);
      if (style == nullptr || !style->reference.IsSameReference(colours[i].reference))
        continue;
      const bool stays = positions_[i] == start_[i] || (i != index_ && Internal::IsInk(colours[i].start));
      CLR_COLORSPEC now;
      now.Copy(colours[i].reference);
      if (stays || !sheet_.Store(*style, now, positions_[i]))
        style->reference.SetReferenceColorValue(style->value); // what somebody else may have made of it meanwhile
    }
  });
  return true;
}

void HarmonyDrag::Cancel()
{
  if (!IsValid())
    return;
  for (Colour &colour : std::exchange(colours_, {})) {
    const ColorStyleSheet::Style *const style = sheet_.FindStyle(colour.name);
    const bool isThere = style != nullptr && style->reference.IsSameReference(colour.reference);
    colour.reference.SetReferenceColorValue(isThere ? style->value : colour.start);
  }
  positions_ = start_;
  sheet_.Broadcast(ColorStyleSheet::kStylesChanged);
}

} // namespace ZelClr
