// Colours: their channels, what may be built on what, conversion, difference.
#include "tests/colorsystem/support/profile_folders.h"
#include "zelclr/colorsystem/color.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/colorsystem/typed_colors.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <thread>

using namespace ColorSystem;
using Array = ColorChannelArray;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::vector<double> ValuesOf(const Color &color)
{
  std::vector<double> values;
  for (unsigned i = 0; i < color.GetChannelCount(); ++i)
    values.push_back(color[i]);
  return values;
}

std::vector<double> ValuesOf(const Array &array)
{
  std::vector<double> values;
  for (unsigned i = 0; i < array.GetCount(); ++i)
    values.push_back(array[i]);
  return values;
}

void InThreads(int count, const std::function<void()> &work)
{
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i)
    threads.emplace_back(work);
  for (std::thread &thread : threads)
    thread.join();
}

TEST(ColorChannelArray, RandomEditsFollowAVector)
{
  std::mt19937 random(1);
  Array arrays[3];
  std::vector<double> models[3];
  const auto value = [&random] { return static_cast<double>(random() % 8) / 4.0; };
  for (int step = 0; step < 20000; ++step) {
    const std::size_t at = random() % 3, from = random() % 3;
    const auto index = static_cast<unsigned>(models[at].empty() ? 0 : random() % models[at].size());
    const double v = value();
    if (random() % 16 == 0) {
      arrays[at] = arrays[from]; // itself, too
      models[at] = models[from];
    } else if (models[at].size() < 4) {
      const auto count = static_cast<unsigned>(random() % 3);
      arrays[at].Init(count, v);
      models[at].insert(models[at].end(), count, v);
    } else if (random() % 64 == 0) {
      Array other;
      other.Init(static_cast<unsigned>(random() % 8), v);
      arrays[at] = other; // which dies
      models[at].assign(other.GetCount(), v);
    } else {
      switch (random() % 4) {
      case 0:
        arrays[at][index] += v, models[at][index] += v;
        break;
      case 1:
        arrays[at][index] -= v, models[at][index] -= v;
        break;
      case 2:
        arrays[at][index] *= v, models[at][index] *= v;
        break;
      default:
        arrays[at][index] = v, models[at][index] = v;
      }
    }
    ASSERT_EQ(ValuesOf(arrays[at]), models[at]) << step;
    ASSERT_EQ(arrays[at] == arrays[from], models[at] == models[from]) << step;
  }
  Array one;
  one.Init(1, 3.0);
  one[0] /= 4.0;
  EXPECT_EQ(one[0], 0.75);
}

TEST(ColorChannelArray, ANanEqualsNothing)
{
  Array array, other;
  EXPECT_TRUE(array == other) << "both empty";
  array.Init(2, 0.5);
  EXPECT_FALSE(array == other);
  EXPECT_TRUE(array == array);
  array[1] = kNan;
  EXPECT_FALSE(array == array);
}

TEST(ColorChannelArray, Kept_NewChannelsComeWithTheOthersLockWhichOutlivesIt)
{
  Array target;
  target.Init(1, 0.0);
  {
    Array source;
    source.Init(3, 1.0);
    target = source;
    // Were the locks two, the sums of these threads would race for the thread sanitizer, and go wrong.
    InThreads(4, [&] {
      for (int i = 0; i < 500; ++i)
        source[2] += 1.0, target[2] += 1.0;
    });
    EXPECT_EQ(source[2], 2001.0);
  }
  InThreads(4, [&] {
    for (int i = 0; i < 500; ++i)
      target[2] += 1.0;
  });
  EXPECT_EQ(target[2], 4001.0);
  EXPECT_EQ(target[0], 1.0);
}

class Colors : public tests::ShippedProfiles
{
protected:
  RgbColor Rgb(double r, double g, double b) const { return {r, g, b, ColorSpace(*srgb)}; }
};

std::string ErrorOf(const std::function<void()> &make)
{
  try {
    make();
  } catch (const ColorSystemError &error) {
    return error.what();
  }
  return "";
}

struct ModelRow
{
  const char *signature;
  ColorModel model;
  unsigned channels;
  std::vector<ColorModel> takes; ///< the models of colours that a profile of this model serves
};

