#include "zelclr/palettes/internal/closest_color.h"

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/palettes/internal/managed_values.h"

#include <cmath>

namespace ZelClr {

namespace {

using Formulas::Lab;

Lab LabOf(const ManagedValues &values)
{
  return {values[0], values[1], values[2]};
}

/// No CIEDE2000 between the two is smaller; without angles, so that most candidates cost a few multiplications. With
/// the letters of the formula:
///
///   dE^2 = (dL/SL)^2 + (dC/SC)^2 + (dH/SH)^2 + RT (dC/SC)(dH/SH),   dC^2 + dH^2 = da'^2 + db^2
///   SL <= 1 + 0.015 * 50^2 / sqrt(20 + 50^2) < 1.75
///   SC = 1 + 0.045 C', and SH <= 1 + 0.015 * 1.93 C' is less; C', the mean of both, is at most 1.5 times that of C
///   RT = -sin(60 deg * ...) * 2 * ... > -1.7321 and < 1.7321, and |xy| <= (x^2 + y^2)/2, so that at least the part
///   1 - 1.7321/2 > 0.1339 of the two squares stays
///   a' = (1 + G) a with one G of at least 0 for both, so that |da'| >= |da|
double SquaredLowerBound(const Lab &first, double firstChroma, const Lab &second, double secondChroma)
{
  const double dL = (first.l - second.l) / 1.75;
  const double da = first.a - second.a;
  const double db = first.b - second.b;
  const double sC = 1.0 + 0.045 * 0.75 * (firstChroma + secondChroma);
  return dL * dL + 0.1339 * (da * da + db * db) / (sC * sC);
}

} // namespace

ClosestColor::ClosestColor(std::span<const CLR_COLORSPEC> colors, const ColorSystem::ColorContext &context)
  : engine_(ColorSystem::ColorManagementSystem::GetCurrent()),
    context_(context),
    converter_(context_, context_)
{
  const auto labs = LabOfColors(colors, converter_);
  for (std::size_t i = 0; i < labs.size(); ++i) {
    if (labs[i])
      candidates_.push_back({LabOf(*labs[i]), std::hypot((*labs[i])[1], (*labs[i])[2]), static_cast<int>(i)});
  }
}

bool ClosestColor::IsFor(const ColorSystem::ColorContext &context) const
{
  return context == context_ && ColorSystem::ColorManagementSystem::GetCurrent() == engine_;
}

int ClosestColor::Find(const CLR_COLORSPEC &color) const
{
  const auto values = LabOfColors({&color, 1}, converter_).front();
  if (!values || candidates_.empty())
    return -1;
  const Lab wanted = LabOf(*values);
  const double chroma = std::hypot(wanted.a, wanted.b);
  const auto bound = [&](const Candidate &c) { return SquaredLowerBound(wanted, chroma, c.lab, c.chroma); };

  // A likely one first: what its distance rules out needs no closer look.
  const Candidate *best = &candidates_.front();
  double least = bound(*best);
  for (const Candidate &candidate : candidates_) {
    if (const double squared = bound(candidate); squared < least) {
      least = squared;
      best = &candidate;
    }
  }
  double distance = Formulas::Ciede2000(wanted, best->lab);
  for (const Candidate &candidate : candidates_) {
    if (bound(candidate) > distance * distance * (1.0 + 1e-9))
      continue;
    const double found = Formulas::Ciede2000(wanted, candidate.lab);
    if (found < distance || (found == distance && candidate.index < best->index)) {
      distance = found;
      best = &candidate;
    }
  }
  return best->index;
}

} // namespace ZelClr
