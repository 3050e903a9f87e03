// What colours blend in, and the blends themselves.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/colours.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colour/fills/fountain_blending.h"
#include "zelclr/colour/fills/internal/blend_curve.h"
#include "zelclr/convert/w_clr_convert.h"

#include <cmath>
#include <limits>

using C = CLR_COLORSPEC;
namespace ClrModel = ZelClr::ClrModel;

namespace {

class FountainBlending : public tests::ShippedProfiles
{
protected:
  static unsigned SpaceOf(const std::vector<C> &colours, bool keepInks)
  {
    CLR_FOUNTCOLOR_ARRAY fountain;
    for (const C &colour : colours)
      fountain.Add(colour, 0);
    return CMGGetBlendColorSpace(fountain, keepInks);
  }
  C Blended(const C &a, const C &b, double share, ClrBlendMode mode = ClrBlendMode_Straight, bool keepInks = true)
  {
    C made;
    EXPECT_TRUE(CMGBlendColorSpec(made, a, b, share, mode, keepInks, context)) << a.GetType() << " " << b.GetType();
    return made;
  }
  C Brought(const C &colour, unsigned model)
  {
    C made;
    EXPECT_TRUE(WClrConvert::ConvertColorSpec(&made, model, &colour, context));
    return made;
  }

  ColorSystem::ColorContext context{srgb, swop, gray, ColorSystem::ColorModel::Cmyk,
                                    ColorSystem::RenderingIntent::RelativeColorimetric};
  const SpotColorDefinition warm{L"Warm", L"inks", C::MakeCMYK100(0, 80, 100, 0)};
  const SpotColorDefinition glow{L"Glow", L"inks", C::MakeRGB(255, 240, 0)};
  const C spot100 = C::MakeSPOT(23, 5, 100, &warm), spot40 = C::MakeSPOT(23, 5, 40, &warm),
          glowing = C::MakeSPOT(23, 6, 100, &glow);
};

TEST_F(FountainBlending, SpaceOfColours)
{
  using namespace ClrModel;
  const C red = C::MakeRGB(255, 0, 0), white = C::MakeRGB(255, 255, 255), paper = C::MakeCMYK255(0, 0, 0, 0);
  const C ink = C::MakeCMYK100(0, 50, 100, 0), labColour = C::MakeLAB(200, 20, -20);
  const C plates = tests::DeviceNColour(DeviceN_Process_CMYK, 40),
          others = tests::DeviceNColour(DeviceN_Process_RGB, 40), bare = tests::DeviceNColour(DeviceN_Process_None, 40);
  const struct
  {
    std::vector<C> colours;
    unsigned withInks, process;
  } rows[] = {
    {{}, 0, 0},
    {{red}, Rgb255, Rgb255},
    {{tests::Chain(red, 2), red}, Rgb255, Rgb255},
    {{C::MakeHSB(0, 255, 255), C::MakeHSB(120, 255, 255)}, Rgb255, Rgb255},
    {{C::MakeHLS(0, 128, 255)}, Rgb255, Rgb255},
    {{C::MakeBW(0), C::MakeBW(1)}, Gray255, Gray255},
    {{C::MakeGRAY(3), C::MakeGRAY16(3)}, Gray16, Gray16},
    {{C::MakeGRAY(3), red}, Rgb255, Rgb255},
    {{C::MakeGRAY16(3), red}, Rgb48, Rgb48},
    {{red, C::MakeRGB48(1, 2, 3)}, Rgb48, Rgb48},
    {{red, C::MakeRGBA(1, 2, 3, 4)}, Rgb255, Rgb255},
    {{C::MakeRGBA(1, 2, 3, 4)}, Rgba, Rgba},
    {{C::MakeSCRGB(0.1f, 2.0f, 0.0f)}, ScRgb, ScRgb},
    {{labColour, labColour}, Lab, Lab},
    {{labColour, C::MakeXYZ(1, 2, 3)}, Lab255, Lab255},
    {{labColour, red, C::MakeGRAY16(3)}, Lab255, Lab255},
    {{ink, ink}, Cmyk100, Cmyk100},
    {{ink, paper}, Cmyk255, Cmyk255},
    {{ink, red, labColour}, Cmyk255, Cmyk255},
    {{C::MakeCMY(1, 2, 3), C::MakeCMY(3, 2, 1)}, Cmy255, Cmy255},
    {{ink, C::MakeHEX(1, 2, 3, 4, 5, 6)}, Hexachrome, Hexachrome},
    {{spot100, spot40}, Spot, Cmyk255},
    {{spot100, white}, Spot, Cmyk255},
    {{spot100, ink}, Cmyk255, Cmyk255},
    {{spot100, glowing}, Cmyk255, Cmyk255},
    {{glowing}, Spot, Rgb255},
    {{C::MakePANTONE(9, 100), C::MakePANTONE(9, 20)}, Pantone, 0},
    {{C::MakePANTONE(9, 100), C::MakePANTONE(8, 20)}, 0, 0},
    {{C::MakeUserInks(9, 8, 7, 100), C::MakeUserInks(9, 8, 7, 20)}, UserInks, Rgb255},
    {{C::MakeUserInks(9, 8, 7, 100), C::MakeUserInks(9, 8, 6, 20)}, Rgb255, Rgb255},
    {{C::MakeREGCOLOR(), paper}, Registration, Cmyk255},
    {{plates, tests::DeviceNColour(DeviceN_Process_CMYK, 10)}, DeviceN, Cmyk255},
    {{plates, red, white}, DeviceN, Cmyk255},
    {{plates, others}, Cmyk255, Cmyk255},
    {{others, white}, DeviceN, Rgb255},
    {{bare, white}, DeviceN, Cmyk255},
    {{bare, red}, Cmyk255, Cmyk255},
    {{C::CLRMakeIndex(3), red}, 0, 0},
    {{C(), red}, 0, 0},
    {{C::MakeSPOT(23, 5, 40, nullptr), red}, 0, 0},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(SpaceOf(rows[i].colours, true), rows[i].withInks) << "row " << i;
    EXPECT_EQ(SpaceOf(rows[i].colours, false), rows[i].process) << "row " << i;
  }
}

/// Two colours of every model that can blend, as different as it allows.
std::vector<std::pair<C, C>> PairsOfEveryModel()
{
  return {{C::MakeCMYK(10, 100, 0, 0), C::MakeCMYK(90, 0, 50, 30)},
          {C::MakeCMYK255(255, 0, 3, 0), C::MakeCMYK255(0, 9, 250, 128)},
          {C::MakeCMYK100(10, 100, 0, 0), C::MakeCMYK100(90, 0, 50, 30)},
          {C::MakeCMY(1, 200, 3), C::MakeCMY(255, 0, 77)},
          {C::MakeRGB(255, 0, 10), C::MakeRGB(0, 200, 255)},
          {C::MakeGRAY(3), C::MakeGRAY(250)},
          {C::MakeYIQ255(200, 120, 80), C::MakeYIQ255(20, 90, 130)},
          {C::MakeLAB(250, -100, 90), C::MakeLAB(20, 100, -127)},
          {C::MakeLAB255(250, 20, 230), C::MakeLAB255(40, 220, 0)},
          {C::MakeXYZ(10, 20, 200), C::MakeXYZ(240, 255, 9)},
          {C::MakeHEX(1, 255, 3, 4, 5, 6), C::MakeHEX(200, 0, 0, 9, 255, 255)},
          {C::MakeREGCOLOR(), C::MakeREGCOLOR()},
          {C::MakeUserInks(9, 8, 7, 100), C::MakeUserInks(9, 8, 7, 3)},
          {C::MakeIndexedUserInks(2, 100), C::MakeIndexedUserInks(2, 5)},
          {C::MakePANTONE(9, 0), C::MakePANTONE(9, 100)},
          {C::MakePANTONEHEX(12, 9, 0), C::MakePANTONEHEX(12, 9, 100)},
          {C::MakeRGB48(65535, 1, 2), C::MakeRGB48(0, 40000, 65535)},
          {C::MakeGRAY16(9), C::MakeGRAY16(65535)},
          {C::MakeSCRGB(-3.0f, 0.1f, 1e30f), C::MakeSCRGB(0.5f, 1e-30f, 1.0f)},
          {C::MakeRGBA(255, 0, 10, 0), C::MakeRGBA(0, 200, 255, 255)},
          {C::MakeBGRA(255, 0, 10, 0), C::MakeBGRA(0, 200, 255, 255)},
          {tests::DeviceNColour(DeviceN_Process_CMYK, 0), tests::DeviceNColour(DeviceN_Process_CMYK, 100)},
          {tests::DeviceNColour(DeviceN_Process_RGB, 90), tests::DeviceNColour(DeviceN_Process_RGB, 3)}};
}

/// What is interpolated.
std::vector<double> NumbersOf(const C &colour)
{
  std::vector<double> numbers;
  if (const WClrColorDeviceN *value = colour.GetDeviceN())
    numbers.assign(value->GetValues().begin(), value->GetValues().end());
  for (const auto &component : ZelClr::FindColourModel(colour.GetType())->components)
    numbers.push_back(ZelClr::WithComponentType(component.type, [&](auto zero) {
      return static_cast<double>(colour.GetComponent<decltype(zero)>(component.offset));
    }));
  return numbers;
}

TEST_F(FountainBlending, StraightBlendsOfEveryModelMeetTheirEndsAndNeverTurn)
{
  for (const auto &[a, b] : PairsOfEveryModel()) {
    SCOPED_TRACE(a.GetType());
    EXPECT_EQ(Blended(a, b, 0.0), a);
    EXPECT_EQ(Blended(a, b, 1.0), b);
    EXPECT_EQ(Blended(a, b, -7.0), a);
    EXPECT_EQ(Blended(a, b, 7.0), b);
    EXPECT_EQ(Blended(a, b, std::numeric_limits<double>::quiet_NaN()), a);
    const auto from = NumbersOf(a), to = NumbersOf(b);
    auto last = from;
    for (int step = 1; step <= 100; ++step) {
      const C blend = Blended(a, b, step / 100.0);
      ASSERT_EQ(blend.GetType(), a.GetType());
      const auto numbers = NumbersOf(blend);
      for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double rise = to[i] - from[i];
        ASSERT_GE((numbers[i] - last[i]) * rise, 0.0) << "component " << i << ", step " << step;
        const double unit = a.GetType() == ClrModel::ScRgb ? std::abs(rise) * 1e-6 + 1e-30 : 0.5;
        ASSERT_NEAR(numbers[i], from[i] + rise * step / 100.0, unit + 1e-9) << "component " << i << ", step " << step;
      }
      last = numbers;
    }
  }
}

