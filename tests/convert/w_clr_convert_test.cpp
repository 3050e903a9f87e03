#include "tests/support/colours.h"
#include "tests/support/sanitized.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/w_clr_convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

using C = CLR_COLORSPEC;
using W = WClrConvert;
using tests::ColourOfModel;

namespace {

#define ROW(name) #name, W::Convert##name
const struct Row
{
  const char *name;
  W::Converter *convert;
  C source;
  C result;
} kRows[] = {
  {ROW(LAB255ToXYZ), C::MakeLAB255(255, 128, 128), C::MakeXYZ(0, 1, 1)},
  {ROW(LABToXYZ), C::MakeLAB(255, 0, 0), C::MakeXYZ(0, 1, 1)},
  {ROW(XYZToLAB), C::MakeXYZ(1, 1, 1), C::MakeLAB(200, 17, 11)},
  {ROW(XYZToLAB), C::MakeXYZ(0, 0, 0), C::MakeLAB(0, 0, 0)},
  {ROW(XYZToLAB255), C::MakeXYZ(1, 1, 1), C::MakeLAB255(200, 145, 139)},
  {ROW(XYZToRGB), C::MakeXYZ(246, 255, 210), C::MakeRGB(255, 255, 255)},
  {ROW(XYZToRGB), C::MakeXYZ(0, 0, 0), C::MakeRGB(0, 0, 0)},
  {ROW(CMYKToCMYK255), C::MakeCMYK(0, 50, 100, 1), C::MakeCMYK255(0, 128, 255, 3)},
  {ROW(CMYK255ToCMYK), C::MakeCMYK255(0, 128, 255, 1), C::MakeCMYK(0, 50, 100, 0)},
  {ROW(RGB48ToGray16), C::MakeRGB48(65535, 0, 0), C::MakeGRAY16(19594)},
  {ROW(HSBToRGB), C::MakeHSB(120, 255, 128), C::MakeRGB(0, 128, 0)},
  {ROW(HSBToRGB), C::MakeHSB(360, 255, 255), C::MakeRGB(255, 0, 0)},
  {ROW(RGBToRGB48), C::MakeRGB(10, 20, 30), C::MakeRGB48(2570, 5140, 7710)},
  {ROW(RGB48ToRGB), C::MakeRGB48(0x12FF, 0x3400, 0xFFFF), C::MakeRGB(0x12, 0x34, 0xFF)},
  {ROW(GrayToGray16), C::MakeGRAY(7), C::MakeGRAY16(1799)},
  {ROW(Gray16ToGray), C::MakeGRAY16(0x12FF), C::MakeGRAY(0x12)},
  {ROW(HSBToRGB48), C::MakeHSB(360, 255, 255), C::MakeRGB48(65535, 0, 0)},
  {ROW(HLSToRGB), C::MakeHLS(120, 128, 255), C::MakeRGB(1, 255, 1)},
  {ROW(HLSToRGB), C::MakeHLS(0, 127, 255), C::MakeRGB(254, 0, 0)},
  {ROW(HLSToRGB48), C::MakeHLS(0, 255, 0), C::MakeRGB48(65535, 65535, 65535)},
  {ROW(CMY255ToRGB), C::MakeCMY(1, 2, 255), C::MakeRGB(254, 253, 0)},
  {ROW(CMYK255ToRGB), C::MakeCMYK255(200, 0, 0, 100), C::MakeRGB(33, 155, 155)},
  {ROW(CMYK255ToRGB), C::MakeCMYK255(0, 0, 0, 255), C::MakeRGB(0, 0, 0)},
  {ROW(CMY255ToRGB48), C::MakeCMY(0, 255, 128), C::MakeRGB48(65535, 0, 32639)},
  {ROW(CMY255ToCMYK255), C::MakeCMY(1, 2, 3), C::MakeCMYK255(1, 2, 3, 0)},
  {ROW(CMYK255ToCMY255), C::MakeCMYK255(200, 0, 0, 100), C::MakeCMY(222, 100, 100)},
  {ROW(RGB48ToGray), C::MakeRGB48(0x80FF, 0x80FF, 0x80FF), C::MakeGRAY(128)},
  {ROW(GrayToBW), C::MakeGRAY(127), C::MakeBW(0)},
  {ROW(GrayToBW), C::MakeGRAY(128), C::MakeBW(1)},
  {ROW(Gray16ToBW), C::MakeGRAY16(32767), C::MakeBW(0)},
  {ROW(Gray16ToBW), C::MakeGRAY16(32768), C::MakeBW(1)},
  {ROW(HSBToGray), C::MakeHSB(0, 255, 255), C::MakeGRAY(76)},
  {ROW(BWToGray), C::MakeBW(2), C::MakeGRAY(255)},
  {ROW(BWToGray), C::MakeBW(-1), C::MakeGRAY(0)},
  {ROW(BWToGray16), C::MakeBW(1), C::MakeGRAY16(65535)},
  {ROW(BWToRGB), C::MakeBW(1), C::MakeRGB(255, 255, 255)},
  {ROW(BWToRGB48), C::MakeBW(1), C::MakeRGB48(65535, 65535, 65535)},
  {ROW(GrayToRGB), C::MakeGRAY(7), C::MakeRGB(7, 7, 7)},
  {ROW(Gray16ToRGB), C::MakeGRAY16(0x12FF), C::MakeRGB(0x12, 0x12, 0x12)},
  {ROW(GrayToRGB48), C::MakeGRAY(7), C::MakeRGB48(1799, 1799, 1799)},
  {ROW(Gray16ToRGB48), C::MakeGRAY16(300), C::MakeRGB48(300, 300, 300)},
  {ROW(RGBToCMY255), C::MakeRGB(1, 2, 255), C::MakeCMY(254, 253, 0)},
  {ROW(RGB48ToCMY255), C::MakeRGB48(0xFF00, 0, 0x7FFF), C::MakeCMY(0, 255, 128)},
  {ROW(RGBToHSB), C::MakeRGB(255, 128, 0), C::MakeHSB(30, 255, 255)},
  {ROW(RGB48ToHSB), C::MakeRGB48(65535, 0x8080, 0), C::MakeHSB(30, 255, 255)},
  {ROW(RGBToHLS), C::MakeRGB(255, 128, 0), C::MakeHLS(30, 127, 255)},
  {ROW(RGB48ToHLS), C::MakeRGB48(65535, 0x8080, 0), C::MakeHLS(30, 127, 255)},
  {ROW(RGB48ToYIQ255), C::MakeRGB48(65535, 65535, 65535), C::MakeYIQ255(255, 100, 100)},
  {ROW(YIQ255ToRGB48), C::MakeYIQ255(255, 100, 100), C::MakeRGB48(65535, 65535, 65535)},
  {ROW(LABToLAB255), C::MakeLAB(1, -128, 127), C::MakeLAB255(1, 0, 255)},
  {ROW(LAB255ToLAB), C::MakeLAB255(1, 0, 255), C::MakeLAB(1, -128, 127)},
  {ROW(RGBToGray), C::MakeRGB(255, 0, 0), C::MakeGRAY(76)},
  {ROW(RGBToGray16), C::MakeRGB(255, 255, 255), C::MakeGRAY16(65280)},
  {ROW(RGBToYIQ255), C::MakeRGB(255, 0, 0), C::MakeYIQ255(76, 176, 127)},
  {ROW(YIQ255ToRGB), C::MakeYIQ255(100, 100, 100), C::MakeRGB(101, 100, 100)},
  {ROW(SCRGBToRGB), C::MakeSCRGB(0.5f, 2, -1), C::MakeRGB(128, 255, 0)},
  {ROW(SCRGBToRGB), C::MakeSCRGB(NAN, INFINITY, -INFINITY), C::MakeRGB(0, 255, 0)},
  {ROW(SCRGBToRGB48), C::MakeSCRGB(0.5f, 2, -1), C::MakeRGB48(32768, 65535, 0)},
  {ROW(RGBToSCRGB), C::MakeRGB(255, 51, 0), C::MakeSCRGB(1, 0.2f, 0)},
  {ROW(RGB48ToSCRGB), C::MakeRGB48(65535, 0, 13107), C::MakeSCRGB(1, 0, 0.2f)},
  {ROW(RGBAToRGB), C::MakeRGBA(1, 2, 3, 4), C::MakeRGB(1, 2, 3)},
  {ROW(RGBAToBGRA), C::MakeRGBA(1, 2, 3, 4), C::MakeBGRA(1, 2, 3, 4)},
  {ROW(RGBToRGBA), C::MakeRGB(1, 2, 3), C::MakeRGBA(1, 2, 3, 255)},
  {ROW(RGB48ToRGBA), C::MakeRGB48(0x01FF, 0x02FF, 0x03FF), C::MakeRGBA(1, 2, 3, 255)},
  {ROW(BGRAToRGB), C::MakeBGRA(1, 2, 3, 4), C::MakeRGB(1, 2, 3)},
  {ROW(BGRAToRGBA), C::MakeBGRA(1, 2, 3, 4), C::MakeRGBA(1, 2, 3, 4)},
  {ROW(RGBToBGRA), C::MakeRGB(1, 2, 3), C::MakeBGRA(1, 2, 3, 255)},
  {ROW(RGB48ToBGRA), C::MakeRGB48(0x01FF, 0x02FF, 0x03FF), C::MakeBGRA(1, 2, 3, 255)},
  {ROW(HexToRGB), C::MakeHEX(0, 0, 0, 0, 255, 0), C::MakeRGB(255, 128, 0)},
};
#undef ROW

void ExpectSame(const C &found, const C &expected)
{
  EXPECT_EQ(found.GetType(), expected.GetType());
  EXPECT_EQ(found, expected);
}

TEST(WClrConvert, RecordConverters)
{
  for (const Row &row : kRows) {
    SCOPED_TRACE(testing::Message() << row.name << " of " << testing::PrintToString(row.source));
    C inPalette(row.source);
    inPalette.SetPaletteType(23);
    for (const C &source : {inPalette, tests::Chain(inPalette, 2)}) {
      C destination = tests::Chain(C::MakeGRAY(1), 2);
      row.convert(&destination, &source);
      ExpectSame(destination, row.result);
      EXPECT_TRUE(destination.GetPaletteGuid().IsNull());
      C both(source);
      row.convert(&both, &both);
      ExpectSame(both, row.result);
    }
    for (unsigned model = 0; model <= 31; ++model) {
      C destination = tests::DeviceNColour(DeviceN_Process_RGB, 1);
      const C wrong = ColourOfModel(model, {1});
      row.convert(&destination, &wrong);
      EXPECT_EQ(destination.IsInvalid(), model != row.source.GetType()) << model;
      EXPECT_TRUE(destination.GetPaletteGuid().IsNull());
    }
  }
}

TEST(WClrConvert, Kept_XyzOfLabIsTruncatedToWholeNumbers)
{
  std::set<int> found;
  for (int l = 0; l < 256; ++l) {
    const C lab = C::MakeLAB(static_cast<std::uint8_t>(l), 0, 0);
    C xyz;
    W::ConvertLABToXYZ(&xyz, &lab);
    EXPECT_EQ(xyz.GetI255(), l == 255 ? 1 : 0) << l;
  }
}

TEST(WClrConvert, Kept_LabOfXyzIsDoubledAndRepeatsAWhereZIsSmall)
{
  const C xyz = C::MakeXYZ(8, 8, 0);
  C lab;
  W::ConvertXYZToLAB(&lab, &xyz);
  EXPECT_EQ(lab, C::MakeLAB(432 - 256, 34, 34)); // L 216; a 500 (2.0345 - 2)
  const C cube = C::MakeXYZ(0, 64, 0);
  W::ConvertXYZToLAB(&lab, &cube);
  EXPECT_EQ(lab.GetComponent<std::uint8_t>(0), (2 * (116 * 4 - 16)) % 256) << "the cube root of 64 is 4";
}

TEST(WClrConvert, Kept_RelabellingDoesNotScale)
{
  const C source = C::MakeReference(C::MakeCMYK255(200, 0, 0, 0));
  C destination;
  EXPECT_TRUE(W::CopyOrRelabel(&destination, 17, &source));
  ExpectSame(destination, C::MakeCMYK100(200, 0, 0, 0));
  EXPECT_TRUE(W::CopyOrRelabel(&destination, 3, &destination));
  ExpectSame(destination, C::MakeCMYK255(200, 0, 0, 0));
  EXPECT_FALSE(W::CopyOrRelabel(&destination, 2, &source));
  for (const unsigned model : {1u, 13u, 20u, 21u, 22u}) {
    const C same = ColourOfModel(model, {1});
    EXPECT_FALSE(W::CopyOrRelabel(&destination, model, &same)) << model;
  }
  C reference(source);
  EXPECT_TRUE(W::CopyOrRelabel(&reference, 3, &reference));
  EXPECT_FALSE(reference.IsReference());
}

const std::set<unsigned> kBasic = {2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 15, 17, 18, 19, 23, 24, 27, 29, 30};

TEST(WClrConvert, OnlyBasicModelsAreTargetsAndAFailureTouchesNothing)
{
  const C rgb = C::MakeRGB(1, 2, 3);
  for (unsigned model = 0; model <= 70000; ++model) {
    C destination = C::MakeGRAY(77);
    const bool done = W::ConvertToBasicType(&destination, model, &rgb);
    ASSERT_EQ(done, kBasic.count(model) != 0) << model;
    ASSERT_EQ(destination.GetType(), done ? model : 9) << model;
  }
  for (const C &noAppearance :
       {C(), C::MakePANTONE(1, 1), C::CLRMakeIndex(1), C::MakeSPOT(3, 1, 1, nullptr), C::MakeDEVICEN(nullptr),
        C::MakeIndexedUserInks(9, 9), ColourOfModel(10, {1}), ColourOfModel(31, {1}), ColourOfModel(28, {1})})
  {
    C destination = C::MakeGRAY(77);
    EXPECT_FALSE(W::ConvertToBasicType(&destination, 5, &noAppearance)) << testing::PrintToString(noAppearance);
    EXPECT_EQ(destination, C::MakeGRAY(77));
    EXPECT_FALSE(W::GetColorDistance(rgb, noAppearance));
    EXPECT_FALSE(W::ConvertColorSpecToCOLORREF(noAppearance));
  }
}

TEST(WClrConvert, BlackAndWhiteAndGrayStayInEveryPairOfModels)
{
  for (const unsigned from : kBasic) {
    for (const unsigned to : kBasic) {
      for (const int level : {0, 51, 255}) {
        if (level == 51 && (from == 8 || to == 8))
          continue;
        SCOPED_TRACE(testing::Message() << from << " to " << to << " of gray " << level);
        const auto byte = static_cast<std::uint8_t>(level);
        const C gray = C::MakeRGB(byte, byte, byte);
        C source, destination, rgb;
        ASSERT_TRUE(W::ConvertToBasicType(&source, from, &gray));
        ASSERT_TRUE(W::ConvertToBasicType(&destination, to, &source));
        ASSERT_EQ(destination.GetType(), to);
        ASSERT_TRUE(W::ConvertToBasicType(&rgb, 5, &destination));
        // Two steps through percentages or the bytes of Lab and XYZ; the dark end of XYZ has the coarsest bytes.
        const int tolerance = level == 51 ? (from == 19 || to == 19 ? 12 : 4) : 1;
        EXPECT_NEAR(rgb.GetRed(), level, tolerance);
        EXPECT_NEAR(rgb.GetI255(), level, tolerance);
        EXPECT_NEAR(rgb.GetBlue(), level, tolerance);
      }
    }
  }
}

TEST(WClrConvert, BetweenModelsByLiteralValues)
{
  const SpotColorDefinition definition(L"", L"", C::MakeRGB(0, 100, 200));
  const struct
  {
    C source;
    C result;
  } kPairs[] = {
    {C::MakeRGB(255, 128, 0), C::MakeCMYK100(0, 50, 100, 0)},
    {C::MakeCMYK100(0, 50, 100, 0), C::MakeRGB(255, 127, 0)},
    {C::MakeCMYK100(0, 50, 100, 20), C::MakeCMYK255(0, 128, 255, 51)},
    {C::MakeCMYK(10, 20, 30, 40), C::MakeCMYK100(10, 20, 30, 40)},
    {C::MakeCMYK255(255, 0, 0, 0), C::MakeHEX(255, 0, 0, 0, 0, 0)},
    {C::MakeRGB(255, 0, 0), C::MakeLAB(138, 127, 127)}, // a 80.81 and b 69.89 are beyond the record
    {C::MakeRGB(255, 0, 0), C::MakeXYZ(111, 57, 4)},
    {C::MakeRGB48(0x1234, 0x1234, 0x1234), C::MakeSCRGB(0x1234 / 65535.0f, 0x1234 / 65535.0f, 0x1234 / 65535.0f)},
    {C::MakeGRAY(200), C::MakeBW(1)},
    {C::MakeSPOT(3, 1, 50, &definition), C::MakeRGB(127, 177, 227)},
    {C::MakeSPOT(3, 1, 0, &definition), C::MakeCMYK100(0, 0, 0, 0)},
    {C::MakeUserInks(0, 100, 200, 50), C::MakeRGB(127, 177, 227)},
    {C::MakeREGCOLOR(), C::MakeCMYK(100, 100, 100, 100)},
  };
  for (const auto &pair : kPairs) {
    SCOPED_TRACE(testing::PrintToString(pair.source));
    C found;
    ASSERT_TRUE(W::ConvertToBasicType(&found, pair.result.GetType(), &pair.source));
    ExpectSame(found, pair.result);
  }
}

TEST(WClrConvert, AReferenceConvertsAsItsColour)
{
  for (const C &colour : tests::NastyColours()) {
    if (colour.IsReference())
      continue;
    const C reference = C::MakeReference(colour);
    SCOPED_TRACE(testing::PrintToString(colour));
    EXPECT_TRUE(W::ColorsAreSame(colour, reference));
    EXPECT_EQ(W::ConvertColorSpecToCOLORREF(colour), W::ConvertColorSpecToCOLORREF(reference));
    EXPECT_EQ(W::IsAchromaticColor(colour), W::IsAchromaticColor(reference));
    EXPECT_EQ(W::IsAchromaticWhite(colour), W::IsAchromaticWhite(reference));
    EXPECT_EQ(W::CanTreatColorAsGrayscale(colour), W::CanTreatColorAsGrayscale(reference));
    C one, two;
    EXPECT_EQ(W::ConvertToDeviceN(&one, &colour), W::ConvertToDeviceN(&two, &reference));
    EXPECT_EQ(one, two);
    const auto distance = W::GetColorDistance(colour, reference);
    EXPECT_EQ(distance.value_or(0.0), 0.0);
  }
}

TEST(WClrConvert, DistanceDependsOnTheColourNotOnItsForm)
{
  const C lab = C::MakeLAB(128, -127, -127);
  const C lab255 = C::MakeLAB255(128, 1, 1);
  EXPECT_EQ(W::GetColorDistance(lab, lab255), 0.0) << "one colour in two forms, outside of sRGB";
  const C beyond = C::MakeLAB(140, -78, -106); // about a press's cyan, outside of sRGB
  C xyz, again;
  ASSERT_TRUE(W::ConvertToBasicType(&xyz, 19, &beyond) && W::ConvertToBasicType(&again, 12, &xyz));
  EXPECT_LT(W::GetColorDistance(beyond, again).value(), 0.5) << "nothing is cut off on the way";
  EXPECT_EQ(W::GetColorDistance(C::MakeCMYK(50, 0, 0, 0), C::MakeCMYK255(128, 0, 0, 0)), 0.0);
  const auto black = W::GetColorDistance(C::MakeGRAY(0), C::MakeRGB(255, 255, 255));
  EXPECT_NEAR(black.value(), 100.0, 0.01); // dL / sL at a mean L of 50
}

TEST(WClrConvert, ThinningGoesFromTheColourToItsWhite)
{
  const std::set<unsigned> inks = {1, 14, 20, 21, 22, 25};
  for (const C &colour : tests::NastyColours()) {
    SCOPED_TRACE(testing::PrintToString(colour));
    const unsigned model = colour.GetType();
    C full(colour);
    W::ApplyDensity(&full, 4000000000u);
    EXPECT_FALSE(full.IsReference());
    EXPECT_TRUE(inks.count(model) || model == 27 || W::ColorsAreSame(full, colour)) << testing::PrintToString(full);
    C none(colour);
    W::ApplyDensity(&none, 0);
    EXPECT_TRUE(!inks.count(model) || none.GetDensity() == 0);
    EXPECT_TRUE((model != 29 && model != 30) || none.GetBlack() == colour.GetBlack()) << "alpha stays";
    EXPECT_TRUE(!kBasic.count(model) || model == 8 || model == 27 || model >= 29 || W::IsAchromaticWhite(none))
      << testing::PrintToString(none);
  }
  C rgb = C::MakeRGB(0, 100, 201);
  W::ApplyDensity(&rgb, 50);
  EXPECT_EQ(rgb, C::MakeRGB(127, 177, 228));
  C spot = C::MakeSPOT(3, 1, 40, nullptr);
  W::ApplyDensity(&spot, 50);
  EXPECT_EQ(spot.GetDensity(), 20);
}

TEST(WClrConvert, WhatIsAchromatic)
{
  const struct
  {
    C colour;
    bool achromatic, white, gray;
  } kQuestions[] = {
    {C::MakeRGB(9, 9, 9), true, false, true},
    {C::MakeRGB(9, 9, 8), false, false, false},
    {C::MakeCMYK100(0, 0, 0, 50), true, false, true},
    {C::MakeCMYK100(9, 9, 9, 0), true, false, false},
    {C::MakeCMYK100(0, 0, 0, 0), true, true, true},
    {C::MakeHSB(90, 0, 255), true, true, true},
    {C::MakeHSB(90, 9, 255), false, false, false},
    {C::MakeHLS(90, 255, 99), true, true, true},
    {C::MakeYIQ255(9, 100, 100), true, false, true},
    {C::MakeLAB(255, 0, 0), true, true, true},
    {C::MakeLAB255(9, 128, 129), false, false, false},
    {C::MakeREGCOLOR(), true, false, false},
    {C::MakeSPOT(3, 1, 0, nullptr), true, true, true},
    {C::MakeSPOT(3, 1, 1, nullptr), false, false, false},
    {C::MakeBW(0), true, false, true},
    {C(), false, false, false},
    {C::MakeXYZ(246, 255, 210), true, true, true},
    {C::MakeRGBA(255, 255, 255, 0), true, true, true},
  };
  for (const auto &row : kQuestions) {
    EXPECT_EQ(W::IsAchromaticColor(row.colour), row.achromatic) << testing::PrintToString(row.colour);
    EXPECT_EQ(W::IsAchromaticWhite(row.colour), row.white) << testing::PrintToString(row.colour);
    EXPECT_EQ(W::CanTreatColorAsGrayscale(row.colour), row.gray) << testing::PrintToString(row.colour);
  }
}

TEST(WClrConvert, EveryModelNumberIsSafeInEveryOperation)
{
  std::vector<C> others = {C(), C::MakeCMYK(1, 2, 3, 4), tests::Chain(C::MakeRGB(1, 2, 3), 2),
                           tests::DeviceNColour(DeviceN_Process_CMYK, 9)};
  for (unsigned model = 0; model <= 65535; ++model) {
    // Past the models with a meaning all numbers take one path; a coarser step is enough where each is slow.
    if (tests::kSanitized && model > 2000 && model < 65000 && model % 7 != 0)
      continue;
    const C colour = ColourOfModel(model, {0xA5, 0x5A, 0xFF});
    const C holder = C::MakeReference(colour);
    for (const C *each : {&colour, &holder}) {
      C copy(*each), target;
      for (const Row &row : kRows)
        row.convert(&target, each);
      for (const unsigned to : {2u, 5u, 12u, 15u, 23u, 27u, 8u})
        W::ConvertToBasicType(&target, to, each);
      W::ConvertToCMXColor(&target, each);
      ASSERT_LE(target.GetType(), 12) << model;
      W::ConvertToValidDuotone(&target, each);
      W::ConvertToDeviceN(&target, each);
      ASSERT_LE(W::SplitDeviceN(target).size(), 2u) << model;
      W::CopyOrRelabel(&target, model, each);
      for (const C &other : others) {
        ASSERT_EQ(each->CompareTo(other) > 0, other.CompareTo(*each) < 0) << model;
        W::CompareColors(*each, other);
        W::GetColorDistance(other, *each);
      }
      ASSERT_EQ(copy.GetType(), each->GetType());
      static_cast<void>(ZelClr::TextFromColorSpec(*each));
      W::IsAchromaticWhite(*each);
      W::CanTreatColorAsGrayscale(*each);
      C::MakeProcessFromUserInks(*each, target);
      static_cast<void>(copy.CreateSpotDefinition(L"", L""));
      static_cast<void>(copy.GetSpotColorName());
      copy.SetDensity(50);
      copy.SetReferenceColorValue(holder);
      C::MakeWhite(copy);
      W::ApplyDensity(&copy, 30);
      copy.BreakReference();
      copy.SetType(static_cast<std::uint16_t>(model + 1));
      others[0] = copy;
    }
  }
}

} // namespace
