// Converters that show how colours would look on another device: from the source through the proof profile to the
// target, which is mostly a display.
//
// Image, mask and numbers come from one place. Colours go to the proof profile by the intent of the proof settings, and
// from there to the target by the target's own. Numbers that the settings preserve are taken as the device's own. What
// the device cannot show (gamut_check.h) is marked, where the settings ask for it, with their colour; it covers the
// colour below but for its transparency.
//
// Threads and errors: as ColorConverter. The settings are copied.
#pragma once

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/settings/proof_color_settings.h"

#include <optional>
#include <vector>

namespace ColorSystem {

class ZELCLR_API ProofColorConverter : public ColorConverter
{
public:
  ProofColorConverter(const ColorContext &source, const ProofColorSettings &proof, const ColorContext &target);
  ~ProofColorConverter() override;

  ProofColorSettings GetProofColorSettings() const { return settings_; }
  void SetProofColorSettings(const ProofColorSettings &settings);

  using ColorConverter::GetColorConversionRequired;
  /// Always, while something is simulated.
  bool GetColorConversionRequired(const ColorModel &from, const ColorModel &to) const override;
  /// Whether the simulated device shows it.
  bool IsColorInGamut(const CLR_COLORSPEC &colour) const override;
  bool ConvertColorData(const ColorData &source, ColorData &destination) const override;
  COLORREF ConvertToColorRef(const CLR_COLORSPEC &colour, bool markGamut) const override;

  /// One value for each pixel, row by row without gaps: 255 where the device does not show the pixel, else 0. All 0 for
  /// numbers that are preserved, and where nothing is simulated.
  std::vector<std::uint8_t> GetGamutWarningData(const ColorData &source) const;
  /// Lays the warning colour over the pixels that the mask marks; false when the mask is too short or the colour cannot
  /// be had in their model.
  bool ApplyGamutWarningData(const std::vector<std::uint8_t> &mask, ColorData &pixels) const;

protected:
  std::shared_ptr<ColorTransform> CreateColorTransformW(const ColorProfile &source, const ColorContext &target,
                                                        const PixelFormat &from, const PixelFormat &to) const override;
  bool GetShouldPreserveNumbers(const ColorModel &from, const ColorModel &to) const override;
  bool ConvertPreserveNumbers(const ColorData &source, ColorData &destination, const ColorModel &model) const override;

private:
  /// Empty where nothing is out of gamut.
  std::optional<GamutCheck> GamutCheckOf(ColorModel model) const;
  /// The same as GetGamutWarningData, of many pixels as quickly as a screen wants it.
  std::vector<std::uint8_t> ScreenGamutWarningData(const ColorData &source) const;
  bool ConvertProofed(const ColorData &source, ColorData &destination) const;

  ProofColorSettings settings_;
  std::shared_ptr<ColorProfile> environment_; // what is simulated; null when nothing is
};

/// Whose target is the display.
class ZELCLR_API DisplayColorConverter : public ColorConverter
{
public:
  explicit DisplayColorConverter(const ColorContext &source);
  DisplayColorConverter(const ColorContext &source, const ColorContext &display);
  ~DisplayColorConverter() override;

  /// With proof settings, through their proof.
  static std::shared_ptr<ColorConverter> Create(const ColorContext &source, const ProofColorSettings *proof);
  /// Through the view's proof while it shows one.
  static std::shared_ptr<ColorConverter> Create(const ColorContext &source, const ViewProofSettings &view);
};

} // namespace ColorSystem
