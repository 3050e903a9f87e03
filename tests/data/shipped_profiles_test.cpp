// The profiles that ship, as Little CMS reads them: what each claims to be, and what it does to colours.
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <lcms2.h>
#include <lcms2_plugin.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <memory>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr cmsUInt32Number kSixInks = FLOAT_SH(1) | COLORSPACE_SH(PT_MCH6) | CHANNELS_SH(6) | BYTES_SH(0);

/// Channels are 0 to 1 for light, 0 to 100 for inks.
using Device = std::vector<double>;

struct Space
{
  cmsColorSpaceSignature signature;
  cmsUInt32Number format;
  Device white;
};

const Space kGray = {cmsSigGrayData, TYPE_GRAY_DBL, {1}};
const Space kRgb = {cmsSigRgbData, TYPE_RGB_DBL, {1, 1, 1}};
const Space kCmyk = {cmsSigCmykData, TYPE_CMYK_DBL, {0, 0, 0, 0}};
const Space kSix = {cmsSig6colorData, kSixInks, {0, 0, 0, 0, 0, 0}};
const Space kLab = {cmsSigLabData, TYPE_Lab_DBL, {100, 0, 0}};

struct Shipped
{
  const char *file;
  const char *description;
  const Space *space;
  cmsProfileClassSignature deviceClass;
  cmsColorSpaceSignature connection;
  double version;
  cmsCIELab white;       // absolute: the paper, as its measurements have it
  double inkLimit = 0;   // in percent
  double darkest = 0;    // L of the darkest neutral that it holds
  double neutral = 0.01; // Delta E*ab by which a neutral may come back changed
};

constexpr cmsCIELab kWhite = {100, 0, 0};
constexpr auto kDisplay = cmsSigDisplayClass;
constexpr auto kOutput = cmsSigOutputClass;
constexpr auto kXyz = cmsSigXYZData;
constexpr auto kPcsLab = cmsSigLabData;

// Curves of 16 bits move a neutral by hundredths, tables of inks by some tenths.
const Shipped kShipped[] = {
  {"CIE Lab.icc", "CIE Lab", &kLab, cmsSigColorSpaceClass, kPcsLab, 2.4, kWhite},
  {"CompatibleWithAdobeRGB1998.icc", "Compatible with Adobe RGB (1998)", &kRgb, kDisplay, kXyz, 2.4, kWhite},
  {"D65_XYZ.icc", "XYZ on D65, linear", &kRgb, kDisplay, kXyz, 2.4, kWhite},
  {"Dot Gain 10%.icc", "Dot Gain 10%", &kGray, kOutput, kXyz, 2.4, kWhite, 0, 0, 0.03},
  {"Dot Gain 15%.icc", "Dot Gain 15%", &kGray, kOutput, kXyz, 2.4, kWhite, 0, 0, 0.03},
  {"Dot Gain 20%.icc", "Dot Gain 20%", &kGray, kOutput, kXyz, 2.4, kWhite, 0, 0, 0.03},
  {"Dot Gain 25%.icc", "Dot Gain 25%", &kGray, kOutput, kXyz, 2.4, kWhite, 0, 0, 0.03},
  {"Dot Gain 30%.icc", "Dot Gain 30%", &kGray, kOutput, kXyz, 2.4, kWhite, 0, 0, 0.03},
  {"GRACoL Coated TR006.icc",
   "GRACoL Coated (TR006)",
   &kCmyk,
   kOutput,
   kPcsLab,
   2.2,
   {95.00, -0.02, -1.96},
   320,
   15,
   0.7},
  {"Gray Gamma 18.icc", "Gray Gamma 1.8", &kGray, kDisplay, kXyz, 2.4, kWhite},
  {"Gray Gamma 22.icc", "Gray Gamma 2.2", &kGray, kDisplay, kXyz, 2.4, kWhite},
  {"Hexachrome.icc",
   "Hexachrome, coated paper (modelled)",
   &kSix,
   kOutput,
   kPcsLab,
   2.4,
   {95.00, 0.00, -2.00},
   350,
   10,
   0.7},
  {"ISO Coated FOGRA39.icc", "ISO Coated (FOGRA39)", &kCmyk, kOutput, kPcsLab, 2.2, {95.00, 0.00, -2.00}, 330, 15, 0.7},
  {"ISO Uncoated FOGRA29.icc",
   "ISO Uncoated (FOGRA29)",
   &kCmyk,
   kOutput,
   kPcsLab,
   2.2,
   {95.71, 0.61, -2.32},
   300,
   35,
   0.7},
  {"Newsprint SNAP TR002.icc",
   "Newsprint SNAP (TR002)",
   &kCmyk,
   kOutput,
   kPcsLab,
   2.2,
   {80.12, 0.02, 3.55},
   260,
   45,
   0.7},
  {"USWebCoatedSWOP.icc",
   "US Web Coated SWOP (TR003)",
   &kCmyk,
   kOutput,
   kPcsLab,
   2.2,
   {92.50, 0.00, 0.00},
   300,
   15,
   0.7},
  {"sRGB_IEC61966-2-1_no_black_scaling.icc", "sRGB IEC61966-2-1 no black scaling", &kRgb, kDisplay, kXyz, 2.4, kWhite,
   0, 0, 0.03},
  {"sRGB_v4.icc", "sRGB (ICC version 4)", &kRgb, kDisplay, kXyz, 4.3, kWhite},
};

