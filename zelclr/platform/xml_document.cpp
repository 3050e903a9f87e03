#include "zelclr/platform/files.h"
#include "zelclr/platform/internal/xml_parsing.h"
#include "zelclr/platform/xml.h"

#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <cstring>

namespace ZelUtl {

using namespace Internal;

namespace {

/// A document in memory; the tree's `_private` points back to it. What is taken out of the tree stays until its end,
/// for there may be handles on it or on something in it.
struct Document
{
  explicit Document(XmlTree whole) : tree(std::move(whole)) { tree->_private = this; }
  ~Document()
  {
    // With a document type, freeing an attribute would look into its namespace, which another piece may have had.
    if (xmlDtd *const type = xmlGetIntSubset(tree.get())) {
      xmlUnlinkNode(reinterpret_cast<xmlNode *>(type));
      xmlFreeDtd(type);
    }
    for (xmlNode *const piece : loosePieces)
      xmlFreeNode(piece);
  }
  Document(const Document &) = delete;
  Document &operator=(const Document &) = delete;

  void TakeOut(xmlNode *node)
  {
    loosePieces.push_back(node);
    xmlUnlinkNode(node);
  }

  XmlTree tree;
  std::vector<xmlNode *> loosePieces;
  std::vector<std::pair<std::string, std::string>> namespaces; // for XPath
};

xmlNode *NodeOf(const std::shared_ptr<void> &handle)
{
  return static_cast<xmlNode *>(handle.get());
}

Document &DocumentOf(const xmlNode *node)
{
  return *static_cast<Document *>(node->doc->_private);
}

const xmlChar *Chars(const std::string &text)
{
  return reinterpret_cast<const xmlChar *>(text.c_str());
}

/// Owned by the caller of libxml2.
std::wstring WideFromOwned(xmlChar *text)
{
  std::wstring wide = WideFromUtf8(View(text));
  xmlFree(text);
  return wide;
}

/// How many bytes at this place of UTF-8 XML cannot hold: production 2 (Char) of XML 1.0.
std::size_t RefusedAt(const std::string &text, std::size_t i)
{
  const char c = text[i];
  if (c == '\xEF')
    return text.compare(i, 3, "\uFFFE") == 0 || text.compare(i, 3, "\uFFFF") == 0 ? 3 : 0;
  return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r' ? 1 : 0;
}

/// U+FFFD stands for what XML cannot hold.
std::string CharactersOfUtf8(std::string text)
{
  std::size_t i = 0;
  while (i < text.size() && RefusedAt(text, i) == 0)
    ++i;
  if (i == text.size())
    return text;
  std::string characters(text, 0, i);
  characters.reserve(text.size());
  while (i < text.size()) {
    const std::size_t refused = RefusedAt(text, i);
    if (refused == 0)
      characters += text[i];
    else
      characters += "\uFFFD";
    i += std::max<std::size_t>(refused, 1);
  }
  return characters;
}

std::string XmlCharacters(std::wstring_view wide)
{
  return CharactersOfUtf8(Utf8FromWide(wide));
}

std::string XmlCharacters(std::string_view text)
{
  return CharactersOfUtf8(IsValidUtf8(text) ? std::string(text) : Utf8FromWide(WideFromUtf8(text)));
}

/// Of elements and attributes, as written.
template <class Node>
std::string NameAsWritten(const Node *node)
{
  const std::string name(View(node->name));
  return node->ns && node->ns->prefix ? std::string(View(node->ns->prefix)) + ":" + name : name;
}

template <class Node>
bool IsNamed(const Node *node, std::string_view name)
{
  const std::string_view prefix = node->ns ? View(node->ns->prefix) : std::string_view();
  if (prefix.empty())
    return View(node->name) == name;
  return name.size() > prefix.size() && name.starts_with(prefix) && name[prefix.size()] == ':' &&
         name.substr(prefix.size() + 1) == View(node->name);
}

/// From this node on, along its siblings.
xmlNode *FirstElement(xmlNode *node, std::string_view name)
{
  while (node && (node->type != XML_ELEMENT_NODE || !(name.empty() || IsNamed(node, name))))
    node = node->next;
  return node;
}

xmlAttr *FindAttribute(const xmlNode *node, std::string_view name)
{
  xmlAttr *attribute = node->properties;
  while (attribute && !IsNamed(attribute, name))
    attribute = attribute->next;
  return attribute;
}

/// A name for a new element or attribute, taken apart.
struct NewName
{
  xmlNs *space = nullptr; // none for attributes without prefix
  std::string local;
};

std::optional<NewName> NewNameAt(xmlNode *node, std::string_view written, bool isAttribute)
{
  const std::string name(written);
  if (written.find('\0') != std::string_view::npos || !IsValidUtf8(written) || xmlValidateQName(Chars(name), 0) != 0)
    return std::nullopt;
  const std::size_t colon = name.find(':');
  if (colon == std::string::npos) {
    if (isAttribute && name == "xmlns")
      return std::nullopt;
    return NewName{isAttribute ? nullptr : xmlSearchNs(node->doc, node, nullptr), name};
  }
  xmlNs *const space = xmlSearchNs(node->doc, node, Chars(name.substr(0, colon)));
  return space ? std::optional(NewName{space, name.substr(colon + 1)}) : std::nullopt;
}

int DepthOf(const xmlNode *node)
{
  int depth = 0;
  for (; node && node->type == XML_ELEMENT_NODE; node = node->parent)
    ++depth;
  return depth;
}

bool IsText(const xmlNode *node)
{
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

/// Removes the blanks between elements; they are laid out anew when the document is written.
void DropLayout(xmlNode *element)
{
  bool hasElement = false;
  for (const xmlNode *child = element->children; child; child = child->next) {
    if (IsText(child) && !Trimmed(View(child->content)).empty())
      return;
    hasElement = hasElement || child->type == XML_ELEMENT_NODE;
  }
  if (!hasElement || xmlNodeGetSpacePreserve(element) == 1)
    return;
  for (xmlNode *child = element->children; child;) {
    xmlNode *const next = child->next;
    if (IsText(child)) {
      xmlUnlinkNode(child);
      xmlFreeNode(child);
    }
    child = next;
  }
}

void DropLayoutWithin(xmlNode *element)
{
  DropLayout(element);
  for (xmlNode *child = FirstElement(element->children, {}); child; child = FirstElement(child->next, {}))
    DropLayoutWithin(child); // kMostXmlDepth deep at most
}

bool PutText(xmlNode *node, const std::string &characters)
{
  xmlNode *const fresh = characters.empty() ? nullptr : xmlNewDocText(node->doc, Chars(characters));
  if (!characters.empty() && !fresh)
    return false;
  for (xmlNode *child = node->children; child;) {
    xmlNode *const next = child->next;
    if (child->type == XML_ELEMENT_NODE) {
      DocumentOf(node).TakeOut(child);
    } else if (IsText(child)) {
      xmlUnlinkNode(child);
      xmlFreeNode(child);
    }
    child = next;
  }
  if (fresh && node->children)
    xmlAddPrevSibling(node->children, fresh);
  else if (fresh)
    xmlAddChild(node, fresh);
  return true;
}

bool PutAttribute(xmlNode *node, std::string_view name, const std::string &characters)
{
  if (const xmlAttr *const attribute = FindAttribute(node, name))
    return xmlSetNsProp(node, attribute->ns, attribute->name, Chars(characters)) != nullptr;
  const auto newName = NewNameAt(node, name, true);
  return newName && xmlSetNsProp(node, newName->space, Chars(newName->local), Chars(characters)) != nullptr;
}

void Ignore(void *, xmlError *) {}

} // namespace

std::string WXmlNode::Name() const
{
  return node_ ? NameAsWritten(NodeOf(node_)) : std::string();
}

std::wstring WXmlNode::Text() const
{
  return node_ ? WideFromOwned(xmlNodeGetContent(NodeOf(node_))) : std::wstring();
}

bool WXmlNode::SetText(std::wstring_view text)
{
  return node_ && PutText(NodeOf(node_), XmlCharacters(text));
}

bool WXmlNode::SetText(std::string_view utf8)
{
  return node_ && PutText(NodeOf(node_), XmlCharacters(utf8));
}

std::optional<std::wstring> WXmlNode::Attribute(std::string_view name) const
{
  const xmlAttr *const attribute = node_ ? FindAttribute(NodeOf(node_), name) : nullptr;
  if (!attribute)
    return std::nullopt;
  return WideFromOwned(xmlNodeGetContent(reinterpret_cast<const xmlNode *>(attribute)));
}

std::vector<std::pair<std::string, std::wstring>> WXmlNode::Attributes() const
{
  std::vector<std::pair<std::string, std::wstring>> attributes;
  for (const xmlAttr *attribute = node_ ? NodeOf(node_)->properties : nullptr; attribute; attribute = attribute->next) {
    attributes.emplace_back(NameAsWritten(attribute),
                            WideFromOwned(xmlNodeGetContent(reinterpret_cast<const xmlNode *>(attribute))));
  }
  return attributes;
}

bool WXmlNode::SetAttribute(std::string_view name, std::wstring_view value)
{
  return node_ && PutAttribute(NodeOf(node_), name, XmlCharacters(value));
}

bool WXmlNode::SetAttribute(std::string_view name, std::string_view utf8)
{
  return node_ && PutAttribute(NodeOf(node_), name, XmlCharacters(utf8));
}

bool WXmlNode::RemoveAttribute(std::string_view name)
{
  xmlAttr *const attribute = node_ ? FindAttribute(NodeOf(node_), name) : nullptr;
  return attribute && xmlRemoveProp(attribute) == 0;
}

WXmlNode WXmlNode::Parent() const
{
  xmlNode *const parent = node_ ? NodeOf(node_)->parent : nullptr;
  return parent && parent->type == XML_ELEMENT_NODE ? WXmlNode({node_, parent}) : WXmlNode();
}

std::vector<WXmlNode> WXmlNode::Children() const
{
  std::vector<WXmlNode> children;
  for (WXmlNode child = FirstChild(); child; child = child.Next())
    children.push_back(child);
  return children;
}

WXmlNode WXmlNode::FirstChild(std::string_view name) const
{
  xmlNode *const child = node_ ? FirstElement(NodeOf(node_)->children, name) : nullptr;
  return child ? WXmlNode({node_, child}) : WXmlNode();
}

WXmlNode WXmlNode::Next(std::string_view name) const
{
  xmlNode *const next = node_ ? FirstElement(NodeOf(node_)->next, name) : nullptr;
  return next ? WXmlNode({node_, next}) : WXmlNode();
}

WXmlNode WXmlNode::SelectNode(std::string_view xpath, std::initializer_list<XPathVariable> variables) const
{
  const std::vector<WXmlNode> nodes = SelectNodes(xpath, variables);
  return nodes.empty() ? WXmlNode() : nodes.front();
}

std::vector<WXmlNode> WXmlNode::SelectNodes(std::string_view xpath,
                                            std::initializer_list<XPathVariable> variables) const
{
  if (!node_ || !IsValidUtf8(xpath) || xpath.find('\0') != std::string_view::npos)
    return {};
  xmlNode *const node = NodeOf(node_);
  const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(xmlXPathNewContext(node->doc),
                                                                                 xmlXPathFreeContext);
  if (!context)
    return {};
  const XmlSilence silence;
  context->error = Ignore;
  context->node = node;
  for (const auto &[prefix, uri] : DocumentOf(node).namespaces)
    xmlXPathRegisterNs(context.get(), Chars(prefix), Chars(uri));
  for (const XPathVariable &variable : variables) {
    xmlXPathRegisterVariable(context.get(), reinterpret_cast<const xmlChar *>(variable.name),
                             xmlXPathNewString(Chars(XmlCharacters(variable.value))));
  }
  const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> result(
    xmlXPathEvalExpression(Chars(std::string(xpath)), context.get()), xmlXPathFreeObject);
  if (!result || result->type != XPATH_NODESET || !result->nodesetval)
    return {};
  std::vector<WXmlNode> nodes;
  for (int i = 0; i < result->nodesetval->nodeNr; ++i) {
    xmlNode *const selected = result->nodesetval->nodeTab[i];
    if (selected->type == XML_ELEMENT_NODE)
      nodes.push_back(WXmlNode({node_, selected}));
  }
  return nodes;
}

WXmlNode WXmlNode::CreateChild(std::string_view name)
{
  if (!node_)
    return {};
  xmlNode *const node = NodeOf(node_);
  const auto newName = NewNameAt(node, name, false);
  if (!newName || DepthOf(node) >= kMostXmlDepth)
    return {};
  xmlNode *const child = xmlNewDocNode(node->doc, newName->space, Chars(newName->local), nullptr);
  if (!child)
    return {};
  xmlAddChild(node, child);
  if (child->prev && child->prev->type != XML_ELEMENT_NODE)
    DropLayout(node);
  return WXmlNode({node_, child});
}

bool WXmlNode::Remove()
{
  if (!Parent())
    return false;
  xmlNode *const node = NodeOf(node_);
  DocumentOf(node).TakeOut(node);
  return true;
}

std::optional<WXmlDoc> WXmlDoc::FromUtf8(std::string_view text, std::string &reason)
{
  XmlTree tree = XmlTreeFromUtf8(text, reason);
  if (!tree)
    return std::nullopt;
  DropLayoutWithin(xmlDocGetRootElement(tree.get()));
  xmlXPathOrderDocElems(tree.get()); // else sorting a large selection takes the square of its size
  return WXmlDoc(std::make_shared<Document>(std::move(tree)));
}

std::optional<WXmlDoc> WXmlDoc::FromBytes(std::string_view bytes, std::string &reason, std::size_t most)
{
  const auto text = Utf8FromXml(bytes, most, reason);
  return text ? FromUtf8(*text, reason) : std::nullopt;
}

std::optional<WXmlDoc> WXmlDoc::FromText(std::wstring_view wide, std::string &reason, std::size_t most)
{
  const auto text = Utf8FromXml(wide, most, reason);
  return text ? FromUtf8(*text, reason) : std::nullopt;
}

std::optional<WXmlDoc> WXmlDoc::FromFile(const std::string &path, std::string &reason, std::size_t most)
{
  const auto bytes = ReadFile(path, most, reason);
  return bytes ? FromBytes(*bytes, reason, most) : std::nullopt;
}

WXmlNode WXmlDoc::Root() const
{
  return WXmlNode({tree_, xmlDocGetRootElement(static_cast<Document *>(tree_.get())->tree.get())});
}

std::string WXmlDoc::Bytes() const
{
  xmlChar *text = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(static_cast<Document *>(tree_.get())->tree.get(), &text, &size, "UTF-8", 1);
  std::string bytes(text ? reinterpret_cast<const char *>(text) : "", static_cast<std::size_t>(size));
  xmlFree(text);
  return bytes;
}

std::wstring WXmlDoc::Text() const
{
  return WideFromUtf8(Bytes());
}

bool WXmlDoc::Save(const std::string &path, std::string &reason) const
{
  const std::string bytes = Bytes();
  if (bytes.empty()) {
    reason = "out of memory";
    return false;
  }
  return ReplaceFile(path, bytes, reason);
}

void WXmlDoc::DeclareNamespace(const std::string &prefix, const std::string &uri)
{
  static_cast<Document *>(tree_.get())->namespaces.emplace_back(prefix, uri);
}

} // namespace ZelUtl
