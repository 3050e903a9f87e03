// What every reader of a palette format takes and gives, and the reader that finds the format by the content.
//
// Threads: plain functions. Errors: a file that is not wholly what its format says gives no colours at all, and the
// line and the reason.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

struct NamedColour
{
  CLR_COLORSPEC colour;
  std::string name;     ///< UTF-8; empty when the file gives none
  std::size_t line = 0; ///< where it stands in the file, from 1
};

struct ReadPalette
{
  std::string name; ///< UTF-8; empty when the file gives none
  std::vector<NamedColour> colours;
};

struct ReadProblem
{
  std::size_t line = 0; ///< from 1; 0 when it is the whole file
  std::string reason;
};

/// Reads a palette of a known format: GPL, or else a plain list. At most 100,000 colours, lines of
/// at most 4,096 bytes; UTF-8, with or without a byte
/// order mark.
ZELCLR_API std::optional<ReadPalette> ReadPaletteText(std::string_view bytes, ReadProblem &problem);

} // namespace ZelClr
