#include "cli/harmony/wheel.h"

#include "cli/harmony/harmonies.h"
#include "cli/profile/svg.h"
#include "zelclr/convert/formulas/hsb.h"
#include "zelclr/harmony/wheel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cli {

using namespace svg;

namespace {

std::string Pair(const Point &point)
{
  return Number(point.x) + " " + Number(point.y);
}

std::string HexOfWheel(int degrees)
{
  const auto rgb = ZelClr::Formulas::RgbFromHsb(ZelClr::HsbHueFromWheel(ZelClr::WithinTurn(degrees)), 255, 255);
  return HexOf(static_cast<COLORREF>(rgb.red) | static_cast<COLORREF>(rgb.green) << 8 |
               static_cast<COLORREF>(rgb.blue) << 16);
}

std::string Arc(double radius, int sweep, const Point &end)
{
  return "A" + Number(radius) + " " + Number(radius) + " 0 0 " + std::to_string(sweep) + " " + Pair(end);
}

} // namespace

Point Wheel::At(double degrees, double distance) const
{
  const double angle = degrees * std::numbers::pi / 180.0;
  return {centre.x + distance * std::sin(angle), centre.y - distance * std::cos(angle)};
}

Point Wheel::PlaceOf(double degrees, int saturation) const
{
  return At(degrees, Reach() * std::clamp(saturation, 0, 255) / 255.0);
}

std::string Circle(const Point &centre, double radius, std::string_view style, const std::string &fill)
{
  return "<circle cx=\"" + Number(centre.x) + "\" cy=\"" + Number(centre.y) + "\" r=\"" + Number(radius) +
         "\" class=\"" + std::string(style) + "\"" + (fill.empty() ? "" : " fill=\"" + fill + "\"") + "/>\n";
}

std::string WheelGround(const Wheel &wheel)
{
  constexpr int kStep = 3;
  std::string ground;
  for (int hue = 0; hue < 360; hue += kStep) {
    // Each segment reaches a little into the next, so that no seam shows.
    const double from = hue - kStep / 2.0;
    const double to = from + kStep + (hue + kStep < 360 ? 0.5 : 0.0);
    ground += "<path d=\"M" + Pair(wheel.At(from, wheel.radius)) + Arc(wheel.radius, 1, wheel.At(to, wheel.radius)) +
              "L" + Pair(wheel.At(to, wheel.Inner())) + Arc(wheel.Inner(), 0, wheel.At(from, wheel.Inner())) +
              "Z\" fill=\"" + HexOfWheel(hue) + "\"/>\n";
  }
  for (const double part : {0.25, 0.5, 0.75, 1.0})
    ground += Circle(wheel.centre, wheel.Reach() * part, "grid");
  return ground;
}

std::string WheelArms(const Wheel &wheel, const std::vector<int> &arms)
{
  std::string lines;
  for (std::size_t i = arms.size(); i-- > 0;) {
    const Point end = wheel.At(arms[i], wheel.Inner());
    lines += Line(wheel.centre.x, wheel.centre.y, end.x, end.y, i == 0 ? "arm base" : "arm");
  }
  return lines;
}

} // namespace cli
