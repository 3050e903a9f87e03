#include "zelclr/palettes/formats/internal/palette_text.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>

namespace ZelClr {

bool IsText(std::string_view bytes, ReadProblem &problem)
{
  const bool isText = ZelUtl::IsValidUtf8(bytes) && bytes.find('\0') == std::string_view::npos;
  if (!isText)
    problem = {0, "not a text file in UTF-8"};
  return isText;
}

std::string OneLine(std::string_view text)
{
  constexpr std::size_t kMostBytes = 3900;
  std::string line;
  bool gap = false;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isWithin = (byte & 0xC0) == 0x80; // a character of UTF-8
    if (!isWithin && line.size() >= kMostBytes - 5)
      break;
    if (byte <= 0x20 || byte == 0x7F) {
      gap = !line.empty();
      continue;
    }
    if (gap)
      line += ' ';
    gap = false;
    line += c;
  }
  return line;
}

std::uint8_t ByteOfChannel(double value)
{
  return value > 0.0 ? static_cast<std::uint8_t>(std::lround(std::min(value, 1.0) * 255.0)) : std::uint8_t{0};
}

std::string HexOfRgb(const std::array<double, 4> &rgb)
{
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (int i = 0; i < 3; ++i) {
    const unsigned byte = ByteOfChannel(rgb[static_cast<std::size_t>(i)]);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

std::optional<std::vector<std::uint8_t>> BytesOfHex(std::string_view digits, std::size_t count)
{
  if (digits.size() != 2 * count)
    return std::nullopt;
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < count; ++i) {
    const auto byte = ZelUtl::IntegerFromText<std::uint8_t>(digits.substr(2 * i, 2), 16);
    if (!byte)
      return std::nullopt;
    bytes.push_back(*byte);
  }
  return bytes;
}

std::string EscapedXml(std::string_view text)
{
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    switch (byte) {
    case '&':
      escaped += "&amp;";
      break;
    case '<':
      escaped += "&lt;";
      break;
    case '>':
      escaped += "&gt;";
      break;
    case '"':
      escaped += "&quot;";
      break;
    case '\t':
    case '\n':
    case '\r': // else an attribute's value would have blanks in their place
      escaped += "&#" + std::to_string(byte) + ";";
      break;
    default:
      if (byte < 0x20) {
        escaped += "\xEF\xBF\xBD";
      } else if (text.substr(i, 2) == "\xEF\xBF" &&
                 (text.substr(i, 3) == "\xEF\xBF\xBE" || text.substr(i, 3) == "\xEF\xBF\xBF"))
      {
        escaped += "\xEF\xBF\xBD"; // U+FFFE and U+FFFF
        i += 2;
      } else {
        escaped += text[i];
      }
    }
  }
  return escaped;
}

std::string RootOfXml(std::string_view bytes)
{
  class Root final : public ZelUtl::XmlHandler
  {
  public:
    std::string name;

  private:
    bool StartElement(std::string_view element, std::span<const ZelUtl::XmlAttribute>, std::string &) override
    {
      name = element;
      return false; // the rest is not looked at
    }
    bool Text(std::string_view, std::string &) override { return false; }
    bool EndElement(std::string_view, std::string &) override { return false; }
  };
  const std::size_t first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF\xFE\xFF");
  if (first == std::string_view::npos || (bytes[first] != '<' && bytes[first] != '\0'))
    return {};
  Root root;
  std::string reason;
  ZelUtl::ReadXml(bytes, root, reason);
  return root.name;
}

std::string_view LocalName(std::string_view name)
{
  return name.substr(name.find(':') + 1); // npos + 1 is 0
}

bool ReadXmlPalette(std::string_view bytes, ZelUtl::XmlHandler &handler, ReadProblem &problem)
{
  std::string reason;
  if (ZelUtl::ReadXml(bytes, handler, reason, kMostPaletteBytes))
    return true;
  problem = {0, reason};
  const std::string_view text(reason);
  const auto colon = text.find(": ");
  if (!text.starts_with("line ") || colon == std::string_view::npos)
    return false;
  if (const auto line = ZelUtl::IntegerFromText<std::size_t>(text.substr(5, colon - 5)))
    problem = {*line, std::string(text.substr(colon + 2))};
  return false;
}

const std::string_view *FindAttribute(std::span<const ZelUtl::XmlAttribute> attributes, std::string_view name)
{
  const auto found =
    std::find_if(attributes.begin(), attributes.end(), [&](const auto &attribute) { return attribute.name == name; });
  return found == attributes.end() ? nullptr : &found->value;
}

std::string UniqueNames::Make(std::string name, std::string_view empty)
{
  if (name.empty())
    name = empty;
  for (std::size_t &times = times_[name]; times++ > 0;) {
    std::string numbered = name + "-" + std::to_string(times);
    if (times_.try_emplace(numbered, 1).second)
      return numbered;
  }
  return name;
}

std::string TooManySwatches()
{
  return "more than " + std::to_string(kMostSwatches) + " colours";
}

} // namespace ZelClr
