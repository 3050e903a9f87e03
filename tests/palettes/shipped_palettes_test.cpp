// The palettes that ship, by their files.
#include "zelclr/colour/palette_types.h"
#include "zelclr/palettes/fixed_palettes.h"
#include "zelclr/palettes/xml_color_palette.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/xml.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace ZelClr;
using namespace ZelUtils::literals;
using ZelUtl::WXmlDoc;
using ZelUtl::WXmlNode;
namespace fs = std::filesystem;

namespace {

const fs::path kData = ZELCLR_DATA;
constexpr auto kDefaultRgbPalette = "{40750EA5-A410-4F1A-A82D-147EB03E947B}"_guid;

struct Colour
{
  std::string space, name, resource, tints;
  std::vector<double> values;
};

struct Shipped
{
  std::string path; // below the palettes folder
  std::string bytes;
  WXmlDoc document;
  std::vector<Colour> colours;

  WXmlNode Root() const { return document.Root(); }
};

std::string Attribute(const WXmlNode &node, std::string_view name)
{
  return ZelUtl::Utf8FromWide(node.Attribute(name).value_or(L""));
}

std::vector<double> Values(const std::string &tints)
{
  std::vector<double> values;
  std::istringstream text(tints);
  for (std::string value; std::getline(text, value, ',');)
    values.push_back(std::stod(value));
  return values;
}

Colour ColourFrom(const WXmlNode &node)
{
  const auto tints = Attribute(node, "tints");
  return {Attribute(node, "cs"), Attribute(node, "name"), Attribute(node, "resid"), tints, Values(tints)};
}

std::string ReadAll(const fs::path &path)
{
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Shipped> LoadAll()
{
  const fs::path folder = kData / "color" / "Palettes";
  std::vector<Shipped> palettes;
  for (const auto &entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file())
      continue;
    const std::string path = entry.path().lexically_relative(folder).generic_string();
    std::string bytes = ReadAll(entry.path()), reason;
    auto document = WXmlDoc::FromBytes(bytes, reason);
    if (!document) {
      ADD_FAILURE() << path << ": " << reason;
      continue;
    }
    std::vector<Colour> colours;
    for (const WXmlNode &node : document->Root().SelectNodes("./colors/page/color"))
      colours.push_back(ColourFrom(node));
    palettes.push_back({path, std::move(bytes), *document, std::move(colours)});
  }
  return palettes;
}

const std::vector<Shipped> &All()
{
  static const std::vector<Shipped> palettes = LoadAll();
  return palettes;
}

const Shipped &Palette(std::string_view path)
{
  const auto palette = std::find_if(All().begin(), All().end(), [&](const auto &p) { return p.path == path; });
  if (palette == All().end())
    throw std::runtime_error("not shipped: " + std::string(path));
  return *palette;
}

bool IsOwnersBook(std::string_view path)
{
  return path.find("/PANTONE/") != path.npos || path.starts_with("Spot/HKS/") || path.starts_with("Spot/Roland/") ||
         (path.starts_with("Spot/") && path.find('/', 5) == path.npos) || path.ends_with("/OnyxClrRefLib.xml") ||
         path.ends_with("/trumatch.xml");
}

/// The twins of Misc, Nature, People and Things.
bool IsTheme(std::string_view path)
{
  const auto folder = path.substr(0, path.rfind('/'));
  const auto name = folder.substr(folder.rfind('/') + 1);
  return (name == "Misc" || name == "Nature" || name == "People" || name == "Things") &&
         !path.ends_with("/blkbody.xml");
}

double Lightness(const Colour &colour)
{
  const auto &v = colour.values;
  if (colour.space == "RGB")
    return 0.3 * v[0] + 0.59 * v[1] + 0.11 * v[2];
  return (1 - 0.97 * v[3]) * (1 - 0.3 * v[0] - 0.59 * v[1] - 0.11 * v[2]); // full black still shows inks below it
}

} // namespace

