// The report's answers: for each colour of a palette its build in CMYK, what that becomes on paper, and how far that
// is.
#pragma once

#include "zelclr/palettes/formats/palette_reading.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// From the best to the worst.
enum class Verdict
{
  AsShown,
  Shifts,
  Differs,
  Unknown
};

struct VerdictWords
{
  const char *key;   ///< in JSON and as CSS class
  const char *label; ///< for people
};
VerdictWords WordsOf(Verdict verdict);

/// The CIEDE2000 up to which a printed colour passes for the one on screen, and up to which for a relative of it.
inline constexpr double kLooksTheSame = 4.0;
inline constexpr double kLooksRelated = 8.0;

struct ReportRow
{
  ZelClr::NamedColour source;
  Verdict verdict = Verdict::Unknown;
  bool tooMuchInk = false;
  // The following only where the verdict is not Unknown.
  CLR_COLORSPEC screen;         ///< RGB255
  std::array<int, 4> inks = {}; ///< cyan, magenta, yellow, black in percent
  int inkTotal = 0;             ///< in percent, up to 400
  CLR_COLORSPEC paper;          ///< RGB255 of the printed colour, relative to the paper
  double difference = 0;        ///< CIEDE2000 between screen and paper
};

struct Report
{
  std::string name; ///< of the palette, or of its file
  int inkLimit = 0;
  std::vector<ReportRow> rows;

  std::size_t Count(Verdict verdict) const;
  std::size_t CountTooMuchInk() const;
  /// Whether any colour will not print as shown, exceeds the ink limit or cannot be known.
  bool HasFindings() const;
};

/// The build is by formula: RGB's gray part goes to black whole; a colour that is CMYK already keeps its inks. What it
/// becomes on paper is estimated by formulas/coated_press.h.
Report Analyse(const ZelClr::ReadPalette &palette, const std::string &fileName, int inkLimit);

} // namespace cli
