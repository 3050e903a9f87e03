#include "zelclr/platform/internal/xml_parsing.h"

#include "zelclr/platform/text.h"
#include "zelclr/platform/xml_reader.h"

#include <libxml/SAX2.h>
#include <utf8.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

namespace ZelUtl::Internal {

namespace {

constexpr std::size_t kMostBytesEver = std::size_t{1} << 30; // libxml2 counts in int
constexpr std::size_t kMostTreeNodes = 1'000'000;
constexpr std::size_t kPieceSize = std::size_t{1} << 16;
constexpr std::size_t kMostMessageLength = 200;

enum class Encoding
{
  Utf8,
  Utf16,
  Latin1,
};

constexpr struct
{
  std::string_view name; // lowered
  Encoding encoding;
} kEncodings[] = {
  {"utf-8", Encoding::Utf8},        {"utf8", Encoding::Utf8},      {"utf-16", Encoding::Utf16},
  {"utf-16le", Encoding::Utf16},    {"utf-16be", Encoding::Utf16}, {"iso-10646-ucs-2", Encoding::Utf16},
  {"iso-8859-1", Encoding::Latin1}, {"latin1", Encoding::Latin1},
};

long LineAt(std::string_view text, std::size_t offset)
{
  return static_cast<long>(1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

/// The name in `<?xml ... encoding="name" ...?>`; empty when the document does not say.
std::string_view DeclaredEncoding(std::string_view text)
{
  constexpr std::string_view kBlanks = " \t\r\n";
  if (!text.starts_with("<?xml") || text.size() < 6 || kBlanks.find(text[5]) == std::string_view::npos)
    return {};
  text = text.substr(0, text.find("?>"));
  std::size_t at = text.find("encoding");
  if (at == std::string_view::npos)
    return {};
  at = text.find_first_not_of(kBlanks, at + 8);
  if (at == std::string_view::npos || text[at] != '=')
    return {};
  at = text.find_first_not_of(kBlanks, at + 1);
  if (at == std::string_view::npos || (text[at] != '"' && text[at] != '\''))
    return {};
  return text.substr(at + 1, text.find(text[at], at + 1) - at - 1);
}

std::optional<Encoding> EncodingOfName(std::string_view name)
{
  const std::string lower = LowerAscii(name);
  for (const auto &row : kEncodings) {
    if (row.name == lower)
      return row.encoding;
  }
  return std::nullopt;
}

std::optional<std::string> Utf8FromUtf16(std::string_view bytes, bool bigEndian)
{
  std::u16string units;
  units.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    units += static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
  }
  std::string text;
  text.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t codePoint = units[i];
    if (codePoint >= 0xD800 && codePoint < 0xE000) {
      const char32_t next = i + 1 < units.size() ? units[i + 1] : U'\0';
      if (codePoint >= 0xDC00 || next < 0xDC00 || next >= 0xE000)
        return std::nullopt;
      codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
      ++i;
    }
    utf8::unchecked::append(codePoint, std::back_inserter(text));
  }
  return bytes.size() % 2 == 0 ? std::optional(std::move(text)) : std::nullopt;
}

std::string Utf8FromLatin1(std::string_view bytes)
{
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes)
    utf8::unchecked::append(static_cast<unsigned char>(byte), std::back_inserter(text));
  return text;
}

bool IsAscii(char c)
{
  return static_cast<unsigned char>(c) < 0x80;
}

/// Where UTF-8 goes wrong; the size when it does not. Most of most documents is ASCII, which eight bytes at a time are.
std::size_t FirstInvalidUtf8(std::string_view text)
{
  constexpr std::uint64_t kNotAscii = 0x8080808080808080;
  std::size_t at = 0;
  while (at < text.size()) {
    std::uint64_t eight = 0;
    while (at + sizeof eight <= text.size()) {
      std::memcpy(&eight, text.data() + at, sizeof eight);
      if ((eight & kNotAscii) != 0)
        break;
      at += sizeof eight;
    }
    const auto first = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), IsAscii);
    const auto last = std::find_if(first, text.end(), IsAscii);
    const auto bad = utf8::find_invalid(first, last);
    if (bad != last)
      return static_cast<std::size_t>(bad - text.begin());
    at = static_cast<std::size_t>(last - text.begin());
  }
  return text.size();
}

