#include "cli/profile/gamut_drawing.h"

#include "cli/profile/chromaticity.h"
#include "cli/profile/forms.h"
#include "cli/profile/icc_words.h"
#include "cli/profile/spectral_locus.h"
#include "cli/profile/svg.h"
#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

using namespace svg;
using Outlines = std::vector<std::vector<PlanePoint>>;

// Millimetres on A4.
constexpr double kLeft = 14.0;
constexpr double kRight = 196.0;
constexpr double kPlotLeft = 23.0;
constexpr double kFactsLeft = 140.0;

constexpr std::string_view kHead =
  "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"210mm\" height=\"297mm\" viewBox=\"0 0 210 297\" role=\"img\">\n";

constexpr std::string_view kStyle = R"(<style>
@page { size: A4; margin: 0 }
text { font-family: "Helvetica Neue", Helvetica, Arial, "Liberation Sans", "DejaVu Sans", sans-serif; fill: #1d1d1f }
.heading { font-size: 4.2px; font-weight: 600 }
.label { font-size: 2.9px; fill: #6b6b70 }
.value { font-size: 3.5px }
.figure { font-size: 7px; font-weight: 600 }
.note { font-size: 2.7px; fill: #6b6b70 }
.tick { font-size: 2.5px; fill: #6b6b70 }
.across { text-anchor: middle } .before { text-anchor: end }
.panel { font-size: 3px; font-weight: 600 }
.panel, .above { paint-order: stroke; stroke: #fff; stroke-opacity: .8; stroke-width: .7; stroke-linejoin: round }
.ground { fill: #fff } .field { fill: #f5f5f6 }
.frame { fill: none; stroke: #c4c4c8; stroke-width: .2 }
.grid { stroke: #dcdcdf; stroke-width: .15 }
.axis { stroke: #6b6b70; stroke-opacity: .55; stroke-width: .12 }
.rule { stroke: #1d1d1f; stroke-width: .3 }
.edge { fill: none; stroke: #1d1d1f; stroke-width: .2; stroke-linejoin: round }
.casing { fill: none; stroke: #fff; stroke-width: .75; stroke-linejoin: round }
.line { fill: none; stroke: #1d1d1f; stroke-width: .35; stroke-linejoin: round }
.dashed { stroke-dasharray: 1.1 .8 }
.locus { fill: #fff; stroke: #6b6b70; stroke-width: .25; stroke-linejoin: round }
.dot { stroke: #6b6b70; stroke-width: .25 }
.share-a { fill: #8d8d92 } .share-both { fill: #4a4a4e } .share-b { fill: #fff; stroke: #1d1d1f; stroke-width: .35 }
</style>
)";

/// A gamut on the page.
struct Drawn
{
  const Gamut *gamut;
  std::optional<Adaptation> adaptation;
};

/// The two gamuts of a page: one in its own colours, one as a line of a style.
struct Pair
{
  Drawn filled;
  Drawn lined;
  const char *lineStyle;
  RenderingIntent intent;
};

// --- Slices ----------------------------------------------------------------------------------------------------------

constexpr double kLightnesses[] = {20, 30, 40, 50, 60, 70, 80, 90};
constexpr int kPanelsAcross = 4;
constexpr double kPanel = 40.25;
constexpr double kGap = 4.0;
constexpr double kSlicesTop = 51.0;
constexpr double kSliceCell = 0.5;
constexpr double kTolerance = 0.12;

RealRgb ScreenColour(double l, double a, double b)
{
  return ZelClr::Formulas::SrgbFromXyz(ZelClr::Formulas::XyzFromCieLab({l, a, b}));
}

struct Box
{
  PlanePoint low;
  PlanePoint high;
};

Box BoxOf(const Outlines &outlines)
{
  Box box = {{1e9, 1e9}, {-1e9, -1e9}};
  for (const auto &outline : outlines) {
    for (const PlanePoint &point : outline) {
      box.low = {std::min(box.low.x, point.x), std::min(box.low.y, point.y)};
      box.high = {std::max(box.high.x, point.x), std::max(box.high.y, point.y)};
    }
  }
  return box;
}

/// A line that is seen on every ground.
std::string CasedPath(const std::string &data, const std::string &style)
{
  return Path(data, "casing") + Path(data, "line " + style);
}

struct Slice
{
  double lightness;
  Outlines filled;
  Outlines lined;
};

/// The least of some round numbers that no slice goes beyond.
double ReachOf(const std::vector<Slice> &slices)
{
  double reach = 40.0;
  for (const Slice &slice : slices) {
    for (const Outlines *outlines : {&slice.filled, &slice.lined}) {
      if (outlines->empty())
        continue;
      const Box box = BoxOf(*outlines);
      reach = std::max({reach, -box.low.x, -box.low.y, box.high.x, box.high.y});
    }
  }
  return std::ceil(reach / 10.0 + 0.3) * 10.0;
}

std::string PanelOf(const Slice &slice, std::size_t index, double reach, const char *lineStyle)
{
  const auto column = static_cast<double>(index % kPanelsAcross);
  const auto row = static_cast<double>(index / kPanelsAcross);
  const double left = kPlotLeft + column * (kPanel + kGap);
  const double top = kSlicesTop + row * (kPanel + kGap);
  const Plot plot = {left + kPanel / 2, top + kPanel / 2, kPanel / 2 / reach};
  const double tick = reach > 75.0 ? 50.0 : 25.0;

  std::string panel = Rectangle(left, top, kPanel, kPanel, "field");
  for (double at = -std::floor(reach / tick) * tick; at <= reach; at += tick) {
    panel += Line(plot.X(at), top, plot.X(at), top + kPanel, "grid");
    panel += Line(left, plot.Y(at), left + kPanel, plot.Y(at), "grid");
    if (row > 0)
      panel += Text(plot.X(at), top + kPanel + 3.4, "tick across", Number(at));
    if (column == 0)
      panel += Text(left - 1, plot.Y(at) + 0.9, "tick before", Number(at));
  }
  const std::string shape = Along(slice.filled, plot);
  if (!shape.empty()) {
    const Box box = BoxOf(slice.filled);
    const ColourField field = {box.low, box.high, 2.0,
                               [l = slice.lightness](double a, double b) { return ScreenColour(l, a, b); }};
    panel += Filled(shape, field, plot, "slice" + std::to_string(index));
  }
  panel += Line(plot.X(0), top, plot.X(0), top + kPanel, "axis");
  panel += Line(left, plot.Y(0), left + kPanel, plot.Y(0), "axis");
  panel += Path(shape, "edge") + CasedPath(Along(slice.lined, plot), lineStyle);
  panel += Rectangle(left, top, kPanel, kPanel, "frame");
  return panel + Text(left + 1.6, top + 4, "panel", "L* " + Number(slice.lightness));
}

std::string SlicesOf(const Pair &pair)
{
  std::vector<Slice> slices;
  for (const double lightness : kLightnesses) {
    slices.push_back({lightness, SliceOf(*pair.filled.gamut, lightness, kSliceCell).Outlines(kTolerance),
                      SliceOf(*pair.lined.gamut, lightness, kSliceCell).Outlines(kTolerance)});
  }
  const double reach = ReachOf(slices);
  std::string drawing = Text(kLeft, kSlicesTop - 5, "heading", "Slices at one lightness") +
                        Text(kRight, kSlicesTop - 5, "label before",
                             std::string("a* to the right, b* up \u00B7 CIE Lab on D50, ") + WordsOf(pair.intent).name);
  for (std::size_t i = 0; i < slices.size(); ++i)
    drawing += PanelOf(slices[i], i, reach, pair.lineStyle);
  const double bottom = kSlicesTop + 2 * kPanel + kGap;
  return drawing + Text(kRight - kPanel / 2, bottom + 7, "tick across", "a*") +
         Text(kLeft, bottom - kPanel / 2 + 0.9, "tick", "b*");
}

// --- Chromaticities --------------------------------------------------------------------------------------------------

constexpr double kMostX = 0.8;
constexpr double kMostY = 0.9;
constexpr Plot kChromaticities = {kPlotLeft, 278.0, 132.0};
constexpr int kWavelengths[] = {460, 470, 480, 490, 500, 510, 520, 530, 540, 550, 560, 570, 580, 590, 600, 620, 700};

/// The brightest colour of a screen that has a chromaticity, or comes near it.
RealRgb BrightColour(double x, double y, const Adaptation &toD50)
{
  using namespace ZelClr::Formulas;
  constexpr double kDim = 0.01; // of white, so that no component is cut off before they are known
  const double floor = std::max(y, 0.01);
  const Xyz dim = Adapted({kDim * x / floor, kDim, kDim * std::max(0.0, 1.0 - x - y) / floor}, toD50);
  const RealRgb encoded = SrgbFromXyz(dim);
  const double red = LinearFromSrgb(encoded.red);
  const double green = LinearFromSrgb(encoded.green);
  const double blue = LinearFromSrgb(encoded.blue);
  const double most = std::max({red, green, blue, 1e-9});
  return {SrgbFromLinear(red / most), SrgbFromLinear(green / most), SrgbFromLinear(blue / most)};
}

std::string LocusLabels()
{
  std::string labels;
  for (const int wavelength : kWavelengths) {
    const auto index = static_cast<std::size_t>((wavelength - kFirstWavelength) / kWavelengthStep);
    const PlanePoint point = kSpectralLocus[index];
    // Outwards, square to the locus.
    const PlanePoint before = kSpectralLocus[index - 1];
    const PlanePoint behind = kSpectralLocus[std::min(index + 1, std::size(kSpectralLocus) - 1)];
    const double length = std::hypot(behind.x - before.x, behind.y - before.y);
    const double outX = length == 0 ? 1.0 : -(behind.y - before.y) / length;
    const double outY = length == 0 ? 0.0 : (behind.x - before.x) / length;
    const double x = kChromaticities.X(point.x);
    const double y = kChromaticities.Y(point.y);
    labels += Line(x, y, x + outX * 1.2, y - outY * 1.2, "dot");
    labels += Text(x + outX * 2, y - outY * 2.4 + 0.9,
                   outX < -0.4  ? "tick above before"
                   : outX > 0.4 ? "tick above"
                                : "tick above across",
                   std::to_string(wavelength));
  }
  return labels;
}

std::string ChromaticitiesOf(const Pair &pair)
{
  // On the devices' own whites where both profiles say what these are, else on D50.
  const bool own = pair.filled.adaptation && pair.lined.adaptation;
  const Adaptation toD50 = own ? *pair.filled.adaptation : kNoAdaptation;
  const Adaptation linedToD50 = own ? *pair.lined.adaptation : kNoAdaptation;
  const Plot &plot = kChromaticities;

  std::string drawing =
    Text(kLeft, plot.Y(kMostY) - 5, "heading", "Chromaticities") +
    Text(kFactsLeft - 8, plot.Y(kMostY) - 5, "label before",
         own ? "CIE 1931, 2\u00B0, on the device\u2019s own white" : "CIE 1931, 2\u00B0, adapted to D50");
  drawing += Rectangle(plot.X(0), plot.Y(kMostY), kMostX * plot.scale, kMostY * plot.scale, "field");
  for (int tenth = 0; tenth <= 9; ++tenth) {
    const double at = tenth / 10.0;
    if (at <= kMostX) {
      drawing += Line(plot.X(at), plot.Y(0), plot.X(at), plot.Y(kMostY), "grid");
      drawing += Text(plot.X(at), plot.Y(0) + 3.4, "tick across", Number(at));
    }
    drawing += Line(plot.X(0), plot.Y(at), plot.X(kMostX), plot.Y(at), "grid");
    drawing += Text(plot.X(0) - 1, plot.Y(at) + 0.9, "tick before", Number(at));
  }
  const std::vector<PlanePoint> locus(std::begin(kSpectralLocus), std::end(kSpectralLocus));
  Outlines closed = {locus};
  closed[0].push_back(locus.front());
  drawing += Path(Along(closed, plot), "locus");

  const Adaptation fromD50 = Inverse(toD50);
  constexpr double kPlaneTolerance = 0.0006;
  const Outlines filled = cli::ChromaticitiesOf(*pair.filled.gamut, fromD50).Outlines(kPlaneTolerance);
  const Outlines lined = cli::ChromaticitiesOf(*pair.lined.gamut, Inverse(linedToD50)).Outlines(kPlaneTolerance);
  const std::string shape = Along(filled, plot);
  const Box box = BoxOf(filled);
  drawing += Filled(shape, {box.low, box.high, 0.004, [&](double x, double y) { return BrightColour(x, y, toD50); }},
                    plot, "chromaticities");
  drawing += Path(shape, "edge") + CasedPath(Along(lined, plot), pair.lineStyle) + LocusLabels();
  drawing += Rectangle(plot.X(0), plot.Y(kMostY), kMostX * plot.scale, kMostY * plot.scale, "frame");
  return drawing + Text(plot.X(kMostX), plot.Y(0) + 6.8, "tick before", "x") +
         Text(kLeft, plot.Y(kMostY / 2) + 0.9, "tick", "y");
}

// --- Figures ---------------------------------------------------------------------------------------------------------

/// Lines of text one below the other.
struct Column
{
  double y;
  std::string drawing;

  void Add(const char *style, double advance, const std::string &text)
  {
    y += advance;
    drawing += Text(kFactsLeft, y, style, text);
  }
  void Label(const std::string &text) { Add("label", 7.5, text); }
  void Value(const std::string &text) { Add("value", 4.8, text); }
  void Note(const std::string &text) { Add("note", 3.8, text); }
};

std::string LabLine(const std::optional<Lab> &lab)
{
  return lab ? "L* " + OneDecimal(lab->l) + "   a* " + OneDecimal(lab->a) + "   b* " + OneDecimal(lab->b) : "unknown";
}

/// A sample of how a gamut is drawn, and its name.
std::string Sample(double x, double y, bool filled, const char *lineStyle)
{
  const std::string data = "M" + Number(x) + " " + Number(y) + "h9";
  if (!filled)
    return CasedPath(data, lineStyle);
  const Plot plot = {x, y, 1.0};
  const std::string box = "M" + Number(x) + " " + Number(y - 1.5) + "h9v3h-9Z";
  return Filled(box,
                {{0, -1.5},
                 {9, 1.5},
                 3.0,
                 [](double at, double) {
                   const double hue = at / 9.0 * 6.2832;
                   return ScreenColour(65, 45 * std::cos(hue), 45 * std::sin(hue));
                 }},
                plot, "sample") +
         Path(box, "edge");
}

std::string Subtitle(const ProfileFacts &facts)
{
  const ZelUtl::IccHeader &header = facts.file.icc.Header();
  return std::string(facts.model->name) + " \u00B7 " + ClassInWords(header.deviceClass) + " \u00B7 ICC " +
         VersionInWords(header.version) + " \u00B7 " + SizeInWords(facts.file.icc.Stamp().size) + " \u00B7 " +
         ZelUtl::FileNameOfPath(facts.file.path);
}

/// Text as large as it fits between `x` and the right margin, and cut off where it would become too small.
std::string FittedText(double x, double y, double largest, double smallest, const char *weight, const std::string &text)
{
  constexpr double kWidthOfLetter = 0.58; // of its size: a wide letter's, so that no font breaks the page
  const double width = kRight - x;
  const auto most = static_cast<std::size_t>(width / (kWidthOfLetter * smallest));
  const std::string shown = TextColumns(text) > most ? Fitted(text, most) : text;
  const double size =
    std::min(largest, width / (kWidthOfLetter * std::max(1.0, static_cast<double>(TextColumns(shown)))));
  return "<text x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" style=\"font-size:" + Number(size) +
         "px;font-weight:" + weight + "\">" + Escaped(shown) + "</text>\n";
}

std::string GamutNote(const Gamut &gamut)
{
  return gamut.cutOff ? "cut off where a* or b* is beyond 128" : "";
}

std::string FiguresOf(const ProfileFacts &facts, const Pair &pair)
{
  const DeviceFacts &shown = facts.By(pair.intent);
  Column column = {kChromaticities.Y(kMostY) - 5, ""};
  column.Add("heading", 0, "Figures");
  column.Label(std::string("Gamut volume, ") + WordsOf(pair.intent).name);
  column.Add("figure", 7.5, VolumeInWords(shown.volume->Size()) + " \u0394E\u00B3");
  if (shown.gamut->cutOff)
    column.Note(GamutNote(*shown.gamut));
  column.Label("White");
  for (const DeviceFacts *by : {&facts.relative, &facts.absolute}) {
    column.Value(LabLine(by->white));
    column.Note(WordsOf(by->intent).name);
  }
  column.Label("Black");
  for (const DeviceFacts *by : {&facts.relative, &facts.absolute}) {
    column.Value(LabLine(by->black));
    column.Note(WordsOf(by->intent).name);
  }
  if (!facts.inkTotals.empty()) {
    column.Label("Most ink that a colour of sRGB gets");
    for (const InkTotal &total : facts.inkTotals)
      column.Value(OneDecimal(total.percent) + " %  " + WordsOf(total.intent).option);
  }
  return column.drawing;
}

/// The volumes as lengths: what only A has, what both have, what only B has.
std::string ShareBar(double y, double onlyA, double both, double onlyB)
{
  const double scale = (kRight - kFactsLeft) / std::max(1.0, onlyA + both + onlyB);
  return Rectangle(kFactsLeft, y, onlyA * scale, 4, "share-a") +
         Rectangle(kFactsLeft + onlyA * scale, y, both * scale, 4, "share-both") +
         Rectangle(kFactsLeft + (onlyA + both) * scale, y, onlyB * scale, 4, "share-b");
}

std::string FiguresOf(const Comparison &comparison)
{
  const double volumeOfA = comparison.VolumeOfA();
  const double volumeOfB = comparison.VolumeOfB();
  const double common = comparison.CommonVolume();
  Column column = {kChromaticities.Y(kMostY) - 5, ""};
  column.Add("heading", 0, "Figures");
  column.Label("Gamut volumes");
  column.Value("A   " + VolumeInWords(volumeOfA) + " \u0394E\u00B3");
  column.Value("B   " + VolumeInWords(volumeOfB) + " \u0394E\u00B3");
  column.Value("both   " + VolumeInWords(common) + " \u0394E\u00B3");
  column.drawing += ShareBar(column.y + 4, volumeOfA - common, common, volumeOfB - common);
  column.y += 8;
  column.Note("gray: only A; dark: both; white: only B");
  column.Add("figure", 11, ShareInWords(ShareOf(common, volumeOfA)));
  column.Note("of A is within B");
  column.Add("figure", 9, ShareInWords(ShareOf(common, volumeOfB)));
  column.Note("of B is within A");
  for (const auto &[label, colour] : {std::pair{"Whites", &DeviceFacts::white}, {"Blacks", &DeviceFacts::black}}) {
    const auto &ofA = comparison.a.By(comparison.intent).*colour;
    const auto &ofB = comparison.b.By(comparison.intent).*colour;
    column.Label(label);
    column.Value("A   " + LabLine(ofA));
    column.Value("B   " + LabLine(ofB));
    if (const auto difference = DifferenceOf(ofA, ofB))
      column.Value("\u0394E2000   " + OneDecimal(*difference));
  }
  return column.drawing;
}

std::string Page(const std::string &name, const std::string &title, const std::string &figures, const Pair &pair)
{
  return std::string(kHead) + "<title>" + Escaped(name) + "</title>\n" + std::string(kStyle) +
         Rectangle(0, 0, 210, 297, "ground") + title + Line(kLeft, 38, kRight, 38, "rule") + SlicesOf(pair) +
         ChromaticitiesOf(pair) + figures +
         Text(kLeft, 290.5, "note",
              "Colours are drawn as sRGB has them; what it lacks is drawn with the nearest of its components.") +
         "</svg>\n";
}

} // namespace

std::string PictureOf(const ProfileFacts &facts, RenderingIntent intent)
{
  const Gamut screen = SrgbGamut();
  const Pair pair = {
    {&*facts.By(intent).gamut, AdaptationOf(facts.file.icc)}, {&screen, kAdaptationFromD65}, "dashed", intent};
  const std::string title =
    FittedText(kLeft, 23, 8, 3.6, "700", facts.file.name) + FittedText(kLeft, 30, 3.6, 2.6, "400", Subtitle(facts)) +
    Sample(kLeft, 34.2, true, "") + Text(kLeft + 11, 35.2, "label", "the profile\u2019s gamut") +
    Sample(kLeft + 48, 34.2, false, "dashed") + Text(kLeft + 59, 35.2, "label", "sRGB, for comparison");
  return Page("The gamut of " + facts.file.name, title, FiguresOf(facts, pair), pair);
}

std::string PictureOf(const Comparison &comparison)
{
  const auto &[a, b, intent] = comparison;
  const Pair pair = {
    {&*a.By(intent).gamut, AdaptationOf(a.file.icc)}, {&*b.By(intent).gamut, AdaptationOf(b.file.icc)}, "", intent};
  std::string title;
  double y = 18;
  for (const auto &[letter, facts] : {std::pair{"A", &a}, {"B", &b}}) {
    title += Sample(kLeft, y - 1.7, facts == &a, "") + Text(kLeft + 12, y, "heading", letter) +
             FittedText(kLeft + 18, y, 5.6, 3.2, "700", facts->file.name) +
             FittedText(kLeft + 18, y + 4.6, 3.1, 2.6, "400", Subtitle(*facts));
    y += 12;
  }
  return Page("The gamuts of " + a.file.name + " and " + b.file.name, title, FiguresOf(comparison), pair);
}

} // namespace cli
