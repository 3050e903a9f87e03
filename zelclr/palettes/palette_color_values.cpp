#include "zelclr/palettes/palette_color_values.h"

#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/internal/palette_numbers.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZelClr {

using namespace Internal;

namespace {

namespace Model = ClrModel;

enum class DensityValue : std::uint8_t
{
  Stated,     ///< 0 when it is missing, as every other value
  UnlessFull, ///< behind the values that such a colour always had; full when it is missing
};

/// The values of a model are its components, in the order of colour_models.h, each on a scale of whole units.
struct ValueRule
{
  std::uint16_t model;
  int first;                                       ///< the scale of the first value
  int others;                                      ///< of those behind it
  DensityValue density = DensityValue::UnlessFull; ///< of the models whose last component it is; its scale is 100
};

constexpr int kUnscaled = 0; // a float, as it stands
constexpr int kFullDensity = 100;

// Frozen: palette files hold these values.
//
// KEPT: CMYK100, whose inks are percentages, is on the scale of 255 as CMYK255 is, where one would expect 100; palette
// files depend on it.
constexpr ValueRule kRules[] = {
  {Model::Cmyk, 100, 100},      {Model::Cmyk255, 255, 255},      {Model::Cmy255, 255, 255},
  {Model::Rgb255, 255, 255},    {Model::Hsb, 360, 255},          {Model::Hls, 360, 255},
  {Model::BlackWhite, 1, 1},    {Model::Gray255, 255, 255},      {Model::Yiq255, 255, 255},
  {Model::Lab, 255, 255},       {Model::Hexachrome, 255, 255},   {Model::Cmyk100, 255, 255},
  {Model::Lab255, 255, 255},    {Model::Registration, 100, 100}, {Model::UserInks, 255, 255, DensityValue::Stated},
  {Model::Rgb48, 65535, 65535}, {Model::Gray16, 65535, 65535},   {Model::ScRgb, kUnscaled, kUnscaled},
};

const ValueRule *FindRule(unsigned model)
{
  const auto rule = std::find_if(std::begin(kRules), std::end(kRules), [&](const auto &r) { return r.model == model; });
  return rule == std::end(kRules) ? nullptr : rule;
}

bool IsDensity(const ColourComponent &component)
{
  return component.name == "density";
}

/// Of a signed byte, a* and b* of LAB: its unit is offset by 128, in the arithmetic of bytes, so that 0.5 is neutral.
template <class T>
constexpr int kOffset = std::is_same_v<T, std::int8_t> ? 128 : 0;

void ReadComponent(CLR_COLORSPEC &color, const ColourComponent &component, int scale, std::string_view &values)
{
  WithComponentType(component.type, [&]<class T>(T) {
    if constexpr (std::is_floating_point_v<T>)
      color.SetComponent(component.offset, NextFloat(values));
    else
      color.SetComponent(component.offset, static_cast<T>(UnitOfFraction(NextFraction(values), scale) + kOffset<T>));
  });
}

std::string TextOfComponent(const CLR_COLORSPEC &color, const ColourComponent &component, int scale)
{
  return WithComponentType(component.type, [&]<class T>(T) {
    const T stored = color.GetComponent<T>(component.offset);
    if constexpr (std::is_floating_point_v<T>) {
      constexpr T kMost = std::numeric_limits<T>::max();
      return ZelUtl::TextFromNumber(std::isnan(stored) ? T{0} : std::clamp(stored, -kMost, kMost));
    } else if constexpr (std::is_same_v<T, std::int16_t>) { // a hue is the same after a turn
      const int hue = stored >= 0 && stored <= scale ? stored : (stored % scale + scale) % scale;
      return ShortestFraction(hue, scale);
    } else {
      return ShortestFraction(std::clamp<int>(stored + kOffset<T>, 0, scale), scale);
    }
  });
}

/// The process model that shows a colour with the least loss, for one that values cannot state as it is.
unsigned StorableModel(const CLR_COLORSPEC &color)
{
  switch (color.GetType()) {
  case Model::Lab255:
  case Model::Xyz:
    return Model::Lab;
  case Model::Rgba:
  case Model::Bgra:
    return Model::Rgb255;
  case Model::DeviceN:
    return color.GetDeviceN() && color.GetDeviceN()->GetColorSpace() &&
               color.GetDeviceN()->GetColorSpace()->IsRGBBased()
             ? Model::Rgb255
             : Model::Cmyk255;
  case Model::Spot: {
    CLR_COLORSPEC appearance;
    if (!color.GetSpotAppearance(Model::Cmyk255, appearance) || appearance.GetType() == Model::Spot)
      return Model::Cmyk255;
    const unsigned model = appearance.GetType();
    return HasPaletteValues(model) && WClrConvert::IsBasicType(model) ? model : StorableModel(appearance);
  }
  default:
    return Model::Cmyk255;
  }
}

} // namespace

CLR_COLORSPEC ColorFromPaletteValues(unsigned model, std::string_view values)
{
  const ValueRule *const rule = FindRule(model);
  CLR_COLORSPEC color;
  if (!rule)
    return color;
  color.SetType(rule->model);
  int scale = rule->first;
  for (const ColourComponent &component : FindColourModel(model)->components) {
    if (!IsDensity(component))
      ReadComponent(color, component, scale, values);
    else if (!values.empty() || rule->density == DensityValue::Stated)
      ReadComponent(color, component, kFullDensity, values);
    else
      color.SetDensity(kFullDensity);
    scale = rule->others;
  }
  return color;
}

std::string PaletteValuesFromColor(const CLR_COLORSPEC &reference)
{
  const CLR_COLORSPEC &color = reference.Resolved();
  const ValueRule *const rule = FindRule(color.GetType());
  if (!rule)
    return {};
  std::string values;
  int scale = rule->first;
  for (const ColourComponent &component : FindColourModel(rule->model)->components) {
    const bool isDensity = IsDensity(component);
    if (isDensity && rule->density == DensityValue::UnlessFull && color.GetDensity() >= kFullDensity)
      continue;
    values += values.empty() ? "" : ",";
    values += TextOfComponent(color, component, isDensity ? kFullDensity : scale);
    scale = rule->others;
  }
  return values;
}

bool HasPaletteValues(unsigned model)
{
  return FindRule(model) && ModelFromSpaceName(SpaceNameFromModel(model)) == model;
}

CLR_COLORSPEC StorableColor(const CLR_COLORSPEC &color)
{
  CLR_COLORSPEC plain;
  plain.Copy(color);
  if (HasPaletteValues(plain.GetType()))
    return plain;
  CLR_COLORSPEC storable; // stays invalid for a colour without an appearance
  WClrConvert::ConvertToBasicType(&storable, StorableModel(plain), &plain);
  return storable;
}

} // namespace ZelClr
