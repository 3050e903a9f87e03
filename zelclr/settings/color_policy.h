// What happens to the profiles in a file when it is opened or imported.
//
// Threads: a value without a lock. Errors: names that are not in the table give an empty result.
#pragma once

#include "zelclr/colorsystem/color_context.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace ColorSystem {

/// "Embedded" is the profile in the file, "baseline" the receiving document's or the application's. Assigned colours
/// keep their numbers, converted ones their looks. Frozen: settings files hold the names, callers the numbers.
enum class ColorPolicyAction : std::uint32_t
{
  AssignEmbeddedProfile = 0,
  ConvertToEmbeddedProfile = 1,
  AssignBaselineProfile = 2,
  ConvertToBaselineProfile = 3
};

/// "AssignEmbeddedProfile"; empty for a number beyond 3.
ZELCLR_API std::string_view NameOfColorPolicyAction(ColorPolicyAction action);
ZELCLR_API std::optional<ColorPolicyAction> ColorPolicyActionFromName(std::string_view name);

class ZELCLR_API ColorPolicy
{
public:
  ColorPolicy() = default;
  ColorPolicy(const ColorPolicy &) = default;
  ColorPolicy &operator=(const ColorPolicy &) = default;
  virtual ~ColorPolicy();

  ColorPolicyAction GetRgbPolicyAction() const { return rgb_; }
  ColorPolicyAction GetCmykPolicyAction() const { return cmyk_; }
  ColorPolicyAction GetGrayscalePolicyAction() const { return grayscale_; }
  void SetRgbPolicyAction(ColorPolicyAction action) { rgb_ = action; }
  void SetCmykPolicyAction(ColorPolicyAction action) { cmyk_ = action; }
  void SetGrayscalePolicyAction(ColorPolicyAction action) { grayscale_ = action; }
  /// Whether whoever opens or imports is to warn; the library itself only keeps the two flags.
  bool GetWarnOnProfileMismatch() const { return warnOnMismatch_; }
  bool GetWarnOnMissingProfile() const { return warnOnMissing_; }
  void SetWarnOnProfileMismatch(bool warn) { warnOnMismatch_ = warn; }
  void SetWarnOnMissingProfile(bool warn) { warnOnMissing_ = warn; }

  /// All five fields.
  bool operator==(const ColorPolicy &other) const;

  /// The colour context of what comes in, and what it does to the two contexts on either side.
  ///
  /// `source` comes with the profiles in the file and leaves with those that its numbers are to be read by; `target` is
  /// the receiving side's. The models name the only one that the source, the target and the result really use; null
  /// stands for no such restriction. The result mixes and renders as `target` does, and `source` from then on, too.
  ///
  /// KEPT: the four actions are not symmetric, where one would expect them to be; what each does is in the source, step
  /// by step. Documents depend on it.
  ColorContext Apply(ColorContext &source, ColorContext &target, const ColorModel *sourceModel = nullptr,
                     const ColorModel *targetModel = nullptr, const ColorModel *resultModel = nullptr) const;

private:
  ColorPolicyAction rgb_ = ColorPolicyAction::ConvertToEmbeddedProfile;
  ColorPolicyAction cmyk_ = ColorPolicyAction::ConvertToEmbeddedProfile;
  ColorPolicyAction grayscale_ = ColorPolicyAction::ConvertToEmbeddedProfile;
  bool warnOnMismatch_ = false;
  bool warnOnMissing_ = false;
};

} // namespace ColorSystem
