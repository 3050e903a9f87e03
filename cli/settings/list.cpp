#include "cli/settings/commands.h"
#include "cli/settings/origin.h"
#include "zelclr/platform/application.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

struct ListRow
{
  std::string name;
  std::string localizedName;
  bool factory;
  bool sameName;   ///< as what is in force
  bool sameValues; ///< as what is in force
};

const char *InForceInWords(const ListRow &row)
{
  return row.sameName && row.sameValues ? "in force" : row.sameValues ? "same values" : row.sameName ? "same name" : "";
}

std::string TextOf(const std::vector<ListRow> &rows, const Output &output)
{
  std::size_t columns = 20;
  for (const ListRow &row : rows)
    columns = std::clamp<std::size_t>(TextColumns(row.name), columns, 48);
  const bool localized =
    std::any_of(rows.begin(), rows.end(), [](const ListRow &row) { return row.localizedName != row.name; });
  std::string text =
    output.Faint("  " + Fitted("name", columns) + "  from     now" + (localized ? "          in your language" : "")) +
    "\n";
  for (const ListRow &row : rows) {
    const std::string line = "  " + Fitted(row.name, columns) + "  " + Fitted(row.factory ? "factory" : "user", 9) +
                             Fitted(InForceInWords(row), 13) + (row.localizedName == row.name ? "" : row.localizedName);
    const std::string trimmed(line, 0, line.find_last_not_of(' ') + 1);
    text += (row.sameName && row.sameValues ? output.Bold(trimmed) : trimmed) + "\n";
  }
  return rows.empty() ? "  There are no presets.\n" : text;
}

} // namespace

template <class Settings>
ExitCode ListSettings(const Output &output)
{
  const auto file = LookAtFileInUse<Settings>();
  const auto inForce = InForce(file);
  const std::wstring name = inForce.settings->GetName();
  std::vector<ListRow> rows;
  for (const auto &preset : Kind<Settings>().presets()) {
    rows.push_back({Plain(preset->GetName()), Plain(Kind<Settings>().localizedName(*preset)), preset->IsFactory(),
                    preset->GetName() == name, *preset == *inForce.settings});
  }
  if (output.json) {
    Json presets = Json::array();
    for (const ListRow &row : rows) {
      presets.push_back({{"name", row.name},
                         {"localizedName", row.localizedName},
                         {"factory", row.factory},
                         {"inForce", row.sameName && row.sameValues},
                         {"sameName", row.sameName},
                         {"sameValues", row.sameValues}});
    }
    Json leftOut = Json::array();
    for (const auto &entry : LeftOut(file))
      leftOut.push_back({{"name", Plain(entry.name)}, {"list", Plain(entry.list)}, {"reason", Harmless(entry.fault)}});
    PrintJson(std::string(Kind<Settings>().schema) + ".list",
              {{"application", Plain(ZelUtl::GetApplicationName())},
               {"file", file.path},
               {"inForce", {{"name", Plain(name)}, {"source", WordsOf(inForce.origin).code}}},
               {"presets", presets},
               {"leftOut", leftOut}});
    return WarnOf(file);
  }
  const bool isPreset =
    std::any_of(rows.begin(), rows.end(), [](const ListRow &row) { return row.sameName && row.sameValues; });
  std::string text = output.Bold(std::string(Kind<Settings>().title) + " of " + Plain(ZelUtl::GetApplicationName())) +
                     "\n" + TextOf(rows, output);
  if (!isPreset) {
    text += "\nIn force: " + (name.empty() ? std::string("settings without a name") : Quoted(name)) + " (" +
            WordsOf(inForce.origin).source + "); no preset of that name has the same values.\n";
  }
  std::fputs(text.c_str(), stdout);
  return WarnOf(file);
}

template ExitCode ListSettings<ColorSettings>(const Output &);
template ExitCode ListSettings<ProofColorSettings>(const Output &);

} // namespace cli
