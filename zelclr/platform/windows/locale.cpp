#include "zelclr/platform/locale.h"

#include "zelclr/platform/console.h"
#include "zelclr/platform/text.h"

#include <windows.h>

#include <array>
#include <vector>

namespace ZelLocale {

namespace {

std::string HomeCountry()
{
  std::array<wchar_t, 16> code = {}; // two letters, or the three digits of a part of the world
  const int length = ::GetUserDefaultGeoName(code.data(), static_cast<int>(code.size()));
  return length == 3 ? ZelUtl::Utf8FromWide(code.data()) : "";
}

std::string PreferredLanguage()
{
  ULONG count = 0;
  ULONG length = 0;
  if (::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, nullptr, &length) == 0 || length == 0)
    return "en";
  std::vector<wchar_t> names(length);
  if (::GetUserPreferredUILanguages(MUI_LANGUAGE_NAME, &count, names.data(), &length) == 0 || count == 0)
    return "en";
  return ZelUtl::Utf8FromWide(names.data()); // up to the first one's end
}

/// As on other systems where somebody says so in the environment, as gettext has it; terminals that come with POSIX
/// tools do.
bool IsInEnvironment()
{
  for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::string value = ZelUtl::EnvironmentVariable(name).value_or("");
    if (!value.empty())
      return value != "C" && value != "POSIX" && !value.starts_with("C.");
  }
  return false;
}

} // namespace

Locale SystemLocale()
{
  if (IsInEnvironment())
    return LocaleFromEnvironment([](const char *name) { return ZelUtl::EnvironmentVariable(name).value_or(""); });
  return {HomeCountry(), PreferredLanguage()};
}

} // namespace ZelLocale
