// SOC, the colour tables of the office programs that descend from StarOffice.
// Source: OASIS OpenDocument 1.2, part 1 (draw:name, draw:color), and the tables that those programs ship.
//
//   <ooo:color-table xmlns:ooo="http://openoffice.org/2004/office" xmlns:draw="...">     once <office:color-table>
//     <draw:color draw:name="Orange" draw:color="#ff8000"/>
//   </ooo:color-table>
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesSoc(std::string_view bytes);
/// Elements are known by their names, whatever their prefix; other elements are left out with a note.
ZELCLR_API std::optional<SwatchBook> ReadSoc(std::string_view bytes, ReadProblem &problem);
/// RGB255 colours with their names.
ZELCLR_API std::optional<WrittenPalette> WriteSoc(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
