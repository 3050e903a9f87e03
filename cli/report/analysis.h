// The report's answers: for each colour of a palette its build in CMYK, what that becomes on paper, and how far that
// is.
#pragma once

#include "zelclr/palettes/formats/palette_reading.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// Whether a press can print the colour at all; from the best to the worst.
enum class Verdict
{
  Prints,
  Edge,
  Beyond,
  OwnInk,
  Unknown
};

struct VerdictWords
{
  const char *key;   ///< in JSON and as CSS class
  const char *label; ///< for people
};
VerdictWords WordsOf(Verdict verdict);

inline constexpr Verdict kVerdicts[] = {Verdict::Prints, Verdict::Edge, Verdict::Beyond, Verdict::OwnInk,
                                        Verdict::Unknown};

/// The CIEDE2000 from the press's nearest colour up to which a colour counts as printable, about the error of the press
/// model, and up to which it counts as at the gamut's edge, about the model's greatest error.
inline constexpr double kWithinGamut = 1.6;
inline constexpr double kAtItsEdge = 4.6;

struct ReportRow
{
  ZelClr::NamedColour source;
  Verdict verdict = Verdict::Unknown;
  bool tooMuchInk = false;

  /// Whether the following are known: not for a colour that prints with an ink of its own or needs its palette.
  bool HasBuild() const { return verdict != Verdict::OwnInk && verdict != Verdict::Unknown; }
  double reach = 0;             ///< CIEDE2000 from the press's nearest colour
  CLR_COLORSPEC screen;         ///< RGB255; of a CMYK colour, what it prints
  std::array<int, 4> inks = {}; ///< the build: cyan, magenta, yellow, black in percent
  int inkTotal = 0;             ///< in percent, up to 400
  CLR_COLORSPEC paper;          ///< RGB255 of the printed build, relative to the paper
  double difference = 0;        ///< CIEDE2000 between the colour, with the press's black, and the printed build
};

struct Report
{
  std::string name; ///< of the palette, or of its file
  int inkLimit = 0;
  std::vector<ReportRow> rows;

  std::size_t Count(Verdict verdict) const;
  std::size_t CountTooMuchInk() const;
  /// Whether any colour is beyond the press, exceeds the ink limit or cannot be known.
  bool HasFindings() const;
};

/// The build is by formula: RGB's gray part goes to black whole. A colour that is CMYK already is its own build, and
/// prints. The press, what it reaches and what a build becomes on its paper are formulas/coated_press.h.
Report Analyse(const ZelClr::ReadPalette &palette, const std::string &fileName, int inkLimit);

} // namespace cli
