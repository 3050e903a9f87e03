// What differs between the colours of two palettes.
//
// Threads and errors: plain functions on values.
#pragma once

#include "zelclr/palettes/formats/swatch_book.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace cli {

/// A colour of both palettes, by its index in each.
struct ColourPair
{
  std::size_t a = 0;
  std::size_t b = 0;
};

struct ChangedColour : ColourPair
{
  std::optional<double> difference; ///< CIEDE2000; empty where a look is not known
};

/// Indices, in the order of the palette that has the colour; pairs in the order of the first.
struct PaletteComparison
{
  std::vector<std::size_t> added;     ///< of the second
  std::vector<std::size_t> removed;   ///< of the first
  std::vector<ColourPair> renamed;    ///< the same colour
  std::vector<ChangedColour> changed; ///< the same name
  std::vector<ColourPair> moved;      ///< the fewest that stand elsewhere among those of both palettes

  bool IsSame() const;
};

/// Colours belong together that have the same name and colour (ColourKey), then those of the same name, then those of
/// the same colour. Of the same name, what is no more than `tolerance` away is the same, in whatever model.
PaletteComparison Compared(const ZelClr::SwatchBook &a, const ZelClr::SwatchBook &b, double tolerance);

} // namespace cli
