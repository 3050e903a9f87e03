// A colour context: what the colours of a document, of the application or of a proof mean. At most one profile for each
// model, the model in which colours are mixed, and a rendering intent.
//
// Threads: its own lock; all operations may be called by many threads.
// Errors: setters answer false and change nothing.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/platform/thread_lock.h"

#include <map>
#include <memory>
#include <vector>

namespace ColorSystem {

class ZELCLR_API ColorContext
{
public:
  /// No profiles, and the application's model and intent: defined in settings/application_settings.cpp.
  ColorContext();
  /// The one profile, whose model is also the blending model.
  ColorContext(const ColorProfile &profile, RenderingIntent intent);
  /// Profiles that SetColorProfile would refuse are left out.
  ColorContext(std::shared_ptr<ColorProfile> rgb, std::shared_ptr<ColorProfile> cmyk,
               std::shared_ptr<ColorProfile> grayscale, ColorModel blendingModel, RenderingIntent intent);
  ColorContext(const ColorContext &other);
  virtual ~ColorContext();
  ColorContext &operator=(const ColorContext &other);

  /// The same profiles, blending model and intent.
  bool operator==(const ColorContext &other) const;

  /// Those that it holds itself, in the order of their models.
  std::vector<std::shared_ptr<ColorProfile>> GetColorProfiles() const;
  /// The profile for the model, else a built-in one, "CIE Lab.icc" for Lab, "Hexachrome.icc" for Hexachrome,
  /// "D65_XYZ.icc" for Xyz; null for other models, and where the built-in profile is not installed.
  std::shared_ptr<ColorProfile> GetColorProfile(const ColorModel &model) const;
  std::shared_ptr<ColorProfile> GetRgbColorProfile() const { return GetColorProfile(ColorModel::Rgb); }
  std::shared_ptr<ColorProfile> GetCmykColorProfile() const { return GetColorProfile(ColorModel::Cmyk); }
  std::shared_ptr<ColorProfile> GetGrayscaleColorProfile() const { return GetColorProfile(ColorModel::Grayscale); }
  /// The profile must be valid and of exactly this model; null takes the model's profile away.
  bool SetColorProfile(const ColorModel &model, std::shared_ptr<ColorProfile> profile);
  bool SetRgbColorProfile(std::shared_ptr<ColorProfile> profile)
  {
    return SetColorProfile(ColorModel::Rgb, std::move(profile));
  }
  bool SetCmykColorProfile(std::shared_ptr<ColorProfile> profile)
  {
    return SetColorProfile(ColorModel::Cmyk, std::move(profile));
  }
  bool SetGrayscaleColorProfile(std::shared_ptr<ColorProfile> profile)
  {
    return SetColorProfile(ColorModel::Grayscale, std::move(profile));
  }

  /// The profile for the blending model, else that of the lowest model which has one; null in an empty context.
  std::shared_ptr<ColorProfile> GetBlendingColorProfile() const;
  /// The model of the blending profile, else the one that was set.
  ColorModel GetBlendingColorModel() const;
  void SetBlendingColorModel(const ColorModel &model);
  RenderingIntent GetRenderingIntent() const;
  void SetRenderingIntent(RenderingIntent intent);

  /// The context of the application's current colour settings: defined in settings/application_settings.cpp.
  static ColorContext GetApplicationDefaultColorContext();
  /// The context of the active document, else the application's: defined there, too.
  static ColorContext GetActiveColorContext();
  /// The profile of the display where the system tells one (platform/display_profile.h), else the application's RGB
  /// profile; relative colorimetric.
  static ColorContext GetDisplayColorContextImp();

private:
  std::shared_ptr<ColorProfile> GetColorProfileNoLock(const ColorModel &model) const ZELCLR_REQUIRES_SHARED(lock_);
  std::shared_ptr<ColorProfile> GetBlendingColorProfileNoLock() const ZELCLR_REQUIRES_SHARED(lock_);
  ColorModel GetBlendingColorModelNoLock() const ZELCLR_REQUIRES_SHARED(lock_);

  ZelUtl::ThreadLock lock_;
  std::map<ColorModel, std::shared_ptr<ColorProfile>> profiles_ ZELCLR_GUARDED_BY(lock_);
  ColorModel blendingModel_ ZELCLR_GUARDED_BY(lock_) = ColorModel::Rgb;
  RenderingIntent intent_ ZELCLR_GUARDED_BY(lock_) = RenderingIntent::RelativeColorimetric;
};

} // namespace ColorSystem
