#include "zelclr/palettes/formats/jasc_palette.h"

#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/palettes/formats/internal/text_lines.h"

namespace ZelClr {

namespace {

constexpr std::string_view kFirstLine = "JASC-PAL";
constexpr std::string_view kVersion = "0100";

} // namespace

bool RecognisesJasc(std::string_view bytes)
{
  std::string_view line;
  return TextLines(bytes).Next(line) && line == kFirstLine;
}

std::optional<SwatchBook> ReadJasc(std::string_view bytes, ReadProblem &problem)
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
    return refuse("a JASC palette begins with \"" + std::string(kFirstLine) + "\"");
  if (!lines.Next(line) || line != kVersion)
    return refuse("the version must be " + std::string(kVersion));
  const auto announced = lines.Next(line) ? ZelUtl::IntegerFromText<std::size_t>(line) : std::optional<std::size_t>();
  if (!announced)
    return refuse("the number of colours is missing");
  if (*announced > kMostSwatches)
    return refuse(TooManySwatches());

  SwatchBook book;
  std::size_t transparent = 0;
  while (lines.Next(line)) {
    if (line.empty())
      continue;
    if (book.swatches.size() == *announced)
      return refuse("more colours than announced");
    double components[4] = {0.0, 0.0, 0.0, 1.0};
    std::size_t count = 0;
    for (; count < 4 && !line.empty(); ++count) {
      const std::string_view word = NextWord(line);
      const auto number = ZelUtl::IntegerFromText<std::uint8_t>(word);
      if (!number)
        return refuse("\"" + std::string(word.substr(0, 40)) + "\" is no component from 0 to 255");
      components[count] = *number / 255.0;
    }
    if (count < 3 || !line.empty())
      return refuse("a colour has three components");
    transparent += components[3] < 1.0;
    book.swatches.push_back(RgbSwatch({}, components[0], components[1], components[2]));
    book.swatches.back().line = lines.Number();
  }
  if (book.swatches.size() < *announced)
    return refuse("fewer colours than announced");
  if (transparent > 0)
    book.notes.push_back(CountOf(transparent, "colour lost its", "colours lost their") + " transparency");
  return book;
}

std::optional<WrittenPalette> WriteJasc(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(source, {.names = false, .rgbSteps = 255}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  std::string &text = written.bytes;
  text.append(kFirstLine).append("\r\n").append(kVersion).append("\r\n");
  text.append(std::to_string(book.swatches.size())).append("\r\n");
  for (const Swatch &swatch : book.swatches) {
    for (std::size_t i = 0; i < 3; ++i)
      text.append(std::to_string(ByteOfChannel(swatch.values[i]))).append(i < 2 ? " " : "\r\n");
  }
  return written;
}

} // namespace ZelClr
