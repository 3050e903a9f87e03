#include "zelclr/platform/json_writer.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>

namespace ZelUtl {

namespace {

class Writer
{
public:
  std::string text;

  void Put(const JsonValue &value, int depth)
  {
    if (const auto *const flag = std::get_if<bool>(&value.value))
      text += *flag ? "true" : "false";
    else if (const double *const number = value.Number(); number != nullptr && std::isfinite(*number))
      text += TextFromNumber(*number);
    else if (const std::string *const words = value.Text())
      text += QuotedJson(*words);
    else if (const auto *const items = value.Items(); items != nullptr && depth < kMostJsonDepth)
      PutItems(*items, depth);
    else if (const auto *const members = value.Object(); members != nullptr && depth < kMostJsonDepth)
      PutMembers(*members, depth);
    else
      text += "null";
  }

private:
  void PutItems(const JsonValue::Array &items, int depth)
  {
    constexpr std::size_t kFew = 16;
    const bool isInLine = items.size() <= kFew && std::none_of(items.begin(), items.end(), [](const JsonValue &item) {
                            return item.Items() != nullptr || item.Object() != nullptr;
                          });
    text += '[';
    for (std::size_t i = 0; i < items.size(); ++i) {
      text += i == 0 ? "" : isInLine ? ", " : ",";
      if (!isInLine)
        Break(depth + 1);
      Put(items[i], depth + 1);
    }
    if (!isInLine)
      Break(depth);
    text += ']';
  }

  void PutMembers(const JsonValue::Members &members, int depth)
  {
    text += '{';
    for (std::size_t i = 0; i < members.size(); ++i) {
      text += i == 0 ? "" : ",";
      Break(depth + 1);
      text += QuotedJson(members[i].name) + ": ";
      Put(members[i].value, depth + 1);
    }
    if (!members.empty())
      Break(depth);
    text += '}';
  }

  void Break(int depth) { text.append(1, '\n').append(static_cast<std::size_t>(2 * depth), ' '); }
};

} // namespace

std::string JsonText(const JsonValue &value)
{
  Writer writer;
  writer.Put(value, 0);
  return std::move(writer.text) + "\n";
}

} // namespace ZelUtl
