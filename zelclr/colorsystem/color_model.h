// The models of managed colours and the rendering intents, with the names that settings files use.
//
// Threads and errors: plain functions on constant tables; what is not in a table gives an empty result.
#pragma once

#include "zelclr/platform/export.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace ColorSystem {

/// Frozen: settings files hold the names, callers the numbers.
enum class ColorModel : std::uint32_t
{
  Rgb = 0,
  Cmyk = 1,
  Grayscale = 2,
  Lab = 3,
  Cmy = 4,
  Hls = 5,
  Hsv = 6,
  Hexachrome = 7,
  Spot = 8,
  Indexed = 9,
  Registration = 10,
  Xyz = 12 ///< inside the library only: no name, no profile of its own
};

/// The intents of the ICC in its order: ICC.1:2022, 7.2.15. Frozen.
enum class RenderingIntent : std::uint32_t
{
  Perceptual = 0,
  RelativeColorimetric = 1,
  Saturation = 2,
  AbsoluteColorimetric = 3
};

/// "Rgb"; empty for a number that has none.
ZELCLR_API std::string_view NameOfColorModel(ColorModel model);
ZELCLR_API std::optional<ColorModel> ColorModelFromName(std::string_view name);
/// The channels of a colour: 3, 4, 6 or 1; `beyond` for a number above those of the named models.
ZELCLR_API unsigned ChannelCountOfColorModel(ColorModel model, unsigned beyond);
/// The model of a profile by the colour space in its header.
ZELCLR_API std::optional<ColorModel> ColorModelFromIccSignature(std::uint32_t signature);

/// "Perceptual"; empty for a number beyond 3.
ZELCLR_API std::string_view NameOfRenderingIntent(RenderingIntent intent);
ZELCLR_API std::optional<RenderingIntent> RenderingIntentFromName(std::string_view name);

} // namespace ColorSystem
