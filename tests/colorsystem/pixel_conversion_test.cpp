// Rows of record models, and the plain functions of renderers, on buffers that end where the mapped memory ends.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/guarded_bytes.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/proofing/pixel_conversion.h"
#include "zelclr/colour/colour_models.h"

#include <array>
#include <cmath>
#include <cstring>

extern "C" int ConvertPixelsFromC(void); // pixel_conversion_consumer.c

using namespace ColorSystem;
using C = CLR_COLORSPEC;
using tests::GuardedBytes;
namespace ClrModel = ZelClr::ClrModel;

namespace {

/// Bytes to a pixel of rows; 0 for models without rows.
constexpr unsigned PixelSize(unsigned type)
{
  constexpr unsigned kSizes[31] = {0, 0, 4, 4, 3, 3, 0, 0, 1, 1, 0, 3,  3, 0, 0, 6,
                                   0, 4, 3, 3, 0, 0, 0, 6, 2, 0, 0, 12, 0, 4, 4};
  return type < 31 ? kSizes[type] : 0;
}

std::uint32_t Padded(std::uint32_t row)
{
  return (row + 3) / 4 * 4;
}

std::size_t SizeOf(std::uint32_t row, std::uint32_t stride, std::uint32_t height)
{
  return height == 0 ? 0 : std::size_t{stride} * (height - 1) + row;
}

class Rows : public tests::ShippedProfiles
{
protected:
  static ColorContext Of(const std::shared_ptr<ColorProfile> &profile)
  {
    return {*profile, RenderingIntent::RelativeColorimetric};
  }
  const ColorContext here{srgb, swop, gray, ColorModel::Rgb, RenderingIntent::RelativeColorimetric},
    there{Shipped(L"CompatibleWithAdobeRGB1998.icc"), Shipped(L"ISO Coated FOGRA39.icc"), Shipped(L"Gray Gamma 18.icc"),
          ColorModel::Cmyk, RenderingIntent::RelativeColorimetric};
};

TEST_F(Rows, OfEveryModelBecomeRowsOfEveryModel)
{
  constexpr std::pair<std::uint32_t, std::uint32_t> kSizes[] = {{0, 0}, {1, 1}, {5, 3}, {0, 3}, {7, 0}, {3, 7}};
  const SimpleColorConverter simple(here);
  const ColorConverter managed(here, there);
  for (unsigned from = 0; from <= 31; ++from) {
    for (unsigned to = 0; to <= 31; ++to) {
      const bool known = PixelSize(from) != 0 && PixelSize(to) != 0;
      for (const auto &[width, height] : kSizes) {
        const std::uint32_t sourceRow = width * PixelSize(from), row = width * PixelSize(to);
        for (const std::uint32_t gap : {0u, 1u, 5u}) { // 0: padded, as without strides
          const std::uint32_t sourceStride = gap == 0 ? Padded(sourceRow) : sourceRow + gap - 1;
          const std::uint32_t stride = gap == 0 ? Padded(row) : row + gap - 1;
          GuardedBytes source(SizeOf(sourceRow, sourceStride, height)), made(SizeOf(row, stride, height));
          const auto before = made.Copy();
          for (const SimpleColorConverter *converter : {&simple, static_cast<const SimpleColorConverter *>(&managed)}) {
            const bool converted =
              gap == 0 ? converter->ConvertRasterLines(source.data(), from, made.data(), to, width, height)
                       : converter->ConvertRasterLines(source.data(), from, sourceStride, made.data(), to, stride,
                                                       width, height);
            ASSERT_EQ(converted, known || (known && width == 0))
              << from << " to " << to << ' ' << width << 'x' << height;
          }
          const auto after = made.Copy();
          if (!known) {
            ASSERT_EQ(after, before) << from << " to " << to;
          }
          for (std::size_t i = 0; i < after.size(); ++i) // what lies between the rows stays
            ASSERT_TRUE(stride == 0 || i % stride < row || after[i] == before[i]) << from << " to " << to;
        }
      }
    }
  }
}

/// A record of the pixel's bytes: what the rows mean.
C RecordOf(unsigned type, const std::uint8_t *pixel)
{
  const auto at = [pixel]<class T>(T, std::size_t i) {
    T value;
    std::memcpy(&value, pixel + i * sizeof(T), sizeof(T));
    return value;
  };
  const auto byte = [pixel](std::size_t i) { return pixel[i]; };
  switch (type) {
  case ClrModel::Cmyk:
    return C::MakeCMYK(byte(0), byte(1), byte(2), byte(3));
  case ClrModel::Cmyk255:
  case ClrModel::Cmyk100: // on the scale of 255, too
    return C::MakeCMYK255(byte(0), byte(1), byte(2), byte(3));
  case ClrModel::Cmy255:
    return C::MakeCMY(byte(0), byte(1), byte(2));
  case ClrModel::Rgb255:
    return C::MakeRGB(byte(2), byte(1), byte(0));
  case ClrModel::BlackWhite:
    return C::MakeBW(byte(0) != 0);
  case ClrModel::Gray255:
    return C::MakeGRAY(byte(0));
  case ClrModel::Yiq255:
    return C::MakeYIQ255(byte(0), byte(1), byte(2));
  case ClrModel::Lab:
    return C::MakeLAB(byte(0), static_cast<std::int8_t>(byte(1)), static_cast<std::int8_t>(byte(2)));
  case ClrModel::Hexachrome:
    return C::MakeHEX(byte(0), byte(1), byte(2), byte(3), byte(4), byte(5));
  case ClrModel::Lab255:
    return C::MakeLAB255(byte(0), byte(1), byte(2));
  case ClrModel::Xyz:
    return C::MakeXYZ(byte(0), byte(1), byte(2));
  case ClrModel::Rgb48:
    return C::MakeRGB48(at(std::uint16_t{}, 0), at(std::uint16_t{}, 1), at(std::uint16_t{}, 2));
  case ClrModel::Gray16:
    return C::MakeGRAY16(at(std::uint16_t{}, 0));
  case ClrModel::ScRgb:
    return C::MakeSCRGB(at(0.0f, 0), at(0.0f, 1), at(0.0f, 2));
  case ClrModel::Rgba:
    return C::MakeRGBA(byte(0), byte(1), byte(2), byte(3));
  case ClrModel::Bgra:
    return C::MakeBGRA(byte(2), byte(1), byte(0), byte(3));
  default:
    return {};
  }
}

TEST_F(Rows, MeanWhatRecordsMean)
{
  const ColorConverter managed(here, there);
  constexpr std::uint32_t kWidth = 64;
  for (unsigned type = 1; type <= 30; ++type) {
    const unsigned size = PixelSize(type);
    if (size == 0 || type == ClrModel::ScRgb) // the record's own scale is another: see below
      continue;
    GuardedBytes source(kWidth * size);
    for (std::size_t i = 0; i < source.size(); ++i)
      source.data()[i] = static_cast<std::uint8_t>(type == ClrModel::Cmyk         ? source.data()[i] % 101
                                                   : type == ClrModel::BlackWhite ? source.data()[i] % 2
                                                                                  : source.data()[i]);
    std::array<std::uint16_t, kWidth * 3> made{};
    std::array<std::uint8_t, kWidth * 4> inks{};
    ASSERT_TRUE(managed.ConvertRasterLines(source.data(), type, made.data(), ClrModel::Rgb48, kWidth, 1));
    ASSERT_TRUE(managed.ConvertRasterLines(source.data(), type, inks.data(), ClrModel::Cmyk, kWidth, 1));
    for (std::uint32_t i = 0; i < kWidth; ++i) {
      const C record = RecordOf(type, source.data() + i * size);
      C expected;
      ASSERT_TRUE(managed.Convert(record, expected, ClrModel::Rgb48, 0)) << type;
      const std::uint16_t words[] = {expected.GetRed16(), expected.GetGreen16(), expected.GetBlue16()};
      for (unsigned channel = 0; channel < 3; ++channel)
        ASSERT_NEAR(made[i * 3 + channel], words[channel], 400) << type << ' ' << i << ' ' << channel;
      ASSERT_TRUE(managed.Convert(record, expected, ClrModel::Cmyk, 0)) << type;
      for (unsigned channel = 0; channel < 4; ++channel)
        ASSERT_NEAR(inks[i * 4 + channel], expected.GetRAWColor()[channel], 1) << type << ' ' << i;
    }
  }
  const float floats[] = {1.0f, 0.5f, 0.0f, 2.0f, -1.0f, std::nanf("")};
  std::uint8_t bytes[6];
  ASSERT_TRUE(
    SimpleColorConverter(here).ConvertRasterLines(floats, ClrModel::ScRgb, 0, bytes, ClrModel::Rgb255, 3, 1, 2));
  EXPECT_EQ(std::vector(bytes, bytes + 6), (std::vector<std::uint8_t>{0, 128, 255, 0, 0, 255}));
  const std::uint8_t percents[] = {0, 50, 100, 255}, black[] = {0, 1, 7};
  std::uint8_t scaled[4];
  ASSERT_TRUE(SimpleColorConverter(here).ConvertRasterLines(percents, ClrModel::Cmyk, scaled, ClrModel::Cmyk255, 1, 1));
  EXPECT_EQ(std::vector(scaled, scaled + 4), (std::vector<std::uint8_t>{0, 128, 255, 255}));
  ASSERT_TRUE(
    SimpleColorConverter(here).ConvertRasterLines(black, ClrModel::BlackWhite, scaled, ClrModel::Gray255, 3, 1));
  EXPECT_EQ(std::vector(scaled, scaled + 3), (std::vector<std::uint8_t>{0, 255, 255}));
}

TEST_F(Rows, ThatCannotBeAreRefused)
{
  const ColorConverter managed(here, there);
  std::uint8_t source[64] = {1, 2, 3}, made[64] = {4, 5, 6};
  const std::vector<std::uint8_t> before(made, made + 64);
  const auto convert = [&](const void *from, std::uint32_t sourceStride, void *to, std::uint32_t stride,
                           std::uint32_t width, std::uint32_t height) {
    return managed.ConvertRasterLines(from, 5, sourceStride, to, 3, stride, width, height);
  };
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  EXPECT_FALSE(convert(source, 11, made, 16, 4, 2));
  EXPECT_FALSE(convert(source, 12, made, 15, 4, 2));
  EXPECT_FALSE(convert(nullptr, 12, made, 16, 4, 2));
  EXPECT_FALSE(convert(source, 12, nullptr, 16, 4, 2));
  EXPECT_FALSE(convert(source, 0, made, 0, kMost, 1));
  EXPECT_FALSE(convert(source, 0, made, 0, kMost, kMost));
  EXPECT_FALSE(convert(source, 3, made, 4, kMost / 3 + 2, 1)); // 3 * width is 3 in 32 bits
  EXPECT_EQ(std::vector(made, made + 64), before);
}

// Managed pixels of Xyz, for which engines have no format, go by way of Lab.
TEST_F(Rows, OfXyzAreManaged)
{
  const ColorConverter toPress(here, there);
  const auto xyz = CreateColorData({ColorModel::Xyz, SampleType::Float32}, 2, 1);
  const auto inks = CreateColorData({ColorModel::Cmyk, SampleType::UInt8}, 2, 1);
  for (unsigned channel = 0; channel < 3; ++channel)
    xyz->SetSample(0, 0, channel, 1.0f);
  ASSERT_TRUE(toPress.ConvertColorData(*xyz, *inks));
  for (unsigned channel = 0; channel < 4; ++channel)
    EXPECT_LE(inks->GetSample(0, 0, channel), 0.02f) << channel; // white is paper
  EXPECT_GT(inks->GetSample(0, 1, 3), 0.5f);
  ASSERT_TRUE(toPress.ConvertColorData(*inks, *xyz));
  EXPECT_GT(xyz->GetSample(0, 0, 1), 0.95f);
}

// --- The plain functions
// -----------------------------------------------------------------------------------------------

class PlainFunctions : public Rows
{
protected:
  PlainFunctions() : display(ColorContext::GetDisplayColorContextImp()) {}
  const ColorContext display;
};

TEST_F(PlainFunctions, StayWithinTheirBuffers)
{
  constexpr std::pair<std::uint32_t, std::uint32_t> kSizes[] = {{0, 0}, {1, 1},  {5, 3},  {0, 2},
                                                                {3, 0}, {17, 2}, {301, 5}};
  const struct
  {
    std::uint32_t type, flags, pixel;
  } kSources[] = {{5, 0, 3},  {5, 1, 4},   {5, 2, 3},   {5, 3, 3},  {3, 0, 4},  {3, 1, 4},  {2, 0, 4},
                  {17, 0, 4}, {9, 0, 1},   {9, 1, 1},   {8, 0, 1},  {23, 0, 6}, {23, 1, 8}, {24, 0, 2},
                  {24, 1, 4}, {27, 0, 12}, {27, 1, 16}, {29, 0, 3}, {29, 1, 4}, {30, 0, 3}, {30, 1, 4}};
  for (const auto &from : kSources) {
    for (const auto &[width, height] : kSizes) {
      for (const std::uint8_t alpha : {std::uint8_t{0}, std::uint8_t{1}}) {
        for (const std::uint32_t gap : {0u, 1u, 2u, 7u}) {
          const std::uint32_t sourceRow = width * from.pixel, row = width * (3u + alpha);
          const bool packed = (from.flags & kSourceIsRenderingOfCmyk) != 0;
          const std::uint32_t sourceStride = packed ? sourceRow : gap == 0 ? Padded(sourceRow) : sourceRow + gap - 1;
          const std::uint32_t stride = gap == 0 ? Padded(row) : row + gap - 1;
          GuardedBytes source(SizeOf(sourceRow, sourceStride, height)), made(SizeOf(row, stride, height));
          const auto untouched = source.Copy(), before = made.Copy();
          ASSERT_TRUE(ConvertPixelsForDisplay(L"", source.data(), from.type, gap == 0 || packed ? 0 : sourceStride,
                                              from.flags, made.data(), gap == 0 ? 0 : stride, alpha, width, height))
            << from.type << ' ' << from.flags << ' ' << width << 'x' << height;
          ASSERT_EQ(source.Copy(), untouched);
          const auto after = made.Copy();
          for (std::size_t i = 0; i < after.size(); ++i)
            ASSERT_TRUE(i % stride < row || after[i] == before[i]) << from.type;
          const bool carries =
            row == 0 || (alpha != 0 && (from.flags & 3) == kSourceHasAlpha && from.pixel > 1 && from.type != 3);
          for (std::size_t i = 3; alpha != 0 && !carries && i < after.size();
               i += 4 + (i % stride == row - 1 ? stride - row : 0))
            ASSERT_EQ(after[i], 255) << from.type << ' ' << from.flags; // full where the source has none
        }
      }
    }
  }
  for (const auto &[width, height] : kSizes) {
    GuardedBytes source(std::size_t{3} * width * height), made(std::size_t{4} * width * height);
    EXPECT_TRUE(RecoverCmykPixels(source.data(), made.data(), width, height)) << width << 'x' << height;
  }
}

TEST_F(PlainFunctions, ConvertAsConvertersDo)
{
  constexpr std::uint32_t kWidth = 33;
  GuardedBytes source(kWidth * 4), made(kWidth * 4);
  std::vector<std::uint8_t> expected(kWidth * 4);
  const auto rgb = Shipped(L"sRGB-Placeholder!");
  // The named profile, the usual one; colours of 4 bytes in place.
  const struct
  {
    const wchar_t *name;
    std::uint32_t type;
    std::shared_ptr<ColorProfile> profile;
  } kRows[] = {
    {nullptr, 3, swop}, {L"", 3, swop},           {L"ISO Coated FOGRA39.icc", 3, Shipped(L"ISO Coated FOGRA39.icc")},
    {L"", 5, rgb},      {L"", 9, gray},           {L"Gray Gamma 18.icc", 9, Shipped(L"Gray Gamma 18.icc")},
    {L"", 24, gray},    {L"CIE Lab.icc", 18, lab}};
  for (const auto &row : kRows) {
    ASSERT_TRUE(ConvertPixelsForDisplay(row.name, source.data(), row.type, 0, 0, made.data(), 0, 1, kWidth, 1));
    ASSERT_TRUE(ColorConverter(Of(row.profile), display)
                  .ConvertRasterLines(source.data(), row.type, expected.data(), ClrModel::Bgra, kWidth, 1));
    EXPECT_EQ(made.Copy(), expected) << row.type;
  }
  std::memcpy(made.data(), source.data(), source.size());
  ASSERT_TRUE(ConvertPixelsForDisplay(L"", made.data(), 3, 0, 0, made.data(), 0, 1, kWidth, 1));
  ASSERT_TRUE(
    ColorConverter(Of(swop), display).ConvertRasterLines(source.data(), 3, expected.data(), ClrModel::Bgra, kWidth, 1));
  EXPECT_EQ(made.Copy(), expected);

  // Alpha is the source's where both have it.
  ASSERT_TRUE(ConvertPixelsForDisplay(L"", source.data(), 5, 0, kSourceHasAlpha, made.data(), 0, 1, kWidth, 1));
  for (std::size_t i = 3; i < made.size(); i += 4)
    EXPECT_EQ(made.data()[i], source.data()[i]);

  // A rendering of CMYK: recovered first, also where the destination is the source or has shorter rows.
  std::vector<std::uint8_t> inks(kWidth * 4), narrow(kWidth * 3 + 1);
  ASSERT_TRUE(RecoverCmykPixels(source.data(), inks.data(), kWidth, 1));
  ASSERT_TRUE(ConvertPixelsForDisplay(L"", inks.data(), 3, 0, 0, expected.data(), 0, 1, kWidth, 1));
  ASSERT_TRUE(ConvertPixelsForDisplay(L"", source.data(), 5, 0, 2, made.data(), 0, 1, kWidth, 1));
  EXPECT_EQ(made.Copy(), expected);
  ASSERT_TRUE(ConvertPixelsForDisplay(L"", source.data(), 5, 0, 2, narrow.data(), kWidth * 3, 0, kWidth, 1));
  std::memcpy(made.data(), source.data(), source.size());
  ASSERT_TRUE(ConvertPixelsForDisplay(L"", made.data(), 5, 0, 2, made.data(), kWidth * 3, 0, kWidth, 1));
  for (std::size_t i = 0; i < kWidth * 3; ++i) {
    EXPECT_EQ(narrow[i], expected[i / 3 * 4 + i % 3]);
    EXPECT_EQ(made.data()[i], narrow[i]);
  }
  // Blue, green, red: white is paper, and red is magenta and yellow.
  const std::uint8_t colours[] = {255, 255, 255, 0, 0, 255};
  ASSERT_TRUE(RecoverCmykPixels(colours, inks.data(), 2, 1));
  for (std::size_t i = 0; i < 4; ++i)
    EXPECT_LE(inks[i], 5);
  EXPECT_LT(inks[4], 30);
  EXPECT_GT(inks[5], 200);
  EXPECT_GT(inks[6], 200);
}

// RGB lies as B G R whatever its samples.
TEST_F(PlainFunctions, Kept_ReadEveryRgbFromBlueToRed)
{
  const std::uint16_t words[] = {0, 0, 65535};
  const float floats[] = {0.0f, 0.0f, 1.0f};
  const std::uint8_t bytes[] = {0, 0, 255};
  const std::pair<const void *, unsigned> kRows[] = {{bytes, 5}, {words, 23}, {floats, 27}, {bytes, 29}, {bytes, 30}};
  for (const auto &[pixel, type] : kRows) {
    std::uint8_t made[3];
    ASSERT_TRUE(ConvertPixelsForDisplay(L"", pixel, type, 0, 0, made, 3, 0, 1, 1)) << type;
    EXPECT_GT(made[2], 250) << type;
    EXPECT_LT(made[0], 5) << type;
  }
}

TEST_F(PlainFunctions, RefuseWhatCannotBe)
{
  std::uint8_t source[64] = {1, 2, 3}, made[64] = {4, 5, 6};
  const std::vector<std::uint8_t> before(made, made + 64);
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  for (const std::uint32_t type : {0u, 10u, 13u, 14u, 16u, 21u, 22u, 26u, 28u, 31u, kMost, // unknown
                                   1u, 4u,  6u,  7u,  11u, 12u, 15u, 18u, 19u, 20u, 25u})  // without a usual profile
    for (const std::uint32_t size : {0u, 1u, 2u})
      EXPECT_FALSE(ConvertPixelsForDisplay(L"", source, type, 0, 0, made, 0, 0, size, size)) << type;
  const auto convert = [&](const wchar_t *name, const void *from, std::uint32_t sourceStride, std::uint32_t flags,
                           void *to, std::uint32_t stride, std::uint32_t width, std::uint32_t height) {
    return ConvertPixelsForDisplay(name, from, 5, sourceStride, flags, to, stride, 0, width, height);
  };
  EXPECT_FALSE(convert(L"no such profile.icc", source, 0, 0, made, 0, 1, 1));
  EXPECT_FALSE(convert(L"", nullptr, 0, 0, made, 0, 1, 1));
  EXPECT_FALSE(convert(L"", source, 0, 0, nullptr, 0, 1, 1));
  EXPECT_FALSE(convert(L"", source, 11, 0, made, 12, 4, 2));
  EXPECT_FALSE(convert(L"", source, 12, 0, made, 11, 4, 2));
  EXPECT_FALSE(convert(L"", source, 12, 1, made, 12, 4, 2)); // with alpha, a row has 16
  EXPECT_FALSE(convert(L"", source, 0, 2, made, 11, 4, 1));
  for (const std::uint32_t flags : {0u, 1u, 2u}) {
    EXPECT_FALSE(convert(L"", source, 0, flags, made, 0, kMost, 1)) << flags;
    EXPECT_FALSE(convert(L"", source, 0, flags, made, 0, kMost, kMost)) << flags;
    EXPECT_FALSE(convert(L"", source, kMost, flags, made, kMost, 0x60000000, 0x60000000)) << flags;
    EXPECT_FALSE(convert(L"", source, 3, flags, made, 3, kMost / 3 + 2, 1)) << flags;
  }
  EXPECT_FALSE(RecoverCmykPixels(nullptr, made, 1, 1));
  EXPECT_FALSE(RecoverCmykPixels(source, nullptr, 1, 1));
  EXPECT_FALSE(RecoverCmykPixels(source, made, kMost, 1));
  EXPECT_FALSE(RecoverCmykPixels(source, made, 0x40000001, kMost));
  EXPECT_TRUE(RecoverCmykPixels(nullptr, nullptr, 0, kMost));
  EXPECT_TRUE(convert(nullptr, nullptr, 0, 0, nullptr, 0, 0, kMost));
  EXPECT_EQ(std::vector(made, made + 64), before);
}

TEST_F(PlainFunctions, AreCallableFromC)
{
  EXPECT_EQ(ConvertPixelsFromC(), 0);
}

} // namespace
