#include "zelclr/colorsystem/internal/pipeline_transform.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace ColorSystem::Internal {

namespace {

/// Pixels of some bytes that become words, without flags, and back.
class Words
{
public:
  explicit Words(const PixelFormat &format)
    : channels_(format.ColourChannels()),
      step_(format.BytesPerPixel()),
      isByte_(format.BytesPerSample() == 1),
      isReversed_(format.IsReversed())
  {}

  void Read(const std::uint8_t *pixels, std::uint16_t *words, std::size_t count) const
  {
    for (; count-- > 0; pixels += step_, words += channels_) {
      for (unsigned place = 0; place < channels_; ++place) {
        std::uint16_t word;
        if (isByte_)
          word = static_cast<std::uint16_t>(pixels[place] * 257);
        else
          std::memcpy(&word, pixels + 2 * place, sizeof word);
        words[isReversed_ ? channels_ - 1 - place : place] = word;
      }
    }
  }
  void Write(const std::uint16_t *words, std::uint8_t *pixels, std::size_t count) const
  {
    for (; count-- > 0; pixels += step_, words += channels_) {
      for (unsigned place = 0; place < channels_; ++place) {
        const std::uint16_t word = words[isReversed_ ? channels_ - 1 - place : place];
        if (isByte_)
          pixels[place] = static_cast<std::uint8_t>((word * 255u + 32895u) >> 16); // by 257, to the nearest
        else
          std::memcpy(pixels + 2 * place, &word, sizeof word);
      }
    }
  }

private:
  unsigned channels_, step_;
  bool isByte_, isReversed_;
};

void CopyAlpha(const ColorData &source, ColorData &destination, std::uint32_t row)
{
  const unsigned from = source.GetPixelFormat().ColourChannels();
  const unsigned to = destination.GetPixelFormat().ColourChannels();
  for (std::uint32_t column = 0; column < source.GetWidth(); ++column)
    destination.SetSample(row, column, to, source.GetSample(row, column, from));
}

} // namespace

void ConvertByPipeline(const IccPipeline &pipeline, const ColorData &source, ColorData &destination)
{
  constexpr std::size_t kAtOnce = 1024;
  const Words from(source.GetPixelFormat()), to(destination.GetPixelFormat());
  const unsigned inSize = source.GetPixelFormat().BytesPerPixel();
  const unsigned outSize = destination.GetPixelFormat().BytesPerPixel();
  const bool carriesAlpha = source.GetPixelFormat().HasAlpha() && destination.GetPixelFormat().HasAlpha();
  std::vector<std::uint16_t> before(kAtOnce * 4), after(kAtOnce * 4);
  for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
    if (carriesAlpha && source.GetRow(row) != destination.GetRow(row))
      CopyAlpha(source, destination, row);
    for (std::size_t first = 0; first < source.GetWidth(); first += kAtOnce) {
      const std::size_t count = std::min(kAtOnce, source.GetWidth() - first);
      from.Read(source.GetRow(row) + first * inSize, before.data(), count);
      RunPipeline(pipeline, before.data(), after.data(), count);
      to.Write(after.data(), destination.GetRow(row) + first * outSize, count);
    }
  }
  if (!carriesAlpha)
    destination.FillAlpha();
}

bool AgreesWith(const ColorTransform &exact, const TransformOptions &options, const IccPipeline &pipeline)
{
  if (pipeline.inputs != options.source.ColourChannels() || pipeline.outputs != options.destination.ColourChannels())
    return false;
  constexpr std::uint32_t kColours = 768;
  constexpr unsigned kGrays = 256;
  const auto source = CreateColorData(options.source, kColours, 1);
  const auto expected = CreateColorData(options.destination, kColours, 1);
  const auto result = CreateColorData(options.destination, kColours, 1);
  std::mt19937 random(1);
  for (std::uint32_t i = 0; i < kColours; ++i) {
    for (unsigned channel = 0; channel < pipeline.inputs; ++channel) {
      const unsigned value = i < kGrays ? i : random() & 0xFF;
      source->SetSample(0, i, channel, static_cast<float>(value) / 255.0f);
    }
  }
  if (!exact.Convert(*source, *expected))
    return false;
  ConvertByPipeline(pipeline, *source, *result);

  // Both are rounded: where they differ it is by one sample, and seldom.
  const double sample = options.destination.BytesPerSample() == 1 ? 1.0 : 1.0 / 257.0;
  double sum = 0.0, most = 0.0;
  for (std::uint32_t i = 0; i < kColours; ++i) {
    for (unsigned channel = 0; channel < pipeline.outputs; ++channel) {
      const double apart =
        std::abs(double{expected->GetSample(0, i, channel)} - double{result->GetSample(0, i, channel)}) * 255.0;
      sum += apart;
      most = std::max(most, apart);
    }
  }
  return most <= std::max(sample, 0.3) + 1e-3 && sum <= 0.02 * kColours * pipeline.outputs;
}

} // namespace ColorSystem::Internal
