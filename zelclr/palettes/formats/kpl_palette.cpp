#include "zelclr/palettes/formats/kpl_palette.h"

#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/kpl_colours.h"
#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/zip_archive.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace ZelClr {

namespace {

using ZelUtl::XmlAttribute;
using Attributes = std::span<const XmlAttribute>;

constexpr std::string_view kMimeType = "application/x-krita-palette";
constexpr std::string_view kColoursEntry = "colorset.xml";
constexpr std::string_view kProfilesEntry = "profiles.xml";
constexpr std::size_t kMostProfileBytes = std::size_t{16} << 20; // of one
constexpr std::size_t kMostCells = 1'000'000;                    // columns or rows
constexpr std::size_t kUsualColumns = 16;

std::string ValueOf(Attributes attributes, std::string_view name)
{
  const std::string_view *const value = FindAttribute(attributes, name);
  return value == nullptr ? std::string() : std::string(*value);
}

/// File names of profiles by the names that colours call them by.
class ProfileNames final : public ZelUtl::XmlHandler
{
public:
  std::map<std::string, std::string> fileNames;

  bool StartElement(std::string_view name, Attributes attributes, std::string &) override
  {
    if (name == "Profile")
      fileNames.emplace(ValueOf(attributes, "name"), ValueOf(attributes, "filename"));
    return true;
  }
  bool Text(std::string_view, std::string &) override { return true; }
  bool EndElement(std::string_view, std::string &) override { return true; }
};

struct Cell
{
  Swatch swatch;
  std::string space; ///< the name of its profile
  std::optional<std::size_t> row, column;
};

struct CellGroup
{
  std::string name;
  std::vector<Cell> cells;
};

/// The colours as they stand in the file; the first group is the one without a name.
class ColourSet final : public ZelUtl::XmlHandler
{
public:
  std::string name, comment;
  std::size_t columns = 0;
  std::vector<CellGroup> groups{1};
  std::size_t xyz = 0, yCbCr = 0;

  bool StartElement(std::string_view element, Attributes attributes, std::string &reason) override
  {
    ++depth_;
    if (depth_ == 1)
      return StartSet(element, attributes, reason);
    if (inEntry_)
      return StartWithinEntry(element, attributes, reason);
    if (element == "Group") {
      if (inGroup_) {
        reason = "a group within a group";
        return false;
      }
      if (groups.size() > kMostSwatches) {
        reason = "more than " + std::to_string(kMostSwatches) + " groups";
        return false;
      }
      groups.push_back({ValueOf(attributes, "name"), {}});
      inGroup_ = true;
    }
    return element != "ColorSetEntry" || StartEntry(attributes, reason);
  }
  bool Text(std::string_view, std::string &) override { return true; }
  bool EndElement(std::string_view element, std::string &reason) override
  {
    --depth_;
    if (element == "Group")
      inGroup_ = false;
    if (element != "ColorSetEntry")
      return true;
    inEntry_ = false;
    if (!hasColour_)
      reason = "an entry without a colour";
    return hasColour_;
  }

private:
  static bool ReadCount(Attributes attributes, std::string_view name, std::size_t &count, std::string &reason)
  {
    const std::string text = ValueOf(attributes, name);
    const auto number = ZelUtl::IntegerFromText<std::size_t>(text);
    if (!text.empty() && (!number || *number > kMostCells)) {
      reason = "\"" + text.substr(0, 40) + "\" is no number of " + std::string(name) + "s";
      return false;
    }
    count = number.value_or(0);
    return true;
  }

  bool StartSet(std::string_view element, Attributes attributes, std::string &reason)
  {
    if (ZelUtl::LowerAscii(element) != "colorset") {
      reason = "its root is no colour set";
      return false;
    }
    name = ValueOf(attributes, "name");
    comment = ValueOf(attributes, "comment");
    return ReadCount(attributes, "columns", columns, reason);
  }

  bool StartEntry(Attributes attributes, std::string &reason)
  {
    if (++count_ > kMostSwatches) {
      reason = TooManySwatches();
      return false;
    }
    inEntry_ = true;
    hasColour_ = false;
    Cell cell;
    cell.swatch.name = ValueOf(attributes, "name");
    cell.swatch.spot = ValueOf(attributes, "spot") == "true";
    if (cell.swatch.spot && cell.swatch.name.empty())
      cell.swatch.name = ValueOf(attributes, "id");
    depthName_ = ValueOf(attributes, "bitdepth");
    groups[inGroup_ ? groups.size() - 1 : 0].cells.push_back(std::move(cell));
    return true;
  }

  bool StartWithinEntry(std::string_view element, Attributes attributes, std::string &reason)
  {
    Cell &cell = groups[inGroup_ ? groups.size() - 1 : 0].cells.back();
    if (element == "Position") {
      std::size_t row = 0, column = 0;
      if (!ReadCount(attributes, "row", row, reason) || !ReadCount(attributes, "column", column, reason))
        return false;
      cell.row = row;
      cell.column = column;
      return true;
    }
    if (std::exchange(hasColour_, true)) {
      reason = "an entry with two colours";
      return false;
    }
    auto colour = ReadKplColour(element, attributes, depthName_, reason);
    if (!colour)
      return false;
    xyz += element == "XYZ";
    yCbCr += element == "YCbCr";
    colour->name = std::move(cell.swatch.name);
    colour->spot = cell.swatch.spot;
    cell.swatch = std::move(*colour);
    cell.space = element == "RGB" || element == "CMYK" || element == "Gray" ? ValueOf(attributes, "space") : "";
    return true;
  }

