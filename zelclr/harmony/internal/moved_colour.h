// What becomes of a record whose place on the wheel changes.
//
// Threads: plain functions. Errors: as said.
#pragma once

#include "zelclr/harmony/harmony.h"

#include <optional>

namespace ColorSystem {
class ColorConverter;
}

namespace ZelClr::Internal {

/// Colours that are what they are printed with: spot, registration and user inks, and what no conversion makes. Rules
/// leave them alone, for an ink that silently became a mixture would be lost in print.
bool IsInk(const CLR_COLORSPEC &colour);

/// The record model in which a colour goes on at a place: its own; for inks, and for grays that get a hue, the one in
/// which the context of the converter mixes colours.
unsigned ModelAt(const CLR_COLORSPEC &colour, const Harmony::HSB &place, const ColorSystem::ColorConverter &converter);

/// The colour at its new place. Empty where it stays as it is: an ink, and a colour that looks the same there.
std::optional<CLR_COLORSPEC> MovedColour(const CLR_COLORSPEC &colour, const Harmony::HSB &from, const Harmony::HSB &to,
                                         const ColorSystem::ColorConverter &converter);

} // namespace ZelClr::Internal
