// ACO, the swatches of image editors: RGB, HSB, CMYK, Lab and gray in 16 bits, with names in its second version.
// Source: Adobe Photoshop File Formats Specification, "Color swatches" and "Color structure"; L. Tesler, "Adobe
// Photoshop 7 Color File Format" (wide CMYK). All numbers are u16, big-endian.
//
//   version (1 or 2), number of colours; then each colour: space, four numbers; in version 2 also a name: number of
//   UTF-16 units with the NUL behind them (u32), the units, NUL
//   space 0 RGB: 0 to 65535          7 Lab: L* 0 to 10000, a* and b* -12800 to 12800 (hundredths)
//         1 HSB: 0 to 65535 each     8 gray: 0 (black) to 10000 (white)
//         2 CMYK: 0 (full) to 65535  9 wide CMYK: 0 (paper) to 10000 (full)
//
// A file is version 1, or version 2, or the same colours in both, one behind the other; then the names count.
// Threads: plain functions. Errors: see palette_format.h. A colour of a colour book (space 3 to 6, 10), which the file
// only points at, refuses the file; so do numbers out of range.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesAco(std::string_view bytes);
/// HSB becomes RGB. What some programs write behind the lists about groups is left out with a note.
ZELCLR_API std::optional<SwatchBook> ReadAco(std::string_view bytes, ReadProblem &problem);
/// Version 1 and version 2, at most 65,535 colours.
ZELCLR_API std::optional<WrittenPalette> WriteAco(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
