// Names for colours that nobody has named: their components in short.
//
// Threads: a plain function. Errors: an empty name for a colour that is none.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <string>

namespace ZelClr {

/// "C0 M100 Y0 K0" in percent, also for CMYK255; "R255 G128 B0"; "L50 A10 B-20"; "H120 S50 B100"; "K50 %" for grays and
/// black-and-white. An ink is "Gold", a tint "Gold 50 %", one that is not known "Spot 17 50 %". Whole numbers, the same
/// in every language; a reference reads as its colour.
ZELCLR_API std::wstring GeneratedColorName(const CLR_COLORSPEC &color);

} // namespace ZelClr