TEST(ShippedPalettes, AreTheRowsThatNoOwnerSells)
{
  std::set<std::string> expected = {"defrgb.xml"}, found;
  for (const auto &row : FixedPalettes()) {
    if (!IsOwnersBook(row.path))
      expected.emplace(row.path);
  }
  for (const auto &palette : All()) {
    found.insert(palette.path);
    const auto *row = FindFixedPalette(palette.path);
    const auto identifier = row ? row->identifier : kDefaultRgbPalette;
    EXPECT_EQ(Attribute(palette.Root(), "guid"), identifier.ToText()) << palette.path;
  }
  EXPECT_EQ(found, expected);
  EXPECT_FALSE(FindFixedPalette(kDefaultRgbPalette));
}

TEST(ShippedPalettes, AreAsTheLibraryWritesThem)
{
  for (const auto &palette : All()) {
    SCOPED_TRACE(palette.path);
    const auto root = palette.Root();
    EXPECT_EQ(root.Name(), "palette");
    EXPECT_NE(Attribute(root, "name"), "");
    const bool workingPalette = palette.path == "dynamic.xml" || palette.path == "defrgb.xml";
    EXPECT_EQ(Attribute(root, "locked"), workingPalette ? "" : "true");

    WXmlColorPalette read;
    std::string reason;
    ASSERT_TRUE(read.LoadFromBytes(palette.bytes, reason)) << reason;
    EXPECT_EQ(read.Bytes(false), palette.bytes);
    ASSERT_EQ(read.GetColorCount(), palette.colours.size());
    for (std::size_t i = 0; i < read.GetColorCount(); ++i)
      EXPECT_FALSE(read.GetColorSpec(i).IsInvalid()) << palette.colours[i].name;

    const auto pages = root.SelectNodes("./colors/page");
    ASSERT_EQ(pages.size(), 1u);
    const auto width = pages[0].Attribute("width");
    EXPECT_NE(width, L"8") << "the width that none stands for";
    const std::size_t columns = width ? std::stoul(*width) : 8;
    EXPECT_TRUE(columns >= 5 && columns <= 32) << columns;
    EXPECT_TRUE(columns <= palette.colours.size());
    if (IsTheme(palette.path)) {
      EXPECT_EQ(columns, 8u);
      EXPECT_TRUE(palette.colours.size() >= 24 && palette.colours.size() <= 60) << palette.colours.size();
      EXPECT_EQ(palette.colours.size() % columns, 0u);
    }
  }
}

TEST(ShippedPalettes, HaveNoColourAndNoNameTwice)
{
  for (const auto &palette : All()) {
    SCOPED_TRACE(palette.path);
    std::set<std::string> names, colours;
    for (const auto &colour : palette.colours) {
      EXPECT_NE(colour.name, "");
      EXPECT_TRUE(names.insert(colour.name).second) << colour.name;
      colours.insert(colour.space + " " + colour.tints);
    }
    // Gray in seven names is grey in seven others; aqua is cyan and fuchsia is magenta.
    const std::size_t synonyms = palette.path == "Process/SVGColor.xml" ? 9 : 0;
    EXPECT_EQ(colours.size(), palette.colours.size() - synonyms);
  }
}

TEST(ShippedPalettes, HoldWholeBytesAndPercentsWithinTheInkLimit)
{
  const std::map<std::string, std::pair<std::size_t, double>> models = {
    {"RGB", {3, 255}}, {"CMYK", {4, 100}}, {"Gray", {1, 100}}};
  for (const auto &palette : All()) {
    auto colours = palette.colours;
    for (const WXmlNode &node : palette.Root().SelectNodes("./colorspaces/cs/color"))
      colours.push_back(ColourFrom(node));
    for (const auto &colour : colours) {
      SCOPED_TRACE(palette.path + ": " + colour.name + " " + colour.tints);
      const auto model = models.find(colour.space);
      if (model == models.end()) {
        EXPECT_EQ(colour.tints, "1") << "a full ink";
        continue;
      }
      const auto [channels, whole] = model->second;
      ASSERT_EQ(colour.values.size(), channels);
      double sum = 0;
      for (const double value : colour.values) {
        EXPECT_TRUE(value >= 0 && value <= 1);
        // Three places are as near as 0.1275 to a byte; a reader that rounds otherwise must find the same one.
        EXPECT_NEAR(value * whole, std::round(value * whole), 0.128);
        sum += value;
      }
      EXPECT_TRUE(colour.space != "CMYK" || sum <= 3.0001) << sum;
    }
  }
}

