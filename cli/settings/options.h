// The values that `add` takes from the command line.
//
// Errors: words that are none end the parsing; profiles and colours that cannot be had throw Failure when they are set.
#pragma once

#include "cli/failure.h"
#include "cli/settings/kind.h"

#include <functional>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace cli {

/// Changes of settings, in the order of the options.
template <class Settings>
using Edits = std::vector<std::function<void(Settings &settings)>>;

/// Adds an option for every value; what is given goes to `edits`, which must live as long as the command.
void AddValueOptions(CLI::App *command, Edits<ColorSettings> &edits);
void AddValueOptions(CLI::App *command, Edits<ProofColorSettings> &edits);

} // namespace cli
