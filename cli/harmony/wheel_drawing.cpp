#include "cli/harmony/wheel_drawing.h"

#include "cli/harmony/wheel.h"
#include "cli/output.h"
#include "cli/profile/svg.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/harmony/wheel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cli {

namespace {

using namespace svg;

// Millimetres.
constexpr double kPage = 210.0;
constexpr double kLeft = 12.0;
constexpr double kRight = kPage - kLeft;

constexpr std::string_view kStyle = R"(<style>
text { font-family: "Helvetica Neue", Helvetica, Arial, "Liberation Sans", "DejaVu Sans", sans-serif; fill: #1d1d1f }
.title { font-size: 6px; font-weight: 700 } .heading { font-size: 3.8px; font-weight: 600 }
.label { font-size: 2.9px; fill: #6b6b70 } .value { font-size: 3.5px }
.tick { font-size: 2.5px; fill: #8d8d92; text-anchor: middle } .hex { font-size: 2.4px; fill: #6b6b70; text-anchor: middle }
.ground { fill: #fff } .grid { fill: none; stroke: #e3e3e6; stroke-width: .2 }
.arm { stroke: #1d1d1f; stroke-width: .3; stroke-linecap: round } .base { stroke-width: .75 }
.rim { fill: #fff; stroke: #1d1d1f; stroke-width: .24 }
.mark { text-anchor: middle; font-weight: 600 } .dark { fill: #1d1d1f } .light { fill: #fff }
.swatch { stroke: #1d1d1f; stroke-opacity: .12; stroke-width: .2 }
</style>
)";

std::string Box(double x, double y, double width, double height, const std::string &fill)
{
  return "<rect x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" width=\"" + Number(width) + "\" height=\"" +
         Number(height) + "\" rx=\"1\" class=\"swatch\" fill=\"" + fill + "\"/>\n";
}

/// Text in the middle of a coloured ground, dark or light, whichever is read on it.
std::string Mark(const Point &centre, double size, COLORREF ground, const std::string &text)
{
  const double luma = 0.299 * static_cast<double>(ground & 255) + 0.587 * static_cast<double>(ground >> 8 & 255) +
                      0.114 * static_cast<double>(ground >> 16 & 255);
  return "<text x=\"" + Number(centre.x) + "\" y=\"" + Number(centre.y + size * 0.36) + "\" font-size=\"" +
         Number(size) + "\" class=\"mark " + (luma > 140.0 ? "dark" : "light") + "\">" + text + "</text>\n";
}

/// A colour on the wheel as it is drawn.
struct Dot
{
  Point at;
  double radius;
};

/// Of the dots' radius: the white around each, to the rim's outer edge.
constexpr double kHalo = 1.12;

/// At hue and saturation. What would lie on a dot before it, as shades do, moves to the nearest free place in the
/// wheel, beside its arm rather than along it. Dots are as large as leaves room for all.
std::vector<Dot> DotsOf(const Wheel &wheel, const ShownHarmony &harmony)
{
  const auto count = static_cast<double>(harmony.colours.size());
  const double size = wheel.radius * std::min(0.085, 0.42 / std::sqrt(count));
  std::vector<Dot> dots;
  for (const HarmonyColour &colour : harmony.colours) {
    const Point place = wheel.PlaceOf(colour.place.hue, colour.place.saturation);
    Dot dot = {place, dots.empty() ? size * 1.25 : size}; // the base is larger
    const auto isFree = [&] {
      const auto isApart = [&](const Dot &other) {
        return std::hypot(dot.at.x - other.at.x, dot.at.y - other.at.y) >= kHalo * (dot.radius + other.radius);
      };
      const double fromCentre = std::hypot(dot.at.x - wheel.centre.x, dot.at.y - wheel.centre.y);
      return fromCentre + kHalo * dot.radius <= wheel.Inner() && std::all_of(dots.begin(), dots.end(), isApart);
    };
    constexpr int kDirections = 24;
    for (int step = 0; step < 10 * kDirections * static_cast<int>(1 + std::sqrt(count)) && !isFree(); ++step) {
      // Round and round the place, ever wider; each round begins at right angles to the arm, by turns on either side.
      const int turn = step % kDirections;
      const double aside = (turn % 2 == 0 ? 90.0 : -90.0) + (turn / 2) * 360.0 / kDirections;
      const Wheel round = {place, 0.0};
      dot.at = round.At(colour.place.hue + aside, size * 0.25 * (1 + step / kDirections));
    }
    dots.push_back(dot);
  }
  return dots;
}

std::string DrawnWheel(const Wheel &wheel, const ShownHarmony &harmony)
{
  std::string drawing = WheelGround(wheel) + WheelArms(wheel, harmony.arms);
  const std::vector<Dot> dots = DotsOf(wheel, harmony);
  for (std::size_t i = harmony.colours.size(); i-- > 0;) { // the base lies on top
    const Dot &dot = dots[i];
    const COLORREF screen = harmony.colours[i].screen;
    drawing += Circle(dot.at, dot.radius * kHalo - 0.12, "rim") +
               Circle(dot.at, dot.radius * 0.94, "dot", HexOf(screen)) +
               Mark(dot.at, dot.radius * (i < 99 ? 1.05 : 0.85), screen, std::to_string(i + 1));
  }
  return drawing;
}

std::string Page(double height, const std::string &title, const std::string &content)
{
  return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"210mm\" height=\"" + Number(height) +
         "mm\" viewBox=\"0 0 210 " + Number(height) + "\" role=\"img\">\n<title>" + Escaped(title) + "</title>\n" +
         std::string(kStyle) + Rectangle(0, 0, kPage, height, "ground") + content + "</svg>\n";
}

/// The wheel on the left, a row for each colour on the right.
std::string PageOfOne(const ShownHarmony &harmony, const std::string &base)
{
  constexpr double kTop = 26.0;
  constexpr double kRadius = 46.0;
  constexpr double kRows = 124.0;
  const double pitch = std::clamp(2 * kRadius / static_cast<double>(harmony.colours.size()), 9.0, 18.0);
  const double list = pitch * static_cast<double>(harmony.colours.size());
  const double height = kTop + std::max(2 * kRadius, list) + 14.0;
  const Wheel wheel = {{kLeft + kRadius + 4, kTop + kRadius + 2}, kRadius};

  std::string content = Text(kLeft, 16, "title", std::string(harmony.words->title) + " of " + base);
  for (int hue = 0; hue < 360; hue += 30) {
    const Point at = wheel.At(hue, kRadius + 3.2);
    content += Text(at.x, at.y + 0.9, "tick", std::to_string(hue) + "\u00B0");
  }
  content += DrawnWheel(wheel, harmony);
  const double first = kTop + 2 + std::max(0.0, kRadius - list / 2);
  for (std::size_t i = 0; i < harmony.colours.size(); ++i) {
    const HarmonyColour &colour = harmony.colours[i];
    const double top = first + pitch * static_cast<double>(i);
    content += Box(kRows, top, 20, pitch - 2, HexOf(colour.screen)) +
               Mark({kRows + 10, top + pitch / 2 - 1}, 3.4, colour.screen, std::to_string(i + 1)) +
               Text(kRows + 24, top + pitch / 2 - 1.4, "value", ZelClr::TextFromColorSpec(colour.colour)) +
               Text(kRows + 24, top + pitch / 2 + 2.6, "label",
                    HexOf(colour.screen) + " \u00B7 " + std::to_string(ZelClr::WithinTurn(colour.place.hue)) +
                      "\u00B0 on the wheel");
  }
  return Page(height, std::string(harmony.words->title) + " of " + base, content);
}

/// The colours of a harmony in rows of so many at the most.
struct Swatches
{
  static constexpr std::size_t kMostAcross = 8;
  static constexpr double kHeight = 10.0; // of a row, with the gap below

  explicit Swatches(const ShownHarmony &harmony)
    : rows((harmony.colours.size() + kMostAcross - 1) / kMostAcross),
      across((harmony.colours.size() + rows - 1) / rows)
  {}
  double Height() const { return kHeight * static_cast<double>(rows) + 4.0; } // with the values of a single row

  std::size_t rows;
  std::size_t across;
};

std::string DrawnSwatches(const ShownHarmony &harmony, double left, double top, double width)
{
  const Swatches swatches(harmony);
  const double pitch = width / static_cast<double>(swatches.across);
  std::string drawing;
  for (std::size_t i = 0; i < harmony.colours.size(); ++i) {
    const COLORREF screen = harmony.colours[i].screen;
    const double x = left + pitch * static_cast<double>(i % swatches.across);
    const double y = top + Swatches::kHeight * static_cast<double>(i / swatches.across);
    const double middle = x + (pitch - 1) / 2;
    drawing += Box(x, y, pitch - 1, Swatches::kHeight - 1, HexOf(screen)) +
               Mark({middle, y + (Swatches::kHeight - 1) / 2}, 3, screen, std::to_string(i + 1));
    if (swatches.rows == 1 && pitch > 9.5)
      drawing += Text(middle, y + Swatches::kHeight + 2.6, "hex", HexOf(screen));
  }
  return drawing;
}

/// Three to a row, each with its colours below.
std::string PageOfAll(const std::vector<ShownHarmony> &harmonies, const std::string &base)
{
  constexpr double kTop = 28.0;
  constexpr double kGap = 9.0;
  constexpr std::size_t kAcross = 3;
  constexpr double kWidth = (kRight - kLeft - (kAcross - 1) * kGap) / kAcross;
  constexpr double kRadius = 24.0;
  constexpr double kHead = 9.0 + 2 * kRadius; // with the heading
  std::string content = Text(kLeft, 16, "title", "Harmonies of " + base);
  double top = kTop;
  double below = 0.0; // of this row's swatches
  for (std::size_t i = 0; i < harmonies.size(); ++i) {
    const ShownHarmony &harmony = harmonies[i];
    if (i > 0 && i % kAcross == 0)
      top += kHead + std::exchange(below, 0.0) + 11.0;
    const double left = kLeft + static_cast<double>(i % kAcross) * (kWidth + kGap);
    content += Text(left, top, "heading", harmony.words->title);
    content += DrawnWheel({{left + kWidth / 2, top + 5 + kRadius}, kRadius}, harmony);
    content += DrawnSwatches(harmony, left, top + kHead, kWidth);
    below = std::max(below, Swatches(harmony).Height());
  }
  return Page(top + kHead + below + 11.0, "Harmonies of " + base, content);
}

} // namespace

std::string SvgOfHarmonies(const std::vector<ShownHarmony> &harmonies, const std::string &base)
{
  return harmonies.size() == 1 ? PageOfOne(harmonies.front(), base) : PageOfAll(harmonies, base);
}

} // namespace cli
