// A figure in a plane as a mask of square cells: filled piece by piece, measured, compared and outlined.
//
// Threads and errors: values; what lies outside the window is cut off.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace cli {

struct PlanePoint
{
  double x;
  double y;
};

/// The part of the plane that a mask covers: cells of one size from the lower left corner on.
struct PlaneWindow
{
  double left;
  double bottom;
  double cell;
  std::size_t columns;
  std::size_t rows;
};

class PlaneMask
{
public:
  explicit PlaneMask(const PlaneWindow &window) : window_(window), cells_(window.columns * window.rows) {}

  /// Adds the cells whose centres lie in the convex hull of the points, which may be any few in any order.
  void AddHull(std::span<const PlanePoint> points);

  bool IsEmpty() const;
  double Area() const;
  /// The area that belongs to both; the windows must be equal.
  double CommonArea(const PlaneMask &other) const;
  /// The closed outlines of the figure, holes among them, smoothed by about a cell. No point is needed that lies within
  /// `tolerance` of the line that is left without it.
  std::vector<std::vector<PlanePoint>> Outlines(double tolerance) const;

private:
  PlaneWindow window_;
  std::vector<std::uint8_t> cells_; ///< 0 or 1, rows from the bottom
};

} // namespace cli
