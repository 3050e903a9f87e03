#include "cli/settings/commands.h"
#include "cli/settings/origin.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/console.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/regular_file.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace cli {

namespace {

struct FileRow
{
  const char *kind;
  const char *label;
  std::string path;
  FileState state;
  std::string reason;
  Json more = Json::object();
};

struct StateWords
{
  FileState state;
  const char *code;
  const char *words;
};

constexpr StateWords kStateWords[] = {{FileState::Missing, "missing", "missing"},
                                      {FileState::Unreadable, "unreadable", "unreadable"},
                                      {FileState::Damaged, "damaged", "damaged"},
                                      {FileState::Fine, "fine", "there"}};

const StateWords &WordsOf(FileState state)
{
  return kStateWords[static_cast<std::size_t>(state)];
}

template <class Settings>
FileRow SettingsRow(const char *kind, const char *label, const std::string &path)
{
  const auto view = LookAt<Settings>(path);
  FileRow row = {kind, label, path, view.state, view.reason};
  if (view.state == FileState::Fine) {
    row.more["presets"] = Json::object();
    for (const auto &entry : view.contents.presets) {
      auto &count = row.more["presets"][Plain(entry.list)];
      count = (count.is_null() ? 0 : count.template get<int>()) + 1;
    }
    row.more["inForce"] = Json::array();
    for (const auto &entry : view.contents.inForce)
      row.more["inForce"].push_back(Plain(entry.list));
  }
  return row;
}

/// The copies that were kept of damaged files: KeepDamagedBytes names them.
std::vector<FileRow> KeptRows(const std::string &path)
{
  std::vector<FileRow> rows;
  for (int number = 1;; ++number) {
    const std::string kept = path + ".damaged" + (number == 1 ? "" : "-" + std::to_string(number));
    if (path.empty() || !ZelUtl::StampOfFile(kept))
      return rows;
    rows.push_back({"kept", "kept, was damaged", kept, FileState::Fine, ""});
  }
}

FileRow RegionsRow()
{
  const std::string folder = ZelUtl::INIGetConfigDir();
  FileRow row = {"regions", "regions file",
                 folder.empty() ? "" : ZelUtl::JoinPath(folder, "ColorManagementRegions.xml"), FileState::Missing, ""};
  const std::string country = ZelLocale::GetCurrentCountryISOCode();
  row.more["country"] = country.empty() ? Json(nullptr) : Json(country);
  row.more["startsWith"] = Plain(Kind<ColorSettings>().localeDefault());
  if (row.path.empty() || (!ZelUtl::StampOfFile(row.path) && !ZelUtl::IsFolder(row.path)))
    return row;
  const auto bytes = ZelUtl::ReadFile(row.path, ZelUtl::kMostXmlBytes, row.reason);
  const auto regions = bytes ? ZelUtl::WXmlDoc::FromBytes(*bytes, row.reason) : std::nullopt;
  row.state = !bytes ? FileState::Unreadable : !regions ? FileState::Damaged : FileState::Fine;
  if (regions) {
    const auto region = regions->Root().SelectNode("//geoID[@ID=$code]/..", {{"code", ZelUtl::WideFromUtf8(country)}});
    row.more["region"] = Plain(region.Attribute("name").value_or(L"default"));
  }
  return row;
}

/// "Factory: 12, ZelClr: 1"
std::string CountsInWords(const Json &presets)
{
  std::string text;
  for (const auto &[list, count] : presets.items())
    text += (text.empty() ? "" : ", ") + list + " " + std::to_string(count.get<int>());
  return text.empty() ? "none" : text;
}

std::string NamesInWords(const Json &names)
{
  std::string text;
  for (const auto &name : names)
    text += (text.empty() ? "" : ", ") + name.get<std::string>();
  return text.empty() ? "no entry" : text;
}

std::string TextOf(const FileRow &row, const Output &output)
{
  const std::string indent(20 + 12, ' ');
  std::string text = Fitted(row.label, 20) + Fitted(WordsOf(row.state).words, 12) +
                     (row.path.empty() ? "there is no folder for it" : Harmless(row.path)) + "\n";
  if (!row.reason.empty() && row.state != FileState::Missing)
    text += indent + Harmless(row.reason) + "\n";
  const auto note = [&](const std::string &line) { text += indent + output.Faint(line) + "\n"; };
  if (row.more.contains("presets"))
    note("presets: " + CountsInWords(row.more["presets"]) + "; in force: " + NamesInWords(row.more["inForce"]));
  if (row.more.contains("startsWith")) {
    const Json &country = row.more["country"];
    note("country " + (country.is_null() ? std::string("unknown") : Harmless(country.get<std::string>())) +
         (row.more.contains("region") ? ", region " + row.more["region"].get<std::string>() : "") +
         ": new users start with " + row.more["startsWith"].get<std::string>());
  }
  return text;
}

} // namespace

template <class Settings>
ExitCode ShowFiles(const Output &output)
{
  const auto &kind = Kind<Settings>();
  std::vector<FileRow> rows = {SettingsRow<Settings>("user", "user's file", kind.userPath())};
  for (FileRow &kept : KeptRows(kind.userPath()))
    rows.push_back(std::move(kept));
  rows.push_back(SettingsRow<Settings>("factory", "factory file", kind.factoryPath()));
  if (kind.variable != nullptr)
    rows.push_back(RegionsRow());

  // Without a user's file the next use makes one; what the installation brings must be there.
  ExitCode code = ExitCode::Fine;
  Json files = Json::array();
  std::string text;
  for (const FileRow &row : rows) {
    if (row.state != FileState::Fine && !(row.state == FileState::Missing && &row == &rows.front()))
      code = ExitCode::Findings;
    Json file = {{"kind", row.kind}, {"path", row.path}, {"state", WordsOf(row.state).code}};
    if (!row.reason.empty())
      file["reason"] = Harmless(row.reason);
    file.update(row.more);
    files.push_back(file);
    text += TextOf(row, output);
  }
  Json content = {{"application", Plain(ZelUtl::GetApplicationName())}, {"files", files}};
  if (kind.variable != nullptr) {
    const auto value = ZelUtl::EnvironmentVariable(kind.variable);
    content["environment"] = {{kind.variable, value ? Json(*value) : Json(nullptr)}};
    text += Fitted("environment", 20) + Fitted(value ? "set" : "not set", 12) + kind.variable +
            (value ? "=" + Harmless(*value) : "") + "\n";
  }
  if (output.json)
    PrintJson(std::string(kind.schema) + ".where", content);
  else
    std::fputs(text.c_str(), stdout);
  return code;
}

template ExitCode ShowFiles<ColorSettings>(const Output &);
template ExitCode ShowFiles<ProofColorSettings>(const Output &);

} // namespace cli
