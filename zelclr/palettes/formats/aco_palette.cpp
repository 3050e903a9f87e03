#include "zelclr/palettes/formats/aco_palette.h"

#include "zelclr/palettes/formats/act_palette.h"
#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

#include <algorithm>
#include <cmath>

namespace ZelClr {

namespace {

using ZelUtl::ByteReader;
using ZelUtl::ByteWriter;

constexpr std::size_t kMostColours = 65535;
constexpr std::uint16_t kMostSpace = 10;
constexpr std::string_view kGroupsSignature = "8BIM";

enum Space : std::uint16_t
{
  Rgb = 0,
  Hsb = 1,
  Cmyk = 2,
  Lab = 7,
  Gray = 8,
  WideCmyk = 9,
};

using Numbers = std::array<std::uint16_t, 4>;

/// Smith's hexcone: each component follows the hue as a trapezoid of height V from V (1 - S).
///
///   k(n) = (n + H / 60) mod 6     component = V - V S max(0, min(k, 4 - k, 1)),  n = 5 red, 3 green, 1 blue
Swatch SwatchFromHsb(std::string name, double hue, double saturation, double brightness)
{
  const auto component = [=](double n) {
    const double k = std::fmod(n + hue * 6.0, 6.0);
    return brightness - brightness * saturation * std::max(0.0, std::min({k, 4.0 - k, 1.0}));
  };
  return RgbSwatch(std::move(name), component(5.0), component(3.0), component(1.0));
}

std::optional<Swatch> SwatchFrom(std::uint16_t space, const Numbers &numbers, std::string name, std::string &reason)
{
  const auto full = [&](int i) { return numbers[static_cast<std::size_t>(i)] / 65535.0; };
  const auto wide = [&](int i) { return numbers[static_cast<std::size_t>(i)] / 10000.0; };
  const auto hundredth = [&](int i) { return static_cast<std::int16_t>(numbers[static_cast<std::size_t>(i)]) / 100.0; };
  switch (space) {
  case Rgb:
    return RgbSwatch(std::move(name), full(0), full(1), full(2));
  case Hsb:
    return SwatchFromHsb(std::move(name), full(0), full(1), full(2));
  case Cmyk:
    return CmykSwatch(std::move(name), 1.0 - full(0), 1.0 - full(1), 1.0 - full(2), 1.0 - full(3));
  case Lab:
    if (numbers[0] > 10000 || std::abs(hundredth(1)) > 128.0 || std::abs(hundredth(2)) > 128.0)
      break;
    return LabSwatch(std::move(name), hundredth(0), hundredth(1), hundredth(2));
  case Gray:
    if (numbers[0] > 10000)
      break;
    return GraySwatch(std::move(name), wide(0));
  case WideCmyk:
    if (*std::max_element(numbers.begin(), numbers.end()) > 10000)
      break;
    return CmykSwatch(std::move(name), wide(0), wide(1), wide(2), wide(3));
  default:
    reason = "it is of a colour book or an unknown colour space (" + std::to_string(space) + ")";
    return std::nullopt;
  }
  reason = "a component is out of its range";
  return std::nullopt;
}

/// One list: its header and colours.
std::optional<SwatchBook> ReadList(ByteReader &reader, std::string &reason)
{
  const auto version = reader.ReadBig<std::uint16_t>();
  const std::size_t count = reader.ReadBig<std::uint16_t>();
  if (!reader.Ok() || (version != 1 && version != 2)) {
    reason = "an ACO palette is of version 1 or 2";
    return std::nullopt;
  }
  SwatchBook book;
  std::size_t hsb = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const auto space = reader.ReadBig<std::uint16_t>();
    Numbers numbers;
    for (std::uint16_t &number : numbers)
      number = reader.ReadBig<std::uint16_t>();
    std::string name;
    if (version == 2) {
      const std::size_t units = reader.ReadBig<std::uint32_t>();
      name = ReadUtf16(reader, units);
    }
    std::string trouble = "the file ends within it";
    auto swatch = reader.Ok() ? SwatchFrom(space, numbers, std::move(name), trouble) : std::nullopt;
    if (!swatch) {
      reason = "colour " + std::to_string(i + 1) + ": " + trouble;
      return std::nullopt;
    }
    hsb += space == Hsb;
    book.swatches.push_back(std::move(*swatch));
  }
  if (hsb > 0)
    book.notes.push_back(CountOf(hsb, "HSB colour") + " became RGB");
  return book;
}

std::pair<Space, Numbers> NumbersOf(const Swatch &swatch)
{
  const auto &v = swatch.values;
  const auto ink = [](double value) { return static_cast<std::uint16_t>(65535 - Scaled(value, 65535.0)); };
  const auto hundredths = [](double value) {
    return static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(value * 100.0)));
  };
  switch (swatch.model) {
  case SwatchModel::Cmyk:
    return {Cmyk, {ink(v[0]), ink(v[1]), ink(v[2]), ink(v[3])}};
  case SwatchModel::Lab:
    return {Lab, {hundredths(v[0]), hundredths(v[1]), hundredths(v[2]), 0}};
  case SwatchModel::Gray:
    return {Gray, {Scaled(v[0], 10000.0), 0, 0, 0}};
  default:
    return {Rgb, {Scaled(v[0], 65535.0), Scaled(v[1], 65535.0), Scaled(v[2], 65535.0), 0}};
  }
}

