#include "zelclr/colour/fills/clr_fountcolor.h"

#include "zelclr/colour/fills/internal/fixed_point.h"

namespace {

constexpr int Sign(int a, int b)
{
  return (a > b) - (a < b);
}

/// Low byte first, each unsigned.
constexpr int CompareBytes(unsigned a, unsigned b)
{
  const int low = Sign(static_cast<int>(a & 0xFF), static_cast<int>(b & 0xFF));
  return low != 0 ? low : Sign(static_cast<int>(a >> 8 & 0xFF), static_cast<int>(b >> 8 & 0xFF));
}

} // namespace

void CLR_FOUNTCOLOR::SetBlendRateValue(double rate)
{
  blendRate = ZelClr::FixedFromReal(rate, 100.0);
}

int CLR_FOUNTCOLOR::CompareTo(const CLR_FOUNTCOLOR &other, bool ignoreBlend, bool resolveReferences) const
{
  // KEPT: low bytes first (see the header).
  if (const int sign = CompareBytes(position, other.position))
    return sign;
  const int colours =
    resolveReferences ? colour.Resolved().CompareTo(other.colour.Resolved()) : colour.CompareTo(other.colour);
  if (colours != 0)
    return Sign(colours, 0);
  if (const int sign = Sign(opacity, other.opacity); sign != 0 || ignoreBlend)
    return sign;
  if (const int sign = CompareBytes(blendMode, other.blendMode))
    return sign;
  return CompareBytes(static_cast<std::uint16_t>(blendRate), static_cast<std::uint16_t>(other.blendRate));
}
