#include "zelclr/platform/guid.h"

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

} // namespace ZelUtils
