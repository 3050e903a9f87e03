// Transforms that bake themselves: when they do, in which layouts, of what files, and what they leave to the engine.
#include "tests/settings/support/settings_folders.h"
#include "tests/support/each_target.h"
#include "tests/support/guarded_bytes.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/formula_pixels.h"
#include "zelclr/colorsystem/gamut_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <thread>

using namespace ColorSystem;
using namespace tests;
using enum ColorModel;
using enum SampleType;
using enum TransformPrecision;

namespace {

using Profile = std::shared_ptr<ColorProfile>;
using Engine = std::shared_ptr<ColorManagementSystem>;
using Transform = std::shared_ptr<ColorTransform>;
using View = std::unique_ptr<ColorData>;

constexpr PixelFormat kRgb8{Rgb, UInt8}, kCmyk8{Cmyk, UInt8}, kGray8{Grayscale, UInt8};
constexpr auto kFew = static_cast<std::uint32_t>(BakingColorTransform::kFewPixels);

View RandomPixels(const PixelFormat &format, std::uint32_t width, std::uint32_t height, unsigned seed = 1)
{
  auto data = CreateColorData(format, width, height);
  std::mt19937 random(seed);
  std::generate_n(data->GetRow(0), std::size_t{data->GetRowStride()} * height,
                  [&] { return static_cast<std::uint8_t>(random()); });
  return data;
}

Bytes BytesIn(const ColorData &data)
{
  return {data.GetRow(0), data.GetRow(0) + std::size_t{data.GetRowStride()} * data.GetHeight()};
}

TransformOptions Options(const PixelFormat &from, const PixelFormat &to, TransformPrecision precision = Automatic)
{
  TransformOptions options;
  options.source = from;
  options.destination = to;
  options.precision = precision;
  return options;
}

Bytes Converted(const Transform &transform, const ColorData &source, const PixelFormat &to)
{
  const auto made = CreateColorData(to, source.GetWidth(), source.GetHeight());
  EXPECT_TRUE(transform->Convert(source, *made));
  return BytesIn(*made);
}

/// In pieces that are never baked.
Bytes ConvertedByTheEngine(const Transform &transform, ColorData &source, const PixelFormat &to)
{
  const auto made = CreateColorData(to, source.GetWidth(), source.GetHeight());
  const PixelFormat &from = source.GetPixelFormat();
  for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
    for (std::uint32_t left = 0; left < source.GetWidth(); left += kFew - 1) {
      const std::uint32_t width = std::min(kFew - 1, source.GetWidth() - left);
      const auto part = CreateColorData(from, width, 1, 0, source.GetRow(row) + left * from.BytesPerPixel());
      const auto piece = CreateColorData(to, width, 1, 0, made->GetRow(row) + left * to.BytesPerPixel());
      EXPECT_TRUE(transform->Convert(*part, *piece));
    }
  }
  return BytesIn(*made);
}

class BakedTransforms : public ShippedProfiles
{
protected:
  BakedTransforms()
  {
    linear->ClearTransformCache();
    lcms->ClearTransformCache();
  }

  const Engine linear = ColorManagementSystem::Get(ColorManagementModule::Linear);
  const Engine lcms = ColorManagementSystem::Get(ColorManagementModule::LCMS);
  const Profile wide = Shipped(L"CompatibleWithAdobeRGB1998.icc");
};

// --- Layouts ---------------------------------------------------------------------------------------------------------

/// Colours of plain pixels without gaps, in another layout.
void CopySamples(const ColorData &from, ColorData &to)
{
  for (std::uint32_t row = 0; row < from.GetHeight(); ++row)
    for (std::uint32_t column = 0; column < from.GetWidth(); ++column)
      for (unsigned channel = 0; channel < from.GetPixelFormat().ColourChannels(); ++channel)
        to.SetSample(row, column, channel, from.GetSample(row, column, channel));
}

/// A view with gaps between its rows, the last of which ends where the memory ends.
struct Guarded
{
  Guarded(const PixelFormat &format, std::uint32_t width, std::uint32_t height, std::uint32_t gap)
    : bytes(std::size_t{width * format.BytesPerPixel() + gap} * height - gap),
      view(CreateColorData(format, width, height, width * format.BytesPerPixel() + gap, bytes.data()))
  {}
  /// Whether what lies between the rows is that of `before`.
  bool KeepsGaps(const Bytes &before) const
  {
    const std::size_t row = view->GetWidth() * view->GetPixelFormat().BytesPerPixel();
    const Bytes after = bytes.Copy();
    for (std::size_t i = 0; i < after.size(); ++i)
      if (i % view->GetRowStride() >= row && after[i] != before[i])
        return false;
    return true;
  }

