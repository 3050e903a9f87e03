#include "zelclr/settings/settings_exchange.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/platform/application.h"
#include "zelclr/settings/internal/settings_xml.h"

#include <algorithm>
#include <iterator>

namespace ColorSystem {

using ZelUtl::WXmlNode;
using ZelUtl::WXmlValueAccessor;

namespace {

/// The elements of one kind of settings file, and how one set is read and written.
template <class Settings>
struct ExchangeForm
{
  const char *root;
  const char *presets;
  const char *defaults;
  const char *element;
  std::initializer_list<const char *> needed; ///< inner elements without which nothing is read
  bool (*read)(Settings &settings, const WXmlNode &element);
  bool (*write)(const Settings &settings, const WXmlNode &parent, Internal::XmlId id);
};

constexpr std::initializer_list<const char *> kNeededOfColor = {"ColorContext", "ColorPolicy[@id='ColorPolicyForOpen']",
                                                                "ColorPolicy[@id='ColorPolicyForImport']"};
constexpr std::initializer_list<const char *> kNeededOfProof = {"ColorContext[@id='ProofColorContext']"};

constexpr ExchangeForm<ColorSettings> kColorForm = {"ColorManagementSettingsCollection",
                                                    "ColorSettingsPresets",
                                                    "ColorSettingsDefaults",
                                                    "ColorSettings",
                                                    kNeededOfColor,
                                                    &Internal::ReadColorSettings,
                                                    &Internal::WriteColorSettings};
constexpr ExchangeForm<ProofColorSettings> kProofForm = {"ProofColorSettingsCollection",
                                                         "ProofColorSettingsPresets",
                                                         "ProofColorSettingsDefaults",
                                                         "ProofColorSettings",
                                                         kNeededOfProof,
                                                         &Internal::ReadProofColorSettings,
                                                         &Internal::WriteProofColorSettings};

// --- Why a set cannot be read ----------------------------------------------------------------------------------------

template <auto fromName>
bool IsNamed(std::string_view text)
{
  return fromName(text).has_value();
}
bool IsBool(std::string_view text)
{
  const std::string_view word = ZelUtl::Trimmed(text);
  return word == "true" || word == "false" || word == "1" || word == "0";
}
bool IsNumber(std::string_view text)
{
  return ZelUtl::DoubleFromText(ZelUtl::Trimmed(text)).has_value();
}

struct ValueRule
{
  std::string_view element;
  bool (*isValue)(std::string_view text);
};

constexpr ValueRule kRules[] = {
  {"ColorModel", &IsNamed<&ColorModelFromName>},
  {"RenderingIntent", &IsNamed<&RenderingIntentFromName>},
  {"ColorManagementModule", &IsNamed<&ColorManagementModuleFromName>},
  {"ColorPolicyAction", &IsNamed<&ColorPolicyActionFromName>},
  {"PreservePureBlack", &IsBool},
  {"MapGrayToCmykBlackChannel", &IsBool},
  {"WarnOnProfileMismatch", &IsBool},
  {"WarnOnMissingProfile", &IsBool},
  {"DisplayGamutWarning", &IsBool},
  {"PreserveNumbers", &IsBool},
  {"WarningLabelTransparency", &IsNumber},
  {"ColorChannel", &IsNumber},
};

std::string FaultOfProfile(const WXmlNode &element)
{
  const std::wstring name = element.Text();
  const auto model = ColorModelFromName(ZelUtl::Utf8FromWide(element.Attribute("id").value_or(L"")));
  const auto profile = ColorProfileManager::GetInstance().GetColorProfile(name.c_str());
  if (!model) // of a later version: nobody looks at it
    return {};
  if (profile == nullptr)
    return "its profile \"" + ZelUtl::Utf8FromWide(name) + "\" is not installed";
  if (profile->GetColorModel() == *model)
    return {};
  return "its profile \"" + ZelUtl::Utf8FromWide(name) + "\" is not of the model " +
         std::string(NameOfColorModel(*model));
}

/// The first value within that is none; empty when there is no such.
std::string FaultOfValues(const WXmlNode &element)
{
  for (const WXmlNode &child : element.Children()) {
    const std::string name = child.Name();
    const std::string text = ZelUtl::Utf8FromWide(child.Text());
    const auto *const rule =
      std::find_if(std::begin(kRules), std::end(kRules), [&](const ValueRule &row) { return row.element == name; });
    if (rule != std::end(kRules) && !rule->isValue(text))
      return "\"" + text + "\" is no value for " + name;
    std::string fault = name == "ColorProfile" ? FaultOfProfile(child) : FaultOfValues(child);
    if (!fault.empty())
      return fault;
  }
  return {};
}

template <class Settings>
std::string FaultOf(const WXmlNode &element, const ExchangeForm<Settings> &form)
{
  for (const char *needed : form.needed) {
    if (!element.SelectNode(needed))
      return std::string("it has no ") + needed;
  }
  const std::string fault = FaultOfValues(element);
  return fault.empty() ? "it is not complete" : fault;
}

// --- Reading and writing ---------------------------------------------------------------------------------------------

template <class Settings>
SettingsEntry<Settings> EntryOf(const WXmlNode &element, const std::wstring &list, const ExchangeForm<Settings> &form)
{
  SettingsEntry<Settings> entry = {list, element.Attribute("id").value_or(L""), nullptr, "", element};
  WXmlValueAccessor(element).ReadText("Name", entry.name);
  auto settings = std::make_shared<Settings>(entry.name);
  try {
    if (form.read(*settings, element))
      entry.settings = settings;
    else
      entry.fault = FaultOf(element, form);
  } catch (const ColorSystemError &) {
    entry.fault = "a profile that fills its gaps is not installed";
  }
  if (entry.settings != nullptr)
    settings->SetFactory(list == L"Factory");
  return entry;
}

template <class Settings>
std::optional<SettingsContents<Settings>> Contents(std::string_view bytes, std::string &reason,
                                                   const ExchangeForm<Settings> &form)
{
  const auto document = ZelUtl::WXmlDoc::FromBytes(bytes, reason);
  if (!document)
    return std::nullopt;
  SettingsContents<Settings> contents;
  const WXmlNode root = document->Root();
  if (root.Name() == form.element) {
    contents.presets.push_back(EntryOf(root, L"", form));
    return contents;
  }
  if (root.Name() != form.root) {
    reason = "its root is neither " + std::string(form.root) + " nor " + form.element;
    return std::nullopt;
  }
  for (auto list = root.FirstChild(form.presets); list; list = list.Next(form.presets)) {
    for (auto element = list.FirstChild(form.element); element; element = element.Next(form.element))
      contents.presets.push_back(EntryOf(element, list.Attribute("id").value_or(L""), form));
  }
  const WXmlNode defaults = root.FirstChild(form.defaults);
  for (auto element = defaults.FirstChild(form.element); element; element = element.Next(form.element))
    contents.inForce.push_back(EntryOf(element, element.Attribute("id").value_or(L""), form));
  return contents;
}

template <class Settings>
std::string Xml(const std::vector<std::shared_ptr<Settings>> &presets, std::string &reason,
                const ExchangeForm<Settings> &form)
{
  auto document = ZelUtl::WXmlDoc::FromBytes("<" + std::string(form.root) + "/>", reason);
  if (!document)
    return {};
  const WXmlNode list = WXmlValueAccessor(document->Root()).FindOrCreate(form.presets, ZelUtl::GetApplicationName());
  for (const auto &settings : presets) {
    if (!form.write(*settings, list, settings->GetName())) {
      reason = "\"" + ZelUtl::Utf8FromWide(settings->GetName()) + "\" holds a value that has no name in files";
      return {};
    }
  }
  return document->Bytes();
}

} // namespace

std::optional<SettingsContents<ColorSettings>> ColorSettingsFromXml(std::string_view bytes, std::string &reason)
{
  return Contents(bytes, reason, kColorForm);
}

std::optional<SettingsContents<ProofColorSettings>> ProofColorSettingsFromXml(std::string_view bytes,
                                                                              std::string &reason)
{
  return Contents(bytes, reason, kProofForm);
}

std::string XmlFromSettings(const std::vector<std::shared_ptr<ColorSettings>> &presets, std::string &reason)
{
  return Xml(presets, reason, kColorForm);
}

std::string XmlFromSettings(const std::vector<std::shared_ptr<ProofColorSettings>> &presets, std::string &reason)
{
  return Xml(presets, reason, kProofForm);
}

} // namespace ColorSystem
