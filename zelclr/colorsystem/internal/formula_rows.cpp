// Compiled once for each instruction set that is worth having; the best one that the processor has runs.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "zelclr/colorsystem/internal/formula_rows.cpp"
#include "zelclr/colorsystem/internal/formula_rows.h"

#include "zelclr/colorsystem/internal/formula_steps.h"
#include "zelclr/convert/formulas/cmyk.h"
#include "zelclr/platform/internal/each_target.h"
// clang-format off: after the line above
#include "zelclr/colorsystem/internal/formula_planes-inl.h"
// clang-format on

#include <algorithm>

HWY_BEFORE_NAMESPACE();
namespace ColorSystem {
namespace HWY_NAMESPACE {

namespace Formulas = ZelClr::Formulas;

// --- Steps on floats -------------------------------------------------------------------------------------------------

using In = const float (*HWY_RESTRICT)[kBlock];
using Out = float (*HWY_RESTRICT)[kBlock];

HWY_INLINE void PutThree(Out out, std::size_t i, const Steps::Three<float> &three)
{
  out[0][i] = three.first;
  out[1][i] = three.second;
  out[2][i] = three.third;
}

HWY_INLINE float Sum(float a, float b)
{
  const float sum = a + b;
  return sum < 1.0f ? sum : 1.0f;
}

void CmykFromRgb(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const float r = in[0][i], g = in[1][i], b = in[2][i];
    const float most = r > g ? r : g;
    const float white = most > b ? most : b;
    PutThree(out, i, {white - r, white - g, white - b});
    out[3][i] = 1.0f - white;
  }
}

void RgbFromCmyk(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const float k = in[3][i];
    PutThree(out, i, {1.0f - Sum(in[0][i], k), 1.0f - Sum(in[1][i], k), 1.0f - Sum(in[2][i], k)});
  }
}

template <class Sample>
HWY_INLINE void NoOrangeNoGreen(Sample (*out)[kBlock], std::size_t count)
{
  std::fill_n(out[4], count, Sample{});
  std::fill_n(out[5], count, Sample{});
}

void HexachromeFromCmyk(In in, Out out, std::size_t count)
{
  for (std::size_t channel = 0; channel < 4; ++channel)
    std::copy_n(in[channel], count, out[channel]);
  NoOrangeNoGreen(out, count);
}

void CmykFromHexachrome(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const float orange = in[4][i], green = in[5][i];
    PutThree(out, i, {Sum(in[0][i], green), Sum(in[1][i], orange * 0.5f), Sum(Sum(in[2][i], orange), green)});
    out[3][i] = in[3][i];
  }
}

void HexachromeFromRgb(In in, Out out, std::size_t count)
{
  CmykFromRgb(in, out, count);
  NoOrangeNoGreen(out, count);
}

void GrayFromRgb(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    out[0][i] = 0.299f * in[0][i] + 0.587f * in[1][i] + 0.114f * in[2][i];
}

void RgbFromGray(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    PutThree(out, i, {in[0][i], in[0][i], in[0][i]});
}

void CmykFromGray(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    PutThree(out, i, {0.0f, 0.0f, 0.0f});
    out[3][i] = 1.0f - in[0][i];
  }
}

void HexachromeFromGray(In in, Out out, std::size_t count)
{
  CmykFromGray(in, out, count);
  NoOrangeNoGreen(out, count);
}

void LabFromGray(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const float f = Steps::LabCurve(Steps::Linear(in[0][i]));
    PutThree(out, i, {1.16f * f - 0.16f, Steps::kNeutral, Steps::kNeutral});
  }
}

void GrayFromLab(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    out[0][i] = Steps::Encoded(Steps::InverseLabCurve(Steps::LabY<float>(in[0][i])));
}

void XyzFromGray(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const float light = Steps::Linear(in[0][i]);
    PutThree(out, i, {light, light, light});
  }
}

void GrayFromXyz(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    out[0][i] = Steps::Encoded(in[1][i]);
}

