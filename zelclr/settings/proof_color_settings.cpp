#include "zelclr/settings/proof_color_settings.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/platform/preferences.h"
#include "zelclr/settings/color_settings.h"

#include <algorithm>

namespace ColorSystem {

using ZelUtl::ReadLock;
using ZelUtl::WriteLock;

namespace {

/// Without a profile where there is none to be had. Never destroyed: the watch may still read while the process ends.
/// Pure green, whether or not there is a profile to say which.
class Green : public Color
{
public:
  explicit Green(const std::shared_ptr<ColorProfile> &profile) : Color(AnySpace(), ColorSpace(ColorModel::Rgb, profile))
  {
    SetChannels({0.0, 1.0, 0.0});
  }
};

std::shared_ptr<const Color> StandardWarningColor()
{
  const auto profile = ColorProfileManager::GetInstance().GetColorProfile(L"sRGB-Placeholder!");
  if (profile == nullptr) // an installation that is not complete, yet
    return std::make_shared<Green>(nullptr);
  static const auto &green = *new std::shared_ptr<const Color>(std::make_shared<Green>(profile));
  return green;
}

const ZelUtl::CPrefObject<bool> &DisplayProofPreference()
{
  static const ZelUtl::CPrefObject<bool> preference("Options - Display", "ColorProofing", false);
  return preference;
}

} // namespace

ProofColorSettings::ProofColorSettings() = default;

ProofColorSettings::ProofColorSettings(const std::wstring &name) : name_(name) {}

ProofColorSettings::ProofColorSettings(const ProofColorSettings &other)
{
  *this = other;
}

ProofColorSettings::~ProofColorSettings() = default;

ProofColorSettings &ProofColorSettings::operator=(const ProofColorSettings &other)
{
  if (this == &other)
    return *this;
  SetName(other.GetName());
  SetGamutWarningLabelColor(*other.GetGamutWarningLabelColor());
  SetGamutWarningLabelTransparency(other.GetGamutWarningLabelTransparency());
  SetPreserveNumbers(other.GetPreserveNumbers());
  SetDisplayGamutWarning(other.GetDisplayGamutWarning());
  SetColorContext(other.GetColorContext());
  SetFactory(other.IsFactory());
  return *this;
}

std::shared_ptr<ProofColorSettings> ProofColorSettings::GetCopy() const
{
  return std::make_shared<ProofColorSettings>(*this);
}

bool ProofColorSettings::operator==(const ProofColorSettings &other) const
{
  return GetPreserveNumbers() == other.GetPreserveNumbers() && GetColorContext() == other.GetColorContext();
}

std::wstring ProofColorSettings::GetName() const
{
  const ReadLock guard(lock_);
  return name_;
}

void ProofColorSettings::SetName(const std::wstring &name)
{
  const WriteLock guard(lock_);
  name_ = name;
  localizedName_.clear();
}

std::wstring ProofColorSettings::GetLocalizedName() const
{
  const WriteLock guard(lock_);
  return localizedName_;
}

RenderingIntent ProofColorSettings::GetRenderingIntent() const
{
  const ReadLock guard(lock_);
  return context_.GetRenderingIntent();
}

void ProofColorSettings::SetRenderingIntent(RenderingIntent intent)
{
  const WriteLock guard(lock_);
  context_.SetRenderingIntent(intent);
}

std::shared_ptr<ColorProfile> ProofColorSettings::GetEnvironmentToSimulate() const
{
  const ReadLock guard(lock_);
  return context_.GetBlendingColorProfile();
}

void ProofColorSettings::SetEnvironmentToSimulate(const std::shared_ptr<ColorProfile> &profile)
{
  const WriteLock guard(lock_);
  for (const auto &old : context_.GetColorProfiles())
    context_.SetColorProfile(old->GetColorModel(), nullptr);
  if (profile != nullptr && context_.SetColorProfile(profile->GetColorModel(), profile))
    context_.SetBlendingColorModel(profile->GetColorModel());
}

bool ProofColorSettings::PreservesNumbersOf(ColorModel model) const
{
  const ReadLock guard(lock_);
  return preserveNumbers_ && context_.GetBlendingColorModel() == model;
}

std::shared_ptr<const Color> ProofColorSettings::GetGamutWarningLabelColor() const
{
  {
    const ReadLock guard(lock_);
    if (warningColor_ != nullptr)
      return warningColor_;
  }
  return StandardWarningColor();
}

void ProofColorSettings::SetGamutWarningLabelColor(const Color &color)
{
  auto copy = std::make_shared<const Color>(color);
  const WriteLock guard(lock_);
  warningColor_ = std::move(copy);
}

ColorContext ProofColorSettings::GetColorContext() const
{
  const ReadLock guard(lock_);
  return context_;
}

void ProofColorSettings::SetColorContext(const ColorContext &context)
{
  const WriteLock guard(lock_);
  context_ = context;
}

bool ProofColorSettings::GetPreserveNumbers() const
{
  const ReadLock guard(lock_);
  return preserveNumbers_;
}

void ProofColorSettings::SetPreserveNumbers(bool preserve)
{
  const WriteLock guard(lock_);
  preserveNumbers_ = preserve;
}

bool ProofColorSettings::GetDisplayGamutWarning() const
{
  const ReadLock guard(lock_);
  return displayGamutWarning_;
}

void ProofColorSettings::SetDisplayGamutWarning(bool display)
{
  const WriteLock guard(lock_);
  displayGamutWarning_ = display;
}

double ProofColorSettings::GetGamutWarningLabelTransparency() const
{
  const ReadLock guard(lock_);
  return warningTransparency_;
}

void ProofColorSettings::SetGamutWarningLabelTransparency(double transparency)
{
  const WriteLock guard(lock_);
  warningTransparency_ = transparency >= 0.0 ? std::min(transparency, 1.0) : 0.0; // a NaN is none
}

bool ProofColorSettings::IsFactory() const
{
  const ReadLock guard(lock_);
  return factory_;
}

void ProofColorSettings::SetFactory(bool factory)
{
  const WriteLock guard(lock_);
  factory_ = factory;
}

bool GetDisplayProofPref()
{
  return DisplayProofPreference().Get();
}

bool SetDisplayProofPref(bool display)
{
  return DisplayProofPreference().Set(display);
}

ViewProofSettings::ViewProofSettings() : displayProof_(GetDisplayProofPref()) {}

ViewProofSettings &ViewProofSettings::operator=(const ViewProofSettings &other) = default;

ViewProofSettings::~ViewProofSettings() = default;

bool ViewProofSettings::GetDisplayProof() const
{
  return displayProof_ &&
         ColorSettings::GetApplicationColorSettings().GetColorManagementModule() != ColorManagementModule::Linear;
}

ProofColorSettings *ViewProofSettings::GetActiveProofSettings()
{
  return GetDisplayProof() ? &settings_ : nullptr;
}

ProofColorSettings *ViewProofSettings::GetSafeProofSettings(ViewProofSettings *view)
{
  return view == nullptr ? nullptr : &view->settings_;
}

ProofColorSettings *ViewProofSettings::GetSafeActiveProofSettings(ViewProofSettings *view)
{
  return view == nullptr ? nullptr : view->GetActiveProofSettings();
}

ViewProofSettings *ViewProofSettings::GetActiveViewSettings(ZelUtl::Document *document)
{
  return ZelUtl::GetViewProofSettings(document);
}

ViewProofSettings &ViewProofSettings::GetDefaultViewSettings()
{
  static ViewProofSettings &view = []() -> ViewProofSettings & {
    auto &made = *new ViewProofSettings; // lives as long as whoever still draws
    made.settings_.SetEnvironmentToSimulate(
      ColorSettings::GetApplicationColorSettings().GetDefaultColorContext().GetBlendingColorProfile());
    return made;
  }();
  return view;
}

} // namespace ColorSystem
