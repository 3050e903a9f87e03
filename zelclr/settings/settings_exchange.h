// What a settings file holds, entry by entry, apart from the managers; and files of settings to hand on to others.
//
// Threads: plain functions; entries that share a document belong to one thread at a time.
// Errors: an empty result with the reason in English. Entries that cannot be read say why, and the others are read.
#pragma once

#include "zelclr/platform/xml.h"
#include "zelclr/settings/color_settings.h"
#include "zelclr/settings/proof_color_settings.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ColorSystem {

template <class Settings>
struct SettingsEntry
{
  std::wstring list;                  ///< "Factory", or the application; empty for settings in a file of their own
  std::wstring name;                  ///< that of the settings, else the identifier of the element
  std::shared_ptr<Settings> settings; ///< what is missing is filled in as the managers do; null when it cannot be read
  std::string fault;                  ///< why not
  ZelUtl::WXmlNode element;           ///< which says what is written and what is missing
};

template <class Settings>
struct SettingsContents
{
  std::vector<SettingsEntry<Settings>> presets; ///< of all lists, in the order of the file
  std::vector<SettingsEntry<Settings>> inForce; ///< one of each application that has its own, and perhaps the factory's
};

/// Of a settings file, or of a document whose root is one set of settings: a preset then.
ZELCLR_API std::optional<SettingsContents<ColorSettings>> ColorSettingsFromXml(std::string_view bytes,
                                                                               std::string &reason);
ZELCLR_API std::optional<SettingsContents<ProofColorSettings>> ProofColorSettingsFromXml(std::string_view bytes,
                                                                                         std::string &reason);

/// A settings file with these presets in the list of the application that this process works for. Empty, with a reason,
/// when one holds a value that files have no name for.
ZELCLR_API std::string XmlFromSettings(const std::vector<std::shared_ptr<ColorSettings>> &presets, std::string &reason);
ZELCLR_API std::string XmlFromSettings(const std::vector<std::shared_ptr<ProofColorSettings>> &presets,
                                       std::string &reason);

} // namespace ColorSystem
