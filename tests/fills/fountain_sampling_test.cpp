// Fills as runs of colours and opacities.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/colours.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colour/fills/fountain_sampling.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <limits>
#include <random>

using C = CLR_COLORSPEC;
namespace ClrModel = ZelClr::ClrModel;

namespace {

const C kBlack = C::MakeGRAY(0), kWhite = C::MakeGRAY(255), kMiddle = C::MakeGRAY(100);

class FountainSampling : public tests::ShippedProfiles
{
protected:
  std::vector<C> Sampled(const CLR_FOUNTCOLOR_ARRAY &fountain, int count, bool keepInks = true)
  {
    const auto samples = CMGMakeInterColorSpecs(fountain, count, context, keepInks);
    EXPECT_NE(samples, nullptr);
    return samples ? std::vector<C>(samples.get(), samples.get() + count) : std::vector<C>();
  }
  /// Gray levels.
  std::vector<int> Levels(const CLR_FOUNTCOLOR_ARRAY &fountain, int count)
  {
    std::vector<int> levels;
    for (const C &colour : Sampled(fountain, count))
      levels.push_back(colour.GetBlue());
    return levels;
  }
  static std::vector<int> Opacities(const CLR_FOUNTCOLOR_ARRAY &fountain, int count)
  {
    const auto samples = CMGMakeInterColorSpecsTransparency(fountain, count);
    return {samples.get(), samples.get() + count};
  }

