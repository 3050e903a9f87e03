// ASE, the swatches that page-layout and drawing programs exchange: RGB, CMYK, Lab and gray in floats, spot colours,
// groups.
// Source of the layout: the format as published by its readers, summed up at
// http://www.selapa.net/swatches/colors/fileformats.php#adobe_ase. All numbers are big-endian.
//
//   "ASEF", version 1.0 (two u16), number of blocks (u32); then each block: type (u16), size of what follows (u32)
//   0xC001 group begins: name     0xC002 group ends
//   0x0001 colour: name, "RGB ", "CMYK", "LAB " or "Gray", its floats, u16: 0 global, 1 spot, 2 process
//   A name: number of UTF-16 units with the NUL behind them (u16), the units, NUL.
//
// Floats are 0 to 1, a* and b* -128 to 128. Gray is 1 for white.
// Threads: plain functions. Errors: see palette_format.h. A component outside of its range, or none, refuses the file;
// so does anything behind the last block. Blocks of other types are skipped, with a note.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesAse(std::string_view bytes);
/// Global colours become plain ones.
ZELCLR_API std::optional<SwatchBook> ReadAse(std::string_view bytes, ReadProblem &problem);
/// Spot colours stay spot colours, with what their full ink looks like; tints of them become process colours. A group
/// without a name holds what belongs to none.
ZELCLR_API std::optional<WrittenPalette> WriteAse(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
