// RIFF PAL, the palettes of the multimedia interface of Windows: RGB colours without names.
// Source: Multimedia Programming Interface and Data Specifications 1.0, "Palette file format"; LOGPALETTE and
// PALETTEENTRY of the Windows API. All numbers are little-endian.
//
//   "RIFF", size of what follows (u32), "PAL "; then chunks: name, size (u32), data, a byte of padding when it is odd
//   "data": version 0x0300 (u16), number of colours (u16), then for each red, green, blue, flags (a byte each)
//
// Threads: plain functions. Errors: see palette_format.h. Other chunks are skipped; bytes behind the RIFF are ignored,
// as the sizes in it say where it ends. A colour that is but an index of the hardware (flag 2) refuses the file.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesRiff(std::string_view bytes);
ZELCLR_API std::optional<SwatchBook> ReadRiff(std::string_view bytes, ReadProblem &problem);
/// At most 65,535 colours.
ZELCLR_API std::optional<WrittenPalette> WriteRiff(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
