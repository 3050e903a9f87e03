// Pixels by formula: every pair of models against the published formulas in doubles, in every layout, on every
// instruction set that this processor has.

#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/each_target.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/formula_pixels.h"
#include "zelclr/convert/formulas/srgb_lab.h"

#include <array>
#include <limits>
#include <random>

using namespace ColorSystem;
using namespace tests;
using enum ColorModel;
using enum SampleType;

namespace {

namespace Formulas = ZelClr::Formulas;

constexpr ColorModel kModels[] = {Rgb, Cmyk, Hexachrome, Grayscale, Lab, Xyz};
constexpr SampleType kTypes[] = {UInt8, UInt16, Float32};

using Channels = std::vector<double>;

std::string NameOf(ColorModel from, ColorModel to)
{
  const auto name = [](ColorModel model) { return model == Xyz ? "Xyz" : std::string(NameOfColorModel(model)); };
  return name(from) + " to " + name(to);
}

// --- The formulas in doubles -----------------------------------------------------------------------------------------

Channels ToRgb(ColorModel model, const Channels &c)
{
  const auto light = [](double ink, double black) { return 1 - std::min(1.0, ink + black); };
  const auto ofLab = [](const Formulas::Lab &lab) {
    const auto rgb = Formulas::SrgbFromXyz(Formulas::XyzFromCieLab(lab));
    return Channels{rgb.red, rgb.green, rgb.blue};
  };
  switch (model) {
  case Cmyk:
    return {light(c[0], c[3]), light(c[1], c[3]), light(c[2], c[3])};
  case Hexachrome: // cyan and green; magenta and half of orange; yellow, orange and green
    return {light(std::min(1.0, c[0] + c[5]), c[3]), light(std::min(1.0, c[1] + c[4] / 2), c[3]),
            light(std::min(1.0, c[2] + c[4] + c[5]), c[3])};
  case Grayscale:
    return {c[0], c[0], c[0]};
  case Lab:
    return ofLab({c[0] * 100, c[1] * 255 - 128, c[2] * 255 - 128});
  case Xyz: {
    const auto rgb = ConvertXyzToRgb({c[0], c[1], c[2]});
    return {rgb.begin(), rgb.end()};
  }
  default:
    return c;
  }
}

Channels FromRgb(ColorModel model, const Channels &c)
{
  const double white = *std::max_element(c.begin(), c.end());
  switch (model) {
  case Cmyk:
    return {white - c[0], white - c[1], white - c[2], 1 - white};
  case Hexachrome:
    return {white - c[0], white - c[1], white - c[2], 1 - white, 0, 0};
  case Grayscale:
    return {0.299 * c[0] + 0.587 * c[1] + 0.114 * c[2]};
  case Lab: {
    const auto lab = Formulas::CieLabFromXyz(Formulas::XyzFromSrgb(c[0], c[1], c[2]));
    return {lab.l / 100, (lab.a + 128) / 255, (lab.b + 128) / 255};
  }
  case Xyz: {
    const auto xyz = ConvertRgbToXyz({c[0], c[1], c[2]});
    return {xyz.begin(), xyz.end()};
  }
  default:
    return c;
  }
}

/// Luminance of Lab or Xyz as gray.
Channels GrayOf(ColorModel model, const Channels &c)
{
  const double y = model == Xyz ? c[1] : Formulas::XyzFromCieLab({c[0] * 100, 0, 0}).y;
  return {Formulas::SrgbFromLinear(y)};
}

Channels Expected(ColorModel from, ColorModel to, const Channels &c)
{
  const auto both = [&](ColorModel a, ColorModel b) { return from == a && to == b; };
  Channels result;
  if (from == to)
    result = c;
  else if (both(Cmyk, Hexachrome))
    result = {c[0], c[1], c[2], c[3], 0, 0};
  else if (both(Hexachrome, Cmyk))
    result = {c[0] + c[5], c[1] + c[4] / 2, c[2] + c[4] + c[5], c[3]};
  else if (both(Lab, Grayscale) || both(Xyz, Grayscale))
    result = GrayOf(from, c);
  else if (both(Lab, Xyz) || both(Xyz, Lab)) {
    const auto three = from == Lab ? ConvertLabToXyz({c[0], c[1], c[2]}) : ConvertXyzToLab({c[0], c[1], c[2]});
    result.assign(three.begin(), three.end());
  } else
    result = FromRgb(to, ToRgb(from, c));
  for (double &channel : result)
    channel = std::clamp(channel, 0.0, 1.0);
  return result;
}

// --- Pixels ----------------------------------------------------------------------------------------------------------

/// Random, with many channels at and near the ends.
void FillAtRandom(ColorData &data, std::uint32_t seed)
{
  std::mt19937 random(seed);
  const PixelFormat &format = data.GetPixelFormat();
  for (std::uint32_t y = 0; y < data.GetHeight(); ++y) {
    for (std::uint32_t x = 0; x < data.GetWidth(); ++x) {
      for (unsigned channel = 0; channel < format.ChannelsPerPixel(); ++channel) {
        const float value = static_cast<float>(random() >> 8) * 0x1p-24f;
        const std::uint32_t kind = random() % 8;
        data.SetSample(y, x, channel, kind == 0 ? 0.0f : kind == 1 ? 1.0f : kind == 2 ? value * 0.05f : value);
      }
    }
  }
}

Channels ColoursAt(const ColorData &data, std::uint32_t y, std::uint32_t x)
{
  Channels channels;
  for (unsigned channel = 0; channel < data.GetPixelFormat().ColourChannels(); ++channel)
    channels.push_back(static_cast<double>(data.GetSample(y, x, channel)));
  return channels;
}

Bytes BytesOf(const ColorData &data)
{
  return {data.GetRow(0), data.GetRow(0) + std::size_t{data.GetRowStride()} * data.GetHeight()};
}

/// The most by which a sample may miss the formula: half a step, and 1e-6 for the arithmetic in floats.
double MostError(SampleType type)
{
  return (type == UInt8 ? 0.5 / 255 : type == UInt16 ? 0.5 / 65535 : 0.0) + 1e-6;
}

void ExpectFormula(const ColorData &source, const ColorData &destination)
{
  const ColorModel from = source.GetColorModel(), to = destination.GetColorModel();
  const double most = MostError(destination.GetPixelFormat().type);
  for (std::uint32_t y = 0; y < source.GetHeight(); ++y) {
    for (std::uint32_t x = 0; x < source.GetWidth(); ++x) {
      const Channels pixel = ColoursAt(source, y, x);
      const Channels expected = Expected(from, to, pixel), actual = ColoursAt(destination, y, x);
      for (std::size_t channel = 0; channel < expected.size(); ++channel)
        ASSERT_NEAR(actual[channel], expected[channel], most)
          << NameOf(from, to) << ", channel " << channel << " of " << testing::PrintToString(pixel);
    }
  }
}

TEST(FormulaPixels, FollowTheFormulasInEveryPairAndLayout)
{
  for (const ColorModel from : kModels) {
    for (const ColorModel to : kModels) {
      ASSERT_TRUE(HasFormula(from, to));
      for (const SampleType in : kTypes) {
        for (const SampleType out : kTypes) {
          for (int flags = 0; flags < 16; ++flags) {
            const PixelFormat source{from, in, (flags & 1) != 0, (flags & 2) != 0};
            const PixelFormat destination{to, out, (flags & 4) != 0, (flags & 8) != 0};
            const std::uint32_t width = flags == 0 ? (kSanitized ? 300 : 3000) : 70;
            const auto before = CreateColorData(source, width, 2), after = CreateColorData(destination, width, 2);
            FillAtRandom(*before, static_cast<std::uint32_t>(flags));
            ASSERT_TRUE(ConvertByFormula(*before, *after));
            ASSERT_NO_FATAL_FAILURE(ExpectFormula(*before, *after));
            if (!destination.HasAlpha())
              continue;
            const bool copied = source.HasAlpha() && !(from == Cmyk && to == Rgb);
            for (std::uint32_t x = 0; x < width; ++x) {
              const float alpha = copied ? before->GetSample(1, x, source.ColourChannels()) : 1.0f;
              ASSERT_NEAR(after->GetSample(1, x, destination.ColourChannels()), alpha, MostError(out) - 1e-6 + 1e-9)
                << NameOf(from, to);
            }
          }
        }
      }
    }
  }
}

TEST(FormulaPixels, AreTheSameOnEveryInstructionSet)
{
  for (const ColorModel from : kModels) {
    for (const ColorModel to : kModels) {
      for (const SampleType type : kTypes) {
        const auto before = CreateColorData({from, type}, 1000, 1), expected = CreateColorData({to, type}, 1000, 1);
        FillAtRandom(*before, 7);
        ASSERT_TRUE(ConvertByFormula(*before, *expected));
        ForEachTarget([&] {
          const auto after = CreateColorData({to, type}, 1000, 1);
          ASSERT_TRUE(ConvertByFormula(*before, *after));
          EXPECT_TRUE(BytesOf(*after) == BytesOf(*expected)) << NameOf(from, to);
        });
      }
    }
  }
}

TEST(FormulaPixels, OfBytesAreExact)
{
  // All of red, green and blue; then the same bytes as inks, with black, orange and green of their own.
  const auto rgb = CreateColorData({Rgb, UInt8}, 65536, 1), cmyk = CreateColorData({Cmyk, UInt8}, 65536, 1);
  const auto six = CreateColorData({Hexachrome, UInt8}, 65536, 1), gray = CreateColorData({Grayscale, UInt8}, 65536, 1);
  const auto inks = CreateColorData({Cmyk, UInt8}, 65536, 1), light = CreateColorData({Rgb, UInt8}, 65536, 1);
  const auto grayOfInks = CreateColorData({Grayscale, UInt8}, 65536, 1),
             four = CreateColorData({Cmyk, UInt8}, 65536, 1);
  const auto grayOfSix = CreateColorData({Grayscale, UInt8}, 65536, 1),
             lightOfSix = CreateColorData({Rgb, UInt8}, 65536, 1);
  const auto grayOf = [](int r, int g, int b) { return (299 * r + 587 * g + 114 * b + 500) / 1000; };
  for (int red = 0; red < 256; red += kSanitized ? 51 : 1) {
    for (std::size_t i = 0; i < 65536; ++i) {
      const std::uint8_t bytes[] = {static_cast<std::uint8_t>(red),         static_cast<std::uint8_t>(i >> 8),
                                    static_cast<std::uint8_t>(i),           static_cast<std::uint8_t>(i * 7 + i / 300),
                                    static_cast<std::uint8_t>(i * 13 >> 3), static_cast<std::uint8_t>(i * 29 >> 4)};
      std::copy_n(bytes, 3, rgb->GetRow(0) + 3 * i);
      std::copy_n(bytes, 4, cmyk->GetRow(0) + 4 * i);
      std::copy_n(bytes, 6, six->GetRow(0) + 6 * i);
    }
    ASSERT_TRUE(ConvertByFormula(*rgb, *gray) && ConvertByFormula(*rgb, *inks) && ConvertByFormula(*cmyk, *light) &&
                ConvertByFormula(*cmyk, *grayOfInks) && ConvertByFormula(*six, *four) &&
                ConvertByFormula(*six, *grayOfSix) && ConvertByFormula(*six, *lightOfSix));
    for (std::size_t i = 0; i < 65536; ++i) {
      const std::uint8_t *p = six->GetRow(0) + 6 * i; // the first three and four are those of the others
      const int white = std::max({p[0], p[1], p[2]});
      const std::array<int, 3> seen = {255 - std::min(255, p[0] + p[3]), 255 - std::min(255, p[1] + p[3]),
                                       255 - std::min(255, p[2] + p[3])};
      const int r6 = 2 * std::max(0, 255 - p[0] - p[5] - p[3]), g6 = std::max(0, 510 - 2 * p[1] - p[4] - 2 * p[3]);
      const int b6 = 2 * std::max(0, 255 - p[2] - p[4] - p[5] - p[3]); // twice the light, for orange's half
      const int expected[] = {grayOf(p[0], p[1], p[2]),
                              white - p[0],
                              white - p[1],
                              white - p[2],
                              255 - white,
                              seen[0],
                              seen[1],
                              seen[2],
                              grayOf(seen[0], seen[1], seen[2]),
                              std::min(255, p[0] + p[5]),
                              std::min(255, p[1] + p[4] / 2 + p[4] % 2),
                              std::min(255, p[2] + p[4] + p[5]),
                              p[3],
                              (299 * r6 + 587 * g6 + 114 * b6 + 1000) / 2000,
                              r6 / 2,
                              (g6 + 1) / 2,
                              b6 / 2};
      std::vector<int> actual = {gray->GetRow(0)[i]};
      actual.insert(actual.end(), inks->GetRow(0) + 4 * i, inks->GetRow(0) + 4 * i + 4);
      actual.insert(actual.end(), light->GetRow(0) + 3 * i, light->GetRow(0) + 3 * i + 3);
      actual.push_back(grayOfInks->GetRow(0)[i]);
      actual.insert(actual.end(), four->GetRow(0) + 4 * i, four->GetRow(0) + 4 * i + 4);
      actual.push_back(grayOfSix->GetRow(0)[i]);
      actual.insert(actual.end(), lightOfSix->GetRow(0) + 3 * i, lightOfSix->GetRow(0) + 3 * i + 3);
      ASSERT_TRUE(std::equal(actual.begin(), actual.end(), std::begin(expected), std::end(expected)))
        << "bytes " << testing::PrintToString(Bytes(p, p + 6)) << ": " << testing::PrintToString(actual);
    }
  }
}

TEST(FormulaPixels, GiveTheColoursOfTheBook)
{
  struct Row
  {
    ColorModel from;
    Channels pixel;
    ColorModel to;
    Channels expected;
    double tolerance;
  };
  const double zero = 128.0 / 255;
  const Row kRows[] = {
    {Rgb, {1, 0, 0}, Cmyk, {0, 1, 1, 0}, 0},
    {Rgb, {0.5, 0.5, 0.5}, Cmyk, {0, 0, 0, 0.5}, 0},
    {Cmyk, {0, 0, 0, 1}, Rgb, {0, 0, 0}, 0},
    {Cmyk, {0.75, 0, 0, 0.5}, Rgb, {0, 0.5, 0.5}, 0},
    {Grayscale, {0.25}, Cmyk, {0, 0, 0, 0.75}, 0},
    {Grayscale, {0.25}, Hexachrome, {0, 0, 0, 0.75, 0, 0}, 0},
    {Cmyk, {0, 0, 0, 0.25}, Grayscale, {0.75}, 1e-7},
    {Hexachrome, {0, 0, 0, 0, 0, 1}, Rgb, {0, 1, 0}, 0},
    {Hexachrome, {0, 0, 0, 0, 1, 0}, Cmyk, {0, 0.5, 1, 0}, 0},
    // IEC 61966-2-1: the primaries of sRGB are X, Y, Z = 0.4124, 0.2126, 0.0193 and so on, on D65.
    {Rgb, {1, 0, 0}, Xyz, {0.4124 / 0.95046, 0.2126, 0.0193 / 1.08906}, 2e-4},
    {Rgb, {0, 1, 0}, Xyz, {0.3576 / 0.95046, 0.7152, 0.1192 / 1.08906}, 2e-4},
    {Rgb, {0, 0, 1}, Xyz, {0.1805 / 0.95046, 0.0722, 0.9505 / 1.08906}, 4e-4},
    {Xyz, {1, 1, 1}, Lab, {1, zero, zero}, 1e-6},
    {Xyz, {1, 1, 1}, Rgb, {1, 1, 1}, 1e-6},
    {Lab, {0, zero, zero}, Xyz, {0, 0, 0}, 1e-6},
    // CIE 15: L* of a luminance of 18 % is 49.496; sRGB encodes it as 0.461356.
    {Xyz, {0.3, 0.18, 0.9}, Grayscale, {0.461356}, 1e-5},
    {Lab, {0.49496, 0.9, 0.1}, Grayscale, {0.461356}, 1e-5},
    {Grayscale, {0.461356}, Lab, {0.49496, zero, zero}, 1e-5},
    {Grayscale, {0.461356}, Xyz, {0.18, 0.18, 0.18}, 1e-5},
    // Beyond the ends, and no number at all.
    {Rgb, {2, -1, std::numeric_limits<double>::quiet_NaN()}, Cmyk, {0, 1, 1, 0}, 0},
    {Rgb,
     {std::numeric_limits<double>::infinity(), -1e30, std::numeric_limits<double>::quiet_NaN()},
     Xyz,
     {0.43388, 0.21264, 0.01775},
     2e-4},
  };
  for (const Row &row : kRows) {
    const auto source = CreateColorData({row.from, Float32}, 1, 1),
               destination = CreateColorData({row.to, Float32}, 1, 1);
    for (unsigned channel = 0; channel < row.pixel.size(); ++channel)
      source->SetSample(0, 0, channel, static_cast<float>(row.pixel[channel]));
    ASSERT_TRUE(ConvertByFormula(*source, *destination));
    for (unsigned channel = 0; channel < row.expected.size(); ++channel)
      EXPECT_NEAR(destination->GetSample(0, 0, channel), row.expected[channel], row.tolerance)
        << NameOf(row.from, row.to) << " " << testing::PrintToString(row.pixel) << ", channel " << channel;
  }
}

TEST(FormulaPixels, Kept_AlphaIsFilledFromCmykToRgb)
{
  const auto cmyk = CreateColorData({Cmyk, UInt16, false, true}, 1, 1),
             rgb = CreateColorData({Rgb, UInt16, true, true}, 1, 1);
  cmyk->SetSample(0, 0, 4, 0.25f);
  ASSERT_TRUE(ConvertByFormula(*cmyk, *rgb));
  EXPECT_EQ(rgb->GetSample(0, 0, 3), 1.0f);
  ASSERT_TRUE(ConvertByFormula(*rgb, *cmyk));
  EXPECT_EQ(cmyk->GetSample(0, 0, 4), 1.0f);
}

TEST(FormulaPixels, TouchNothingBesideThePixels)
{
  struct Row
  {
    PixelFormat from, to;
  };
  const Row kRows[] = {{{Rgb, UInt8}, {Cmyk, UInt8}},
                       {{Rgb, UInt8, true, true}, {Rgb, UInt8, false, true}},
                       {{Cmyk, UInt8}, {Hexachrome, UInt8}},
                       {{Hexachrome, UInt16, true, true}, {Lab, UInt16, false, true}},
                       {{Xyz, Float32}, {Cmyk, Float32, false, true}},
                       {{Lab, UInt8}, {Xyz, UInt8}},
                       {{Lab, UInt16}, {Rgb, UInt16, true}}};
  ForEachTarget([&] {
    for (const Row &row : kRows) {
      for (std::uint32_t width = 0; width <= 330; width += width < 70 ? 1 : 13) {
        const std::uint32_t in = row.from.BytesPerPixel() * width, out = row.to.BytesPerPixel() * width;
        const auto tight = CreateColorData(row.from, width, 3, in, nullptr);
        const auto expected = CreateColorData(row.to, width, 3, out);
        FillAtRandom(*tight, width);
        ASSERT_TRUE(ConvertByFormula(*tight, *expected));
        // Odd strides and odd addresses; the buffers end with their last pixel, where a sanitizer sees a byte beyond.
        Bytes source(1 + 2 * (in + 3) + in), destination(1 + 2 * (out + 5) + out, 0xEE);
        for (std::uint32_t y = 0; y < 3; ++y)
          std::copy_n(tight->GetRow(y), in, source.data() + 1 + std::size_t{y} * (in + 3));
        const auto before = CreateColorData(row.from, width, 3, in + 3, source.data() + 1);
        const auto after = CreateColorData(row.to, width, 3, out + 5, destination.data() + 1);
        ASSERT_TRUE(ConvertByFormula(*before, *after));
        Bytes whole(destination.size(), 0xEE);
        for (std::uint32_t y = 0; y < 3; ++y)
          std::copy_n(expected->GetRow(y), out, whole.data() + 1 + std::size_t{y} * (out + 5));
        ASSERT_TRUE(destination == whole) << NameOf(row.from.model, row.to.model) << ", " << width << " wide";
        if (in == out) { // in place
          const auto over = CreateColorData(row.to, width, 3, in + 3, source.data() + 1);
          ASSERT_TRUE(ConvertByFormula(*before, *over));
          for (std::uint32_t y = 0; y < 3; ++y)
            ASSERT_TRUE(std::equal(over->GetRow(y), over->GetRow(y) + out, expected->GetRow(y))) << width;
        }
      }
    }
  });
}

TEST(FormulaPixels, RefuseOtherModelsAndSizes)
{
  const auto rgb = CreateColorData({Rgb, UInt8}, 3, 2), none = CreateColorData({Cmyk, UInt8}, 0, 2);
  for (const ColorModel model : {Cmy, Hls, Hsv, Spot, Indexed, Registration, static_cast<ColorModel>(11)}) {
    EXPECT_FALSE(HasFormula(model, Rgb) || HasFormula(Rgb, model));
    EXPECT_FALSE(ConvertByFormula(*rgb, *CreateColorData({model, UInt8}, 3, 2)));
  }
  for (const auto &[width, height] : {std::pair(2u, 2u), std::pair(3u, 3u)})
    EXPECT_FALSE(ConvertByFormula(*rgb, *CreateColorData({Cmyk, UInt8}, width, height)));
  EXPECT_TRUE(ConvertByFormula(*CreateColorData({Rgb, UInt8}, 0, 2), *none));
}

class FormulaPixelsAndProfiles : public ShippedProfiles
{};

TEST_F(FormulaPixelsAndProfiles, AgreeWithProfilesOnLabAndXyz)
{
  // The profile engine, for which sRGB, Lab and XYZ are matrices and a curve of other makers, within the 16 bits of
  // its tables and the 1/65536 of numbers in profiles.
  const auto engine = ColorManagementSystem::Get(ColorManagementModule::LCMS);
  const struct
  {
    ColorModel model, profileModel;
    std::shared_ptr<ColorProfile> profile;
  } kRows[] = {{Lab, Lab, lab}, {Xyz, Rgb, Shipped(L"D65_XYZ.icc")}};
  const auto rgb = CreateColorData({Rgb, UInt16}, 200, 5);
  FillAtRandom(*rgb, 3);
  for (const auto &row : kRows) {
    TransformOptions options;
    options.intent = RenderingIntent::RelativeColorimetric;
    options.source = {Rgb, UInt16};
    options.destination = {row.profileModel, UInt16};
    const auto transform = engine->CreateTransform(*srgb, *row.profile, options);
    ASSERT_NE(transform, nullptr);
    const auto managed = CreateColorData(options.destination, 200, 5);
    const auto formula = CreateColorData({row.model, UInt16}, 200, 5);
    ASSERT_TRUE(transform->Convert(*rgb, *managed) && ConvertByFormula(*rgb, *formula));
    for (std::uint32_t y = 0; y < 5; ++y) {
      for (std::uint32_t x = 0; x < 200; ++x) {
        for (unsigned channel = 0; channel < 3; ++channel)
          ASSERT_NEAR(formula->GetSample(y, x, channel), managed->GetSample(y, x, channel), 6e-4)
            << NameOf(Rgb, row.model) << " of " << testing::PrintToString(ColoursAt(*rgb, y, x));
      }
    }
  }
}

TEST(FormulaColours, OfThreeDoublesAreInversesAndUncut)
{
  const FormulaColor colour = {0.2, 0.55, 0.9};
  const auto near = [](const FormulaColor &a, const FormulaColor &b, double tolerance) {
    return std::abs(a[0] - b[0]) < tolerance && std::abs(a[1] - b[1]) < tolerance && std::abs(a[2] - b[2]) < tolerance;
  };
  EXPECT_TRUE(near(ConvertXyzToRgb(ConvertRgbToXyz(colour)), colour, 1e-6));
  EXPECT_TRUE(near(ConvertXyzToLab(ConvertLabToXyz(colour)), colour, 1e-12));
  EXPECT_TRUE(near(ConvertRgbToXyz({1, 1, 1}), {1, 1, 1}, 1e-7));
  const FormulaColor white = {1, 128.0 / 255, 128.0 / 255};
  EXPECT_TRUE(near(ConvertLabToXyz(white), {1, 1, 1}, 1e-12));
  EXPECT_TRUE(near(ConvertXyzToLab({1, 1, 1}), white, 1e-12));
  EXPECT_GT(ConvertLabToXyz({1, 1, 0.5})[0], 1.2);
  EXPECT_TRUE(near(ConvertXyzToRgb({2, 2, 2}), {1, 1, 1}, 1e-12)); // but for RGB
}

} // namespace
