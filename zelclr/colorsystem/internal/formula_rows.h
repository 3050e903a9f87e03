// The rows behind formula_pixels.h, compiled for each instruction set.
//
// Threads: plain functions. Errors: none.
#pragma once

#include "zelclr/colorsystem/pixel_format.h"

#include <cstddef>

namespace ColorSystem {

struct FormulaRows
{
  const std::uint8_t *source;
  std::uint8_t *destination;
  std::size_t sourceStride; ///< in bytes
  std::size_t destinationStride;
  std::size_t width; ///< in pixels
  std::size_t height;
  PixelFormat from; ///< models among the six of HasFormula
  PixelFormat to;
};

/// The result is the same to the last bit on every instruction set. Nothing beyond the pixels is read or written.
/// Source and destination may be one buffer where pixel sizes and strides are equal.
void ConvertFormulaRows(const FormulaRows &rows);

} // namespace ColorSystem