void PrintTo(const Shipped &shipped, std::ostream *stream)
{
  *stream << shipped.file;
}

using Profile = std::unique_ptr<void, decltype(&cmsCloseProfile)>;
using Transform = std::unique_ptr<void, decltype(&cmsDeleteTransform)>;

Profile Open(const std::string &file)
{
  const auto path = std::filesystem::path(ZELCLR_PROFILES) / file;
  Profile profile(cmsOpenProfileFromFile(path.string().c_str(), "r"), cmsCloseProfile);
  if (!profile)
    throw std::runtime_error("cannot open " + path.string());
  return profile;
}

Profile Lab()
{
  return {cmsCreateLab4Profile(nullptr), cmsCloseProfile};
}

Transform Between(const Profile &from, cmsUInt32Number fromFormat, const Profile &to, cmsUInt32Number toFormat,
                  cmsUInt32Number intent)
{
  constexpr cmsUInt32Number kExact = cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE;
  Transform transform(cmsCreateTransform(from.get(), fromFormat, to.get(), toFormat, intent, kExact),
                      cmsDeleteTransform);
  if (!transform)
    throw std::runtime_error("no transform for intent " + std::to_string(intent));
  return transform;
}

cmsCIELab Looks(const Shipped &shipped, const Device &device, cmsUInt32Number intent)
{
  const Transform transform = Between(Open(shipped.file), shipped.space->format, Lab(), TYPE_Lab_DBL, intent);
  cmsCIELab lab = {};
  cmsDoTransform(transform.get(), device.data(), &lab, 1);
  return lab;
}

/// ICC.1, 7.2.18: MD5 of the file without its flags, intent and identifier.
std::array<cmsUInt8Number, 16> IdentifierOf(const std::string &file)
{
  tests::Bytes bytes = tests::ReadBytes(ZELCLR_PROFILES "/" + file);
  for (const auto &[first, end] : {std::pair(44, 48), std::pair(64, 68), std::pair(84, 100)})
    std::fill(bytes.begin() + first, bytes.begin() + end, std::uint8_t{0});
  const cmsHANDLE md5 = cmsMD5alloc(nullptr);
  cmsMD5add(md5, bytes.data(), static_cast<cmsUInt32Number>(bytes.size()));
  cmsProfileID identifier = {};
  cmsMD5finish(&identifier, md5);
  return std::to_array(identifier.ID8);
}

