// Fountain fills as runs of colours and opacities, for renderers.
//
// Threads: plain functions. Errors: null.
#pragma once

#include "zelclr/colour/fills/fountain_blending.h"

#include <memory>

/// No fill is sampled more often: positions have 16 bits.
inline constexpr int kMostFountainSamples = 65536;

/// `count` colours at even distances from the first stop to the last, both included, all in the model of
/// CMGGetBlendColorSpace; a single one lies in the middle. Stops count by position, whatever their order in the array,
/// and where several are at one place a sample there takes the first's colour. Between two stops the curve of
/// docs/fountains.md (midpoint, method, acceleration) and the blend mode of the stop before decide.
/// Null for a count below 1 or above kMostFountainSamples, for an empty array, and where colours cannot be blended.
ZELCLR_API std::unique_ptr<CLR_COLORSPEC[]> CMGMakeInterColorSpecs(const CLR_FOUNTCOLOR_ARRAY &fountain, int count,
                                                                   ColorSystem::ColorContext &context, bool keepInks);

/// The opacities at the same places, 0 to 255, by the same curve, so that a colour and its opacity arrive together;
/// each is blended by itself and not multiplied into the colour. The raster operation has no effect here. Null for the
/// same counts and for an empty array.
ZELCLR_API std::unique_ptr<std::uint8_t[]> CMGMakeInterColorSpecsTransparency(const CLR_FOUNTCOLOR_ARRAY &fountain,
                                                                              int count);
