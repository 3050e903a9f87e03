// Any bytes as a document: the tree and the stream agree on whether it is one, and what is written can be read, changed
// and written again.

#include "zelclr/platform/xml.h"

#include <cstdlib>

namespace {

using namespace ZelUtl;

void Demand(bool holds)
{
  if (!holds)
    std::abort();
}

struct Heard : XmlHandler
{
  bool StartElement(std::string_view, std::span<const XmlAttribute> attributes, std::string &) override
  {
    ++elements;
    for (const XmlAttribute &attribute : attributes)
      values += WideFromUtf8(attribute.value);
    return true;
  }
  bool Text(std::string_view piece, std::string &) override
  {
    text += WideFromUtf8(piece);
    return true;
  }
  bool EndElement(std::string_view, std::string &) override { return true; }

  std::size_t elements = 0;
  std::wstring values, text;
};

/// Takes the tree apart while it keeps handles on the pieces.
void Edit(const WXmlDoc &document)
{
  std::vector<WXmlNode> nodes = document.Root().SelectNodes("//*");
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    WXmlNode &node = nodes[i];
    const auto attributes = node.Attributes();
    for (const auto &[name, value] : attributes)
      Demand(node.Attribute(name) == value && (i % 3 ? node.SetAttribute(name, value) : node.RemoveAttribute(name)));
    if (i % 4 == 1)
      node.Remove();
    if (i % 4 == 2)
      node.SetText(L" ");
    if (i % 4 == 3)
      node.CreateChild(node.Name()).SetText(node.Text());
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  const std::string_view bytes(reinterpret_cast<const char *>(data), size);
  std::string ofTree, ofStream;
  Heard heard;
  const auto document = WXmlDoc::FromBytes(bytes, ofTree);
  Demand(ReadXml(bytes, heard, ofStream) == document.has_value());
  Demand(document.has_value() == ofTree.empty() && IsValidUtf8(ofTree) && IsValidUtf8(ofStream));
  if (!document)
    return 0;

  const std::vector<WXmlNode> nodes = document->Root().SelectNodes("//*");
  Demand(nodes.size() == heard.elements);
  std::wstring values;
  for (const WXmlNode &node : nodes) {
    for (const auto &[name, value] : node.Attributes())
      values += value;
  }
  Demand(values == heard.values);

  for (int round = 0; round < 2; ++round) {
    const std::string written = document->Bytes();
    const auto again = WXmlDoc::FromBytes(written, ofTree);
    Demand(again && again->Bytes() == written);
    Edit(*document);
  }
  return 0;
}
