// A conversion of 8-bit RGB that is curves, a matrix and curves again, as tables.
//
// Threads: values. Errors: none.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace ColorSystem::Internal {

struct BakedMatrix
{
  /// Linear light is counted in 65535ths of full scale and 16ths of these; what lies beyond is cut off when the inputs'
  /// shares are summed up.
  static constexpr int kLightBits = 4;
  /// Below so many 65535ths light is looked up as it is, above by four at a time: in the dark a value has little light.
  static constexpr unsigned kDark = 4096;
  static constexpr std::uint16_t EntryOf(unsigned light)
  {
    return static_cast<std::uint16_t>(light < kDark ? light : kDark + (light - kDark) / 4);
  }

  using Light = std::array<std::int32_t, 4>; // of three outputs
  using Encoding = std::array<std::uint8_t, kDark + (65536 - kDark) / 4>;

  /// What a value of an input adds to the outputs; the first input's share has 32767.5 less, so that sums fit into
  /// signed numbers and are rounded when their lower bits are dropped. Inputs and outputs have the order of the pixels'
  /// memory.
  std::array<std::array<Light, 256>, 3> shares;
  /// The 8-bit values of light, of each output; one table where the curves are the same.
  std::array<std::shared_ptr<const Encoding>, 3> encodings;
};

} // namespace ColorSystem::Internal