  ColorSystem::ColorContext context{srgb, swop, gray, ColorSystem::ColorModel::Cmyk,
                                    ColorSystem::RenderingIntent::RelativeColorimetric};
};

TEST_F(FountainSampling, HitsTheStopsByTheirPositionsAsNumbers)
{
  CLR_FOUNTCOLOR_ARRAY fountain; // the bytes of 256 come before those of 1
  fountain.Add(kMiddle, 256);
  fountain.Add(kWhite, 512);
  fountain.Add(kBlack, 0);
  EXPECT_EQ(Levels(fountain, 5), (std::vector{0, 50, 100, 178, 255}));
  EXPECT_EQ(Levels(fountain, 1), (std::vector{100})) << "one lies in the middle";
  EXPECT_EQ(Levels(fountain, 2), (std::vector{0, 255}));

  std::mt19937 random(4);
  for (int round = 0; round < 100; ++round) { // on a grid of samples, every stop is one of them
    CLR_FOUNTCOLOR_ARRAY fill;
    const auto step = random() % 600 + 1;
    std::vector<int> places, wanted;
    for (unsigned i = 0; i < 5; ++i) {
      const auto place = i * 20 + random() % 20;
      places.push_back(static_cast<int>(place));
      wanted.push_back(static_cast<int>(random() % 256));
      fill.Add({C::MakeGRAY(static_cast<std::uint8_t>(wanted.back())), static_cast<std::uint16_t>(place * step),
                ClrBlendMode_Straight, static_cast<std::int16_t>(random() % 140 - 20), 255});
    }
    std::shuffle(fill.begin(), fill.end(), random);
    fill.SetBlendRateMethod(static_cast<ClrBlendRateMethod>(random() % 3));
    fill.SetBlendRateAcceleration(static_cast<double>(random() % 300) / 100.0 - 1.5);
    const auto levels = Levels(fill, places.back() - places.front() + 1);
    for (std::size_t i = 0; i < places.size(); ++i) {
      const auto at = [&](std::size_t stop) { return levels.begin() + (places[stop] - places.front()); };
      ASSERT_EQ(*at(i), wanted[i]) << round;
      if (i > 0 && wanted[i] >= wanted[i - 1]) {
        ASSERT_TRUE(std::is_sorted(at(i - 1), at(i) + 1)) << round;
      } else if (i > 0) {
        ASSERT_TRUE(std::is_sorted(at(i - 1), at(i) + 1, std::greater<>())) << round;
      }
    }
  }
}

TEST_F(FountainSampling, HardEdgesAndFillsWithoutLength)
{
  CLR_FOUNTCOLOR_ARRAY edge;
  edge.Add({kBlack, 0, ClrBlendMode_Straight, 50, 0});
  edge.Add({kBlack, 50, ClrBlendMode_Straight, 50, 0});
  edge.Add({kWhite, 50, ClrBlendMode_Straight, 50, 255});
  edge.Add({kWhite, 100, ClrBlendMode_Straight, 50, 255});
  EXPECT_EQ(Levels(edge, 6), (std::vector{0, 0, 0, 255, 255, 255}));
  EXPECT_EQ(Levels(edge, 3), (std::vector{0, 0, 255})) << "on the edge, the first colour";
  EXPECT_EQ(Opacities(edge, 6), Levels(edge, 6));
  CLR_FOUNTCOLOR_ARRAY point;
  point.Add(kMiddle, 9);
  EXPECT_EQ(Levels(point, 3), (std::vector{100, 100, 100}));
  point.Add(kWhite, 9);
  EXPECT_EQ(Levels(point, 3), (std::vector{100, 100, 100}));
  EXPECT_EQ(Opacities(point, 3), (std::vector{255, 255, 255}));
}

TEST_F(FountainSampling, ReversedFillsAreMirrored)
{
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    CLR_FOUNTCOLOR_ARRAY fill;
    for (int i = 0; i < 4; ++i) {
      const auto level = [&] { return static_cast<std::uint8_t>(random()); };
      fill.Add({C::MakeRGB(level(), level(), level()), static_cast<std::uint16_t>(i * 300),
                static_cast<ClrBlendMode>(random() % 3), static_cast<std::int16_t>(random() % 99 + 1), level()});
    }
    if (round % 2 == 0) { // the even methods; a steady acceleration has a direction of its own
      fill.SetBlendRateMethod(static_cast<ClrBlendRateMethod>(1 + random() % 2));
      fill.SetBlendRateAcceleration(static_cast<double>(random() % 200) / 100.0 - 1.0);
    }
    CLR_FOUNTCOLOR_ARRAY mirrored = fill;
    mirrored.Reverse();
    const auto there = Sampled(fill, 31), back = Sampled(mirrored, 31);
    const auto opacities = Opacities(fill, 31), opacitiesBack = Opacities(mirrored, 31);
    for (std::size_t i = 0; i < 31; ++i) {
      for (std::size_t byte = 0; byte < 3; ++byte) // halves round up, whichever end they come from
        ASSERT_LE(std::abs(there[i].GetRAWColor()[byte] - back[30 - i].GetRAWColor()[byte]), 1) << round << " " << i;
      ASSERT_LE(std::abs(opacities[i] - opacitiesBack[30 - i]), 1);
    }
  }
}

TEST_F(FountainSampling, ColourAndOpacityMoveTogether)
{
  for (const auto &[rate, acceleration] : {std::pair{50, 0.0}, {20, 0.0}, {50, 1.0}, {-500, -9.0}, {32767, 0.4}}) {
    CLR_FOUNTCOLOR_ARRAY fill;
    fill.Add({kBlack, 0, ClrBlendMode_Straight, static_cast<std::int16_t>(rate), 0});
    fill.Add({kWhite, 65535, ClrBlendMode_Straight, 50, 255});
    fill.SetBlendRateAcceleration(acceleration);
    fill.SetROP(1);
    const auto levels = Levels(fill, 256);
    EXPECT_EQ(Opacities(fill, 256), levels);
    EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
    EXPECT_EQ(levels.front(), 0);
    EXPECT_EQ(levels.back(), 255);
  }
}

