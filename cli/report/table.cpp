// The report as a table on the terminal, and as JSON.

#include "cli/report/forms.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

constexpr std::size_t kNameColumns = 24;
constexpr std::size_t kInkColumns = 16;

std::string RightAligned(const std::string &text, std::size_t columns)
{
  return text.size() < columns ? std::string(columns - text.size(), ' ') + text : text;
}

std::string InkText(const ReportRow &row)
{
  std::string text;
  for (const int ink : row.inks)
    text += RightAligned(std::to_string(ink), 3) + ' ';
  return text;
}

std::string NameOf(const ReportRow &row)
{
  return Harmless(row.source.name.empty() ? ZelClr::TextFromColorSpec(row.source.colour) : row.source.name);
}

std::string VerdictText(const ReportRow &row)
{
  std::string text = WordsOf(row.verdict).label;
  if (row.tooMuchInk)
    text += ", too much ink";
  return text;
}

double Rounded(double value, double steps)
{
  return std::round(value * steps) / steps;
}

} // namespace

std::string SummaryOf(const Report &report)
{
  const auto counted = [](std::size_t count, const char *what) { return std::to_string(count) + ' ' + what; };
  std::string parts;
  for (const Verdict verdict : kVerdicts) {
    if (const std::size_t count = report.Count(verdict))
      parts += (parts.empty() ? "" : ", ") + counted(count, WordsOf(verdict).label);
  }
  if (const std::size_t count = report.CountTooMuchInk())
    parts += ", " + counted(count, "with too much ink");
  return counted(report.rows.size(), report.rows.size() == 1 ? "colour: " : "colours: ") + parts;
}

std::string TableOf(const Report &report, const Output &output)
{
  const bool swatches = output.DrawsColour();
  std::string text = output.Bold(Harmless(report.name)) + "\n\n";
  std::string head = swatches ? "screen paper " : "";
  head += Fitted("colour", kNameColumns) + " screen    C   M   Y   K    ink  \u0394E2000  on the press";
  text += output.Faint(head) + '\n';
  for (const ReportRow &row : report.rows) {
    const bool known = row.HasBuild();
    if (swatches)
      text += known ? output.Swatch(row.screen, 5) + output.Swatch(row.paper, 5) + ' ' : std::string(13, ' ');
    text += Fitted(NameOf(row), kNameColumns) + ' ';
    if (known) {
      text += HexFromColorSpec(row.screen) + ' ' + InkText(row) + RightAligned(std::to_string(row.inkTotal) + " %", 7) +
              RightAligned(OneDecimal(row.difference), 9) + "  ";
    } else {
      text += std::string(8 + kInkColumns + 7 + 9 + 2, ' ');
    }
    text += VerdictText(row) + '\n';
  }
  text += output.Faint(
            "\nCMYK builds are by formula, without a press profile; \u0394E2000 is how far the build prints from the\n"
            "colour. What coated offset reaches is an estimate. Ink limit " +
            std::to_string(report.inkLimit) + " %.") +
          '\n';
  return text + output.Bold(SummaryOf(report)) + '\n';
}

Json JsonOf(const Report &report)
{
  Json summary = {{"colours", report.rows.size()}};
  for (const Verdict verdict : kVerdicts)
    summary[WordsOf(verdict).key] = report.Count(verdict);
  summary["tooMuchInk"] = report.CountTooMuchInk();

  Json rows = Json::array();
  for (const ReportRow &row : report.rows) {
    Json entry = {{"name", row.source.name},
                  {"line", row.source.line},
                  {"source", ZelClr::TextFromColorSpec(row.source.colour)},
                  {"verdict", WordsOf(row.verdict).key}};
    if (row.HasBuild()) {
      entry["reachDeltaE2000"] = Rounded(row.reach, 100);
      entry["screen"] = HexFromColorSpec(row.screen);
      entry["cmyk"] = row.inks;
      entry["ink"] = row.inkTotal;
      entry["tooMuchInk"] = row.tooMuchInk;
      entry["paper"] = HexFromColorSpec(row.paper);
      entry["buildDeltaE2000"] = Rounded(row.difference, 100);
    }
    rows.push_back(std::move(entry));
  }
  return {{"palette", report.name},
          {"build", "formula"},
          {"paperEstimate", "coated offset, FOGRA39L solids, Yule-Nielsen-Neugebauer"},
          {"inkLimit", report.inkLimit},
          {"summary", summary},
          {"colours", rows}};
}

} // namespace cli
