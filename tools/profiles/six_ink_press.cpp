#include "six_ink_press.h"

#include "zelclr/convert/formulas/coated_press.h"

using ZelClr::Formulas::CieLabFromXyz;
using ZelClr::Formulas::kCoatedSolids;
using ZelClr::Formulas::kD50White;
using ZelClr::Formulas::Lab;
using ZelClr::Formulas::Xyz;

namespace {

constexpr std::size_t kSolids = 1 << kInks;

// The solids on the paper, Lab on D50 as the measurements of the other inks have it (cyan is 55, -37, -50). Both are
// purer and lighter than the overprints of the same hue, red (47, 68, 48) and green (50, -65, 27): that is what the
// inks are for.
constexpr Lab kOrangeSolid = {67, 58, 82};
constexpr Lab kGreenSolid = {62, -74, 22};

/// How much tones grow in print at a tone value of 50 %: FOGRA39L's, as in coated_press.h.
constexpr Inks kGain = {0.07, 0.07, 0.07, 0.05, 0.07, 0.07};

/// An ink over others lets through what it lets through on paper, to a power below 1, for it sticks less to ink; and
/// the surface of a print adds light of its own. In the sharpened responses of Bradford, which are closer to separate
/// bands of wavelengths than XYZ:
///
///   over = s + (under - s) ((ink - s) / (paper - s))^t
///
/// s = 0.6 % of white and t = 0.7 fit the eleven measured overprints of cyan, magenta, yellow and black best, to a
/// mean Delta E*ab of 5.6; without them, in XYZ, it is 12.5.
constexpr double kSurface = 0.006;
constexpr double kTrap = 0.7;

using Triple = std::array<double, 3>;

Triple Sharpened(const Xyz &xyz)
{
  return {0.8951 * xyz.x + 0.2664 * xyz.y - 0.1614 * xyz.z, -0.7502 * xyz.x + 1.7135 * xyz.y + 0.0367 * xyz.z,
          0.0389 * xyz.x - 0.0685 * xyz.y + 1.0296 * xyz.z};
}

Xyz XyzFromSharpened(const Triple &rgb)
{
  return {0.9869929 * rgb[0] - 0.1470543 * rgb[1] + 0.1599627 * rgb[2],
          0.4323053 * rgb[0] + 0.5183603 * rgb[1] + 0.0492912 * rgb[2],
          -0.0085287 * rgb[0] + 0.0400428 * rgb[1] + 0.9684867 * rgb[2]};
}

Xyz Overprint(const Xyz &under, const Xyz &ink)
{
  const Triple below = Sharpened(under);
  const Triple alone = Sharpened(ink);
  const Triple paper = Sharpened(kCoatedSolids[0]);
  const Triple white = Sharpened(kD50White);
  Triple over;
  for (std::size_t i = 0; i < over.size(); ++i) {
    const double surface = kSurface * white[i];
    const double passed = std::pow((alone[i] - surface) / (paper[i] - surface), kTrap);
    over[i] = surface + std::max(below[i] - surface, 0.0) * passed;
  }
  return XyzFromSharpened(over);
}

/// XYZ^(1/n), n = 1.5, relative to the paper, of the 64 combinations of solids; bit i is ink i.
std::array<Triple, kSolids> RootsOfSolids()
{
  std::array<Xyz, kSolids> solids;
  for (std::size_t i = 0; i < kSolids; ++i) {
    solids[i] = kCoatedSolids[i % 16];
    for (const auto &[bit, lab] :
         {std::pair(std::size_t{1} << kOrange, kOrangeSolid), {std::size_t{1} << kGreen, kGreenSolid}})
    {
      const Xyz ink = ZelClr::Formulas::XyzFromCieLab(lab);
      if ((i & bit) != 0)
        solids[i] = i == bit ? ink : Overprint(solids[i], ink);
    }
  }
  const Xyz &paper = kCoatedSolids[0];
  const auto root = [](double t) { return std::cbrt(t * t); };
  std::array<Triple, kSolids> roots;
  for (std::size_t i = 0; i < kSolids; ++i)
    roots[i] = {root(solids[i].x / paper.x), root(solids[i].y / paper.y), root(solids[i].z / paper.z)};
  return roots;
}

} // namespace

Xyz PaperOfSixInks()
{
  return kCoatedSolids[0];
}

// The Yule-Nielsen modified Neugebauer equations, as in coated_press.h. The mean over the solids is taken ink by ink:
// each halves the number of combinations that are left.
Lab LabFromSixInks(const Inks &inks)
{
  static const std::array<Triple, kSolids> roots = RootsOfSolids();
  std::array<Triple, kSolids> means = roots;
  for (std::size_t left = kSolids / 2, ink = kInks; left > 0; left /= 2) {
    --ink;
    const double dot = inks[ink] + 4.0 * kGain[ink] * inks[ink] * (1.0 - inks[ink]);
    for (std::size_t i = 0; i < left; ++i) {
      for (std::size_t j = 0; j < 3; ++j)
        means[i][j] += dot * (means[i + left][j] - means[i][j]);
    }
  }
  const auto power = [](double t) { return t * std::sqrt(t); };
  return CieLabFromXyz(
    {power(means[0][0]) * kD50White.x, power(means[0][1]) * kD50White.y, power(means[0][2]) * kD50White.z});
}
