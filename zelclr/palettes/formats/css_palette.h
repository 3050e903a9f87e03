// CSS custom properties, for style sheets of web pages.
// Source: W3C, CSS Custom Properties for Cascading Variables Module Level 1; CSS Color Module Level 4; CSS Syntax
// Module Level 3, 4.3.11 (names).
//
//   /* Brand */
//   :root {
//     /* Primary */                       a group
//     --house-orange: #ff8000;            RGB of 8 bits; finer or wider ones as color(srgb ...)
//     --sand: lab(70 5 25);               Lab of D50
//   }
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

/// A name is the swatch's in lower case, with a hyphen for each run of characters that names cannot have, "color" where
/// nothing is left, and a number behind it where another swatch has it already.
ZELCLR_API std::optional<WrittenPalette> WriteCss(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
