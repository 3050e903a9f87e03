// A gradient as people look at it: its shades at even distances, on screen, and whether a press prints them.
//
// Errors: throws Failure, in one line.
#pragma once

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colour/fills/fountain_sampling.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cli {

/// Where a gradient is to be printed.
struct GradientPress
{
  std::shared_ptr<ColorSystem::ColorProfile> profile;
  std::string name; ///< for people, in one harmless line

  /// Whether it prints the colour as it is; colours are read by the profiles of the context.
  bool Holds(const CLR_COLORSPEC &colour, const ColorSystem::ColorContext &context) const;
};

/// A device's profile as OpenProfile takes it.
GradientPress GradientPressFrom(const std::string &nameOrPath);

/// Units of a stop's position to one percent.
inline constexpr int kPositionsPerPercent = 100;

struct Shade
{
  double percent; ///< where it is on the way
  CLR_COLORSPEC colour;
  std::optional<COLORREF> screen; ///< empty for an ink without a known appearance
  bool holds = true;              ///< true without a press, too
};

struct Strip
{
  std::string blend; ///< as on the command line
  unsigned model;
  std::vector<double> stops; ///< percents
  std::vector<Shade> drawn;  ///< kDrawn, to look at
  std::vector<Shade> listed; ///< as many as asked for
  std::vector<double> edges; ///< percents of `drawn` where the press's gamut is left or entered again

  bool HoldsAll() const;
};

inline constexpr int kDrawn = 1024;

/// Samples a gradient; `press` may be null.
Strip StripOf(const CLR_FOUNTCOLOR_ARRAY &fountain, const std::string &blend, int listed,
              ColorSystem::ColorContext &context, const GradientPress *press);

} // namespace cli
