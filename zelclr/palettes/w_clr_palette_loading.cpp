// Palettes from files and texts, and back.
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/internal/color_space_names.h"
#include "zelclr/palettes/internal/palette_lookups.h"
#include "zelclr/palettes/internal/palette_properties.h"
#include "zelclr/palettes/legacy_palette_file.h"
#include "zelclr/palettes/w_clr_palette.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/xml_reader.h"
#include "zelclr/platform/zip_archive.h"

#include <algorithm>
#include <optional>

namespace Properties = ZelClr::PaletteProperties;

namespace {

using ZelClr::kMostPaletteBytes;

constexpr std::size_t kMostDamagedBytes = std::size_t{1} << 30;

/// UTF-8 paths of the files that a path may mean; empty where there is none.
struct PaletteFiles
{
  std::string xml;
  std::string archive;
  std::string legacy;
};

PaletteFiles FilesOfPath(const std::wstring &wide)
{
  if (wide.find(L'\0') != std::wstring::npos)
    return {};
  const std::string path = ZelUtl::Utf8FromWide(wide);
  const std::string extension = ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path));
  const std::string stem = path.substr(0, path.size() - extension.size());
  if (extension == ".xml")
    return {path, path + ".zip", {}};
  if (extension == ".zip")
    return {stem, path, {}};
  if (extension == ".cpl")
    return {stem + ".xml", {}, path};
  return {};
}

bool HasExtension(const std::string &path, std::string_view extension)
{
  return ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path)) == extension;
}

bool Exists(const std::string &path)
{
  return !path.empty() && ZelUtl::StampOfFile(path).has_value();
}

bool ReadArchive(const PaletteFiles &files, WXmlColorPalette &palette)
{
  std::string reason;
  const auto archive = ZelUtl::ReadFile(files.archive, kMostPaletteBytes, reason);
  if (!archive)
    return false;
  const std::string name = ZelUtl::FileNameOfPath(files.xml);
  const auto xml = ZelUtl::ReadZipEntry(*archive, name, kMostPaletteBytes, reason);
  return xml && palette.LoadFromBytes(*xml, reason);
}

std::optional<WXmlColorPalette> ReadLegacy(const std::string &path)
{
  std::string reason;
  const auto bytes = ZelUtl::ReadFile(path, kMostPaletteBytes, reason);
  const std::string name = ZelUtl::FileNameOfPath(path);
  const auto file =
    bytes ? ZelClr::ReadLegacyPalette(*bytes, ZelClr::LegacyPaletteTypeOfFileName(name), reason) : std::nullopt;
  return file ? std::optional(ZelClr::XmlPaletteFromLegacy(*file, name.substr(0, name.size() - 4))) : std::nullopt;
}

/// Hears of the root and of nothing behind it.
class RootReader : public ZelUtl::XmlHandler
{
public:
  bool StartElement(std::string_view name, std::span<const ZelUtl::XmlAttribute> attributes, std::string &) override
  {
    isRead = true;
    isLocked = name == "palette" && std::any_of(attributes.begin(), attributes.end(), [](const auto &attribute) {
                 return attribute.name == "locked" && attribute.value == "true";
               });
    return false;
  }
  bool Text(std::string_view, std::string &) override { return true; }
  bool EndElement(std::string_view, std::string &) override { return true; }

  bool isRead = false;
  bool isLocked = false;
};

} // namespace

int WClrPalette::LoadPalette(const std::wstring &path, bool validate)
{
  const PaletteFiles files = FilesOfPath(path);
  const std::wstring xml = ZelUtl::WideFromUtf8(files.xml);
  if (Exists(files.xml))
    return LoadXml(xml, validate);
  if (Exists(files.archive))
    return LoadFromZip(files.archive, xml, validate);
  const auto legacy = Exists(files.legacy) ? ReadLegacy(files.legacy) : std::nullopt;
  std::string reason;
  return legacy && legacy->SaveToFile(files.xml, false, reason) && LoadXml(xml, validate);
}

bool WClrPalette::LoadXml(const std::wstring &path, bool validate)
{
  SetFileName(path);
  std::string reason;
  return Loaded(xml_.LoadFromFile(ZelUtl::Utf8FromWide(path), validate, reason), validate) != 0;
}

bool WClrPalette::LoadFromZip(const std::string &archive, const std::wstring &xmlPath, bool validate)
{
  SetFileName(xmlPath);
  xml_.Clear(); // where there is no such entry
  return Loaded(ReadArchive({ZelUtl::Utf8FromWide(xmlPath), archive, {}}, xml_), validate) != 0;
}

int WClrPalette::Loaded(bool ok, bool validate)
{
  isFileUnread_ = !ok;
  lookups_.reset();
  lastColorID_ = HighestColorID();
  custom_ = CalculateIfCustomPalette();
  if (ok && validate)
    ValidatePaletteColors();
  SetChanged(false);
  Broadcast(Properties::kEverything);
  return ok ? 1 : 0;
}

