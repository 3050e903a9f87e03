// Colour spaces that an edit is going to add to a palette.
//
// Threads: one at a time. Errors: none.
#pragma once

#include "zelclr/palettes/w_clr_palette.h"

#include <unordered_map>
#include <unordered_set>

struct WClrPalette::NewSpaces
{
  std::vector<WXmlColorSpace> spaces;
  std::unordered_set<std::string> names;              // theirs
  std::unordered_map<std::string, std::string> inkOf; // the name that a spot colour came with, and that of its space
  int lastColorID = 0;                                // the last that was given
};

namespace ZelClr {

/// The largest number that a spot colour's record holds.
inline constexpr int kMostColorID = 32'767;

/// A colour space of these looks, without an ID. Of several looks in one model the first counts; those that palette
/// files cannot state are left out, and counted.
WXmlColorSpace SpaceOfLooks(std::string name, std::span<const CLR_COLORSPEC> looks, bool process,
                            std::size_t *leftOut = nullptr);

/// The tint of a colour space as files have it, of a density of 0 to 100; more counts as 100.
std::string TintsOfDensity(unsigned density);

} // namespace ZelClr
