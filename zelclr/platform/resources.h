// Texts in the language of the user interface, by identifier: strings/<language>.json in the installation's folder.
//
// Threads: a plain function, safe from any thread; each file is read once.
// Errors: an empty text. A file that cannot be read counts as one without texts.
#pragma once

#include "zelclr/platform/export.h"

#include <string>
#include <string_view>

namespace Framework::Resources {

/// The text of a resource, whose identifier may stand in braces and in any case: in the UI language ("de-AT"), else in
/// the language alone ("de"; "pt" is Brazilian, "zh" is in simplified script), else in English; empty when not even
/// that is there.
ZELCLR_API std::wstring GetString(std::string_view identifier);

} // namespace Framework::Resources
