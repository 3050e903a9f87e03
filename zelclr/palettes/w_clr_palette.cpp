// Identity and state of a palette.
#include "zelclr/palettes/w_clr_palette.h"

#include "zelclr/palettes/fixed_palettes.h"
#include "zelclr/palettes/internal/color_space_names.h"
#include "zelclr/palettes/internal/palette_lookups.h"
#include "zelclr/palettes/internal/palette_properties.h"
#include "zelclr/palettes/palette_folders.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace Properties = ZelClr::PaletteProperties;

namespace {

/// Whether the file is in the folder or in one below; compared as the disk has them, so that case and links count as
/// they do there.
bool IsBelow(const std::string &file, const std::string &folder)
{
  std::string above = ZelUtl::FolderOfPath(ZelUtl::AbsolutePath(file));
  while (!above.empty()) {
    if (ZelUtl::IsSameFile(above, folder))
      return true;
    std::string next = ZelUtl::FolderOfPath(above);
    if (next == above)
      break;
    above = std::move(next);
  }
  return false;
}

} // namespace

WClrPalette::WClrPalette() = default;

WClrPalette::~WClrPalette()
{
  try {
    if (changed_ && !xml_.GetHeader().locked && !fileName_.empty())
      Write(xml_, fileName_);
  } catch (...) {
    // Nobody is left to hear of it; the old file is as it was.
  }
}

const wchar_t *WClrPalette::GetRegisteredDataSourceName()
{
  return L"ColorPalette";
}

std::wstring WClrPalette::GetCaption_Property() const
{
  return GetPaletteName();
}

std::wstring WClrPalette::GetCueText_Property() const
{
  return GetFileName();
}

std::wstring WClrPalette::GetFileName() const
{
  return fileName_;
}

void WClrPalette::SetFileName(const std::wstring &path)
{
  if (path == fileName_)
    return;
  fileName_ = path;
  isFileUnread_ = false;
  custom_ = CalculateIfCustomPalette();
  Broadcast(Properties::kFile);
}

std::wstring WClrPalette::GetPaletteName() const
{
  return ZelUtl::WideFromUtf8(xml_.GetDisplayName());
}

void WClrPalette::SetPaletteName(const std::wstring &name)
{
  if (name == GetPaletteName())
    return;
  WXmlColorPalette::Header header = xml_.GetHeader();
  header.name = ZelClr::NameFromWide(name);
  header.resid.clear(); // or the text in the user's language would go on hiding the new name
  xml_.SetHeader(std::move(header));
  Broadcast(Properties::kName);
}

WClrPalette::Guid WClrPalette::GetPaletteGuid() const
{
  return xml_.GetHeader().guid;
}

void WClrPalette::SetPaletteGuid(const Guid &guid)
{
  if (IsLocked() || guid == GetPaletteGuid())
    return;
  WXmlColorPalette::Header header = xml_.GetHeader();
  header.guid = guid;
  xml_.SetHeader(std::move(header));
  Edited(Properties::kGuid);
}

std::wstring WClrPalette::GetColorNamePrefix() const
{
  return ZelUtl::WideFromUtf8(xml_.GetHeader().prefix);
}

bool WClrPalette::IsChanged() const
{
  return changed_;
}

void WClrPalette::SetChanged(bool changed)
{
  if (changed == changed_)
    return;
  changed_ = changed;
  Broadcast(Properties::kChanged);
}

bool WClrPalette::IsLocked() const
{
  return xml_.GetHeader().locked;
}

void WClrPalette::SetLocked(bool locked)
{
  if (locked == IsLocked())
    return;
  WXmlColorPalette::Header header = xml_.GetHeader();
  header.locked = locked;
  xml_.SetHeader(std::move(header));
  Edited(Properties::kLock);
}

bool WClrPalette::CalculateIfCustomPalette() const
{
  if (ZelClr::FindFixedPalette(GetPaletteGuid()) != nullptr)
    return false;
  const std::string installed = ZelUtl::Utf8FromWide(ZelClr::GetInstalledPalettesDir());
  return fileName_.empty() || installed.empty() || !IsBelow(ZelUtl::Utf8FromWide(fileName_), installed);
}

void WClrPalette::SetPaletteSizeLimit(int limit)
{
  limit = std::max(limit, -1);
  const bool isCut = limit != -1 && GetPaletteSize() > limit;
  if (IsLocked() || (limit == GetPaletteSizeLimit() && !isCut))
    return;
  while (limit != -1 && GetPaletteSize() > limit)
    xml_.RemoveColor(xml_.GetColorCount() - 1);
  WXmlColorPalette::Header header = xml_.GetHeader();
  header.maxColors = limit;
  xml_.SetHeader(std::move(header));
  Edited(Properties::kSizeLimit);
}

bool WClrPalette::CanAddMoreColors() const
{
  const int limit = GetPaletteSizeLimit();
  return limit == -1 || limit > GetPaletteSize();
}
