// JSON text from files that anybody may have written.
//
// Threads: a plain function. Errors: an empty result, with the reason in English.
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace ZelUtl {

using Json = nlohmann::ordered_json;

/// Nothing in the text may lie deeper than 64 levels.
std::optional<Json> JsonFromText(std::string_view text, std::string &reason);

} // namespace ZelUtl