/// Walks over the tags before the parser does, for it compares each attribute of an element with every other, and a
/// tree takes many times the space of its text. What is not well-formed is left to the parser, which stops where this
/// walk would lose its way.
bool IsOfBearableShape(std::string_view text, std::size_t mostNodes, std::string &reason)
{
  std::size_t nodes = 0;
  std::size_t at = 0;
  const auto refuse = [&](std::string_view why) {
    reason = XmlReason(LineAt(text, at), why);
    return false;
  };
  while ((at = text.find('<', at)) != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    std::size_t end = 0;
    int attributes = 0;
    if (rest.starts_with("<!--")) {
      end = text.find("-->", at + 4);
    } else if (rest.starts_with("<![CDATA[")) {
      end = text.find("]]>", at + 9);
    } else if (rest.starts_with("<?")) {
      end = text.find("?>", at + 2);
    } else {
      const bool isDocumentType = rest.starts_with("<!");
      for (end = at; end < text.size() && text[end] != '>'; ++end) {
        if (text[end] == '[' && isDocumentType)
          return refuse("a document type with declarations of its own (entities, attributes) is not accepted");
        if (text[end] != '"' && text[end] != '\'')
          continue;
        end = std::min(text.find(text[end], end + 1), text.size() - 1);
        if (++attributes > kMostXmlAttributes)
          return refuse("an element has more than " + std::to_string(kMostXmlAttributes) + " attributes");
      }
    }
    nodes += 1 + static_cast<std::size_t>(attributes);
    if (nodes > mostNodes)
      return refuse("more than " + std::to_string(mostNodes) + " elements, attributes and comments");
    if (end == std::string_view::npos)
      return true;
    at = end;
  }
  return true;
}

/// What libxml2 says, but for what it says misleadingly.
std::string_view MessageOf(const xmlError &error, const XmlPass &pass)
{
  const std::string_view message = error.message ? error.message : "not well-formed";
  if (error.code == XML_ERR_DOCUMENT_END && (pass.depth > 0 || !pass.hasRoot))
    return "the document ends too early"; // "extra content"
  if (error.code == XML_ERR_INTERNAL_ERROR || message.find("huge text") != std::string_view::npos)
    return "a tag, a comment or a text of more than 10,000,000 bytes"; // "Huge input lookup"
  return message;
}

void OnError(void *context, xmlError *error)
{
  XmlPass &pass = XmlPass::Of(context);
  if (error->level < XML_ERR_ERROR || !pass.reason.empty())
    return;
  pass.reason = XmlReason(error->line, MessageOf(*error, pass));
  pass.Halt();
}

void OnReference(void *context, const xmlChar *name)
{
  XmlPass::Of(context).Stop("the entity \"" + std::string(View(name)) + "\" is not declared");
}

void OnTreeStart(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri, int namespaceCount,
                 const xmlChar **namespaces, int attributeCount, int defaultedCount, const xmlChar **attributes)
{
  if (XmlPass::Of(context).Enter())
    xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultedCount,
                          attributes);
}

void OnTreeEnd(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri)
{
  XmlPass::Of(context).Leave();
  xmlSAX2EndElementNs(context, name, prefix, uri);
}

} // namespace

XmlPass &XmlPass::Of(void *context)
{
  return *static_cast<XmlPass *>(static_cast<xmlParserCtxt *>(context)->_private);
}

void XmlPass::Stop(std::string_view why)
{
  if (reason.empty())
    reason = XmlReason(xmlSAX2GetLineNumber(context), why);
  Halt();
}

void XmlPass::Halt()
{
  // The parser looks at these two before each piece of markup; xmlStopParser would free the text under its feet.
  context->disableSAX = 1;
  context->errNo = XML_ERR_USER_STOP;
}

bool XmlPass::Enter()
{
  hasRoot = true;
  if (++depth > kMostXmlDepth)
    Stop("elements are nested deeper than " + std::to_string(kMostXmlDepth));
  else if (context->nsNr / 2 > kMostXmlAttributes) // pairs of prefix and name
    Stop("more than " + std::to_string(kMostXmlAttributes) + " namespaces in scope");
  return reason.empty();
}

