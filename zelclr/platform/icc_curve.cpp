#include "zelclr/platform/icc_curve.h"

#include "zelclr/platform/bytes.h"
#include "zelclr/platform/icc_file.h"

#include <algorithm>
#include <cmath>

namespace ZelUtl {

namespace {

std::optional<IccCurve> TabulatedCurve(ByteReader &reader)
{
  IccCurve curve;
  const auto count = reader.ReadBig<std::uint32_t>();
  if (count == 1) {
    curve.gamma = reader.ReadBig<std::uint16_t>() / 256.0;
  } else if (count > 1 && count <= reader.Remaining() / 2) {
    for (std::uint32_t i = 0; i < count; ++i)
      curve.table.push_back(reader.ReadBig<std::uint16_t>() / 65535.0);
  } else if (count > 1) {
    return std::nullopt;
  }
  return reader.Ok() ? std::optional(std::move(curve)) : std::nullopt;
}

std::optional<IccCurve> ParametricCurve(ByteReader &reader)
{
  const auto kind = reader.ReadBig<std::uint16_t>();
  reader.Take(2);
  constexpr int kParameters[] = {1, 3, 4, 5, 7};
  if (kind > 4)
    return std::nullopt;
  double p[7] = {}; // g a b c d e f
  for (int i = 0; i < kParameters[kind]; ++i)
    p[i] = reader.ReadBig<std::int32_t>() / 65536.0;
  if (!reader.Ok())
    return std::nullopt;

  IccCurve curve;
  curve.gamma = p[0];
  if (kind == 0)
    return curve;
  curve.a = p[1];
  curve.b = p[2];
  if (kind <= 2) { // from -b/a on; below it 0, or the constant
    curve.d = p[1] == 0.0 ? 0.0 : -p[2] / p[1];
    curve.e = curve.f = kind == 2 ? p[3] : 0.0;
  } else {
    curve.c = p[3];
    curve.d = p[4];
    curve.e = p[5];
    curve.f = p[6];
  }
  return curve;
}

} // namespace

double IccCurve::At(double x) const
{
  double y = 0.0;
  if (!table.empty()) {
    const double place = std::clamp(x, 0.0, 1.0) * static_cast<double>(table.size() - 1);
    const auto low = std::min(static_cast<std::size_t>(place), table.size() - 2);
    y = table[low] + (table[low + 1] - table[low]) * (place - static_cast<double>(low));
  } else {
    y = x >= d ? std::pow(a * x + b, gamma) + e : c * x + f;
  }
  return y > 0.0 ? std::min(y, 1.0) : 0.0; // a NaN becomes 0
}

std::optional<IccCurve> IccCurveFromTag(std::span<const std::uint8_t> tag)
{
  ByteReader reader(tag);
  const auto type = reader.ReadBig<std::uint32_t>();
  reader.Take(4);
  if (type == IccSignature("curv"))
    return TabulatedCurve(reader);
  if (type == IccSignature("para"))
    return ParametricCurve(reader);
  return std::nullopt;
}

} // namespace ZelUtl
