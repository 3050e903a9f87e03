// zelclr proof, against the library's own converter, pixel by pixel.

#include "tests/support/pixels.h"
#include "tests/support/tool.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace {

using namespace ColorSystem;
using nlohmann::json;
using testing::HasSubstr;
using tests::Bytes;
using tests::kAdobe;
using tests::kGray;
using tests::kPress;
using tests::kProfiles;
using tests::kSrgb;
using tests::Picture;
using tests::Pixels;
using tests::ProfileAt;
using tests::Read;
using tests::Write;

const std::string kNews = kProfiles + "/Newsprint SNAP TR002.icc";

ProofColorSettings Simulating(const std::string &path, RenderingIntent intent)
{
  ProofColorSettings settings;
  settings.SetEnvironmentToSimulate(ProfileAt(path));
  settings.SetRenderingIntent(intent);
  return settings;
}

ColorContext DisplayOf(const std::string &path, RenderingIntent intent = RenderingIntent::RelativeColorimetric)
{
  return {*ProfileAt(path), intent};
}

/// The whole image as RGB of this type.
Bytes Converted(const ColorConverter &converter, const Pixels &image, SampleType type)
{
  return tests::Converted(image, {ColorModel::Rgb, type}, [&](const ColorData &source, ColorData &made) {
    return converter.ConvertColorData(source, made);
  });
}

ColorContext SourceOf(const Pixels &image, const std::string &path)
{
  ColorContext context;
  EXPECT_TRUE(context.SetColorProfile(image.info.format.model, ProfileAt(path)));
  return context;
}

class ProofCommand : public tests::ImageFiles
{
protected:
  /// Writes the image with a profile embedded, and reads it back as its format keeps it.
  Pixels Stored(const std::string &name, Pixels image, const std::string &profile) const
  {
    image.info.profile = tests::ReadBytes(profile);
    Write(Path(name), image);
    return Read(Path(name));
  }
};

