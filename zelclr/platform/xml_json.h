// XML documents as JSON and back.
//
//   <page width="2"><color name="A"/></page>
//   {"name": "page", "attributes": {"width": "2"}, "children": [{"name": "color", "attributes": {"name": "A"}}]}
//
// An element is an object with its name; its attributes, its inner elements and, where it has none of these, its text
// ("text") stand in it when there are any, everything in the order of the document. What is left out: comments,
// declarations of namespaces, and text beside inner elements.
// Threads: plain functions. Errors: an empty result with the reason in English.
#pragma once

#include "zelclr/platform/json_reader.h"
#include "zelclr/platform/xml.h"

#include <optional>
#include <string>

namespace ZelUtl {

ZELCLR_API JsonValue JsonFromXml(const WXmlNode &element);
/// Other members of an element's object mean nothing. Refused are values of the wrong type, names that are none, and
/// what is nested too deeply for XML to be read again.
ZELCLR_API std::optional<WXmlDoc> XmlFromJson(const JsonValue &element, std::string &reason);

} // namespace ZelUtl
