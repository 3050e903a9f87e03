#include "zelclr/harmony/harmony_rules.h"

#include "zelclr/harmony/wheel.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace ZelClr {

namespace {

using HSB = Harmony::HSB;

std::int32_t HueOf(double degrees)
{
  return WithinTurn(static_cast<int>(std::lround(std::remainder(degrees, 360.0))));
}

HSB Turned(HSB colour, double hue)
{
  colour.hue = HueOf(hue);
  return colour;
}

/// The colours with one of them at its new place, if there is such a one.
std::vector<HSB> With(std::span<const HSB> start, std::size_t index, const HSB &to)
{
  std::vector<HSB> colours(start.begin(), start.end());
  if (index < colours.size())
    colours[index] = Turned(to, to.hue);
  return colours;
}

// --- Tints and shades -----------------------------------------------------------------------------------------------

/// A part of the way, 0 to 1, to what lacks nine tenths of the colour, and of the dark, or of the light.
HSB Tint(HSB base, double part)
{
  base.saturation -= static_cast<std::int32_t>(std::lround(base.saturation * 0.9 * part));
  base.brightness += static_cast<std::int32_t>(std::lround((255 - base.brightness) * 0.9 * part));
  return base;
}

HSB Shade(HSB base, double part)
{
  base.brightness -= static_cast<std::int32_t>(std::lround(base.brightness * 0.9 * part));
  return base;
}

/// The `number`th, from 1, of so many variations.
HSB Variation(HSB base, std::size_t number, std::size_t count)
{
  base.saturation = std::clamp(base.saturation, 0, 255);
  base.brightness = std::clamp(base.brightness, 0, 255);
  constexpr std::int32_t kNearly = 51; // a fifth of the full scale
  const bool hasShades = base.brightness >= kNearly;
  const bool hasTints = base.saturation >= kNearly || base.brightness <= 255 - kNearly;
  const auto part = [](std::size_t i, std::size_t n) { return static_cast<double>(i) / static_cast<double>(n + 1); };
  if (!hasShades)
    return Tint(base, part(number, count));
  if (!hasTints)
    return Shade(base, part(number, count));
  return number % 2 == 1 ? Tint(base, part((number + 1) / 2, (count + 1) / 2))
                         : Shade(base, part(number / 2, count / 2));
}

} // namespace

std::vector<HSB> HarmonyRule::Arranged(std::span<const HSB> colours) const
{
  std::vector<HSB> arranged(colours.begin(), colours.end());
  if (colours.empty())
    return arranged;
  const std::vector<std::int32_t> hues = Hues(colours.front().hue, colours.size());
  for (std::size_t i = 1; i < arranged.size(); ++i)
    arranged[i].hue = hues[i];
  return arranged;
}

std::vector<HSB> HarmonyRule::Generate(const HSB &base, std::size_t count) const
{
  const std::vector<std::int32_t> hues = Hues(base.hue, count);
  std::map<std::int32_t, std::size_t> ofHue, soFar;
  for (const std::int32_t hue : hues)
    ++ofHue[hue];
  std::vector<HSB> colours;
  for (const std::int32_t hue : hues) {
    const std::size_t number = soFar[hue]++;
    HSB colour = number == 0 ? base : Variation(base, number, ofHue[hue] - 1);
    colour.hue = colours.empty() ? base.hue : hue;
    colours.push_back(colour);
  }
  return colours;
}

// --- Arms -----------------------------------------------------------------------------------------------------------

ArmHarmonyRule::ArmHarmonyRule(RuleType rule)
  : rule_(Harmony::GetNumberOfArms(rule) > 0 ? rule : RuleType::Monochromatic),
    arms_(Harmony::GetNumberOfArms(rule_))
{}

double ArmHarmonyRule::ArmDegrees(std::int32_t base, int arm) const
{
  return base + 360.0 * arm / arms_;
}

int ArmHarmonyRule::NearestArm(std::int32_t base, double hue) const
{
  int nearest = 0;
  const auto distance = [&](int arm) { return std::abs(WrappedDegrees(hue - ArmDegrees(base, arm))); };
  for (int arm = 1; arm < arms_; ++arm) {
    if (distance(arm) < distance(nearest))
      nearest = arm;
  }
  return nearest;
}

