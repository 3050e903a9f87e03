#include "zelclr/settings/color_settings.h"

#include "zelclr/platform/application.h"
#include "zelclr/platform/resources.h"
#include "zelclr/settings/color_settings_manager.h"

#include <algorithm>
#include <iterator>

namespace ColorSystem {

using ZelUtl::ReadLock;
using ZelUtl::WriteLock;

namespace {

struct PresetText
{
  std::wstring_view name;
  const char *resource;
};

constexpr PresetText kPresetTexts[] = {
  {L"North America General Purpose", "c4d4e8af-a00e-4c91-9205-9b35cfcde9cd"},
  {L"North America Prepress", "8896c8c4-e965-4d89-9527-a1ed371efb46"},
  {L"North America Web", "ccab38a2-d887-4807-9f89-e4966d87b9e5"},
  {L"Europe General Purpose", "79cb7075-7723-4743-8ad4-2aac727501be"},
  {L"Europe Prepress", "0daa1d06-eaeb-4c2f-806e-e229a043a610"},
  {L"Europe Web", "4d642392-b0d7-4f7b-9a14-3f3a67e3185b"},
  {L"Japan General Purpose", "c340c553-e719-4b54-8b0a-9ed51c253f9c"},
  {L"Japan Prepress", "3ad4e2d8-42df-47c7-80cf-1a0832f3fe31"},
  {L"Japan Web", "3ca61ccd-3543-4804-b862-1338e321b0cb"},
  {L"Minimal Color Management", "d23f0d67-288d-4b01-a86f-e9ba915d38e0"},
  {L"Simulate Color Management Off", "943e5644-604b-4f94-8d6a-4aaa47862c87"},
  {L"Simulate Kestrel", "792cf436-8ad7-4a9c-8d80-761587465b00"},
};

std::wstring LocalizedNameOf(const std::wstring &name)
{
  const auto *const row =
    std::find_if(std::begin(kPresetTexts), std::end(kPresetTexts), [&](const PresetText &r) { return r.name == name; });
  const std::wstring text = row == std::end(kPresetTexts) ? L"" : Framework::Resources::GetString(row->resource);
  return text.empty() ? name : text;
}

/// Fills in what a context of settings must have.
void Repair(ColorContext &context)
{
  std::unique_ptr<ColorContext> factory;
  for (const ColorModel model : {ColorModel::Rgb, ColorModel::Cmyk, ColorModel::Grayscale}) {
    if (context.GetColorProfile(model) != nullptr)
      continue;
    if (factory == nullptr)
      factory =
        std::make_unique<ColorContext>(ColorSettingsManager::GetFactoryColorSettings()->GetDefaultColorContext());
    context.SetColorProfile(model, factory->GetColorProfile(model));
  }
}

} // namespace

ColorSettings::ColorSettings() = default;

ColorSettings::ColorSettings(const std::wstring &name) : name_(name) {}

ColorSettings::ColorSettings(const ColorSettings &other)
{
  *this = other;
}

ColorSettings::~ColorSettings() = default;

ColorSettings &ColorSettings::operator=(const ColorSettings &other)
{
  if (this == &other)
    return *this;
  SetName(other.GetName());
  SetPreservePureBlack(other.GetPreservePureBlack());
  SetMapGrayToCmykBlackChannel(other.GetMapGrayToCmykBlackChannel());
  SetColorManagementModule(other.GetColorManagementModule());
  SetColorPolicyForOpen(other.GetColorPolicyForOpen());
  SetColorPolicyForImport(other.GetColorPolicyForImport());
  SetDefaultColorContext(other.GetDefaultColorContext());
  SetSpotAltColorModel(other.GetSpotAltColorModel());
  SetFactory(other.IsFactory());
  return *this;
}

bool ColorSettings::operator==(const ColorSettings &other) const
{
  return GetSpotAltColorModel() == other.GetSpotAltColorModel() &&
         GetPreservePureBlack() == other.GetPreservePureBlack() &&
         GetMapGrayToCmykBlackChannel() == other.GetMapGrayToCmykBlackChannel() &&
         GetDefaultColorContext() == other.GetDefaultColorContext() &&
         GetColorManagementModule() == other.GetColorManagementModule() &&
         GetColorPolicyForOpen() == other.GetColorPolicyForOpen() &&
         GetColorPolicyForImport() == other.GetColorPolicyForImport();
}

std::wstring ColorSettings::GetName() const
{
  const ReadLock guard(lock_);
  return name_;
}

void ColorSettings::SetName(const std::wstring &name)
{
  const WriteLock guard(lock_);
  name_ = name;
  localizedName_.clear();
}

std::wstring ColorSettings::GetLocalizedName() const
{
  const WriteLock guard(lock_);
  if (localizedName_.empty())
    localizedName_ = LocalizedNameOf(name_);
  return localizedName_;
}

ColorContext ColorSettings::GetDefaultColorContext() const
{
  const ReadLock guard(lock_);
  return defaultColorContext_;
}

void ColorSettings::SetDefaultColorContext(const ColorContext &context)
{
  ColorContext repaired(context);
  if (ZelUtl::IsConfigurationInitialized())
    Repair(repaired);
  const WriteLock guard(lock_);
  defaultColorContext_ = repaired;
}

ColorManagementModule ColorSettings::GetColorManagementModule() const
{
  const ReadLock guard(lock_);
  return module_;
}

void ColorSettings::SetColorManagementModule(ColorManagementModule module)
{
  const bool available = IsColorManagementModuleAvailable(module);
  const WriteLock guard(lock_);
  module_ = available ? module : ColorManagementModule::Icm;
}

std::vector<ColorManagementModule> ColorSettings::EnumAvailableColorManagementModules()
{
  std::vector<ColorManagementModule> modules;
  for (const auto module : {ColorManagementModule::Icm, ColorManagementModule::Wcs, ColorManagementModule::Adobe,
                            ColorManagementModule::Linear, ColorManagementModule::LCMS})
  {
    if (IsColorManagementModuleAvailable(module))
      modules.push_back(module);
  }
  return modules;
}

bool ColorSettings::IsColorManagementModuleAvailable(ColorManagementModule module)
{
  return ColorManagementSystem::Get(module) != nullptr;
}

ColorPolicy ColorSettings::GetColorPolicyForOpen() const
{
  const ReadLock guard(lock_);
  return policyForOpen_;
}

void ColorSettings::SetColorPolicyForOpen(const ColorPolicy &policy)
{
  const WriteLock guard(lock_);
  policyForOpen_ = policy;
}

ColorPolicy ColorSettings::GetColorPolicyForImport() const
{
  const ReadLock guard(lock_);
  return policyForImport_;
}

void ColorSettings::SetColorPolicyForImport(const ColorPolicy &policy)
{
  const WriteLock guard(lock_);
  policyForImport_ = policy;
}

bool ColorSettings::GetPreservePureBlack() const
{
  const ReadLock guard(lock_);
  return preservePureBlack_;
}

void ColorSettings::SetPreservePureBlack(bool preserve)
{
  const WriteLock guard(lock_);
  preservePureBlack_ = preserve;
}

bool ColorSettings::GetMapGrayToCmykBlackChannel() const
{
  const ReadLock guard(lock_);
  return mapGrayToCmykBlackChannel_;
}

void ColorSettings::SetMapGrayToCmykBlackChannel(bool map)
{
  const WriteLock guard(lock_);
  mapGrayToCmykBlackChannel_ = map;
}

ColorModel ColorSettings::GetSpotAltColorModel() const
{
  const ReadLock guard(lock_);
  return spotAltColorModel_;
}

void ColorSettings::SetSpotAltColorModel(ColorModel model)
{
  const WriteLock guard(lock_);
  spotAltColorModel_ = model;
}

bool ColorSettings::IsFactory() const
{
  const ReadLock guard(lock_);
  return factory_;
}

void ColorSettings::SetFactory(bool factory)
{
  const WriteLock guard(lock_);
  factory_ = factory;
}

} // namespace ColorSystem
