// Fountain fills beside the bare loops that they consist of. Read the ratios: --benchmark_repetitions=15
// --benchmark_enable_random_interleaving=true, the medians.

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colour/fills/fountain_sampling.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

using namespace ColorSystem;
namespace ClrModel = ZelClr::ClrModel;
using C = CLR_COLORSPEC;

constexpr int kSamples = 256;

ColorContext &Document()
{
  const auto installed = [](const wchar_t *name) { return ColorProfileManager::GetInstance().GetColorProfile(name); };
  static ColorContext context(installed(L"sRGB_v4.icc"), installed(L"USWebCoatedSWOP.icc"),
                              installed(L"Gray Gamma 22.icc"), ColorModel::Cmyk, RenderingIntent::RelativeColorimetric);
  return context;
}

CLR_FOUNTCOLOR_ARRAY Fill(const C &from, const C &to, ClrBlendMode mode = ClrBlendMode_Straight, int midpoint = 50)
{
  CLR_FOUNTCOLOR_ARRAY fill;
  fill.Add({from, 0, mode, static_cast<std::int16_t>(midpoint), 255});
  fill.Add(to, 1000);
  return fill;
}

void Sample(benchmark::State &state, const CLR_FOUNTCOLOR_ARRAY &fill)
{
  for (auto _ : state)
    benchmark::DoNotOptimize(CMGMakeInterColorSpecs(fill, kSamples, Document(), true));
}

std::uint8_t Between(int from, int to, double weight)
{
  return static_cast<std::uint8_t>(from + weight * (to - from) + 0.5);
}

/// The interpolation written out for one model.
void Rgb_Bare(benchmark::State &state)
{
  const C from = C::MakeRGB(255, 0, 10), to = C::MakeRGB(0, 200, 255);
  for (auto _ : state) {
    auto samples = std::make_unique<C[]>(kSamples);
    for (std::size_t i = 0; i < kSamples; ++i) {
      const double weight = static_cast<double>(i) / (kSamples - 1);
      C::MakeRGB(samples[i], Between(from.GetRed(), to.GetRed(), weight), Between(from.GetI255(), to.GetI255(), weight),
                 Between(from.GetBlue(), to.GetBlue(), weight));
    }
    benchmark::DoNotOptimize(samples.get());
    benchmark::ClobberMemory();
  }
}

void Cmyk_Bare(benchmark::State &state)
{
  const C from = C::MakeCMYK255(255, 0, 10, 3), to = C::MakeCMYK255(0, 200, 255, 9);
  for (auto _ : state) {
    auto samples = std::make_unique<C[]>(kSamples);
    for (std::size_t i = 0; i < kSamples; ++i) {
      const double weight = static_cast<double>(i) / (kSamples - 1);
      const auto ink = [&](std::size_t k) { return Between(from.GetRAWColor()[k], to.GetRAWColor()[k], weight); };
      C::MakeCMYK255(samples[i], ink(0), ink(1), ink(2), ink(3));
    }
    benchmark::DoNotOptimize(samples.get());
    benchmark::ClobberMemory();
  }
}

void Rgb_Ours(benchmark::State &state)
{
  Sample(state, Fill(C::MakeRGB(255, 0, 10), C::MakeRGB(0, 200, 255)));
}

void Rgb_MovedMidpoint(benchmark::State &state)
{
  Sample(state, Fill(C::MakeRGB(255, 0, 10), C::MakeRGB(0, 200, 255), ClrBlendMode_Straight, 30));
}

void Cmyk_Ours(benchmark::State &state)
{
  Sample(state, Fill(C::MakeCMYK255(255, 0, 10, 3), C::MakeCMYK255(0, 200, 255, 9)));
}

void Hue_Rgb(benchmark::State &state)
{
  Sample(state, Fill(C::MakeRGB(255, 0, 10), C::MakeRGB(0, 200, 255), ClrBlendMode_Hue));
}

/// Through the press's profile.
void Hue_Managed(benchmark::State &state)
{
  Sample(state, Fill(C::MakeCMYK255(255, 0, 10, 3), C::MakeCMYK255(0, 200, 255, 9), ClrBlendMode_Hue));
}

/// As many colours through that profile, in one list and one by one.
void Managed_Bare(benchmark::State &state, bool oneByOne)
{
  const ColorConverter converter(Document(), Document());
  std::vector<C> colours(kSamples), made(kSamples);
  for (std::size_t i = 0; i < kSamples; ++i)
    colours[i] = C::MakeRGB48(static_cast<std::uint16_t>(i * 257), 40, static_cast<std::uint16_t>(65535 - i * 200));
  for (auto _ : state) {
    if (!oneByOne)
      converter.ConvertList(colours, made, ClrModel::Cmyk255);
    for (std::size_t i = 0; oneByOne && i < kSamples; ++i)
      converter.Convert(colours[i], made[i], ClrModel::Cmyk255, 0);
    benchmark::ClobberMemory();
  }
}

void Opacities(benchmark::State &state)
{
  CLR_FOUNTCOLOR_ARRAY fill = Fill(C::MakeRGB(255, 0, 10), C::MakeRGB(0, 200, 255));
  fill[0].opacity = 0;
  for (auto _ : state)
    benchmark::DoNotOptimize(CMGMakeInterColorSpecsTransparency(fill, kSamples));
}

BENCHMARK(Rgb_Bare)->Unit(benchmark::kMicrosecond);
BENCHMARK(Rgb_Ours)->Unit(benchmark::kMicrosecond);
BENCHMARK(Rgb_MovedMidpoint)->Unit(benchmark::kMicrosecond);
BENCHMARK(Cmyk_Bare)->Unit(benchmark::kMicrosecond);
BENCHMARK(Cmyk_Ours)->Unit(benchmark::kMicrosecond);
BENCHMARK(Hue_Rgb)->Unit(benchmark::kMicrosecond);
BENCHMARK(Hue_Managed)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Managed_Bare, one_list, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Managed_Bare, one_by_one, true)->Unit(benchmark::kMicrosecond);
BENCHMARK(Opacities)->Unit(benchmark::kMicrosecond);

} // namespace