  GuardedBytes bytes;
  View view;
};

TEST_F(BakedTransforms, GiveEveryLayoutTheSameColours)
{
  struct Pair
  {
    Engine engine;
    Profile from, to;
    ColorModel source, destination;
  };
  const Pair pairs[] = {{lcms, srgb, wide, Rgb, Rgb},       {lcms, srgb, swop, Rgb, Cmyk},
                        {lcms, swop, srgb, Cmyk, Rgb},      {lcms, swop, swop, Cmyk, Cmyk},
                        {lcms, gray, srgb, Grayscale, Rgb}, {lcms, srgb, gray, Rgb, Grayscale},
                        {lcms, srgb, lab, Rgb, Lab},        {linear, srgb, swop, Rgb, Cmyk},
                        {linear, swop, srgb, Cmyk, Rgb},    {linear, gray, srgb, Grayscale, Rgb}};
  constexpr std::uint32_t kWidth = 129, kHeight = 3;
  unsigned layouts = 0;
  for (const Pair &pair : pairs) {
    pair.engine->ClearTransformCache();
    for (const SampleType in : {UInt8, UInt16}) {
      for (const SampleType out : {UInt8, UInt16}) {
        const PixelFormat plainIn{pair.source, in}, plainOut{pair.destination, out};
        const auto source = RandomPixels(plainIn, kWidth, kHeight),
                   expected = CreateColorData(plainOut, kWidth, kHeight);
        ASSERT_TRUE(pair.engine->CreateTransform(*pair.from, *pair.to, Options(plainIn, plainOut, Baked))
                      ->Convert(*source, *expected));
        for (unsigned flags = 0; flags < 16; ++flags) {
          const PixelFormat from{pair.source, in, (flags & 1) != 0, (flags & 2) != 0};
          const PixelFormat to{pair.destination, out, (flags & 4) != 0, (flags & 8) != 0};
          const Transform transform = pair.engine->CreateTransform(*pair.from, *pair.to, Options(from, to, Baked));
          if (transform == nullptr) // the engine has no such layout
            continue;
          for (const std::uint32_t gap : {0u, 1u, 6u}) {
            Guarded before(from, kWidth, kHeight, gap), after(to, kWidth, kHeight, gap + 1);
            CopySamples(*source, *before.view);
            const Bytes gaps = after.bytes.Copy();
            ASSERT_TRUE(transform->Convert(*before.view, *after.view));
            EXPECT_TRUE(after.KeepsGaps(gaps));
            const std::string what = std::string(NameOfColorModel(pair.source)) + " to " +
                                     std::string(NameOfColorModel(pair.destination)) + ", flags " +
                                     std::to_string(flags) + ", gap " + std::to_string(gap);
            for (std::uint32_t i = 0; i < kWidth * kHeight; ++i) {
              const std::uint32_t row = i / kWidth, column = i % kWidth;
              for (unsigned channel = 0; channel < to.ColourChannels(); ++channel)
                ASSERT_EQ(after.view->GetSample(row, column, channel), expected->GetSample(row, column, channel))
                  << what;
              if (to.HasAlpha()) {
                const float alpha = from.HasAlpha() ? before.view->GetSample(row, column, from.ColourChannels()) : 1.0f;
                const double rounding = out == UInt8 && in == UInt16 ? 0.5 / 255 + 1e-6 : 0.0;
                ASSERT_NEAR(after.view->GetSample(row, column, to.ColourChannels()), alpha, rounding) << what;
              }
            }
            if (from.BytesPerPixel() == to.BytesPerPixel()) {
              const auto inPlace =
                CreateColorData(to, kWidth, kHeight, before.view->GetRowStride(), before.bytes.data());
              ASSERT_TRUE(transform->Convert(*before.view, *inPlace));
              for (std::uint32_t row = 0; row < kHeight; ++row)
                ASSERT_TRUE(std::equal(inPlace->GetRow(row), inPlace->GetRow(row) + kWidth * to.BytesPerPixel(),
                                       after.view->GetRow(row)))
                  << what << ", in place";
            }
          }
          ++layouts;
        }
      }
    }
  }
  EXPECT_GT(layouts, 200u);
}

