#include "zelclr/colour/fills/fountain_blending.h"

#include "zelclr/colour/fills/internal/blend_path.h"
#include "zelclr/colour/fills/internal/blend_space.h"

#include <algorithm>
#include <cmath>
#include <vector>

using ZelClr::BlendSpace;

namespace {

double Usable(double ratio)
{
  return std::isfinite(ratio) && ratio > 0.0 ? ratio : 0.0;
}

} // namespace

CLR_TYPE_ENUM CMGGetBlendColorSpace(const CLR_FOUNTCOLOR_ARRAY &fountain, bool keepInks)
{
  std::vector<const CLR_COLORSPEC *> colours;
  for (const CLR_FOUNTCOLOR &stop : fountain)
    colours.push_back(&stop.colour.Resolved());
  const auto space = BlendSpace::For(colours, keepInks);
  return space ? static_cast<CLR_TYPE_ENUM>(space->Model()) : CLR_TYPE_ENUM{0};
}

bool CMGBlendColorSpec(CLR_COLORSPEC &result, const CLR_COLORSPEC &from, const CLR_COLORSPEC &to, double share,
                       ClrBlendMode mode, bool keepInks, ColorSystem::ColorContext &context)
{
  const CLR_COLORSPEC *const colours[] = {&from.Resolved(), &to.Resolved()};
  const auto space = BlendSpace::For(colours, keepInks);
  if (!space)
    return false;
  std::vector<double> start(space->Size()), end(space->Size()), blended(space->Size());
  const double weight = share > 0.0 ? std::min(share, 1.0) : 0.0;
  if (!space->Load(*colours[0], context, start) || !space->Load(*colours[1], context, end) ||
      !ZelClr::BlendBetween(*space, start, end, mode, std::span(&weight, 1), context, blended))
    return false;
  CLR_COLORSPEC made;
  space->Store(blended, std::span(&made, 1));
  result = std::move(made);
  return true;
}

bool CMGBlendColorSpecByRatios(CLR_COLORSPEC &result, std::span<const CLR_COLORSPEC> colours,
                               std::span<const double> ratios, bool keepInks, ColorSystem::ColorContext &context)
{
  if (colours.empty() || colours.size() != ratios.size())
    return false;
  double most = 0.0, sum = 0.0;
  for (const double ratio : ratios)
    most = std::max(most, Usable(ratio));
  for (const double ratio : ratios)
    sum += Usable(ratio) / most; // so that it stays finite
  std::vector<const CLR_COLORSPEC *> resolved;
  for (const CLR_COLORSPEC &colour : colours)
    resolved.push_back(&colour.Resolved());
  const auto space = BlendSpace::For(resolved, keepInks);
  if (!space || !(most > 0.0))
    return false;
  std::vector<double> numbers(space->Size()), mixed(space->Size());
  for (std::size_t i = 0; i < resolved.size(); ++i) {
    const double weight = Usable(ratios[i]) / most / sum;
    if (!space->Load(*resolved[i], context, numbers))
      return false;
    for (std::size_t c = 0; c < mixed.size(); ++c)
      mixed[c] += weight * numbers[c];
  }
  CLR_COLORSPEC made;
  space->Store(mixed, std::span(&made, 1));
  result = std::move(made);
  return true;
}
