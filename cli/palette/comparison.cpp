#include "cli/palette/comparison.h"

#include "cli/palette/swatch_facts.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>

namespace cli {

namespace {

using ZelClr::Swatch;
using ZelClr::SwatchBook;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Which colour of the one palette belongs to which of the other.
struct Partners
{
  std::vector<std::size_t> ofA;
  std::vector<std::size_t> ofB;

  /// Pairs those that have none yet and whose keys are equal, in order; those without a key stay.
  template <class KeyOf>
  std::vector<ColourPair> Pair(const SwatchBook &a, const SwatchBook &b, KeyOf keyOf)
  {
    std::map<std::string, std::deque<std::size_t>> free;
    for (std::size_t i = 0; i < ofB.size(); ++i) {
      if (ofB[i] == kNone)
        free[keyOf(b.swatches[i])].push_back(i);
    }
    std::vector<ColourPair> pairs;
    for (std::size_t i = 0; i < ofA.size(); ++i) {
      const std::string key = ofA[i] == kNone ? keyOf(a.swatches[i]) : std::string();
      const auto found = key.empty() ? free.end() : free.find(key);
      if (found == free.end() || found->second.empty())
        continue;
      pairs.push_back({i, found->second.front()});
      found->second.pop_front();
      ofA[i] = pairs.back().b;
      ofB[pairs.back().b] = i;
    }
    return pairs;
  }
};

/// The pairs beside the longest run of colours that keep their order: patience sorting, M. Fredman, "On computing the
/// length of longest increasing subsequences", 1975.
std::vector<ColourPair> MovedOf(const std::vector<std::size_t> &partners)
{
  std::vector<std::size_t> ends;                           // the best last member of a run of each length
  std::vector<std::size_t> before(partners.size(), kNone); // in the run that ends there
  for (std::size_t i = 0; i < partners.size(); ++i) {
    if (partners[i] == kNone)
      continue;
    const auto place = std::lower_bound(ends.begin(), ends.end(), partners[i],
                                        [&](std::size_t end, std::size_t b) { return partners[end] < b; });
    if (place != ends.begin())
      before[i] = *(place - 1);
    if (place == ends.end())
      ends.push_back(i);
    else
      *place = i;
  }
  std::vector<bool> stays(partners.size(), false);
  for (std::size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = before[i])
    stays[i] = true;
  std::vector<ColourPair> moved;
  for (std::size_t i = 0; i < partners.size(); ++i) {
    if (partners[i] != kNone && !stays[i])
      moved.push_back({i, partners[i]});
  }
  return moved;
}

} // namespace

bool PaletteComparison::IsSame() const
{
  return added.empty() && removed.empty() && renamed.empty() && changed.empty() && moved.empty();
}

PaletteComparison Compared(const SwatchBook &a, const SwatchBook &b, double tolerance)
{
  Partners partners = {std::vector(a.swatches.size(), kNone), std::vector(b.swatches.size(), kNone)};
  PaletteComparison comparison;
  partners.Pair(a, b, [](const Swatch &swatch) { return swatch.name + '\n' + ColourKey(swatch); });
  for (const ColourPair &pair : partners.Pair(a, b, [](const Swatch &swatch) { return swatch.name; })) {
    const auto difference = DifferenceOf(a.swatches[pair.a], b.swatches[pair.b]);
    if (!difference || tolerance <= 0.0 || *difference > tolerance)
      comparison.changed.push_back({pair, difference});
  }
  comparison.renamed = partners.Pair(a, b, ColourKey);
  for (std::size_t i = 0; i < partners.ofA.size(); ++i) {
    if (partners.ofA[i] == kNone)
      comparison.removed.push_back(i);
  }
  for (std::size_t i = 0; i < partners.ofB.size(); ++i) {
    if (partners.ofB[i] == kNone)
      comparison.added.push_back(i);
  }
  comparison.moved = MovedOf(partners.ofA);
  return comparison;
}

} // namespace cli
