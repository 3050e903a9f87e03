// ACB, the colour books of image editors: the inks of a maker in RGB, CMYK or Lab. Read only.
// Source: A. Goral, "Adobe Photoshop Color Book File Format Specification". All numbers are big-endian.
//
//   "8BCB", version 1 (u16), identifier (u16); texts: title, prefix, suffix, description; number of colours, colours on
//   a page, the colour that stands for a page, space: 0 RGB, 2 CMYK, 7 Lab (u16 each)
//   then each colour: its name (a text), its code (6 bytes), its components (a byte each): RGB; CMYK, 255 for paper;
//   Lab: L* of 0 to 255, a* + 128, b* + 128
//   then, in later books, "spflspot" or "spflproc"
//   A text: number of UTF-16 units (u32), the units. "$$$/key=text" is a text that may be translated; "^R" and "^C" in
//   it are the signs for a registered mark and for copyright.
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesAcb(std::string_view bytes);
/// Names have the prefix before and the suffix behind them; a page is a row. Colours without a name only fill a page
/// and are left out. The inks of a book that does not say what they are are spot colours when it is in Lab. Codes and
/// identifier are the picker's own and not kept.
ZELCLR_API std::optional<SwatchBook> ReadAcb(std::string_view bytes, ReadProblem &problem);

} // namespace ZelClr
