// KPL, the palettes of a painting program: colours of many models by ICC profiles, in a grid, with groups.
// Source: docs.krita.org, "The Krita Palette format KPL", and the colour definitions of the Create project there.
//
//   a zip archive of "mimetype", "colorset.xml", "profiles.xml" and ICC profiles:
//   <Profiles><Profile name="..." filename="..."/></Profiles>
//   <Colorset name="" comment="" columns="16" rows="1">
//     <ColorSetEntry name="" id="" bitdepth="U16" spot="false">
//       <RGB r="" g="" b="" space="name of the profile"/> <Position row="0" column="0"/>
//     </ColorSetEntry>
//     <Group name="" rows="1"> more of them </Group>
//   </Colorset>
//
// Of whole numbers (bit depths U8, U16) every component is given as a fraction of its range, 0 to 1: L* of 0 to 100; a*
// and b* of -128 to 0 up to one half, and 0 to 127 from there; X, Y, Z of 0 to 65535/32768; Cb and Cr with one half
// for none. Of floats (F16, F32), Lab and XYZ are the CIE's numbers, and RGB, gray and XYZ may go beyond white. Inks
// are 0 to 1 at every depth. What is further out than rounding explains refuses the file.
//
// Threads: plain functions. Errors: see palette_format.h. The archive is read in memory; see zip_archive.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

ZELCLR_API bool RecognisesKpl(std::string_view bytes);
/// Swatches are in the order of their cells, row by row; empty cells are closed with a note. XYZ becomes Lab (RGB,
/// where it is brighter than white), YCbCr becomes RGB. A colour whose profile is not in the file keeps its numbers,
/// with a note unless the profile is known to be like sRGB.
ZELCLR_API std::optional<SwatchBook> ReadKpl(std::string_view bytes, ReadProblem &problem);
/// RGB and gray by sRGB, Lab; CMYK by whatever the reader takes CMYK to be. No profile goes into the file. Each group
/// has a name of its own in this format: others become "Group", "Name 2".
ZELCLR_API std::optional<WrittenPalette> WriteKpl(const SwatchBook &book, std::string &reason);

} // namespace ZelClr
