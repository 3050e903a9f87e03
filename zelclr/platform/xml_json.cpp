#include "zelclr/platform/xml_json.h"

#include <algorithm>

namespace ZelUtl {

namespace {

constexpr std::string_view kName = "name";
constexpr std::string_view kAttributes = "attributes";
constexpr std::string_view kChildren = "children";
constexpr std::string_view kText = "text";

void Put(JsonValue::Members &members, std::string_view name, JsonValue value)
{
  members.push_back({std::string(name), std::move(value)});
}

bool Refuse(std::string &reason, const std::string &why)
{
  reason = why;
  return false;
}

/// "<color>", cut off where it is long.
std::string Tag(const std::string &name)
{
  return "<" + name.substr(0, 40) + ">";
}

/// The name of an element's object; null when it is none.
const std::string *NameOf(const JsonValue &element)
{
  const JsonValue *const name = FindMember(element, kName);
  return name == nullptr ? nullptr : name->Text();
}

/// Gives a new element what its object says. As deep as elements can be created.
bool Fill(WXmlNode node, const JsonValue &element, std::string &reason)
{
  const std::string tag = Tag(node.Name());
  if (const JsonValue *const attributes = FindMember(element, kAttributes)) {
    if (attributes->Object() == nullptr)
      return Refuse(reason, "the attributes of " + tag + " are no object");
    for (const JsonMember &attribute : *attributes->Object()) {
      const std::string *const value = attribute.value.Text();
      if (value == nullptr || !node.SetAttribute(attribute.name, std::string_view(*value)))
        return Refuse(reason, "an attribute of " + tag + " has no text or a name that is none");
    }
  }
  const JsonValue *const children = FindMember(element, kChildren);
  const JsonValue *const text = FindMember(element, kText);
  if (children != nullptr && children->Items() == nullptr)
    return Refuse(reason, "the children of " + tag + " are no list");
  if (text != nullptr && text->Text() == nullptr)
    return Refuse(reason, "the text of " + tag + " is none");
  if (children == nullptr || children->Items()->empty())
    return text == nullptr || text->Text()->empty() || node.SetText(std::string_view(*text->Text())) ||
           Refuse(reason, "the text of " + tag + " cannot be set");
  return std::all_of(children->Items()->begin(), children->Items()->end(), [&](const JsonValue &child) {
    const std::string *const name = NameOf(child);
    const WXmlNode made = name == nullptr ? WXmlNode() : node.CreateChild(*name);
    if (!made)
      return Refuse(reason, "an element within " + tag + " has no name, or lies too deep");
    return Fill(made, child, reason);
  });
}

} // namespace

JsonValue JsonFromXml(const WXmlNode &element)
{
  JsonValue::Members members;
  Put(members, kName, {element.Name()});
  JsonValue::Members attributes;
  for (const auto &[name, value] : element.Attributes())
    Put(attributes, name, {Utf8FromWide(value)});
  if (!attributes.empty())
    Put(members, kAttributes, {std::move(attributes)});
  JsonValue::Array children;
  for (WXmlNode child = element.FirstChild(); child; child = child.Next())
    children.push_back(JsonFromXml(child));
  if (!children.empty()) {
    Put(members, kChildren, {std::move(children)});
  } else if (std::string text = Utf8FromWide(element.Text()); !text.empty()) {
    Put(members, kText, {std::move(text)});
  }
  return {std::move(members)};
}

std::optional<WXmlDoc> XmlFromJson(const JsonValue &element, std::string &reason)
{
  const std::string *const name = NameOf(element);
  auto document = name == nullptr ? std::nullopt : WXmlDoc::FromBytes("<" + *name + "/>", reason);
  // A name that holds more than a name would be read as more.
  if (!document || document->Root().Name() != *name || !document->Root().Attributes().empty()) {
    reason = "the root has no name, or one that is none";
    return std::nullopt;
  }
  return Fill(document->Root(), element, reason) ? document : std::nullopt;
}

} // namespace ZelUtl