TEST_F(ProofCommand, ProofsAsTheLibraryDoesInOneGo)
{
  constexpr auto kRelative = RenderingIntent::RelativeColorimetric;
  struct Row
  {
    const char *in, *out;
    std::uint32_t width, height;
    ColorModel model;
    SampleType type;
    bool alpha;
    std::string embedded, device, options;
    RenderingIntent intent = kRelative;
    SampleType outType = SampleType::UInt8;
    std::string display = kProfiles + "/sRGB_IEC61966-2-1_no_black_scaling.icc";
  };
  const Row rows[] = {
    {"a.png", "b.png", 1, 1, ColorModel::Rgb, SampleType::UInt8, false, kAdobe, kPress, ""},
    {"a.tif", "b.tif", 601, 900, ColorModel::Rgb, SampleType::UInt16, true, kAdobe, kNews, // several bands
     "--intent perceptual", RenderingIntent::Perceptual, SampleType::UInt16},
    {"a.tif", "b.png", 61, 9, ColorModel::Cmyk, SampleType::UInt8, true, kPress, kNews, "--preserve-numbers"},
    {"a.jpg", "b.tif", 64, 32, ColorModel::Cmyk, SampleType::UInt8, false, kPress, kPress, "--paper"},
    {"a.png", "b.png", 13, 11, ColorModel::Grayscale, SampleType::UInt16, true, kGray, kNews,
     "--paper --display '" + kAdobe + "'", kRelative, SampleType::UInt16, kAdobe},
    {"a.png", "b.png", 31, 40, ColorModel::Rgb, SampleType::UInt8, false, kAdobe, kNews,
     "--warning --warning-color '#ff00ff' --warning-transparency 0.25"},
    {"a.png", "b.png", 31, 40, ColorModel::Rgb, SampleType::UInt8, true, kAdobe, kGray, "--display sRGB_v4.icc",
     kRelative, SampleType::UInt8, kSrgb},
  };
  for (const Row &row : rows) {
    SCOPED_TRACE(std::string(row.in) + " " + std::to_string(row.width) + " " + row.options);
    Pixels picture = Picture(row.width, row.height, row.model, row.type, row.alpha);
    picture.info.horizontalResolution = picture.info.verticalResolution = 72;
    const Pixels image = Stored(row.in, picture, row.embedded);
    const std::string intent = row.options.find("--intent") == std::string::npos ? " --intent relative" : "";
    const auto run = Run("proof --json " + Path(row.in) + " -o " + Path(row.out) + " --profile '" + row.device + "' " +
                         row.options + intent);
    EXPECT_EQ(run.errors, "");
    const json document = json::parse(run.output);

    ProofColorSettings settings = Simulating(row.device, row.intent);
    settings.SetPreserveNumbers(row.options.find("--preserve") != std::string::npos);
    if (row.options.find("--warning") != std::string::npos) {
      settings.SetDisplayGamutWarning(true);
      settings.SetGamutWarningLabelColor(*Color::ColorSpecToColor(CLR_COLORSPEC::MakeRGB(255, 0, 255),
                                                                  ColorContext::GetApplicationDefaultColorContext()));
      settings.SetGamutWarningLabelTransparency(0.25);
    }
    const bool paper = row.options.find("--paper") != std::string::npos;
    const ProofColorConverter converter(
      SourceOf(image, row.embedded), settings,
      DisplayOf(row.display, paper ? RenderingIntent::AbsoluteColorimetric : kRelative));
    const Pixels written = Read(Path(row.out));
    EXPECT_EQ(written.info.format, (PixelFormat{ColorModel::Rgb, row.outType}));
    EXPECT_EQ(written.info.profile, tests::ReadBytes(row.display));
    EXPECT_NEAR(written.info.horizontalResolution, 72, 0.02);
    EXPECT_TRUE(written.colours == Converted(converter, image, row.outType));
    EXPECT_EQ(written.alpha, image.alpha);

    Bytes colours = image.colours;
    const auto mask = converter.GetGamutWarningData(*tests::ViewOf(image.info, colours));
    const auto beyond = std::count(mask.begin(), mask.end(), 255);
    EXPECT_EQ(document["outOfGamut"]["pixels"], beyond);
    EXPECT_EQ(run.exitCode, beyond > 0 ? 1 : 0);
  }
  ExpectNoProfileIsLeft();
}

TEST_F(ProofCommand, AMaskSaysWhatTheLibrarySaysOfEachColour)
{
  for (const ColorModel model : {ColorModel::Rgb, ColorModel::Cmyk}) {
    SCOPED_TRACE(NameOfColorModel(model));
    const std::string profile = model == ColorModel::Rgb ? kAdobe : kPress;
    Pixels picture = Picture(53, 29, model, SampleType::UInt8, true);
    for (std::size_t i = 0; i < picture.colours.size(); ++i) // from the middle to the edges of the cube
      picture.colours[i] = static_cast<std::uint8_t>(128 + (picture.colours[i] - 128) * static_cast<int>(i % 97) / 97);
    std::fill_n(picture.alpha.begin(), 53 * 7, std::uint8_t{0}); // 7 rows that nobody sees
    const Pixels image = Stored("a.tif", picture, profile);
    const auto run =
      Run("proof --json --mask " + Path("a.tif") + " -o " + Path("m.png") + " --profile '" + kNews + "'");
    EXPECT_EQ(run.exitCode, 1) << run.errors;
    const Pixels mask = Read(Path("m.png"));
    EXPECT_EQ(mask.info.format, (PixelFormat{ColorModel::Grayscale, SampleType::UInt8}));
    EXPECT_FALSE(mask.info.hasAlpha);
    EXPECT_TRUE(mask.info.profile.empty());

    const ProofColorConverter converter(SourceOf(image, profile),
                                        Simulating(kNews, RenderingIntent::RelativeColorimetric), DisplayOf(kSrgb));
    int wrong = 0, beyond = 0;
    for (std::size_t i = 0; i < mask.colours.size(); ++i) {
      const std::uint8_t *p = image.colours.data() + i * image.info.format.BytesPerPixel();
      const auto colour = model == ColorModel::Rgb ? CLR_COLORSPEC::MakeRGB(p[0], p[1], p[2])
                                                   : CLR_COLORSPEC::MakeCMYK255(p[0], p[1], p[2], p[3]);
      const bool out = image.alpha[i] != 0 && !converter.IsColorInGamut(colour);
      beyond += out;
      wrong += mask.colours[i] != (out ? 255 : 0);
    }
    EXPECT_EQ(wrong, 0);
    const json counted = json::parse(run.output)["outOfGamut"];
    EXPECT_EQ(counted["pixels"], beyond);
    EXPECT_EQ(counted["seenPixels"], 53 * 22);
    EXPECT_DOUBLE_EQ(counted["share"].get<double>(), beyond / (53.0 * 22));
    EXPECT_GT(beyond, 0);
    EXPECT_LT(beyond, 53 * 22);
  }
}

