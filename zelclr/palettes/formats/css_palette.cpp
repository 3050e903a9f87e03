#include "zelclr/palettes/formats/css_palette.h"

#include "zelclr/palettes/formats/internal/css_colour_spaces.h"
#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace ZelClr {

namespace {

std::string PropertyName(std::string_view name)
{
  std::string made;
  for (const char c : ZelUtl::LowerAscii(name)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80 || std::isalnum(byte) || c == '_')
      made += c;
    else if (!made.empty() && made.back() != '-')
      made += '-';
  }
  while (made.ends_with('-'))
    made.pop_back();
  return made;
}

/// A comment on one line; it ends where it should.
std::string Comment(std::string_view text)
{
  std::string comment = OneLine(text);
  for (std::size_t at = 0; (at = comment.find("*/", at)) != std::string::npos;)
    comment.replace(at, 2, "* /");
  return "/* " + comment + " */";
}

std::string ValueOf(const Swatch &swatch)
{
  const auto &values = swatch.values;
  const auto numbers = [&values](int decimals) {
    return ZelUtl::TextFromNumber(values[0], decimals) + " " + ZelUtl::TextFromNumber(values[1], decimals) + " " +
           ZelUtl::TextFromNumber(values[2], decimals) + ")";
  };
  if (swatch.model == SwatchModel::Lab)
    return "lab(" + numbers(4);
  for (std::size_t i = 0; i < 3; ++i) {
    if (std::abs(values[i] - ByteOfChannel(values[i]) / 255.0) > 1e-6)
      return "color(srgb " + numbers(6);
  }
  return HexOfRgb(values);
}

} // namespace

std::optional<WrittenPalette> WriteCss(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book =
    Fitted(source, {.lab = true, .bookName = true, .groups = true, .rgbBeyond = kMostBeyondRgb}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  std::string &text = written.bytes;
  if (!book.name.empty())
    text.append(Comment(book.name)).append("\n");
  text += ":root {\n";
  UniqueNames names;
  std::size_t group = 0, renamed = 0;
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    for (; group < book.groups.size() && book.groups[group].first <= i; ++group)
      text.append("  ").append(Comment(book.groups[group].name)).append("\n");
    const Swatch &swatch = book.swatches[i];
    const std::string name = names.Make(PropertyName(swatch.name), "color");
    renamed += name != swatch.name;
    text.append("  --").append(name);
    text.append(": ").append(ValueOf(swatch)).append(";\n");
  }
  text += "}\n";
  if (std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
    text.insert(0, "@charset \"UTF-8\";\n");
  if (renamed > 0)
    written.notes.push_back(CountOf(renamed, "name was", "names were") + " changed to one that CSS can have");
  return written;
}

} // namespace ZelClr
