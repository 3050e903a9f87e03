// Text palettes: what their documentation shows is read and written, what is not is refused with its line, and what was
// written is read again.
#include "tests/support/swatch_listing.h"

#include <random>

using namespace ZelClr;
using namespace tests;

namespace {

struct Row
{
  std::string content;
  const char *result;
};

void ExpectEach(std::initializer_list<Row> rows)
{
  for (const Row &row : rows)
    EXPECT_EQ(Read(row.content), row.result) << row.content;
}

/// A design token of a colour space.
std::string Token(const std::string &space, const std::string &components)
{
  return R"({"a": {"$type": "color", "$value": {"colorSpace": ")" + space + R"(", "components": [)" + components +
         "]}}}";
}

} // namespace

TEST(GplPalette, ReadsEveryVersionAndLineEnd)
{
  ExpectEach({
    {"GIMP Palette\nName: Brand \nColumns: 4\n#\n255 51   0\tHouse orange\n0 0 0\n",
     "Brand| House orange=RGB(1,0.2,0) =RGB(0,0,0) "},
    {"\xEF\xBB\xBFGIMP Palette\r\n# old\r\n  0   0   51 a\r\n", "a=RGB(0,0,0.2) "},
    {"GIMP Palette\r0 0 0 Gr\xC3\xBCn", "Gr\xC3\xBCn=RGB(0,0,0) "},
    {"GIMP Palette\nChannels: RGBA\n255 0 0 255 a\n0 0 0 51 b\n",
     "a=RGB(1,0,0) b=RGB(0,0,0) #1 colour lost its transparency "},
    {"GIMP Palette\nName: a\nChannels: RGB\n1 2 3 4 5\n", "a| 4 5=RGB(0.004,0.008,0.012) "},
    // Once colours have begun, what looks like a header is a broken colour.
    {"GIMP Palette\n1 2 3\nName: late\n", "3: \"Name:\" is no component from 0 to 255"},
    {"GIMP Palette\n256 0 0 too much\n", "2: \"256\" is no component from 0 to 255"},
    {"GIMP Palette\n\n1 2\n", "3: \"\" is no component from 0 to 255"},
    {"GIMP Palette\n-1 2 3\n", "2: \"-1\" is no component from 0 to 255"},
    {"GIMP Palette\n1.5 2 3\n", "2: \"1.5\" is no component from 0 to 255"},
    {"GIMP Palette\nColumns: many\n1 2 3\n", "2: the number of columns must be from 0 to 256"},
    {"GIMP Palette\nColumns: 99999999999\n1 2 3\n", "2: the number of columns must be from 0 to 256"},
    {"GIMP Palette\nChannels: CMYK\n1 2 3\n", "2: the channels must be RGB or RGBA"},
    {std::string("GIMP Palette\n1 2 3 a\0", 22), "0: not a text file in UTF-8"},
    {"GIMP Palette\n1 2 3 Gr\xFCn", "0: not a text file in UTF-8"},
    {"GIMP Palette\n1 2 3 " + std::string(5000, 'n'), "2: a line of more than 4096 bytes"},
  });
  ReadProblem problem;
  const auto book =
    ReadSwatchBook("GIMP Palette\nName: a\nColumns: 4\n# ours\n#\n# since 1990\n1 2 3\n# end\n", problem);
  ASSERT_TRUE(book);
  EXPECT_EQ(book->description, "ours\n\nsince 1990");
  EXPECT_EQ(book->columns, 4u);
  EXPECT_EQ(book->swatches[0].line, 7u);
  EXPECT_EQ(Write("gpl", *book), "GIMP Palette\nName: a\nColumns: 4\n# ours\n#\n# since 1990\n  1   2   3\n");
}

