// Colour sets of Scribus: XML of solid, spot and registration colours.
// Source: the Scribus wiki, "File Format Specification" (COLOR), and the colour sets that are published for it.
//
//   <SCRIBUSCOLORS Name="Brand">
//     <COLOR NAME="Orange" RGB="#ff8000" Spot="0" Register="0"/>         until version 1.4: bytes of RGB or CMYK
//     <COLOR NAME="House ink" CMYK="#0080ff00" Spot="1" Register="0"/>
//     <COLOR NAME="Sky" SPACE="CMYK" C="60" M="20" Y="0" K="0"/>         since 1.5: CMYK in percent, RGB of 0 to 255,
//     <COLOR NAME="Sand" SPACE="Lab" L="70" A="5" B="25"/>               CIE L* of 0 to 100, a* and b* of -128 to 127
//   </SCRIBUSCOLORS>
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesScribus(std::string_view bytes);
/// Numbers beyond their range are refused. Elements but COLOR are left out with a note.
ZELCLR_API std::optional<SwatchBook> ReadScribus(std::string_view bytes, ReadProblem &problem);
/// In the attributes of 1.5, which keep every digit; gray becomes CMYK of black ink alone, which it is there.
ZELCLR_API std::optional<WrittenPalette> WriteScribus(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
