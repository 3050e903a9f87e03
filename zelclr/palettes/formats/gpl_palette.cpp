#include "zelclr/palettes/formats/gpl_palette.h"

#include "zelclr/palettes/formats/internal/text_lines.h"

namespace ZelClr {

namespace {

constexpr std::string_view kFirstLine = "GIMP Palette";

} // namespace

bool IsGplPalette(std::string_view bytes)
{
  std::string_view line;
  return TextLines(bytes).Next(line) && line == kFirstLine;
}

std::optional<ReadPalette> ReadGplPalette(std::string_view bytes, ReadProblem &problem)
{
  TextLines lines(bytes);
  const auto refuse = [&](std::string reason) {
    problem = {lines.Number(), std::move(reason)};
    return std::nullopt;
  };
  std::string_view line;
  if (!lines.Next(line) || line != kFirstLine)
    return refuse("a GPL palette begins with \"" + std::string(kFirstLine) + "\"");

  ReadPalette palette;
  while (lines.Next(line)) {
    if (line.size() > kMostLineBytes)
      return refuse(kLineTooLong);
    if (line.empty() || line.starts_with('#'))
      continue;
    const bool inHeader = palette.colours.empty();
    if (inHeader && line.starts_with("Name:")) {
      palette.name = ZelUtl::Trimmed(line.substr(5));
      continue;
    }
    if (inHeader && line.starts_with("Columns:")) {
      const auto columns = ZelUtl::IntegerFromText<int>(ZelUtl::Trimmed(line.substr(8)));
      if (!columns || *columns < 0 || *columns > 256)
        return refuse("the number of columns must be from 0 to 256");
      continue;
    }
    std::uint8_t components[3];
    for (std::uint8_t &component : components) {
      const std::string_view word = NextWord(line);
      const auto number = ZelUtl::IntegerFromText<std::uint8_t>(word);
      if (!number)
        return refuse("\"" + std::string(word.substr(0, 40)) + "\" is no component from 0 to 255");
      component = *number;
    }
    if (palette.colours.size() == kMostColours)
      return refuse("more than " + std::to_string(kMostColours) + " colours");
    palette.colours.push_back(
      {CLR_COLORSPEC::MakeRGB(components[0], components[1], components[2]), std::string(line), lines.Number()});
  }
  return palette;
}

} // namespace ZelClr