  int depth_ = 0;
  std::size_t count_ = 0;
  bool inGroup_ = false, inEntry_ = false, hasColour_ = false;
  std::string depthName_;
};

/// The profiles of the archive, each read when a colour first names it.
class Profiles
{
public:
  explicit Profiles(std::string_view archive) : archive_(archive) {}

  bool ReadNames(ReadProblem &problem)
  {
    const auto entries = ZelUtl::ZipEntryNames(archive_);
    entries_.insert(entries.begin(), entries.end());
    if (!entries_.contains(kProfilesEntry))
      return true;
    const auto xml = ZelUtl::ReadZipEntry(archive_, kProfilesEntry, kMostPaletteBytes, problem.reason);
    ProfileNames names;
    if (!xml || !ReadXmlPalette(*xml, names, problem))
      return false;
    fileNames_ = std::move(names.fileNames);
    return true;
  }

  /// The index in the book's profiles; empty when the file has none of that name. False when it cannot be read.
  bool Find(const std::string &name, SwatchBook &book, std::optional<std::size_t> &index, std::string &reason)
  {
    const std::string entry = EntryOf(name);
    if (entry.empty())
      return true;
    const auto [known, isNew] = indices_.try_emplace(entry, book.profiles.size());
    if (isNew) {
      auto bytes = ZelUtl::ReadZipEntry(archive_, entry, kMostProfileBytes, reason);
      if (!bytes)
        return false;
      size_ += bytes->size();
      if (size_ > kMostPaletteBytes) {
        reason = "its profiles have more than " + std::to_string(kMostPaletteBytes >> 20) + " MiB";
        return false;
      }
      book.profiles.push_back(std::move(*bytes));
    }
    index = known->second;
    return true;
  }

private:
  std::string EntryOf(const std::string &name) const
  {
    const auto fileName = fileNames_.find(name);
    if (fileName == fileNames_.end())
      return {};
    for (const std::string &entry : {fileName->second, "profiles/" + fileName->second}) {
      if (entries_.contains(entry))
        return entry;
    }
    return {};
  }

  std::string_view archive_;
  std::set<std::string, std::less<>> entries_;
  std::map<std::string, std::string> fileNames_;
  std::map<std::string, std::size_t> indices_; // by entry
  std::size_t size_ = 0;
};

/// Whether a profile that does not come with the file is known to encode as sRGB does.
bool IsLikeSrgb(std::string_view space)
{
  const std::string name = ZelUtl::LowerAscii(space);
  return name.empty() || (name.find("srgb") != std::string::npos && name.find("g10") == std::string::npos &&
                          name.find("linear") == std::string::npos);
}

/// Brings the cells into their order, when all of them say where they are; whether some between them are empty.
bool SortByCell(std::vector<Cell> &cells, std::size_t columns)
{
  if (!std::all_of(cells.begin(), cells.end(), [](const Cell &cell) { return cell.row.has_value(); }))
    return false;
  std::stable_sort(cells.begin(), cells.end(), [](const Cell &a, const Cell &b) {
    return std::pair(*a.row, *a.column) < std::pair(*b.row, *b.column);
  });
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (*cells[i].row * columns + *cells[i].column != i)
      return columns > 0;
  }
  return false;
}

std::optional<SwatchBook> BookOf(ColourSet set, Profiles &profiles, ReadProblem &problem)
{
  SwatchBook book;
  book.name = std::move(set.name);
  book.description = std::move(set.comment);
  book.columns = set.columns;
  std::size_t without = 0; // a profile
  bool gaps = false;
  for (std::size_t i = 0; i < set.groups.size(); ++i) {
    if (i > 0)
      book.groups.push_back({std::move(set.groups[i].name), book.swatches.size()});
    gaps = SortByCell(set.groups[i].cells, set.columns) || gaps;
    for (Cell &cell : set.groups[i].cells) {
      if (!cell.space.empty() && !profiles.Find(cell.space, book, cell.swatch.profile, problem.reason))
        return std::nullopt;
      without += !cell.swatch.profile &&
                 (cell.swatch.model == SwatchModel::Cmyk ? !cell.space.empty() : !IsLikeSrgb(cell.space));
      book.swatches.push_back(std::move(cell.swatch));
    }
  }
  if (without > 0)
    book.notes.push_back(CountOf(without, "colour keeps its", "colours keep their") +
                         " numbers, because their profile is not in the file");
  if (set.xyz > 0)
    book.notes.push_back(CountOf(set.xyz, "XYZ colour") + " became Lab, or RGB where brighter than white");
  if (set.yCbCr > 0)
    book.notes.push_back(CountOf(set.yCbCr, "YCbCr colour") + " became RGB");
  if (gaps)
    book.notes.push_back("the empty cells between colours were closed");
  return Finished(std::move(book), problem);
}

