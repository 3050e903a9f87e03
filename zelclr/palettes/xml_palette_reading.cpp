// The reader of palette files: a machine of eight states that hears the document as it goes by.

#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/internal/palette_numbers.h"
#include "zelclr/palettes/internal/xml_palette.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace ZelClr::Internal {

namespace {

using ZelUtils::Guid;
using Attributes = std::span<const ZelUtl::XmlAttribute>;

// Beside kMostSwatches; what real palettes have is far below.
constexpr std::size_t kMostDefinitions = 500'000;
constexpr std::size_t kMostTexts = 500'000;

/// What is read next.
enum class State
{
  Document,     // the palette
  Palette,      // its parts
  ColorSpaces,  // a colour space
  ColorSpace,   // a look of it
  Colors,       // a page
  Page,         // a colour
  Localization, // a resource
  Resource,     // a text
};

constexpr bool IsTrue(std::string_view text)
{
  return text == "true";
}

Guid GuidFromText(std::string_view text)
{
  return Guid::FromText(ZelUtl::Trimmed(text)).value_or(Guid{});
}

class PaletteReader : public ZelUtl::XmlHandler
{
public:
  explicit PaletteReader(XmlPalette &palette) : palette_(palette), language_(ZelLocale::GetUILanguage()) {}

  bool StartElement(std::string_view name, Attributes attributes, std::string &reason) override
  {
    switch (state_) {
    case State::Document:
      return Expect("palette", name, reason) && ReadPalette(attributes);
    case State::Palette:
      return ReadPart(name, reason);
    case State::ColorSpaces:
      return Expect("cs", name, reason) && ReadColorSpace(attributes, reason);
    case State::ColorSpace:
      return Expect("color", name, reason) && ReadDefinition(attributes, reason);
    case State::Colors:
      return Expect("page", name, reason) && ReadPage(attributes, reason);
    case State::Page:
      return Expect("color", name, reason) && ReadColor(attributes, reason);
    case State::Localization:
      return Expect("resource", name, reason) && ReadResource(attributes, reason);
    case State::Resource:
      break;
    }
    return ReadText(name, reason);
  }

  bool Text(std::string_view text, std::string &) override
  {
    if (isInText_)
      palette_.resources.back().texts.back().second += text;
    return true;
  }

  bool EndElement(std::string_view name, std::string &) override
  {
    if (isInText_)
      isInText_ = false;
    else if (name == "colorspaces" || name == "colors" || name == "localization")
      state_ = State::Palette;
    else if (name == "cs")
      state_ = State::ColorSpaces;
    else if (name == "page")
      state_ = State::Colors;
    else if (name == "resource")
      state_ = State::Localization;
    return true;
  }

  void Finish()
  {
    if (!hasWidth_)
      palette_.gridWidth = palette_.pages.Count() == 1 ? WXmlColorPalette::kDefaultGridWidth : 1;
    palette_.ChooseTexts(language_);
  }

private:
  static bool Expect(std::string_view wanted, std::string_view name, std::string &reason)
  {
    if (name != wanted)
      reason = "<" + std::string(name) + "> where <" + std::string(wanted) + "> belongs";
    return name == wanted;
  }
  static bool Bounded(std::size_t count, std::size_t most, const char *what, std::string &reason)
  {
    if (count >= most)
      reason = "more than " + std::to_string(most) + " " + what;
    return count < most;
  }

  bool ReadPalette(Attributes attributes)
  {
    WXmlColorPalette::Header &header = palette_.header;
    for (const auto &[name, value] : attributes) {
      if (name == "guid")
        header.guid = GuidFromText(value);
      else if (name == "fixedID")
        header.fixedID = WholeNumber(value);
      else if (name == "name")
        header.name = value;
      else if (name == "resid")
        header.resid = value;
      else if (name == "prefix")
        header.prefix = value;
      else if (name == "locked")
        header.locked = IsTrue(value);
      else if (name == "maxColors")
        header.maxColors = WholeNumber(value);
    }
    state_ = State::Palette;
    return true;
  }

  bool ReadPart(std::string_view name, std::string &reason)
  {
    if (name == "colorspaces") {
      state_ = State::ColorSpaces;
    } else if (name == "colors") {
      state_ = State::Colors;
    } else if (name == "localization") {
      palette_.resources.reserve(palette_.colors.Size() + 10); // of the palette and of every colour
      state_ = State::Localization;
    } else {
      reason = "<" + std::string(name) + "> where <colorspaces>, <colors> or <localization> belongs";
      return false;
    }
    return true;
  }

