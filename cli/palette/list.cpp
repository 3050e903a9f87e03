#include "cli/palette/commands.h"
#include "cli/palette/installed.h"
#include "cli/palette/swatch_facts.h"
#include "zelclr/palettes/palette_exchange.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

struct ListRow
{
  std::string name;
  ZelClr::SwatchBook book;
  std::vector<std::string> models; ///< in the order of their first colours
  std::size_t spots = 0;
  bool locked;
  bool custom;
  std::string identifier;
  std::string path;
};

ListRow RowOf(const WClrPalette &palette)
{
  const WXmlColorPalette &xml = palette.GetXmlPalette();
  ListRow row = {xml.GetDisplayName(),
                 ZelClr::SwatchBookFromPalette(xml),
                 {},
                 0,
                 palette.IsLocked(),
                 palette.IsCustomPalette(),
                 xml.GetHeader().guid.ToText(),
                 ZelUtl::Utf8FromWide(palette.GetFileName())};
  for (const ZelClr::Swatch &swatch : row.book.swatches) {
    row.spots += swatch.spot;
    std::string model = ModelInWords(swatch);
    if (std::find(row.models.begin(), row.models.end(), model) == row.models.end())
      row.models.push_back(std::move(model));
  }
  return row;
}

Json JsonOf(const ListRow &row)
{
  return {{"name", row.name},
          {"colours", row.book.swatches.size()},
          {"models", row.models},
          {"spots", row.spots},
          {"locked", row.locked},
          {"custom", row.custom},
          {"identifier", row.identifier},
          {"path", row.path}};
}

std::string ModelsInWords(const ListRow &row)
{
  std::string words;
  for (const std::string &model : row.models)
    words += (words.empty() ? "" : " ") + model;
  return row.spots == 0 ? words : row.spots == row.book.swatches.size() ? words + " spot" : words + " some spot";
}

/// Some colours of the palette from its first to its last, a column each, where a terminal draws them.
std::string StripOf(const ListRow &row, const Output &output)
{
  constexpr std::size_t kColumns = 12;
  if (!output.DrawsColour())
    return {};
  const std::size_t count = row.book.swatches.size();
  std::string strip;
  for (std::size_t column = 0; column < kColumns; ++column) {
    const bool isThere = count >= kColumns || column < count;
    const std::size_t index = count > kColumns ? column * (count - 1) / (kColumns - 1) : column;
    std::string field = isThere ? output.Swatch(ScreenOf(row.book.swatches[index]), 1) : std::string();
    if (!field.empty())
      field.pop_back(); // the blank behind
    strip += field.empty() ? " " : field;
  }
  return strip + "  ";
}

std::string TextOf(const std::vector<ListRow> &rows, const Output &output)
{
  std::size_t columns = 16;
  for (const ListRow &row : rows)
    columns = std::clamp<std::size_t>(TextColumns(Harmless(row.name)), columns, 40);
  std::string text = output.Faint(std::string(output.DrawsColour() ? 14 : 0, ' ') + Fitted("name", columns) +
                                  "  colours  models            locked  file") +
                     "\n";
  for (const ListRow &row : rows) {
    const std::string count = std::to_string(row.book.swatches.size());
    text += StripOf(row, output) + Fitted(Harmless(row.name), columns) + "  " +
            std::string(7 - std::min<std::size_t>(7, count.size()), ' ') + count + "  " +
            Fitted(ModelsInWords(row), 16) + "  " + (row.locked ? "locked  " : "        ") + Harmless(row.path) + "\n";
  }
  return rows.empty() ? "No palette is installed.\n" : text;
}

} // namespace

void ListPalettes(const Output &output)
{
  std::vector<ListRow> rows;
  for (const WClrPalette *const palette : InstalledPalettes())
    rows.push_back(RowOf(*palette));
  if (output.json) {
    Json palettes = Json::array();
    for (const ListRow &row : rows)
      palettes.push_back(JsonOf(row));
    PrintJson("zelclr.palette.list", {{"palettes", palettes}});
  } else {
    std::fputs(TextOf(rows, output).c_str(), stdout);
  }
}

} // namespace cli
