// Parts of SVG pictures: text, lines, plots, and areas filled with colours that change from place to place.
//
// Lengths are the page's own unit, the origin its upper left corner.
// Threads and errors: plain functions.
#pragma once

#include "cli/profile/plane_mask.h"
#include "zelclr/convert/formulas/yiq.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cli::svg {

using ZelClr::Formulas::RealRgb;

/// A number with two decimals.
std::string Number(double number);
/// "#ff8000" of components from 0 to 1.
std::string Hex(const RealRgb &colour);

/// `style` is a class of the page's style sheet. The text may be any.
std::string Text(double x, double y, std::string_view style, std::string_view text);
std::string Line(double x1, double y1, double x2, double y2, std::string_view style);
std::string Rectangle(double x, double y, double width, double height, std::string_view style);
std::string Path(std::string_view data, std::string_view style);

/// Where a plane lies on the page: its origin, and the length of one of its units.
struct Plot
{
  double x;
  double y;
  double scale;

  double X(double planeX) const { return x + planeX * scale; }
  double Y(double planeY) const { return y - planeY * scale; }
};

/// The data of a path along outlines in a plane; empty for none.
std::string Along(const std::vector<std::vector<PlanePoint>> &outlines, const Plot &plot);

/// A part of a plane and the colours of its points.
struct ColourField
{
  PlanePoint low;
  PlanePoint high;
  double step; ///< the height of the strips that it is made of, and the distance at which colours are asked for
  std::function<RealRgb(double x, double y)> colourAt;
};

/// The field within a path: strips, each a gradient. `id` must be new in the document.
std::string Filled(std::string_view pathData, const ColourField &field, const Plot &plot, const std::string &id);

} // namespace cli::svg