// Beyond the kernels: what samples them, and exact rows.
TEST_F(BakedTransforms, AreTheSameOnEveryInstructionSet)
{
  for (const TransformPrecision precision : {Baked, Exact}) {
    for (const auto &[from, to] : {std::pair(srgb, swop), std::pair(swop, srgb), std::pair(srgb, wide),
                                   std::pair(srgb, lab), std::pair(lab, swop), std::pair(gray, swop)})
    {
      for (const SampleType type : {UInt8, UInt16}) {
        const PixelFormat in{from->GetColorModel(), type}, out{to->GetColorModel(), type};
        const auto source = RandomPixels(in, 3001, 1);
        const Bytes expected = Converted(lcms->CreateTransform(*from, *to, Options(in, out, precision)), *source, out);
        ForEachTarget([&, from = from, to = to] {
          lcms->ClearTransformCache();
          EXPECT_TRUE(Converted(lcms->CreateTransform(*from, *to, Options(in, out, precision)), *source, out) ==
                      expected)
            << ZelUtl::Utf8FromWide(from->GetName() + L" to " + to->GetName());
        });
      }
    }
  }
}

// --- When ------------------------------------------------------------------------------------------------------------

TEST_F(BakedTransforms, AreMadeWhenEnoughPixelsAreAskedFor)
{
  const Transform transform = lcms->CreateTransform(*srgb, *swop, Options(kRgb8, kCmyk8));
  const auto tile = RandomPixels(kRgb8, 64, 64), last = RandomPixels(kRgb8, 64, 64, 2);
  const Bytes byEngine = ConvertedByTheEngine(transform, *tile, kCmyk8);
  const Bytes byTable = Converted(lcms->CreateTransform(*srgb, *swop, Options(kRgb8, kCmyk8, Baked)), *tile, kCmyk8);
  ASSERT_TRUE(byEngine != byTable) << "else nothing is seen here";
  // What the pieces were made of is not counted.
  for (std::uint64_t asked = 64 * 64; asked < BakingColorTransform::kPixelsBeforeBaking; asked += 64 * 64)
    EXPECT_TRUE(Converted(transform, *tile, kCmyk8) == byEngine) << asked;
  for (int time = 0; time < 2; ++time)
    EXPECT_TRUE(Converted(transform, *tile, kCmyk8) == byTable);
  EXPECT_TRUE(ConvertedByTheEngine(transform, *tile, kCmyk8) == byEngine) << "small buffers stay exact";
  // One row more or less decides.
  for (const std::uint32_t pixels : {kFew - 1, kFew}) {
    const auto row = RandomPixels(kRgb8, pixels, 1);
    EXPECT_EQ(Converted(transform, *row, kCmyk8) == ConvertedByTheEngine(transform, *row, kCmyk8), pixels < kFew);
  }
}

TEST_F(BakedTransforms, LeaveRecordsExact)
{
  const auto of = [](const Profile &profile) { return ColorContext(*profile, RenderingIntent::RelativeColorimetric); };
  const ColorConverter converter(of(srgb), of(swop));
  std::vector<CLR_COLORSPEC> before;
  const auto convert = [&] {
    std::vector<CLR_COLORSPEC> made;
    std::mt19937 random(4);
    for (int i = 0; i < 300; ++i) {
      const auto rgb = static_cast<std::uint32_t>(random());
      made.emplace_back();
      EXPECT_TRUE(converter.Convert(CLR_COLORSPEC::MakeCOLORREF(rgb & 0xFFFFFF), made.back(), 3, 0));
    }
    return made;
  };
  const auto first = convert();
  const auto page = RandomPixels(kRgb8, 300, 300), made = CreateColorData(kCmyk8, 300, 300);
  ASSERT_TRUE(converter.ConvertColorData(*page, *made));
  EXPECT_TRUE(convert() == first);
}

TEST_F(BakedTransforms, AreMadeOnceByManyThreads)
{
  constexpr unsigned kThreads = 8;
  for (int round = 0; round < (kSanitized ? 2 : 6); ++round) {
    lcms->ClearTransformCache();
    const Transform transform = lcms->CreateTransform(*srgb, *swop, Options(kRgb8, kCmyk8));
    std::vector<View> sources, results;
    for (unsigned i = 0; i < kThreads; ++i) {
      sources.push_back(RandomPixels(kRgb8, 128, 129, i));
      results.push_back(CreateColorData(kCmyk8, 128, 129));
    }
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < kThreads; ++i)
      threads.emplace_back([&, i] {
        for (int time = 0; time < 3; ++time)
          EXPECT_TRUE(transform->Convert(*sources[i], *results[i]));
      });
    for (std::thread &thread : threads)
      thread.join();
    const Transform alone = lcms->CreateTransform(*srgb, *swop, Options(kRgb8, kCmyk8, Baked));
    for (unsigned i = 0; i < kThreads; ++i)
      EXPECT_TRUE(BytesIn(*results[i]) == Converted(alone, *sources[i], kCmyk8)) << i;
  }
}

