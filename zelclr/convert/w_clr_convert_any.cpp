// Conversion between any two models by formula, and what is built on it.

#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Model = ZelClr::ClrModel;
using namespace ZelClr;
using Colour = CLR_COLORSPEC;

namespace {

// --- The steps that have no public converter; the source is of the model in the name ---------------------------------

std::uint8_t RoundedByte(double value)
{
  return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0l, 255l));
}

std::int8_t RoundedSigned(double value)
{
  return static_cast<std::int8_t>(std::clamp(std::lround(value), -128l, 127l));
}

void Relabel(Colour *destination, const Colour *source, std::uint16_t model)
{
  Colour::MakeCMYK(*destination, source->GetBlue(), source->GetI255(), source->GetRed(), source->GetBlack());
  destination->SetType(model);
}

void RgbFromCmyk(Colour *destination, const Colour *source)
{
  Colour cmyk255;
  WClrConvert::ConvertCMYKToCMYK255(&cmyk255, source);
  WClrConvert::ConvertCMYK255ToRGB(destination, &cmyk255);
}

void RgbFromCmyk100(Colour *destination, const Colour *source)
{
  Colour cmyk;
  Relabel(&cmyk, source, Model::Cmyk);
  RgbFromCmyk(destination, &cmyk);
}

void Cmyk255FromRgb(Colour *destination, const Colour *source)
{
  const auto cmyk = Formulas::CmykFromRgb(source->GetRed(), source->GetI255(), source->GetBlue());
  const auto byte = [](int ink) { return static_cast<std::uint8_t>(ink); };
  Colour::MakeCMYK255(*destination, byte(cmyk.cyan), byte(cmyk.magenta), byte(cmyk.yellow), byte(cmyk.black));
}

void CmykFromRgb(Colour *destination, const Colour *source)
{
  Colour cmyk255;
  Cmyk255FromRgb(&cmyk255, source);
  WClrConvert::ConvertCMYK255ToCMYK(destination, &cmyk255);
}

void Cmyk100FromRgb(Colour *destination, const Colour *source)
{
  CmykFromRgb(destination, source);
  Relabel(destination, destination, Model::Cmyk100);
}

void CmykFromCmyk100(Colour *destination, const Colour *source)
{
  Relabel(destination, source, Model::Cmyk);
}

void Cmyk100FromCmyk(Colour *destination, const Colour *source)
{
  Relabel(destination, source, Model::Cmyk100);
}

void Cmyk255FromCmyk100(Colour *destination, const Colour *source)
{
  Colour cmyk;
  CmykFromCmyk100(&cmyk, source);
  WClrConvert::ConvertCMYKToCMYK255(destination, &cmyk);
}

void Cmyk100FromCmyk255(Colour *destination, const Colour *source)
{
  Colour cmyk;
  WClrConvert::ConvertCMYK255ToCMYK(&cmyk, source);
  Cmyk100FromCmyk(destination, &cmyk);
}

void HexachromeFromCmyk255(Colour *destination, const Colour *source)
{
  Colour::MakeHEX(*destination, source->GetBlue(), source->GetI255(), source->GetRed(), source->GetBlack(), 0, 0);
}

void HexachromeFromRgb(Colour *destination, const Colour *source)
{
  Colour cmyk255;
  Cmyk255FromRgb(&cmyk255, source);
  HexachromeFromCmyk255(destination, &cmyk255);
}

void Cmyk255FromHexachrome(Colour *destination, const Colour *source)
{
  const std::uint8_t *inks = source->GetRAWColor() + 2;
  const auto cmyk = Formulas::CmykFromHexachrome(inks[0], inks[1], inks[2], inks[3], inks[4], inks[5]);
  const auto byte = [](int ink) { return static_cast<std::uint8_t>(ink); };
  Colour::MakeCMYK255(*destination, byte(cmyk.cyan), byte(cmyk.magenta), byte(cmyk.yellow), byte(cmyk.black));
}

void PutRgb(Colour *destination, const Formulas::RealRgb &rgb)
{
  Colour::MakeRGB(*destination, RoundedByte(rgb.red * 255.0), RoundedByte(rgb.green * 255.0),
                  RoundedByte(rgb.blue * 255.0));
}

Formulas::Lab StoredLab(const Colour &lab)
{
  return Formulas::LabFromRecord(lab.GetComponent<std::uint8_t>(0), lab.GetComponent<std::int8_t>(1),
                                 lab.GetComponent<std::int8_t>(2));
}

void PutLab(Colour *destination, const Formulas::Lab &lab)
{
  Colour::MakeLAB(*destination, RoundedByte(lab.l / Formulas::kLabLPerByte),
                  RoundedSigned(lab.a / Formulas::kLabAbPerByte), RoundedSigned(lab.b / Formulas::kLabAbPerByte));
}

