// How true baked pixels are: against the profiles themselves, and no worse than the tables of Little CMS.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/engines/color_management_system.h"

#define CMS_NO_REGISTER_KEYWORD // C++17 has none
#include <lcms2.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <random>

using namespace ColorSystem;
using namespace tests;
using enum ColorModel;
using enum SampleType;
using enum RenderingIntent;

namespace {

using Profile = std::shared_ptr<ColorProfile>;
using Words = std::vector<std::uint16_t>;

constexpr std::uint32_t kBlock = 65536; // pixels

cmsUInt32Number FormatOf(ColorModel model, SampleType type)
{
  switch (model) {
  case Rgb:
    return type == UInt8 ? TYPE_RGB_8 : TYPE_RGB_16;
  case Cmyk:
    return type == UInt8 ? TYPE_CMYK_8 : TYPE_CMYK_16;
  case Lab:
    return type == UInt8 ? TYPE_Lab_8 : TYPE_Lab_16;
  default:
    return type == UInt8 ? TYPE_GRAY_8 : TYPE_GRAY_16;
  }
}

unsigned ChannelsOf(ColorModel model)
{
  return PixelFormat{model, UInt8}.ColourChannels();
}

/// Errors in steps of 255.
struct Errors
{
  double mean = 0.0, most = 0.0;
  double wrong = 0.0; ///< the share of samples that are off by more than a step
};

class ErrorSum
{
public:
  void Add(const Bytes &made, const Words &exact)
  {
    std::vector<std::uint32_t> apart(made.size()); // in 257ths
    for (std::size_t i = 0; i < made.size(); ++i)
      apart[i] = static_cast<std::uint32_t>(std::abs(made[i] * 257 - exact[i]));
    for (const std::uint32_t error : apart) {
      sum_ += error;
      most_ = std::max(most_, error);
      wrong_ += error > 257;
    }
    samples_ += apart.size();
  }
  Errors Result() const
  {
    const auto all = static_cast<double>(samples_);
    return {static_cast<double>(sum_) / (257.0 * all), most_ / 257.0, static_cast<double>(wrong_) / all};
  }

private:
  std::uint64_t sum_ = 0, wrong_ = 0, samples_ = 0;
  std::uint32_t most_ = 0;
};

class BakedAccuracy : public ShippedProfiles
{
protected:
  const Profile wide = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  const Profile plain = Shipped(L"sRGB_IEC61966-2-1_no_black_scaling.icc");

  ~BakedAccuracy() override
  {
    for (const auto &[path, profile] : opened_)
      cmsCloseProfile(profile);
  }

  cmsHPROFILE Opened(const Profile &profile)
  {
    const std::string path = ZelUtl::Utf8FromWide(profile->GetPath());
    cmsHPROFILE &opened = opened_[path];
    if (opened == nullptr)
      opened = cmsOpenProfileFromFile(path.c_str(), "r");
    return opened;
  }
  /// Little CMS's own.
  std::shared_ptr<void> Bare(const Profile &from, const Profile &to, SampleType in, SampleType out,
                             cmsUInt32Number flags, RenderingIntent intent = RelativeColorimetric)
  {
    return {cmsCreateTransform(Opened(from), FormatOf(from->GetColorModel(), in), Opened(to),
                               FormatOf(to->GetColorModel(), out), static_cast<cmsUInt32Number>(intent), flags),
            cmsDeleteTransform};
  }
  static std::shared_ptr<ColorTransform> Ours(const Profile &from, const Profile &to, SampleType in, SampleType out,
                                              TransformPrecision precision,
                                              RenderingIntent intent = RelativeColorimetric, unsigned grid = 0)
  {
    TransformOptions options;
    options.intent = intent;
    options.precision = precision;
    options.gridPoints = static_cast<std::uint16_t>(grid);
    options.source = {from->GetColorModel(), in};
    options.destination = {to->GetColorModel(), out};
    return ColorManagementSystem::Get(ColorManagementModule::LCMS)->CreateTransform(*from, *to, options);
  }
  /// Samples without gaps.
  template <class In, class Out>
  static void Convert(const ColorTransform &transform, const Profile &from, const std::vector<In> &source,
                      const Profile &to, std::vector<Out> &made)
  {
    const auto typeOf = [](auto sample) { return sizeof sample == 1 ? UInt8 : UInt16; };
    const PixelFormat in = {from->GetColorModel(), typeOf(In())}, out = {to->GetColorModel(), typeOf(Out())};
    const auto pixels = static_cast<std::uint32_t>(source.size() / in.ColourChannels());
    made.resize(std::size_t{pixels} * out.ColourChannels());
    const auto before = CreateColorData(in, pixels, 1, 0, const_cast<In *>(source.data()));
    ASSERT_TRUE(transform.Convert(*before, *CreateColorData(out, pixels, 1, 0, made.data())));
  }
  static Words Widened(const Bytes &bytes)
  {
    Words words(bytes.size());
    std::transform(bytes.begin(), bytes.end(), words.begin(),
                   [](std::uint8_t byte) { return static_cast<std::uint16_t>(byte * 257); });
    return words;
  }

