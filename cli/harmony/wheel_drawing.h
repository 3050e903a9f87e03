// Harmonies on the artist's wheel, as SVG: the hues around it, an arm to each place of the rule, a dot for each colour
// at its hue and saturation, and its swatch beside it.
//
// Errors: none.
#pragma once

#include "cli/harmony/harmonies.h"

#include <string>
#include <vector>

namespace cli {

/// One harmony on a page of its own, several side by side. `base` names the first colour.
std::string SvgOfHarmonies(const std::vector<ShownHarmony> &harmonies, const std::string &base);

} // namespace cli