const std::vector<ModelRow> &ModelRows()
{
  using enum ColorModel;
  static const std::vector<ModelRow> kRows = {
    {"RGB ", Rgb, 3, {Rgb, Hls, Hsv}}, {"CMYK", Cmyk, 4, {Cmyk, Cmy}},        {"GRAY", Grayscale, 1, {Grayscale}},
    {"Lab ", Lab, 3, {Lab}},           {"CMY ", Cmy, 3, {Cmyk, Cmy}},         {"HLS ", Hls, 3, {Rgb, Hls, Hsv}},
    {"HSV ", Hsv, 3, {Rgb, Hls, Hsv}}, {"6CLR", Hexachrome, 6, {Hexachrome}}, {"MCH6", Hexachrome, 6, {Hexachrome}},
  };
  return kRows;
}

TEST_F(Colors, LiveInTheSpacesOfTheirFamily)
{
  constexpr unsigned kChannels[] = {3, 4, 1, 3, 3, 3, 3, 6, 1, 1, 1, 1, 1};
  for (const ModelRow &row : ModelRows()) {
    const auto profile = ProfileOf("profile.icc", tests::NamedProfile("A name", row.signature));
    ASSERT_EQ(profile->GetColorModel(), row.model) << row.signature;
    EXPECT_EQ(profile->GetChannelCount(), row.channels);
    const ColorSpace own(*profile);
    for (unsigned number = 0; number <= 12; ++number) {
      const auto model = static_cast<ColorModel>(number);
      const bool fits = std::find(row.takes.begin(), row.takes.end(), model) != row.takes.end();
      EXPECT_EQ(own.GetValidModel(model), fits) << row.signature << " " << number;
      if (!fits) {
        EXPECT_EQ(ErrorOf([&] { ColorSpace(model, profile); }), "ColorSpace: Failed to get color model") << number;
        continue;
      }
      const Color color{ColorSpace(model, profile)};
      EXPECT_EQ(color.GetColorModel(), model);
      EXPECT_EQ(ValuesOf(color), std::vector<double>(kChannels[number], 0.0)) << row.signature << " " << number;
    }
  }
  for (unsigned number = 0; number <= 12; ++number) {
    const ColorSpace none(static_cast<ColorModel>(number), L"");
    EXPECT_EQ(none.GetChannelCount(), kChannels[number]);
    const bool fits = number == 8 || number == 10;
    EXPECT_EQ(ErrorOf([&] { Color{none}; }), fits ? "" : "Color: Failed to get color model") << number;
  }
}

TEST(ColorsWithoutProfiles, AreZeroInLab)
{
  const tests::TemporaryFolder empty;
  ZelUtl::Folders folders;
  folders.data = empty.Path();
  ColorProfileManager::Shutdown();
  ZelUtl::SetFolders(folders);
  const LabColor color = RegistrationColor(1).ConvertToLabColor();
  EXPECT_EQ(color.GetColorProfile(), nullptr);
  EXPECT_EQ(color.GetL() + color.GetA() + color.GetB(), 0.0);
  ColorProfileManager::Shutdown();
  ZelUtl::ResetFolders();
}

TEST_F(Colors, OfOneModelAreBuiltByName)
{
  const auto cmy = ProfileOf("cmy.icc", tests::NamedProfile("A name", "CMY "));
  const CmykColor inks(0.1, 0.2, 0.3, 0.4, ColorSpace(*cmy));
  EXPECT_EQ(inks.GetBlack(), 0.4) << "four inks, though the profile has three";
  EXPECT_EQ(HsvColor(0.1, 0.2, 0.3, ColorSpace(*srgb)).GetColorModel(), ColorModel::Hsv);
  EXPECT_EQ(HlsColor(0.1, 0.2, 0.3, ColorSpace(*srgb)).GetSaturation(), 0.3);
  EXPECT_EQ(HexachromeColor(0, 0, 0, 0, 0.5, 0.25, ColorSpace(*six)).GetGreen(), 0.25);
  EXPECT_EQ(ValuesOf(LabColor()), std::vector<double>(3, 0.0));
  const SpotColor spot(L"ink", inks, 0.75);
  EXPECT_EQ(spot.GetDensity(), 0.75);
  EXPECT_TRUE(spot.GetAlternativeColor() == inks);
  EXPECT_EQ(RegistrationColor(0.5).GetDensity(), 0.5);
  EXPECT_EQ(RegistrationColor(0.5).GetColorProfile(), nullptr);

  EXPECT_EQ(ErrorOf([] { RgbColor{ColorSpace(ColorModel::Rgb, L"")}; }), "Color: Failed to get color model");
  EXPECT_EQ(ErrorOf([&] { RgbColor{ColorSpace(*swop)}; }), "Color: Failed to get color model");
  EXPECT_EQ(ErrorOf([] { ColorSpace(L"No such profile.icc"); }), "ColorSpace: Failed to find color profile");
  EXPECT_EQ(ErrorOf([] { ColorSpace(static_cast<const wchar_t *>(nullptr)); }),
            "ColorSpace: Failed to find color profile");
  EXPECT_EQ(ErrorOf([] { ColorSpace(ColorModel::Rgb, L"No such profile.icc"); }),
            "ColorSpace: Failed to find color profile");
  EXPECT_EQ(ErrorOf([] { ColorSpace(ColorModel::Cmyk, L"sRGB_v4.icc"); }), "ColorSpace: Failed to get color model");
}

