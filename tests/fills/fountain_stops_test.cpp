// Stops and arrays of stops: what is stored, how they compare, and how a fill is edited.
#include "tests/support/colours.h"
#include "zelclr/colour/fills/clr_fountcolor_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

using C = CLR_COLORSPEC;
using Stop = CLR_FOUNTCOLOR;
using Stops = CLR_FOUNTCOLOR_ARRAY;

namespace {

const C kRed = C::MakeRGB(255, 0, 0), kBlue = C::MakeRGB(0, 0, 255);
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::vector<int> PositionsOf(const Stops &stops)
{
  std::vector<int> positions;
  for (const Stop &stop : stops)
    positions.push_back(stop.position);
  return positions;
}

Stops RandomStops(std::mt19937 &random)
{
  static const auto kColours = tests::NastyColours();
  Stops stops;
  for (auto i = random() % 6; i > 0; --i)
    stops.Add({kColours[random() % kColours.size()], static_cast<std::uint16_t>(random() % 3 * 255),
               static_cast<ClrBlendMode>(random() % 4), static_cast<std::int16_t>(random() % 3 * 100),
               static_cast<std::uint8_t>(random() % 2 * 255)});
  stops.SetROP(static_cast<std::int32_t>(random() % 2));
  stops.SetBlendRateMethod(static_cast<ClrBlendRateMethod>(random() % 3));
  stops.SetBlendRateAcceleration(static_cast<double>(random() % 3) - 1.0);
  return stops;
}

TEST(FountainStop, FixedPointNumbersRoundAwayFromZeroAndSaturate)
{
  const struct
  {
    double value;
    int rate, acceleration; // hundredths, ten-thousandths
  } rows[] = {{0.5, 50, 5000},   {0.335, 34, 3350},     {-0.335, -34, -3350},     {0.00005, 0, 1},
              {-0.00005, 0, -1}, {1e300, 32767, 32767}, {-1e300, -32768, -32768}, {kNan, 0, 0}};
  for (const auto &row : rows) {
    Stop stop;
    Stops stops;
    stop.SetBlendRateValue(row.value);
    stops.SetBlendRateAcceleration(row.value);
    EXPECT_EQ(stop.blendRate, row.rate) << row.value;
    EXPECT_EQ(stop.GetBlendRateValue(), row.rate / 100.0) << row.value;
    EXPECT_EQ(stops.GetBlendRateAcceleration(), row.acceleration / 10000.0) << row.value;
  }
}

TEST(FountainStop, Kept_NumbersCompareLowByteFirst)
{
  const int ascending[] = {0, 256, 512, 1, 257, 255, 511, 65535};
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t j = 0; j < std::size(ascending); ++j) {
      const int expected = (i > j) - (i < j);
      const auto number = [&](std::size_t k) { return static_cast<std::uint16_t>(ascending[k]); };
      Stop a, b;
      a.position = number(i), b.position = number(j);
      EXPECT_EQ(a.CompareTo(b, true, false), expected);
      a.position = b.position = 7;
      a.blendRate = static_cast<std::int16_t>(number(i)), b.blendRate = static_cast<std::int16_t>(number(j));
      EXPECT_EQ(a.CompareTo(b, false, false), expected);
      EXPECT_EQ(a.CompareTo(b, true, false), 0);
      // The more important part decides, whatever the rest.
      b.blendMode = ClrBlendMode_Hue;
      EXPECT_LT(a, b);
      a.opacity = 255, b.opacity = 254;
      EXPECT_EQ(a.CompareTo(b, false, false), 1);
      a.colour = kBlue, b.colour = kRed;
      EXPECT_EQ(a.CompareTo(b, false, false), -1);
    }
  }
}

TEST(FountainStop, ReferencesCompareAsTheirColoursWhereAsked)
{
  Stop plain(kRed, 5, ClrBlendMode_Straight, 50, 255), first(plain), second(plain);
  first.colour = tests::Chain(kRed, 2);
  second.colour = tests::Chain(kRed, 1);
  EXPECT_NE(first, second);
  EXPECT_EQ(first.CompareTo(plain, false, false), 1);
  EXPECT_EQ(first.CompareTo(second, false, true), 0);
  EXPECT_EQ(plain.CompareTo(second, false, true), 0);
}

