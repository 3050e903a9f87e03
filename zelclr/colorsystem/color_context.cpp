#include "zelclr/colorsystem/color_context.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/display_profile.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ColorSystem {

using ZelUtl::ReadLock;
using ZelUtl::WriteLock;

namespace {

constexpr std::pair<ColorModel, const wchar_t *> kBuiltInProfiles[] = {
  {ColorModel::Lab, L"CIE Lab.icc"},
  {ColorModel::Hexachrome, L"Hexachrome.icc"},
  {ColorModel::Xyz, L"D65_XYZ.icc"},
};

} // namespace

ColorContext::ColorContext(const ColorProfile &profile, RenderingIntent intent) : intent_(intent)
{
  if (auto shared = profile.GetSafePtr()) {
    blendingModel_ = shared->GetColorModel();
    SetColorProfile(shared->GetColorModel(), shared);
  }
}

ColorContext::ColorContext(std::shared_ptr<ColorProfile> rgb, std::shared_ptr<ColorProfile> cmyk,
                           std::shared_ptr<ColorProfile> grayscale, ColorModel blendingModel, RenderingIntent intent)
  : blendingModel_(blendingModel),
    intent_(intent)
{
  SetRgbColorProfile(std::move(rgb));
  SetCmykColorProfile(std::move(cmyk));
  SetGrayscaleColorProfile(std::move(grayscale));
}

ColorContext::ColorContext(const ColorContext &other)
{
  *this = other;
}

ColorContext::~ColorContext() = default;

ColorContext &ColorContext::operator=(const ColorContext &other)
{
  if (this == &other)
    return *this;
  std::map<ColorModel, std::shared_ptr<ColorProfile>> profiles;
  ColorModel blendingModel;
  RenderingIntent intent;
  {
    const ReadLock guard(other.lock_); // two locks are never held at once
    profiles = other.profiles_;
    blendingModel = other.blendingModel_;
    intent = other.intent_;
  }
  const WriteLock guard(lock_);
  profiles_ = std::move(profiles);
  blendingModel_ = blendingModel;
  intent_ = intent;
  return *this;
}

bool ColorContext::operator==(const ColorContext &other) const
{
  const auto profiles = GetColorProfiles();
  const auto others = other.GetColorProfiles();
  return GetBlendingColorModel() == other.GetBlendingColorModel() &&
         GetRenderingIntent() == other.GetRenderingIntent() &&
         std::equal(profiles.begin(), profiles.end(), others.begin(), others.end(),
                    [](const auto &a, const auto &b) { return *a == *b; });
}

std::vector<std::shared_ptr<ColorProfile>> ColorContext::GetColorProfiles() const
{
  const ReadLock guard(lock_);
  std::vector<std::shared_ptr<ColorProfile>> profiles;
  for (const auto &[model, profile] : profiles_)
    profiles.push_back(profile);
  return profiles;
}

std::shared_ptr<ColorProfile> ColorContext::GetColorProfileNoLock(const ColorModel &model) const
{
  if (const auto own = profiles_.find(model); own != profiles_.end())
    return own->second;
  for (const auto &[builtInModel, name] : kBuiltInProfiles) {
    if (builtInModel == model)
      return ColorProfileManager::GetInstance().GetColorProfile(name);
  }
  return nullptr;
}

std::shared_ptr<ColorProfile> ColorContext::GetColorProfile(const ColorModel &model) const
{
  const ReadLock guard(lock_);
  return GetColorProfileNoLock(model);
}

bool ColorContext::SetColorProfile(const ColorModel &model, std::shared_ptr<ColorProfile> profile)
{
  // Asked before the lock is taken: the profile may have to read its file.
  if (profile != nullptr && !(profile->IsValid() && profile->GetColorModel() == model))
    return false;
  const WriteLock guard(lock_);
  if (profile == nullptr)
    profiles_.erase(model);
  else
    profiles_[model] = std::move(profile);
  return true;
}

std::shared_ptr<ColorProfile> ColorContext::GetBlendingColorProfileNoLock() const
{
  if (auto profile = GetColorProfileNoLock(blendingModel_))
    return profile;
  return profiles_.empty() ? nullptr : profiles_.begin()->second;
}

std::shared_ptr<ColorProfile> ColorContext::GetBlendingColorProfile() const
{
  const ReadLock guard(lock_);
  return GetBlendingColorProfileNoLock();
}

ColorModel ColorContext::GetBlendingColorModelNoLock() const
{
  const auto profile = GetBlendingColorProfileNoLock();
  return profile == nullptr ? blendingModel_ : profile->GetColorModel();
}

ColorModel ColorContext::GetBlendingColorModel() const
{
  const ReadLock guard(lock_);
  return GetBlendingColorModelNoLock();
}

void ColorContext::SetBlendingColorModel(const ColorModel &model)
{
  const WriteLock guard(lock_);
  blendingModel_ = model;
}

RenderingIntent ColorContext::GetRenderingIntent() const
{
  const ReadLock guard(lock_);
  return intent_;
}

void ColorContext::SetRenderingIntent(RenderingIntent intent)
{
  const WriteLock guard(lock_);
  intent_ = intent;
}

ColorContext ColorContext::GetDisplayColorContextImp()
{
  auto &profiles = ColorProfileManager::GetInstance();
  const std::wstring path = ZelUtl::WideFromUtf8(ZelUtl::PathOfDisplayProfile());
  auto display = path.empty() ? nullptr : profiles.GetColorProfile(path.c_str());
  if (display == nullptr || display->GetColorModel() != ColorModel::Rgb)
    display = GetApplicationDefaultColorContext().GetColorProfile(ColorModel::Rgb);
  if (display == nullptr)
    display = profiles.GetColorProfile(L"sRGB-Placeholder!");
  return display == nullptr ? ColorContext() : ColorContext(*display, RenderingIntent::RelativeColorimetric);
}

} // namespace ColorSystem
