// What tints do to pixels: literal results, and pixels beside colours on every instruction set.
#include "tests/fills/support/tints.h"
#include "tests/support/sanitized.h"

#include <hwy/targets.h>

#include <functional>
#include <random>

using C = CLR_COLORSPEC;
using tests::Bytes;
using tests::TintOf;

namespace {

using TintPixels = tests::Tints;

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

TEST_F(TintPixels, EveryKindByHand)
{
  const C colour = C::MakeRGB(200, 100, 0), second = C::MakeRGB(0, 50, 250);
  const struct
  {
    int kind, level, red, green, blue;
  } rows[] = {
    {0, 1000, 200, 100, 0},  {0, 500, 120, 90, 80},    {0, -1000, 0, 50, 250},   {1, 500, 168, 208, 255},
    {1, -500, 0, 0, 32},     {1, 1000, 255, 255, 255}, {1, -1000, 0, 0, 0},      {2, 500, 120, 90, 80},
    {6, -1000, 0, 50, 250},  {77, 1000, 200, 100, 0},  {3, 1000, 209, 149, 160}, {3, -1000, 31, 31, 0},
    {4, 500, 148, 168, 208}, {4, -500, 20, 40, 80},    {5, 1000, 215, 175, 95},  {5, -1000, 95, 135, 215},
    {5, 500, 128, 128, 128}, {7, 1000, 131, 65, 0},    {7, -1000, 26, 71, 251},  {8, 1000, 140, 85, 75},
    {8, -1000, 60, 65, 175}, {8, 500, 90, 83, 118},    {8, -1, 40, 80, 160},
  };
  for (const auto &row : rows) {
    const TINT tint = TintOf(row.kind, row.level, colour, second);
    int red = 40 + 256, green = 80 - 256, blue = 160; // the low bytes count
    ASSERT_EQ(TNTApplyTintToRGB(&tint, &red, &green, &blue, context), 1);
    EXPECT_EQ((std::vector{red, green, blue}), (std::vector{row.red, row.green, row.blue}))
      << "kind " << row.kind << ", level " << row.level;
  }
}

/// Every gray, a grid of colours, and others.
Bytes ManyPixels()
{
  Bytes pixels;
  for (int gray = 0; gray < 256; ++gray)
    pixels.insert(pixels.end(), 3, static_cast<std::uint8_t>(gray));
  const int step = tests::kSanitized ? 51 : 15;
  for (int i = 0; i < 256; i += step) {
    for (int j = 0; j < 256; j += step) {
      for (int k = 0; k < 256; k += step)
        for (const int component : {i, j, k})
          pixels.push_back(static_cast<std::uint8_t>(component));
    }
  }
  std::mt19937 random(7);
  for (int i = 0; i < 999; ++i)
    pixels.push_back(static_cast<std::uint8_t>(random()));
  return pixels;
}

TEST_F(TintPixels, EqualColoursToTheLastBit)
{
  const Bytes all = ManyPixels();
  const Bytes few(all.begin() + 300, all.begin() + 300 + 3 * 61);
  const C orange = C::MakeRGB(200, 100, 0), blue = C::MakeRGB(0, 50, 250), ink = C::MakeCMYK100(0, 80, 30, 10);
  const struct
  {
    C colour, second;
    const Bytes &pixels;
  } rows[] = {
    {orange, blue, all}, {ink, C::MakeLAB(90, 60, -60), few}, {C(), C(), few}, {blue, C::MakeRGB48(9, 0, 70), few}};
  for (const auto &row : rows) {
    for (int kind = 0; kind <= 11; ++kind) {
      for (const int level : {-5000, -1000, -617, -500, -1, 0, 3, 4, 250, 999, 1000}) {
        const TINT tint = TintOf(kind, level, row.colour, row.second);
        Bytes expected;
        for (std::size_t i = 0; i < row.pixels.size(); i += 3) {
          const C tinted = Tinted(tint, C::MakeRGB(row.pixels[i + 2], row.pixels[i + 1], row.pixels[i]));
          ASSERT_EQ(tinted.GetType(), 5);
          expected.insert(expected.end(), {tinted.GetBlue(), tinted.GetI255(), tinted.GetRed()});
        }
        ForEachTarget([&] {
          Bytes pixels = row.pixels;
          ASSERT_TRUE(tint.pixelOperation(tint, pixels.data(), pixels.size() / 3, context));
          const auto wrong = std::mismatch(pixels.begin(), pixels.end(), expected.begin()).first;
          ASSERT_EQ(wrong, pixels.end()) << "kind " << kind << ", level " << level << ", byte "
                                         << wrong - pixels.begin();
        });
      }
    }
  }
}

TEST_F(TintPixels, TouchNothingBeyondTheRun)
{
  const Bytes all = ManyPixels();
  for (int kind = 0; kind <= 10; ++kind) {
    const TINT tint = TintOf(kind, 700, C::MakeRGB(200, 100, 0), C::MakeRGB(0, 50, 250));
    Bytes whole = all;
    ASSERT_TRUE(tint.pixelOperation(tint, whole.data(), whole.size() / 3, context));
    for (const std::size_t count : {0u, 1u, 15u, 16u, 17u, 63u, 255u, 256u, 257u, 600u}) {
      Bytes pixels = all;
      ASSERT_TRUE(tint.pixelOperation(tint, pixels.data(), count, context));
      EXPECT_TRUE(std::equal(pixels.begin(), pixels.begin() + static_cast<std::ptrdiff_t>(3 * count), whole.begin()));
      EXPECT_TRUE(std::equal(pixels.begin() + static_cast<std::ptrdiff_t>(3 * count), pixels.end(),
                             all.begin() + static_cast<std::ptrdiff_t>(3 * count)))
        << "kind " << kind << ", " << count << " pixels";
    }
  }
}

TEST_F(TintPixels, ReadReferencesWhenTheyAreApplied)
{
  C shared = C::MakeReference(C::MakeRGB(1, 2, 3));
  for (const int kind : {0, 3, 7, 8, 9}) {
    const TINT tint = TintOf(kind, 900, shared, shared);
    for (const C &value : {C::MakeRGB(200, 100, 0), C::MakeCMYK100(0, 50, 20, 0)}) {
      shared.SetReferenceColorValue(value);
      const TINT plain = TintOf(kind, 900, value, value);
      EXPECT_EQ(Tinted(tint, C::MakeRGB(9, 99, 199)), Tinted(plain, C::MakeRGB(9, 99, 199))) << kind;
    }
  }
}

} // namespace
