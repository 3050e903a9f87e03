// Converters between two colour contexts, through the profiles of their models and the engine in force.
//
// A model without a profile in a context takes the application's; where that has none either, the formulas convert.
// Nothing is compensated for: white and black come out as the profiles and the target's rendering intent say.
//
// Threads and errors: as SimpleColorConverter. Contexts are copied; what changes in them later does not count.
#pragma once

#include "zelclr/colorsystem/color_transform.h"
#include "zelclr/colorsystem/simple_color_converter.h"

#include <memory>

namespace ColorSystem {

class ColorConverter;
class ProofColorSettings;

/// What ColorConverter::Create asks first, in tests.
class IColorConverterFactory
{
public:
  virtual ~IColorConverterFactory() = default;
  virtual std::shared_ptr<ColorConverter> Create(const ColorContext &source, const ProofColorSettings *proof,
                                                 const ColorContext &target) = 0;
};

class ZELCLR_API ColorConverter : public SimpleColorConverter
{
public:
  ColorConverter(const ColorContext &source, const ColorContext &target);
  ~ColorConverter() override;

  /// With proof settings, a ProofColorConverter: defined in proofing/proof_color_converter.cpp.
  static std::shared_ptr<ColorConverter> Create(const ColorContext &source, const ProofColorSettings *proof,
                                                const ColorContext &target);
  /// Null takes it away. Not owned.
  static void SetColorConverterFactoryForTests(IColorConverterFactory *factory);
  static IColorConverterFactory *GetColorConverterFactoryForTests();

  /// Black that is black ink alone, or no light at all, stays or becomes full black ink alone in CMYK, whatever the
  /// profiles say. The settings' "PreservePureBlack".
  bool GetPreservePureBlack() const { return preservePureBlack_; }
  void SetPreservePureBlack(bool preserve) { preservePureBlack_ = preserve; }
  /// Gray becomes black ink alone: the ink is what the gray lacks of white. The settings' "MapGrayToCmykBlackChannel".
  bool GetMapGrayscalToBlackChannel() const { return mapGrayscaleToBlackChannel_; }
  void SetMapGrayscalToBlackChannel(bool map) { mapGrayscaleToBlackChannel_ = map; }
  /// Whether the numbers of a model stay as they are between two contexts that both have it.
  std::pair<bool, ColorModel> GetPreserveNumbers() const { return preserveNumbers_; }
  void SetPreserveNumbers(const std::pair<bool, ColorModel> &setting) { preserveNumbers_ = setting; }

  using SimpleColorConverter::Convert;
  /// A colour keeps its family of models, unless the target context has profiles and none for it: then it takes the
  /// model in which that mixes colours. Registration and spot colours stay.
  bool Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target) const override;
  bool Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType,
               unsigned secondType) const override;
  bool Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, const ColorModel &model) const override;
  /// Whether the profile of the target that the colour would be converted to holds it: gamut_check.h.
  bool IsColorInGamut(const CLR_COLORSPEC &colour) const override;
  bool ConvertColorData(const ColorData &source, ColorData &destination) const override;

  /// Whether both contexts have a profile, and they are two.
  bool GetColorConversionRequired(const ColorModel &from, const ColorModel &to) const override;
  bool GetColorConversionRequired(unsigned from, unsigned to) const override;
  const ColorContext &GetTargetColorContext() const override;
  const ColorContext &GetSourceColorContext() const { return *source_; }

  /// One record through a converter that is made for it and copies no context.
  static bool ConvertOnce(const ColorContext &source, const ColorContext &target, const CLR_COLORSPEC &record,
                          CLR_COLORSPEC &result, unsigned type);

protected:
  ColorConverter(Borrowed borrowed, const ColorContext &source, const ColorContext &target);

  /// What converts pixels of the source profile into the target context, in these formats; null when nothing does.
  virtual std::shared_ptr<ColorTransform> CreateColorTransformW(const ColorProfile &source, const ColorContext &target,
                                                                const PixelFormat &from, const PixelFormat &to) const;
  /// Through the profiles, whatever the settings of this converter.
  bool ConvertToColorProfile(const ColorData &source, ColorData &destination) const;
  virtual bool GetShouldPreserveNumbers(const ColorModel &from, const ColorModel &to) const;
  virtual bool ConvertPreserveNumbers(const ColorData &source, ColorData &destination, const ColorModel &model) const;

  /// The profile of a context, else the application's for that model; null when neither has one. Use it no longer than
  /// this converter: what it holds itself is not counted once more.
  std::shared_ptr<ColorProfile> ProfileFor(const ColorContext &context, ColorModel model) const;
  /// By the engine in force, from profile to profile.
  std::shared_ptr<ColorTransform> CreateManagedTransform(const ColorProfile &source, const ColorContext &target,
                                                         const PixelFormat &from, const PixelFormat &to) const;
  using MakeTransform = std::shared_ptr<ColorTransform> (ColorConverter::*)(const ColorProfile &, const ColorContext &,
                                                                            const PixelFormat &,
                                                                            const PixelFormat &) const;
  /// Through a transform from the source profile; formats that it cannot be made for are converted to those that it
  /// can, band by band.
  bool Run(MakeTransform make, const ColorProfile &profile, const ColorData &source, ColorData &destination) const;

private:
  bool ConvertManaged(const ColorData &source, ColorData &destination) const;

  /// What the two contexts hold, by model, where they are copies that nobody changes, and the transforms that were made
  /// from it: looked up without a lock.
  struct Held;

  std::optional<ColorContext> ownSource_;
  const ColorContext *source_;
  std::unique_ptr<const Held> held_;
  bool preservePureBlack_ = false;
  bool mapGrayscaleToBlackChannel_ = false;
  std::pair<bool, ColorModel> preserveNumbers_{false, ColorModel::Cmyk};
};

} // namespace ColorSystem
