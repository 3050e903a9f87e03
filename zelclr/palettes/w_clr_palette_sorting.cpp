// The order of the colours of a palette.
#include "zelclr/palettes/color_sorting.h"
#include "zelclr/palettes/internal/palette_lookups.h"
#include "zelclr/palettes/internal/palette_properties.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <numeric>

namespace Properties = ZelClr::PaletteProperties;

/// False, with nothing changed, when the palette is locked; an order as it is is no edit.
bool WClrPalette::Reorder(const std::vector<std::size_t> &order)
{
  if (IsLocked())
    return false;
  if (std::is_sorted(order.begin(), order.end()))
    return true;
  xml_.Reorder(order);
  Edited(Properties::kArrangement);
  return true;
}

std::vector<CLR_COLORSPEC> WClrPalette::ProcessColors() const
{
  std::vector<CLR_COLORSPEC> colors;
  colors.reserve(xml_.GetColorCount());
  for (std::size_t i = 0; i < xml_.GetColorCount(); ++i)
    colors.push_back(ProcessColor(i));
  return colors;
}

bool WClrPalette::SortColors(int sortType, const ColorSystem::ColorContext &context)
{
  if (IsLocked() || sortType < ZelClr::SortHue || sortType > ZelClr::SortRGB)
    return false;
  return Reorder(ZelClr::OrderOfColors(ProcessColors(), sortType, context));
}

bool WClrPalette::SortReverse()
{
  std::vector<std::size_t> order(xml_.GetColorCount());
  std::iota(order.rbegin(), order.rend(), std::size_t{0});
  return Reorder(order);
}

bool WClrPalette::SortByName()
{
  std::vector<std::wstring> names;
  names.reserve(xml_.GetColorCount());
  for (std::size_t i = 0; i < xml_.GetColorCount(); ++i)
    names.push_back(ZelUtl::WideFromUtf8(xml_.GetColorDisplayName(i)));
  return Reorder(ZelClr::OrderOfNames(names, ProcessColors()));
}

bool WClrPalette::SortByFrequencyOrder()
{
  std::vector<std::size_t> order(xml_.GetColorCount());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
    return ZelClr::CompareColorFrequencyOrder(xml_.GetColor(a).frequencyOrder, xml_.GetColor(b).frequencyOrder);
  });
  return Reorder(order);
}
