// Palettes of other programs (SwatchBook, see formats/) as palettes of our own, and back.
//
//   swatches       colours of the models RGB, CMYK, Gray and LAB with their numbers in full; others as the record that
//                  palette files hold
//   spot colours   spot colour spaces, one for each name and look; tints as tints
//   groups         pages, whose names our palettes do not have; the columns are the width of the grid
//
// Threads: plain functions. Errors: null; what cannot be kept is left out with a note, a sentence for each kind.
#pragma once

#include "zelclr/palettes/formats/swatch_book.h"
#include "zelclr/palettes/w_clr_palette.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

/// Colours mean what the application's profiles say: ConvertProfiles comes before. The palette has no identifier yet.
///
/// LAB of palette files ends at 60 for a* and b*: a swatch beyond that is stated as RGB48.
ZELCLR_API WXmlColorPalette PaletteFromSwatchBook(const SwatchBook &book, std::vector<std::string> &notes);
/// Names are plain with the palette's prefix, those of spot colours are their inks'; pages are groups "Page 1",
/// "Page 2" where there is more than one.
ZELCLR_API SwatchBook SwatchBookFromPalette(const WXmlColorPalette &palette);

/// The identifier of a palette that states none: the same for the same bytes, wherever they are.
ZELCLR_API ZelUtils::Guid IdentifierOfBytes(std::string_view bytes);

/// A file of any format that formats/palette_format.h reads, as a locked palette: its file is never written to. Null
/// when it is none, or holds no colour.
ZELCLR_API std::unique_ptr<WClrPalette> LoadForeignPalette(const std::wstring &path);

} // namespace ZelClr
