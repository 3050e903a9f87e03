#include "cli/palette/context.h"
#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"
#include "cli/palette/writing.h"

#include <nlohmann/json.hpp>

namespace cli {

void ConvertPalette(const std::string &palette, const std::string &context, const Destination &destination,
                    const Output &output)
{
  const TargetFormat target = TargetOf(destination, {palette}, output);
  const LoadedPalette source = OpenPalette(palette);
  TargetOf(destination, {source.path}, output); // a name may have led to the very file
  if (context.empty()) {
    WriteAndTell(source, {source}, destination, target, "convert", Json::object(), output);
    return;
  }
  LoadedPalette moved = source;
  const std::vector<MovedColour> changes = MoveToContext(moved, ContextFrom(context));
  Json facts = Json::array();
  for (const MovedColour &change : changes)
    facts.push_back({{"before", JsonOfSwatch(change.before)}, {"after", JsonOfSwatch(change.after)}});
  WriteAndTell(std::move(moved), {source}, destination, target, "convert", {{"changed", facts}}, output);
  if (output.json || destination.path == "-")
    return;
  std::printf("%zu of %s changed\n", changes.size(), Counted(source.book.swatches.size(), "colour").c_str());
  for (const MovedColour &change : changes)
    std::printf("  %s: %s -> %s\n", NameInWords(change.before).c_str(), ValueInWords(change.before).c_str(),
                ValueInWords(change.after).c_str());
}

} // namespace cli
