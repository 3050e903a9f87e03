// What the colour record asks of the definition of a spot colour.

#include "zelclr/palettes/spot_color_definition.h"

namespace Model = ZelClr::ClrModel;

const SpotColorDefinition *CLR_COLORSPEC::GetSpotDefinition() const
{
  const CLR_COLORSPEC &colour = Resolved();
  return colour.model_ == Model::Spot ? colour.Load<const SpotColorDefinition *>(8) : nullptr;
}

std::wstring CLR_COLORSPEC::GetSpotColorName() const
{
  const SpotColorDefinition *definition = GetSpotDefinition();
  return definition ? definition->GetColorName() : std::wstring();
}

std::shared_ptr<SpotColorDefinition> CLR_COLORSPEC::CreateSpotDefinition(const std::wstring &name,
                                                                         const std::wstring &spaceName) const
{
  switch (GetType()) {
  case Model::Invalid:
  case Model::Pantone:
  case Model::PantoneHex:
  case Model::Index:
  case Model::IndexedUserInk:
  case Model::Spot:
  case Model::DeviceN:
    return nullptr;
  default:
    if (!ZelClr::FindColourModel(GetType()))
      return nullptr;
    break;
  }
  CLR_COLORSPEC appearance;
  appearance.Copy(*this);
  return std::make_shared<SpotColorDefinition>(name, spaceName, appearance);
}

bool CLR_COLORSPEC::GetSpotAppearance(unsigned wantedModel, CLR_COLORSPEC &appearance) const
{
  const SpotColorDefinition *definition = GetSpotDefinition();
  if (!definition || definition->GetAlternativeColors().empty())
    return false;
  const auto &alternatives = definition->GetAlternativeColors();
  const auto wanted = alternatives.find(wantedModel);
  appearance.Copy((wanted != alternatives.end() ? wanted : alternatives.begin())->second);
  return true;
}
