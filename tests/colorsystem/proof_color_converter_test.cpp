// Soft proofs: what a document looks like on another device, pixel by pixel and record by record.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/colorsystem/typed_colors.h"
#include "zelclr/colour/colour_models.h"

#include <random>

using namespace ColorSystem;
using C = CLR_COLORSPEC;
using enum ColorModel;
using enum SampleType;

namespace {

constexpr PixelFormat kRgb8{Rgb, UInt8}, kRgb16{Rgb, UInt16}, kCmyk8{Cmyk, UInt8};

std::unique_ptr<ColorData> RandomPixels(const PixelFormat &format, std::uint32_t width, std::uint32_t height)
{
  auto pixels = CreateColorData(format, width, height);
  std::mt19937 random(5);
  for (std::size_t i = 0; i < std::size_t{pixels->GetRowStride()} * height; ++i)
    pixels->GetRow(0)[i] = static_cast<std::uint8_t>(random());
  return pixels;
}

float WorstDifference(const ColorData &a, const ColorData &b)
{
  float worst = 0.0f;
  for (std::uint32_t row = 0; row < a.GetHeight(); ++row)
    for (std::uint32_t column = 0; column < a.GetWidth(); ++column)
      for (unsigned channel = 0; channel < a.GetPixelFormat().ColourChannels(); ++channel)
        worst = std::max(worst, std::abs(a.GetSample(row, column, channel) - b.GetSample(row, column, channel)));
  return worst;
}

class Proofs : public tests::ShippedProfiles
{
protected:
  Proofs() { settings.SetEnvironmentToSimulate(news); }

  static ColorContext Of(const std::shared_ptr<ColorProfile> &profile,
                         RenderingIntent intent = RenderingIntent::RelativeColorimetric)
  {
    return {*profile, intent};
  }
  ProofColorConverter Converter() const { return {document, settings, display}; }

