// Settings and what they are made of, as XML elements.
//
// An element is found by its name, or by its name and its attribute `id`; settings are read from the element itself,
// since a list may hold several of one id. Values that are missing keep what stands in
// the object; names that are unknown, numbers that are none and missing inner elements make a reading fail. Writing
// takes the place of an element of that name and id.
//
// Threads: plain functions. Errors: false; what a failed reading leaves in the object is said at each.
#pragma once

#include "zelclr/colorsystem/color.h"
#include "zelclr/platform/xml.h"
#include "zelclr/settings/color_settings.h"
#include "zelclr/settings/proof_color_settings.h"

namespace ColorSystem::Internal {

using XmlId = ZelUtl::WXmlValueAccessor::Id;

/// The name by which a profile finds its way back: the file's, where the profile manager finds this profile by it, else
/// its path.
std::wstring ResolvableName(const std::shared_ptr<ColorProfile> &profile);

/// What fails in reading keeps its place in the context empty; what is missing, too.
bool WriteColorContext(const ColorContext &context, const ZelUtl::WXmlNode &parent, XmlId id = {});
bool ReadColorContext(ColorContext &context, const ZelUtl::WXmlNode &parent, XmlId id = {});

/// Null when it cannot be read.
bool WriteColor(const Color &color, const ZelUtl::WXmlNode &parent, XmlId id = {});
std::shared_ptr<Color> ReadColor(const ZelUtl::WXmlNode &parent, XmlId id = {});

/// A failed reading has set what it could, but no policy after the first failure.
bool WriteColorSettings(const ColorSettings &settings, const ZelUtl::WXmlNode &parent, XmlId id = {});
bool ReadColorSettings(ColorSettings &settings, const ZelUtl::WXmlNode &element);

/// A failed reading leaves the settings as they were.
bool WriteProofColorSettings(const ProofColorSettings &settings, const ZelUtl::WXmlNode &parent, XmlId id = {});
bool ReadProofColorSettings(ProofColorSettings &settings, const ZelUtl::WXmlNode &element);

/// The text of an inner element as one of the names of a table: `fromName(std::string_view)` gives the value, if any.
template <class Value>
bool ReadName(const ZelUtl::WXmlValueAccessor &values, const char *element, Value &value,
              std::optional<Value> (*fromName)(std::string_view), XmlId id = {})
{
  std::wstring text;
  if (!values.ReadText(element, text, id))
    return true;
  const auto named = fromName(ZelUtl::Utf8FromWide(text));
  value = named.value_or(value);
  return named.has_value();
}
inline bool WriteName(ZelUtl::WXmlValueAccessor &values, const char *element, std::string_view name, XmlId id = {})
{
  return values.WriteText(element, ZelUtl::WideFromUtf8(name), id);
}
/// True where there is none.
inline bool ReadOptional(const ZelUtl::WXmlValueAccessor &values, const char *element, bool &value)
{
  return !values.Find(element) || values.ReadBool(element, value);
}

} // namespace ColorSystem::Internal
