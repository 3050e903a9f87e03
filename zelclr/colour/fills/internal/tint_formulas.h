// What the kinds of tints do to the three components of a colour, 0 to 255: one small formula each, for single colours
// and for rows. docs/tints.md derives them.
//
// Threads and errors: plain arithmetic.
#pragma once

#include "zelclr/colour/fills/internal/tint_ramp.h"

#include <algorithm>

namespace ZelClr::TintFormulas {

using Formulas::Rgb;

/// How much of the colour itself and how much of another there is, in 256ths: 256 in sum.
struct Shares
{
  int own = 256;
  int other = 0;
};

/// Rounded half up; exactly the one or the other at the ends. Up to 16 bits.
constexpr int Mix(int own, int other, Shares shares)
{
  return (own * shares.own + other * shares.other + 128) >> 8;
}

constexpr Rgb Mix(int red, int green, int blue, const Rgb &other, Shares shares)
{
  return {Mix(red, other.red, shares), Mix(green, other.green, shares), Mix(blue, other.blue, shares)};
}

/// Towards one colour.
struct Mixed
{
  Rgb aim;
  Shares shares;

  constexpr Rgb operator()(int red, int green, int blue) const { return Mix(red, green, blue, aim, shares); }
};

/// All components up or down by the same amount.
struct Shifted
{
  int offset; ///< -255 to 255

  constexpr Rgb operator()(int red, int green, int blue) const { return {At(red), At(green), At(blue)}; }

private:
  constexpr int At(int component) const { return std::clamp(component + offset, 0, 255); }
};

/// Light added (screen) or held back (multiply), each component by itself:
///
///   adds:       255 - (255 - c) (255 - l) / 255
///   otherwise:  c l / 255
struct Lit
{
  Rgb light;
  bool adds;
  Shares shares;

  constexpr Rgb operator()(int red, int green, int blue) const
  {
    return Mix(red, green, blue, {At(red, light.red), At(green, light.green), At(blue, light.blue)}, shares);
  }

private:
  constexpr int At(int component, int lit) const
  {
    const int flip = adds ? 255 : 0; // x ^ 255 is 255 - x
    const int product = (component ^ flip) * (lit ^ flip) + 128;
    return ((product + (product >> 8)) >> 8) ^ flip; // the 255th part, rounded to the nearest
  }
};

/// The negative, or the lightness turned over while hue and chroma stay:
///
///   negative:   full - c
///   otherwise:  c + full - max - min    from full - max to full - min, so that nothing is cut off
struct Inverted
{
  bool keepsHue;
  Shares shares;
  int full = 255;

  constexpr Rgb operator()(int red, int green, int blue) const
  {
    const int most = std::max(red, std::max(green, blue)), least = std::min(red, std::min(green, blue));
    const int shift = full - most - least;
    const auto at = [&](int component) { return Formulas::Choose(keepsHue, component + shift, full - component); };
    return Mix(red, green, blue, {at(red), at(green), at(blue)}, shares);
  }
};

/// Towards the colour that a ramp has for the colour's gray.
struct Ramped
{
  std::shared_ptr<const TintRamp> ramp;
  Shares shares;

  Rgb operator()(int red, int green, int blue) const
  {
    const std::uint32_t aim = ramp->colours[static_cast<std::size_t>(Formulas::GrayFromRgb(red, green, blue))];
    return Mix(red, green, blue, TintRamp::Unpacked(aim), shares);
  }
};

} // namespace ZelClr::TintFormulas
