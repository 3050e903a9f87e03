#include "cli/gradient/drawing.h"

#include "cli/image/image_file.h"
#include "cli/output.h"
#include "cli/profile/svg.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace cli {

namespace {

using namespace svg;

constexpr COLORREF kWhite = 0xFFFFFF;

// --- SVG: millimetres ------------------------------------------------------------------------------------------------

constexpr double kLeft = 8.0;
constexpr double kWidth = 194.0;
constexpr double kHeight = 16.0;
constexpr double kPitch = 34.0;       ///< from strip to strip
constexpr std::size_t kStopStep = 11; ///< of kDrawn - 1 steps

constexpr std::string_view kStyle = R"(<style>
text { font-family: "Helvetica Neue", Helvetica, Arial, "Liberation Sans", "DejaVu Sans", sans-serif; fill: #1d1d1f }
.heading { font-size: 3.6px; font-weight: 600 }
.tick { font-size: 2.6px; fill: #6b6b70; text-anchor: middle }
.ground { fill: #fff } .out { fill: #1d1d1f }
.mark { stroke: #6b6b70; stroke-width: .25 } .edge { stroke: #1d1d1f; stroke-width: .35 }
</style>
)";

std::string HexOf(COLORREF rgb)
{
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(rgb & 255),
                static_cast<unsigned>(rgb >> 8 & 255), static_cast<unsigned>(rgb >> 16 & 255));
  return text;
}

/// Where a percent of the fill is along a strip, 0 to 1.
double ShareOf(const Strip &strip, double percent)
{
  const double length = strip.stops.back() - strip.stops.front();
  return length > 0.0 ? (percent - strip.stops.front()) / length : 0.0;
}

std::string SvgOf(const Strip &strip, const std::string &id, double top)
{
  const auto x = [&](double percent) { return kLeft + kWidth * ShareOf(strip, percent); };
  std::string drawing = "<defs><linearGradient id=\"" + id + "\">";
  for (std::size_t i = 0; i < strip.drawn.size(); i += kStopStep)
    drawing += "<stop offset=\"" + ZelUtl::TextFromNumber(static_cast<double>(i) / (kDrawn - 1), 4) +
               "\" stop-color=\"" + HexOf(strip.drawn[i].screen.value_or(kWhite)) + "\"/>";
  drawing += "</linearGradient></defs>\n";
  drawing += Text(kLeft, top - 2, "heading",
                  strip.blend + ", in " + std::string(ZelClr::FindColourModel(strip.model)->textName));
  drawing += "<rect x=\"" + Number(kLeft) + "\" y=\"" + Number(top) + "\" width=\"" + Number(kWidth) + "\" height=\"" +
             Number(kHeight) + "\" fill=\"url(#" + id + ")\"/>\n";
  const double bottom = top + kHeight;
  for (const double stop : strip.stops)
    drawing += Line(x(stop), bottom, x(stop), bottom + 3.5, "mark") +
               Text(x(stop), bottom + 6.5, "tick", ZelUtl::TextFromNumber(stop, 2) + " %");
  bool isOut = !strip.drawn.front().holds;
  double from = strip.stops.front();
  std::vector<double> edges = strip.edges;
  edges.push_back(strip.stops.back());
  for (const double edge : edges) {
    if (isOut)
      drawing += Rectangle(x(from), bottom + 0.8, x(edge) - x(from), 1, "out");
    isOut = !isOut;
    from = edge;
  }
  for (const double edge : strip.edges)
    drawing += Line(x(edge), top, x(edge), bottom + 2.6, "edge");
  return drawing;
}

// --- PNG: pixels -----------------------------------------------------------------------------------------------------

constexpr std::uint32_t kStripRows = 96;
constexpr std::uint32_t kMarkRows = 12;
constexpr std::uint32_t kGapRows = 12;

void Put(std::vector<std::uint8_t> &row, std::size_t column, COLORREF rgb)
{
  for (int channel = 0; channel < 3; ++channel)
    row[3 * column + static_cast<std::size_t>(channel)] = static_cast<std::uint8_t>(rgb >> (8 * channel));
}

} // namespace

std::string SvgOfStrips(const std::vector<Strip> &strips, const std::string &press)
{
  const double height = 10.0 + kPitch * static_cast<double>(strips.size()) + (press.empty() ? 0.0 : 6.0);
  std::string page = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"210mm\" height=\"" + Number(height) +
                     "mm\" viewBox=\"0 0 210 " + Number(height) + "\" role=\"img\">\n<title>Gradient</title>\n" +
                     std::string(kStyle) + Rectangle(0, 0, 210, height, "ground");
  for (std::size_t i = 0; i < strips.size(); ++i)
    page += SvgOf(strips[i], "strip-" + std::to_string(i), 10.0 + kPitch * static_cast<double>(i));
  if (!press.empty())
    page += Text(kLeft, height - 4, "heading", "Dark bars: beyond the gamut of " + press);
  return page + "</svg>\n";
}

void WriteStripsAsPng(const std::vector<Strip> &strips, const std::string &path)
{
  const auto count = static_cast<std::uint32_t>(strips.size());
  ImageInfo info;
  info.width = kDrawn;
  info.height = count * (kStripRows + kMarkRows) + (count - 1) * kGapRows;
  info.format = {ColorSystem::ColorModel::Rgb, ColorSystem::SampleType::UInt8};
  info.isSrgb = true;
  const auto writer = CreateImage(path, ImageKind::Png, info);
  std::vector<std::uint8_t> row(info.ColourBytesPerRow());
  const auto write = [&](std::uint32_t rows) {
    for (std::uint32_t i = 0; i < rows; ++i)
      writer->WriteRows(1, row.data(), nullptr);
  };
  for (std::uint32_t strip = 0; strip < count; ++strip) {
    const std::vector<Shade> &drawn = strips[strip].drawn;
    if (strip > 0) {
      std::fill(row.begin(), row.end(), std::uint8_t{255});
      write(kGapRows);
    }
    for (std::size_t column = 0; column < drawn.size(); ++column)
      Put(row, column, drawn[column].screen.value_or(kWhite));
    write(kStripRows);
    for (std::uint32_t mark = 0; mark < kMarkRows; ++mark) {
      std::fill(row.begin(), row.end(), std::uint8_t{255});
      for (std::size_t column = 0; mark >= 2 && mark < 6 && column < drawn.size(); ++column)
        Put(row, column, drawn[column].holds ? kWhite : COLORREF{0});
      for (const double stop : strips[strip].stops) {
        const auto column = static_cast<std::size_t>(std::lround(ShareOf(strips[strip], stop) * (kDrawn - 1)));
        Put(row, std::min<std::size_t>(column, kDrawn - 1), 0x707070);
      }
      write(1);
    }
  }
  writer->Finish();
}

} // namespace cli
