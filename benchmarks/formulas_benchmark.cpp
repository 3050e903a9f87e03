// Component functions against the same arithmetic written out at the call, and both them and the record converters
// against QColor. Each measures one pass over the same colours; read the ratios.

#include "zelclr/convert/w_clr_convert.h"

#include <benchmark/benchmark.h>

#include <QColor>
#include <array>
#include <random>

namespace {

struct Bytes
{
  short red;
  short green;
  short blue;
};

constexpr std::size_t kColours = 1024;

const auto kRgb = [] {
  std::mt19937 random(1);
  std::array<Bytes, kColours> colours;
  for (Bytes &colour : colours)
    colour = {static_cast<short>(random() & 255), static_cast<short>(random() & 255),
              static_cast<short>(random() & 255)};
  return colours;
}();

template <class Colour, class Make>
std::array<Colour, kColours> AllAs(Make make)
{
  std::array<Colour, kColours> colours;
  for (std::size_t i = 0; i < kColours; ++i)
    colours[i] = make(kRgb[i]);
  return colours;
}

const auto kRecords = AllAs<CLR_COLORSPEC>([](Bytes c) {
  return CLR_COLORSPEC::MakeRGB(static_cast<std::uint8_t>(c.red), static_cast<std::uint8_t>(c.green),
                                static_cast<std::uint8_t>(c.blue));
});
const auto kHsbRecords = [] {
  auto colours = kRecords;
  for (CLR_COLORSPEC &colour : colours)
    WClrConvert::ConvertRGBToHSB(&colour, &colour);
  return colours;
}();
const auto kHlsRecords = [] {
  auto colours = kRecords;
  for (CLR_COLORSPEC &colour : colours)
    WClrConvert::ConvertRGBToHLS(&colour, &colour);
  return colours;
}();
const auto kQColors = AllAs<QColor>([](Bytes c) { return QColor(c.red, c.green, c.blue); });

template <class Colours, class Work>
void ForEach(benchmark::State &state, const Colours &colours, Work work)
{
  for (auto _ : state) {
    for (const auto &colour : colours)
      work(colour);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kColours));
}

template <class... Values>
void Keep(Values &...values)
{
  (benchmark::DoNotOptimize(values), ...);
}

/// Red, green and blue to HSB in the words of the definition: whole numbers, divisions and tests.
void HsbWrittenOut(benchmark::State &state)
{
  ForEach(state, kRgb, [](const Bytes &c) {
    const int r = c.red;
    const int g = c.green;
    const int b = c.blue;
    const int max = std::max(r, std::max(g, b));
    const int min = std::min(r, std::min(g, b));
    int hue = 0;
    int saturation = 0;
    if (max != 0 && (saturation = (max - min) * 255 / max) != 0) {
      const int d = max - min;
      const int rc = (max - r) * 65536 / d;
      const int gc = (max - g) * 65536 / d;
      const int bc = (max - b) * 65536 / d;
      const int h = r == max ? bc - gc : g == max ? rc - bc + 2 * 65536 : gc - rc + 4 * 65536;
      hue = (h * 60 + 32768) >> 16;
      if (hue < 0)
        hue += 360;
    }
    Keep(hue, saturation, max);
  });
}

void HsbComponents(benchmark::State &state)
{
  ForEach(state, kRgb, [](const Bytes &c) {
    short hue;
    short saturation;
    short brightness;
    WClrConvert::ConvertRGBCompToHSBComp(hue, saturation, brightness, c.red, c.green, c.blue);
    Keep(hue, saturation, brightness);
  });
}

void HsbRecord(benchmark::State &state)
{
  ForEach(state, kRecords, [](const CLR_COLORSPEC &colour) {
    CLR_COLORSPEC hsb;
    WClrConvert::ConvertRGBToHSB(&hsb, &colour);
    benchmark::DoNotOptimize(hsb);
  });
}

void HsbQColor(benchmark::State &state)
{
  ForEach(state, kQColors, [](const QColor &colour) {
    QColor hsb = colour.toHsv();
    benchmark::DoNotOptimize(hsb);
  });
}

