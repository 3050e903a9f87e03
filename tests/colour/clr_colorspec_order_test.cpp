#include "tests/support/colours.h"

#include <gtest/gtest.h>

#include <algorithm>

using C = CLR_COLORSPEC;
using tests::ColourOfModel;

namespace {

int Sign(int number)
{
  return (number > 0) - (number < 0);
}

// A relation is a total preorder exactly when every pair compares as the numbers of colours that precede each.
TEST(ClrColorspecOrder, IsATotalPreorderOverTheNastiestColours)
{
  const std::vector<C> pool = tests::NastyColours();
  std::vector<int> rank(pool.size());
  for (std::size_t i = 0; i < pool.size(); ++i)
    rank[i] =
      static_cast<int>(std::count_if(pool.begin(), pool.end(), [&](const C &c) { return c.CompareTo(pool[i]) < 0; }));
  for (std::size_t i = 0; i < pool.size(); ++i) {
    for (std::size_t j = 0; j < pool.size(); ++j) {
      ASSERT_EQ(Sign(pool[i].CompareTo(pool[j])), Sign(rank[i] - rank[j])) << testing::PrintToString(pool[i]) << "\n"
                                                                           << testing::PrintToString(pool[j]);
    }
  }
}

C InPalette(C colour, unsigned paletteType)
{
  colour.SetPaletteType(static_cast<std::uint16_t>(paletteType));
  return colour;
}

TEST(ClrColorspecOrder, ComparesAsEachModelSays)
{
  static const SpotColorDefinition kDefinition(L"", L"", C());
  constexpr std::uint16_t kTru = 1;     // {720D9300-...}: bytes 00 93 0D 72
  constexpr std::uint16_t kPanSpot = 3; // {A47941A5-...}: bytes A5 41 79 A4
  const struct
  {
    C a;
    C b;
    int sign;
  } kRows[] = {
    // Different models by number; the CMYK family counts as 2.
    {C::MakeXYZ(0, 0, 0), C::MakeREGCOLOR(), -1},
    {C::MakeCMYK100(0, 0, 0, 0), C::MakeCMY(255, 255, 255), -1},
    {C::MakeCMYK255(0, 0, 0, 0), C::MakePANTONE(1, 1), 1},
    // The CMYK family.
    {C::MakeCMYK(1, 2, 3, 4), C::MakeCMYK(1, 2, 3, 5), -1},
    {C::MakeCMYK(100, 0, 0, 0), C::MakeCMYK255(255, 0, 0, 0), 0},
    {C::MakeCMYK(50, 0, 0, 0), C::MakeCMYK255(128, 0, 0, 0), 0},
    {C::MakeCMYK(50, 0, 0, 0), C::MakeCMYK255(127, 255, 0, 0), 1},
    {InPalette(C::MakeCMYK(1, 2, 3, 4), 9), C::MakeCMYK(1, 2, 3, 4), 0},
    // Three-byte models.
    {C::MakeCMY(1, 255, 0), C::MakeCMY(2, 0, 0), -1},
    {C::MakeYIQ255(1, 255, 0), C::MakeYIQ255(2, 0, 0), -1},
    {C::MakeRGB(1, 255, 255), C::MakeRGB(2, 0, 0), -1},
    {C::MakeRGB(1, 1, 255), C::MakeRGB(1, 2, 0), -1},
    {ColourOfModel(5, {1, 2, 3, 4}), ColourOfModel(5, {1, 2, 3, 9}), 0},
    {C::MakeLAB(1, -1, 0), C::MakeLAB(1, 1, 0), -1},
    {C::MakeLAB(128, 0, 0), C::MakeLAB(127, 0, 0), 1},
    {C::MakeLAB255(1, 255, 0), C::MakeLAB255(1, 1, 0), 1},
    // Hue signed, the bytes as whole percentages.
    {C::MakeHSB(-1, 0, 0), C::MakeHSB(0, 0, 0), -1},
    {C::MakeHSB(5, 0, 0), C::MakeHSB(5, 1, 0), 0},
    {C::MakeHSB(5, 1, 0), C::MakeHSB(5, 2, 0), -1},
    {C::MakeHLS(5, 100, 254), C::MakeHLS(5, 100, 255), 0},
    {C::MakeHLS(5, 200, 0), C::MakeHLS(5, 100, 255), 1},
    // Numbers.
    {C::MakeBW(-1), C::MakeBW(0), -1},
    {C::MakeGRAY(128), C::MakeGRAY(127), 1},
    {C::MakeGRAY16(0x0100), C::MakeGRAY16(0x00FF), 1},
    {InPalette(C::MakeREGCOLOR(), 9), C::MakeREGCOLOR(), 0},
    {ColourOfModel(20, {0, 0, 0, 0, 50}), ColourOfModel(20, {100, 100, 100, 100, 49}), 1},
    {C::MakeUserInks(255, 255, 1, 0), C::MakeUserInks(0, 0, 2, 0), -1}, // byte 0 is blue
    {C::MakeRGBA(1, 2, 3, 4), C::MakeRGBA(1, 2, 3, 5), -1},
    {C::MakeBGRA(255, 0, 1, 0), C::MakeBGRA(0, 0, 2, 0), -1},
    // Bytes in storage order.
    {C::MakeRGB48(0xFFFF, 0, 0x0001), C::MakeRGB48(0, 0, 0x0002), -1},
    {C::MakeRGB48(0, 0, 0x0100), C::MakeRGB48(0, 0, 0x00FF), -1},
    {C::MakeHEX(1, 2, 3, 4, 5, 6), C::MakeHEX(1, 2, 3, 4, 5, 7), -1},
    {ColourOfModel(15, {100, 7, 1, 2, 3, 4, 5, 6}), C::MakeHEX(1, 2, 3, 4, 5, 6), 0},
    {C::MakePANTONE(0x0100, 1), C::MakePANTONE(0x00FF, 1), -1},
    // Palettes count only here.
    {InPalette(C::MakePANTONE(5, 0), kTru), InPalette(C::MakePANTONE(1, 0), kPanSpot), -1},
    {InPalette(C::MakeIndexedUserInks(5, 0), kTru), InPalette(C::MakeIndexedUserInks(1, 0), kPanSpot), -1},
    {C::MakeIndexedUserInks(-1, 0), C::MakeIndexedUserInks(1, 0), 1},
    {C::MakeSPOT(kTru, 5, 0, nullptr), C::MakeSPOT(kPanSpot, 1, 0, nullptr), -1},
    {C::MakeSPOT(kTru, -1, 0, nullptr), C::MakeSPOT(kTru, 1, 0, nullptr), -1},
    {C::MakeSPOT(kTru, 1, 0x00FF, nullptr), C::MakeSPOT(kTru, 1, 0x0100, nullptr), -1},
    {C::MakeSPOT(kTru, 1, 1, nullptr), C::MakeSPOT(kTru, 1, 1, &kDefinition), -1},
    {C::MakeSPOT(kTru, 1, 1, &kDefinition), C::MakeSPOT(kTru, 1, 1, &kDefinition), 0},
    // DeviceN, models without meaning, references.
    {C::MakeDEVICEN(nullptr), tests::DeviceNColour(DeviceN_Process_None, 0), -1},
    {tests::DeviceNColour(DeviceN_Process_CMYK, 3), tests::DeviceNColour(DeviceN_Process_CMYK, 3), 0},
    {ColourOfModel(10, {0}), ColourOfModel(10, {255}), 0},
    {ColourOfModel(31, {0}), ColourOfModel(31, {255}), 0},
    {C::MakeReference(C()), ColourOfModel(65535, {0}), 1},
    {C(), C(), 0},
  };
  for (const auto &row : kRows) {
    EXPECT_EQ(Sign(row.a.CompareTo(row.b)), row.sign) << testing::PrintToString(row.a) << "\n"
                                                      << testing::PrintToString(row.b);
    EXPECT_EQ(Sign(row.b.CompareTo(row.a)), -row.sign) << testing::PrintToString(row.a) << "\n"
                                                       << testing::PrintToString(row.b);
  }
}

TEST(ClrColorspecOrder, SaturationAndItsLikeCompareAsRoundedPercentages)
{
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      const auto percent = [](int byte) { return (byte * 200 + 255) / 510; };
      const auto x = static_cast<std::uint8_t>(a);
      const auto y = static_cast<std::uint8_t>(b);
      const int expected = Sign(percent(a) - percent(b));
      ASSERT_EQ(Sign(C::MakeHSB(9, x, 0).CompareTo(C::MakeHSB(9, y, 0))), expected) << a << " " << b;
      ASSERT_EQ(Sign(C::MakeHLS(9, 0, x).CompareTo(C::MakeHLS(9, 0, y))), expected) << a << " " << b;
    }
  }
}

