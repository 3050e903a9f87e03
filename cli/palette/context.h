// Palettes moved from the colour context of the application to another.
//
// Threads: plain functions. Errors: throw Failure, in one line.
#pragma once

#include "cli/palette_input.h"
#include "zelclr/colorsystem/color_context.h"

#include <string>
#include <vector>

namespace cli {

/// The context of the settings preset of that name, else the application's with this profile for its model.
ColorSystem::ColorContext ContextFrom(const std::string &presetOrProfile);

struct MovedColour
{
  std::string name;
  ZelClr::Swatch before;
  ZelClr::Swatch after;
};

/// Converts the process colours of device models; inks, Lab and other colours that stand for themselves stay, and so do
/// colours that follow a style. What changed, in order.
std::vector<MovedColour> MoveToContext(LoadedPalette &palette, const ColorSystem::ColorContext &context);

} // namespace cli
