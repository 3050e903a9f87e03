#include "zelclr/palettes/default_spot_palette.h"

#include "zelclr/colour/palette_types.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/inter_process_mutex.h"
#include "zelclr/platform/preferences.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/xml.h"

#include <mutex>

namespace ZelClr {

using ZelUtils::Guid;
using ZelUtl::WXmlDoc;

namespace {

constexpr const char *kFileName = "ColorPaletteManager.xml";
constexpr const char *kRoot = "ColorPaletteManager";
constexpr const char *kElement = "defaultSpotColorPalette";
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

struct StoredGuid
{
  static std::string ToText(const Guid &guid) { return guid.ToText(); }
  static std::optional<Guid> FromText(std::string_view text) { return Guid::FromText(text); }
};

using GuidPreference = ZelUtl::CPrefObject<Guid, StoredGuid>;

GuidPreference Preference()
{
  return {"palettes", "DefaultSpotPalette", Guid()};
}

ZelUtl::InterProcessMutex Mutex()
{
  return ZelUtl::InterProcessMutex("b9c090e9-7b11-4ed4-9a90-2c84eab3c196");
}

/// Whether the user has a file of his own by now; called with the mutex held.
bool MakeUserFile()
{
  const std::string path = GetUserPaletteManagerPath();
  if (path.empty())
    return false;
  if (ZelUtl::StampOfFile(path))
    return true;
  const std::string installed = ZelUtl::JoinPath(ZelUtl::INIGetConfigDir(), kFileName);
  std::string untold;
  const auto bytes = ZelUtl::StampOfFile(installed) ? ZelUtl::ReadFile(installed, kMostBytes, untold) : std::nullopt;
  return bytes && ZelUtl::MakeFolders(ZelUtl::FolderOfPath(path), untold) &&
         ZelUtl::ReplaceFile(path, *bytes, untold) && ZelUtl::SetFileWritable(path, true);
}

/// Empty when the file is no such document.
std::optional<WXmlDoc> Parsed(const std::optional<std::string> &bytes)
{
  std::string untold;
  auto document = bytes ? WXmlDoc::FromBytes(*bytes, untold) : std::nullopt;
  return document && document->Root().Name() == kRoot ? document : std::nullopt;
}

/// What the file says; empty when it says nothing.
std::optional<Guid> GuidOfFile()
{
  ZelUtl::InterProcessMutex mutex = Mutex();
  const std::lock_guard guard(mutex);
  std::string untold;
  const auto document =
    MakeUserFile() ? Parsed(ZelUtl::ReadFile(GetUserPaletteManagerPath(), kMostBytes, untold)) : std::nullopt;
  const auto text = document ? document->Root().FirstChild(kElement).Attribute("guid") : std::nullopt;
  const auto guid = text ? Guid::FromText(std::wstring_view(*text)) : std::nullopt;
  return guid && !guid->IsNull() ? guid : std::nullopt;
}

bool WriteFile(const Guid &guid)
{
  ZelUtl::InterProcessMutex mutex = Mutex();
  const std::lock_guard guard(mutex);
  const std::string path = GetUserPaletteManagerPath();
  std::string untold;
  if (!MakeUserFile())
    return false;
  const auto bytes = ZelUtl::ReadFile(path, kMostBytes, untold);
  if (!bytes)
    return false;
  auto document = Parsed(bytes);
  if (!document && ZelUtl::KeepDamagedBytes(path, *bytes, untold).empty())
    return false;
  if (!document)
    document = WXmlDoc::FromBytes("<?xml version=\"1.0\"?><ColorPaletteManager/>", untold);
  return document &&
         ZelUtl::WXmlValueAccessor(document->Root()).FindOrCreate(kElement).SetAttribute("guid", guid.ToWideText()) &&
         document->Save(path, untold);
}

} // namespace

Guid BuiltInDefaultSpotPalette()
{
  return kPantonePaletteIdentifier;
}

std::string GetUserPaletteManagerPath()
{
  const std::string folder = ZelUtl::GetUserFolder();
  return folder.empty() ? folder : ZelUtl::JoinPath(ZelUtl::JoinPath(folder, "config"), kFileName);
}

Guid ReadDefaultSpotPalette()
{
  if (const auto guid = GuidOfFile()) {
    if (Preference().Get() != *guid)
      Preference().Set(*guid);
    return *guid;
  }
  const Guid preferred = Preference().Get();
  return preferred.IsNull() ? BuiltInDefaultSpotPalette() : preferred;
}

bool WriteDefaultSpotPalette(const Guid &guid)
{
  if (guid.IsNull() || !WriteFile(guid))
    return false;
  Preference().Set(guid);
  return true;
}

} // namespace ZelClr
