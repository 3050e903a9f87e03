#include "zelclr/colorsystem/color_space.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/color_system_error.h"

#include <algorithm>
#include <array>

namespace ColorSystem {

using ZelUtl::ReadLock;
using ZelUtl::WriteLock;

namespace {

/// Models whose colours are sums of the same three, or four, things.
enum class Family
{
  None,
  Light,
  Ink
};

Family FamilyOf(ColorModel model)
{
  switch (model) {
  case ColorModel::Rgb:
  case ColorModel::Hls:
  case ColorModel::Hsv:
    return Family::Light;
  case ColorModel::Cmyk:
  case ColorModel::Cmy:
    return Family::Ink;
  default:
    return Family::None;
  }
}

bool Interchange(ColorModel a, ColorModel b)
{
  return a == b || (FamilyOf(a) != Family::None && FamilyOf(a) == FamilyOf(b));
}

std::shared_ptr<ColorProfile> Found(const std::wstring &name)
{
  auto profile = ColorProfileManager::GetInstance().GetColorProfile(name.c_str());
  if (profile == nullptr)
    throw ColorSystemError("ColorSpace: Failed to find color profile");
  return profile;
}

std::shared_ptr<ColorProfile> Fitting(ColorModel model, std::shared_ptr<ColorProfile> profile)
{
  if (profile != nullptr && !Interchange(model, profile->GetColorModel()))
    throw ColorSystemError("ColorSpace: Failed to get color model");
  return profile;
}

} // namespace

ColorSpace::ColorSpace(const std::wstring &profileName) : profile_(Found(profileName))
{
  model_ = profile_->GetColorModel();
}

ColorSpace::ColorSpace(const wchar_t *profileName)
  : ColorSpace(std::wstring(profileName == nullptr ? L"" : profileName))
{}

ColorSpace::ColorSpace(const ColorModel &model, const std::wstring &profileName)
  : ColorSpace(model, profileName.empty() ? nullptr : Found(profileName))
{}

ColorSpace::ColorSpace(const ColorModel &model, std::shared_ptr<ColorProfile> profile)
  : model_(model),
    profile_(Fitting(model, std::move(profile)))
{}

ColorSpace::ColorSpace(const ColorProfile &profile) : profile_(profile.GetSafePtr())
{
  if (profile_ == nullptr)
    throw ColorSystemError("ColorSpace: Failed to find color profile");
  model_ = profile_->GetColorModel();
}

ColorSpace::ColorSpace(const ColorSpace &other) : model_(other.GetColorModel()), profile_(other.GetColorProfile()) {}

ColorSpace::~ColorSpace() = default;

ColorSpace &ColorSpace::operator=(const ColorSpace &other)
{
  const ColorModel model = other.GetColorModel(); // two locks are never held at once
  auto profile = other.GetColorProfile();
  const WriteLock guard(lock_);
  model_ = model;
  profile_ = std::move(profile);
  return *this;
}

ColorModel ColorSpace::GetColorModel() const
{
  const ReadLock guard(lock_);
  return model_;
}

std::shared_ptr<ColorProfile> ColorSpace::GetColorProfile() const
{
  const ReadLock guard(lock_);
  return profile_;
}

unsigned ColorSpace::GetChannelCount() const
{
  return ChannelCountOfColorModel(GetColorModel(), 1);
}

bool ColorSpace::GetValidModel(ColorModel model) const
{
  const auto profile = GetColorProfile();
  return profile == nullptr ? model == ColorModel::Spot || model == ColorModel::Registration
                            : Interchange(model, profile->GetColorModel());
}

bool ColorSpace::operator==(const ColorSpace &other) const
{
  return GetColorModel() == other.GetColorModel();
}

void ColorSpace::SetColorProfile(std::shared_ptr<ColorProfile> profile)
{
  const WriteLock guard(lock_);
  profile_ = std::move(profile);
}

} // namespace ColorSystem
