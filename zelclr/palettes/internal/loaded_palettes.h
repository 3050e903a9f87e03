// How one palette finds another that its colours come from.
//
// Threads: the main thread. Errors: null.
#pragma once

#include "zelclr/platform/guid.h"

class WClrPalette;

namespace ZelClr {

/// The palette of this identifier, not owned; null when none is known. Nothing is looked for on disk. Defined with the
/// palette manager.
WClrPalette *FindLoadedPalette(const ZelUtils::Guid &identifier);

} // namespace ZelClr