void LabFromRgb(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const auto linear = Steps::LinearRgb(in[0][i], in[1][i], in[2][i]);
    PutThree(out, i, Steps::LabFromRatios(Steps::Times(Steps::kRatiosFromLinear, linear)));
  }
}

void RgbFromLab(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const auto ratios = Steps::RatiosFromLab<double>(in[0][i], in[1][i], in[2][i]);
    PutThree(out, i, Steps::EncodedRgb(Steps::Times(Steps::kLinearFromRatios, ratios)));
  }
}

void XyzFromRgb(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    PutThree(out, i, Steps::Times(Steps::kXyzFromLinear, Steps::LinearRgb(in[0][i], in[1][i], in[2][i])));
}

void RgbFromXyz(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const Steps::Three<double> xyz = {in[0][i], in[1][i], in[2][i]};
    PutThree(out, i, Steps::EncodedRgb(Steps::Times(Steps::kLinearFromXyz, xyz)));
  }
}

void LabFromXyz(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const Steps::Three<float> xyz = {in[0][i], in[1][i], in[2][i]};
    PutThree(out, i, Steps::LabFromRatios(Steps::Times(Steps::kRatiosFromXyz, xyz)));
  }
}

void XyzFromLab(In in, Out out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const auto ratios = Steps::RatiosFromLab<float>(in[0][i], in[1][i], in[2][i]);
    PutThree(out, i, Steps::Times(Steps::kXyzFromRatios, ratios));
  }
}

// --- Steps on bytes --------------------------------------------------------------------------------------------------
// What the float steps give, rounded; halves, which bytes do have, go up.

using BytesIn = const std::uint8_t (*HWY_RESTRICT)[kBlock];
using BytesOut = std::uint8_t (*HWY_RESTRICT)[kBlock];

void ByteCmykFromRgb(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const auto cmyk = Formulas::AddedInksFromRgb(in[0][i], in[1][i], in[2][i]);
    out[0][i] = static_cast<std::uint8_t>(cmyk.cyan);
    out[1][i] = static_cast<std::uint8_t>(cmyk.magenta);
    out[2][i] = static_cast<std::uint8_t>(cmyk.yellow);
    out[3][i] = static_cast<std::uint8_t>(cmyk.black);
  }
}

void ByteRgbFromCmyk(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const auto rgb = Formulas::RgbFromAddedInks(in[0][i], in[1][i], in[2][i], in[3][i]);
    out[0][i] = static_cast<std::uint8_t>(rgb.red);
    out[1][i] = static_cast<std::uint8_t>(rgb.green);
    out[2][i] = static_cast<std::uint8_t>(rgb.blue);
  }
}

void ByteGrayFromRgb(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i)
    out[0][i] = static_cast<std::uint8_t>(Steps::NearestGray(in[0][i], in[1][i], in[2][i]));
}

void ByteGrayFromCmyk(BytesIn in, BytesOut out, std::size_t count)
{
  alignas(64) std::uint8_t rgb[3][kBlock];
  ByteRgbFromCmyk(in, rgb, count);
  ByteGrayFromRgb(rgb, out, count);
}

void ByteHexachromeFromCmyk(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t channel = 0; channel < 4; ++channel)
    std::copy_n(in[channel], count, out[channel]);
  NoOrangeNoGreen(out, count);
}

void ByteCmykFromHexachrome(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const int orange = in[4][i], green = in[5][i];
    out[0][i] = static_cast<std::uint8_t>(std::min(in[0][i] + green, 255));
    out[1][i] = static_cast<std::uint8_t>(std::min(in[1][i] + (orange + 1) / 2, 255));
    out[2][i] = static_cast<std::uint8_t>(std::min(in[2][i] + orange + green, 255));
    out[3][i] = in[3][i];
  }
}

void ByteHexachromeFromRgb(BytesIn in, BytesOut out, std::size_t count)
{
  ByteCmykFromRgb(in, out, count);
  NoOrangeNoGreen(out, count);
}