// --- Files -----------------------------------------------------------------------------------------------------------

/// Light to the power of 1 and of 2.2 are far apart.
Bytes ProfileOfGamma(std::uint16_t gamma)
{
  IccProfile profile = MatrixProfile("A name");
  for (std::size_t i = 5; i < 8; ++i)
    profile.tags[i].second = CurveTag({gamma});
  return profile.Build();
}

TEST_F(BakedTransforms, AreNotMadeOfAFileThatHasChanged)
{
  const Bytes old = ProfileOfGamma(0x0233), other = ProfileOfGamma(0x0100);
  const auto pixels = RandomPixels(kRgb8, 200, 200);
  const auto make = [this](const Profile &profile, TransformPrecision precision) {
    return std::array{
      lcms->CreateTransform(*profile, *swop, Options(kRgb8, kCmyk8, precision)),
      lcms->CreateTransform(*srgb, *profile, Options(kRgb8, kRgb8, precision)),
      lcms->CreateProofTransform(*profile, *swop, srgb.get(), Options(kRgb8, kRgb8, precision)),
    };
  };
  for (const TransformPrecision precision : {Automatic, Baked, Exact}) {
    for (const std::string change : {"rewritten", "replaced", "removed", "cut"}) {
      const Profile profile = ProfileOf("changing.icc", old);
      const auto exact = make(profile, Automatic), transforms = make(profile, precision);
      if (change == "rewritten") {
        WriteBytes(folder.Path("changing.icc"), other);
      } else if (change == "replaced") {
        folder.Write("new.icc", other);
        std::filesystem::rename(PathOf(folder.Path("new.icc")), PathOf(folder.Path("changing.icc")));
      } else if (change == "removed") {
        std::filesystem::remove(PathOf(folder.Path("changing.icc")));
      } else {
        WriteBytes(folder.Path("changing.icc"), Bytes(old.begin(), old.begin() + 200));
      }
      for (std::size_t i = 0; i < exact.size(); ++i) {
        ASSERT_NE(exact[i], nullptr);
        const PixelFormat &to = i == 0 ? kCmyk8 : kRgb8;
        EXPECT_TRUE(Converted(transforms[i], *pixels, to) == ConvertedByTheEngine(exact[i], *pixels, to))
          << change << ", transform " << i;
      }
      lcms->ClearTransformCache();
    }
  }
}

// --- What is left to the engine --------------------------------------------------------------------------------------

TEST_F(BakedTransforms, LeaveToTheEngineWhatHasNoTable)
{
  const PixelFormat six8{Hexachrome, UInt8}, float3{Rgb, Float32}, float4{Cmyk, Float32};
  const struct
  {
    Engine engine;
    Profile from, to;
    PixelFormat source, destination;
  } rows[] = {{lcms, six, srgb, six8, kRgb8},      {lcms, srgb, six, kRgb8, six8},
              {linear, six, srgb, six8, kRgb8},    {linear, srgb, swop, float3, kCmyk8},
              {linear, srgb, swop, kRgb8, float4}, {linear, srgb, six, kRgb8, {Hexachrome, UInt16}}};
  for (const auto &row : rows) {
    const auto pixels = RandomPixels({row.source.model, UInt8}, 300, 100),
               source = CreateColorData(row.source, 300, 100);
    CopySamples(*pixels, *source);
    for (const TransformPrecision precision : {Automatic, Baked, Exact}) {
      const Transform transform =
        row.engine->CreateTransform(*row.from, *row.to, Options(row.source, row.destination, precision));
      ASSERT_NE(transform, nullptr);
      EXPECT_TRUE(Converted(transform, *source, row.destination) ==
                  ConvertedByTheEngine(transform, *source, row.destination))
        << NameOfColorModel(row.source.model) << " to " << NameOfColorModel(row.destination.model);
    }
  }
}

