// Harmonies as people look at them: the colours of a rule around a base, as records and on screen.
//
// Errors: throws Failure, in one line.
#pragma once

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/harmony/harmony.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

using ZelClr::Harmony;

struct RuleWords
{
  Harmony::RuleType rule;
  const char *option;
  const char *title;
  std::size_t count; ///< of colours, where nobody says
};
/// In the order in which they are shown; the custom rule last.
const std::vector<RuleWords> &HarmonyRules();
const RuleWords &RuleFromInput(const std::string &name);

struct HarmonyColour
{
  Harmony::HSB place;
  CLR_COLORSPEC colour;
  COLORREF screen = 0;
};

struct ShownHarmony
{
  const RuleWords *words = nullptr;
  std::vector<int> arms;              ///< degrees of the wheel, where the rule has its places
  std::vector<HarmonyColour> colours; ///< the first is the base
};

/// The colour goes into the model first; 0 leaves it in its own, where that can be, else in the one in which the
/// context mixes colours. `step` is between neighbours, in degrees of the wheel.
ShownHarmony HarmonyOf(const CLR_COLORSPEC &colour, const RuleWords &words, unsigned model,
                       std::optional<std::size_t> count, std::optional<double> step,
                       const ColorSystem::ColorConverter &converter);

/// "#ff8000"
std::string HexOf(COLORREF screen);

} // namespace cli
