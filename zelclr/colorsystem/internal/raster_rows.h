// Rows of record models, brought before a converter as views of pixels.
//
// Threads: plain functions. Errors: false; views that cannot be throw ColorSystemError.
#pragma once

#include "zelclr/colorsystem/pixel_format.h"

#include <cstdint>
#include <optional>

namespace ColorSystem {
class SimpleColorConverter;
}

namespace ColorSystem::Internal {

/// How the pixels of a record model lie in memory.
struct RasterFormat
{
  PixelFormat format;
  double fullScale = 255.0; ///< of its samples
  /// Where the bytes are not those of managed pixels: the record model whose components they are.
  unsigned recordType = 0;
};

/// Null for models that have no rows: spot colours, mixtures and indices, registration, and those with a hue, which
/// does not fit a byte.
std::optional<RasterFormat> RasterFormatOf(unsigned type);

/// Stride 0 stands for rows padded to 4 bytes.
bool ConvertRaster(const SimpleColorConverter &converter, const void *source, const RasterFormat &from,
                   std::uint32_t sourceStride, void *destination, const RasterFormat &to,
                   std::uint32_t destinationStride, std::uint32_t width, std::uint32_t height);

} // namespace ColorSystem::Internal
