// Which palette spot colours are looked for in first: the user's "config/ColorPaletteManager.xml", which begins as a
// copy of the installation's, and a preference that holds when the file says nothing.
//
// Threads: plain functions, safe from any thread and beside other processes. Errors: the built-in identifier, false.
#pragma once

#include "zelclr/platform/guid.h"

#include <string>

namespace ZelClr {

/// What holds where nothing else is said: the solid coated book, which most jobs with spot colours are specified by.
ZELCLR_API ZelUtils::Guid BuiltInDefaultSpotPalette();
/// The file's identifier, which becomes the preference; else the preference's, else the built-in. Makes the user's copy
/// when there is none.
ZELCLR_API ZelUtils::Guid ReadDefaultSpotPalette();
/// The file, then the preference. False, with nothing stored, when the file cannot be written or the user has none and
/// the installation's cannot be copied. A file that is no such document is kept under another name first.
ZELCLR_API bool WriteDefaultSpotPalette(const ZelUtils::Guid &guid);
/// Empty where no user is known.
ZELCLR_API std::string GetUserPaletteManagerPath();

} // namespace ZelClr
