// The laws that the kinds of tints keep, and what becomes of colours of every model.
#include "tests/fills/support/tints.h"
#include "zelclr/colour/fills/fountain_sampling.h"
#include "zelclr/convert/w_clr_convert.h"

#include <random>

using C = CLR_COLORSPEC;
using tests::TintOf;
namespace ClrModel = ZelClr::ClrModel;

namespace {

class TintKinds : public tests::Tints
{
protected:
  const SpotColorDefinition warm{L"Warm", L"inks", C::MakeCMYK100(0, 80, 100, 0)};
  const C spot40 = C::MakeSPOT(23, 5, 40, &warm);
  const C orange = C::MakeRGB(200, 100, 0), blue = C::MakeRGB(0, 50, 250);
};

std::vector<int> Rgb(const C &colour)
{
  return {colour.GetRed(), colour.GetI255(), colour.GetBlue()};
}

int Gray(const C &colour)
{
  return WClrConvert::ConvertRGBtoGray(colour.GetRed(), colour.GetI255(), colour.GetBlue());
}

std::vector<C> RandomColours(int count, int least = 0, int most = 255)
{
  std::mt19937 random(11);
  const auto component = [&] {
    return static_cast<std::uint8_t>(least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1)));
  };
  std::vector<C> colours{C::MakeRGB(0, 0, 0), C::MakeRGB(255, 255, 255), C::MakeRGB(255, 0, 0), C::MakeRGB(0, 0, 3)};
  if (least > 0)
    colours.clear();
  while (static_cast<int>(colours.size()) < count)
    colours.push_back(C::MakeRGB(component(), component(), component()));
  return colours;
}

TEST_F(TintKinds, Table)
{
  // For levels above and below 0: whether colours become RGB255, and whether gradients may be tinted by their stops.
  const struct
  {
    int kind;
    bool isRgb, isRgbBelow, doesGradients;
    int samePairAs;
  } rows[] = {
    {0, false, false, true, 0},   {1, true, true, true, 1},    {2, true, true, true, 2},   {3, true, true, true, 3},
    {4, false, true, true, 4},    {5, false, false, false, 5}, {6, true, true, true, 2},   {7, true, true, false, 7},
    {8, true, true, false, 8},    {9, true, true, false, 8},   {10, true, true, false, 8}, {11, false, false, true, 2},
    {255, false, false, true, 2},
  };
  ASSERT_EQ(ZelClr::TintKinds().size(), 11u);
  for (const auto &row : rows) {
    SCOPED_TRACE(row.kind);
    EXPECT_EQ(ZelClr::FindTintKind(static_cast<std::uint8_t>(row.kind)).number, row.kind);
    for (const int level : {1, 1000, -1, -1000}) {
      TINT_LIST list;
      TNTAddTintToListEnd(&list, TNTGetNewTint(orange, level, static_cast<unsigned char>(row.kind)));
      EXPECT_EQ(TNTTintListIsRGB(&list), level > 0 ? row.isRgb : row.isRgbBelow);
      EXPECT_EQ(TNTTintListDoesGradFills(&list), row.doesGradients);
      TNTAddTintToListEnd(&list, TNTGetNewTint(orange, level, 0));
      EXPECT_EQ(TNTTintListDoesGradFills(&list), row.doesGradients);
    }
    for (const auto &other : rows) {
      const TINT a = TintOf(row.kind, 1, orange), b = TintOf(other.kind, 1, orange);
      EXPECT_EQ(a.colourOperation == b.colourOperation && a.pixelOperation == b.pixelOperation,
                row.samePairAs == other.samePairAs)
        << other.kind;
    }
  }
}

