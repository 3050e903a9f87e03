#include "zelclr/palettes/formats/ase_palette.h"

#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

#include <algorithm>
#include <utility>

namespace ZelClr {

namespace {

using ZelUtl::ByteReader;
using ZelUtl::ByteWriter;

constexpr std::string_view kSignature = "ASEF";
constexpr std::uint16_t kGroupBegins = 0xC001;
constexpr std::uint16_t kGroupEnds = 0xC002;
constexpr std::uint16_t kColour = 0x0001;
constexpr std::size_t kSmallestBlock = 6;
constexpr std::size_t kMostUnits = 0xFFFE; // of a name, without its NUL

constexpr std::uint16_t kGlobal = 0;
constexpr std::uint16_t kSpot = 1;
constexpr std::uint16_t kProcess = 2;

constexpr struct ModelRow
{
  std::string_view code;
  SwatchModel model;
  std::size_t count;
} kModels[] = {{"RGB ", SwatchModel::Rgb, 3},
               {"CMYK", SwatchModel::Cmyk, 4},
               {"LAB ", SwatchModel::Lab, 3},
               {"Gray", SwatchModel::Gray, 1}};

std::string ReadName(ByteReader &block)
{
  const std::size_t units = block.ReadBig<std::uint16_t>();
  return ReadUtf16(block, units);
}

struct Colour
{
  Swatch swatch;
  bool global = false;
};

std::optional<Colour> ReadColour(ByteReader block, std::string &reason)
{
  std::string name = ReadName(block);
  const std::string code = TextOf(block.Take(4));
  const auto row =
    std::find_if(std::begin(kModels), std::end(kModels), [&](const ModelRow &r) { return r.code == code; });
  if (block.Ok() && row == std::end(kModels)) {
    reason = "a colour is of an unknown model";
    return std::nullopt;
  }
  std::array<double, 4> values{};
  for (std::size_t i = 0; block.Ok() && i < row->count; ++i) {
    const bool isAb = row->model == SwatchModel::Lab && i > 0;
    const auto value = WithinRange(ReadBigFloat(block), isAb ? -128.0 : 0.0, isAb ? 128.0 : 1.0);
    if (block.Ok() && !value) {
      reason = "a component is out of its range";
      return std::nullopt;
    }
    values[i] = value.value_or(0.0) * (row->model == SwatchModel::Lab && i == 0 ? 100.0 : 1.0);
  }
  const auto kind = block.ReadBig<std::uint16_t>();
  if (!block.Ok() || kind > kProcess) {
    reason = block.Ok() ? "a colour is neither global nor spot nor process" : "a colour is longer than its block";
    return std::nullopt;
  }
  Colour colour{SwatchOfValues(std::move(name), row->model, values), kind == kGlobal};
  colour.swatch.spot = kind == kSpot;
  return colour;
}

void WriteName(ByteWriter &writer, std::string_view name)
{
  const std::u16string wide = Utf16FromUtf8(name);
  writer.WriteBig(static_cast<std::uint16_t>(wide.size() + 1));
  WriteUtf16(writer, wide);
}

/// The blocks of a file, counted.
struct Blocks
{
  ByteWriter writer;
  std::uint32_t count = 0;

