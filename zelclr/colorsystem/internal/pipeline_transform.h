// Pixels through a pipeline, exactly.
//
// Threads: plain functions. Errors: none but those stated.
#pragma once

#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/colorsystem/internal/icc_pipeline.h"

namespace ColorSystem::Internal {

/// Views of one size, of the pipeline's models, with samples of 8 or 16 bits; both may be one where their pixels have
/// one size. Alpha is copied where both have it, else full. Results are rounded to the nearest sample.
void ConvertByPipeline(const IccPipeline &pipeline, const ColorData &source, ColorData &destination);

/// Whether the engine's own transform, which is exact, has the same results for some hundred colours, but for its
/// rounding.
bool AgreesWith(const ColorTransform &exact, const TransformOptions &options, const IccPipeline &pipeline);

} // namespace ColorSystem::Internal
