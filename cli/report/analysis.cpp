#include "cli/report/analysis.h"

#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cli {

namespace Model = ZelClr::ClrModel;
namespace Formulas = ZelClr::Formulas;

namespace {

ReportRow Analysed(const ZelClr::NamedColour &source, int inkLimit)
{
  ReportRow row;
  row.source = source;
  CLR_COLORSPEC build;
  const auto lab = WClrConvert::GetLab(source.colour);
  if (!lab || !WClrConvert::ConvertToBasicType(&row.screen, Model::Rgb255, &source.colour) ||
      !WClrConvert::ConvertToBasicType(&build, Model::Cmyk100, &source.colour))
  {
    row.verdict = source.colour.IsSpot() ? Verdict::OwnInk : Verdict::Unknown;
    return row;
  }
  row.inks = {build.GetBlue(), build.GetI255(), build.GetRed(), build.GetBlack()};
  row.inkTotal = std::accumulate(row.inks.begin(), row.inks.end(), 0);
  row.tooMuchInk = row.inkTotal > inkLimit;

  const Formulas::Xyz printed =
    Formulas::XyzFromCoatedInks(row.inks[0] / 100.0, row.inks[1] / 100.0, row.inks[2] / 100.0, row.inks[3] / 100.0);
  const Formulas::RealRgb paper = Formulas::SrgbFromXyz(printed);
  const auto byte = [](double component) { return static_cast<std::uint8_t>(std::lround(component * 255.0)); };
  row.paper = CLR_COLORSPEC::MakeRGB(byte(paper.red), byte(paper.green), byte(paper.blue));
  const Formulas::Lab wanted = Formulas::LabWithCoatedBlack(*lab);
  row.difference = Formulas::Ciede2000(wanted, Formulas::CieLabFromXyz(printed));

  const bool isBuild = source.colour.IsCMYK() || source.colour.GetType() == Model::Registration;
  if (isBuild) {
    row.screen = row.paper; // it is what it prints
    row.difference = 0;
  }
  row.reach = std::min(row.difference, Formulas::DifferenceToCoatedGamut(wanted));
  row.verdict = row.reach <= kWithinGamut ? Verdict::Prints : row.reach <= kAtItsEdge ? Verdict::Edge : Verdict::Beyond;
  return row;
}

} // namespace

VerdictWords WordsOf(Verdict verdict)
{
  switch (verdict) {
  case Verdict::Prints:
    return {"prints", "can be printed"};
  case Verdict::Edge:
    return {"edge", "at the edge"};
  case Verdict::Beyond:
    return {"beyond", "beyond the press"};
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

bool Report::HasFindings() const
{
  return Count(Verdict::Beyond) + Count(Verdict::Unknown) + CountTooMuchInk() > 0;
}

Report Analyse(const ZelClr::ReadPalette &palette, const std::string &fileName, int inkLimit)
{
  Report report;
  report.name = palette.name.empty() ? fileName : palette.name;
  report.inkLimit = inkLimit;
  report.rows.reserve(palette.colours.size());
  for (const ZelClr::NamedColour &colour : palette.colours)
    report.rows.push_back(Analysed(colour, inkLimit));
  return report;
}

} // namespace cli
