#include "zelclr/platform/guid.h"

#include <random>

namespace ZelUtils {

template <class Text>
Text Guid::AsText() const
{
  using Char = typename Text::value_type;
  Text text(kTextLength, Char('-'));
  text.front() = Char('{');
  text.back() = Char('}');
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    text[kDigitOfByte[i]] = static_cast<Char>(kDigits[bytes[i] >> 4]);
    text[kDigitOfByte[i] + 1u] = static_cast<Char>(kDigits[bytes[i] & 15]);
  }
  return text;
}

std::string Guid::ToText() const
{
  return AsText<std::string>();
}

std::wstring Guid::ToWideText() const
{
  return AsText<std::wstring>();
}

Guid NewGuid()
{
  std::random_device random;
  Guid guid;
  for (std::uint8_t &byte : guid.bytes)
    byte = static_cast<std::uint8_t>(random());
  guid.bytes[7] = static_cast<std::uint8_t>((guid.bytes[7] & 0x0F) | 0x40); // the version: 4
  guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80); // the variant: of RFC 9562
  return guid;
}

} // namespace ZelUtils
