#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"
#include "cli/palette/writing.h"
#include "zelclr/palettes/color_sorting.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <numeric>
#include <optional>

namespace cli {

namespace {

using ZelClr::Swatch;

struct SortKey
{
  const char *word;
  std::optional<ZelClr::PalSortType> type; ///< empty: by name
};
constexpr SortKey kSortKeys[] = {{"hue", ZelClr::SortHue},
                                 {"saturation", ZelClr::SortSaturation},
                                 {"brightness", ZelClr::SortBrightness},
                                 {"hsb", ZelClr::SortHSB},
                                 {"rgb", ZelClr::SortRGB},
                                 {"name", std::nullopt}};

/// Where those of a stretch of swatches come to stand: indices of the stretch.
std::vector<std::size_t> OrderOf(std::span<const Swatch> swatches, const SortKey &key)
{
  std::vector<CLR_COLORSPEC> colours;
  std::vector<std::wstring> names;
  for (const Swatch &swatch : swatches) {
    colours.push_back(ScreenOf(swatch));
    names.push_back(ZelUtl::WideFromUtf8(swatch.name));
  }
  if (!key.type)
    return ZelClr::OrderOfNames(names, colours);
  return ZelClr::OrderOfColors(colours, *key.type, ColorSystem::ColorContext::GetApplicationDefaultColorContext());
}

/// Each group by itself.
std::vector<std::size_t> OrderOf(const ZelClr::SwatchBook &book, const SortKey &key, bool reverse)
{
  std::vector<std::size_t> edges = {0};
  for (const ZelClr::SwatchGroup &group : book.groups)
    edges.push_back(std::min(group.first, book.swatches.size()));
  edges.push_back(book.swatches.size());
  std::vector<std::size_t> order;
  for (std::size_t i = 1; i < edges.size(); ++i) {
    const std::size_t first = edges[i - 1];
    std::vector<std::size_t> stretch = OrderOf(std::span(book.swatches).subspan(first, edges[i] - first), key);
    if (reverse)
      std::reverse(stretch.begin(), stretch.end());
    for (const std::size_t index : stretch)
      order.push_back(first + index);
  }
  return order;
}

} // namespace

std::vector<std::string> SortKeys()
{
  std::vector<std::string> words;
  for (const SortKey &key : kSortKeys)
    words.emplace_back(key.word);
  return words;
}

void SortPalette(const SortArguments &arguments, const Destination &destination, const Output &output)
{
  const TargetFormat target = TargetOf(destination, {arguments.palette}, output);
  const LoadedPalette source = OpenPalette(arguments.palette);
  TargetOf(destination, {source.path}, output); // a name may have led to the very file
  const SortKey &key = *std::find_if(std::begin(kSortKeys), std::end(kSortKeys) - 1,
                                     [&](const SortKey &row) { return row.word == arguments.by; });
  LoadedPalette sorted = source;
  if (arguments.acrossGroups) {
    sorted.book.groups.clear();
    if (sorted.own)
      sorted.own->FlattenPages();
  }
  const std::vector<std::size_t> order = OrderOf(sorted.book, key, arguments.reverse);
  std::size_t moved = 0;
  std::vector<Swatch> swatches;
  for (std::size_t i = 0; i < order.size(); ++i) {
    swatches.push_back(sorted.book.swatches[order[i]]);
    moved += order[i] != i;
  }
  sorted.book.swatches = std::move(swatches);
  if (sorted.own)
    sorted.own->Reorder(order);
  WriteAndTell(std::move(sorted), {source}, destination, target, "sort",
               {{"by", arguments.by}, {"reverse", arguments.reverse}, {"moved", moved}}, output);
}

} // namespace cli
