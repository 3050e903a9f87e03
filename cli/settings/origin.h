// Where settings come from: the state of a settings file, and the entry that decided.
//
// Errors: throws Failure where a function says so.
#pragma once

#include "cli/failure.h"
#include "cli/output.h"
#include "cli/settings/kind.h"

#include <string>
#include <vector>

namespace cli {

enum class FileState
{
  Missing,
  Unreadable,
  Damaged,
  Fine
};

template <class Settings>
struct SettingsFileView
{
  std::string path; ///< empty where there is no folder for it
  FileState state;
  std::string reason; ///< why it is unreadable or damaged
  ColorSystem::SettingsContents<Settings> contents;
};

template <class Settings>
SettingsFileView<Settings> LookAt(const std::string &path);
/// The file that is read: the user's, else the factory's.
template <class Settings>
SettingsFileView<Settings> LookAtFileInUse();

enum class Origin
{
  OwnEntry,      ///< what the application has put in force
  FactoryEntry,  ///< what is in force for applications without an entry
  LocaleDefault, ///< the preset of the user's country
  BuiltIn,
  FactoryPreset,
  UserPreset
};

struct OriginWords
{
  Origin origin;
  const char *code;   ///< in JSON
  const char *source; ///< beside each value
};
const OriginWords &WordsOf(Origin origin);

/// Settings, and the element that they were read from; an empty one when no file holds them.
template <class Settings>
struct Traced
{
  std::shared_ptr<const Settings> settings;
  Origin origin;
  ZelUtl::WXmlNode element;
};

template <class Settings>
Traced<Settings> InForce(const SettingsFileView<Settings> &file);
/// The preset of that name, else the only one whose localised name it is; throws Failure.
template <class Settings>
Traced<Settings> Preset(const SettingsFileView<Settings> &file, const std::string &name);

/// Says on standard error what could not be read of the file. Unreadable for a file that is of no use at all, Findings
/// for entries that are left out.
template <class Settings>
ExitCode WarnOf(const SettingsFileView<Settings> &file);

/// The entries that this application would take and cannot.
template <class Settings>
std::vector<ColorSystem::SettingsEntry<Settings>> LeftOut(const SettingsFileView<Settings> &file);

/// Harmless, in one line, and between quotation marks.
std::string Quoted(std::wstring_view name);
std::string Plain(std::wstring_view text);

} // namespace cli
