// The report's answers: for each colour of a palette its build for the press, what that looks like on paper, how far
// that is, and what comes nearest where it will not print.
#pragma once

#include "cli/harmony/nearest.h"
#include "cli/report/press.h"
#include "zelclr/palettes/formats/palette_format.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// Whether the press can print the colour at all.
enum class Verdict
{
  Prints,
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

inline constexpr Verdict kVerdicts[] = {Verdict::Prints, Verdict::Beyond, Verdict::OwnInk, Verdict::Unknown};

/// A build and its print. Differences are rounded here, so that every form of the report says the same.
struct Print
{
  Inks inks = {};
  CLR_COLORSPEC paper;        ///< RGB255 of sRGB: what it looks like (Press::Look)
  double difference = 0;      ///< the textbook's CIEDE2000 between the colour and its print, in tenths
  double libraryDistance = 0; ///< Color::GetDistance, which stored thresholds are in, in thousandths

  int Total() const { return TotalOf(inks); }
};

/// Where a colour is on the artist's wheel.
struct WheelPlace
{
  Harmony::HSB position;
  double chroma = 0; ///< of CIE Lab, as the screen shows it

  /// The hue of what is almost gray says nothing.
  bool IsNearNeutral() const { return chroma < 8.0; }
};

struct ReportRow
{
  ZelClr::Swatch source;
  Verdict verdict = Verdict::Unknown;

  /// Whether the following are known: not for a colour that prints with an ink of its own or needs its palette.
  bool HasBuild() const { return verdict == Verdict::Prints || verdict == Verdict::Beyond; }
  CLR_COLORSPEC screen; ///< RGB255 of sRGB
  WheelPlace wheel;
  Print build;
  bool tooMuchInk = false;
  std::optional<Print> nearest; ///< where the build is beyond the press or has too much ink
};

struct Report
{
  std::string name; ///< of the palette, or of its file
  Press press;
  std::string rgbProfile; ///< by which its RGB is read
  std::string cmykProfile;
  std::vector<ReportRow> rows;
  std::vector<RuleFit> harmonies; ///< RulesNearestTo, of the colours that are not nearly neutral by their chroma

  std::size_t Count(Verdict verdict) const;
  std::size_t CountTooMuchInk() const;
  /// Of those that are on the wheel.
  std::size_t CountNearNeutral() const;
  /// Those with either fault.
  std::size_t CountWillNotPrint() const;
  /// Whether any colour will not print or cannot be known.
  bool HasFindings() const;
};

/// The palette's numbers are read by the profiles of the settings in force. So CMYK is the press's own numbers, and
/// prints as it is, where the settings' CMYK profile is the press's; on another press it is built anew. A spot colour
/// with a known appearance is judged by it, in the model that the settings choose for spot colours; without one it is
/// its own ink. Builds are whole percents. What is in gamut the library says: ProofColorConverter::IsColorInGamut.
/// Throws Failure where no profile or no engine is to be had.
Report Analyse(const ZelClr::SwatchBook &palette, const std::string &fileName, const PressOptions &options);

} // namespace cli
