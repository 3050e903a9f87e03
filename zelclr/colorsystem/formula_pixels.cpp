#include "zelclr/colorsystem/formula_pixels.h"

#include "zelclr/convert/formulas/srgb_lab.h"

#include <algorithm>
#include <array>
#include <vector>

namespace ColorSystem {

namespace {

namespace Formulas = ZelClr::Formulas;

using Pixel = std::array<float, 6>;

float Sum(float a, float b)
{
  return std::min(1.0f, a + b);
}

Pixel RgbFromCmyk(const Pixel &p)
{
  return {1.0f - Sum(p[0], p[3]), 1.0f - Sum(p[1], p[3]), 1.0f - Sum(p[2], p[3])};
}

Pixel CmykFromRgb(const Pixel &p)
{
  const float white = std::max({p[0], p[1], p[2]});
  return {white - p[0], white - p[1], white - p[2], 1.0f - white};
}

Pixel RgbFromGray(const Pixel &p)
{
  return {p[0], p[0], p[0]};
}

Pixel GrayFromRgb(const Pixel &p)
{
  return {0.299f * p[0] + 0.587f * p[1] + 0.114f * p[2]};
}

Pixel RgbFromLab(const Pixel &p)
{
  const Formulas::Lab lab = {p[0] * 100.0, p[1] * 255.0 - 128.0, p[2] * 255.0 - 128.0};
  const auto rgb = Formulas::SrgbFromXyz(Formulas::XyzFromCieLab(lab));
  return {static_cast<float>(rgb.red), static_cast<float>(rgb.green), static_cast<float>(rgb.blue)};
}

Pixel LabFromRgb(const Pixel &p)
{
  const auto lab = Formulas::CieLabFromXyz(Formulas::XyzFromSrgb(p[0], p[1], p[2]));
  return {static_cast<float>(lab.l / 100.0), static_cast<float>((lab.a + 128.0) / 255.0),
          static_cast<float>((lab.b + 128.0) / 255.0)};
}

Pixel CmykFromHexachrome(const Pixel &p)
{
  return {Sum(p[0], p[5]), Sum(p[1], p[4] / 2.0f), Sum(Sum(p[2], p[4]), p[5]), p[3]};
}

Pixel HexachromeFromCmyk(const Pixel &p)
{
  return {p[0], p[1], p[2], p[3], 0.0f, 0.0f};
}

Pixel Same(const Pixel &p)
{
  return p;
}

Pixel RgbFromHexachrome(const Pixel &p)
{
  return RgbFromCmyk(CmykFromHexachrome(p));
}

Pixel HexachromeFromRgb(const Pixel &p)
{
  return HexachromeFromCmyk(CmykFromRgb(p));
}

using Step = Pixel (*)(const Pixel &);

struct HubRow
{
  ColorModel model;
  Step toRgb;
  Step fromRgb;
};

constexpr HubRow kHub[] = {
  {ColorModel::Rgb, Same, Same},
  {ColorModel::Cmyk, RgbFromCmyk, CmykFromRgb},
  {ColorModel::Grayscale, RgbFromGray, GrayFromRgb},
  {ColorModel::Lab, RgbFromLab, LabFromRgb},
  {ColorModel::Hexachrome, RgbFromHexachrome, HexachromeFromRgb},
};

const HubRow *FindHub(ColorModel model)
{
  const auto *const row =
    std::find_if(std::begin(kHub), std::end(kHub), [&](const HubRow &candidate) { return candidate.model == model; });
  return row == std::end(kHub) ? nullptr : row;
}

/// First and second step of a pair.
std::pair<Step, Step> StepsOf(ColorModel from, ColorModel to)
{
  if (from == to)
    return {Same, Same};
  if (from == ColorModel::Cmyk && to == ColorModel::Hexachrome)
    return {HexachromeFromCmyk, Same};
  if (from == ColorModel::Hexachrome && to == ColorModel::Cmyk)
    return {CmykFromHexachrome, Same};
  return {FindHub(from)->toRgb, FindHub(to)->fromRgb};
}

} // namespace

bool HasFormula(ColorModel from, ColorModel to)
{
  return FindHub(from) != nullptr && FindHub(to) != nullptr;
}

bool ConvertByFormula(const ColorData &source, ColorData &destination)
{
  const PixelFormat &from = source.GetPixelFormat();
  const PixelFormat &to = destination.GetPixelFormat();
  if (!HasFormula(from.model, to.model) || source.GetWidth() != destination.GetWidth() ||
      source.GetHeight() != destination.GetHeight())
    return false;
  const auto [first, second] = StepsOf(from.model, to.model);
  const unsigned fromChannels = from.ChannelsPerPixel();
  const unsigned toColours = to.ColourChannels();
  std::vector<std::array<float, 7>> row(source.GetWidth());
  for (std::uint32_t y = 0; y < source.GetHeight(); ++y) {
    // A row is read whole before it is written, for views of one buffer.
    for (std::uint32_t x = 0; x < source.GetWidth(); ++x) {
      for (unsigned channel = 0; channel < fromChannels; ++channel)
        row[x][channel] = source.GetSample(y, x, channel);
    }
    for (std::uint32_t x = 0; x < source.GetWidth(); ++x) {
      Pixel pixel{};
      std::copy_n(row[x].begin(), from.ColourChannels(), pixel.begin());
      const Pixel converted = second(first(pixel));
      for (unsigned channel = 0; channel < toColours; ++channel)
        destination.SetSample(y, x, channel, std::clamp(converted[channel], 0.0f, 1.0f));
      if (to.HasAlpha())
        destination.SetSample(y, x, toColours, from.HasAlpha() ? row[x][from.ColourChannels()] : 1.0f);
    }
  }
  return true;
}

} // namespace ColorSystem