/// What the steps of a profile alone do not tell: adaptations of black and white, and curves of gray.
TEST_F(BakedTransforms, LeaveToTheEngineWhatIsNoPlainPipeline)
{
  struct Row
  {
    const char *what;
    Profile from, to;
    RenderingIntent intent = RenderingIntent::RelativeColorimetric;
    bool blackPointCompensation = false;
  };
  const Row rows[] = {{"perceptual to version 4", swop, srgb, RenderingIntent::Perceptual},
                      {"saturation to version 4", swop, srgb, RenderingIntent::Saturation},
                      {"absolute", srgb, swop, RenderingIntent::AbsoluteColorimetric},
                      {"absolute inks", swop, wide, RenderingIntent::AbsoluteColorimetric},
                      {"black points", wide, swop, RenderingIntent::RelativeColorimetric, true},
                      {"gray", gray, swop},
                      {"to gray", swop, gray}};
  for (const Row &row : rows) {
    const PixelFormat from{row.from->GetColorModel(), UInt8}, to{row.to->GetColorModel(), UInt8};
    TransformOptions options = Options(from, to, Exact);
    options.intent = row.intent;
    options.blackPointCompensation = row.blackPointCompensation;
    const Transform transform = lcms->CreateTransform(*row.from, *row.to, options);
    const auto source = RandomPixels(from, 200, 50);
    const Bytes engines = ConvertedByTheEngine(transform, *source, to);
    EXPECT_TRUE(Converted(transform, *source, to) == engines) << row.what;
    // And a table is made by the engine: near its results, and nearer than those of the plain pipeline.
    options.precision = Baked;
    const Bytes baked = Converted(lcms->CreateTransform(*row.from, *row.to, options), *source, to);
    double sum = 0.0;
    for (std::size_t i = 0; i < baked.size(); ++i)
      sum += std::abs(baked[i] - engines[i]);
    EXPECT_LT(sum / static_cast<double>(baked.size()), 0.5) << row.what;
    EXPECT_GT(sum, 0.0) << row.what << ": was it baked?";
  }
}

TEST_F(BakedTransforms, OfFormulasAreNearTheFormulas)
{
  const PixelFormat formats[] = {kRgb8, kCmyk8, kGray8, {Rgb, UInt16, true, true}, {Cmyk, UInt16, true}, {Lab, UInt8}};
  const auto profileOf = [this](ColorModel model) {
    return model == Rgb ? srgb : model == Cmyk ? swop : model == Lab ? lab : gray;
  };
  for (const PixelFormat &from : formats) {
    for (const PixelFormat &to : formats) {
      const auto source = RandomPixels(from, 150, 150), expected = CreateColorData(to, 150, 150),
                 baked = CreateColorData(to, 150, 150), exact = CreateColorData(to, 150, 150);
      const auto convert = [&](TransformPrecision precision, ColorData &made) {
        return linear->CreateTransform(*profileOf(from.model), *profileOf(to.model), Options(from, to, precision))
          ->Convert(*source, made);
      };
      ASSERT_TRUE(ConvertByFormula(*source, *expected) && convert(Exact, *exact) && convert(Baked, *baked));
      // Where a formula is that of the profiles, their steps may stand in for it.
      const bool isProfiles = (from.model == Rgb && to.model == Lab) || (from.model == Lab && to.model == Rgb);
      const std::string what =
        std::string(NameOfColorModel(from.model)) + " to " + std::string(NameOfColorModel(to.model));
      double sum = 0.0;
      for (std::uint32_t i = 0; i < 150 * 150; ++i) {
        for (unsigned channel = 0; channel < to.ColourChannels(); ++channel) {
          const float right = expected->GetSample(i / 150, i % 150, channel);
          sum += std::abs(baked->GetSample(i / 150, i % 150, channel) - right);
          ASSERT_NEAR(exact->GetSample(i / 150, i % 150, channel), right, isProfiles ? 1.01 / 255 : 0.0) << what;
        }
      }
      EXPECT_LT(sum / (150.0 * 150 * to.ColourChannels()), 2.0 / 255) << what; // formulas have edges
      if (from.HasAlpha() && to.HasAlpha()) {
        for (std::uint32_t i = 0; i < 150 * 150; ++i)
          ASSERT_EQ(baked->GetSample(i / 150, i % 150, 3), source->GetSample(i / 150, i % 150, 3)) << what;
      }
    }
  }
}

// --- The mask of the gamut -------------------------------------------------------------------------------------------

