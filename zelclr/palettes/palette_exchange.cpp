#include "zelclr/palettes/palette_exchange.h"

#include "zelclr/colour/colour_models.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>

namespace ZelClr {

using ZelUtils::Guid;

namespace {

// LAB of palette files: L* = 100 v; a*, b* = (255 v - 128) 60/127, so that 0.5 is about neutral and 0 is -60.
constexpr double kLabPerStep = 60.0 / 127.0;

double ValueFromLabAb(double ab)
{
  return (ab / kLabPerStep + 128.0) / 255.0;
}

double LabAbFromValue(double value)
{
  return (255.0 * value - 128.0) * kLabPerStep;
}

std::string Joined(std::initializer_list<double> values)
{
  std::string text;
  for (const double value : values)
    text.append(text.empty() ? "" : ",").append(ZelUtl::TextFromNumber(std::isfinite(value) ? value : 0.0));
  return text;
}

std::array<double, 4> ValuesOfText(std::string_view text)
{
  std::array<double, 4> values{};
  for (double &value : values) {
    const auto end = std::min(text.find(','), text.size());
    value = ZelUtl::DoubleFromText(ZelUtl::Trimmed(text.substr(0, end))).value_or(0.0);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return values;
}

/// Whether the values say no more than the bytes that records make of them: by three decimals at most.
bool StateBytes(std::string_view values)
{
  constexpr std::size_t kMostDecimals = 3;
  while (!values.empty()) {
    const std::string_view value = values.substr(0, values.find(','));
    const auto point = value.find('.');
    if (point != std::string_view::npos && value.size() - point - 1 > kMostDecimals)
      return false;
    values.remove_prefix(std::min(value.size() + 1, values.size()));
  }
  return true;
}

/// A colour as palette files state it; without a model when they cannot.
WXmlDefinitionColor Look(std::string_view model, std::string tints)
{
  WXmlDefinitionColor look{std::string(model), std::move(tints), {}};
  look.color = ColorFromPaletteValues(ModelFromSpaceName(look.model), look.tints);
  return look;
}

WXmlDefinitionColor LookOfRecord(const CLR_COLORSPEC &record)
{
  const CLR_COLORSPEC color = StorableColor(record);
  return color.IsInvalid() ? WXmlDefinitionColor()
                           : Look(SpaceNameFromModel(color.GetType()), PaletteValuesFromColor(color));
}

/// Whether the record says no more than the swatch's numbers do.
bool IsStatedByNumbers(const Swatch &swatch)
{
  switch (swatch.record.GetType()) {
  case ClrModel::Rgb255:
  case ClrModel::Cmyk255:
  case ClrModel::Cmyk:
  case ClrModel::Cmyk100:
  case ClrModel::Gray255:
  case ClrModel::Lab255:
  case ClrModel::Lab:
  case ClrModel::Spot:
    return swatch.model != SwatchModel::Record;
  default:
    return false;
  }
}

WXmlDefinitionColor LookOfSwatch(const Swatch &swatch)
{
  if (!IsStatedByNumbers(swatch))
    return LookOfRecord(swatch.record);
  const auto &v = swatch.values;
  switch (swatch.model) {
  case SwatchModel::Rgb:
    if (RecordSwatch({}, swatch.record).values == v) // bytes, for which short texts will do
      return LookOfRecord(swatch.record);
    return Look("RGB", Joined({v[0], v[1], v[2]}));
  case SwatchModel::Cmyk:
    return Look("CMYK", Joined({v[0], v[1], v[2], v[3]}));
  case SwatchModel::Gray:
    return Look("Gray", Joined({v[0]}));
  default:
    break;
  }
  const std::array<double, 2> ab = {ValueFromLabAb(v[1]), ValueFromLabAb(v[2])};
  if (std::all_of(ab.begin(), ab.end(), [](double value) { return value >= 0.0 && value <= 1.0; }))
    return Look("LAB", Joined({v[0] / 100.0, ab[0], ab[1]}));
  const std::array<double, 3> rgb = RgbOfSwatch(LabSwatch({}, v[0], v[1], v[2]));
  return Look("RGB48", Joined({rgb[0], rgb[1], rgb[2]}));
}

Swatch SwatchOfLook(std::string name, std::string_view model, std::string_view tints, const CLR_COLORSPEC &color)
{
  const auto v = ValuesOfText(tints);
  switch (ModelFromSpaceName(model)) {
  case ClrModel::Rgb255:
    if (StateBytes(tints))
      return RecordSwatch(std::move(name), color);
    return RgbSwatch(std::move(name), v[0], v[1], v[2]);
  case ClrModel::Cmyk255:
    return CmykSwatch(std::move(name), v[0], v[1], v[2], v[3]);
  case ClrModel::Gray255:
    return GraySwatch(std::move(name), v[0]);
  case ClrModel::Lab:
    return LabSwatch(std::move(name), v[0] * 100.0, LabAbFromValue(v[1]), LabAbFromValue(v[2]));
  default:
    return RecordSwatch(std::move(name), color);
  }
}

/// The spot colour spaces of a palette while swatches are put into it.
class InkNames
{
public:
  /// The name of the ink's colour space, made for the first swatch of it; empty when all colour IDs are in use.
  const std::string &Of(const Swatch &swatch, WXmlColorPalette &palette)
  {
    constexpr std::size_t kHighestID = 32'767; // records hold it in 16 bits, signed
    const WXmlDefinitionColor look = HasAppearance(swatch) ? LookOfSwatch(swatch) : WXmlDefinitionColor();
    std::string &name = names_[swatch.name + '\n' + look.model + '\n' + look.tints];
    if (name.empty() && taken_.size() < kHighestID) {
      name = Unique(swatch.name);
      WXmlColorSpace space;
      space.name = name;
      space.fixedID = static_cast<int>(taken_.size());
      if (!look.model.empty())
        space.definitions.push_back(look);
      palette.AddColorSpace(std::move(space));
    }
    return name;
  }

private:
  std::string Unique(std::string wanted)
  {
    std::erase(wanted, '\'');
    if (wanted.empty())
      wanted = "Spot";
    std::string name = wanted;
    int &count = counts_[wanted];
    while (ModelFromSpaceName(name) != 0 || !taken_.insert(name).second)
      name = wanted + " (" + std::to_string(++count) + ")";
    return name;
  }

  std::map<std::string, std::string> names_; // by name and look
  std::map<std::string, int> counts_;        // how far names were counted up
  std::set<std::string> taken_;
};

std::string_view StemOfFileName(std::string_view name)
{
  return name.substr(0, name.rfind('.'));
}

} // namespace

WXmlColorPalette PaletteFromSwatchBook(const SwatchBook &book, std::vector<std::string> &notes)
{
  constexpr std::size_t kWidestGrid = 10'000;
  WXmlColorPalette palette;
  WXmlColorPalette::Header header;
  header.name = book.name;
  palette.SetHeader(std::move(header));
  if (book.columns > 0)
    palette.SetGridWidth(static_cast<int>(std::min(book.columns, kWidestGrid)));
  InkNames inks;
  std::size_t lost = 0;
  std::size_t plain = 0;
  auto group = book.groups.begin();
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    bool begins = false;
    for (; group != book.groups.end() && group->first <= i; ++group)
      begins = true;
    if (begins && palette.GetColorCount() > 0)
      palette.AddPage();
    const Swatch &swatch = book.swatches[i];
    WXmlColor color;
    color.name = swatch.name;
    if (swatch.spot) {
      color.colorSpace = inks.Of(swatch, palette);
      color.tints = Joined({swatch.tint});
    }
    if (color.colorSpace.empty()) {
      plain += swatch.spot ? 1 : 0;
      WXmlDefinitionColor look = LookOfSwatch(swatch);
      color.colorSpace = std::move(look.model);
      color.tints = std::move(look.tints);
    }
    if (color.colorSpace.empty())
      ++lost;
    else
      palette.InsertColor(palette.GetColorCount(), std::move(color));
  }
  if (plain > 0)
    notes.push_back(CountOf(plain, "spot colour") + " became " + (plain == 1 ? "a process colour" : "process colours") +
                    ": a palette has at most 32767 inks");
  if (lost > 0)
    notes.push_back(CountOf(lost, "colour") + " without an appearance " + (lost == 1 ? "was" : "were") + " left out");
  return palette;
}

SwatchBook SwatchBookFromPalette(const WXmlColorPalette &palette)
{
  SwatchBook book;
  book.name = palette.GetHeader().name;
  book.columns = static_cast<std::size_t>(palette.GetGridWidth());
  const std::string &prefix = palette.GetHeader().prefix;
  int page = -1;
  for (std::size_t i = 0; i < palette.GetColorCount(); ++i) {
    if (palette.GetPageCount() > 1 && palette.GetPage(i) != page) {
      page = palette.GetPage(i);
      book.groups.push_back({"Page " + std::to_string(page + 1), i});
    }
    const WXmlColor &color = palette.GetColor(i);
    const int spaceIndex = palette.FindColorSpace(color.colorSpace);
    const WXmlColorSpace *const space =
      spaceIndex < 0 ? nullptr : &palette.GetColorSpace(static_cast<std::size_t>(spaceIndex));
    const auto look = space == nullptr
                        ? std::vector<WXmlDefinitionColor>::const_iterator()
                        : std::find_if(space->definitions.begin(), space->definitions.end(),
                                       [](const WXmlDefinitionColor &d) { return !d.color.IsInvalid(); });
    std::string name = color.name.empty() ? std::string() : prefix + color.name;
    const double tint = palette.GetTint(i);
    Swatch swatch;
    if (!color.styleColor.IsInvalid() || (space != nullptr && look == space->definitions.end()))
      swatch = RecordSwatch(std::move(name), palette.GetColorSpec(i));
    else if (space == nullptr)
      swatch = SwatchOfLook(std::move(name), color.colorSpace, color.tints, palette.GetColorSpec(i));
    else if (space->process && tint != 1.0)
      swatch = RecordSwatch(std::move(name), palette.GetColorSpec(i));
    else
      swatch = SwatchOfLook(std::move(name), look->model, look->tints, look->color);
    if (space != nullptr && !space->process) {
      swatch.name = space->name;
      swatch.spot = true;
      swatch.tint = tint;
    }
    swatch.line = i + 1;
    book.swatches.push_back(std::move(swatch));
  }
  return book;
}

Guid IdentifierOfBytes(std::string_view bytes)
{
  // FNV-1a of 64 bits twice, from two starting points; as version 8 of RFC 9562.
  constexpr std::uint64_t kPrime = 0x100000001B3;
  std::array<std::uint64_t, 2> hashes = {0xCBF29CE484222325, 0x9AE16A3B2F90404F};
  for (const char byte : bytes) {
    for (std::uint64_t &hash : hashes)
      hash = (hash ^ static_cast<unsigned char>(byte)) * kPrime;
  }
  Guid guid;
  for (std::size_t i = 0; i < guid.bytes.size(); ++i)
    guid.bytes[i] = static_cast<std::uint8_t>(hashes[i / 8] >> (i % 8 * 8));
  guid.bytes[7] = static_cast<std::uint8_t>((guid.bytes[7] & 0x0F) | 0x80);
  guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);
  return guid;
}

