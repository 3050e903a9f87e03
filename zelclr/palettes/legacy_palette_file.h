// The older binary palettes, ".cpl": how they are read, and what they become. docs/legacy_palette_format.md has the
// layout, byte by byte; nobody writes them any more.
//
// Threads: plain functions on values. Errors: an empty optional with a reason; a file is read whole or not at all.
#pragma once

#include "zelclr/palettes/xml_color_palette.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

struct LegacyColor
{
  std::string name; ///< UTF-8
  int number = -1;  ///< 0 to 32767 in the palettes whose colours are known by one; else -1
  CLR_COLORSPEC look;
};

struct LegacyPaletteFile
{
  unsigned type = 0; ///< palette_types.h
  std::string name;  ///< UTF-8; may be empty
  std::vector<LegacyColor> colors;
};

/// The palette type that a file of this name holds, whatever its case: 2 for "pantone.cpl"; 5, a user's palette, for
/// any name that no palette of the system has.
ZELCLR_API unsigned LegacyPaletteTypeOfFileName(std::string_view fileName);

/// A palette of the wanted type. A file that says it is of another type is refused, but where the wanted type is 5: a
/// name that is nobody's tells nothing, so the file's own word counts.
ZELCLR_API std::optional<LegacyPaletteFile> ReadLegacyPalette(std::string_view bytes, unsigned wantedType,
                                                              std::string &reason);

/// Under the identifier of its type; a user's palette gets a fresh one. Numbered colours become colour spaces with the
/// number as colour ID, spot inks as such and six-ink builds as process colours. `name` serves where the file has none.
ZELCLR_API WXmlColorPalette XmlPaletteFromLegacy(const LegacyPaletteFile &file, std::string_view name);

} // namespace ZelClr
