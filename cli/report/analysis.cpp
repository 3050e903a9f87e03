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
  if (!WClrConvert::ConvertToBasicType(&row.screen, Model::Rgb255, &source.colour) ||
      !WClrConvert::ConvertToBasicType(&build, Model::Cmyk100, &source.colour))
    return row;

  row.inks = {build.GetBlue(), build.GetI255(), build.GetRed(), build.GetBlack()};
  row.inkTotal = std::accumulate(row.inks.begin(), row.inks.end(), 0);
  row.tooMuchInk = row.inkTotal > inkLimit;

  const Formulas::Xyz printed =
    Formulas::XyzFromCoatedInks(row.inks[0] / 100.0, row.inks[1] / 100.0, row.inks[2] / 100.0, row.inks[3] / 100.0);
  const Formulas::RealRgb paper = Formulas::SrgbFromXyz(printed);
  const auto byte = [](double component) { return static_cast<std::uint8_t>(std::lround(component * 255.0)); };
  row.paper = CLR_COLORSPEC::MakeRGB(byte(paper.red), byte(paper.green), byte(paper.blue));
  row.difference =
    Formulas::Ciede2000(Formulas::CieLabFromRgb(row.screen.GetRed(), row.screen.GetI255(), row.screen.GetBlue()),
                        Formulas::CieLabFromXyz(printed));
  row.verdict = row.difference <= kLooksTheSame   ? Verdict::AsShown
                : row.difference <= kLooksRelated ? Verdict::Shifts
                                                  : Verdict::Differs;
  return row;
}

} // namespace

VerdictWords WordsOf(Verdict verdict)
{
  switch (verdict) {
  case Verdict::AsShown:
    return {"as-shown", "prints as shown"};
  case Verdict::Shifts:
    return {"shifts", "shifts a little"};
  case Verdict::Differs:
    return {"differs", "prints differently"};
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
  return Count(Verdict::Differs) + Count(Verdict::Unknown) + CountTooMuchInk() > 0;
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
