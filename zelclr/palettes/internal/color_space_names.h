// Names as palettes hold them; those of colour spaces, each of which is one space's only, and no model's.
//
// Threads and errors: plain functions.
#pragma once

#include "zelclr/colour/colour_models.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace ZelClr {

/// UTF-8 with U+FFFD for what XML cannot hold, as it will be read again: names that are two here stay two.
inline std::string NameFromWide(std::wstring name)
{
  const auto isRefused = [](wchar_t c) {
    return (c < L' ' && c != L'\t' && c != L'\n' && c != L'\r') || c == wchar_t{0xFFFE} || c == wchar_t{0xFFFF};
  };
  std::replace_if(name.begin(), name.end(), isRefused, wchar_t{0xFFFD});
  return ZelUtl::Utf8FromWide(name);
}

/// Apostrophes would end the name in the expressions that colour spaces are searched by.
inline std::string WithoutApostrophes(std::string name)
{
  std::erase(name, '\'');
  return name;
}

/// The name, else "name (1)", "name (2)" and so on: the first that is not taken and that no colour model goes by in
/// palette files, where it would be read as that model.
/// `count` is the first number to try; the one behind the last tried comes back, for callers that make many of one
/// name.
template <class IsTaken>
std::string UniqueSpaceName(const std::string &wanted, IsTaken isTaken, int &count)
{
  const auto isModel = [](std::string_view name) {
    const auto models = ColourModels();
    return ModelFromSpaceName(name) != ClrModel::Invalid ||
           std::any_of(models.begin(), models.end(), [name](const auto &m) { return m.spaceName == name; });
  };
  const std::string plain = WithoutApostrophes(wanted);
  std::string name = plain;
  for (; isModel(name) || isTaken(name); ++count)
    name = plain + " (" + std::to_string(count) + ")";
  return name;
}

template <class IsTaken>
std::string UniqueSpaceName(const std::string &wanted, IsTaken isTaken)
{
  int count = 1;
  return UniqueSpaceName(wanted, isTaken, count);
}

} // namespace ZelClr
