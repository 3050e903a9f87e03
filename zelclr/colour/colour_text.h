// A colour as a line of text that people can read, type and search for.
//
// Threads: plain functions. Errors: text that is no colour gives an empty optional and a reason; nothing is guessed.
//
//   RGB255(255,128,0)   CMYK100(0,50,100,0)   LAB(53.33,59.06,57.64)
//   SPOT(17,100)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}
//
// The name is the model's. A model whose name ends in its scale is stated on that scale (255, 100, 48 and 16 bits);
// the others in the units of their field: CMYK, the saturation and the like in percent, hue in degrees, L* a* b*
// (a* and b* from -60.47 to 60, as the record holds them). A
// density stands last and may be left out where it is 100 (not for Pantone, spot and user inks). Palette inks (PANTONE,
// PANTONEHX, SPOT, IDXUSRINK) always name their palette behind "@", all zero when they have none; any other colour that
// belongs to a palette names it inside the parentheses, as last: RGB255(255,128,0,@{...}). So no beginning of a
// colour's text is a colour's text.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <optional>
#include <string>
#include <string_view>

namespace ZelClr {

/// The text of a colour, ASCII. Empty for a DeviceN colour, for a model number without meaning and for components that
/// are no finite numbers; the referenced colour's text for a reference. Reading it back gives a colour with the same
/// components, palette and model; only the definition that a spot colour points at is not in it.
ZELCLR_API std::string TextFromColorSpec(const CLR_COLORSPEC &colour);

/// The colour of a text: as TextFromColorSpec writes it, or "#rrggbb" for an RGB255 colour. Names in upper or lower
/// case; blanks may stand around components. Components must be what the record can hold, which is more than what
/// Validate accepts. On failure `reason`, when given, says in English what is wrong.
ZELCLR_API std::optional<CLR_COLORSPEC> ColorSpecFromText(std::string_view text, std::string *reason = nullptr);

} // namespace ZelClr
