#include "zelclr/harmony/harmony.h"

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/simple_color_converter.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/harmony/harmony_rules.h"
#include "zelclr/harmony/wheel.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZelClr {

namespace {

using HSB = Harmony::HSB;
using RuleType = Harmony::RuleType;

struct RuleRow
{
  RuleType rule;
  std::string_view name;
  int arms;
};
constexpr RuleRow kRules[] = {
  {RuleType::Custom, "custom", 0},
  {RuleType::AccentedAnalogous, "accented analogous", 0},
  {RuleType::Analogous, "analogous", 0},
  {RuleType::Complementary, "complementary", 2},
  {RuleType::Monochromatic, "monochromatic", 1},
  {RuleType::Tetrad, "tetrad", 4},
  {RuleType::Triad, "triad", 3},
};
static_assert(std::size(kRules) == Harmony::kRuleTypes);

/// Custom for a number that is no rule.
const RuleRow &RowOf(RuleType rule)
{
  const auto *const row =
    std::find_if(std::begin(kRules), std::end(kRules), [=](const auto &r) { return r.rule == rule; });
  return row == std::end(kRules) ? kRules[0] : *row;
}

/// Into any record but a reference.
template <class Convert>
std::optional<HSB> PositionOf(const CLR_COLORSPEC &colour, Convert convert)
{
  CLR_COLORSPEC copy, hsb;
  copy.Copy(colour);
  if (copy.IsInvalid() || !convert(copy, hsb, unsigned{ClrModel::Hsb}) || hsb.GetType() != ClrModel::Hsb)
    return std::nullopt;
  HSB position(WheelHueFromHsb(hsb.GetHue()), hsb.GetRed(), hsb.GetBlack());
  if (copy.IsTintable())
    position.density = copy.GetDensity();
  return position;
}

template <class Convert>
CLR_COLORSPEC RecordOf(const HSB &position, unsigned model, Convert convert)
{
  const auto byte = [](std::int32_t value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); };
  const CLR_COLORSPEC hsb = CLR_COLORSPEC::MakeHSB(static_cast<std::int16_t>(HsbHueFromWheel(WithinTurn(position.hue))),
                                                   byte(position.saturation), byte(position.brightness));
  CLR_COLORSPEC record;
  if (!convert(hsb, record, model) || record.GetType() != model)
    return {};
  record.SetDensity(static_cast<std::uint16_t>(std::clamp(position.density, 0, 100)));
  return record;
}

auto InActiveContext()
{
  return [context = ColorSystem::ColorContext::GetActiveColorContext()](const CLR_COLORSPEC &from, CLR_COLORSPEC &to,
                                                                        unsigned model) mutable {
    return WClrConvert::ConvertColorSpec(&to, model, &from, context);
  };
}

auto Through(const ColorSystem::SimpleColorConverter &converter)
{
  return [&converter](const CLR_COLORSPEC &from, CLR_COLORSPEC &to, unsigned model) {
    return WClrConvert::CopyOrRelabel(&to, model, &from) || converter.Convert(from, to, model, 0);
  };
}

/// Truncated, and cut off to what fits; 0 for what is no number.
std::int32_t Whole(double value)
{
  using Limits = std::numeric_limits<std::int32_t>;
  return std::isnan(value) ? 0 : static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;

} // namespace

// Programs that import the class take this by its address where they are not optimised.
constexpr std::int32_t Harmony::kRuleTypes;

// --- Places on the wheel --------------------------------------------------------------------------------------------

HSB::HSB(const CLR_COLORSPEC &colour) : HSB(PositionOf(colour, InActiveContext()).value_or(HSB())) {}

std::optional<HSB> HSB::Of(const CLR_COLORSPEC &colour, const ColorSystem::SimpleColorConverter &converter)
{
  return PositionOf(colour, Through(converter));
}

CLR_COLORSPEC HSB::GetColorSpec(unsigned model) const
{
  return RecordOf(*this, model, InActiveContext());
}

CLR_COLORSPEC HSB::GetColorSpec(unsigned model, const ColorSystem::SimpleColorConverter &converter) const
{
  return RecordOf(*this, model, Through(converter));
}

void HSB::GetPolar(double &angle, double &radius) const
{
  angle = hue * kRadiansPerDegree;
  radius = std::clamp(saturation, 0, 255) / 255.0;
}

void HSB::FromPolar(double angle, double radius)
{
  hue = std::clamp(Whole(angle * kDegreesPerRadian), 0, 360);
  saturation = Whole(radius * 255.0);
}

// --- Rules ----------------------------------------------------------------------------------------------------------

std::string_view Harmony::RuleName(RuleType rule)
{
  return RowOf(rule).name;
}

RuleType Harmony::RuleFromName(std::string_view name)
{
  const auto *const row =
    std::find_if(std::begin(kRules), std::end(kRules), [=](const auto &r) { return r.name == name; });
  return row == std::end(kRules) ? RuleType::Custom : row->rule;
}

int Harmony::GetNumberOfArms(RuleType rule)
{
  return RowOf(rule).arms;
}

std::unique_ptr<const HarmonyRule> Harmony::CreateHarmonyRule(RuleType rule)
{
  if (GetNumberOfArms(rule) > 0)
    return std::make_unique<ArmHarmonyRule>(rule);
  if (rule == RuleType::Analogous)
    return std::make_unique<AnalogousRule>();
  if (rule == RuleType::AccentedAnalogous)
    return std::make_unique<AccentedAnalogousRule>();
  return std::make_unique<CustomHarmonyRule>();
}

std::vector<HSB> Harmony::GenerateHarmonyRuleColors(RuleType rule, const HSB &base, std::size_t count)
{
  return CreateHarmonyRule(rule)->Generate(base, count);
}

// --- Colours --------------------------------------------------------------------------------------------------------

const std::wstring &Harmony::GetColor(std::size_t index) const
{
  static const std::wstring none;
  return index < colors_.size() ? colors_[index] : none;
}

int Harmony::FindColor(std::wstring_view name) const
{
  const std::wstring wanted = ZelUtl::FoldedCase(std::wstring(name));
  const auto found = std::find_if(colors_.begin(), colors_.end(),
                                  [&](const auto &color) { return ZelUtl::FoldedCase(color) == wanted; });
  return found == colors_.end() ? -1 : static_cast<int>(found - colors_.begin());
}

bool Harmony::InsertColor(std::size_t index, std::wstring name)
{
  if (index > colors_.size())
    return false;
  colors_.insert(colors_.begin() + static_cast<std::ptrdiff_t>(index), std::move(name));
  return true;
}

bool Harmony::SetColor(std::size_t index, std::wstring name)
{
  if (index >= colors_.size())
    return false;
  colors_[index] = std::move(name);
  return true;
}

bool Harmony::RemoveColor(std::size_t index)
{
  if (index >= colors_.size())
    return false;
  colors_.erase(colors_.begin() + static_cast<std::ptrdiff_t>(index));
  return true;
}

} // namespace ZelClr
