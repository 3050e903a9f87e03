#include "zelclr/harmony/internal/moved_colour.h"

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/harmony/wheel.h"

namespace ZelClr::Internal {

namespace {

bool IsGrayModel(unsigned model)
{
  return model == ClrModel::Gray255 || model == ClrModel::Gray16 || model == ClrModel::BlackWhite;
}

} // namespace

bool IsInk(const CLR_COLORSPEC &colour)
{
  return !WClrConvert::IsBasicType(colour.GetType()) || colour.IsSpot();
}

unsigned ModelAt(const CLR_COLORSPEC &colour, const Harmony::HSB &place, const ColorSystem::ColorConverter &converter)
{
  const unsigned own = colour.GetType();
  if (!IsInk(colour) && !(IsGrayModel(own) && place.saturation > 0))
    return own;
  unsigned model = 0;
  double fullScale = 0.0;
  const auto blending = converter.GetTargetColorContext().GetBlendingColorModel();
  const bool isKnown = ColorSystem::SimpleColorConverter::ColorModelToColorType(blending, model, fullScale);
  return isKnown && WClrConvert::IsBasicType(model) && !IsGrayModel(model) ? model : unsigned{ClrModel::Rgb255};
}

std::optional<CLR_COLORSPEC> MovedColour(const CLR_COLORSPEC &colour, const Harmony::HSB &from, const Harmony::HSB &to,
                                         const ColorSystem::ColorConverter &converter)
{
  const bool hasHue = to.saturation > 0 && to.brightness > 0;
  const bool looksTheSame = from.saturation == to.saturation && from.brightness == to.brightness &&
                            (!hasHue || WithinTurn(from.hue) == WithinTurn(to.hue));
  if (looksTheSame || IsInk(colour))
    return std::nullopt;
  CLR_COLORSPEC moved = to.GetColorSpec(ModelAt(colour, to, converter), converter);
  return moved.IsInvalid() ? std::nullopt : std::optional(std::move(moved));
}

} // namespace ZelClr::Internal
