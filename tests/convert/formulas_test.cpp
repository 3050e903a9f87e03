// The formulas against literal transcriptions of their published steps, with plain integer division.

#include "tests/support/sanitized.h"
#include "zelclr/convert/formulas.h"
#include "zelclr/convert/w_clr_convert.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

using namespace ZelClr::Formulas;
using W = WClrConvert;

namespace {

using Three = std::array<int, 3>;

template <class Formula>
Three Shorts(Formula formula, int a, int b, int c)
{
  short x = -1;
  short y = -1;
  short z = -1;
  formula(x, y, z, static_cast<short>(a), static_cast<short>(b), static_cast<short>(c));
  return {x, y, z};
}

template <class Formula>
Three Words(Formula formula, int a, int b, int c)
{
  std::uint16_t x = 1;
  std::uint16_t y = 1;
  std::uint16_t z = 1;
  formula(x, y, z, static_cast<short>(a), static_cast<short>(b), static_cast<short>(c));
  return {x, y, z};
}

template <class Formula>
Three ShortsOfWords(Formula formula, int a, int b, int c)
{
  short x = -1;
  short y = -1;
  short z = -1;
  formula(x, y, z, static_cast<std::uint16_t>(a), static_cast<std::uint16_t>(b), static_cast<std::uint16_t>(c));
  return {x, y, z};
}

/// Components 0 to 255 or, with the brightness then on the same scale, 0 to 65535.
Three LiteralHsb(std::int64_t r, std::int64_t g, std::int64_t b)
{
  const std::int64_t max = std::max(std::max(r, g), b);
  const std::int64_t min = std::min(std::min(r, g), b);
  if (max == 0)
    return {0, 0, 0};
  const std::int64_t saturation = (max - min) * 255 / max;
  if (saturation == 0)
    return {0, 0, static_cast<int>(max)};
  const std::int64_t d = max - min;
  const std::int64_t rc = ((max - r) * 65536) / d;
  const std::int64_t gc = ((max - g) * 65536) / d;
  const std::int64_t bc = ((max - b) * 65536) / d;
  std::int64_t h = 0;
  if (r == max)
    h = bc - gc;
  else if (g == max)
    h = rc - bc + 2 * 65536;
  else
    h = gc - rc + 4 * 65536;
  std::int64_t hue = (h * 60 + 32768) >> 16;
  if (hue < 0)
    hue += 360;
  return {static_cast<int>(hue), static_cast<int>(saturation), static_cast<int>(max)};
}

Three LiteralRgbOfHsb(int hue, int saturation, std::int64_t v)
{
  const auto whole = [](std::int64_t number) { return static_cast<int>(number); };
  if (saturation == 0)
    return {whole(v), whole(v), whole(v)};
  const std::int64_t s = (saturation * 65536) / 255;
  const int sector = hue / 60;
  const std::int64_t f = ((hue - sector * 60) * 65536) / 60;
  const int p = whole(((65536 - s) * v + 32768) >> 16);
  const int q = whole(((65536 - ((f / 2) * (s / 2) >> 14)) * v + 32768) >> 16);
  const int t = whole(((65536 - (((65536 - f) / 2) * (s / 2) >> 14)) * v + 32768) >> 16);
  switch (sector % 6) {
  case 0:
    return {whole(v), t, p};
  case 1:
    return {q, whole(v), p};
  case 2:
    return {p, whole(v), t};
  case 3:
    return {p, q, whole(v)};
  case 4:
    return {t, p, whole(v)};
  default:
    return {whole(v), p, q};
  }
}

/// Lightness on the scale of the components.
Three LiteralHls(int r, int g, int b, int full)
{
  const int max = std::max(std::max(r, g), b);
  const int min = std::min(std::min(r, g), b);
  const int lightness = (max + min) / 2;
  if (max == min)
    return {0, lightness, 0};
  const int d = max - min;
  const int saturation = lightness < (full + 1) / 2 ? d * 255 / (max + min) : d * 255 / (2 * full - max - min);
  int hue = 0;
  if (r == max)
    hue = (g - b) * 60 / d;
  else if (g == max)
    hue = (b - r) * 60 / d + 120;
  else
    hue = (r - g) * 60 / d + 240;
  return {hue < 0 ? hue + 360 : hue, lightness, saturation};
}

Three LiteralRgbOfHls(int hue, int l, int s)
{
  if (s == 0)
    return {l, l, l};
  const int m2 = l <= 127 ? l * (s + 255) / 255 : l + s - l * s / 255;
  const int m1 = 2 * l - m2;
  const auto value = [&](int h) {
    if (h >= 360)
      h -= 360;
    else if (h < 0)
      h += 360;
    return h < 60 ? m1 + (m2 - m1) * h / 60 : h < 180 ? m2 : h < 240 ? m1 + (m2 - m1) * (240 - h) / 60 : m1;
  };
  return {value(hue + 120), value(hue), value(hue - 120)};
}

/// Calls `check` for all triples of a range and bytes; it tells whether the formula is right.
template <class Check>
void ForAll(int first, int count, Check check)
{
  for (int a = first; a < first + count; a += tests::kSanitized ? 7 : 1) {
    for (int b = 0; b < 256; b += tests::kSanitized ? 5 : 1) {
      for (int c = 0; c < 256; c += tests::kSanitized ? 3 : 1) {
        if (!check(a, b, c))
          FAIL() << "at " << a << " " << b << " " << c;
      }
    }
  }
}

TEST(Formulas, HsbOfEveryRgb)
{
  ForAll(0, 256,
         [](int r, int g, int b) { return Shorts(W::ConvertRGBCompToHSBComp, r, g, b) == LiteralHsb(r, g, b); });
}

TEST(Formulas, RgbOfEveryHsb)
{
  ForAll(0, 361,
         [](int h, int s, int v) { return Shorts(W::ConvertHSBCompToRGBComp, h, s, v) == LiteralRgbOfHsb(h, s, v); });
  ForAll(0, 361,
         [](int h, int s, int v) { return Words(W::ConvertHSBtoRGB48, h, s, v) == LiteralRgbOfHsb(h, s, v * 257); });
}

TEST(Formulas, HuesOfHsbBeyondTheCircleTurn)
{
  for (const int turns : {-91, -2, -1, 1, 2, 90}) {
    for (int hue = 0; hue < 360; ++hue)
      EXPECT_EQ(Shorts(W::ConvertHSBCompToRGBComp, hue + 360 * turns, 200, 250), LiteralRgbOfHsb(hue, 200, 250))
        << hue << " " << turns;
  }
}

TEST(Formulas, HlsOfEveryRgb)
{
  ForAll(0, 256, [](int r, int g, int b) { return Shorts(W::ConvertRGBtoHLS, r, g, b) == LiteralHls(r, g, b, 255); });
}

TEST(Formulas, RgbOfEveryHls)
{
  ForAll(0, 360, [](int h, int l, int s) { return Shorts(W::ConvertHLStoRGB, h, l, s) == LiteralRgbOfHls(h, l, s); });
}

TEST(Formulas, BytesRepeatedInSixteenBitsGiveTheBytesResult)
{
  ForAll(0, 256, [](int r, int g, int b) {
    return ShortsOfWords(W::ConvertRGB48toHSB, r * 257, g * 257, b * 257) ==
             Shorts(W::ConvertRGBCompToHSBComp, r, g, b) &&
           ShortsOfWords(W::ConvertRGB48toHLS, r * 257, g * 257, b * 257) == Shorts(W::ConvertRGBtoHLS, r, g, b);
  });
}

TEST(Formulas, HsbAndHlsOfSixteenBitsTakeTheSameSteps)
{
  std::mt19937 random(48);
  const auto component = [&] {
    return static_cast<int>(random() % 4 == 0 ? random() % 3 + (random() % 2) * 65533 : random() % 65536);
  };
  for (int i = 0; i < 1000000; ++i) {
    const int r = component();
    const int g = component();
    const int b = component();
    Three hsb = LiteralHsb(r, g, b);
    hsb[2] = (hsb[2] * 255 + 32767) / 65535;
    ASSERT_EQ(ShortsOfWords(W::ConvertRGB48toHSB, r, g, b), hsb) << r << " " << g << " " << b;
    Three hls = LiteralHls(r, g, b, 65535);
    hls[1] = (std::max({r, g, b}) + std::min({r, g, b})) * 255 / 131070;
    ASSERT_EQ(ShortsOfWords(W::ConvertRGB48toHLS, r, g, b), hls) << r << " " << g << " " << b;
  }
}

TEST(Formulas, GrayOfEveryRgb)
{
  ForAll(0, 256, [](int r, int g, int b) {
    const auto s = [](int byte) { return static_cast<short>(byte); };
    const auto w = [](int byte) { return static_cast<std::uint16_t>(byte * 257); };
    return W::ConvertRGBtoGray(s(r), s(g), s(b)) == (299 * r + 587 * g + 114 * b) / 1000 &&
           W::ConvertRGBtoGray16(s(r), s(g), s(b)) == (4899 * r + 9617 * g + 1868 * b) / 64 &&
           W::ConvertRGB48toGray16(w(r), w(g), w(b)) == (299l * 257 * r + 587l * 257 * g + 114l * 257 * b) / 1000;
  });
}

TEST(Formulas, CmykOfEveryRgbGivesItBack)
{
  ForAll(0, 256, [](int r, int g, int b) {
    const Cmyk inks = CmykFromRgb(r, g, b);
    const Rgb back = RgbFromCmyk(inks.cyan, inks.magenta, inks.yellow, inks.black);
    const Cmyk added = AddedInksFromRgb(r, g, b);
    const Rgb ofAdded = RgbFromAddedInks(added.cyan, added.magenta, added.yellow, added.black);
    return Three{back.red, back.green, back.blue} == Three{r, g, b} && inks.black == 255 - std::max({r, g, b}) &&
           Three{ofAdded.red, ofAdded.green, ofAdded.blue} == Three{r, g, b} && added.black == inks.black;
  });
}

TEST(Formulas, Kept_Gray16OfWhiteIs65280)
{
  EXPECT_EQ(W::ConvertRGBtoGray16(255, 255, 255), 65280);
  EXPECT_EQ(W::ConvertRGB48toGray16(65535, 65535, 65535), 65535);
}

TEST(Formulas, Kept_TheHalfIsAddedToYiqBeforeTheCoefficients)
{
  double r, g, b;
  W::ConvertYIQ255ToRGB(100, 100, 100, r, g, b);
  EXPECT_DOUBLE_EQ(r, 100.5 + 0.956 * 0.5 + 0.621 * 0.5);
  EXPECT_DOUBLE_EQ(g, 100.5 - 0.272 * 0.5 - 0.647 * 0.5);
  EXPECT_DOUBLE_EQ(b, 100.5 - 1.106 * 0.5 + 1.703 * 0.5);
  W::ConvertYIQ255ToRGB(255, 255, 255, r, g, b);
  EXPECT_EQ(r, 255.0);
  W::ConvertYIQ255ToRGB(0, 255, 255, r, g, b);
  EXPECT_EQ(g, 0.0);
}

TEST(Formulas, LabBytesAsDoublesAndBack)
{
  double l, a, b;
  const auto lab = CLR_COLORSPEC::MakeLAB(136, 127, -127);
  W::ConvertLABToDouble(l, a, b, 2, lab);
  EXPECT_EQ(l, 53.33);
  EXPECT_EQ(a, 60.0);
  EXPECT_EQ(b, -60.0);
  W::ConvertLABToDouble(l, a, b, -1, CLR_COLORSPEC::MakeReference(lab));
  EXPECT_EQ(l, 136 * 0.39215686274509803);
  W::ConvertLABToDouble(l, a, b, 0, CLR_COLORSPEC::MakeLAB(255, 10, -10)); // 4.72 in stored units of a
  EXPECT_EQ(a, 5.0);
  EXPECT_EQ(b, -5.0);
  W::ConvertLABToDouble(l, a, b, 1000, lab);
  EXPECT_NEAR(l, 53.333333333333336, 1e-12);
  for (int byte = 0; byte < 256; ++byte) {
    std::uint8_t stored = 1;
    W::ConvertDoubleToLAB_L(stored, byte * 100.0 / 255.0);
    EXPECT_EQ(stored, byte);
    std::int8_t signedByte = 1;
    W::ConvertDoubleToLAB_A(signedByte, byte - 128 + (byte < 128 ? -0.49 : 0.49));
    EXPECT_EQ(signedByte, byte - 128);
  }
  std::int8_t rounded = 0;
  W::ConvertDoubleToLAB_A(rounded, -2.5);
  EXPECT_EQ(rounded, -3);
  for (const double wild : {1e300, -1e300, static_cast<double>(NAN), static_cast<double>(INFINITY)}) {
    std::uint8_t byte = 7;
    W::ConvertDoubleToLAB_L(byte, wild);
    W::ConvertDoubleToLAB_A(rounded, wild);
    EXPECT_EQ(byte, wild > 0 ? 255 : 0) << wild;
  }
}

TEST(Formulas, Ciede2000GivesThePublishedTestPairs)
{
  const struct
  {
    Lab a;
    Lab b;
    double difference;
  } kPairs[] = {
    {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
    {{50, 3.1571, -77.2803}, {50, 0, -82.7485}, 2.8615},
    {{50, 2.8361, -74.0200}, {50, 0, -82.7485}, 3.4412},
    {{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
    {{50, 0, 0}, {50, -1, 2}, 2.3669},
    {{50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792},
    {{50, 2.49, -0.001}, {50, -2.49, 0.0011}, 7.2195},
    {{50, -0.001, 2.49}, {50, 0.0009, -2.49}, 4.8045},
    {{50, -0.001, 2.49}, {50, 0.0011, -2.49}, 4.7461},
    {{50, 2.5, 0}, {50, 0, -2.5}, 4.3065},
    {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
    {{50, 2.5, 0}, {61, -5, 29}, 22.8977},
    {{50, 2.5, 0}, {56, -27, -3}, 31.9030},
    {{50, 2.5, 0}, {58, 24, 15}, 19.4535},
    {{50, 2.5, 0}, {50, 3.1736, 0.5854}, 1.0000},
    {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
    {{63.0109, -31.0961, -5.8663}, {62.8187, -29.7946, -4.0864}, 1.2630},
    {{35.0831, -44.1164, 3.7933}, {35.0232, -40.0716, 1.5901}, 1.8645},
    {{22.7233, 20.0904, -46.6940}, {23.0331, 14.9730, -42.5619}, 2.0373},
    {{90.8027, -2.0831, 1.4410}, {91.1528, -1.6435, 0.0447}, 1.4441},
    {{6.7747, -0.2908, -2.4247}, {5.8714, -0.0985, -2.2286}, 0.6377},
    {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
  };
  for (const auto &pair : kPairs) {
    // Published to four decimals.
    EXPECT_NEAR(Ciede2000(pair.a, pair.b), pair.difference, 0.00005) << pair.b.a << " " << pair.b.b;
    EXPECT_NEAR(Ciede2000(pair.b, pair.a), pair.difference, 0.00005) << pair.b.a << " " << pair.b.b;
    EXPECT_EQ(Ciede2000(pair.a, pair.a), 0.0);
  }
}

TEST(Formulas, LabOfThePrimariesOnD50)
{
  const struct
  {
    Three rgb;
    Lab lab; // to two decimals, as published for sRGB adapted to D50
  } kRows[] = {
    {{255, 0, 0}, {54.29, 80.81, 69.89}},
    {{0, 255, 0}, {87.82, -79.29, 80.99}},
    {{0, 0, 255}, {29.57, 68.30, -112.03}},
    {{255, 255, 255}, {100, 0, 0}},
    {{0, 0, 0}, {0, 0, 0}},
  };
  for (const auto &row : kRows) {
    const Lab lab = CieLabFromRgb(row.rgb[0], row.rgb[1], row.rgb[2]);
    EXPECT_NEAR(lab.l, row.lab.l, 0.02);
    EXPECT_NEAR(lab.a, row.lab.a, 0.02);
    EXPECT_NEAR(lab.b, row.lab.b, 0.02);
  }
  ForAll(0, 256, [](int r, int g, int b) {
    if ((r | g | b) % 16 != 15)
      return true;
    const RealRgb back = SrgbFromXyz(XyzFromCieLab(CieLabFromRgb(r, g, b)));
    return std::lround(back.red * 255) == r && std::lround(back.green * 255) == g && std::lround(back.blue * 255) == b;
  });
}

TEST(Formulas, MoreInkOnThePressIsDarker)
{
  EXPECT_NEAR(Ciede2000(CieLabFromXyz(XyzFromCoatedInks(0, 0, 0, 0)), {100, 0, 0}), 0, 0.01);
  const auto light = [](const std::array<double, 4> &inks) {
    return XyzFromCoatedInks(inks[0], inks[1], inks[2], inks[3]).y;
  };
  for (int i = 0; i < 5 * 5 * 5 * 5; ++i) {
    const std::array<double, 4> inks = {i % 5 / 5.0, i / 5 % 5 / 5.0, i / 25 % 5 / 5.0, i / 125 / 5.0};
    for (std::size_t ink = inks[3] > 0.0 ? 3 : 0; ink < 4; ++ink) { // colours on black may shine
      auto more = inks;
      more[ink] += 0.2;
      ASSERT_LT(light(more), light(inks)) << testing::PrintToString(inks) << " more of " << ink;
    }
  }
}

} // namespace
