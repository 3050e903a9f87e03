#include "zelclr/platform/locale.h"

#include <cstdlib>

namespace ZelLocale {

Locale SystemLocale()
{
  return LocaleFromEnvironment([](const char *name) {
    const char *const value = std::getenv(name);
    return std::string(value == nullptr ? "" : value);
  });
}

} // namespace ZelLocale
