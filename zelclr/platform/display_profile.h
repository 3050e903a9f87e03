// The colour profile of the display, as the system tells it.
//
// Threads: a plain function. Errors: an empty path.
#pragma once

#include "zelclr/platform/export.h"

#include <string>

namespace ZelUtl {

/// The path of an ICC file, UTF-8; empty where the system tells none.
///
/// In this order: the environment's ZELCLR_DISPLAY_PROFILE, for hosts and for people; on Linux what the session's
/// colour management keeps for the one display that it has measured or described, "edid-*.icc" in $XDG_DATA_HOME/icc.
/// Where it has several, none can be told to be the one. On Windows the system's default profile of the primary
/// display.
ZELCLR_API std::string PathOfDisplayProfile();

// In posix/ and windows/.
std::string PathOfSystemDisplayProfile();

} // namespace ZelUtl
