#include "cli/palette_input.h"

#include "cli/colour_facts.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "zelclr/palettes/legacy_palette_file.h"
#include "zelclr/palettes/palette_exchange.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/zip_archive.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace cli {

namespace {

using ZelClr::PaletteFormat;
using ZelClr::ReadProblem;

bool LooksLikeXml(std::string_view bytes)
{
  constexpr std::string_view kBlanksAndMarks("\0 \t\r\n\xEF\xBB\xBF\xFE\xFF", 10);
  const std::size_t first = bytes.find_first_not_of(kBlanksAndMarks);
  return first != std::string_view::npos && bytes[first] == '<';
}

/// Whether the format was chosen for what the bytes are, not for want of a better one.
bool IsCertain(const PaletteFormat *format)
{
  return format != nullptr && format->key != "list" && format->key != "act";
}

std::string WithoutExtension(const std::string &fileName)
{
  const auto dot = fileName.rfind('.');
  return dot == std::string::npos || dot == 0 ? fileName : fileName.substr(0, dot);
}

/// The entry that is the palette: of the archive's own name, else the only ".xml".
std::string PaletteEntryOf(const std::string &path, std::string_view archive)
{
  std::vector<std::string> names = ZelUtl::ZipEntryNames(archive);
  std::string own = WithoutExtension(ZelUtl::FileNameOfPath(path));
  if (std::find(names.begin(), names.end(), own) != names.end())
    return own;
  std::erase_if(names, [](const std::string &name) { return !ZelUtl::LowerAscii(name).ends_with(".xml"); });
  return names.size() == 1 ? names.front() : std::string();
}

std::optional<LoadedPalette> ReadOlder(const std::string &path, std::string_view bytes, ReadProblem &problem)
{
  const std::string name = ZelUtl::FileNameOfPath(path);
  std::string reason;
  const auto file = ZelClr::ReadLegacyPalette(bytes, ZelClr::LegacyPaletteTypeOfFileName(name), reason);
  if (!file) {
    problem = {0, reason};
    return std::nullopt;
  }
  LoadedPalette loaded = LoadedFromOwn(ZelClr::XmlPaletteFromLegacy(*file, WithoutExtension(name)), path);
  loaded.format = "cpl";
  loaded.title = "Older palette";
  return loaded;
}

} // namespace

std::string LoadedPalette::Name() const
{
  if (!book.name.empty())
    return book.name;
  return path == "-" ? "Standard input" : WithoutExtension(ZelUtl::FileNameOfPath(path));
}

LoadedPalette LoadedFromOwn(WXmlColorPalette palette, std::string path)
{
  LoadedPalette loaded;
  loaded.path = std::move(path);
  loaded.book = ZelClr::SwatchBookFromPalette(palette);
  loaded.own = std::move(palette);
  return loaded;
}

std::optional<std::string> XmlOfOwnPalette(const std::string &path, std::string_view bytes, std::string &reason)
{
  if (IsCertain(ZelClr::RecognisePaletteFormat(bytes)))
    return std::nullopt;
  if (LooksLikeXml(bytes))
    return std::string(bytes);
  if (!bytes.starts_with("PK\x03\x04"))
    return std::nullopt;
  const std::string entry = PaletteEntryOf(path, bytes);
  if (entry.empty()) {
    reason = "the archive does not hold one palette";
    return std::nullopt;
  }
  return ZelUtl::ReadZipEntry(bytes, entry, ZelClr::kMostPaletteBytes, reason);
}

std::optional<LoadedPalette> ReadPalette(const std::string &path, std::string_view bytes, ReadProblem &problem)
{
  if (bytes.starts_with("ZCPL"))
    return ReadOlder(path, bytes, problem);
  std::string reason;
  if (const auto xml = XmlOfOwnPalette(path, bytes, reason)) {
    WXmlColorPalette palette;
    if (palette.LoadFromBytes(*xml, reason))
      return LoadedFromOwn(std::move(palette), path);
  }
  if (!reason.empty()) {
    problem = ProblemFromReason(reason);
    return std::nullopt;
  }
  auto book = ZelClr::ReadSwatchBook(bytes, problem);
  if (!book)
    return std::nullopt;
  const PaletteFormat &format = *ZelClr::RecognisePaletteFormat(bytes);
  ZelClr::ConvertProfiles(*book);
  LoadedPalette loaded;
  loaded.path = path;
  loaded.format = format.key;
  loaded.title = format.title;
  loaded.book = std::move(*book);
  return loaded;
}

LoadedPalette LoadPalette(const std::string &path)
{
  ReadProblem problem;
  auto loaded = ReadPalette(path, ReadInput(path), problem);
  if (!loaded)
    throw Failure(ExitCode::Unreadable, InWords(path, problem));
  return std::move(*loaded);
}

ReadProblem ProblemFromReason(std::string_view reason)
{
  constexpr std::string_view kLine = "line ";
  const std::size_t colon = reason.find(": ");
  if (reason.starts_with(kLine) && colon != std::string_view::npos) {
    if (const auto line = ZelUtl::IntegerFromText<std::size_t>(reason.substr(kLine.size(), colon - kLine.size())))
      return {*line, std::string(reason.substr(colon + 2))};
  }
  return {0, std::string(reason)};
}

std::string InWords(const std::string &path, const ReadProblem &problem)
{
  return Harmless(path) + ":" + (problem.line ? std::to_string(problem.line) + ": " : std::string(" ")) +
         Harmless(problem.reason);
}

Json JsonOfPalette(const LoadedPalette &palette)
{
  return {{"file", palette.path},
          {"format", palette.format},
          {"name", palette.Name()},
          {"colours", palette.book.swatches.size()}};
}

} // namespace cli
