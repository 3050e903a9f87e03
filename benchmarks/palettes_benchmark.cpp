// Palette files read beside a bare pass of libxml2 over the same bytes, and look-ups and edits in large palettes.

#include "zelclr/palettes/xml_color_palette.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace {

using Palette = WXmlColorPalette;

std::string Number(std::size_t number)
{
  std::string digits = std::to_string(number);
  return std::string(6 - digits.size(), '0') + digits;
}

std::string Values(std::size_t i)
{
  std::string values;
  for (const std::size_t step : {7u, 31u, 101u})
    values += (values.empty() ? "0." : ",0.") + std::to_string(100 + i * step % 900);
  return values;
}

/// Colours of RGB and CMYK by turns.
std::string ProcessFile(std::size_t count)
{
  std::string xml = "<?xml version=\"1.0\"?>\n<palette guid=\"{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}\" "
                    "name=\"Benchmark\">\n  <colors>\n    <page>\n";
  for (std::size_t i = 0; i < count; ++i) {
    const bool isRgb = i % 2 == 0;
    xml += "      <color cs=\"" + std::string(isRgb ? "RGB" : "CMYK") + "\" name=\"Colour " + Number(i) +
           "\" tints=\"" + Values(i) + (isRgb ? "" : ",0.05") + "\"/>\n";
  }
  return xml + "    </page>\n  </colors>\n</palette>\n";
}

/// An ink with two looks for every colour.
std::string SpotFile(std::size_t count)
{
  std::string xml = "<?xml version=\"1.0\"?>\n<palette guid=\"{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}\" "
                    "name=\"Benchmark\">\n  <colorspaces>\n";
  for (std::size_t i = 0; i < count; ++i) {
    xml += "    <cs name=\"Ink " + Number(i) + "\" fixedID=\"" + std::to_string(i) +
           "\">\n      <color cs=\"CMYK\" tints=\"" + Values(i) + ",0\"/>\n      <color cs=\"LAB\" tints=\"" +
           Values(i + 5) + "\"/>\n    </cs>\n";
  }
  xml += "  </colorspaces>\n  <colors>\n    <page>\n";
  for (std::size_t i = 0; i < count; ++i)
    xml += "      <color cs=\"Ink " + Number(i) + "\" name=\"Ink " + Number(i) + "\"/>\n";
  return xml + "    </page>\n  </colors>\n</palette>\n";
}

constexpr std::size_t kColors = 10'000;

const std::string &ProcessBytes()
{
  static const std::string bytes = ProcessFile(kColors);
  return bytes;
}
const std::string &SpotBytes()
{
  static const std::string bytes = SpotFile(kColors);
  return bytes;
}

// --- Reading ---------------------------------------------------------------------------------------------------------

/// Hears every element, and reads the numbers of "tints".
double BarePass(const std::string &bytes)
{
  double sum = 0;
  xmlSAXHandler handlers{};
  handlers.initialized = XML_SAX2_MAGIC;
  handlers.startElementNs = [](void *user, const xmlChar *, const xmlChar *, const xmlChar *, int, const xmlChar **,
                               int count, int, const xmlChar **attributes) {
    for (int i = 0; i < count; ++i, attributes += 5) {
      if (std::strcmp(reinterpret_cast<const char *>(attributes[0]), "tints") != 0)
        continue;
      const auto *at = reinterpret_cast<const char *>(attributes[3]);
      const auto *const end = reinterpret_cast<const char *>(attributes[4]);
      for (char *next = nullptr; at < end; at = next + 1)
        *static_cast<double *>(user) += std::strtod(at, &next);
    }
  };
  handlers.characters = [](void *, const xmlChar *, int) {};
  xmlSAXUserParseMemory(&handlers, &sum, bytes.data(), static_cast<int>(bytes.size()));
  return sum;
}

void Read_Bare(benchmark::State &state, const std::string &(*bytes)())
{
  for (auto _ : state)
    benchmark::DoNotOptimize(BarePass(bytes()));
}

/// To finished records.
void Read_Ours(benchmark::State &state, const std::string &(*bytes)())
{
  std::string reason;
  for (auto _ : state) {
    Palette palette;
    if (!palette.LoadFromBytes(bytes(), reason))
      state.SkipWithError(reason.c_str());
    for (std::size_t i = 0; i < palette.GetColorCount(); ++i)
      benchmark::DoNotOptimize(palette.GetColorSpec(i));
    state.PauseTiming();
    palette.Clear();
    state.ResumeTiming();
  }
}

