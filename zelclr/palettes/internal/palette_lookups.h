// What a palette works out of its colours for look-ups, and keeps until the next edit.
//
// Threads: one at a time. Errors: none.
#pragma once

#include "zelclr/palettes/internal/closest_color.h"
#include "zelclr/palettes/w_clr_palette.h"

#include <optional>
#include <vector>

struct WClrPalette::Lookups
{
  /// Where a page begins.
  struct Page
  {
    int firstIndex;
    int firstCell;
  };

  std::vector<Page> pages; // those with colours, in order; one more behind the last
  std::optional<ZelClr::ClosestColor> closest;
};