void ByteRgbFromHexachrome(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const int orange = in[4][i], green = in[5][i], black = in[3][i];
    out[0][i] = static_cast<std::uint8_t>(255 - std::min(in[0][i] + green + black, 255));
    out[1][i] = static_cast<std::uint8_t>(255 - std::min(in[1][i] + orange / 2 + black, 255)); // half less is half up
    out[2][i] = static_cast<std::uint8_t>(255 - std::min(in[2][i] + orange + green + black, 255));
  }
}

void ByteGrayFromHexachrome(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t i = 0; i < count; ++i) {
    const int orange = in[4][i], green = in[5][i], black = in[3][i];
    const int red2 = 2 * (255 - std::min(in[0][i] + green + black, 255)); // twice the light
    const int green2 = 510 - std::min(2 * (in[1][i] + black) + orange, 510);
    const int blue2 = 2 * (255 - std::min(in[2][i] + orange + green + black, 255));
    out[0][i] = static_cast<std::uint8_t>(Steps::NearestGrayOfTwice(
      static_cast<std::uint16_t>(red2), static_cast<std::uint16_t>(green2), static_cast<std::uint16_t>(blue2)));
  }
}

void ByteRgbFromGray(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t channel = 0; channel < 3; ++channel)
    std::copy_n(in[0], count, out[channel]);
}

void ByteCmykFromGray(BytesIn in, BytesOut out, std::size_t count)
{
  for (std::size_t channel = 0; channel < 3; ++channel)
    std::fill_n(out[channel], count, std::uint8_t{0});
  for (std::size_t i = 0; i < count; ++i)
    out[3][i] = static_cast<std::uint8_t>(255 - in[0][i]);
}

void ByteHexachromeFromGray(BytesIn in, BytesOut out, std::size_t count)
{
  ByteCmykFromGray(in, out, count);
  NoOrangeNoGreen(out, count);
}

// --- Which steps -----------------------------------------------------------------------------------------------------

using enum ColorModel;

template <class Function>
struct StepRow
{
  ColorModel from;
  ColorModel to;
  Function *step;
};

using FloatStep = void(In, Out, std::size_t);
using ByteStep = void(BytesIn, BytesOut, std::size_t);

constexpr StepRow<FloatStep> kFloatSteps[] = {
  {Rgb, Cmyk, CmykFromRgb},
  {Rgb, Hexachrome, HexachromeFromRgb},
  {Rgb, Grayscale, GrayFromRgb},
  {Rgb, Lab, LabFromRgb},
  {Rgb, Xyz, XyzFromRgb},
  {Cmyk, Rgb, RgbFromCmyk},
  {Cmyk, Hexachrome, HexachromeFromCmyk},
  {Hexachrome, Cmyk, CmykFromHexachrome},
  {Grayscale, Rgb, RgbFromGray},
  {Grayscale, Cmyk, CmykFromGray},
  {Grayscale, Hexachrome, HexachromeFromGray},
  {Grayscale, Lab, LabFromGray},
  {Grayscale, Xyz, XyzFromGray},
  {Lab, Rgb, RgbFromLab},
  {Lab, Grayscale, GrayFromLab},
  {Lab, Xyz, XyzFromLab},
  {Xyz, Rgb, RgbFromXyz},
  {Xyz, Grayscale, GrayFromXyz},
  {Xyz, Lab, LabFromXyz},
};

constexpr StepRow<ByteStep> kByteSteps[] = {
  {Rgb, Cmyk, ByteCmykFromRgb},
  {Rgb, Hexachrome, ByteHexachromeFromRgb},
  {Rgb, Grayscale, ByteGrayFromRgb},
  {Cmyk, Rgb, ByteRgbFromCmyk},
  {Cmyk, Grayscale, ByteGrayFromCmyk},
  {Cmyk, Hexachrome, ByteHexachromeFromCmyk},
  {Hexachrome, Rgb, ByteRgbFromHexachrome},
  {Hexachrome, Cmyk, ByteCmykFromHexachrome},
  {Hexachrome, Grayscale, ByteGrayFromHexachrome},
  {Grayscale, Rgb, ByteRgbFromGray},
  {Grayscale, Cmyk, ByteCmykFromGray},
  {Grayscale, Hexachrome, ByteHexachromeFromGray},
};

