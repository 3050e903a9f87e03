#include "zelclr/colour/colour_names.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/palettes/formats/colour_list.h"
#include "zelclr/palettes/formats/gpl_palette.h"
#include "zelclr/palettes/formats/palette_reading.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ZelClr;

namespace {

struct Refused
{
  const char *text;
  std::size_t line;
};

std::string Listing(const ReadPalette &palette)
{
  std::string text = palette.name + "|";
  for (const NamedColour &entry : palette.colours)
    text += std::to_string(entry.line) + ":" + TextFromColorSpec(entry.colour) + "=" + entry.name + "|";
  return text;
}

std::string Read(std::string_view bytes)
{
  ReadProblem problem;
  const auto palette = ReadPaletteText(bytes, problem);
  return palette ? Listing(*palette) : "line " + std::to_string(problem.line) + ": " + problem.reason;
}

void ExpectRefused(const std::vector<Refused> &cases)
{
  for (const Refused &refused : cases) {
    ReadProblem problem;
    EXPECT_FALSE(ReadPaletteText(refused.text, problem)) << refused.text;
    EXPECT_EQ(problem.line, refused.line) << refused.text << ": " << problem.reason;
    EXPECT_FALSE(problem.reason.empty()) << refused.text;
  }
}

} // namespace

TEST(GplPalette, ReadsBothVersionsAndEveryLineEnd)
{
  EXPECT_EQ(Read("GIMP Palette\nName: Brand \nColumns: 4\n#\n255 128   0\tHouse orange\n0 0 0\n"),
            "Brand|5:RGB255(255,128,0)=House orange|6:RGB255(0,0,0)=|");
  EXPECT_EQ(Read("\xEF\xBB\xBFGIMP Palette\r\n# old\r\n  1   2   3 a\r\n"), "|3:RGB255(1,2,3)=a|");
  EXPECT_EQ(Read("GIMP Palette\r9 8 7 Gr\xC3\xBCn"), "|2:RGB255(9,8,7)=Gr\xC3\xBCn|");
  // Once colours have begun, what looks like a header is a broken colour.
  EXPECT_EQ(Read("GIMP Palette\n1 2 3\nName: late\n").substr(0, 7), "line 3:");
}

TEST(GplPalette, RefusesWhatIsNotOneWithTheLine)
{
  ExpectRefused({{"GIMP Palette\n256 0 0 too much\n", 2},
                 {"GIMP Palette\n\n1 2\n", 3},
                 {"GIMP Palette\n-1 2 3\n", 2},
                 {"GIMP Palette\n1.5 2 3\n", 2},
                 {"GIMP Palette\n1,2,3\n", 2},
                 {"GIMP Palette\nColumns: many\n1 2 3\n", 2},
                 {"GIMP Palette\nColumns: 99999999999\n1 2 3\n", 2},
                 {"GIMP Palette\n# nothing\n", 0},
                 {"GIMP palette\n1 2 3\n", 1}});
}

TEST(ColourList, ReadsColoursOfEveryKind)
{
  EXPECT_EQ(
    Read("// ours\n# another comment\n\n#f80\n#FF8000 Orange (warm)\nCMYK100(0, 50, 100, 0)  House orange\ntomato\n"
         "SPOT(17,100)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2} Ink\n"),
    "|4:RGB255(255,136,0)=|5:RGB255(255,128,0)=Orange (warm)|6:CMYK100(0,50,100,0)=House orange|"
    "7:RGB255(255,99,71)=tomato|8:SPOT(17,100)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}=Ink|");
}

TEST(ColourList, RefusesJunkWithTheLine)
{
  ExpectRefused({{"", 0},
                 {"\n\n", 0},
                 {"#ff8000\nblub\n", 2},
                 {"red rebel\n", 1},
                 {"#ff80\n", 1},
                 {"#ff8000Orange\n", 1},
                 {"CMYK100(0,150,0,0) out of range\n", 1},
                 {"CMYK(101,0,0,0)\n", 1},
                 {"HSB(361,0,0)\n", 1},
                 {"RGB255(1,2,3\n", 1},
                 {"RGB255(1,2,256)\n", 1},
                 {"RGB255(nan,2,3)\n", 1},
                 {"LAB(50,1e999,0)\n", 1},
                 {"\xFF\xFE#\n", 0}});
  ReadProblem problem;
  EXPECT_FALSE(ReadPaletteText(std::string_view("#000000\n\0", 9), problem));
}

TEST(ColourList, RefusesMoreColoursThanAnyPaletteHas)
{
  std::string many;
  for (int i = 0; i < 100000; ++i)
    many += "#000000\n";
  ReadProblem problem;
  EXPECT_TRUE(ReadPaletteText(many, problem));
  EXPECT_FALSE(ReadPaletteText("GIMP Palette\n1 2 3 " + std::string(5000, 'n'), problem));
  EXPECT_EQ(problem.line, 2u);
  EXPECT_FALSE(ReadPaletteText(many + "#000000\n", problem));
  EXPECT_EQ(problem.line, 100001u);
}

TEST(ColourNames, AreSortedAndFoundInAnyCase)
{
  const auto names = SvgColourNames();
  EXPECT_EQ(names.size(), 147u);
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), [](auto &a, auto &b) { return a.name < b.name; }));
  for (const NamedRgb &row : names)
    EXPECT_EQ(ColorSpecFromName(row.name), row.Colour()) << row.name;
  EXPECT_EQ(ColorSpecFromName("ReD"), CLR_COLORSPEC::MakeRGB(255, 0, 0));
  EXPECT_EQ(ColorSpecFromName("cornflowerblue"), CLR_COLORSPEC::MakeRGB(100, 149, 237));
  EXPECT_FALSE(ColorSpecFromName(""));
  EXPECT_FALSE(ColorSpecFromName("zzz"));
}
