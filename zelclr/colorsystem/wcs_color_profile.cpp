#include "zelclr/colorsystem/wcs_color_profile.h"

#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/system_colour_management.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/xml.h"

#include <optional>

namespace ColorSystem {

namespace {

bool IsDeviceModelPath(const std::string &path)
{
  return ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path)) == ".cdmp";
}

constexpr const char *kNamespaces[][2] = {
  {"cdm", "http://schemas.microsoft.com/windows/2005/02/color/ColorDeviceModel"},
  {"wcs", "http://schemas.microsoft.com/windows/2005/02/color/WcsCommonProfileTypes"}};

/// The name that a device model gives itself, without blanks around it; empty when it gives none. No value for a file
/// that is no XML.
std::optional<std::wstring> NameOfDeviceModel(const std::string &path)
{
  std::string reason;
  auto document = ZelUtl::WXmlDoc::FromFile(path, reason);
  if (!document)
    return std::nullopt;
  for (const auto &[prefix, uri] : kNamespaces)
    document->DeclareNamespace(prefix, uri);
  const std::string text = ZelUtl::Utf8FromWide(document->Root().SelectNode("//cdm:ProfileName/wcs:Text").Text());
  return ZelUtl::WideFromUtf8(ZelUtl::Trimmed(text));
}

} // namespace

WcsColorProfile::WcsColorProfile(const std::wstring &path, bool transient)
  : IccColorProfile(path, transient),
    deviceModel_(IsDeviceModelPath(Utf8Path()))
{}

std::vector<std::uint8_t> WcsColorProfile::IccBytesOf(const std::wstring &path, std::wstring &name)
{
  const std::string utf8 = ZelUtl::Utf8FromWide(path);
  const auto own = IsDeviceModelPath(utf8) ? NameOfDeviceModel(utf8) : std::nullopt;
  if (!own)
    return {};
  const std::string file = ZelUtl::FileNameOfPath(utf8);
  name =
    !own->empty() ? *own : ZelUtl::WideFromUtf8(file.substr(0, file.size() - ZelUtl::ExtensionOfPath(file).size()));
  return ZelUtl::SystemColourManagement::IccProfileOfDeviceModel(utf8);
}

std::shared_ptr<IccColorProfile> WcsColorProfile::Companion() const
{
  const ZelUtl::ReadLock guard(lock_);
  return companion_;
}

ColorProfile::ProfileHandle WcsColorProfile::Open()
{
  if (!deviceModel_)
    return IccColorProfile::Open();
  const auto companion = Companion();
  return companion ? companion->Open() : nullptr;
}

bool WcsColorProfile::SetDisplayName(const std::wstring &name)
{
  return deviceModel_ ? BaseColorProfile::SetDisplayName(name) : IccColorProfile::SetDisplayName(name);
}

std::wstring WcsColorProfile::CreatePsColorSourceArray(RenderingIntent intent)
{
  if (!deviceModel_)
    return IccColorProfile::CreatePsColorSourceArray(intent);
  const auto companion = IsValid() ? Companion() : nullptr;
  return companion ? companion->CreatePsColorSourceArray(intent) : std::wstring();
}

std::string WcsColorProfile::MakeCompanionNoLock() const
{
  const std::string colours = ZelUtl::GetUserProfileColorDir();
  const std::string folder = IsTransientNoLock() ? ZelUtl::GetFolders().temporary
                             : colours.empty()   ? std::string()
                                                 : ZelUtl::JoinPath(colours, "profiles");
  const std::string name = ZelUtl::FileNameOfPath(Utf8Path());
  const std::string path =
    ZelUtl::JoinPath(folder, name.substr(0, name.size() - std::string_view("cdmp").size()) + "icc");
  if (folder.empty() || ZelUtl::StampOfFile(path))
    return folder.empty() ? std::string() : path;
  std::string reason;
  const auto bytes = ZelUtl::SystemColourManagement::IccProfileOfDeviceModel(Utf8Path());
  const bool written = !bytes.empty() && ZelUtl::MakeFolders(folder, reason) &&
                       ZelUtl::ReplaceFile(path, {reinterpret_cast<const char *>(bytes.data()), bytes.size()}, reason);
  return written ? path : std::string();
}

bool WcsColorProfile::LoadNoLock(Content &content)
{
  if (!deviceModel_)
    return IccColorProfile::LoadNoLock(content);
  companion_ = nullptr;
  const auto stamp = ZelUtl::StampOfFile(Utf8Path());
  const auto name = ZelUtl::SystemColourManagement::HasWcs() && stamp ? NameOfDeviceModel(Utf8Path()) : std::nullopt;
  const std::string path = name ? MakeCompanionNoLock() : std::string();
  if (path.empty())
    return false;
  auto companion = std::make_shared<IccColorProfile>(ZelUtl::WideFromUtf8(path), false);
  if (!companion->Init())
    return false;
  content.displayName = *name;
  content.model = companion->GetColorModel();
  content.manufacturer = companion->GetDeviceManufacturerDescription();
  content.deviceModel = companion->GetDeviceModelDescription();
  content.deviceClass = companion->GetDeviceClass();
  content.majorVersion = companion->GetMajorVersionNumber();
  content.minorVersion = companion->GetMinorVersionNumber();
  content.stamp = *stamp;
  companion_ = std::move(companion);
  return true;
}

} // namespace ColorSystem