void HlsWrittenOut(benchmark::State &state)
{
  ForEach(state, kRgb, [](const Bytes &c) {
    const int r = c.red;
    const int g = c.green;
    const int b = c.blue;
    const int max = std::max(r, std::max(g, b));
    const int min = std::min(r, std::min(g, b));
    int lightness = (max + min) / 2;
    int hue = 0;
    int saturation = 0;
    if (max != min) {
      const int d = max - min;
      saturation = lightness < 128 ? d * 255 / (max + min) : d * 255 / (510 - max - min);
      hue = r == max ? (g - b) * 60 / d : g == max ? (b - r) * 60 / d + 120 : (r - g) * 60 / d + 240;
      if (hue < 0)
        hue += 360;
    }
    Keep(hue, saturation, lightness);
  });
}

void HlsComponents(benchmark::State &state)
{
  ForEach(state, kRgb, [](const Bytes &c) {
    short hue;
    short lightness;
    short saturation;
    WClrConvert::ConvertRGBtoHLS(hue, lightness, saturation, c.red, c.green, c.blue);
    Keep(hue, lightness, saturation);
  });
}

void HlsRecord(benchmark::State &state)
{
  ForEach(state, kRecords, [](const CLR_COLORSPEC &colour) {
    CLR_COLORSPEC hls;
    WClrConvert::ConvertRGBToHLS(&hls, &colour);
    benchmark::DoNotOptimize(hls);
  });
}

void HlsQColor(benchmark::State &state)
{
  ForEach(state, kQColors, [](const QColor &colour) {
    QColor hls = colour.toHsl();
    benchmark::DoNotOptimize(hls);
  });
}

void RgbFromHsbWrittenOut(benchmark::State &state)
{
  ForEach(state, kHsbRecords, [](const CLR_COLORSPEC &colour) {
    const int hue = colour.GetHue();
    const int v = colour.GetBlack();
    const int s = colour.GetRed() * 65536 / 255;
    const int sector = hue / 60;
    const int f = (hue - sector * 60) * 65536 / 60;
    const int p = ((65536 - s) * v + 32768) >> 16;
    const int q = ((65536 - ((f / 2) * (s / 2) >> 14)) * v + 32768) >> 16;
    const int t = ((65536 - (((65536 - f) / 2) * (s / 2) >> 14)) * v + 32768) >> 16;
    int r = v;
    int g = t;
    int b = p;
    switch (sector % 6) {
    case 1:
      r = q, g = v, b = p;
      break;
    case 2:
      r = p, g = v, b = t;
      break;
    case 3:
      r = p, g = q, b = v;
      break;
    case 4:
      r = t, g = p, b = v;
      break;
    case 5:
      r = v, g = p, b = q;
      break;
    default:
      break;
    }
    Keep(r, g, b);
  });
}

void RgbFromHsbComponents(benchmark::State &state)
{
  ForEach(state, kHsbRecords, [](const CLR_COLORSPEC &colour) {
    short red;
    short green;
    short blue;
    WClrConvert::ConvertHSBCompToRGBComp(red, green, blue, colour.GetHue(), colour.GetRed(), colour.GetBlack());
    Keep(red, green, blue);
  });
}

void RgbFromHsbRecord(benchmark::State &state)
{
  ForEach(state, kHsbRecords, [](const CLR_COLORSPEC &colour) {
    CLR_COLORSPEC rgb;
    WClrConvert::ConvertHSBToRGB(&rgb, &colour);
    benchmark::DoNotOptimize(rgb);
  });
}

void RgbFromHsbQColor(benchmark::State &state)
{
  static const auto kHsv = AllAs<QColor>([](Bytes c) { return QColor(c.red, c.green, c.blue).toHsv(); });
  ForEach(state, kHsv, [](const QColor &colour) {
    QColor rgb = colour.toRgb();
    benchmark::DoNotOptimize(rgb);
  });
}

