// The limits of the presses that ship: the record, the mask and a plain round trip by hand say the same.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/convert/formulas/colour_difference.h"

#include <random>

using namespace ColorSystem;
using C = CLR_COLORSPEC;
using enum ColorModel;
using enum SampleType;

namespace {

constexpr const wchar_t *kPresses[] = {L"USWebCoatedSWOP.icc", L"ISO Coated FOGRA39.icc", L"GRACoL Coated TR006.icc",
                                       L"ISO Uncoated FOGRA29.icc", L"Newsprint SNAP TR002.icc"};

std::unique_ptr<ColorData> RandomPixels(const PixelFormat &format, std::uint32_t count)
{
  auto pixels = CreateColorData(format, count, 1);
  std::mt19937 random(11);
  for (std::uint32_t column = 0; column < count; ++column)
    for (unsigned channel = 0; channel < format.ColourChannels(); ++channel)
      pixels->SetSample(0, column, channel, static_cast<float>(random() % 256) / 255.0f);
  return pixels;
}

class Gamuts : public tests::ShippedProfiles
{
protected:
  static std::unique_ptr<ColorData> Through(const ColorProfile &from, ColorProfile &to, const ColorData &pixels)
  {
    TransformOptions options;
    options.source = pixels.GetPixelFormat();
    options.destination = {to.GetColorModel(), UInt16};
    auto made = CreateColorData(options.destination, pixels.GetWidth(), 1);
    ColorManagementSystem::Get(ColorManagementModule::LCMS)->CreateTransform(from, to, options)->Convert(pixels, *made);
    return made;
  }
  static ZelClr::Formulas::Lab LabAt(const ColorData &pixels, std::uint32_t i)
  {
    return {pixels.GetSample(0, i, 0) * 100.0, pixels.GetSample(0, i, 1) * 255.0 - 128.0,
            pixels.GetSample(0, i, 2) * 255.0 - 128.0};
  }
  static ColorContext Of(const std::shared_ptr<ColorProfile> &profile)
  {
    return {*profile, RenderingIntent::RelativeColorimetric};
  }
  ProofColorConverter Proof(const std::shared_ptr<ColorProfile> &source,
                            const std::shared_ptr<ColorProfile> &press) const
  {
    ProofColorSettings settings;
    settings.SetEnvironmentToSimulate(press);
    settings.SetRenderingIntent(RenderingIntent::Perceptual); // the limits are the device's, whatever the intent
    return {Of(source), settings, Of(srgb)};
  }
};

TEST_F(Gamuts, AreOneForRecordsMasksAndMeasuredDifferences)
{
  constexpr std::uint32_t kCount = tests::kSanitized ? 300 : 4000;
  const auto pixels = RandomPixels({Rgb, UInt8}, kCount);
  for (const wchar_t *name : kPresses) {
    const auto press = Shipped(name);
    const ProofColorConverter proof = Proof(srgb, press);
    const ColorConverter toPress(Of(srgb), Of(press));
    const auto mask = proof.GetGamutWarningData(*pixels);
    ASSERT_EQ(mask.size(), kCount);
    const auto meant = Through(*srgb, *lab, *pixels);
    const auto shown = Through(*press, *lab, *Through(*srgb, *press, *pixels));
    unsigned out = 0, different = 0;
    for (std::uint32_t i = 0; i < kCount; ++i) {
      const std::uint8_t *const rgb = pixels->GetSampleAddress(0, i, 0);
      const C record = C::MakeRGB(rgb[0], rgb[1], rgb[2]);
      const double distance = ZelClr::Formulas::Ciede2000(LabAt(*meant, i), LabAt(*shown, i));
      const bool held = mask[i] == 0;
      EXPECT_TRUE(held || mask[i] == 255);
      different += proof.IsColorInGamut(record) != held || toPress.IsColorInGamut(record) != held;
      if (std::abs(distance - GamutCheck::kTolerance) > 0.1) // 8 bits here, 16 there
        different += (distance <= GamutCheck::kTolerance) != held;
      out += !held;
    }
    EXPECT_EQ(different, 0u) << press->GetName();
    EXPECT_GT(out, kCount / 4) << press->GetName(); // a screen shows far more than any press prints
    EXPECT_LT(out, kCount * 19 / 20) << press->GetName();
  }
}

TEST_F(Gamuts, HoldWhatTheDevicePrints)
{
  constexpr std::uint32_t kCount = tests::kSanitized ? 300 : 5000;
  for (const wchar_t *name : kPresses) {
    const auto press = Shipped(name);
    const auto prints = Through(*press, *lab, *RandomPixels({Cmyk, UInt16}, kCount));
    const auto mask = Proof(lab, press).GetGamutWarningData(*prints);
    EXPECT_LE(std::count(mask.begin(), mask.end(), 255), kCount / 1000 + 1) << press->GetName();
    // Far outside: light that no ink reflects, and a black that no paper holds.
    const ColorConverter toPress(Of(srgb), Of(press));
    for (const C &colour : {C::MakeRGB(0, 255, 0), C::MakeRGB(0, 0, 255), C::MakeRGB(0, 255, 255),
                            C::MakeRGB(255, 0, 255), C::MakeHSB(120, 255, 255), C::MakeSCRGB(0.0f, 1.0f, 0.0f)})
      EXPECT_FALSE(toPress.IsColorInGamut(colour)) << colour.GetType();
    for (const C &colour : {C::MakeRGB(255, 255, 255), C::MakeRGB(160, 150, 140), C(), C::CLRMakeIndex(1)})
      EXPECT_TRUE(toPress.IsColorInGamut(colour)) << colour.GetType();
    EXPECT_TRUE(ColorConverter(Of(press), Of(press)).IsColorInGamut(C::MakeCMYK255(255, 255, 0, 0)));
  }
}

// Formats, strides and sizes change nothing; a view of another model has no answer.
TEST_F(Gamuts, AreCheckedInAnyFormat)
{
  const GamutCheck check(srgb, swop);
  const auto bytes = RandomPixels({Rgb, UInt8}, 91);
  std::vector<float> expected(91), distances(91);
  ASSERT_TRUE(check.Distances(*bytes, expected));
  for (const PixelFormat &format :
       {PixelFormat{Rgb, UInt16}, PixelFormat{Rgb, Float32}, PixelFormat{Rgb, UInt8, true, true}})
  {
    const auto other = CreateColorData(format, 13, 7, 13 * format.BytesPerPixel() + 5);
    for (std::uint32_t i = 0; i < 91; ++i)
      for (unsigned channel = 0; channel < 3; ++channel)
        other->SetSample(i / 13, i % 13, channel, bytes->GetSample(0, i, channel));
    ASSERT_TRUE(check.Distances(*other, distances));
    for (std::uint32_t i = 0; i < 91; ++i)
      EXPECT_NEAR(distances[i], expected[i], 0.01);
  }
  EXPECT_FALSE(check.Distances(*CreateColorData({Cmyk, UInt8}, 1, 1), distances));
  EXPECT_FALSE(check.Distances(*bytes, std::span(distances).first(90)));
  EXPECT_TRUE(check.Distances(*CreateColorData({Rgb, UInt8}, 0, 3), {}));
  EXPECT_TRUE(check.Distances(*CreateColorData({Rgb, UInt8}, 3, 0), {}));
  // Wider than a band, and higher.
  constexpr std::uint32_t kLong = tests::kSanitized ? 33000 : 70000;
  for (const bool wide : {true, false}) {
    const auto large = CreateColorData({Rgb, UInt8}, wide ? kLong : 1, wide ? 1 : kLong);
    large->SetSample(wide ? 0 : kLong - 1, wide ? kLong - 1 : 0, 1, 1.0f); // green at the end
    std::vector<float> many(kLong);
    ASSERT_TRUE(check.Distances(*large, many));
    EXPECT_GT(many.back(), 5.0f);
    EXPECT_EQ(std::count(many.begin(), many.end() - 1, many.front()), kLong - 1);
  }
}

} // namespace
