// Colours as the commands take them from people, and what they say of them.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// A colour from the command line; throws Failure for what is none.
CLR_COLORSPEC ColourFromInput(std::string_view text);

/// A model that colours can be converted to, by its name in either of the library's namings, upper or lower case;
/// throws Failure for any other.
unsigned ModelFromInput(const std::string &name);

/// The name of colour_names.h that is nearest, and how far it is in CIEDE2000.
struct NearestName
{
  std::string_view name;
  double distance = 0;
};
std::optional<NearestName> NearestNameOf(const CLR_COLORSPEC &colour);

/// A file's bytes, or those of the standard input for "-"; throws Failure.
std::string ReadInput(const std::string &path);

} // namespace cli
