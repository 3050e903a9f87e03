#include "zelclr/platform/text.h"

#include <clocale>
#include <cwctype>

namespace ZelUtl {

std::wstring FoldedCase(std::wstring text)
{
  // Every system of ours has it; where it were missing, only the letters of ASCII would fold.
  static const locale_t kUnicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  for (wchar_t &character : text) {
    const auto letter = static_cast<std::wint_t>(character);
    if (kUnicode != nullptr)
      character = static_cast<wchar_t>(::towlower_l(letter, kUnicode));
    else if (letter < 0x80)
      character = static_cast<wchar_t>(std::towlower(letter));
  }
  return text;
}

} // namespace ZelUtl
