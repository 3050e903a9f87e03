// The component functions in floating point; compiled here and not inline, so that no caller's compiler options change
// their last bit.

#include "zelclr/convert/w_clr_convert.h"

#include <array>
#include <cmath>
#include <limits>

namespace Formulas = ZelClr::Formulas;

namespace {

double RoundedHalfAway(double value)
{
  return std::trunc(value + (value < 0 ? -0.5 : 0.5));
}

/// The rounded value, cut off to the byte type; 0 for what is no number.
template <class Byte>
Byte CutOff(double value)
{
  constexpr double kLowest = std::numeric_limits<Byte>::min();
  constexpr double kHighest = std::numeric_limits<Byte>::max();
  return std::isnan(value) ? Byte{0} : static_cast<Byte>(std::clamp(RoundedHalfAway(value), kLowest, kHighest));
}

} // namespace

void WClrConvert::ConvertRGBToYIQ255(double red, double green, double blue, std::uint8_t &y, std::uint8_t &i,
                                     std::uint8_t &q)
{
  const auto sane = [](double component) { return std::isnan(component) ? 0.0 : std::clamp(component, -1e6, 1e6); };
  const auto yiq = Formulas::YiqFromRgb(sane(red), sane(green), sane(blue));
  Put(y, i, q, yiq.y, yiq.i, yiq.q);
}

void WClrConvert::ConvertYIQ255ToRGB(std::uint8_t y, std::uint8_t i, std::uint8_t q, double &red, double &green,
                                     double &blue)
{
  const auto rgb = Formulas::RgbFromYiq(y, i, q);
  red = rgb.red;
  green = rgb.green;
  blue = rgb.blue;
}

void WClrConvert::ConvertLABToDouble(double &l, double &a, double &b, int decimals, const CLR_COLORSPEC &colour)
{
  constexpr std::array kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  Formulas::Lab lab{};
  if (colour.GetType() == ZelClr::ClrModel::Lab) {
    lab = Formulas::LabFromRecord(colour.GetComponent<std::uint8_t>(0), colour.GetComponent<std::int8_t>(1),
                                  colour.GetComponent<std::int8_t>(2));
  }
  const auto rounded = [&](double value) {
    if (decimals < 0)
      return value;
    const double power =
      kPowersOfTen[std::min<std::size_t>(static_cast<std::size_t>(decimals), kPowersOfTen.size() - 1)];
    return RoundedHalfAway(value * power) / power;
  };
  l = rounded(lab.l);
  a = rounded(lab.a);
  b = rounded(lab.b);
}

void WClrConvert::ConvertDoubleToLAB_L(std::uint8_t &byte, double l)
{
  byte = CutOff<std::uint8_t>(l * 255.0 / 100.0);
}

void WClrConvert::ConvertDoubleToLAB_A(std::int8_t &byte, double stored)
{
  byte = CutOff<std::int8_t>(stored);
}
