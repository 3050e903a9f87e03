// Managed conversions beside bare calls of the library that makes them, with the same flags on the same buffers. Read
// the ratios of each pair.

#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/typed_colors.h"
#include "zelclr/platform/text.h"

#include <benchmark/benchmark.h>

#define CMS_NO_REGISTER_KEYWORD // C++17 has none
#include <lcms2.h>

#include <random>
#include <vector>

namespace {

using namespace ColorSystem;

constexpr PixelFormat kRgb8 = {ColorModel::Rgb, SampleType::UInt8};
constexpr PixelFormat kCmyk8 = {ColorModel::Cmyk, SampleType::UInt8};
constexpr const wchar_t *kRgb = L"sRGB_v4.icc";
constexpr const wchar_t *kPress = L"USWebCoatedSWOP.icc";

std::shared_ptr<ColorManagementSystem> Engine()
{
  return ColorManagementSystem::Get(ColorManagementModule::LCMS);
}

std::shared_ptr<ColorProfile> Installed(const wchar_t *name)
{
  return ColorProfileManager::GetInstance().GetColorProfile(name);
}

std::shared_ptr<ColorTransform> ToPress()
{
  TransformOptions options;
  options.source = kRgb8;
  options.destination = kCmyk8;
  return Engine()->CreateTransform(*Installed(kRgb), *Installed(kPress), options);
}

/// The same transform without the house around it.
struct Bare
{
  explicit Bare(cmsUInt32Number flags)
    : source(Open(kRgb)),
      destination(Open(kPress)),
      transform(cmsCreateTransform(source, TYPE_RGB_8, destination, TYPE_CMYK_8, INTENT_RELATIVE_COLORIMETRIC,
                                   cmsFLAGS_NOCACHE | flags))
  {}
  ~Bare()
  {
    cmsDeleteTransform(transform);
    cmsCloseProfile(destination);
    cmsCloseProfile(source);
  }
  Bare(const Bare &) = delete;
  Bare &operator=(const Bare &) = delete;

  static cmsHPROFILE Open(const wchar_t *name)
  {
    static const std::string kPaths[] = {ZelUtl::Utf8FromWide(Installed(kRgb)->GetPath()),
                                         ZelUtl::Utf8FromWide(Installed(kPress)->GetPath())};
    return cmsOpenProfileFromFile(kPaths[name == kPress].c_str(), "r");
  }

  cmsHPROFILE source;
  cmsHPROFILE destination;
  cmsHTRANSFORM transform;
};

/// Small ones are converted exactly, large ones by a table: both sides of the threshold.
struct Pixels
{
  explicit Pixels(std::int64_t width, std::int64_t height)
    : rgb(CreateColorData(kRgb8, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height))),
      cmyk(CreateColorData(kCmyk8, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)))
  {
    std::mt19937 random(1);
    for (std::uint32_t row = 0; row < rgb->GetHeight(); ++row)
      for (std::uint32_t i = 0; i < 3 * rgb->GetWidth(); ++i)
        rgb->GetRow(row)[i] = static_cast<std::uint8_t>(random());
  }

  std::unique_ptr<ColorData> rgb;
  std::unique_ptr<ColorData> cmyk;
};

void SetPixels(benchmark::State &state)
{
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}

void Convert_Ours(benchmark::State &state)
{
  const Pixels pixels(state.range(0), state.range(1));
  const auto transform = ToPress();
  for (auto _ : state)
    transform->Convert(*pixels.rgb, *pixels.cmyk);
  SetPixels(state);
}

void Convert_Bare(benchmark::State &state)
{
  const Pixels pixels(state.range(0), state.range(1));
  const bool exact = state.range(0) * state.range(1) < 65536;
  const Bare bare(exact ? cmsFLAGS_NOOPTIMIZE : 0);
  for (auto _ : state)
    cmsDoTransformLineStride(bare.transform, pixels.rgb->GetRow(0), pixels.cmyk->GetRow(0), pixels.rgb->GetWidth(),
                             pixels.rgb->GetHeight(), pixels.rgb->GetRowStride(), pixels.cmyk->GetRowStride(), 0, 0);
  SetPixels(state);
}

/// From how many pixels on a table pays: this, by what a pixel takes less with it.
void CreateTable_Bare(benchmark::State &state)
{
  for (auto _ : state)
    benchmark::DoNotOptimize(Bare(0).transform);
}

void CachedTransform(benchmark::State &state)
{
  const auto first = ToPress();
  const auto engine = Engine();
  const auto rgb = Installed(kRgb);
  const auto press = Installed(kPress);
  TransformOptions options;
  options.source = kRgb8;
  options.destination = kCmyk8;
  for (auto _ : state)
    benchmark::DoNotOptimize(engine->CreateTransform(*rgb, *press, options));
}

void FirstColour_Ours(benchmark::State &state)
{
  const auto engine = Engine();
  ColorManagementSystem::GetCurrent();
  const ColorSpace press(*Installed(kPress));
  const RgbColor color(0.2, 0.4, 0.6, ColorSpace(*Installed(kRgb)));
  for (auto _ : state) {
    engine->ClearTransformCache();
    benchmark::DoNotOptimize(color.ConvertToColorSpace(press, RenderingIntent::RelativeColorimetric));
  }
}

void FirstColour_Bare(benchmark::State &state)
{
  const std::uint8_t rgb[] = {51, 102, 153};
  std::uint8_t cmyk[4];
  for (auto _ : state) {
    const Bare bare(cmsFLAGS_NOOPTIMIZE);
    cmsDoTransform(bare.transform, rgb, cmyk, 1);
    benchmark::DoNotOptimize(cmyk);
  }
}

/// Nothing is known of any profile; what the process loads once stays loaded.
void FirstUse(benchmark::State &state)
{
  for (auto _ : state) {
    ColorProfileManager::Shutdown();
    Engine()->ClearTransformCache();
    const RgbColor color(0.2, 0.4, 0.6, ColorSpace(*Installed(kRgb)));
    benchmark::DoNotOptimize(
      color.ConvertToColorSpace(ColorSpace(*Installed(kPress)), RenderingIntent::RelativeColorimetric));
  }
}

const auto kSizes = [](benchmark::internal::Benchmark *row) {
  row->Args({256, 1})->Args({2048, 16})->Args({1024, 512});
};

BENCHMARK(Convert_Ours)->Apply(kSizes);
BENCHMARK(Convert_Bare)->Apply(kSizes);
BENCHMARK(CreateTable_Bare);
BENCHMARK(CachedTransform)->Threads(1)->Threads(4);
BENCHMARK(FirstColour_Ours);
BENCHMARK(FirstColour_Bare);
BENCHMARK(FirstUse);

} // namespace
