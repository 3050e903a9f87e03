#include "cli/harmony/harmonies.h"

#include "cli/failure.h"
#include "cli/output.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/harmony/harmony_rules.h"
#include "zelclr/harmony/wheel.h"

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

using RuleType = Harmony::RuleType;
using ColorSystem::ColorConverter;

unsigned ModelOf(const CLR_COLORSPEC &colour, const ColorConverter &converter)
{
  if (WClrConvert::IsBasicType(colour.GetType()))
    return colour.GetType();
  unsigned model = 0;
  double fullScale = 0.0;
  const auto blending = converter.GetTargetColorContext().GetBlendingColorModel();
  return ColorConverter::ColorModelToColorType(blending, model, fullScale) ? model : unsigned{ZelClr::ClrModel::Rgb255};
}

std::unique_ptr<const ZelClr::HarmonyRule> RuleOf(RuleType type, std::optional<double> step)
{
  if (step && type == RuleType::Analogous)
    return std::make_unique<ZelClr::AnalogousRule>(*step);
  if (step && type == RuleType::AccentedAnalogous)
    return std::make_unique<ZelClr::AccentedAnalogousRule>(*step);
  return Harmony::CreateHarmonyRule(type);
}

} // namespace

const std::vector<RuleWords> &HarmonyRules()
{
  static const std::vector<RuleWords> rules = {
    {RuleType::Complementary, "complementary", "Complementary", 2},
    {RuleType::Triad, "triad", "Triad", 3},
    {RuleType::Tetrad, "tetrad", "Tetrad", 4},
    {RuleType::Analogous, "analogous", "Analogous", 3},
    {RuleType::AccentedAnalogous, "accented-analogous", "Accented analogous", 4},
    {RuleType::Monochromatic, "monochromatic", "Monochromatic", 4},
    {RuleType::Custom, "custom", "Free", 5},
  };
  return rules;
}

const RuleWords &RuleFromInput(const std::string &name)
{
  const auto &rules = HarmonyRules();
  const auto row =
    std::find_if(rules.begin(), rules.end(), [&](const RuleWords &words) { return words.option == name; });
  if (row != rules.end())
    return *row;
  std::string known;
  for (const RuleWords &words : rules)
    known += (known.empty() ? "" : ", ") + std::string(words.option);
  throw Failure(ExitCode::Usage, "--rule " + Harmless(name) + ": " + known);
}

ShownHarmony HarmonyOf(const CLR_COLORSPEC &colour, const RuleWords &words, unsigned model,
                       std::optional<std::size_t> count, std::optional<double> step, const ColorConverter &converter)
{
  const auto base = Harmony::HSB::Of(colour, converter);
  const unsigned target = model != 0 ? model : ModelOf(colour, converter);
  CLR_COLORSPEC first;
  if (!base || !(WClrConvert::CopyOrRelabel(&first, target, &colour) || converter.Convert(colour, first, target, 0)))
    throw Failure(ExitCode::Missing, ZelClr::TextFromColorSpec(colour) + " cannot be converted without its palette");
  const auto rule = RuleOf(words.rule, step);
  ShownHarmony shown;
  shown.words = &words;
  for (const Harmony::HSB &place : rule->Generate(*base, count.value_or(words.count))) {
    const CLR_COLORSPEC record = shown.colours.empty() ? first : place.GetColorSpec(target, converter);
    shown.colours.push_back({place, record, converter.ConvertToColorRef(record, false)});
  }
  const int arms = Harmony::GetNumberOfArms(words.rule);
  for (const std::int32_t hue : rule->Hues(base->hue, arms > 0 ? static_cast<std::size_t>(arms) : shown.colours.size()))
    shown.arms.push_back(hue);
  return shown;
}

std::string HexOf(COLORREF screen)
{
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(screen & 255),
                static_cast<unsigned>(screen >> 8 & 255), static_cast<unsigned>(screen >> 16 & 255));
  return text;
}

} // namespace cli