void PutXyz(Colour *destination, const Formulas::Xyz &xyz)
{
  Colour::MakeXYZ(*destination, RoundedByte(xyz.x * 255.0), RoundedByte(xyz.y * 255.0), RoundedByte(xyz.z * 255.0));
}

void RgbFromLab(Colour *destination, const Colour *source)
{
  PutRgb(destination, Formulas::SrgbFromXyz(Formulas::XyzFromCieLab(StoredLab(*source))));
}

void LabFromRgb(Colour *destination, const Colour *source)
{
  PutLab(destination, Formulas::CieLabFromRgb(source->GetRed(), source->GetI255(), source->GetBlue()));
}

void XyzFromLab(Colour *destination, const Colour *source)
{
  PutXyz(destination, Formulas::XyzFromCieLab(StoredLab(*source)));
}

void LabFromXyz(Colour *destination, const Colour *source)
{
  const auto component = [&](std::size_t offset) { return source->GetComponent<std::uint8_t>(offset) / 255.0; };
  PutLab(destination, Formulas::CieLabFromXyz({component(0), component(1), component(2)}));
}

void RgbFromLab255(Colour *destination, const Colour *source)
{
  Colour lab;
  WClrConvert::ConvertLAB255ToLAB(&lab, source);
  RgbFromLab(destination, &lab);
}

void Lab255FromRgb(Colour *destination, const Colour *source)
{
  Colour lab;
  LabFromRgb(&lab, source);
  WClrConvert::ConvertLABToLAB255(destination, &lab);
}

void XyzFromRgb(Colour *destination, const Colour *source)
{
  PutXyz(destination,
         Formulas::XyzFromSrgb(source->GetRed() / 255.0, source->GetI255() / 255.0, source->GetBlue() / 255.0));
}

struct Step
{
  std::uint16_t from;
  std::uint16_t to;
  WClrConvert::Converter *convert;
};

using C = WClrConvert;

