// The report as one HTML page.

#include "cli/report/forms.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/platform/text.h"

#include <array>

namespace cli {

namespace {

constexpr std::string_view kStyle = R"(
:root { --ink: #1d1d1f; --soft: #6b6b70; --line: #d9d9dc; --ground: #f1f1f2; --card: #fff;
  --prints: #2e6b3e; --edge: #8a5a00; --beyond: #a3241c; --own-ink: #3f5f8a; --unknown: #55555a; }
* { box-sizing: border-box; }
body { margin: 0; background: var(--ground); color: var(--ink);
  font: 16px/1.45 system-ui, -apple-system, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; }
main { max-width: 68rem; margin: 0 auto; padding: 2.5rem 1.25rem 3rem; }
h1 { font-size: 2rem; line-height: 1.15; letter-spacing: -.015em; margin: 0; overflow-wrap: anywhere; }
.question { color: var(--soft); margin: .25rem 0 1.75rem; font-size: 1.1rem; }
.summary { display: flex; flex-wrap: wrap; gap: .75rem 2.25rem; margin: 0 0 .9rem; padding: 0; list-style: none; }
.summary b { display: block; font-size: 2.25rem; line-height: 1; font-weight: 650; font-variant-numeric: tabular-nums; }
.summary span { color: var(--soft); font-size: .92rem; }
.bar { display: block; width: 100%; height: .6rem; border-radius: .3rem; margin-bottom: 1.75rem; }
.note { background: var(--card); border-left: 4px solid #8f8f94; padding: .8rem 1rem; margin: 0 0 1.75rem;
  max-width: 52rem; font-size: .92rem; }
table { width: 100%; border-collapse: collapse; background: var(--card); border: 1px solid var(--line); }
th { text-align: left; font-weight: 550; font-size: .8rem; color: var(--soft); padding: .6rem .75rem; white-space: nowrap; }
td { padding: .55rem .75rem; border-top: 1px solid var(--line); vertical-align: middle; }
.swatch { display: block; width: 8.5rem; height: 3.1rem; }
.name { font-weight: 600; overflow-wrap: anywhere; }
.value { color: var(--soft); font-size: .84rem; font-variant-numeric: tabular-nums; overflow-wrap: anywhere; }
.inks { display: block; width: 8rem; height: 2.5rem; }
.inks text { font: 600 8px system-ui, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; fill: var(--ink); text-anchor: middle; }
.number { font-variant-numeric: tabular-nums; white-space: nowrap; text-align: right; }
th.number { text-align: right; }
.verdict { font-weight: 600; white-space: nowrap; }
.prints { color: var(--prints); } .edge { color: var(--edge); } .beyond { color: var(--beyond); }
.own-ink { color: var(--own-ink); } .unknown { color: var(--unknown); }
.label { display: none; }
footer { color: var(--soft); font-size: .85rem; margin-top: 1.5rem; }
@media (max-width: 46rem) {
  main { padding: 1.5rem .9rem 2rem; }
  h1 { font-size: 1.6rem; }
  table, tbody, tr, td { display: block; border: 0; }
  table { background: none; } thead { display: none; }
  tr { background: var(--card); border: 1px solid var(--line); padding: .8rem; margin-bottom: .75rem;
    display: grid; grid-template-columns: 1fr auto auto; gap: .4rem 1rem; align-items: center; }
  td { padding: 0; } td.swatches { grid-column: 1 / -1; } td.swatches .swatch { width: 100%; height: 4.5rem; }
  td.who, td.says { grid-column: 1 / -1; }
  .label { display: inline; color: var(--soft); font-size: .8rem; }
  td.number { text-align: left; }
}
@media print {
  @page { margin: 14mm; }
  body { background: none; font-size: 10pt; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  main { max-width: none; padding: 0; }
  .note { border: 1px solid var(--line); }
  tr { break-inside: avoid; } thead { display: table-header-group; }
  .swatch { width: 7rem; height: 2.4rem; } td { padding: .3rem .5rem; }
}
)";

std::string SummaryHtml(const Report &report)
{
  std::string html = "<ul class=\"summary\">\n";
  std::string bar;
  double from = 0;
  for (const Verdict verdict : kVerdicts) {
    const std::size_t count = report.Count(verdict);
    const auto [key, label] = WordsOf(verdict);
    if (count == 0 && verdict >= Verdict::OwnInk)
      continue;
    html +=
      "<li><b class=\"" + std::string(key) + "\">" + std::to_string(count) + "</b><span>" + label + "</span></li>\n";
    const double width = 100.0 * static_cast<double>(count) / static_cast<double>(report.rows.size());
    bar += "<rect x=\"" + ZelUtl::TextFromNumber(from, 3) + "\" width=\"" + ZelUtl::TextFromNumber(width, 3) +
           "\" height=\"1\" fill=\"var(--" + key + ")\"/>";
    from += width;
  }
  if (const std::size_t count = report.CountTooMuchInk())
    html += "<li><b class=\"beyond\">" + std::to_string(count) + "</b><span>too much ink</span></li>\n";
  return html +
         "</ul>\n<svg class=\"bar\" viewBox=\"0 0 100 1\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"" +
         Escaped(SummaryOf(report)) + "\">" + bar + "</svg>\n";
}

/// Screen on the left, paper on the right, meeting without a gap so that the eye can compare.
std::string SwatchSvg(const ReportRow &row)
{
  const std::string screen = HexFromColorSpec(row.screen);
  const std::string paper = HexFromColorSpec(row.paper);
  return "<svg class=\"swatch\" viewBox=\"0 0 100 40\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"screen " +
         screen + ", paper " + paper + "\"><rect width=\"50\" height=\"40\" fill=\"" + screen +
         "\"/><rect x=\"50\" width=\"50\" height=\"40\" fill=\"" + paper +
         "\"/><rect x=\".25\" y=\".25\" width=\"99.5\" height=\"39.5\" fill=\"none\" stroke=\"#000\" "
         "stroke-opacity=\".15\" stroke-width=\".5\"/></svg>";
}

std::string InkSvg(const ReportRow &row)
{
  constexpr std::array<const char *, 4> kInkColours = {"#009ee3", "#e6007e", "#ffde00", "#1d1d1b"};
  std::string svg = "<svg class=\"inks\" viewBox=\"0 0 96 30\" role=\"img\" aria-label=\"";
  for (std::size_t i = 0; i < row.inks.size(); ++i)
    svg += std::string(i ? " " : "") + "CMYK"[i] + std::to_string(row.inks[i]);
  svg += "\">";
  for (std::size_t i = 0; i < row.inks.size(); ++i) {
    const std::string x = std::to_string(24 * i + 2);
    const double height = 18.0 * row.inks[i] / 100.0;
    svg += "<rect x=\"" + x + "\" width=\"20\" height=\"18\" fill=\"#ececee\"/><rect x=\"" + x + "\" y=\"" +
           ZelUtl::TextFromNumber(18.0 - height, 2) + "\" width=\"20\" height=\"" + ZelUtl::TextFromNumber(height, 2) +
           "\" fill=\"" + kInkColours[i] + "\"/><text x=\"" + std::to_string(24 * i + 12) + "\" y=\"28\">" +
           std::to_string(row.inks[i]) + "</text>";
  }
  return svg + "</svg>";
}

std::string RowHtml(const ReportRow &row)
{
  const std::string value = ZelClr::TextFromColorSpec(row.source.colour);
  const auto [key, label] = WordsOf(row.verdict);
  const bool known = row.HasBuild();
  std::string html = "<tr><td class=\"swatches\">" + (known ? SwatchSvg(row) : std::string()) +
                     "</td><td class=\"who\"><div class=\"name\" dir=\"auto\">" +
                     Escaped(row.source.name.empty() ? value : row.source.name) + "</div><div class=\"value\">" +
                     Escaped(value);
  if (known && value != HexFromColorSpec(row.screen))
    html += " &middot; " + HexFromColorSpec(row.screen);
  html += "</div></td><td>" + (known ? InkSvg(row) : std::string()) + "</td><td class=\"number\">";
  if (known) {
    html += "<span class=\"label\">ink </span>" + std::to_string(row.inkTotal) +
            " %</td><td class=\"number\"><span class=\"label\">&Delta;E2000 </span>" + OneDecimal(row.difference);
  } else {
    html += "</td><td>";
  }
  html += "</td><td class=\"says\"><span class=\"verdict " + std::string(key) + "\">" + label + "</span>";
  if (row.tooMuchInk)
    html += "<div class=\"verdict beyond\">too much ink</div>";
  return html + "</td></tr>\n";
}

} // namespace

std::string PageOf(const Report &report)
{
  const std::string name = Escaped(report.name);
  std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                     "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
                     name + " \u2013 will these colours print?</title>\n<style>";
  html += kStyle;
  html += "</style>\n</head>\n<body>\n<main>\n<h1 dir=\"auto\">" + name +
          "</h1>\n<p class=\"question\">Will these colours print, and what will they become?</p>\n" +
          SummaryHtml(report);
  html +=
    "<p class=\"note\"><b>The CMYK builds on this page are the formula\u2019s</b>, with all gray in the black ink, "
    "and not made for a press. The right half of each swatch is what such a build looks like on coated paper in "
    "offset printing, and &Delta;E2000 how far that is from the colour; a build made through the profile of your "
    "press comes closer wherever the press reaches the colour. Whether it does, the last column says.</p>\n";
  html +=
    "<table>\n<thead><tr><th>Screen | paper</th><th>Colour</th><th>C&ensp;M&ensp;Y&ensp;K, %</th>"
    "<th class=\"number\">Ink</th><th class=\"number\">&Delta;E2000</th><th>On the press</th></tr></thead>\n<tbody>\n";
  for (const ReportRow &row : report.rows)
    html += RowHtml(row);
  html +=
    "</tbody>\n</table>\n<footer>The press is a model of coated offset (FOGRA39L solids), off by a &Delta;E2000 of 1.6 "
    "in "
    "the mean and 4.6 at most: a colour within " +
    ZelUtl::TextFromNumber(kWithinGamut) + " of what it reaches can be printed, up to " +
    ZelUtl::TextFromNumber(kAtItsEdge) + " it is at the edge. Ink limit " + std::to_string(report.inkLimit) +
    " %; a formula build of a screen colour never has more than 300 %. Screen colours are sRGB; "
    "white is compared with the paper, black with the blackest that the press prints.</footer>\n</main>\n"
    "</body>\n</html>\n";
  return html;
}

} // namespace cli
