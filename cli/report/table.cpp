// The report as a table on the terminal.

#include "cli/profile/words.h"
#include "cli/report/forms.h"
#include "zelclr/colour/colour_text.h"

namespace cli {

namespace {

constexpr std::size_t kNameColumns = 22;

std::string RightAligned(const std::string &text, std::size_t columns)
{
  return text.size() < columns ? std::string(columns - text.size(), ' ') + text : text;
}

std::string NameOf(const ReportRow &row)
{
  return Harmless(row.source.name.empty() ? ZelClr::TextFromColorSpec(row.source.record) : row.source.name);
}

std::string VerdictText(const ReportRow &row)
{
  std::string text = WordsOf(row.verdict).label;
  if (row.tooMuchInk)
    text += ", too much ink";
  return text;
}

/// Both swatches, the name, both values, inks and differences.
std::string LineOf(const std::string &name, const CLR_COLORSPEC &screen, const Print &print, const Output &output)
{
  std::string line;
  if (output.DrawsColour())
    line += output.Swatch(screen, 5) + output.Swatch(print.paper, 5) + ' ';
  line += Fitted(name, kNameColumns) + ' ' + HexFromColorSpec(screen) + ' ' + HexFromColorSpec(print.paper) + ' ';
  for (const int ink : print.inks)
    line += RightAligned(std::to_string(ink), 3) + ' ';
  return line + RightAligned(std::to_string(print.Total()) + " %", 6) + RightAligned(OneDecimal(print.difference), 9) +
         RightAligned(DistanceText(print), 10);
}

} // namespace

std::string TableOf(const Report &report, const Output &output)
{
  const Press &press = report.press;
  std::string text = output.Bold(Harmless(report.name)) + '\n' + output.Bold(HeadlineOf(report) + '.') + ' ' +
                     SummaryOf(report) + ".\n\n";
  text += "press      " + press.name + ", " + WordsOf(press.intent).name + ": " + WhiteWords(press) + '\n';
  text += "ink limit  " + InkLimitWords(press) + '\n';
  text += "black      " + BlackWords(press) + '\n';
  text += "read by    " + ReadByWords(report) + '\n';
  text += "harmony    " + HarmonyWords(report) + "\n\n";

  const std::string margin = output.DrawsColour() ? std::string(13, ' ') : std::string();
  text += output.Faint((margin.empty() ? "" : "screen paper ") + Fitted("colour", kNameColumns) +
                       " screen  paper     C   M   Y   K    ink  \u0394E2000  distance  on the press") +
          '\n';
  for (const ReportRow &row : report.rows) {
    if (!row.HasBuild()) {
      text += margin + Fitted(NameOf(row), kNameColumns) + std::string(59, ' ') + VerdictText(row) + '\n';
      continue;
    }
    text += LineOf(NameOf(row), row.screen, row.build, output) + "  " + VerdictText(row) + '\n';
    if (row.nearest)
      text += LineOf("  nearest that prints", row.screen, *row.nearest, output) + '\n';
  }
  return text +
         output.Faint("\n\u0394E2000 is the textbook\u2019s between colour and print; distance is the library\u2019s "
                      "own, with the paper\u2019s white.") +
         '\n';
}

} // namespace cli
