// Palette types of older files, the identifiers of the palettes that they stand for, and the user inks among colours.
//
// Threads: plain functions over the table of colour/palette_types.h. Errors: none.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/palette_types.h"

namespace ZelClr::LegacyPalette {

/// All zero for an unknown type and for those without a palette of their own.
ZELCLR_API ZelUtils::Guid PaletteTypeToGuid(unsigned type);
/// 5, a user's palette, for an unknown identifier.
ZELCLR_API std::uint16_t PaletteGuidToType(const ZelUtils::Guid &guid);
/// The palette that a colour came from: types 5 and 16 (a user's palette, user inks) may carry its type in their high
/// byte. Any other type, and one that carries none, is its low byte.
ZELCLR_API std::uint16_t GetOriginPaletteType(std::uint16_t type);
ZELCLR_API bool IsLegacySpotPaletteType(unsigned type);
/// Type 16, whatever it carries.
ZELCLR_API bool IsLegacyUserInksPaletteType(std::uint16_t type);
/// A colour of model 21, or of the palette of type 16, but for model 22.
ZELCLR_API bool IsLegacyUserInks(const CLR_COLORSPEC &color);

} // namespace ZelClr::LegacyPalette
