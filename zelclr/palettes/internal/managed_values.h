// What many colours come to in RGB or Lab, as numbers finer than records hold.
//
// Threads: plain functions. Errors: an empty place for a colour without an appearance.
#pragma once

#include "zelclr/colorsystem/color_converter.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace ZelClr {

using ManagedValues = std::array<double, 3>;

/// Encoded red, green and blue of 0 to 1, to 16 bits, with one conversion for all colours of a family. Spot colours
/// count as their definition looks at their density.
std::vector<std::optional<ManagedValues>> RgbOfColors(std::span<const CLR_COLORSPEC> colors,
                                                      const ColorSystem::ColorConverter &converter);
/// The same as CIE L* of 0 to 100, a* and b* of -128 to 127.
std::vector<std::optional<ManagedValues>> LabOfColors(std::span<const CLR_COLORSPEC> colors,
                                                      const ColorSystem::ColorConverter &converter);

} // namespace ZelClr