TEST(ShippedPalettes, ThemesAreRampsAndTheirTwinsAgree)
{
  std::size_t twins = 0;
  for (const auto &palette : All()) {
    if (!IsTheme(palette.path))
      continue;
    SCOPED_TRACE(palette.path);
    for (std::size_t i = 0; i < palette.colours.size(); ++i) {
      if (i % 8 != 0) {
        EXPECT_LT(Lightness(palette.colours[i]), Lightness(palette.colours[i - 1])) << palette.colours[i].name;
      }
    }
    auto twin = palette.path;
    const auto model = twin.find("/RGB/");
    if (model == twin.npos)
      continue;
    twin.replace(model, 5, "/CMYK/");
    twin[twin.rfind('/') + 1] = 'c';
    const auto &inks = Palette(twin);
    ASSERT_EQ(inks.colours.size(), palette.colours.size());
    for (std::size_t i = 0; i < inks.colours.size(); ++i) {
      EXPECT_EQ(inks.colours[i].name, palette.colours[i].name);
      EXPECT_EQ(inks.colours[i].space, "CMYK");
      EXPECT_EQ(palette.colours[i].space, "RGB");
    }
    ++twins;
  }
  EXPECT_EQ(twins, 49u);
}

TEST(ShippedPalettes, AreNamedInThreeLanguages)
{
  const std::map<std::string, std::size_t> localised = {
    {"Gray100.xml", 101},        {"dynamic.xml", 108},         {"defrgb.xml", 108},
    {"Process/rgbstd.xml", 104}, {"Process/SVGColor.xml", 16},
  };
  for (const auto &palette : All()) {
    SCOPED_TRACE(palette.path);
    std::map<std::string, std::string> plain = {
      {Attribute(palette.Root(), "resid"), Attribute(palette.Root(), "name")}};
    for (const auto &colour : palette.colours) {
      if (!colour.resource.empty()) {
        EXPECT_TRUE(plain.emplace(colour.resource, colour.name).second) << colour.resource;
      }
    }
    const auto expected = localised.find(palette.path);
    EXPECT_EQ(plain.size(), 1 + (expected == localised.end() ? 0 : expected->second));

    const auto resources = palette.Root().SelectNodes("./localization/resource");
    EXPECT_EQ(resources.size(), plain.size());
    for (const auto &resource : resources) {
      const auto id = Attribute(resource, "id");
      std::map<std::string, std::string> texts;
      for (const auto &text : resource.Children())
        texts[text.Name()] = ZelUtl::Utf8FromWide(text.Text());
      ASSERT_EQ(texts.size(), 3u) << id;
      EXPECT_EQ(texts["en"], plain[id]) << id;
      EXPECT_TRUE(!texts["de"].empty() && !texts["fr"].empty()) << id;
    }
  }
}

TEST(ShippedPalettes, CuttingInksAreTheSameInkInEachPalette)
{
  std::map<std::string, std::string> idOfInk;
  std::size_t palettes = 0;
  for (const auto &palette : All()) {
    const auto spaces = palette.Root().SelectNodes("./colorspaces/cs");
    EXPECT_EQ(!spaces.empty(), palette.path.starts_with("Spot/")) << palette.path;
    if (spaces.empty())
      continue;
    ++palettes;
    ASSERT_EQ(spaces.size(), palette.colours.size()) << palette.path;
    for (std::size_t i = 0; i < spaces.size(); ++i) {
      const auto name = Attribute(spaces[i], "name"), id = Attribute(spaces[i], "fixedID");
      EXPECT_EQ(palette.colours[i].space, name);
      EXPECT_EQ(palette.colours[i].name, name);
      EXPECT_FALSE(spaces[i].Attribute("process")) << "an ink of its own";
      EXPECT_EQ(idOfInk.emplace(name, id).first->second, id) << name;
      const auto looks = spaces[i].Children();
      ASSERT_EQ(looks.size(), 2u);
      EXPECT_EQ(Attribute(looks[0], "cs"), "CMYK");
      EXPECT_EQ(Attribute(looks[1], "cs"), "RGB");
    }
  }
  EXPECT_EQ(palettes, 5u);
  std::set<std::string> ids;
  for (const auto &[name, id] : idOfInk)
    EXPECT_TRUE(ids.insert(id).second) << name;
}