const Shipped &Named(const std::string &file)
{
  return *std::find_if(std::begin(kShipped), std::end(kShipped), [&](const Shipped &s) { return s.file == file; });
}

class ShippedProfile : public testing::TestWithParam<Shipped>
{};

} // namespace

TEST(ShippedProfiles, NoFileIsMissingOrUnlisted)
{
  std::set<std::string> listed;
  for (const Shipped &shipped : kShipped)
    listed.insert(shipped.file);
  std::set<std::string> found;
  for (const auto &entry : std::filesystem::directory_iterator(ZELCLR_PROFILES))
    found.insert(entry.path().filename().string());
  EXPECT_EQ(found, listed);
}

TEST_P(ShippedProfile, IsWhatItsNameSays)
{
  const Shipped &expected = GetParam();
  const Profile profile = Open(expected.file);
  EXPECT_EQ(cmsGetDeviceClass(profile.get()), expected.deviceClass);
  EXPECT_EQ(cmsGetColorSpace(profile.get()), expected.space->signature);
  EXPECT_EQ(cmsGetPCS(profile.get()), expected.connection);
  EXPECT_NEAR(cmsGetProfileVersion(profile.get()), expected.version, 0.001);
  std::array<char, 100> description = {};
  cmsGetProfileInfoASCII(profile.get(), cmsInfoDescription, "en", "US", description.data(), description.size());
  EXPECT_STREQ(description.data(), expected.description);

  std::tm created = {};
  EXPECT_TRUE(cmsGetHeaderCreationDateTime(profile.get(), &created));
  EXPECT_EQ(created.tm_year, 126) << "built without the fixed date";
  if (expected.version >= 4) {
    std::array<cmsUInt8Number, 16> claimed = {};
    cmsGetHeaderProfileID(profile.get(), claimed.data());
    EXPECT_EQ(claimed, IdentifierOf(expected.file));
  }
}

TEST_P(ShippedProfile, KeepsNeutralsBothWays)
{
  const Shipped &shipped = GetParam();
  const Profile profile = Open(shipped.file);
  const Transform build = Between(Lab(), TYPE_Lab_DBL, profile, shipped.space->format, INTENT_RELATIVE_COLORIMETRIC);
  const Transform look = Between(profile, shipped.space->format, Lab(), TYPE_Lab_DBL, INTENT_RELATIVE_COLORIMETRIC);
  for (double l = std::ceil(shipped.darkest); l <= 100; ++l) {
    const cmsCIELab wanted = {l, 0, 0};
    Device device(shipped.space->white.size());
    cmsCIELab got = {};
    cmsDoTransform(build.get(), &wanted, device.data(), 1);
    cmsDoTransform(look.get(), device.data(), &got, 1);
    EXPECT_LE(cmsDeltaE(&wanted, &got), shipped.neutral) << "L " << l << ": " << got.L << ' ' << got.a << ' ' << got.b;
  }
}

// A fit to measurements passes by the paper, which they hold twice, up to 0.1 apart.
TEST_P(ShippedProfile, HasItsPaperForWhite)
{
  const cmsCIELab white = Looks(GetParam(), GetParam().space->white, INTENT_ABSOLUTE_COLORIMETRIC);
  EXPECT_LE(cmsDeltaE(&white, &GetParam().white), 0.15) << white.L << ' ' << white.a << ' ' << white.b;
}

