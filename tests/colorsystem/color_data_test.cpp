// Pixel views: where samples stand, and what becomes of values.
#include "tests/support/sanitized.h"
#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colorsystem/color_system_error.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <typeinfo>

using namespace ColorSystem;

namespace {

constexpr SampleType kTypes[] = {SampleType::UInt8, SampleType::UInt16, SampleType::Float32, SampleType::Packed32,
                                 SampleType::Packed64};

struct LayoutRow
{
  ColorModel model;
  SampleType type;
  const char *plain, *reversed, *alpha, *both; ///< a letter for each sample of a pixel
  unsigned bytes;                              ///< of one sample
};

constexpr LayoutRow kLayouts[] = {
  {ColorModel::Rgb, SampleType::UInt8, "RGB", "BGR", "RGBA", "BGRA", 1},
  {ColorModel::Rgb, SampleType::Packed32, "RGB", "BGR", "RGBA", "BGRA", 1},
  {ColorModel::Rgb, SampleType::UInt16, "RGB", "BGR", "RGBA", "BGRA", 2},
  {ColorModel::Rgb, SampleType::Packed64, "RGB", "BGR", "RGBA", "BGRA", 2},
  {ColorModel::Rgb, SampleType::Float32, "RGB", "BGR", "RGBA", "BGRA", 4},
  {ColorModel::Cmyk, SampleType::UInt8, "CMYK", "CMYK", "CMYK", "CMYK", 1},
  {ColorModel::Cmyk, SampleType::Packed32, "CMYK", "CMYK", "CMYK", "CMYK", 1},
  {ColorModel::Cmyk, SampleType::UInt16, "CMYK", "KYMC", "CMYKA", "KYMCA", 2},
  {ColorModel::Cmyk, SampleType::Packed64, "CMYK", "KYMC", "CMYKA", "KYMCA", 2},
  {ColorModel::Grayscale, SampleType::UInt8, "G", "G", "G", "G", 1},
  {ColorModel::Grayscale, SampleType::UInt16, "G", "G", "GA", "GA", 2},
  {ColorModel::Hexachrome, SampleType::UInt8, "CMYKOG", "CMYKOG", "CMYKOG", "CMYKOG", 1},
  {ColorModel::Hexachrome, SampleType::Float32, "CMYKOG", "GOKYMC", "CMYKOGA", "GOKYMCA", 4},
};

TEST(ColorData, SamplesStandWhereTheDrawingHasThem)
{
  for (const LayoutRow &row : kLayouts) {
    const std::string names = row.plain;
    for (int flags = 0; flags < 4; ++flags) {
      const std::string order = flags == 0 ? row.plain : flags == 1 ? row.reversed : flags == 2 ? row.alpha : row.both;
      const PixelFormat format{row.model, row.type, (flags & 1) != 0, (flags & 2) != 0};
      const auto data = CreateColorData(format, 3, 2);
      const std::string what = order + " " + std::to_string(row.bytes);
      EXPECT_EQ(format.BytesPerPixel(), order.size() * row.bytes) << what;
      EXPECT_EQ(data->GetRowStride(), (3 * order.size() * row.bytes + 3) / 4 * 4) << what;
      EXPECT_EQ(data->GetPixelFormat(), format) << what;
      for (std::size_t place = 0; place < order.size(); ++place) {
        const bool alpha = order[place] == 'A';
        const auto channel = static_cast<unsigned>(alpha ? names.size() : names.find(order[place]));
        for (std::uint32_t pixel = 0; pixel < 6; ++pixel) {
          const auto offset = data->GetSampleAddress(pixel / 3, pixel % 3, channel) - data->GetRow(0);
          EXPECT_EQ(static_cast<std::size_t>(offset),
                    pixel / 3 * data->GetRowStride() + (pixel % 3 * order.size() + place) * row.bytes)
            << what << " " << order[place];
        }
      }
    }
  }
}

template <class Sample, int kFullScale>
void IsAViewOfItsFormat(SampleType type)
{
  const auto check = [&](ColorData &&data, bool reversed, bool alpha) {
    const PixelFormat format{ColorModel::Rgb, type, reversed, alpha};
    EXPECT_EQ(data.GetPixelFormat(), format);
    EXPECT_TRUE(data.OwnsBuffer());
    const auto owner = CreateColorData(format, 2, 2);
    const ColorData &made = *owner;
    EXPECT_EQ(typeid(data), typeid(made)) << static_cast<int>(type);
    for (unsigned channel = 0; channel < data.GetPixelFormat().ChannelsPerPixel(); ++channel) {
      data.SetSample(1, 1, channel, 0.2f);
      EXPECT_FLOAT_EQ(data.GetSample(1, 1, channel), 0.2f) << "a fifth of every full scale is whole";
      EXPECT_EQ(data.GetSample(0, 0, channel), 0.0f);
    }
  };
  check(TypedColorData<Sample, false, false, kFullScale>(ColorModel::Rgb, 2, 2), false, false);
  check(TypedColorData<Sample, true, false, kFullScale>(ColorModel::Rgb, 2, 2), true, false);
  check(TypedColorData<Sample, false, true, kFullScale>(ColorModel::Rgb, 2, 2), false, true);
  check(TypedColorData<Sample, true, true, kFullScale>(ColorModel::Rgb, 2, 2), true, true);
}

TEST(ColorData, TheTwentyViewsAreThoseOfTheirFormats)
{
  IsAViewOfItsFormat<std::uint8_t, 255>(SampleType::UInt8);
  IsAViewOfItsFormat<std::uint16_t, 65535>(SampleType::UInt16);
  IsAViewOfItsFormat<float, 1>(SampleType::Float32);
  IsAViewOfItsFormat<std::uint32_t, 255>(SampleType::Packed32);
  IsAViewOfItsFormat<std::uint64_t, 65535>(SampleType::Packed64);
}

TEST(ColorData, ValuesAreRoundedAndCutOff)
{
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  struct Row
  {
    float value;
    unsigned byte, word;
  };
  constexpr Row kRows[] = {{0.0f, 0, 0},         {1.0f, 255, 65535},   {0.5f, 128, 32768},
                           {-0.5f, 0, 0},        {1.0f / 255, 1, 257}, {0.4f / 255, 0, 103},
                           {0.6f / 255, 1, 154}, {1.001f, 255, 65535}, {kInfinity, 255, 65535},
                           {-kInfinity, 0, 0},   {0.999f, 255, 65469}, {std::numeric_limits<float>::quiet_NaN(), 0, 0}};
  for (const SampleType type : kTypes) {
    const auto data = CreateColorData({ColorModel::Rgb, type}, 1, 1);
    for (const Row &row : kRows) {
      data->SetSample(0, 0, 1, row.value);
      std::uint32_t stored = 0;
      std::memcpy(&stored, data->GetSampleAddress(0, 0, 1), BytesPerSample(type));
      if (type == SampleType::Float32)
        EXPECT_EQ(std::memcmp(&stored, &row.value, 4), 0) << "floats as they are: " << row.value;
      else
        EXPECT_EQ(stored, BytesPerSample(type) == 1 ? row.byte : row.word) << row.value;
    }
    EXPECT_EQ(data->GetSample(0, 0, 0), 0.0f) << "a neighbour";
    EXPECT_EQ(data->GetSample(0, 0, 2), 0.0f) << "a neighbour";
    if (type == SampleType::Float32)
      continue;
    for (unsigned v = 0; v < 1u << (8 * BytesPerSample(type)); ++v) {
      std::memcpy(data->GetSampleAddress(0, 0, 1), &v, BytesPerSample(type));
      data->SetSample(0, 0, 2, data->GetSample(0, 0, 1));
      ASSERT_EQ(std::memcmp(data->GetSampleAddress(0, 0, 2), &v, BytesPerSample(type)), 0) << v;
    }
  }
}

TEST(ColorData, PackedSamplesHaveTheBytesOfPlainOnes)
{
  std::mt19937 random(1);
  constexpr std::pair<SampleType, SampleType> kPairs[] = {{SampleType::Packed32, SampleType::UInt8},
                                                          {SampleType::Packed64, SampleType::UInt16}};
  for (const auto &[packed, plain] : kPairs) {
    for (unsigned model = 0; model <= 12; ++model) {
      for (int flags = 0; flags < 4; ++flags) {
        PixelFormat format{static_cast<ColorModel>(model), packed, (flags & 1) != 0, (flags & 2) != 0};
        const auto a = CreateColorData(format, 5, 3);
        format.type = plain;
        const auto b = CreateColorData(format, 5, 3);
        ASSERT_EQ(a->GetRowStride(), b->GetRowStride()) << model;
        for (int edit = 0; edit < 50; ++edit) {
          const auto row = random() % 3u, column = random() % 5u, channel = random() % format.ChannelsPerPixel();
          const float value = static_cast<float>(random() % 1000) / 999.0f;
          for (ColorData *const data : {a.get(), b.get()})
            data->SetSample(static_cast<unsigned>(row), static_cast<unsigned>(column), static_cast<unsigned>(channel),
                            value);
        }
        a->FillAlpha();
        b->FillAlpha();
        ASSERT_EQ(std::memcmp(a->GetRow(0), b->GetRow(0), std::size_t{3} * a->GetRowStride()), 0) << model;
      }
    }
  }
}

TEST(ColorData, OnlyAlphaIsFilledAndPaddingIsLeftAlone)
{
  std::uint8_t buffer[2 * 11] = {};
  std::fill(std::begin(buffer), std::end(buffer), std::uint8_t{7});
  const auto data = CreateColorData({ColorModel::Rgb, SampleType::UInt8, true, true}, 2, 2, 11, buffer);
  EXPECT_FALSE(data->OwnsBuffer());
  data->FillAlpha();
  for (std::size_t i = 0; i < sizeof buffer; ++i)
    EXPECT_EQ(buffer[i], i % 11 == 3 || i % 11 == 7 ? 255 : 7) << i;
}

TEST(ColorData, BuffersThatCannotBeAreRefused)
{
  struct Row
  {
    ColorModel model;
    SampleType type;
    std::uint32_t width, height, stride, gives; ///< 0: an error
  };
  constexpr std::uint32_t kMost = 0xFFFFFFFF;
  constexpr Row kRows[] = {
    {ColorModel::Rgb, SampleType::UInt8, 1, 1, 0, 4},
    {ColorModel::Rgb, SampleType::UInt8, 4, 1, 0, 12},
    {ColorModel::Rgb, SampleType::UInt8, 5, 1, 15, 15}, // needs no padding
    {ColorModel::Rgb, SampleType::UInt8, 5, 1, 14, 0},
    {ColorModel::Hexachrome, SampleType::UInt16, 3, 1, 35, 0},
    {ColorModel::Cmyk, SampleType::UInt8, 0x3FFFFFFF, 1, 0, 0xFFFFFFFC},
    {ColorModel::Cmyk, SampleType::UInt8, 0x40000000, 1, 0, 0},
    {ColorModel::Cmyk, SampleType::UInt8, 0x40000001, 1, 4, 0}, // 2^32 + 4 bytes are not 4
    {ColorModel::Rgb, SampleType::Float32, kMost, 1, 0, 0},
    {ColorModel::Hexachrome, SampleType::Float32, kMost, kMost, kMost, 0},
    {ColorModel::Grayscale, SampleType::UInt8, 1, kMost, kMost, 0},
    {ColorModel::Rgb, static_cast<SampleType>(5), 1, 1, 0, 0},
  };
  std::uint8_t somewhere[64] = {};
  for (const Row &row : kRows) {
    std::uint32_t stride = 0;
    try {
      stride = CreateColorData({row.model, row.type}, row.width, row.height, row.stride, somewhere)->GetRowStride();
    } catch (const ColorSystemError &error) {
      EXPECT_NE(std::string(error.what()), "");
    }
    EXPECT_EQ(stride, row.gives) << row.width << " " << row.height << " " << row.stride;
  }
  if (!tests::kSanitized) { // which stop the program at such a request
    EXPECT_THROW(CreateColorData({ColorModel::Grayscale, SampleType::UInt8}, 1, kMost, 0x7FFFFFFF), ColorSystemError);
  }
  for (const auto &[width, height] : {std::pair(0u, 0u), std::pair(0u, 5u), std::pair(5u, 0u)})
    EXPECT_TRUE(CreateColorData({ColorModel::Rgb, SampleType::UInt8, false, true}, width, height)->OwnsBuffer());
}

} // namespace
