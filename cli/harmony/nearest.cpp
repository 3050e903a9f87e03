#include "cli/harmony/nearest.h"

#include "zelclr/harmony/harmony_rules.h"
#include "zelclr/harmony/wheel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace cli {

namespace {

/// A number for each degree of the wheel.
using Degrees = std::array<double, 360>;

double &At(Degrees &degrees, int hue)
{
  return degrees[static_cast<std::size_t>(ZelClr::WithinTurn(hue))];
}

/// From each degree to the nearest of these hues.
Degrees DistancesTo(const std::vector<int> &hues)
{
  Degrees distances;
  distances.fill(180.0);
  for (int degree = 0; degree < 360; ++degree) {
    for (const int hue : hues)
      At(distances, degree) = std::min(At(distances, degree), std::abs(ZelClr::WrappedDegrees(degree - hue)));
  }
  return distances;
}

/// The arms of a rule whose base is at 0, and, where that is not the same, their mirror image.
std::vector<std::vector<int>> ArmsOf(const RuleWords &words)
{
  const int arms = Harmony::GetNumberOfArms(words.rule);
  const auto hues =
    Harmony::CreateHarmonyRule(words.rule)->Hues(0, arms > 0 ? static_cast<std::size_t>(arms) : words.count);
  std::vector<int> mirrored;
  for (const auto hue : hues)
    mirrored.push_back(ZelClr::WithinTurn(-hue));
  std::vector<std::vector<int>> both = {{hues.begin(), hues.end()}};
  if (arms == 0)
    both.push_back(mirrored);
  return both;
}

RuleFit BestTurn(const RuleWords &words, Degrees &weights, Degrees &toColour)
{
  const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
  RuleFit best;
  for (const std::vector<int> &arms : ArmsOf(words)) {
    Degrees toArm = DistancesTo(arms);
    for (int turn = 0; turn < 360; ++turn) {
      RuleFit fit = {&words, {}, 0, 0, std::accumulate(toArm.begin(), toArm.end(), 0.0) / 360.0};
      for (int degree = 0; degree < 360; ++degree)
        fit.distance += At(weights, degree) * At(toArm, degree - turn) / total;
      for (const int arm : arms) {
        fit.arms.push_back(ZelClr::WithinTurn(arm + turn));
        fit.unused += At(toColour, arm + turn) / static_cast<double>(arms.size());
      }
      constexpr double kRounding = 1e-9;
      if (best.words == nullptr || fit.Miss() < best.Miss() - kRounding)
        best = std::move(fit);
    }
  }
  return best;
}

} // namespace

std::vector<RuleFit> RulesNearestTo(std::span<const WeightedHue> colours)
{
  Degrees weights = {};
  std::vector<int> hues;
  for (const WeightedHue &colour : colours) {
    if (colour.weight <= 0.0)
      continue;
    At(weights, colour.hue) += colour.weight;
    if (std::find(hues.begin(), hues.end(), colour.hue) == hues.end())
      hues.push_back(colour.hue);
  }
  std::vector<RuleFit> fits;
  if (hues.empty())
    return fits;
  Degrees toColour = DistancesTo(hues);
  for (const RuleWords &words : HarmonyRules()) {
    if (words.rule != Harmony::RuleType::Custom)
      fits.push_back(BestTurn(words, weights, toColour));
  }
  std::sort(fits.begin(), fits.end(), [](const RuleFit &a, const RuleFit &b) {
    return std::pair(std::round(a.Miss() * 1e6), a.arms.size()) < std::pair(std::round(b.Miss() * 1e6), b.arms.size());
  });
  return fits;
}

} // namespace cli
