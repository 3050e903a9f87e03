#include "zelclr/platform/xml_reader.h"

#include "zelclr/platform/internal/xml_parsing.h"

#include <deque>
#include <exception>
#include <optional>
#include <vector>

namespace ZelUtl {

using namespace Internal;

namespace {

/// What is on its way to the handler.
struct Reading
{
  XmlHandler &handler;
  std::string text;
  std::vector<XmlAttribute> attributes;
  std::deque<std::string> prefixedNames; // of one tag; a deque, for views on them stay good
  std::exception_ptr thrown;

  std::string_view NameAsWritten(const xmlChar *name, const xmlChar *prefix)
  {
    if (!prefix)
      return View(name);
    return prefixedNames.emplace_back(std::string(View(prefix)) + ":" + std::string(View(name)));
  }
};

/// Calls what answers whether to read on. Nothing may be thrown through the parser: it waits here for ReadXml.
template <class Call>
void Tell(XmlPass &pass, Call call)
{
  auto &reading = *static_cast<Reading *>(pass.user);
  try {
    std::string reason;
    if (!call(reading, reason))
      pass.Stop(reason.empty() ? "not as expected here" : reason);
  } catch (...) {
    reading.thrown = std::current_exception();
    pass.Stop("stopped");
  }
}

bool TellText(Reading &reading, std::string &reason)
{
  if (reading.text.empty())
    return true;
  const bool goesOn = reading.handler.Text(reading.text, reason);
  reading.text.clear();
  return goesOn;
}

void OnStart(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *, int, const xmlChar **,
             int attributeCount, int, const xmlChar **attributes)
{
  XmlPass &pass = XmlPass::Of(context);
  if (!pass.Enter())
    return;
  Tell(pass, [&](Reading &reading, std::string &reason) {
    if (!TellText(reading, reason))
      return false;
    reading.prefixedNames.clear();
    reading.attributes.clear();
    for (int i = 0; i < attributeCount; ++i, attributes += 5) { // name, prefix, namespace, first and last of the value
      const auto *const value = reinterpret_cast<const char *>(attributes[3]);
      reading.attributes.push_back({reading.NameAsWritten(attributes[0], attributes[1]),
                                    {value, static_cast<std::size_t>(attributes[4] - attributes[3])}});
    }
    return reading.handler.StartElement(reading.NameAsWritten(name, prefix), reading.attributes, reason);
  });
}

void OnEnd(void *context, const xmlChar *name, const xmlChar *prefix, const xmlChar *)
{
  XmlPass &pass = XmlPass::Of(context);
  pass.Leave();
  Tell(pass, [&](Reading &reading, std::string &reason) {
    reading.prefixedNames.clear();
    return TellText(reading, reason) && reading.handler.EndElement(reading.NameAsWritten(name, prefix), reason);
  });
}

void OnText(void *context, const xmlChar *text, int length)
{
  Tell(XmlPass::Of(context), [&](Reading &reading, std::string &) {
    reading.text.append(reinterpret_cast<const char *>(text), static_cast<std::size_t>(length));
    return true;
  });
}

bool ReadUtf8(const std::optional<std::string> &text, XmlHandler &handler, std::string &reason)
{
  if (!text)
    return false;
  xmlSAXHandler handlers{};
  handlers.startElementNs = OnStart;
  handlers.endElementNs = OnEnd;
  handlers.characters = OnText;
  handlers.ignorableWhitespace = OnText;
  Reading reading{handler, {}, {}, {}, nullptr};
  const bool isRead = PassOverXml(*text, handlers, &reading, reason);
  if (reading.thrown)
    std::rethrow_exception(reading.thrown);
  return isRead;
}

} // namespace

bool ReadXml(std::string_view bytes, XmlHandler &handler, std::string &reason, std::size_t most)
{
  return ReadUtf8(Utf8FromXml(bytes, most, reason), handler, reason);
}

bool ReadXml(std::wstring_view text, XmlHandler &handler, std::string &reason, std::size_t most)
{
  return ReadUtf8(Utf8FromXml(text, most, reason), handler, reason);
}

} // namespace ZelUtl