template <class Rows>
auto FindStep(const Rows &rows, ColorModel from, ColorModel to)
{
  const auto row = std::find_if(std::begin(rows), std::end(rows),
                                [&](const auto &each) { return each.from == from && each.to == to; });
  return row == std::end(rows) ? nullptr : row->step;
}

struct Path
{
  FloatStep *steps[3];
  std::size_t length = 0;
};

/// Where no step leads straight on, six inks go on as four, and everything else by way of RGB.
Path PathOf(ColorModel from, ColorModel to)
{
  Path path;
  while (from != to) {
    const ColorModel between = from == Hexachrome ? Cmyk : Rgb;
    const ColorModel next = FindStep(kFloatSteps, from, to) != nullptr ? to : between;
    path.steps[path.length++] = FindStep(kFloatSteps, from, next);
    from = next;
  }
  return path;
}

// --- Samples and floats ----------------------------------------------------------------------------------------------

template <class Stored>
constexpr float kFullScale = std::is_floating_point_v<Stored> ? 1.0f : static_cast<float>(static_cast<Stored>(-1));

/// As GetSample; floats of colours are cut off to 0 to 1, NaN to 0.
template <class Stored>
void LoadFloats(const std::uint8_t *pixels, const Places &places, std::size_t count, float (*planes)[kBlock])
{
  if constexpr (std::is_floating_point_v<Stored>) {
    TakeApart<float>(pixels, places, count, planes);
    for (std::size_t channel = 0; channel < places.colours; ++channel) {
      float *plane = planes[channel];
      for (std::size_t i = 0; i < count; ++i)
        plane[i] = Steps::Cut(plane[i]);
    }
  } else {
    alignas(64) Stored stored[kMostChannels][kBlock];
    TakeApart<Stored>(pixels, places, count, stored);
    for (std::size_t channel = 0; channel < places.channels; ++channel) {
      const Stored *HWY_RESTRICT from = stored[channel];
      float *HWY_RESTRICT to = planes[channel];
      for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<float>(from[i]) / kFullScale<Stored>;
    }
  }
}

/// As SetSample, of colours cut off to 0 to 1. In doubles the product and the sum are exact, so that this rounds as
/// lround does.
template <class Stored>
void StoreFloats(float (*planes)[kBlock], const Places &places, std::size_t count, std::uint8_t *pixels)
{
  if constexpr (std::is_floating_point_v<Stored>) {
    for (std::size_t channel = 0; channel < places.colours; ++channel) {
      float *plane = planes[channel];
      for (std::size_t i = 0; i < count; ++i)
        plane[i] = Steps::Cut(plane[i]);
    }
    PutTogether<float>(planes, places, count, pixels);
  } else {
    alignas(64) Stored stored[kMostChannels][kBlock];
    for (std::size_t channel = 0; channel < places.channels; ++channel) {
      const float *HWY_RESTRICT from = planes[channel];
      Stored *HWY_RESTRICT to = stored[channel];
      for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<Stored>(
          static_cast<std::int32_t>(static_cast<double>(Steps::Cut(from[i])) * double{kFullScale<Stored>} + 0.5));
    }
    PutTogether<Stored>(stored, places, count, pixels);
  }
}

// --- Rows ------------------------------------------------------------------------------------------------------------

/// KEPT: from CMYK to RGB alpha becomes full even where the source has it, where one would expect it to be copied;
/// callers depend on it.
bool CopiesAlpha(const PixelFormat &from, const PixelFormat &to)
{
  return from.HasAlpha() && to.HasAlpha() && !(from.model == Cmyk && to.model == Rgb);
}

