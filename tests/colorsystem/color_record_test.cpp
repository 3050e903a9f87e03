// Between managed colours and records.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/colours.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/typed_colors.h"
#include "zelclr/colour/colour_models.h"

#include <cmath>
#include <limits>

using namespace ColorSystem;
using C = CLR_COLORSPEC;

namespace {

class ColorRecords : public tests::ShippedProfiles
{
protected:
  std::shared_ptr<Color> From(const C &record) const { return Color::ColorSpecToColor(record, context); }
  C ThereAndBack(const C &record) const
  {
    const auto color = From(record);
    return color == nullptr ? C() : static_cast<C>(*color);
  }
  const ColorContext context{srgb, swop, gray, ColorModel::Rgb, RenderingIntent::RelativeColorimetric};
};

TEST_F(ColorRecords, HoldChannelsCutOffToTheirComponents)
{
  const ColorSpace rgb(*srgb), cmyk(*swop);
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  Color grays{ColorSpace(*gray)}, inks{ColorSpace(ColorModel::Cmy, swop)};
  grays.SetChannel(0, 0.5);
  inks.SetChannel(1, 0.999);
  C registration = C::MakeREGCOLOR();
  registration.SetDensity(99);
  const std::pair<C, C> kRows[] = {
    {RgbColor(1.0, 0.5, 0.0, rgb), C::MakeRGB48(65535, 32767, 0)},
    {RgbColor(1.5, -0.1, kNan, rgb), C::MakeRGB48(65535, 0, 0)},
    {CmykColor(1.0, 0.5, 0.999, 2.0, cmyk), C::MakeCMYK255(255, 127, 254, 255)},
    {grays, C::MakeGRAY16(32767)},
    {LabColor(1.0, 0.5, 0.25), C::MakeLAB255(255, 127, 63)},
    {inks, C::MakeCMY(0, 254, 0)},
    {HlsColor(1.0, 0.5, 0.25, rgb), C::MakeHLS(255, 127, 63)},
    {HsvColor(359.0 / 255, 1.0, 0.25, rgb), C::MakeHSB(359, 255, 63)},
    {HexachromeColor(1.0, 0.5, 0.25, 0.0, 0.75, 0.1, ColorSpace(*six)), C::MakeHEX(255, 127, 63, 0, 191, 25)},
    {RegistrationColor(0.999), registration},
    {SpotColor(L"ink", RgbColor(rgb), 1.0), C()},
  };
  for (const auto &[record, expected] : kRows)
    EXPECT_EQ(record, expected);
}

TEST_F(ColorRecords, ComeBackAsTheyWere)
{
  for (unsigned v = 0; v <= 255; ++v) {
    const auto a = static_cast<std::uint8_t>(v), b = static_cast<std::uint8_t>(255 - v),
               c = static_cast<std::uint8_t>(v * 7);
    const auto hue = static_cast<std::int16_t>(v * 359 / 255);
    const auto wide = [](unsigned byte) { return static_cast<std::uint16_t>((byte & 255) * 257); };
    const C rgb48 = C::MakeRGB48(wide(a), wide(b), wide(c));
    const std::pair<C, C> kRows[] = {
      {C::MakeCMYK255(a, b, c, a), C::MakeCMYK255(a, b, c, a)},
      {C::MakeCMY(a, b, c), C::MakeCMY(a, b, c)},
      {C::MakeLAB255(a, b, c), C::MakeLAB255(a, b, c)},
      {C::MakeHEX(a, b, c, a, b, c), C::MakeHEX(a, b, c, a, b, c)},
      {C::MakeHLS(hue, b, c), C::MakeHLS(hue, b, c)},
      {C::MakeHSB(static_cast<std::int16_t>(359 - hue), b, c), C::MakeHSB(static_cast<std::int16_t>(359 - hue), b, c)},
      {C::MakeRGB(a, b, c), rgb48},
      {C::MakeRGBA(a, b, c, 7), rgb48},
      {C::MakeBGRA(a, b, c, 7), rgb48},
      {C::MakeGRAY(a), C::MakeGRAY16(wide(a))},
    };
    for (const auto &[record, expected] : kRows)
      ASSERT_EQ(ThereAndBack(record), expected) << v;
  }
  for (std::uint8_t v = 0; v <= 100; ++v) {
    const auto byte = static_cast<std::uint8_t>(v * 255 / 100),
               other = static_cast<std::uint8_t>((100 - v) * 255 / 100);
    const auto rest = static_cast<std::uint8_t>(100 - v);
    EXPECT_EQ(ThereAndBack(C::MakeCMYK(v, rest, 0, 100)), C::MakeCMYK255(byte, other, 0, 255)) << +v;
    EXPECT_EQ(ThereAndBack(C::MakeCMYK100(v, rest, 0, 100)), C::MakeCMYK255(byte, other, 0, 255)) << +v;
    C registration = C::MakeREGCOLOR();
    registration.SetDensity(v);
    EXPECT_EQ(ThereAndBack(registration), registration) << +v;
  }
  for (unsigned v = 0; v <= 65535; v += tests::kSanitized ? 17 : 1) {
    const auto word = static_cast<std::uint16_t>(v), other = static_cast<std::uint16_t>(65535 - v);
    ASSERT_EQ(ThereAndBack(C::MakeRGB48(word, other, 0)), C::MakeRGB48(word, other, 0)) << v;
    ASSERT_EQ(ThereAndBack(C::MakeGRAY16(word)), C::MakeGRAY16(word)) << v;
  }
  EXPECT_EQ(ThereAndBack(C::MakeSCRGB(0.5f, 2.0f, -1.0f)), C::MakeRGB48(32767, 65535, 0));
  for (const std::int32_t white : {-1, 0, 1, 2}) // as the formulas see it
    EXPECT_EQ(ThereAndBack(C::MakeBW(white)), C::MakeGRAY16(white > 0 ? 65535 : 0)) << white;
}

TEST_F(ColorRecords, Kept_AHueIsItsDegreesDividedBy255AndLab255IsAsProfilesHaveIt)
{
  EXPECT_EQ((*From(C::MakeHSB(359, 0, 0)))[0], 359 / 255.0);
  EXPECT_EQ((*From(C::MakeHLS(300, 0, 0)))[0], 300 / 255.0);
  EXPECT_EQ((*From(C::MakeLAB255(0, 128, 1)))[1], 128 / 255.0);
  EXPECT_EQ((*From(C::MakeLAB255(0, 128, 1)))[2], 1 / 255.0);
}

TEST_F(ColorRecords, OfEveryModelNumberGiveAColourOrNone)
{
  for (unsigned model = 0; model <= 65535; model += tests::kSanitized && model > 40 ? 101 : 1) {
    const auto color = From(tests::ColourOfModel(model, {0x80, 1, 0xFF, 0}));
    ASSERT_TRUE(color == nullptr || std::isfinite(color->GetCompositeDensity())) << model;
  }
  for (const C &record : tests::NastyColours()) {
    const auto color = From(record);
    ASSERT_TRUE(color == nullptr || color->GetChannelCount() <= 6) << testing::PrintToString(record);
  }
}

TEST_F(ColorRecords, WithoutAModelOfTheirOwnHereBecomeWhatTheyLookLike)
{
  const SpotColorDefinition definition{L"one", L"ink", C::MakeRGB(255, 0, 0)};
  const std::pair<C, ColorModel> kRows[] = {
    {C::MakeYIQ255(76, 255, 128), ColorModel::Rgb},
    {C::MakeXYZ(100, 100, 100), ColorModel::Lab},
    {C::MakeLAB(128, 10, -10), ColorModel::Lab},
    {C::MakeUserInks(255, 0, 0, 100), ColorModel::Rgb},
    {tests::DeviceNColour(DeviceN_Process_CMYK, 10), ColorModel::Cmyk},
    {tests::DeviceNColour(DeviceN_Process_RGB, 10), ColorModel::Rgb},
    {C::MakeSPOT(3, 17, 80, &definition), ColorModel::Spot},
    {C::MakeREGCOLOR(), ColorModel::Registration},
    {C::MakeReference(C::MakeCMYK255(1, 2, 3, 4)), ColorModel::Cmyk},
    {tests::Chain(C::MakeREGCOLOR(), 2), ColorModel::Registration},
  };
  for (const auto &[record, model] : kRows) {
    const auto color = From(record);
    ASSERT_NE(color, nullptr) << testing::PrintToString(record);
    EXPECT_EQ(color->GetColorModel(), model) << testing::PrintToString(record);
  }
  const auto spot = std::dynamic_pointer_cast<SpotColor>(From(kRows[6].first));
  ASSERT_NE(spot, nullptr);
  EXPECT_NEAR(spot->GetDensity(), 0.8, 1e-9);
  EXPECT_NE(std::dynamic_pointer_cast<RegistrationColor>(From(C::MakeREGCOLOR())), nullptr);
  EXPECT_EQ(From(C()), nullptr);
}

TEST_F(ColorRecords, TakeTheProfileOfTheContextElseOfTheApplication)
{
  const ColorContext empty, onlyInks{*swop, RenderingIntent::Perceptual}, onlyLight{*srgb, RenderingIntent::Perceptual};
  const auto profileOf = [](const C &record, const ColorContext &in) {
    const auto color = Color::ColorSpecToColor(record, in);
    return color == nullptr ? nullptr : color->GetColorProfile();
  };
  EXPECT_EQ(profileOf(C::MakeRGB(1, 2, 3), onlyLight), srgb);
  EXPECT_EQ(profileOf(C::MakeHSB(1, 2, 3), onlyLight), srgb) << "by its family";
  EXPECT_EQ(profileOf(C::MakeCMY(1, 2, 3), onlyInks), swop) << "by its family";
  EXPECT_EQ(profileOf(C::MakeHEX(1, 2, 3, 4, 5, 6), empty), six);
  const ColorContext application = ColorContext::GetApplicationDefaultColorContext();
  EXPECT_EQ(profileOf(C::MakeRGB(1, 2, 3), empty), application.GetRgbColorProfile());
  EXPECT_EQ(profileOf(C::MakeCMYK(1, 2, 3, 4), onlyLight), application.GetCmykColorProfile());
  EXPECT_EQ(profileOf(C::MakeGRAY(1), onlyInks), application.GetGrayscaleColorProfile());
  EXPECT_NE(application.GetGrayscaleColorProfile(), nullptr);
}

} // namespace
