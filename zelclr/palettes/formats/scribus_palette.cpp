#include "zelclr/palettes/formats/scribus_palette.h"

#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/palettes/formats/internal/swatch_conversion.h"
#include "zelclr/platform/text.h"

namespace ZelClr {

namespace {

using Attributes = std::span<const ZelUtl::XmlAttribute>;

constexpr std::string_view kRoot = "SCRIBUSCOLORS";

struct Component
{
  std::string_view name;
  double least;
  double most;
  double scale; ///< stated number = component * scale
};

/// One row for each SPACE.
struct Space
{
  std::string_view name;
  SwatchModel model;
  std::size_t count;
  Component components[4];
};

constexpr Space kSpaces[] = {
  {"RGB", SwatchModel::Rgb, 3, {{"R", 0, 255, 255}, {"G", 0, 255, 255}, {"B", 0, 255, 255}, {}}},
  {"CMYK", SwatchModel::Cmyk, 4, {{"C", 0, 100, 100}, {"M", 0, 100, 100}, {"Y", 0, 100, 100}, {"K", 0, 100, 100}}},
  {"Lab", SwatchModel::Lab, 3, {{"L", 0, 100, 1}, {"A", -128, 127, 1}, {"B", -128, 127, 1}, {}}},
};

std::string TextOf(const Attributes &attributes, std::string_view name)
{
  const std::string_view *const value = FindAttribute(attributes, name);
  return value == nullptr ? std::string() : std::string(*value);
}

bool IsSet(const Attributes &attributes, std::string_view name)
{
  const std::string_view *const value = FindAttribute(attributes, name);
  return value != nullptr && *value != "0" && !value->empty();
}

Swatch SwatchOf(std::string name, SwatchModel model, const std::array<double, 4> &values)
{
  return model == SwatchModel::Rgb    ? RgbSwatch(std::move(name), values[0], values[1], values[2])
         : model == SwatchModel::Cmyk ? CmykSwatch(std::move(name), values[0], values[1], values[2], values[3])
                                      : LabSwatch(std::move(name), values[0], values[1], values[2]);
}

class Reader final : public ZelUtl::XmlHandler
{
public:
  SwatchBook book;
  std::size_t others = 0;

private:
  bool StartElement(std::string_view name, Attributes attributes, std::string &reason) override
  {
    if (depth_++ == 0) {
      book.name = TextOf(attributes, "Name");
      if (name != kRoot)
        reason = "the root is not " + std::string(kRoot);
      return name == kRoot;
    }
    if (depth_ != 2 || name != "COLOR") {
      others += depth_ == 2;
      return true;
    }
    if (book.swatches.size() == kMostSwatches) {
      reason = TooManySwatches();
      return false;
    }
    auto swatch = ColourOf(attributes, reason);
    if (!swatch)
      return false;
    swatch->spot = IsSet(attributes, "Spot");
    if (IsSet(attributes, "Register"))
      swatch = RecordSwatch(swatch->name, CLR_COLORSPEC::MakeREGCOLOR());
    swatch->line = book.swatches.size() + 1;
    book.swatches.push_back(std::move(*swatch));
    return true;
  }
  bool Text(std::string_view, std::string &) override { return true; }
  bool EndElement(std::string_view, std::string &) override
  {
    --depth_;
    return true;
  }

  static std::optional<Swatch> ColourOf(Attributes attributes, std::string &reason)
  {
    std::string name = TextOf(attributes, "NAME");
    const std::string_view *const space = FindAttribute(attributes, "SPACE");
    for (const Space &row : kSpaces) {
      if (space != nullptr && *space == row.name)
        return OfComponents(std::move(name), row, attributes, reason);
      const std::string_view *const hex = FindAttribute(attributes, row.name);
      if (space == nullptr && hex != nullptr && row.model != SwatchModel::Lab)
        return OfHex(std::move(name), row, *hex, reason);
    }
    reason = "the colour \"" + name.substr(0, 40) + "\" has no components";
    return std::nullopt;
  }

