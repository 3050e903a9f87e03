#include "zelclr/palettes/formats/tokens_palette.h"

#include "zelclr/palettes/formats/internal/css_colour_spaces.h"
#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/platform/json_reader.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <unordered_map>

namespace ZelClr {

namespace {

using ZelUtl::FindMember;
using ZelUtl::JsonValue;

constexpr std::string_view kType = "color";
constexpr std::string_view kRootToken = "$root";

struct Token
{
  std::string name;
  std::string path; ///< as aliases say it
  std::string_view type;
  const JsonValue *value = nullptr;
};

/// All tokens of a document, in the order of the book.
struct Document
{
  std::vector<Token> tokens;
  std::vector<SwatchGroup> groups; ///< `first` counts tokens
  std::unordered_map<std::string_view, std::size_t> byPath;
};

std::string_view TextOf(const JsonValue &object, std::string_view name)
{
  const JsonValue *const member = FindMember(object, name);
  const std::string *const text = member == nullptr ? nullptr : member->Text();
  return text == nullptr ? std::string_view() : std::string_view(*text);
}

/// "brand.orange" of "{brand.orange}"; empty when the value is no alias.
std::string_view AliasOf(const JsonValue &value)
{
  const std::string *const text = value.Text();
  if (text == nullptr || !text->starts_with('{') || !text->ends_with('}'))
    return {};
  return std::string_view(*text).substr(1, text->size() - 2);
}

/// Enters the tokens of a group, then its groups. JSON is bounded in depth.
bool Collect(const JsonValue &group, const std::string &path, std::string_view inherited, Document &document,
             std::string &reason)
{
  if (const std::string_view own = TextOf(group, "$type"); !own.empty())
    inherited = own;
  const std::size_t first = document.tokens.size();
  const auto pathOf = [&path](const std::string &name) { return path.empty() ? name : path + "." + name; };
  for (const auto &[name, member] : *group.Object()) {
    if (name.starts_with('$') && name != kRootToken)
      continue;
    if (member.Object() == nullptr) {
      reason = "\"" + pathOf(name).substr(0, 80) + "\" is neither a token nor a group";
      return false;
    }
    const JsonValue *const value = FindMember(member, "$value");
    if (value == nullptr)
      continue;
    if (document.tokens.size() == kMostSwatches) {
      reason = "more than " + std::to_string(kMostSwatches) + " tokens";
      return false;
    }
    const std::string_view own = TextOf(member, "$type");
    const std::string title = name == kRootToken ? path.substr(path.rfind('.') + 1) : name;
    document.tokens.push_back({title, pathOf(name), own.empty() ? inherited : own, value});
  }
  if (document.tokens.size() > first && !path.empty())
    document.groups.push_back({path, first});
  for (const auto &[name, member] : *group.Object()) {
    if (!name.starts_with('$') && FindMember(member, "$value") == nullptr &&
        !Collect(member, pathOf(name), inherited, document, reason))
      return false;
  }
  return true;
}

/// For each token the one that its aliases end at, itself when it is none; the number of tokens for what leads nowhere
/// or round.
std::vector<std::size_t> Targets(const Document &document)
{
  const std::size_t count = document.tokens.size();
  const std::size_t unknown = count + 1;
  std::vector<std::size_t> targets(count, unknown);
  for (std::size_t start = 0; start < count; ++start) {
    std::vector<std::size_t> chain;
    std::size_t at = start;
    std::size_t end = count;
    while (targets[at] == unknown) {
      targets[at] = count; // met again before it is known, it is part of a ring
      chain.push_back(at);
      const std::string_view alias = AliasOf(*document.tokens[at].value);
      if (alias.empty()) {
        targets[at] = at;
        break;
      }
      const auto found = document.byPath.find(alias);
      if (found == document.byPath.end())
        break;
      at = found->second;
    }
    end = targets[at];
    for (const std::size_t each : chain)
      targets[each] = end;
  }
  return targets;
}

bool LooksLikeColour(const JsonValue &value)
{
  const std::string *const text = value.Text();
  return (text != nullptr && text->starts_with('#')) || FindMember(value, "colorSpace") != nullptr;
}

std::optional<Swatch> ColourOfHex(std::string_view text, double &alpha, std::string &reason)
{
  std::string digits(text.substr(0, 10));
  if (digits.size() == 4)
    digits = {'#', digits[1], digits[1], digits[2], digits[2], digits[3], digits[3]};
  if (digits.size() == 7)
    digits += "ff";
  const auto bytes = digits.starts_with('#') ? BytesOfHex(std::string_view(digits).substr(1), 4) : std::nullopt;
  if (!bytes || text.size() > 9) {
    reason = "\"" + std::string(text.substr(0, 40)) + "\" is no colour";
    return std::nullopt;
  }
  alpha = (*bytes)[3] / 255.0;
  return RgbSwatch({}, (*bytes)[0] / 255.0, (*bytes)[1] / 255.0, (*bytes)[2] / 255.0);
}

std::optional<Swatch> ColourOf(const JsonValue &value, double &alpha, std::string &reason)
{
  if (value.Text() != nullptr)
    return ColourOfHex(*value.Text(), alpha, reason);
  const JsonValue *const components = FindMember(value, "components");
  if (components == nullptr || components->Items() == nullptr || components->Items()->size() != 3) {
    reason = "a colour has three components";
    return std::nullopt;
  }
  std::array<double, 3> numbers{};
  for (std::size_t i = 0; i < 3; ++i) {
    const JsonValue &component = (*components->Items())[i];
    const bool isNone = component.Text() != nullptr && *component.Text() == "none";
    if (component.Number() == nullptr && !isNone) {
      reason = "a component is no number";
      return std::nullopt;
    }
    numbers[i] = isNone ? 0.0 : *component.Number();
  }
  if (const JsonValue *const given = FindMember(value, "alpha")) {
    if (given->Number() == nullptr || *given->Number() < 0.0 || *given->Number() > 1.0) {
      reason = "alpha must be from 0 to 1";
      return std::nullopt;
    }
    alpha = *given->Number();
  }
  return SwatchOfCssSpace(TextOf(value, "colorSpace"), numbers, reason);
}

std::optional<SwatchBook> BookOf(const Document &document, std::string &reason)
{
  const auto refuse = [&reason](const Token &token, std::string_view why) {
    reason = "token \"" + token.path.substr(0, 80) + "\": " + std::string(why);
    return std::nullopt;
  };
  const std::vector<std::size_t> targets = Targets(document);
  SwatchBook book;
  std::size_t others = 0, transparent = 0, group = 0;
  for (std::size_t i = 0; i <= document.tokens.size(); ++i) {
    for (; group < document.groups.size() && document.groups[group].first <= i; ++group)
      book.groups.push_back({document.groups[group].name, book.swatches.size()});
    if (i == document.tokens.size())
      break;
    const Token &token = document.tokens[i];
    const bool isLost = targets[i] == document.tokens.size();
    const Token &target = isLost ? token : document.tokens[targets[i]];
    const std::string_view type = !token.type.empty() ? token.type : target.type;
    if (type.empty() ? !isLost && !LooksLikeColour(*target.value) : type != kType) {
      ++others;
      continue;
    }
    if (isLost)
      return refuse(token, "its alias leads nowhere or back to itself");
    std::string why;
    double alpha = 1.0;
    auto swatch = ColourOf(*target.value, alpha, why);
    if (!swatch)
      return refuse(target, why);
    transparent += alpha < 1.0;
    swatch->name = token.name;
    swatch->line = book.swatches.size() + 1;
    book.swatches.push_back(std::move(*swatch));
  }
  // Groups in which no token is a colour.
  for (std::size_t i = book.groups.size(); i-- > 0;) {
    const std::size_t end = i + 1 < book.groups.size() ? book.groups[i + 1].first : book.swatches.size();
    if (book.groups[i].first == end)
      book.groups.erase(book.groups.begin() + static_cast<std::ptrdiff_t>(i));
  }
  if (others > 0)
    book.notes.push_back(CountOf(others, "token that is no colour was", "tokens that are no colours were") +
                         " left out");
  if (transparent > 0)
    book.notes.push_back(CountOf(transparent, "colour lost its", "colours lost their") + " transparency");
  return book;
}

/// Writes objects in objects: each name on its own line, two blanks to a level.
class Nest
{
public:
  explicit Nest(std::string &text) : text_(text) { Open(); }

