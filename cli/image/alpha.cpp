#include "cli/image/alpha.h"

#include <algorithm>

namespace cli {

void ConvertAlpha(std::size_t count, unsigned fromBytes, unsigned toBytes, const std::uint8_t *from, std::uint8_t *to)
{
  if (fromBytes == toBytes) {
    std::copy_n(from, count * fromBytes, to);
    return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (fromBytes == 1) {
      to[2 * i] = to[2 * i + 1] = from[i];
    } else {
      const unsigned value = from[2 * i] | static_cast<unsigned>(from[2 * i + 1]) << 8;
      to[i] = static_cast<std::uint8_t>((value + 128) / 257);
    }
  }
}

void FlattenOnWhite(std::size_t pixels, const ColorSystem::PixelFormat &format, const std::uint8_t *alpha,
                    std::uint8_t *colours)
{
  const unsigned channels = format.ColourChannels();
  const unsigned white = format.model == ColorSystem::ColorModel::Cmyk ? 0 : 255;
  for (std::size_t i = 0; i < pixels; ++i) {
    for (unsigned channel = 0; channel < channels; ++channel, ++colours)
      *colours = static_cast<std::uint8_t>((*colours * alpha[i] + white * (255u - alpha[i]) + 127) / 255);
  }
}

} // namespace cli
