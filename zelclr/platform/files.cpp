#include "zelclr/platform/files.h"

#include "zelclr/platform/regular_file.h"

namespace ZelUtl {

std::string KeepDamagedBytes(const std::string &path, std::string_view bytes, std::string &reason)
{
  constexpr int kMostKept = 1000;
  for (int number = 1; number <= kMostKept; ++number) {
    const std::string kept = path + ".damaged" + (number == 1 ? "" : "-" + std::to_string(number));
    if (!IsNameTaken(kept))
      return ReplaceFile(kept, bytes, reason) ? kept : std::string();
    std::string different;
    if (StampOfFile(kept) && ReadFile(kept, bytes.size(), different) == bytes)
      return kept;
  }
  reason = "too many damaged files are kept already";
  return {};
}

} // namespace ZelUtl
