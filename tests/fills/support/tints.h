// Tints for tests.
#pragma once

#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/colours.h"
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colour/fills/tint_kinds.h"
#include "zelclr/colour/fills/tint_list.h"

namespace tests {

inline TINT TintOf(int kind, int level, const CLR_COLORSPEC &colour, const CLR_COLORSPEC &second = {})
{
  TINT tint;
  TNTSetTint(&tint, &colour, level, static_cast<unsigned char>(kind), &second);
  return tint;
}

class Tints : public ShippedProfiles
{
protected:
  /// The colour tinted; it stays where that fails.
  CLR_COLORSPEC Tinted(const TINT &tint, const CLR_COLORSPEC &colour)
  {
    CLR_COLORSPEC tinted(colour);
    tint.colourOperation(tint, tinted, context);
    return tinted;
  }

  ColorSystem::ColorContext context{srgb, swop, gray, ColorSystem::ColorModel::Cmyk,
                                    ColorSystem::RenderingIntent::RelativeColorimetric};
};

} // namespace tests
