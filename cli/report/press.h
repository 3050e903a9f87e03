// The press that a report is about: its profile, and how colours are brought to it.
//
// Threads: plain functions. Errors: throw Failure, in one line.
#pragma once

#include "cli/profile/profile_colours.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/color_profile.h"

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace cli {

/// What the command line asks for; what is empty is decided by the settings in force.
struct PressOptions
{
  std::string profile; ///< as OpenProfile takes it
  std::optional<RenderingIntent> intent;
  std::optional<bool> preserveBlack;
  std::optional<int> inkLimit; ///< in percent of one solid, 1 to 400
};

struct Press
{
  std::shared_ptr<ColorSystem::ColorProfile> profile; ///< of CMYK; never null
  std::string name;                                   ///< for people, in one harmless line
  RenderingIntent intent = RenderingIntent::RelativeColorimetric;
  bool preserveBlack = false;
  bool grayIsBlackInk = false; ///< of gray colours; the settings' choice
  int inkLimit = 0;
  bool inkLimitGiven = false; ///< else it is the most that the profile itself builds
  Lab paper = {};             ///< absolute

  /// Prints are shown and measured as the eye sees them that takes the paper for white; by the absolute intent, with
  /// the paper's own white.
  bool SimulatesPaper() const { return intent == RenderingIntent::AbsoluteColorimetric; }
  RenderingIntent Look() const { return SimulatesPaper() ? intent : RenderingIntent::RelativeColorimetric; }
};

/// Without a name, the CMYK profile of `settings` is the press.
Press PressFrom(const PressOptions &options, const ColorSystem::ColorContext &settings);

/// Cyan, magenta, yellow and black in percent.
using Inks = std::array<int, 4>;
int TotalOf(const Inks &inks);

/// What a build looks like on this press (Press::Look).
Lab PrintedLab(const Press &press, const Inks &inks);

struct PrintableColour
{
  Inks inks = {};
  double difference = 0; ///< CIEDE2000
};
/// The build within the ink limit whose print is nearest to a colour, by a pattern search that begins at `start`: whole
/// percents, and no single step of one percent, in one ink or from one to another, comes nearer.
PrintableColour NearestPrintable(const Press &press, const Lab &wanted, const Inks &start);

} // namespace cli
