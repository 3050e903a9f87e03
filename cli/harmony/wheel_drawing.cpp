#include "cli/harmony/wheel_drawing.h"

#include "cli/output.h"
#include "cli/profile/svg.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/formulas/hsb.h"
#include "zelclr/harmony/wheel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

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
.dot { stroke: #fff; stroke-width: .7 } .rim { fill: none; stroke: #1d1d1f; stroke-width: .25 }
.mark { text-anchor: middle; font-weight: 600 } .dark { fill: #1d1d1f } .light { fill: #fff }
.swatch { stroke: #1d1d1f; stroke-opacity: .12; stroke-width: .2 }
</style>
)";

struct Point
{
  double x;
  double y;
};

/// Red is at the top; hues go round with the clock.
struct Wheel
{
  Point centre;
  double radius; ///< of the ring's outer edge

  double Inner() const { return radius * 0.84; }
  /// Where a full saturation is.
  double Reach() const { return radius * 0.74; }
  Point At(double degrees, double distance) const
  {
    const double angle = degrees * std::numbers::pi / 180.0;
    return {centre.x + distance * std::sin(angle), centre.y - distance * std::cos(angle)};
  }
};

std::string Pair(const Point &point)
{
  return Number(point.x) + " " + Number(point.y);
}

std::string Circle(const Point &centre, double radius, std::string_view style, const std::string &fill = {})
{
  return "<circle cx=\"" + Number(centre.x) + "\" cy=\"" + Number(centre.y) + "\" r=\"" + Number(radius) +
         "\" class=\"" + std::string(style) + "\"" + (fill.empty() ? "" : " fill=\"" + fill + "\"") + "/>\n";
}

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

std::string HexOfWheel(int degrees)
{
  const auto rgb = ZelClr::Formulas::RgbFromHsb(ZelClr::HsbHueFromWheel(ZelClr::WithinTurn(degrees)), 255, 255);
  return HexOf(static_cast<COLORREF>(rgb.red) | static_cast<COLORREF>(rgb.green) << 8 |
               static_cast<COLORREF>(rgb.blue) << 16);
}

/// The hues, each segment reaching a little into the next so that no seam shows.
std::string Ring(const Wheel &wheel)
{
  constexpr int kStep = 3;
  std::string ring;
  for (int hue = 0; hue < 360; hue += kStep) {
    const double from = hue - kStep / 2.0;
    const double to = from + kStep + (hue + kStep < 360 ? 0.5 : 0.0);
    ring += "<path d=\"M" + Pair(wheel.At(from, wheel.radius)) + "A" + Number(wheel.radius) + " " +
            Number(wheel.radius) + " 0 0 1 " + Pair(wheel.At(to, wheel.radius)) + "L" +
            Pair(wheel.At(to, wheel.Inner())) + "A" + Number(wheel.Inner()) + " " + Number(wheel.Inner()) + " 0 0 0 " +
            Pair(wheel.At(from, wheel.Inner())) + "Z\" fill=\"" + HexOfWheel(hue) + "\"/>\n";
  }
  return ring;
}

/// At hue and saturation; what would lie on a dot before it, as shades do, moves aside, to the right and to the left of
/// its arm by turns.
std::vector<Point> DotsOf(const Wheel &wheel, const ShownHarmony &harmony, double size)
{
  constexpr int kMostSteps = 12;
  std::vector<Point> dots;
  for (const HarmonyColour &colour : harmony.colours) {
    const double angle = colour.place.hue * std::numbers::pi / 180.0;
    const Point on = wheel.At(colour.place.hue, wheel.Reach() * colour.place.saturation / 255.0);
    Point at = on;
    const auto isCovered = [&](const Point &other) { return std::hypot(at.x - other.x, at.y - other.y) < 1.6 * size; };
    for (int step = 1; step <= kMostSteps && std::any_of(dots.begin(), dots.end(), isCovered); ++step) {
      const double aside = (step % 2 == 1 ? 1.0 : -1.0) * static_cast<double>((step + 1) / 2) * 2.1 * size;
      at = {on.x + aside * std::cos(angle), on.y + aside * std::sin(angle)};
    }
    dots.push_back(at);
  }
  return dots;
}

std::string DrawnWheel(const Wheel &wheel, const ShownHarmony &harmony)
{
  std::string drawing = Ring(wheel);
  for (const double part : {0.25, 0.5, 0.75, 1.0})
    drawing += Circle(wheel.centre, wheel.Reach() * part, "grid");
  for (std::size_t i = harmony.arms.size(); i-- > 0;) {
    const Point end = wheel.At(harmony.arms[i], wheel.Inner());
    drawing += Line(wheel.centre.x, wheel.centre.y, end.x, end.y, i == 0 ? "arm base" : "arm");
  }
  const double size = wheel.radius * 0.085;
  const std::vector<Point> dots = DotsOf(wheel, harmony, size);
  for (std::size_t i = harmony.colours.size(); i-- > 0;) { // the base lies on top
    const double radius = i == 0 ? size * 1.25 : size;
    const COLORREF screen = harmony.colours[i].screen;
    drawing += Circle(dots[i], radius, "dot", HexOf(screen)) + Circle(dots[i], radius + 0.35, "rim") +
               Mark(dots[i], radius * 1.05, screen, std::to_string(i + 1));
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

/// Three to a row, each with its colours below.
std::string PageOfAll(const std::vector<ShownHarmony> &harmonies, const std::string &base)
{
  constexpr double kTop = 28.0;
  constexpr double kGap = 9.0;
  constexpr std::size_t kAcross = 3;
  constexpr double kWidth = (kRight - kLeft - (kAcross - 1) * kGap) / kAcross;
  constexpr double kRadius = 24.0;
  constexpr double kPitch = 2 * kRadius + 34.0;
  const std::size_t rows = (harmonies.size() + kAcross - 1) / kAcross;
  std::string content = Text(kLeft, 16, "title", "Harmonies of " + base);
  for (std::size_t i = 0; i < harmonies.size(); ++i) {
    const ShownHarmony &harmony = harmonies[i];
    const double left = kLeft + static_cast<double>(i % kAcross) * (kWidth + kGap);
    const double top = kTop + static_cast<double>(i / kAcross) * kPitch;
    content += Text(left, top, "heading", harmony.words->title);
    content += DrawnWheel({{left + kWidth / 2, top + 5 + kRadius}, kRadius}, harmony);
    const double bottom = top + 9 + 2 * kRadius;
    const double width = kWidth / static_cast<double>(harmony.colours.size());
    for (std::size_t j = 0; j < harmony.colours.size(); ++j) {
      const HarmonyColour &colour = harmony.colours[j];
      const double x = left + width * static_cast<double>(j);
      content += Box(x, bottom, width - 1, 9, HexOf(colour.screen)) +
                 Mark({x + (width - 1) / 2, bottom + 4.5}, 3, colour.screen, std::to_string(j + 1));
      if (width > 9.5)
        content += Text(x + (width - 1) / 2, bottom + 12.6, "hex", HexOf(colour.screen));
    }
  }
  return Page(kTop + kPitch * static_cast<double>(rows), "Harmonies of " + base, content);
}

} // namespace

std::string SvgOfHarmonies(const std::vector<ShownHarmony> &harmonies, const std::string &base)
{
  return harmonies.size() == 1 ? PageOfOne(harmonies.front(), base) : PageOfAll(harmonies, base);
}

} // namespace cli