TEST(ColourList, ReadsColoursOfEveryKind)
{
  ExpectEach({
    {"// ours\n# another comment\n\n#f30\n#FF3300 Orange (warm)\nCMYK100(0, 50, 100, 0)  House orange\ntomato\n"
     "SPOT(17,50)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2} Ink\nHSB(0,100,100)\nREGCOLOR(100,100,100,100)\n",
     "=RGB(1,0.2,0) Orange (warm)=RGB(1,0.2,0) House orange=CMYK(0,0.5,1,0) tomato=RGB(1,0.388,0.278) "
     "!Ink=SPOT(17,50)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}*0.5 =RGB(1,0,0) =REGCOLOR(100,100,100,100) "},
    {"#ff8000\nblub\n", "2: \"blub\" is neither #rrggbb nor a model with its components in parentheses"},
    {"red rebel\n", "1: \"red rebel\" is no colour; a colour name stands alone"},
  });
  // The reason is colour_text's own.
  for (const char *const line :
       {"#ff80", "#ff8000Orange", "CMYK100(0,150,0,0) out of range", "CMYK(101,0,0,0)", "HSB(361,0,0)", "RGB255(1,2,3",
        "RGB255(1,2,256)", "RGB255(nan,2,3)", "LAB(50,1e999,0)"})
    EXPECT_EQ(Read("\n" + std::string(line) + "\n").substr(0, 3), "2: ") << line;
}

TEST(ColourList, RecordsAreWrittenAsTheyWere)
{
  const std::string list = "RGB255(255,51,0) a\nCMYK100(0,50,100,0)\nCMYK(0,50,100,0)\nHSB(0,100,100) b\nRGB48(1,2,3)\n"
                           "SCRGB(1.5,-1,0)\nGRAY16(7)\nLAB(100,0,60)\nHEXA(0,50,100,0,0,0)\n"
                           "RGB255(1,2,3,@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2})\n"
                           "SPOT(17,50)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2} Ink\nUSERINK(1,2,3,50)\n"
                           "IDXUSRINK(9,50)@{00000000-0000-0000-0000-000000000000}\n";
  ReadProblem problem;
  const auto book = ReadSwatchBook(list, problem);
  ASSERT_TRUE(book) << problem.line << problem.reason;
  EXPECT_EQ(Write("list", *book), list);
}

TEST(JascPalette, ReadsWhatItAnnounces)
{
  ExpectEach({
    {"JASC-PAL\r\n0100\r\n2\r\n255 51 0\r\n0 0 0\r\n", "=RGB(1,0.2,0) =RGB(0,0,0) "},
    {"JASC-PAL\n0100\n2\n255 51 0 255\n0 0 0 51\n\n", "=RGB(1,0.2,0) =RGB(0,0,0) #1 colour lost its transparency "},
    {"JASC-PAL\n0200\n1\n1 2 3\n", "2: the version must be 0100"},
    {"JASC-PAL\n0100\nmany\n", "3: the number of colours is missing"},
    {"JASC-PAL\n0100\n99999999999999999999\n", "3: the number of colours is missing"},
    {"JASC-PAL\n0100\n100001\n1 2 3\n", "3: more than 100000 colours"},
    {"JASC-PAL\n0100\n1\n1 2\n", "4: a colour has three components"},
    {"JASC-PAL\n0100\n1\n1 2 3 4 5\n", "4: a colour has three components"},
    {"JASC-PAL\n0100\n1\n1 2 256\n", "4: \"256\" is no component from 0 to 255"},
    {"JASC-PAL\n0100\n1\n1 2 3\n4 5 6\n", "5: more colours than announced"},
  });
}

