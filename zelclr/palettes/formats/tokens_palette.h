// Design tokens, the JSON in which design programs and style sheets share colours.
// Source: W3C Design Tokens Community Group, "Design Tokens Format Module" and "Design Tokens Color Module", 2025.
//
//   {
//     "brand": {                                    a group; groups may lie in groups
//       "$type": "color",                           of all tokens below that have none of their own
//       "orange": { "$value": { "colorSpace": "srgb", "components": [1, 0.5, 0], "alpha": 1, "hex": "#ff8000" } },
//       "old": { "$value": "#ff8000" },             earlier drafts: "#rgb", "#rrggbb", "#rrggbbaa"
//       "accent": { "$value": "{brand.orange}" }    an alias
//     }
//   }
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesTokens(std::string_view bytes);
/// The colour spaces of css_colour_spaces.h; the component "none" is 0. A group is called by its path, "brand.dark";
/// its own tokens come before those of the groups in it, and a token "$root" has its group's name. Aliases become the
/// colour that they lead to; those in a ring and those that lead nowhere refuse the file. Tokens of other types are
/// left out and transparency is dropped, with notes.
ZELCLR_API std::optional<SwatchBook> ReadTokens(std::string_view bytes, ReadProblem &problem);
/// RGB as "srgb" with six decimals, beyond 0 to 1 for wide gamuts, and Lab as "lab". Groups are nested at the points of
/// their names. Names lose what tokens cannot have, and become unique within their group.
ZELCLR_API std::optional<WrittenPalette> WriteTokens(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
