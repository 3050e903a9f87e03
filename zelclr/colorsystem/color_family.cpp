#include "zelclr/colorsystem/internal/color_family.h"

#include <algorithm>
#include <cmath>

namespace ColorSystem::Internal {

namespace {

constexpr double kDegreesPerUnit = 255.0;

/// The hue of R, G, B as a channel, 0 for grays.
double HueOf(const Channels &rgb)
{
  const auto [red, green, blue, x, y, z] = rgb;
  const double most = std::max({red, green, blue});
  const double range = most - std::min({red, green, blue});
  if (!(range > 0.0))
    return 0.0;
  double sixths = 0.0;
  if (most == red)
    sixths = (green - blue) / range;
  else if (most == green)
    sixths = 2.0 + (blue - red) / range;
  else
    sixths = 4.0 + (red - green) / range;
  return (sixths < 0.0 ? sixths + 6.0 : sixths) * 60.0 / kDegreesPerUnit;
}

/// The pure colour of a hue: each component 0 to 1.
Channels PureColour(double hue)
{
  const double turn = std::fmod(hue * kDegreesPerUnit, 360.0) / 60.0;
  const double sixths = turn < 0.0 ? turn + 6.0 : turn;
  const auto component = [](double distance) { return std::clamp(distance, 0.0, 1.0); };
  return {component(std::abs(sixths - 3.0) - 1.0), component(2.0 - std::abs(sixths - 2.0)),
          component(2.0 - std::abs(sixths - 4.0))};
}

Channels HsvFromRgb(const Channels &rgb)
{
  const double value = std::max({rgb[0], rgb[1], rgb[2]});
  const double range = value - std::min({rgb[0], rgb[1], rgb[2]});
  return {HueOf(rgb), value > 0.0 ? range / value : 0.0, value};
}

Channels RgbFromHsv(const Channels &hsv)
{
  Channels rgb = PureColour(hsv[0]);
  for (double &component : rgb)
    component = hsv[2] * (1.0 - hsv[1] * (1.0 - component));
  return rgb;
}

Channels HlsFromRgb(const Channels &rgb)
{
  const double most = std::max({rgb[0], rgb[1], rgb[2]});
  const double least = std::min({rgb[0], rgb[1], rgb[2]});
  const double lightness = (most + least) / 2.0;
  const double widest = 1.0 - std::abs(2.0 * lightness - 1.0);
  return {HueOf(rgb), lightness, widest > 0.0 ? (most - least) / widest : 0.0};
}

Channels RgbFromHls(const Channels &hls)
{
  const double chroma = (1.0 - std::abs(2.0 * hls[1] - 1.0)) * hls[2];
  Channels rgb = PureColour(hls[0]);
  for (double &component : rgb)
    component = hls[1] + chroma * (component - 0.5);
  return rgb;
}

Channels CmyFromCmyk(const Channels &cmyk)
{
  const auto without = [&cmyk](double ink) { return 1.0 - (1.0 - ink) * (1.0 - cmyk[3]); };
  return {without(cmyk[0]), without(cmyk[1]), without(cmyk[2])};
}

Channels CmykFromCmy(const Channels &cmy)
{
  return {cmy[0], cmy[1], cmy[2], 0.0};
}

struct Way
{
  ColorModel from;
  ColorModel to;
  Channels (*convert)(const Channels &);
};

constexpr Way kWays[] = {
  {ColorModel::Rgb, ColorModel::Hsv, HsvFromRgb},   {ColorModel::Hsv, ColorModel::Rgb, RgbFromHsv},
  {ColorModel::Rgb, ColorModel::Hls, HlsFromRgb},   {ColorModel::Hls, ColorModel::Rgb, RgbFromHls},
  {ColorModel::Cmyk, ColorModel::Cmy, CmyFromCmyk}, {ColorModel::Cmy, ColorModel::Cmyk, CmykFromCmy},
};

} // namespace

Channels WithinFamily(ColorModel from, ColorModel to, const Channels &channels)
{
  if ((from == ColorModel::Hsv && to == ColorModel::Hls) || (from == ColorModel::Hls && to == ColorModel::Hsv))
    return WithinFamily(ColorModel::Rgb, to, WithinFamily(from, ColorModel::Rgb, channels));
  const auto *const way =
    std::find_if(std::begin(kWays), std::end(kWays), [&](const Way &w) { return w.from == from && w.to == to; });
  return way == std::end(kWays) ? channels : way->convert(channels);
}

} // namespace ColorSystem::Internal
