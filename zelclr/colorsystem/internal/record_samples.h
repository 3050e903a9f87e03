// A record as one pixel of managed colour.
//
// Threads and errors: plain functions.
#pragma once

#include "zelclr/colorsystem/pixel_format.h"
#include "zelclr/colour/clr_colorspec.h"

#include <array>
#include <cstdint>

namespace ColorSystem::Internal {

/// Samples of 16 bits; of Hexachrome, for which engines have no other, of 8.
constexpr PixelFormat RecordPixelFormat(ColorModel model)
{
  return {model, model == ColorModel::Hexachrome ? SampleType::UInt8 : SampleType::UInt16};
}

/// One pixel in RecordPixelFormat, the samples as they lie in memory.
struct RecordPixel
{
  ColorModel model = ColorModel::Rgb;
  alignas(8) std::array<std::uint8_t, 12> bytes{};
};

/// Of a colour in the canonical model of its family, of LAB and of XYZ255; false for one that has no model here.
bool PixelFromRecord(const CLR_COLORSPEC &normalized, RecordPixel &pixel);

/// A record of any model whose family has the pixel's model; of LAB255 also XYZ. False for any other type. Components
/// are rounded. `alpha` is that of RGBA and BGRA.
bool RecordFromPixel(const RecordPixel &pixel, unsigned type, std::uint8_t alpha, CLR_COLORSPEC &record);

} // namespace ColorSystem::Internal