TEST(XmlPalettes, ReadColoursOfBothKindsOfFiles)
{
  ExpectEach({
    {R"(<?xml version="1.0" encoding="UTF-8"?>
<SCRIBUSCOLORS Name="Brand">
  <COLOR Spot="0" Register="0" NAME="Orange" RGB="#ff3300"/>
  <COLOR NAME="House &amp; ink" CMYK="#003366ff" Spot="1" Register="0"/>
  <COLOR NAME="Sky" SPACE="CMYK" C="60.5" M="20" Y="0" K="100"/>
  <COLOR NAME="Sea" SPACE="RGB" R="0" G="127.5" B="255"/>
  <COLOR NAME="Sand" SPACE="Lab" L="70.25" A="-128" B="127"/>
  <COLOR NAME="All" CMYK="#ffffffff" Register="1"/>
  <Gradient Name="g"><CSTOP/></Gradient>
</SCRIBUSCOLORS>)",
     "Brand| Orange=RGB(1,0.2,0) !House & ink=CMYK(0,0.2,0.4,1) Sky=CMYK(0.605,0.2,0,1) Sea=RGB(0,0.5,1) "
     "Sand=Lab(70.25,-128,127) All=REGCOLOR(100,100,100,100) #1 element that is no colour was left out "},
    {"<SCRIBUSCOLORS>\n<COLOR NAME=\"a\" RGB=\"#ff33\"/></SCRIBUSCOLORS>", "2: \"#ff33\" is no RGB colour"},
    {"<SCRIBUSCOLORS>\n<COLOR NAME=\"a\" CMYK=\"#gg000000\"/></SCRIBUSCOLORS>", "2: \"#gg000000\" is no CMYK colour"},
    {"<SCRIBUSCOLORS><COLOR NAME=\"a\" SPACE=\"CMYK\" C=\"0\" M=\"101\" Y=\"0\" K=\"0\"/></SCRIBUSCOLORS>",
     "1: the colour \"a\" has no M of 0 to 100"},
    {"<SCRIBUSCOLORS><COLOR NAME=\"a\" SPACE=\"Lab\" L=\"nan\" A=\"0\" B=\"0\"/></SCRIBUSCOLORS>",
     "1: the colour \"a\" has no L of 0 to 100"},
    {"<SCRIBUSCOLORS><COLOR NAME=\"a\" SPACE=\"HSV\" H=\"0\"/></SCRIBUSCOLORS>",
     "1: the colour \"a\" has no components"},
    {R"(<ooo:color-table xmlns:ooo="http://openoffice.org/2004/office" xmlns:draw="d">
  <draw:color draw:name="Orange" draw:color="#ff3300"/><draw:color draw:color="#000000"/><draw:hatch/>
</ooo:color-table>)",
     "Orange=RGB(1,0.2,0) =RGB(0,0,0) #1 element that is no colour was left out "},
    {"<office:color-table xmlns:office=\"o\" xmlns:draw=\"d\">\n\n<draw:color draw:name=\"a\"/></office:color-table>",
     "3: \"\" is no colour"},
  });
}

TEST(DesignTokens, ReadEverySpaceOfStyleSheets)
{
  ExpectEach({
    {Token("srgb", "1, 0.5, 0"), "a=RGB(1,0.5,0) "},
    {Token("srgb", "\"none\", -0.25, 1.25"), "a=RGB(0,-0.25,1.25) "},
    {Token("srgb-linear", "1, 0.214041, 0"), "a=RGB(1,0.5,0) "},
    {Token("hsl", "-330, 100, 50"), "a=RGB(1,0.5,0) "},
    {Token("hwb", "210, 20, 40"), "a=RGB(0.2,0.4,0.6) "},
    {Token("hwb", "0, 60, 90"), "a=RGB(0.4,0.4,0.4) "},
    {Token("lab", "50, -160, 20.5"), "a=Lab(50,-160,20.5) "},
    {Token("lch", "50, 100, 90"), "a=Lab(50,0,100) "},
    // The published sRGB red and the P3 primary: CSS Color 4, 10.2; its red in each space is the same colour.
    {Token("oklab", "0.6279554, 0.2248631, 0.1258463"), "a=RGB(1,0,0) "},
    {Token("oklch", "0.6279554, 0.2576833, 29.2338851"), "a=RGB(1,0,0) "},
    {Token("display-p3", "1, 0, 0"), "a=RGB(1.093,-0.227,-0.15) "},
    {Token("display-p3", "0.917488, 0.200287, 0.138561"), "a=RGB(1,0,0) "},
    {Token("a98-rgb", "0.858592, 0, 0"), "a=RGB(1,0,0) "},
    {Token("prophoto-rgb", "0.702252, 0.275719, 0.103547"), "a=RGB(1,0,0) "},
    {Token("rec2020", "0.791977, 0.230976, 0.073761"), "a=RGB(1,0,0) "},
    {Token("xyz-d50", "0.9642, 1, 0.8249"), "a=Lab(100,0,0) "},
    {Token("xyz", "0, 0, 0"), "a=Lab(0,0,0) "},
    {Token("srgb", "5, 0, 0"), "0: token \"a\": a component is out of the range of srgb"},
    {Token("prophoto-rgb", "4, -3, -3"), "0: token \"a\": a component is out of the range of prophoto-rgb"},
    {Token("lab", "101, 0, 0"), "0: token \"a\": a component is out of the range of lab"},
    {Token("cmyk", "1, 0, 0"), "0: token \"a\": the colour space \"cmyk\" is not known"},
    {Token("srgb", "1, 0"), "0: token \"a\": a colour has three components"},
    {Token("srgb", "1, 0, true"), "0: token \"a\": a component is no number"},
    {Token("srgb", "1, 0, 1e999"), "1: not JSON here"},
  });
}