TEST_F(TintKinds, ColoursGetTheModelThatTheTableSays)
{
  const std::vector<C> colours = {C::MakeCMYK(10, 100, 0, 0),
                                  C::MakeCMYK255(255, 0, 3, 0),
                                  C::MakeCMYK100(10, 90, 0, 0),
                                  C::MakeCMY(1, 200, 3),
                                  C::MakeRGB(255, 0, 10),
                                  C::MakeHSB(200, 90, 80),
                                  C::MakeHLS(200, 90, 80),
                                  C::MakeGRAY(3),
                                  C::MakeYIQ255(200, 120, 80),
                                  C::MakeLAB(250, -90, 90),
                                  C::MakeLAB255(250, 20, 230),
                                  C::MakeXYZ(10, 20, 200),
                                  C::MakeRGB48(65535, 1, 2),
                                  C::MakeGRAY16(9),
                                  C::MakeSCRGB(0.1f, 0.5f, 1),
                                  C::MakeRGBA(255, 0, 10, 7),
                                  C::MakeBGRA(255, 0, 10, 7),
                                  C::MakeBW(0),
                                  C::MakeHEX(1, 255, 3, 4, 5, 6),
                                  C::MakeREGCOLOR(),
                                  spot40,
                                  C::MakeUserInks(9, 8, 7, 90),
                                  tests::DeviceNColour(DeviceN_Process_CMYK, 80),
                                  tests::DeviceNColour(DeviceN_Process_RGB, 80)};
  for (int kind = 0; kind <= 10; ++kind) {
    for (const int level : {-1000, -600, -1, 1, 600, 1000}) {
      TINT_LIST list;
      TNTAddTintToListEnd(&list, TNTGetNewTintFor6(orange, level, static_cast<unsigned char>(kind), blue));
      for (const C &colour : colours) {
        C tinted(colour);
        ASSERT_EQ(TNTApplyTintListToCS(&list, &tinted, context), 1) << kind << " " << level << " " << colour.GetType();
        // A tint that mixes in another colour than white takes an ink off its plate.
        const bool isMixed = kind == 0 && level != 1 && level != -1 && !WClrConvert::IsBasicType(colour.GetType()) &&
                             colour.GetType() != ClrModel::DeviceN;
        const unsigned expected = TNTTintListIsRGB(&list) == 1 ? unsigned{ClrModel::Rgb255}
                                  : isMixed                    ? tinted.GetType()
                                                               : unsigned{colour.GetType()};
        EXPECT_EQ(tinted.GetType(), expected) << "kind " << kind << ", level " << level << ", " << colour.GetType();
        EXPECT_TRUE(!isMixed || WClrConvert::IsBasicType(tinted.GetType()));
      }
    }
  }
}

TEST_F(TintKinds, ColoursInTheirOwnModel)
{
  const C white = C::MakeRGB(255, 255, 255), none;
  const struct
  {
    int kind, level;
    C aim, colour, expected;
  } rows[] = {
    {0, 500, white, C::MakeCMYK100(0, 50, 100, 0), C::MakeCMYK100(0, 25, 50, 0)},
    {0, 500, C::MakeCMYK255(0, 255, 0, 0), C::MakeCMYK100(0, 50, 100, 0), C::MakeCMYK100(0, 75, 50, 0)},
    {0, -1000, orange, C::MakeCMYK255(9, 8, 7, 6), C::MakeCMYK255(0, 0, 0, 0)},
    {0, -500, orange, spot40, C::MakeSPOT(23, 5, 20, &warm)},
    {0, 500, white, spot40, C::MakeSPOT(23, 5, 20, &warm)},
    {0, 500, C::MakeSPOT(23, 5, 100, &warm), spot40, C::MakeSPOT(23, 5, 70, &warm)},
    {0, 1000, C::MakeRGBA(1, 2, 3, 4), C::MakeRGBA(10, 20, 30, 77), C::MakeRGBA(1, 2, 3, 77)},
    {4, 500, none, C::MakeCMYK255(200, 100, 0, 55), C::MakeCMYK255(100, 50, 0, 28)},
    {4, 500, none, C::MakeRGB48(65535, 1, 2), C::MakeRGB48(65535, 32768, 32769)},
    {4, 1000, none, C::MakeBGRA(10, 20, 30, 77), C::MakeBGRA(255, 255, 255, 77)},
    {4, 1000, none, C::MakeBW(0), C::MakeBW(1)},
    {4, 100, none, C::MakeBW(0), C::MakeBW(0)},
    {4, 500, none, C::MakeREGCOLOR(),
     [] {
       C half = C::MakeREGCOLOR();
       half.SetDensity(50);
       return half;
     }()},
    {5, 1000, none, spot40, C::MakeSPOT(23, 5, 60, &warm)},
    {5, 1000, none, C::MakeGRAY(10), C::MakeGRAY(245)},
    {5, -1000, none, C::MakeGRAY16(9), C::MakeGRAY16(65526)},
    {5, 1000, none, C::MakeCMY(1, 200, 3), C::MakeCMY(254, 55, 252)},
    {5, 1000, none, C::MakeRGBA(1, 200, 3, 4), C::MakeRGBA(254, 55, 252, 4)},
    {5, 1000, none, C::MakeBW(0), C::MakeBW(1)},
    {5, -1000, none, C::MakeRGB48(65535, 0, 1000), C::MakeRGB48(65535, 0, 1000)},
    {5, -1000, none, C::MakeRGB48(60000, 100, 1000), C::MakeRGB48(65435, 5535, 6435)},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const C tinted = Tinted(TintOf(rows[i].kind, rows[i].level, rows[i].aim), rows[i].colour);
    EXPECT_EQ(tinted, rows[i].expected) << "row " << i;
    EXPECT_EQ(tinted.GetDensity(), rows[i].expected.GetDensity()) << "row " << i;
  }
  const C plates = tests::DeviceNColour(DeviceN_Process_CMYK, 80);
  EXPECT_EQ(Tinted(TintOf(4, 500, none), plates).GetDeviceN()->GetValues().back(), 40u);
  EXPECT_EQ(Tinted(TintOf(0, 500, C::MakeCMYK100(0, 0, 0, 100)), plates).GetDeviceN()->GetValues(),
            (std::vector<std::uint32_t>{0, 0, 0, 50, 40}));

  // A reference's colour stays as it is for its other holders.
  const C shared = C::MakeReference(C::MakeCMYK100(0, 50, 100, 0));
  EXPECT_EQ(Tinted(TintOf(4, 500, none), shared), C::MakeCMYK100(0, 25, 50, 0));
  EXPECT_EQ(shared.GetReference()->GetI255(), 50);
}