using BakedMasks = BakedTransforms;

TEST_F(BakedMasks, DifferFromTheDistancesNearTheToleranceOnly)
{
  constexpr std::uint32_t kCount = kSanitized ? 4000 : 60000;
  for (const wchar_t *name : {L"USWebCoatedSWOP.icc", L"ISO Uncoated FOGRA29.icc"}) {
    for (const Profile &from : {srgb, swop, lab}) {
      for (const SampleType type : {UInt8, UInt16}) {
        const GamutCheck check(from, Shipped(name));
        const auto pixels = RandomPixels({from->GetColorModel(), type}, kCount, 1);
        std::vector<float> distances(kCount);
        std::vector<std::uint8_t> mask(kCount);
        ASSERT_TRUE(check.Distances(*pixels, distances) && check.Mask(*pixels, mask));
        double apart = 0.0;
        unsigned different = 0;
        for (std::uint32_t i = 0; i < kCount; ++i) {
          ASSERT_TRUE(mask[i] == 0 || mask[i] == 255);
          if ((mask[i] != 0) == (distances[i] > GamutCheck::kTolerance))
            continue;
          ++different;
          apart = std::max(apart, std::abs(distances[i] - GamutCheck::kTolerance));
        }
        const std::string what = ZelUtl::Utf8FromWide(from->GetName() + L" by " + name);
        EXPECT_LE(different, kCount / 200) << what;
        EXPECT_LE(apart, 1.5) << what;
      }
    }
  }
}

TEST_F(BakedMasks, HaveNoGapsAndFormats)
{
  const GamutCheck check(srgb, swop);
  const auto plain = RandomPixels(kRgb8, 77, 5);
  std::vector<std::uint8_t> expected(77 * 5), mask(77 * 5 + 1, 9);
  ASSERT_TRUE(check.Mask(*plain, expected));
  for (const PixelFormat &format : {PixelFormat{Rgb, UInt8, true, true}, PixelFormat{Rgb, UInt8, true},
                                    PixelFormat{Rgb, UInt8, false, true}, PixelFormat{Rgb, Packed32}})
  {
    Guarded other(format, 77, 5, 3);
    CopySamples(*plain, *other.view);
    ASSERT_TRUE(check.Mask(*other.view, mask));
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), mask.begin()));
    EXPECT_EQ(mask.back(), 9);
  }
  EXPECT_FALSE(check.Mask(*plain, std::span(mask).first(77 * 5 - 1)));
  EXPECT_FALSE(check.Mask(*CreateColorData(kCmyk8, 1, 1), mask)) << "another model";
  EXPECT_FALSE(check.Mask(*CreateColorData({Rgb, Float32}, 1, 1), mask)) << "no table has floats";
  EXPECT_FALSE(GamutCheck(six, swop).Mask(*CreateColorData({Hexachrome, UInt8}, 1, 1), mask)) << "nor six inks";
  EXPECT_TRUE(check.Mask(*CreateColorData(kRgb8, 0, 3), {}));
}

class BakedMasksOfEngines : public SettingsFolders
{
protected:
  BakedMasksOfEngines() { Restart(); } // other tests have left theirs
};

// By formula every colour can be had.
TEST_F(BakedMasksOfEngines, AreThoseOfTheEngineInForce)
{
  const GamutCheck check(Shipped(L"sRGB_v4.icc"), Shipped(L"USWebCoatedSWOP.icc"));
  constexpr std::uint32_t kCount = 3000;
  const auto pixels = RandomPixels(kRgb8, kCount, 1);
  std::vector<std::uint8_t> mask(kCount);
  std::vector<float> distances(kCount);
  ColorSettings settings(InForce());
  for (const auto module : {ColorManagementModule::LCMS, ColorManagementModule::Linear, ColorManagementModule::LCMS}) {
    settings.SetColorManagementModule(module);
    ASSERT_TRUE(Settings().SetApplicationColorSettings(settings)) << Settings().GetWriteFailure();
    ASSERT_TRUE(check.Distances(*pixels, distances) && check.Mask(*pixels, mask));
    const auto out =
      std::count_if(distances.begin(), distances.end(), [](float d) { return d > GamutCheck::kTolerance; });
    EXPECT_NEAR(static_cast<double>(std::count(mask.begin(), mask.end(), 255)), static_cast<double>(out), kCount / 50.0)
      << NameOfColorManagementModule(module);
  }
}

} // namespace
