// Compiled once for each instruction set that is worth having; the best one that the processor has runs.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "zelclr/colour/fills/internal/tint_rows.cpp"
#include "zelclr/colour/fills/internal/tint_rows.h"

#include "zelclr/platform/internal/each_target.h"
#include "zelclr/platform/internal/pixel_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ZelClr {
namespace HWY_NAMESPACE {

template <class Formula>
HWY_INLINE void Row(const Formula &formula, std::uint8_t *pixels, std::size_t count)
{
  ConvertRow<3, 3>(pixels, pixels, count, [formula](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i) {
      const Formulas::Rgb tinted = formula(in[2][i], in[1][i], in[0][i]);
      out[0][i] = static_cast<std::uint8_t>(tinted.blue);
      out[1][i] = static_cast<std::uint8_t>(tinted.green);
      out[2][i] = static_cast<std::uint8_t>(tinted.red);
    }
  });
}

void MixedRow(const TintFormulas::Mixed &formula, std::uint8_t *pixels, std::size_t count)
{
  Row(formula, pixels, count);
}

void ShiftedRow(const TintFormulas::Shifted &formula, std::uint8_t *pixels, std::size_t count)
{
  Row(formula, pixels, count);
}

void LitRow(const TintFormulas::Lit &formula, std::uint8_t *pixels, std::size_t count)
{
  Row(formula, pixels, count);
}

void InvertedRow(const TintFormulas::Inverted &formula, std::uint8_t *pixels, std::size_t count)
{
  Row(formula, pixels, count);
}

/// In three steps, for looking up is no work for vectors, and what stands before and behind it is.
void RampedRow(const TintFormulas::Ramped &formula, std::uint8_t *pixels, std::size_t count)
{
  const std::uint32_t *const ramp = formula.ramp->colours.data();
  const TintFormulas::Shares shares = formula.shares;
  ConvertRow<3, 3>(pixels, pixels, count, [ramp, shares](const auto *in, auto *out) HWY_ATTR {
    alignas(64) std::uint8_t grays[kBlock];
    alignas(64) std::uint32_t aims[kBlock];
    for (std::size_t i = 0; i < kBlock; ++i)
      grays[i] = static_cast<std::uint8_t>(Formulas::GrayFromRgb(in[2][i], in[1][i], in[0][i]));
    for (std::size_t i = 0; i < kBlock; ++i)
      aims[i] = ramp[grays[i]];
    for (std::size_t plane = 0; plane < 3; ++plane) {
      for (std::size_t i = 0; i < kBlock; ++i) {
        const int aim = static_cast<int>(aims[i] >> (8 * plane) & 0xFF);
        out[plane][i] = static_cast<std::uint8_t>(TintFormulas::Mix(in[plane][i], aim, shares));
      }
    }
  });
}

} // namespace HWY_NAMESPACE
} // namespace ZelClr
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZelClr {

namespace {

/// So many pixels cost less one by one than as part of a block.
constexpr std::size_t kFew = 16;

template <class Formula>
void TintFew(const Formula &formula, std::uint8_t *pixels, std::size_t count)
{
  for (std::uint8_t *pixel = pixels; pixel != pixels + 3 * count; pixel += 3) {
    const Formulas::Rgb tinted = formula(pixel[2], pixel[1], pixel[0]);
    pixel[0] = static_cast<std::uint8_t>(tinted.blue);
    pixel[1] = static_cast<std::uint8_t>(tinted.green);
    pixel[2] = static_cast<std::uint8_t>(tinted.red);
  }
}

} // namespace

#define ZELCLR_TINT_ROW(Formula, kernel)                                                                               \
  HWY_EXPORT(kernel);                                                                                                  \
  void TintRow(const TintFormulas::Formula &formula, std::uint8_t *pixels, std::size_t count)                          \
  {                                                                                                                    \
    if (count <= kFew)                                                                                                 \
      TintFew(formula, pixels, count);                                                                                 \
    else                                                                                                               \
      HWY_DYNAMIC_DISPATCH(kernel)(formula, pixels, count);                                                            \
  }

ZELCLR_TINT_ROW(Mixed, MixedRow)
ZELCLR_TINT_ROW(Shifted, ShiftedRow)
ZELCLR_TINT_ROW(Lit, LitRow)
ZELCLR_TINT_ROW(Inverted, InvertedRow)
ZELCLR_TINT_ROW(Ramped, RampedRow)

} // namespace ZelClr
#endif