TEST_F(FountainBlending, RatiosMixAsBlendsDo)
{
  for (const auto &[a, b] : PairsOfEveryModel()) {
    SCOPED_TRACE(a.GetType());
    const C colours[] = {a, b, a};
    C mixed;
    for (const double share : {0.0, 0.25, 0.5, 0.99, 1.0}) {
      // Of the whole, and of any sum however large; the first colour's part lies in two places.
      for (const double scale : {1.0, 3.0, 1e308}) {
        const double ratios[] = {(1.0 - share) / 4.0 * scale, share * scale, (1.0 - share) * 0.75 * scale};
        ASSERT_TRUE(CMGBlendColorSpecByRatios(mixed, colours, ratios, true, context));
        const auto numbers = NumbersOf(mixed), expected = NumbersOf(Blended(a, b, share));
        for (std::size_t i = 0; i < numbers.size(); ++i)
          ASSERT_NEAR(numbers[i], expected[i], a.GetType() == ClrModel::ScRgb ? std::abs(expected[i]) * 1e-5 : 1.0);
      }
    }
    for (const double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), HUGE_VAL}) {
      ASSERT_TRUE(CMGBlendColorSpecByRatios(mixed, colours, std::vector{none, 2.0, none}, true, context));
      EXPECT_EQ(mixed, b);
      EXPECT_FALSE(CMGBlendColorSpecByRatios(mixed, colours, std::vector{none, none, none}, true, context));
      EXPECT_EQ(mixed, b);
    }
    EXPECT_FALSE(CMGBlendColorSpecByRatios(mixed, colours, std::vector{1.0, 1.0}, true, context));
    EXPECT_FALSE(CMGBlendColorSpecByRatios(mixed, {}, {}, true, context));
  }
}

