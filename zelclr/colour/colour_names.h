// The colour names that web pages and drawings use.
// Source: Scalable Vector Graphics (SVG) 1.1, section 4.4, "Recognized color keyword names"; sRGB values.
//
// Threads: constant tables. Errors: an unknown name gives an empty optional.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <optional>
#include <span>
#include <string_view>

namespace ZelClr {

struct NamedRgb
{
  std::string_view name; ///< lower case
  std::uint32_t rgb;     ///< 0xRRGGBB

  CLR_COLORSPEC Colour() const
  {
    return CLR_COLORSPEC::MakeRGB(static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                                  static_cast<std::uint8_t>(rgb));
  }
};

/// All 147, sorted by name; gray is spelled both ways.
ZELCLR_API std::span<const NamedRgb> SvgColourNames();

/// The RGB255 colour of a name, upper or lower case.
ZELCLR_API std::optional<CLR_COLORSPEC> ColorSpecFromName(std::string_view name);

} // namespace ZelClr