std::string XmlReason(long line, std::string_view message)
{
  // The message may quote the document, and be cut within a character.
  message = Trimmed(message.substr(0, kMostMessageLength));
  std::string text = Utf8FromWide(WideFromUtf8(message));
  std::replace_if(
    text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return line > 0 ? "line " + std::to_string(line) + ": " + text : text;
}

std::optional<std::string> Utf8FromXml(std::string_view bytes, std::size_t most, std::string &reason)
{
  most = std::min(most, kMostBytesEver);
  if (bytes.size() > most) {
    reason = "more than " + std::to_string(most) + " bytes";
    return std::nullopt;
  }
  using namespace std::string_view_literals;
  const bool isLittle = bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv);
  const bool isBig = bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<"sv);
  const bool isMarkedUtf8 = bytes.starts_with("\xEF\xBB\xBF"sv);
  std::optional<std::string> text;
  if (isLittle || isBig) {
    text = Utf8FromUtf16(bytes, isBig);
    if (!text) {
      reason = "not valid UTF-16";
      return std::nullopt;
    }
    if (text->starts_with("\xEF\xBB\xBF"))
      text->erase(0, 3);
  } else {
    text = bytes.substr(isMarkedUtf8 ? 3 : 0);
  }

  const std::string name(DeclaredEncoding(*text).substr(0, kMostMessageLength));
  const auto declared = name.empty() ? std::nullopt : EncodingOfName(name);
  if (!name.empty() && !declared) {
    reason = XmlReason(1, "the encoding \"" + name + "\" is none of UTF-8, UTF-16 and ISO-8859-1");
    return std::nullopt;
  }
  if (declared && (*declared == Encoding::Utf16) != (isLittle || isBig)) {
    reason = XmlReason(1, "the document says \"" + name + "\" and is not");
    return std::nullopt;
  }
  if (declared == Encoding::Latin1 && !isMarkedUtf8)
    text = Utf8FromLatin1(*text);

  const std::size_t bad = FirstInvalidUtf8(*text);
  if (bad != text->size()) {
    reason = XmlReason(LineAt(*text, bad), "not valid UTF-8");
    return std::nullopt;
  }
  return text;
}

std::optional<std::string> Utf8FromXml(std::wstring_view text, std::size_t most, std::string &reason)
{
  most = std::min(most, kMostBytesEver);
  std::string narrow;
  if (text.size() <= most)
    narrow = Utf8FromWide(text);
  if (text.size() > most || narrow.size() > most) {
    reason = "more than " + std::to_string(most) + " bytes";
    return std::nullopt;
  }
  if (narrow.starts_with("\xEF\xBB\xBF"))
    narrow.erase(0, 3);
  return narrow;
}

bool PassOverXml(std::string_view text, xmlSAXHandler handlers, void *user, std::string &reason, xmlDoc **tree)
{
  [[maybe_unused]] static const bool initialised = (xmlInitParser(), true);
  const std::size_t nul = text.find('\0');
  if (nul != std::string_view::npos) {
    reason = XmlReason(LineAt(text, nul), "the character U+0000");
    return false;
  }
  if (Trimmed(text).empty()) {
    reason = "the document is empty";
    return false;
  }
  if (!IsOfBearableShape(text, tree ? kMostTreeNodes : SIZE_MAX, reason))
    return false;

  handlers.initialized = XML_SAX2_MAGIC;
  handlers.serror = OnError;
  handlers.reference = OnReference;
  handlers.cdataBlock = nullptr; // comes as text
  handlers.getEntity = nullptr;
  handlers.getParameterEntity = nullptr;
  handlers.externalSubset = nullptr;
  handlers.resolveEntity = nullptr;
  xmlParserCtxt *const context = xmlCreatePushParserCtxt(&handlers, nullptr, nullptr, 0, nullptr);
  if (!context) {
    reason = "out of memory";
    return false;
  }
  XmlPass pass;
  pass.context = context;
  pass.user = user;
  context->_private = &pass;
  // No entity can be declared, so that NOENT means only: attributes arrive with their & resolved.
  xmlCtxtUseOptions(context, XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC);
  context->keepBlanks = 1;
  context->loadsubset = XML_SKIP_IDS; // no table of xml:id; nothing is loaded, for there is no handler that would

  for (std::size_t at = 0; at < text.size() && pass.reason.empty(); at += kPieceSize) {
    const std::string_view piece = text.substr(at, kPieceSize);
    xmlParseChunk(context, piece.data(), static_cast<int>(piece.size()), 0);
  }
  if (pass.reason.empty())
    xmlParseChunk(context, nullptr, 0, 1);
  if (pass.reason.empty() && !(context->wellFormed && pass.hasRoot))
    pass.reason = "not well-formed";
  XmlTree built(context->myDoc);
  xmlFreeParserCtxt(context);
  if (!pass.reason.empty()) {
    reason = std::move(pass.reason);
    return false;
  }
  if (tree)
    *tree = built.release();
  return true;
}

XmlTree XmlTreeFromUtf8(std::string_view text, std::string &reason)
{
  xmlSAXHandler handlers{};
  xmlSAXVersion(&handlers, 2);
  handlers.startElementNs = OnTreeStart;
  handlers.endElementNs = OnTreeEnd;
  xmlDoc *tree = nullptr;
  PassOverXml(text, handlers, nullptr, reason, &tree);
  return XmlTree(tree);
}

} // namespace ZelUtl::Internal
