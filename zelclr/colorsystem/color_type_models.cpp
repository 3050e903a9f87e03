// Record models and the models of managed colours.
#include "zelclr/colorsystem/simple_color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_color_device_n.h"

#include <algorithm>
#include <iterator>

namespace ColorSystem {

namespace {

namespace ClrModel = ZelClr::ClrModel;

struct TypeRow
{
  unsigned type;
  ColorModel model;
  double fullScale;
};

/// The model without a name behind Registration, which YIQ has.
constexpr ColorModel kYiqModel = static_cast<ColorModel>(11);

constexpr TypeRow kModelOfType[] = {
  {ClrModel::Pantone, ColorModel::Spot, 255.0},
  {ClrModel::Spot, ColorModel::Spot, 255.0},
  {ClrModel::Cmyk, ColorModel::Cmyk, 100.0},
  {ClrModel::Cmyk255, ColorModel::Cmyk, 255.0},
  // KEPT: 255, where one would expect the 100 of its name; as when CMYK100 and CMYK255 are relabelled.
  {ClrModel::Cmyk100, ColorModel::Cmyk, 255.0},
  {ClrModel::Cmy255, ColorModel::Cmy, 255.0},
  {ClrModel::Rgb255, ColorModel::Rgb, 255.0},
  {ClrModel::Rgba, ColorModel::Rgb, 255.0},
  {ClrModel::Bgra, ColorModel::Rgb, 255.0},
  {ClrModel::Hsb, ColorModel::Hsv, 255.0},
  {ClrModel::Hls, ColorModel::Hls, 255.0},
  {ClrModel::BlackWhite, ColorModel::Grayscale, 1.0},
  {ClrModel::Gray255, ColorModel::Grayscale, 255.0},
  {ClrModel::Yiq255, kYiqModel, 255.0},
  {ClrModel::Lab, ColorModel::Lab, 255.0},
  {ClrModel::Lab255, ColorModel::Lab, 255.0},
  {ClrModel::Hexachrome, ColorModel::Hexachrome, 255.0},
  {ClrModel::Xyz, ColorModel::Xyz, 255.0},
  {ClrModel::Registration, ColorModel::Registration, 100.0},
  {ClrModel::Rgb48, ColorModel::Rgb, 65535.0},
  {ClrModel::Gray16, ColorModel::Grayscale, 65535.0},
  {ClrModel::ScRgb, ColorModel::Rgb, 1.0},
};

constexpr TypeRow kTypeOfModel[] = {
  {ClrModel::Rgb255, ColorModel::Rgb, 255.0},
  {ClrModel::Cmyk255, ColorModel::Cmyk, 255.0},
  {ClrModel::Gray255, ColorModel::Grayscale, 255.0},
  {ClrModel::Lab255, ColorModel::Lab, 255.0},
  {ClrModel::Cmy255, ColorModel::Cmy, 255.0},
  {ClrModel::Hls, ColorModel::Hls, 255.0},
  {ClrModel::Hsb, ColorModel::Hsv, 255.0},
  {ClrModel::Hexachrome, ColorModel::Hexachrome, 255.0},
  {ClrModel::Registration, ColorModel::Registration, 100.0},
  {ClrModel::Xyz, ColorModel::Xyz, 255.0},
};

struct FamilyRow
{
  unsigned type;
  unsigned canonical;
};

constexpr FamilyRow kFamilies[] = {
  {ClrModel::Cmyk, ClrModel::Cmyk255},    {ClrModel::Cmy255, ClrModel::Cmyk255},
  {ClrModel::Cmyk100, ClrModel::Cmyk255}, {ClrModel::Hsb, ClrModel::Rgb255},
  {ClrModel::Hls, ClrModel::Rgb255},      {ClrModel::BlackWhite, ClrModel::Gray16},
  {ClrModel::Gray255, ClrModel::Gray16},  {ClrModel::Yiq255, ClrModel::Rgb48},
  {ClrModel::ScRgb, ClrModel::Rgb48},     {ClrModel::Lab, ClrModel::Lab255},
  {ClrModel::Xyz, ClrModel::Lab255},      {ClrModel::Bgra, ClrModel::Rgba},
};

} // namespace

bool SimpleColorConverter::ColorTypeToColorModel(unsigned type, ColorModel &model, double &fullScale)
{
  const auto *const row = std::find_if(std::begin(kModelOfType), std::end(kModelOfType),
                                       [type](const TypeRow &candidate) { return candidate.type == type; });
  fullScale = row == std::end(kModelOfType) ? 255.0 : row->fullScale;
  if (row == std::end(kModelOfType))
    return false;
  model = row->model;
  return true;
}

bool SimpleColorConverter::ColorModelToColorType(ColorModel model, unsigned &type, double &fullScale)
{
  const auto *const row = std::find_if(std::begin(kTypeOfModel), std::end(kTypeOfModel),
                                       [model](const TypeRow &candidate) { return candidate.model == model; });
  const bool known = row != std::end(kTypeOfModel);
  type = known ? row->type : 0;
  fullScale = known ? row->fullScale : 255.0;
  return known;
}

unsigned SimpleColorConverter::NormalizeColorType(unsigned type)
{
  for (const FamilyRow &row : kFamilies) {
    if (row.type == type)
      return row.canonical;
  }
  return type;
}

unsigned SimpleColorConverter::GetNormalizedColorSpecType(const CLR_COLORSPEC &colour)
{
  const unsigned type = colour.GetType();
  if (type != ClrModel::DeviceN)
    return type;
  const auto *const value = colour.GetDeviceN();
  const auto *const space = value == nullptr ? nullptr : value->GetColorSpace();
  if (space == nullptr)
    return type;
  if (space->IsRGBBased())
    return ClrModel::Rgb255;
  return space->IsCMYKBased() || space->IsHexBased() ? unsigned{ClrModel::Cmyk} : 0u;
}

} // namespace ColorSystem
