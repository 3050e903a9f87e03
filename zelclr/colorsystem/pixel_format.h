// How the pixels of a buffer lie in memory.
//
//   sample type   8 bits and Packed32            16 bits and Packed64                Float32
//   Rgb           R G B                          R R G G B B                         R R R R G G G G B B B B
//     reversed    B G R                          B B G G R R                         ...
//     alpha       R G B A                        R R G G B B A A
//     both        B G R A                        B B G G R R A A
//   Cmyk          C M Y K                        C C M M Y Y K K
//     reversed    as without                     K K Y Y M M C C
//
// Samples of 16 bits and floats have the processor's byte order (little-endian). Pixels follow each other without gaps
// in every type. Packed32 and Packed64 are rows of 32-bit and 64-bit words that carry four samples of 8 and 16 bits
// each, the first in the low byte, filled without gaps from pixel to pixel:
//
//   Packed32, Rgb     word 0: R0 G0 B0 R1   word 1: G1 B1 R2 G2   ...      three bytes to a pixel
//   Packed32, RgbA    word 0: R0 G0 B0 A0   word 1: R1 G1 B1 A1   ...      a word to a pixel
//   Packed64, Cmyk    word 0: C0 M0 Y0 K0   word 1: C1 M1 Y1 K1   ...      a word to a pixel
//
// so that their bytes are those of the 8-bit and the 16-bit type, for addresses, strides and engines alike.
//
// The flags mean something where the drawing shows it. Elsewhere: of 8-bit samples they are ignored and of no effect on
// the layout; 16-bit samples of any model, and floats, can be addressed with both flags, but see the engines for what
// they can convert.
//
// Threads and errors: values.
#pragma once

#include "zelclr/colorsystem/color_model.h"

#include <bit>
#include <cstdint>

namespace ColorSystem {

static_assert(std::endian::native == std::endian::little);

/// Frozen: callers store the numbers.
enum class SampleType : std::uint32_t
{
  UInt8 = 0,    ///< full scale 255
  UInt16 = 1,   ///< full scale 65535
  Float32 = 2,  ///< full scale 1
  Packed32 = 3, ///< four 8-bit samples to a word
  Packed64 = 4  ///< four 16-bit samples to a word
};

constexpr unsigned BytesPerSample(SampleType type)
{
  switch (type) {
  case SampleType::UInt8:
  case SampleType::Packed32:
    return 1;
  case SampleType::UInt16:
  case SampleType::Packed64:
    return 2;
  case SampleType::Float32:
    return 4;
  }
  return 0;
}

struct PixelFormat
{
  ColorModel model = ColorModel::Rgb;
  SampleType type = SampleType::UInt8;
  bool reversed = false; ///< as asked for; IsReversed says what it does
  bool alpha = false;    ///< likewise; HasAlpha

  constexpr unsigned BytesPerSample() const { return ColorSystem::BytesPerSample(type); }
  constexpr bool IsReversed() const { return reversed && FlagsCount(); }
  constexpr bool HasAlpha() const { return alpha && FlagsCount(); }
  /// Without alpha.
  unsigned ColourChannels() const { return ChannelCountOfColorModel(model, model == ColorModel::Xyz ? 3 : 1); }
  unsigned ChannelsPerPixel() const { return ColourChannels() + (HasAlpha() ? 1 : 0); }
  unsigned BytesPerPixel() const { return ChannelsPerPixel() * BytesPerSample(); }

  friend constexpr bool operator==(const PixelFormat &, const PixelFormat &) = default;

private:
  constexpr bool FlagsCount() const { return model == ColorModel::Rgb || BytesPerSample() > 1; }
};

} // namespace ColorSystem
