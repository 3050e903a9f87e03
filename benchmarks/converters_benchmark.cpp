// Converters beside bare calls of the library that does the work, with the same flags on the same colours. Read the
// ratios: --benchmark_repetitions=15 --benchmark_enable_random_interleaving=true, the medians.

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/platform/text.h"

#include <benchmark/benchmark.h>

#define CMS_NO_REGISTER_KEYWORD // C++17 has none
#include <lcms2.h>

#include <cstdlib>
#include <new>
#include <random>
#include <vector>

namespace {

std::size_t allocations = 0;

} // namespace

void *operator new(std::size_t size)
{
  ++allocations;
  if (void *memory = std::malloc(size))
    return memory;
  throw std::bad_alloc();
}
void operator delete(void *memory) noexcept
{
  std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
  std::free(memory);
}

namespace {

using namespace ColorSystem;
namespace ClrModel = ZelClr::ClrModel;

constexpr std::size_t kListed = 10000;
constexpr std::uint32_t kSide = 2048;

std::shared_ptr<ColorProfile> Installed(const wchar_t *name)
{
  return ColorProfileManager::GetInstance().GetColorProfile(name);
}

ColorContext &Document()
{
  static ColorContext context(Installed(L"sRGB_v4.icc"), Installed(L"USWebCoatedSWOP.icc"),
                              Installed(L"Gray Gamma 22.icc"), ColorModel::Cmyk, RenderingIntent::RelativeColorimetric);
  return context;
}

/// The same transform without the house around it.
struct Bare
{
  Bare(std::uint32_t from, std::uint32_t to, cmsUInt32Number flags)
  {
    const auto open = [](const std::shared_ptr<ColorProfile> &profile) {
      return cmsOpenProfileFromFile(ZelUtl::Utf8FromWide(profile->GetPath()).c_str(), "r");
    };
    const cmsHPROFILE source = open(Document().GetRgbColorProfile());
    const cmsHPROFILE destination = open(Document().GetCmykColorProfile());
    transform = cmsCreateTransform(source, from, destination, to, INTENT_RELATIVE_COLORIMETRIC, flags);
    cmsCloseProfile(destination);
    cmsCloseProfile(source);
  }
  ~Bare() { cmsDeleteTransform(transform); }
  Bare(const Bare &) = delete;
  Bare &operator=(const Bare &) = delete;

  cmsHTRANSFORM transform;
};

std::vector<CLR_COLORSPEC> Colours()
{
  std::mt19937 random(1);
  const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
  std::vector<CLR_COLORSPEC> colours;
  for (std::size_t i = 0; i < kListed; ++i)
    colours.push_back(CLR_COLORSPEC::MakeRGB(byte(), byte(), byte()));
  return colours;
}

std::vector<std::uint16_t> Words()
{
  std::vector<std::uint16_t> words;
  for (const CLR_COLORSPEC &colour : Colours()) {
    for (const std::uint8_t byte : {colour.GetRed(), colour.GetI255(), colour.GetBlue()})
      words.push_back(static_cast<std::uint16_t>(byte * 257));
  }
  return words;
}

/// Runs `work` with a running number of a colour and states how often it allocated.
template <class Work>
void EachColour(benchmark::State &state, Work work)
{
  work(0); // what is made once
  const std::size_t before = allocations;
  std::size_t i = 0;
  for (auto _ : state)
    work(i = (i + 1) % kListed);
  state.counters["allocations"] =
    benchmark::Counter(static_cast<double>(allocations - before), benchmark::Counter::kAvgIterations);
}

void Record_Bare(benchmark::State &state, cmsUInt32Number flags)
{
  const Bare bare(TYPE_RGB_16, TYPE_CMYK_16, flags);
  const std::vector<std::uint16_t> words = Words();
  std::uint16_t inks[4];
  EachColour(state, [&](std::size_t i) {
    cmsDoTransform(bare.transform, &words[3 * i], inks, 1);
    benchmark::DoNotOptimize(inks);
  });
}

void Record_Held(benchmark::State &state)
{
  const ColorConverter converter(Document(), Document());
  const std::vector<CLR_COLORSPEC> colours = Colours();
  CLR_COLORSPEC made;
  EachColour(state, [&](std::size_t i) {
    converter.Convert(colours[i], made, ClrModel::Cmyk255, 0);
    benchmark::DoNotOptimize(made);
  });
}

void Record_ConvertColorSpec(benchmark::State &state, unsigned model)
{
  const std::vector<CLR_COLORSPEC> colours = Colours();
  CLR_COLORSPEC made;
  EachColour(state, [&](std::size_t i) {
    WClrConvert::ConvertColorSpec(&made, model, &colours[i], Document());
    benchmark::DoNotOptimize(made);
  });
}

void List_Ours(benchmark::State &state)
{
  const ColorConverter converter(Document(), Document());
  const std::vector<CLR_COLORSPEC> colours = Colours();
  std::vector<CLR_COLORSPEC> made(kListed);
  for (auto _ : state)
    converter.ConvertList(colours, made, ClrModel::Cmyk255);
}

void List_Bare(benchmark::State &state)
{
  const Bare bare(TYPE_RGB_16, TYPE_CMYK_16, cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE);
  const std::vector<std::uint16_t> words = Words();
  std::vector<std::uint16_t> inks(4 * kListed);
  for (auto _ : state) {
    cmsDoTransform(bare.transform, words.data(), inks.data(), kListed);
    benchmark::DoNotOptimize(inks.data());
  }
}

/// 4 megapixels of noise.
struct Image
{
  Image()
    : rgb(CreateColorData({ColorModel::Rgb, SampleType::UInt8}, kSide, kSide)),
      inks(CreateColorData({ColorModel::Cmyk, SampleType::UInt8}, kSide, kSide))
  {
    std::mt19937 random(1);
    for (std::size_t i = 0; i < std::size_t{rgb->GetRowStride()} * kSide; ++i)
      rgb->GetRow(0)[i] = static_cast<std::uint8_t>(random());
  }
  std::unique_ptr<ColorData> rgb, inks;
};

void Image_Ours(benchmark::State &state)
{
  const ColorConverter converter(Document(), Document());
  const Image image;
  converter.ConvertColorData(*image.rgb, *image.inks); // makes the table
  for (auto _ : state)
    converter.ConvertColorData(*image.rgb, *image.inks);
}

void Image_Bare(benchmark::State &state)
{
  const Bare bare(TYPE_RGB_8, TYPE_CMYK_8, cmsFLAGS_NOCACHE);
  const Image image;
  for (auto _ : state)
    cmsDoTransformLineStride(bare.transform, image.rgb->GetRow(0), image.inks->GetRow(0), kSide, kSide,
                             image.rgb->GetRowStride(), image.inks->GetRowStride(), 0, 0);
}

BENCHMARK_CAPTURE(Record_Bare, exact, cmsFLAGS_NOCACHE | cmsFLAGS_NOOPTIMIZE);
BENCHMARK_CAPTURE(Record_Bare, default, 0);
BENCHMARK(Record_Held);
BENCHMARK_CAPTURE(Record_ConvertColorSpec, to_inks, ClrModel::Cmyk255);
BENCHMARK_CAPTURE(Record_ConvertColorSpec, same_model, ClrModel::Rgb255);
BENCHMARK(List_Ours)->Unit(benchmark::kMicrosecond);
BENCHMARK(List_Bare)->Unit(benchmark::kMicrosecond);
BENCHMARK(Image_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(Image_Bare)->Unit(benchmark::kMillisecond);

} // namespace