TEST_P(ShippedProfile, StaysWithinItsInkLimit)
{
  const Shipped &shipped = GetParam();
  if (shipped.inkLimit == 0)
    return;
  const Profile profile = Open(shipped.file);
  const Profile screen = Open("sRGB_IEC61966-2-1_no_black_scaling.icc");
  for (const cmsUInt32Number intent :
       std::initializer_list<cmsUInt32Number>{INTENT_PERCEPTUAL, INTENT_RELATIVE_COLORIMETRIC, INTENT_SATURATION})
  {
    const Transform build = Between(screen, TYPE_RGB_DBL, profile, shipped.space->format, intent);
    double most = 0;
    Device inks(shipped.space->white.size());
    constexpr int kSteps = 32;
    for (int i = 0; i < (kSteps + 1) * (kSteps + 1) * (kSteps + 1); ++i) {
      const std::array<double, 3> rgb = {i % (kSteps + 1) / double{kSteps},
                                         i / (kSteps + 1) % (kSteps + 1) / double{kSteps},
                                         i / (kSteps + 1) / (kSteps + 1) / double{kSteps}};
      cmsDoTransform(build.get(), rgb.data(), inks.data(), 1);
      double total = 0;
      for (const double ink : inks)
        total += ink;
      most = std::max(most, total);
    }
    // A table interpolates between builds that keep the limit, and then bends them by its output curves: 1 %.
    EXPECT_LE(most, shipped.inkLimit * 1.01) << "intent " << intent;
    EXPECT_GE(most, shipped.inkLimit - 20) << "intent " << intent << ": its black is not as deep as it could be";
  }
}

INSTANTIATE_TEST_SUITE_P(All, ShippedProfile, testing::ValuesIn(kShipped), [](const auto &instance) {
  std::string name = instance.param.file;
  std::replace_if(
    name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
});

// Each channel prints its own ink. Cyan to black: FOGRA39L; Lab as measured, white of the paper included.
TEST(ShippedProfiles, InksComeInTheirOrder)
{
  const cmsCIELab process[] = {{55, -37, -50}, {48, 74, -3}, {89, -5, 93}, {16, 0, 0}, {67, 58, 82}, {62, -74, 22}};
  for (const char *file : {"ISO Coated FOGRA39.icc", "Hexachrome.icc"}) {
    const Shipped &press = Named(file);
    for (std::size_t ink = 0; ink < press.space->white.size(); ++ink) {
      Device inks = press.space->white;
      inks[ink] = 100;
      const cmsCIELab lab = Looks(press, inks, INTENT_ABSOLUTE_COLORIMETRIC);
      EXPECT_LE(cmsDeltaE(&lab, &process[ink]), 1.0)
        << file << " ink " << ink << ": " << lab.L << ' ' << lab.a << ' ' << lab.b;
    }
  }
}

// Tone 50 % covers 50 % and the gain: Y = 1 - cover, and L* = 116 Y^(1/3) - 16.
TEST(ShippedProfiles, DotsGainWhatTheNameSays)
{
  for (const int gain : {10, 15, 20, 25, 30}) {
    const cmsCIELab lab =
      Looks(Named("Dot Gain " + std::to_string(gain) + "%.icc"), {0.5}, INTENT_RELATIVE_COLORIMETRIC);
    EXPECT_NEAR(lab.L, 116 * std::cbrt(0.5 - gain / 100.0) - 16, 0.02) << gain;
  }
}

// The channels are X, Y and Z over those of the white, not adapted: of sRGB's red, 0.4124 / 0.9505, 0.2126 and
// 0.0193 / 1.0890 (IEC 61966-2-1, matrix of 5.2).
TEST(ShippedProfiles, XyzOnD65HoldsSharesOfTheWhite)
{
  const Transform transform = Between(Open("sRGB_IEC61966-2-1_no_black_scaling.icc"), TYPE_RGB_DBL, Open("D65_XYZ.icc"),
                                      TYPE_RGB_DBL, INTENT_RELATIVE_COLORIMETRIC);
  const std::array<double, 3> red = {1, 0, 0};
  std::array<double, 3> shares = {};
  cmsDoTransform(transform.get(), red.data(), shares.data(), 1);
  EXPECT_NEAR(shares[0], 0.4124 / 0.9505, 0.0002);
  EXPECT_NEAR(shares[1], 0.2126, 0.0002);
  EXPECT_NEAR(shares[2], 0.0193 / 1.0890, 0.0002);
}
