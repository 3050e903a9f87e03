// RGB and HLS: hue in degrees 0 to 359, lightness and saturation 0 to 255, in whole numbers.
// Source of the model: Graphics Standards Planning Committee, Computer Graphics 13(3), 1979; the inverse follows
// Foley, van Dam, Feiner, Hughes, "Computer Graphics: Principles and Practice", 13.3.5.
//
// Threads and errors: plain arithmetic; defined for every argument, meaningful in the stated ranges.
#pragma once

#include "zelclr/convert/formulas/hsb.h"

namespace ZelClr::Formulas {

struct Hls
{
  int hue;
  int lightness;
  int saturation;
};

/// The steps of RGB to HLS for components from 0 to `full`; the saturation is 0 to 255, the lightness on the scale of
/// the components. `quotient` truncates toward zero.
///
///   lightness = (max + min) / 2    saturation = d * 255 / (max + min), above the middle d * 255 / (2 full - max - min)
///   max = red:   hue = (g - b) * 60 / d          largest first where two are equal
///   max = green: hue = (b - r) * 60 / d + 120
///   max = blue:  hue = (r - g) * 60 / d + 240    d = max - min
template <class Divide>
constexpr Hls HlsFromRgbSteps(int red, int green, int blue, int full, Divide quotient)
{
  const int max = std::max(red, std::max(green, blue));
  const int min = std::min(red, std::min(green, blue));
  const int lightness = (max + min) / 2;
  const int spread = max - min;
  const int room = lightness <= full / 2 ? max + min : 2 * full - max - min;
  const bool isRed = red == max;
  const bool isGreen = green == max;
  const int difference = isRed ? green - blue : isGreen ? blue - red : red - green;
  const int offset = isRed ? 0 : isGreen ? 120 : 240;
  const int hue = quotient(difference * 60, spread == 0 ? 1 : spread) + offset;
  return {spread == 0 ? 0 : hue < 0 ? hue + 360 : hue, lightness, quotient(spread * 255, room == 0 ? 1 : room)};
}

/// Components 0 to 255.
constexpr Hls HlsFromRgb(int red, int green, int blue)
{
  return HlsFromRgbSteps(red, green, blue, 255, Quotient);
}

/// Components 0 to 65535, lightness and saturation 0 to 255.
///
/// The same steps on the finer scale, the lightness then (max + min) * 255 / 131070, truncated. An RGB48 colour whose
/// components are bytes repeated gives what the bytes give.
constexpr Hls HlsFromRgb48(int red, int green, int blue)
{
  const int max = std::max(red, std::max(green, blue));
  const int min = std::min(red, std::min(green, blue));
  Hls hls = HlsFromRgbSteps(red, green, blue, 65535, [](int n, int d) { return n / d; });
  hls.lightness = (max + min) / 2 / 257;
  return hls;
}

/// The component that a hue gives between m1 and m2: rising over 60 degrees, level for 120, falling over 60. The hue is
/// brought into range by one turn; division truncates toward zero.
constexpr int HlsValue(int m1, int m2, int hue)
{
  const int turned = hue >= 360 ? hue - 360 : hue < 0 ? hue + 360 : hue;
  const int rising = m1 + (m2 - m1) * turned / 60;
  const int falling = m1 + (m2 - m1) * (240 - turned) / 60;
  return turned < 60 ? rising : turned < 180 ? m2 : turned < 240 ? falling : m1;
}

/// Components 0 to 255 * scale.
///
///   m2 = l (s + 1) up to the middle, else l + s - l s     m1 = 2 l - m2     with l, s in 0 to 1
///   without saturation m2 = m1 = l
constexpr Rgb RgbFromHlsSteps(int hue, int lightness, int saturation, int scale)
{
  const int l = lightness * scale;
  const int m2 = lightness <= 127 ? l * (saturation + 255) / 255 : l + saturation * scale - l * saturation / 255;
  const int m1 = 2 * l - m2;
  return {HlsValue(m1, m2, hue + 120), HlsValue(m1, m2, hue), HlsValue(m1, m2, hue - 120)};
}

/// Components 0 to 255. Hue 0 to 359, lightness and saturation 0 to 255.
constexpr Rgb RgbFromHls(int hue, int lightness, int saturation)
{
  return RgbFromHlsSteps(hue, lightness, saturation, 1);
}

/// Components 0 to 65535: the same steps on bytes repeated in both halves of 16 bits.
constexpr Rgb Rgb48FromHls(int hue, int lightness, int saturation)
{
  return RgbFromHlsSteps(hue, lightness, saturation, 257);
}

} // namespace ZelClr::Formulas
