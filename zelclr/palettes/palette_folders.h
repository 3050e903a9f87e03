// Where palettes are.
//
//   <installation>/color/Palettes           what ships: GetInstalledPalettesDir
//   <user>/color/Palettes                   GetPalettesDir: what the user has in place of it, "dynamic.xml" first of
//   all <user>/color/Palettes/Custom            GetUserCustomPalettesDir: the user's own
//
// Threads: plain functions. Errors: an empty path where there is no such folder; it need not be there on disk.
#pragma once

#include "zelclr/platform/guid.h"

#include <string>
#include <string_view>

namespace ZelClr {

ZELCLR_API std::wstring GetInstalledPalettesDir();
/// The installation's where no user is known.
ZELCLR_API std::wstring GetPalettesDir();
ZELCLR_API std::wstring GetUserCustomPalettesDir();

/// The identifier under which panels keep the state of a library folder: "Misc", "Nature", "People", "Things", "Spot",
/// "Previous Version", "Process" and "256 Colors" have one; null for any other name.
ZELCLR_API ZelUtils::Guid PaletteFolderIdentifier(std::wstring_view name);

} // namespace ZelClr
