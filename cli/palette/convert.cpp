#include "cli/palette/installed.h"
#include "cli/palette/writing.h"

namespace cli {

void ConvertPalette(const std::string &palette, const Destination &destination, const Output &output)
{
  const TargetFormat target = TargetOf(destination, {palette}, output);
  const LoadedPalette source = OpenPalette(palette);
  TargetOf(destination, {source.path}, output); // a name may have led to the very file
  WriteAndTell(source, {source}, destination, target, "convert", Json::object(), output);
}

} // namespace cli
