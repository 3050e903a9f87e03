// Which file stands for a palette: the user's version of an installed one before that one, an ".xml" for its packed
// form.
//
// Threads: plain functions. Paths are UTF-8. Errors: empty paths and false.
#pragma once

#include "zelclr/palettes/fixed_palettes.h"

#include <string>

namespace ZelClr::Internal {

/// Without the ".zip" of "….xml.zip", and with ".xml" for ".cpl": what the palette's file will be called.
std::string XmlPathOf(const std::string &path);
/// Whether a palette can be loaded by this path: the file or, for an ".xml", its packed form is there.
bool IsPaletteFile(const std::string &path);
/// Whether both paths are those of one file, which need not be there.
bool IsSamePath(const std::string &a, const std::string &b);

/// The user's version of a palette of the installation when there is one, else the path itself.
std::string PathInForce(const std::string &path);
/// Where the user's version of a palette of the installation is saved; any other path itself.
std::string PathForSaving(const std::string &path);
/// The installation's version of a palette that is there or below the user's palettes folder; empty when none ships.
std::string InstalledPath(const std::string &path);
/// The file of a fixed palette, in force; empty when it is not installed. A ".cpl" serves where there is no ".xml".
std::string PathOfFixedPalette(const FixedPalette &row);

} // namespace ZelClr::Internal
