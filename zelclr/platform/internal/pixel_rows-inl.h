// Rows of packed pixels, taken apart into planes of single components and put together again, for one instruction set.
//
// A conversion between the planes is a plain loop over a formula, which the compiler vectorises for the instruction
// set; only the packing, at which compilers are poor, is written out.
#if defined(ZELCLR_PIXEL_ROWS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZELCLR_PIXEL_ROWS_INL_H
#undef ZELCLR_PIXEL_ROWS_INL_H
#else
#define ZELCLR_PIXEL_ROWS_INL_H
#endif

#include <hwy/highway.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ZelClr {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Pixels that are converted together: a multiple of every vector's length; the planes stay in the first-level cache.
constexpr std::size_t kBlock = 256;

template <std::size_t kComponents>
HWY_INLINE void LoadPlanes(const std::uint8_t *HWY_RESTRICT packed, std::uint8_t (*HWY_RESTRICT planes)[kBlock])
{
  const hn::ScalableTag<std::uint8_t> d;
  using V = hn::Vec<decltype(d)>;
  for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
    if constexpr (kComponents == 3) {
      V a, b, c;
      hn::LoadInterleaved3(d, packed + 3 * i, a, b, c);
      hn::Store(a, d, planes[0] + i);
      hn::Store(b, d, planes[1] + i);
      hn::Store(c, d, planes[2] + i);
    } else {
      static_assert(kComponents == 4);
      V a, b, c, e;
      hn::LoadInterleaved4(d, packed + 4 * i, a, b, c, e);
      hn::Store(a, d, planes[0] + i);
      hn::Store(b, d, planes[1] + i);
      hn::Store(c, d, planes[2] + i);
      hn::Store(e, d, planes[3] + i);
    }
  }
}

template <std::size_t kComponents>
HWY_INLINE void StorePlanes(const std::uint8_t (*HWY_RESTRICT planes)[kBlock], std::uint8_t *HWY_RESTRICT packed)
{
  const hn::ScalableTag<std::uint8_t> d;
  if constexpr (kComponents == 1) {
    std::memcpy(packed, planes[0], kBlock);
    return;
  }
  for (std::size_t i = 0; i < kBlock; i += hn::Lanes(d)) {
    if constexpr (kComponents == 3) {
      hn::StoreInterleaved3(hn::Load(d, planes[0] + i), hn::Load(d, planes[1] + i), hn::Load(d, planes[2] + i), d,
                            packed + 3 * i);
    } else if constexpr (kComponents == 4) {
      hn::StoreInterleaved4(hn::Load(d, planes[0] + i), hn::Load(d, planes[1] + i), hn::Load(d, planes[2] + i),
                            hn::Load(d, planes[3] + i), d, packed + 4 * i);
    }
  }
}

/// Converts a row by `convert(in planes, out planes)`, which works on kBlock pixels; the last block is filled up with
/// zeros, and nothing beyond the row is read or written.
template <std::size_t kIn, std::size_t kOut, class Convert>
HWY_INLINE void ConvertRow(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels, Convert convert)
{
  alignas(64) std::uint8_t in[kIn][kBlock];
  alignas(64) std::uint8_t out[kOut][kBlock];
  for (; pixels >= kBlock; pixels -= kBlock) {
    LoadPlanes<kIn>(source, in);
    convert(in, out);
    StorePlanes<kOut>(out, destination);
    source += kIn * kBlock;
    destination += kOut * kBlock;
  }
  if (pixels == 0)
    return;
  std::uint8_t lastIn[kIn * kBlock] = {};
  std::uint8_t lastOut[kOut * kBlock];
  std::memcpy(lastIn, source, kIn * pixels);
  LoadPlanes<kIn>(lastIn, in);
  convert(in, out);
  StorePlanes<kOut>(out, lastOut);
  std::memcpy(destination, lastOut, kOut * pixels);
}

} // namespace HWY_NAMESPACE
} // namespace ZelClr
HWY_AFTER_NAMESPACE();

#endif
