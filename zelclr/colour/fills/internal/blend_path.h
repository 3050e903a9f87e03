// The numbers of the colours between two others.
//
// Threads: a plain function. Errors: false where a blend of hue needs a conversion that there is no way for.
#pragma once

#include "zelclr/colour/fills/clr_fountcolor.h"
#include "zelclr/colour/fills/internal/blend_space.h"

namespace ZelClr {

/// `from` and `to` are numbers of the space. For each weight of 0 to 1 the blend, as BlendSpace::Store takes it:
/// weights.size() first numbers, then as many second ones. 0 and 1 give the ends exactly. A blend of hue goes through
/// one conversion of all its colours; where colours have no hue it is straight.
bool BlendBetween(const BlendSpace &space, std::span<const double> from, std::span<const double> to, ClrBlendMode mode,
                  std::span<const double> weights, ColorSystem::ColorContext &context, std::span<double> columns);

} // namespace ZelClr
