// The names of the properties that panels hear of, by what changed. Frozen: panels bind to them.
//
// Threads and errors: constants.
#pragma once

#include <string_view>

namespace ZelClr::PaletteProperties {

inline constexpr std::wstring_view kName = L"PaletteName";
inline constexpr std::wstring_view kGuid = L"ShowColorNames,CanResetPalette";
inline constexpr std::wstring_view kChanged = L"Changed,CanResetPalette";
inline constexpr std::wstring_view kLock = L"Locked,CanDeleteColor,CanEditColor";
inline constexpr std::wstring_view kFile = L"Filename,CanResetPalette";
inline constexpr std::wstring_view kSizeLimit = L"SizeLimit,Colors,CanAddColor,CanDeleteColor,CanResetPalette";
/// Which colours there are, or how many.
inline constexpr std::wstring_view kColors = L"Colors,ColorSpaces,CanAddColor,CanDeleteColor,CanResetPalette";
/// What a colour is.
inline constexpr std::wstring_view kColorValues = L"Colors,ColorSpaces,CanResetPalette";
/// Their names, order and pages.
inline constexpr std::wstring_view kArrangement = L"Colors,CanResetPalette";
inline constexpr std::wstring_view kColorSpaces = L"ColorSpaces,CanResetPalette";
/// Another palette altogether.
inline constexpr std::wstring_view kEverything =
  L"PaletteName,ShowColorNames,Colors,ColorSpaces,Locked,SizeLimit,CanAddColor,CanDeleteColor,CanEditColor,"
  L"CanResetPalette";

} // namespace ZelClr::PaletteProperties
