// One named, complete set of the application's choices in colour management.
//
// Threads: its own lock, which every accessor takes; a copy is made field by field, so that one who reads the target
// meanwhile may see some fields old and some new.
// Errors: SetDefaultColorContext, and with it copies, throw ColorSystemError where a profile must be filled in and the
// factory's is not installed.
#pragma once

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/platform/thread_lock.h"
#include "zelclr/settings/color_policy.h"

#include <memory>
#include <string>
#include <vector>

namespace ColorSystem {

class ZELCLR_API ColorSettings
{
public:
  ColorSettings();
  explicit ColorSettings(const std::wstring &name);
  ColorSettings(const ColorSettings &other);
  virtual ~ColorSettings();
  ColorSettings &operator=(const ColorSettings &other);

  /// All but the name and where the set comes from, so that it tells which preset the current choices are.
  bool operator==(const ColorSettings &other) const;
  bool operator!=(const ColorSettings &other) const { return !(*this == other); }

  std::wstring GetName() const;
  void SetName(const std::wstring &name);
  /// For people: the text of the resources for the names of the factory's presets, for any other the name itself.
  std::wstring GetLocalizedName() const;

  ColorContext GetDefaultColorContext() const;
  /// Once the application is configured, a missing RGB, CMYK or grayscale profile is filled in from the factory
  /// settings.
  void SetDefaultColorContext(const ColorContext &context);

  ColorPolicy GetColorPolicyForOpen() const;
  void SetColorPolicyForOpen(const ColorPolicy &policy);
  ColorPolicy GetColorPolicyForImport() const;
  void SetColorPolicyForImport(const ColorPolicy &policy);

  /// Always one that this system has, or Icm, which is stored in place of any other. Which engine works for it is
  /// ColorManagementSystem::GetCurrent's choice.
  ColorManagementModule GetColorManagementModule() const;
  void SetColorManagementModule(ColorManagementModule module);
  static std::vector<ColorManagementModule> EnumAvailableColorManagementModules();
  static bool IsColorManagementModuleAvailable(ColorManagementModule module);

  /// Whether black text stays black ink alone, and gray becomes black ink alone.
  bool GetPreservePureBlack() const;
  void SetPreservePureBlack(bool preserve);
  bool GetMapGrayToCmykBlackChannel() const;
  void SetMapGrayToCmykBlackChannel(bool map);

  /// Which of a palette's numbers count for a spot colour; none of the three for any other model that a file names.
  ColorModel GetSpotAltColorModel() const;
  void SetSpotAltColorModel(ColorModel model);
  bool GetUseCmykPaletteNumbersForSpotColors() const { return GetSpotAltColorModel() == ColorModel::Cmyk; }
  bool GetUseLabPaletteNumbersForSpotColors() const { return GetSpotAltColorModel() == ColorModel::Lab; }
  bool GetUseRgbPaletteNumbersForSpotColors() const { return GetSpotAltColorModel() == ColorModel::Rgb; }
  void SetUseCmykPaletteNumbersForSpotColors() { SetSpotAltColorModel(ColorModel::Cmyk); }
  void SetUseLabPaletteNumbersForSpotColors() { SetSpotAltColorModel(ColorModel::Lab); }
  void SetUseRgbPaletteNumbersForSpotColors() { SetSpotAltColorModel(ColorModel::Rgb); }

  /// Whether it came with the library. Copies keep it; no file stores it.
  bool IsFactory() const;
  void SetFactory(bool factory);

  /// Those in force. ColorSettingsManager changes them.
  static const ColorSettings &GetApplicationColorSettings();

private:
  ZelUtl::ThreadLock lock_;
  std::wstring name_ ZELCLR_GUARDED_BY(lock_);
  mutable std::wstring localizedName_ ZELCLR_GUARDED_BY(lock_);
  ColorModel spotAltColorModel_ ZELCLR_GUARDED_BY(lock_) = ColorModel::Lab;
  bool preservePureBlack_ ZELCLR_GUARDED_BY(lock_) = false;
  bool mapGrayToCmykBlackChannel_ ZELCLR_GUARDED_BY(lock_) = false;
  ColorContext defaultColorContext_ ZELCLR_GUARDED_BY(lock_);
  ColorManagementModule module_ ZELCLR_GUARDED_BY(lock_) = ColorManagementModule::Icm;
  ColorPolicy policyForOpen_ ZELCLR_GUARDED_BY(lock_);
  ColorPolicy policyForImport_ ZELCLR_GUARDED_BY(lock_);
  bool factory_ ZELCLR_GUARDED_BY(lock_) = false;
};

} // namespace ColorSystem