TEST_F(Colors, AreValuesUntilTheyAreReferenced)
{
  RgbColor a = Rgb(0.1, 0.2, 0.3);
  RgbColor b = a;
  b.SetRed(0.9);
  EXPECT_EQ(a.GetRed(), 0.1);
  EXPECT_FALSE(a == b);
  b = a;
  EXPECT_TRUE(a == b);
  const Color doubled = a * 2.0;
  EXPECT_EQ(ValuesOf(doubled), (std::vector<double>{0.2, 0.4, 0.6}));
  EXPECT_EQ(ValuesOf(a), (std::vector<double>{0.1, 0.2, 0.3}));

  CmykColor inks(0.1, 0.2, 0.3, 0.4, ColorSpace(*swop));
  EXPECT_FALSE(b.Reference(inks));
  ZelUtl::Shared<Array> notAColor;
  EXPECT_FALSE(b.Reference(notAColor));
  EXPECT_EQ(ValuesOf(b), ValuesOf(a));
  EXPECT_TRUE(b.Reference(a));
  b *= 2.0;
  EXPECT_EQ(a.GetGreen(), 0.4) << "shared";
  const Color product = b * 2.0;
  EXPECT_EQ(a.GetGreen(), 0.4) << "a product is its own";
  b = Rgb(0.5, 0.5, 0.5);
  EXPECT_EQ(a.GetGreen(), 0.5) << "assigned into the shared channels";
  b.Detach();
  b.SetGreen(0.0);
  EXPECT_EQ(a.GetGreen(), 0.5);
  EXPECT_TRUE(a.Reference(a));

  Color any = a;
  any = inks; // another model
  EXPECT_TRUE(any == inks);
  EXPECT_EQ(any.GetColorModel(), ColorModel::Cmyk);
  EXPECT_EQ(inks.GetCompositeDensity(), (0.1 + 0.2 + 0.3 + 0.4) / 4);
  inks.SetCyan(kNan);
  EXPECT_FALSE(inks == inks);
}

TEST_F(Colors, ShareTheirChannelsAmongThreads)
{
  RgbColor first = Rgb(0, 0, 0), second = first;
  ASSERT_TRUE(second.Reference(first));
  InThreads(4, [&] {
    for (int i = 0; i < 500; ++i) {
      first[0] += 1.0;
      second[0] += 1.0;
      first.GetCompositeDensity();
    }
  });
  EXPECT_EQ(first.GetRed(), 4000.0);
}

TEST_F(Colors, Kept_SpacesOfOneModelAreEqual)
{
  const auto adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  EXPECT_TRUE(ColorSpace(*srgb) == ColorSpace(*adobe));
  EXPECT_FALSE(ColorSpace(*srgb) == ColorSpace(*swop));
  EXPECT_TRUE(Rgb(0.1, 0.2, 0.3) == RgbColor(0.1, 0.2, 0.3, ColorSpace(*adobe)));
}

TEST_F(Colors, TakeAnotherProfileOfTheirModel)
{
  const auto adobe = Shipped(L"CompatibleWithAdobeRGB1998.icc");
  RgbColor color = Rgb(0.1, 0.2, 0.3);
  EXPECT_FALSE(color.AssignColorProfile(*swop));
  EXPECT_FALSE(color.AssignColorSpace(ColorSpace(*swop)));
  EXPECT_EQ(color.GetColorProfile(), srgb);
  EXPECT_TRUE(color.AssignColorProfile(*adobe));
  EXPECT_EQ(color.GetColorProfile(), adobe);
  EXPECT_TRUE(color.AssignColorSpace(ColorSpace(*srgb)));
  EXPECT_EQ(color.GetColorProfile(), srgb);
  EXPECT_EQ(ValuesOf(color), (std::vector<double>{0.1, 0.2, 0.3}));
}

