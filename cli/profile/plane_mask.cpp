#include "cli/profile/plane_mask.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <numeric>

namespace cli {

namespace {

using Outline = std::vector<PlanePoint>;

/// The first cell, and the one behind the last, whose centres lie between two distances from the window's edge.
std::pair<std::size_t, std::size_t> CellsBetween(double from, double to, double cell, std::size_t count)
{
  const auto limited = [count](double number) {
    return static_cast<std::size_t>(std::clamp(number, 0.0, static_cast<double>(count)));
  };
  return {limited(std::ceil(from / cell - 0.5)), limited(std::floor(to / cell - 0.5) + 1.0)};
}

double DistanceFromLine(const PlanePoint &point, const PlanePoint &from, const PlanePoint &to)
{
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  if (length == 0.0)
    return std::hypot(point.x - from.x, point.y - from.y);
  return std::abs((to.x - from.x) * (from.y - point.y) - (from.x - point.x) * (to.y - from.y)) / length;
}

/// Ramer, Douglas, Peucker: of a chain the ends, and the point that lies farthest from their line where that is beyond
/// the tolerance, and so on for both parts.
Outline Simplified(const Outline &line, double tolerance)
{
  std::vector<bool> kept(line.size());
  kept.front() = kept.back() = true;
  std::vector<std::pair<std::size_t, std::size_t>> parts = {{0, line.size() - 1}};
  while (!parts.empty()) {
    const auto [first, last] = parts.back();
    parts.pop_back();
    double farthest = tolerance;
    std::size_t corner = first;
    for (std::size_t i = first + 1; i < last; ++i) {
      const double distance = DistanceFromLine(line[i], line[first], line[last]);
      if (distance > farthest) {
        farthest = distance;
        corner = i;
      }
    }
    if (corner != first) {
      kept[corner] = true;
      parts.push_back({first, corner});
      parts.push_back({corner, last});
    }
  }
  Outline simplified;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (kept[i])
      simplified.push_back(line[i]);
  }
  return simplified;
}

} // namespace

void PlaneMask::AddHull(std::span<const PlanePoint> points)
{
  if (points.empty())
    return;
  const auto [low, high] = std::minmax_element(points.begin(), points.end(),
                                               [](const PlanePoint &p, const PlanePoint &q) { return p.y < q.y; });
  const auto [first, end] = CellsBetween(low->y - window_.bottom, high->y - window_.bottom, window_.cell, window_.rows);
  for (std::size_t row = first; row < end; ++row) {
    const double y = window_.bottom + (static_cast<double>(row) + 0.5) * window_.cell;
    // Every two points span a line within the hull, and some of those lines are its edges.
    double left = std::numeric_limits<double>::infinity();
    double right = -left;
    for (std::size_t i = 0; i < points.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        const PlanePoint &p = points[i];
        const PlanePoint &q = points[j];
        if ((p.y < y && q.y < y) || (p.y > y && q.y > y))
          continue;
        const double x = p.y == q.y ? p.x : p.x + (y - p.y) * (q.x - p.x) / (q.y - p.y);
        left = std::min({left, x, p.y == q.y ? q.x : x});
        right = std::max({right, x, p.y == q.y ? q.x : x});
      }
    }
    const auto [from, to] = CellsBetween(left - window_.left, right - window_.left, window_.cell, window_.columns);
    if (from < to)
      std::fill_n(cells_.begin() + static_cast<std::ptrdiff_t>(row * window_.columns + from), to - from,
                  std::uint8_t{1});
  }
}

bool PlaneMask::IsEmpty() const
{
  return std::find(cells_.begin(), cells_.end(), 1) == cells_.end();
}

double PlaneMask::Area() const
{
  return CommonArea(*this);
}

double PlaneMask::CommonArea(const PlaneMask &other) const
{
  const auto both =
    std::transform_reduce(cells_.begin(), cells_.end(), other.cells_.begin(), std::size_t{0}, std::plus<>(),
                          [](std::uint8_t a, std::uint8_t b) -> std::size_t { return a & b; });
  return static_cast<double>(both) * window_.cell * window_.cell;
}

std::vector<Outline> PlaneMask::Outlines(double tolerance) const
{
  // The share of the 3 by 3 cells around each that belong to the figure, with a margin of two cells of nothing.
  const std::size_t width = window_.columns + 4;
  const std::size_t height = window_.rows + 4;
  std::vector<std::uint8_t> ninths(width * height);
  for (std::size_t row = 0; row < window_.rows; ++row) {
    for (std::size_t column = 0; column < window_.columns; ++column) {
      if (cells_[row * window_.columns + column] == 0)
        continue;
      for (std::size_t y = row + 1; y <= row + 3; ++y) {
        for (std::size_t x = column + 1; x <= column + 3; ++x)
          ++ninths[y * width + x];
      }
    }
  }

  // Marching squares on the centres of the cells: where the share passes one half, the outline crosses the side between
  // two centres. A side is named by its lower or left centre and its direction; each side that is crossed leads to the
  // next, with the figure on the left.
  constexpr double kHalf = 4.5;
  const auto inside = [&](std::size_t centre) { return ninths[centre] > kHalf; };
  const auto side = [](std::size_t centre, bool upright) { return centre * 2 + (upright ? 1 : 0); };
  std::map<std::size_t, std::size_t> next;
  for (std::size_t y = 0; y + 1 < height; ++y) {
    for (std::size_t x = 0; x + 1 < width; ++x) {
      // Corners counter-clockwise from the lower left one, and the sides that follow them.
      const std::size_t at = y * width + x;
      const std::array<std::size_t, 4> corners = {at, at + 1, at + width + 1, at + width};
      const std::array<std::size_t, 4> sides = {side(at, false), side(at + 1, true), side(at + width, false),
                                                side(at, true)};
      // From each side where the walk around the square leaves the figure to the one before it where it came in:
      // corners that touch across the square are kept apart.
      for (std::size_t i = 0; i < 4; ++i) {
        if (!inside(corners[i]) || inside(corners[(i + 1) % 4]))
          continue;
        std::size_t entered = i;
        while (inside(corners[entered]))
          entered = (entered + 3) % 4;
        next[sides[i]] = sides[entered];
      }
    }
  }

  const auto crossing = [&](std::size_t named) {
    const std::size_t centre = named / 2;
    const bool upright = named % 2 == 1;
    const double here = ninths[centre];
    const double share = (kHalf - here) / (ninths[centre + (upright ? width : 1)] - here);
    const double x = static_cast<double>(centre % width) - 1.5 + (upright ? 0.0 : share);
    const double y = static_cast<double>(centre / width) - 1.5 + (upright ? share : 0.0);
    return PlanePoint{window_.left + x * window_.cell, window_.bottom + y * window_.cell};
  };
  std::vector<Outline> outlines;
  while (!next.empty()) {
    Outline outline;
    for (auto step = next.begin(); step != next.end();) {
      outline.push_back(crossing(step->first));
      const std::size_t following = step->second;
      next.erase(step);
      step = next.find(following);
    }
    outline.push_back(outline.front());
    outlines.push_back(Simplified(outline, tolerance));
  }
  return outlines;
}

} // namespace cli
