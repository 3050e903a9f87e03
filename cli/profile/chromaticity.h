// Gamuts as chromaticities: x and y of CIE 1931.
//
// Colours of profiles are adapted to D50. Where a profile says by what matrix ('chad'), its chromaticities are those of
// the device, on the device's own white; else they stay on D50.
//
// Threads: values and plain functions. Errors: an empty result.
#pragma once

#include "cli/profile/gamut.h"
#include "zelclr/convert/formulas/record_lab.h"
#include "zelclr/platform/icc_file.h"

#include <array>
#include <optional>

namespace cli {

using ZelClr::Formulas::Xyz;

/// Three rows, which take XYZ of a device's white to XYZ on D50.
using Adaptation = std::array<double, 9>;

inline constexpr Adaptation kNoAdaptation = {1, 0, 0, 0, 1, 0, 0, 0, 1};
/// From D65 by the linear Bradford matrix: IEC 61966-2-1 as the ICC publishes it.
inline constexpr Adaptation kAdaptationFromD65 = {1.0478112,  0.0228866,  -0.0501270, 0.0295424, 0.9904844,
                                                  -0.0170491, -0.0092345, 0.0150436,  0.7521316};

/// Empty when the profile does not say it, or says one that cannot be undone.
std::optional<Adaptation> AdaptationOf(const ZelUtl::IccFile &file);

Xyz Adapted(const Xyz &xyz, const Adaptation &adaptation);
Adaptation Inverse(const Adaptation &adaptation);

/// x and y of a colour, `fromD50` being the inverse of what adapted it.
PlanePoint ChromaticityOf(const Lab &lab, const Adaptation &fromD50);
/// The chromaticities of all colours but the darkest, below L* 5, whose x and y are uncertain.
PlaneMask ChromaticitiesOf(const Gamut &gamut, const Adaptation &fromD50);

} // namespace cli
