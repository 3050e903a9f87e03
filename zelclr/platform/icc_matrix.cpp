#include "zelclr/platform/icc_matrix.h"

#include "zelclr/platform/bytes.h"

namespace ZelUtl {

namespace {

std::optional<IccXyz> XyzOf(std::span<const std::uint8_t> tag)
{
  ByteReader reader(tag);
  const bool isXyz = reader.ReadBig<std::uint32_t>() == IccSignature("XYZ ");
  reader.Take(4);
  const auto read = [&] { return reader.ReadBig<std::int32_t>() / 65536.0; };
  const double x = read(), y = read(), z = read();
  return isXyz && reader.Ok() ? std::optional(IccXyz{x, y, z}) : std::nullopt;
}

} // namespace

std::optional<IccMatrix> IccMatrixOf(const IccFile &file)
{
  if (file.Header().colourSpace != IccSignature("RGB ") || file.Header().connectionSpace != IccSignature("XYZ "))
    return std::nullopt;
  constexpr std::uint32_t kColorants[] = {IccSignature("rXYZ"), IccSignature("gXYZ"), IccSignature("bXYZ")};
  constexpr std::uint32_t kCurves[] = {IccSignature("rTRC"), IccSignature("gTRC"), IccSignature("bTRC")};
  IccMatrix matrix;
  for (std::size_t i = 0; i < 3; ++i) {
    const auto xyz = XyzOf(file.ReadTag(kColorants[i], 20));
    auto curve = IccCurveFromTag(file.ReadTag(kCurves[i], kMostIccCurveBytes));
    if (!xyz || !curve)
      return std::nullopt;
    matrix.colorants[i] = *xyz;
    matrix.curves[i] = *std::move(curve);
  }
  return matrix;
}

} // namespace ZelUtl
