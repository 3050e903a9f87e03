// The XML palette: what is read and written, the value rules of every model, and edits with look-ups against a plain
// list.

#include "tests/palettes/support/palette_folders.h"
#include "tests/support/colours.h"
#include "zelclr/palettes/color_styles.h"
#include "zelclr/palettes/palette_color_values.h"
#include "zelclr/palettes/xml_color_palette.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/locale.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <type_traits>

using Palette = WXmlColorPalette;
using Spec = CLR_COLORSPEC;
namespace Model = ZelClr::ClrModel;
using namespace ZelUtils::literals;
using ZelClr::ColorFromPaletteValues;
using ZelClr::PaletteValuesFromColor;

namespace {

constexpr auto kGuid = "{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}"_guid;

Palette Read(const std::string &xml)
{
  Palette palette;
  std::string reason;
  if (!palette.LoadFromBytes(xml, reason))
    ADD_FAILURE() << reason << "\n" << xml;
  return palette;
}

WXmlColor Color(std::string name, std::string space, std::string tints = "1")
{
  WXmlColor color;
  color.name = std::move(name);
  color.colorSpace = std::move(space);
  color.tints = std::move(tints);
  return color;
}

/// In the middle of a document of one page.
std::string WithColors(const std::string &colors)
{
  return "<palette><colors><page>" + colors + "</page></colors></palette>";
}

} // namespace

// --- Values ----------------------------------------------------------------------------------------------------------

TEST(PaletteColorValues, AreThoseOfEachModel)
{
  const struct
  {
    unsigned model;
    const char *values;
    Spec color;
  } kRows[] = {
    {Model::Cmyk, "0.1,0.205,0.5,1", Spec::MakeCMYK(10, 21, 50, 100)},
    {Model::Cmyk255, "0,0.2,0.5,1", Spec::MakeCMYK255(0, 51, 128, 255)},
    {Model::Cmy255, "0.2,0.4,1", Spec::MakeCMY(51, 102, 255)},
    {Model::Rgb255, "0.2,0.4,1", Spec::MakeRGB(51, 102, 255)},
    {Model::Hsb, "0.5,0.2,1", Spec::MakeHSB(180, 51, 255)},
    {Model::Hls, "1,0.2,0.4", Spec::MakeHLS(360, 51, 102)},
    {Model::BlackWhite, "0.5", Spec::MakeBW(1)},
    {Model::BlackWhite, "0.49", Spec::MakeBW(0)},
    {Model::Gray255, "0.4", Spec::MakeGRAY(102)},
    {Model::Yiq255, "1,0.2,0.4", Spec::MakeYIQ255(255, 51, 102)},
    {Model::Lab, "1,0.5,0.5", Spec::MakeLAB(255, 0, 0)},
    {Model::Lab, "0,0,1", Spec::MakeLAB(0, -128, 127)},
    {Model::Hexachrome, "0,0.2,0.4,0.6,0.8,1", Spec::MakeHEX(0, 51, 102, 153, 204, 255)},
    {Model::Lab255, "1,0.5,0.2", Spec::MakeLAB255(255, 128, 51)},
    {Model::UserInks, "0.2,0.4,1,0.3", Spec::MakeUserInks(51, 102, 255, 30)},
    {Model::Rgb48, "0.2,0.00001,1", Spec::MakeRGB48(13107, 1, 65535)},
    {Model::Gray16, "0.5", Spec::MakeGRAY16(32768)},
    {Model::ScRgb, "-0.25,1.5,0.1", Spec::MakeSCRGB(-0.25f, 1.5f, 0.1f)},
    {Model::Xyz, "1,1,1", Spec()},
    {Model::Pantone, "1,1", Spec()},
    {Model::Spot, "1", Spec()},
    {Model::DeviceN, "1", Spec()},
    {0, "1", Spec()},
    {99, "1", Spec()},
  };
  for (const auto &row : kRows) {
    SCOPED_TRACE(std::to_string(row.model) + ": " + row.values);
    const Spec color = ColorFromPaletteValues(row.model, row.values);
    EXPECT_EQ(color, row.color);
    EXPECT_EQ(color.GetType(), row.color.GetType());
    EXPECT_EQ(ColorFromPaletteValues(row.model, PaletteValuesFromColor(color)), color);
    EXPECT_EQ(PaletteValuesFromColor(color).empty(), row.color.IsInvalid());
  }
}

