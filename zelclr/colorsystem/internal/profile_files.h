// Which files can be colour profiles, and what is asked of their paths.
//
// Threads and errors: plain functions.
#pragma once

#include "zelclr/colorsystem/engines/color_management_system.h"

#include <cstddef>
#include <memory>
#include <string>

namespace ColorSystem::Internal {

/// Larger files are no profiles.
inline constexpr std::size_t kMostProfileBytes = std::size_t{64} << 20;

std::wstring Joined(const std::wstring &folder, const std::wstring &name);
/// ".icc", in lower case.
std::wstring ExtensionOf(const std::wstring &path);
/// What makes the profiles of such files: device models are read by their own engine, ICC files by any other. Null when
/// that cannot exist here.
std::shared_ptr<ColorManagementSystem> EngineFor(const std::wstring &path);
/// Whether an engine of this system could read a file of that name.
bool IsProfileFileName(const std::string &name);

} // namespace ColorSystem::Internal