std::unique_ptr<WClrPalette> LoadForeignPalette(const std::wstring &path)
{
  const std::string file = ZelUtl::Utf8FromWide(path);
  std::string untold;
  ReadProblem problem;
  const bool isPath = path.find(L'\0') == std::wstring::npos;
  const auto bytes =
    isPath && ZelUtl::StampOfFile(file) ? ZelUtl::ReadFile(file, kMostPaletteBytes, untold) : std::nullopt;
  auto book = bytes ? ReadSwatchBook(*bytes, problem) : std::nullopt;
  if (!book)
    return nullptr;
  ConvertProfiles(*book);
  WXmlColorPalette xml = PaletteFromSwatchBook(*book, book->notes);
  if (xml.GetColorCount() == 0)
    return nullptr;
  WXmlColorPalette::Header header = xml.GetHeader();
  header.guid = IdentifierOfBytes(*bytes);
  if (header.name.empty())
    header.name = StemOfFileName(ZelUtl::FileNameOfPath(file));
  xml.SetHeader(std::move(header));
  auto palette = std::make_unique<WClrPalette>();
  if (!palette->RestoreFromString(xml.Text(false)))
    return nullptr;
  palette->SetFileName(path);
  palette->SetLocked(true);
  palette->SetChanged(false);
  return palette;
}

} // namespace ZelClr