TEST_F(TintKinds, LevelsLeadSteadilyFromNoEffectToTheFullOne)
{
  for (int kind = 0; kind <= 10; ++kind) {
    for (const C &colour : RandomColours(30)) {
      for (const int direction : {-1, 1}) {
        std::vector<std::vector<int>> steps;
        for (int level = 0; level <= 1000; level += 40)
          steps.push_back(Rgb(Tinted(TintOf(kind, direction * level, orange, blue), colour)));
        EXPECT_EQ(steps.front(), Rgb(colour)) << kind;
        for (std::size_t i = 1; i < steps.size(); ++i) {
          for (std::size_t c = 0; c < 3; ++c)
            EXPECT_GE((steps[i][c] - steps[i - 1][c]) * (steps.back()[c] - steps.front()[c]), 0)
              << "kind " << kind << ", step " << i << ", component " << c;
        }
      }
    }
  }
}

TEST_F(TintKinds, GradientsMayBeTintedByTheirStops)
{
  const auto blended = [&](const C &a, const C &b, double share) {
    C made;
    EXPECT_TRUE(CMGBlendColorSpec(made, a, b, share, ClrBlendMode_Straight, true, context));
    return made;
  };
  const auto colours = RandomColours(24, 80, 175); // so that brightness cuts nothing off
  for (int kind = 0; kind <= 10; ++kind) {
    if (!ZelClr::FindTintKind(static_cast<std::uint8_t>(kind)).doesGradients)
      continue;
    for (const int level : {-300, 137, 300}) {
      const TINT tint = TintOf(kind, level, orange, blue);
      for (std::size_t i = 1; i < colours.size(); ++i) {
        C from = colours[i - 1], to = colours[i];
        if (kind == 0 && i % 2 == 0) { // inks, too
          ASSERT_TRUE(WClrConvert::ConvertColorSpec(&from, ClrModel::Cmyk255, &colours[i - 1], context));
          ASSERT_TRUE(WClrConvert::ConvertColorSpec(&to, ClrModel::Cmyk255, &colours[i], context));
        }
        for (const double share : {0.1, 0.5, 0.75}) {
          const C one = Tinted(tint, blended(from, to, share)),
                  other = blended(Tinted(tint, from), Tinted(tint, to), share);
          ASSERT_EQ(one.GetType(), other.GetType());
          for (std::size_t c = 0; c < 4; ++c) // four roundings of a half, two before the effect and two behind it
            EXPECT_LE(std::abs(one.GetRAWColor()[c] - other.GetRAWColor()[c]), c == 3 && !from.IsCMYK() ? 255 : 2)
              << "kind " << kind << ", level " << level;
        }
      }
    }
  }
}

