#include "zelclr/platform/internal/json_text.h"

namespace ZelUtl {

std::optional<Json> JsonFromText(std::string_view text, std::string &reason)
{
  constexpr int kMostLevels = 64; // the library writes what it has read recursively
  bool deep = false;
  const auto keep = [&deep](int depth, Json::parse_event_t, Json &) {
    deep = deep || depth > kMostLevels;
    return !deep;
  };
  auto json = Json::parse(text.begin(), text.end(), keep, false);
  if (deep || json.is_discarded()) {
    reason = deep ? "nested too deeply" : "not JSON";
    return std::nullopt;
  }
  return json;
}

} // namespace ZelUtl
