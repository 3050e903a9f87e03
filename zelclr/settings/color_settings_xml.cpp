#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/settings/internal/settings_xml.h"

namespace ColorSystem::Internal {

using ZelUtl::WXmlNode;
using ZelUtl::WXmlValueAccessor;

namespace {

struct PolicyActionRow
{
  const wchar_t *id;
  ColorPolicyAction (ColorPolicy::*get)() const;
  void (ColorPolicy::*set)(ColorPolicyAction);
};

constexpr PolicyActionRow kPolicyActions[] = {
  {L"RgbPolicyAction", &ColorPolicy::GetRgbPolicyAction, &ColorPolicy::SetRgbPolicyAction},
  {L"CmykPolicyAction", &ColorPolicy::GetCmykPolicyAction, &ColorPolicy::SetCmykPolicyAction},
  {L"GrayscalePolicyAction", &ColorPolicy::GetGrayscalePolicyAction, &ColorPolicy::SetGrayscalePolicyAction},
};

bool WritePolicy(const ColorPolicy &policy, const WXmlNode &parent, std::wstring_view id)
{
  WXmlValueAccessor values(WXmlValueAccessor(parent).FindOrCreate("ColorPolicy", id));
  bool written = true;
  for (const PolicyActionRow &row : kPolicyActions)
    written = WriteName(values, "ColorPolicyAction", NameOfColorPolicyAction((policy.*row.get)()), row.id) && written;
  written = values.WriteBool("WarnOnProfileMismatch", policy.GetWarnOnProfileMismatch()) && written;
  return values.WriteBool("WarnOnMissingProfile", policy.GetWarnOnMissingProfile()) && written;
}

bool ReadPolicy(ColorPolicy &policy, const WXmlNode &parent, std::wstring_view id)
{
  const WXmlNode element = WXmlValueAccessor(parent).Find("ColorPolicy", id);
  const WXmlValueAccessor values(element);
  bool read = static_cast<bool>(element);
  for (const PolicyActionRow &row : kPolicyActions) {
    ColorPolicyAction action = (policy.*row.get)();
    read = ReadName(values, "ColorPolicyAction", action, &ColorPolicyActionFromName, row.id) && read;
    (policy.*row.set)(action);
  }
  bool mismatch = policy.GetWarnOnProfileMismatch();
  bool missing = policy.GetWarnOnMissingProfile();
  read = ReadOptional(values, "WarnOnProfileMismatch", mismatch) && read;
  read = ReadOptional(values, "WarnOnMissingProfile", missing) && read;
  policy.SetWarnOnProfileMismatch(mismatch);
  policy.SetWarnOnMissingProfile(missing);
  return read;
}

} // namespace

std::wstring ResolvableName(const std::shared_ptr<ColorProfile> &profile)
{
  const std::wstring name = profile->GetName();
  const auto found = ColorProfileManager::GetInstance().GetColorProfile(name.c_str());
  return found == profile ? name : profile->GetPath();
}

bool WriteColorContext(const ColorContext &context, const WXmlNode &parent, XmlId id)
{
  WXmlValueAccessor values(WXmlValueAccessor(parent).Recreate("ColorContext", id));
  bool written = true;
  for (const auto &profile : context.GetColorProfiles()) {
    const std::wstring model = ZelUtl::WideFromUtf8(NameOfColorModel(profile->GetColorModel()));
    if (!model.empty())
      written = values.WriteText("ColorProfile", ResolvableName(profile), model) && written;
  }
  written = WriteName(values, "ColorModel", NameOfColorModel(context.GetBlendingColorModel())) && written;
  return WriteName(values, "RenderingIntent", NameOfRenderingIntent(context.GetRenderingIntent())) && written;
}

bool ReadColorContext(ColorContext &context, const WXmlNode &parent, XmlId id)
{
  const WXmlNode element = WXmlValueAccessor(parent).Find("ColorContext", id);
  if (!element)
    return false;
  bool read = true;
  for (const auto &profile : context.GetColorProfiles())
    context.SetColorProfile(profile->GetColorModel(), nullptr);
  for (auto child = element.FirstChild("ColorProfile"); child; child = child.Next("ColorProfile")) {
    const auto model = ColorModelFromName(ZelUtl::Utf8FromWide(child.Attribute("id").value_or(L"")));
    if (!model) // of a later version
      continue;
    const auto profile = ColorProfileManager::GetInstance().GetColorProfile(child.Text().c_str());
    read = profile != nullptr && context.SetColorProfile(*model, profile) && read;
  }
  ColorModel blending = context.GetBlendingColorModel();
  RenderingIntent intent = context.GetRenderingIntent();
  const WXmlValueAccessor values(element);
  read = ReadName(values, "ColorModel", blending, &ColorModelFromName) && read;
  read = ReadName(values, "RenderingIntent", intent, &RenderingIntentFromName) && read;
  context.SetBlendingColorModel(blending);
  context.SetRenderingIntent(intent);
  return read;
}

bool WriteColorSettings(const ColorSettings &settings, const WXmlNode &parent, XmlId id)
{
  const WXmlNode element = WXmlValueAccessor(parent).Recreate("ColorSettings", id);
  WXmlValueAccessor values(element);
  const auto model = settings.GetSpotAltColorModel();
  const auto module = settings.GetColorManagementModule();
  bool written = values.WriteText("Name", settings.GetName());
  written = WriteName(values, "ColorModel", NameOfColorModel(model), L"SpotAltColorModel") && written;
  written = values.WriteBool("PreservePureBlack", settings.GetPreservePureBlack()) && written;
  written = values.WriteBool("MapGrayToCmykBlackChannel", settings.GetMapGrayToCmykBlackChannel()) && written;
  written = WriteColorContext(settings.GetDefaultColorContext(), element) && written;
  written = WriteName(values, "ColorManagementModule", NameOfColorManagementModule(module), L"ColorManagementModule") &&
            written;
  written = WritePolicy(settings.GetColorPolicyForOpen(), element, L"ColorPolicyForOpen") && written;
  return WritePolicy(settings.GetColorPolicyForImport(), element, L"ColorPolicyForImport") && written;
}

bool ReadColorSettings(ColorSettings &settings, const WXmlNode &element)
{
  if (!element)
    return false;
  const WXmlValueAccessor values(element);
  std::wstring name;
  if (values.ReadText("Name", name))
    settings.SetName(name);

  ColorModel spot = settings.GetSpotAltColorModel();
  bool read = ReadName(values, "ColorModel", spot, &ColorModelFromName, L"SpotAltColorModel");
  settings.SetSpotAltColorModel(spot);
  bool pureBlack = settings.GetPreservePureBlack();
  bool gray = settings.GetMapGrayToCmykBlackChannel();
  read = ReadOptional(values, "PreservePureBlack", pureBlack) && read;
  read = ReadOptional(values, "MapGrayToCmykBlackChannel", gray) && read;
  settings.SetPreservePureBlack(pureBlack);
  settings.SetMapGrayToCmykBlackChannel(gray);

  ColorContext context;
  read = ReadColorContext(context, element) && read;
  settings.SetDefaultColorContext(context);
  auto module = settings.GetColorManagementModule();
  read =
    ReadName(values, "ColorManagementModule", module, &ColorManagementModuleFromName, L"ColorManagementModule") && read;
  settings.SetColorManagementModule(module);

  ColorPolicy open;
  read = ReadPolicy(open, element, L"ColorPolicyForOpen") && read;
  if (read)
    settings.SetColorPolicyForOpen(open);
  ColorPolicy import;
  read = ReadPolicy(import, element, L"ColorPolicyForImport") && read;
  if (read)
    settings.SetColorPolicyForImport(import);
  return read;
}

} // namespace ColorSystem::Internal
