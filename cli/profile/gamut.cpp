#include "cli/profile/gamut.h"

#include "zelclr/convert/formulas/srgb_lab.h"

#include <algorithm>
#include <bit>

namespace cli {

namespace {

using ColorSystem::ColorModel;

/// The cells along an edge of the cubes: by a third less the volumes change by less than one in five hundred.
struct LatticeRow
{
  unsigned channels;
  std::uint32_t steps;
};
constexpr LatticeRow kLattices[] = {{3, 32}, {4, 16}, {6, 8}};

/// The device's colours at the corners of all cells, and the tetrahedra between them.
struct Lattice
{
  Channels device;
  std::vector<std::array<std::uint32_t, 4>> tetrahedra;
};

/// The six tetrahedra of a cell, each the way from its lowest to its highest corner along three edges; a corner's bits
/// say in which of the three directions it is the far one.
constexpr std::array<std::array<unsigned, 4>, 6> kWays = {
  {{0, 1, 3, 7}, {0, 1, 5, 7}, {0, 2, 3, 7}, {0, 2, 6, 7}, {0, 4, 5, 7}, {0, 4, 6, 7}}};

void AddCube(Lattice &lattice, unsigned channels, unsigned varied, unsigned full, std::uint32_t steps)
{
  const auto first = static_cast<std::uint32_t>(lattice.device.size() / channels);
  const std::uint32_t side = steps + 1;
  for (std::uint32_t corner = 0; corner < side * side * side; ++corner) {
    std::uint32_t rest = corner;
    for (unsigned channel = 0; channel < channels; ++channel) {
      if ((varied >> channel & 1u) != 0) {
        lattice.device.push_back(static_cast<float>(rest % side) / static_cast<float>(steps));
        rest /= side;
      } else {
        lattice.device.push_back((full >> channel & 1u) != 0 ? 1.0f : 0.0f);
      }
    }
  }
  for (std::uint32_t z = 0; z < steps; ++z) {
    for (std::uint32_t y = 0; y < steps; ++y) {
      for (std::uint32_t x = 0; x < steps; ++x) {
        for (const auto &way : kWays) {
          std::array<std::uint32_t, 4> tetrahedron;
          std::transform(way.begin(), way.end(), tetrahedron.begin(), [&](unsigned corner) {
            return first + (x + (corner & 1u)) + side * (y + (corner >> 1 & 1u)) + side * side * (z + (corner >> 2));
          });
          lattice.tetrahedra.push_back(tetrahedron);
        }
      }
    }
  }
}

/// Every cube of three channels that vary, the others none or full.
Lattice LatticeOf(unsigned channels, std::uint32_t steps)
{
  Lattice lattice;
  const unsigned all = (1u << channels) - 1;
  for (unsigned varied = 0; varied <= all; ++varied) {
    for (unsigned full = 0; full <= all; ++full) {
      if (std::popcount(varied) == 3 && (full & varied) == 0)
        AddCube(lattice, channels, varied, full, steps);
    }
  }
  return lattice;
}

constexpr double kLeastAb = -128.0;
constexpr double kMostAb = 127.0;
constexpr std::size_t kSlices = 100;

PlaneWindow WindowOf(double cell)
{
  const auto count = static_cast<std::size_t>(256.0 / cell);
  return {kLeastAb, kLeastAb, cell, count, count};
}

/// Adds what a plane of one L* cuts out of a tetrahedron.
void AddCut(PlaneMask &slice, const std::array<Lab, 4> &corners, double lightness)
{
  std::array<PlanePoint, 6> points;
  std::size_t count = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const Lab &p = corners[i];
      const Lab &q = corners[j];
      if ((p.l < lightness) == (q.l < lightness))
        continue;
      const double share = (lightness - p.l) / (q.l - p.l);
      points[count++] = {p.a + share * (q.a - p.a), p.b + share * (q.b - p.b)};
    }
  }
  slice.AddHull({points.data(), count});
}

std::array<Lab, 4> CornersOf(const Gamut &gamut, const std::array<std::uint32_t, 4> &tetrahedron)
{
  return {gamut.corners[tetrahedron[0]], gamut.corners[tetrahedron[1]], gamut.corners[tetrahedron[2]],
          gamut.corners[tetrahedron[3]]};
}

std::pair<double, double> RangeOfLightness(const std::array<Lab, 4> &corners)
{
  const auto [low, high] =
    std::minmax_element(corners.begin(), corners.end(), [](const Lab &p, const Lab &q) { return p.l < q.l; });
  return {low->l, high->l};
}

} // namespace

std::optional<Gamut> GamutOf(const ColorSystem::ColorProfile &profile, RenderingIntent intent, std::string &reason)
{
  const ColorModel model = ColorSystem::ColorProfile(profile).GetColorModel();
  const unsigned channels = ColorSystem::ChannelCountOfColorModel(model, 0);
  const auto *const row = std::find_if(std::begin(kLattices), std::end(kLattices),
                                       [channels](const LatticeRow &r) { return r.channels == channels; });
  if (model == ColorModel::Lab) {
    reason = "Lab is where colours are compared and not a device";
    return std::nullopt;
  }
  if (row == std::end(kLattices)) {
    reason = channels == 1 ? "the colours of one channel are a line" : "colours of so many channels are not measured";
    return std::nullopt;
  }
  Lattice lattice = LatticeOf(channels, row->steps);
  auto corners = LabFromDevice(profile, lattice.device, intent);
  if (!corners) {
    reason = EngineForProfiles() == nullptr ? "no engine of this system reads profiles"
                                            : "the engine in force makes no colours of it";
    return std::nullopt;
  }
  constexpr double kStep = 0.01; // that of 16 bits is smaller
  const bool cutOff = std::any_of(corners->begin(), corners->end(), [](const Lab &lab) {
    return std::min(lab.a, lab.b) < kLeastAb + kStep || std::max(lab.a, lab.b) > kMostAb - kStep;
  });
  return Gamut{std::move(*corners), std::move(lattice.tetrahedra), cutOff};
}

Gamut SrgbGamut()
{
  using namespace ZelClr::Formulas;
  Lattice lattice = LatticeOf(3, kLattices[0].steps);
  Gamut gamut{{}, std::move(lattice.tetrahedra)};
  for (std::size_t i = 0; i < lattice.device.size(); i += 3)
    gamut.corners.push_back(
      CieLabFromXyz(XyzFromSrgb(lattice.device[i], lattice.device[i + 1], lattice.device[i + 2])));
  return gamut;
}

PlaneMask SliceOf(const Gamut &gamut, double lightness, double cell)
{
  PlaneMask slice(WindowOf(cell));
  for (const auto &tetrahedron : gamut.tetrahedra)
    AddCut(slice, CornersOf(gamut, tetrahedron), lightness);
  return slice;
}

GamutVolume::GamutVolume(const Gamut &gamut) : slices_(kSlices, PlaneMask(WindowOf(1.0)))
{
  for (const auto &tetrahedron : gamut.tetrahedra) {
    const auto corners = CornersOf(gamut, tetrahedron);
    const auto [low, high] = RangeOfLightness(corners);
    const auto first = static_cast<std::size_t>(std::max(0.0, low));
    for (std::size_t i = first; i < kSlices && static_cast<double>(i) + 0.5 <= high; ++i)
      AddCut(slices_[i], corners, static_cast<double>(i) + 0.5);
  }
}

double GamutVolume::CommonWith(const GamutVolume &other) const
{
  double volume = 0;
  for (std::size_t i = 0; i < kSlices; ++i)
    volume += slices_[i].CommonArea(other.slices_[i]);
  return volume;
}

} // namespace cli
