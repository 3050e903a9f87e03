// Gamuts as a picture: an A4 page in SVG with slices at eight lightnesses, the chromaticities, and the figures.
//
// Errors: none; the profiles must have gamuts.
#pragma once

#include "cli/profile/comparison.h"
#include "cli/profile/profile_facts.h"

#include <string>

namespace cli {

/// The gamut in its own colours, and that of sRGB as a dashed line.
std::string PictureOf(const ProfileFacts &facts, RenderingIntent intent);
/// The gamut of A in its own colours, and that of B as a line.
std::string PictureOf(const Comparison &comparison);

} // namespace cli
