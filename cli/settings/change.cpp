#include "cli/colour_facts.h"
#include "cli/settings/commands.h"
#include "cli/settings/origin.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

template <class Settings>
[[noreturn]] void FailToWrite(const std::string &result)
{
  const std::string reason = Kind<Settings>().writeFailure();
  const std::string path = Kind<Settings>().userPath();
  throw Failure(ExitCode::Unreadable, (path.empty() ? "the settings file" : Harmless(path)) + " cannot be written: " +
                                        (!reason.empty() ? Harmless(reason)
                                         : path.empty()  ? "there is no folder for the user"
                                                         : "it is not there") +
                                        "; " + result);
}

template <class Settings>
void Report(const char *action, const std::vector<std::wstring> &names, const std::string &sentence,
            const Output &output, const std::string &file = Kind<Settings>().userPath())
{
  if (!output.json) {
    std::printf("%s\n", sentence.c_str());
    return;
  }
  Json list = Json::array();
  for (const std::wstring &name : names)
    list.push_back(Plain(name));
  PrintJson(std::string(Kind<Settings>().schema) + ".change", {{"action", action}, {"presets", list}, {"file", file}});
}

/// A name that comes back from a file as it was, and that people can read and type.
bool IsNameOfPreset(const std::string &utf8)
{
  return !ZelUtl::Trimmed(utf8).empty() && Harmless(utf8) == utf8;
}

template <class Settings>
[[noreturn]] void FailAsTaken(const std::wstring &name)
{
  throw Failure(ExitCode::Usage, "there is a preset " + Quoted(name) + " already; --replace puts another in its place");
}

template <class Settings>
void PutInForce(const Settings &settings)
{
  if (!Kind<Settings>().use(settings))
    FailToWrite<Settings>("what was in force is so in the next run");
}

/// To the last value: equal settings may differ in what is only drawn.
template <class Settings>
bool IsSame(const std::shared_ptr<Settings> &a, const std::shared_ptr<Settings> &b)
{
  std::string untold;
  return ColorSystem::XmlFromSettings({a}, untold) == ColorSystem::XmlFromSettings({b}, untold);
}

template <class Settings>
std::shared_ptr<Settings> FindPreset(const std::wstring &name)
{
  const auto presets = Kind<Settings>().presets();
  const auto preset =
    std::find_if(presets.begin(), presets.end(), [&](const auto &row) { return row->GetName() == name; });
  return preset == presets.end() ? nullptr : *preset;
}

} // namespace

template <class Settings>
void UsePreset(const std::string &name, const Output &output)
{
  const auto preset = Preset(LookAtFileInUse<Settings>(), name);
  PutInForce(*preset.settings);
  const std::wstring used = preset.settings->GetName();
  Report<Settings>("use", {used}, Quoted(used) + " is in force.", output);
}

template <class Settings>
void AddPreset(const Addition &addition, const Edits<Settings> &edits, const Output &output)
{
  if (!IsNameOfPreset(addition.name))
    throw Failure(ExitCode::Usage, "\"" + Harmless(addition.name) + "\" is no name for a preset");
  const auto file = LookAtFileInUse<Settings>();
  const auto start = addition.from ? Preset(file, *addition.from) : InForce(file);
  const auto preset = std::make_shared<Settings>(*start.settings);
  preset->SetName(ZelUtl::WideFromUtf8(addition.name));
  for (const auto &edit : edits)
    edit(*preset);

  std::wstring taken;
  if (!Kind<Settings>().add({preset}, addition.replace, taken)) {
    if (!taken.empty())
      FailAsTaken<Settings>(taken);
    FailToWrite<Settings>("no preset was added");
  }
  if (addition.use)
    PutInForce(*preset);
  Report<Settings>("add", {preset->GetName()},
                   Quoted(preset->GetName()) + " is a preset now" + (addition.use ? ", and in force." : "."), output);
}

template <class Settings>
void RemovePreset(const std::string &name, const Output &output)
{
  const auto preset = Preset(LookAtFileInUse<Settings>(), name).settings;
  const std::wstring removed = preset->GetName();
  if (preset->IsFactory())
    throw Failure(ExitCode::Usage, Quoted(removed) + " came with the installation and cannot be removed");
  Kind<Settings>().remove(removed);
  const auto file = LookAt<Settings>(Kind<Settings>().userPath());
  const bool written = Kind<Settings>().writeFailure().empty() && file.state == FileState::Fine;
  if (!written)
    FailToWrite<Settings>(Quoted(removed) + " is still there");
  const bool covered = std::any_of(file.contents.presets.begin(), file.contents.presets.end(), [&](const auto &entry) {
    return entry.name == removed && entry.list == L"Factory";
  });
  Report<Settings>("remove", {removed},
                   Quoted(removed) + (covered ? " is the factory's again." : " is no preset any more."), output);
}