std::string Escaped(std::string_view text)
{
  return EscapedXml(ZelUtl::Utf8FromWide(ZelUtl::WideFromUtf8(text)));
}

/// Gives each group a name of its own; how many had to change theirs.
std::size_t MakeNamesUnique(std::vector<SwatchGroup> &groups)
{
  std::set<std::string> used;
  std::map<std::string, std::size_t> last; // number behind a name
  std::size_t changed = 0;
  for (SwatchGroup &group : groups) {
    const std::string name = group.name.empty() ? "Group" : group.name;
    std::size_t &number = last.try_emplace(name, 1).first->second;
    std::string unique = name;
    while (!used.insert(unique).second)
      unique = name + " " + std::to_string(++number);
    changed += unique != group.name;
    group.name = std::move(unique);
  }
  return changed;
}

void AppendEntries(std::string &xml, const SwatchBook &book, std::size_t first, std::size_t last, std::size_t columns)
{
  for (std::size_t i = first; i < last; ++i) {
    const Swatch &swatch = book.swatches[i];
    const KplColour colour = KplColourOf(swatch);
    xml += "  <ColorSetEntry name=\"" + Escaped(swatch.name) + "\" id=\"" + std::to_string(i + 1) + "\" bitdepth=\"" +
           colour.depth + "\" spot=\"" + (swatch.spot ? "true" : "false") + "\">\n    " + colour.element +
           "\n    <Position row=\"" + std::to_string((i - first) / columns) + "\" column=\"" +
           std::to_string((i - first) % columns) + "\"/>\n  </ColorSetEntry>\n";
  }
}

std::string RowsOf(std::size_t first, std::size_t last, std::size_t columns)
{
  return std::to_string((last - first + columns - 1) / columns);
}

std::string ColourSetOf(const SwatchBook &book)
{
  const std::size_t columns = book.columns > 0 ? std::min(book.columns, kMostCells) : kUsualColumns;
  const auto lastOf = [&](std::size_t group) {
    return group + 1 < book.groups.size() ? book.groups[group + 1].first : book.swatches.size();
  };
  const std::size_t ungrouped = book.groups.empty() ? book.swatches.size() : book.groups.front().first;
  std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Colorset version=\"1.0\" name=\"" +
                    Escaped(book.name) + "\" comment=\"" + Escaped(book.description) + "\" columns=\"" +
                    std::to_string(columns) + "\" rows=\"" + RowsOf(0, ungrouped, columns) + "\" readonly=\"false\">\n";
  AppendEntries(xml, book, 0, ungrouped, columns);
  for (std::size_t i = 0; i < book.groups.size(); ++i) {
    const SwatchGroup &group = book.groups[i];
    xml += "  <Group name=\"" + Escaped(group.name) + "\" rows=\"" + RowsOf(group.first, lastOf(i), columns) + "\">\n";
    AppendEntries(xml, book, group.first, lastOf(i), columns);
    xml += "  </Group>\n";
  }
  return xml + "</Colorset>\n";
}

} // namespace

bool RecognisesKpl(std::string_view bytes)
{
  if (!bytes.starts_with("PK"))
    return false;
  const auto names = ZelUtl::ZipEntryNames(bytes);
  return std::find(names.begin(), names.end(), kColoursEntry) != names.end();
}

std::optional<SwatchBook> ReadKpl(std::string_view bytes, ReadProblem &problem)
{
  problem = {};
  const auto xml = ZelUtl::ReadZipEntry(bytes, kColoursEntry, kMostPaletteBytes, problem.reason);
  ColourSet set;
  Profiles profiles(bytes);
  if (!xml || !ReadXmlPalette(*xml, set, problem) || !profiles.ReadNames(problem))
    return std::nullopt;
  return BookOf(std::move(set), profiles, problem);
}

std::optional<WrittenPalette> WriteKpl(const SwatchBook &original, std::string &reason)
{
  WrittenPalette written;
  SwatchBook book = Fitted(original,
                           {.cmyk = true,
                            .gray = true,
                            .lab = true,
                            .spot = true,
                            .bookName = true,
                            .description = true,
                            .columns = true,
                            .groups = true,
                            .rgbBeyond = kMostKplFloat - 1.0},
                           written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  if (const std::size_t renamed = MakeNamesUnique(book.groups))
    written.notes.push_back(CountOf(renamed, "group") + " got another name");
  const std::string xml = ColourSetOf(book);
  if (xml.size() > kMostPaletteBytes) {
    reason = "more text than a palette may have";
    return std::nullopt;
  }
  const ZelUtl::ZipEntry entries[] = {{"mimetype", kMimeType, false},
                                      {kColoursEntry, xml},
                                      {kProfilesEntry, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Profiles/>\n"}};
  auto archive = ZelUtl::WriteZip(entries, reason);
  if (!archive)
    return std::nullopt;
  written.bytes = std::move(*archive);
  return written;
}

} // namespace ZelClr