/// Without a step samples only change places.
void ConvertByteRow(const FormulaRows &rows, const std::uint8_t *source, std::uint8_t *destination, std::size_t width,
                    ByteStep *step)
{
  const Places from(rows.from), to(rows.to);
  alignas(64) std::uint8_t in[kMostChannels][kBlock];
  alignas(64) std::uint8_t out[kMostChannels][kBlock];
  const bool fills = to.alpha && !CopiesAlpha(rows.from, rows.to);
  ForEachBlock(
    source, destination, width, from, to,
    [&](const std::uint8_t *pixels, std::size_t count) HWY_ATTR { TakeApart<std::uint8_t>(pixels, from, count, in); },
    [&](std::uint8_t *pixels, std::size_t count) HWY_ATTR {
      if (step != nullptr)
        step(in, out, count);
      const auto result = step != nullptr ? out : in;
      if (fills)
        std::fill_n(result[to.colours], count, std::uint8_t{255});
      PutTogether<std::uint8_t>(result, to, count, pixels);
    });
}

void ConvertFloatRow(const FormulaRows &rows, const std::uint8_t *source, std::uint8_t *destination, std::size_t width,
                     const Path &path)
{
  const Places from(rows.from), to(rows.to);
  alignas(64) float planes[2][kMostChannels][kBlock];
  alignas(64) float alpha[kBlock];
  const bool copies = CopiesAlpha(rows.from, rows.to);
  const auto load = from.bytes == from.channels       ? LoadFloats<std::uint8_t>
                    : from.bytes == 2 * from.channels ? LoadFloats<std::uint16_t>
                                                      : LoadFloats<float>;
  const auto store = to.bytes == to.channels       ? StoreFloats<std::uint8_t>
                     : to.bytes == 2 * to.channels ? StoreFloats<std::uint16_t>
                                                   : StoreFloats<float>;
  ForEachBlock(
    source, destination, width, from, to,
    [&](const std::uint8_t *pixels, std::size_t count) HWY_ATTR {
      load(pixels, from, count, planes[0]);
      if (copies)
        std::copy_n(planes[0][from.colours], count, alpha);
    },
    [&](std::uint8_t *pixels, std::size_t count) HWY_ATTR {
      for (std::size_t i = 0; i < path.length; ++i)
        path.steps[i](planes[i % 2], planes[1 - i % 2], count);
      float(*result)[kBlock] = planes[path.length % 2];
      if (copies)
        std::copy_n(alpha, count, result[to.colours]);
      else if (to.alpha)
        std::fill_n(result[to.colours], count, 1.0f);
      store(result, to, count, pixels);
    });
}

void Convert(const FormulaRows &rows)
{
  ByteStep *const step = FindStep(kByteSteps, rows.from.model, rows.to.model);
  const bool bytes = rows.from.BytesPerSample() == 1 && rows.to.BytesPerSample() == 1 &&
                     (step != nullptr || rows.from.model == rows.to.model);
  const Path path = PathOf(rows.from.model, rows.to.model);
  // Rows without a gap between them are one long row.
  const bool whole = rows.sourceStride == rows.width * rows.from.BytesPerPixel() &&
                     rows.destinationStride == rows.width * rows.to.BytesPerPixel();
  const std::size_t width = whole ? rows.width * rows.height : rows.width;
  const std::size_t height = whole ? 1 : rows.height;
  for (std::size_t y = 0; y < height; ++y) {
    const std::uint8_t *source = rows.source + y * rows.sourceStride;
    std::uint8_t *destination = rows.destination + y * rows.destinationStride;
    if (bytes)
      ConvertByteRow(rows, source, destination, width, step);
    else
      ConvertFloatRow(rows, source, destination, width, path);
  }
}

} // namespace HWY_NAMESPACE
} // namespace ColorSystem
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ColorSystem {

HWY_EXPORT(Convert);

void ConvertFormulaRows(const FormulaRows &rows)
{
  HWY_DYNAMIC_DISPATCH(Convert)(rows);
}

} // namespace ColorSystem
#endif
