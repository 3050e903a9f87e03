// PAL as text, which programs of JASC began and many games and paint programs read.
// Source: Jasc Software, "Paint Shop Pro Palette File Format"; for a fourth number, the manual of Aseprite, "Palettes".
//
//   JASC-PAL       first line
//   0100           version
//   2              number of colours
//   255 128 0      red, green, blue from 0 to 255; maybe an alpha, which is not kept
//   0 0 0
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesJasc(std::string_view bytes);
/// As many colours as are announced, and nothing but blank lines behind them.
ZELCLR_API std::optional<SwatchBook> ReadJasc(std::string_view bytes, ReadProblem &problem);
/// RGB255 colours without names; lines end with CR LF.
ZELCLR_API std::optional<WrittenPalette> WriteJasc(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
