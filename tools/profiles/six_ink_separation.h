// Six inks for a colour: the inverse of the six-ink press.
//
// The rule: meet the colour; where more than one build does, black takes over gray as the colour darkens and loses
// chroma, orange goes only into orange, red and warm yellow, green only into greens, neither into neutrals, and all in
// all as little ink as will do. A colour out of reach becomes the nearest, hue first, then lightness, then chroma.
//
// Threads and errors: plain arithmetic.
#pragma once

#include "six_ink_press.h"

/// The most ink in one place: 350 %.
inline constexpr double kInkLimit = 3.5;

/// `wanted`: relative to the paper. `near`: where to look first, the inks of a colour like it.
Inks SixInksFor(const ZelClr::Formulas::Lab &wanted, const Inks &near);

/// How far a build misses a colour: Delta E*ab.
double Miss(const ZelClr::Formulas::Lab &wanted, const Inks &inks);
