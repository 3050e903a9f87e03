// The definitions of all spot colours in use: equal ones, from whatever palette or document, are one object.
//
// Threads: safe from any thread. Errors: null, empty results.
#pragma once

#include "zelclr/palettes/spot_color_definition.h"
#include "zelclr/platform/singleton.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

/// What a definition is made of.
struct SpotColorDefinitionLookupData
{
  std::wstring colorName;
  std::wstring colorSpaceName;
  SpotColorDefinition::Alternatives alternatives;
};

} // namespace ZelClr

/// Definitions are found by their content string. Records point at them without owning them, so a registered one never
/// changes and lasts until the process ends, also after ReleaseInstance: a later manager finds it again.
class ZELCLR_API SpotColorDefinitionManager
{
public:
  using Definition = std::shared_ptr<const SpotColorDefinition>;
  using Definitions = std::vector<Definition>;

  /// The one manager, created by the first call.
  static SpotColorDefinitionManager &GetInstance();
  static bool HasInstance();
  /// Nobody may use the manager meanwhile.
  static void ReleaseInstance();

  /// The one of these values, registered by the first call; never null.
  Definition CreateSpotColorDefinition(const std::wstring &colorName, const std::wstring &colorSpaceName,
                                       const CLR_COLORSPEC &color);
  Definition CreateSpotColorDefinition(const ZelClr::SpotColorDefinitionLookupData &values);
  /// Null when none is registered.
  Definition GetSpotColorDefinitionByContentString(std::wstring_view text) const;

  // All of them, or those of one colour or one ink; ordered by content string.
  Definitions GetSpotColorDefinitions() const;
  Definitions GetSpotColorDefinitionsOfColor(std::wstring_view colorName) const;
  Definitions GetSpotColorDefinitionsOfColorSpace(std::wstring_view colorSpaceName) const;

private:
  using Registry = std::map<std::wstring_view, Definition>; // the key is the definition's own text

  Definition Register(SpotColorDefinition definition);
  static Registry &Registered();

  static ZelUtl::Singleton<SpotColorDefinitionManager> instance_;
  ZelUtl::ThreadLock lock_; // of the registry
};
