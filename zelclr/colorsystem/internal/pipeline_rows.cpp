// Compiled once for each instruction set that is worth having; the best one that the processor has runs.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "zelclr/colorsystem/internal/pipeline_rows.cpp"
#include "zelclr/colorsystem/internal/icc_pipeline.h"
#include "zelclr/platform/internal/each_target.h"
// clang-format off: after the line above
#include <hwy/highway.h>
// clang-format on

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace ColorSystem {
namespace HWY_NAMESPACE {

using namespace Internal;

constexpr std::size_t kPixels = 256;
using Planes = float[4][kPixels];

HWY_INLINE float Clipped(float x)
{
  return x > 0.0f ? (x < 1.0f ? x : 1.0f) : 0.0f; // a NaN becomes 0
}

/// To the nearest 65535th, as between the steps of Little CMS.
HWY_INLINE float InWords(float x)
{
  return static_cast<float>(static_cast<std::int32_t>(Clipped(x) * 65535.0f + 0.5f));
}

/// x^y of a positive x, within 2e-6 of it.
HWY_INLINE float Power(float x, float y)
{
  // Source: the series of the area hyperbolic tangent for the logarithm, of the exponential for the power; both within
  // the precision of floats on their interval.
  const auto bits = std::bit_cast<std::int32_t>(x);
  const std::int32_t exponent = (bits - 0x3F3504F3) >> 23; // so that the mantissa is from sqrt(1/2) to sqrt(2)
  const float mantissa = std::bit_cast<float>(bits - (exponent << 23));
  const float t = (mantissa - 1.0f) / (mantissa + 1.0f);
  const float s = t * t;
  const float series = 2.88539008f + s * (0.961796694f + s * (0.577078016f + s * (0.412198583f + s * 0.320598898f)));
  const float logarithm = static_cast<float>(exponent) + t * series;

  const float z = std::clamp(logarithm * y, -120.0f, 120.0f);
  const std::int32_t whole = static_cast<std::int32_t>(z + 256.5f) - 256;
  const float f = z - static_cast<float>(whole);
  const float power =
    1.0f +
    f * (0.693147181f +
         f * (0.240226507f + f * (0.0555041087f + f * (0.00961812911f + f * (0.00133335581f + f * 0.000154035304f)))));
  return std::bit_cast<float>(std::bit_cast<std::int32_t>(power) + (whole << 23));
}

void Run(const CurveStep &curve, float *HWY_RESTRICT plane)
{
  if (curve.table.empty()) {
    const float scale = curve.scale, a = curve.a, b = curve.b, gamma = curve.gamma, e = curve.e, d = curve.d,
                c = curve.c, f = curve.f;
    for (std::size_t i = 0; i < kPixels; ++i) {
      const float x = plane[i];
      const float base = a * x + b;
      const float bent = base > 1e-30f ? scale * Power(base > 1e-30f ? base : 1.0f, gamma) + e : e;
      const float straight = c * x + f;
      plane[i] = x >= d ? bent : straight;
    }
    return;
  }
  const float *const table = curve.table.data();
  const float last = static_cast<float>(curve.table.size() - 1);
  const auto end = static_cast<std::int32_t>(curve.table.size() - 2);
  for (std::size_t i = 0; i < kPixels; ++i) {
    const float place = InWords(plane[i]) * (1.0f / 65535.0f) * last;
    const std::int32_t whole = static_cast<std::int32_t>(place);
    const std::int32_t low = whole < end ? whole : end;
    const float y = table[low] + (table[low + 1] - table[low]) * (place - static_cast<float>(low));
    plane[i] = InWords(y) * (1.0f / 65535.0f);
  }
}

void Run(const CurvesStep &step, Planes &planes)
{
  for (std::size_t channel = 0; channel < step.curves.size(); ++channel)
    Run(step.curves[channel], planes[channel]);
}

void Run(const MatrixStep &step, Planes &planes)
{
  const auto m = step.rows;
  for (std::size_t i = 0; i < kPixels; ++i) {
    const float x = planes[0][i], y = planes[1][i], z = planes[2][i];
    planes[0][i] = m[0] * x + m[1] * y + m[2] * z;
    planes[1][i] = m[3] * x + m[4] * y + m[5] * z;
    planes[2][i] = m[6] * x + m[7] * y + m[8] * z;
  }
}

constexpr float kXyzScale = 1.0f + 32767.0f / 32768.0f;
constexpr float kWhite[3] = {0.9642f, 1.0f, 0.8249f};
constexpr float kBend = 24.0f / 116.0f; // f of CIE Lab is linear below its cube

HWY_INLINE float LabCurve(float t)
{
  const float x = t > 1e-6f ? t : 1e-6f;
  float root = Power(x, 1.0f / 3.0f);
  root -= (root * root * root - x) / (3.0f * root * root);
  return t > kBend * kBend * kBend ? root : (841.0f / 108.0f) * t + 16.0f / 116.0f;
}

HWY_INLINE float LabCurveInverse(float t)
{
  return t > kBend ? t * t * t : (108.0f / 841.0f) * (t - 16.0f / 116.0f);
}

void Run(const LabFromXyzStep &, Planes &planes)
{
  for (std::size_t i = 0; i < kPixels; ++i) {
    const float x = LabCurve(planes[0][i] * (kXyzScale / kWhite[0]));
    const float y = LabCurve(planes[1][i] * (kXyzScale / kWhite[1]));
    const float z = LabCurve(planes[2][i] * (kXyzScale / kWhite[2]));
    planes[0][i] = 1.16f * y - 0.16f;
    planes[1][i] = (500.0f * (x - y) + 128.0f) / 255.0f;
    planes[2][i] = (200.0f * (y - z) + 128.0f) / 255.0f;
  }
}

void Run(const XyzFromLabStep &, Planes &planes)
{
  for (std::size_t i = 0; i < kPixels; ++i) {
    const float y = (planes[0][i] * 100.0f + 16.0f) / 116.0f;
    const float x = y + 0.002f * (planes[1][i] * 255.0f - 128.0f);
    const float z = y - 0.005f * (planes[2][i] * 255.0f - 128.0f);
    planes[0][i] = LabCurveInverse(x) * (kWhite[0] / kXyzScale);
    planes[1][i] = LabCurveInverse(y) * (kWhite[1] / kXyzScale);
    planes[2][i] = LabCurveInverse(z) * (kWhite[2] / kXyzScale);
  }
}

/// Where a block's pixels are in a grid: the first node of each cell, as a place in the table, and how far into the
/// cell along each input.
struct GridPlaces
{
  alignas(64) std::uint32_t first[kPixels];
  alignas(64) float fractions[4][kPixels];
};

void FindPlaces(const GridStep &step, const std::uint32_t *strides, const Planes &planes, GridPlaces &places)
{
  std::fill_n(places.first, kPixels, 0u);
  const auto cells = static_cast<std::int32_t>(step.grid - 1);
  const auto end = static_cast<std::int32_t>(step.grid - 2);
  for (unsigned input = 0; input < step.inputs; ++input) {
    const auto stride = static_cast<std::int32_t>(strides[input]);
    const bool isFirstOfFour = step.isTrilinear || (step.inputs == 4 && input == 0);
    const float unit = isFirstOfFour ? 1.0f / 65536.0f : 1.0f / 65535.0f;
    for (std::size_t i = 0; i < kPixels; ++i) {
      const std::int32_t part = static_cast<std::int32_t>(InWords(planes[input][i])) * cells;
      const std::int32_t t = part + 0x7FFF;
      const std::int32_t place = part + ((t + (t >> 16) + 1) >> 16);
      const std::int32_t whole = place >> 16;
      const std::int32_t low = whole < end ? whole : end;
      places.first[i] += static_cast<std::uint32_t>(low * stride);
      const std::int32_t rest = place - (low << 16);
      places.fractions[input][i] = rest >= 65536 ? 1.0f : static_cast<float>(rest) * unit;
    }
  }
}

using Lanes = float[4];

HWY_INLINE void AddNode(const std::uint16_t *HWY_RESTRICT node, float weight, Lanes &sum)
{
  for (int lane = 0; lane < 4; ++lane)
    sum[lane] += weight * static_cast<float>(node[lane]);
}

HWY_INLINE void Put(const Lanes &sum, std::size_t i, Planes &planes)
{
  for (unsigned lane = 0; lane < 4; ++lane)
    planes[lane][i] = std::floor(sum[lane] + 0.5f) * (1.0f / 65535.0f);
}

void BlendCubes(const GridStep &step, const std::uint32_t *strides, const GridPlaces &places, Planes &planes)
{
  const std::uint32_t x = strides[0], y = strides[1], z = strides[2];
  const std::uint32_t steps[8] = {0, z, y, y + z, x, x + z, x + y, x + y + z};
  alignas(64) float weights[8][kPixels];
  for (std::size_t i = 0; i < kPixels; ++i) {
    const float a = places.fractions[0][i], b = places.fractions[1][i], c = places.fractions[2][i];
    const float ab = a * b, a_ = a - ab, b_ = b - ab, none = 1.0f - a - b_;
    weights[7][i] = ab * c, weights[6][i] = ab - ab * c;
    weights[5][i] = a_ * c, weights[4][i] = a_ - a_ * c;
    weights[3][i] = b_ * c, weights[2][i] = b_ - b_ * c;
    weights[1][i] = none * c, weights[0][i] = none - none * c;
  }
  for (std::size_t i = 0; i < kPixels; ++i) {
    const std::uint16_t *const first = step.nodes.data() + places.first[i];
    Lanes sum = {};
    for (int corner = 0; corner < 8; ++corner)
      AddNode(first + steps[corner], weights[corner][i], sum);
    Put(sum, i, planes);
  }
}

/// The nodes around each pixel in the tetrahedron of three inputs, as ways from its first, and their weights.
struct Tetrahedra
{
  alignas(64) std::uint32_t second[kPixels], third[kPixels];
  alignas(64) float weights[4][kPixels];
  std::uint32_t last;
};

HWY_INLINE void Order(std::uint32_t &a, std::uint32_t &b)
{
  const std::uint32_t larger = a > b ? a : b;
  b = a > b ? b : a;
  a = larger;
}

void FindTetrahedra(const float (*HWY_RESTRICT fractions)[kPixels], const std::uint32_t *strides,
                    Tetrahedra &tetrahedra)
{
  const std::uint32_t x = strides[0], y = strides[1], z = strides[2];
  tetrahedra.last = x + y + z;
  for (std::size_t i = 0; i < kPixels; ++i) {
    // Floats that are not negative have the order of their bits; the last two say which input it is.
    std::uint32_t a = std::bit_cast<std::uint32_t>(fractions[0][i]) & ~3u;
    std::uint32_t b = (std::bit_cast<std::uint32_t>(fractions[1][i]) & ~3u) | 1u;
    std::uint32_t c = (std::bit_cast<std::uint32_t>(fractions[2][i]) & ~3u) | 2u;
    Order(a, b);
    Order(b, c);
    Order(a, b);
    const std::uint32_t far = a & 3u, near = c & 3u;
    tetrahedra.second[i] = far == 0 ? x : far == 1 ? y : z;
    tetrahedra.third[i] = x + y + z - (near == 0 ? x : near == 1 ? y : z);
    const float p = std::bit_cast<float>(a & ~3u), q = std::bit_cast<float>(b & ~3u), r = std::bit_cast<float>(c & ~3u);
    tetrahedra.weights[0][i] = 1.0f - p;
    tetrahedra.weights[1][i] = p - q;
    tetrahedra.weights[2][i] = q - r;
    tetrahedra.weights[3][i] = r;
  }
}

HWY_INLINE void AddTetrahedron(const std::uint16_t *HWY_RESTRICT first, const Tetrahedra &tetrahedra, std::size_t i,
                               float share, Lanes &sum)
{
  AddNode(first, share * tetrahedra.weights[0][i], sum);
  AddNode(first + tetrahedra.second[i], share * tetrahedra.weights[1][i], sum);
  AddNode(first + tetrahedra.third[i], share * tetrahedra.weights[2][i], sum);
  AddNode(first + tetrahedra.last, share * tetrahedra.weights[3][i], sum);
}

void BlendTetrahedra(const GridStep &step, const std::uint32_t *strides, const GridPlaces &places, Planes &planes)
{
  Tetrahedra tetrahedra;
  const bool isFour = step.inputs == 4;
  FindTetrahedra(places.fractions + (isFour ? 1 : 0), strides + (isFour ? 1 : 0), tetrahedra);
  for (std::size_t i = 0; i < kPixels; ++i) {
    const std::uint16_t *const first = step.nodes.data() + places.first[i];
    const float share = isFour ? places.fractions[0][i] : 0.0f;
    Lanes sum = {};
    AddTetrahedron(first, tetrahedra, i, 1.0f, sum);
    if (isFour) {
      Lanes other = {};
      AddTetrahedron(first + strides[0], tetrahedra, i, 1.0f, other);
      for (int lane = 0; lane < 4; ++lane) {
        const float low = std::floor(sum[lane] + 0.5f);
        sum[lane] = low + (std::floor(other[lane] + 0.5f) - low) * share;
      }
    }
    Put(sum, i, planes);
  }
}

void Run(const GridStep &step, Planes &planes)
{
  std::uint32_t strides[4] = {};
  std::uint32_t stride = 4;
  for (unsigned input = step.inputs; input-- > 0; stride *= step.grid)
    strides[input] = stride;
  GridPlaces places;
  FindPlaces(step, strides, planes, places);
  if (step.isTrilinear)
    BlendCubes(step, strides, places, planes);
  else
    BlendTetrahedra(step, strides, places, planes);
}

void RunSteps(const IccPipeline &pipeline, const std::uint16_t *source, std::uint16_t *destination, std::size_t pixels)
{
  alignas(64) Planes planes;
  for (; pixels != 0;) {
    const std::size_t count = std::min(pixels, kPixels);
    for (unsigned channel = 0; channel < pipeline.inputs; ++channel) {
      for (std::size_t i = 0; i < count; ++i)
        planes[channel][i] = static_cast<float>(source[i * pipeline.inputs + channel]) / 65535.0f;
      std::fill(planes[channel] + count, planes[channel] + kPixels, 0.0f);
    }
    for (const PipelineStep &step : pipeline.steps)
      std::visit([&](const auto &kind) HWY_ATTR { Run(kind, planes); }, step);
    for (unsigned channel = 0; channel < pipeline.outputs; ++channel)
      for (std::size_t i = 0; i < count; ++i)
        destination[i * pipeline.outputs + channel] = static_cast<std::uint16_t>(InWords(planes[channel][i]));
    source += count * pipeline.inputs;
    destination += count * pipeline.outputs;
    pixels -= count;
  }
}

} // namespace HWY_NAMESPACE
} // namespace ColorSystem
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ColorSystem::Internal {

HWY_EXPORT(RunSteps);

void RunPipeline(const IccPipeline &pipeline, const std::uint16_t *source, std::uint16_t *destination,
                 std::size_t pixels)
{
  HWY_DYNAMIC_DISPATCH(RunSteps)(pipeline, source, destination, pixels);
}

} // namespace ColorSystem::Internal
#endif
