// Pixels as the operating system's colour management takes them: bitmaps where it has one of the layout, else colours
// with a field for each channel.
//
// Threads: plain functions. Errors: none.
#pragma once

#include "zelclr/colorsystem/color_data.h"
#include "zelclr/platform/system_colour_management.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace ColorSystem::Internal {

/// The system's layout of a format; empty when there is none, or none whose bytes it documents.
std::optional<ZelUtl::SystemColourManagement::BitmapFormat> BitmapFormatOf(const PixelFormat &format);
/// What single colours of a format are to the system; empty when it has no such colours, or none as fine.
std::optional<ZelUtl::SystemColourManagement::ColourType> ColourTypeOf(const PixelFormat &format);

/// Pixels of a view in the order of its rows, across their ends.
struct PixelRange
{
  std::uint64_t first;
  std::uint32_t count;
};

/// From the view to a block without gaps, and back.
void CopyPixels(const ColorData &view, const PixelRange &range, std::uint8_t *block);
void CopyPixels(const std::uint8_t *block, const PixelRange &range, ColorData &view);

/// Alpha goes beside, in words of 16 bits, when `alpha` is not empty; it is left as it is where the view has none.
void LoadColours(const ColorData &view, const PixelRange &range, ZelUtl::SystemColourManagement::Colour *colours,
                 std::vector<std::uint16_t> &alpha);
void StoreColours(const ZelUtl::SystemColourManagement::Colour *colours, const std::vector<std::uint16_t> &alpha,
                  const PixelRange &range, ColorData &view);

} // namespace ColorSystem::Internal