  const std::shared_ptr<ColorProfile> news = Shipped(L"Newsprint SNAP TR002.icc"),
                                      adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  const ColorContext document{adobe, swop, gray, Rgb, RenderingIntent::Perceptual};
  ColorContext display = Of(srgb);
  ProofColorSettings settings;
};

TEST_F(Proofs, GoThroughTheSimulatedDevice)
{
  const auto pixels = RandomPixels(kRgb16, 37, 11);
  const auto proofed = CreateColorData(kRgb16, 37, 11), inks = CreateColorData({Cmyk, UInt16}, 37, 11),
             expected = CreateColorData(kRgb16, 37, 11);
  for (const auto &[toProof, toDisplay] :
       {std::pair(RenderingIntent::RelativeColorimetric, RenderingIntent::RelativeColorimetric),
        std::pair(RenderingIntent::Perceptual, RenderingIntent::AbsoluteColorimetric)})
  {
    settings.SetRenderingIntent(toProof);
    display = Of(srgb, toDisplay);
    ASSERT_TRUE(Converter().ConvertColorData(*pixels, *proofed));
    ASSERT_TRUE(ColorConverter(document, Of(news, toProof)).ConvertColorData(*pixels, *inks));
    ASSERT_TRUE(ColorConverter(Of(news), display).ConvertColorData(*inks, *expected));
    EXPECT_LT(WorstDifference(*proofed, *expected), 1.5f / 255) << static_cast<int>(toProof);
    ASSERT_TRUE(ColorConverter(document, display).ConvertColorData(*pixels, *expected));
    EXPECT_GT(WorstDifference(*proofed, *expected), 0.1f);
  }
  // Records are the same pixels.
  for (std::uint32_t i = 0; i < 37; ++i) {
    C shown;
    const auto word = [&](const ColorData &data, unsigned channel) {
      return static_cast<std::uint16_t>(std::lround(data.GetSample(0, i, channel) * 65535.0f));
    };
    const C record = C::MakeRGB48(word(*pixels, 0), word(*pixels, 1), word(*pixels, 2));
    ASSERT_TRUE(Converter().Convert(record, shown, ZelClr::ClrModel::Rgb48, 0));
    EXPECT_EQ(shown, C::MakeRGB48(word(*proofed, 0), word(*proofed, 1), word(*proofed, 2)));
  }
  C spot;
  EXPECT_TRUE(Converter().Convert(C::MakeSPOT(23, 5, 50, nullptr), spot)); // no ink of the document is lost in a proof
  EXPECT_EQ(spot, C::MakeSPOT(23, 5, 50, nullptr));
}

TEST_F(Proofs, TakePreservedNumbersAsTheDevicesOwn)
{
  const auto inks = RandomPixels(kCmyk8, 16, 3);
  const auto shown = CreateColorData(kRgb8, 16, 3), own = CreateColorData(kRgb8, 16, 3);
  ASSERT_TRUE(ColorConverter(Of(news), display).ConvertColorData(*inks, *own));
  ASSERT_TRUE(Converter().ConvertColorData(*inks, *shown));
  EXPECT_GT(WorstDifference(*shown, *own), 0.05f);
  settings.SetPreserveNumbers(true);
  ASSERT_TRUE(Converter().ConvertColorData(*inks, *shown));
  EXPECT_EQ(WorstDifference(*shown, *own), 0.0f);
  const auto none = Converter().GetGamutWarningData(*inks);
  EXPECT_EQ(std::count(none.begin(), none.end(), 0), 48);

  class Opened : public ProofColorConverter
  {
  public:
    using ProofColorConverter::GetShouldPreserveNumbers, ProofColorConverter::ProofColorConverter;
  };
  for (const auto &environment : {news, adobe, gray}) {
    settings.SetEnvironmentToSimulate(environment);
    for (const bool preserve : {true, false}) {
      settings.SetPreserveNumbers(preserve);
      for (const ColorModel model : {Rgb, Cmyk, Grayscale, Lab, Hexachrome})
        EXPECT_EQ(Opened(document, settings, display).GetShouldPreserveNumbers(model, Rgb),
                  preserve && model == environment->GetColorModel());
    }
  }
}

TEST_F(Proofs, MarkWhatTheDeviceCannotShow)
{
  const auto pixels = RandomPixels(kRgb8, 40, 9);
  const auto plain = CreateColorData(kRgb8, 40, 9), marked = CreateColorData(kRgb8, 40, 9);
  ASSERT_TRUE(Converter().ConvertColorData(*pixels, *plain));
  settings.SetDisplayGamutWarning(true);
  settings.SetGamutWarningLabelColor(RgbColor(1.0, 0.0, 1.0, ColorSpace(*srgb)));
  constexpr float kLabel[] = {1.0f, 0.0f, 1.0f};
  for (const double transparency : {0.0, 0.25, 1.0}) {
    settings.SetGamutWarningLabelTransparency(transparency);
    const ProofColorConverter converter = {document, settings, display};
    ASSERT_TRUE(converter.ConvertColorData(*pixels, *marked));
    const auto mask = converter.GetGamutWarningData(*pixels);
    unsigned out = 0;
    for (std::uint32_t i = 0; i < 360; ++i) {
      const std::uint32_t row = i / 40, column = i % 40;
      out += mask[i] != 0;
      for (unsigned channel = 0; channel < 3; ++channel) {
        const float below = plain->GetSample(row, column, channel);
        const float expected =
          mask[i] == 0 ? below : kLabel[channel] + (below - kLabel[channel]) * static_cast<float>(transparency);
        EXPECT_NEAR(marked->GetSample(row, column, channel), expected, 0.6f / 255) << i;
      }
      const std::uint8_t *const rgb = pixels->GetSampleAddress(row, column, 0);
      const std::uint8_t *const seen = marked->GetSampleAddress(row, column, 0);
      const COLORREF shown = converter.ConvertToColorRef(C::MakeRGB(rgb[0], rgb[1], rgb[2]), true);
      for (unsigned channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(static_cast<int>(shown >> (8 * channel) & 0xFF), seen[channel], 1) << i;
    }
    EXPECT_GT(out, 90u);
    EXPECT_LT(out, 350u);
  }
  // In place: the mask is of the colours as they were.
  const auto inPlace = RandomPixels(kRgb8, 40, 9);
  ASSERT_TRUE(Converter().ConvertColorData(*inPlace, *inPlace));
  EXPECT_EQ(WorstDifference(*inPlace, *marked), 0.0f);
  // A mark that was asked for only here; a record in gamut is never marked.
  settings.SetDisplayGamutWarning(false);
  settings.SetGamutWarningLabelTransparency(0.0);
  EXPECT_EQ(Converter().ConvertToColorRef(C::MakeRGB(0, 255, 0), true), 0xFF00FFu);
  EXPECT_NE(Converter().ConvertToColorRef(C::MakeRGB(0, 255, 0), false), 0xFF00FFu);
  EXPECT_EQ(Converter().ConvertToColorRef(C::MakeRGB(150, 150, 150), true),
            Converter().ConvertToColorRef(C::MakeRGB(150, 150, 150), false));
  EXPECT_FALSE(Converter().ApplyGamutWarningData({255, 255}, *pixels)); // too short
}

TEST_F(Proofs, OfNothingArePlainConversions)
{
  settings.SetEnvironmentToSimulate(nullptr);
  settings.SetDisplayGamutWarning(true);
  const auto pixels = RandomPixels(kRgb8, 9, 5);
  const auto proofed = CreateColorData(kRgb8, 9, 5), expected = CreateColorData(kRgb8, 9, 5);
  ASSERT_TRUE(Converter().ConvertColorData(*pixels, *proofed));
  ASSERT_TRUE(ColorConverter(document, display).ConvertColorData(*pixels, *expected));
  EXPECT_EQ(WorstDifference(*proofed, *expected), 0.0f);
  EXPECT_EQ(Converter().GetGamutWarningData(*pixels), std::vector<std::uint8_t>(45));
  EXPECT_FALSE(Converter().GetColorConversionRequired(Lab, Lab));
  settings.SetEnvironmentToSimulate(news);
  EXPECT_TRUE(Converter().GetColorConversionRequired(Lab, Lab));
}

} // namespace
