// A profile as people name it on the command line.
//
// Errors: throws Failure, in one line, for what is no profile.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/platform/icc_file.h"

#include <memory>
#include <string>

namespace cli {

struct ProfileFile
{
  std::string path;
  ZelUtl::IccFile icc;
  std::string name; ///< its description, else its file's name, in one harmless line
  /// Null for a file that is a profile but holds no colours of a device: a device link, say.
  std::shared_ptr<ColorSystem::ColorProfile> profile;
};

/// An installed profile by file name, display name or placeholder, else any file.
ProfileFile OpenProfile(const std::string &nameOrPath);

/// Text of a profile in one line for a terminal or a page.
std::string OneLine(std::wstring_view text);

} // namespace cli
