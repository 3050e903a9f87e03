// The sheet as one HTML page.

#include "cli/palette/sheet.h"
#include "cli/palette/swatch_facts.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

namespace cli {

namespace {

constexpr std::size_t kLeastColumns = 4;
constexpr std::size_t kMostColumns = 10;

constexpr std::string_view kStyle = R"(
:root { --ink: #1d1d1f; --soft: #636368; --line: #d9d9dc; --beyond: #a3241c; }
* { box-sizing: border-box; }
body { margin: 0; background: #fff; color: var(--ink);
  font: 15px/1.4 system-ui, -apple-system, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; }
main { max-width: 74rem; margin: 0 auto; padding: 2.75rem 1.5rem 3rem; }
h1 { font-size: 2.1rem; line-height: 1.15; letter-spacing: -.015em; margin: 0; overflow-wrap: anywhere; }
.summary { margin: .4rem 0 0; font-size: 1.1rem; }
.file, .description { margin: .25rem 0 0; color: var(--soft); font-size: .9rem; overflow-wrap: anywhere; }
.description { max-width: 48rem; white-space: pre-line; margin-top: .9rem; color: var(--ink); }
section { border-top: 1px solid var(--line); margin-top: 1.9rem; padding-top: 1.1rem; }
h2 { font-size: 1.15rem; margin: 0 0 .9rem; overflow-wrap: anywhere; }
h2 span { color: var(--soft); font-weight: 400; font-size: .9rem; margin-left: .4rem; }
ul { display: grid; grid-template-columns: repeat(var(--columns, 6), minmax(0, 1fr)); gap: 1.35rem 1rem; list-style: none;
  margin: 0; padding: 0; }
ul.free { grid-template-columns: repeat(auto-fill, minmax(9.5rem, 1fr)); }
.swatch { display: block; width: 100%; height: auto; margin-bottom: .5rem; }
.name { font-weight: 600; line-height: 1.25; overflow-wrap: anywhere; }
.value { color: var(--soft); font-size: .83rem; font-variant-numeric: tabular-nums; overflow-wrap: anywhere; }
.beyond { color: var(--beyond); font-weight: 600; }
footer { border-top: 1px solid var(--line); margin-top: 1.9rem; padding-top: .9rem; color: var(--soft);
  font-size: .85rem; }
footer p { display: flex; align-items: center; gap: .7rem; margin: 0 0 .5rem; max-width: 52rem; }
footer svg { flex: none; width: 2.6rem; height: auto; }
@media screen and (max-width: 54rem) {
  main { padding: 1.75rem 1rem 2rem; } h1 { font-size: 1.6rem; }
  ul, ul.free { grid-template-columns: repeat(auto-fill, minmax(6.8rem, 1fr)); gap: 1.1rem .8rem; }
}
@media print {
  @page { margin: 12mm; }
  body { font-size: 8.5pt; print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  main { max-width: none; padding: 0; } h1 { font-size: 18pt; } h2 { break-after: avoid; font-size: 11pt; }
  .summary { font-size: 10pt; } .file, .description { font-size: 8pt; } .description { margin-top: 2mm; }
  section { margin-top: 4mm; padding-top: 3mm; }
  ul, ul.free { grid-template-columns: repeat(var(--columns, 6), minmax(0, 1fr)); gap: 2.5mm 3mm; }
  li, footer { break-inside: avoid; } .swatch { margin-bottom: 1mm; } .name { font-size: 8pt; }
  .value { font-size: 7pt; line-height: 1.3; }
  footer { margin-top: 3mm; padding-top: 2mm; font-size: 7.5pt; } footer p { margin-bottom: .8mm; }
  footer svg { width: 8mm; }
}
)";

std::string ColourHtml(const SheetColour &colour)
{
  const std::string ink = InkInWords(colour.swatch);
  const std::string screen = ScreenInWords(colour.screen);
  const auto value = [](const std::string &text) { return "<div class=\"value\">" + Escaped(text) + "</div>"; };
  std::string html = "<li><svg class=\"swatch\" viewBox=\"0 0 100 64\" role=\"img\" aria-label=\"" + Escaped(screen) +
                     "\">" + SwatchSvg(colour, 64.0) + "</svg><div class=\"name\" dir=\"auto\">" +
                     Escaped(NameInWords(colour.swatch)) + "</div>";
  if (!colour.swatch.name.empty())
    html += value(ValueInWords(colour.swatch));
  html += value(screen);
  if (!ink.empty())
    html += value(ink);
  if (!colour.inGamut)
    html += "<div class=\"value beyond\">out of gamut</div>";
  return html + "</li>\n";
}

std::string LegendHtml(const Sheet &sheet)
{
  std::string html;
  for (const SheetMark &mark : MarksOf(sheet))
    html += std::string("<p><svg viewBox=\"") + mark.viewBox + "\" aria-hidden=\"true\">" + mark.drawing +
            "</svg><span>" + Escaped(mark.words) + "</span></p>\n";
  if (!html.empty() && sheet.CountBeyond() > 0)
    html += "<p>A colour is beyond a gamut when it comes back from the press changed by a &Delta;E2000 of more than " +
            ZelUtl::TextFromNumber(ColorSystem::GamutCheck::kTolerance, 1) + ".</p>\n";
  return html.empty() ? html : "<footer>\n" + html + "</footer>\n";
}

} // namespace

std::string PageOf(const Sheet &sheet)
{
  const std::string name = Escaped(sheet.name);
  std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                     "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
                     name + " \u2013 palette</title>\n<style>";
  html += kStyle;
  html +=
    "</style>\n</head>\n<body>\n<main>\n<h1 dir=\"auto\">" + name + "</h1>\n<p class=\"summary\">" + SummaryOf(sheet);
  if (!sheet.press.empty())
    html += std::string(". <span class=\"") + (sheet.CountBeyond() > 0 ? "beyond" : "within") + "\">" +
            Escaped(GamutInWords(sheet)) + "</span>";
  html += ".</p>\n<p class=\"file\">" + std::string(sheet.title) + (sheet.locked ? ", locked" : "") + " &middot; " +
          Escaped(ZelUtl::FileNameOfPath(sheet.path)) + "</p>\n";
  if (!sheet.description.empty())
    html += "<p class=\"description\" dir=\"auto\">" + Escaped(sheet.description) + "</p>\n";
  const bool hasColumns = sheet.columns >= kLeastColumns && sheet.columns <= kMostColumns;
  const std::string grid =
    hasColumns ? "<ul style=\"--columns: " + std::to_string(sheet.columns) + "\">\n" : "<ul class=\"free\">\n";
  for (const SheetGroup &group : sheet.groups) {
    html += "<section>\n";
    if (!group.name.empty())
      html +=
        "<h2 dir=\"auto\">" + Escaped(group.name) + "<span>" + std::to_string(group.colours.size()) + "</span></h2>\n";
    html += grid;
    for (const SheetColour &colour : group.colours)
      html += ColourHtml(colour);
    html += "</ul>\n</section>\n";
  }
  return html + LegendHtml(sheet) + "</main>\n</body>\n</html>\n";
}

} // namespace cli