  /// The name that a token or group gets in the innermost object.
  std::string NameFor(std::string_view wanted, std::string_view empty)
  {
    std::string name = OneLine(wanted);
    std::replace(name.begin(), name.end(), '.', '_');
    std::replace(name.begin(), name.end(), '{', '(');
    std::replace(name.begin(), name.end(), '}', ')');
    if (name.starts_with('$'))
      name.front() = '_';
    return levels_.back().names.Make(std::move(name), empty);
  }
  void Put(std::string_view name, std::string_view json)
  {
    text_ += levels_.back().isEmpty ? "\n" : ",\n";
    levels_.back().isEmpty = false;
    text_.append(2 * levels_.size(), ' ').append(ZelUtl::QuotedJson(name)).append(": ").append(json);
  }
  void OpenGroup(std::string_view name)
  {
    Put(name, "");
    Open();
  }
  void Close()
  {
    const bool isEmpty = levels_.back().isEmpty;
    levels_.pop_back();
    if (!isEmpty)
      text_.append("\n").append(2 * levels_.size(), ' ');
    text_ += "}";
  }

private:
  struct Level
  {
    UniqueNames names;
    bool isEmpty = true;
  };

  void Open()
  {
    text_ += "{";
    levels_.emplace_back();
  }

  std::string &text_;
  std::vector<Level> levels_;
};

/// "brand.dark" as "brand", "dark"; what is deeper than tokens can be stays in the last part.
std::vector<std::string_view> PathOf(std::string_view group)
{
  constexpr std::size_t kMostParts = 32;
  std::vector<std::string_view> parts;
  while (parts.size() + 1 < kMostParts && group.find('.') != std::string_view::npos) {
    parts.push_back(group.substr(0, group.find('.')));
    group.remove_prefix(group.find('.') + 1);
  }
  parts.push_back(group);
  return parts;
}

std::string JsonOf(const Swatch &swatch)
{
  const bool isLab = swatch.model == SwatchModel::Lab;
  std::array<double, 4> values{}; // as stated; the fallback is made of them
  std::string components;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::string number = ZelUtl::TextFromNumber(swatch.values[i], isLab ? 4 : 6);
    values[i] = ZelUtl::DoubleFromText(number).value_or(0.0);
    components.append(i > 0 ? ", " : "").append(number);
  }
  std::string json = "{ \"$type\": \"color\", \"$value\": { \"colorSpace\": \"";
  json.append(isLab ? "lab" : "srgb").append("\", \"components\": [").append(components).append("]");
  if (!isLab)
    json.append(", \"hex\": \"").append(HexOfRgb(values)).append("\"");
  return json + " } }";
}

} // namespace

bool RecognisesTokens(std::string_view bytes)
{
  if (bytes.starts_with("\xEF\xBB\xBF"))
    bytes.remove_prefix(3);
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && bytes[first] == '{' && bytes.find("\"$value\"") != std::string_view::npos;
}

std::optional<SwatchBook> ReadTokens(std::string_view bytes, ReadProblem &problem)
{
  problem = {};
  const auto json = ZelUtl::ReadJson(bytes, problem.line, problem.reason);
  if (!json)
    return std::nullopt;
  if (json->Object() == nullptr) {
    problem.reason = "design tokens are a JSON object";
    return std::nullopt;
  }
  Document document;
  if (!Collect(*json, {}, {}, document, problem.reason))
    return std::nullopt;
  for (std::size_t i = 0; i < document.tokens.size(); ++i)
    document.byPath.emplace(document.tokens[i].path, i);
  auto book = BookOf(document, problem.reason);
  if (book)
    book->description = TextOf(*json, "$description");
  return book;
}

std::optional<WrittenPalette> WriteTokens(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book =
    Fitted(source, {.lab = true, .description = true, .groups = true, .rgbBeyond = kMostBeyondRgb}, written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;

  Nest nest(written.bytes);
  if (!book.description.empty())
    nest.Put("$description", ZelUtl::QuotedJson(book.description));
  std::vector<std::string_view> open;
  std::size_t group = 0, renamed = 0;
  for (std::size_t i = 0; i < book.swatches.size(); ++i) {
    for (; group < book.groups.size() && book.groups[group].first <= i; ++group) {
      // Of the groups that are open those stay that the new one lies in; one of the same path is another group.
      const auto path = PathOf(book.groups[group].name);
      const auto common = static_cast<std::size_t>(
        std::mismatch(open.begin(), open.end(), path.begin(), path.end() - 1).first - open.begin());
      for (; open.size() > common; open.pop_back())
        nest.Close();
      for (std::size_t part = common; part < path.size(); ++part) {
        const std::string name = nest.NameFor(path[part], "group");
        renamed += name != path[part];
        nest.OpenGroup(name);
        open.push_back(path[part]);
      }
    }
    const std::string name = nest.NameFor(book.swatches[i].name, "color");
    renamed += name != book.swatches[i].name;
    nest.Put(name, JsonOf(book.swatches[i]));
  }
  for (std::size_t i = 0; i <= open.size(); ++i)
    nest.Close();
  written.bytes += "\n";
  if (renamed > 0)
    written.notes.push_back(CountOf(renamed, "name was", "names were") + " changed to one that design tokens can have");
  return written;
}

} // namespace ZelClr
