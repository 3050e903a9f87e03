// Finding colours in a palette, and their places in its grid.
#include "zelclr/palettes/internal/palette_lookups.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <iterator>

namespace Model = ZelClr::ClrModel;

/// The value as palettes have it: as it was given or, where none is like that, as it would be stored.
template <class Find>
int WClrPalette::FindStored(const CLR_COLORSPEC &color, Find find) const
{
  const int index = find(color);
  if (index >= 0 || color.GetType() == Model::DeviceN)
    return index;
  CLR_COLORSPEC stored = ConvertColorToInternal(color);
  if (stored.GetType() != Model::Spot)
    stored = ZelClr::ColorFromPaletteValues(stored.GetType(), ZelClr::PaletteValuesFromColor(stored));
  return stored.IsInvalid() ? -1 : find(stored);
}

int WClrPalette::GetColorIndex(const CLR_COLORSPEC &color, const std::wstring &name) const
{
  const std::string plain = ZelUtl::Utf8FromWide(name);
  return FindStored(color, [&](const CLR_COLORSPEC &wanted) { return xml_.FindColor(wanted, plain); });
}

int WClrPalette::GetColorIndex(const CLR_COLORSPEC &color) const
{
  if (color.GetType() == Model::Index && color.GetPaletteGuid() == GetPaletteGuid()) {
    const int index = color.GetComponent<std::uint16_t>(0);
    return IsIndex(index) ? index : -1;
  }
  return FindStored(color, [this](const CLR_COLORSPEC &wanted) { return xml_.FindColor(wanted); });
}

int WClrPalette::GetColorIndex(const std::wstring &name) const
{
  const std::string wanted = ZelUtl::Utf8FromWide(name);
  const std::string &prefix = xml_.GetHeader().prefix;
  const bool hasPrefix = !prefix.empty() && wanted.size() > prefix.size() && wanted.starts_with(prefix);
  // As the file has it, or as GetColorName does: with the prefix, in the user's language.
  const std::string plain = wanted.substr(hasPrefix ? prefix.size() : 0);
  for (const std::string &text : {wanted, plain}) {
    if (const int index = xml_.FindName(text); index >= 0)
      return index;
  }
  if (xml_.GetResources().empty() || name.empty())
    return -1;
  for (std::size_t i = 0; i < xml_.GetColorCount(); ++i) {
    if (xml_.GetColorDisplayName(i) == plain)
      return static_cast<int>(i);
  }
  return -1;
}

int WClrPalette::GetColorIndex(const Guid &palette, int colorID) const
{
  return ColorIDToIndex(palette, colorID);
}

int WClrPalette::FindClosestColor(const CLR_COLORSPEC &color, const ColorSystem::ColorContext &context) const
{
  if (lookups_ == nullptr)
    lookups_ = std::make_unique<Lookups>();
  if (!lookups_->closest || !lookups_->closest->IsFor(context))
    lookups_->closest.emplace(ProcessColors(), context);
  return lookups_->closest->Find(LookedUp(color));
}

bool WClrPalette::IsValidColorID(const Guid &palette, int colorID) const
{
  return colorID >= 0 && palette == GetPaletteGuid() && xml_.FindColorSpaceOfID(colorID) >= 0;
}

int WClrPalette::ColorIDToIndex(const Guid &palette, int colorID) const
{
  const auto indices = ColorIDToIndices(palette, colorID);
  return indices.empty() ? -1 : indices.front();
}

std::vector<int> WClrPalette::ColorIDToIndices(const Guid &palette, int colorID) const
{
  return colorID < 0 ? std::vector<int>() : xml_.FindColorID(palette, colorID);
}

int WClrPalette::GetColorSpaceColorID(const std::wstring &name) const
{
  const int space = xml_.FindColorSpace(ZelUtl::Utf8FromWide(name));
  return space < 0 ? -1 : xml_.GetColorSpace(static_cast<std::size_t>(space)).fixedID;
}

bool WClrPalette::GetColorSpaceInfo(int colorID, ColorSpaceInfo &info) const
{
  if (!IsValidColorID(GetPaletteGuid(), colorID))
    return false;
  const WXmlColorSpace &space = xml_.GetColorSpace(static_cast<std::size_t>(xml_.FindColorSpaceOfID(colorID)));
  info = ColorSpaceInfo{ZelUtl::WideFromUtf8(space.name), space.fixedID, space.version, space.process, {}};
  for (const WXmlDefinitionColor &definition : space.definitions) {
    if (!definition.color.IsInvalid())
      info.definitions.push_back(definition.color);
  }
  return true;
}

bool WClrPalette::GetColorSpaceInfo(int colorID, std::wstring &name) const
{
  ColorSpaceInfo info;
  if (!GetColorSpaceInfo(colorID, info))
    return false;
  name = std::move(info.name);
  return true;
}

// --- Grid -----------------------------------------------------------------------------------------------------------

int WClrPalette::GetGridWidth() const
{
  return xml_.GetGridWidth();
}

int WClrPalette::GetNumPages() const
{
  return xml_.GetPageCount();
}

/// Every page begins a row.
const WClrPalette::Lookups &WClrPalette::Pages() const
{
  if (lookups_ == nullptr)
    lookups_ = std::make_unique<Lookups>();
  auto &pages = lookups_->pages;
  if (!pages.empty())
    return *lookups_;
  const int width = GetGridWidth();
  int firstIndex = 0;
  int firstCell = 0;
  for (int index = 0; index < GetPaletteSize(); ++index) {
    if (index > firstIndex && xml_.GetIndexOnPage(static_cast<std::size_t>(index)) == 0) {
      pages.push_back({firstIndex, firstCell});
      firstCell += (index - firstIndex + width - 1) / width * width;
      firstIndex = index;
    }
  }
  pages.push_back({firstIndex, firstCell});
  return *lookups_;
}

bool WClrPalette::HasGaps() const
{
  const auto &last = Pages().pages.back();
  return last.firstCell != last.firstIndex;
}

int WClrPalette::GetColorIndexFromCellIndex(int cell) const
{
  const auto &pages = Pages().pages;
  if (cell < 0)
    return -1;
  const auto next = std::upper_bound(pages.begin(), pages.end(), cell,
                                     [](int wanted, const auto &page) { return wanted < page.firstCell; });
  const auto page = std::prev(next);
  const int offset = cell - page->firstCell;
  const int end = next == pages.end() ? GetPaletteSize() : next->firstIndex;
  return offset < end - page->firstIndex ? page->firstIndex + offset : -1;
}

int WClrPalette::GetCellIndexFromColorIndex(int index) const
{
  if (!IsIndex(index))
    return -1;
  const auto &pages = Pages().pages;
  const auto page = std::prev(std::upper_bound(
    pages.begin(), pages.end(), index, [](int wanted, const auto &other) { return wanted < other.firstIndex; }));
  return page->firstCell + index - page->firstIndex;
}
