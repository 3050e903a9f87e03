#include "zelclr/palettes/legacy_palette_file.h"

#include "zelclr/colour/palette_types.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/internal/color_space_names.h"
#include "zelclr/palettes/internal/new_color_spaces.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/bytes.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace ZelClr {

namespace {

using ZelUtl::ByteReader;

constexpr std::string_view kMagic = "ZCPL";
constexpr unsigned kVersion = 1;
constexpr std::size_t kMostNameUnits = 1024;

struct TypeOfName
{
  std::string_view name;
  std::uint8_t type;
};

// Frozen: the names of files that are out there.
constexpr TypeOfName kTypesOfNames[] = {
  {"pantone.cpl", 2},   {"pantone8.cpl", 3},  {"panguidc.cpl", 17}, {"panguidu.cpl", 18}, {"panmetlu.cpl", 20},
  {"panpastc.cpl", 21}, {"panpastu.cpl", 22}, {"hks.cpl", 23},      {"hks_k.cpl", 26},    {"hks_n.cpl", 27},
  {"hks_z.cpl", 28},    {"hks_e.cpl", 29},    {"panhexc.cpl", 12},  {"panhexu.cpl", 24},  {"trumatch.cpl", 1},
  {"rgbstd.cpl", 7},    {"focolton.cpl", 8},  {"dupont.cpl", 9},    {"toyo.cpl", 10},     {"dic.cpl", 11},
  {"labpal.cpl", 13},   {"websafe.cpl", 25},  {"pantonem.cpl", 35}, {"panmetlc.cpl", 30}, {"panpasc.cpl", 31},
  {"panpasu.cpl", 32},  {"panhexac.cpl", 33}, {"panhexau.cpl", 34}, {"pantonec.cpl", 36}, {"pantoneu.cpl", 37},
  {"paneuroc.cpl", 38}, {"pans2pec.cpl", 39}, {"svgcolor.cpl", 40}, {"userinks.cpl", 16},
};

/// What the body of a colour holds. The numbers of the first four stand before each colour of a user's palette.
enum class Family : std::uint8_t
{
  Cmyk = 0,
  Rgb = 1,
  Lab = 2,
  SixInks = 3,
  Spot,
  UserInk,
  Mixed, ///< each colour says which of the first four it is
};

std::optional<Family> FamilyOfType(unsigned type)
{
  switch (type) {
  case 1:
  case 2:
  case 38:
  case 39:
    return Family::Cmyk;
  case 7:
  case 25:
  case 40:
    return Family::Rgb;
  case 13:
    return Family::Lab;
  case PaletteType::User:
    return Family::Mixed;
  case PaletteType::UserInks:
    return Family::UserInk;
  default:
    break;
  }
  if (IsPantoneHexachromePaletteType(type))
    return Family::SixInks;
  return IsSpotPaletteType(type) ? std::optional(Family::Spot) : std::nullopt;
}

/// At least so many bytes for each colour, so that a count can be told from a lie before memory is taken.
constexpr std::size_t kLeastColorBytes = 2 + 3;

std::optional<std::string> ReadName(ByteReader &reader, std::string &reason)
{
  const std::size_t units = reader.Read<std::uint16_t>();
  if (units > kMostNameUnits) {
    reason = "a name is longer than " + std::to_string(kMostNameUnits) + " characters";
    return std::nullopt;
  }
  std::u16string text(reader.Remaining() < 2 * units ? 0 : units, u'\0');
  for (char16_t &unit : text)
    unit = static_cast<char16_t>(reader.Read<std::uint16_t>());
  if (text.size() < units)
    reader.Take(2 * units); // which is too much: the reader remembers
  return NameFromWide(ZelUtl::WideFromUtf16(text));
}

/// The components of a body; ink is in percent.
bool ReadLook(ByteReader &reader, Family family, CLR_COLORSPEC &look)
{
  std::uint8_t bytes[6] = {};
  const std::size_t count = family == Family::SixInks ? 6 : family == Family::Cmyk || family == Family::Spot ? 4 : 3;
  for (std::size_t i = 0; i < count; ++i)
    bytes[i] = reader.Read<std::uint8_t>();
  const bool isPercent = count != 3;
  if (isPercent && *std::max_element(bytes, bytes + count) > 100)
    return false;
  const auto byte = [&bytes](int i) { return static_cast<std::uint8_t>((bytes[i] * 255 + 50) / 100); };
  switch (family) {
  case Family::Cmyk:
  case Family::Spot:
    CLR_COLORSPEC::MakeCMYK(look, bytes[0], bytes[1], bytes[2], bytes[3]);
    return true;
  case Family::Rgb:
    CLR_COLORSPEC::MakeRGB(look, bytes[0], bytes[1], bytes[2]);
    return true;
  case Family::Lab:
    CLR_COLORSPEC::MakeLAB(look, bytes[0], static_cast<std::int8_t>(bytes[1]), static_cast<std::int8_t>(bytes[2]));
    return true;
  case Family::SixInks:
    CLR_COLORSPEC::MakeHEX(look, byte(0), byte(1), byte(2), byte(3), byte(4), byte(5));
    return true;
  case Family::UserInk:
    CLR_COLORSPEC::MakeUSERINKS(look, bytes[0], bytes[1], bytes[2], 100);
    return true;
  case Family::Mixed:
    break;
  }
  return false;
}

bool IsNumbered(Family family)
{
  return family == Family::SixInks || family == Family::Spot || family == Family::UserInk;
}

bool ReadColor(ByteReader &reader, Family family, LegacyColor &color, std::string &reason)
{
  auto name = ReadName(reader, reason);
  if (!name)
    return false;
  color.name = std::move(*name);
  if (family == Family::Mixed) {
    const auto own = reader.Read<std::uint8_t>();
    if (own > static_cast<std::uint8_t>(Family::SixInks)) {
      reason = "no such kind of colour: " + std::to_string(own);
      return false;
    }
    family = static_cast<Family>(own);
  } else if (IsNumbered(family)) {
    color.number = reader.Read<std::uint16_t>();
    if (color.number > kMostColorID) {
      reason = "no such colour number: " + std::to_string(color.number);
      return false;
    }
  }
  if (!ReadLook(reader, family, color.look)) {
    reason = "more than 100 % of an ink";
    return false;
  }
  return true;
}

} // namespace

