// A colour space: a model, and a profile that says what its numbers mean. Spot and registration colours have none.
//
// Threads: its own lock; all operations may be called by many threads.
// Errors: constructors throw ColorSystemError: "ColorSpace: Failed to find color profile", "ColorSpace: Failed to get
// color model".
#pragma once

#include "zelclr/colorsystem/color_model.h"
#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/platform/thread_lock.h"

#include <memory>
#include <string>

namespace ColorSystem {

class ZELCLR_API ColorSpace
{
public:
  /// Of an installed profile, found by name (ColorProfileManager::GetColorProfile), with the profile's own model.
  explicit ColorSpace(const std::wstring &profileName);
  explicit ColorSpace(const wchar_t *profileName);
  /// An empty name, or a null profile, stands for no profile, which any model takes. Otherwise the profile's model must
  /// be the model or one that it interchanges with: Rgb, Hls and Hsv; Cmyk and Cmy.
  ColorSpace(const ColorModel &model, const std::wstring &profileName);
  ColorSpace(const ColorModel &model, std::shared_ptr<ColorProfile> profile);
  explicit ColorSpace(const ColorProfile &profile);
  ColorSpace(const ColorSpace &other);
  virtual ~ColorSpace();
  ColorSpace &operator=(const ColorSpace &other);

  ColorModel GetColorModel() const;
  std::shared_ptr<ColorProfile> GetColorProfile() const;
  unsigned GetChannelCount() const;
  /// Whether colours of the model can live here.
  bool GetValidModel(ColorModel model) const;

  /// KEPT: spaces of one model are equal whatever their profiles, where one would expect the profiles to count; the
  /// equality of colours rests on it.
  bool operator==(const ColorSpace &other) const;

private:
  friend class Color;
  void SetColorProfile(std::shared_ptr<ColorProfile> profile);

  ZelUtl::ThreadLock lock_;
  ColorModel model_ ZELCLR_GUARDED_BY(lock_);
  std::shared_ptr<ColorProfile> profile_ ZELCLR_GUARDED_BY(lock_);
};

} // namespace ColorSystem
