// The way from one RGB colour to another round the wheel of hues, in real numbers.
//
// Hue, saturation and brightness as in convert/formulas/hsb.h, but 0 to 6 for the hue (red 0, yellow 1, green 2) and 0
// to 1 for the others. A colour that is neutral to the eye has no hue of its own and takes the other's; black has no
// saturation, either. So white, gray and black blend as straight as they do component by component.
//
// Threads and errors: plain arithmetic.
#pragma once

#include "zelclr/convert/formulas/yiq.h"

#include <algorithm>
#include <cmath>

namespace ZelClr {

using Formulas::RealRgb;

struct RealHsb
{
  double hue;
  double saturation;
  double brightness;
};

/// Components of 0 to 1.
inline RealHsb HsbOf(const RealRgb &rgb)
{
  const double most = std::max({rgb.red, rgb.green, rgb.blue});
  const double chroma = most - std::min({rgb.red, rgb.green, rgb.blue});
  if (chroma <= 0.0)
    return {0.0, 0.0, most};
  const double hue = most == rgb.red     ? (rgb.green - rgb.blue) / chroma
                     : most == rgb.green ? (rgb.blue - rgb.red) / chroma + 2.0
                                         : (rgb.red - rgb.green) / chroma + 4.0;
  return {hue < 0.0 ? hue + 6.0 : hue, chroma / most, most};
}

/// Any hue.
inline RealRgb RgbOf(const RealHsb &hsb)
{
  // From the brightest component down to the lack of each: f(5), f(3), f(1) of the usual closed form.
  const auto component = [&hsb](double offset) {
    const double turned = offset + hsb.hue;
    const double k = turned - 6.0 * std::floor(turned / 6.0);
    return hsb.brightness * (1.0 - hsb.saturation * std::clamp(std::min(k, 4.0 - k), 0.0, 1.0));
  };
  return {component(5.0), component(3.0), component(1.0)};
}

class HueBlend
{
public:
  HueBlend(const RealRgb &from, const RealRgb &to, bool back) : from_(HsbOf(from)), to_(HsbOf(to))
  {
    // Less is neutral to the eye, or dark: also the gray and the black of presses, seen on screen.
    constexpr double kNone = 0.03;
    const auto isNeutral = [](const RealHsb &hsb) { return hsb.saturation * hsb.brightness <= kNone; };
    const auto borrow = [&](RealHsb &hsb, const RealHsb &other) {
      hsb.hue = other.hue;
      hsb.saturation = hsb.brightness <= kNone ? other.saturation : 0.0;
    };
    const bool fromNeutral = isNeutral(from_), toNeutral = isNeutral(to_);
    if (fromNeutral)
      borrow(from_, toNeutral ? RealHsb{0.0, 0.0, 0.0} : to_);
    if (toNeutral)
      borrow(to_, from_);
    // Half a degree either way is one hue: shades of it do not go once round.
    constexpr double kSame = 0.5 / 60.0;
    const double rise = to_.hue - from_.hue;
    turn_ = std::remainder(rise, 6.0);
    if (std::abs(turn_) > kSame)
      turn_ = back ? (rise > 0.0 ? rise - 6.0 : rise) : (rise < 0.0 ? rise + 6.0 : rise);
  }

  RealRgb At(double share) const
  {
    const auto between = [share](double a, double b) { return a + share * (b - a); };
    return RgbOf({from_.hue + share * turn_, between(from_.saturation, to_.saturation),
                  between(from_.brightness, to_.brightness)});
  }

private:
  RealHsb from_;
  RealHsb to_;
  double turn_; // of the hue, at most once round
};

} // namespace ZelClr