TEST_F(FountainSampling, SamplesAreBlendsOfTheStops)
{
  const SpotColorDefinition warm(L"Warm", L"inks", C::MakeCMYK100(0, 80, 100, 0));
  const std::pair<C, C> pairs[] = {{C::MakeRGB(255, 0, 0), C::MakeCMYK100(100, 0, 0, 0)},
                                   {C::MakeSPOT(23, 5, 100, &warm), C::MakeCMYK(0, 0, 0, 0)},
                                   {C::MakeLAB(250, -100, 90), C::MakeLAB(20, 100, -127)},
                                   {C::MakeHSB(10, 255, 255), tests::Chain(C::MakeGRAY(9), 2)},
                                   {tests::DeviceNColour(DeviceN_Process_CMYK, 80), C::MakeRGB(255, 255, 255)}};
  for (const auto &[a, b] : pairs) {
    for (const auto mode : {ClrBlendMode_Straight, ClrBlendMode_Hue, ClrBlendMode_HueBack}) {
      for (const bool keepInks : {true, false}) {
        CLR_FOUNTCOLOR_ARRAY fill;
        fill.Add({a, 0, mode, 50, 255});
        fill.Add(b, 100);
        const auto samples = Sampled(fill, 11, keepInks);
        for (int i = 0; i < 11; ++i) {
          C blend;
          ASSERT_TRUE(CMGBlendColorSpec(blend, a, b, i / 10.0, mode, keepInks, context));
          EXPECT_EQ(samples[static_cast<std::size_t>(i)], blend) << a.GetType() << " " << mode << " " << i;
        }
        EXPECT_EQ(samples[3].GetType(), CMGGetBlendColorSpace(fill, keepInks));
      }
    }
  }
}

TEST_F(FountainSampling, ManyAndNoSamples)
{
  CLR_FOUNTCOLOR_ARRAY fill;
  EXPECT_EQ(CMGMakeInterColorSpecs(fill, 3, context, true), nullptr);
  EXPECT_EQ(CMGMakeInterColorSpecsTransparency(fill, 3), nullptr);
  fill.Add({C::MakeCMYK255(0, 255, 255, 0), 7, ClrBlendMode_Hue, 50, 255});
  fill.Add(C::MakeCMYK255(255, 0, 0, 0), 8);
  for (const int none : {0, -1, kMostFountainSamples + 1, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(CMGMakeInterColorSpecs(fill, none, context, true), nullptr);
    EXPECT_EQ(CMGMakeInterColorSpecsTransparency(fill, none), nullptr);
  }
  // More than are made at once: the same colours at the same places.
  const auto many = Sampled(fill, 10001), few = Sampled(fill, 11);
  for (std::size_t i = 0; i < few.size(); ++i)
    EXPECT_EQ(many[i * 1000], few[i]);
  fill.Add(C::CLRMakeIndex(3), 9);
  EXPECT_EQ(CMGMakeInterColorSpecs(fill, 3, context, true), nullptr);
}

TEST_F(FountainSampling, AnyBytesAreSafe)
{
  std::mt19937 random(6);
  const auto pool = tests::NastyColours();
  for (int round = 0; round < 600; ++round) {
    CLR_FOUNTCOLOR_ARRAY fill;
    for (unsigned i = random() % 4 + 1; i > 0; --i)
      fill.Add({pool[random() % pool.size()], static_cast<std::uint16_t>(random()),
                static_cast<ClrBlendMode>(random() % 4), static_cast<std::int16_t>(random()),
                static_cast<std::uint8_t>(random())});
    fill.SetBlendRateMethod(static_cast<ClrBlendRateMethod>(random()));
    fill.SetBlendRateAcceleration(static_cast<double>(random() % 9) - 4.0);
    const bool keepInks = random() % 2 == 0;
    const auto samples = CMGMakeInterColorSpecs(fill, 7, context, keepInks);
    if (CMGGetBlendColorSpace(fill, keepInks) == 0) {
      EXPECT_EQ(samples, nullptr);
    }
    for (std::size_t i = 0; samples && i < 7; ++i)
      ASSERT_EQ(samples[i].GetType(), CMGGetBlendColorSpace(fill, keepInks));
    EXPECT_NE(CMGMakeInterColorSpecsTransparency(fill, 7), nullptr);
  }
}

} // namespace