template <class Settings>
void ExportSettings(const std::optional<std::string> &name, bool all, const std::string &path, const Output &output)
{
  const auto file = LookAtFileInUse<Settings>();
  std::vector<std::shared_ptr<Settings>> presets;
  if (all) {
    presets = Kind<Settings>().presets();
    std::erase_if(presets, [](const auto &preset) { return preset->IsFactory(); });
    if (presets.empty())
      throw Failure(ExitCode::Missing, "the user has no presets");
  } else {
    const auto traced = name ? Preset(file, *name) : InForce(file);
    presets = {std::make_shared<Settings>(*traced.settings)};
    if (presets[0]->GetName().empty())
      presets[0]->SetName(L"Unnamed");
  }
  std::string reason;
  const std::string xml = ColorSystem::XmlFromSettings(presets, reason);
  if (xml.empty())
    throw Failure(ExitCode::Unreadable, Harmless(reason));
  if (path == "-") {
    if (output.json)
      throw Failure(ExitCode::Usage, "--json and - both print to standard output");
    std::fwrite(xml.data(), 1, xml.size(), stdout);
    return;
  }
  for (const std::string &own : {Kind<Settings>().userPath(), Kind<Settings>().factoryPath()}) {
    if (ZelUtl::IsSameFile(path, own))
      throw Failure(ExitCode::Usage, Harmless(path) + " is the settings file itself");
  }
  if (!ZelUtl::ReplaceFile(path, xml, reason))
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + reason);
  std::vector<std::wstring> names;
  for (const auto &preset : presets)
    names.push_back(preset->GetName());
  Report<Settings>("export", names,
                   (names.size() == 1 ? Quoted(names[0]) + " is" : std::to_string(names.size()) + " presets are") +
                     " in " + Harmless(path) + ".",
                   output, path);
}

template <class Settings>
void ImportSettings(const std::string &path, bool replace, const Output &output)
{
  const std::string shown = Harmless(path == "-" ? "standard input" : path);
  std::string reason;
  const auto contents = Kind<Settings>().read(ReadInput(path), reason);
  if (!contents)
    throw Failure(ExitCode::Unreadable, shown + ": " + Harmless(reason));

  std::vector<std::shared_ptr<Settings>> presets;
  for (const auto &entry : contents->presets) {
    if (entry.list == L"Factory") // every installation has its own
      continue;
    if (entry.settings == nullptr)
      throw Failure(ExitCode::Unreadable, shown + ": " + Quoted(entry.name) + ": " + Harmless(entry.fault));
    if (!IsNameOfPreset(ZelUtl::Utf8FromWide(entry.name)))
      throw Failure(ExitCode::Unreadable, shown + ": " + Quoted(entry.name) + " is no name for a preset");
    const auto twin =
      std::find_if(presets.begin(), presets.end(), [&](const auto &preset) { return preset->GetName() == entry.name; });
    if (twin == presets.end())
      presets.push_back(entry.settings);
    else if (!IsSame(*twin, entry.settings))
      throw Failure(ExitCode::Unreadable, shown + ": it has two presets " + Quoted(entry.name) + " that differ");
  }
  if (presets.empty())
    throw Failure(ExitCode::Missing, shown + ": it has no presets of a user");

  std::erase_if(presets, [](const auto &preset) {
    const auto here = FindPreset<Settings>(preset->GetName());
    return here != nullptr && IsSame(here, preset);
  });
  std::wstring taken;
  if (!presets.empty() && !Kind<Settings>().add(presets, replace, taken)) {
    if (!taken.empty())
      FailAsTaken<Settings>(taken);
    FailToWrite<Settings>("no preset was added");
  }
  std::vector<std::wstring> names;
  std::string sentence;
  for (const auto &preset : presets) {
    names.push_back(preset->GetName());
    sentence += (sentence.empty() ? "Imported: " : ", ") + Quoted(names.back());
  }
  Report<Settings>("import", names, presets.empty() ? "All of it is here already." : sentence + ".", output);
}

// clang-format off
#define ZELCLR_FOR(Settings)                                                                                          \
  template void UsePreset<Settings>(const std::string &, const Output &);                                             \
  template void AddPreset(const Addition &, const Edits<Settings> &, const Output &);                                 \
  template void RemovePreset<Settings>(const std::string &, const Output &);                                          \
  template void ExportSettings<Settings>(const std::optional<std::string> &, bool, const std::string &,               \
                                         const Output &);                                                             \
  template void ImportSettings<Settings>(const std::string &, bool, const Output &)
// clang-format on
ZELCLR_FOR(ColorSettings);
ZELCLR_FOR(ProofColorSettings);
#undef ZELCLR_FOR

} // namespace cli
