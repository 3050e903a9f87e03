#include "cli/report/analysis.h"

#include "cli/failure.h"
#include "cli/profile/profile_file.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/colorsystem/typed_colors.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/settings/color_settings.h"

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

using namespace ColorSystem;
namespace Model = ZelClr::ClrModel;

/// What pages and terminals show.
std::shared_ptr<ColorProfile> ScreenProfile()
{
  auto profile = ColorProfileManager::GetInstance().GetColorProfile(L"sRGB-Placeholder!");
  if (profile == nullptr)
    throw Failure(ExitCode::Missing, "the library's own sRGB profile is not installed");
  return profile;
}

ColorContext PressContext(const Press &press)
{
  ColorContext context(*press.profile, press.intent);
  context.SetCmykColorProfile(press.profile);
  return context;
}

ProofColorSettings ProofOf(const Press &press)
{
  ProofColorSettings proof;
  proof.SetRenderingIntent(press.intent);
  proof.SetEnvironmentToSimulate(press.profile);
  return proof;
}

/// All that is made once for a report.
class Printer
{
public:
  Printer(const Press &press, const ColorContext &settings)
    : press_(press),
      settings_(settings),
      screen_(ScreenProfile()),
      wheel_(settings, settings),
      separation_(settings, PressContext(press)),
      proof_(settings, ProofOf(press), ColorContext(*screen_, RenderingIntent::RelativeColorimetric))
  {
    spotModel_ = ColorSettings::GetApplicationColorSettings().GetSpotAltColorModel();
    separation_.SetPreservePureBlack(press.preserveBlack);
    separation_.SetMapGrayscalToBlackChannel(press.grayIsBlackInk);
  }

  ReportRow RowOf(const ZelClr::Swatch &source) const
  {
    ReportRow row;
    row.source = source;
    const CLR_COLORSPEC &colour = source.record;
    CLR_COLORSPEC process;
    if (colour.IsSpot() ? !SimpleColorConverter::NormalizeSpotColorSpecToProcess(colour, spotModel_, process)
                        : !SimpleColorConverter::NormalizeColorSpec(colour, process))
    {
      row.verdict = colour.IsSpot() || colour.GetType() == Model::DeviceN ? Verdict::OwnInk : Verdict::Unknown;
      return row;
    }
    // The canonical model of percentages is bytes, which are near them only.
    const bool isPercent = colour.GetType() == Model::Cmyk100 || colour.GetType() == Model::Cmyk;
    const auto managed = Color::ColorSpecToColor(isPercent ? colour : process, settings_);
    CLR_COLORSPEC inks;
    if (managed == nullptr || !separation_.Convert(process, inks, Model::Cmyk100, 0))
      throw NoWayTo(press_.name);
    const Lab wanted = LabOf(*managed);
    row.screen = OnScreen(*managed, RenderingIntent::RelativeColorimetric);
    row.wheel = OnWheel(process, row.screen);
    row.build = PrintOf({inks.GetBlue(), inks.GetI255(), inks.GetRed(), inks.GetBlack()}, *managed, wanted);
    row.tooMuchInk = row.build.Total() > press_.inkLimit;
    row.verdict = proof_.IsColorInGamut(process) ? Verdict::Prints : Verdict::Beyond;
    if (row.verdict == Verdict::Beyond || row.tooMuchInk)
      row.nearest = PrintOf(NearestPrintable(press_, wanted, row.build.inks).inks, *managed, wanted);
    return row;
  }

private:
  static Failure NoWayTo(const std::string &name)
  {
    return Failure(ExitCode::Missing, "there is no way to " + name + " with this intent");
  }

  Lab LabOf(const Color &colour) const
  {
    Channels channels;
    for (unsigned i = 0; i < colour.GetChannelCount(); ++i)
      channels.push_back(static_cast<float>(colour[i]));
    const auto labs = LabFromDevice(*colour.GetColorProfile(), channels, press_.Look());
    if (!labs)
      throw NoWayTo("Lab");
    return labs->front();
  }

  CLR_COLORSPEC OnScreen(const Color &colour, RenderingIntent intent) const
  {
    const auto shown = colour.ConvertToColorProfile(*screen_, intent);
    if (shown == nullptr)
      throw NoWayTo("the screen");
    const auto byte = [&](unsigned i) {
      return static_cast<std::uint8_t>(std::lround(std::clamp<double>((*shown)[i], 0.0, 1.0) * 255.0));
    };
    return CLR_COLORSPEC::MakeRGB(byte(0), byte(1), byte(2));
  }

