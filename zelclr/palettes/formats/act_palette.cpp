#include "zelclr/palettes/formats/act_palette.h"

#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

#include <algorithm>

namespace ZelClr {

namespace {

constexpr std::size_t kColours = 256;
constexpr std::size_t kTableSize = kColours * 3;
constexpr std::uint16_t kNone = 0xFFFF;

bool HasSize(std::string_view bytes)
{
  return bytes.size() == kTableSize || bytes.size() == kTableSize + 4;
}

bool IsText(std::string_view bytes)
{
  return std::all_of(bytes.begin(), bytes.end(), [](char c) {
    return static_cast<unsigned char>(c) >= ' ' || c == '\n' || c == '\r' || c == '\t';
  });
}

} // namespace

bool RecognisesAct(std::string_view bytes)
{
  return HasSize(bytes) && !IsText(bytes);
}

std::optional<SwatchBook> ReadAct(std::string_view bytes, ReadProblem &problem)
{
  if (!HasSize(bytes)) {
    problem = {0, "an ACT palette has 768 or 772 bytes"};
    return std::nullopt;
  }
  ZelUtl::ByteReader reader(BytesOf(bytes));
  const auto table = reader.Take(kTableSize);
  std::size_t count = kColours;
  SwatchBook book;
  if (!reader.AtEnd()) {
    const std::size_t stated = reader.ReadBig<std::uint16_t>();
    const auto transparent = reader.ReadBig<std::uint16_t>();
    if (stated > kColours || (transparent != kNone && transparent >= kColours)) {
      problem = {0, "an ACT palette has at most 256 colours"};
      return std::nullopt;
    }
    count = stated == 0 ? kColours : stated;
    if (transparent < count)
      book.notes.push_back("colour " + std::to_string(transparent + 1) + " is no longer the transparent one");
  }
  for (std::size_t i = 0; i < count; ++i)
    book.swatches.push_back(RgbSwatch({}, table[3 * i] / 255.0, table[3 * i + 1] / 255.0, table[3 * i + 2] / 255.0));
  return Finished(std::move(book), problem);
}

std::optional<WrittenPalette> WriteAct(const SwatchBook &original, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(original, {.names = false, .rgbSteps = 255}, written.notes);
  if (!IsWritable(book, kColours, reason))
    return std::nullopt;
  ZelUtl::ByteWriter writer;
  for (const Swatch &swatch : book.swatches) {
    for (std::size_t i = 0; i < 3; ++i)
      writer.Write(static_cast<std::uint8_t>(Scaled(swatch.values[i], 255.0)));
  }
  const bool isWhole = book.swatches.size() == kColours;
  if (!isWhole || IsText(TextOf(writer.Bytes()))) {
    writer.Write(std::vector<std::uint8_t>(kTableSize - writer.Bytes().size()));
    writer.WriteBig(static_cast<std::uint16_t>(book.swatches.size()));
    writer.WriteBig(kNone);
  }
  written.bytes = TextOf(writer.Bytes());
  return written;
}

} // namespace ZelClr
