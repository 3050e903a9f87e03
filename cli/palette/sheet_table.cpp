// The sheet on a terminal, and as JSON.

#include "cli/palette/sheet.h"
#include "cli/palette/swatch_facts.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace cli {

std::string TableOf(const Sheet &sheet, const Output &output)
{
  std::size_t nameColumns = 12;
  std::size_t valueColumns = 12;
  for (const SheetGroup &group : sheet.groups) {
    for (const SheetColour &colour : group.colours) {
      nameColumns = std::clamp<std::size_t>(TextColumns(NameInWords(colour.swatch)), nameColumns, 40);
      valueColumns = std::clamp<std::size_t>(TextColumns(ValueInWords(colour.swatch)), valueColumns, 40);
    }
  }
  std::string text =
    output.Bold(Harmless(sheet.name)) + "\n" + SummaryOf(sheet) + ". " +
    output.Faint(std::string(sheet.title) + (sheet.locked ? ", locked" : "") + "  " + Harmless(sheet.path)) + "\n";
  if (!sheet.press.empty())
    text += GamutInWords(sheet) + ".\n";
  for (const SheetGroup &group : sheet.groups) {
    text += "\n" + (group.name.empty() ? "" : output.Bold(Harmless(group.name)) + "\n");
    for (const SheetColour &colour : group.colours) {
      std::string marks = InkInWords(colour.swatch);
      if (!colour.inGamut)
        marks += marks.empty() ? "out of gamut" : ", out of gamut";
      std::string swatch = output.Swatch(colour.screen, 7);
      if (swatch.empty() && output.DrawsColour())
        swatch = std::string(8, ' ');
      const std::string line = Fitted(NameInWords(colour.swatch), nameColumns) + "  " +
                               Fitted(ValueInWords(colour.swatch), valueColumns) + "  " +
                               Fitted(ScreenInWords(colour.screen), 13) + "  " + marks;
      text += "  " + swatch + line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
  }
  return text;
}

Json JsonOf(const Sheet &sheet)
{
  Json groups = Json::array();
  for (const SheetGroup &group : sheet.groups) {
    Json colours = Json::array();
    for (const SheetColour &colour : group.colours) {
      Json entry = JsonOfSwatch(colour.swatch);
      if (!sheet.press.empty())
        entry["inGamut"] = colour.screen.IsInvalid() ? Json() : Json(colour.inGamut);
      colours.push_back(std::move(entry));
    }
    groups.push_back({{"name", group.name.empty() ? Json() : Json(group.name)}, {"colours", colours}});
  }
  return {{"name", sheet.name},
          {"description", sheet.description},
          {"file", sheet.path},
          {"format", sheet.format},
          {"identifier", sheet.identifier.empty() ? Json() : Json(sheet.identifier)},
          {"locked", sheet.locked},
          {"columns", sheet.columns == 0 ? Json() : Json(sheet.columns)},
          {"press", sheet.press.empty() ? Json() : Json(sheet.press)},
          {"groups", groups},
          {"notes", sheet.notes}};
}

} // namespace cli
