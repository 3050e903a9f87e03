// GPL, the text format of palettes that free drawing programs share.
//
//   GIMP Palette          first line
//   Name: Brand           version 2: name and number of columns
//   Columns: 8
//   # a comment
//   255 128   0 Orange    red, green, blue from 0 to 255, then the name
//
// Threads: plain functions. Errors: see palette_reading.h.
#pragma once

#include "zelclr/palettes/formats/palette_reading.h"

namespace ZelClr {

ZELCLR_API bool IsGplPalette(std::string_view bytes);
/// RGB255 colours. The number of columns is checked and not kept.
ZELCLR_API std::optional<ReadPalette> ReadGplPalette(std::string_view bytes, ReadProblem &problem);

} // namespace ZelClr
