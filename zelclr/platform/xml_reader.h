// XML as a stream of events, and the check of a document against a schema.
//
// What every reader of XML here refuses: more bytes than the given bound; encodings but UTF-8, UTF-16 and ISO-8859-1,
// and bytes that are not valid in theirs; elements nested deeper than kMostXmlDepth; more than kMostXmlAttributes
// attributes of one element or namespaces in scope; a tag or comment (in a tree, a text too) of more than 10,000,000
// bytes; a document type with declarations of its own, hence every entity but the five of XML. A document type that
// names a file is accepted and the file is not read. Nothing outside of the document is ever opened, on disk or in the
// network.
// Threads: plain functions. Errors: false, and the reason in English, with the line where there is one: "line 3: ...".
#pragma once

#include "zelclr/platform/export.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace ZelUtl {

inline constexpr std::size_t kMostXmlBytes = std::size_t{64} << 20;
inline constexpr int kMostXmlDepth = 256;
inline constexpr int kMostXmlAttributes = 256;

/// UTF-8. The name is as written, with its prefix.
struct XmlAttribute
{
  std::string_view name;
  std::string_view value;
};

/// Hears of a document in its order. All text is UTF-8 and is gone when the call returns. Each operation answers
/// whether to read on; if not, it may say why. What it throws, ReadXml throws.
class XmlHandler
{
public:
  virtual ~XmlHandler() = default;
  /// Attributes are in the order of the document, without the declarations of namespaces.
  virtual bool StartElement(std::string_view name, std::span<const XmlAttribute> attributes, std::string &reason) = 0;
  /// All text between two tags in one piece, blanks between elements too; comments do not part it. Never empty.
  virtual bool Text(std::string_view text, std::string &reason) = 0;
  virtual bool EndElement(std::string_view name, std::string &reason) = 0;
};

/// Tells the handler of a document. `most` counts bytes and is at most 1 GiB. On failure the handler has heard of what
/// stands before the fault.
ZELCLR_API bool ReadXml(std::string_view bytes, XmlHandler &handler, std::string &reason,
                        std::size_t most = kMostXmlBytes);
/// The same for wide text, whatever encoding its declaration names.
ZELCLR_API bool ReadXml(std::wstring_view text, XmlHandler &handler, std::string &reason,
                        std::size_t most = kMostXmlBytes);

/// Whether a document is what a schema (W3C XML Schema 1.0, one file, path in UTF-8) says. A schema that is missing,
/// bad or takes in others fails; so does a document too large for a tree (see WXmlDoc).
ZELCLR_API bool ValidateXml(std::string_view bytes, const std::string &schemaPath, std::string &reason);

} // namespace ZelUtl
