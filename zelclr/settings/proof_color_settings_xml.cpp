#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/settings/internal/settings_xml.h"

namespace ColorSystem::Internal {

using ZelUtl::WXmlNode;
using ZelUtl::WXmlValueAccessor;

namespace {

constexpr const wchar_t *kWarningColor = L"GamutWarningLabelColor";
constexpr const wchar_t *kProofContext = L"ProofColorContext";

/// Empty when the model, its profile or their match is unknown.
std::optional<ColorSpace> ReadColorSpace(const WXmlNode &parent)
{
  const WXmlValueAccessor values(parent.FirstChild("ColorSpace"));
  std::wstring name;
  const auto model =
    values.ReadText("ColorModel", name) ? ColorModelFromName(ZelUtl::Utf8FromWide(name)) : std::nullopt;
  if (!model)
    return std::nullopt;
  std::wstring profileName;
  std::shared_ptr<ColorProfile> profile;
  if (values.ReadText("ColorProfile", profileName, name)) {
    profile = ColorProfileManager::GetInstance().GetColorProfile(profileName.c_str());
    if (profile == nullptr)
      return std::nullopt;
  }
  try {
    const ColorSpace space(*model, profile);
    return space.GetValidModel(*model) ? std::optional<ColorSpace>(space) : std::nullopt;
  } catch (const ColorSystemError &) { // a profile of another model
    return std::nullopt;
  }
}

} // namespace

bool WriteColor(const Color &color, const WXmlNode &parent, XmlId id)
{
  WXmlNode element = WXmlValueAccessor(parent).Recreate("Color", id);
  WXmlValueAccessor space(element.CreateChild("ColorSpace"));
  const std::string_view model = NameOfColorModel(color.GetColorModel());
  bool written = WriteName(space, "ColorModel", model);
  if (const auto profile = color.GetColorProfile())
    written = space.WriteText("ColorProfile", ResolvableName(profile), ZelUtl::WideFromUtf8(model)) && written;
  for (unsigned i = 0; i < color.GetChannelCount(); ++i)
    written =
      element.CreateChild("ColorChannel").SetText(ZelUtl::WideFromUtf8(ZelUtl::TextFromNumber(double{color[i]}))) &&
      written;
  return written;
}

std::shared_ptr<Color> ReadColor(const WXmlNode &parent, XmlId id)
{
  const WXmlNode element = WXmlValueAccessor(parent).Find("Color", id);
  const auto space = ReadColorSpace(element);
  if (!space)
    return nullptr;
  auto color = std::make_shared<Color>(*space);
  unsigned count = 0;
  for (auto channel = element.FirstChild("ColorChannel"); channel; channel = channel.Next("ColorChannel"), ++count) {
    const std::string text = ZelUtl::Utf8FromWide(channel.Text());
    const auto value = ZelUtl::DoubleFromText(ZelUtl::Trimmed(text));
    if (!value || count >= color->GetChannelCount())
      return nullptr;
    color->SetChannel(count, *value);
  }
  return count == color->GetChannelCount() ? color : nullptr;
}

bool WriteProofColorSettings(const ProofColorSettings &settings, const WXmlNode &parent, XmlId id)
{
  const WXmlNode element = WXmlValueAccessor(parent).Recreate("ProofColorSettings", id);
  WXmlValueAccessor values(element);
  bool written = values.WriteText("Name", settings.GetName());
  const auto warning = settings.GetGamutWarningLabelColor();
  if (warning->GetColorProfile() != nullptr) // what has none could not be read again, and is the standard one
    written = WriteColor(*warning, element, kWarningColor) && written;
  written = values.WriteDouble("WarningLabelTransparency", settings.GetGamutWarningLabelTransparency()) && written;
  written = values.WriteBool("DisplayGamutWarning", settings.GetDisplayGamutWarning()) && written;
  written = values.WriteBool("PreserveNumbers", settings.GetPreserveNumbers()) && written;
  return WriteColorContext(settings.GetColorContext(), element, kProofContext) && written;
}

bool ReadProofColorSettings(ProofColorSettings &settings, const WXmlNode &element)
{
  const WXmlValueAccessor values(element);
  ProofColorSettings read(settings);
  std::wstring name;
  if (values.ReadText("Name", name))
    read.SetName(name);
  if (values.Find("Color", kWarningColor)) {
    const auto color = ReadColor(element, kWarningColor);
    if (color == nullptr)
      return false;
    read.SetGamutWarningLabelColor(*color);
  }
  double transparency = read.GetGamutWarningLabelTransparency();
  bool display = read.GetDisplayGamutWarning();
  bool preserve = read.GetPreserveNumbers();
  ColorContext context;
  if ((values.Find("WarningLabelTransparency") && !values.ReadDouble("WarningLabelTransparency", transparency)) ||
      !ReadOptional(values, "DisplayGamutWarning", display) || !ReadOptional(values, "PreserveNumbers", preserve) ||
      !ReadColorContext(context, element, kProofContext))
    return false;
  read.SetGamutWarningLabelTransparency(transparency);
  read.SetDisplayGamutWarning(display);
  read.SetPreserveNumbers(preserve);
  read.SetColorContext(context);
  settings = read;
  return true;
}

} // namespace ColorSystem::Internal
