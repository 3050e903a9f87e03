// The displays and their colour profiles, as the system tells them.
//
// Threads: plain functions. Errors: empty results.
#pragma once

#include "zelclr/platform/export.h"

#include <string>
#include <vector>

namespace ZelUtl {

/// A display of the desktop; texts are UTF-8.
struct Display
{
  std::string device;  ///< the system's name of the output: "\\\\.\\DISPLAY1"; empty where it has none
  std::string monitor; ///< what stands there, for people; empty where that is not known
  std::string profile; ///< the path of its default profile; empty when it has none
};

/// The primary one first. On Linux the one that the session's colour management knows, or none.
ZELCLR_API std::vector<Display> AttachedDisplays();

/// The path of an ICC file, UTF-8; empty where the system tells none.
///
/// In this order: the environment's ZELCLR_DISPLAY_PROFILE, for hosts and for people; on Linux what the session's
/// colour management keeps for the one display that it has measured or described, "edid-*.icc" in $XDG_DATA_HOME/icc.
/// Where it has several, none can be told to be the one. On Windows the system's default profile of the primary
/// display.
ZELCLR_API std::string PathOfDisplayProfile();

} // namespace ZelUtl
