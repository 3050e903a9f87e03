// What a spot colour is: its name, the ink that it belongs to, and what it looks like in process models.
//
// Threads: a value. Errors: none.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <cstdint>
#include <map>
#include <string>

/// The definition that spot colour records point at.
class ZELCLR_API SpotColorDefinition
{
public:
  /// By model number, one appearance for each model.
  using Alternatives = std::map<std::uint32_t, CLR_COLORSPEC>;

  /// With one appearance, under its own model.
  SpotColorDefinition(std::wstring colorName, std::wstring colorSpaceName, const CLR_COLORSPEC &appearance);
  SpotColorDefinition(std::wstring colorName, std::wstring colorSpaceName, Alternatives alternatives);

  const std::wstring &GetColorName() const { return colorName_; }
  const std::wstring &GetColorSpaceName() const { return colorSpaceName_; }
  const Alternatives &GetAlternativeColors() const { return alternatives_; }

private:
  std::wstring colorName_;
  std::wstring colorSpaceName_;
  Alternatives alternatives_;
};