TEST(PaletteColorValues, BadNumbersAreReadAsFarAsTheyGo)
{
  const struct
  {
    const char *values;
    Spec rgb;
  } kRows[] = {
    {"", Spec::MakeRGB(0, 0, 0)},
    {"1", Spec::MakeRGB(255, 0, 0)},
    {",1,", Spec::MakeRGB(0, 255, 0)},
    {"1,1,1,1,1", Spec::MakeRGB(255, 255, 255)},
    {" 1 ,\t+0.2,2e-1", Spec::MakeRGB(255, 51, 51)},
    {"2,-1,1.0000001", Spec::MakeRGB(255, 0, 255)},
    {"nan,inf,-inf", Spec::MakeRGB(0, 0, 0)},
    {"1e999,-1e999,1e-999", Spec::MakeRGB(255, 0, 0)},
    {"1e99999999999999999999,1e-99999999999999999999,0e999", Spec::MakeRGB(255, 0, 0)},
    {"0x1,one,0.2abc", Spec::MakeRGB(0, 0, 51)},
    {".2,1.,.", Spec::MakeRGB(51, 255, 0)},
    {"0.20000000000000000000000000000000000001,1..,--1", Spec::MakeRGB(51, 255, 0)},
  };
  for (const auto &row : kRows)
    EXPECT_EQ(ColorFromPaletteValues(Model::Rgb255, row.values), row.rgb) << row.values;
  const std::string zeros(400, '0');
  EXPECT_EQ(ColorFromPaletteValues(Model::Gray255, "1" + zeros), Spec::MakeGRAY(255));
  EXPECT_EQ(ColorFromPaletteValues(Model::Gray255, "0." + zeros + "1"), Spec::MakeGRAY(0));

  constexpr float kMost = std::numeric_limits<float>::max();
  EXPECT_EQ(ColorFromPaletteValues(Model::ScRgb, "1e99,-1e99,1e-99"), Spec::MakeSCRGB(kMost, -kMost, 0));
  const Spec odd = Spec::MakeSCRGB(std::nanf(""), std::numeric_limits<float>::infinity(), -kMost);
  EXPECT_EQ(ColorFromPaletteValues(Model::ScRgb, PaletteValuesFromColor(odd)), Spec::MakeSCRGB(0, kMost, -kMost));
}

TEST(PaletteColorValues, EveryByteComesBackFromTheShortestDecimals)
{
  for (int i = 0; i <= 65535; ++i) {
    const auto word = static_cast<std::uint16_t>(i);
    const auto byte = static_cast<std::uint8_t>(i % 256);
    const auto percent = static_cast<std::uint8_t>(i % 101);
    std::vector<Spec> colors = {Spec::MakeGRAY16(word), Spec::MakeRGB48(word, 0, 65535)};
    if (i < 512) { // all bytes; all degrees
      const auto hue = static_cast<std::int16_t>(i % 361);
      const auto a = static_cast<std::int8_t>(i % 256 - 128);
      for (const Spec &color :
           {Spec::MakeRGB(byte, 0, 1), Spec::MakeCMYK255(byte, 1, 2, 3), Spec::MakeCMYK(percent, 1, 2, 3),
            Spec::MakeCMYK100(byte, 0, 0, 0), Spec::MakeCMY(byte, 4, 5), Spec::MakeHSB(hue, byte, 1),
            Spec::MakeHLS(hue, byte, 1), Spec::MakeLAB(byte, a, a), Spec::MakeLAB255(byte, byte, 0),
            Spec::MakeYIQ255(byte, byte, 0), Spec::MakeHEX(byte, 1, 2, 3, 4, byte),
            Spec::MakeUserInks(byte, byte, 0, percent), Spec::MakeGRAY(byte)})
        colors.push_back(color);
    }
    for (const Spec &color : colors) {
      const std::string values = PaletteValuesFromColor(color);
      const Spec again = ColorFromPaletteValues(color.GetType(), values);
      ASSERT_EQ(tests::BytesOf(again, 8), tests::BytesOf(color, 8)) << values;
      ASSERT_EQ(again.GetType(), color.GetType());
    }
  }
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeRGB(51, 128, 254)), "0.2,0.5,0.996");
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeCMYK(0, 1, 50, 100)), "0,0.01,0.5,1");
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeGRAY16(1)), "0.00002");
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeReference(Spec::MakeGRAY(0))), "0");
  // What a component cannot have is its nearest end, a hue goes round.
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeCMYK(101, 255, 0, 0)), "1,1,0,0");
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeHSB(-90, 255, 0)), "0.75,1,0");
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeHSB(450, 255, 0)), "0.25,1,0");
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeBW(-7)), "0");
}

TEST(PaletteColorValues, DensitiesFollowWhenTheyAreNotFull)
{
  for (Spec color : {Spec::MakeREGCOLOR(), Spec::MakeHEX(1, 2, 3, 4, 5, 6), Spec::MakeRGB48(1, 2, 3)}) {
    const std::string full = PaletteValuesFromColor(color);
    color.SetDensity(40);
    EXPECT_EQ(PaletteValuesFromColor(color), full + ",0.4");
    EXPECT_EQ(ColorFromPaletteValues(color.GetType(), full + ",0.4"), color);
    EXPECT_EQ(ColorFromPaletteValues(color.GetType(), full).GetDensity(), 100);
  }
  EXPECT_EQ(PaletteValuesFromColor(Spec::MakeREGCOLOR()), "1,1,1,1");
}

TEST(PaletteColorValues, Kept_PercentagesOfCmyk100AreOnTheScaleOf255)
{
  EXPECT_EQ(ColorFromPaletteValues(Model::Cmyk100, "1,0.2,0,0"), Spec::MakeCMYK100(255, 51, 0, 0));
}