TEST(FountainArray, EqualityIsAnEquivalence)
{
  std::mt19937 random(1);
  std::vector<Stops> pool;
  for (int i = 0; i < 60; ++i)
    pool.push_back(RandomStops(random));
  for (int i = 0; i < 60; ++i) {
    const Stops copy = pool[static_cast<std::size_t>(i)];
    pool.push_back(copy);
  }
  int equal = 0;
  for (const Stops &a : pool) {
    EXPECT_EQ(a, a);
    for (const Stops &b : pool) {
      ASSERT_EQ(a == b, b == a);
      equal += a == b;
      for (const Stops &c : pool)
        ASSERT_FALSE(a == b && b == c && !(a == c));
    }
  }
  EXPECT_GE(equal, 240) << "each with itself and with its copy";
  // Every part counts.
  Stops stops;
  stops.Add(kRed, 1);
  Stops others[6];
  std::fill(std::begin(others), std::end(others), stops);
  others[0].SetROP(1);
  others[1].SetBlendRateMethod(ClrBlendRateMethod_Eased);
  others[2].SetBlendRateAcceleration(0.0001);
  others[3].Add(kRed, 2);
  others[4][0].blendMode = ClrBlendMode_HueBack;
  others[5][0].colour = kBlue;
  for (const Stops &other : others)
    EXPECT_NE(stops, other);
}

TEST(FountainArray, EditsFollowAList)
{
  std::mt19937 random(2);
  Stops stops;
  std::vector<int> model; // positions
  for (int step = 0; step < 4000; ++step) {
    const int index = static_cast<int>(random() % 14) - 2;
    const auto position = static_cast<std::uint16_t>(random());
    const bool inside = index >= 0 && index < static_cast<int>(model.size());
    switch (random() % 6) {
    case 0:
      stops.Insert(index, kRed, position);
      if (index >= 0 && index <= static_cast<int>(model.size()))
        model.insert(model.begin() + index, position);
      break;
    case 1:
      stops.Delete(index);
      if (inside)
        model.erase(model.begin() + index);
      break;
    case 2:
      stops.Add(kRed, position);
      model.push_back(position);
      EXPECT_EQ(stops[stops.GetSize() - 1], Stop(kRed, position, ClrBlendMode_Straight, 50, 255));
      break;
    case 3: // reading never changes it
      EXPECT_EQ(std::as_const(stops)[index].position, inside ? model[static_cast<std::size_t>(index)] : 0);
      break;
    case 4: // writing grows it
      stops[index].position = position;
      if (index >= static_cast<int>(model.size()))
        model.resize(static_cast<std::size_t>(index) + 1);
      if (index >= 0)
        model[static_cast<std::size_t>(index)] = position;
      break;
    default:
      stops.SetSize(index);
      model.resize(static_cast<std::size_t>(std::max(index, 0)));
      break;
    }
    ASSERT_EQ(PositionsOf(stops), model) << step;
  }
}

TEST(FountainArray, SizesBeyondAllUseAreRefused)
{
  Stops stops(std::numeric_limits<int>::max());
  EXPECT_EQ(stops.GetSize(), int{Stops::kMostStops});
  stops.Add(kRed, 1);
  EXPECT_EQ(stops.SetColorAtPosition(9, kRed), std::pair(-1, false));
  EXPECT_EQ(stops.GetSize(), int{Stops::kMostStops});
  Stops small(-5);
  small[std::numeric_limits<int>::max()].position = 3;
  small[-1].position = 3;
  EXPECT_TRUE(small.IsEmpty());
  EXPECT_EQ(small[-1].position, 0) << "what is written nowhere is not kept";
}

