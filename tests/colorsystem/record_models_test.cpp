// Record models and the models of managed colours; the ways between a record and its canonical form.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/simple_color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <map>

using namespace ColorSystem;
using C = CLR_COLORSPEC;
using Simple = SimpleColorConverter;

namespace {

TEST(RecordModels, AreMadeOfModelsOnTheirScales)
{
  const std::map<unsigned, std::pair<unsigned, double>> kRows = {
    {1, {8, 255}},  {2, {1, 100}},  {3, {1, 255}},   {4, {4, 255}},   {5, {0, 255}},    {6, {6, 255}},
    {7, {5, 255}},  {8, {2, 1}},    {9, {2, 255}},   {11, {11, 255}}, {12, {3, 255}},   {15, {7, 255}},
    {17, {1, 255}}, {18, {3, 255}}, {19, {12, 255}}, {20, {10, 100}}, {23, {0, 65535}}, {24, {2, 65535}},
    {25, {8, 255}}, {27, {0, 1}},   {29, {0, 255}},  {30, {0, 255}}};
  for (unsigned type = 0; type <= 40; ++type) {
    const auto row = kRows.find(type);
    ColorModel model = ColorModel::Hls;
    double fullScale = -1.0;
    ASSERT_EQ(Simple::ColorTypeToColorModel(type, model, fullScale), row != kRows.end()) << type;
    if (row == kRows.end()) {
      EXPECT_EQ(model, ColorModel::Hls) << type;
      continue;
    }
    EXPECT_EQ(static_cast<unsigned>(model), row->second.first) << type;
    EXPECT_EQ(fullScale, row->second.second) << type;
  }
}

TEST(RecordModels, OfModelsAreThoseThatTheLibraryMakes)
{
  const std::map<unsigned, unsigned> kRows = {{0, 5}, {1, 3}, {2, 9},  {3, 18},  {4, 4},
                                              {5, 7}, {6, 6}, {7, 15}, {10, 20}, {12, 19}};
  for (unsigned model = 0; model <= 40; ++model) {
    const auto row = kRows.find(model);
    unsigned type = 99;
    double fullScale = -1.0;
    EXPECT_EQ(Simple::ColorModelToColorType(static_cast<ColorModel>(model), type, fullScale), row != kRows.end());
    EXPECT_EQ(type, row == kRows.end() ? 0 : row->second) << model;
    EXPECT_EQ(fullScale, model == 10 ? 100.0 : 255.0) << model;
  }
}

TEST(RecordModels, HaveOneCanonicalModelForAFamily)
{
  const std::map<unsigned, unsigned> kRows = {{2, 3},   {4, 3},   {17, 3},  {6, 5},   {7, 5},   {8, 24}, {9, 24},
                                              {11, 23}, {27, 23}, {12, 18}, {19, 18}, {29, 29}, {30, 29}};
  for (unsigned type = 0; type <= 40; ++type) {
    const auto row = kRows.find(type);
    EXPECT_EQ(Simple::NormalizeColorType(type), row == kRows.end() ? type : row->second) << type;
  }
  EXPECT_EQ(Simple::NormalizeColorType(~0u), ~0u);
}

C DeviceNOf(DeviceN_Process_Type base)
{
  return C::MakeDEVICEN(new WClrColorDeviceN(std::make_shared<WClrColorSpaceDeviceN>(0, base), 0));
}

TEST(RecordModels, OfReferencesAndMixturesAreTheirColours)
{
  const auto typeOf = [](const C &colour) { return Simple::GetNormalizedColorSpecType(colour); };
  EXPECT_EQ(typeOf(C()), 0u);
  EXPECT_EQ(typeOf(C::MakeHSB(1, 2, 3)), 6u);
  EXPECT_EQ(typeOf(C::MakeReference(C::MakeReference(C::MakeXYZ(1, 2, 3)))), 19u);
  constexpr std::pair<DeviceN_Process_Type, unsigned> kRows[] = {
    {DeviceN_Process_None, 0}, {DeviceN_Process_RGB, 5}, {DeviceN_Process_CMYK, 2}, {DeviceN_Process_Hexachrome, 2}};
  for (const auto &[base, type] : kRows) {
    EXPECT_EQ(typeOf(DeviceNOf(base)), type) << base;
    EXPECT_EQ(typeOf(C::MakeReference(DeviceNOf(base))), type) << base;
  }
  EXPECT_EQ(typeOf(C::MakeDEVICEN(new WClrColorDeviceN(nullptr, 0))), 26u);
  EXPECT_EQ(typeOf(C::MakeDEVICEN(nullptr)), 26u);
}

TEST(RecordModels, NormalizeToWhatTheirNumbersMean)
{
  const C orange = C::MakeRGB(255, 128, 0), ink = C::MakeCMYK255(0, 128, 255, 51);
  const std::pair<C, C> kRows[] = {
    {C::MakeCMYK(0, 50, 100, 20), C::MakeCMYK255(0, 128, 255, 51)},
    {C::MakeCMYK100(100, 0, 40, 0), C::MakeCMYK255(255, 0, 102, 0)},
    {C::MakeCMY(10, 20, 30), C::MakeCMYK255(10, 20, 30, 0)},
    {ink, ink},
    {orange, orange},
    {C::MakeHSB(120, 255, 255), C::MakeRGB(0, 255, 0)},
    {C::MakeHLS(240, 128, 255), C::MakeRGB(1, 1, 255)},
    {C::MakeGRAY(255), C::MakeGRAY16(65535)},
    {C::MakeBW(0), C::MakeGRAY16(0)},
    {C::MakeLAB(255, 0, 0), C::MakeLAB255(255, 128, 128)},
    {C::MakeLAB(128, 127, -127), C::MakeLAB255(128, 188, 68)}, // a* 60, b* -60
    {C::MakeXYZ(246, 255, 210), C::MakeLAB255(255, 128, 128)}, // white of D50
    {C::MakeXYZ(0, 0, 0), C::MakeLAB255(0, 128, 128)},
    {C::MakeSCRGB(0.0f, 0.0f, 0.0f), C::MakeRGB48(0, 0, 0)},
    {C::MakeBGRA(1, 2, 3, 4), C::MakeRGBA(1, 2, 3, 4)},
    {C::MakeUserInks(255, 0, 0, 50), C::MakeRGB(255, 127, 127)},
    {C::MakeIndexedUserInks(3, 100), C::MakeCMYK255(0, 0, 0, 255)},
    {C::MakeReference(C::MakeCMY(10, 20, 30)), C::MakeCMYK255(10, 20, 30, 0)},
  };
  for (const auto &[colour, expected] : kRows) {
    C normalized;
    ASSERT_TRUE(Simple::NormalizeColorSpec(colour, normalized)) << colour.GetType();
    EXPECT_EQ(normalized, expected) << colour.GetType();
    C itself(colour); // the result may be the colour
    ASSERT_TRUE(Simple::NormalizeColorSpec(itself, itself));
    EXPECT_EQ(itself, expected) << colour.GetType();
  }
  C registration;
  ASSERT_TRUE(Simple::NormalizeColorSpec(C::MakeREGCOLOR(), registration));
  EXPECT_EQ(registration, C::MakeCMYK255(255, 255, 255, 255));
}

TEST(RecordModels, WithoutAnAppearanceLeaveTheResult)
{
  const C before = C::MakeRGB(1, 2, 3);
  for (const C &colour : {C(), C::CLRMakeIndex(3), C::MakePANTONE(7, 50), C::MakeIndexedUserInks(9, 100),
                          C::MakeDEVICEN(nullptr), DeviceNOf(DeviceN_Process_None)})
  {
    C result = before;
    EXPECT_FALSE(Simple::NormalizeColorSpec(colour, result)) << colour.GetType();
    EXPECT_FALSE(Simple::NormalizeSpotColorSpecToProcess(colour, ColorModel::Cmyk, result)) << colour.GetType();
    EXPECT_EQ(result, before);
  }
  C result = before; // another family
  EXPECT_FALSE(Simple::DenormalizeColorSpec(C::MakeCMYK255(1, 2, 3, 4), ZelClr::ClrModel::Rgb255, result));
  EXPECT_FALSE(Simple::DenormalizeColorSpec(C::MakeRGB(1, 2, 3), ZelClr::ClrModel::Gray255, result));
  EXPECT_EQ(result, before);
}

TEST(RecordModels, ComeBackFromTheirCanonicalModel)
{
  for (unsigned v = 0; v <= 255; ++v) {
    const auto a = static_cast<std::uint8_t>(v), b = static_cast<std::uint8_t>(255 - v),
               c = static_cast<std::uint8_t>(v * 7);
    const auto percent = [](std::uint8_t byte) { return static_cast<std::uint8_t>(byte % 101); };
    for (const C &colour :
         {C::MakeCMYK(percent(a), percent(b), percent(c), percent(a)), C::MakeCMYK255(a, b, c, a),
          C::MakeCMYK100(percent(a), percent(b), percent(c), 0), C::MakeCMY(a, b, c), C::MakeRGB(a, b, c),
          C::MakeRGB48(static_cast<std::uint16_t>(v * 257), b, c), C::MakeGRAY(a), C::MakeBW(v % 2), C::MakeGRAY16(c),
          C::MakeLAB255(a, b, c), C::MakeRGBA(a, b, c, 255), C::MakeBGRA(a, b, c, 255), C::MakeHEX(a, b, c, a, b, c)})
    {
      C normalized, back;
      ASSERT_TRUE(Simple::NormalizeColorSpec(colour, normalized)) << colour.GetType();
      EXPECT_EQ(normalized.GetType(), Simple::NormalizeColorType(colour.GetType()));
      ASSERT_TRUE(Simple::DenormalizeColorSpec(normalized, colour.GetType(), back)) << colour.GetType();
      EXPECT_EQ(back, colour) << colour.GetType() << ' ' << v;
    }
  }
}

// In the steps of LAB, which are finer than those of LAB255.
TEST(RecordModels, KeepTheStepsOfLab)
{
  for (int v = -127; v <= 127; ++v) {
    const C fine =
      C::MakeLAB(static_cast<std::uint8_t>(v + 128), static_cast<std::int8_t>(v), static_cast<std::int8_t>(-v));
    C back;
    ASSERT_TRUE(Simple::DenormalizeColorSpec(fine, ZelClr::ClrModel::Lab, back));
    EXPECT_EQ(back, fine);
  }
}

} // namespace
