// Rows of pixels by baked conversions, many pixels at once.
//
// Nothing beyond the rows is read or written, and both may be one row where their pixels have one size. The results are
// the same on every processor, and those of a pixel do not depend on its neighbours.
//
// Threads: plain functions. Errors: none; every byte is a sample.
#pragma once

#include "zelclr/colorsystem/internal/baked_matrix.h"
#include "zelclr/colorsystem/internal/baked_table.h"

#include <cstddef>
#include <cstdint>

namespace ColorSystem::Internal {

/// How the pixels of a row lie: their samples, and whether one of alpha follows the colours.
struct BakedPixels
{
  unsigned bytesPerSample = 1; ///< 1 or 2
  bool alpha = false;
};

/// The destination's alpha is the source's, else full.
void ConvertBakedRow(const BakedTable &table, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                     std::uint8_t *destination, std::size_t pixels);
/// The same for samples of 8 bits.
void ConvertBakedRow(const BakedMatrix &matrix, BakedPixels from, const std::uint8_t *source, BakedPixels to,
                     std::uint8_t *destination, std::size_t pixels);

} // namespace ColorSystem::Internal
