#include "zelclr/platform/xml.h"

#include <cmath>

namespace ZelUtl {

WXmlNode WXmlValueAccessor::Find(std::string_view name, Id id) const
{
  WXmlNode child = parent_.FirstChild(name); // many times as fast as a path
  while (id && child && child.Attribute("id") != *id)
    child = child.Next(name);
  if (child || !id)
    return child;
  return parent_.SelectNode("./" + std::string(name) + "[@id=$id]", {{"id", *id}}); // characters that XML cannot hold
}

WXmlNode WXmlValueAccessor::FindOrCreate(std::string_view name, Id id)
{
  WXmlNode node = Find(name, id);
  if (node)
    return node;
  node = parent_.CreateChild(name);
  if (id)
    node.SetAttribute("id", *id);
  return node;
}

WXmlNode WXmlValueAccessor::Recreate(std::string_view name, Id id)
{
  Remove(name, id);
  WXmlNode node = parent_.CreateChild(name);
  if (id)
    node.SetAttribute("id", *id);
  return node;
}

bool WXmlValueAccessor::Remove(std::string_view name, Id id)
{
  return Find(name, id).Remove();
}

bool WXmlValueAccessor::ReadText(std::string_view name, std::wstring &value, Id id) const
{
  const WXmlNode node = Find(name, id);
  if (node)
    value = node.Text();
  return bool(node);
}

bool WXmlValueAccessor::WriteText(std::string_view name, std::wstring_view value, Id id)
{
  return FindOrCreate(name, id).SetText(value);
}

bool WXmlValueAccessor::ReadBool(std::string_view name, bool &value, Id id) const
{
  const std::string word = ReadWord(name, id);
  const bool isTrue = word == "true" || word == "1";
  if (!isTrue && word != "false" && word != "0")
    return false;
  value = isTrue;
  return true;
}

bool WXmlValueAccessor::WriteBool(std::string_view name, bool value, Id id)
{
  return WriteText(name, value ? L"true" : L"false", id);
}

bool WXmlValueAccessor::ReadDouble(std::string_view name, double &value, Id id) const
{
  const auto number = DoubleFromText(ReadWord(name, id));
  value = number.value_or(value);
  return number.has_value();
}

bool WXmlValueAccessor::WriteDouble(std::string_view name, double value, Id id)
{
  return std::isfinite(value) && WriteText(name, WideFromUtf8(TextFromNumber(value)), id);
}

std::string WXmlValueAccessor::ReadWord(std::string_view name, Id id) const
{
  const std::string text = Utf8FromWide(Find(name, id).Text());
  return std::string(Trimmed(text));
}

} // namespace ZelUtl