  bool ReadColorSpace(Attributes attributes, std::string &reason)
  {
    if (!Bounded(palette_.spaces.Size(), kMostSwatches, "colour spaces", reason))
      return false;
    WXmlColorSpace &space = palette_.spaces.Append(std::make_unique<PaletteSpace>()).space;
    for (const auto &[name, value] : attributes) {
      if (name == "name")
        space.name = value;
      else if (name == "fixedID")
        space.fixedID = WholeNumber(value);
      else if (name == "version")
        space.version = WholeNumber(value);
      else if (name == "process")
        space.process = IsTrue(value);
    }
    state_ = State::ColorSpace;
    return true;
  }

  bool ReadDefinition(Attributes attributes, std::string &reason)
  {
    if (!Bounded(definitions_++, kMostDefinitions, "looks of colour spaces", reason))
      return false;
    WXmlColorSpace &space = palette_.spaces[palette_.spaces.Size() - 1].space;
    WXmlDefinitionColor &definition = space.definitions.emplace_back();
    for (const auto &[name, value] : attributes) {
      if (name == "cs")
        definition.model = value;
      else if (name == "tints")
        definition.tints = value;
    }
    ReadDefinitionColor(definition);
    return true;
  }

  bool ReadPage(Attributes attributes, std::string &reason)
  {
    if (!Bounded(pages_, kMostSwatches, "pages", reason))
      return false;
    if (pages_++ > 0) {
      palette_.pages.Append(palette_.colors.Size());
    } else {
      for (const auto &[name, value] : attributes) {
        if (name == "width") {
          palette_.gridWidth = std::clamp(WholeNumber(value), 1, kMostGridWidth);
          hasWidth_ = true;
        }
      }
    }
    state_ = State::Page;
    return true;
  }

  bool ReadColor(Attributes attributes, std::string &reason)
  {
    if (!Bounded(palette_.colors.Size() + palette_.waiting.size(), kMostSwatches, "colours", reason))
      return false;
    auto entry = std::make_unique<PaletteColor>();
    WXmlColor &color = entry->color;
    std::string_view style;
    for (const auto &[name, value] : attributes) {
      if (name == "cs")
        color.colorSpace = value;
      else if (name == "resid")
        color.resid = value;
      else if (name == "name")
        color.name = value;
      else if (name == "tints")
        color.tints = value;
      else if (name == "colorStyleRef")
        style = value;
      else if (name == "originalPaletteGuid")
        color.originalPalette = GuidFromText(value);
    }
    if (style.empty())
      palette_.colors.Append(std::move(entry));
    else
      ReadColorOfStyle(style, std::move(entry));
    return true;
  }

  /// KEPT: a colour that follows a style is left out when the palette belongs to no document with styles, where one
  /// would expect its own values to do; documents depend on it.
  void ReadColorOfStyle(std::string_view style, std::unique_ptr<PaletteColor> entry)
  {
    CLR_COLORSPEC reference;
    switch (FindColorStyle(palette_.header.guid, style, reference)) {
    case ColorStyleAnswer::Found:
      entry->color.styleColor = std::move(reference);
      palette_.colors.Append(std::move(entry));
      break;
    case ColorStyleAnswer::NoSuchStyle:
      palette_.waiting.push_back({std::move(entry->color), std::string(style), palette_.colors.Size(),
                                  static_cast<int>(palette_.pages.Count()) - 1});
      break;
    case ColorStyleAnswer::NoStyles:
      break;
    }
  }

  bool ReadResource(Attributes attributes, std::string &reason)
  {
    if (!Bounded(palette_.resources.size(), kMostTexts, "resources", reason))
      return false;
    WXmlColorPalette::Resource &resource = palette_.resources.emplace_back();
    for (const auto &[name, value] : attributes) {
      if (name == "id")
        resource.id = value;
    }
    state_ = State::Resource;
    return true;
  }

  bool ReadText(std::string_view name, std::string &reason)
  {
    if (isInText_) {
      reason = "<" + std::string(name) + "> within a text";
      return false;
    }
    if (!Bounded(texts_++, kMostTexts, "texts", reason))
      return false;
    palette_.resources.back().texts.emplace_back(name, std::string());
    isInText_ = true;
    return true;
  }

  XmlPalette &palette_;
  std::string language_;
  State state_ = State::Document;
  bool isInText_ = false;
  bool hasWidth_ = false;
  std::size_t pages_ = 0;
  std::size_t definitions_ = 0;
  std::size_t texts_ = 0;
};

template <class Xml>
bool Read(XmlPalette &palette, Xml xml, std::string &reason)
{
  PaletteReader reader(palette);
  if (!ZelUtl::ReadXml(xml, reader, reason))
    return false;
  reader.Finish();
  return true;
}

} // namespace

bool ReadXmlPalette(XmlPalette &palette, std::string_view xml, std::string &reason)
{
  return Read(palette, xml, reason);
}

bool ReadXmlPalette(XmlPalette &palette, std::wstring_view xml, std::string &reason)
{
  return Read(palette, xml, reason);
}

} // namespace ZelClr::Internal
