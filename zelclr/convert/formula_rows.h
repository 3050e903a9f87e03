// Rows of pixels by the formulas of formulas.h, many pixels at once.
//
// Threads: plain functions. Errors: none; every byte is a component.
#pragma once

#include "zelclr/platform/export.h"

#include <cstddef>
#include <cstdint>

namespace ZelClr {

/// A row of pixels from one packed layout to another. The result is bit by bit that of the formula on each pixel,
/// whatever instructions the processor has. Source and destination hold `pixels` pixels without padding and may be one
/// buffer only where both layouts have the same size; they must not overlap otherwise.
///
/// Layouts in memory: RGB three bytes red, green, blue; CMYK four bytes cyan, magenta, yellow, black; GRAY one byte;
/// HSB and HLS four bytes as in the record: hue in degrees as signed 16 bits, least significant byte first, then
/// saturation and brightness, or lightness and saturation. Components 0 to 255. A hue of HSB beyond 0 to 359 wraps; one
/// of HLS must lie in 0 to 359.
using RowConversion = void(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels);

ZELCLR_API RowConversion HsbRowFromRgb;
ZELCLR_API RowConversion RgbRowFromHsb;
ZELCLR_API RowConversion HlsRowFromRgb;
ZELCLR_API RowConversion RgbRowFromHls;
ZELCLR_API RowConversion GrayRowFromRgb;
ZELCLR_API RowConversion CmykRowFromRgb;
ZELCLR_API RowConversion RgbRowFromCmyk;
ZELCLR_API RowConversion AddedInksRowFromRgb; ///< to CMYK, as RgbRowFromAddedInks from it
ZELCLR_API RowConversion RgbRowFromAddedInks;
ZELCLR_API RowConversion YiqRowFromRgb;

} // namespace ZelClr
