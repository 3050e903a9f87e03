// ACT, the colour table of indexed images: 256 RGB colours without names.
// Source: Adobe Photoshop File Formats Specification, "Color table".
//
//   256 times red, green, blue (a byte each); then, not always, the number of colours that count (u16, big-endian; 0
//   means all) and the index of the transparent one (u16; 0xFFFF for none)
//
// Threads: plain functions. Errors: see palette_format.h. A file is 768 or 772 bytes, and has no other signature.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

/// By the exact size; text of that size is no ACT.
ZELCLR_API bool RecognisesAct(std::string_view bytes);
ZELCLR_API std::optional<SwatchBook> ReadAct(std::string_view bytes, ReadProblem &problem);
/// At most 256 colours; 768 bytes of all 256 unless they would pass for text, else 772.
ZELCLR_API std::optional<WrittenPalette> WriteAct(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
