#include "cli/settings/origin.h"

#include "zelclr/platform/application.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

constexpr OriginWords kOriginWords[] = {
  {Origin::OwnEntry, "own", "own entry"},
  {Origin::FactoryEntry, "factory", "factory entry"},
  {Origin::LocaleDefault, "localeDefault", "country's default"},
  {Origin::BuiltIn, "builtIn", "built-in"},
  {Origin::FactoryPreset, "factoryPreset", "factory preset"},
  {Origin::UserPreset, "userPreset", "user's preset"},
};

template <class Settings>
using Entry = ColorSystem::SettingsEntry<Settings>;

/// The last entry that counts: a later preset replaces an earlier one, and the user's the factory's.
template <class Settings>
const Entry<Settings> *FindPreset(const SettingsFileView<Settings> &file, const std::wstring &name)
{
  const Entry<Settings> *found = nullptr;
  for (const std::wstring &list : {std::wstring(L"Factory"), ZelUtl::GetApplicationName()}) {
    for (const auto &entry : file.contents.presets) {
      if (entry.list == list && entry.settings != nullptr && entry.name == name)
        found = &entry;
    }
  }
  return found;
}

template <class Settings>
ZelUtl::WXmlNode ElementOf(const Entry<Settings> *entry)
{
  return entry == nullptr ? ZelUtl::WXmlNode() : entry->element;
}

} // namespace

const OriginWords &WordsOf(Origin origin)
{
  return kOriginWords[static_cast<std::size_t>(origin)];
}

template <class Settings>
SettingsFileView<Settings> LookAt(const std::string &path)
{
  SettingsFileView<Settings> view = {path, FileState::Missing, "", {}};
  if (path.empty() || (!ZelUtl::StampOfFile(path) && !ZelUtl::IsFolder(path)))
    return view;
  const auto bytes = ZelUtl::ReadFile(path, ZelUtl::kMostXmlBytes, view.reason);
  const auto contents = bytes ? Kind<Settings>().read(*bytes, view.reason) : std::nullopt;
  view.state = !bytes ? FileState::Unreadable : !contents ? FileState::Damaged : FileState::Fine;
  if (contents)
    view.contents = *contents;
  return view;
}

template <class Settings>
SettingsFileView<Settings> LookAtFileInUse()
{
  Kind<Settings>().inForce(); // the first use writes the user's file
  auto view = LookAt<Settings>(Kind<Settings>().userPath());
  return view.state == FileState::Missing ? LookAt<Settings>(Kind<Settings>().factoryPath()) : view;
}

template <class Settings>
Traced<Settings> InForce(const SettingsFileView<Settings> &file)
{
  Traced<Settings> traced = {std::make_shared<Settings>(Kind<Settings>().inForce()), Origin::BuiltIn, {}};
  for (const auto &[list, origin] :
       {std::pair{ZelUtl::GetApplicationName(), Origin::OwnEntry}, {std::wstring(L"Factory"), Origin::FactoryEntry}})
  {
    for (const auto &entry : file.contents.inForce) {
      if (entry.list == list && entry.settings != nullptr)
        return {traced.settings, origin, entry.element};
    }
  }
  const Entry<Settings> *const preset =
    file.state == FileState::Fine ? FindPreset(file, Kind<Settings>().localeDefault()) : nullptr;
  return preset == nullptr ? traced : Traced<Settings>{traced.settings, Origin::LocaleDefault, preset->element};
}

template <class Settings>
Traced<Settings> Preset(const SettingsFileView<Settings> &file, const std::string &name)
{
  const std::wstring wanted = ZelUtl::WideFromUtf8(name);
  std::vector<std::shared_ptr<Settings>> found;
  for (const auto &preset : Kind<Settings>().presets()) {
    if (preset->GetName() == wanted) {
      found = {preset};
      break;
    }
    if (Kind<Settings>().localizedName(*preset) == wanted)
      found.push_back(preset);
  }
  if (found.size() != 1 || !ZelUtl::IsValidUtf8(name)) {
    throw Failure(ExitCode::Missing,
                  "there is no preset \"" + Harmless(name) + "\"; see " + Kind<Settings>().command + " list");
  }
  return {found[0], found[0]->IsFactory() ? Origin::FactoryPreset : Origin::UserPreset,
          ElementOf(FindPreset(file, found[0]->GetName()))};
}

template <class Settings>
std::vector<ColorSystem::SettingsEntry<Settings>> LeftOut(const SettingsFileView<Settings> &file)
{
  std::vector<Entry<Settings>> leftOut;
  for (const auto *entries : {&file.contents.presets, &file.contents.inForce}) {
    std::copy_if(entries->begin(), entries->end(), std::back_inserter(leftOut), [](const Entry<Settings> &entry) {
      return entry.settings == nullptr && (entry.list == L"Factory" || entry.list == ZelUtl::GetApplicationName());
    });
  }
  return leftOut;
}

template <class Settings>
ExitCode WarnOf(const SettingsFileView<Settings> &file)
{
  std::fflush(stdout);
  const std::string path = Harmless(file.path);
  if (file.state == FileState::Unreadable) {
    std::fprintf(stderr, "zelclr: %s cannot be read: %s\n", path.c_str(), Harmless(file.reason).c_str());
    return ExitCode::Unreadable;
  }
  if (file.state == FileState::Damaged) {
    std::fprintf(stderr, "zelclr: %s is damaged: %s; it is kept under another name when something is changed\n",
                 path.c_str(), Harmless(file.reason).c_str());
    return ExitCode::Unreadable;
  }
  const auto leftOut = LeftOut(file);
  for (const auto &entry : leftOut) {
    std::fprintf(stderr, "zelclr: %s: %s of the list %s is left out: %s\n", path.c_str(), Quoted(entry.name).c_str(),
                 Quoted(entry.list).c_str(), Harmless(entry.fault).c_str());
  }
  return leftOut.empty() ? ExitCode::Fine : ExitCode::Findings;
}

std::string Plain(std::wstring_view text)
{
  return Harmless(ZelUtl::Utf8FromWide(text));
}

std::string Quoted(std::wstring_view name)
{
  return "\"" + Plain(name) + "\"";
}

// clang-format off
#define ZELCLR_FOR(Settings)                                                                                          \
  template SettingsFileView<Settings> LookAt(const std::string &);                                                    \
  template SettingsFileView<Settings> LookAtFileInUse();                                                              \
  template Traced<Settings> InForce(const SettingsFileView<Settings> &);                                              \
  template Traced<Settings> Preset(const SettingsFileView<Settings> &, const std::string &);                          \
  template std::vector<ColorSystem::SettingsEntry<Settings>> LeftOut(const SettingsFileView<Settings> &);             \
  template ExitCode WarnOf(const SettingsFileView<Settings> &)
// clang-format on
ZELCLR_FOR(ColorSettings);
ZELCLR_FOR(ProofColorSettings);
#undef ZELCLR_FOR

} // namespace cli
