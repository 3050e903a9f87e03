// RGB, CMY and CMYK by formula: no profile, no press. All components 0 to 255.
// Source: the complement model with full gray component replacement, PostScript Language Reference, 3rd ed., 7.2.3.
//
// Threads and errors: plain arithmetic.
#pragma once

#include "zelclr/convert/formulas/hsb.h"

namespace ZelClr::Formulas {

struct Cmyk
{
  int cyan;
  int magenta;
  int yellow;
  int black;
};

/// What ink and black leave of the paper's light: (255 - ink) * (255 - black) / 255, truncated.
constexpr int LightThroughInks(int ink, int black)
{
  return (255 - ink) * (255 - black) / 255;
}

constexpr Rgb RgbFromCmyk(int cyan, int magenta, int yellow, int black)
{
  return {LightThroughInks(cyan, black), LightThroughInks(magenta, black), LightThroughInks(yellow, black)};
}

/// The gray part of the three inks goes to black, all of it:
///
///   k = min(1 - r, 1 - g, 1 - b)    c = 1 - r - k    m = 1 - g - k    y = 1 - b - k
constexpr Cmyk CmykFromRgb(int red, int green, int blue)
{
  const int white = std::max(red, std::max(green, blue));
  return {white - red, white - green, white - blue, 255 - white};
}

/// Six inks as four: orange acts as all of it yellow and half of it magenta, green as all of it cyan and yellow; an ink
/// above 255 in sum counts as 255. An approximation of ours; a profile knows better.
constexpr Cmyk CmykFromHexachrome(int cyan, int magenta, int yellow, int black, int orange, int green)
{
  return {std::min(cyan + green, 255), std::min(magenta + orange / 2, 255), std::min(yellow + orange + green, 255),
          black};
}

} // namespace ZelClr::Formulas
