// The artist's wheel as a drawing: the ring of its hues, and what lies in it at a hue and a saturation.
//
// Lengths are the picture's own unit. Threads and errors: plain functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

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
  Point At(double degrees, double distance) const;
  /// Of a colour; saturation from 0 to 255.
  Point PlaceOf(double degrees, int saturation) const;
};

/// `style` is a class of the page's style sheet; so are "grid", "arm" and "base" in what follows.
std::string Circle(const Point &centre, double radius, std::string_view style, const std::string &fill = {});
/// The ring of hues, with circles at each quarter of the saturation.
std::string WheelGround(const Wheel &wheel);
/// A line to each arm, in degrees; the first is the base, and lies on top.
std::string WheelArms(const Wheel &wheel, const std::vector<int> &arms);

} // namespace cli