TEST(ClrColorspecOrder, ReferencesAreTheirSharedColour)
{
  const C one = C::MakeReference(C::MakeGRAY(5));
  const C same(one);
  const C other = C::MakeReference(C::MakeGRAY(5));
  EXPECT_EQ(one, same);
  EXPECT_NE(one, other);
  EXPECT_NE(one < other, other < one);
}

TEST(ClrColorspecOrder, Kept_Cmyk100StandsUnscaledBesideCmyk)
{
  EXPECT_EQ(C::MakeCMYK(50, 0, 0, 0), C::MakeCMYK100(128, 0, 0, 0));
  EXPECT_GT(C::MakeCMYK(50, 0, 0, 0), C::MakeCMYK100(50, 0, 0, 0));
}

TEST(ClrColorspecOrder, Kept_ScRgbComparesTheBytesOfItsFloats)
{
  EXPECT_GT(C::MakeSCRGB(-1, 0, 0), C::MakeSCRGB(1, 0, 0));
  EXPECT_LT(C::MakeSCRGB(1.0f, 0, 0), C::MakeSCRGB(0.1f, 0, 0)); // 00 00 80 3F, CD CC CC 3D
  EXPECT_NE(C::MakeSCRGB(-0.0f, 0, 0), C::MakeSCRGB(0, 0, 0));
}

} // namespace
