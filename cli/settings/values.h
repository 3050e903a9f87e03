// Every value of settings: what it is called, how it is said, and the element that holds it in a file.
//
// Threads and errors: constant tables.
#pragma once

#include "cli/output.h"
#include "cli/settings/kind.h"

#include <nlohmann/json.hpp>

#include <span>
#include <string>

namespace cli {

struct Value
{
  std::string words; ///< harmless
  Json json;
  std::string note = {};   ///< what else there is to say, on a line below; harmless
  std::string swatch = {}; ///< in front of the words
};

struct Source
{
  const char *code; ///< in JSON
  const char *words;
};

/// `element` is the file's, empty when there is none.
template <class Settings>
struct ValueRow
{
  const char *group; ///< a heading; null for the one above
  const char *label;
  const char *key; ///< in JSON
  /// The inner element by XPath; null for what no file holds.
  const char *path;
  Source otherwise; ///< where the value comes from when the file lacks the element, or there is no such

  Value (*of)(const Settings &settings, const ZelUtl::WXmlNode &element, const Output &output);
};

template <class Settings>
std::span<const ValueRow<Settings>> ValueRows();
template <>
std::span<const ValueRow<ColorSettings>> ValueRows();
template <>
std::span<const ValueRow<ProofColorSettings>> ValueRows();

} // namespace cli