TEST(PaletteColorValues, StorableColorsComeBackFromTheirNames)
{
  const struct
  {
    Spec color, storable;
  } kRows[] = {
    {Spec::MakeCMYK(100, 50, 0, 0), Spec::MakeCMYK255(255, 128, 0, 0)},
    {Spec::MakeCMYK100(100, 50, 0, 0), Spec::MakeCMYK255(255, 128, 0, 0)},
    {Spec::MakeLAB255(10, 128, 255), Spec::MakeLAB(10, 0, 127)},
    {Spec::MakeRGBA(1, 2, 3, 4), Spec::MakeRGB(1, 2, 3)},
    {Spec::MakeBGRA(1, 2, 3, 4), Spec::MakeRGB(1, 2, 3)},
    {Spec::MakeReference(Spec::MakeGRAY(7)), Spec::MakeGRAY(7)},
    {Spec::MakeREGCOLOR(), Spec::MakeREGCOLOR()},
    {Spec::MakeSPOT(kGuid, 1, 100, nullptr), Spec()},
    {Spec::MakePANTONE(1, 100), Spec()},
    {Spec(), Spec()},
  };
  for (const auto &row : kRows) {
    const Spec storable = ZelClr::StorableColor(row.color);
    EXPECT_EQ(storable, row.storable);
    EXPECT_EQ(storable.GetType(), row.storable.GetType());
  }
  const SpotColorDefinition definition(L"", L"", Spec::MakeLAB(100, 5, -5));
  EXPECT_EQ(ZelClr::StorableColor(Spec::MakeSPOT(kGuid, 1, 100, &definition)), Spec::MakeLAB(100, 5, -5));
  for (const Spec &color : tests::NastyColours()) {
    const Spec storable = ZelClr::StorableColor(color);
    if (storable.IsInvalid())
      continue;
    EXPECT_TRUE(ZelClr::HasPaletteValues(storable.GetType()));
    const Palette palette =
      Read(WithColors("<color cs=\"" + std::string(ZelClr::SpaceNameFromModel(storable.GetType())) + "\" tints=\"" +
                      PaletteValuesFromColor(storable) + "\"/>"));
    EXPECT_EQ(palette.GetColorSpec(0).GetType(), storable.GetType());
  }
}

// --- Reading ---------------------------------------------------------------------------------------------------------

TEST(XmlColorPalette, ReadsWhatAFileStates)
{
  ZelLocale::SetLocale({"DE", "de-AT"});
  const Palette palette = Read(R"(<?xml version="1.0"?>
<palette guid="{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}" fixedID="12abc" name="Inks" resid="p" prefix="HKS " locked="true"
  maxColors="junk" future="ignored">
  <colorspaces>
    <cs name="Red" fixedID="7" version="2"><color cs="CMYK" tints="0,1,1,0"/><color cs="sRGB" tints="1,0,0"/></cs>
    <cs name="Mix" fixedID="8" process="true"><color cs="Nothing" tints="1"/><color cs="LAB" tints="1,0.5,0.5"/></cs>
    <cs name="Other" process="True"/>
  </colorspaces>
  <colors>
    <page width="4">
      <color cs="Red" name="Red" resid="c"/>
      <color cs="Red" name="Red 50 %" tints="0.5" originalPaletteGuid="{3CB1291E-9AE1-4B4A-8142-02E23EFBEFE9}"/>
    </page>
    <page width="9"><color cs="Mix"/><color cs="RGB" name="Blue" tints="0,0,1"/><color cs="Unknown" name="?"/></page>
    <page/>
  </colors>
  <localization>
    <resource id="p"><en>Inks</en><DE>Farben</DE></resource>
    <resource id="c"><fr>rouge</fr></resource>
  </localization>
</palette>)");
  ZelLocale::ResetLocale();
  const Palette::Header header{kGuid, 12, "Inks", "p", "HKS ", true, 0};
  EXPECT_EQ(palette.GetHeader(), header);
  EXPECT_EQ(palette.GetDisplayName(), "Farben");
  EXPECT_EQ(palette.GetColorDisplayName(0), "rouge") << "the only text";
  EXPECT_EQ(palette.GetColorDisplayName(1), "Red 50 %");
  EXPECT_EQ(palette.GetGridWidth(), 4);
  EXPECT_EQ(palette.GetPageCount(), 3);
  EXPECT_EQ(palette.GetPage(1), 0);
  EXPECT_EQ(palette.GetPage(3), 1);
  EXPECT_EQ(palette.GetIndexOnPage(3), 1);

  ASSERT_EQ(palette.GetColorCount(), 5u);
  const Spec spot = palette.GetColorSpec(1);
  EXPECT_EQ(spot.GetType(), Model::Spot);
  EXPECT_EQ(spot.GetPaletteGuid(), kGuid);
  EXPECT_EQ(spot.GetComponent<std::int16_t>(0), 7);
  EXPECT_EQ(spot.GetDensity(), 50);
  EXPECT_EQ(spot.GetSpotColorName(), L"Red");
  EXPECT_EQ(spot.GetSpotDefinition(), palette.GetColorSpec(0).GetSpotDefinition()) << "tints are one ink";
  EXPECT_EQ(spot.GetSpotDefinition()->GetContentString(), L"Red : Red : CMYK : 0 255 255 0 : RGB : 0 0 255");
  EXPECT_EQ(palette.GetColorSpec(2), Spec::MakeLAB(255, 0, 0));
  EXPECT_EQ(palette.GetColorSpec(3), Spec::MakeRGB(0, 0, 255));
  EXPECT_TRUE(palette.GetColorSpec(4).IsInvalid());
  EXPECT_EQ(palette.GetColor(1).originalPalette, "{3CB1291E-9AE1-4B4A-8142-02E23EFBEFE9}"_guid);
  EXPECT_EQ(palette.GetColor(2).tints, "1");

  EXPECT_EQ(palette.GetColorSpecInModel(1, Model::Rgb255), Spec::MakeRGB(255, 0, 0)) << "sRGB will do";
  EXPECT_EQ(palette.GetColorSpecInModel(1, Model::Cmyk255), Spec::MakeCMYK255(0, 255, 255, 0));
  EXPECT_TRUE(palette.GetColorSpecInModel(1, Model::Lab).IsInvalid());
  EXPECT_EQ(palette.GetColorSpecInModel(3, Model::Rgb255), Spec::MakeRGB(0, 0, 255));
  EXPECT_TRUE(palette.GetColorSpecInModel(3, Model::Cmyk255).IsInvalid());

  EXPECT_EQ(palette.GetColorID(1), 7);
  EXPECT_EQ(palette.GetColorID(3), -1);
  EXPECT_EQ(palette.GetTint(1), 0.5);
  EXPECT_EQ(palette.FindColorID(kGuid, 7), (std::vector<int>{0, 1}));
  EXPECT_EQ(palette.FindColorID(kGuid, -1), (std::vector<int>{3, 4}));
  EXPECT_TRUE(palette.FindColorID({}, 7).empty());
  EXPECT_EQ(palette.FindColorSpace("Mix"), 1);
  EXPECT_EQ(palette.FindColorSpaceOfID(8), 1);
  EXPECT_EQ(palette.FindColorSpace("mix"), -1);
  EXPECT_FALSE(palette.GetColorSpace(2).process) << "only \"true\" is true";
  EXPECT_EQ(palette.GetColorSpace(0).version, 2);
  EXPECT_TRUE(palette.HasModel(Model::Cmyk) && palette.HasModel(Model::Lab) && palette.HasModel(Model::Rgb255));
  EXPECT_FALSE(palette.HasModel(Model::Hexachrome) || palette.HasModel(Model::Invalid));
}

