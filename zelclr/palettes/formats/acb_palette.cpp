#include "zelclr/palettes/formats/acb_palette.h"

#include "zelclr/palettes/formats/internal/binary_palette.h"

namespace ZelClr {

namespace {

using ZelUtl::ByteReader;

constexpr std::string_view kSignature = "8BCB";
constexpr std::string_view kSpotTrailer = "spflspot";
constexpr std::string_view kProcessTrailer = "spflproc";

enum Space : std::uint16_t
{
  kRgb = 0,
  kCmyk = 2,
  kLab = 7,
};

void Replace(std::string &text, std::string_view what, std::string_view with)
{
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
}

/// The text itself, or the default text behind its key.
std::string Resolved(std::string text)
{
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
    text = text.substr(1, text.size() - 2);
  if (text.starts_with("$$$/")) {
    const auto equals = text.find('=');
    text = equals == std::string::npos ? std::string() : text.substr(equals + 1);
    Replace(text, "^R", "\u00AE");
    Replace(text, "^C", "\u00A9");
  }
  return text;
}

std::string ReadText(ByteReader &reader)
{
  const std::size_t units = reader.ReadBig<std::uint32_t>();
  return Resolved(ReadUtf16(reader, units));
}

Swatch SwatchFrom(std::uint16_t space, std::string name, std::span<const std::uint8_t> bytes)
{
  switch (space) {
  case kCmyk:
    return CmykSwatch(std::move(name), (255 - bytes[0]) / 255.0, (255 - bytes[1]) / 255.0, (255 - bytes[2]) / 255.0,
                      (255 - bytes[3]) / 255.0);
  case kLab:
    return LabSwatch(std::move(name), bytes[0] / 2.55, bytes[1] - 128.0, bytes[2] - 128.0);
  default:
    return RgbSwatch(std::move(name), bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0);
  }
}

} // namespace

bool RecognisesAcb(std::string_view bytes)
{
  return bytes.starts_with(kSignature);
}

std::optional<SwatchBook> ReadAcb(std::string_view bytes, ReadProblem &problem)
{
  const auto refuse = [&problem](std::string reason) {
    problem = {0, std::move(reason)};
    return std::nullopt;
  };
  ByteReader reader(BytesOf(bytes));
  if (TextOf(reader.Take(4)) != kSignature)
    return refuse("not an ACB colour book");
  if (reader.ReadBig<std::uint16_t>() != 1)
    return refuse("a colour book of another version than 1");
  reader.ReadBig<std::uint16_t>();

  SwatchBook book;
  book.name = ReadText(reader);
  const std::string prefix = ReadText(reader);
  const std::string suffix = ReadText(reader);
  book.description = ReadText(reader);
  const std::size_t count = reader.ReadBig<std::uint16_t>();
  book.columns = reader.ReadBig<std::uint16_t>();
  reader.ReadBig<std::uint16_t>();
  const auto space = reader.ReadBig<std::uint16_t>();
  if (!reader.Ok())
    return refuse("the file ends before its colours");
  if (space != kRgb && space != kCmyk && space != kLab)
    return refuse("a colour book in an unknown colour space (" + std::to_string(space) + ")");
  // Each name is the prefix and the suffix, too: so many of them must stay in proportion to the file.
  if ((prefix.size() + suffix.size()) * count > kMostPaletteBytes)
    return refuse("the prefix or the suffix of the names is too long");

  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = ReadText(reader);
    reader.Take(6);
    const auto components = reader.Take(space == kCmyk ? 4 : 3);
    if (!reader.Ok())
      return refuse("the file ends within colour " + std::to_string(i + 1));
    if (!name.empty())
      book.swatches.push_back(SwatchFrom(space, prefix + name + suffix, components));
  }
  const std::string trailer = TextOf(reader.Take(reader.Remaining()));
  if (!trailer.empty() && trailer != kSpotTrailer && trailer != kProcessTrailer)
    return refuse("the colour book does not end behind its last colour");
  const bool isSpot = trailer.empty() ? space == kLab : trailer == kSpotTrailer;
  for (Swatch &swatch : book.swatches)
    swatch.spot = isSpot;
  return Finished(std::move(book), problem);
}

} // namespace ZelClr