  WheelPlace OnWheel(const CLR_COLORSPEC &colour, const CLR_COLORSPEC &screen) const
  {
    const auto position = Harmony::HSB::Of(colour, wheel_);
    if (!position)
      throw NoWayTo("the wheel");
    const COLORREF rgb = screen.GetCOLORREF();
    const auto byte = [rgb](int shift) { return static_cast<int>(rgb >> shift & 255); };
    const Lab lab = ZelClr::Formulas::CieLabFromRgb(byte(0), byte(8), byte(16));
    return {*position, std::hypot(lab.a, lab.b)};
  }

  Print PrintOf(const Inks &inks, const Color &colour, const Lab &wanted) const
  {
    const CmykColor printed(inks[0] / 100.0, inks[1] / 100.0, inks[2] / 100.0, inks[3] / 100.0,
                            ColorSpace(ColorModel::Cmyk, press_.profile));
    Print print;
    print.inks = inks;
    print.paper = OnScreen(printed, press_.Look());
    print.difference = std::round(ZelClr::Formulas::Ciede2000(wanted, LabOf(printed)) * 10.0) / 10.0;
    print.libraryDistance = std::round(colour.GetDistance(printed) * 1000.0) / 1000.0;
    return print;
  }

  const Press &press_;
  const ColorContext &settings_;
  std::shared_ptr<ColorProfile> screen_;
  ColorConverter wheel_;
  ColorConverter separation_;
  ProofColorConverter proof_;
  ColorModel spotModel_ = ColorModel::Lab;
};

std::string NameOfProfile(const std::shared_ptr<ColorProfile> &profile)
{
  return profile == nullptr ? std::string() : OneLine(profile->GetDisplayName());
}

} // namespace

VerdictWords WordsOf(Verdict verdict)
{
  switch (verdict) {
  case Verdict::Prints:
    return {"prints", "in gamut"};
  case Verdict::Beyond:
    return {"beyond", "out of gamut"};
  case Verdict::OwnInk:
    return {"own-ink", "its own ink"};
  case Verdict::Unknown:
    break;
  }
  return {"unknown", "needs its palette"};
}

std::size_t Report::Count(Verdict verdict) const
{
  return static_cast<std::size_t>(
    std::count_if(rows.begin(), rows.end(), [&](const ReportRow &row) { return row.verdict == verdict; }));
}

std::size_t Report::CountTooMuchInk() const
{
  return static_cast<std::size_t>(
    std::count_if(rows.begin(), rows.end(), [](const ReportRow &row) { return row.tooMuchInk; }));
}

std::size_t Report::CountNearNeutral() const
{
  return static_cast<std::size_t>(std::count_if(
    rows.begin(), rows.end(), [](const ReportRow &row) { return row.HasBuild() && row.wheel.IsNearNeutral(); }));
}

std::size_t Report::CountWillNotPrint() const
{
  return static_cast<std::size_t>(
    std::count_if(rows.begin(), rows.end(), [](const ReportRow &row) { return row.nearest.has_value(); }));
}

bool Report::HasFindings() const
{
  return CountWillNotPrint() + Count(Verdict::Unknown) > 0;
}

Report Analyse(const ZelClr::SwatchBook &palette, const std::string &fileName, const PressOptions &options)
{
  const ColorContext settings = ColorContext::GetApplicationDefaultColorContext();
  Report report;
  report.name = palette.name.empty() ? fileName : palette.name;
  report.press = PressFrom(options, settings);
  report.rgbProfile = NameOfProfile(settings.GetRgbColorProfile());
  report.cmykProfile = NameOfProfile(settings.GetCmykColorProfile());
  const Printer printer(report.press, settings);
  report.rows.reserve(palette.swatches.size());
  for (const ZelClr::Swatch &colour : palette.swatches)
    report.rows.push_back(printer.RowOf(colour));
  std::vector<WeightedHue> hues;
  for (const ReportRow &row : report.rows) {
    if (row.HasBuild() && !row.wheel.IsNearNeutral())
      hues.push_back({row.wheel.position.hue, row.wheel.chroma});
  }
  report.harmonies = RulesNearestTo(hues);
  return report;
}

} // namespace cli
