#include "zelclr/palettes/formats/soc_palette.h"

#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

namespace ZelClr {

namespace {

constexpr std::string_view kRoot = "color-table";

class Reader final : public ZelUtl::XmlHandler
{
public:
  SwatchBook book;
  std::size_t others = 0;

private:
  bool StartElement(std::string_view name, std::span<const ZelUtl::XmlAttribute> attributes,
                    std::string &reason) override
  {
    if (depth_++ == 0) {
      if (LocalName(name) != kRoot)
        reason = "the root is no " + std::string(kRoot);
      return LocalName(name) == kRoot;
    }
    if (depth_ != 2 || LocalName(name) != "color") {
      others += depth_ == 2;
      return true;
    }
    std::string_view colour, title;
    for (const ZelUtl::XmlAttribute &attribute : attributes) {
      if (LocalName(attribute.name) == "color")
        colour = attribute.value;
      if (LocalName(attribute.name) == "name")
        title = attribute.value;
    }
    const auto bytes = colour.starts_with('#') ? BytesOfHex(colour.substr(1), 3) : std::nullopt;
    if (!bytes || book.swatches.size() == kMostSwatches) {
      reason = bytes ? TooManySwatches() : "\"" + std::string(colour.substr(0, 40)) + "\" is no colour";
      return false;
    }
    book.swatches.push_back(
      RgbSwatch(std::string(title), (*bytes)[0] / 255.0, (*bytes)[1] / 255.0, (*bytes)[2] / 255.0));
    book.swatches.back().line = book.swatches.size();
    return true;
  }
  bool Text(std::string_view, std::string &) override { return true; }
  bool EndElement(std::string_view, std::string &) override
  {
    --depth_;
    return true;
  }

  int depth_ = 0;
};

} // namespace

bool RecognisesSoc(std::string_view bytes)
{
  return LocalName(RootOfXml(bytes)) == kRoot;
}

std::optional<SwatchBook> ReadSoc(std::string_view bytes, ReadProblem &problem)
{
  Reader reader;
  if (!ReadXmlPalette(bytes, reader, problem))
    return std::nullopt;
  if (reader.others > 0)
    reader.book.notes.push_back(
      CountOf(reader.others, "element that is no colour was", "elements that are no colours were") + " left out");
  return std::move(reader.book);
}

std::optional<WrittenPalette> WriteSoc(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(source, {.rgbSteps = 255}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  std::string &text = written.bytes;
  text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<ooo:color-table xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
         " xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\""
         " xmlns:ooo=\"http://openoffice.org/2004/office\">\n";
  for (const Swatch &swatch : book.swatches) {
    text.append("  <draw:color draw:name=\"").append(EscapedXml(swatch.name));
    text.append("\" draw:color=\"").append(HexOfRgb(swatch.values)).append("\"/>\n");
  }
  text += "</ooo:color-table>\n";
  return written;
}

} // namespace ZelClr
