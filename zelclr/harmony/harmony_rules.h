// What the rules of harmonies do: they place the hues of a harmony on the wheel, and keep the relation while one of its
// colours is dragged. Saturation, brightness and density belong to each colour alone.
//
// The first colour is the base. Dragging it turns the whole harmony; dragging any other never moves it.
// Degrees are those of the wheel. Threads: values without state. Errors: none; hues of any number of turns count, those
// that come out are 0 to 359.
#pragma once

#include "zelclr/harmony/harmony.h"

#include <span>
#include <vector>

namespace ZelClr {

class ZELCLR_API HarmonyRule
{
public:
  using HSB = Harmony::HSB;
  using RuleType = Harmony::RuleType;

  virtual ~HarmonyRule() = default;
  virtual RuleType GetRuleType() const = 0;

  /// The hues of a harmony of so many colours, each at its own place by the rule. Duplicates where the rule has fewer
  /// places than there are colours.
  virtual std::vector<std::int32_t> Hues(std::int32_t base, std::size_t count) const = 0;
  /// The colours, `start` as the drag found them, while one of them is dragged to a place: worked out from the start
  /// alone, so that no rounding adds up. An index out of range changes nothing.
  virtual std::vector<HSB> Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const = 0;

  /// The colours with the hues of the rule; the first keeps its own.
  std::vector<HSB> Arranged(std::span<const HSB> colours) const;
  /// The base and others by the rule. Where several share a hue they are told apart as tints and shades of the base, by
  /// turns, at even distances from the base towards a tenth of its saturation in nine tenths of full light, and towards
  /// a tenth of its brightness. A base that is nearly black has no shades, one that is nearly white no tints.
  std::vector<HSB> Generate(const HSB &base, std::size_t count) const;
};

/// Complementary, triad, tetrad, monochromatic: colours on arms at equal distances, the first of them at the base.
class ZELCLR_API ArmHarmonyRule : public HarmonyRule
{
public:
  /// Monochromatic for a rule without arms.
  explicit ArmHarmonyRule(RuleType rule);

  RuleType GetRuleType() const override { return rule_; }
  int GetNumberOfArms() const { return arms_; }
  double ArmDegrees(std::int32_t base, int arm) const;
  /// The arm that is nearest to a hue; of two, the lower.
  int NearestArm(std::int32_t base, double hue) const;

  std::vector<std::int32_t> Hues(std::int32_t base, std::size_t count) const override;
  /// A dragged colour goes to its nearest arm. When the base is dragged the others stay on theirs.
  std::vector<HSB> Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const override;

private:
  RuleType rule_;
  int arms_;
};

/// Neighbours: each colour one step on from the one before.
class ZELCLR_API AnalogousRule : public HarmonyRule
{
public:
  /// Between generated colours; less where they would go round.
  static constexpr double kStep = 30.0;

  AnalogousRule() = default;
  /// With another step between generated colours.
  explicit AnalogousRule(double step) : step_(step) {}

  RuleType GetRuleType() const override { return RuleType::Analogous; }
  /// From the first colour to the second, above -180 to 180; 0 without a second.
  static double Step(std::span<const HSB> colours);
  /// Of the colour at an index; of -1, that of the colour that would come next.
  static std::int32_t HueAt(std::span<const HSB> colours, int index);

  std::vector<std::int32_t> Hues(std::int32_t base, std::size_t count) const override;
  /// A dragged colour takes all others but the base along: the step is the shortest way from the base to it, divided by
  /// its index. When the base is dragged all turn with it.
  std::vector<HSB> Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const override;

private:
  double step_ = kStep;
};

/// Neighbours with one accent: the last of three or more colours, and of two the second, stands opposite the base, the
/// others as AnalogousRule has them.
class ZELCLR_API AccentedAnalogousRule : public HarmonyRule
{
public:
  AccentedAnalogousRule() = default;
  explicit AccentedAnalogousRule(double step) : neighbours_(step) {}

  RuleType GetRuleType() const override { return RuleType::AccentedAnalogous; }
  std::vector<std::int32_t> Hues(std::int32_t base, std::size_t count) const override;
  /// The accent keeps its hue.
  std::vector<HSB> Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const override;

private:
  AnalogousRule neighbours_;
};

/// No relation: every colour goes where it is dragged, and no other moves. Generated hues are a golden angle apart,
/// which keeps each new one far from those before, however many come.
class ZELCLR_API CustomHarmonyRule : public HarmonyRule
{
public:
  RuleType GetRuleType() const override { return RuleType::Custom; }
  std::vector<std::int32_t> Hues(std::int32_t base, std::size_t count) const override;
  std::vector<HSB> Drag(std::span<const HSB> start, std::size_t index, const HSB &to) const override;
};

} // namespace ZelClr
