#include "cli/profile/svg.h"

#include "cli/output.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace cli::svg {

namespace {

std::string Attribute(const char *name, double value)
{
  return std::string(" ") + name + "=\"" + Number(value) + "\"";
}

std::string Class(std::string_view style)
{
  return " class=\"" + std::string(style) + "\"";
}

double Difference(const RealRgb &a, const RealRgb &b)
{
  return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

/// The first and the last colour, and those between that a straight line from one to the other would miss by what an
/// eye might see.
void AddStops(const std::vector<RealRgb> &colours, std::size_t first, std::size_t last, std::vector<std::size_t> &stops)
{
  constexpr double kNotSeen = 2.0 / 255.0;
  std::size_t worst = first;
  double most = kNotSeen;
  for (std::size_t i = first + 1; i < last; ++i) {
    const double share = static_cast<double>(i - first) / static_cast<double>(last - first);
    const auto between = [share](double from, double to) { return from + share * (to - from); };
    const RealRgb straight = {between(colours[first].red, colours[last].red),
                              between(colours[first].green, colours[last].green),
                              between(colours[first].blue, colours[last].blue)};
    const double missed = Difference(straight, colours[i]);
    if (missed > most) {
      most = missed;
      worst = i;
    }
  }
  if (worst == first) {
    stops.push_back(last);
    return;
  }
  AddStops(colours, first, worst, stops);
  AddStops(colours, worst, last, stops);
}

} // namespace

std::string Number(double number)
{
  const std::string text = ZelUtl::TextFromNumber(number, 2);
  return text == "-0" ? "0" : text;
}

std::string Hex(const RealRgb &colour)
{
  const auto byte = [](double component) { return static_cast<unsigned>(std::lround(component * 255.0)); };
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(colour.red) & 255u, byte(colour.green) & 255u,
                byte(colour.blue) & 255u);
  return text;
}

std::string Text(double x, double y, std::string_view style, std::string_view text)
{
  return "<text" + Attribute("x", x) + Attribute("y", y) + Class(style) + ">" + Escaped(text) + "</text>\n";
}

std::string Line(double x1, double y1, double x2, double y2, std::string_view style)
{
  return "<line" + Attribute("x1", x1) + Attribute("y1", y1) + Attribute("x2", x2) + Attribute("y2", y2) +
         Class(style) + "/>\n";
}

std::string Rectangle(double x, double y, double width, double height, std::string_view style)
{
  return "<rect" + Attribute("x", x) + Attribute("y", y) + Attribute("width", width) + Attribute("height", height) +
         Class(style) + "/>\n";
}

std::string Path(std::string_view data, std::string_view style)
{
  return data.empty() ? "" : "<path d=\"" + std::string(data) + "\"" + Class(style) + "/>\n";
}

std::string Along(const std::vector<std::vector<PlanePoint>> &outlines, const Plot &plot)
{
  std::string data;
  for (const auto &outline : outlines) {
    for (std::size_t i = 0; i + 1 < outline.size(); ++i)
      data += (i == 0 ? "M" : "L") + Number(plot.X(outline[i].x)) + " " + Number(plot.Y(outline[i].y));
    data += "Z";
  }
  return data;
}

std::string Filled(std::string_view pathData, const ColourField &field, const Plot &plot, const std::string &id)
{
  if (pathData.empty())
    return {};
  std::string gradients, strips;
  const auto steps = [&field](double length) {
    return std::max(std::size_t{1}, static_cast<std::size_t>(std::ceil(length / field.step)));
  };
  const std::size_t columns = steps(field.high.x - field.low.x);
  const std::size_t rows = steps(field.high.y - field.low.y);
  const double top = plot.Y(field.low.y + static_cast<double>(rows) * field.step);
  for (std::size_t row = 0; row < rows; ++row) {
    const double low = field.low.y + static_cast<double>(row) * field.step;
    std::vector<RealRgb> colours;
    for (std::size_t column = 0; column <= columns; ++column)
      colours.push_back(field.colourAt(field.low.x + static_cast<double>(column) * field.step, low + field.step / 2.0));
    std::vector<std::size_t> stops = {0};
    AddStops(colours, 0, columns, stops);

    const std::string gradient = id + "-" + std::to_string(row);
    gradients += "<linearGradient id=\"" + gradient + "\">";
    for (const std::size_t stop : stops)
      gradients += "<stop offset=\"" +
                   ZelUtl::TextFromNumber(static_cast<double>(stop) / static_cast<double>(columns), 4) +
                   "\" stop-color=\"" + Hex(colours[stop]) + "\"/>";
    gradients += "</linearGradient>\n";
    // From the bottom up; each strip goes on to the top, under those that follow. So the edge of each lies on colour
    // and not on the ground, which would shine through where a pixel belongs to two strips.
    strips += "<rect" + Attribute("x", plot.X(field.low.x)) + Attribute("y", top) +
              Attribute("width", static_cast<double>(columns) * field.step * plot.scale) +
              Attribute("height", plot.Y(low) - top) + " fill=\"url(#" + gradient + ")\"/>\n";
  }
  return "<defs><clipPath id=\"" + id + "\"><path clip-rule=\"evenodd\" d=\"" + std::string(pathData) +
         "\"/></clipPath>\n" + gradients + "</defs>\n<g clip-path=\"url(#" + id + ")\">\n" + strips + "</g>\n";
}

} // namespace cli::svg
