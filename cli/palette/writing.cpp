#include "cli/palette/writing.h"

#include "cli/palette/swatch_facts.h"
#include "zelclr/palettes/palette_exchange.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

using ZelClr::PaletteFormat;
using ZelClr::WrittenPalette;

TargetFormat TargetOfForeign(const PaletteFormat &format)
{
  return {format.key, format.title, &format};
}

/// An identifier that the same palette gets again, wherever and whenever it is made.
void GiveIdentifier(WXmlColorPalette &palette)
{
  WXmlColorPalette::Header header = palette.GetHeader();
  header.guid = {};
  palette.SetHeader(header);
  header.guid = ZelClr::IdentifierOfBytes(palette.Bytes(false));
  palette.SetHeader(std::move(header));
}

/// What our own palettes have beyond their swatches.
std::vector<std::string> NotesOfOwn(const WXmlColorPalette &palette)
{
  std::vector<std::string> notes;
  std::size_t looks = 0;
  for (std::size_t i = 0; i < palette.GetColorSpaceCount(); ++i)
    looks += palette.GetColorSpace(i).definitions.size() > 1;
  if (looks > 0)
    notes.push_back(Counted(looks, "colour space") + (looks == 1 ? " keeps" : " keep") +
                    " only the first of several looks");
  if (!palette.GetResources().empty())
    notes.emplace_back("names in other languages were left out");
  if (const std::size_t waiting = palette.GetUnresolvedStyles().size())
    notes.push_back(Counted(waiting, "colour") + " of styles that are not there " + (waiting == 1 ? "was" : "were") +
                    " left out");
  return notes;
}

WrittenPalette WrittenAsOwn(const LoadedPalette &palette)
{
  WrittenPalette written;
  if (palette.own)
    return {palette.own->Bytes(false), {}};
  const ZelClr::SwatchBook &book = palette.book;
  WXmlColorPalette own = ZelClr::PaletteFromSwatchBook(book, written.notes);
  WXmlColorPalette::Header header = own.GetHeader();
  header.name = palette.Name();
  own.SetHeader(std::move(header));
  GiveIdentifier(own);
  if (!book.groups.empty())
    written.notes.push_back(Counted(book.groups.size(), "group") + (book.groups.size() == 1
                                                                      ? " became a page, which has no name"
                                                                      : " became pages, which have no names"));
  if (!book.description.empty())
    written.notes.emplace_back("the description was left out");
  written.bytes = own.Bytes(false);
  return written;
}

WrittenPalette WrittenAs(const LoadedPalette &palette, const TargetFormat &target, const std::string &path)
{
  if (target.foreign == nullptr)
    return WrittenAsOwn(palette);
  std::string reason;
  auto written = target.foreign->write(palette.book, reason);
  if (!written)
    throw Failure(ExitCode::Usage, Harmless(path) + ": " + Harmless(reason));
  if (palette.own) {
    const auto notes = NotesOfOwn(*palette.own);
    written->notes.insert(written->notes.begin(), notes.begin(), notes.end());
  }
  return std::move(*written);
}

} // namespace

TargetFormat TargetOf(const Destination &destination, const std::vector<std::string> &sources, const Output &output)
{
  const std::string &path = destination.path;
  if (output.json && path == "-")
    throw Failure(ExitCode::Usage, "--json and -o - both print to standard output");
  for (const std::string &source : sources) {
    if (path != "-" && ZelUtl::IsSameFile(source, path))
      throw Failure(ExitCode::Usage, Harmless(path) + " is both read and written");
  }
  if (!destination.format.empty()) {
    if (destination.format == kOwnFormat)
      return {};
    const PaletteFormat *const format = ZelClr::FindPaletteFormat(destination.format);
    if (format == nullptr || format->write == nullptr)
      throw Failure(ExitCode::Usage, "\"" + Harmless(destination.format) +
                                       "\" is no format that can be written: " + FormatsInWords(true));
    return TargetOfForeign(*format);
  }
  if (path == "-")
    throw Failure(ExitCode::Usage, "-o - needs --to, which says in what format");
  if (ZelUtl::LowerAscii(ZelUtl::ExtensionOfPath(path)) == ".xml")
    return {};
  const PaletteFormat *const format = ZelClr::PaletteFormatOfFileName(path);
  if (format == nullptr)
    throw Failure(ExitCode::Usage, Harmless(path) + ": the name of the output tells no format; name one by --to: " +
                                     FormatsInWords(true));
  return TargetOfForeign(*format);
}

std::string FormatsInWords(bool write)
{
  std::string words = write ? std::string(kOwnFormat) : std::string();
  for (const PaletteFormat &format : ZelClr::PaletteFormats()) {
    if (write ? format.write != nullptr : format.write == nullptr)
      words.append(words.empty() ? "" : ", ").append(format.key);
  }
  return words;
}

void Rename(LoadedPalette &palette, const std::string &name)
{
  palette.book.name = name;
  if (!palette.own)
    return;
  WXmlColorPalette::Header header = palette.own->GetHeader();
  header.name = name;
  header.resid.clear();
  header.fixedID = -1;
  header.locked = false;
  palette.own->SetHeader(std::move(header));
  GiveIdentifier(*palette.own);
}

void WriteAndTell(LoadedPalette palette, const std::vector<LoadedPalette> &sources, const Destination &destination,
                  const TargetFormat &target, const std::string &action, const Json &facts, const Output &output)
{
  const std::string &path = destination.path;
  if (!destination.name.empty())
    Rename(palette, destination.name);
  if (palette.book.swatches.empty() && !palette.own)
    throw Failure(ExitCode::Unreadable, Harmless(sources.front().path) + ": no colours");
  const WrittenPalette written = WrittenAs(palette, target, path);
  std::string reason;
  if (path == "-")
    std::fwrite(written.bytes.data(), 1, written.bytes.size(), stdout);
  else if (!ZelUtl::ReplaceFile(path, written.bytes, reason))
    throw Failure(ExitCode::Unreadable, Harmless(path) + ": " + reason);

  std::vector<std::string> notes;
  for (const LoadedPalette &source : sources) {
    SayNotes(source.path, source.book.notes);
    notes.insert(notes.end(), source.book.notes.begin(), source.book.notes.end());
  }
  SayNotes(path, written.notes);
  notes.insert(notes.end(), written.notes.begin(), written.notes.end());
  if (output.json) {
    Json inputs = Json::array();
    for (const LoadedPalette &source : sources)
      inputs.push_back(JsonOfPalette(source));
    Json content = {{"inputs", inputs},
                    {"output", {{"file", path}, {"format", target.key}, {"name", palette.Name()}}},
                    {"notes", notes}};
    content.update(facts);
    PrintJson("zelclr.palette." + action, content);
  } else if (path != "-") {
    for (const LoadedPalette &source : sources)
      std::printf("%s: %s, %s\n", Harmless(source.path).c_str(), std::string(source.title).c_str(),
                  Counted(source.book.swatches.size(), "colour").c_str());
    std::printf("%s: %s\n", Harmless(path).c_str(), std::string(target.title).c_str());
  }
}

} // namespace cli
