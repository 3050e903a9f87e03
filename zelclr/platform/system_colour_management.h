// The colour management of the operating system: Image Color Management and Windows Color System.
//
// Threads: plain functions. Errors: false. Systems without it answer that nothing can exist.
#pragma once

#include "zelclr/platform/icc_file.h"

#include <cstdint>

namespace ZelUtl::SystemColourManagement {

bool HasIcm();
bool HasWcs();
/// Whether the module "ADBE" is installed and loads.
bool HasAdobeModule();
/// Chooses the colour-matching module of the process by its signature; where there is none to choose, nothing stands in
/// the way of engines that need none, and the answer is true.
bool SelectModule(std::uint32_t signature);

} // namespace ZelUtl::SystemColourManagement
