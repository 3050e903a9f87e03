// Colours as the commands take them from people, and what they say of them.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/convert/formulas.h"

#include <optional>
#include <string>
#include <string_view>

namespace cli {

/// A colour from the command line or an input line; throws Failure with `place` in front of the reason.
CLR_COLORSPEC ColourFromInput(std::string_view text, const std::string &place);

/// A model by its name in either of the library's namings, upper or lower case; throws Failure for an unknown one.
unsigned ModelFromInput(const std::string &name);

/// Lab on D50 of the colour by formula.
std::optional<ZelClr::Formulas::Lab> LabOf(const CLR_COLORSPEC &colour);

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
