#include "cli/colour_facts.h"
#include "cli/palette/commands.h"
#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/formulas/colour_difference.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace cli {

namespace {

using ZelClr::Swatch;

struct Found
{
  double distance = 0;
  Swatch swatch;
  std::string palette;
  std::string path;
};

std::string TextOf(const Swatch &wanted, const std::vector<Found> &found, const Output &output)
{
  std::size_t columns = 16;
  for (const Found &row : found)
    columns = std::clamp<std::size_t>(TextColumns(NameInWords(row.swatch)), columns, 40);
  std::string text = output.Swatch(ScreenOf(wanted), 6) + output.Bold(ValueInWords(wanted)) + "\n\n";
  for (const Found &row : found) {
    const std::string ink = InkInWords(row.swatch);
    const std::string distance = OneDecimal(row.distance);
    text += output.Swatch(ScreenOf(row.swatch), 6) + Fitted(NameInWords(row.swatch), columns) + "  \u0394E2000 " +
            std::string(5 - std::min<std::size_t>(5, distance.size()), ' ') + distance + "  " +
            Fitted(ValueInWords(row.swatch) + (ink.empty() ? "" : ", " + ink), 24) + "  " +
            output.Faint(Harmless(row.palette)) + "\n";
  }
  return text;
}

Json JsonOf(const Found &row)
{
  return {{"deltaE2000", std::round(row.distance * 100.0) / 100.0},
          {"palette", row.palette},
          {"file", row.path},
          {"colour", JsonOfSwatch(row.swatch)}};
}

} // namespace

void FindColour(const std::string &colour, const std::vector<std::string> &palettes, std::size_t count,
                const Output &output)
{
  const Swatch wanted = ZelClr::RecordSwatch({}, ColourFromInput(colour));
  const auto lab = LabOf(wanted);
  if (!lab)
    throw Failure(ExitCode::Missing, ZelClr::TextFromColorSpec(wanted.record) + " has no known look");
  std::vector<LoadedPalette> searched;
  searched.reserve(palettes.size());
  for (const std::string &palette : palettes)
    searched.push_back(OpenPalette(palette));
  if (palettes.empty()) {
    for (const WClrPalette *const palette : InstalledPalettes())
      searched.push_back(LoadedFrom(*palette));
  }
  std::vector<Found> found;
  std::size_t colours = 0;
  for (const LoadedPalette &palette : searched) {
    colours += palette.book.swatches.size();
    for (const Swatch &swatch : palette.book.swatches) {
      if (const auto other = LabOf(swatch))
        found.push_back({ZelClr::Formulas::Ciede2000(*lab, *other), swatch, palette.Name(), palette.path});
    }
  }
  std::stable_sort(found.begin(), found.end(), [](const Found &a, const Found &b) { return a.distance < b.distance; });
  found.resize(std::min(count, found.size()));
  if (found.empty())
    throw Failure(ExitCode::Missing, palettes.empty() ? "no palette is installed" : "there is no colour to be found");
  if (output.json) {
    Json nearest = Json::array();
    for (const Found &row : found)
      nearest.push_back(JsonOf(row));
    PrintJson(
      "zelclr.palette.find",
      {{"colour", JsonOfSwatch(wanted)}, {"palettes", searched.size()}, {"colours", colours}, {"nearest", nearest}});
  } else {
    std::fputs(TextOf(wanted, found, output).c_str(), stdout);
  }
}

} // namespace cli
