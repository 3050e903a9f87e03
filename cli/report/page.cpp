// The report as one HTML page.

#include "cli/harmony/wheel.h"
#include "cli/profile/words.h"
#include "cli/report/forms.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace cli {

namespace {

constexpr std::string_view kStyle = R"(
:root { --ink: #1d1d1f; --soft: #636368; --line: #d9d9dc; --ground: #f1f1f2; --card: #fff;
  --prints: #2e6b3e; --beyond: #a3241c; --own-ink: #3f5f8a; --unknown: #55555a; }
* { box-sizing: border-box; }
body { margin: 0; background: var(--ground); color: var(--ink);
  font: 16px/1.45 system-ui, -apple-system, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; }
main { max-width: 70rem; margin: 0 auto; padding: 2.5rem 1.25rem 3rem; }
h1 { font-size: 2rem; line-height: 1.15; letter-spacing: -.015em; margin: 0; overflow-wrap: anywhere; }
.headline { margin: .35rem 0 1.6rem; font-size: 1.2rem; }
.summary { display: flex; flex-wrap: wrap; gap: .75rem 2.25rem; margin: 0 0 .9rem; padding: 0; list-style: none; }
.summary b { display: block; font-size: 2.25rem; line-height: 1; font-weight: 650; font-variant-numeric: tabular-nums; }
.summary span { color: var(--soft); font-size: .92rem; }
.bar { display: block; width: 100%; height: .6rem; border-radius: .3rem; margin-bottom: 1.6rem; }
dl { display: grid; grid-template-columns: repeat(3, 1fr); gap: .9rem 1.5rem;
  background: var(--card); border: 1px solid var(--line); padding: .9rem 1rem; margin: 0 0 1.6rem; font-size: .92rem; }
dt { color: var(--soft); font-size: .8rem; } dd { margin: 0; overflow-wrap: anywhere; }
.harmony { display: grid; grid-template-columns: 15rem 1fr; gap: 0 2rem; align-items: center;
  background: var(--card); border: 1px solid var(--line); padding: .9rem 1rem; margin: 0 0 1.6rem; }
.wheel { display: block; width: 100%; max-width: 15rem; margin: 0 auto; }
.grid { fill: none; stroke: var(--line); stroke-width: .4; }
.arm { stroke: var(--ink); stroke-width: .5; stroke-linecap: round; } .base { stroke-width: 1.1; }
.dot { stroke: #fff; stroke-width: .35; } .rim { fill: #000; fill-opacity: .45; }
.neutral { stroke: var(--soft); stroke-width: .25; }
h2 { font-size: 1.15rem; line-height: 1.25; margin: 0 0 .3rem; } .harmony p { margin: 0 0 .7rem; font-size: .92rem; }
.rules { list-style: none; margin: 0; padding: 0; font-size: .84rem; max-width: 30rem; }
.rules li { display: grid; grid-template-columns: 9.5rem 1fr 3rem; gap: .75rem; align-items: center;
  color: var(--soft); } .rules .first { color: var(--ink); font-weight: 600; }
.rules svg { display: block; width: 100%; height: .5rem; } .rules .number { text-align: right; }
.harmony .note { color: var(--soft); font-size: .8rem; margin: .6rem 0 0; }
table { width: 100%; border-collapse: collapse; background: var(--card); border: 1px solid var(--line); }
th { text-align: left; font-weight: 550; font-size: .8rem; color: var(--soft); padding: .6rem;
  white-space: nowrap; }
tbody { border-top: 1px solid var(--line); }
td { padding: .55rem .6rem; vertical-align: middle; }
.nearest td { padding-top: 0; }
.swatch { display: block; width: 8.5rem; height: 3.1rem; }
.nearest .swatch { height: 1.9rem; }
.name { font-weight: 600; overflow-wrap: anywhere; }
.nearest .name { font-weight: 400; }
.value { color: var(--soft); font-size: .84rem; font-variant-numeric: tabular-nums; overflow-wrap: anywhere; }
.inks { display: block; width: 8rem; height: 2.5rem; }
.inks text { font: 600 8px system-ui, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; fill: var(--ink);
  text-anchor: middle; }
.number { font-variant-numeric: tabular-nums; white-space: nowrap; text-align: right; }
th.number { text-align: right; }
.verdict { font-weight: 600; white-space: nowrap; }
.prints { color: var(--prints); } .beyond { color: var(--beyond); }
.own-ink { color: var(--own-ink); } .unknown { color: var(--unknown); }
.label { display: none; }
footer { color: var(--soft); font-size: .85rem; margin-top: 1.5rem; max-width: 52rem; }
footer p { margin: 0 0 .6rem; }
@media screen and (max-width: 54rem) {
  main { padding: 1.5rem .9rem 2rem; }
  h1 { font-size: 1.6rem; }
  dl { grid-template-columns: 1fr 1fr; }
  .harmony { grid-template-columns: 1fr; gap: .9rem; } .rules { max-width: none; }
  table, tbody, tr, td { display: block; border: 0; }
  table { background: none; } thead { display: none; }
  tbody { background: var(--card); border: 1px solid var(--line); padding: .8rem; margin-bottom: .75rem; }
  tr { display: grid; grid-template-columns: 1fr 1fr 1fr; gap: .4rem .9rem; align-items: center; }
  tr.nearest { border-top: 1px solid var(--line); margin-top: .7rem; padding-top: .7rem; }
  td, .nearest td { padding: 0; } td.swatches, td.who, td.says { grid-column: 1 / -1; }
  .swatch { width: 100%; height: 4.5rem; } .nearest .swatch { height: 2.4rem; }
  td.build { grid-column: 1 / -1; } .inks { width: 10rem; height: 3.1rem; }
  .nearest td.says { display: none; }
  td.number { text-align: left; font-size: .92rem; }
  .label { display: block; color: var(--soft); font-size: .8rem; }
}
@media print {
  @page { margin: 12mm; }
  body { background: none; font-size: 9pt; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  main { max-width: none; padding: 0; }
  tbody { break-inside: avoid; } thead { display: table-header-group; }
  .swatch { width: 6.5rem; height: 1.9rem; } .nearest .swatch { height: 1.3rem; }
  .inks { width: 6.4rem; height: 2rem; } td { padding: .2rem .35rem; } th { padding: .3rem .35rem; }
  .headline { margin-bottom: 1rem; } .summary b { font-size: 1.6rem; } dl, .bar { margin-bottom: 1rem; }
  .harmony { grid-template-columns: 9rem 1fr; break-inside: avoid; margin-bottom: 1rem; padding: .5rem .8rem; }
  .name, .value { max-width: 15rem; } footer { break-inside: avoid; max-width: none; }
}
)";

std::string Hex(const CLR_COLORSPEC &colour)
{
  return HexFromColorSpec(colour);
}

std::string SummaryHtml(const Report &report)
{
  std::string html = "<ul class=\"summary\">\n";
  std::string bar;
  double from = 0;
  const auto item = [](std::size_t count, const std::string &key, const char *label) {
    return "<li><b class=\"" + key + "\">" + std::to_string(count) + "</b><span>" + label + "</span></li>\n";
  };
  for (const Verdict verdict : kVerdicts) {
    const std::size_t count = report.Count(verdict);
    const auto [key, label] = WordsOf(verdict);
    if (count == 0 && verdict >= Verdict::OwnInk)
      continue;
    html += item(count, key, label);
    const double width = 100.0 * static_cast<double>(count) / static_cast<double>(report.rows.size());
    bar += "<rect x=\"" + ZelUtl::TextFromNumber(from, 3) + "\" width=\"" + ZelUtl::TextFromNumber(width, 3) +
           "\" height=\"1\" fill=\"var(--" + key + ")\"/>";
    from += width;
  }
  if (const std::size_t count = report.CountTooMuchInk())
    html += item(count, "beyond", "too much ink");
  return html +
         "</ul>\n<svg class=\"bar\" viewBox=\"0 0 100 1\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"" +
         Escaped(SummaryOf(report)) + "\">" + bar + "</svg>\n";
}

std::string PressHtml(const Report &report)
{
  const Press &press = report.press;
  const auto fact = [](const char *what, const std::string &says) {
    return std::string("<div><dt>") + what + "</dt><dd>" + Escaped(says) + "</dd></div>\n";
  };
  const auto coordinate = [](double value) { return ZelUtl::TextFromNumber(value, 1); };
  return "<dl>\n" + fact("Press", press.name) + fact("Intent", WordsOf(press.intent).name) +
         fact("Paper", "Lab " + coordinate(press.paper.l) + ", " + coordinate(press.paper.a) + ", " +
                         coordinate(press.paper.b) + "; " + WhiteWords(press)) +
         fact("Ink limit", InkLimitWords(press)) + fact("Black", BlackWords(press)) +
         fact("Colours are read by", ReadByWords(report)) + "</dl>\n";
}

/// Screen on the left, paper on the right and over it, without a gap, so that the eye can compare.
std::string SwatchSvg(const CLR_COLORSPEC &screen, const CLR_COLORSPEC &paper)
{
  return "<svg class=\"swatch\" viewBox=\"0 0 100 40\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"screen " +
         Hex(screen) + ", paper " + Hex(paper) + "\"><rect class=\"screen\" width=\"100\" height=\"40\" fill=\"" +
         Hex(screen) + "\"/><rect class=\"paper\" x=\"50\" width=\"50\" height=\"40\" fill=\"" + Hex(paper) +
         "\"/><rect x=\".25\" y=\".25\" width=\"99.5\" height=\"39.5\" fill=\"none\" stroke=\"#000\" "
         "stroke-opacity=\".15\" stroke-width=\".5\"/></svg>";
}

std::string InkSvg(const Inks &inks)
{
  constexpr std::array<const char *, 4> kInkColours = {"#009ee3", "#e6007e", "#ffde00", "#1d1d1b"};
  std::string svg = "<svg class=\"inks\" viewBox=\"0 0 96 30\" role=\"img\" aria-label=\"";
  for (std::size_t i = 0; i < inks.size(); ++i)
    svg += std::string(i ? " " : "") + "CMYK"[i] + std::to_string(inks[i]);
  svg += "\">";
  for (std::size_t i = 0; i < inks.size(); ++i) {
    const std::string x = std::to_string(24 * i + 2);
    const double height = 18.0 * inks[i] / 100.0;
    svg += "<rect x=\"" + x + "\" width=\"20\" height=\"18\" fill=\"#ececee\"/><rect x=\"" + x + "\" y=\"" +
           ZelUtl::TextFromNumber(18.0 - height, 2) + "\" width=\"20\" height=\"" + ZelUtl::TextFromNumber(height, 2) +
           "\" fill=\"" + kInkColours[i] + "\"/><text x=\"" + std::to_string(24 * i + 12) + "\" y=\"28\">" +
           std::to_string(inks[i]) + "</text>";
  }
  return svg + "</svg>";
}

/// A row of the table; `who` and `says` are HTML.
std::string LineHtml(const std::string &rowClass, const CLR_COLORSPEC &screen, const Print &print,
                     const std::string &who, const std::string &says)
{
  const auto number = [](const char *label, const std::string &text) {
    return std::string("<td class=\"number\"><span class=\"label\">") + label + "</span>" + text + "</td>";
  };
  return "<tr" + rowClass + "><td class=\"swatches\">" + SwatchSvg(screen, print.paper) + "</td><td class=\"who\">" +
         who + "</td><td class=\"build\">" + InkSvg(print.inks) + "</td>" +
         number("ink", std::to_string(print.Total()) + " %") + number("&Delta;E2000", OneDecimal(print.difference)) +
         number("distance", DistanceText(print)) + "<td class=\"says\">" + says + "</td></tr>\n";
}

std::string ColourHtml(const ReportRow &row)
{
  const std::string value = ZelClr::TextFromColorSpec(row.source.record);
  const auto [key, label] = WordsOf(row.verdict);
  const auto who = [](const std::string &name, const std::string &values) {
    return "<div class=\"name\" dir=\"auto\">" + Escaped(name) + "</div><div class=\"value\">" + values + "</div>";
  };
  const auto shown = [](const CLR_COLORSPEC &screen, const CLR_COLORSPEC &paper) {
    return Hex(screen) + " &rarr; " + Hex(paper);
  };
  const std::string name = row.source.name.empty() ? value : row.source.name;
  std::string says = "<span class=\"verdict " + std::string(key) + "\">" + label + "</span>";
  if (!row.HasBuild())
    return "<tbody class=\"colour\"><tr><td class=\"swatches\"></td><td class=\"who\" colspan=\"5\">" +
           who(name, Escaped(value)) + "</td><td class=\"says\">" + says + "</td></tr></tbody>\n";
  if (row.tooMuchInk)
    says += "<div class=\"verdict beyond\">too much ink</div>";
  // RGB that the screen shows as it is would say the same twice.
  const bool isRgb = row.source.record.GetType() == ZelClr::ClrModel::Rgb255;
  const bool isSaid = value == name || (isRgb && Hex(row.source.record) == Hex(row.screen));
  const std::string values = (isSaid ? "" : Escaped(value) + " &middot; ") + shown(row.screen, row.build.paper);
  std::string html = "<tbody class=\"colour\">" + LineHtml("", row.screen, row.build, who(name, values), says);
  if (row.nearest)
    html += LineHtml(" class=\"nearest\"", row.screen, *row.nearest,
                     who("Nearest that prints", shown(row.screen, row.nearest->paper)), "");
  return html + "</tbody>\n";
}

/// Each colour at its hue and saturation, those that are nearly neutral smaller; the arms of the nearest rule. The more
/// colours there are, the smaller the dots; what would be the same dot again is left out.
std::string WheelSvg(const Report &report)
{
  constexpr Wheel kWheel = {{50, 50}, 48};
  std::string svg =
    "<svg class=\"wheel\" viewBox=\"0 0 100 100\" role=\"img\" aria-label=\"the colours on the wheel\">" +
    WheelGround(kWheel);
  if (!report.harmonies.empty() && report.harmonies.front().IsNear())
    svg += WheelArms(kWheel, report.harmonies.front().arms);
  const auto count = static_cast<double>(std::max<std::size_t>(report.rows.size(), 1));
  const double size = std::clamp(14.0 / std::sqrt(count), 1.6, 3.0);
  std::set<std::string> drawn;
  for (const ReportRow &row : report.rows) {
    if (!row.HasBuild())
      continue;
    const Point at = kWheel.PlaceOf(row.wheel.position.hue, row.wheel.position.saturation);
    const std::string dot = row.wheel.IsNearNeutral() ? Circle(at, size * 0.5, "dot neutral", Hex(row.screen))
                                                      : Circle(at, size, "dot", Hex(row.screen));
    if (drawn.insert(dot).second)
      svg += (row.wheel.IsNearNeutral() ? "" : Circle(at, size + 0.4, "rim")) + dot;
  }
  return svg + "</svg>";
}

std::string HarmonyHtml(const Report &report)
{
  std::string html = "<section class=\"harmony\">\n" + WheelSvg(report) +
                     "<div><h2>On the artist\u2019s wheel</h2>\n<p>Harmony: " + Escaped(HarmonyWords(report)) +
                     ".</p>\n";
  if (report.harmonies.empty())
    return html + "</div>\n</section>\n";
  html += "<ol class=\"rules\">\n";
  for (const RuleFit &fit : report.harmonies) {
    const bool isTheOne = &fit == &report.harmonies.front() && fit.IsNear();
    const auto bar = [](double from, double degrees, const char *fill) { // the scale ends at a right angle
      const double width = std::min(100.0 - std::min(from, 100.0), degrees / 0.9);
      return "<rect x=\"" + ZelUtl::TextFromNumber(from, 2) + "\" width=\"" + ZelUtl::TextFromNumber(width, 2) +
             "\" height=\"1\" fill=\"" + fill + "\"/>";
    };
    html += std::string(isTheOne ? "<li class=\"first\">" : "<li>") + "<span>" + fit.words->title +
            "</span><svg viewBox=\"0 0 100 1\" preserveAspectRatio=\"none\" aria-hidden=\"true\">" +
            bar(0.0, fit.distance, "var(--own-ink)") +
            bar(std::min(fit.distance / 0.9, 100.0), fit.unused, "var(--line)") + "</svg><span class=\"number\">" +
            OneDecimal(fit.Miss()) + "\u00B0</span></li>\n";
  }
  return html +
         "</ol>\n<p class=\"note\">Dark: how far the colours are from the arms of the rule, the more colourful ones "
         "counting more. Pale: how far its arms are from a colour.</p></div>\n</section>\n";
}

std::string NotesHtml(const Press &press)
{
  return "<footer>\n<p>Of each swatch the left half is the colour on a screen (sRGB), the right half its print: the "
         "build, in whole percents, seen through the profile of the press; " +
         WhiteWords(press) +
         ". CMYK that is read by the profile of this very press is its own build.</p>\n"
         "<p>A colour is out of gamut when it comes back from the press changed by a &Delta;E2000 of more than " +
         ZelUtl::TextFromNumber(ColorSystem::GamutCheck::kTolerance, 1) +
         ", by the relative colorimetric intent. The nearest colour that prints is searched among all builds within "
         "the ink limit.</p>\n"
         "<p>&Delta;E2000 (CIE 142-2001) is between the colour and its print: 1 is just visible side by side, 5 plain. "
         "Distance is the measure that this library keeps thresholds in; it counts the paper\u2019s own "
         "white.</p>\n</footer>\n";
}

} // namespace

std::string PageOf(const Report &report)
{
  const std::string name = Escaped(report.name);
  std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                     "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
                     name + " \u2013 will these colours print?</title>\n<style>";
  html += kStyle;
  html += "</style>\n</head>\n<body>\n<main>\n<h1 dir=\"auto\">" + name + "</h1>\n<p class=\"headline\">" +
          HeadlineOf(report) + ".</p>\n" + SummaryHtml(report) + PressHtml(report) + HarmonyHtml(report);
  html += "<table>\n<thead><tr><th>Screen | paper</th><th>Colour</th><th>C&ensp;M&ensp;Y&ensp;K, %</th>"
          "<th class=\"number\">Ink</th><th class=\"number\">&Delta;E2000</th><th class=\"number\">Distance</th>"
          "<th>On the press</th></tr></thead>\n";
  for (const ReportRow &row : report.rows)
    html += ColourHtml(row);
  return html + "</table>\n" + NotesHtml(report.press) + "</main>\n</body>\n</html>\n";
}

} // namespace cli
