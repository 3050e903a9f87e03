// The wheel, colours on it, and what rules do with them.
#include "tests/support/colours.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/harmony/harmony_rules.h"
#include "zelclr/harmony/wheel.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <set>
#include <tuple>

using namespace ZelClr;
using HSB = Harmony::HSB;
using RuleType = Harmony::RuleType;
namespace Model = ZelClr::ClrModel;

namespace ZelClr {

void PrintTo(const Harmony::HSB &place, std::ostream *out)
{
  *out << place.hue << "\u00B0 " << place.saturation << " " << place.brightness << " " << place.density << " %";
}

} // namespace ZelClr

namespace {

RuleType AnyRule()
{
  return static_cast<RuleType>(*rc::gen::inRange(0, Harmony::kRuleTypes));
}

std::int32_t Distance(std::int32_t a, std::int32_t b)
{
  return static_cast<std::int32_t>(std::abs(WrappedDegrees(a - b)));
}

// --- The wheel ------------------------------------------------------------------------------------------------------

TEST(Wheel, GoesThroughItsRows)
{
  const std::pair<int, int> forward[] = {{0, 0},     {30, 53},   {60, 108},  {90, 145},  {120, 168}, {150, 192},
                                         {180, 220}, {210, 247}, {240, 275}, {270, 302}, {300, 324}, {330, 342},
                                         {359, 359}, {360, 0},   {-1, 0},    {32767, 0}};
  const std::pair<int, int> inverse[] = {{0, 0},     {30, 17},   {60, 33},   {90, 47},   {120, 67},
                                         {150, 97},  {180, 137}, {210, 169}, {240, 202}, {270, 235},
                                         {300, 268}, {330, 310}, {359, 357}, {360, 0},   {-1, 0}};
  for (const auto &[hsb, wheel] : forward)
    EXPECT_EQ(WheelHueFromHsb(hsb), wheel) << hsb;
  for (const auto &[wheel, hsb] : inverse)
    EXPECT_EQ(HsbHueFromWheel(wheel), hsb) << wheel;
}

TEST(Wheel, IsSmoothAndItsOwnInverse)
{
  std::set<int> missed;
  for (int hue = 1; hue < 360; ++hue) {
    // The steepest rows rise by 2.3 degrees in one; the curve adds its bend, rounding another step, and the wheel ends
    // flat: its last degree is three of HSB.
    const int forward = WheelHueFromHsb(hue) - WheelHueFromHsb(hue - 1);
    const int back = HsbHueFromWheel(hue) - HsbHueFromWheel(hue - 1);
    EXPECT_TRUE(forward >= 0 && forward <= 4 && back >= 0 && back <= (hue < 359 ? 4 : 5)) << hue;
    if (std::abs(HsbHueFromWheel(WheelHueFromHsb(hue)) - hue) > 1)
      missed.insert(hue);
  }
  EXPECT_EQ(missed, (std::set<int>{354, 355, 359}));
}

// --- Colours on the wheel -------------------------------------------------------------------------------------------

TEST(HarmonyHSB, IsAColourOnTheWheelAndBack)
{
  for (int hue = 0; hue < 360; hue += 7) {
    const HSB place(CLR_COLORSPEC::MakeHSB(static_cast<std::int16_t>(hue), 200, 100));
    EXPECT_EQ(place, HSB(WheelHueFromHsb(hue), 200, 100));
    const CLR_COLORSPEC back = place.GetColorSpec(Model::Hsb);
    EXPECT_LE(std::abs(back.GetHue() - hue), 1) << hue;
    EXPECT_EQ(back.GetRed(), 200);
    EXPECT_EQ(back.GetBlack(), 100);
  }
  EXPECT_EQ(HSB(CLR_COLORSPEC::MakeRGB(255, 255, 0)), HSB(108, 255, 255));
  EXPECT_EQ(HSB(CLR_COLORSPEC::MakeHSB(400, 10, 10)).hue, 0);
  EXPECT_EQ(HSB(tests::Chain(CLR_COLORSPEC::MakeRGB(0, 0, 255), 2)), HSB(275, 255, 255));
  EXPECT_EQ(HSB(CLR_COLORSPEC()), HSB());
  EXPECT_EQ(HSB(CLR_COLORSPEC::MakeUserInks(0, 0, 255, 40)).density, 40);
  EXPECT_EQ(HSB(CLR_COLORSPEC::MakeUserInks(0, 0, 255, 40)).hue, HSB(CLR_COLORSPEC::MakeUserInks(0, 0, 255, 100)).hue);

  EXPECT_EQ(HSB(-720 + 108, 999, 999).GetColorSpec(Model::Rgb255).GetCOLORREF(), COLORREF{0x00FFFF});
  EXPECT_EQ(HSB(108, -5, -5).GetColorSpec(Model::Rgb255).GetCOLORREF(), COLORREF{0});
  EXPECT_EQ(HSB(0, 255, 255, 40).GetColorSpec(Model::Rgb48).GetDensity(), 40);
  EXPECT_EQ(HSB(0, 255, 255, 40).GetColorSpec(Model::Rgb48).GetRed16(), 65535);
  for (const unsigned model : {0u, 1u, 13u, 20u, 25u, 26u, 28u, 99u})
    EXPECT_TRUE(HSB(0, 255, 255).GetColorSpec(model).IsInvalid()) << model;
}

TEST(HarmonyHSB, TakesEveryRecordAndGivesEveryModelThatColoursHave)
{
  const ColorSystem::ColorContext context;
  const ColorSystem::ColorConverter converter(context, context);
  for (const CLR_COLORSPEC &colour : tests::NastyColours()) {
    const auto held = HSB::Of(colour, converter);
    if (held) {
      EXPECT_TRUE(held->hue >= 0 && held->hue < 360 && held->saturation >= 0 && held->saturation < 256)
        << testing::PrintToString(colour);
    }
  }
  for (const unsigned model : {2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 11u, 12u, 15u, 17u, 18u, 19u, 23u, 24u, 27u, 29u, 30u})
    EXPECT_EQ(HSB(50, 200, 200).GetColorSpec(model).GetType(), model);
}

TEST(HarmonyHSB, HasAPolarForm)
{
  double angle = 0, radius = 0;
  HSB(90, 51, 7).GetPolar(angle, radius);
  EXPECT_DOUBLE_EQ(angle, std::numbers::pi / 2);
  EXPECT_DOUBLE_EQ(radius, 0.2);
  HSB(0, 300, 0).GetPolar(angle, radius);
  EXPECT_EQ(radius, 1.0);
  HSB(0, -1, 0).GetPolar(angle, radius);
  EXPECT_EQ(radius, 0.0);
  HSB place(1, 2, 3, 4);
  place.FromPolar(1.0, 0.5);
  EXPECT_EQ(place, HSB(57, 127, 3, 4));
}

TEST(HarmonyHSB, Kept_PolarFormsAreNotBroughtIntoRange)
{
  const struct
  {
    double angle, radius;
    std::int32_t hue, saturation;
  } rows[] = {{-0.1, 1.0, 0, 255},
              {6.5, 1.0, 360, 255},
              {6.2831853071795865, 2.0, 360, 510},
              {3.0, -1.0, 171, -255},
              {1e300, 1e300, 360, 2147483647},
              {std::nan(""), std::nan(""), 0, 0}};
  for (const auto &row : rows) {
    HSB place;
    place.FromPolar(row.angle, row.radius);
    EXPECT_EQ(place, HSB(row.hue, row.saturation, 0)) << row.angle;
  }
}

// --- Rules ----------------------------------------------------------------------------------------------------------

TEST(HarmonyRules, HaveNamesAndArms)
{
  const struct
  {
    int value;
    const char *name;
    int arms;
  } rows[] = {{0, "custom", 0},        {1, "accented analogous", 0}, {2, "analogous", 0},
              {3, "complementary", 2}, {4, "monochromatic", 1},      {5, "tetrad", 4},
              {6, "triad", 3}};
  for (const auto &row : rows) {
    const auto rule = static_cast<RuleType>(row.value);
    EXPECT_EQ(Harmony::RuleName(rule), row.name);
    EXPECT_EQ(Harmony::RuleFromName(row.name), rule);
    EXPECT_EQ(Harmony::GetNumberOfArms(rule), row.arms) << row.name;
    EXPECT_EQ(Harmony::CreateHarmonyRule(rule)->GetRuleType(), rule);
  }
  for (const int value : {-1, 7, 99}) {
    EXPECT_EQ(Harmony::RuleName(static_cast<RuleType>(value)), "custom");
    EXPECT_EQ(Harmony::GetNumberOfArms(static_cast<RuleType>(value)), 0);
    EXPECT_EQ(Harmony::CreateHarmonyRule(static_cast<RuleType>(value))->GetRuleType(), RuleType::Custom);
  }
  EXPECT_EQ(Harmony::RuleFromName("Triad"), RuleType::Custom);
}

TEST(HarmonyRules, GenerateTheirColours)
{
  using Hues = std::vector<std::int32_t>;
  const struct
  {
    RuleType rule;
    std::int32_t base;
    std::size_t count;
    Hues hues;
  } rows[] = {
    {RuleType::Complementary, 200, 2, {200, 20}},
    {RuleType::Triad, 300, 4, {300, 60, 180, 300}},
    {RuleType::Tetrad, 0, 4, {0, 90, 180, 270}},
    {RuleType::Monochromatic, 7, 3, {7, 7, 7}},
    {RuleType::Analogous, 350, 3, {350, 20, 50}},
    {RuleType::Analogous, 0, 18, {0, 20, 40, 60, 80, 100, 120, 140, 160, 180, 200, 220, 240, 260, 280, 300, 320, 340}},
    {RuleType::AccentedAnalogous, 10, 4, {10, 40, 70, 190}},
    {RuleType::AccentedAnalogous, 10, 2, {10, 190}},
    {RuleType::Custom, 0, 3, {0, 138, 275}},
    {RuleType::Triad, 0, 0, {}}};
  for (const auto &row : rows) {
    const HSB base(row.base, 200, 200, 60);
    const auto colours = Harmony::GenerateHarmonyRuleColors(row.rule, base, row.count);
    Hues hues;
    std::set<std::tuple<int, int, int>> distinct;
    for (const HSB &colour : colours) {
      hues.push_back(colour.hue);
      distinct.emplace(colour.hue, colour.saturation, colour.brightness);
      EXPECT_EQ(colour.density, 60);
    }
    EXPECT_EQ(hues, row.hues) << Harmony::RuleName(row.rule);
    EXPECT_EQ(distinct.size(), row.count) << Harmony::RuleName(row.rule);
    EXPECT_TRUE(colours.empty() || colours.front() == base) << Harmony::RuleName(row.rule);
  }
  for (const HSB &base : {HSB(0, 0, 0), HSB(0, 0, 255), HSB(0, 255, 50), HSB(0, 255, 255)}) {
    std::set<std::pair<int, int>> distinct;
    for (const HSB &colour : Harmony::GenerateHarmonyRuleColors(RuleType::Monochromatic, base, 9)) {
      distinct.emplace(colour.saturation, colour.brightness);
      EXPECT_TRUE(colour.saturation >= 0 && colour.saturation <= 255 && colour.brightness >= 0 &&
                  colour.brightness <= 255);
    }
    EXPECT_EQ(distinct.size(), 9u) << testing::PrintToString(base);
  }
  constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
  const auto beyond = Harmony::GenerateHarmonyRuleColors(RuleType::Monochromatic, {kLeast, kLeast, kLeast}, 2);
  EXPECT_EQ(beyond[1].brightness, 115) << "half of nine tenths of the way from black";
}

TEST(ArmHarmonyRule, ChoosesTheNearestArm)
{
  const ArmHarmonyRule two(RuleType::Complementary), three(RuleType::Triad), four(RuleType::Tetrad);
  EXPECT_EQ(two.NearestArm(0, 90), 0) << "of two the lower";
  EXPECT_EQ(two.NearestArm(0, 91), 1);
  EXPECT_EQ(two.NearestArm(350, 80), 0);
  EXPECT_EQ(three.NearestArm(10, 70), 0);
  EXPECT_EQ(three.NearestArm(10, 71), 1);
  EXPECT_EQ(three.NearestArm(10, 190), 1);
  EXPECT_EQ(three.NearestArm(10, 311), 0);
  EXPECT_EQ(four.NearestArm(0, 315), 0);
  EXPECT_EQ(four.NearestArm(0, 314), 3);
  EXPECT_EQ(ArmHarmonyRule(RuleType::Analogous).GetNumberOfArms(), 1);
}

TEST(AnalogousRule, StepsFromTheFirstColourToTheSecond)
{
  const std::vector<HSB> colours = {{350, 1, 1}, {20, 1, 1}, {90, 1, 1}};
  EXPECT_EQ(AnalogousRule::Step(colours), 30.0);
  EXPECT_EQ(AnalogousRule::HueAt(colours, 0), 350);
  EXPECT_EQ(AnalogousRule::HueAt(colours, 2), 50);
  EXPECT_EQ(AnalogousRule::HueAt(colours, -1), 80) << "the one that comes next";
  EXPECT_EQ(AnalogousRule::Step(std::vector<HSB>{{0, 1, 1}, {180, 1, 1}}), 180.0);
  EXPECT_EQ(AnalogousRule::Step(std::vector<HSB>{{0, 1, 1}, {181, 1, 1}}), -179.0);
  EXPECT_EQ(AnalogousRule::HueAt({}, 3), 0);
  const auto dragged = AnalogousRule().Drag(colours, 2, {330, 9, 9});
  EXPECT_EQ(dragged, (std::vector<HSB>{{350, 1, 1}, {340, 1, 1}, {330, 9, 9}}));
}

/// A harmony as its rule makes it, and a drag of one of its colours.
struct Dragging
{
  std::vector<HSB> start;
  std::size_t index;
  HSB to;
};

Dragging AnyDragging(RuleType rule)
{
  const auto byte = [] { return *rc::gen::inRange(0, 256); };
  const auto count = *rc::gen::inRange<std::size_t>(1, 8);
  Dragging drag;
  drag.start = Harmony::GenerateHarmonyRuleColors(rule, {*rc::gen::inRange(0, 360), byte(), byte()}, count);
  drag.index = *rc::gen::inRange<std::size_t>(0, count);
  drag.to = {*rc::gen::inRange(-1000, 1000), byte(), byte(), *rc::gen::inRange(0, 101)};
  return drag;
}

RC_GTEST_PROP(HarmonyRules, KeepTheirRelationWhileAColourIsDragged, ())
{
  const RuleType type = AnyRule();
  const auto rule = Harmony::CreateHarmonyRule(type);
  const Dragging drag = AnyDragging(type);
  const auto made = rule->Drag(drag.start, drag.index, drag.to);
  RC_ASSERT(made.size() == drag.start.size());
  for (std::size_t i = 0; i < made.size(); ++i) {
    RC_ASSERT(made[i].hue >= 0 && made[i].hue < 360);
    const HSB &look = i == drag.index ? drag.to : drag.start[i];
    RC_ASSERT(made[i].saturation == look.saturation && made[i].brightness == look.brightness &&
              made[i].density == look.density);
  }
  if (drag.index > 0)
    RC_ASSERT(made.front() == drag.start.front()); // the base never moves under the constraint of others
  else
    RC_ASSERT(made.front().hue == WithinTurn(drag.to.hue));

  const int arms = Harmony::GetNumberOfArms(type);
  for (std::size_t i = 0; arms > 0 && i < made.size(); ++i)
    RC_ASSERT(Distance(made[i].hue, made.front().hue) % (360 / arms) == 0);
  if (type == RuleType::Analogous && made.size() > 2) {
    for (std::size_t i = 2; i < made.size(); ++i) // each hue is rounded by itself
      RC_ASSERT(Distance(made[i].hue - made[i - 1].hue, made[1].hue - made[0].hue) <= 2);
  }
  if (type == RuleType::AccentedAnalogous && made.size() > 1)
    RC_ASSERT(Distance(made.back().hue, made.front().hue) == 180);
  if (type == RuleType::Custom) {
    for (std::size_t i = 0; i < made.size(); ++i)
      RC_ASSERT(i == drag.index || made[i] == drag.start[i]);
  }
}

RC_GTEST_PROP(HarmonyRules, TurnTheWholeHarmonyWithItsBase, ())
{
  const RuleType type = AnyRule();
  const auto rule = Harmony::CreateHarmonyRule(type);
  const std::vector<HSB> start = AnyDragging(type).start;
  const auto turned = [&](const std::vector<HSB> &from, std::int32_t by) {
    HSB to = from.front();
    to.hue += by;
    return rule->Drag(from, 0, to);
  };
  RC_ASSERT(turned(start, 0) == start);
  RC_ASSERT(turned(start, 360) == start);
  RC_ASSERT(turned(start, -720) == start);
  const std::int32_t by = *rc::gen::inRange(-400, 400);
  RC_ASSERT(turned(turned(start, by), -by) == start);
  const auto made = turned(start, by);
  for (std::size_t i = 1; type != RuleType::Custom && i < made.size(); ++i)
    RC_ASSERT(Distance(made[i].hue - start[i].hue, by) == 0);
  RC_ASSERT(rule->Arranged(start) == start);
  RC_ASSERT(rule->Drag(start, start.size(), {}) == start);
}

} // namespace
