// Rows by tables and matrices, on every instruction set that this processor has: against plain interpolation in
// doubles, and on rows that end where the mapped memory ends.
#include "tests/support/each_target.h"
#include "tests/support/guarded_bytes.h"
#include "zelclr/colorsystem/internal/baked_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numeric>

using namespace ColorSystem::Internal;
using tests::ForEachTarget;
using tests::GuardedBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;
using Channels = std::vector<double>; // 0 to 1

// --- Plain and slow --------------------------------------------------------------------------------------------------

/// From the corner of a colour's cell to the opposite one, along the inputs in the order of how far the colour is.
Channels Interpolated(const BakedTable &table, const Channels &colour)
{
  std::vector<std::size_t> cell, order(colour.size());
  Channels place;
  for (const double channel : colour) {
    const double nodes = channel * (table.grid - 1);
    cell.push_back(std::min(static_cast<std::size_t>(nodes), std::size_t{table.grid} - 2));
    place.push_back(nodes - static_cast<double>(cell.back()));
  }
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return place[a] > place[b]; });
  Channels sum(table.outputs, 0.0);
  for (std::size_t corner = 0; corner <= order.size(); ++corner) {
    const double before = corner == 0 ? 1.0 : place[order[corner - 1]];
    const double weight = before - (corner == order.size() ? 0.0 : place[order[corner]]);
    std::size_t node = 0;
    for (const std::size_t along : cell)
      node = node * table.grid + along;
    for (unsigned output = 0; output < table.outputs; ++output)
      sum[output] += weight * table.nodes[4 * node + output] / 32767.0;
    if (corner < order.size())
      ++cell[order[corner]];
  }
  return sum;
}

double SampleAt(const Bytes &row, unsigned bytes, std::size_t i)
{
  if (bytes == 1)
    return row[i] / 255.0;
  std::uint16_t word;
  std::memcpy(&word, row.data() + 2 * i, 2);
  return word / 65535.0;
}

// --- Tables and rows -------------------------------------------------------------------------------------------------

BakedTable RandomTable(unsigned inputs, unsigned outputs, unsigned grid)
{
  std::mt19937 random(inputs * 16 + outputs);
  BakedTable table = {inputs, outputs, grid, {}};
  table.nodes.resize(4 * static_cast<std::size_t>(std::lround(std::pow(grid, inputs))));
  for (std::size_t i = 0; i < table.nodes.size(); ++i) {
    const unsigned number = random() % 8;
    if (i % 4 < outputs)
      table.nodes[i] = static_cast<std::uint16_t>(number == 0 ? 0 : number == 1 ? 32767 : random() % 32768);
  }
  return table;
}

/// Each output is a mean of the inputs, so that every interpolation has one result.
BakedTable StraightTable(unsigned inputs, unsigned outputs, unsigned grid)
{
  BakedTable table = RandomTable(inputs, outputs, grid);
  for (std::size_t node = 0; node < table.nodes.size() / 4; ++node) {
    for (unsigned output = 0; output < outputs; ++output) {
      double sum = 0.0, weights = 0.0;
      std::size_t rest = node;
      for (unsigned input = inputs; input-- > 0; rest /= grid) {
        const double weight = 1.0 + (input + output) % 3;
        sum += weight * static_cast<double>(rest % grid) / (grid - 1);
        weights += weight;
      }
      table.nodes[4 * node + output] = static_cast<std::uint16_t>(std::lround(sum / weights * 32767.0));
    }
  }
  return table;
}

BakedMatrix RandomMatrix()
{
  std::mt19937 random(3);
  BakedMatrix matrix;
  for (std::size_t input = 0; input < 3; ++input)
    for (auto &light : matrix.shares[input])
      for (std::int32_t &share : light) // sums below 0 and beyond full, too
        share = static_cast<std::int32_t>(random() % 700000) - (input == 0 ? 32768 * 16 : 0) - 100000;
  for (auto &encoding : matrix.encodings) {
    const auto made = std::make_shared<BakedMatrix::Encoding>();
    for (std::uint8_t &entry : *made)
      entry = static_cast<std::uint8_t>(random());
    encoding = made;
  }
  return matrix;
}

