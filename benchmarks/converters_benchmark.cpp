// Converters beside bare calls of the library that does the work, with the same flags on the same colours. Read the
// ratios: --benchmark_repetitions=15 --benchmark_enable_random_interleaving=true, the medians.

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/platform/text.h"

#include "benchmarks/allocations.h"
#include <benchmark/benchmark.h>

#define CMS_NO_REGISTER_KEYWORD // C++17 has none
#include <lcms2.h>

#include <random>
#include <vector>

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
  const std::size_t before = AllocationsSoFar();
  std::size_t i = 0;
  for (auto _ : state)
    work(i = (i + 1) % kListed);
  StateAllocationsSince(before, state);
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

/// Pixels of which so many in a row are alike.
void Gamut(benchmark::State &state)
{
  constexpr std::uint32_t kPixels = 256 * 256;
  const auto alike = static_cast<std::uint32_t>(state.range(0));
  const auto rgb = CreateColorData({ColorModel::Rgb, SampleType::UInt8}, kPixels, 1);
  std::mt19937 random(1);
  for (std::uint32_t i = 0; i < kPixels; ++i) {
    for (unsigned channel = 0; channel < 3; ++channel)
      *rgb->GetSampleAddress(0, i, channel) =
        i % alike == 0 ? static_cast<std::uint8_t>(random()) : *rgb->GetSampleAddress(0, i - 1, channel);
  }
  const GamutCheck check(Document().GetRgbColorProfile(), Document().GetCmykColorProfile());
  std::vector<float> distances(kPixels);
  for (auto _ : state)
    check.Distances(*rgb, distances);
  state.SetItemsProcessed(state.iterations() * kPixels);
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
BENCHMARK(Gamut)->Arg(1)->Arg(4)->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace
