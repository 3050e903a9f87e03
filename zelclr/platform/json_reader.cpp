#include "zelclr/platform/json_reader.h"

#include "zelclr/platform/internal/json_text.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace ZelUtl {

namespace {

/// Hears of a document and builds its value.
class Builder
{
public:
  JsonValue root;
  std::string reason;
  std::size_t position = 0; ///< of the parser's own fault: bytes up to and with it

  bool null() { return Put({}); }
  bool boolean(bool flag) { return Put({flag}); }
  bool number_integer(Json::number_integer_t number) { return Put({static_cast<double>(number)}); }
  bool number_unsigned(Json::number_unsigned_t number) { return Put({static_cast<double>(number)}); }
  bool number_float(double number, const std::string & /*text*/)
  {
    return std::isfinite(number) ? Put({number}) : Refuse("a number that is too large");
  }
  bool string(std::string &text) { return Put({std::move(text)}); }
  bool binary(Json::binary_t & /*bytes*/) { return Refuse("not JSON"); }
  bool start_object(std::size_t /*count*/) { return Open({JsonValue::Members()}); }
  bool start_array(std::size_t /*count*/) { return Open({JsonValue::Array()}); }
  bool end_object() { return Close(); }
  bool end_array() { return Close(); }
  bool key(std::string &name)
  {
    Opened &object = open_.back();
    auto &members = std::get<JsonValue::Members>(object.value.value);
    if (!object.IsNew(name, members))
      return Refuse("\"" + name.substr(0, 40) + "\" stands twice in one object");
    members.push_back({std::move(name), JsonValue()});
    return true;
  }
  bool parse_error(std::size_t at, const std::string & /*token*/, const nlohmann::detail::exception & /*error*/)
  {
    position = at;
    reason = "not JSON here";
    return false;
  }

private:
  struct Opened
  {
    JsonValue value;
    std::unordered_set<std::string> names; ///< of a large object

    bool IsNew(const std::string &name, const JsonValue::Members &members)
    {
      constexpr std::size_t kFew = 16; // are compared faster than kept
      if (members.size() < kFew)
        return std::none_of(members.begin(), members.end(),
                            [&](const JsonMember &other) { return other.name == name; });
      if (names.empty()) {
        for (const JsonMember &other : members)
          names.insert(other.name);
      }
      return names.insert(name).second;
    }
  };

  bool Refuse(std::string why)
  {
    reason = std::move(why);
    return false;
  }
  bool Open(JsonValue value)
  {
    if (open_.size() == kMostJsonDepth)
      return Refuse("nested too deeply");
    open_.push_back({std::move(value), {}});
    return true;
  }
  bool Close()
  {
    JsonValue value = std::move(open_.back().value);
    open_.pop_back();
    return Put(std::move(value));
  }
  bool Put(JsonValue value)
  {
    if (++count_ > kMostJsonValues)
      return Refuse("too many values");
    if (open_.empty()) {
      root = std::move(value);
      return true;
    }
    auto &parent = open_.back().value.value;
    if (auto *const array = std::get_if<JsonValue::Array>(&parent))
      array->push_back(std::move(value));
    else
      std::get<JsonValue::Members>(parent).back().value = std::move(value);
    return true;
  }

  std::vector<Opened> open_; // from the root down; each is put into its parent when it is complete
  std::size_t count_ = 0;
};

} // namespace

const JsonValue *FindMember(const JsonValue &object, std::string_view name)
{
  const auto *const members = object.Object();
  if (members == nullptr)
    return nullptr;
  const auto found =
    std::find_if(members->begin(), members->end(), [&](const auto &member) { return member.name == name; });
  return found == members->end() ? nullptr : &found->value;
}

std::optional<JsonValue> ReadJson(std::string_view text, std::size_t &line, std::string &reason)
{
  Builder builder;
  line = 0;
  if (Json::sax_parse(text.begin(), text.end(), &builder))
    return std::move(builder.root);
  reason = std::move(builder.reason);
  if (builder.position > 0) {
    const auto before = text.substr(0, builder.position - 1);
    line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  }
  return std::nullopt;
}

std::string QuotedJson(std::string_view text)
{
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace ZelUtl
