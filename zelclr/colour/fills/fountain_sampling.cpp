#include "zelclr/colour/fills/fountain_sampling.h"

#include "zelclr/colour/fills/internal/blend_curve.h"
#include "zelclr/colour/fills/internal/blend_path.h"
#include "zelclr/colour/fills/internal/blend_space.h"

#include <algorithm>
#include <limits>
#include <vector>

using ZelClr::BlendCurve;
using ZelClr::BlendSpace;

namespace {

using Stops = std::vector<const CLR_FOUNTCOLOR *>;

/// Samples are made so many at a time, which bounds the memory of colours with many plates.
constexpr std::size_t kMostAtOnce = 4096;

bool CanSample(const CLR_FOUNTCOLOR_ARRAY &fountain, int count)
{
  return count > 0 && count <= kMostFountainSamples && !fountain.IsEmpty();
}

Stops Sorted(const CLR_FOUNTCOLOR_ARRAY &fountain)
{
  Stops stops;
  stops.reserve(static_cast<std::size_t>(fountain.GetSize()));
  for (const CLR_FOUNTCOLOR &stop : fountain)
    stops.push_back(&stop);
  const auto before = [](const CLR_FOUNTCOLOR *a, const CLR_FOUNTCOLOR *b) { return a->position < b->position; };
  if (!std::is_sorted(stops.begin(), stops.end(), before))
    std::stable_sort(stops.begin(), stops.end(), before);
  return stops;
}

/// Calls `use(start, end, first, weights)` for samples from `first` on that lie between the stops of the indices
/// `start` and `end`, until all are made or one call answers false. A single stop is both.
template <class Use>
bool ForEachRun(const CLR_FOUNTCOLOR_ARRAY &fountain, const Stops &stops, std::size_t count, const Use &use)
{
  const double first = stops.front()->position;
  const double length = stops.back()->position - first;
  const auto placeOf = [&](std::size_t sample) {
    const double share = count == 1 ? 0.5 : static_cast<double>(sample) / static_cast<double>(count - 1);
    return first + share * length;
  };
  std::vector<double> weights(std::min(count, kMostAtOnce));
  std::size_t sample = 0;
  for (std::size_t end = std::min<std::size_t>(1, stops.size() - 1); end < stops.size() && sample < count; ++end) {
    const std::size_t start = end == 0 ? 0 : end - 1;
    const double from = stops[start]->position;
    const double to = stops[end]->position;
    const BlendCurve curve = BlendCurve::Of(fountain, *stops[start]);
    std::size_t made = weights.size();
    while (made == weights.size()) {
      for (made = 0; sample < count && made < weights.size(); ++sample) {
        const double place = placeOf(sample);
        if (place > to + std::numeric_limits<double>::epsilon())
          break;
        weights[made++] = to > from ? curve((place - from) / (to - from)) : 0.0;
      }
      if (made > 0 && !use(start, end, sample - made, std::span<const double>(weights).first(made)))
        return false;
    }
  }
  return true;
}

} // namespace

std::unique_ptr<CLR_COLORSPEC[]> CMGMakeInterColorSpecs(const CLR_FOUNTCOLOR_ARRAY &fountain, int count,
                                                        ColorSystem::ColorContext &context, bool keepInks)
{
  if (!CanSample(fountain, count))
    return nullptr;
  const Stops stops = Sorted(fountain);
  std::vector<const CLR_COLORSPEC *> colours;
  colours.reserve(stops.size());
  for (const CLR_FOUNTCOLOR *const stop : stops)
    colours.push_back(&stop->colour.Resolved());
  const auto space = BlendSpace::For(colours, keepInks);
  if (!space)
    return nullptr;

  const std::size_t size = space->Size();
  std::vector<double> numbers(stops.size() * size);
  const auto numbersOf = [&](std::size_t stop) { return std::span(numbers).subspan(stop * size, size); };
  for (std::size_t i = 0; i < stops.size(); ++i) {
    if (!space->Load(*colours[i], context, numbersOf(i)))
      return nullptr;
  }

  auto samples = std::make_unique<CLR_COLORSPEC[]>(static_cast<std::size_t>(count));
  std::vector<double> columns;
  const bool made =
    ForEachRun(fountain, stops, static_cast<std::size_t>(count),
               [&](std::size_t start, std::size_t end, std::size_t first, std::span<const double> weights) {
                 columns.resize(weights.size() * size);
                 if (!ZelClr::BlendBetween(*space, numbersOf(start), numbersOf(end), stops[start]->blendMode, weights,
                                           context, columns))
                   return false;
                 space->Store(columns, std::span(samples.get() + first, weights.size()));
                 return true;
               });
  return made ? std::move(samples) : nullptr;
}

std::unique_ptr<std::uint8_t[]> CMGMakeInterColorSpecsTransparency(const CLR_FOUNTCOLOR_ARRAY &fountain, int count)
{
  if (!CanSample(fountain, count))
    return nullptr;
  const Stops stops = Sorted(fountain);
  auto samples = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(count));
  ForEachRun(fountain, stops, static_cast<std::size_t>(count),
             [&](std::size_t start, std::size_t end, std::size_t first, std::span<const double> weights) {
               const double from = stops[start]->opacity, rise = stops[end]->opacity - from;
               for (std::size_t i = 0; i < weights.size(); ++i)
                 samples[first + i] = static_cast<std::uint8_t>(from + weights[i] * rise + 0.5);
               return true;
             });
  return samples;
}
