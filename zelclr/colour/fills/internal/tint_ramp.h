// A colour for each gray: what the kinds of tints that look at grays alone lead to.
//
// Threads: values. Errors: none.
#pragma once

#include "zelclr/colour/fills/clr_fountcolor.h"
#include "zelclr/convert/formulas.h"

#include <array>
#include <memory>

namespace ZelClr {

struct TintRamp
{
  /// For the grays of 0 to 255: 0x00RRGGBB.
  std::array<std::uint32_t, 256> colours;

  static constexpr std::uint32_t Packed(const Formulas::Rgb &rgb)
  {
    return static_cast<std::uint32_t>(rgb.red << 16 | rgb.green << 8 | rgb.blue);
  }
  static constexpr Formulas::Rgb Unpacked(std::uint32_t packed)
  {
    return {static_cast<int>(packed >> 16 & 0xFF), static_cast<int>(packed >> 8 & 0xFF),
            static_cast<int>(packed & 0xFF)};
  }
};

/// From black through the colour, at its own gray, to white: every gray gets its lightness back.
std::shared_ptr<const TintRamp> ToneRamp(const Formulas::Rgb &colour);
/// From one colour, for black, to another, for white, as a fountain fill blends them.
std::shared_ptr<const TintRamp> BlendRamp(const Formulas::Rgb &black, const Formulas::Rgb &white, ClrBlendMode mode);

} // namespace ZelClr
