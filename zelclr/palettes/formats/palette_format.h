// The formats of palettes that other programs write: one row each, one file each.
//
// A format is found by the content of a file, never by its name alone. A file is read whole or refused with a line and
// a reason; whatever the bytes, nothing crashes, hangs or takes memory out of proportion. Threads: plain functions on
// values and a constant table. Errors: empty results with a problem.
#pragma once

#include "zelclr/palettes/formats/swatch_book.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

/// What a palette may have at most, in every format.
inline constexpr std::size_t kMostSwatches = 100'000;
inline constexpr std::size_t kMostPaletteBytes = std::size_t{64} << 20;

struct ReadProblem
{
  std::size_t line = 0; ///< from 1, of a text file; 0 when it is the whole file or a file of bytes
  std::string reason;   ///< English
};

/// Bytes of a palette file, with a note for each kind of thing that the format cannot hold.
struct WrittenPalette
{
  std::string bytes;
  std::vector<std::string> notes; ///< "3 CMYK colours became RGB", a sentence each
};

struct PaletteFormat
{
  std::string_view key;                         ///< what the command line calls it: "gpl"
  std::string_view title;                       ///< for people
  std::span<const std::string_view> extensions; ///< lower case, with the point; the first is the customary one
  bool (*recognises)(std::string_view bytes);   ///< cheap: by the first bytes or the root; null where it cannot be read
  std::optional<SwatchBook> (*read)(std::string_view bytes, ReadProblem &problem);     ///< null when it is write only
  std::optional<WrittenPalette> (*write)(const SwatchBook &book, std::string &reason); ///< null when it is read only
};

/// Every format, in the order in which a file's content is tried.
ZELCLR_API std::span<const PaletteFormat> PaletteFormats();
/// By its key; null when there is none.
ZELCLR_API const PaletteFormat *FindPaletteFormat(std::string_view key);
/// By a file name's extension, for writing; null when none has it.
ZELCLR_API const PaletteFormat *PaletteFormatOfFileName(std::string_view fileName);
/// By the content. The plain list of colours takes any text that no other format claims; null for other bytes. A file
/// without a signature (ACT) is claimed by its exact size alone.
ZELCLR_API const PaletteFormat *RecognisePaletteFormat(std::string_view bytes);

/// Reads a palette of any format that PaletteFormats can read.
ZELCLR_API std::optional<SwatchBook> ReadSwatchBook(std::string_view bytes, ReadProblem &problem);

} // namespace ZelClr
