#include "zelclr/platform/locale.h"

#include "zelclr/platform/text.h"
#include "zelclr/platform/thread_lock.h"

#include <algorithm>
#include <optional>

namespace ZelLocale {

namespace {

struct SetByHost
{
  ZelUtl::ThreadLock lock;
  std::optional<Locale> locale ZELCLR_GUARDED_BY(lock);
};

SetByHost &Host()
{
  static auto &host = *new SetByHost; // never destroyed: threads may still ask when the process ends
  return host;
}

Locale Current()
{
  {
    const ZelUtl::ReadLock guard(Host().lock);
    if (Host().locale)
      return *Host().locale;
  }
  return SystemLocale();
}

/// The parts of "sr_RS.UTF-8@latin"; all empty when it does not start like a language.
struct PosixName
{
  std::string language, territory, modifier;
};

bool IsLetters(std::string_view text, std::size_t least, std::size_t most)
{
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return text.size() >= least && text.size() <= most && std::all_of(text.begin(), text.end(), isLetter);
}

std::string UpperAscii(std::string text)
{
  for (char &c : text) {
    if (c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

PosixName NameFrom(std::string_view text)
{
  PosixName name;
  if (const auto at = text.find('@'); at != std::string_view::npos) {
    name.modifier = text.substr(at + 1);
    text = text.substr(0, at);
  }
  text = text.substr(0, text.find('.'));
  const auto line = text.find_first_of("_-");
  const std::string_view language = text.substr(0, line);
  if (!IsLetters(language, 2, 3)) // "C" and "POSIX" are none
    return {};
  name.language = ZelUtl::LowerAscii(language);
  if (line != std::string_view::npos && IsLetters(text.substr(line + 1), 2, 2))
    name.territory = UpperAscii(std::string(text.substr(line + 1)));
  return name;
}

std::string LanguageTag(const PosixName &name)
{
  constexpr std::pair<const char *, const char *> kScripts[] = {
    {"latin", "-Latn"}, {"cyrillic", "-Cyrl"}, {"devanagari", "-Deva"}};
  std::string tag = name.language;
  for (const auto &[modifier, script] : kScripts) {
    if (name.modifier == modifier)
      tag += script;
  }
  return name.territory.empty() ? tag : tag + "-" + name.territory;
}

} // namespace

std::string GetCurrentCountryISOCode()
{
  return Current().country;
}

std::string GetUILanguage()
{
  return Current().language;
}

void SetLocale(const Locale &locale)
{
  const ZelUtl::WriteLock guard(Host().lock);
  Host().locale = locale;
}

void ResetLocale()
{
  const ZelUtl::WriteLock guard(Host().lock);
  Host().locale.reset();
}

Locale LocaleFromEnvironment(std::string (*valueOf)(const char *name))
{
  Locale locale{"", "en"};
  for (const char *variable : {"LC_ALL", "LC_PAPER", "LC_MEASUREMENT", "LANG"}) {
    if (locale.country.empty())
      locale.country = NameFrom(valueOf(variable)).territory;
  }

  std::string messages;
  for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (messages.empty())
      messages = valueOf(variable);
  }
  PosixName name = NameFrom(messages);
  if (name.language.empty())
    return locale; // nothing is translated for "C", whatever the list says
  const std::string list = valueOf("LANGUAGE");
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find(':', start), list.size());
    if (const PosixName first = NameFrom(std::string_view(list).substr(start, end - start)); !first.language.empty()) {
      name = first;
      break;
    }
    start = end + 1;
  }
  locale.language = LanguageTag(name);
  return locale;
}

} // namespace ZelLocale