TEST_F(FountainBlending, InksStayOnTheirPlates)
{
  const C half = Blended(spot100, C::MakeCMYK(0, 0, 0, 0), 0.5);
  EXPECT_EQ(half, C::MakeSPOT(23, 5, 50, &warm)) << "white is its lack";
  EXPECT_EQ(half.GetSpotDefinition(), &warm);
  EXPECT_EQ(Blended(C::MakeRGB(255, 255, 255), C::MakeREGCOLOR(), 0.3).GetDensity(), 30);
  EXPECT_EQ(Blended(spot40, spot40, 0.5, ClrBlendMode_Hue), spot40) << "inks have no hue to go round";

  const C plates = tests::DeviceNColour(DeviceN_Process_CMYK, 80);
  const C white = Blended(plates, C::MakeRGB(255, 255, 255), 0.5);
  EXPECT_EQ(white.GetDeviceN()->GetValues().back(), 40u);
  const C black = Blended(plates, C::MakeCMYK100(0, 0, 0, 100), 0.5);
  EXPECT_EQ(black.GetDeviceN()->GetValues(), (std::vector<std::uint32_t>{0, 0, 0, 50, 40}));
  const C bare = Blended(tests::DeviceNColour(DeviceN_Process_None, 80), C::MakeCMYK(0, 0, 0, 0), 0.25);
  EXPECT_EQ(bare.GetDeviceN()->GetValues().back(), 60u);

  // Without their plates they are what they look like.
  EXPECT_EQ(Blended(spot100, spot100, 0.5, ClrBlendMode_Straight, false), C::MakeCMYK255(0, 204, 255, 0));
  EXPECT_EQ(Blended(C::MakeUserInks(9, 8, 7, 100), C::MakeUserInks(9, 8, 7, 100), 0.5, ClrBlendMode_Straight, false),
            C::MakeRGB(9, 8, 7));
}

