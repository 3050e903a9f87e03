// What a drag over the wheel costs: one step of a harmony of 20 colours, conversions included.

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/harmony/color_style_sheet.h"
#include "zelclr/harmony/harmony_drag.h"

#include <benchmark/benchmark.h>

namespace {

using namespace ColorSystem;
using ZelClr::Harmony;
namespace ClrModel = ZelClr::ClrModel;

constexpr int kColours = 20;

struct Document : ZelClr::IColorContextProvider
{
  ColorContext GetColorContext() const override
  {
    auto &manager = ColorProfileManager::GetInstance();
    return {manager.GetColorProfile(L"sRGB_v4.icc"), manager.GetColorProfile(L"USWebCoatedSWOP.icc"),
            manager.GetColorProfile(L"Gray Gamma 22.icc"), ColorModel::Cmyk, RenderingIntent::RelativeColorimetric};
  }
};

struct Sheet
{
  explicit Sheet(const CLR_COLORSPEC &base) : styles(&palette)
  {
    styles.SetColorContextProvider(&document);
    styles.AddColorStyle(L"Base", base);
    styles.GenerateHarmony(Harmony::RuleType::Tetrad, L"Base", kColours);
  }
  Document document;
  WClrPalette palette;
  ZelClr::ColorStyleSheet styles;
};

void DragStep(benchmark::State &state, const CLR_COLORSPEC &base)
{
  Sheet sheet(base);
  ZelClr::HarmonyDrag drag(sheet.styles, L"Base");
  Harmony::HSB place = drag.GetPositions().front();
  for (auto _ : state) {
    ++place.hue;
    drag.MoveTo(place);
  }
}

/// The rule alone.
void RuleStep(benchmark::State &state)
{
  const auto rule = Harmony::CreateHarmonyRule(Harmony::RuleType::Tetrad);
  const auto start = Harmony::GenerateHarmonyRuleColors(Harmony::RuleType::Tetrad, {10, 200, 200}, kColours);
  Harmony::HSB place = start.front();
  for (auto _ : state) {
    ++place.hue;
    benchmark::DoNotOptimize(rule->Drag(start, 0, place));
  }
}

/// A change that the palette keeps.
void ChangeBase(benchmark::State &state, const CLR_COLORSPEC &base)
{
  Sheet sheet(base);
  std::int32_t hue = 0;
  for (auto _ : state)
    sheet.styles.ChangeColorStyle(L"Base", Harmony::HSB(++hue, 200, 200).GetColorSpec(base.GetType()));
}

BENCHMARK(RuleStep);
BENCHMARK_CAPTURE(DragStep, rgb, CLR_COLORSPEC::MakeRGB(200, 60, 20));
BENCHMARK_CAPTURE(DragStep, inks, CLR_COLORSPEC::MakeCMYK255(0, 160, 200, 20));
BENCHMARK_CAPTURE(ChangeBase, inks, CLR_COLORSPEC::MakeCMYK255(0, 160, 200, 20))->Unit(benchmark::kMicrosecond);

} // namespace
