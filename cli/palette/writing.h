// Palettes written by the commands: to which format, what is lost, and the file, whole or not at all.
//
// Errors: throws Failure, in one line.
#pragma once

#include "cli/palette/commands.h"
#include "cli/palette_input.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli {

struct TargetFormat
{
  std::string_view key = kOwnFormat;
  std::string_view title = kOwnTitle;
  const ZelClr::PaletteFormat *foreign = nullptr; ///< null for our own
};

/// The format that the destination asks for, before anything is read; `sources` are not to be written over.
TargetFormat TargetOf(const Destination &destination, const std::vector<std::string> &sources, const Output &output);

/// "xml (XML palette), ase (Swatch exchange), ...": those that can be written; read only ones on their own.
std::string FormatsInWords(bool write);

/// Under a new name it is a new palette: a palette of our own gets an identifier of its own and is not locked.
void Rename(LoadedPalette &palette, const std::string &name);

/// Writes the palette, says on standard error what is lost, and prints what was done as text or JSON: `action` is the
/// schema's last word, `sources` what it was made of, `facts` what only this command says.
void WriteAndTell(LoadedPalette palette, const std::vector<LoadedPalette> &sources, const Destination &destination,
                  const TargetFormat &target, const std::string &action, const Json &facts, const Output &output);

} // namespace cli
