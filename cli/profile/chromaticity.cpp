#include "cli/profile/chromaticity.h"

#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/platform/bytes.h"

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

constexpr double kDarkest = 5.0;
constexpr PlaneWindow kWindow = {0.0, 0.0, 0.001, 900, 900};

double Determinant(const Adaptation &m)
{
  return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) + m[2] * (m[3] * m[7] - m[4] * m[6]);
}

} // namespace

std::optional<Adaptation> AdaptationOf(const ZelUtl::IccFile &file)
{
  Adaptation adaptation = {};
  const auto tag = file.ReadTag(ZelUtl::IccSignature("chad"), 8 + 4 * adaptation.size());
  ZelUtl::ByteReader reader(tag);
  const auto type = reader.ReadBig<std::uint32_t>();
  reader.Take(4);
  for (double &number : adaptation)
    number = reader.ReadBig<std::int32_t>() / 65536.0;
  const bool usable = reader.Ok() && type == ZelUtl::IccSignature("sf32") && std::abs(Determinant(adaptation)) > 0.01;
  return usable ? std::optional(adaptation) : std::nullopt;
}

Xyz Adapted(const Xyz &xyz, const Adaptation &m)
{
  return {m[0] * xyz.x + m[1] * xyz.y + m[2] * xyz.z, m[3] * xyz.x + m[4] * xyz.y + m[5] * xyz.z,
          m[6] * xyz.x + m[7] * xyz.y + m[8] * xyz.z};
}

Adaptation Inverse(const Adaptation &m)
{
  const double d = Determinant(m);
  return {(m[4] * m[8] - m[5] * m[7]) / d, (m[2] * m[7] - m[1] * m[8]) / d, (m[1] * m[5] - m[2] * m[4]) / d,
          (m[5] * m[6] - m[3] * m[8]) / d, (m[0] * m[8] - m[2] * m[6]) / d, (m[2] * m[3] - m[0] * m[5]) / d,
          (m[3] * m[7] - m[4] * m[6]) / d, (m[1] * m[6] - m[0] * m[7]) / d, (m[0] * m[4] - m[1] * m[3]) / d};
}

PlanePoint ChromaticityOf(const Lab &lab, const Adaptation &fromD50)
{
  const Xyz xyz = Adapted(ZelClr::Formulas::XyzFromCieLab(lab), fromD50);
  const double sum = xyz.x + xyz.y + xyz.z;
  return {xyz.x / sum, xyz.y / sum};
}

PlaneMask ChromaticitiesOf(const Gamut &gamut, const Adaptation &fromD50)
{
  std::vector<PlanePoint> points;
  std::transform(gamut.corners.begin(), gamut.corners.end(), std::back_inserter(points),
                 [&](const Lab &lab) { return ChromaticityOf(lab, fromD50); });
  PlaneMask mask(kWindow);
  for (const auto &tetrahedron : gamut.tetrahedra) {
    if (std::any_of(tetrahedron.begin(), tetrahedron.end(),
                    [&](std::uint32_t corner) { return gamut.corners[corner].l < kDarkest; }))
      continue;
    std::array<PlanePoint, 4> corners;
    std::transform(tetrahedron.begin(), tetrahedron.end(), corners.begin(),
                   [&](std::uint32_t corner) { return points[corner]; });
    mask.AddHull(corners);
  }
  return mask;
}

} // namespace cli
