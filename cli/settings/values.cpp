#include "cli/settings/values.h"

#include "cli/profile/profile_file.h"
#include "cli/settings/words.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

namespace cli {

namespace {

using ColorSystem::ColorManagementModule;
using ColorSystem::ColorModel;
using ColorSystem::ColorPolicy;
using ColorSystem::ColorPolicyAction;
using ColorSystem::ColorProfile;
using ZelUtl::WXmlNode;

constexpr Source kFilledIn = {"filledIn", "filled in"}; // a profile of the built-in settings, for a missing one
constexpr Source kDefault = {"default", "default"};     // of settings of which nothing is said
constexpr Source kSystem = {"system", "this system"};
constexpr Source kPreference = {"preference", "preference"};

Value Said(bool value)
{
  return {value ? "yes" : "no", value};
}

Value Said(ColorPolicyAction action)
{
  return {WordsOf(action).name, WordsOf(action).option};
}

Value Said(ColorSystem::RenderingIntent intent)
{
  return {WordsOf(intent).name, WordsOf(intent).option};
}

/// Files may name models that have no profiles.
Value Said(ColorModel model)
{
  if (WordsOf(model).model == model)
    return {WordsOf(model).name, WordsOf(model).option};
  const std::string name(ColorSystem::NameOfColorModel(model));
  return {name, ZelUtl::LowerAscii(name)};
}

Value Said(const std::shared_ptr<ColorProfile> &profile)
{
  if (profile == nullptr)
    return {"none", nullptr};
  const std::string name = OneLine(profile->GetDisplayName());
  const std::string path = ZelUtl::Utf8FromWide(profile->GetPath());
  return {name, {{"name", name}, {"path", path}}, Harmless(path)};
}

// --- Colour settings -------------------------------------------------------------------------------------------------

using Of = Value (*)(const ColorSettings &, const WXmlNode &, const Output &);

template <ColorModel model>
constexpr Of kProfile = [](const ColorSettings &settings, const WXmlNode &, const Output &) {
  return Said(settings.GetDefaultColorContext().GetColorProfile(model));
};

template <auto get>
constexpr Of kContext = [](const ColorSettings &settings, const WXmlNode &, const Output &) {
  return Said((settings.GetDefaultColorContext().*get)());
};

template <auto get>
constexpr Of kPlain =
  [](const ColorSettings &settings, const WXmlNode &, const Output &) { return Said((settings.*get)()); };

template <auto policy, auto get>
constexpr Of kPolicy =
  [](const ColorSettings &settings, const WXmlNode &, const Output &) { return Said(((settings.*policy)().*get)()); };

std::string NameOf(ColorManagementModule module)
{
  return std::string(ColorSystem::NameOfColorManagementModule(module)) + ", " + WordsOf(module).name;
}

/// The module in the settings; the file may name another, which this system does not have.
Value Module(const ColorSettings &settings, const WXmlNode &element, const Output &)
{
  const ColorManagementModule module = settings.GetColorManagementModule();
  const std::string written = ZelUtl::Utf8FromWide(element.SelectNode("ColorManagementModule").Text());
  Value value = {NameOf(module), WordsOf(module).option};
  if (!written.empty() && written != ColorSystem::NameOfColorManagementModule(module))
    value.note = "the file says " + Harmless(written) + ", which this system does not have";
  return value;
}

/// By the rule of ColorManagementSystem::GetCurrent.
Value Engine(const ColorSettings &settings, const WXmlNode &, const Output &)
{
  const ColorManagementModule wanted = settings.GetColorManagementModule();
  auto engine = ColorManagementModule::Linear;
  for (const auto module : {ColorManagementModule::LCMS, wanted}) {
    if (ColorSettings::IsColorManagementModuleAvailable(module))
      engine = module;
  }
  Value value = {NameOf(engine), WordsOf(engine).option};
  if (engine != wanted)
    value.note = "works for " + std::string(ColorSystem::NameOfColorManagementModule(wanted)) + ", which is not here";
  return value;
}

constexpr auto kOpen = &ColorSettings::GetColorPolicyForOpen;
constexpr auto kImport = &ColorSettings::GetColorPolicyForImport;

constexpr ValueRow<ColorSettings> kColourRows[] = {
  {"Profiles", "RGB", "rgbProfile", "ColorContext/ColorProfile[@id='Rgb']", kFilledIn, kProfile<ColorModel::Rgb>},
  {nullptr, "CMYK", "cmykProfile", "ColorContext/ColorProfile[@id='Cmyk']", kFilledIn, kProfile<ColorModel::Cmyk>},
  {nullptr, "Gray", "grayProfile", "ColorContext/ColorProfile[@id='Grayscale']", kFilledIn,
   kProfile<ColorModel::Grayscale>},

  {"Conversion", "colours mix in", "blendingModel", "ColorContext/ColorModel", kDefault,
   kContext<&ColorSystem::ColorContext::GetBlendingColorModel>},
  {nullptr, "rendering intent", "intent", "ColorContext/RenderingIntent", kDefault,
   kContext<&ColorSystem::ColorContext::GetRenderingIntent>},
  {nullptr, "module", "module", "ColorManagementModule", kDefault, &Module},
  {nullptr, "engine that works", "engine", nullptr, kSystem, &Engine},
  {nullptr, "spot colours by", "spot", "ColorModel[@id='SpotAltColorModel']", kDefault,
   kPlain<&ColorSettings::GetSpotAltColorModel>},
  {nullptr, "black stays black ink", "pureBlack", "PreservePureBlack", kDefault,
   kPlain<&ColorSettings::GetPreservePureBlack>},
  {nullptr, "gray in black ink", "grayToBlack", "MapGrayToCmykBlackChannel", kDefault,
   kPlain<&ColorSettings::GetMapGrayToCmykBlackChannel>},

  {"Opening a file", "RGB", "openRgb", "ColorPolicy[@id='ColorPolicyForOpen']/ColorPolicyAction[@id='RgbPolicyAction']",
   kDefault, kPolicy<kOpen, &ColorPolicy::GetRgbPolicyAction>},
  {nullptr, "CMYK", "openCmyk", "ColorPolicy[@id='ColorPolicyForOpen']/ColorPolicyAction[@id='CmykPolicyAction']",
   kDefault, kPolicy<kOpen, &ColorPolicy::GetCmykPolicyAction>},
  {nullptr, "Gray", "openGray", "ColorPolicy[@id='ColorPolicyForOpen']/ColorPolicyAction[@id='GrayscalePolicyAction']",
   kDefault, kPolicy<kOpen, &ColorPolicy::GetGrayscalePolicyAction>},
  {nullptr, "warn of another profile", "warnOpenMismatch",
   "ColorPolicy[@id='ColorPolicyForOpen']/WarnOnProfileMismatch", kDefault,
   kPolicy<kOpen, &ColorPolicy::GetWarnOnProfileMismatch>},
  {nullptr, "warn of no profile", "warnOpenMissing", "ColorPolicy[@id='ColorPolicyForOpen']/WarnOnMissingProfile",
   kDefault, kPolicy<kOpen, &ColorPolicy::GetWarnOnMissingProfile>},

  {"Importing a file", "RGB", "importRgb",
   "ColorPolicy[@id='ColorPolicyForImport']/ColorPolicyAction[@id='RgbPolicyAction']", kDefault,
   kPolicy<kImport, &ColorPolicy::GetRgbPolicyAction>},
  {nullptr, "CMYK", "importCmyk", "ColorPolicy[@id='ColorPolicyForImport']/ColorPolicyAction[@id='CmykPolicyAction']",
   kDefault, kPolicy<kImport, &ColorPolicy::GetCmykPolicyAction>},
  {nullptr, "Gray", "importGray",
   "ColorPolicy[@id='ColorPolicyForImport']/ColorPolicyAction[@id='GrayscalePolicyAction']", kDefault,
   kPolicy<kImport, &ColorPolicy::GetGrayscalePolicyAction>},
  {nullptr, "warn of another profile", "warnImportMismatch",
   "ColorPolicy[@id='ColorPolicyForImport']/WarnOnProfileMismatch", kDefault,
   kPolicy<kImport, &ColorPolicy::GetWarnOnProfileMismatch>},
  {nullptr, "warn of no profile", "warnImportMissing", "ColorPolicy[@id='ColorPolicyForImport']/WarnOnMissingProfile",
   kDefault, kPolicy<kImport, &ColorPolicy::GetWarnOnMissingProfile>},
};

// --- Proof settings --------------------------------------------------------------------------------------------------

Value Simulated(const ProofColorSettings &settings, const WXmlNode &, const Output &)
{
  const auto profile = settings.GetEnvironmentToSimulate();
  return profile == nullptr ? Value{"nothing", nullptr} : Said(profile);
}

Value NumbersKept(const ProofColorSettings &settings, const WXmlNode &, const Output &)
{
  Value value = Said(settings.GetPreserveNumbers());
  const ColorModel model = settings.GetColorContext().GetBlendingColorModel();
  if (settings.GetPreserveNumbers())
    value.words += ", those of " + Said(model).words + " colours";
  return value;
}

Value WarningColour(const ProofColorSettings &settings, const WXmlNode &, const Output &output)
{
  const auto colour = settings.GetGamutWarningLabelColor();
  const CLR_COLORSPEC record = *colour;
  const std::string hex = HexFromColorSpec(record);
  const Value model = Said(colour->GetColorModel());
  Value value = {hex + ", " + model.words, {{"screen", hex}, {"model", model.json}}};
  value.swatch = output.Swatch(record, 2);
  value.json["channels"] = Json::array();
  for (unsigned i = 0; i < colour->GetChannelCount(); ++i) {
    const double channel = (*colour)[i];
    value.words += " " + ZelUtl::TextFromNumber(channel, 3);
    value.json["channels"].push_back(channel);
  }
  const auto profile = colour->GetColorProfile();
  value.json["profile"] = Said(profile).json;
  if (profile != nullptr)
    value.note = Said(profile).words;
  return value;
}

Value Transparency(const ProofColorSettings &settings, const WXmlNode &, const Output &)
{
  const double transparency = settings.GetGamutWarningLabelTransparency();
  return {ZelUtl::TextFromNumber(transparency * 100, 1) + " %", transparency};
}

Value NewViews(const ProofColorSettings &, const WXmlNode &, const Output &)
{
  Value value = Said(ColorSystem::GetDisplayProofPref());
  if (ColorSettings::GetApplicationColorSettings().GetColorManagementModule() == ColorManagementModule::Linear)
    value.note = "no view does while colours are converted by formula";
  return value;
}

constexpr ValueRow<ProofColorSettings> kProofRows[] = {
  {"Simulation", "simulated", "simulated", "ColorContext[@id='ProofColorContext']/ColorProfile", kDefault, &Simulated},
  {nullptr, "rendering intent", "intent", "ColorContext[@id='ProofColorContext']/RenderingIntent", kDefault,
   [](const ProofColorSettings &settings, const WXmlNode &, const Output &) {
     return Said(settings.GetRenderingIntent());
   }},
  {nullptr, "numbers kept", "preserveNumbers", "PreserveNumbers", kDefault, &NumbersKept},

  {"Gamut warning", "shown", "warning", "DisplayGamutWarning", kDefault,
   [](const ProofColorSettings &settings, const WXmlNode &, const Output &) {
     return Said(settings.GetDisplayGamutWarning());
   }},
  {nullptr, "colour", "warningColor", "Color[@id='GamutWarningLabelColor']", kDefault, &WarningColour},
  {nullptr, "transparency", "warningTransparency", "WarningLabelTransparency", kDefault, &Transparency},

  {"Views", "new ones show proofs", "newViewsProof", nullptr, kPreference, &NewViews},
};

} // namespace

template <>
std::span<const ValueRow<ColorSettings>> ValueRows()
{
  return kColourRows;
}

template <>
std::span<const ValueRow<ProofColorSettings>> ValueRows()
{
  return kProofRows;
}

} // namespace cli
