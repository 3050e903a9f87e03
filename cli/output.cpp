#include "cli/output.h"

#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/platform/console.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace cli {

namespace {

/// The next character of valid UTF-8, taken off the front.
char32_t NextCharacter(std::string_view &text)
{
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t character = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < std::min(length, text.size()); ++i)
    character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
  text.remove_prefix(std::min(length, text.size()));
  return character;
}

/// Columns by the ranges of Unicode's East Asian Width (UAX #11) that are wide, and combining marks; near enough for a
/// table of names.
std::size_t ColumnsOf(char32_t c)
{
  const auto within = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
  if (within(0x0300, 0x036F) || within(0x200B, 0x200F) || within(0xFE00, 0xFE0F) || within(0x20D0, 0x20FF))
    return 0;
  const bool wide = within(0x1100, 0x115F) || within(0x2E80, 0xA4CF) || within(0xAC00, 0xD7A3) ||
                    within(0xF900, 0xFAFF) || within(0xFE30, 0xFE6F) || within(0xFF00, 0xFF60) ||
                    within(0xFFE0, 0xFFE6) || within(0x1F300, 0x1FAFF) || within(0x20000, 0x3FFFD);
  return wide ? 2 : 1;
}

} // namespace

bool Output::DrawsColour() const
{
  if (colour != ColourUse::Auto)
    return colour == ColourUse::Always;
  const auto noColour = ZelUtl::EnvironmentVariable("NO_COLOR");
  return ZelUtl::StandardOutputTakesEscapes() && (!noColour || noColour->empty());
}

std::string Output::Swatch(const CLR_COLORSPEC &shown, int columns) const
{
  const auto rgb = DrawsColour() ? WClrConvert::ConvertColorSpecToCOLORREF(shown) : std::nullopt;
  if (!rgb)
    return {};
  const auto byte = [&](int shift) { return std::to_string(*rgb >> shift & 255); };
  return "\x1b[48;2;" + byte(0) + ";" + byte(8) + ";" + byte(16) + "m" +
         std::string(static_cast<std::size_t>(columns), ' ') + "\x1b[0m ";
}

std::string Output::Bold(std::string_view text) const
{
  return DrawsColour() ? "\x1b[1m" + std::string(text) + "\x1b[0m" : std::string(text);
}

std::string Output::Faint(std::string_view text) const
{
  return DrawsColour() ? "\x1b[2m" + std::string(text) + "\x1b[0m" : std::string(text);
}

namespace {

/// Steers a terminal, turns the direction of what follows, or is no character.
bool IsHarmful(char32_t c)
{
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) ||
         c == 0xFFFE || c == 0xFFFF;
}

} // namespace

void PrintJson(std::string_view schema, const Json &content, int schemaVersion)
{
  Json document = {{"schema", schema}, {"schemaVersion", schemaVersion}};
  document.update(content);
  std::string text;
  const std::string plain = document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  for (std::string_view rest = plain; !rest.empty();) {
    const std::string_view before = rest;
    const char32_t c = NextCharacter(rest);
    // JSON itself escapes what is below a blank; the line ends left are its layout.
    if (c != '\n' && IsHarmful(c)) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c) & 0xFFFFu);
      text += escaped;
    } else {
      text += before.substr(0, before.size() - rest.size());
    }
  }
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void SayNotes(const std::string &path, const std::vector<std::string> &notes)
{
  std::fflush(stdout);
  for (const std::string &note : notes)
    std::fprintf(stderr, "zelclr: %s: %s\n", Harmless(path).c_str(), Harmless(note).c_str());
}

std::string HexFromColorSpec(const CLR_COLORSPEC &colour)
{
  const auto rgb = WClrConvert::ConvertColorSpecToCOLORREF(colour);
  if (!rgb)
    return {};
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(*rgb & 255),
                static_cast<unsigned>(*rgb >> 8 & 255), static_cast<unsigned>(*rgb >> 16 & 255));
  return text;
}

std::string OneDecimal(double number)
{
  const std::string text = ZelUtl::TextFromNumber(number, 1);
  return text.find('.') == std::string::npos ? text + ".0" : text;
}

std::size_t TextColumns(std::string_view utf8)
{
  std::size_t columns = 0;
  while (!utf8.empty())
    columns += ColumnsOf(NextCharacter(utf8));
  return columns;
}

std::string Fitted(std::string_view utf8, std::size_t columns)
{
  if (TextColumns(utf8) > columns) {
    std::string_view rest = utf8;
    std::size_t used = 1; // the ellipsis
    while (!rest.empty()) {
      std::string_view behind = rest;
      used += ColumnsOf(NextCharacter(behind));
      if (used > columns)
        break;
      rest = behind;
    }
    return Fitted(std::string(utf8.substr(0, utf8.size() - rest.size())) + "\u2026", columns);
  }
  return std::string(utf8) + std::string(columns - TextColumns(utf8), ' ');
}

std::string Harmless(std::string_view bytes)
{
  const std::string valid = ZelUtl::Utf8FromWide(ZelUtl::WideFromUtf8(bytes));
  std::string_view utf8 = valid;
  std::string text;
  while (!utf8.empty()) {
    const std::string_view before = utf8;
    const char32_t c = NextCharacter(utf8);
    text += IsHarmful(c) ? std::string_view("\uFFFD") : before.substr(0, before.size() - utf8.size());
  }
  return text;
}

std::string Escaped(std::string_view bytes)
{
  std::string escaped;
  for (const char c : Harmless(bytes)) {
    switch (c) {
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
    default:
      escaped += c;
      break;
    }
  }
  return escaped;
}

} // namespace cli
