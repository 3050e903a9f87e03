#include "zelclr/colorsystem/formula_pixels.h"

#include "zelclr/colorsystem/internal/formula_rows.h"
#include "zelclr/colorsystem/internal/xyz_of_d65.h"
#include "zelclr/convert/formulas/srgb_lab.h"

#include <algorithm>

namespace ColorSystem {

namespace {

namespace Formulas = ZelClr::Formulas;

constexpr ColorModel kModels[] = {ColorModel::Rgb, ColorModel::Cmyk,       ColorModel::Grayscale,
                                  ColorModel::Lab, ColorModel::Hexachrome, ColorModel::Xyz};

bool IsAmongModels(ColorModel model)
{
  return std::find(std::begin(kModels), std::end(kModels), model) != std::end(kModels);
}

Formulas::Xyz D50FromChannels(const FormulaColor &xyz)
{
  const Triple d50 = Times(kD50FromXyzChannels, xyz);
  return {d50[0], d50[1], d50[2]};
}

FormulaColor ChannelsFromD50(const Formulas::Xyz &xyz)
{
  return Times(kXyzChannelsFromD50, Triple{xyz.x, xyz.y, xyz.z});
}

} // namespace

bool HasFormula(ColorModel from, ColorModel to)
{
  return IsAmongModels(from) && IsAmongModels(to);
}

bool ConvertByFormula(const ColorData &source, ColorData &destination)
{
  const PixelFormat &from = source.GetPixelFormat();
  const PixelFormat &to = destination.GetPixelFormat();
  if (!HasFormula(from.model, to.model) || source.GetWidth() != destination.GetWidth() ||
      source.GetHeight() != destination.GetHeight())
    return false;
  ConvertFormulaRows({source.GetRow(0), destination.GetRow(0), source.GetRowStride(), destination.GetRowStride(),
                      source.GetWidth(), source.GetHeight(), from, to});
  return true;
}

FormulaColor ConvertLabToXyz(const FormulaColor &lab)
{
  return ChannelsFromD50(Formulas::XyzFromCieLab({lab[0] * 100.0, lab[1] * 255.0 - 128.0, lab[2] * 255.0 - 128.0}));
}

FormulaColor ConvertXyzToLab(const FormulaColor &xyz)
{
  const Formulas::Lab lab = Formulas::CieLabFromXyz(D50FromChannels(xyz));
  return {lab.l / 100.0, (lab.a + 128.0) / 255.0, (lab.b + 128.0) / 255.0};
}

FormulaColor ConvertXyzToRgb(const FormulaColor &xyz)
{
  const auto rgb = Formulas::SrgbFromXyz(D50FromChannels(xyz));
  return {rgb.red, rgb.green, rgb.blue};
}

FormulaColor ConvertRgbToXyz(const FormulaColor &rgb)
{
  return ChannelsFromD50(Formulas::XyzFromSrgb(rgb[0], rgb[1], rgb[2]));
}

} // namespace ColorSystem