  void Add(std::uint16_t type, const ByteWriter &content)
  {
    writer.WriteBig(type);
    writer.WriteBig(static_cast<std::uint32_t>(content.Bytes().size()));
    writer.Write(content.Bytes());
    ++count;
  }
};

ByteWriter ColourBlock(const Swatch &swatch)
{
  const auto row =
    std::find_if(std::begin(kModels), std::end(kModels), [&](const ModelRow &r) { return r.model == swatch.model; });
  ByteWriter block;
  WriteName(block, swatch.name);
  block.Write(BytesOf(row->code));
  for (std::size_t i = 0; i < row->count; ++i)
    WriteBigFloat(block, row->model == SwatchModel::Lab && i == 0 ? swatch.values[0] / 100.0 : swatch.values[i]);
  block.WriteBig(swatch.spot ? kSpot : kProcess);
  return block;
}

bool HasLongName(const SwatchBook &book)
{
  const auto isLong = [](const auto &named) { return Utf16FromUtf8(named.name).size() > kMostUnits; };
  return std::any_of(book.swatches.begin(), book.swatches.end(), isLong) ||
         std::any_of(book.groups.begin(), book.groups.end(), isLong);
}

} // namespace

bool RecognisesAse(std::string_view bytes)
{
  return bytes.starts_with(kSignature);
}

std::optional<SwatchBook> ReadAse(std::string_view bytes, ReadProblem &problem)
{
  const auto refuse = [&problem](std::string reason) {
    problem = {0, std::move(reason)};
    return std::nullopt;
  };
  ByteReader reader(BytesOf(bytes));
  if (TextOf(reader.Take(4)) != kSignature)
    return refuse("not an ASE palette");
  const auto major = reader.ReadBig<std::uint16_t>();
  reader.ReadBig<std::uint16_t>();
  const std::size_t count = reader.ReadBig<std::uint32_t>();
  if (!reader.Ok() || major != 1)
    return refuse("an ASE palette of another version than 1");
  if (count > reader.Remaining() / kSmallestBlock)
    return refuse("the file ends before its last block");

  SwatchBook book;
  std::size_t globals = 0, unknown = 0;
  bool hasEnded = false; // a group, so that what follows belongs to none
  for (std::size_t i = 0; i < count; ++i) {
    const auto type = reader.ReadBig<std::uint16_t>();
    const std::size_t size = reader.ReadBig<std::uint32_t>();
    ByteReader block(reader.Take(size));
    if (!reader.Ok())
      return refuse("the file ends within a block");
    if (type == kGroupBegins) {
      if (book.groups.size() == kMostSwatches)
        return refuse("more than " + std::to_string(kMostSwatches) + " groups");
      book.groups.push_back({ReadName(block), book.swatches.size()});
      hasEnded = false;
      if (!block.Ok())
        return refuse("the name of a group is longer than its block");
    } else if (type == kGroupEnds) {
      hasEnded = !book.groups.empty();
    } else if (type == kColour) {
      if (book.swatches.size() == kMostSwatches)
        return refuse("more than " + std::to_string(kMostSwatches) + " colours");
      std::string reason;
      auto colour = ReadColour(block, reason);
      if (!colour)
        return refuse("colour " + std::to_string(book.swatches.size() + 1) + ": " + reason);
      if (std::exchange(hasEnded, false))
        book.groups.push_back({std::string(), book.swatches.size()});
      globals += colour->global;
      book.swatches.push_back(std::move(colour->swatch));
    } else {
      ++unknown;
    }
  }
  if (!reader.AtEnd())
    return refuse("there are bytes behind the last block");
  if (globals > 0)
    book.notes.push_back(CountOf(globals, "global colour became a plain one", "global colours became plain ones"));
  if (unknown > 0)
    book.notes.push_back(CountOf(unknown, "block of an unknown kind was", "blocks of an unknown kind were") +
                         " left out");
  return Finished(std::move(book), problem);
}

std::optional<WrittenPalette> WriteAse(const SwatchBook &original, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book =
    Fitted(original, {.cmyk = true, .gray = true, .lab = true, .spot = true, .groups = true}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  if (HasLongName(book)) {
    reason = "a name of more than " + std::to_string(kMostUnits) + " characters";
    return std::nullopt;
  }

  Blocks blocks;
  std::size_t next = 0;
  bool isOpen = false;
  const auto end = [&] {
    if (std::exchange(isOpen, false))
      blocks.Add(kGroupEnds, {});
  };
  for (std::size_t i = 0; i <= book.swatches.size(); ++i) {
    for (; next < book.groups.size() && book.groups[next].first <= i; ++next) {
      end();
      isOpen = !book.groups[next].name.empty();
      if (!isOpen)
        continue;
      ByteWriter block;
      WriteName(block, book.groups[next].name);
      blocks.Add(kGroupBegins, block);
    }
    if (i < book.swatches.size())
      blocks.Add(kColour, ColourBlock(book.swatches[i]));
  }
  end();

  ByteWriter writer;
  writer.Write(BytesOf(kSignature));
  writer.WriteBig(std::uint16_t{1});
  writer.WriteBig(std::uint16_t{0});
  writer.WriteBig(blocks.count);
  writer.Write(blocks.writer.Bytes());
  written.bytes = TextOf(writer.Bytes());
  return written;
}

} // namespace ZelClr
