// Tables of ICC profiles, typed by hand: what they hold, and every way to be too short or to claim too much.
#include "tests/support/icc_profile.h"
#include "zelclr/platform/icc_lut.h"

#include <gtest/gtest.h>

using namespace tests;
using ZelUtl::IccLutFromTag;

namespace {

/// Two inputs, three outputs, a grid of 2 x 2 points; numbers count up.
Bytes LutTag(bool isWide)
{
  Bytes tag = TagOfType(isWide ? "mft2" : "mft1");
  tag.insert(tag.end(), {2, 3, 2, 0});
  const Bytes matrix = FixedTag("", {1, 0, 0, 0, -0.5, 0, 0, 0, 2});
  tag.insert(tag.end(), matrix.begin() + 4, matrix.end());
  const auto append = [&](unsigned count, unsigned step) {
    for (unsigned i = 0; i < count; ++i)
      AppendNumber(tag, i * step, isWide ? 2 : 1);
  };
  if (isWide) {
    AppendNumber(tag, 3, 2); // entries of input curves, then of output curves
    AppendNumber(tag, 2, 2);
  }
  append(2 * (isWide ? 3 : 256), isWide ? 10000 : 1);
  append(4 * 3, isWide ? 5000 : 20);
  append(3 * (isWide ? 2 : 256), isWide ? 13107 : 1);
  return tag;
}

TEST(IccLut, IsReadAsWritten)
{
  for (const bool isWide : {false, true}) {
    const auto lut = IccLutFromTag(LutTag(isWide));
    ASSERT_TRUE(lut);
    EXPECT_EQ(lut->isWide, isWide);
    EXPECT_EQ(lut->inputs, 2u);
    EXPECT_EQ(lut->outputs, 3u);
    EXPECT_EQ(lut->grid, 2u);
    EXPECT_EQ(lut->matrix, (std::array<double, 9>{1, 0, 0, 0, -0.5, 0, 0, 0, 2}));
    ASSERT_EQ(lut->inputCurves.size(), 2u);
    ASSERT_EQ(lut->outputCurves.size(), 3u);
    ASSERT_EQ(lut->table.size(), 12u);
    EXPECT_EQ(lut->inputCurves[1].size(), isWide ? 3u : 256u);
    EXPECT_EQ(lut->outputCurves[2].size(), isWide ? 2u : 256u);
    EXPECT_FLOAT_EQ(lut->inputCurves[1].back(), isWide ? 50000 / 65535.0f : 1.0f);
    EXPECT_FLOAT_EQ(lut->table[11], isWide ? 55000 / 65535.0f : 220 / 255.0f);
    EXPECT_FLOAT_EQ(lut->outputCurves[2].back(), 1.0f);
  }
}

TEST(IccLut, IsRefusedAtEveryShorterLength)
{
  for (const bool isWide : {false, true}) {
    const Bytes tag = LutTag(isWide);
    for (std::size_t size = 0; size < tag.size(); ++size)
      ASSERT_FALSE(IccLutFromTag(Bytes(tag.begin(), tag.begin() + static_cast<std::ptrdiff_t>(size)))) << size;
    Bytes longer = tag; // tags are padded
    longer.insert(longer.end(), 3, 0xEE);
    EXPECT_TRUE(IccLutFromTag(longer));
  }
}

TEST(IccLut, IsRefusedForWhatItClaims)
{
  const struct
  {
    std::size_t place;
    std::uint8_t value;
    const char *what;
  } rows[] = {{0, 'M', "type"},         {3, '3', "type"},          {8, 0, "no inputs"},       {8, 16, "inputs"},
              {8, 255, "inputs"},       {9, 0, "no outputs"},      {9, 16, "outputs"},        {9, 255, "outputs"},
              {10, 0, "no grid"},       {10, 1, "a grid of one"},  {10, 255, "grid"},         {49, 0, "no entries"},
              {49, 1, "one entry"},     {48, 255, "many entries"}, {51, 0, "no entries out"}, {51, 1, "one entry out"},
              {50, 255, "many entries"}};
  for (const auto &row : rows) {
    Bytes tag = LutTag(true);
    tag[row.place] = row.value;
    EXPECT_FALSE(IccLutFromTag(tag)) << row.what << ' ' << int{row.value};
  }
  // 15 inputs with 255 points each: no product of 64 bits holds it.
  Bytes most = LutTag(true);
  most[8] = most[9] = 15;
  most[10] = 255;
  most.resize(1 << 20);
  EXPECT_FALSE(IccLutFromTag(most));
}

} // namespace