/// Every single step between two basic models. Where two are needed they meet at one of kMeetingPoints. The stored Lab
/// and XYZ arithmetic is not among them: it is for documents that have it, not for colours as people see them.
constexpr Step kSteps[] = {
  {Model::Cmyk, Model::Cmyk255, C::ConvertCMYKToCMYK255},
  {Model::Cmyk, Model::Cmyk100, Cmyk100FromCmyk},
  {Model::Cmyk, Model::Rgb255, RgbFromCmyk},
  {Model::Cmyk255, Model::Cmyk, C::ConvertCMYK255ToCMYK},
  {Model::Cmyk255, Model::Cmyk100, Cmyk100FromCmyk255},
  {Model::Cmyk255, Model::Cmy255, C::ConvertCMYK255ToCMY255},
  {Model::Cmyk255, Model::Rgb255, C::ConvertCMYK255ToRGB},
  {Model::Cmyk255, Model::Hexachrome, HexachromeFromCmyk255},
  {Model::Cmyk100, Model::Cmyk, CmykFromCmyk100},
  {Model::Cmyk100, Model::Cmyk255, Cmyk255FromCmyk100},
  {Model::Cmyk100, Model::Rgb255, RgbFromCmyk100},
  {Model::Cmy255, Model::Cmyk255, C::ConvertCMY255ToCMYK255},
  {Model::Cmy255, Model::Rgb255, C::ConvertCMY255ToRGB},
  {Model::Cmy255, Model::Rgb48, C::ConvertCMY255ToRGB48},
  {Model::Rgb255, Model::Cmyk, CmykFromRgb},
  {Model::Rgb255, Model::Cmyk255, Cmyk255FromRgb},
  {Model::Rgb255, Model::Cmyk100, Cmyk100FromRgb},
  {Model::Rgb255, Model::Cmy255, C::ConvertRGBToCMY255},
  {Model::Rgb255, Model::Hsb, C::ConvertRGBToHSB},
  {Model::Rgb255, Model::Hls, C::ConvertRGBToHLS},
  {Model::Rgb255, Model::Gray255, C::ConvertRGBToGray},
  {Model::Rgb255, Model::Gray16, C::ConvertRGBToGray16},
  {Model::Rgb255, Model::Yiq255, C::ConvertRGBToYIQ255},
  {Model::Rgb255, Model::Lab, LabFromRgb},
  {Model::Rgb255, Model::Lab255, Lab255FromRgb},
  {Model::Rgb255, Model::Xyz, XyzFromRgb},
  {Model::Rgb255, Model::Hexachrome, HexachromeFromRgb},
  {Model::Rgb255, Model::Rgb48, C::ConvertRGBToRGB48},
  {Model::Rgb255, Model::ScRgb, C::ConvertRGBToSCRGB},
  {Model::Rgb255, Model::Rgba, C::ConvertRGBToRGBA},
  {Model::Rgb255, Model::Bgra, C::ConvertRGBToBGRA},
  {Model::Rgb48, Model::Rgb255, C::ConvertRGB48ToRGB},
  {Model::Rgb48, Model::Cmy255, C::ConvertRGB48ToCMY255},
  {Model::Rgb48, Model::Hsb, C::ConvertRGB48ToHSB},
  {Model::Rgb48, Model::Hls, C::ConvertRGB48ToHLS},
  {Model::Rgb48, Model::Gray255, C::ConvertRGB48ToGray},
  {Model::Rgb48, Model::Gray16, C::ConvertRGB48ToGray16},
  {Model::Rgb48, Model::Yiq255, C::ConvertRGB48ToYIQ255},
  {Model::Rgb48, Model::ScRgb, C::ConvertRGB48ToSCRGB},
  {Model::Rgb48, Model::Rgba, C::ConvertRGB48ToRGBA},
  {Model::Rgb48, Model::Bgra, C::ConvertRGB48ToBGRA},
  {Model::Hsb, Model::Rgb255, C::ConvertHSBToRGB},
  {Model::Hsb, Model::Rgb48, C::ConvertHSBToRGB48},
  {Model::Hsb, Model::Gray255, C::ConvertHSBToGray},
  {Model::Hls, Model::Rgb255, C::ConvertHLSToRGB},
  {Model::Hls, Model::Rgb48, C::ConvertHLSToRGB48},
  {Model::BlackWhite, Model::Rgb255, C::ConvertBWToRGB},
  {Model::BlackWhite, Model::Rgb48, C::ConvertBWToRGB48},
  {Model::BlackWhite, Model::Gray255, C::ConvertBWToGray},
  {Model::BlackWhite, Model::Gray16, C::ConvertBWToGray16},
  {Model::Gray255, Model::Rgb255, C::ConvertGrayToRGB},
  {Model::Gray255, Model::Rgb48, C::ConvertGrayToRGB48},
  {Model::Gray255, Model::Gray16, C::ConvertGrayToGray16},
  {Model::Gray255, Model::BlackWhite, C::ConvertGrayToBW},
  {Model::Gray16, Model::Rgb255, C::ConvertGray16ToRGB},
  {Model::Gray16, Model::Rgb48, C::ConvertGray16ToRGB48},
  {Model::Gray16, Model::Gray255, C::ConvertGray16ToGray},
  {Model::Gray16, Model::BlackWhite, C::ConvertGray16ToBW},
  {Model::Yiq255, Model::Rgb255, C::ConvertYIQ255ToRGB},
  {Model::Yiq255, Model::Rgb48, C::ConvertYIQ255ToRGB48},
  {Model::Lab, Model::Rgb255, RgbFromLab},
  {Model::Lab, Model::Xyz, XyzFromLab},
  {Model::Xyz, Model::Lab, LabFromXyz},
  {Model::Lab, Model::Lab255, C::ConvertLABToLAB255},
  {Model::Lab255, Model::Rgb255, RgbFromLab255},
  {Model::Lab255, Model::Lab, C::ConvertLAB255ToLAB},
  {Model::Xyz, Model::Rgb255, C::ConvertXYZToRGB},
  {Model::Hexachrome, Model::Rgb255, C::ConvertHexToRGB},
  {Model::Hexachrome, Model::Cmyk255, Cmyk255FromHexachrome},
  {Model::ScRgb, Model::Rgb255, C::ConvertSCRGBToRGB},
  {Model::ScRgb, Model::Rgb48, C::ConvertSCRGBToRGB48},
  {Model::Rgba, Model::Rgb255, C::ConvertRGBAToRGB},
  {Model::Rgba, Model::Bgra, C::ConvertRGBAToBGRA},
  {Model::Bgra, Model::Rgb255, C::ConvertBGRAToRGB},
  {Model::Bgra, Model::Rgba, C::ConvertBGRAToRGBA},
};

/// Where two steps meet, the best first: no bits lost, no black lost, nothing cut off to sRGB, everything.
constexpr std::uint16_t kMeetingPoints[] = {Model::Rgb48, Model::Cmyk255, Model::Lab, Model::Rgb255};

constexpr unsigned kModelNumbers = Model::Last + 1;

/// kSteps by pair of models.
constexpr auto kStepOfPair = [] {
  std::array<std::array<WClrConvert::Converter *, kModelNumbers>, kModelNumbers> table{};
  for (const Step &step : kSteps)
    table[step.from][step.to] = step.convert;
  return table;
}();

constexpr WClrConvert::Converter *FindStep(unsigned from, unsigned to)
{
  return from < kModelNumbers && to < kModelNumbers ? kStepOfPair[from][to] : nullptr;
}

bool IsBasic(unsigned model)
{
  return model == Model::Rgb255 || FindStep(model, Model::Rgb255);
}

