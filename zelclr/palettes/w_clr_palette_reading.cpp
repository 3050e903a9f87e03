// What a palette tells of its colours, pages and colour spaces.
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/generated_color_name.h"
#include "zelclr/palettes/internal/palette_lookups.h"
#include "zelclr/palettes/spot_color_definition_manager.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Model = ZelClr::ClrModel;

namespace {

int PercentOfTint(double tint)
{
  return static_cast<int>(std::lround(std::clamp(tint, 0.0, 1.0) * 100.0));
}

const WXmlDefinitionColor *FirstLook(const WXmlColorSpace &space)
{
  const auto look = std::find_if(space.definitions.begin(), space.definitions.end(),
                                 [](const auto &definition) { return !definition.color.IsInvalid(); });
  return look == space.definitions.end() ? nullptr : &*look;
}

bool IsGiven(const CLR_COLORSPEC &found, CLR_COLORSPEC &color)
{
  if (found.IsInvalid())
    return false;
  color = found;
  return true;
}

} // namespace

int WClrPalette::GetPaletteSize() const
{
  return static_cast<int>(xml_.GetColorCount());
}

CLR_COLORSPEC WClrPalette::GetColorSpec(int index) const
{
  return IsIndex(index) ? xml_.GetColorSpec(static_cast<std::size_t>(index)) : CLR_COLORSPEC();
}

/// The colour space that a colour refers to; null when it states its values itself.
const WXmlColorSpace *WClrPalette::SpaceOf(std::size_t index) const
{
  const std::string &name = xml_.GetColor(index).colorSpace;
  const bool isModel = ZelClr::ModelFromSpaceName(name) != Model::Invalid;
  const int space = isModel ? -1 : xml_.FindColorSpace(name);
  return space < 0 ? nullptr : &xml_.GetColorSpace(static_cast<std::size_t>(space));
}

CLR_COLORSPEC WClrPalette::ProcessColor(std::size_t index) const
{
  CLR_COLORSPEC color;
  const WXmlColorSpace *const space = xml_.GetColor(index).styleColor.IsInvalid() ? SpaceOf(index) : nullptr;
  if (space == nullptr) {
    color.Copy(xml_.GetColorSpec(index));
  } else if (const WXmlDefinitionColor *const look = FirstLook(*space)) {
    color.Copy(look->color);
    WClrConvert::ApplyDensity(&color, static_cast<unsigned>(PercentOfTint(xml_.GetTint(index))));
  }
  return color;
}

CLR_COLORSPEC WClrPalette::GetProcessColorSpec(int index) const
{
  return IsIndex(index) ? ProcessColor(static_cast<std::size_t>(index)) : CLR_COLORSPEC();
}

bool WClrPalette::GetPaletteColor(int index, CLR_COLORSPEC &color) const
{
  return IsGiven(GetColorSpec(index), color);
}

bool WClrPalette::GetPaletteColorAsProcess(int index, CLR_COLORSPEC &color) const
{
  return IsGiven(GetProcessColorSpec(index), color);
}

bool WClrPalette::GetIndexedPaletteColor(int index, CLR_COLORSPEC &color) const
{
  if (!IsIndex(index) || index > std::numeric_limits<std::uint16_t>::max())
    return false;
  CLR_COLORSPEC::MakeINDEX(color, static_cast<std::uint16_t>(index));
  color.SetPaletteGuid(GetPaletteGuid());
  return true;
}

/// A tint of 0 to 100 of an ink, or of the first look of a process colour.
CLR_COLORSPEC WClrPalette::ColorOfSpace(const WXmlColorSpace &space, int density) const
{
  density = std::clamp(density, 0, 100);
  const WXmlDefinitionColor *const look = FirstLook(space);
  if (look == nullptr)
    return {};
  if (space.process) {
    CLR_COLORSPEC color = look->color;
    WClrConvert::ApplyDensity(&color, static_cast<unsigned>(density));
    return color;
  }
  const std::wstring name = ZelUtl::WideFromUtf8(space.name);
  ZelClr::SpotColorDefinitionLookupData ink{name, name, {}};
  for (const WXmlDefinitionColor &definition : space.definitions) {
    if (!definition.color.IsInvalid())
      ink.alternatives.emplace(definition.color.GetType(), definition.color);
  }
  const auto definition = SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(ink);
  return CLR_COLORSPEC::MakeSPOT(GetPaletteGuid(), static_cast<std::int16_t>(space.fixedID),
                                 static_cast<std::uint16_t>(density), definition.get());
}