TEST(DesignTokens, XyzOfD65IsAdapted)
{
  ReadProblem problem;
  const auto book = ReadSwatchBook(Token("xyz-d65", "0.4123908, 0.212639, 0.0193308"), problem);
  ASSERT_TRUE(book) << problem.reason;
  // CSS Color 4 has 54.2917, 80.8125, 69.8851 for this red; its white has digits more than that of ICC profiles.
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_NEAR(book->swatches[0].values[i], (std::array{54.2917, 80.8125, 69.8851}[i]), 0.01);
}

TEST(DesignTokens, ReadGroupsTypesAndAliases)
{
  ExpectEach({
    {R"({"$description": "ours", "brand": {"$type": "color", "$extensions": {"x": [1]},
          "dark": {"blue": {"$value": "#000033"}}, "orange": {"$value": "#f30"}, "$root": {"$value": "#000"},
          "space": {"$type": "dimension", "$value": {"value": 4, "unit": "px"}}},
        "accent": {"$type": "color", "$value": "{brand.orange}"}, "far": {"$value": "{accent}"},
        "duration": {"$type": "duration", "long": {"$value": "{nowhere}"}}})",
     "accent=RGB(1,0.2,0) far=RGB(1,0.2,0) [brand] orange=RGB(1,0.2,0) brand=RGB(0,0,0) [brand.dark] blue=RGB(0,0,0.2) "
     "#2 tokens that are no colours were left out "},
    {R"({"a": {"$value": "#ff330033"}, "b": {"$value": {"colorSpace": "srgb", "components": [0,0,0], "alpha": 0.5}}})",
     "a=RGB(1,0.2,0) b=RGB(0,0,0) #2 colours lost their transparency "},
    {R"({"a": {"$value": "{b}"}, "b": {"$value": "{c}"}, "c": {"$value": "{b}"}})",
     "0: token \"a\": its alias leads nowhere or back to itself"},
    {R"({"a": {"$value": "{a}"}})", "0: token \"a\": its alias leads nowhere or back to itself"},
    {R"({"g": {"a": {"$type": "color", "$value": "{g}"}}})",
     "0: token \"g.a\": its alias leads nowhere or back to itself"},
    {R"({"a": {"$type": "color", "$value": "red"}})", "0: token \"a\": \"red\" is no colour"},
    {R"({"a": {"$value": "#ff33001"}})", "0: token \"a\": \"#ff33001\" is no colour"},
    {R"({"a": {"$value": {"colorSpace": "srgb", "components": [0,0,0], "alpha": 2}}})",
     "0: token \"a\": alpha must be from 0 to 1"},
    {R"({"a": {"$value": "#fff"}, "b": 1})", "0: \"b\" is neither a token nor a group"},
    {"{\"a\": {\"$value\": \"#fff\"},\n\"b\": }", "2: not JSON here"},
    {R"({"a": {"$value": "#fff"}, "a": {"$value": "#000"}})", "0: \"a\" stands twice in one object"},
    {R"({"a": {"$type": "number", "$value": 1}})", "0: no colours"},
    {"{\"a\": {\"$value\": " + std::string(1000, '['), "0: nested too deeply"},
  });
  // A chain of many aliases, and one of many tokens to one end, cost no more than their length.
  std::string chain = "{";
  for (int i = 0; i < 50'000; ++i)
    chain += "\"" + std::to_string(i) + "\":{\"$value\":\"{" + std::to_string(i + 1) + "}\"},";
  ReadProblem problem;
  const auto book = ReadSwatchBook(chain + "\"50000\":{\"$value\":\"#ff3300\"}}", problem);
  ASSERT_TRUE(book) << problem.reason;
  EXPECT_EQ(book->swatches.front().record, CLR_COLORSPEC::MakeRGB(255, 51, 0));
}

TEST(TextFormats, PrefixesAreRefusedButWhereLinesAreWholeByThemselves)
{
  for (const char *const whole :
       {"JASC-PAL\n0100\n2\n255 51 0\n0 0 0", "<SCRIBUSCOLORS><COLOR NAME=\"a\" RGB=\"#123456\"/></SCRIBUSCOLORS>",
        "<a:color-table xmlns:a=\"a\"><a:color a:color=\"#123456\"/></a:color-table>",
        "{\"a\": {\"$value\": \"#123456\"}}"})
  {
    const std::string_view bytes(whole);
    const PaletteFormat *const format = RecognisePaletteFormat(bytes);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      ReadProblem problem;
      // The last number of a JASC palette may have had further digits; that cannot be seen.
      EXPECT_FALSE(format->read(bytes.substr(0, length), problem)) << bytes.substr(0, length);
      EXPECT_FALSE(problem.reason.empty());
    }
    ReadProblem problem;
    EXPECT_TRUE(format->read(bytes, problem)) << whole << problem.reason;
  }
}

