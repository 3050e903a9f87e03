#include "zelclr/settings/color_settings_manager.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/platform/console.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/preferences.h"
#include "zelclr/settings/internal/settings_store.h"
#include "zelclr/settings/internal/settings_xml.h"

#include <atomic>
#include <chrono>

namespace ColorSystem {

namespace {

constexpr const char *kFileName = "ColorSettings.xml";
constexpr const char *kFileVariable = "ZELCLR_COLORSETTINGS_XML";

struct StoredModel
{
  static std::string ToText(ColorModel model) { return std::string(NameOfColorModel(model)); }
  static std::optional<ColorModel> FromText(std::string_view text) { return ColorModelFromName(text); }
};

struct StoredIntent
{
  static std::string ToText(RenderingIntent intent) { return std::string(NameOfRenderingIntent(intent)); }
  static std::optional<RenderingIntent> FromText(std::string_view text) { return RenderingIntentFromName(text); }
};

/// What new colour contexts start with: the preferences, until settings come into force.
struct ContextDefaults
{
  std::atomic<ColorModel> blendingModel =
    ZelUtl::CPrefObject<ColorModel, StoredModel>("Color", "DefaultBlendingModel", ColorModel::Rgb).Get();
  std::atomic<RenderingIntent> intent = ZelUtl::CPrefObject<RenderingIntent, StoredIntent>(
                                          "Color", "DefaultRenderingIntent", RenderingIntent::RelativeColorimetric)
                                          .Get();
};

ContextDefaults &Defaults()
{
  static ContextDefaults defaults;
  return defaults;
}

/// Never destroyed: the watch may still read while the process ends.
const ZelUtl::CPrefObject<bool> &HasColorSettings()
{
  static const auto &preference = *new ZelUtl::CPrefObject<bool>("ColorSettingsManager", "HasColorSettings", false);
  return preference;
}

void NoteThatSettingsWereRead()
{
  if (!HasColorSettings().Get())
    HasColorSettings().Set(true);
}

void Refresh(const ColorSettings &application)
{
  const ColorContext context = application.GetDefaultColorContext();
  Defaults().blendingModel = context.GetBlendingColorModel();
  Defaults().intent = context.GetRenderingIntent();
}

void TellListeners()
{
  ColorProfileManager::GetInstance().UpdateListeners();
}

/// The name that ColorManagementRegions.xml gives the region of the user's country.
std::wstring CurrentRegion()
{
  std::string untold;
  const std::wstring country = ZelUtl::WideFromUtf8(ZelLocale::GetCurrentCountryISOCode());
  const auto regions =
    ZelUtl::WXmlDoc::FromFile(ZelUtl::JoinPath(ZelUtl::INIGetConfigDir(), "ColorManagementRegions.xml"), untold);
  const ZelUtl::WXmlNode region = regions && !country.empty()
                                    ? regions->Root().SelectNode("//geoID[@ID=$code]/..", {{"code", country}})
                                    : ZelUtl::WXmlNode();
  return region.Attribute("name").value_or(L"default");
}

std::shared_ptr<ColorSettings> LocaleDefault(const SettingsForm<ColorSettings>::Presets &presets)
{
  const auto preset = presets.find(ColorSettingsManager::GetLocaleDefaultSettingsName());
  return preset == presets.end() ? ColorSettingsManager::GetFactoryColorSettings() : preset->second;
}

constexpr SettingsForm<ColorSettings> kForm = {
  "ColorManagementSettingsCollection",
  "ColorSettingsPresets",
  "ColorSettingsDefaults",
  "ColorSettings",
  "cda6a4c3-279d-ec9a-48d7-75b2502fc85f",
  &ColorSettingsManager::GetUserSettingsStoragePath,
  &ColorSettingsManager::GetFactorySettingsStoragePath,
  [](ColorSettings &settings, const ZelUtl::WXmlNode &element) {
    return Internal::ReadColorSettings(settings, element);
  },
  [](const ColorSettings &settings, const ZelUtl::WXmlNode &parent, std::wstring_view id) {
    return Internal::WriteColorSettings(settings, parent, id);
  },
  &LocaleDefault,
  &ColorSettingsManager::GetFactoryColorSettings,
  &NoteThatSettingsWereRead,
  &Refresh,
  &TellListeners};

/// Never destroyed but by Shutdown: watchers cannot be waited for while the process ends.
ZelUtl::Singleton<ColorSettingsManager> &Manager()
{
  static auto &manager = *new ZelUtl::Singleton<ColorSettingsManager>;
  return manager;
}

} // namespace

ColorSettingsManager::ColorSettingsManager() : store_(std::make_unique<SettingsStore<ColorSettings>>(kForm)) {}

ColorSettingsManager::~ColorSettingsManager() = default;

/// Without the installation's profiles there are no settings, every colour asks for them, and each look takes 20 ms: so
/// what was not found is looked for again after a second, or once the host names other folders.
ColorSettingsManager &ColorSettingsManager::GetInstance()
{
  struct Absence
  {
    std::chrono::steady_clock::time_point until;
    std::string folders;
    std::string reason;
  };
  static Absence &absence = *new Absence; // under the lock of the one instance; never destroyed, as that
  return Manager().Get([] {
    const ZelUtl::Folders folders = ZelUtl::GetFolders();
    const std::string key = folders.data + '\n' + folders.user;
    const auto now = std::chrono::steady_clock::now();
    if (now < absence.until && key == absence.folders)
      throw ColorSystemError(absence.reason);
    try {
      return std::unique_ptr<ColorSettingsManager>(new ColorSettingsManager);
    } catch (const ColorSystemError &error) {
      absence = {now + std::chrono::seconds(1), key, error.what()};
      throw;
    }
  });
}

void ColorSettingsManager::Shutdown()
{
  Manager().Release();
}

std::vector<std::shared_ptr<ColorSettings>> ColorSettingsManager::EnumerateColorSettings() const
{
  return store_->Enumerate();
}

std::shared_ptr<ColorSettings> ColorSettingsManager::GetColorSettings(const std::wstring &name) const
{
  return store_->Find(name);
}

bool ColorSettingsManager::SetApplicationColorSettings(const ColorSettings &settings)
{
  const bool written = store_->SetApplication(settings);
  TellListeners();
  return written;
}

bool ColorSettingsManager::AreApplicationColorSettingsDefaults() const
{
  return store_->IsFromDefaults();
}

bool ColorSettingsManager::AddColorSettings(const ColorSettings &settings)
{
  return store_->Add(settings);
}

bool ColorSettingsManager::AddColorSettings(const std::vector<std::shared_ptr<ColorSettings>> &all, bool replace,
                                            std::wstring &taken)
{
  return store_->AddAll(all, replace, taken);
}

std::string ColorSettingsManager::GetWriteFailure() const
{
  return store_->WriteFailure();
}

bool ColorSettingsManager::RemoveColorSetting(const std::wstring &name)
{
  return store_->Remove(name);
}

bool ColorSettingsManager::CanRemoveColorSetting(const std::wstring &name) const
{
  return store_->CanRemove(name);
}

ColorModel ColorSettingsManager::GetApplicationBlendingColorModel()
{
  return Defaults().blendingModel;
}

RenderingIntent ColorSettingsManager::GetApplicationRenderingIntent()
{
  return Defaults().intent;
}

void ColorSettingsManager::ResetToFactorySettings()
{
  if (!HasColorSettings().Get())
    SetApplicationColorSettings(*store_->Standard());
  NoteThatSettingsWereRead();
}

void ColorSettingsManager::ReLoad()
{
  GetInstance().store_->Reload();
}

std::shared_ptr<ColorSettings> ColorSettingsManager::GetFactoryColorSettings()
{
  auto &profiles = ColorProfileManager::GetInstance();
  const auto rgb = profiles.GetColorProfile(L"sRGB-Placeholder!");
  const auto cmyk = profiles.GetColorProfile(L"USWebCoatedSWOP.icc");
  const auto grayscale = profiles.GetColorProfile(L"Dot Gain 20%.icc");
  if (rgb == nullptr || cmyk == nullptr || grayscale == nullptr)
    throw ColorSystemError("ColorSettingsManager: Failed to find color profile");
  auto settings = std::make_shared<ColorSettings>();
  settings->SetMapGrayToCmykBlackChannel(true);
  settings->SetDefaultColorContext(
    ColorContext(rgb, cmyk, grayscale, ColorModel::Rgb, RenderingIntent::RelativeColorimetric));
  ColorPolicy import;
  import.SetRgbPolicyAction(ColorPolicyAction::ConvertToBaselineProfile);
  import.SetCmykPolicyAction(ColorPolicyAction::ConvertToBaselineProfile);
  import.SetGrayscalePolicyAction(ColorPolicyAction::ConvertToBaselineProfile);
  settings->SetColorPolicyForImport(import);
  return settings;
}

std::wstring ColorSettingsManager::GetLocaleDefaultSettingsName()
{
  const std::wstring region = CurrentRegion();
  return region == L"EuropeMiddleEast" ? L"Europe Web" : region == L"Asia" ? L"Japan Web" : L"North America Web";
}

std::string ColorSettingsManager::GetFactorySettingsStoragePath()
{
  const std::string folder = ZelUtl::INIGetColorDir();
  const std::string name = ZelUtl::EnvironmentVariable(kFileVariable).value_or("");
  return folder.empty() ? folder
                        : ZelUtl::JoinPath(ZelUtl::JoinPath(folder, "Settings"), name.empty() ? kFileName : name);
}

std::string ColorSettingsManager::GetUserSettingsStoragePath()
{
  const std::string folder = ZelUtl::GetUserProfileColorDir();
  return folder.empty() ? folder : ZelUtl::JoinPath(ZelUtl::JoinPath(folder, "Settings"), kFileName);
}

const ColorSettings &ColorSettings::GetApplicationColorSettings()
{
  return ColorSettingsManager::GetInstance().store_->Application();
}

} // namespace ColorSystem