  /// Ours and Little CMS's over all colours of three channels; over random ones and the corners of four.
  std::pair<Errors, Errors> Measure(const Profile &from, const Profile &to, unsigned grid = 0)
  {
    const auto exact = Ours(from, to, UInt16, UInt16, TransformPrecision::Exact);
    const auto ours = Ours(from, to, UInt8, UInt8, TransformPrecision::Baked, RelativeColorimetric, grid);
    const auto theirs = Bare(from, to, UInt8, UInt8, 0);
    const bool isInk = from->GetColorModel() == Cmyk;
    ErrorSum mine, other;
    Bytes source(std::size_t{kBlock} * ChannelsOf(from->GetColorModel())), made, bare;
    Words expected;
    std::mt19937 random(1);
    for (unsigned block = 0; block < (isInk ? 128 : 256); block += kSanitized ? 51 : 1) {
      for (std::uint32_t i = 0; i < kBlock; ++i) {
        const std::uint32_t number = isInk ? static_cast<std::uint32_t>(random()) : block | i << 8;
        std::memcpy(source.data() + std::size_t{i} * (isInk ? 4 : 3), &number, isInk ? 4 : 3);
        if (isInk && block == 0 && i < 16)
          for (unsigned ink = 0; ink < 4; ++ink)
            source[4 * i + ink] = (i >> ink & 1) != 0 ? 255 : 0;
      }
      Convert(*exact, from, Widened(source), to, expected);
      Convert(*ours, from, source, to, made);
      bare.resize(made.size());
      cmsDoTransform(theirs.get(), source.data(), bare.data(), kBlock);
      mine.Add(made, expected);
      other.Add(bare, expected);
    }
    return {mine.Result(), other.Result()};
  }
  void ExpectAsTrueAsLittleCms(const Profile &from, const Profile &to)
  {
    const auto [ours, theirs] = Measure(from, to);
    Record("ours", ours);
    Record("theirs", theirs);
    EXPECT_LE(ours.mean, theirs.mean + 0.01);
    EXPECT_LE(ours.most, theirs.most + 0.1);
  }
  /// For --gtest_output.
  static void Record(const char *what, const Errors &errors)
  {
    RecordProperty(what, std::to_string(errors.mean) + " mean, " + std::to_string(errors.most) + " most, " +
                           std::to_string(errors.wrong * 100.0) + " % by more than a step");
  }

private:
  std::map<std::string, cmsHPROFILE> opened_;
};

TEST_F(BakedAccuracy, OfScreenColoursInInksIsThatOfLittleCms)
{
  ExpectAsTrueAsLittleCms(srgb, swop);
}

TEST_F(BakedAccuracy, OfScreenColoursOnAnotherScreenIsThatOfLittleCms)
{
  ExpectAsTrueAsLittleCms(srgb, wide);
}

TEST_F(BakedAccuracy, OfScreenColoursInLabIsThatOfLittleCms)
{
  ExpectAsTrueAsLittleCms(srgb, lab);
}

TEST_F(BakedAccuracy, OfInksOnAScreenIsThatOfLittleCms)
{
  ExpectAsTrueAsLittleCms(swop, srgb);
}

TEST_F(BakedAccuracy, GrowsWithTheGrid)
{
  const Errors errors = Measure(srgb, swop, 52).first;
  Record("52 nodes", errors);
  EXPECT_LE(errors.mean, 0.23);
  EXPECT_LE(errors.wrong, 0.02);
}

// --- Neutrals and ramps ----------------------------------------------------------------------------------------------

TEST_F(BakedAccuracy, KeepsGraysNeutral)
{
  Bytes grays, made;
  for (int level = 0; level < 256; ++level)
    grays.insert(grays.end(), 3, static_cast<std::uint8_t>(level));
  for (const Profile &to : {wide, plain}) {
    for (const unsigned grid : {0u, 17u, 33u}) { // by curves and a matrix; by tables
      const auto transform = Ours(srgb, to, UInt8, UInt8, TransformPrecision::Baked, RelativeColorimetric, grid);
      Convert(*transform, srgb, grays, to, made);
      for (std::size_t i = 0; i < made.size(); i += 3) {
        ASSERT_TRUE(made[i] == made[i + 1] && made[i] == made[i + 2])
          << i / 3 << ": " << testing::PrintToString(Bytes(&made[i], &made[i] + 3)) << ", " << grid << " nodes";
      }
    }
  }
  Convert(*Ours(srgb, lab, UInt8, UInt8, TransformPrecision::Baked), srgb, grays, lab, made);
  for (std::size_t i = 0; i < made.size(); i += 3)
    ASSERT_TRUE(made[i + 1] == 128 && made[i + 2] == 128) << i / 3;
}

/// Every corner of the source: black, white, full inks.
TEST_F(BakedAccuracy, KeepsPureColoursPure)
{
  for (const Profile &from : {srgb, swop, gray, lab}) {
    for (const Profile &to : {srgb, swop, gray, lab, wide}) {
      const unsigned inputs = ChannelsOf(from->GetColorModel());
      Bytes corners, made;
      for (unsigned i = 0; i < 1u << inputs; ++i)
        for (unsigned input = 0; input < inputs; ++input)
          corners.push_back((i >> input & 1) != 0 ? 255 : 0);
      Words exact;
      Convert(*Ours(from, to, UInt16, UInt16, TransformPrecision::Exact), from, Widened(corners), to, exact);
      Convert(*Ours(from, to, UInt8, UInt8, TransformPrecision::Baked), from, corners, to, made);
      for (std::size_t i = 0; i < made.size(); ++i) {
        const std::string what = ZelUtl::Utf8FromWide(from->GetName() + L" to " + to->GetName()) + ", sample " +
                                 std::to_string(i) + ", exactly " + std::to_string(exact[i] / 257.0);
        EXPECT_NEAR(made[i], exact[i] / 257.0, 0.52) << what;
        EXPECT_TRUE(exact[i] != 0 || made[i] == 0) << what;
        EXPECT_TRUE(exact[i] != 65535 || made[i] == 255) << what;
      }
    }
  }
}

TEST_F(BakedAccuracy, KeepsRampsMonotone)
{
  unsigned ramps = 0;
  for (const Profile &from : {srgb, swop}) {
    for (const Profile &to : {swop, srgb, wide, lab, Shipped(L"ISO Coated FOGRA39.icc")}) {
      const unsigned inputs = ChannelsOf(from->GetColorModel()), outputs = ChannelsOf(to->GetColorModel());
      const auto exact = Ours(from, to, UInt16, UInt16, TransformPrecision::Exact);
      const auto baked = Ours(from, to, UInt8, UInt8, TransformPrecision::Baked);
      const auto baked16 = Ours(from, to, UInt16, UInt16, TransformPrecision::Baked);
      for (unsigned moving = 1; moving < 1u << inputs; ++moving) { // the others are at rest, at either end
        for (const std::uint8_t rest : {std::uint8_t{0}, std::uint8_t{255}}) {
          Bytes source, made;
          for (int step = 0; step < 256; ++step)
            for (unsigned input = 0; input < inputs; ++input)
              source.push_back((moving >> input & 1) != 0 ? static_cast<std::uint8_t>(step) : rest);
          Words expected, made16;
          Convert(*exact, from, Widened(source), to, expected);
          Convert(*baked, from, source, to, made);
          Convert(*baked16, from, Widened(source), to, made16);
          for (unsigned output = 0; output < outputs; ++output) {
            const auto isMonotone = [&](const auto &samples, int sign) {
              for (std::size_t i = output + outputs; i < samples.size(); i += outputs)
                if (sign * samples[i] < sign * samples[i - outputs])
                  return false;
              return true;
            };
            for (const int sign : {1, -1}) {
              if (!isMonotone(expected, sign))
                continue;
              ++ramps;
              EXPECT_TRUE(isMonotone(made, sign) && isMonotone(made16, sign))
                << ZelUtl::Utf8FromWide(from->GetName() + L" to " + to->GetName()) << ", ramp of " << moving
                << ", output " << output;
            }
          }
        }
      }
    }
  }
  EXPECT_GT(ramps, 300u);
}

// --- Exactness -------------------------------------------------------------------------------------------------------

class BakedExactness : public BakedAccuracy, public testing::WithParamInterface<RenderingIntent>
{};

/// Between all kinds of profile. Half a step is the rounding to 8 bits. Between two profiles colours are rounded to 16
/// bits; where a sum is so near to the middle that it is rounded to the other side, and the second profile's table is
/// steep, ink changes by some tenths of a step: seldom.
TEST_P(BakedExactness, IsThatOfLittleCmsIn16Bits)
{
  constexpr std::uint32_t kColours = 2048;
  std::vector<Profile> all = {srgb, plain, wide, swop, Shipped(L"ISO Uncoated FOGRA29.icc"), lab, gray};
  if (!kSanitized)
    for (const wchar_t *name :
         {L"ISO Coated FOGRA39.icc", L"GRACoL Coated TR006.icc", L"Newsprint SNAP TR002.icc", L"Dot Gain 20%.icc"})
      all.push_back(Shipped(name));
  double worst = 0.0, worst8 = 0.0;
  std::size_t far = 0, samples = 0;
  for (const Profile &from : all) {
    for (const Profile &to : all) {
      Bytes source(std::size_t{kColours} * ChannelsOf(from->GetColorModel())), made;
      std::mt19937 random(9);
      for (std::size_t i = 0; i < source.size(); ++i) { // noise, then dark colours, where curves are steep
        const std::uint8_t byte = static_cast<std::uint8_t>(random());
        source[i] = i < source.size() / 2 ? byte : byte / 6;
      }
      const Words wide16 = Widened(source);
      Convert(*Ours(from, to, UInt8, UInt8, TransformPrecision::Exact, GetParam()), from, source, to, made);
      Words expected(made.size()), made16;
      const auto bare = Bare(from, to, UInt16, UInt16, cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE, GetParam());
      ASSERT_NE(bare, nullptr);
      cmsDoTransform(bare.get(), wide16.data(), expected.data(), kColours);
      Convert(*Ours(from, to, UInt16, UInt16, TransformPrecision::Exact, GetParam()), from, wide16, to, made16);
      const std::string what = ZelUtl::Utf8FromWide(from->GetName() + L" to " + to->GetName());
      double most = 0.0, most16 = 0.0;
      for (std::size_t i = 0; i < made.size(); ++i) {
        const double apart = std::abs(made[i] - expected[i] / 257.0);
        most = std::max(most, apart);
        far += apart > 0.51;
        most16 = std::max(most16, std::abs(made16[i] - expected[i]) / 257.0);
      }
      EXPECT_LE(most, 0.65) << what;
      EXPECT_LE(most16, 0.25) << what;
      samples += made.size();
      worst = std::max(worst, most16);
      worst8 = std::max(worst8, most);
    }
  }
  EXPECT_LE(far, samples / 20000);
  RecordProperty("worst", std::to_string(worst) + " in 16 bits, " + std::to_string(worst8) + " in 8, " +
                            std::to_string(far) + " of " + std::to_string(samples) + " beyond 0.51");
}

INSTANTIATE_TEST_SUITE_P(OfEveryIntent, BakedExactness,
                         testing::Values(Perceptual, RelativeColorimetric, Saturation, AbsoluteColorimetric));

} // namespace
