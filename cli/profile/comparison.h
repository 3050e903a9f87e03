// Two profiles beside each other.
//
// Threads: values.
#pragma once

#include "cli/profile/profile_facts.h"

#include <optional>

namespace cli {

struct Comparison
{
  ProfileFacts a;
  ProfileFacts b;
  RenderingIntent intent; ///< of the gamuts that are compared

  bool HasGamuts() const { return a.HasGamut() && b.HasGamut(); }
  double VolumeOfA() const { return a.By(intent).volume->Size(); }
  double VolumeOfB() const { return b.By(intent).volume->Size(); }
  double CommonVolume() const { return a.By(intent).volume->CommonWith(*b.By(intent).volume); }
};

/// 0 of nothing.
inline double ShareOf(double part, double whole)
{
  return whole == 0 ? 0.0 : part / whole;
}

/// The CIEDE2000 between two colours that may be unknown.
std::optional<double> DifferenceOf(const std::optional<Lab> &a, const std::optional<Lab> &b);

} // namespace cli
