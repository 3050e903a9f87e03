#include "zelclr/palettes/spot_color_definition_manager.h"

#include <algorithm>
#include <utility>

using ZelUtl::ReadLock;
using ZelUtl::WriteLock;

namespace {

template <class Registry, class Belongs>
SpotColorDefinitionManager::Definitions Select(const Registry &registry, Belongs belongs)
{
  SpotColorDefinitionManager::Definitions definitions;
  for (const auto &[text, definition] : registry) {
    if (belongs(*definition))
      definitions.push_back(definition);
  }
  return definitions;
}

} // namespace

ZelUtl::Singleton<SpotColorDefinitionManager> SpotColorDefinitionManager::instance_;

SpotColorDefinitionManager &SpotColorDefinitionManager::GetInstance()
{
  return instance_.Get();
}

bool SpotColorDefinitionManager::HasInstance()
{
  return instance_.HasInstance();
}

void SpotColorDefinitionManager::ReleaseInstance()
{
  instance_.Release();
}

/// Never destroyed: records point into it until the very end.
SpotColorDefinitionManager::Registry &SpotColorDefinitionManager::Registered()
{
  static auto &registry = *new Registry;
  return registry;
}

SpotColorDefinitionManager::Definition
SpotColorDefinitionManager::CreateSpotColorDefinition(const std::wstring &colorName, const std::wstring &colorSpaceName,
                                                      const CLR_COLORSPEC &color)
{
  return Register({colorName, colorSpaceName, color});
}

SpotColorDefinitionManager::Definition
SpotColorDefinitionManager::CreateSpotColorDefinition(const ZelClr::SpotColorDefinitionLookupData &values)
{
  return Register({values.colorName, values.colorSpaceName, values.alternatives});
}

SpotColorDefinitionManager::Definition SpotColorDefinitionManager::Register(SpotColorDefinition definition)
{
  const WriteLock guard(lock_);
  Registry &registry = Registered();
  const auto place = registry.lower_bound(definition.GetContentString());
  if (place != registry.end() && place->first == definition.GetContentString())
    return place->second;
  const auto registered = std::make_shared<const SpotColorDefinition>(std::move(definition));
  return registry.emplace_hint(place, registered->GetContentString(), registered)->second;
}

SpotColorDefinitionManager::Definition
SpotColorDefinitionManager::GetSpotColorDefinitionByContentString(std::wstring_view text) const
{
  const ReadLock guard(lock_);
  const Registry &registry = Registered();
  const auto found = registry.find(text);
  return found == registry.end() ? nullptr : found->second;
}

SpotColorDefinitionManager::Definitions SpotColorDefinitionManager::GetSpotColorDefinitions() const
{
  const ReadLock guard(lock_);
  return Select(Registered(), [](const SpotColorDefinition &) { return true; });
}

SpotColorDefinitionManager::Definitions
SpotColorDefinitionManager::GetSpotColorDefinitionsOfColor(std::wstring_view colorName) const
{
  const ReadLock guard(lock_);
  return Select(Registered(), [&](const auto &definition) { return definition.GetColorName() == colorName; });
}

SpotColorDefinitionManager::Definitions
SpotColorDefinitionManager::GetSpotColorDefinitionsOfColorSpace(std::wstring_view colorSpaceName) const
{
  const ReadLock guard(lock_);
  return Select(Registered(), [&](const auto &definition) { return definition.GetColorSpaceName() == colorSpaceName; });
}