TEST(TextFormats, WriteTheirBytes)
{
  SwatchBook book =
    BookOf({RgbSwatch("House orange", 1, 0.2, 0), GraySwatch("Gr\xC3\xBC*/<n>", 0.2), LabSwatch("", 70, -5.25, 25),
            Spot(CmykSwatch("Ink", 0, 0.5, 1, 0)), RgbSwatch("house.orange", 1.25, 0.123456789, 0)},
           {{"Warm", 0}, {"Warm.Deep", 1}, {"Warm", 4}});
  book.name = "Brand & co";
  book.description = "ours\nsince";
  book.columns = 2;
  // What changes model is another test's.
  book.swatches.erase(book.swatches.begin() + 2, book.swatches.begin() + 4);
  book.groups.back().first = 2;

  EXPECT_EQ(Write("gpl", book),
            "GIMP Palette\nName: Brand & co\nColumns: 2\n# ours\n# since\n255  51   0\tHouse orange\n"
            " 51  51  51\tGr\xC3\xBC*/<n>\n255  31   0\thouse.orange\n"
            "#1 gray colour became RGB\n#1 colour was clipped to the range of the model\n"
            "#3 groups were left out\n");
  EXPECT_EQ(Write("jasc", book), "JASC-PAL\r\n0100\r\n3\r\n255 51 0\r\n51 51 51\r\n255 31 0\r\n"
                                 "#1 gray colour became RGB\n#1 colour was clipped to the range of the model\n"
                                 "#the name of the palette was left out\n#the description was left out\n"
                                 "#the number of columns was left out\n#3 groups were left out\n"
                                 "#3 names of colours were left out\n");
  EXPECT_EQ(Write("css", book),
            "@charset \"UTF-8\";\n/* Brand & co */\n:root {\n  /* Warm */\n  --house-orange: #ff3300;\n"
            "  /* Warm.Deep */\n  --gr\xC3\xBC-n: #333333;\n  /* Warm */\n"
            "  --house-orange-2: color(srgb 1.25 0.123457 0);\n}\n"
            "#1 gray colour became RGB\n#the description was left out\n"
            "#the number of columns was left out\n#3 names were changed to one that CSS can have\n");
  EXPECT_EQ(Write("tokens", book), R"({
  "$description": "ours\nsince",
  "Warm": {
    "House orange": { "$type": "color", "$value": { "colorSpace": "srgb", "components": [1, 0.2, 0], "hex": "#ff3300" } },
    "Deep": {
      "Grü*/<n>": { "$type": "color", "$value": { "colorSpace": "srgb", "components": [0.2, 0.2, 0.2], "hex": "#333333" } }
    }
  },
  "Warm-2": {
    "house_orange": { "$type": "color", "$value": { "colorSpace": "srgb", "components": [1.25, 0.123457, 0], "hex": "#ff1f00" } }
  }
}
#1 gray colour became RGB
#the name of the palette was left out
#the number of columns was left out
#2 names were changed to one that design tokens can have
)");
  EXPECT_EQ(Write("soc", BookOf({RgbSwatch("a<\"b\">\n\x01", 1, 0.2, 0)})),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ooo:color-table"
            " xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\""
            " xmlns:draw=\"urn:oasis:names:tc:opendocument:xmlns:drawing:1.0\""
            " xmlns:ooo=\"http://openoffice.org/2004/office\">\n"
            "  <draw:color draw:name=\"a&lt;&quot;b&quot;&gt;&#10;\xEF\xBF\xBD\" draw:color=\"#ff3300\"/>\n"
            "</ooo:color-table>\n");
  const SwatchBook inks =
    BookOf({Spot(CmykSwatch("Ink", 0, 0.505, 1, 0)), GraySwatch("Ink", 0.25), LabSwatch("", 70, -5.25, 25),
            RecordSwatch("All", CLR_COLORSPEC::MakeREGCOLOR()),
            RecordSwatch("Bright", CLR_COLORSPEC::MakeHSB(0, 255, 255)), Spot(CmykSwatch("Half", 0, 1, 0.5, 0), 0.5)});
  EXPECT_EQ(Write("scribus", inks),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SCRIBUSCOLORS Name=\"\">\n"
            " <COLOR NAME=\"Ink\" SPACE=\"CMYK\" C=\"0\" M=\"50.5\" Y=\"100\" K=\"0\" Spot=\"1\" Register=\"0\"/>\n"
            " <COLOR NAME=\"Ink-2\" SPACE=\"CMYK\" C=\"0\" M=\"0\" Y=\"0\" K=\"75\" Spot=\"0\" Register=\"0\"/>\n"
            " <COLOR NAME=\"Colour\" SPACE=\"Lab\" L=\"70\" A=\"-5.25\" B=\"25\" Spot=\"0\" Register=\"0\"/>\n"
            " <COLOR NAME=\"All\" SPACE=\"CMYK\" C=\"100\" M=\"100\" Y=\"100\" K=\"100\" Spot=\"0\" Register=\"1\"/>\n"
            " <COLOR NAME=\"Bright\" SPACE=\"RGB\" R=\"255\" G=\"0\" B=\"0\" Spot=\"0\" Register=\"0\"/>\n"
            " <COLOR NAME=\"Half\" SPACE=\"CMYK\" C=\"0\" M=\"50\" Y=\"25\" K=\"0\" Spot=\"0\" Register=\"0\"/>\n"
            "</SCRIBUSCOLORS>\n"
            "#1 tint of a spot colour became a process colour\n#1 gray colour became black ink alone\n"
            "#2 colours were renamed, because names must differ\n");
  EXPECT_EQ(Write("list", inks), "CMYK255(0,129,255,0) Ink\nGRAY16(16384) Ink\nLAB255(179,123,153)\n"
                                 "REGCOLOR(100,100,100,100) All\nHSB(0,100,100) Bright\nCMYK100(0,50,25,0) Half\n"
                                 "#2 spot colours became process colours\n#3 colours were rounded\n");
}

TEST(TextFormats, TheSheetShowsEverySwatchWithItsName)
{
  SwatchBook book = BookOf(
    {RgbSwatch("Orange & <co>", 1, 0.2, 0), RgbSwatch("", 0, 0, 0), RgbSwatch("a name that is too long", 1, 1, 1)},
    {{"Warm", 2}});
  book.columns = 2;
  const std::string sheet = Write("svg", book);
  EXPECT_EQ(sheet.substr(sheet.find("<svg"), sheet.find("<g>") - sheet.find("<svg")),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"216\" height=\"308\" "
            "viewBox=\"0 0 216 308\" font-family=\"sans-serif\" font-size=\"11\">\n"
            "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n");
  for (const char *const piece :
       {"<title>Orange &amp; &lt;co&gt;</title><rect x=\"16\" y=\"16\" width=\"88\" height=\"88\" fill=\"#ff3300\"",
        "<rect x=\"112\" y=\"16\" width=\"88\" height=\"88\" fill=\"#000000\"", ">Warm</text>\n<g>",
        "<rect x=\"16\" y=\"172\" width=\"88\" height=\"88\" fill=\"#ffffff\"", ">a name that is \xE2\x80\xA6</text>"})
    EXPECT_NE(sheet.find(piece), std::string::npos) << piece << "\n" << sheet;
}