bool WClrPalette::GetPaletteColorFromID(const Guid &palette, int colorID, int density, CLR_COLORSPEC &color) const
{
  if (!IsValidColorID(palette, colorID))
    return false;
  // A colour of the ink, where there is one, has the ink's definition already.
  if (const auto indices = xml_.FindColorID(palette, colorID); !indices.empty()) {
    CLR_COLORSPEC tint;
    tint.Copy(xml_.GetColorSpec(static_cast<std::size_t>(indices.front())));
    if (tint.GetType() == Model::Spot) {
      tint.SetDensity(static_cast<std::uint16_t>(std::clamp(density, 0, 100)));
      color = tint;
      return true;
    }
  }
  const int space = xml_.FindColorSpaceOfID(colorID);
  return IsGiven(ColorOfSpace(xml_.GetColorSpace(static_cast<std::size_t>(space)), density), color);
}

/// An ink is known by its ID, and only together with its palette.
bool WClrPalette::GetUserInksColorFromID(int colorID, int density, CLR_COLORSPEC &color) const
{
  if (GetPaletteGuid().IsNull() || !IsValidColorID(GetPaletteGuid(), colorID) ||
      colorID > std::numeric_limits<std::int16_t>::max())
    return false;
  CLR_COLORSPEC::MakeINDEXEDUSERINKS(color, static_cast<std::int16_t>(colorID),
                                     static_cast<std::uint8_t>(std::clamp(density, 0, 100)));
  color.SetPaletteGuid(GetPaletteGuid());
  return true;
}

bool WClrPalette::GetUserInksColor(int index, CLR_COLORSPEC &color) const
{
  return IsIndex(index) &&
         GetUserInksColorFromID(GetColorID(index), PercentOfTint(xml_.GetTint(static_cast<std::size_t>(index))), color);
}

std::wstring WClrPalette::GetColorName(int index) const
{
  if (!IsIndex(index))
    return {};
  const std::string &name = xml_.GetColorDisplayName(static_cast<std::size_t>(index));
  return name.empty() ? std::wstring() : ZelUtl::WideFromUtf8(xml_.GetHeader().prefix + name);
}

int WClrPalette::GetColorVersion(int index) const
{
  const WXmlColorSpace *const space = IsIndex(index) ? SpaceOf(static_cast<std::size_t>(index)) : nullptr;
  return space == nullptr ? 0 : space->version;
}

std::wstring WClrPalette::GetGeneratedName(const CLR_COLORSPEC &color) const
{
  return ZelClr::GeneratedColorName(color);
}

int WClrPalette::GetColorID(int index) const
{
  return IsIndex(index) ? xml_.GetColorID(static_cast<std::size_t>(index)) : -1;
}

bool WClrPalette::IsCMYK() const
{
  return xml_.HasModel(Model::Cmyk255);
}

bool WClrPalette::IsRGB() const
{
  return xml_.HasModel(Model::Rgb255);
}

bool WClrPalette::IsLAB() const
{
  return xml_.HasModel(Model::Lab);
}

bool WClrPalette::IsHex() const
{
  return xml_.HasModel(Model::Hexachrome);
}

int WClrPalette::GetColorFrequencyOrder(int index) const
{
  return IsIndex(index) ? xml_.GetColor(static_cast<std::size_t>(index)).frequencyOrder : 0;
}

void WClrPalette::SetColorFrequencyOrder(int index, int order)
{
  // Not in the file: no edit of it, and allowed in a locked palette.
  if (!IsIndex(index) || GetColorFrequencyOrder(index) == order)
    return;
  WXmlColor color = xml_.GetColor(static_cast<std::size_t>(index));
  color.frequencyOrder = order;
  xml_.ReplaceColor(static_cast<std::size_t>(index), std::move(color));
}