TEST_F(ProofCommand, TheOriginalIsOnTheLeftAsPeopleSeeTheImage)
{
  for (const unsigned orientation : {1u, 3u}) {
    Pixels picture = Picture(37, 5, ColorModel::Cmyk, SampleType::UInt16, true);
    picture.info.orientation = orientation;
    const Pixels image = Stored("a.tif", picture, kPress);
    const std::string options = " --display '" + kSrgb + "' --paper --intent relative --profile '" + kNews + "'";
    Run("proof " + Path("a.tif") + " -o " + Path("both.tif") + " --side-by-side" + options);
    Run("proof " + Path("a.tif") + " -o " + Path("proof.tif") + options);
    const Pixels both = Read(Path("both.tif"));
    ASSERT_EQ(both.info.width, 74u);
    ASSERT_EQ(both.info.orientation, orientation);
    Pixels left = image, right = Read(Path("proof.tif"));
    left.colours = Converted(ColorConverter(SourceOf(image, kPress), DisplayOf(kSrgb)), image, SampleType::UInt16);
    if (orientation == 3)
      std::swap(left, right);
    Bytes colours, alpha;
    for (std::ptrdiff_t row = 0; row < 5; ++row) {
      for (const Pixels *half : {&left, &right}) {
        colours.insert(colours.end(), half->colours.begin() + row * 37 * 6, half->colours.begin() + (row + 1) * 37 * 6);
        alpha.insert(alpha.end(), half->alpha.begin() + row * 37 * 2, half->alpha.begin() + (row + 1) * 37 * 2);
      }
    }
    EXPECT_TRUE(both.colours == colours) << orientation;
    EXPECT_TRUE(both.alpha == alpha) << orientation;
  }
}

TEST_F(ProofCommand, WhatIsNotNamedComesFromTheSettings)
{
  Write(Path("a.png"), Picture(5, 4, ColorModel::Rgb, SampleType::UInt8, false));
  const auto proof = [&](const std::string &options) {
    const auto result = Run("proof --json " + Path("a.png") + " -o " + Path("b.png") + " " + options);
    EXPECT_THAT(result.errors, HasSubstr("no profile; assumed is sRGB"));
    return json::parse(result.output);
  };
  EXPECT_EQ(proof("")["simulated"]["model"], "cmyk");
  EXPECT_EQ(proof("")["input"]["profileOrigin"], "assumed");
  const json preset = proof("--preset 'Newsprint SNAP (TR002), CMYK numbers kept'")["simulated"];
  EXPECT_THAT(preset["profile"].get<std::string>(), HasSubstr("SNAP"));
  EXPECT_EQ(preset["preserveNumbers"], true);
  ASSERT_EQ(Run("settings proof add Mine --simulate 'Gray Gamma 22.icc' --intent saturation --use").exitCode, 0);
  const json inForce = proof("")["simulated"];
  EXPECT_EQ(inForce["model"], "gray");
  EXPECT_EQ(inForce["intent"], "saturation");
  const json over =
    proof("--intent absolute --preset 'Newsprint SNAP (TR002)' --profile '" + kPress + "'")["simulated"];
  EXPECT_THAT(over["profile"].get<std::string>(), HasSubstr("SWOP"));
  EXPECT_EQ(over["intent"], "absolute");
}

