#include "zelclr/colorsystem/color_profile.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/icc_color_profile.h"

namespace ColorSystem {

ColorProfile::ColorProfile(const wchar_t *name)
{
  StringInit(name == nullptr ? std::wstring() : std::wstring(name));
}

ColorProfile::ColorProfile(const std::wstring &name)
{
  StringInit(name);
}

ColorProfile::ColorProfile(const ColorProfile &other) : implementation_(other.GetSafePtr()) {}

ColorProfile::~ColorProfile() = default;

void ColorProfile::StringInit(const std::wstring &name)
{
  implementation_ = ColorProfileManager::GetInstance().GetColorProfile(name.c_str());
  if (implementation_ == nullptr)
    implementation_ = std::make_shared<IccColorProfile>(name, false);
}

std::shared_ptr<ColorProfile> ColorProfile::GetSafePtr() const
{
  return implementation_;
}

std::wstring ColorProfile::GetPath() const
{
  return implementation_->GetPath();
}

std::wstring ColorProfile::GetName()
{
  return implementation_->GetName();
}

std::wstring ColorProfile::GetDisplayName() const
{
  return implementation_->GetDisplayName();
}

std::uint64_t ColorProfile::GetSize() const
{
  return implementation_->GetSize();
}

std::wstring ColorProfile::GetDeviceManufacturerDescription() const
{
  return implementation_->GetDeviceManufacturerDescription();
}

std::wstring ColorProfile::GetDeviceModelDescription() const
{
  return implementation_->GetDeviceModelDescription();
}

std::uint32_t ColorProfile::GetChannelCount() const
{
  return implementation_->GetChannelCount();
}

ColorModel ColorProfile::GetColorModel()
{
  return implementation_->GetColorModel();
}

DeviceClass ColorProfile::GetDeviceClass()
{
  return implementation_->GetDeviceClass();
}

std::uint32_t ColorProfile::GetMajorVersionNumber() const
{
  return implementation_->GetMajorVersionNumber();
}

std::uint32_t ColorProfile::GetMinorVersionNumber() const
{
  return implementation_->GetMinorVersionNumber();
}

std::wstring ColorProfile::CreatePsColorSourceArray(RenderingIntent intent)
{
  return implementation_->CreatePsColorSourceArray(intent);
}

bool ColorProfile::operator==(const ColorProfile &other) const
{
  const auto mine = GetSafePtr();
  return (mine != nullptr && mine == other.GetSafePtr()) || GetPath() == other.GetPath();
}

bool ColorProfile::operator!=(const ColorProfile &other) const
{
  return !(*this == other);
}

ColorProfile &ColorProfile::operator=(const ColorProfile &other)
{
  implementation_ = other.GetSafePtr();
  return *this;
}

bool ColorProfile::IsValid() const
{
  return implementation_->IsValid();
}

bool ColorProfile::IsValidForPrinting() const
{
  return implementation_->IsValidForPrinting();
}

bool ColorProfile::IsTransient() const
{
  return implementation_->IsTransient();
}

void ColorProfile::UpdateFromDisk()
{
  implementation_->UpdateFromDisk();
}

std::uint64_t ColorProfile::GetContentNumber() const
{
  return implementation_->GetContentNumber();
}

bool ColorProfile::Init()
{
  return implementation_->Init();
}

ColorProfile::ProfileHandle ColorProfile::Open()
{
  return implementation_->Open();
}

void ColorProfile::Close()
{
  implementation_->Close();
}

bool ColorProfile::SetDisplayName(const std::wstring &name)
{
  return implementation_->SetDisplayName(name);
}

void ColorProfile::SetTransient(bool transient)
{
  implementation_->SetTransient(transient);
}

} // namespace ColorSystem
