#include "zelclr/palettes/formats/colour_list.h"

#include "zelclr/colour/colour_names.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/palettes/formats/internal/text_lines.h"

#include <cmath>

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

bool RecognisesColourList(std::string_view bytes)
{
  ReadProblem problem;
  return !bytes.empty() && IsText(bytes, problem);
}

std::optional<SwatchBook> ReadColourList(std::string_view bytes, ReadProblem &problem)
{
  TextLines lines(bytes);
  if (!IsText(bytes, problem))
    return std::nullopt;
  SwatchBook book;
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
    const bool isName = ColorSpecFromName(text).has_value();
    if (!colour || (!name.empty() && isName)) {
      if (colour)
        reason = "\"" + std::string(line.substr(0, 40)) + "\" is no colour; a colour name stands alone";
      problem = {lines.Number(), std::move(reason)};
      return std::nullopt;
    }
    if (book.swatches.size() == kMostSwatches) {
      problem = {lines.Number(), TooManySwatches()};
      return std::nullopt;
    }
    book.swatches.push_back(RecordSwatch(std::string(isName ? text : name), *colour));
    book.swatches.back().line = lines.Number();
  }
  return book;
}

namespace {

bool HasText(const CLR_COLORSPEC &record)
{
  return !TextFromColorSpec(record).empty();
}

bool IsNear(const std::array<double, 4> &a, const std::array<double, 4> &b, double tolerance)
{
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!(std::abs(a[i] - b[i]) <= tolerance))
      return false;
  }
  return true;
}

/// The record that holds the numbers of a swatch best.
CLR_COLORSPEC FinestRecord(const Swatch &swatch)
{
  const auto scaled = [&swatch](std::size_t i, double most) { return std::lround(swatch.values[i] * most); };
  const auto word = [&](std::size_t i) { return static_cast<std::uint16_t>(scaled(i, 65535.0)); };
  const auto percent = [&](std::size_t i) { return static_cast<std::uint8_t>(scaled(i, 100.0)); };
  if (swatch.model == SwatchModel::Record || IsNear(RecordSwatch({}, swatch.record).values, swatch.values, 1e-7))
    return swatch.record;
  if (swatch.model == SwatchModel::Gray)
    return CLR_COLORSPEC::MakeGRAY16(word(0));
  if (swatch.model == SwatchModel::Cmyk) {
    const CLR_COLORSPEC percents = CLR_COLORSPEC::MakeCMYK100(percent(0), percent(1), percent(2), percent(3));
    return IsNear(RecordSwatch({}, percents).values, swatch.values, 1e-7) ? percents : swatch.record;
  }
  if (swatch.model == SwatchModel::Lab)
    return swatch.record;
  const CLR_COLORSPEC words = CLR_COLORSPEC::MakeRGB48(word(0), word(1), word(2));
  if (IsNear(RecordSwatch({}, words).values, swatch.values, 1e-7))
    return words;
  const auto component = [&swatch](std::size_t i) { return static_cast<float>(swatch.values[i]); };
  return CLR_COLORSPEC::MakeSCRGB(component(0), component(1), component(2));
}

} // namespace

std::optional<WrittenPalette> WriteColourList(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(source,
                                 {.cmyk = true,
                                  .gray = true,
                                  .lab = true,
                                  .keepsRecord = HasText,
                                  .rgbBeyond = kAnyRgb,
                                  .otherwise = SwatchModel::Cmyk},
                                 written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  std::size_t rounded = 0;
  for (const Swatch &swatch : book.swatches) {
    const CLR_COLORSPEC record = FinestRecord(swatch);
    rounded += !IsNear(RecordSwatch({}, record).values, swatch.values, 1e-6);
    written.bytes.append(TextFromColorSpec(record));
    if (const std::string name = OneLine(swatch.name); !name.empty())
      written.bytes.append(" ").append(name);
    written.bytes += "\n";
  }
  if (rounded > 0)
    written.notes.push_back(CountOf(rounded, "colour was", "colours were") + " rounded");
  return written;
}

} // namespace ZelClr
