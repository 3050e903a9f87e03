// Tables of ICC profiles that lead to the connection space and from it.
// Source: ICC.1:2022, 10.10 (lut8Type), 10.11 (lut16Type).
//
// Threads: values. Errors: an empty result for bytes that are no such table, or that are too short for it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ZelUtl {

/// Numbers are 0 to 1.
struct IccLut
{
  unsigned inputs = 0;            ///< 1 to 15
  unsigned outputs = 0;           ///< likewise
  unsigned grid = 0;              ///< points along each input
  bool isWide = false;            ///< of 16 bits: Lab is encoded as in version 2 then
  std::array<double, 9> matrix{}; ///< before all else, for three inputs that are XYZ
  std::vector<std::vector<float>> inputCurves, outputCurves;
  std::vector<float> table; ///< the last input counts fastest; `outputs` numbers to a point
};

std::optional<IccLut> IccLutFromTag(std::span<const std::uint8_t> tag);

} // namespace ZelUtl
