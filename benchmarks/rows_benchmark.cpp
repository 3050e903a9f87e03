// Rows of pixels against the loop that a caller would write over the component functions.

#include "zelclr/convert/formula_rows.h"
#include "zelclr/convert/w_clr_convert.h"

#include <benchmark/benchmark.h>
#include <hwy/targets.h>

#include <random>
#include <vector>

namespace {

constexpr std::size_t kPixels = 64 * 1024;

std::vector<std::uint8_t> RandomBytes(std::size_t count)
{
  std::mt19937 random(1);
  std::vector<std::uint8_t> bytes(count);
  for (auto &byte : bytes)
    byte = static_cast<std::uint8_t>(random());
  return bytes;
}

/// Valid pixels to convert back: hues within 0 to 359.
template <ZelClr::RowConversion *kForth>
std::vector<std::uint8_t> Converted()
{
  const auto rgb = RandomBytes(kPixels * 3);
  std::vector<std::uint8_t> pixels(kPixels * 4);
  kForth(rgb.data(), pixels.data(), kPixels);
  return pixels;
}

void Run(benchmark::State &state, ZelClr::RowConversion *convert, const std::vector<std::uint8_t> &source)
{
  std::vector<std::uint8_t> destination(kPixels * 4);
  for (auto _ : state) {
    convert(source.data(), destination.data(), kPixels);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPixels));
}

void HsbByLoop(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  for (std::size_t i = 0; i < pixels; ++i) {
    short hue;
    short saturation;
    short brightness;
    WClrConvert::ConvertRGBCompToHSBComp(hue, saturation, brightness, source[3 * i], source[3 * i + 1],
                                         source[3 * i + 2]);
    destination[4 * i] = static_cast<std::uint8_t>(hue);
    destination[4 * i + 1] = static_cast<std::uint8_t>(hue >> 8);
    destination[4 * i + 2] = static_cast<std::uint8_t>(saturation);
    destination[4 * i + 3] = static_cast<std::uint8_t>(brightness);
  }
}

void RgbByLoop(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  for (std::size_t i = 0; i < pixels; ++i) {
    short red;
    short green;
    short blue;
    WClrConvert::ConvertHSBCompToRGBComp(red, green, blue, static_cast<short>(source[4 * i] | source[4 * i + 1] << 8),
                                         source[4 * i + 2], source[4 * i + 3]);
    destination[3 * i] = static_cast<std::uint8_t>(red);
    destination[3 * i + 1] = static_cast<std::uint8_t>(green);
    destination[3 * i + 2] = static_cast<std::uint8_t>(blue);
  }
}

const auto kRgb = RandomBytes(kPixels * 4);

/// One instruction set alone, as on an older processor.
void RunOn(benchmark::State &state, ZelClr::RowConversion *convert, const std::vector<std::uint8_t> &source,
           std::int64_t target)
{
  if ((hwy::SupportedTargets() & target) == 0) {
    state.SkipWithError("this processor does not have it");
    return;
  }
  hwy::SetSupportedTargetsForTest(target);
  Run(state, convert, source);
  hwy::SetSupportedTargetsForTest(0);
}

} // namespace

BENCHMARK_CAPTURE(RunOn, RgbToHsb_row_AVX2, ZelClr::HsbRowFromRgb, kRgb, HWY_AVX2);
BENCHMARK_CAPTURE(RunOn, RgbToHsb_row_SSE4, ZelClr::HsbRowFromRgb, kRgb, HWY_SSE4);
BENCHMARK_CAPTURE(RunOn, HsbToRgb_row_AVX2, ZelClr::RgbRowFromHsb, Converted<ZelClr::HsbRowFromRgb>(), HWY_AVX2);
BENCHMARK_CAPTURE(Run, RgbToHsb_loop, HsbByLoop, kRgb);
BENCHMARK_CAPTURE(Run, RgbToHsb_row, ZelClr::HsbRowFromRgb, kRgb);
BENCHMARK_CAPTURE(Run, HsbToRgb_loop, RgbByLoop, Converted<ZelClr::HsbRowFromRgb>());
BENCHMARK_CAPTURE(Run, HsbToRgb_row, ZelClr::RgbRowFromHsb, Converted<ZelClr::HsbRowFromRgb>());
BENCHMARK_CAPTURE(Run, RgbToHls_row, ZelClr::HlsRowFromRgb, kRgb);
BENCHMARK_CAPTURE(Run, HlsToRgb_row, ZelClr::RgbRowFromHls, Converted<ZelClr::HlsRowFromRgb>());
BENCHMARK_CAPTURE(Run, RgbToGray_row, ZelClr::GrayRowFromRgb, kRgb);
BENCHMARK_CAPTURE(Run, RgbToCmyk_row, ZelClr::CmykRowFromRgb, kRgb);
BENCHMARK_CAPTURE(Run, CmykToRgb_row, ZelClr::RgbRowFromCmyk, kRgb);
BENCHMARK_CAPTURE(Run, RgbToYiq_row, ZelClr::YiqRowFromRgb, kRgb);
