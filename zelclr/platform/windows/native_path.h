// Paths as the system's wide functions take them.
#pragma once

#include <string>
#include <string_view>

namespace ZelUtl {

/// The path with the system's separators. A long one, which most functions would refuse beyond 260 characters, is made
/// absolute and prefixed with "\\?\"; names up to 50 characters longer are then safe, too.
std::wstring NativePath(std::string_view utf8);

} // namespace ZelUtl
