// The orders that palettes are sorted by.
//
// Colours are compared as a colour context shows them: each is converted to RGB once, before anything is compared, and
// its hue, saturation and brightness are worked out of that. Every comparator is a total order of these numbers, told
// below by what counts first; where nothing tells two colours apart they stay as they stood.
//
// Threads: plain functions. Errors: none; colours without an appearance come last, as they stood.
#pragma once

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/palettes/palette_entry.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

/// A colour as it is compared.
struct ComparedColor
{
  double red = 0; ///< 0 to 1, encoded, in the context's RGB
  double green = 0;
  double blue = 0;
  double hue = 0;        ///< degrees from 0 to below 360; 0 for a gray
  double saturation = 0; ///< 0 to 1
  double brightness = 0; ///< 0 to 1, the largest component
};

ZELCLR_API ComparedColor ComparedFromRgb(double red, double green, double blue);
/// Whether nobody sees a hue: the components are within 3 % of full light. Blacks and grays of presses are never wholly
/// neutral.
ZELCLR_API bool IsGray(const ComparedColor &color);

/// Whether the first stands before the second.
using ColorComparator = bool(const ComparedColor &, const ComparedColor &);
/// Grays first, from dark to light; then round the wheel from red; within a hue by saturation, then brightness.
ZELCLR_API ColorComparator CompareColorHue;
/// From pale to full; then by hue, then brightness.
ZELCLR_API ColorComparator CompareColorSaturation;
/// From dark to bright; then by saturation, then hue.
ZELCLR_API ColorComparator CompareColorBrightness;
/// As the numbers of a picker read: whole degrees of hue, whole percents of saturation, then of brightness.
ZELCLR_API ColorComparator CompareColorHSB;
/// Red, green, blue.
ZELCLR_API ColorComparator CompareColorRGB;

/// Names as people order them: without regard to case, numbers by their value ("Gray 9" before "Gray 10"). Names that
/// differ only in case or leading zeros are ordered by their characters.
ZELCLR_API bool CompareColorName(std::wstring_view first, std::wstring_view second);
ZELCLR_API bool CompareColorFrequencyOrder(int first, int second);

/// The index of the colour that comes to stand at each place; empty for a number that is no sort type. Ties of a
/// comparator go to CLR_COLORSPEC::CompareTo, then to the place.
ZELCLR_API std::vector<std::size_t> OrderOfColors(std::span<const CLR_COLORSPEC> colors, int sortType,
                                                  const ColorSystem::ColorContext &context);
ZELCLR_API std::vector<std::size_t> OrderOfNames(std::span<const std::wstring> names,
                                                 std::span<const CLR_COLORSPEC> colors);

} // namespace ZelClr