TEST(TextFormats, WhatWasWrittenIsReadAgain)
{
  const struct
  {
    const char *key;
    bool isRgbOnly, hasLab, hasNames, hasGroups, hasSpots;
    double tolerance; // a step of its numbers, of 1
  } kFormats[] = {
    {"gpl", true, false, true, false, false, 0.5 / 255}, {"jasc", true, false, false, false, false, 0.5 / 255},
    {"soc", true, false, true, false, false, 0.5 / 255}, {"scribus", false, true, true, false, true, 1e-6},
    {"tokens", true, true, true, true, false, 1e-6},     {"list", false, true, true, false, false, 0.5 / 255}};
  std::mt19937 random(11);
  const auto number = [&random](double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  };
  for (const auto &format : kFormats) {
    for (int round = 0; round < 40; ++round) {
      SwatchBook book;
      for (std::size_t i = random() % 200 + 1; i-- > 0;) {
        const std::string name = "Gr\xC3\xBC<n> \"" + std::to_string(i) + "\"";
        if (format.hasGroups && random() % 20 == 0)
          book.groups.push_back({"g" + std::to_string(random() % 3) + "." + std::to_string(i), book.swatches.size()});
        const auto kind = random() % 3;
        if (kind == 0 && format.hasLab)
          book.swatches.push_back(LabSwatch(name, number(0, 100), number(-128, 127), number(-128, 127)));
        else if (kind == 1 && !format.isRgbOnly)
          book.swatches.push_back(CmykSwatch(name, number(0, 1), number(0, 1), number(0, 1), number(0, 1)));
        else
          book.swatches.push_back(RgbSwatch(name, number(0, 1), number(0, 1), number(0, 1)));
        book.swatches.back().spot = format.hasSpots && random() % 3 == 0;
      }
      std::string reason;
      const auto written = FindPaletteFormat(format.key)->write(book, reason);
      ASSERT_TRUE(written) << format.key << reason;
      ReadProblem problem;
      const auto read = ReadSwatchBook(written->bytes, problem);
      ASSERT_TRUE(read) << format.key << ": " << problem.reason;
      ASSERT_EQ(read->swatches.size(), book.swatches.size()) << format.key;
      for (std::size_t i = 0; i < book.swatches.size(); ++i) {
        const Swatch &wanted = book.swatches[i];
        const Swatch &found = read->swatches[i];
        EXPECT_TRUE(found.model == wanted.model && found.spot == wanted.spot) << format.key;
        EXPECT_EQ(found.name, format.hasNames ? wanted.name : "") << format.key;
        for (std::size_t c = 0; c < 4; ++c)
          EXPECT_NEAR(found.values[c], wanted.values[c],
                      format.tolerance * (wanted.model == SwatchModel::Lab ? 256.0 : 1.01))
            << format.key;
      }
      ASSERT_EQ(read->groups.size(), book.groups.size()) << format.key;
      for (std::size_t i = 0; i < book.groups.size(); ++i)
        EXPECT_EQ(read->groups[i].first, book.groups[i].first) << format.key;
      // From then on nothing changes.
      const auto again = FindPaletteFormat(format.key)->write(*read, reason);
      EXPECT_TRUE(again->bytes == written->bytes) << format.key;
    }
  }
}
