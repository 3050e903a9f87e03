// What a plain record costs: copying, comparing, converting within its model.

#include "zelclr/convert/w_clr_convert.h"

#include "benchmarks/allocations.h"
#include <benchmark/benchmark.h>

namespace {

const auto kRgb = CLR_COLORSPEC::MakeRGB(255, 128, 0);
const auto kCmyk = CLR_COLORSPEC::MakeCMYK255(0, 128, 255, 0);
const auto kReference = CLR_COLORSPEC::MakeReference(kRgb);

/// Runs `work` and states how often it allocated.
template <class Work>
void Measure(benchmark::State &state, Work work)
{
  const std::size_t before = AllocationsSoFar();
  for (auto _ : state)
    work();
  StateAllocationsSince(before, state);
}

void Copy(benchmark::State &state)
{
  CLR_COLORSPEC source = kRgb;
  Measure(state, [&] {
    benchmark::DoNotOptimize(source);
    CLR_COLORSPEC copy(source);
    benchmark::DoNotOptimize(copy);
  });
}

void Assign(benchmark::State &state)
{
  CLR_COLORSPEC source = kRgb;
  CLR_COLORSPEC target;
  Measure(state, [&] {
    benchmark::DoNotOptimize(source);
    target = source;
    benchmark::DoNotOptimize(target);
  });
}

void Compare(benchmark::State &state)
{
  CLR_COLORSPEC a = kRgb;
  CLR_COLORSPEC b = kRgb;
  Measure(state, [&] {
    benchmark::DoNotOptimize(a);
    benchmark::DoNotOptimize(b);
    benchmark::DoNotOptimize(a == b);
  });
}

void ConvertWithinModel(benchmark::State &state)
{
  CLR_COLORSPEC source = kRgb;
  CLR_COLORSPEC target;
  Measure(state, [&] {
    benchmark::DoNotOptimize(WClrConvert::CopyOrRelabel(&target, ZelClr::ClrModel::Rgb255, &source));
    benchmark::DoNotOptimize(target);
  });
}

void Relabel(benchmark::State &state)
{
  CLR_COLORSPEC source = kCmyk;
  CLR_COLORSPEC target;
  Measure(state, [&] {
    benchmark::DoNotOptimize(WClrConvert::CopyOrRelabel(&target, ZelClr::ClrModel::Cmyk100, &source));
    benchmark::DoNotOptimize(target);
  });
}

void MakeReference(benchmark::State &state)
{
  Measure(state, [&] { benchmark::DoNotOptimize(CLR_COLORSPEC::MakeReference(kRgb)); });
}

void CopyReference(benchmark::State &state)
{
  Measure(state, [&] {
    CLR_COLORSPEC copy(kReference);
    benchmark::DoNotOptimize(copy);
  });
}

void ConvertBetweenAnyModels(benchmark::State &state)
{
  const auto source = CLR_COLORSPEC::MakeHSB(30, 255, 255);
  CLR_COLORSPEC target;
  Measure(state, [&] {
    benchmark::DoNotOptimize(WClrConvert::ConvertToBasicType(&target, ZelClr::ClrModel::Cmyk100, &source));
  });
}

} // namespace

BENCHMARK(Copy);
BENCHMARK(Assign);
BENCHMARK(Compare);
BENCHMARK(ConvertWithinModel);
BENCHMARK(Relabel);
BENCHMARK(MakeReference);
BENCHMARK(CopyReference);
BENCHMARK(ConvertBetweenAnyModels);