TEST_F(Colors, GoToTheOtherModelsOfTheirProfile)
{
  // A hue is its degrees divided by 255.
  struct Row
  {
    std::vector<double> rgb, hsv, hls;
  };
  const Row kRows[] = {
    {{1, 0, 0}, {0, 1, 1}, {0, 0.5, 1}},
    {{0, 1, 0}, {120.0 / 255, 1, 1}, {120.0 / 255, 0.5, 1}},
    {{0, 0.5, 0.5}, {180.0 / 255, 1, 0.5}, {180.0 / 255, 0.25, 1}},
    {{1, 0.5, 1}, {300.0 / 255, 0.5, 1}, {300.0 / 255, 0.75, 1}},
    {{0.75, 0.25, 0.5}, {330.0 / 255, 2.0 / 3, 0.75}, {330.0 / 255, 0.5, 0.5}},
    {{0.5, 0.5, 0.5}, {0, 0, 0.5}, {0, 0.5, 0}},
    {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
    {{1, 1, 1}, {0, 0, 1}, {0, 1, 0}},
  };
  using Point = std::pair<ColorModel, const std::vector<double> Row::*>;
  const Point points[] = {{ColorModel::Rgb, &Row::rgb}, {ColorModel::Hsv, &Row::hsv}, {ColorModel::Hls, &Row::hls}};
  const auto near = [](const std::vector<double> &a, const std::vector<double> &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double x, double y) { return std::abs(x - y) < 1e-12; }); // some roundings of numbers near 1
  };
  for (const Row &row : kRows) {
    for (const auto &[from, source] : points) {
      for (const auto &[to, expected] : points) {
        Color color{ColorSpace(from, srgb)};
        for (unsigned i = 0; i < 3; ++i)
          color.SetChannel(i, (row.*source)[i]);
        const auto converted = color.ConvertToColorSpace(ColorSpace(to, srgb), RenderingIntent::Perceptual);
        ASSERT_NE(converted, nullptr);
        EXPECT_PRED2(near, ValuesOf(*converted), row.*expected) << NameOfColorModel(from) << NameOfColorModel(to);
      }
    }
  }
  const CmykColor inks(0.5, 0.0, 1.0, 0.5, ColorSpace(*swop));
  const auto three = inks.ConvertToColorSpace(ColorSpace(ColorModel::Cmy, swop), RenderingIntent::Perceptual);
  EXPECT_EQ(ValuesOf(*three), (std::vector<double>{0.75, 0.5, 1.0}));
}

TEST_F(Colors, GoThroughProfiles)
{
  // What the primaries of sRGB are in CIE Lab on D50. Curves and matrices of the two profiles have 16 bits, and 8 of
  // them stand for a step of a*: 0.05 is ten times what they round off.
  struct Row
  {
    double r, g, b, l, a, bb;
  };
  constexpr Row kRows[] = {{1, 1, 1, 100, 0, 0},
                           {1, 0, 0, 54.29, 80.81, 69.89},
                           {0, 1, 0, 87.82, -79.27, 80.99},
                           {0, 0, 1, 29.57, 68.30, -112.03},
                           {0, 0, 0, 0, 0, 0},
                           {0.5, 0.5, 0.5, 53.39, 0, 0}};
  for (const Row &row : kRows) {
    const LabColor color = Rgb(row.r, row.g, row.b).ConvertToLabColor();
    EXPECT_NEAR(color.GetL() * 100, row.l, 0.05) << row.l;
    EXPECT_NEAR(color.GetA() * 255 - 128, row.a, 0.05) << row.l;
    EXPECT_NEAR(color.GetB() * 255 - 128, row.bb, 0.05) << row.l;
    const auto hsv = Rgb(row.r, row.g, row.b).ConvertToColorSpace(ColorSpace(ColorModel::Hsv, srgb), {});
    EXPECT_LT(hsv->GetDistance(color), 1e-3) << "a colour without a profile of its own model goes by its family";
  }
  const auto white = Rgb(1, 1, 1).ConvertToColorProfile(*swop, RenderingIntent::RelativeColorimetric);
  for (const double ink : ValuesOf(*white))
    EXPECT_NEAR(ink, 0.0, 2.5 / 65535) << "steps of 16 bits";
  EXPECT_EQ(Rgb(1, 1, 1).ConvertToColorProfile(ColorProfile(L"No such profile.icc"), {}), nullptr);
  EXPECT_EQ(RegistrationColor(1).ConvertToColorProfile(*swop, {}), nullptr);
  EXPECT_EQ(ValuesOf(RegistrationColor(1).ConvertToLabColor()), std::vector<double>(3, 0.0));
  EXPECT_EQ(ValuesOf(LabColor(0.1, 0.2, 0.3).ConvertToLabColor()), (std::vector<double>{0.1, 0.2, 0.3}));
}

