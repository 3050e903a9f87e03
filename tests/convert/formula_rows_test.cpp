// Rows of pixels, bit by bit against the component functions, with every instruction set that this processor has.

#include "tests/support/sanitized.h"
#include "zelclr/convert/formula_rows.h"
#include "zelclr/convert/w_clr_convert.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <functional>
#include <random>

using W = WClrConvert;
using Pixels = std::vector<std::uint8_t>;

namespace {

void Hue(const std::uint8_t *in, short &hue)
{
  hue = static_cast<short>(in[0] | in[1] << 8);
}

void PutHue(std::uint8_t *out, short hue, short third, short fourth)
{
  out[0] = static_cast<std::uint8_t>(hue);
  out[1] = static_cast<std::uint8_t>(hue >> 8);
  out[2] = static_cast<std::uint8_t>(third);
  out[3] = static_cast<std::uint8_t>(fourth);
}

template <auto kConvert>
void OneToHue(const std::uint8_t *in, std::uint8_t *out)
{
  short a, b, c;
  kConvert(a, b, c, in[0], in[1], in[2]);
  PutHue(out, a, b, c);
}

template <auto kConvert>
void OneOfHue(const std::uint8_t *in, std::uint8_t *out)
{
  short hue, rgb[3];
  Hue(in, hue);
  kConvert(rgb[0], rgb[1], rgb[2], hue, in[2], in[3]);
  std::copy(rgb, rgb + 3, out);
}

/// The inverse: 255 - ceil(255 light / lightest), black the rest of the lightest.
void OneCmykOfRgb(const std::uint8_t *in, std::uint8_t *out)
{
  const int lightest = std::max({in[0], in[1], in[2]});
  for (int i = 0; i < 3; ++i)
    out[i] = static_cast<std::uint8_t>(lightest == 0 ? 0 : 255 - (255 * in[i] + lightest - 1) / lightest);
  out[3] = static_cast<std::uint8_t>(255 - lightest);
}

template <auto kFormula>
void OneOfInks(const std::uint8_t *in, std::uint8_t *out)
{
  const auto rgb = kFormula(in[0], in[1], in[2], in[3]);
  for (const int light : {rgb.red, rgb.green, rgb.blue})
    *out++ = static_cast<std::uint8_t>(light);
}

void OneAddedInksOfRgb(const std::uint8_t *in, std::uint8_t *out)
{
  const auto cmyk = ZelClr::Formulas::AddedInksFromRgb(in[0], in[1], in[2]);
  for (const int ink : {cmyk.cyan, cmyk.magenta, cmyk.yellow, cmyk.black})
    *out++ = static_cast<std::uint8_t>(ink);
}

struct Row
{
  const char *name;
  ZelClr::RowConversion *convert;
  std::size_t in;
  std::size_t out;
  void (*one)(const std::uint8_t *, std::uint8_t *);
  bool hueIn;
};

void PrintTo(const Row &row, std::ostream *out)
{
  *out << row.name;
}

const Row kRows[] = {
  {"RGB to HSB", ZelClr::HsbRowFromRgb, 3, 4, OneToHue<&W::ConvertRGBCompToHSBComp>, false},
  {"RGB to HLS", ZelClr::HlsRowFromRgb, 3, 4, OneToHue<&W::ConvertRGBtoHLS>, false},
  {"RGB to gray", ZelClr::GrayRowFromRgb, 3, 1,
   [](const std::uint8_t *in, std::uint8_t *out) {
     *out = static_cast<std::uint8_t>(W::ConvertRGBtoGray(in[0], in[1], in[2]));
   },
   false},
  {"RGB to CMYK", ZelClr::CmykRowFromRgb, 3, 4, OneCmykOfRgb, false},
  {"RGB to YIQ", ZelClr::YiqRowFromRgb, 3, 3,
   [](const std::uint8_t *in, std::uint8_t *out) {
     W::ConvertRGBToYIQ255(in[0], in[1], in[2], out[0], out[1], out[2]);
   },
   false},
  {"CMYK to RGB", ZelClr::RgbRowFromCmyk, 4, 3, OneOfInks<ZelClr::Formulas::RgbFromCmyk>, false},
  {"RGB to added inks", ZelClr::AddedInksRowFromRgb, 3, 4, OneAddedInksOfRgb, false},
  {"added inks to RGB", ZelClr::RgbRowFromAddedInks, 4, 3, OneOfInks<ZelClr::Formulas::RgbFromAddedInks>, false},
  {"HSB to RGB", ZelClr::RgbRowFromHsb, 4, 3, OneOfHue<&W::ConvertHSBCompToRGBComp>, true},
  {"HLS to RGB", ZelClr::RgbRowFromHls, 4, 3, OneOfHue<&W::ConvertHLStoRGB>, true},
};

Pixels Expected(const Row &row, const Pixels &in)
{
  Pixels out(in.size() / row.in * row.out);
  for (std::size_t i = 0; i < in.size() / row.in; ++i)
    row.one(in.data() + i * row.in, out.data() + i * row.out);
  return out;
}

void ForEachTarget(const std::function<void()> &run)
{
  const std::int64_t all = hwy::SupportedTargets() & HWY_TARGETS;
  for (std::int64_t rest = all; rest != 0; rest &= rest - 1) {
    const std::int64_t target = rest & -rest;
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::GetChosenTarget().Update(target);
    run();
  }
  hwy::GetChosenTarget().Update(all);
}

/// All inputs with one first component, or one hue; the four-component models step through one of the others.
Pixels Plane(const Row &row, int first)
{
  Pixels in;
  in.reserve(65536 * row.in);
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      if (row.hueIn)
        PutHue(&*in.insert(in.end(), 4, 0), static_cast<short>(first), static_cast<short>(a), static_cast<short>(b));
      else if (row.in == 4)
        in.insert(in.end(), {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(a * 7 + b * 31),
                             static_cast<std::uint8_t>(a), static_cast<std::uint8_t>(b)});
      else
        in.insert(in.end(),
                  {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(a), static_cast<std::uint8_t>(b)});
    }
  }
  return in;
}

