// The sheet as an SVG picture, in millimetres.

#include "cli/palette/sheet.h"
#include "cli/palette/swatch_facts.h"
#include "cli/profile/svg.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace cli {

namespace {

using namespace svg;

constexpr double kWidth = 210.0;
constexpr double kMargin = 12.0;
constexpr double kGap = 4.0;
constexpr double kTileShare = 0.64; ///< a swatch's height to its width
constexpr double kLabels = 13.5;    ///< below it
constexpr double kLinePitch = 3.1;  ///< of their lines
constexpr double kLetter = 0.62;    ///< a letter's usual width, in its size
constexpr double kNameSize = 2.9;   ///< of letters, as below
constexpr double kValueSize = 2.45;
constexpr double kSoftSize = 2.7;
constexpr std::size_t kLeastColumns = 4;
constexpr std::size_t kMostColumns = 8;
constexpr std::size_t kColumns = 6; ///< where the palette does not say, or has more

constexpr std::string_view kStyle = R"(<style>
text { font-family: "Helvetica Neue", Helvetica, Arial, "Liberation Sans", "DejaVu Sans", sans-serif; fill: #1d1d1f }
.title { font-size: 7.4px; font-weight: 700; letter-spacing: -.1px }
.summary { font-size: 3.5px } .soft { font-size: 2.7px; fill: #6b6b70 } .beyond { font-size: 3.5px; fill: #a3241c }
.group { font-size: 4.2px; font-weight: 600 }
.name { font-size: 2.9px; font-weight: 600 } .value { font-size: 2.45px; fill: #55555a }
.ground { fill: #fff } .rule { stroke: #d9d9dc; stroke-width: .3 }
</style>
)";

/// As much of a text as fits into a width of letters of one size.
std::string Shortened(const std::string &text, double width, double fontSize)
{
  const auto columns = static_cast<std::size_t>(std::max(4.0, width / (fontSize * kLetter)));
  if (TextColumns(text) <= columns)
    return text;
  const std::string fitted = Fitted(text, columns);
  return fitted.substr(0, fitted.find_last_not_of(' ') + 1);
}

std::string At(double x, double y, double scale, const std::string &drawing)
{
  return "<g transform=\"translate(" + Number(x) + " " + Number(y) + ") scale(" + ZelUtl::TextFromNumber(scale, 5) +
         ")\">" + drawing + "</g>";
}

std::string TileOf(const SheetColour &colour, double x, double y, double width)
{
  const double height = width * kTileShare;
  const double base = y + height;
  const std::string ink = InkInWords(colour.swatch);
  const std::string screen = ScreenInWords(colour.screen);
  const std::string value = ValueInWords(colour.swatch);
  const bool hasName = !colour.swatch.name.empty();
  std::string tile = "<g><title>" + Escaped(NameInWords(colour.swatch)) + "</title>" +
                     At(x, y, width / 100.0, SwatchSvg(colour, 100.0 * kTileShare)) + "\n" +
                     Text(x, base + 4.0, "name", Shortened(NameInWords(colour.swatch), width, kNameSize));
  double line = base + 7.4;
  if (hasName) {
    tile += Text(x, line, "value", Shortened(value, width, kValueSize));
    line += kLinePitch;
  }
  tile += Text(x, line, "value", screen);
  if (!ink.empty())
    tile += Text(x, line + kLinePitch, "value", ink);
  return tile + "</g>\n";
}

/// What the marks mean, on one line; nothing where there are none.
std::string LegendOf(const Sheet &sheet, double y)
{
  std::string legend;
  double x = kMargin;
  for (const SheetMark &mark : MarksOf(sheet)) {
    const std::string words = Shortened(mark.words, 110.0, kSoftSize);
    legend += "<svg x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" width=\"7.5\" height=\"5\" viewBox=\"" +
              mark.viewBox + "\">" + mark.drawing + "</svg>" + Text(x + 10.0, y + 3.5, "soft", words);
    x += 16.0 + kSoftSize * kLetter * static_cast<double>(TextColumns(words));
  }
  return legend;
}

} // namespace

std::string SvgOf(const Sheet &sheet)
{
  const std::size_t columns =
    sheet.columns == 0 || sheet.columns > kMostColumns ? kColumns : std::max(sheet.columns, kLeastColumns);
  const double inner = kWidth - 2.0 * kMargin;
  const double width = (inner - kGap * static_cast<double>(columns - 1)) / static_cast<double>(columns);
  const double pitch = width * kTileShare + kLabels + (sheet.CountSpots() > 0 ? kLinePitch : 0.0);

  double y = kMargin + 6.0;
  std::string body = Text(kMargin, y, "title", Shortened(Harmless(sheet.name), inner, 7.4));
  y += 6.6;
  body += Text(kMargin, y, "summary", SummaryOf(sheet));
  if (!sheet.press.empty()) {
    y += 5.0;
    body +=
      Text(kMargin, y, sheet.CountBeyond() > 0 ? "beyond" : "summary", Shortened(GamutInWords(sheet), inner, 3.5));
  }
  y += 4.6;
  body +=
    Text(kMargin, y, "soft",
         Shortened(std::string(sheet.title) + ", " + Harmless(ZelUtl::FileNameOfPath(sheet.path)), inner, kSoftSize));
  y += 5.0;
  for (const SheetGroup &group : sheet.groups) {
    body += Line(kMargin, y, kWidth - kMargin, y, "rule");
    y += 4.0;
    if (!group.name.empty()) {
      y += 3.4;
      body += Text(kMargin, y, "group", Shortened(Harmless(group.name), inner, 4.2));
      y += 3.6;
    }
    for (std::size_t i = 0; i < group.colours.size(); ++i) {
      const std::size_t column = i % columns;
      if (i > 0 && column == 0)
        y += pitch;
      body += TileOf(group.colours[i], kMargin + static_cast<double>(column) * (width + kGap), y, width);
    }
    y += pitch + 0.5;
  }
  const std::string legend = LegendOf(sheet, y + 3.0);
  if (!legend.empty()) {
    body += Line(kMargin, y, kWidth - kMargin, y, "rule") + legend;
    y += 8.5;
  }
  const double height = y + kMargin - 5.0;
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(kWidth) + "mm\" height=\"" + Number(height) +
         "mm\" viewBox=\"0 0 " + Number(kWidth) + " " + Number(height) + "\">\n<title>" + Escaped(sheet.name) +
         "</title>\n" + (sheet.description.empty() ? "" : "<desc>" + Escaped(sheet.description) + "</desc>\n") +
         std::string(kStyle) + Rectangle(0, 0, kWidth, height, "ground") + body + "</svg>\n";
}

} // namespace cli
