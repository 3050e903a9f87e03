// A harmony: colours whose hues stand in one relation on the artist's wheel (wheel.h), by a rule (harmony_rules.h).
//
// It lists its colours by the names of their styles; the style sheet knows the styles, and moves them.
// Threads: values. Errors: indices out of range give an empty name, and false.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ColorSystem {
class SimpleColorConverter;
}

namespace ZelClr {

class HarmonyRule;

class ZELCLR_API Harmony
{
public:
  /// Frozen: older style sheets hold the numbers, all hold the names.
  enum class RuleType : std::int32_t
  {
    Custom = 0,
    AccentedAnalogous = 1,
    Analogous = 2,
    Complementary = 3,
    Monochromatic = 4,
    Tetrad = 5,
    Triad = 6,
  };
  static constexpr std::int32_t kRuleTypes = 7;

  /// A colour as its place on the wheel.
  struct ZELCLR_API HSB
  {
    HSB() = default;
    HSB(std::int32_t wheelHue, std::int32_t itsSaturation, std::int32_t itsBrightness, std::int32_t itsDensity = 100)
      : hue(wheelHue),
        saturation(itsSaturation),
        brightness(itsBrightness),
        density(itsDensity)
    {}
    /// Of any record with an appearance, by the active colour context; a reference counts as its colour, a tint as it
    /// looks. A record without one is black.
    explicit HSB(const CLR_COLORSPEC &colour);
    /// The same by a converter that is held; empty for a record without an appearance.
    static std::optional<HSB> Of(const CLR_COLORSPEC &colour, const ColorSystem::SimpleColorConverter &converter);

    /// As a record of a model, by the active colour context. Hues of any number of turns count; saturation and
    /// brightness are cut off to 0 to 255. The density comes back where the model has a place for one, six inks and
    /// RGB48; how the colour looks is in its components, tint included. Invalid for models that colours cannot be
    /// converted to.
    CLR_COLORSPEC GetColorSpec(unsigned model) const;
    CLR_COLORSPEC GetColorSpec(unsigned model, const ColorSystem::SimpleColorConverter &converter) const;

    /// For editors of the wheel: radians, and the saturation from 0 to 1, cut off.
    void GetPolar(double &angle, double &radius) const;
    /// Truncated to whole numbers. Brightness and density stay.
    ///
    /// KEPT: angles below 0 give the hue 0, those above a turn 360, which is not wrapped, and the saturation is not cut
    /// off, where one would expect all of them brought into range; editors depend on it.
    void FromPolar(double angle, double radius);

    bool operator==(const HSB &) const = default;

    std::int32_t hue = 0;        ///< degrees on the wheel
    std::int32_t saturation = 0; ///< 0 to 255
    std::int32_t brightness = 0; ///< 0 to 255
    std::int32_t density = 100;  ///< percent; of a record that has tints
  };

  // --- Rules --------------------------------------------------------------------------------------------------------

  /// "triad"; "custom" for a number that is no rule.
  static std::string_view RuleName(RuleType rule);
  /// Custom for a name that is no rule's.
  static RuleType RuleFromName(std::string_view name);
  /// 2 complementary, 1 monochromatic, 4 tetrad, 3 triad; 0 for rules without arms and numbers that are no rule.
  static int GetNumberOfArms(RuleType rule);
  /// Never null: a custom rule for a number that is none.
  static std::unique_ptr<const HarmonyRule> CreateHarmonyRule(RuleType rule);
  /// So many colours by a rule, the first of them the base: HarmonyRule::Generate.
  static std::vector<HSB> GenerateHarmonyRuleColors(RuleType rule, const HSB &base, std::size_t count);

  // --- Colours ------------------------------------------------------------------------------------------------------

  explicit Harmony(RuleType rule = RuleType::Custom) : rule_(rule) {}

  RuleType GetRuleType() const { return rule_; }
  void SetRuleType(RuleType rule) { rule_ = rule; }

  std::size_t GetColorCount() const { return colors_.size(); }
  /// The name of a style. The first colour of a harmony is its base.
  const std::wstring &GetColor(std::size_t index) const;
  const std::vector<std::wstring> &GetColors() const { return colors_; }
  /// Whatever its case; -1 when it is not there.
  int FindColor(std::wstring_view name) const;
  /// At 0 to the count. Names are not looked at: the style sheet sees to it that each stands once.
  bool InsertColor(std::size_t index, std::wstring name);
  bool SetColor(std::size_t index, std::wstring name);
  bool RemoveColor(std::size_t index);
  template <class Predicate>
  void RemoveColorsIf(Predicate predicate)
  {
    std::erase_if(colors_, predicate);
  }

private:
  RuleType rule_;
  std::vector<std::wstring> colors_;
};

} // namespace ZelClr
