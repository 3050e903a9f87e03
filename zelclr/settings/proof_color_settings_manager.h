// The proof settings of the process: the presets, those in force, and the file ProofColorSettings.xml that holds them.
//
// All is as with ColorSettingsManager, which see, but: no variable of the environment names another factory file; where
// no file says what is in force, settings that simulate nothing are.
//
// Threads and errors: as there. Nothing throws.
#pragma once

#include "zelclr/platform/singleton.h"
#include "zelclr/settings/proof_color_settings.h"

#include <memory>
#include <string>
#include <vector>

namespace ColorSystem {

template <class Settings>
class SettingsStore;

class ZELCLR_API ProofColorSettingsManager
{
public:
  static ProofColorSettingsManager &GetInstance();
  static void Shutdown();
  ~ProofColorSettingsManager();

  std::vector<std::shared_ptr<ProofColorSettings>> EnumerateProofColorSettings() const;
  std::shared_ptr<ProofColorSettings> GetProofColorSettings(const std::wstring &name) const;

  const ProofColorSettings &GetApplicationProofColorSettings() const;
  bool SetApplicationProofColorSettings(const ProofColorSettings &settings);
  bool AreApplicationProofColorSettingsDefaults() const;

  bool AddProofColorSettings(const ProofColorSettings &settings);
  bool AddProofColorSettings(const std::vector<std::shared_ptr<ProofColorSettings>> &all, bool replace,
                             std::wstring &taken);
  bool RemoveColorSetting(const std::wstring &name);
  bool CanRemoveColorSetting(const std::wstring &name) const;
  std::string GetWriteFailure() const;

  static void ReLoad();
  static std::shared_ptr<ProofColorSettings> GetFactoryProofColorSettings();
  static std::string GetFactorySettingsStoragePath();
  static std::string GetUserSettingsStoragePath();

private:
  template <class T>
  friend class ZelUtl::Singleton;

  ProofColorSettingsManager();

  std::unique_ptr<SettingsStore<ProofColorSettings>> store_;
};

} // namespace ColorSystem
