#include "cli/settings/commands.h"
#include "cli/settings/origin.h"
#include "cli/settings/values.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/locale.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace cli {

namespace {

constexpr std::size_t kLabelColumns = 24;
constexpr std::size_t kValueColumns = 44;
constexpr std::size_t kSwatchColumns = 3; // with the blank behind

template <class Settings>
Source SourceOf(const ValueRow<Settings> &row, const Traced<Settings> &traced)
{
  if (row.path == nullptr)
    return row.otherwise;
  const OriginWords &words = WordsOf(traced.origin);
  return !traced.element || traced.element.SelectNode(row.path) ? Source{words.code, words.source} : row.otherwise;
}

/// "In force for ZelClr: the factory's entry of /home/.../ColorSettings.xml, made for DE"
template <class Settings>
std::string Provenance(const Traced<Settings> &traced, const std::string &path)
{
  const std::string application = Plain(ZelUtl::GetApplicationName());
  const std::string in = traced.element ? " in " + Harmless(path) : "";
  switch (traced.origin) {
  case Origin::OwnEntry:
    return "In force for " + application + ": its own entry" + in;
  case Origin::FactoryEntry:
    return "In force for " + application + ", which has no entry of its own: the factory's" + in;
  case Origin::LocaleDefault:
    return "In force for " + application + ": what its country starts with," + in;
  case Origin::BuiltIn:
    return "In force for " + application + ": what is built in, since no file says anything else";
  case Origin::FactoryPreset:
    return "A preset of the factory" + in;
  case Origin::UserPreset:
    return "A preset of the user" + in;
  }
  return {};
}

template <class Settings>
std::string CountryLine()
{
  const std::wstring starts = Kind<Settings>().localeDefault();
  const std::string country = ZelLocale::GetCurrentCountryISOCode();
  if (starts.empty())
    return {};
  return "New users in " + (country.empty() ? "a country that the system does not tell" : Harmless(country)) +
         " start with " + Quoted(starts);
}

template <class Settings>
std::string TextOf(const Traced<Settings> &traced, const std::string &path, const Output &output)
{
  const std::string name = Plain(traced.settings->GetName());
  const std::string localized = Plain(Kind<Settings>().localizedName(*traced.settings));
  const bool inForce = traced.origin != Origin::FactoryPreset && traced.origin != Origin::UserPreset;
  std::string text = output.Bold(name.empty() ? "Settings without a name" : name) +
                     (localized == name || localized.empty() ? "" : "  (" + localized + ")") + "\n" +
                     Provenance(traced, path) + "\n";
  const std::string country = inForce ? CountryLine<Settings>() : "";
  text += country.empty() ? "" : country + "\n";
  for (const auto &row : ValueRows<Settings>()) {
    if (row.group != nullptr)
      text += "\n" + output.Bold(row.group) + "\n";
    const Value value = row.of(*traced.settings, traced.element, output);
    const std::size_t columns = TextColumns(value.words) + (value.swatch.empty() ? 0 : kSwatchColumns);
    text += "  " + Fitted(row.label, kLabelColumns) + " " + value.swatch + value.words +
            std::string(columns < kValueColumns ? kValueColumns - columns : 0, ' ') + "  " +
            output.Faint(SourceOf(row, traced).words) + "\n";
    if (!value.note.empty())
      text += "  " + std::string(kLabelColumns + 1, ' ') + output.Faint(value.note) + "\n";
  }
  return text;
}

template <class Settings>
Json JsonOf(const Traced<Settings> &traced, const std::string &path)
{
  Json content = {{"application", Plain(ZelUtl::GetApplicationName())},
                  {"name", Plain(traced.settings->GetName())},
                  {"localizedName", Plain(Kind<Settings>().localizedName(*traced.settings))},
                  {"source", WordsOf(traced.origin).code},
                  {"file", traced.element ? Json(path) : Json(nullptr)},
                  {"inForce", *traced.settings == Kind<Settings>().inForce()}};
  if (const std::wstring starts = Kind<Settings>().localeDefault(); !starts.empty()) {
    content["country"] = ZelLocale::GetCurrentCountryISOCode();
    content["localeDefault"] = Plain(starts);
  }
  for (const auto &row : ValueRows<Settings>()) {
    const Value value = row.of(*traced.settings, traced.element, {});
    content["values"][row.key] = {{"value", value.json}, {"source", SourceOf(row, traced).code}};
    if (!value.note.empty() && !value.json.is_object())
      content["values"][row.key]["note"] = value.note;
  }
  return content;
}

} // namespace

template <class Settings>
ExitCode ShowSettings(const std::optional<std::string> &name, const Output &output)
{
  const auto file = LookAtFileInUse<Settings>();
  const auto traced = name ? Preset(file, *name) : InForce(file);
  if (output.json)
    PrintJson(std::string(Kind<Settings>().schema) + ".show", JsonOf(traced, file.path));
  else
    std::fputs(TextOf(traced, file.path, output).c_str(), stdout);
  return WarnOf(file);
}

template ExitCode ShowSettings<ColorSettings>(const std::optional<std::string> &, const Output &);
template ExitCode ShowSettings<ProofColorSettings>(const std::optional<std::string> &, const Output &);

} // namespace cli
