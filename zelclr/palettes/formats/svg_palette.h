// A sheet of swatches as a drawing: each a field of its colour with its name below, in rows, under the names of groups.
// Source: W3C, Scalable Vector Graphics (SVG) 1.1 (Second Edition).
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

/// RGB255 colours. As many in a row as the book says, at most 32; eight where it does not. A name that is too long for
/// its field is cut short below it; the whole name is the field's title, which pointers show and readers of screens
/// speak. Fonts are those of the viewer.
ZELCLR_API std::optional<WrittenPalette> WriteSvg(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