/// The steps of the published measure with this library's departures, one after the other.
double Difference(double L1, double a1, double b1, double L2, double a2, double b2)
{
  const double pi = std::acos(-1.0), eps = 2.220446049250313e-16;
  const double C1 = std::sqrt(a1 * a1 + b1 * b1), C2 = std::sqrt(a2 * a2 + b2 * b2), Cm = (C1 + C2) * 0.5;
  const double G = 2 - 0.5 * std::sqrt(std::pow(Cm, 7) / (std::pow(Cm, 7) + 6103515625.0));
  const double a1p = G * a1, a2p = G * a2;
  const double C1p = std::sqrt(a1p * a1p + b1 * b1), C2p = std::sqrt(a2p * a2p + b2 * b2), Cmp = (C1p + C2p) * 0.5;
  double h1 = 0, h2 = 0;
  if (std::fabs(b1) > eps && std::fabs(a1p) > eps)
    h1 = std::fmod(std::atan(b1 / a1p), 2 * pi);
  if (std::fabs(b2) > eps && std::fabs(a2p) > eps)
    h2 = std::fmod(std::atan(b2 / a2p), 2 * pi);
  double dh = 0, hm = h1 + h2;
  if (std::fabs(C1p * C2p) > eps) {
    dh = h2 - h1;
    if (std::fabs(h1 - h2) > pi) {
      dh += dh < -pi ? 2 * pi : -2 * pi;
      hm += hm < 2 * pi ? 2 * pi : -2 * pi;
    }
    hm /= 2;
  }
  const double DH = 2 * std::sqrt(C1p * C2p) * std::sin(dh / 2);
  const double x = std::pow((L1 + L2) * 0.5 - 50, 2);
  const double SL = (1 + 0.015 * x) / std::sqrt(20 + x) + 1;
  const double SC = 1 + 0.045 * Cmp;
  const double T = 1 - 0.17 * std::cos(hm - pi / 6) + 0.24 * std::cos(2 * hm) +
                   0.32 * std::cos(3 * hm + 0.10471975511965977) - 0.2 * std::cos(4 * hm - 1.0995574287564276);
  const double SH = 1 + 0.015 * Cmp * T;
  const double e = std::exp(-std::pow((hm - 4.799655442928556) / 25, 2));
  const double S = std::sin(2 * e * pi / 6);
  const double RC = 2 * std::sqrt(std::pow(Cmp, 7) / (std::pow(Cmp, 7) + 6103515625.0));
  const double dL = (L2 - L1) / SL, dC = (C1p - C2p) / SC, dH = DH / SH;
  return std::sqrt(dC * dC + dL * dL + dH * dH - S * RC * dC * dH);
}

TEST_F(Colors, Kept_TheirDifferenceDepartsFromThePublishedOne)
{
  std::mt19937 random(1);
  // The channels of profiles, and those of L*, a*, b* as they are, where every term counts.
  for (const double scale : {1.0, 100.0}) {
    std::uniform_real_distribution<double> channel(scale == 1.0 ? 0.0 : -scale, scale);
    for (int round = 0; round < 500; ++round) {
      double p[6];
      for (double &c : p)
        c = random() % 8 == 0 ? 0.0 : channel(random);
      const LabColor first(p[0], p[1], p[2]), second(p[3], p[4], p[5]);
      const double expected = Difference(p[0], p[1], p[2], p[3], p[4], p[5]);
      // Some dozens of roundings of numbers up to the scale; more where the terms under the root cancel.
      ASSERT_NEAR(first.GetDistance(second), expected, 1e-12 * scale) << testing::PrintToString(p);
      // The difference of chroma and that of hue change their signs together.
      ASSERT_EQ(second.GetDistance(first), first.GetDistance(second)) << testing::PrintToString(p);
      ASSERT_EQ(first.GetDistance(first), 0.0);
    }
  }
  EXPECT_LT(Rgb(1, 0, 0).GetDistance(Rgb(0.99, 0, 0)), Rgb(1, 0, 0).GetDistance(Rgb(0.5, 0, 0)));
}

} // namespace
