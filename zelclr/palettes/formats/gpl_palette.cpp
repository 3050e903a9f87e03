#include "zelclr/palettes/formats/gpl_palette.h"

#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/palettes/formats/internal/text_lines.h"

#include <cstdio>

namespace ZelClr {

namespace {

constexpr std::string_view kFirstLine = "GIMP Palette";
constexpr std::size_t kMostColumns = 256;

} // namespace

bool RecognisesGpl(std::string_view bytes)
{
  std::string_view line;
  return TextLines(bytes).Next(line) && line == kFirstLine;
}

std::optional<SwatchBook> ReadGpl(std::string_view bytes, ReadProblem &problem)
{
  TextLines lines(bytes);
  if (!IsText(bytes, problem))
    return std::nullopt;
  const auto refuse = [&](std::string reason) {
    problem = {lines.Number(), std::move(reason)};
    return std::nullopt;
  };
  std::string_view line;
  if (!lines.Next(line) || line != kFirstLine)
    return refuse("a GPL palette begins with \"" + std::string(kFirstLine) + "\"");

  SwatchBook book;
  bool hasAlpha = false;
  std::size_t transparent = 0;
  while (lines.Next(line)) {
    if (line.size() > kMostLineBytes)
      return refuse(kLineTooLong);
    const bool inHeader = book.swatches.empty();
    if (line.starts_with('#') && inHeader)
      book.description.append(ZelUtl::Trimmed(line.substr(1))).append("\n");
    if (line.empty() || line.starts_with('#'))
      continue;
    if (inHeader && line.starts_with("Name:")) {
      book.name = ZelUtl::Trimmed(line.substr(5));
      continue;
    }
    if (inHeader && line.starts_with("Columns:")) {
      const auto columns = ZelUtl::IntegerFromText<unsigned>(ZelUtl::Trimmed(line.substr(8)));
      if (!columns || *columns > kMostColumns)
        return refuse("the number of columns must be from 0 to 256");
      book.columns = *columns;
      continue;
    }
    if (inHeader && line.starts_with("Channels:")) {
      const auto channels = ZelUtl::Trimmed(line.substr(9));
      hasAlpha = channels == "RGBA";
      if (!hasAlpha && channels != "RGB")
        return refuse("the channels must be RGB or RGBA");
      continue;
    }
    double components[4] = {};
    for (int i = 0; i < (hasAlpha ? 4 : 3); ++i) {
      const std::string_view word = NextWord(line);
      const auto number = ZelUtl::IntegerFromText<std::uint8_t>(word);
      if (!number)
        return refuse("\"" + std::string(word.substr(0, 40)) + "\" is no component from 0 to 255");
      components[i] = *number / 255.0;
    }
    if (book.swatches.size() == kMostSwatches)
      return refuse(TooManySwatches());
    transparent += hasAlpha && components[3] < 1.0;
    book.swatches.push_back(RgbSwatch(std::string(line), components[0], components[1], components[2]));
    book.swatches.back().line = lines.Number();
  }
  book.description = ZelUtl::Trimmed(book.description);
  if (transparent > 0)
    book.notes.push_back(CountOf(transparent, "colour lost its", "colours lost their") + " transparency");
  return book;
}

std::optional<WrittenPalette> WriteGpl(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  SwatchBook book =
    Fitted(source, {.bookName = true, .description = true, .columns = true, .rgbSteps = 255}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  if (book.columns > kMostColumns) {
    book.columns = 0;
    written.notes.emplace_back("the number of columns was left out");
  }

  std::string &text = written.bytes;
  text.append(kFirstLine).append("\nName: ").append(OneLine(book.name)).append("\n");
  text.append("Columns: ").append(std::to_string(book.columns)).append("\n");
  std::string comments; // without blank lines at both ends, which reading takes away
  std::string_view line;
  for (TextLines lines(book.description); lines.Next(line);)
    comments.append(OneLine(line)).append("\n");
  TextLines lines(ZelUtl::Trimmed(comments));
  bool hasComments = false;
  for (; lines.Next(line); hasComments = true)
    text.append(line.empty() ? "#" : "# ").append(line).append("\n");
  if (!hasComments)
    text += "#\n"; // the customary end of the header
  for (const Swatch &swatch : book.swatches) {
    char row[16];
    std::snprintf(row, sizeof row, "%3u %3u %3u", ByteOfChannel(swatch.values[0]), ByteOfChannel(swatch.values[1]),
                  ByteOfChannel(swatch.values[2]));
    text += row;
    if (const std::string name = OneLine(swatch.name); !name.empty())
      text.append("\t").append(name);
    text += "\n";
  }
  return written;
}

} // namespace ZelClr
