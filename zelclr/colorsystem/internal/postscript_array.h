// The colour spaces of simple profiles for PostScript, without the help of an engine.
// Source: PostScript Language Reference, third edition, 4.8.3 (CIE-based colour spaces).
#pragma once

#include "zelclr/platform/icc_file.h"

#include <string>

namespace ColorSystem::Internal {

/// `[/CIEBasedABC <<...>>]` of an RGB profile of a matrix and curves, `[/CIEBasedA <<...>>]` of a gray profile of a
/// curve; empty for any other.
std::string PostScriptArrayOf(const ZelUtl::IccFile &file);

} // namespace ColorSystem::Internal
