// Gamuts: the colours that a device can make, as bodies in CIE Lab on D50.
//
// The device's colours are cut into small cells, each cell into six tetrahedra, and the tetrahedra are taken over into
// Lab, where together they are the gamut, whatever its form. Of three channels that is the cube; of four or six inks it
// is every cube in which three inks vary and each other one is at none or at full: what inks can mix at all, three
// inks between none and full can mix.
//
// Threads: values and plain functions. Errors: an empty result.
#pragma once

#include "cli/profile/plane_mask.h"
#include "cli/profile/profile_colours.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace cli {

struct Gamut
{
  std::vector<Lab> corners;
  std::vector<std::array<std::uint32_t, 4>> tetrahedra;
  bool cutOff = false; ///< it goes on where a* or b* is beyond -128 or 127, which the engine cannot say
};

/// The gamut of a profile by one intent; `reason` says why there is none, "a gray profile has no ...".
std::optional<Gamut> GamutOf(const ColorSystem::ColorProfile &profile, RenderingIntent intent, std::string &reason);
/// The gamut of sRGB by its definition.
Gamut SrgbGamut();

/// The gamut at one L*, a* to the right and b* up, in square cells of this size.
PlaneMask SliceOf(const Gamut &gamut, double lightness, double cell);

/// What the gamut holds, cut into a hundred slices of one L* each and those into cells of one a* and one b*.
class GamutVolume
{
public:
  explicit GamutVolume(const Gamut &gamut);

  /// In cubic Delta E.
  double Size() const { return CommonWith(*this); }
  double CommonWith(const GamutVolume &other) const;

private:
  std::vector<PlaneMask> slices_;
};

} // namespace cli
