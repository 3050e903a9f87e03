#include "cli/gradient/strips.h"

#include "cli/failure.h"
#include "cli/profile/profile_colours.h"
#include "cli/profile/profile_file.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>

namespace cli {

namespace {

using namespace ColorSystem;
namespace ClrModel = ZelClr::ClrModel;

/// A share of the way between the first stop and the last, in percent of the fill.
double PercentOf(const std::vector<double> &stops, double share)
{
  return stops.front() + share * (stops.back() - stops.front());
}

std::vector<Shade> Sampled(const CLR_FOUNTCOLOR_ARRAY &fountain, const std::vector<double> &stops, int count,
                           ColorContext &context, const GradientPress *press)
{
  const auto size = static_cast<std::size_t>(count);
  const auto samples = CMGMakeInterColorSpecs(fountain, count, context, true);
  if (samples == nullptr)
    throw Failure(ExitCode::Missing, "these colours cannot be blended: one of them has no known appearance");
  const std::span<const CLR_COLORSPEC> colours(samples.get(), size);
  std::vector<CLR_COLORSPEC> screen(size);
  const bool isShown = ColorConverter(context, context).ConvertList(colours, screen, ClrModel::Rgb255);

  std::vector<Shade> shades;
  for (std::size_t i = 0; i < size; ++i) {
    Shade shade = {PercentOf(stops, count == 1 ? 0.5 : static_cast<double>(i) / (count - 1)), colours[i], {}};
    shade.screen = isShown ? screen[i].GetCOLORREF() : WClrConvert::ConvertColorSpecToCOLORREF(colours[i]);
    shade.holds = press == nullptr || press->Holds(colours[i], context);
    shades.push_back(std::move(shade));
  }
  return shades;
}

} // namespace

bool GradientPress::Holds(const CLR_COLORSPEC &colour, const ColorContext &context) const
{
  CLR_COLORSPEC normalized;
  ColorModel model{};
  double fullScale = 0.0;
  const bool known = colour.IsSpot()
                       ? SimpleColorConverter::NormalizeSpotColorSpecToProcess(colour, ColorModel::Cmyk, normalized)
                       : SimpleColorConverter::NormalizeColorSpec(colour, normalized);
  if (!known || !SimpleColorConverter::ColorTypeToColorModel(normalized.GetType(), model, fullScale))
    return true;
  const auto source = context.GetColorProfile(model);
  return source == nullptr || *source == *profile || GamutCheck(source, profile).Holds(normalized);
}

GradientPress GradientPressFrom(const std::string &nameOrPath)
{
  if (EngineForProfiles() == nullptr)
    throw Failure(ExitCode::Missing, "a gamut needs an engine that reads profiles: the settings in force convert by "
                                     "formula, or Little CMS 2 is not installed");
  const ProfileFile file = OpenProfile(nameOrPath);
  if (file.profile == nullptr || file.profile->GetDeviceClass() == DeviceClass::ColorSpace)
    throw Failure(ExitCode::Usage, file.name + " is no profile of a device");
  return {file.profile, file.name};
}

bool Strip::HoldsAll() const
{
  return std::all_of(drawn.begin(), drawn.end(), [](const Shade &shade) { return shade.holds; });
}

Strip StripOf(const CLR_FOUNTCOLOR_ARRAY &fountain, const std::string &blend, int listed, ColorContext &context,
              const GradientPress *press)
{
  Strip strip = {blend, CMGGetBlendColorSpace(fountain, true), {}, {}, {}, {}};
  for (const CLR_FOUNTCOLOR &stop : fountain)
    strip.stops.push_back(static_cast<double>(stop.position) / kPositionsPerPercent);
  strip.drawn = Sampled(fountain, strip.stops, kDrawn, context, press);
  strip.listed = Sampled(fountain, strip.stops, listed, context, press);
  for (std::size_t i = 1; i < strip.drawn.size(); ++i) {
    if (strip.drawn[i].holds != strip.drawn[i - 1].holds)
      strip.edges.push_back((strip.drawn[i - 1].percent + strip.drawn[i].percent) / 2.0);
  }
  return strip;
}

} // namespace cli