TEST_F(FountainBlending, ConversionsAreManagedAndScalesAreKept)
{
  const C red = C::MakeRGB(255, 0, 0), full = C::MakeCMYK100(0, 0, 0, 100), paper = C::MakeCMYK255(0, 0, 0, 0);
  EXPECT_EQ(Blended(red, paper, 0.0), Brought(red, ClrModel::Cmyk255));
  EXPECT_EQ(Blended(full, paper, 0.0), C::MakeCMYK255(0, 0, 0, 255)) << "100 % is no 100 of 255";
  // A colour of a palette that counts as one of spot inks is blended by its components.
  C named = C::MakeCMYK(0, 100, 0, 0);
  named.SetPaletteType(3);
  EXPECT_EQ(Blended(named, paper, 0.0), C::MakeCMYK255(0, 255, 0, 0));
  EXPECT_EQ(Blended(named, C::MakeCMYK(0, 0, 0, 0), 0.0).GetPaletteGuid(), ZelUtils::Guid());
}

TEST_F(FountainBlending, HueGoesRoundTheWheel)
{
  const C red = C::MakeRGB(255, 0, 0), blue = C::MakeRGB(0, 0, 255), green = C::MakeRGB(0, 255, 0);
  EXPECT_EQ(Blended(red, blue, 0.5, ClrBlendMode_Hue), green);
  EXPECT_EQ(Blended(red, blue, 0.5, ClrBlendMode_HueBack), C::MakeRGB(255, 0, 255));
  EXPECT_EQ(Blended(red, green, 0.5, ClrBlendMode_Hue), C::MakeRGB(255, 255, 0));
  EXPECT_EQ(Blended(red, blue, 0.5, static_cast<ClrBlendMode>(7)), Blended(red, blue, 0.5));
  // What has no hue takes the other's: no rainbow on the way.
  for (const C &plain : {C::MakeRGB(255, 255, 255), C::MakeRGB(0, 0, 0)}) {
    for (const double share : {0.1, 0.5, 0.9}) {
      const auto byHue = NumbersOf(Blended(plain, red, share, ClrBlendMode_Hue));
      const auto straight = NumbersOf(Blended(plain, red, share));
      for (std::size_t i = 0; i < 3; ++i) // by way of 16 bits
        EXPECT_NEAR(byHue[i], straight[i], 1.0) << share;
    }
  }
  const C dark = C::MakeRGB(100, 50, 25), light = C::MakeRGB(200, 100, 51);
  for (const auto mode : {ClrBlendMode_Hue, ClrBlendMode_HueBack}) {
    const auto byHue = NumbersOf(Blended(dark, light, 0.5, mode)), straight = NumbersOf(Blended(dark, light, 0.5));
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_NEAR(byHue[i], straight[i], 3.0) << "shades of one hue do not go once round";
  }
}

