// The check of a document against a schema.
#include "zelclr/platform/files.h"
#include "zelclr/platform/internal/xml_parsing.h"
#include "zelclr/platform/xml_reader.h"

#include <libxml/tree.h>
#include <libxml/xmlschemas.h>

namespace ZelUtl {

using namespace Internal;

namespace {

constexpr long kBeyondLines = 65535; // what the nodes of a tree hold for this line and all after it
constexpr std::size_t kMostSchemaBytes = std::size_t{4} << 20;

template <auto free>
struct Free
{
  template <class T>
  void operator()(T *pointer) const
  {
    free(pointer);
  }
};
using SchemaParser = std::unique_ptr<xmlSchemaParserCtxt, Free<xmlSchemaFreeParserCtxt>>;
using Schema = std::unique_ptr<xmlSchema, Free<xmlSchemaFree>>;
using SchemaCheck = std::unique_ptr<xmlSchemaValidCtxt, Free<xmlSchemaFreeValidCtxt>>;

/// Keeps the first error.
void OnError(void *user, xmlError *error)
{
  auto &reason = *static_cast<std::string *>(user);
  if (error->level < XML_ERR_ERROR || !reason.empty())
    return;
  const auto *const node = static_cast<const xmlNode *>(error->node);
  const std::string message = error->message ? error->message : "not as the schema says";
  const long line = node ? node->line : error->line;
  reason = line < kBeyondLines ? XmlReason(line, message)
                               : "beyond line " + std::to_string(kBeyondLines - 1) + ": " + XmlReason(0, message);
}

/// Other files would be fetched from wherever the schema says.
bool TakesInOthers(const xmlDoc *tree)
{
  for (const xmlNode *node = xmlDocGetRootElement(tree)->children; node; node = node->next) {
    if (node->type != XML_ELEMENT_NODE)
      continue;
    for (const char *const name : {"import", "include", "redefine", "override"}) {
      if (View(node->name) == name)
        return true;
    }
  }
  return false;
}

Schema ReadSchema(const std::string &path, XmlTree &tree, std::string &reason)
{
  const auto bytes = ReadFile(path, kMostSchemaBytes, reason);
  const auto text = bytes ? Utf8FromXml(*bytes, kMostSchemaBytes, reason) : std::nullopt;
  tree = text ? XmlTreeFromUtf8(*text, reason) : nullptr;
  if (!tree)
    return nullptr;
  if (TakesInOthers(tree.get())) {
    reason = "it takes in other files";
    return nullptr;
  }
  const SchemaParser parser(xmlSchemaNewDocParserCtxt(tree.get()));
  if (!parser) {
    reason = "out of memory";
    return nullptr;
  }
  std::string error;
  xmlSchemaSetParserStructuredErrors(parser.get(), OnError, &error);
  Schema schema(xmlSchemaParse(parser.get()));
  if (!schema)
    reason = error.empty() ? "not a schema" : error;
  return schema;
}

} // namespace

bool ValidateXml(std::string_view bytes, const std::string &schemaPath, std::string &reason)
{
  const XmlSilence silence;
  const auto text = Utf8FromXml(bytes, kMostXmlBytes, reason);
  const XmlTree document = text ? XmlTreeFromUtf8(*text, reason) : nullptr;
  if (!document)
    return false;
  XmlTree schemaTree; // the schema points into it
  const Schema schema = ReadSchema(schemaPath, schemaTree, reason);
  if (!schema) {
    reason = "the schema " + schemaPath + ": " + reason;
    return false;
  }
  const SchemaCheck check(xmlSchemaNewValidCtxt(schema.get()));
  if (!check) {
    reason = "out of memory";
    return false;
  }
  std::string error;
  xmlSchemaSetValidStructuredErrors(check.get(), OnError, &error);
  if (xmlSchemaValidateDoc(check.get(), document.get()) == 0)
    return true;
  reason = error.empty() ? "not as the schema says" : error;
  return false;
}

} // namespace ZelUtl