TEST_F(ProofCommand, TheSummarySaysHowMuchWillNotPrint)
{
  Pixels image = Picture(100, 100, ColorModel::Rgb, SampleType::UInt8, true);
  std::fill(image.colours.begin(), image.colours.end(), std::uint8_t{128});
  const auto summary = [&](int reds) {
    for (int i = 0; i < reds; ++i) {
      image.colours[static_cast<std::size_t>(3 * i)] = 255;
      image.colours[static_cast<std::size_t>(3 * i) + 1] = image.colours[static_cast<std::size_t>(3 * i) + 2] = 0;
    }
    Write(Path("a.png"), image);
    const auto result = Run("proof " + Path("a.png") + " -o " + Path("b.jpg") + " --profile '" + kNews + "'");
    EXPECT_EQ(result.exitCode, reds > 0 ? 1 : 0);
    EXPECT_THAT(result.errors, HasSubstr("laid on white"));
    return result.output;
  };
  std::fill(image.alpha.begin(), image.alpha.end(), std::uint8_t{255});
  EXPECT_THAT(summary(0), HasSubstr("All pixels are within"));
  EXPECT_THAT(summary(3), HasSubstr("Fewer than 0.1 % of the pixels are beyond"));
  EXPECT_THAT(summary(1234), HasSubstr("12.3 % of the pixels are beyond"));
  EXPECT_THAT(summary(9999), HasSubstr("More than 99.9 %"));
  std::fill(image.alpha.begin(), image.alpha.end(), std::uint8_t{0});
  EXPECT_THAT(summary(0), HasSubstr("All pixels"));
  EXPECT_THAT(Read(Path("b.jpg")).colours, testing::Each(255));
}

TEST_F(ProofCommand, WhatCannotBeDoneIsSaidAndTheOldFileStays)
{
  Write(Path("in.tif"), Picture(40, 300, ColorModel::Rgb, SampleType::UInt8, false));
  Write(Path("wide.tif"), Picture(40'000, 1, ColorModel::Rgb, SampleType::UInt8, false));
  WriteCut("cut.png");
  ASSERT_EQ(Run("settings add Formula --module linear").exitCode, 0);
  const std::string toPng = " -o " + Path("out.png");
  const tests::Refusal rows[] = {
    {Path("cut.png") + toPng, 3, "cut.png: "},
    {Path("nothing.tif") + toPng, 3, "No such file"},
    {Path("in.tif") + " -o " + Path("none/out.png"), 3, "No such file"},
    {Path("in.tif") + " -o " + Path("out.gif"), 2, ".png"},
    {Path("in.tif") + " -o " + Path("in.tif"), 2, "both read and written"},
    {Path("wide.tif") + " --side-by-side -o " + Path("out.jpg"), 2, "65500 pixels"},
    {Path("in.tif") + toPng + " --mask --side-by-side", 2, "excludes"},
    {Path("in.tif") + toPng + " --profile none", 2, "no device is simulated"},
    {Path("in.tif") + toPng + " --profile 'CIE Lab.icc'", 2, "no device"},
    {Path("in.tif") + toPng + " --profile " + Path("in.tif"), 3, "in.tif"},
    {Path("in.tif") + toPng + " --display '" + kPress + "'", 2, "is not for RGB"},
    {Path("in.tif") + toPng + " --preset Nobodys", 4, "no preset"},
    {Path("in.tif") + toPng + " --from '" + kPress + "'", 2, "not for RGB"},
    {Path("in.tif") + toPng, 4, "by formula"}, // from here on in force
  };
  for (const tests::Refusal &row : rows) {
    if (&row == std::end(rows) - 1) {
      ASSERT_EQ(Run("settings use Formula").exitCode, 0);
    }
    ExpectRefused("proof ", row, {"out.png", "out.jpg"});
  }
}

} // namespace
