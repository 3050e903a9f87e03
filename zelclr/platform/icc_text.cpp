// The texts in the tags of an ICC profile.
#include "zelclr/platform/bytes.h"
#include "zelclr/platform/icc_file.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ZelUtl {

namespace {

constexpr std::size_t kLeastDescriptionSize = 13;
constexpr std::size_t kMostDescriptionLength = 256;
constexpr wchar_t kRecordSeparator = 0x1E;
constexpr std::uint32_t kMostRecords = 1024;

std::uint32_t TypeOf(std::span<const std::uint8_t> tag)
{
  return ByteReader(tag).ReadBig<std::uint32_t>();
}

/// Up to a NUL. What should be ASCII and is not is UTF-8 where it is valid as such, Latin-1 elsewhere.
std::wstring TextFromAscii(std::span<const std::uint8_t> bytes)
{
  const std::string text(bytes.begin(), std::find(bytes.begin(), bytes.end(), std::uint8_t{0}));
  if (IsValidUtf8(text))
    return WideFromUtf8(text);
  std::wstring wide;
  for (const char byte : text)
    wide += static_cast<wchar_t>(static_cast<unsigned char>(byte));
  return wide;
}

std::wstring TextFromUtf16(std::span<const std::uint8_t> bytes)
{
  std::u16string units;
  for (ByteReader reader(bytes); reader.Remaining() >= 2;)
    units += static_cast<char16_t>(reader.ReadBig<std::uint16_t>());
  units.erase(std::find(units.begin(), units.end(), u'\0'), units.end());
  return WideFromUtf16(units);
}

/// What an ASCII field holds of a text.
std::string AsciiOf(std::wstring_view text)
{
  std::string ascii;
  for (const char16_t unit : Utf16FromWide(text))
    ascii += unit > 0 && unit < 0x80 ? static_cast<char>(unit) : '?';
  return ascii;
}

/// textDescriptionType: type, reserved, ASCII count (its NUL included), ASCII, language code, Unicode count, UTF-16.
std::wstring TextOfDescription(std::span<const std::uint8_t> tag)
{
  ByteReader reader(tag);
  reader.Take(8);
  const auto asciiCount = reader.ReadBig<std::uint32_t>();
  const auto asciiBytes = reader.Take(std::min<std::size_t>(asciiCount, reader.Remaining()));
  const std::wstring ascii = asciiCount > 1 ? TextFromAscii(asciiBytes) : std::wstring();
  reader.ReadBig<std::uint32_t>();
  const auto unicodeCount = reader.ReadBig<std::uint32_t>();
  const auto unicodeBytes = reader.Take(std::size_t{unicodeCount} * 2);
  // The Unicode form counts where the ASCII form is what is left of it.
  const std::wstring unicode = reader.Ok() ? TextFromUtf16(unicodeBytes) : std::wstring();
  return AsciiOf(unicode) == Utf8FromWide(ascii) ? unicode : ascii;
}

/// multiLocalizedUnicodeType: type, reserved, record count, record size (12), records of language, country, length in
/// bytes and offset into the tag.
std::vector<IccText> TextsOfLocalised(std::span<const std::uint8_t> tag)
{
  ByteReader reader(tag);
  reader.Take(8);
  const auto count = std::min(reader.ReadBig<std::uint32_t>(), kMostRecords);
  if (reader.ReadBig<std::uint32_t>() != 12)
    return {};
  const auto code = [&reader] {
    const auto bytes = reader.Take(2);
    return std::string(bytes.begin(), bytes.end());
  };
  std::vector<IccText> texts;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string language = code();
    const std::string country = code();
    const auto length = reader.ReadBig<std::uint32_t>();
    const auto offset = reader.ReadBig<std::uint32_t>();
    if (!reader.Ok())
      break;
    std::wstring text;
    if (offset != 0 && std::uint64_t{offset} + length <= tag.size())
      text = TextFromUtf16(tag.subspan(offset, length));
    texts.push_back({language, country, std::move(text)});
  }
  return texts;
}

} // namespace

std::vector<IccText> TextsOfIccTag(std::span<const std::uint8_t> tag)
{
  if (tag.size() < 8)
    return {};
  switch (TypeOf(tag)) {
  case IccSignature("mluc"):
    return TextsOfLocalised(tag);
  case IccSignature("desc"):
    return {{"", "", TextOfDescription(tag)}};
  case IccSignature("text"):
    return {{"", "", TextFromAscii(tag.subspan(8))}};
  default:
    return {};
  }
}

std::wstring DescriptionFromIccTag(std::span<const std::uint8_t> tag)
{
  if (tag.size() < kLeastDescriptionSize || TypeOf(tag) == IccSignature("text"))
    return {};
  const auto texts = TextsOfIccTag(tag);
  if (texts.empty())
    return {};
  const IccText *chosen = &texts.front();
  for (const IccText &text : texts) {
    if (text.language == "en")
      chosen = &text;
    if (text.language == "en" && text.country == "US")
      break;
  }
  std::wstring description = chosen->text;
  if (TypeOf(tag) == IccSignature("desc")) {
    description.resize(std::min(description.size(), kMostDescriptionLength));
    std::erase(description, kRecordSeparator);
  }
  return description;
}

std::wstring DeviceTextFromIccTag(std::span<const std::uint8_t> tag)
{
  if (tag.size() < 8)
    return {};
  const std::size_t start = TypeOf(tag) == IccSignature("text") ? 8 : 12;
  return TextFromAscii(tag.subspan(std::min(start, tag.size())));
}

std::vector<std::uint8_t> IccDescriptionTag(std::wstring_view description, bool localised)
{
  const std::u16string utf16 = Utf16FromWide(description);
  const auto writeUtf16 = [&utf16](ByteWriter &writer) {
    for (const char16_t unit : utf16)
      writer.WriteBig(static_cast<std::uint16_t>(unit));
  };
  ByteWriter writer;
  if (localised) {
    writer.WriteBig(IccSignature("mluc"));
    for (const std::uint32_t number : {0u, 1u, 12u}) // reserved, records, size of a record
      writer.WriteBig(number);
    for (const char letter : {'e', 'n', 'U', 'S'})
      writer.WriteBig(static_cast<std::uint8_t>(letter));
    writer.WriteBig(static_cast<std::uint32_t>(utf16.size() * 2));
    writer.WriteBig(std::uint32_t{28});
    writeUtf16(writer);
    return writer.Bytes();
  }
  constexpr std::size_t kScriptSize = 2 + 1 + 67; // the script code form, unused
  const std::string ascii = AsciiOf(description);
  writer.WriteBig(IccSignature("desc"));
  writer.WriteBig(std::uint32_t{0});
  writer.WriteBig(static_cast<std::uint32_t>(ascii.size() + 1));
  for (const char character : ascii)
    writer.WriteBig(static_cast<std::uint8_t>(character));
  writer.WriteBig(std::uint8_t{0});
  writer.WriteBig(std::uint32_t{0}); // language
  writer.WriteBig(static_cast<std::uint32_t>(utf16.size() + 1));
  writeUtf16(writer);
  writer.WriteBig(std::uint16_t{0});
  for (std::size_t i = 0; i < kScriptSize; ++i)
    writer.WriteBig(std::uint8_t{0});
  return writer.Bytes();
}

} // namespace ZelUtl