TEST(ShippedPalettes, ExactOnesAreExact)
{
  std::map<std::string, std::string> svg;
  for (const auto &colour : Palette("Process/SVGColor.xml").colours)
    svg[colour.name] = colour.tints;
  EXPECT_EQ(svg.size(), 148u);
  EXPECT_EQ(svg["rebeccapurple"], "0.4,0.2,0.6");
  EXPECT_EQ(svg["coral"], "1,0.498,0.314");
  EXPECT_EQ(svg["slategrey"], svg["slategray"]);
  EXPECT_EQ(svg["cyan"], svg["aqua"]);

  std::vector<std::string> lasers;
  for (const auto &colour : Palette("Process/UniversalLaserSystems.xml").colours)
    lasers.push_back(colour.tints);
  EXPECT_EQ(lasers,
            (std::vector<std::string>{"0,0,0", "1,0,0", "0,1,0", "1,1,0", "0,0,1", "1,0,1", "0,1,1", "1,0.4,0"}));

  std::set<std::string> webSafe;
  for (const auto &colour : Palette("Process/RGB/WebSafe.xml").colours)
    webSafe.insert(colour.tints);
  const char *levels[] = {"0", "0.2", "0.4", "0.6", "0.8", "1"};
  std::set<std::string> cube;
  for (const std::string red : levels)
    for (const std::string green : levels)
      for (const std::string blue : levels)
        cube.insert(red + "," + green + "," + blue);
  EXPECT_EQ(webSafe, cube);

  for (const char *full : {"system", "gray", "Uniform"})
    EXPECT_EQ(Palette("Process/RGB/256 Colors/" + std::string(full) + ".xml").colours.size(), 256u) << full;
}

TEST(ShippedPalettes, BlackBodiesTurnFromRedByWhiteToBlue)
{
  const auto &colours = Palette("Process/RGB/Misc/blkbody.xml").colours;
  EXPECT_EQ(colours.front().name, "1000 K");
  EXPECT_EQ(colours.back().name, "12000 K");
  for (std::size_t i = 1; i < colours.size(); ++i) {
    const auto &cooler = colours[i - 1].values, &hotter = colours[i].values;
    EXPECT_TRUE(hotter[0] <= cooler[0] && hotter[2] >= cooler[2]) << colours[i].name;
    EXPECT_EQ(*std::max_element(hotter.begin(), hotter.end()), 1) << colours[i].name;
  }
  const auto nearD65 = std::find_if(colours.begin(), colours.end(), [](const auto &c) { return c.name == "6500 K"; });
  ASSERT_NE(nearD65, colours.end());
  for (const double value : nearD65->values) // the locus passes D65 on the side of magenta
    EXPECT_NEAR(value, 1, 0.04);
}

TEST(ShippedPalettes, TheDefaultSpotPaletteIsNeverOneOfCuttingInks)
{
  std::string reason;
  const auto settings = WXmlDoc::FromBytes(ReadAll(kData / "config" / "ColorPaletteManager.xml"), reason);
  ASSERT_TRUE(settings) << reason;
  const auto node = settings->Root().SelectNode("/ColorPaletteManager/defaultSpotColorPalette");
  EXPECT_EQ(Attribute(node, "guid"), kPantonePaletteIdentifier.ToText());
}
