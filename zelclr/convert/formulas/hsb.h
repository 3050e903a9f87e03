// RGB and HSB: hue in degrees 0 to 359, saturation and brightness 0 to 255, in fixed point.
// Source of the model: A. R. Smith, "Color Gamut Transform Pairs", SIGGRAPH 1978 (there HSV).
//
// Threads and errors: plain arithmetic; defined for every argument, meaningful in the stated ranges.
#pragma once

#include "zelclr/convert/formulas/quotient.h"

#include <algorithm>
#include <cstdint>

namespace ZelClr::Formulas {

struct Hsb
{
  int hue;
  int saturation;
  int brightness;
};

struct Rgb
{
  int red;
  int green;
  int blue;
};

/// The sector of the hue, in which one component is the largest: hue = (ratio1 - ratio2 + offset) * 60, where a ratio
/// is the distance of a component from the largest over the spread of all three, in 65536ths.
///
///   max = red:   hue = (max - b)/d - (max - g)/d          largest first where two are equal
///   max = green: hue = (max - r)/d - (max - b)/d + 2
///   max = blue:  hue = (max - g)/d - (max - r)/d + 4      d = max - min
template <class Ratio>
constexpr int HueFromRgb(int red, int green, int blue, int max, Ratio ratio)
{
  const bool isRed = red == max;
  const bool isGreen = green == max;
  const int ahead = max - (isRed ? blue : isGreen ? red : green);
  const int behind = max - (isRed ? green : isGreen ? blue : red);
  const int offset = isRed ? 0 : isGreen ? 2 * 65536 : 4 * 65536;
  const int hue = ((ratio(ahead) - ratio(behind) + offset) * 60 + 32768) >> 16;
  return hue < 0 ? hue + 360 : hue;
}

/// Components 0 to 255.
///
///   brightness = max     saturation = (max - min) * 255 / max     hue = 0 where the saturation is 0
constexpr Hsb HsbFromRgb(int red, int green, int blue)
{
  const int max = std::max(red, std::max(green, blue));
  const int min = std::min(red, std::min(green, blue));
  const int spread = max - min;
  const int divisor = spread == 0 ? 1 : spread; // of gray: every ratio is 0
  const int hue = HueFromRgb(red, green, blue, max, [=](int distance) {
    return static_cast<int>(static_cast<float>(distance) * 65536.0f / static_cast<float>(divisor)); // as Quotient
  });
  return {hue, Quotient(spread * 255, max == 0 ? 1 : max), max};
}

/// Components 0 to 65535, saturation and brightness 0 to 255.
///
/// The same steps on the finer scale: hue and saturation are ratios and need no scaling, the brightness is max * 255 /
/// 65535 rounded. An RGB48 colour whose components are bytes repeated gives what the bytes give.
constexpr Hsb HsbFromRgb48(int red, int green, int blue)
{
  const int max = std::max(red, std::max(green, blue));
  const int min = std::min(red, std::min(green, blue));
  const int spread = max - min;
  const int divisor = spread == 0 ? 1 : spread;
  const int hue =
    HueFromRgb(red, green, blue, max, [=](int distance) { return WideQuotient(65536.0 * distance, divisor); });
  const int saturation = WideQuotient(255.0 * spread, max == 0 ? 1 : max);
  return {saturation == 0 ? 0 : hue, saturation, (max * 255 + 32767) / 65535};
}

/// The hue brought into 0 to 359 by whole turns.
constexpr int TurnedHue(int hue)
{
  const int rest = hue % 360;
  return rest < 0 ? rest + 360 : rest;
}

/// The steps of HSB to RGB for a brightness V on any scale up to 65535. Wide holds V * 65536.
///
///   s = saturation / 255    f = hue within its sector of 60 degrees    in 65536ths
///   p = V(1 - s)    q = V(1 - s f)    t = V(1 - s(1 - f))
///
///   sector      0          1          2          3          4          5
///   r, g, b     V, t, p    q, V, p    p, V, t    p, q, V    t, p, V    V, p, q
///
/// An even sector has a t and an odd one a q; without saturation all are V.
template <class Wide>
constexpr Rgb RgbFromHsbSteps(int hue, int saturation, int brightness)
{
  const auto shaded = [=](int factor) {
    return static_cast<int>((static_cast<Wide>(factor) * static_cast<Wide>(brightness) + 32768) >> 16);
  };
  const int sector = hue / 60;
  const int s = saturation * 65536 / 255;
  const int f = (hue - sector * 60) * 65536 / 60;
  const int slope = Choose(sector % 2 != 0, f, 65536 - f);
  const int v = brightness;
  const int p = shaded(65536 - s);
  const int qt = shaded(65536 - ((slope / 2) * (s / 2) >> 14));
  const bool redIsHighest = static_cast<unsigned>(hue - 60) >= 240u;
  const int highest = (sector + 1) / 2; // whose V: 1 green, 2 blue
  const int lowest = sector / 2;        // whose p: 0 blue, 1 red, 2 green
  return {Choose(redIsHighest, v, Choose(lowest == 1, p, qt)), Choose(highest == 1, v, Choose(lowest == 2, p, qt)),
          Choose(highest == 2, v, Choose(lowest == 0, p, qt))};
}

/// Components 0 to 255. Hue 0 to 359, saturation and brightness 0 to 255.
constexpr Rgb RgbFromHsb(int hue, int saturation, int brightness)
{
  return RgbFromHsbSteps<int>(hue, saturation, brightness);
}

/// Components 0 to 65535: the same steps on the brightness repeated in both halves of 16 bits.
constexpr Rgb Rgb48FromHsb(int hue, int saturation, int brightness)
{
  return RgbFromHsbSteps<std::int64_t>(hue, saturation, brightness * 257);
}

} // namespace ZelClr::Formulas