std::size_t SizeOf(unsigned channels, BakedPixels pixels)
{
  return std::size_t{channels + (pixels.alpha ? 1u : 0u)} * pixels.bytesPerSample;
}

/// Corners, grays and noise, then flat runs; one ends with a block, the others within.
Bytes RowOf(unsigned channels, BakedPixels format, std::size_t pixels)
{
  std::mt19937 random(5);
  const std::size_t size = SizeOf(channels, format);
  Bytes row(pixels * size);
  for (std::size_t i = 0; i < pixels; ++i) {
    std::uint8_t *const pixel = row.data() + i * size;
    if (i >= 600) {
      std::fill_n(pixel, size, static_cast<std::uint8_t>(i < 768 ? 20 : i / 450 * 80));
      pixel[0] = i == 1100 ? 17 : 40;
      continue;
    }
    const auto gray = static_cast<std::uint8_t>(i * 255 / 599);
    for (std::size_t byte = 0; byte < size; ++byte) {
      const bool isCorner = i % 7 == 0, isGray = i % 7 == 1;
      pixel[byte] = static_cast<std::uint8_t>(isCorner ? (i >> byte / format.bytesPerSample & 1) * 255
                                              : isGray ? gray
                                                       : random());
    }
  }
  return row;
}

constexpr std::size_t kPixels = 1500;
constexpr BakedPixels kFormats[] = {{1, false}, {1, true}, {2, false}, {2, true}};
constexpr unsigned GridOf(unsigned inputs)
{
  return inputs == 1 ? 256 : inputs == 3 ? 21 : 7;
}

template <class Baked>
Bytes Converted(const Baked &baked, BakedPixels from, const Bytes &row, BakedPixels to, unsigned outputs,
                std::size_t pixels)
{
  Bytes made(pixels * SizeOf(outputs, to));
  ConvertBakedRow(baked, from, row.data(), to, made.data(), pixels);
  return made;
}

void ExpectInterpolated(const BakedTable &table, BakedPixels from, const Bytes &row, BakedPixels to, const Bytes &made,
                        double tolerance)
{
  const std::size_t in = table.inputs + (from.alpha ? 1u : 0u), out = table.outputs + (to.alpha ? 1u : 0u);
  const double full = to.bytesPerSample == 1 ? 255.0 : 65535.0;
  for (std::size_t i = 0; i < kPixels; ++i) {
    Channels colour;
    for (unsigned input = 0; input < table.inputs; ++input)
      colour.push_back(SampleAt(row, from.bytesPerSample, i * in + input));
    const Channels expected = Interpolated(table, colour);
    for (unsigned output = 0; output < table.outputs; ++output)
      ASSERT_NEAR(SampleAt(made, to.bytesPerSample, i * out + output) * full, expected[output] * full, tolerance)
        << table.inputs << " inputs, " << table.outputs << " outputs, " << testing::PrintToString(colour);
    if (to.alpha) {
      const double alpha = from.alpha ? SampleAt(row, from.bytesPerSample, i * in + table.inputs) : 1.0;
      ASSERT_NEAR(SampleAt(made, to.bytesPerSample, i * out + table.outputs) * full, alpha * full, 0.5 + 1e-9);
    }
  }
}

TEST(BakedRows, InterpolateAndAreTheSameOnEveryInstructionSet)
{
  for (const unsigned inputs : {1u, 3u, 4u}) {
    for (unsigned outputs = 1; outputs <= 4; ++outputs) {
      for (const bool isStraight : {false, true}) {
        const BakedTable table =
          (isStraight ? StraightTable : RandomTable)(inputs, outputs, GridOf(inputs) - (isStraight ? 1 : 0));
        for (const BakedPixels from : kFormats) {
          for (const BakedPixels to : kFormats) {
            const Bytes row = RowOf(inputs, from, kPixels);
            const Bytes expected = Converted(table, from, row, to, outputs, kPixels);
            // Of 16 bits, a way into a cell is counted in 8192ths: where neighbours differ by all that is, eight
            // samples for each input.
            const double tolerance = to.bytesPerSample == 1 ? 1.0 : isStraight ? 3.0 : 8.0 * inputs + 2.0;
            ASSERT_NO_FATAL_FAILURE(ExpectInterpolated(table, from, row, to, expected, tolerance));
            ForEachTarget([&] {
              EXPECT_TRUE(Converted(table, from, row, to, outputs, kPixels) == expected)
                << inputs << " inputs of " << from.bytesPerSample << ", " << outputs << " outputs of "
                << to.bytesPerSample;
            });
          }
        }
      }
    }
  }
}

