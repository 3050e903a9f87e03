// The table of the palettes that belong to the system: the identifier of each, and the file that it is in.
//
// Documents and palette files hold the identifiers, so the table is frozen: rows may be added, never changed. A row
// says nothing about whether the file is installed; the colour books of ink makers are sold by their owners.
// Threads: a constant table; the look-ups are plain functions. Errors: null, empty.
#pragma once

#include "zelclr/platform/guid.h"

#include <span>
#include <string_view>

namespace ZelClr {

struct FixedPalette
{
  ZelUtils::Guid identifier;
  std::string_view path; ///< below the palettes folder: "Process/RGB/WebSafe.xml"
};

/// All 173 rows, by identifier. The palettes that have a palette type are under its identifier (palette_types.h).
ZELCLR_API std::span<const FixedPalette> FixedPalettes();
/// Null when no row has it.
ZELCLR_API const FixedPalette *FindFixedPalette(const ZelUtils::Guid &identifier);
/// By the path, whatever its case and slashes; null when no row has it.
ZELCLR_API const FixedPalette *FindFixedPalette(std::string_view path);

} // namespace ZelClr
