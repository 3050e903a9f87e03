// The colour settings of the process: the presets, those in force, and the file that holds them.
//
// The file ColorSettings.xml in "Settings" of the user's colour folder is shared by all applications of the suite. Each
// keeps its own list of presets and its own entry for what is in force beside the factory's. Until the user has one,
// the factory's file of that name in the installation's colour folder is read; ZELCLR_COLORSETTINGS_XML names another
// there. What happens when several write, when a file is damaged and when a disk is full: settings_file.h.
//
// Threads: all operations may be called by many threads. The file's mutex is taken before the manager's lock, that
// before the lock of a settings object; no lock is held while listeners are called.
// Errors: false and null; a write that fails leaves the file as it was. The first use throws ColorSystemError where
// neither file is there and a profile of the built-in settings is not installed.
#pragma once

#include "zelclr/platform/singleton.h"
#include "zelclr/settings/color_settings.h"

#include <memory>
#include <string>
#include <vector>

namespace ColorSystem {

template <class Settings>
class SettingsStore;

class ZELCLR_API ColorSettingsManager
{
public:
  /// The one manager, created by the first call.
  static ColorSettingsManager &GetInstance();
  /// Ends the watch on the file and destroys the manager; nobody may use it meanwhile. The next GetInstance reads anew.
  static void Shutdown();
  ~ColorSettingsManager();

  /// Every preset, ordered by name. They are shared, not copied.
  std::vector<std::shared_ptr<ColorSettings>> EnumerateColorSettings() const;
  /// The preset of exactly that name; null when there is none.
  std::shared_ptr<ColorSettings> GetColorSettings(const std::wstring &name) const;

  /// Puts a copy in force, writes it down and tells the listeners of the profile manager. When this returns, it is in
  /// force in any case; false when it could not be written.
  bool SetApplicationColorSettings(const ColorSettings &settings);
  /// Whether those in force come from the factory and not from the application's own entry.
  bool AreApplicationColorSettingsDefaults() const;

  /// Keeps a copy as a preset of the user, in place of any of its name. True once it is in memory.
  bool AddColorSettings(const ColorSettings &settings);
  /// Keeps copies as presets of the user, all of them with one change of the file or none. False when it could not be
  /// written, and, unless they are to be replaced, when a preset of such a name is there; `taken` is that name then,
  /// else empty.
  bool AddColorSettings(const std::vector<std::shared_ptr<ColorSettings>> &all, bool replace, std::wstring &taken);
  /// Removes a preset from memory, and in any case the element of that name from the application's list in the file.
  /// Whether there was one in memory.
  bool RemoveColorSetting(const std::wstring &name);
  /// Whether there is such a preset and the factory did not make it.
  bool CanRemoveColorSetting(const std::wstring &name) const;
  /// Why the last change of the file by this manager could not be written, in English; empty when it could, or where
  /// there was no file to change.
  std::string GetWriteFailure() const;

  /// The two choices of the settings in force that new colour contexts start with. They take no lock.
  static ColorModel GetApplicationBlendingColorModel();
  static RenderingIntent GetApplicationRenderingIntent();

  /// For a new installation: where no settings were ever in force, those for the user's country come into force.
  void ResetToFactorySettings();
  /// Reads the file anew; a failed reading leaves no presets and what is in force as it was.
  static void ReLoad();

  /// What fills every gap, made anew by each call. Throws ColorSystemError where one of its profiles is not installed.
  static std::shared_ptr<ColorSettings> GetFactoryColorSettings();
  /// "Europe Web", "Japan Web" or "North America Web", by the region that ColorManagementRegions.xml gives the country.
  static std::wstring GetLocaleDefaultSettingsName();
  /// UTF-8; the user's is empty where there is no folder for it.
  static std::string GetFactorySettingsStoragePath();
  static std::string GetUserSettingsStoragePath();

private:
  friend class ColorSettings;
  template <class T>
  friend class ZelUtl::Singleton;

  ColorSettingsManager();

  std::unique_ptr<SettingsStore<ColorSettings>> store_;
};

} // namespace ColorSystem
