// What a spot colour is: its name, the ink that it belongs to, and what it looks like in process models.
//
// Threads: a value. Errors: none.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <cstdint>
#include <map>
#include <string>

/// The definition that spot colour records point at. Records point at those of SpotColorDefinitionManager, which last.
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
  void SetColorName(std::wstring name);
  void SetColorSpaceName(std::wstring name);
  void SetAlternativeColors(Alternatives alternatives);

  /// The definition as text, by which equal ones are one: "Red : Inks : CMYK : 0 240 240 10". Names, then for each
  /// alternative by model number "CMYK", "RGB", "LAB" or nothing, and its values. Frozen: documents hold it.
  ///
  /// Values are those of ColorSpecValuesToString.
  ///
  /// KEPT: gray, six-ink and other appearances have no values here, where one would expect them in full, so that
  /// definitions that differ in nothing else are equal; documents hold the text.
  const std::wstring &GetContentString() const { return contentString_; }

  /// The name, and behind it the values of each alternative: a name of its own for every appearance of an ink.
  static std::wstring GenerateColorSpaceName(const std::wstring &name, const Alternatives &alternatives);
  /// The channels as stored, with blanks between them: C M Y K; blue, green, red of RGB255, RGB48 and user inks; L a b;
  /// red, green, blue of scRGB in the shortest decimals that read back. Empty for every other model.
  static std::wstring ColorSpecValuesToString(const CLR_COLORSPEC &color);

  /// By the content string.
  friend bool operator==(const SpotColorDefinition &a, const SpotColorDefinition &b)
  {
    return a.contentString_ == b.contentString_;
  }
  friend bool operator!=(const SpotColorDefinition &a, const SpotColorDefinition &b) { return !(a == b); }
  friend bool operator<(const SpotColorDefinition &a, const SpotColorDefinition &b)
  {
    return a.contentString_ < b.contentString_;
  }

private:
  void GenerateContentString();

  std::wstring colorName_;
  std::wstring colorSpaceName_;
  Alternatives alternatives_;
  std::wstring contentString_; // of the three above
};
