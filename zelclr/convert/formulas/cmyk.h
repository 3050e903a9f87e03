// RGB, CMY and CMYK by formula: no profile, no press. All components 0 to 255.
// Source: the complement model with undercolour removal and full black generation, PostScript Language Reference, 3rd
// ed., 7.2.3.
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

/// The inverse of RgbFromCmyk, exact for every byte: the gray part of the three inks goes to black, all of it, and the
/// inks are scaled to what black leaves of the light.
///
///   w = max(r, g, b)    K = 255 - w    C = 255 - ceil(255 r / w), and so M and Y; black alone where w = 0
constexpr Cmyk CmykFromRgb(int red, int green, int blue)
{
  const int white = std::max(red, std::max(green, blue));
  const int divisor = white == 0 ? 1 : white;
  const int whole = white == 0 ? 255 * divisor : 0; // makes every ratio 255 where nothing is to be divided
  const auto ink = [=](int light) { return 255 - Quotient(255 * light + whole + divisor - 1, divisor); };
  return {ink(red), ink(green), ink(blue), 255 - white};
}

/// CMYK without scaling, where black is simply added to each ink: the gray part of the inks goes to black, all of it.
/// RgbFromAddedInks is its inverse; RgbFromCmyk is not.
///
///   k = min(1 - r, 1 - g, 1 - b)    c = 1 - r - k    m = 1 - g - k    y = 1 - b - k
constexpr Cmyk AddedInksFromRgb(int red, int green, int blue)
{
  const int white = std::max(red, std::max(green, blue));
  return {white - red, white - green, white - blue, 255 - white};
}

///   r = 1 - min(1, c + k)    g = 1 - min(1, m + k)    b = 1 - min(1, y + k)
constexpr Rgb RgbFromAddedInks(int cyan, int magenta, int yellow, int black)
{
  return {255 - std::min(255, cyan + black), 255 - std::min(255, magenta + black), 255 - std::min(255, yellow + black)};
}

/// Six inks as four: orange acts as all of it yellow and half of it magenta, green as all of it cyan and yellow; an ink
/// above 255 in sum counts as 255. An approximation of ours; a profile knows better.
constexpr Cmyk CmykFromHexachrome(int cyan, int magenta, int yellow, int black, int orange, int green)
{
  return {std::min(cyan + green, 255), std::min(magenta + orange / 2, 255), std::min(yellow + orange + green, 255),
          black};
}

} // namespace ZelClr::Formulas
