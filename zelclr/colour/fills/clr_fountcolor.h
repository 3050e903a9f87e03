// A stop of a fountain (gradient) fill: a colour at a position, how it blends towards the next stop, its opacity.
//
// Threads: a value. Errors: none are reported; numbers are stored as given, and what samples a fill bounds them.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

/// How a colour blends into the next. Frozen: documents hold the numbers; an unknown one acts as the straight blend.
enum ClrBlendMode : std::uint16_t
{
  ClrBlendMode_Straight = 0, ///< component by component
  ClrBlendMode_Hue = 1,      ///< round the wheel of hues as their degrees rise: red, yellow, green, cyan, blue
  ClrBlendMode_HueBack = 2,  ///< the other way round
};

struct ZELCLR_API CLR_FOUNTCOLOR
{
  CLR_FOUNTCOLOR() = default;
  CLR_FOUNTCOLOR(const CLR_COLORSPEC &stopColour, std::uint16_t stopPosition, ClrBlendMode mode, std::int16_t rate,
                 std::uint8_t stopOpacity)
    : colour(stopColour),
      position(stopPosition),
      blendMode(mode),
      blendRate(rate),
      opacity(stopOpacity)
  {}

  /// The midpoint of the blend towards the next stop, as a share of the way: 0.5 is the centre.
  double GetBlendRateValue() const { return blendRate / 100.0; }
  /// Stored in hundredths, rounded half away from zero and cut off to 16 bits; what is no number is 0.
  void SetBlendRateValue(double rate);
  ClrBlendMode GetBlendMode() const { return blendMode; }
  void SetBlendMode(ClrBlendMode mode) { blendMode = mode; }
  std::uint8_t GetOpacity() const { return opacity; }
  void SetOpacity(std::uint8_t value) { opacity = value; }

  /// -1, 0 or 1: by position, colour, opacity, and unless `ignoreBlend`, by blend mode and blend rate. With
  /// `resolveReferences` a reference counts as the colour that it refers to.
  ///
  /// KEPT: positions, blend modes and blend rates compare by their low byte first, so that 256 comes before 1, where
  /// one would expect the order of numbers; stored fills depend on it.
  int CompareTo(const CLR_FOUNTCOLOR &other, bool ignoreBlend, bool resolveReferences) const;
  friend bool operator==(const CLR_FOUNTCOLOR &a, const CLR_FOUNTCOLOR &b) { return a.CompareTo(b, false, false) == 0; }
  friend bool operator<(const CLR_FOUNTCOLOR &a, const CLR_FOUNTCOLOR &b) { return a.CompareTo(b, false, false) < 0; }

  CLR_COLORSPEC colour;
  std::uint16_t position = 0; ///< along the fill, in units of the caller's own
  // Of the segment that starts here; the last stop's have no effect.
  ClrBlendMode blendMode = ClrBlendMode_Straight;
  std::int16_t blendRate = 50; ///< hundredths
  std::uint8_t opacity = 255;  ///< 255 opaque
};
