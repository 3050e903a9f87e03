// Palette types: the small numbers by which older files and the record's text forms name a palette, and the
// identifiers of the fixed palettes that they stand for.
//
// Threads: constant tables. Errors: what no row holds answers as each function says.
#pragma once

#include "zelclr/platform/guid.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace ZelClr {

/// Frozen: documents hold these numbers. Only the types that the code speaks of have a name here; the table has all.
namespace PaletteType {
enum : std::uint16_t
{
  None = 0,
  PantoneSpot = 3,
  User = 5,
  PantoneHexachrome = 12,
  UserInks = 16,
  PantoneMetallicVarnished = 19,
  PantoneHexachromeUncoated = 24,
  PantoneHexachromeCoated2 = 33,
  PantoneHexachromeUncoated2 = 34,
  Last = 40,
};
}

/// One palette type with its fixed palette's identifier, all zero for the types without a palette of their own.
struct PaletteTypeRow
{
  std::uint16_t type;
  std::string_view name;
  ZelUtils::Guid identifier;
};

/// The 40 types that have a row of identifier, in the order that decides which type an identifier stands for: the last
/// matching row wins. Frozen: documents and palette files hold the identifiers.
ZELCLR_API extern const std::array<PaletteTypeRow, 40> kPaletteTypes;

/// The fixed Pantone palette, which `CLR_COLORSPEC::MakePANTONE` stores.
ZELCLR_API extern const ZelUtils::Guid kPantonePaletteIdentifier;

/// The identifier of the last row with this type; all zero when no row has it.
ZELCLR_API ZelUtils::Guid PaletteIdentifierFromType(unsigned type);
/// The type of the last row with this identifier; User when no row has it. The all-zero identifier is User, too.
ZELCLR_API std::uint16_t PaletteTypeFromIdentifier(const ZelUtils::Guid &identifier);

/// "PAN_SPOT" for 3; empty for a number above 40.
ZELCLR_API std::string_view PaletteTypeName(unsigned type);
ZELCLR_API std::optional<std::uint16_t> PaletteTypeFromName(std::string_view name);

/// Whether the palettes of this type hold spot inks.
///
/// KEPT: 19 (PANMETV) is no spot palette, where one would expect it beside its sibling 20; stored data depends on it.
ZELCLR_API bool IsSpotPaletteType(unsigned type);
/// Whether it is one of the four palette types of six-ink Pantone builds.
ZELCLR_API bool IsPantoneHexachromePaletteType(unsigned type);

} // namespace ZelClr
