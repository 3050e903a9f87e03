// Where the user is, and the language that he reads.
//
// Threads: plain functions, safe from any thread. The process's locale is neither read nor changed.
// Errors: an empty country, English.
#pragma once

#include "zelclr/platform/export.h"

#include <string>
#include <string_view>

namespace ZelLocale {

struct Locale
{
  std::string country;  ///< ISO 3166-1 alpha-2, "US"; empty when unknown
  std::string language; ///< BCP 47, "pt-BR"

  friend bool operator==(const Locale &, const Locale &) = default;
};

/// On Linux: the country of the first of LC_ALL, LC_PAPER, LC_MEASUREMENT and LANG that names one ("de_DE.UTF-8" names
/// Germany, "C" and "es_419" none): who sets paper apart from words tells where he prints. On Windows: the user's home.
ZELCLR_API std::string GetCurrentCountryISOCode();

/// On Linux: of the first of LC_ALL, LC_MESSAGES and LANG that is set; where that is a language and LANGUAGE is set,
/// the first language of that list. On Windows: the first of the languages that the user prefers. "en" when unknown.
ZELCLR_API std::string GetUILanguage();

/// Puts another in the system's place, for hosts with a choice of languages and for tests.
ZELCLR_API void SetLocale(const Locale &locale);
/// Back to the system's.
ZELCLR_API void ResetLocale();

/// The locale that environment variables give: `valueOf("LANG")` answers a value, empty when it is not set.
ZELCLR_API Locale LocaleFromEnvironment(std::string (*valueOf)(const char *name));

// In posix/ and windows/.
Locale SystemLocale();

} // namespace ZelLocale
