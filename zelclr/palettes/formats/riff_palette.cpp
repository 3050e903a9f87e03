#include "zelclr/palettes/formats/riff_palette.h"

#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

namespace ZelClr {

namespace {

using ZelUtl::ByteReader;
using ZelUtl::ByteWriter;

constexpr std::size_t kMostColours = 65535;
constexpr std::uint16_t kVersion = 0x0300;
constexpr std::uint8_t kIsIndex = 0x02; // PC_EXPLICIT

/// The data of the first chunk of that name.
std::optional<ByteReader> FindChunk(ByteReader chunks, std::string_view name)
{
  while (chunks.Ok() && !chunks.AtEnd()) {
    const std::string found = TextOf(chunks.Take(4));
    const std::size_t size = chunks.Read<std::uint32_t>();
    const auto data = chunks.Take(size);
    if (chunks.Ok() && found == name)
      return ByteReader(data);
    if (size % 2 != 0 && !chunks.AtEnd())
      chunks.Take(1);
  }
  return std::nullopt;
}

} // namespace

bool RecognisesRiff(std::string_view bytes)
{
  return bytes.starts_with("RIFF") && bytes.substr(0, 12).ends_with("PAL ");
}

std::optional<SwatchBook> ReadRiff(std::string_view bytes, ReadProblem &problem)
{
  const auto refuse = [&problem](std::string reason) {
    problem = {0, std::move(reason)};
    return std::nullopt;
  };
  if (bytes.size() < 12 || !RecognisesRiff(bytes))
    return refuse("not a RIFF palette");
  ByteReader file(BytesOf(bytes).subspan(4));
  const std::size_t size = file.Read<std::uint32_t>();
  ByteReader riff(file.Take(size));
  riff.Take(4);
  if (!riff.Ok())
    return refuse("the file is shorter than it says");
  auto data = FindChunk(riff, "data");
  if (!data)
    return refuse("the palette has no whole chunk \"data\"");
  const auto version = data->Read<std::uint16_t>();
  const std::size_t count = data->Read<std::uint16_t>();
  if (version != kVersion)
    return refuse("a RIFF palette is of version 3.0");
  const auto table = data->Take(count * 4);
  if (!data->Ok())
    return refuse("the palette has fewer colours than it says");

  SwatchBook book;
  for (std::size_t i = 0; i < count; ++i) {
    const auto entry = table.subspan(4 * i, 4);
    if ((entry[3] & kIsIndex) != 0)
      return refuse("colour " + std::to_string(i + 1) + " is an index of the hardware");
    book.swatches.push_back(RgbSwatch({}, entry[0] / 255.0, entry[1] / 255.0, entry[2] / 255.0));
  }
  return Finished(std::move(book), problem);
}

std::optional<WrittenPalette> WriteRiff(const SwatchBook &original, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(original, {.names = false, .rgbSteps = 255}, written.notes);
  if (!IsWritable(book, kMostColours, reason))
    return std::nullopt;
  const auto dataSize = static_cast<std::uint32_t>(4 + 4 * book.swatches.size());
  ByteWriter writer;
  writer.Write(BytesOf("RIFF"));
  writer.Write(dataSize + 12);
  writer.Write(BytesOf("PAL data"));
  writer.Write(dataSize);
  writer.Write(kVersion);
  writer.Write(static_cast<std::uint16_t>(book.swatches.size()));
  for (const Swatch &swatch : book.swatches) {
    for (std::size_t i = 0; i < 3; ++i)
      writer.Write(static_cast<std::uint8_t>(Scaled(swatch.values[i], 255.0)));
    writer.Write(std::uint8_t{0});
  }
  written.bytes = TextOf(writer.Bytes());
  return written;
}

} // namespace ZelClr
