// What is asked of colours of any model, their tints, and the entry point of conversion.

#include "zelclr/convert/w_clr_convert.h"

#include "zelclr/colour/scaling.h"
#include "zelclr/convert/w_clr_color_device_n.h"

#include <algorithm>

namespace Model = ZelClr::ClrModel;
using namespace ZelClr;
using Colour = CLR_COLORSPEC;

int WClrConvert::CompareColors(const Colour &a, const Colour &b)
{
  return a.Resolved().CompareTo(b.Resolved());
}

std::optional<double> WClrConvert::GetColorDistance(const Colour &a, const Colour &b)
{
  const auto first = GetLab(a);
  const auto second = GetLab(b);
  return first && second ? std::optional(Formulas::Ciede2000(*first, *second)) : std::nullopt;
}

bool WClrConvert::IsAchromaticColor(const Colour &colour)
{
  const std::uint8_t *bytes = colour.GetRAWColor();
  switch (colour.GetType()) {
  case Model::BlackWhite:
  case Model::Gray255:
  case Model::Gray16:
    return true;
  case Model::Cmyk:
  case Model::Cmyk255:
  case Model::Cmyk100:
  case Model::Cmy255:
  case Model::Rgb255:
  case Model::Registration:
  case Model::Rgba:
  case Model::Bgra:
    return bytes[0] == bytes[1] && bytes[1] == bytes[2];
  case Model::Hsb:
    return bytes[2] == 0 || bytes[3] == 0;
  case Model::Hls:
    return bytes[3] == 0 || bytes[2] == 0 || bytes[2] == 255;
  case Model::Yiq255:
    return bytes[1] == 100 && bytes[2] == 100;
  case Model::Lab:
    return bytes[1] == 0 && bytes[2] == 0;
  case Model::Lab255:
    return bytes[1] == 128 && bytes[2] == 128;
  case Model::Hexachrome:
    return bytes[2] == bytes[3] && bytes[3] == bytes[4] && bytes[6] == 0 && bytes[7] == 0;
  case Model::Rgb48:
    return colour.GetBlue16() == colour.GetGreen16() && colour.GetGreen16() == colour.GetRed16();
  case Model::ScRgb:
    return colour.GetSCRed() == colour.GetSCGreen() && colour.GetSCGreen() == colour.GetSCBlue();
  case Model::Xyz:
  case Model::DeviceN: {
    Colour rgb;
    return ConvertToBasicType(&rgb, Model::Rgb255, &colour) && IsAchromaticColor(rgb);
  }
  default:
    return colour.IsTintable() && colour.GetDensity() == 0;
  }
}

bool WClrConvert::IsAchromaticWhite(const Colour &colour)
{
  if (!IsAchromaticColor(colour))
    return false;
  Colour rgb;
  if (!ConvertToBasicType(&rgb, Model::Rgb255, &colour))
    return colour.GetDensity() == 0;
  return rgb.GetCOLORREF() == 0xFFFFFF;
}

bool WClrConvert::CanTreatColorAsGrayscale(const Colour &colour)
{
  const std::uint8_t *bytes = colour.GetRAWColor();
  switch (colour.GetType()) {
  case Model::Cmyk:
  case Model::Cmyk255:
  case Model::Cmyk100:
  case Model::Cmy255:
    return bytes[0] == 0 && bytes[1] == 0 && bytes[2] == 0;
  case Model::Hexachrome:
    return IsAchromaticColor(colour) && bytes[2] == 0;
  case Model::Registration:
  case Model::DeviceN:
    return false;
  default:
    return IsAchromaticColor(colour);
  }
}

void WClrConvert::ApplyDensity(Colour *colour, unsigned density)
{
  const int percent = static_cast<int>(std::min(density, 100u));
  if (colour->IsReference())
    colour->BreakReference();
  const unsigned model = colour->GetType();
  if (WClrColorDeviceN *deviceN = colour->GetDeviceN()) {
    deviceN->ApplyDensity(percent);
    return;
  }
  if (!IsBasicType(model)) {
    colour->SetDensity(static_cast<std::uint16_t>(MulDiv(std::min<int>(colour->GetDensity(), 100), percent, 100)));
    return;
  }
  if (model == Model::BlackWhite)
    return;

  Colour white(*colour);
  switch (model) {
  case Model::ScRgb:
    Colour::MakeSCRGB(white, 1, 1, 1);
    break;
  case Model::Rgba:
    Colour::MakeRGBA(white, 255, 255, 255, colour->GetBlack());
    break;
  case Model::Bgra:
    Colour::MakeBGRA(white, 255, 255, 255, colour->GetBlack());
    break;
  case Model::Xyz:
    Colour::MakeXYZ(white, 246, 255, 210);
    break;
  default:
    Colour::MakeWhite(white);
    break;
  }
  for (const ColourComponent &component : FindColourModel(model)->components) {
    WithComponentType(component.type, [&]<class T>(T) {
      const T from = white.GetComponent<T>(component.offset);
      const T to = colour->GetComponent<T>(component.offset);
      if constexpr (std::is_floating_point_v<T>)
        colour->SetComponent(component.offset, from + (to - from) * static_cast<T>(percent) / T{100});
      else
        colour->SetComponent(component.offset, static_cast<T>(from + MulDiv(to - from, percent, 100)));
    });
  }
}

bool WClrConvert::CopyOrRelabel(Colour *destination, unsigned model, const Colour *source)
{
  if (model == Model::Pantone || model == Model::Index || model == Model::Registration || model == Model::UserInks ||
      model == Model::IndexedUserInk)
    return false;
  const unsigned from = source->GetType();
  const bool relabel =
    (from == Model::Cmyk255 && model == Model::Cmyk100) || (from == Model::Cmyk100 && model == Model::Cmyk255);
  if (from != model && !relabel)
    return false;
  if (destination != source || source->IsReference())
    destination->Copy(*source);
  if (relabel)
    destination->SetType(static_cast<std::uint16_t>(model));
  return true;
}
