// Whole images by formula, each beside a copy that moves as many bytes: half of source and destination together, since
// a copy reads what it writes. Read the counter "copies": how many times as long as that copy a conversion takes.

#include "zelclr/colorsystem/formula_pixels.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace ColorSystem;
using enum ColorModel;
using enum SampleType;

constexpr std::uint32_t kSide = 2048;

double SecondsOf(const auto &work)
{
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Convert(benchmark::State &state, PixelFormat from, PixelFormat to)
{
  const auto source = CreateColorData(from, kSide, kSide), destination = CreateColorData(to, kSide, kSide);
  std::mt19937 random(1);
  for (std::uint32_t y = 0; y < kSide; ++y) {
    for (std::uint32_t x = 0; x < kSide; ++x) {
      for (unsigned channel = 0; channel < from.ChannelsPerPixel(); ++channel)
        source->SetSample(y, x, channel, static_cast<float>(random() >> 8) * 0x1p-24f);
    }
  }
  const std::size_t half = std::size_t{kSide} * (source->GetRowStride() + destination->GetRowStride()) / 2;
  const std::vector<std::uint8_t> in(half, 1);
  std::vector<std::uint8_t> out(half);
  double copying = 0.0, converting = 0.0;
  for (auto _ : state) { // in turns, so that both meet the same weather
    copying += SecondsOf([&] {
      std::memcpy(out.data(), in.data(), half);
      benchmark::ClobberMemory();
    });
    const double taken = SecondsOf([&] {
      ConvertByFormula(*source, *destination);
      benchmark::ClobberMemory();
    });
    converting += taken;
    state.SetIterationTime(taken);
  }
  state.SetItemsProcessed(state.iterations() * kSide * kSide);
  state.counters["copies"] = converting / copying;
}

void OnePixel(benchmark::State &state, ColorModel from, ColorModel to)
{
  const auto source = CreateColorData({from, UInt8}, 1, 1), destination = CreateColorData({to, UInt16}, 1, 1);
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertByFormula(*source, *destination));
}

struct Model
{
  ColorModel model;
  const char *name;
};

constexpr Model kModels[] = {{Rgb, "Rgb"},        {Cmyk, "Cmyk"}, {Hexachrome, "Hexachrome"},
                             {Grayscale, "Gray"}, {Lab, "Lab"},   {Xyz, "Xyz"}};

const bool kRegistered = [] {
  for (const auto &[type, bits] : {std::pair(UInt8, "8"), std::pair(UInt16, "16")}) {
    for (const Model &from : kModels) {
      for (const Model &to : kModels) {
        const std::string name = std::string(from.name) + "To" + to.name + "/" + bits;
        const PixelFormat source = {from.model, type}, destination = {to.model, type};
        benchmark::RegisterBenchmark(name.c_str(),
                                     [=](benchmark::State &state) { Convert(state, source, destination); })
          ->UseManualTime()
          ->Unit(benchmark::kMillisecond);
      }
    }
  }
  benchmark::RegisterBenchmark("OnePixel/RgbToCmyk", [](benchmark::State &state) { OnePixel(state, Rgb, Cmyk); });
  benchmark::RegisterBenchmark("OnePixel/RgbToLab", [](benchmark::State &state) { OnePixel(state, Rgb, Lab); });
  return true;
}();

} // namespace
