#include "zelclr/palettes/spot_color_definition.h"

#include <utility>

SpotColorDefinition::SpotColorDefinition(std::wstring colorName, std::wstring colorSpaceName,
                                         const CLR_COLORSPEC &appearance)
  : colorName_(std::move(colorName)),
    colorSpaceName_(std::move(colorSpaceName)),
    alternatives_{{appearance.GetType(), appearance}}
{}

SpotColorDefinition::SpotColorDefinition(std::wstring colorName, std::wstring colorSpaceName, Alternatives alternatives)
  : colorName_(std::move(colorName)),
    colorSpaceName_(std::move(colorSpaceName)),
    alternatives_(std::move(alternatives))
{}