TEST_F(FountainBlending, HueOfEveryModelMeetsItsEndsMirrorsAndDoesNotJump)
{
  for (const auto &[a, b] : PairsOfEveryModel()) {
    SCOPED_TRACE(a.GetType());
    if (a.GetType() == ClrModel::ScRgb)
      continue; // beyond RGB, where hue says nothing of brightness
    for (const auto mode : {ClrBlendMode_Hue, ClrBlendMode_HueBack}) {
      const auto back = mode == ClrBlendMode_Hue ? ClrBlendMode_HueBack : ClrBlendMode_Hue;
      EXPECT_EQ(Blended(a, b, 0.0, mode), a);
      EXPECT_EQ(Blended(a, b, 1.0, mode), b);
      for (const double share : {0.0001, 0.3, 0.5, 0.9999}) {
        const auto there = NumbersOf(Blended(a, b, share, mode)), backwards = NumbersOf(Blended(b, a, 1 - share, back));
        const auto end = NumbersOf(share < 0.5 ? a : b);
        const bool isDeep = a.GetType() == ClrModel::Rgb48 || a.GetType() == ClrModel::Gray16;
        for (std::size_t i = 0; i < there.size(); ++i) {
          EXPECT_NEAR(there[i], backwards[i], isDeep ? 3.0 : 1.0) << share;
          if (share < 0.01 || share > 0.99) {
            EXPECT_NEAR(there[i], end[i], isDeep ? 100.0 : 1.0) << share;
          }
        }
      }
    }
  }
}

TEST_F(FountainBlending, NothingIsMadeOfWhatHasNoAppearance)
{
  const C kept = C::MakeRGB(1, 2, 3);
  C result = kept;
  for (const C &colour : {C(), C::CLRMakeIndex(1), C::MakeSPOT(23, 5, 40, nullptr), C::MakePANTONE(3, 100)}) {
    EXPECT_FALSE(CMGBlendColorSpec(result, colour, C::MakeRGB(9, 9, 9), 0.5, ClrBlendMode_Hue, true, context));
    EXPECT_EQ(result, kept);
  }
  // Whatever the bytes, blends of any two colours answer.
  const auto pool = tests::NastyColours();
  for (std::size_t i = 0; i < pool.size(); i += 3) {
    const C &other = pool[(i * 7 + 5) % pool.size()];
    for (const bool keepInks : {false, true}) {
      CLR_FOUNTCOLOR_ARRAY fountain;
      fountain.Add(pool[i], 0);
      fountain.Add(other, 9);
      const unsigned model = CMGGetBlendColorSpace(fountain, keepInks);
      result = kept;
      const auto mode = static_cast<ClrBlendMode>(i % 4);
      if (CMGBlendColorSpec(result, pool[i], other, 0.4, mode, keepInks, context))
        EXPECT_EQ(result.GetType(), model);
      else
        EXPECT_EQ(result, kept);
    }
  }
}

TEST(BlendCurve, IsMonotoneMeetsItsEndsAndItsMidpointAndMirrors)
{
  for (const double m : {0.01, 0.1, 0.37, 0.5, 0.8, 0.99}) {
    for (const double a : {-1.0, -0.4, 0.0, 0.7, 1.0}) {
      for (const unsigned method : {0u, 1u, 2u, 77u}) {
        SCOPED_TRACE(testing::Message() << "m " << m << ", a " << a << ", method " << method);
        const ZelClr::BlendCurve curve{m, a, static_cast<ClrBlendRateMethod>(method)};
        const ZelClr::BlendCurve mirrored{1.0 - m, a, curve.method};
        EXPECT_EQ(curve(0.0), 0.0);
        EXPECT_EQ(curve(1.0), 1.0);
        const bool isEven = a == 0.0 || method == 1 || method == 2;
        if (isEven) {
          EXPECT_NEAR(curve(m), 0.5, 1e-12);
        }
        constexpr int kSteps = 20000;
        double last = 0.0, lastSlope = -1.0;
        for (int i = 1; i <= kSteps; ++i) {
          const double t = static_cast<double>(i) / kSteps, w = curve(t), slope = (w - last) * kSteps;
          ASSERT_GE(w, last);
          ASSERT_LE(slope, 220.0); // 2 * (1 - 0.01) / 0.01
          if (lastSlope >= 0.0) {
            ASSERT_NEAR(slope, lastSlope, 6.0) << t; // no corner: one of m = 0.01 would be 49
          }
          if (isEven) {
            ASSERT_NEAR(mirrored(1.0 - t), 1.0 - w, 1e-12);
          }
          if (a == 0.0 && m == 0.5) {
            ASSERT_NEAR(w, t, 1e-15);
          }
          last = w;
          lastSlope = slope;
        }
      }
    }
  }
}

} // namespace
