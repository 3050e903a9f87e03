#include "zelclr/colour/fills/internal/blend_path.h"

#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colour/fills/internal/hue_blend.h"

#include <vector>

namespace ZelClr {

namespace {

using Numbers = std::vector<double>;

RealRgb RgbOf(const CLR_COLORSPEC &rgb48)
{
  return {rgb48.GetRed16() / 65535.0, rgb48.GetGreen16() / 65535.0, rgb48.GetBlue16() / 65535.0};
}

CLR_COLORSPEC Rgb48Of(const RealRgb &rgb)
{
  const auto word = [](double component) { return static_cast<std::uint16_t>(component * 65535.0 + 0.5); };
  return CLR_COLORSPEC::MakeRGB48(word(rgb.red), word(rgb.green), word(rgb.blue));
}

void BlendStraight(std::span<const double> from, std::span<const double> to, std::span<const double> weights,
                   double *column)
{
  for (std::size_t i = 0; i < from.size(); ++i) {
    const double start = from[i], rise = to[i] - from[i], end = to[i];
    for (const double weight : weights)
      *column++ = weight < 1.0 ? start + weight * rise : end;
  }
}

/// Round the wheel in RGB, and from there to the model of the space. What the way there and back makes of the two ends
/// is another colour where that model has no one reading in RGB, as inks have none: the blend from the one difference
/// to the other is added, so that the ends are what they were and nothing jumps beside them.
bool BlendHue(const BlendSpace &space, std::span<const double> from, std::span<const double> to, bool back,
              std::span<const double> weights, ColorSystem::ColorContext &context, std::span<double> columns)
{
  const ColorSystem::ColorConverter converter(context, context);
  CLR_COLORSPEC ends[2], lights[2];
  space.Store(from, std::span(ends, 1));
  space.Store(to, std::span(ends + 1, 1));
  if (!converter.ConvertList(ends, lights, ClrModel::Rgb48))
    return false;
  const HueBlend way(RgbOf(lights[0]), RgbOf(lights[1]), back);

  std::vector<CLR_COLORSPEC> colours;
  colours.reserve(weights.size() + 2);
  for (const double weight : weights)
    colours.push_back(Rgb48Of(way.At(weight)));
  colours.push_back(Rgb48Of(way.At(0.0)));
  colours.push_back(Rgb48Of(way.At(1.0)));
  if (!converter.ConvertList(colours, colours, space.Model()))
    return false;

  const std::size_t size = space.Size();
  Numbers numbers(size), start(size), end(size);
  if (!space.Load(colours[weights.size()], context, start) || !space.Load(colours[weights.size() + 1], context, end))
    return false;
  for (std::size_t i = 0; i < weights.size(); ++i) {
    if (!space.Load(colours[i], context, numbers))
      return false;
    const double weight = weights[i];
    for (std::size_t c = 0; c < size; ++c) {
      const double mended = numbers[c] + (1.0 - weight) * (from[c] - start[c]) + weight * (to[c] - end[c]);
      columns[c * weights.size() + i] = weight <= 0.0   ? from[c]
                                        : weight >= 1.0 ? to[c]
                                                        : std::min(mended, space.FullScale());
    }
  }
  return true;
}

} // namespace

bool BlendBetween(const BlendSpace &space, std::span<const double> from, std::span<const double> to, ClrBlendMode mode,
                  std::span<const double> weights, ColorSystem::ColorContext &context, std::span<double> columns)
{
  if (space.HasHue() && (mode == ClrBlendMode_Hue || mode == ClrBlendMode_HueBack))
    return BlendHue(space, from, to, mode == ClrBlendMode_HueBack, weights, context, columns);
  BlendStraight(from, to, weights, columns.data());
  return true;
}

} // namespace ZelClr