unsigned LegacyPaletteTypeOfFileName(std::string_view fileName)
{
  const std::string name = ZelUtl::LowerAscii(fileName);
  const auto row = std::find_if(std::begin(kTypesOfNames), std::end(kTypesOfNames),
                                [&](const TypeOfName &known) { return known.name == name; });
  return row == std::end(kTypesOfNames) ? unsigned{PaletteType::User} : row->type;
}

std::optional<LegacyPaletteFile> ReadLegacyPalette(std::string_view bytes, unsigned wantedType, std::string &reason)
{
  reason.clear();
  const auto refuse = [&reason](std::string text) {
    if (reason.empty())
      reason = std::move(text);
    return std::nullopt;
  };
  if (!bytes.starts_with(kMagic))
    return refuse("no such palette file");
  bytes.remove_prefix(kMagic.size());
  ByteReader reader({reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size()});
  if (const unsigned version = reader.Read<std::uint16_t>(); reader.Ok() && version != kVersion)
    return refuse("version " + std::to_string(version) + " is not known");
  LegacyPaletteFile file;
  file.type = reader.Read<std::uint16_t>();
  const auto family = FamilyOfType(file.type);
  if (reader.Ok() && (!family || (file.type != wantedType && wantedType != PaletteType::User)))
    return refuse("a palette of type " + std::to_string(file.type) + ", where type " + std::to_string(wantedType) +
                  " belongs");
  auto name = ReadName(reader, reason);
  const std::size_t count = reader.Read<std::uint32_t>();
  if (!name || !reader.Ok())
    return refuse("the file is cut short");
  if (count > kMostSwatches)
    return refuse("more than " + std::to_string(kMostSwatches) + " colours");
  if (count > reader.Remaining() / kLeastColorBytes)
    return refuse("the file is cut short");
  file.name = std::move(*name);
  file.colors.resize(count);
  std::unordered_set<int> numbers;
  for (std::size_t i = 0; i < count; ++i) {
    LegacyColor &color = file.colors[i];
    const bool isRead = ReadColor(reader, *family, color, reason);
    if (!reader.Ok()) {
      reason.clear();
      return refuse("the file is cut short");
    }
    if (isRead && color.number >= 0 && !numbers.insert(color.number).second)
      return refuse("colour " + std::to_string(i + 1) + ": the number " + std::to_string(color.number) +
                    " comes twice");
    if (!isRead) {
      reason = "colour " + std::to_string(i + 1) + ": " + reason;
      return std::nullopt;
    }
  }
  return reader.AtEnd() ? std::optional(std::move(file)) : refuse("bytes behind the last colour");
}

WXmlColorPalette XmlPaletteFromLegacy(const LegacyPaletteFile &file, std::string_view name)
{
  WXmlColorPalette palette;
  WXmlColorPalette::Header header;
  header.guid = PaletteIdentifierFromType(file.type);
  if (header.guid.IsNull())
    header.guid = ZelUtils::NewGuid();
  header.name = file.name.empty() ? std::string(name) : file.name;
  palette.SetHeader(std::move(header));

  std::unordered_set<std::string> taken;
  std::unordered_map<std::string, int> counts;
  std::vector<WXmlColor> colors;
  colors.reserve(file.colors.size());
  for (const LegacyColor &legacy : file.colors) {
    WXmlColor color;
    color.name = legacy.name;
    if (legacy.number < 0) {
      const CLR_COLORSPEC stored = StorableColor(legacy.look);
      color.colorSpace = SpaceNameFromModel(stored.GetType());
      color.tints = PaletteValuesFromColor(stored);
    } else {
      const bool isNameless = WithoutApostrophes(legacy.name).empty();
      const std::string wanted = isNameless ? std::to_string(legacy.number) : legacy.name;
      int &count = counts.try_emplace(wanted, 1).first->second;
      WXmlColorSpace space =
        SpaceOfLooks(UniqueSpaceName(
                       wanted, [&](const std::string &other) { return taken.contains(other); }, count),
                     {&legacy.look, 1}, legacy.look.GetType() == ClrModel::Hexachrome);
      space.fixedID = legacy.number;
      taken.insert(space.name);
      color.colorSpace = space.name;
      palette.AddColorSpace(std::move(space));
    }
    colors.push_back(std::move(color));
  }
  palette.InsertColors(0, std::move(colors));
  return palette;
}

} // namespace ZelClr
