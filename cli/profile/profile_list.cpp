#include "cli/profile/profile_list.h"

#include "cli/profile/forms.h"
#include "cli/profile/profile_file.h"
#include "cli/profile/words.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/console.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

using ColorSystem::ColorProfileManager;

struct ListRow
{
  std::string name;
  std::string path;
  ColorSystem::DeviceClass deviceClass;
  std::string version;
  std::uint64_t size;
};

ListRow RowOf(ColorSystem::ColorProfile &profile)
{
  return {OneLine(profile.GetDisplayName()), ZelUtl::Utf8FromWide(profile.GetPath()), profile.GetDeviceClass(),
          std::to_string(profile.GetMajorVersionNumber()) + "." + std::to_string(profile.GetMinorVersionNumber()),
          profile.GetSize()};
}

Json JsonOf(const ListRow &row, const ModelWords &model)
{
  return {{"name", row.name},       {"model", model.option}, {"class", WordsOf(row.deviceClass).option},
          {"version", row.version}, {"size", row.size},      {"file", ZelUtl::FileNameOfPath(row.path)},
          {"path", row.path}};
}

std::string TextOf(const ModelWords &model, const std::vector<ListRow> &rows, const Output &output)
{
  constexpr std::size_t kLeastName = 20;
  constexpr std::size_t kMostName = 48;
  std::size_t columns = kLeastName;
  for (const ListRow &row : rows)
    columns = std::clamp(TextColumns(row.name), columns, kMostName);
  std::string text = output.Bold(model.name) + "\n" +
                     output.Faint("  " + Fitted("name", columns) + "  class    version      size  file") + "\n";
  for (const ListRow &row : rows) {
    const std::string size = SizeInWords(row.size);
    text += "  " + Fitted(row.name, columns) + "  " + Fitted(WordsOf(row.deviceClass).option, 9) +
            Fitted(row.version, 7) + std::string(10 - std::min<std::size_t>(10, size.size()), ' ') + size + "  " +
            Harmless(row.path) + "\n";
  }
  return text;
}

struct SearchedFolder
{
  const char *kind;
  std::wstring path;
};

std::vector<SearchedFolder> SearchedFolders()
{
  std::vector<SearchedFolder> folders = {{"user", ColorProfileManager::GetZelanUserColorDir()},
                                         {"library", ColorProfileManager::GetZelanColorDir()},
                                         {"recommended", ColorProfileManager::GetAdobeRecommendedColorDir()},
                                         {"programs", ColorProfileManager::GetAdobeColorDir()}};
  for (const std::wstring &path : ColorProfileManager::GetSystemColorDirs())
    folders.push_back({"system", path});
  std::erase_if(folders, [](const SearchedFolder &folder) { return folder.path.empty(); });
  return folders;
}

} // namespace

void ListProfiles(const ProfileFilter &filter, const Output &output)
{
  Json profiles = Json::array();
  std::string text;
  for (const auto &ofModel : ColorProfileManager::GetInstance().GetColorProfiles()) {
    const ModelWords &model = WordsOf(ofModel.front()->GetColorModel());
    if (filter.model && *filter.model != model.model)
      continue;
    std::vector<ListRow> rows;
    for (const auto &profile : ofModel) {
      if (!filter.deviceClass || *filter.deviceClass == profile->GetDeviceClass())
        rows.push_back(RowOf(*profile));
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const ListRow &a, const ListRow &b) { return a.deviceClass < b.deviceClass; });
    for (const ListRow &row : rows)
      profiles.push_back(JsonOf(row, model));
    if (!rows.empty())
      text += (text.empty() ? "" : "\n") + TextOf(model, rows, output);
  }
  if (output.json)
    PrintJson("zelclr.profile.list", {{"profiles", profiles}});
  else
    std::fputs(text.empty() ? "No such profile is installed.\n" : text.c_str(), stdout);
}

void ListFolders(const Output &output)
{
  Json folders = Json::array();
  std::string text;
  for (const SearchedFolder &folder : SearchedFolders()) {
    const std::string path = ZelUtl::Utf8FromWide(folder.path);
    const bool exists = ZelUtl::IsFolder(path);
    folders.push_back({{"kind", folder.kind}, {"path", path}, {"exists", exists}});
    text += Fitted(folder.kind, 11) + " " + (exists ? "there    " : "missing  ") + Harmless(path) + "\n";
  }
  if (output.json)
    PrintJson("zelclr.profile.folders", {{"folders", folders}});
  else
    std::fputs(text.c_str(), stdout);
}

void PrintPath(const std::string &nameOrPath, const Output &output)
{
  const std::string path = OpenProfile(nameOrPath).path;
  if (output.json)
    PrintJson("zelclr.profile.path", {{"path", path}});
  else
    std::printf("%s\n", ZelUtl::StandardOutputIsTerminal() ? Harmless(path).c_str() : path.c_str());
}

Choices<ColorSystem::ColorModel> ModelChoices()
{
  Choices<ColorSystem::ColorModel> choices;
  for (const ModelWords &row : kModelWords)
    choices.emplace_back(row.option, row.model);
  return choices;
}

Choices<ColorSystem::DeviceClass> ClassChoices()
{
  Choices<ColorSystem::DeviceClass> choices;
  for (const ClassWords &row : kClassWords)
    choices.emplace_back(row.option, row.deviceClass);
  return choices;
}

} // namespace cli
