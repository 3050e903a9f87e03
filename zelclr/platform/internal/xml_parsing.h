// What the tree, the reader and the schema share of parsing with libxml2: decoding, limits, errors.
//
// Threads: plain functions. Errors: nothing or false, and the reason; nothing is ever printed.
#pragma once

#include <libxml/parser.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ZelUtl::Internal {

/// One pass over a document; the parser's context has it as `_private`.
struct XmlPass
{
  xmlParserCtxt *context = nullptr;
  int depth = 0;
  bool hasRoot = false;
  std::string reason; ///< of the first fault; empty while there is none
  void *user = nullptr;

  /// Ends the pass at this line. The first reason counts.
  void Stop(std::string_view why);
  /// Ends the pass; the reason is set already, or follows at once.
  void Halt();
  /// Counts an element; false when it breaks a limit, which ends the pass.
  bool Enter();
  void Leave() { --depth; }

  static XmlPass &Of(void *context);
};

/// A document's text in UTF-8, without byte order mark. `most` counts bytes.
std::optional<std::string> Utf8FromXml(std::string_view bytes, std::size_t most, std::string &reason);
std::optional<std::string> Utf8FromXml(std::wstring_view text, std::size_t most, std::string &reason);

/// Passes over a document of UTF-8 with handlers of SAX2 that call Enter and Leave; entities, errors and document types
/// are taken care of here. When a tree is built, it stands in `tree`.
bool PassOverXml(std::string_view text, xmlSAXHandler handlers, void *user, std::string &reason,
                 xmlDoc **tree = nullptr);

struct FreeXmlTree
{
  void operator()(xmlDoc *tree) const { xmlFreeDoc(tree); }
};
using XmlTree = std::unique_ptr<xmlDoc, FreeXmlTree>;

/// The tree of a document of UTF-8, with the blanks as they are.
XmlTree XmlTreeFromUtf8(std::string_view text, std::string &reason);

/// One line of English from what libxml2 reports, with the line in front when it is above 0.
std::string XmlReason(long line, std::string_view message);

/// Keeps libxml2 from printing, in this thread, what it reports to no handler of ours.
class XmlSilence
{
public:
  XmlSilence() : function_(xmlGenericError), context_(xmlGenericErrorContext)
  {
    xmlSetGenericErrorFunc(nullptr, Nothing);
  }
  ~XmlSilence() { xmlSetGenericErrorFunc(context_, function_); }
  XmlSilence(const XmlSilence &) = delete;
  XmlSilence &operator=(const XmlSilence &) = delete;

private:
  static void Nothing(void *, const char *, ...) {}

  xmlGenericErrorFunc function_;
  void *context_;
};

inline std::string_view View(const xmlChar *text)
{
  return text ? std::string_view(reinterpret_cast<const char *>(text)) : std::string_view();
}

} // namespace ZelUtl::Internal
