// Samples of alpha beside colours.
//
// Threads and errors: plain functions.
#pragma once

#include "zelclr/colorsystem/pixel_format.h"

#include <cstddef>
#include <cstdint>

namespace cli {

/// Samples in another depth; from 8 to 16 bits each byte stands twice, and back the nearest is taken.
void ConvertAlpha(std::size_t count, unsigned fromBytes, unsigned toBytes, const std::uint8_t *from, std::uint8_t *to);

/// Colours of 8 bits, with alpha of 8 bits, laid over the white of their model: paper without ink, a screen at its
/// brightest.
void FlattenOnWhite(std::size_t pixels, const ColorSystem::PixelFormat &format, const std::uint8_t *alpha,
                    std::uint8_t *colours);

} // namespace cli