void Write(benchmark::State &state, const std::string &(*bytes)())
{
  Palette palette;
  std::string reason;
  palette.LoadFromBytes(bytes(), reason);
  for (auto _ : state)
    benchmark::DoNotOptimize(palette.Bytes(false));
}

// --- Look-ups and edits ----------------------------------------------------------------------------------------------

/// A palette whose indices are made.
Palette Indexed(std::int64_t count)
{
  Palette palette;
  std::string reason;
  palette.LoadFromBytes(ProcessFile(static_cast<std::size_t>(count)), reason);
  palette.FindName("");
  palette.FindColor(CLR_COLORSPEC::MakeRGB(0, 0, 0));
  palette.FindColorID(palette.GetHeader().guid, 0);
  return palette;
}

WXmlColor Added(std::size_t number)
{
  WXmlColor color;
  color.name = "Added " + Number(number % 1'000'000);
  color.colorSpace = "RGB";
  color.tints = "0.5,0.25,1";
  return color;
}

void FirstLookUp(benchmark::State &state)
{
  Palette palette;
  std::string reason;
  palette.LoadFromBytes(ProcessFile(static_cast<std::size_t>(state.range(0))), reason);
  for (auto _ : state) {
    state.PauseTiming();
    {
      Palette fresh = palette;
      state.ResumeTiming();
      benchmark::DoNotOptimize(fresh.FindName("Colour 000001"));
      benchmark::DoNotOptimize(fresh.FindColor(CLR_COLORSPEC::MakeRGB(0, 0, 0)));
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

void LookUpName(benchmark::State &state)
{
  const Palette palette = Indexed(state.range(0));
  std::size_t i = 0;
  for (auto _ : state)
    benchmark::DoNotOptimize(palette.FindName(palette.GetColor(i = (i + 7919) % palette.GetColorCount()).name));
}

void LookUpValue(benchmark::State &state)
{
  const Palette palette = Indexed(state.range(0));
  std::size_t i = 0;
  for (auto _ : state)
    benchmark::DoNotOptimize(palette.FindColor(palette.GetColorSpec(i = (i + 7919) % palette.GetColorCount())));
}

/// In the middle of the palette, with a look-up of each kind behind each edit.
void EditAndLookUp(benchmark::State &state)
{
  Palette palette = Indexed(state.range(0));
  const std::size_t middle = palette.GetColorCount() / 2;
  const std::string name = palette.GetColor(middle + 1).name;
  const CLR_COLORSPEC spec = palette.GetColorSpec(middle + 1);
  std::size_t number = 0;
  for (auto _ : state) {
    palette.InsertColor(middle, Added(number++));
    benchmark::DoNotOptimize(palette.FindName(name));
    benchmark::DoNotOptimize(palette.FindColor(spec));
    palette.RemoveColor(middle);
    benchmark::DoNotOptimize(palette.FindName(name));
    benchmark::DoNotOptimize(palette.FindColor(spec));
  }
}

/// At the end, where colours are usually added.
void AppendAndRemove(benchmark::State &state)
{
  Palette palette = Indexed(state.range(0));
  std::size_t number = 0;
  for (auto _ : state) {
    palette.InsertColor(palette.GetColorCount(), Added(number++));
    palette.RemoveColor(palette.GetColorCount() - 1);
  }
}

void ReplaceColor(benchmark::State &state)
{
  Palette palette = Indexed(state.range(0));
  std::size_t number = 0;
  for (auto _ : state) {
    ++number;
    palette.ReplaceColor((number * 7919) % palette.GetColorCount(), Added(number));
  }
}

BENCHMARK_CAPTURE(Read_Bare, process, &ProcessBytes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read_Ours, process, &ProcessBytes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read_Bare, spot, &SpotBytes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read_Ours, spot, &SpotBytes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, process, &ProcessBytes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Write, spot, &SpotBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(FirstLookUp)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(LookUpName)->Arg(1'000)->Arg(10'000)->Arg(100'000);
BENCHMARK(LookUpValue)->Arg(1'000)->Arg(10'000)->Arg(100'000);
BENCHMARK(EditAndLookUp)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(AppendAndRemove)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ReplaceColor)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

} // namespace