TEST(FountainArray, ColourAtAPosition)
{
  Stops stops;
  stops.Add({kRed, 10, ClrBlendMode_Hue, 30, 7});
  stops.Add(kRed, 300);
  EXPECT_EQ(stops.SetColorAtPosition(10, kBlue), std::pair(0, false));
  EXPECT_EQ(stops[0], Stop(kBlue, 10, ClrBlendMode_Hue, 30, 7));
  EXPECT_EQ(stops.SetColorAtPosition(256, kBlue), std::pair(1, true)) << "as numbers, not as bytes";
  EXPECT_EQ(stops.SetColorAtPosition(0, kRed), std::pair(0, true));
  EXPECT_EQ(stops.SetColorAtPosition(301, stops[2].colour), std::pair(4, true));
  EXPECT_EQ(PositionsOf(stops), (std::vector{0, 10, 256, 300, 301}));
  EXPECT_EQ(stops[4], Stop(kBlue, 301, ClrBlendMode_Straight, 50, 255));
}

TEST(FountainArray, ReversingMirrorsAndTwiceIsTheSame)
{
  Stops stops;
  stops.Add({kRed, 0, ClrBlendMode_Hue, 20, 255});
  stops.Add({kBlue, 30, ClrBlendMode_Straight, 70, 128});
  stops.Add({kRed, 100, ClrBlendMode_HueBack, 33, 0});
  stops.Reverse();
  EXPECT_EQ(stops[0], Stop(kRed, 0, ClrBlendMode_Straight, 30, 0));
  EXPECT_EQ(stops[1], Stop(kBlue, 70, ClrBlendMode_HueBack, 80, 128));
  EXPECT_EQ(stops[2], Stop(kRed, 100, ClrBlendMode_Hue, 20, 255));

  std::mt19937 random(3);
  for (int round = 0; round < 300; ++round) {
    Stops fill = RandomStops(random);
    if (round % 2 == 0)
      fill.SortByIndex();
    Stops twice = fill;
    twice.Reverse();
    twice.Reverse();
    if (fill.GetSize() > 1) { // the last stop's blend has no effect and is not kept
      Stop &last = fill[fill.GetSize() - 1];
      last.blendMode = twice[fill.GetSize() - 1].blendMode;
      last.blendRate = twice[fill.GetSize() - 1].blendRate;
    }
    ASSERT_EQ(fill, twice) << round;
  }
}

TEST(FountainArray, SortingIsByNumberAndStable)
{
  Stops stops;
  for (const int position : {256, 1, 300, 1, 0})
    stops.Add(C::MakeGRAY(static_cast<std::uint8_t>(stops.GetSize())), static_cast<std::uint16_t>(position));
  stops.SortByIndex();
  EXPECT_EQ(PositionsOf(stops), (std::vector{0, 1, 1, 256, 300}));
  EXPECT_EQ(stops[1].colour, C::MakeGRAY(1));
  EXPECT_EQ(stops[2].colour, C::MakeGRAY(3));
}

TEST(FountainArray, QuestionsLookAtWhatHasAnEffect)
{
  for (const int changed : {0, 1}) { // of two stops, the last one's blend is not asked
    Stops stops;
    stops.Add(kRed, 0);
    stops.Add(kBlue, 9);
    EXPECT_FALSE(stops.HasHSBBlends() || stops.HasMovedMidpoint() || stops.HasNonLinearBlends(false) ||
                 stops.IsTransparent());
    stops[changed].blendMode = ClrBlendMode_HueBack;
    stops[changed].blendRate = 51;
    EXPECT_EQ(stops.HasHSBBlends(), changed == 0);
    EXPECT_EQ(stops.HasMovedMidpoint(), changed == 0);
    EXPECT_EQ(stops.HasNonLinearBlends(true), changed == 0);
    stops[changed].opacity = 254;
    EXPECT_TRUE(stops.IsTransparent()) << "any stop's";
    stops[changed].blendMode = static_cast<ClrBlendMode>(3);
    EXPECT_FALSE(stops.HasHSBBlends());
  }
  Stops single;
  single.Add({kRed, 0, ClrBlendMode_Hue, 20, 255});
  single.SetBlendRateAcceleration(0.5);
  EXPECT_FALSE(single.HasHSBBlends() || single.HasMovedMidpoint() || single.HasNonLinearBlends(false) ||
               single.IsTransparent());
  single.SetROP(-1);
  EXPECT_TRUE(single.IsTransparent());
  single.Add(kBlue, 3);
  single[0].blendRate = 50;
  EXPECT_TRUE(single.HasNonLinearBlends(false));
  EXPECT_FALSE(single.HasNonLinearBlends(true));
}

} // namespace
