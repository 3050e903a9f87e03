// The table of formats, and how a file finds its row.
#include "tests/support/swatch_listing.h"
#include "zelclr/colour/colour_names.h"

#include <algorithm>

using namespace ZelClr;

TEST(PaletteFormats, FilesFindTheirFormatByContentAndNamesForWriting)
{
  const struct
  {
    const char *fileName, *key;
  } kRows[] = {{"brand.gpl", "gpl"},
               {"BRAND.GPL", "gpl"},
               {"folder.gpl/brand.pal", "jasc"},
               {"a.ase", "ase"},
               {"a.tokens.json", "tokens"},
               {"a.json", "tokens"},
               {"a.soc", "soc"},
               {"a.xml", "scribus"},
               {"a.css", "css"},
               {"a.svg", "svg"},
               {"list.txt", "list"},
               {".gpl", ""},
               {"gpl", ""},
               {"a.acb", ""},
               {"a.icc", ""},
               {"a.png", ""}};
  for (const auto &row : kRows) {
    const PaletteFormat *const format = PaletteFormatOfFileName(row.fileName);
    EXPECT_EQ(format == nullptr ? "" : format->key, row.key) << row.fileName;
    EXPECT_TRUE(format == nullptr || FindPaletteFormat(row.key) == format) << row.fileName;
  }
  EXPECT_EQ(FindPaletteFormat("GPL"), nullptr);
  EXPECT_EQ(FindPaletteFormat(""), nullptr);

  const std::string utf16 = std::string("\xFF\xFE<\0S\0C\0R\0I\0B\0U\0S\0C\0O\0L\0O\0R\0S\0/\0>\0", 34);
  const struct
  {
    std::string content;
    const char *key;
  } kContents[] = {{"GIMP Palette\n", "gpl"},
                   {"\xEF\xBB\xBFJASC-PAL\r\n", "jasc"},
                   {"<?xml version=\"1.0\"?>\n<!-- ours --><SCRIBUSCOLORS Name=\"a\">", "scribus"},
                   {utf16, "scribus"},
                   {"<office:color-table xmlns:office=\"o\">", "soc"},
                   {" {\"a\": {\"$value\": 1}}", "tokens"},
                   {"<svg/>", "list"},
                   {"{}", "list"},
                   {"#ff8000", "list"},
                   {"\xFF\xFE#\n", ""},
                   {std::string("#000000\n\0", 9), ""},
                   {"", ""}};
  for (const auto &row : kContents) {
    const PaletteFormat *const format = RecognisePaletteFormat(row.content);
    EXPECT_EQ(format == nullptr ? "" : format->key, row.key) << row.content;
  }
}

TEST(PaletteFormats, RefuseWhatIsNoPaletteAndMoreColoursThanAnyHas)
{
  EXPECT_EQ(tests::Read(""), "0: no colours");
  EXPECT_EQ(tests::Read("\n \n"), "0: no colours");
  EXPECT_EQ(tests::Read("GIMP Palette\n# nothing\n"), "0: no colours");
  EXPECT_EQ(tests::Read("<SCRIBUSCOLORS/>"), "0: no colours");
  EXPECT_EQ(tests::Read("\x89PNG\r\n\x1A\n\xFF"), "0: no palette of a known format");

  // Each format at its bound, and one beyond.
  const struct
  {
    std::string head, colour, tail;
  } kRows[] = {
    {"", "#000000\n", ""},
    {"GIMP Palette\n", "1 2 3\n", ""},
    {"<t:color-table xmlns:t='t' xmlns:d='d'>", "<d:color d:name='' d:color='#123456'/>", "</t:color-table>"},
    {"<SCRIBUSCOLORS>", "<COLOR RGB='#123456'/>", "</SCRIBUSCOLORS>"}};
  for (const auto &row : kRows) {
    std::string many = row.head;
    for (std::size_t i = 0; i < kMostSwatches; ++i)
      many += row.colour;
    ReadProblem problem;
    EXPECT_TRUE(ReadSwatchBook(many + row.tail, problem)) << row.head << problem.reason;
    EXPECT_FALSE(ReadSwatchBook(many + row.colour + row.tail, problem)) << row.head;
    EXPECT_EQ(problem.reason, "more than 100000 colours") << row.head;
  }
  std::string tokens = "{";
  for (std::size_t i = 0; i <= kMostSwatches; ++i)
    tokens += "\"" + std::to_string(i) + "\":{\"$value\":\"#123\"},";
  EXPECT_EQ(tests::Read(tokens + "\"last\":{}}"), "0: more than 100000 tokens");
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