void WClrPalette::ValidatePaletteColors()
{
  // A colour that states none, because no model or colour space is called what it says, cannot be shown and not be
  // used. The file keeps it until the palette is saved.
  for (std::size_t i = xml_.GetColorCount(); i-- > 0;) {
    if (xml_.GetColorSpec(i).IsInvalid())
      xml_.RemoveColor(i);
  }
}

bool WClrPalette::IsPaletteLocked(const std::wstring &path)
{
  constexpr std::size_t kUsualHeader = 4096;
  const std::string name = ZelUtl::Utf8FromWide(path);
  if (!HasExtension(name, ".xml") || path.find(L'\0') != std::wstring::npos)
    return false;
  std::string reason;
  const auto file = ZelUtl::RegularFile::Open(name, reason);
  const std::size_t size = file ? std::min<std::uint64_t>(file->Stamp().size, kMostPaletteBytes) : 0;
  for (const std::size_t length : {std::min(size, kUsualHeader), size}) {
    std::string bytes(length, '\0');
    if (!file || !file->ReadAt(0, {reinterpret_cast<std::uint8_t *>(bytes.data()), bytes.size()}))
      return false;
    RootReader root;
    ZelUtl::ReadXml(bytes, root, reason, kMostPaletteBytes);
    if (root.isRead)
      return root.isLocked;
  }
  return false;
}

// --- Restoring ------------------------------------------------------------------------------------------------------

bool WClrPalette::Restore(WXmlColorPalette other)
{
  const int limit = GetPaletteSizeLimit();
  if (IsLocked() || (limit != -1 && other.GetColorCount() > static_cast<std::size_t>(limit)))
    return false;
  WXmlColorPalette::Header header = other.GetHeader();
  header.locked = false;
  header.maxColors = limit;
  other.SetHeader(std::move(header));
  xml_ = std::move(other);
  lastColorID_ = HighestColorID();
  Edited(Properties::kEverything);
  return true;
}

bool WClrPalette::RestoreFromFile(const std::wstring &path, bool validate)
{
  if (path.find(L'\0') != std::wstring::npos)
    return false;
  const PaletteFiles files = FilesOfPath(path);
  WXmlColorPalette other;
  std::string reason;
  if (files.xml.empty() || Exists(files.xml)) {
    const std::string xml = files.xml.empty() ? ZelUtl::Utf8FromWide(path) : files.xml;
    return other.LoadFromFile(xml, validate, reason) && Restore(std::move(other));
  }
  if (Exists(files.archive))
    return ReadArchive(files, other) && Restore(std::move(other));
  auto legacy = Exists(files.legacy) ? ReadLegacy(files.legacy) : std::nullopt;
  return legacy && Restore(std::move(*legacy));
}

bool WClrPalette::RestoreFromPalette(const WClrPalette &other)
{
  return &other != this && Restore(other.xml_);
}

bool WClrPalette::RestoreFromString(const std::wstring &xml)
{
  WXmlColorPalette other;
  std::string reason;
  return other.LoadFromString(xml, reason) && Restore(std::move(other));
}

// --- Saving ---------------------------------------------------------------------------------------------------------

bool WClrPalette::Write(const WXmlColorPalette &palette, const std::wstring &path) const
{
  const std::string file = ZelUtl::Utf8FromWide(path);
  std::string reason;
  if (!HasExtension(file, ".xml") || path.find(L'\0') != std::wstring::npos)
    return false;
  if (isFileUnread_ && path == fileName_ && Exists(file)) {
    const auto bytes = ZelUtl::ReadFile(file, kMostDamagedBytes, reason);
    if (!bytes || ZelUtl::KeepDamagedBytes(file, *bytes, reason).empty())
      return false;
  }
  return palette.SaveToFile(file, SavesColorStyleReferences(), reason);
}

void WClrPalette::Saved(const std::wstring &path)
{
  SetFileName(path);
  isFileUnread_ = false;
  SetChanged(false);
}

bool WClrPalette::Save(const std::wstring &path)
{
  const std::wstring target = path.empty() ? fileName_ : path;
  if ((IsLocked() && !changed_) || !Write(xml_, target))
    return false;
  Saved(target);
  return true;
}

std::wstring WClrPalette::SaveAsString() const
{
  return xml_.Text(SavesColorStyleReferences());
}

bool WClrPalette::SaveAs(const std::wstring &path, const std::wstring &name)
{
  WXmlColorPalette renamed = xml_;
  WXmlColorPalette::Header header = xml_.GetHeader();
  header.guid = ZelUtils::NewGuid();
  header.fixedID = -1;
  header.name = ZelClr::NameFromWide(name);
  header.resid.clear();
  header.locked = false;
  renamed.SetHeader(std::move(header));
  if (!Write(renamed, path))
    return false;
  xml_ = std::move(renamed);
  lookups_.reset();
  Saved(path);
  Broadcast(Properties::kEverything);
  return true;
}

bool WClrPalette::BackupToFile(const std::wstring &path) const
{
  std::string reason;
  return !path.empty() && xml_.SaveToFile(ZelUtl::Utf8FromWide(path), SavesColorStyleReferences(), reason);
}

bool WClrPalette::BackupToPalette(WClrPalette &other) const
{
  return other.RestoreFromPalette(*this);
}
