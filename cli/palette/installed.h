// The palettes that are installed and the user's own, as the palette manager finds them.
//
// Threads: the main thread. Errors: throws Failure, in one line.
#pragma once

#include "cli/palette_input.h"
#include "zelclr/palettes/w_clr_palette_mgr.h"

#include <string>
#include <vector>

namespace cli {

/// All of them, in the order in which they are found.
WClrPaletteMgr::Palettes InstalledPalettes();

/// The swatches of an installed palette, as the manager has it.
LoadedPalette LoadedFrom(const WClrPalette &palette);

/// A file where there is one, "-" for the standard input; else an installed palette by its identifier, its file's name
/// with or without the extension, or its name, in upper or lower case.
LoadedPalette OpenPalette(const std::string &nameOrPath);

} // namespace cli
