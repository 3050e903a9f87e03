// RGB profiles that are three curves and a matrix.
// Source: ICC.1:2022, 8.3.3 (three-component matrix-based input profiles), F.3 (their model), 10.31 (XYZType).
//
// Threads: values. Errors: an empty result for a profile that is none, or whose tags cannot be read.
#pragma once

#include "zelclr/platform/icc_curve.h"
#include "zelclr/platform/icc_file.h"

#include <array>
#include <optional>

namespace ZelUtl {

struct IccMatrix
{
  std::array<IccCurve, 3> curves;  ///< from red, green, blue to linear light
  std::array<IccXyz, 3> colorants; ///< of red, green, blue at full, on D50
};

std::optional<IccMatrix> IccMatrixOf(const IccFile &file);

} // namespace ZelUtl