void WriteList(ByteWriter &writer, std::uint16_t version, const SwatchBook &book)
{
  writer.WriteBig(version);
  writer.WriteBig(static_cast<std::uint16_t>(book.swatches.size()));
  for (const Swatch &swatch : book.swatches) {
    const auto [space, numbers] = NumbersOf(swatch);
    writer.WriteBig(static_cast<std::uint16_t>(space));
    for (const std::uint16_t number : numbers)
      writer.WriteBig(number);
    if (version == 1)
      continue;
    const std::u16string name = Utf16FromUtf8(swatch.name);
    writer.WriteBig(static_cast<std::uint32_t>(name.size() + 1));
    WriteUtf16(writer, name);
  }
}

} // namespace

bool RecognisesAco(std::string_view bytes)
{
  ByteReader reader(BytesOf(bytes));
  const auto version = reader.ReadBig<std::uint16_t>();
  const auto count = reader.ReadBig<std::uint16_t>();
  const auto space = reader.ReadBig<std::uint16_t>();
  if (!reader.Ok() || (version != 1 && version != 2) || count == 0 || space > kMostSpace)
    return false;
  ReadProblem problem;
  return !RecognisesAct(bytes) || ReadAco(bytes, problem).has_value(); // a dark colour table may begin like this, too
}

std::optional<SwatchBook> ReadAco(std::string_view bytes, ReadProblem &problem)
{
  const auto refuse = [&problem](std::string reason) {
    problem = {0, std::move(reason)};
    return std::nullopt;
  };
  ByteReader reader(BytesOf(bytes));
  std::string reason;
  auto book = ReadList(reader, reason);
  const bool isFirst = bytes.starts_with(std::string_view("\0\1", 2));
  if (book && isFirst && bytes.substr(bytes.size() - reader.Remaining()).starts_with(std::string_view("\0\2", 2))) {
    const std::size_t count = book->swatches.size();
    book = ReadList(reader, reason);
    if (book && book->swatches.size() != count)
      return refuse("its two lists have " + std::to_string(count) + " and " + CountOf(book->swatches.size(), "colour"));
  }
  if (!book)
    return refuse(reason);
  if (bytes.substr(bytes.size() - reader.Remaining()).starts_with(kGroupsSignature))
    book->notes.push_back("what stands behind the colours about their groups was left out");
  else if (!reader.AtEnd())
    return refuse("there are bytes behind the last colour");
  return Finished(std::move(*book), problem);
}

std::optional<WrittenPalette> WriteAco(const SwatchBook &original, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(original, {.cmyk = true, .gray = true, .lab = true}, written.notes);
  if (!IsWritable(book, kMostColours, reason))
    return std::nullopt;
  ByteWriter writer;
  WriteList(writer, 1, book);
  WriteList(writer, 2, book);
  written.bytes = TextOf(writer.Bytes());
  return written;
}

} // namespace ZelClr
