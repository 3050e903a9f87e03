// The bridge between managed colours and records.
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/typed_colors.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <cmath>

namespace ColorSystem {

namespace {

namespace ClrModel = ZelClr::ClrModel;

/// The records whose components are channels: the first components that people state, over one full scale.
struct BridgeRow
{
  unsigned recordModel;
  ColorModel model;
  double fullScale;
};

constexpr BridgeRow kBridge[] = {
  {ClrModel::Cmyk, ColorModel::Cmyk, 100.0},         {ClrModel::Cmyk255, ColorModel::Cmyk, 255.0},
  {ClrModel::Cmyk100, ColorModel::Cmyk, 100.0},      {ClrModel::Cmy255, ColorModel::Cmy, 255.0},
  {ClrModel::Rgb255, ColorModel::Rgb, 255.0},        {ClrModel::Rgba, ColorModel::Rgb, 255.0},
  {ClrModel::Bgra, ColorModel::Rgb, 255.0},          {ClrModel::Rgb48, ColorModel::Rgb, 65535.0},
  {ClrModel::ScRgb, ColorModel::Rgb, 1.0},           {ClrModel::Hsb, ColorModel::Hsv, 255.0},
  {ClrModel::Hls, ColorModel::Hls, 255.0},           {ClrModel::BlackWhite, ColorModel::Grayscale, 1.0},
  {ClrModel::Gray255, ColorModel::Grayscale, 255.0}, {ClrModel::Gray16, ColorModel::Grayscale, 65535.0},
  {ClrModel::Lab255, ColorModel::Lab, 255.0},        {ClrModel::Hexachrome, ColorModel::Hexachrome, 255.0},
};

const BridgeRow *FindBridge(unsigned recordModel)
{
  const auto *const row = std::find_if(std::begin(kBridge), std::end(kBridge), [&](const BridgeRow &candidate) {
    return candidate.recordModel == recordModel;
  });
  return row == std::end(kBridge) ? nullptr : row;
}

/// The record model that stands for one without a bridge; that model itself for all others.
unsigned BridgedModel(const CLR_COLORSPEC &record)
{
  switch (record.GetType()) {
  case ClrModel::Lab:
  case ClrModel::Xyz:
    return ClrModel::Lab255;
  case ClrModel::DeviceN: {
    const auto *const value = record.GetDeviceN();
    const auto *const space = value == nullptr ? nullptr : value->GetColorSpace();
    return space == nullptr || space->IsRGBBased() ? ClrModel::Rgb255 : ClrModel::Cmyk255;
  }
  default:
    return FindBridge(record.GetType()) == nullptr ? unsigned{ClrModel::Rgb48} : record.GetType();
  }
}

/// component / fullScale, such that the truncation of the way back meets the component again.
double ChannelFrom(double component, double fullScale)
{
  const double channel = component / fullScale;
  return std::trunc(channel * fullScale) < std::trunc(component) ? std::nextafter(channel, 2.0 * channel) : channel;
}

std::shared_ptr<ColorProfile> ProfileFor(ColorModel model, const ColorContext &context)
{
  // In the order of preference; one profile serves all models of a family.
  constexpr std::pair<ColorModel, ColorModel> kServes[] = {
    {ColorModel::Hsv, ColorModel::Rgb}, {ColorModel::Hls, ColorModel::Rgb}, {ColorModel::Cmy, ColorModel::Cmyk}};
  const auto profileIn = [&](const ColorContext &from) {
    auto profile = from.GetColorProfile(model);
    for (const auto &[served, by] : kServes) {
      if (profile == nullptr && served == model)
        profile = from.GetColorProfile(by);
    }
    return profile;
  };
  auto profile = profileIn(context);
  return profile != nullptr ? profile : profileIn(ColorContext::GetApplicationDefaultColorContext());
}

std::shared_ptr<Color> ColorFromSpot(const CLR_COLORSPEC &record, const ColorContext &context)
{
  CLR_COLORSPEC appearance;
  if (!record.GetSpotAppearance(ClrModel::Lab, appearance))
    return nullptr;
  const auto alternative = Color::ColorSpecToColor(appearance, context);
  if (alternative == nullptr)
    return nullptr;
  return std::make_shared<SpotColor>(record.GetSpotColorName(), *alternative, ChannelFrom(record.GetDensity(), 100.0));
}

/// A channel as a component of 0 to `most`, truncated.
template <class Component>
Component ComponentFrom(double channel, double fullScale, double most)
{
  const double component = channel * fullScale;
  return component > 0.0 ? static_cast<Component>(std::min(component, most)) : Component{0}; // a NaN becomes 0
}

} // namespace

Color::operator CLR_COLORSPEC() const
{
  const auto byte = [this](unsigned i) { return ComponentFrom<std::uint8_t>((*this)[i], 255.0, 255.0); };
  const auto word = [this](unsigned i) { return ComponentFrom<std::uint16_t>((*this)[i], 65535.0, 65535.0); };
  const auto hue = [this] { return ComponentFrom<std::int16_t>((*this)[0], 255.0, 359.0); };
  switch (GetColorModel()) {
  case ColorModel::Rgb:
    return CLR_COLORSPEC::MakeRGB48(word(0), word(1), word(2));
  case ColorModel::Cmyk:
    return CLR_COLORSPEC::MakeCMYK255(byte(0), byte(1), byte(2), byte(3));
  case ColorModel::Grayscale:
    return CLR_COLORSPEC::MakeGRAY16(word(0));
  case ColorModel::Lab:
    return CLR_COLORSPEC::MakeLAB255(byte(0), byte(1), byte(2));
  case ColorModel::Cmy:
    return CLR_COLORSPEC::MakeCMY(byte(0), byte(1), byte(2));
  case ColorModel::Hls:
    return CLR_COLORSPEC::MakeHLS(hue(), byte(1), byte(2));
  case ColorModel::Hsv:
    return CLR_COLORSPEC::MakeHSB(hue(), byte(1), byte(2));
  case ColorModel::Hexachrome:
    return CLR_COLORSPEC::MakeHEX(byte(0), byte(1), byte(2), byte(3), byte(4), byte(5));
  case ColorModel::Registration: {
    CLR_COLORSPEC record = CLR_COLORSPEC::MakeREGCOLOR();
    record.SetDensity(ComponentFrom<std::uint16_t>((*this)[0], 100.0, 100.0));
    return record;
  }
  default:
    return {};
  }
}

std::shared_ptr<Color> Color::ColorSpecToColor(const CLR_COLORSPEC &record, const ColorContext &context)
{
  if (record.GetType() == ClrModel::Registration)
    return std::make_shared<RegistrationColor>(ChannelFrom(record.Resolved().GetREGCOLORDensity(), 100.0));
  if (record.IsSpot())
    return ColorFromSpot(record, context);

  CLR_COLORSPEC bridged = record.Resolved();
  const unsigned bridgedModel = BridgedModel(bridged);
  if (bridged.GetType() == ClrModel::Lab)
    WClrConvert::ConvertLABToLAB255(&bridged, &bridged);
  else if (bridged.GetType() != bridgedModel && !WClrConvert::ConvertToBasicType(&bridged, bridgedModel, &bridged))
    return nullptr;

  const BridgeRow &row = *FindBridge(bridgedModel);
  auto profile = ProfileFor(row.model, context);
  if (profile == nullptr)
    return nullptr;
  auto color = std::make_shared<Color>(ColorSpace(row.model, std::move(profile)));
  const auto components = ZelClr::FindColourModel(bridgedModel)->components;
  for (unsigned i = 0; i < color->GetChannelCount(); ++i) {
    const double component = ZelClr::WithComponentType(components[i].type, [&]<class Number>(Number) {
      return static_cast<double>(bridged.GetComponent<Number>(components[i].offset));
    });
    color->SetChannel(i, ChannelFrom(component, row.fullScale));
  }
  return color;
}

} // namespace ColorSystem