void RgbFromHlsWrittenOut(benchmark::State &state)
{
  const auto value = [](int m1, int m2, int hue) {
    if (hue >= 360)
      hue -= 360;
    else if (hue < 0)
      hue += 360;
    if (hue < 60)
      return m1 + (m2 - m1) * hue / 60;
    if (hue < 180)
      return m2;
    return hue < 240 ? m1 + (m2 - m1) * (240 - hue) / 60 : m1;
  };
  ForEach(state, kHlsRecords, [=](const CLR_COLORSPEC &colour) {
    const int hue = colour.GetHue();
    const int l = colour.GetRed();
    const int s = colour.GetBlack();
    int r = l;
    int g = l;
    int b = l;
    if (s != 0) {
      const int m2 = l <= 127 ? l * (s + 255) / 255 : l + s - l * s / 255;
      const int m1 = 2 * l - m2;
      r = value(m1, m2, hue + 120);
      g = value(m1, m2, hue);
      b = value(m1, m2, hue - 120);
    }
    Keep(r, g, b);
  });
}

void RgbFromHlsComponents(benchmark::State &state)
{
  ForEach(state, kHlsRecords, [](const CLR_COLORSPEC &colour) {
    short red;
    short green;
    short blue;
    WClrConvert::ConvertHLStoRGB(red, green, blue, colour.GetHue(), colour.GetRed(), colour.GetBlack());
    Keep(red, green, blue);
  });
}

void RgbFromHlsRecord(benchmark::State &state)
{
  ForEach(state, kHlsRecords, [](const CLR_COLORSPEC &colour) {
    CLR_COLORSPEC rgb;
    WClrConvert::ConvertHLSToRGB(&rgb, &colour);
    benchmark::DoNotOptimize(rgb);
  });
}

void RgbFromHlsQColor(benchmark::State &state)
{
  static const auto kHsl = AllAs<QColor>([](Bytes c) { return QColor(c.red, c.green, c.blue).toHsl(); });
  ForEach(state, kHsl, [](const QColor &colour) {
    QColor rgb = colour.toRgb();
    benchmark::DoNotOptimize(rgb);
  });
}

void CmykRecord(benchmark::State &state)
{
  ForEach(state, kRecords, [](const CLR_COLORSPEC &colour) {
    CLR_COLORSPEC cmyk;
    WClrConvert::ConvertToBasicType(&cmyk, ZelClr::ClrModel::Cmyk255, &colour);
    benchmark::DoNotOptimize(cmyk);
  });
}

void CmykQColor(benchmark::State &state)
{
  ForEach(state, kQColors, [](const QColor &colour) {
    QColor cmyk = colour.toCmyk();
    benchmark::DoNotOptimize(cmyk);
  });
}

void GrayWrittenOut(benchmark::State &state)
{
  ForEach(state, kRgb, [](const Bytes &c) {
    benchmark::DoNotOptimize(static_cast<short>((299 * c.red + 587 * c.green + 114 * c.blue) / 1000));
  });
}

void GrayComponents(benchmark::State &state)
{
  ForEach(state, kRgb,
          [](const Bytes &c) { benchmark::DoNotOptimize(WClrConvert::ConvertRGBtoGray(c.red, c.green, c.blue)); });
}

} // namespace

BENCHMARK(HsbWrittenOut);
BENCHMARK(HsbComponents);
BENCHMARK(HsbRecord);
BENCHMARK(HsbQColor);
BENCHMARK(HlsWrittenOut);
BENCHMARK(HlsComponents);
BENCHMARK(HlsRecord);
BENCHMARK(HlsQColor);
BENCHMARK(RgbFromHsbWrittenOut);
BENCHMARK(RgbFromHsbComponents);
BENCHMARK(RgbFromHsbRecord);
BENCHMARK(RgbFromHsbQColor);
BENCHMARK(RgbFromHlsWrittenOut);
BENCHMARK(RgbFromHlsComponents);
BENCHMARK(RgbFromHlsRecord);
BENCHMARK(RgbFromHlsQColor);
BENCHMARK(CmykRecord);
BENCHMARK(CmykQColor);
BENCHMARK(GrayWrittenOut);
BENCHMARK(GrayComponents);
