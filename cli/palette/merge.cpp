#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"
#include "cli/palette/writing.h"

#include <nlohmann/json.hpp>

#include <map>
#include <set>

namespace cli {

namespace {

using ZelClr::Swatch;

/// "Brand + Web + 2 more"
std::string NameOf(const std::vector<LoadedPalette> &sources)
{
  constexpr std::size_t kMostNames = 3;
  std::string name;
  for (std::size_t i = 0; i < std::min(sources.size(), kMostNames); ++i)
    name += (i == 0 ? "" : " + ") + sources[i].Name();
  return sources.size() <= kMostNames ? name : name + " + " + std::to_string(sources.size() - kMostNames) + " more";
}

/// Puts palettes behind each other.
class Merger
{
public:
  void Add(const LoadedPalette &source)
  {
    const ZelClr::SwatchBook &book = source.book;
    if (merged_.columns == 0)
      merged_.columns = book.columns;
    auto group = book.groups.begin();
    std::string name = source.Name();
    for (std::size_t i = 0; i < book.swatches.size(); ++i) {
      for (; group != book.groups.end() && group->first <= i; ++group)
        name = source.Name() + ": " + group->name;
      const Swatch &swatch = book.swatches[i];
      const std::string key = ColourKey(swatch);
      if (!known_.insert({swatch.name, key}).second) {
        ++dropped_;
        continue;
      }
      if (swatch.spot)
        NoteInk(swatch, source);
      if (!name.empty())
        merged_.groups.push_back({std::exchange(name, {}), merged_.swatches.size()});
      merged_.swatches.push_back(swatch);
    }
  }

  ZelClr::SwatchBook Merged() && { return std::move(merged_); }
  std::size_t Dropped() const { return dropped_; }

private:
  struct Ink
  {
    std::string look;
    std::string path;
  };

  /// Inks of one name are one plate, so they must look the same.
  void NoteInk(const Swatch &swatch, const LoadedPalette &source)
  {
    Swatch solid = swatch;
    solid.tint = 1.0;
    const auto [ink, isNew] = inks_.insert({swatch.name, {ColourKey(solid), source.path}});
    if (!isNew && ink->second.look != ColourKey(solid) && told_.insert(swatch.name).second)
      merged_.notes.push_back("the spot colour \"" + swatch.name + "\" does not look the same in " + ink->second.path +
                              " and " + source.path + "; both are kept");
  }

  ZelClr::SwatchBook merged_;
  std::set<std::pair<std::string, std::string>> known_; // names and colours
  std::map<std::string, Ink> inks_;
  std::set<std::string> told_;
  std::size_t dropped_ = 0;
};

} // namespace

void MergePalettes(const std::vector<std::string> &palettes, const Destination &destination, const Output &output)
{
  const TargetFormat target = TargetOf(destination, palettes, output);
  std::vector<LoadedPalette> sources;
  Merger merger;
  std::size_t count = 0;
  for (const std::string &palette : palettes) {
    sources.push_back(OpenPalette(palette));
    TargetOf(destination, {sources.back().path}, output); // a name may have led to the very file
    count += sources.back().book.swatches.size();
    if (count > ZelClr::kMostSwatches)
      throw Failure(ExitCode::Usage, "together more than " + std::to_string(ZelClr::kMostSwatches) + " colours");
    merger.Add(sources.back());
  }
  const std::size_t dropped = merger.Dropped();
  LoadedPalette merged;
  merged.path = sources.front().path;
  merged.book = std::move(merger).Merged();
  merged.book.name = NameOf(sources);
  const std::vector<std::string> conflicts = std::exchange(merged.book.notes, {});
  const std::size_t colours = merged.book.swatches.size();
  WriteAndTell(std::move(merged), sources, destination, target, "merge",
               {{"colours", colours}, {"dropped", dropped}, {"conflicts", conflicts}}, output);
  SayNotes(destination.path, conflicts);
}

} // namespace cli
