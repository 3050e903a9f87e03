// A plain list of colours: one to a line, a name behind it if wanted.
//
//   // a comment; "# " at the start of a line begins one, too
//   #ff8000             Orange
//   CMYK100(0,50,100,0) House orange
//   rebel red           is no colour: names are those of colour_names.h and stand alone
//
// Threads: plain functions. Errors: see palette_format.h.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"

namespace ZelClr {

/// Any text of UTF-8 that is not empty.
ZELCLR_API bool RecognisesColourList(std::string_view bytes);
/// Colours as colour_text.h reads them, or a name of colour_names.h, which then names the colour.
ZELCLR_API std::optional<SwatchBook> ReadColourList(std::string_view bytes, ReadProblem &problem);
/// Every colour as colour_text.h writes its record; finer numbers as RGB48, SCRGB, GRAY16 or CMYK100 where these hold
/// them better. Records that have no text, DeviceN, become what they look like.
ZELCLR_API std::optional<WrittenPalette> WriteColourList(const SwatchBook &book, std::string &reason);

/// A colour as people type it: text form, name, or "#rgb" as short for "#rrggbb"; and valid, where the model has a
/// notion of it. On failure `reason` says in English what is wrong.
ZELCLR_API std::optional<CLR_COLORSPEC> ColorSpecFromInput(std::string_view text, std::string &reason);

} // namespace ZelClr