/// A colour of a basic model that looks like the given one, which is no reference: the colour itself, or the process
/// colour of an ink at its density, made in `made`; null for a colour without an appearance.
const Colour *AppearanceOf(const Colour &colour, unsigned wantedModel, Colour &made)
{
  if (IsBasic(colour.GetType()))
    return &colour;
  switch (colour.GetType()) {
  case Model::Registration:
    Colour::MakeCMYK(made, colour.GetBlue(), colour.GetI255(), colour.GetRed(), colour.GetBlack());
    break;
  case Model::UserInks:
  case Model::IndexedUserInk: // made at its density already
    return Colour::MakeProcessFromUserInks(colour, made) ? &made : nullptr;
  case Model::DeviceN: {
    const WClrColorDeviceN *value = colour.GetDeviceN();
    if (!value)
      return nullptr;
    const bool known = value->IsRGBBased()   ? value->OverprintToRGB(made)
                       : value->IsHexBased() ? value->OverprintToHex(made)
                                             : value->OverprintToCMYK(made);
    return known ? &made : nullptr;
  }
  default:
    if (!colour.GetSpotAppearance(wantedModel, made) || !IsBasic(made.GetType()))
      return nullptr;
    break;
  }
  WClrConvert::ApplyDensity(&made, colour.GetDensity());
  return &made;
}

/// Converts a basic colour; both models are basic.
void ConvertBasic(Colour *destination, unsigned model, const Colour &source)
{
  const unsigned from = source.GetType();
  if (from == model) {
    destination->Copy(source);
    return;
  }
  if (auto *step = FindStep(from, model))
    return step(destination, &source);
  Colour between;
  for (const unsigned middle : kMeetingPoints) {
    if (FindStep(from, middle) && FindStep(middle, model)) {
      FindStep(from, middle)(&between, &source);
      return FindStep(middle, model)(destination, &between);
    }
  }
  // Black-and-white, the one model without a step from RGB, is made from gray.
  ConvertBasic(&between, Model::Gray255, source);
  WClrConvert::ConvertGrayToBW(destination, &between);
}

} // namespace

bool WClrConvert::IsBasicType(unsigned model)
{
  return IsBasic(model);
}

bool WClrConvert::ConvertToBasicType(Colour *destination, unsigned model, const Colour *source)
{
  Colour made;
  const Colour *appearance = IsBasic(model) ? AppearanceOf(source->Resolved(), model, made) : nullptr;
  if (!appearance)
    return false;
  ConvertBasic(destination, model, *appearance);
  return true;
}

std::optional<COLORREF> WClrConvert::ConvertColorSpecToCOLORREF(const Colour &colour)
{
  Colour rgb;
  return ConvertToBasicType(&rgb, Model::Rgb255, &colour) ? std::optional(rgb.GetCOLORREF()) : std::nullopt;
}

bool WClrConvert::ConvertToCMXColor(Colour *destination, const Colour *source)
{
  constexpr auto target = [](unsigned model) -> unsigned {
    switch (model) {
    case Model::Rgb48:
    case Model::ScRgb:
    case Model::Rgba:
    case Model::Bgra:
      return Model::Rgb255;
    case Model::Gray16:
      return Model::Gray255;
    case Model::Cmyk100:
    case Model::Registration:
      return Model::Cmyk;
    case Model::Lab255:
    case Model::Xyz:
      return Model::Lab;
    default:
      return Model::Cmyk255;
    }
  };
  const unsigned model = source->GetType();
  if (model >= Model::Pantone && model <= Model::Lab && FindColourModel(model)) {
    destination->Copy(*source);
    return true;
  }
  return ConvertToBasicType(destination, target(model), source);
}

bool WClrConvert::ConvertToValidDuotone(Colour *destination, const Colour *source)
{
  const unsigned model = source->GetType();
  if (source->IsSpot() || source->IsCMYK() || model == Model::Pantone || model == Model::PantoneHex ||
      model == Model::UserInks || model == Model::IndexedUserInk)
  {
    destination->Copy(*source);
    return true;
  }
  return ConvertToBasicType(destination, Model::Cmyk255, source);
}

std::optional<Formulas::Lab> WClrConvert::GetLab(const Colour &colour)
{
  Colour made;
  const Colour *appearance = AppearanceOf(colour.Resolved(), Model::Lab, made);
  if (!appearance)
    return std::nullopt;
  const bool isLab = appearance->GetType() == Model::Lab || appearance->GetType() == Model::Lab255;
  Colour reading;
  ConvertBasic(&reading, isLab ? Model::Lab : Model::Rgb255, *appearance);
  return isLab ? StoredLab(reading) : Formulas::CieLabFromRgb(reading.GetRed(), reading.GetI255(), reading.GetBlue());
}
