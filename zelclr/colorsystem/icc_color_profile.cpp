#include "zelclr/colorsystem/icc_color_profile.h"

#include "zelclr/colorsystem/internal/postscript_array.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/little_cms.h"
#include "zelclr/platform/system_colour_management.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ColorSystem {

namespace {

using ZelUtl::IccSignature;

/// A profile of this size is none that anyone uses.
constexpr std::size_t kMostProfileBytes = std::size_t{64} << 20;

constexpr std::pair<std::uint32_t, DeviceClass> kDeviceClasses[] = {
  {IccSignature("scnr"), DeviceClass::Input},
  {IccSignature("mntr"), DeviceClass::Display},
  {IccSignature("prtr"), DeviceClass::Output},
  {IccSignature("spac"), DeviceClass::ColorSpace},
};

} // namespace

ColorProfile::ProfileHandle IccColorProfile::OpenNoLock()
{
  std::string reason;
  if (!file_)
    file_ = ZelUtl::IccFile::Open(Utf8Path(), reason);
  return file_ ? &*file_ : nullptr;
}

ColorProfile::ProfileHandle IccColorProfile::Open()
{
  const ZelUtl::WriteLock guard(lock_);
  return OpenNoLock();
}

void IccColorProfile::Close()
{
  const ZelUtl::WriteLock guard(lock_);
  file_.reset();
}

// The header and the tags are read from the file's bytes on every system, with bounds for all that they claim, and not
// through GetColorProfileHeader and GetColorProfileElement where those exist: they would read the same numbers, since
// the format is one, but need a handle, refuse paths beyond 260 characters, and let whoever wrote the file talk to the
// system's parser first. Handles of the system are opened for what only it can do: transforms and PostScript arrays.
bool IccColorProfile::LoadNoLock(Content &content)
{
  file_.reset(); // what is open may have been replaced since
  const ProfileHandle file = OpenNoLock();
  if (file == nullptr)
    return false;
  const ZelUtl::IccHeader &header = file->Header();
  const auto model = ColorModelFromIccSignature(header.colourSpace);
  const auto *const deviceClass = std::find_if(std::begin(kDeviceClasses), std::end(kDeviceClasses),
                                               [&](const auto &row) { return row.first == header.deviceClass; });
  const bool known = model && deviceClass != std::end(kDeviceClasses);
  if (known) {
    const auto tag = [file](const char(&signature)[5]) {
      return file->ReadTag(IccSignature(signature), ZelUtl::kMostIccTextBytes);
    };
    content.model = *model;
    content.deviceClass = deviceClass->second;
    content.majorVersion = header.version >> 24;
    content.minorVersion = (header.version >> 20) & 15;
    content.displayName = ZelUtl::DescriptionFromIccTag(tag("desc"));
    content.manufacturer = ZelUtl::DeviceTextFromIccTag(tag("dmnd"));
    content.deviceModel = ZelUtl::DeviceTextFromIccTag(tag("dmdd"));
    content.stamp = file->Stamp();
  }
  file_.reset();
  return known;
}

bool IccColorProfile::SetDisplayName(const std::wstring &name)
{
  if (!IsValid())
    return false;
  std::string reason;
  const ZelUtl::WriteLock guard(lock_);
  const auto bytes = ZelUtl::ReadFile(Utf8Path(), kMostProfileBytes, reason);
  if (!bytes)
    return false;
  const auto renamed =
    ZelUtl::WithIccDescription({reinterpret_cast<const std::uint8_t *>(bytes->data()), bytes->size()}, name);
  if (renamed.empty() ||
      !ZelUtl::ReplaceFile(Utf8Path(), {reinterpret_cast<const char *>(renamed.data()), renamed.size()}, reason))
    return false;
  UnloadNoLock();
  return true;
}

std::wstring IccColorProfile::CreatePsColorSourceArray(RenderingIntent intent)
{
  if (!IsValid())
    return {};
  // The system's own array first, then that of Little CMS; what neither has is written out here.
  std::string reason;
  const auto file = ZelUtl::IccFile::Open(Utf8Path(), reason);
  const std::string array = file ? ZelUtl::SystemColourManagement::PostScriptColorSpaceArray(
                                     Utf8Path(), file->Header().colourSpace, static_cast<std::uint32_t>(intent))
                                 : std::string();
  if (!array.empty())
    return ZelUtl::WideFromUtf8(array);
  if (const auto lcms = ZelUtl::LittleCms::Load()) {
    if (const auto profile = lcms->OpenProfile(Utf8Path()))
      return ZelUtl::WideFromUtf8(lcms->PostScriptColorSpaceArray(profile, static_cast<std::uint32_t>(intent)));
  }
  return file ? ZelUtl::WideFromUtf8(Internal::PostScriptArrayOf(*file)) : std::wstring();
}

} // namespace ColorSystem
