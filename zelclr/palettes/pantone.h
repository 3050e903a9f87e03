// PANTONE colours by their names and numbers, and which book took the place of which. No colour of any book is here.
//
// Threads: plain functions over constant tables. Errors: -1, null.
#pragma once

#include "zelclr/platform/guid.h"

#include <span>
#include <string_view>

namespace ZelClr {

/// The number in "PANTONE 185 C": of one to five digits behind the maker's name (in any case, with or without "®" or
/// "™"), and in front of nothing, a suffix of letters for the paper, or both with blanks between. -1 for what has no
/// such number: base inks (Warm Red, Black 2), the numbers in parts of other schemes (18-1664 TCX, P 12-4 C).
ZELCLR_API int PantoneNumberOfName(std::wstring_view name);
/// "PANTONE Trans. White", also "Transparent White", with or without a suffix.
ZELCLR_API bool IsPantoneTransparentWhite(std::wstring_view name);
/// The identifier of the book whose place a newer one took; null for one without a previous version.
ZELCLR_API ZelUtils::Guid PreviousPantoneBook(const ZelUtils::Guid &book);
/// The coated books of numbered spot colours, the oldest first.
ZELCLR_API std::span<const ZelUtils::Guid> CoatedPantoneBooks();

} // namespace ZelClr
