#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/internal/xml_palette.h"

#include <string>
#include <string_view>

namespace ZelClr::Internal {

namespace {

using ZelUtl::WXmlDoc;
using ZelUtl::WXmlNode;

void PutUnlessEmpty(WXmlNode &node, std::string_view name, std::string_view value)
{
  if (!value.empty())
    node.SetAttribute(name, value);
}

void PutNumber(WXmlNode &node, std::string_view name, int number)
{
  node.SetAttribute(name, std::to_string(number));
}

void WriteHeader(WXmlNode root, const WXmlColorPalette::Header &header)
{
  root.SetAttribute("guid", header.guid.ToText());
  if (header.fixedID >= 0)
    PutNumber(root, "fixedID", header.fixedID);
  root.SetAttribute("name", header.name);
  PutUnlessEmpty(root, "resid", header.resid);
  PutUnlessEmpty(root, "prefix", header.prefix);
  if (header.locked)
    root.SetAttribute("locked", "true");
  if (header.maxColors != -1)
    PutNumber(root, "maxColors", header.maxColors);
}

void WriteColorSpaces(WXmlNode parent, const PlacedList<PaletteSpace> &spaces)
{
  for (const auto &entry : spaces) {
    const WXmlColorSpace &space = entry->space;
    WXmlNode node = parent.CreateChild("cs");
    node.SetAttribute("name", space.name);
    if (space.fixedID >= 0)
      PutNumber(node, "fixedID", space.fixedID);
    if (space.version > 0)
      PutNumber(node, "version", space.version);
    if (space.process)
      node.SetAttribute("process", "true");
    for (const WXmlDefinitionColor &definition : space.definitions) {
      WXmlNode look = node.CreateChild("color");
      look.SetAttribute("cs", definition.model);
      look.SetAttribute("tints", definition.tints);
    }
  }
}

void WriteColor(WXmlNode node, const WXmlColor &color, std::string_view style)
{
  node.SetAttribute("cs", color.colorSpace);
  PutUnlessEmpty(node, "resid", color.resid);
  PutUnlessEmpty(node, "name", color.name);
  node.SetAttribute("tints", color.tints);
  PutUnlessEmpty(node, "colorStyleRef", style);
  if (!color.originalPalette.IsNull())
    node.SetAttribute("originalPaletteGuid", color.originalPalette.ToText());
}

/// Colours and those that wait for their style, page by page.
class ColorsWriter
{
public:
  ColorsWriter(WXmlNode colors, const XmlPalette &palette) : colors_(std::move(colors))
  {
    page_ = colors_.CreateChild("page");
    // KEPT: a palette of several pages has no width in its file, so that it comes back with the width 1, where one
    // would expect its own; palette files depend on it.
    if (palette.pages.Count() == 1 && palette.gridWidth != WXmlColorPalette::kDefaultGridWidth)
      PutNumber(page_, "width", palette.gridWidth);
  }

  void Write(const WXmlColor &color, std::size_t page, std::string_view style)
  {
    if (hasColor_ && page != pageOfLast_)
      page_ = colors_.CreateChild("page");
    WriteColor(page_.CreateChild("color"), color, style);
    hasColor_ = true;
    pageOfLast_ = page;
  }

private:
  WXmlNode colors_;
  WXmlNode page_;
  bool hasColor_ = false;
  std::size_t pageOfLast_ = 0;
};

void WriteColors(WXmlNode parent, const XmlPalette &palette, bool styleReferences)
{
  ColorsWriter writer(std::move(parent), palette);
  auto waiting = palette.waiting.begin();
  for (std::size_t index = 0; index <= palette.colors.Size(); ++index) {
    for (; waiting != palette.waiting.end() && waiting->index <= index; ++waiting)
      writer.Write(waiting->color, palette.PageOfWaiting(*waiting), styleReferences ? waiting->style : "");
    if (index == palette.colors.Size())
      break;
    const WXmlColor &color = palette.colors[index].color;
    const bool isReference = styleReferences && color.styleColor.IsReference();
    writer.Write(color, palette.pages.PageOf(index), isReference ? NameOfColorStyle(color.styleColor) : "");
  }
}

void WriteTexts(WXmlNode parent, const std::vector<WXmlColorPalette::Resource> &resources)
{
  for (const WXmlColorPalette::Resource &resource : resources) {
    WXmlNode node = parent.CreateChild("resource");
    node.SetAttribute("id", resource.id);
    for (const auto &[language, text] : resource.texts)
      node.CreateChild(language).SetText(text); // nothing, when the tag is no name
  }
}

} // namespace

WXmlDoc XmlFromPalette(const XmlPalette &palette, bool styleReferences)
{
  std::string reason;
  WXmlDoc document = *WXmlDoc::FromBytes("<?xml version=\"1.0\"?><palette/>", reason);
  WXmlNode root = document.Root();
  WriteHeader(root, palette.header);
  if (palette.spaces.Size() > 0)
    WriteColorSpaces(root.CreateChild("colorspaces"), palette.spaces);
  if (palette.colors.Size() + palette.waiting.size() > 0)
    WriteColors(root.CreateChild("colors"), palette, styleReferences);
  if (!palette.resources.empty())
    WriteTexts(root.CreateChild("localization"), palette.resources);
  return document;
}

} // namespace ZelClr::Internal
