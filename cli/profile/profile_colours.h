// Colours of a profile in CIE Lab on D50 and back, through the engine in force.
//
// Threads: plain functions. Errors: an empty result where no engine of this system reads profiles, where the library's
// own Lab or sRGB profile is missing, and where the engine knows no way.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/convert/formulas/record_lab.h"

#include <optional>
#include <span>
#include <vector>

namespace cli {

using ColorSystem::RenderingIntent;
using ZelClr::Formulas::Lab;

/// Colours one behind the other, of as many channels as the profile's model has, each 0 to 1.
using Channels = std::vector<float>;

/// The engine in force; null when it works by formula, without profiles.
std::shared_ptr<ColorSystem::ColorManagementSystem> EngineForProfiles();

/// As the engine stores them: cut off to a* and b* from -128 to 127, in 16 bits where it has them.
std::optional<std::vector<Lab>> LabFromDevice(const ColorSystem::ColorProfile &profile, std::span<const float> device,
                                              RenderingIntent intent);
std::optional<Channels> DeviceFromLab(const ColorSystem::ColorProfile &profile, std::span<const Lab> colours,
                                      RenderingIntent intent);
std::optional<Channels> DeviceFromSrgb(const ColorSystem::ColorProfile &profile, std::span<const float> srgb,
                                       RenderingIntent intent);

} // namespace cli
