// Palettes as commands take them: files of every format that the library reads, and our own.
//
// Our own are XML with the root "palette", such a file in a zip archive, and the older ".cpl"; each is known by its
// content. A file is read whole or refused with a line and a reason.
// Threads: plain functions. Errors: as said.
#pragma once

#include "cli/output.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/xml_color_palette.h"

#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// What palettes of our own are called on the command line, beside the keys of PaletteFormats.
inline constexpr std::string_view kOwnFormat = "xml";
inline constexpr std::string_view kOwnTitle = "XML palette";

struct LoadedPalette
{
  std::string path; ///< "-" for the standard input
  std::string_view format = kOwnFormat;
  std::string_view title = kOwnTitle; ///< of the format
  ZelClr::SwatchBook book;            ///< by the profiles of the application; its notes say what was not kept
  /// Of a palette of our own, which has more than its swatches say: identifier, lock, looks, texts. Its colours are
  /// the swatches, one by one.
  std::optional<WXmlColorPalette> own;

  /// What it is called, else its file without the extension.
  std::string Name() const;
};

LoadedPalette LoadedFromOwn(WXmlColorPalette palette, std::string path);

/// Empty, with a problem, for bytes that are no palette. Empty palettes are palettes. The path only helps: a ".cpl" may
/// leave its type to its name, an archive is searched for a file of its own name first.
std::optional<LoadedPalette> ReadPalette(const std::string &path, std::string_view bytes, ZelClr::ReadProblem &problem);
/// A file, or the standard input for "-"; throws Failure.
LoadedPalette LoadPalette(const std::string &path);

/// The XML of a palette of our own, unpacked where it is in an archive; null for other bytes, a ".cpl" among them, and
/// for archives with a problem that `reason` tells.
std::optional<std::string> XmlOfOwnPalette(const std::string &path, std::string_view bytes, std::string &reason);
/// "line 3: text" as a problem with its line.
ZelClr::ReadProblem ProblemFromReason(std::string_view reason);
/// "brand.gpl:3: no colour", in one harmless line.
std::string InWords(const std::string &path, const ZelClr::ReadProblem &problem);

/// File, format, name and number of colours.
Json JsonOfPalette(const LoadedPalette &palette);

} // namespace cli
