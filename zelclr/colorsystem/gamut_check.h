// Whether a device can show a colour: it goes to the device by the relative colorimetric intent and back, and is in the
// gamut when it comes back as good as it was.
//
// Threads: one check may be used by many threads at once. Errors: where no transforms can be made, every colour counts
// as in gamut.
#pragma once

#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colour/clr_colorspec.h"

#include <cstdint>
#include <memory>
#include <span>

namespace ColorSystem {

class ZELCLR_API GamutCheck
{
public:
  /// The CIEDE2000 between a colour and what comes back of it, beyond which it is out of gamut. The tables of a press
  /// profile are true to all but about one in a thousand of its own colours within less
  /// (tests/colorsystem/gamut_check_test.cpp), and the eye forgives that much between two prints.
  static constexpr double kTolerance = 2.5;

  /// From the profile of the colours to that of the device.
  GamutCheck(std::shared_ptr<ColorProfile> source, std::shared_ptr<ColorProfile> device);

  /// A record in the canonical model of its family, which must be the source profile's.
  bool Holds(const CLR_COLORSPEC &normalized) const;
  /// How far each pixel is from what comes back of it, row by row without gaps. False when the view is not of the
  /// source profile's model.
  bool Distances(const ColorData &source, std::span<float> distances) const;
  /// 255 for each pixel that is out of gamut and 0 for the others, for screens: by a table of distances, which is made
  /// at the first call for two profiles. Near the edge of the gamut a pixel may be taken for its neighbour. False as
  /// above, and for pixels that no table can have.
  bool Mask(const ColorData &source, std::span<std::uint8_t> mask) const;

private:
  std::shared_ptr<ColorProfile> source_;
  std::shared_ptr<ColorProfile> device_;
};

} // namespace ColorSystem
