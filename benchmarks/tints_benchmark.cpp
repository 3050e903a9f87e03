// Tints of pixels beside the loop that a caller would write, and of single colours. Read the ratios:
// --benchmark_repetitions=9 --benchmark_enable_random_interleaving=true, the medians.

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colour/fills/tint_list.h"
#include "zelclr/convert/formulas.h"

#include <benchmark/benchmark.h>
#include <hwy/targets.h>

#include <random>
#include <vector>

namespace {

using C = CLR_COLORSPEC;

constexpr std::size_t kPixels = 64 * 1024;

std::vector<std::uint8_t> RandomPixels()
{
  std::mt19937 random(1);
  std::vector<std::uint8_t> bytes(3 * kPixels);
  for (auto &byte : bytes)
    byte = static_cast<std::uint8_t>(random());
  return bytes;
}

ColorSystem::ColorContext &Context()
{
  static ColorSystem::ColorContext context;
  return context;
}

TINT TintOf(int kind, int level, const C &colour = C::MakeRGB(200, 100, 0))
{
  const C second = C::MakeRGB(0, 50, 250);
  TINT tint;
  TNTSetTint(&tint, &colour, level, static_cast<unsigned char>(kind), &second);
  return tint;
}

void Pixels(benchmark::State &state, int kind, int level)
{
  const TINT tint = TintOf(kind, level);
  auto pixels = RandomPixels();
  for (auto _ : state) {
    tint.pixelOperation(tint, pixels.data(), kPixels, Context());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPixels));
}

/// One instruction set alone, as on an older processor.
void PixelsOn(benchmark::State &state, int kind, int level, std::int64_t target)
{
  if ((hwy::SupportedTargets() & target) == 0) {
    state.SkipWithError("this processor does not have it");
    return;
  }
  hwy::SetSupportedTargetsForTest(target);
  Pixels(state, kind, level);
  hwy::SetSupportedTargetsForTest(0);
}

/// The formula written out over the packed pixels.
template <class Tint>
void Loop(benchmark::State &state, Tint tint)
{
  auto pixels = RandomPixels();
  for (auto _ : state) {
    for (std::size_t i = 0; i < kPixels; ++i)
      tint(pixels.data() + 3 * i);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPixels));
}

void Mix(std::uint8_t &component, int aim, int level256)
{
  component = static_cast<std::uint8_t>((component * (256 - level256) + aim * level256 + 128) >> 8);
}

void MixLoop(benchmark::State &state)
{
  int level256 = 128;
  benchmark::DoNotOptimize(level256);
  Loop(state, [level256](std::uint8_t *pixel) {
    Mix(pixel[0], 0, level256);
    Mix(pixel[1], 100, level256);
    Mix(pixel[2], 200, level256);
  });
}

void RampLoop(benchmark::State &state)
{
  int level256 = 128;
  benchmark::DoNotOptimize(level256);
  const auto ramp = RandomPixels();
  Loop(state, [&ramp, level256](std::uint8_t *pixel) {
    const int gray = ZelClr::Formulas::GrayFromRgb(pixel[2], pixel[1], pixel[0]);
    for (int c = 0; c < 3; ++c)
      Mix(pixel[c], ramp[static_cast<std::size_t>(3 * gray + c)], level256);
  });
}

void OneColour(benchmark::State &state, int kind, const C &colour)
{
  const TINT tint = TintOf(kind, 500);
  for (auto _ : state) {
    C tinted(colour);
    benchmark::DoNotOptimize(tint.colourOperation(tint, tinted, Context()));
  }
}

void OneRgb(benchmark::State &state, int kind)
{
  const TINT tint = TintOf(kind, 500);
  int r = 40, g = 80, b = 160;
  for (auto _ : state) {
    TNTApplyTintToRGB(&tint, &r, &g, &b, Context());
    benchmark::DoNotOptimize(r);
  }
}

void FewPixels(benchmark::State &state)
{
  const TINT tint = TintOf(2, 500);
  const auto count = static_cast<std::size_t>(state.range(0));
  auto pixels = RandomPixels();
  for (auto _ : state) {
    tint.pixelOperation(tint, pixels.data(), count, Context());
    benchmark::ClobberMemory();
  }
}

BENCHMARK(MixLoop);
BENCHMARK_CAPTURE(Pixels, cover, 2, 500);
BENCHMARK_CAPTURE(PixelsOn, cover_AVX2, 2, 500, HWY_AVX2);
BENCHMARK_CAPTURE(PixelsOn, cover_SSE4, 2, 500, HWY_SSE4);
BENCHMARK_CAPTURE(Pixels, brightness, 1, 500);
BENCHMARK_CAPTURE(Pixels, light, 3, 500);
BENCHMARK_CAPTURE(Pixels, inversion, 5, 500);
BENCHMARK_CAPTURE(Pixels, lightness_inversion, 5, -500);
BENCHMARK(RampLoop);
BENCHMARK_CAPTURE(Pixels, tone, 7, 500);
BENCHMARK_CAPTURE(Pixels, map, 9, 500);
BENCHMARK_CAPTURE(PixelsOn, map_AVX2, 9, 500, HWY_AVX2);
BENCHMARK_CAPTURE(PixelsOn, map_SSE4, 9, 500, HWY_SSE4);
BENCHMARK(FewPixels)->Arg(1)->Arg(4)->Arg(8)->Arg(16)->Arg(17)->Arg(64)->Arg(256);
BENCHMARK_CAPTURE(OneRgb, cover, 2);
BENCHMARK_CAPTURE(OneRgb, map, 8);
BENCHMARK_CAPTURE(OneColour, tint_rgb, 0, C::MakeRGB(40, 80, 160));
BENCHMARK_CAPTURE(OneColour, lightness_cmyk, 4, C::MakeCMYK255(200, 100, 0, 55));

} // namespace
