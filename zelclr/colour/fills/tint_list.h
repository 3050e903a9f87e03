// Up to ten tints, applied one after the other.
//
// Ownership: a list owns its tints. Adding passes a tint to the list, removing passes it back.
// Threads: a value; a list may be applied by many threads at once. Errors: 0 or null, and then nothing has changed.
// Null pointers are answered so, too.
#pragma once

#include "zelclr/colour/fills/tint.h"

#include <array>

inline constexpr int kMostTints = 10;

struct TINT_LIST
{
  std::array<std::unique_ptr<TINT>, kMostTints> tints; ///< null at the count and beyond
  std::int32_t count = 0;
};

/// Empty.
ZELCLR_API TINT_LIST *TNTGetNewTintList();
/// With copies of the tints.
ZELCLR_API TINT_LIST *TNTCopyTintList(const TINT_LIST *list);
ZELCLR_API void TNTDestroyTintList(TINT_LIST *list);

/// 0 for a full list, and for a tint that the list has: the tint is then still the caller's.
ZELCLR_API int TNTAddTintToListEnd(TINT_LIST *list, TINT *tint);
/// The last tint, from now on the caller's; null for an empty list.
ZELCLR_API TINT *TNTRemoveTintFromListEnd(TINT_LIST *list);
/// The tint at a position from 0; it stays the list's. Null where there is none.
ZELCLR_API TINT *TNTGetTintAtListPosition(const TINT_LIST *list, int position);
/// Destroys the tint at a position; those behind it move up.
ZELCLR_API int TNTDeleteTintFromList(TINT_LIST *list, int position);
/// Copies of the tints of the other list, behind those of the first; 0 where they do not all fit. Both may be one list.
ZELCLR_API int TNTAppendListToList(TINT_LIST *list, const TINT_LIST *appended);
/// Destroys every tint.
ZELCLR_API void TNTClearTintList(TINT_LIST *list);
/// 0 for null.
ZELCLR_API int TNTGetTintListSize(const TINT_LIST *list);

// All or nothing: where one tint fails, nothing has been tinted. An empty list changes nothing and succeeds.
ZELCLR_API int TNTApplyTintListToCS(const TINT_LIST *list, CLR_COLORSPEC *colour, ColorSystem::ColorContext &context);
ZELCLR_API int TNTApplyTintListToRGB(const TINT_LIST *list, int *red, int *green, int *blue,
                                     ColorSystem::ColorContext &context);
/// Pixels as tint.h has them.
ZELCLR_API int TNTApplyTintListToPixels(const TINT_LIST *list, std::uint8_t *pixels, std::size_t count,
                                        ColorSystem::ColorContext &context);

/// Whether a gradient may be tinted by tinting its stops: 0 for null and where the way between two tinted stops is
/// not the tinted way.
ZELCLR_API int TNTTintListDoesGradFills(const TINT_LIST *list);
/// Whether every colour comes out as RGB255.
///
/// KEPT: 1 for null, but 0 for an empty list, where one would expect the same answer, for neither does anything; and a
/// kind without a meaning counts as 0, though its colours come out as RGB255; callers depend on it.
ZELCLR_API int TNTTintListIsRGB(const TINT_LIST *list);
