// ICC profiles of named colours: the inks of a maker with what they look like. Read only.
// Source: ICC.1:2022, clauses 8.9 (NamedColor profile), 10.17 (namedColor2Type); 6.3.4.2 (Lab and XYZ in 16 bits; Lab
// in the older encoding, which this type has in every version of the format). All numbers are big-endian.
//
//   tag 'ncl2': flags, number of colours, number of device coordinates (u32 each), prefix, suffix (32 bytes each); then
//   each colour: its name (32 bytes), three connection coordinates and its device coordinates (u16 each)
//   L* = n * 100 / 65280, a* and b* = n / 256 - 128; X, Y, Z = n / 32768
//
// Texts end at their first NUL; they are ASCII, and what is not is read as UTF-8 or, failing that, as Latin-1.
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesIcc(std::string_view bytes);
/// Spot colours in Lab, called prefix, name and suffix; the palette is called as the profile. Device coordinates are
/// left out with a note.
ZELCLR_API std::optional<SwatchBook> ReadIcc(std::string_view bytes, ReadProblem &problem);

} // namespace ZelClr
