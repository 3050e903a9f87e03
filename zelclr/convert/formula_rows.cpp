// Compiled once for each instruction set that is worth having; the best one that the processor has runs.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "zelclr/convert/formula_rows.cpp"
#include "zelclr/convert/formula_rows.h"

#include "zelclr/convert/formulas.h"
#include "zelclr/platform/internal/each_target.h"
#include "zelclr/platform/internal/pixel_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace ZelClr {
namespace HWY_NAMESPACE {

using Planes = std::uint8_t (*)[kBlock];

HWY_INLINE void PutHue(Planes out, std::size_t i, int hue)
{
  out[0][i] = static_cast<std::uint8_t>(hue);
  out[1][i] = static_cast<std::uint8_t>(hue >> 8);
}

HWY_INLINE int Hue(const std::uint8_t (*in)[kBlock], std::size_t i)
{
  return static_cast<std::int16_t>(in[0][i] | in[1][i] << 8);
}

HWY_INLINE void PutRgb(Planes out, std::size_t i, const Formulas::Rgb &rgb)
{
  out[0][i] = static_cast<std::uint8_t>(rgb.red);
  out[1][i] = static_cast<std::uint8_t>(rgb.green);
  out[2][i] = static_cast<std::uint8_t>(rgb.blue);
}

void HsbFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  ConvertRow<3, 4>(source, destination, pixels, [](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i) {
      const auto hsb = Formulas::HsbFromRgb(in[0][i], in[1][i], in[2][i]);
      PutHue(out, i, hsb.hue);
      out[2][i] = static_cast<std::uint8_t>(hsb.saturation);
      out[3][i] = static_cast<std::uint8_t>(hsb.brightness);
    }
  });
}

void RgbFromHsb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  ConvertRow<4, 3>(source, destination, pixels, [](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i)
      PutRgb(out, i, Formulas::RgbFromHsb(Formulas::TurnedHue(Hue(in, i)), in[2][i], in[3][i]));
  });
}

void HlsFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  ConvertRow<3, 4>(source, destination, pixels, [](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i) {
      const auto hls = Formulas::HlsFromRgb(in[0][i], in[1][i], in[2][i]);
      PutHue(out, i, hls.hue);
      out[2][i] = static_cast<std::uint8_t>(hls.lightness);
      out[3][i] = static_cast<std::uint8_t>(hls.saturation);
    }
  });
}

void RgbFromHls(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  ConvertRow<4, 3>(source, destination, pixels, [](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i)
      PutRgb(out, i, Formulas::RgbFromHls(Hue(in, i), in[2][i], in[3][i]));
  });
}

void GrayFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  ConvertRow<3, 1>(source, destination, pixels, [](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i)
      out[0][i] = static_cast<std::uint8_t>(Formulas::GrayFromRgb(in[0][i], in[1][i], in[2][i]));
  });
}

template <class Formula>
HWY_INLINE void InksFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels, Formula formula)
{
  ConvertRow<3, 4>(source, destination, pixels, [=](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i) {
      const Formulas::Cmyk cmyk = formula(in[0][i], in[1][i], in[2][i]);
      PutRgb(out, i, {cmyk.cyan, cmyk.magenta, cmyk.yellow});
      out[3][i] = static_cast<std::uint8_t>(cmyk.black);
    }
  });
}

template <class Formula>
HWY_INLINE void RgbFromInks(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels, Formula formula)
{
  ConvertRow<4, 3>(source, destination, pixels, [=](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i)
      PutRgb(out, i, formula(in[0][i], in[1][i], in[2][i], in[3][i]));
  });
}

void CmykFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  InksFromRgb(source, destination, pixels, [](int r, int g, int b) HWY_ATTR { return Formulas::CmykFromRgb(r, g, b); });
}

void RgbFromCmyk(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  RgbFromInks(source, destination, pixels,
              [](int c, int m, int y, int k) HWY_ATTR { return Formulas::RgbFromCmyk(c, m, y, k); });
}

void AddedInksFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  InksFromRgb(source, destination, pixels,
              [](int r, int g, int b) HWY_ATTR { return Formulas::AddedInksFromRgb(r, g, b); });
}

void RgbFromAddedInks(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  RgbFromInks(source, destination, pixels,
              [](int c, int m, int y, int k) HWY_ATTR { return Formulas::RgbFromAddedInks(c, m, y, k); });
}

void YiqFromRgb(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)
{
  ConvertRow<3, 3>(source, destination, pixels, [](const auto *in, auto *out) HWY_ATTR {
    for (std::size_t i = 0; i < kBlock; ++i) {
      const auto yiq = Formulas::YiqFromRgb(in[0][i], in[1][i], in[2][i]);
      PutRgb(out, i, {yiq.y, yiq.i, yiq.q});
    }
  });
}

} // namespace HWY_NAMESPACE
} // namespace ZelClr
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ZelClr {

#define ZELCLR_ROW(name, kernel)                                                                                       \
  HWY_EXPORT(kernel);                                                                                                  \
  void name(const std::uint8_t *source, std::uint8_t *destination, std::size_t pixels)                                 \
  {                                                                                                                    \
    HWY_DYNAMIC_DISPATCH(kernel)(source, destination, pixels);                                                         \
  }

ZELCLR_ROW(HsbRowFromRgb, HsbFromRgb)
ZELCLR_ROW(RgbRowFromHsb, RgbFromHsb)
ZELCLR_ROW(HlsRowFromRgb, HlsFromRgb)
ZELCLR_ROW(RgbRowFromHls, RgbFromHls)
ZELCLR_ROW(GrayRowFromRgb, GrayFromRgb)
ZELCLR_ROW(CmykRowFromRgb, CmykFromRgb)
ZELCLR_ROW(RgbRowFromCmyk, RgbFromCmyk)
ZELCLR_ROW(AddedInksRowFromRgb, AddedInksFromRgb)
ZELCLR_ROW(RgbRowFromAddedInks, RgbFromAddedInks)
ZELCLR_ROW(YiqRowFromRgb, YiqFromRgb)

} // namespace ZelClr
#endif
