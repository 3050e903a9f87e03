// GPL, the text format of palettes that free drawing programs share.
// Source: the manual of the GNU Image Manipulation Program, "Palettes"; for RGBA, the manual of Aseprite, "Palettes".
//
//   GIMP Palette          first line
//   Name: Brand           version 2: name and number of columns
//   Columns: 8
//   Channels: RGBA        with it colours may have an alpha, which is not kept
//   # a comment           before the first colour, the description
//   255 128   0 Orange    red, green, blue from 0 to 255, then the name
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesGpl(std::string_view bytes);
/// UTF-8 with any line end. RGB; columns of 0 to 256. Comments behind the first colour are not kept. Once colours have
/// begun, what looks like a header is a broken colour.
ZELCLR_API std::optional<SwatchBook> ReadGpl(std::string_view bytes, ReadProblem &problem);
/// RGB255 colours with their names, each on one line.
ZELCLR_API std::optional<WrittenPalette> WriteGpl(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