  static std::optional<Swatch> OfComponents(std::string name, const Space &space, Attributes attributes,
                                            std::string &reason)
  {
    std::array<double, 4> values{};
    for (std::size_t i = 0; i < space.count; ++i) {
      const Component &component = space.components[i];
      const std::string_view *const text = FindAttribute(attributes, component.name);
      const auto number = text == nullptr ? std::nullopt : ZelUtl::DoubleFromText(*text);
      if (!number || *number < component.least || *number > component.most) {
        reason = "the colour \"" + name.substr(0, 40) + "\" has no " + std::string(component.name) + " of " +
                 ZelUtl::TextFromNumber(component.least) + " to " + ZelUtl::TextFromNumber(component.most);
        return std::nullopt;
      }
      values[i] = *number / component.scale;
    }
    return SwatchOf(std::move(name), space.model, values);
  }

  static std::optional<Swatch> OfHex(std::string name, const Space &space, std::string_view hex, std::string &reason)
  {
    const auto bytes = hex.starts_with('#') ? BytesOfHex(hex.substr(1), space.count) : std::nullopt;
    if (!bytes) {
      reason = "\"" + std::string(hex.substr(0, 40)) + "\" is no " + std::string(space.name) + " colour";
      return std::nullopt;
    }
    std::array<double, 4> values{};
    for (std::size_t i = 0; i < space.count; ++i)
      values[i] = (*bytes)[i] / 255.0;
    return SwatchOf(std::move(name), space.model, values);
  }

  int depth_ = 0;
};

} // namespace

bool RecognisesScribus(std::string_view bytes)
{
  return RootOfXml(bytes) == kRoot;
}

std::optional<SwatchBook> ReadScribus(std::string_view bytes, ReadProblem &problem)
{
  Reader reader;
  if (!ReadXmlPalette(bytes, reader, problem))
    return std::nullopt;
  if (reader.others > 0)
    reader.book.notes.push_back(
      CountOf(reader.others, "element that is no colour was", "elements that are no colours were") + " left out");
  return std::move(reader.book);
}

std::optional<WrittenPalette> WriteScribus(const SwatchBook &source, std::string &reason)
{
  WrittenPalette written;
  const SwatchBook book = Fitted(source,
                                 {.cmyk = true,
                                  .gray = true,
                                  .lab = true,
                                  .spot = true,
                                  .keepsRecord = IsRegistration,
                                  .bookName = true,
                                  .otherwise = SwatchModel::Cmyk},
                                 written.notes);
  if (!IsWritable(book, kMostSwatches, reason))
    return std::nullopt;
  std::string &text = written.bytes;
  text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<";
  text.append(kRoot).append(" Name=\"").append(EscapedXml(book.name)).append("\">\n");
  std::size_t grays = 0, renamed = 0;
  UniqueNames names;
  for (const Swatch &swatch : book.swatches) {
    std::array<double, 4> values = swatch.values;
    SwatchModel model = swatch.model;
    const bool isRegistration = model == SwatchModel::Record;
    if (isRegistration || model == SwatchModel::Gray) {
      grays += !isRegistration;
      values = isRegistration ? std::array{1.0, 1.0, 1.0, 1.0} : std::array{0.0, 0.0, 0.0, 1.0 - values[0]};
      model = SwatchModel::Cmyk;
    }
    const std::string name = names.Make(swatch.name, "Colour");
    renamed += name != swatch.name;
    for (const Space &row : kSpaces) {
      if (row.model != model)
        continue;
      text.append(" <COLOR NAME=\"").append(EscapedXml(name));
      text.append("\" SPACE=\"").append(row.name).append("\"");
      for (std::size_t i = 0; i < row.count; ++i) {
        const Component &component = row.components[i];
        text.append(" ").append(component.name).append("=\"");
        text.append(ZelUtl::TextFromNumber(values[i] * component.scale, 6)).append("\"");
      }
    }
    text.append(" Spot=\"").append(swatch.spot ? "1" : "0");
    text.append("\" Register=\"").append(isRegistration ? "1" : "0").append("\"/>\n");
  }
  text.append("</").append(kRoot).append(">\n");
  if (grays > 0)
    written.notes.push_back(CountOf(grays, "gray colour") + " became black ink alone");
  if (renamed > 0)
    written.notes.push_back(CountOf(renamed, "colour was", "colours were") + " renamed, because names must differ");
  return written;
}

} // namespace ZelClr