class FormulaRows : public testing::TestWithParam<Row>
{};

TEST_P(FormulaRows, EqualTheFormulaForEveryInput)
{
  const Row &row = GetParam();
  for (int first = 0; first < (row.hueIn ? 360 : 256); first += tests::kSanitized ? 37 : 1) {
    const Pixels in = Plane(row, first);
    const Pixels expected = Expected(row, in);
    ForEachTarget([&] {
      Pixels out(expected.size());
      row.convert(in.data(), out.data(), 65536);
      const auto wrong = std::mismatch(out.begin(), out.end(), expected.begin()).first;
      if (wrong == out.end())
        return;
      const auto pixel = static_cast<std::size_t>(wrong - out.begin()) / row.out;
      ADD_FAILURE() << "pixel " << testing::PrintToString(Pixels(&in[pixel * row.in], &in[pixel * row.in] + row.in))
                    << " gives "
                    << testing::PrintToString(Pixels(&out[pixel * row.out], &out[pixel * row.out] + row.out))
                    << ", the formula "
                    << testing::PrintToString(Pixels(&expected[pixel * row.out], &expected[pixel * row.out] + row.out));
    });
    ASSERT_FALSE(HasFailure());
  }
}

TEST_P(FormulaRows, TouchNothingBeyondTheRow)
{
  const Row &row = GetParam();
  std::mt19937 random(5);
  ForEachTarget([&] {
    for (std::size_t pixels = 0; pixels <= 600; ++pixels) {
      Pixels in(pixels * row.in); // exactly as long as the row: a sanitizer sees any read beyond
      for (std::size_t i = 0; i < in.size(); ++i)
        in[i] = static_cast<std::uint8_t>(row.hueIn && i % 4 == 1 ? random() % 2
                                                                  : random() % (row.hueIn && i % 4 == 0 ? 104 : 256));
      const Pixels expected = Expected(row, in);
      constexpr std::size_t kGuard = 64;
      Pixels out(expected.size() + 2 * kGuard, 0xCD);
      row.convert(in.data(), out.data() + kGuard, pixels);
      Pixels whole(out.size(), 0xCD);
      std::copy(expected.begin(), expected.end(), whole.begin() + kGuard);
      ASSERT_EQ(out, whole) << pixels << " pixels";
      if (row.in == row.out) {
        row.convert(in.data(), in.data(), pixels);
        ASSERT_EQ(in, expected) << pixels << " pixels in place";
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(AllRows, FormulaRows, testing::ValuesIn(kRows), [](const auto &instance) {
  std::string name = instance.param.name;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
});

TEST(FormulaRowsOfHsb, HuesBeyondTheCircleTurn)
{
  Pixels in;
  for (int hue = -32768; hue < 32768; ++hue)
    PutHue(&*in.insert(in.end(), 4, 0), static_cast<short>(hue), 200, 250);
  const Pixels expected = Expected(kRows[8], in);
  ForEachTarget([&] {
    Pixels out(expected.size());
    ZelClr::RgbRowFromHsb(in.data(), out.data(), 65536);
    EXPECT_EQ(out, expected);
  });
}

} // namespace
