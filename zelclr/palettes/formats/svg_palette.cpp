#include "zelclr/palettes/formats/svg_palette.h"

#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"

namespace ZelClr {

namespace {

// In user units, which viewers show as pixels.
constexpr std::size_t kMargin = 16;
constexpr std::size_t kField = 88;
constexpr std::size_t kGap = 8;
constexpr std::size_t kLabel = 32; ///< below a field: name and colour
constexpr std::size_t kTitle = 28;
constexpr std::size_t kCharacters = 15; ///< of a name that fit below a field

constexpr std::size_t kColumns = 8;
constexpr std::size_t kMostColumns = 32;

/// At most so many characters, with an ellipsis in place of the rest.
std::string Shortened(std::string_view text)
{
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80)
      continue;
    if (++characters > kCharacters)
      return std::string(text.substr(0, i)) + "\xE2\x80\xA6";
  }
  return std::string(text);
}

std::string Attribute(std::string_view name, std::size_t number)
{
  return " " + std::string(name) + "=\"" + std::to_string(number) + "\"";
}

std::string TextAt(std::size_t x, std::size_t y, std::string_view style, std::string_view text)
{
  return "<text" + Attribute("x", x) + Attribute("y", y) + std::string(style) + ">" + EscapedXml(text) + "</text>\n";
}

} // namespace

std::optional<WrittenPalette> WriteSvg(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(
    source, {.bookName = true, .description = true, .columns = true, .groups = true, .rgbSteps = 255}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  const std::size_t columns = book.columns == 0 ? kColumns : std::min(book.columns, kMostColumns);

  std::string body;
  std::size_t y = kMargin;
  if (!book.name.empty()) {
    body += TextAt(kMargin, y + 18, " font-size=\"18\" font-weight=\"bold\"", OneLine(book.name));
    y += kTitle;
  }
  std::size_t group = 0;
  std::size_t column = 0;
  const auto endRow = [&] {
    if (column > 0)
      y += kField + kLabel + kGap;
    column = 0;
  };
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    for (; group < book.groups.size() && book.groups[group].first <= i; ++group) {
      endRow();
      body += TextAt(kMargin, y + 14, " font-size=\"14\"", OneLine(book.groups[group].name));
      y += kTitle;
    }
    if (column == columns)
      endRow();
    const Swatch &swatch = book.swatches[i];
    const std::string name = OneLine(swatch.name);
    const std::string hex = HexOfRgb(swatch.values);
    const std::size_t x = kMargin + column * (kField + kGap);
    body += "<g>";
    if (!name.empty())
      body += "<title>" + EscapedXml(name) + "</title>";
    body += "<rect" + Attribute("x", x) + Attribute("y", y) + Attribute("width", kField) + Attribute("height", kField) +
            " fill=\"" + hex + "\" stroke=\"#808080\" stroke-width=\"0.5\"/>\n";
    if (!name.empty())
      body += TextAt(x, y + kField + 13, "", Shortened(name));
    body += TextAt(x, y + kField + (name.empty() ? 13 : 26), " fill=\"#606060\"", hex);
    body += "</g>\n";
    ++column;
  }
  endRow();

  const std::size_t width = 2 * kMargin + columns * (kField + kGap) - kGap;
  std::string &text = written.bytes;
  text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"" +
         Attribute("width", width) + Attribute("height", y + kMargin - kGap) + " viewBox=\"0 0 " +
         std::to_string(width) + " " + std::to_string(y + kMargin - kGap) +
         "\" font-family=\"sans-serif\" font-size=\"11\">\n";
  if (!book.name.empty())
    text += "<title>" + EscapedXml(OneLine(book.name)) + "</title>\n";
  if (!book.description.empty())
    text += "<desc>" + EscapedXml(book.description) + "</desc>\n";
  text += "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" + body + "</svg>\n";
  return written;
}

} // namespace ZelClr