TEST(BakedRows, SumLightAndAreTheSameOnEveryInstructionSet)
{
  const BakedMatrix matrix = RandomMatrix();
  for (const bool alphaIn : {false, true}) {
    for (const bool alphaOut : {false, true}) {
      const Bytes row = RowOf(3, {1, alphaIn}, kPixels);
      Bytes expected;
      for (std::size_t i = 0; i < kPixels; ++i) {
        const std::uint8_t *const pixel = row.data() + i * (alphaIn ? 4 : 3);
        for (std::size_t output = 0; output < 3; ++output) {
          double light = 32768.0 * 16.0;
          for (std::size_t input = 0; input < 3; ++input)
            light += matrix.shares[input][pixel[input]][output];
          const auto amount = static_cast<unsigned>(std::clamp(std::floor(light / 16.0), 0.0, 65535.0));
          expected.push_back((*matrix.encodings[output])[BakedMatrix::EntryOf(amount)]);
        }
        if (alphaOut)
          expected.push_back(alphaIn ? pixel[3] : 255);
      }
      ForEachTarget([&] { EXPECT_TRUE(Converted(matrix, {1, alphaIn}, row, {1, alphaOut}, 3, kPixels) == expected); });
    }
  }
}

/// A row of `pixels` at the end of the mapped memory, at an even address and at an odd one, apart and in place, becomes
/// what the start of the long row becomes.
template <class Baked>
void ExpectRowsWithinBounds(const Baked &baked, unsigned inputs, BakedPixels from, unsigned outputs, BakedPixels to)
{
  const std::size_t in = SizeOf(inputs, from), out = SizeOf(outputs, to);
  const Bytes row = RowOf(inputs, from, kPixels), expected = Converted(baked, from, row, to, outputs, kPixels);
  for (const std::size_t pixels : {0u, 1u, 2u, 127u, 128u, 129u, 130u, 255u, 256u, 257u, 1111u}) {
    const auto end = expected.begin() + static_cast<std::ptrdiff_t>(pixels * out);
    for (const std::size_t spare : {0u, 1u}) {
      GuardedBytes source(pixels * in + spare), made(pixels * out + spare);
      std::copy_n(row.begin(), pixels * in, source.data());
      if (spare != 0)
        made.data()[pixels * out] = 0xAB;
      const Bytes before = source.Copy();
      ConvertBakedRow(baked, from, source.data(), to, made.data(), pixels);
      EXPECT_TRUE(std::equal(expected.begin(), end, made.data())) << pixels;
      EXPECT_TRUE(source.Copy() == before);
      EXPECT_TRUE(spare == 0 || made.data()[pixels * out] == 0xAB) << pixels;
      if (in == out) {
        ConvertBakedRow(baked, from, source.data(), to, source.data(), pixels);
        EXPECT_TRUE(std::equal(expected.begin(), end, source.data())) << pixels << " in place";
      }
    }
  }
}

TEST(BakedRows, TouchNothingBeyondARow)
{
  const BakedMatrix matrix = RandomMatrix();
  ForEachTarget([&] {
    for (const unsigned inputs : {1u, 3u, 4u}) {
      for (const unsigned outputs : {1u, 3u, 4u}) {
        const BakedTable table = RandomTable(inputs, outputs, GridOf(inputs));
        for (const BakedPixels from : kFormats)
          for (const BakedPixels to : kFormats)
            ExpectRowsWithinBounds(table, inputs, from, outputs, to);
      }
    }
    for (const bool alphaIn : {false, true})
      for (const bool alphaOut : {false, true})
        ExpectRowsWithinBounds(matrix, 3, {1, alphaIn}, 3, {1, alphaOut});
  });
}

} // namespace