TEST_F(TintKinds, InversionsUndoThemselves)
{
  const TINT negative = TintOf(5, 1000, orange), turned = TintOf(5, -1000, orange);
  for (const C &colour : RandomColours(500)) {
    EXPECT_EQ(Tinted(negative, Tinted(negative, colour)), colour);
    const auto from = Rgb(colour), to = Rgb(Tinted(turned, colour));
    EXPECT_EQ(Tinted(turned, Tinted(turned, colour)), colour);
    EXPECT_EQ(to[0] - to[1], from[0] - from[1]) << "hue and chroma stay";
    EXPECT_EQ(to[1] - to[2], from[1] - from[2]) << "hue and chroma stay";
    EXPECT_EQ(std::max({to[0], to[1], to[2]}), 255 - std::min({from[0], from[1], from[2]}));
  }
}

TEST_F(TintKinds, TonesKeepTheGrayAndMeetTheirColour)
{
  for (const C &tone : RandomColours(60)) {
    const TINT tint = TintOf(7, 1000, tone);
    EXPECT_EQ(Tinted(tint, tone), tone);
    EXPECT_EQ(Tinted(TintOf(7, -1000, orange, tone), tone), tone);
    for (const C &colour : RandomColours(60))
      EXPECT_NEAR(Gray(Tinted(tint, colour)), Gray(colour), 2) << testing::PrintToString(Rgb(tone));
    EXPECT_EQ(Rgb(Tinted(tint, C::MakeRGB(255, 255, 255))), (std::vector{255, 255, 255}));
  }
  for (const C &colour : RandomColours(60)) // without a second colour it is the gray itself
    EXPECT_EQ(Rgb(Tinted(TintOf(7, -1000, orange), colour)), std::vector(3, Gray(colour)));
}

TEST_F(TintKinds, MapsAreFountains)
{
  const C pairs[][2] = {
    {orange, blue}, {blue, orange}, {C::MakeRGB(0, 0, 0), orange}, {C::MakeRGB(10, 200, 30), orange}};
  for (const auto &[from, to] : pairs) {
    for (const auto mode : {ClrBlendMode_Straight, ClrBlendMode_Hue, ClrBlendMode_HueBack}) {
      CLR_FOUNTCOLOR_ARRAY fountain;
      fountain.Add({from, 0, mode, 50, 255});
      fountain.Add(to, 255);
      const auto samples = CMGMakeInterColorSpecs(fountain, 256, context, false);
      for (std::size_t shade = 0; shade < 256; ++shade) {
        const auto byte = static_cast<std::uint8_t>(shade);
        const C colour = C::MakeRGB(byte, byte, byte);
        const auto mapped = Rgb(Tinted(TintOf(8 + mode, 1000, from, to), colour));
        for (std::size_t c = 0; c < 3; ++c) // each rounds by itself
          ASSERT_NEAR(mapped[c], Rgb(samples[shade])[c], 1) << "mode " << mode << ", " << shade;
        ASSERT_EQ(Rgb(Tinted(TintOf(8 + mode, -1000, to, from), colour)), mapped) << "a level below 0 turns it round";
      }
    }
  }
  EXPECT_EQ(Rgb(Tinted(TintOf(8, 1000, orange), C::MakeRGB(255, 255, 255))), (std::vector{255, 255, 255}));
}

TEST_F(TintKinds, FailuresLeaveTheColourWhateverItIs)
{
  const auto pool = tests::NastyColours();
  for (std::size_t i = 0; i < pool.size(); ++i) {
    for (int kind = 0; kind <= 11; ++kind) {
      const int level = static_cast<int>(i % 5) * 500 - 1000;
      const TINT tint = TintOf(kind, level, pool[(i * 7 + 5) % pool.size()], pool[(i * 3 + 1) % pool.size()]);
      C colour(pool[i]);
      std::uint8_t pixel[] = {1, 2, 3};
      if (!tint.colourOperation(tint, colour, context)) {
        EXPECT_EQ(colour, pool[i]) << "kind " << kind;
      } else if (colour.GetType() == ClrModel::Rgb255 && tint.level256 != 0) {
        EXPECT_EQ(colour.GetPaletteGuid(), ZelUtils::Guid()) << "kind " << kind;
      }
      if (!tint.pixelOperation(tint, pixel, 1, context)) {
        EXPECT_EQ((std::vector<int>{pixel[0], pixel[1], pixel[2]}), (std::vector{1, 2, 3})) << "kind " << kind;
      }
    }
  }
}

} // namespace
