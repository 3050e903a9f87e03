#include "zelclr/palettes/formats/internal/css_colour_spaces.h"

#include "zelclr/convert/formulas/srgb_lab.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZelClr {

namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

Triple Times(const Matrix &matrix, const Triple &v)
{
  Triple product;
  for (std::size_t i = 0; i < 3; ++i)
    product[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
  return product;
}

// Linear light to XYZ; D65 but for ProPhoto, which is on D50.
constexpr Matrix kXyzFromP3 = {{{0.4865709486482162, 0.26566769316909306, 0.1982172852343625},
                                {0.2289745640697488, 0.6917385218365064, 0.079286914093745},
                                {0.0, 0.04511338185890264, 1.043944368900976}}};
constexpr Matrix kXyzFromA98 = {{{0.5766690429101305, 0.1855582379065463, 0.1882286462349947},
                                 {0.29734497525053605, 0.6273635662554661, 0.07529145849399788},
                                 {0.02703136138641234, 0.07068885253582723, 0.9913375368376388}}};
constexpr Matrix kXyzFromRec2020 = {{{0.6369580483012914, 0.14461690358620832, 0.1688809751641721},
                                     {0.2627002120112671, 0.6779980715188708, 0.05930171646986196},
                                     {0.0, 0.028072693049087428, 1.060985057710791}}};
constexpr Matrix kXyzFromProPhoto = {{{0.7977604896723027, 0.13518583717574031, 0.0313493495815248},
                                      {0.2880711282292934, 0.7118432178101014, 0.00008565396060525902},
                                      {0.0, 0.0, 0.8251046025104601}}};
constexpr Matrix kD50FromD65 = {{{1.0479297925449969, 0.022946870601609652, -0.05019226628920524},
                                 {0.02962780877005599, 0.9904344267538799, -0.017073799063418826},
                                 {-0.009243040646204504, 0.015055191490298152, 0.7518742814281371}}};
constexpr Matrix kLmsFromOklab = {
  {{1.0, 0.3963377774, 0.2158037573}, {1.0, -0.1055613458, -0.0638541728}, {1.0, -0.0894841775, -1.2914855480}}};
constexpr Matrix kLinearSrgbFromLms = {{{4.0767416621, -3.3077115913, 0.2309699292},
                                        {-1.2684380046, 2.6097574011, -0.3413193965},
                                        {-0.0041960863, -0.7034186147, 1.7076147010}}};

/// A curve of 0 to 1, mirrored below 0.
template <class Curve>
Triple Mirrored(const Triple &v, Curve curve)
{
  const auto mirrored = [&](double value) { return std::copysign(curve(std::abs(value)), value); };
  return {mirrored(v[0]), mirrored(v[1]), mirrored(v[2])};
}

Swatch OfLinearSrgb(const Triple &linear)
{
  const Triple encoded = Mirrored(linear, Formulas::SrgbFromLinear);
  return RgbSwatch({}, encoded[0], encoded[1], encoded[2]);
}

Swatch OfXyzD50(const Triple &xyz)
{
  Triple linear;
  for (std::size_t i = 0; i < 3; ++i)
    linear[i] = Formulas::RowTimes(Formulas::kLinearSrgbFromXyz[i], xyz[0], xyz[1], xyz[2]);
  return OfLinearSrgb(linear);
}

Swatch LabOfXyzD50(const Triple &xyz)
{
  const Formulas::Lab lab = Formulas::CieLabFromXyz({xyz[0], xyz[1], xyz[2]});
  return LabSwatch({}, lab.l, lab.a, lab.b);
}

/// L, chroma and degrees as L, a, b.
Triple FromPolar(const Triple &v)
{
  const double angle = std::fmod(v[2], 360.0) * std::numbers::pi / 180.0;
  return {v[0], v[1] * std::cos(angle), v[1] * std::sin(angle)};
}

/// A full hue, degrees: red, green, blue of 0 to 1.
Triple PureHue(double degrees)
{
  const double hue = degrees - 360.0 * std::floor(degrees / 360.0);
  const auto channel = [hue](double peak) {
    const double away = std::abs(std::remainder(hue - peak, 360.0));
    return std::clamp(2.0 - away / 60.0, 0.0, 1.0);
  };
  return {channel(0.0), channel(120.0), channel(240.0)};
}

Swatch OfSrgb(const Triple &v)
{
  return RgbSwatch({}, v[0], v[1], v[2]);
}

Swatch OfLinear(const Triple &v)
{
  return OfLinearSrgb(v);
}

/// c = l + (hue - 1/2) * s * (1 - |2 l - 1|)
Swatch OfHsl(const Triple &v)
{
  const Triple hue = PureHue(v[0]);
  const double l = v[2] / 100.0;
  const double chroma = v[1] / 100.0 * (1.0 - std::abs(2.0 * l - 1.0));
  return RgbSwatch({}, l + (hue[0] - 0.5) * chroma, l + (hue[1] - 0.5) * chroma, l + (hue[2] - 0.5) * chroma);
}

/// c = hue * (1 - white - black) + white; where white and black are more than all, a gray in their ratio
Swatch OfHwb(const Triple &v)
{
  const double sum = std::max((v[1] + v[2]) / 100.0, 1.0);
  const double white = v[1] / 100.0 / sum;
  const double rest = 1.0 - white - v[2] / 100.0 / sum;
  const Triple hue = PureHue(v[0]);
  return RgbSwatch({}, hue[0] * rest + white, hue[1] * rest + white, hue[2] * rest + white);
}

Swatch OfDisplayP3(const Triple &v)
{
  return OfXyzD50(Times(kD50FromD65, Times(kXyzFromP3, Mirrored(v, Formulas::LinearFromSrgb))));
}

Swatch OfA98(const Triple &v)
{
  const Triple linear = Mirrored(v, [](double c) { return std::pow(c, 563.0 / 256.0); });
  return OfXyzD50(Times(kD50FromD65, Times(kXyzFromA98, linear)));
}

Swatch OfProPhoto(const Triple &v)
{
  const Triple linear = Mirrored(v, [](double c) { return c <= 16.0 / 512.0 ? c / 16.0 : std::pow(c, 1.8); });
  return OfXyzD50(Times(kXyzFromProPhoto, linear));
}

Swatch OfRec2020(const Triple &v)
{
  const Triple linear = Mirrored(v, [](double c) {
    constexpr double kAlpha = 1.09929682680944;
    constexpr double kBeta = 0.018053968510807;
    return c < kBeta * 4.5 ? c / 4.5 : std::pow((c + kAlpha - 1.0) / kAlpha, 1.0 / 0.45);
  });
  return OfXyzD50(Times(kD50FromD65, Times(kXyzFromRec2020, linear)));
}

Swatch OfOklab(const Triple &v)
{
  Triple lms = Times(kLmsFromOklab, v);
  for (double &cone : lms)
    cone = cone * cone * cone;
  return OfLinearSrgb(Times(kLinearSrgbFromLms, lms));
}

Swatch OfOklch(const Triple &v)
{
  return OfOklab(FromPolar(v));
}

Swatch OfLab(const Triple &v)
{
  return LabSwatch({}, v[0], v[1], v[2]);
}

Swatch OfLch(const Triple &v)
{
  return OfLab(FromPolar(v));
}

Swatch OfXyz65(const Triple &v)
{
  return LabOfXyzD50(Times(kD50FromD65, v));
}

struct Range
{
  double least;
  double most;
};

struct Space
{
  std::string_view name;
  Range ranges[3];
  Swatch (*make)(const Triple &components);
};

constexpr Range kLight = {-kMostBeyondRgb, 1.0 + kMostBeyondRgb};
constexpr Range kDegrees = {-1e6, 1e6};
constexpr Range kPercent = {0.0, 100.0};
constexpr Range kOpponent = {-160.0, 160.0};
constexpr Range kOkOpponent = {-0.6, 0.6};
constexpr Range kXyz = {-1.0, 2.0};

constexpr Space kSpaces[] = {
  {"srgb", {kLight, kLight, kLight}, OfSrgb},
  {"srgb-linear", {kLight, kLight, kLight}, OfLinear},
  {"hsl", {kDegrees, kPercent, kPercent}, OfHsl},
  {"hwb", {kDegrees, kPercent, kPercent}, OfHwb},
  {"display-p3", {kLight, kLight, kLight}, OfDisplayP3},
  {"a98-rgb", {kLight, kLight, kLight}, OfA98},
  {"prophoto-rgb", {kLight, kLight, kLight}, OfProPhoto},
  {"rec2020", {kLight, kLight, kLight}, OfRec2020},
  {"oklab", {{0.0, 1.0}, kOkOpponent, kOkOpponent}, OfOklab},
  {"oklch", {{0.0, 1.0}, {0.0, 0.6}, kDegrees}, OfOklch},
  {"lab", {kPercent, kOpponent, kOpponent}, OfLab},
  {"lch", {kPercent, {0.0, 230.0}, kDegrees}, OfLch},
  {"xyz", {kXyz, kXyz, kXyz}, OfXyz65},
  {"xyz-d65", {kXyz, kXyz, kXyz}, OfXyz65},
  {"xyz-d50", {kXyz, kXyz, kXyz}, LabOfXyzD50},
};

} // namespace

std::optional<Swatch> SwatchOfCssSpace(std::string_view space, const Triple &components, std::string &reason)
{
  const auto *const row =
    std::find_if(std::begin(kSpaces), std::end(kSpaces), [&](const Space &each) { return each.name == space; });
  if (row == std::end(kSpaces)) {
    reason = "the colour space \"" + std::string(space.substr(0, 40)) + "\" is not known";
    return std::nullopt;
  }
  bool isWithin = true;
  for (std::size_t i = 0; i < 3; ++i)
    isWithin = isWithin && components[i] >= row->ranges[i].least && components[i] <= row->ranges[i].most;
  if (isWithin) {
    Swatch swatch = row->make(components);
    for (std::size_t i = 0; swatch.model == SwatchModel::Rgb && i < 3; ++i)
      isWithin = isWithin && std::abs(swatch.values[i] - 0.5) <= 0.5 + kMostBeyondRgb;
    if (isWithin)
      return swatch;
  }
  reason = "a component is out of the range of " + std::string(space);
  return std::nullopt;
}

} // namespace ZelClr