TEST(XmlColorPalette, NumbersAndFlagsAreForgiven)
{
  const struct
  {
    const char *attribute;
    int fixedID, width;
    bool locked;
  } kRows[] = {
    {"", -1, 8, false},
    {"locked=\"True\"", -1, 8, false},
    {"locked=\"1\"", -1, 8, false},
    {"locked=\"true\" fixedID=\"x\"", 0, 8, true},
    {"fixedID=\" +5 \"", 5, 8, false},
    {"fixedID=\"99999999999\"", std::numeric_limits<int>::max(), 8, false},
    {"fixedID=\"-99999999999\"", std::numeric_limits<int>::min(), 8, false},
    {"guid=\"nonsense\"", -1, 8, false},
  };
  for (const auto &row : kRows) {
    const Palette palette = Read(std::string("<palette ") + row.attribute + "/>");
    EXPECT_EQ(palette.GetHeader().fixedID, row.fixedID) << row.attribute;
    EXPECT_EQ(palette.GetHeader().locked, row.locked) << row.attribute;
    EXPECT_EQ(palette.GetGridWidth(), row.width);
    EXPECT_EQ(palette.GetPageCount(), 1);
    EXPECT_TRUE(palette.GetHeader().guid.IsNull());
  }
  const auto width = [](const std::string &pages) {
    return Read("<palette><colors>" + pages + "</colors></palette>").GetGridWidth();
  };
  EXPECT_EQ(width("<page/>"), 8);
  EXPECT_EQ(width("<page/><page width=\"5\"/>"), 1);
  EXPECT_EQ(width("<page width=\"5\"/><page/>"), 5);
  EXPECT_EQ(width("<page width=\"0\"/>"), 1);
  EXPECT_EQ(width("<page width=\"99999\"/>"), 10'000);
}

TEST(XmlColorPalette, ABadFileLeavesAnEmptyPaletteAndAReason)
{
  const std::string good = Read(WithColors("<color cs=\"RGB\"/>")).Bytes(false);
  std::vector<std::string> bad = {
    "",
    "<Palette/>",
    "<palette><color/></palette>",
    "<palette><colors><color/></colors></palette>",
    "<palette><colorspaces><color/></colorspaces></palette>",
    "<palette><colorspaces><cs><cs/></cs></colorspaces></palette>",
    "<palette><palette/></palette>",
    "<palette><localization><en/></localization></palette>",
    "<palette><localization><resource><en>a<b/></en></resource></localization></palette>",
    WithColors("<colour/>"),
    WithColors("<color cs=\"RGB\" cs=\"RGB\"/>"),
    "<!DOCTYPE palette [<!ENTITY a \"aaaa\">]><palette name=\"&a;\"/>",
    std::string(100'000, '<') + "a>",
  };
  std::string deep;
  for (int i = 0; i < 100'000; ++i)
    deep += "<color>";
  bad.push_back("<palette><colors><page>" + deep);
  std::string many;
  for (int i = 0; i <= 100'000; ++i)
    many += "<color/>";
  bad.push_back(WithColors(many));
  for (std::size_t size = 0; size + 1 < good.size(); ++size)
    bad.push_back(good.substr(0, size));

  Palette palette;
  for (const std::string &xml : bad) {
    std::string reason;
    ASSERT_TRUE(palette.LoadFromBytes(good, reason));
    EXPECT_FALSE(palette.LoadFromBytes(xml, reason)) << xml.substr(0, 200);
    EXPECT_NE(reason, "") << xml.substr(0, 200);
    EXPECT_EQ(palette.GetColorCount(), 0u);
    EXPECT_EQ(palette.GetHeader(), Palette::Header{});
  }
  std::string reason;
  EXPECT_FALSE(palette.LoadFromFile("/nowhere/at all.xml", false, reason));
  EXPECT_FALSE(palette.LoadFromBytes("<palette>\n<colours/></palette>", reason));
  EXPECT_EQ(reason, "line 2: <colours> where <colorspaces>, <colors> or <localization> belongs");
}

TEST(XmlColorPalette, ASchemaIsAskedForAndKeepsUnknownThingsOut)
{
  const tests::TemporaryFolder folder;
  const auto write = [&](const std::string &xml) {
    return folder.Write("palette.xml", tests::Bytes(xml.begin(), xml.end()));
  };
  const auto load = [](const std::string &path, bool validate) {
    std::string reason;
    return Palette().LoadFromFile(path, validate, reason);
  };
  const std::string shipped = ZelUtl::JoinPath(ZelUtl::INIGetColorDir(), "ColorPaletteSchema.xsd");

  Palette whole =
    Read("<palette guid=\"{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}\" name=\"n\" resid=\"r\" prefix=\"p\" "
         "fixedID=\"1\" locked=\"true\" maxColors=\"5\"><colorspaces><cs name=\"a\" fixedID=\"1\" version=\"2\" "
         "process=\"true\"><color cs=\"RGB\" tints=\"1\"/></cs></colorspaces><colors><page width=\"3\"><color "
         "cs=\"a\" name=\"n\" resid=\"r\" originalPaletteGuid=\"{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}\"/>"
         "</page></colors><localization><resource id=\"r\"><pt-BR>x</pt-BR></resource></localization>"
         "</palette>");
  EXPECT_TRUE(load(write(whole.Bytes(true)), true));
  EXPECT_TRUE(load(write(Palette().Bytes(true)), true));
  EXPECT_TRUE(load(write("<palette><localization/><colors/><colorspaces/></palette>"), true)) << "any order";
  for (const std::string &xml : {std::string("<palette future=\"1\"/>"), std::string("<palette guid=\"1\"/>"),
                                 WithColors("<color model=\"1\"/>"), WithColors("<color><color/></color>"),
                                 std::string("<palette locked=\"True\"/>")})
  {
    EXPECT_FALSE(load(write(xml), true)) << xml;
    EXPECT_TRUE(load(write(xml), false)) << xml;
  }

  ZelUtl::Folders folders = ZelUtl::GetFolders();
  folders.data = folder.Path("empty");
  ZelUtl::SetFolders(folders);
  const std::string good = write("<palette/>");
  EXPECT_FALSE(load(good, true)) << "no schema is installed";
  Palette::SetColorPaletteSchemaFallbackPath(ZelUtl::WideFromUtf8(shipped));
  EXPECT_TRUE(load(good, true));
  Palette::SetColorPaletteSchemaFallbackPath(L"");
  EXPECT_FALSE(load(good, true));
  ZelUtl::ResetFolders();
}

// --- Writing ---------------------------------------------------------------------------------------------------------

TEST(XmlColorPalette, WritesOnlyWhatIsNotTheDefault)
{
  EXPECT_EQ(Palette().Bytes(false), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                    "<palette guid=\"{00000000-0000-0000-0000-000000000000}\" name=\"\"/>\n");
  Palette palette;
  Palette::Header header;
  header.guid = kGuid;
  header.fixedID = 0;
  header.name = "A & B";
  header.resid = "r";
  header.prefix = "p";
  header.locked = true;
  header.maxColors = -2;
  palette.SetHeader(header);
  palette.AddColorSpace({"Ink", 0, -1, false, {{"RGB", " 1,0 ,junk", {}}}});
  palette.AddColorSpace({"Mix", 1, 0, true, {}});
  palette.SetGridWidth(8);
  palette.InsertColor(0, Color("", "Ink", ""));
  palette.InsertColor(1, Color("Two\n\x01", "RGB", "0.5"));
  palette.SetResources({{"r", {{"en", "Text"}, {"de", ""}}}});
  const std::string start = R"(<?xml version="1.0" encoding="UTF-8"?>
<palette guid="{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}" fixedID="0" name="A &amp; B" resid="r" prefix="p" locked="true" maxColors="-2">
  <colorspaces>
    <cs name="Ink">
      <color cs="RGB" tints=" 1,0 ,junk"/>
    </cs>
    <cs name="Mix" fixedID="0" version="1" process="true"/>
  </colorspaces>
  <colors>
)";
  const std::string end = R"(  </colors>
  <localization>
    <resource id="r">
      <en>Text</en>
      <de/>
    </resource>
  </localization>
</palette>
)";
  EXPECT_EQ(palette.Bytes(false), start +
                                    R"(    <page>
      <color cs="Ink" tints=""/>
      <color cs="RGB" name="Two&#10;)"
                                    "\xEF\xBF\xBD"
                                    R"(" tints="0.5"/>
    </page>
)" + end);
  palette.SetGridWidth(3);
  EXPECT_NE(palette.Bytes(false).find("<page width=\"3\">"), std::string::npos);
  EXPECT_EQ(Read(palette.Bytes(false)).GetGridWidth(), 3);
  palette.RemoveColor(1);
  palette.AddPage();
  palette.InsertColor(1, Color("", "RGB", "1"));
  EXPECT_EQ(palette.Bytes(false), start + R"(    <page>
      <color cs="Ink" tints=""/>
    </page>
    <page>
      <color cs="RGB" tints="1"/>
    </page>
)" + end);
}

TEST(XmlColorPalette, Kept_TheWidthOfSeveralPagesIsNotWritten)
{
  const Palette palette = Read("<palette><colors><page width=\"5\"><color cs=\"RGB\"/></page><page><color cs=\"RGB\"/>"
                               "</page></colors></palette>");
  EXPECT_EQ(palette.GetGridWidth(), 5);
  EXPECT_EQ(Read(palette.Bytes(false)).GetGridWidth(), 1);
}

// --- Styles ----------------------------------------------------------------------------------------------------------

namespace {

struct Styles : ZelClr::IColorStyles
{
  const Spec *FindColorStyle(std::wstring_view name) const override
  {
    const auto style = colors.find(std::wstring(name));
    return style == colors.end() ? nullptr : &style->second;
  }
  std::wstring NameOfColorStyle(const Spec &reference) const override
  {
    for (const auto &[name, color] : colors) {
      if (color.IsSameReference(reference))
        return name;
    }
    return {};
  }
  std::map<std::wstring, Spec> colors;
};

class StyledPalette : public tests::PaletteFolders
{
protected:
  StyledPalette()
  {
    host.styled = &document;
    host.styles = &styles;
    styles.colors[L"Head"] = Spec::MakeReference(Spec::MakeRGB(1, 2, 3));
  }

  std::string Xml(const std::string &colors)
  {
    const auto guid = Manager().CreateDocumentPalette(document)->GetPaletteGuid();
    return "<palette guid=\"" + guid.ToText() + "\"><colors>" + colors + "</colors></palette>";
  }
  /// Each name with its page.
  static std::string Names(const Palette &palette)
  {
    std::string names;
    for (std::size_t i = 0; i < palette.GetColorCount(); ++i)
      names += palette.GetColor(i).name + std::to_string(palette.GetPage(i)) + " ";
    return names;
  }

  ZelUtl::Document document;
  Styles styles;
};

} // namespace

TEST_F(StyledPalette, KeepsColoursAsideWhoseStyleIsMissingUntilItExists)
{
  Palette palette = Read(Xml(R"(<page>
    <color cs="RGB" name="x" colorStyleRef="Later"/><color cs="RGB" name="a"/>
    <color cs="RGB" name="h" colorStyleRef="Head"/></page><page>
    <color cs="RGB" name="y" colorStyleRef="Never"/><color cs="RGB" name="z" colorStyleRef="Later"/></page>)"));
  EXPECT_EQ(Names(palette), "a0 h0 ");
  EXPECT_TRUE(palette.GetColorSpec(1).IsSameReference(styles.colors[L"Head"]));
  EXPECT_EQ(palette.FindColor(styles.colors[L"Head"]), 1);
  ASSERT_EQ(palette.GetUnresolvedStyles().size(), 3u);
  EXPECT_EQ(palette.GetUnresolvedStyles()[2].style, "Later");
  EXPECT_EQ(palette.GetUnresolvedStyles()[2].index, 2u);
  EXPECT_EQ(palette.GetUnresolvedStyles()[2].page, 1);

  const std::string written = palette.Bytes(true);
  EXPECT_EQ(Read(written).Bytes(true), written);
  EXPECT_EQ(Read(written).GetUnresolvedStyles().size(), 3u);
  EXPECT_EQ(Names(Read(palette.Bytes(false))), "x0 a0 h0 y1 z1 ") << "plain colours without references";

  EXPECT_EQ(palette.ResolveColorStyleReferences(), 0u);
  palette.InsertColor(1, Color("b", "RGB"));
  styles.colors[L"Later"] = Spec::MakeReference(Spec::MakeRGB(4, 5, 6));
  EXPECT_EQ(palette.ResolveColorStyleReferences(), 2u);
  EXPECT_EQ(Names(palette), "x0 a0 b0 h0 z1 ");
  EXPECT_EQ(palette.FindName("z"), 4);
  EXPECT_EQ(palette.FindColor(styles.colors[L"Later"]), 0);
  styles.colors[L"Never"] = Spec::MakeReference(Spec::MakeRGB(7, 8, 9));
  EXPECT_EQ(palette.ResolveColorStyleReferences(), 1u);
  EXPECT_EQ(Names(palette), "x0 a0 b0 h0 y1 z1 ");
  EXPECT_EQ(Names(Read(palette.Bytes(true))), Names(palette));
}

TEST_F(StyledPalette, Kept_ColoursOfStylesAreLeftOutOfPalettesWithoutADocument)
{
  const std::string xml = Xml(R"(<page><color cs="RGB" colorStyleRef="Head"/><color cs="RGB" name="a"/></page>)");
  host.styles = nullptr;
  const Palette palette = Read(xml);
  EXPECT_EQ(Names(palette), "a0 ");
  EXPECT_TRUE(palette.GetUnresolvedStyles().empty());
}

// --- Random palettes -------------------------------------------------------------------------------------------------

namespace {

/// From the whole range in every run, small ones too.
template <class Number>
Number Any(std::type_identity_t<Number> first, Number end)
{
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<Number>(first, end));
}

/// Few names, so that many are equal; odd ones.
const std::vector<std::string> kNames = {"", "Red", "red", "Red & <Blue>", "\"'\t\n\r", "\xC3\xA4\xE2\x82\xAC", " x "};
const std::vector<std::string> kSpaces = {"RGB", "CMYK", "Gray", "Ink", "Mix", "Tone", "Nowhere"};
const std::vector<std::string> kTints = {"1", "0.5", "0,1", "0.2,0.4,0.6,0.8", "junk", ""};

WXmlColor RandomColor()
{
  WXmlColor color = Color(*rc::gen::elementOf(kNames), *rc::gen::elementOf(kSpaces), *rc::gen::elementOf(kTints));
  if (Any(0, 4) == 0)
    color.resid = "resource";
  if (Any(0, 4) == 0)
    color.originalPalette = kGuid;
  return color;
}

WXmlColorSpace RandomSpace(const std::string &name)
{
  WXmlColorSpace space{name, Any(0, 3), Any(-1, 3), *rc::gen::arbitrary<bool>(), {}};
  for (int i = Any(0, 3); i > 0; --i)
    space.definitions.push_back({*rc::gen::elementOf(kSpaces), *rc::gen::elementOf(kTints), {}});
  return space;
}

bool IsSame(const WXmlColor &a, const WXmlColor &b)
{
  return a.name == b.name && a.resid == b.resid && a.colorSpace == b.colorSpace && a.tints == b.tints &&
         a.originalPalette == b.originalPalette;
}

/// The palette as a plain list: each colour with its page.
struct PlainList
{
  std::vector<WXmlColor> colors;
  std::vector<int> pages;
  int pageCount = 1;

  void Insert(std::size_t index, const WXmlColor &color)
  {
    const int page = index == colors.size() ? pageCount - 1 : pages[index == 0 ? 0 : index - 1];
    colors.insert(colors.begin() + static_cast<std::ptrdiff_t>(index), color);
    pages.insert(pages.begin() + static_cast<std::ptrdiff_t>(index), page);
  }
  void Remove(std::size_t index)
  {
    const int page = pages[index];
    colors.erase(colors.begin() + static_cast<std::ptrdiff_t>(index));
    pages.erase(pages.begin() + static_cast<std::ptrdiff_t>(index));
    if (pageCount == 1 || std::find(pages.begin(), pages.end(), page) != pages.end())
      return;
    --pageCount;
    for (int &later : pages)
      later -= later > page;
  }
  template <class T>
  static void Reorder(std::vector<T> &items, const std::vector<std::size_t> &order)
  {
    std::vector<T> reordered;
    for (const std::size_t index : order)
      reordered.push_back(items[index]);
    items = reordered;
  }
};

/// Every look-up against a scan.
void CheckAgainst(const PlainList &list, const Palette &palette)
{
  RC_ASSERT(palette.GetColorCount() == list.colors.size());
  RC_ASSERT(palette.GetPageCount() == list.pageCount);
  const auto first = [&](auto holds) {
    for (std::size_t i = 0; i < list.colors.size(); ++i) {
      if (holds(i))
        return static_cast<int>(i);
    }
    return -1;
  };
  for (const std::string &name : kNames)
    RC_ASSERT(palette.FindName(name) == first([&](std::size_t i) { return list.colors[i].name == name; }));
  for (std::size_t i = 0; i < list.colors.size(); ++i) {
    RC_ASSERT(IsSame(palette.GetColor(i), list.colors[i]));
    RC_ASSERT(palette.GetPage(i) == list.pages[i]);
    const Spec spec = palette.GetColorSpec(i);
    RC_ASSERT(palette.FindColor(spec) == first([&](std::size_t j) { return palette.GetColorSpec(j) == spec; }));
    for (const std::string &name : {kNames[0], list.colors[i].name}) {
      RC_ASSERT(palette.FindColor(spec, name) ==
                first([&](std::size_t j) { return palette.GetColorSpec(j) == spec && list.colors[j].name == name; }));
    }
  }
  for (int id = -1; id < 4; ++id) {
    std::vector<int> indices;
    for (std::size_t i = 0; i < list.colors.size(); ++i) {
      const int space = palette.FindColorSpace(list.colors[i].colorSpace);
      if ((space < 0 ? -1 : palette.GetColorSpace(static_cast<std::size_t>(space)).fixedID) == id)
        indices.push_back(static_cast<int>(i));
    }
    RC_ASSERT(palette.FindColorID(palette.GetHeader().guid, id) == indices);
    int ofID = -1;
    for (std::size_t s = palette.GetColorSpaceCount(); s-- > 0;)
      ofID = palette.GetColorSpace(s).fixedID == id ? static_cast<int>(s) : ofID;
    RC_ASSERT(palette.FindColorSpaceOfID(id) == ofID);
  }
}

} // namespace

TEST(XmlColorPalette, EditsKeepTheIndicesAsAScanFindsThem)
{
  EXPECT_TRUE(rc::check([] {
    PlainList list;
    Palette palette;
    const int steps = Any(0, 60);
    for (int step = 0; step < steps; ++step) {
      const std::size_t count = list.colors.size();
      const auto index = [](std::size_t end) { return Any(0, end); };
      switch (Any(0, 12)) {
      case 0: {
        const std::size_t at = index(count + 1);
        std::vector<WXmlColor> colors;
        for (int i = Any(0, 30); i > 0; --i)
          colors.push_back(RandomColor());
        for (std::size_t i = 0; i < colors.size(); ++i)
          list.Insert(at + i, colors[i]);
        palette.InsertColors(at, colors);
        break;
      }
      case 1:
        if (count > 0) {
          const std::size_t at = index(count);
          list.colors[at] = RandomColor();
          palette.ReplaceColor(at, list.colors[at]);
        }
        break;
      case 2:
        if (count > 0) {
          const std::size_t at = index(count);
          list.Remove(at);
          palette.RemoveColor(at);
        }
        break;
      case 3:
        if (count > 0) {
          const std::size_t from = index(count), to = index(count);
          std::vector<std::size_t> order(count);
          std::iota(order.begin(), order.end(), 0u);
          order.erase(order.begin() + static_cast<std::ptrdiff_t>(from));
          order.insert(order.begin() + static_cast<std::ptrdiff_t>(to), from);
          PlainList::Reorder(list.colors, order);
          palette.MoveColor(from, to);
        }
        break;
      case 4: {
        std::vector<std::size_t> order(count);
        std::iota(order.rbegin(), order.rend(), 0u);
        PlainList::Reorder(list.colors, order);
        palette.Reorder(order);
        break;
      }
      case 5:
        ++list.pageCount;
        palette.AddPage();
        break;
      case 6: {
        const std::string name = *rc::gen::elementOf(kSpaces);
        if (name == "Ink" || name == "Mix" || name == "Tone")
          palette.AddColorSpace(RandomSpace(name));
        break;
      }
      case 7:
        if (palette.GetColorSpaceCount() > 0) {
          const std::size_t at = index(palette.GetColorSpaceCount());
          const std::string name = *rc::gen::elementOf(kSpaces);
          const std::string old = palette.GetColorSpace(at).name;
          const bool wasFirst = palette.FindColorSpace(old) == static_cast<int>(at);
          const bool isFree =
            name == old || (palette.FindColorSpace(name) < 0 && ZelClr::ModelFromSpaceName(name) == 0);
          RC_ASSERT(palette.ReplaceColorSpace(at, RandomSpace(name)) == isFree);
          for (WXmlColor &color : list.colors) {
            if (isFree && wasFirst && color.colorSpace == old)
              color.colorSpace = name;
          }
        }
        break;
      case 8:
        palette.RemoveUnusedColorSpaces();
        break;
      case 9: {
        Palette::Header header;
        header.guid = *rc::gen::arbitrary<bool>() ? kGuid : ZelUtils::Guid{};
        palette.SetHeader(header);
        break;
      }
      case 10: {
        const Palette copy = palette;
        palette = copy;
        break;
      }
      default:
        CheckAgainst(list, palette);
        break;
      }
    }
    CheckAgainst(list, palette);
    palette.FlattenPages();
    list.pages.assign(list.colors.size(), 0);
    list.pageCount = 1;
    CheckAgainst(list, palette);
  }));
}

TEST(XmlColorPalette, SavingAndLoadingIsTheIdentity)
{
  EXPECT_TRUE(rc::check([] {
    Palette palette;
    Palette::Header header{kGuid,
                           Any(-1, 3),
                           *rc::gen::elementOf(kNames),
                           *rc::gen::elementOf(kNames),
                           *rc::gen::elementOf(kNames),
                           *rc::gen::arbitrary<bool>(),
                           Any(-1, 3)};
    palette.SetHeader(header);
    for (const char *const name : {"Ink", "Mix", "Ink"}) {
      if (*rc::gen::arbitrary<bool>())
        palette.AddColorSpace(RandomSpace(name));
    }
    for (int i = Any(0, 20); i > 0; --i) {
      if (Any(0, 8) == 0 && palette.GetColorCount() > 0 &&
          palette.GetPage(palette.GetColorCount() - 1) == palette.GetPageCount() - 1 && i > 1)
        palette.AddPage();
      palette.InsertColor(palette.GetColorCount(), RandomColor());
    }
    palette.SetGridWidth(palette.GetPageCount() > 1 ? 1 : palette.GetColorCount() > 0 ? Any(1, 12) : 8);
    std::vector<Palette::Resource> resources;
    for (int i = Any(0, 3); i > 0; --i)
      resources.push_back({*rc::gen::elementOf(kNames), {{"en", *rc::gen::elementOf(kNames)}, {"de", ""}}});
    palette.SetResources(resources);

    const std::string bytes = palette.Bytes(true);
    Palette again;
    std::string reason;
    RC_ASSERT(again.LoadFromBytes(bytes, reason));
    RC_ASSERT(again.Bytes(true) == bytes);
    RC_ASSERT(again.LoadFromString(palette.Text(true), reason));
    RC_ASSERT(again.GetHeader() == header);
    RC_ASSERT(again.GetResources() == resources);
    RC_ASSERT(again.GetGridWidth() == palette.GetGridWidth());
    RC_ASSERT(again.GetPageCount() == palette.GetPageCount());
    RC_ASSERT(again.GetColorCount() == palette.GetColorCount());
    for (std::size_t i = 0; i < palette.GetColorCount(); ++i) {
      RC_ASSERT(IsSame(again.GetColor(i), palette.GetColor(i)));
      RC_ASSERT(again.GetPage(i) == palette.GetPage(i));
      RC_ASSERT(again.GetColorSpec(i) == palette.GetColorSpec(i));
      RC_ASSERT(again.GetColorID(i) == palette.GetColorID(i));
    }
  }));
}
