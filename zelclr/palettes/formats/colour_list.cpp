#include "zelclr/palettes/formats/colour_list.h"

#include "zelclr/colour/colour_names.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/palettes/formats/internal/text_lines.h"

namespace ZelClr {

namespace {

bool IsComment(std::string_view line)
{
  return line.starts_with("//") || line == "#" || line.starts_with("# ") || line.starts_with("#\t");
}

/// Where the colour at the start of a line ends: at the first blank that is not within its parentheses.
std::size_t EndOfColour(std::string_view line)
{
  const auto blank = std::min(line.find_first_of(" \t"), line.size());
  if (line.find('(') > blank)
    return blank;
  const auto close = line.find(')');
  return close == std::string_view::npos ? blank : std::min(line.find_first_of(" \t", close), line.size());
}

/// Whether the components are what people may mean: as Validate says, but whatever the palette, with the percentages of
/// CMYK100, which Validate does not look at, and with any bytes for the models that documents do not hold.
bool IsInRange(const CLR_COLORSPEC &colour)
{
  CLR_COLORSPEC bare(colour);
  bare.SetPaletteGuid({});
  switch (colour.GetType()) {
  case ClrModel::Xyz:
  case ClrModel::ScRgb:
  case ClrModel::Rgba:
  case ClrModel::Bgra:
    return true;
  case ClrModel::Pantone:
  case ClrModel::PantoneHex:
    return colour.GetDensity() <= 100;
  case ClrModel::Cmyk100:
    bare.SetType(ClrModel::Cmyk);
    return bare.Validate();
  default:
    return bare.Validate();
  }
}

} // namespace

std::optional<CLR_COLORSPEC> ColorSpecFromInput(std::string_view text, std::string &reason)
{
  if (auto named = ColorSpecFromName(text))
    return named;
  std::string expanded(text);
  if (text.size() == 4 && text.front() == '#')
    expanded = {'#', text[1], text[1], text[2], text[2], text[3], text[3]};
  auto colour = ColorSpecFromText(expanded, &reason);
  if (colour && !IsInRange(*colour)) {
    reason = std::string(text.substr(0, 80)) + " is out of the range of its model";
    return std::nullopt;
  }
  return colour;
}

std::optional<ReadPalette> ReadColourList(std::string_view bytes, ReadProblem &problem)
{
  TextLines lines(bytes);
  ReadPalette palette;
  std::string_view line;
  while (lines.Next(line)) {
    if (line.size() > kMostLineBytes) {
      problem = {lines.Number(), kLineTooLong};
      return std::nullopt;
    }
    if (line.empty() || IsComment(line))
      continue;
    const std::size_t end = EndOfColour(line);
    const std::string_view text = line.substr(0, end);
    const std::string_view name = ZelUtl::Trimmed(line.substr(end));
    std::string reason;
    const auto colour = ColorSpecFromInput(text, reason);
    if (!colour || (!name.empty() && ColorSpecFromName(text))) {
      if (colour)
        reason = "\"" + std::string(line.substr(0, 40)) + "\" is no colour; a colour name stands alone";
      problem = {lines.Number(), std::move(reason)};
      return std::nullopt;
    }
    if (palette.colours.size() == kMostColours) {
      problem = {lines.Number(), "more than " + std::to_string(kMostColours) + " colours"};
      return std::nullopt;
    }
    const bool isName = ColorSpecFromName(text).has_value();
    palette.colours.push_back({*colour, std::string(isName ? text : name), lines.Number()});
  }
  return palette;
}

} // namespace ZelClr