std::vector<std::int32_t> ArmHarmonyRule::Hues(std::int32_t base, std::size_t count) const
{
  std::vector<std::int32_t> hues;
  for (std::size_t i = 0; i < count; ++i)
    hues.push_back(HueOf(ArmDegrees(base, static_cast<int>(i % static_cast<std::size_t>(arms_)))));
  return hues;
}

std::vector<HSB> ArmHarmonyRule::Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const
{
  std::vector<HSB> colours = With(start, index, to);
  if (index >= colours.size())
    return colours;
  const std::int32_t base = start.front().hue;
  if (index > 0) {
    colours[index] = Turned(to, ArmDegrees(base, NearestArm(base, to.hue)));
    return colours;
  }
  for (std::size_t i = 1; i < colours.size(); ++i)
    colours[i] = Turned(start[i], ArmDegrees(to.hue, NearestArm(base, start[i].hue)));
  return colours;
}

// --- Neighbours -----------------------------------------------------------------------------------------------------

double AnalogousRule::Step(std::span<const HSB> colours)
{
  return colours.size() < 2 ? 0.0 : WrappedDegrees(static_cast<double>(colours[1].hue) - colours[0].hue);
}

std::int32_t AnalogousRule::HueAt(std::span<const HSB> colours, int index)
{
  const double place = index == -1 ? static_cast<double>(colours.size()) : index;
  return colours.empty() ? 0 : HueOf(colours.front().hue + place * Step(colours));
}

std::vector<std::int32_t> AnalogousRule::Hues(std::int32_t base, std::size_t count) const
{
  const double most = 360.0 / static_cast<double>(std::max<std::size_t>(count, 1));
  const double step = std::clamp(step_, -most, most);
  std::vector<std::int32_t> hues;
  for (std::size_t i = 0; i < count; ++i)
    hues.push_back(HueOf(base + static_cast<double>(i) * step));
  return hues;
}

std::vector<HSB> AnalogousRule::Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const
{
  std::vector<HSB> colours = With(start, index, to);
  if (index >= colours.size())
    return colours;
  const double from = start.front().hue;
  if (index == 0) {
    for (std::size_t i = 1; i < colours.size(); ++i)
      colours[i] = Turned(start[i], start[i].hue + (to.hue - from));
    return colours;
  }
  const double step = WrappedDegrees(to.hue - from) / static_cast<double>(index);
  for (std::size_t i = 1; i < colours.size(); ++i)
    colours[i].hue = HueOf(from + static_cast<double>(i) * step);
  return colours;
}

std::vector<std::int32_t> AccentedAnalogousRule::Hues(std::int32_t base, std::size_t count) const
{
  if (count < 2)
    return neighbours_.Hues(base, count);
  std::vector<std::int32_t> hues = neighbours_.Hues(base, count - 1);
  hues.push_back(HueOf(base + 180.0));
  return hues;
}

std::vector<HSB> AccentedAnalogousRule::Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const
{
  if (start.size() < 2 || index >= start.size())
    return neighbours_.Drag(start, index, to);
  const std::size_t accent = start.size() - 1;
  std::vector<HSB> colours = neighbours_.Drag(start.first(accent), index, to);
  colours.push_back(index == accent ? to : start[accent]);
  colours.back().hue = HueOf(colours.front().hue + 180.0);
  return colours;
}

// --- None -----------------------------------------------------------------------------------------------------------

std::vector<std::int32_t> CustomHarmonyRule::Hues(std::int32_t base, std::size_t count) const
{
  constexpr double kGoldenAngle = 137.50776405003785; // 180 (3 - sqrt 5)
  std::vector<std::int32_t> hues;
  for (std::size_t i = 0; i < count; ++i)
    hues.push_back(HueOf(base + static_cast<double>(i) * kGoldenAngle));
  return hues;
}

std::vector<HSB> CustomHarmonyRule::Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const
{
  return With(start, index, to);
}

} // namespace ZelClr
