#include "zelclr/platform/text.h"

#include <windows.h>

namespace ZelUtl {

std::wstring FoldedCase(std::wstring text)
{
  if (text.empty())
    return text;
  const auto length = static_cast<int>(text.size());
  std::wstring folded(text.size(), L'\0');
  const int written = LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, text.data(), length, folded.data(), length,
                                    nullptr, nullptr, 0);
  return written == length ? folded : text;
}

} // namespace ZelUtl
