// Binary palettes: their bytes as the documentation has them, what is refused, and that what is written is read again.
#include "tests/support/hex.h"
#include "tests/support/icc_profile.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/zip_archive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace ZelClr;
using namespace tests;

namespace {

/// "name=Model(numbers)", "!" before a spot colour, "[group]" before its first swatch, "#note" at the end.
std::string Listing(const SwatchBook &book)
{
  constexpr std::pair<const char *, int> kModels[] = {{"RGB", 3}, {"CMYK", 4}, {"Gray", 1}, {"Lab", 3}, {"Record", 0}};
  std::string text;
  std::size_t group = 0;
  for (std::size_t i = 0; i <= book.swatches.size(); ++i) {
    for (; group < book.groups.size() && book.groups[group].first == i; ++group)
      text += "[" + book.groups[group].name + "] ";
    if (i == book.swatches.size())
      break;
    const Swatch &swatch = book.swatches[i];
    const auto [model, count] = kModels[static_cast<std::size_t>(swatch.model)];
    text += (swatch.spot ? "!" : "") + swatch.name + "=" + model + "(";
    for (int c = 0; c < count; ++c)
      text += (c > 0 ? "," : "") + ZelUtl::TextFromNumber(swatch.values[static_cast<std::size_t>(c)], 3);
    text += ") ";
  }
  for (const std::string &note : book.notes)
    text += "#" + note + " ";
  return text;
}

/// The listing, or the reason.
std::string Read(std::string_view key, std::string_view bytes)
{
  const PaletteFormat &format = *FindPaletteFormat(key);
  ReadProblem problem;
  const auto book = format.read(bytes, problem);
  EXPECT_EQ(book.has_value(), problem.reason.empty()) << key;
  EXPECT_TRUE(!book || RecognisePaletteFormat(bytes) == &format) << key;
  return book ? Listing(*book) : problem.reason;
}

/// The notes, with the bytes beside them.
std::string Write(std::string_view key, const SwatchBook &book, std::string &bytes)
{
  std::string reason;
  const auto written = FindPaletteFormat(key)->write(book, reason);
  if (!written)
    return reason;
  bytes = written->bytes;
  std::string notes;
  for (const std::string &note : written->notes)
    notes += "#" + note + " ";
  return notes;
}

SwatchBook BookOf(std::vector<Swatch> swatches, std::vector<SwatchGroup> groups = {})
{
  SwatchBook book;
  book.swatches = std::move(swatches);
  book.groups = std::move(groups);
  return book;
}

Swatch Spot(Swatch swatch, double tint = 1.0)
{
  swatch.spot = true;
  swatch.tint = tint;
  return swatch;
}

/// A text of a colour book.
std::string Wide(std::string_view text)
{
  std::string bytes = Big(static_cast<std::uint32_t>(text.size()), 4);
  for (const char c : text)
    bytes += {'\0', c};
  return bytes;
}

std::string AcbBook(std::uint32_t space, const std::string &colours, std::uint32_t count,
                    const std::string &trailer = "")
{
  return Hex("'8BCB' 0001 0BB8") + Wide("$$$/colorbook/Test/title=Test^R Book") + Wide("\"$$$/p/prefix=TEST \"") +
         Wide("$$$/p/postfix") + Wide("Made by hand") + Big(count, 2) + Hex("0007 0003") + Big(space, 2) + colours +
         trailer;
}

const std::string kAcbInk = Wide("Red") + Hex("'000001' 80 C0 40");

std::string Kpl(const std::string &colourSet, const std::string &profiles = "<Profiles/>",
                const std::string &profile = "")
{
  const ZelUtl::ZipEntry entries[] = {
    {"mimetype", "application/x-krita-palette", false},
    {"colorset.xml", colourSet},
    {"profiles.xml", profiles},
    {"test.icc", profile},
  };
  std::string reason;
  return ZelUtl::WriteZip(entries, reason).value();
}

std::string KplEntry(const std::string &colour, const std::string &depth = "U16", const std::string &more = "")
{
  return "<ColorSetEntry name=\"n\" id=\"i\" bitdepth=\"" + depth + "\" spot=\"false\">" + colour + more +
         "</ColorSetEntry>";
}

std::string KplOf(const std::string &colour, const std::string &depth = "U16")
{
  return Kpl("<ColorSet name=\"N\" columns=\"4\">" + KplEntry(colour, depth) + "</ColorSet>");
}

std::string NamedColours(const std::string &connectionSpace, const std::string &coordinates, std::uint32_t count = 1,
                         std::uint32_t device = 0)
{
  const auto padded = [](std::string text) {
    text.resize(32);
    return text;
  };
  const std::string table = Hex("'ncl2' 00000000 00000000") + Big(count, 4) + Big(device, 4) + padded("Ink ") +
                            padded(" C") + padded("Red") + coordinates;
  const IccProfile profile{"nmcl",
                           "CMYK",
                           connectionSpace,
                           0x04300000,
                           {{"desc", MlucTag({{"enUS", u"Inks"}})}, {"ncl2", Bytes(table.begin(), table.end())}}};
  const Bytes bytes = profile.Build();
  return {bytes.begin(), bytes.end()};
}

const std::string kAse = Hex("'ASEF' 0001 0000 00000004"
                             "0001 00000018 0002 0052 0000 'RGB ' 3F800000 00000000 3E800000 0002"
                             "C001 00000006 0002 0047 0000"
                             "0001 00000020 0004 0049 006E 006B 0000 'CMYK' 00000000 3F000000 3F800000 00000000 0001"
                             "C002 00000000");

const std::string kAco1 = Hex("0001 0004 0000 FFFF 0000 3333 0000  0002 0000 FFFF CCCC FFFF"
                              "          0007 1388 FC18 0802 0000  0008 09C4 0000 0000 0000");
const std::string kAco2 = Hex("0002 0004 0000 FFFF 0000 3333 0000 00000002 0052 0000"
                              "          0002 0000 FFFF CCCC FFFF 00000002 00FC 0000"
                              "          0007 1388 FC18 0802 0000 00000003 D83C DFA8 0000"
                              "          0008 09C4 0000 0000 0000 00000001 0000");

const std::string kRiff = Hex("'RIFF' 18000000 'PAL data' 0C000000 0003 0200 FF008000 00FF0000");

std::string ActOf(const std::string &colours, const std::string &trailer)
{
  std::string bytes = colours;
  bytes.resize(768);
  return bytes + trailer;
}

struct Row
{
  const char *what;
  const char *key;
  std::string bytes;
  std::string listing; ///< of what is read; of what is refused, a piece of the reason
};

} // namespace

TEST(BinaryFormats, AreReadAsTheirDocumentationHasThem)
{
  const Row kRows[] = {
    {"groups and a spot colour", "ase", kAse, "R=RGB(1,0,0.25) [G] !Ink=CMYK(0,0.5,1,0) "},
    {"Lab, gray, what is global, and another block", "ase",
     Hex("'ASEF' 0001 0000 00000003 0001 00000016 0001 0000 'LAB ' 3F000000 C1200000 42FF0000 0000"
         "0001 0000000E 0001 0000 'Gray' 3F000000 0002  00FF 00000001 AA"),
     "=Lab(50,-10,127.5) =Gray(0.5) #1 global colour became a plain one #1 block of an unknown kind was left out "},
    {"a colour behind a group", "ase",
     Hex("'ASEF' 0001 0000 00000003 C001 00000006 0002 0047 0000 C002 00000000"
         "0001 0000000E 0001 0000 'Gray' 3F800000 0002"),
     "[G] [] =Gray(1) "},
    {"version 1 alone", "aco", kAco1, "=RGB(1,0,0.2) =CMYK(1,0,0.2,0) =Lab(50,-10,20.5) =Gray(0.25) "},
    {"version 2 alone", "aco", kAco2, "R=RGB(1,0,0.2) \u00FC=CMYK(1,0,0.2,0) \U0001F3A8=Lab(50,-10,20.5) =Gray(0.25) "},
    {"both versions", "aco", kAco1 + kAco2,
     "R=RGB(1,0,0.2) \u00FC=CMYK(1,0,0.2,0) \U0001F3A8=Lab(50,-10,20.5) =Gray(0.25) "},
    {"HSB, wide CMYK, groups behind", "aco",
     Hex("0001 0003 0001 5555 FFFF FFFF 0000  0001 D555 8000 FFFF 0000  0009 2710 0000 1388 0000 '8BIMphry'"),
     "=RGB(0,1,0) =RGB(1,0.5,1) =CMYK(1,0,0.5,0) #2 HSB colours became RGB "
     "#what stands behind the colours about their groups was left out "},
    {"a short table", "act", ActOf(Hex("FF8000 000033"), Hex("0002 0001")),
     "=RGB(1,0.502,0) =RGB(0,0,0.2) #colour 2 is no longer the transparent one "},
    {"a Lab book that does not say what it is", "acb", AcbBook(7, kAcbInk, 1), "!TEST Red=Lab(50.196,64,-64) "},
    {"spot colours in RGB", "acb", AcbBook(0, kAcbInk, 1, "spflspot"), "!TEST Red=RGB(0.502,0.753,0.251) "},
    {"process colours, one of them filling a page", "acb",
     AcbBook(2, Wide("") + Hex("'      ' 00000000") + Wide("Red") + Hex("'000001' FF CC 00 FF"), 2, "spflproc"),
     "TEST Red=CMYK(0,0.2,1,0) "},
    {"RIFF", "riff", kRiff, "=RGB(1,0,0.502) =RGB(0,1,0) "},
    {"RIFF with another, odd chunk", "riff",
     Hex("'RIFF' 1E000000 'PAL plth' 01000000 AA00 'data' 08000000 0003 0100 FF008000"), "=RGB(1,0,0.502) "},
    {"Lab of named colours", "icc", NamedColours("Lab ", Hex("7F80 7600 9480")), "!Ink Red C=Lab(50,-10,20.5) "},
    {"XYZ of named colours with device coordinates", "icc",
     NamedColours("XYZ ", Hex("7B6B 8000 6996 0000 FFFF FFFF 0000"), 1, 4),
     "!Ink Red C=Lab(100,0,0.001) #1 XYZ colour became Lab "
     "#the device coordinates of 1 colour were left out "},
    {"RGB like sRGB", "kpl", KplOf("<RGB r=\"1\" g=\"0.5\" b=\"0\" space=\"sRGB-elle-V2-srgbtrc.icc\"/>"),
     "n=RGB(1,0.5,0) "},
    {"RGB beyond white", "kpl", KplOf("<sRGB r=\"1.5\" g=\"-0.5\" b=\"0\"/>", "F32"), "n=RGB(1.5,-0.5,0) "},
    {"Lab of whole numbers", "kpl", KplOf("<Lab L=\"0.5\" a=\"0.25\" b=\"1\" space=\"\"/>", "U8"),
     "n=Lab(50,-64,127) "},
    {"Lab of floats", "kpl", KplOf("<Lab L=\"50\" a=\"-150.5\" b=\"1\" space=\"\"/>", "F32"), "n=Lab(50,-150.5,1) "},
    {"inks and their profile elsewhere", "kpl",
     KplOf("<CMYK c=\"1\" m=\"0.5\" y=\"0\" k=\"0\" space=\"Chemical proof\"/>"),
     "n=CMYK(1,0.5,0,0) #1 colour keeps its numbers, because their profile is not in the file "},
    {"gray", "kpl", KplOf("<Gray g=\"0.5\" space=\"\"/>"), "n=Gray(0.5) "},
    {"XYZ of floats", "kpl", KplOf("<XYZ x=\"0.9642\" y=\"1\" z=\"0.8249\"/>", "F32"),
     "n=Lab(100,0,0) #1 XYZ colour became Lab, or RGB where brighter than white "},
    {"YCbCr", "kpl", KplOf("<YCbCr Y=\"0.299\" Cb=\"0.331264\" Cr=\"1\"/>"),
     "n=RGB(1,0,0) #1 YCbCr colour became RGB "},
    {"cells out of order, a group, a gap", "kpl",
     Kpl("<Colorset columns=\"2\">" + KplEntry("<Gray g=\"1\"/>", "U8", "<Position row=\"1\" column=\"0\"/>") +
         KplEntry("<Gray g=\"0\"/>", "U8", "<Position row=\"0\" column=\"0\"/>") +
         "<Group name=\"G&amp;H\" rows=\"1\">" +
         KplEntry("<Gray g=\"0.5\"/>", "U8", "<Position row=\"0\" column=\"0\"/>") + "</Group></Colorset>"),
     "n=Gray(0) n=Gray(1) [G&H] n=Gray(0.5) #the empty cells between colours were closed "},
  };
  for (const Row &row : kRows)
    EXPECT_EQ(Read(row.key, row.bytes), row.listing) << row.key << ": " << row.what;
}

TEST(BinaryFormats, KeepWhatStandsBesideTheColours)
{
  ReadProblem problem;
  const auto acb = FindPaletteFormat("acb")->read(AcbBook(7, kAcbInk, 1), problem);
  ASSERT_TRUE(acb);
  EXPECT_EQ(acb->name, "Test\u00AE Book");
  EXPECT_EQ(acb->description, "Made by hand");
  EXPECT_EQ(acb->columns, 7u);
  const auto icc = FindPaletteFormat("icc")->read(NamedColours("Lab ", Hex("7F80 7600 9480")), problem);
  ASSERT_TRUE(icc);
  EXPECT_EQ(icc->name, "Inks");
  const auto kpl = FindPaletteFormat("kpl")->read(
    Kpl("<ColorSet name=\"N\" comment=\"C\" columns=\"4\">" +
          KplEntry("<RGB r=\"1\" g=\"0.5\" b=\"0\" space=\"Mine\"/>") + "</ColorSet>",
        "<Profiles><Profile name=\"Mine\" filename=\"test.icc\"/></Profiles>", "bytes of a profile"),
    problem);
  ASSERT_TRUE(kpl) << problem.reason;
  EXPECT_EQ(kpl->name + "|" + kpl->description, "N|C");
  EXPECT_EQ(kpl->columns, 4u);
  EXPECT_EQ(kpl->profiles, std::vector<std::string>{"bytes of a profile"});
  EXPECT_EQ(kpl->swatches.front().profile, 0u);
}

TEST(BinaryFormats, AreRefusedWithTheReason)
{
  const auto ase = [](const char *colour) { return Hex("'ASEF' 0001 0000 00000001 0001") + Hex(colour); };
  const std::string kpl = "<ColorSet columns=\"4\">";
  const Row kRows[] = {
    {"version 2", "ase", Hex("'ASEF' 0002 0000 00000000"), "version"},
    {"no colours", "ase", Hex("'ASEF' 0001 0000 00000000"), "no colours"},
    {"a count beyond the file", "ase", Hex("'ASEF' 0001 0000 FFFFFFFF"), "last block"},
    {"a size beyond the file", "ase", ase("FFFFFFFF 0001 0000"), "within a block"},
    {"a name beyond the block", "ase", ase("0000000E 00FF 0000 'Gray' 3F000000 0002"), "longer than its block"},
    {"not a number", "ase", ase("0000000E 0001 0000 'Gray' 7FC00000 0002"), "out of its range"},
    {"infinite", "ase", ase("0000000E 0001 0000 'Gray' 7F800000 0002"), "out of its range"},
    {"negative", "ase", ase("0000000E 0001 0000 'Gray' BF800000 0002"), "out of its range"},
    {"percent for fractions", "ase", ase("0000000E 0001 0000 'Gray' 42C80000 0002"), "out of its range"},
    {"another model", "ase", ase("0000000E 0001 0000 'HSB ' 3F000000 0002"), "unknown model"},
    {"another kind", "ase", ase("0000000E 0001 0000 'Gray' 3F000000 0003"), "neither"},
    {"bytes behind it", "ase", kAse + "x", "behind the last block"},
    {"a colour book", "aco", Hex("0001 0001 0003 0000 0000 0000 0000"), "colour book"},
    {"an unknown space", "aco", Hex("0001 0001 000B 0000 0000 0000 0000"), "unknown colour space (11)"},
    {"L* of 101", "aco", Hex("0001 0001 0007 2774 0000 0000 0000"), "out of its range"},
    {"a* of 129", "aco", Hex("0001 0001 0007 2710 3264 0000 0000"), "out of its range"},
    {"gray of 10001", "aco", Hex("0001 0001 0008 2711 0000 0000 0000"), "out of its range"},
    {"lists of two lengths", "aco", kAco1 + Hex("0002 0000"), "4 and 0 colours"},
    {"a name beyond the file", "aco", Hex("0002 0001 0000 0000 0000 0000 0000 FFFFFFFF 0041"), "ends within"},
    {"version 3", "aco", Hex("0003 0001"), "version"},
    {"bytes behind it", "aco", kAco1 + "x", "behind the last colour"},
    {"767 bytes", "act", std::string(767, '\0'), "768"},
    {"257 colours", "act", ActOf("", Hex("0101 FFFF")), "256"},
    {"transparent colour 256", "act", ActOf("", Hex("0100 0100")), "256"},
    {"version 2", "acb", Hex("'8BCB' 0002"), "version"},
    {"an unknown space", "acb", AcbBook(8, kAcbInk, 1), "unknown colour space (8)"},
    {"fewer colours", "acb", AcbBook(7, kAcbInk, 2), "within colour 2"},
    {"another end", "acb", AcbBook(7, kAcbInk, 1, "spflhifi"), "does not end"},
    {"a text beyond the file", "acb", Hex("'8BCB' 0001 0000 FFFFFFFF 0041"), "before its colours"},
    {"shorter than it says", "riff", kRiff.substr(0, 31), "shorter"},
    {"no data", "riff", Hex("'RIFF' 04000000 'PAL '"), "no whole chunk"},
    {"a chunk beyond the file", "riff", Hex("'RIFF' 0C000000 'PAL data' FFFFFFFF"), "no whole chunk"},
    {"another version", "riff", Hex("'RIFF' 10000000 'PAL data' 04000000 0004 0000"), "version"},
    {"fewer colours", "riff", Hex("'RIFF' 10000000 'PAL data' 04000000 0003 0100"), "fewer"},
    {"an index", "riff", Hex("'RIFF' 14000000 'PAL data' 08000000 0003 0100 05000002"), "index"},
    {"a display's profile", "icc", std::string(200, '\0'), "not an ICC"},
    {"fewer colours", "icc", NamedColours("Lab ", Hex("7F80 7600 9480"), 2), "fewer"},
    {"colours without end", "icc", NamedColours("Lab ", "", 0xFFFFFFFF), "more than 100000"},
    {"coordinates without end", "icc", NamedColours("Lab ", "", 1, 0xFFFFFFFF), "more than 15"},
    {"other coordinates", "icc", NamedColours("Luv ", Hex("7F80 7600 9480")), "neither"},
    {"no archive", "kpl", "PK\3\4", "zip"},
    {"another root", "kpl", Kpl("<Palette/>"), "root"},
    {"no colours", "kpl", Kpl("<ColorSet/>"), "no colours"},
    {"no colour", "kpl", KplOf(""), "without a colour"},
    {"two colours", "kpl", KplOf("<Gray g=\"1\"/><Gray g=\"1\"/>"), "two colours"},
    {"another model", "kpl", KplOf("<HSV h=\"1\" s=\"1\" v=\"1\"/>"), "\"HSV\" is no known colour model"},
    {"another depth", "kpl", KplOf("<Gray g=\"1\"/>", "U12"), "\"U12\" is no known bit depth"},
    {"no component", "kpl", KplOf("<RGB r=\"1\" g=\"1\"/>"), "component b of RGB is not there"},
    {"not a number", "kpl", KplOf("<Gray g=\"nan\"/>", "F32"), "no number"},
    {"infinite", "kpl", KplOf("<Gray g=\"1e999\"/>", "F32"), "no number"},
    {"out of range", "kpl", KplOf("<Gray g=\"2\"/>"), "out of its range"},
    {"CIE numbers for fractions", "kpl", KplOf("<Lab L=\"50\" a=\"0\" b=\"0\"/>"), "out of its range"},
    {"too many columns", "kpl", Kpl("<ColorSet columns=\"99999999999\"/>"), "no number of columns"},
    {"a negative row", "kpl",
     Kpl(kpl + KplEntry("<Gray g=\"1\"/>", "U8", "<Position row=\"-1\" column=\"0\"/>") + "</ColorSet>"),
     "no number of rows"},
    {"nested groups", "kpl", Kpl(kpl + "<Group><Group/></Group></ColorSet>"), "group within a group"},
    {"entities", "kpl", Kpl("<!DOCTYPE a [<!ENTITY b \"c\">]><ColorSet>&b;</ColorSet>"), ""},
  };
  for (const Row &row : kRows)
    EXPECT_NE(Read(row.key, row.bytes).find(row.listing), std::string::npos)
      << row.key << ": " << row.what << " gave " << Read(row.key, row.bytes);
}

TEST(BinaryFormats, PrefixesAreRefusedButWhereTheFormatSaysTheyAreWhole)
{
  const std::vector<std::tuple<const char *, std::string, std::vector<std::size_t>>> kFiles = {
    {"ase", kAse, {}},
    {"aco", kAco1 + kAco2, {kAco1.size()}},
    {"acb", AcbBook(7, kAcbInk, 1, "spflspot"), {AcbBook(7, kAcbInk, 1).size()}},
    {"act", ActOf(Hex("FF8000"), Hex("0001 FFFF")), {768}},
    {"riff", kRiff, {}},
    {"icc", NamedColours("Lab ", Hex("7F80 7600 9480")), {}},
    {"kpl", KplOf("<Gray g=\"1\"/>"), {}},
  };
  for (const auto &[key, bytes, whole] : kFiles) {
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      const std::string prefix = bytes.substr(0, size);
      ReadProblem problem;
      EXPECT_EQ(FindPaletteFormat(key)->read(prefix, problem).has_value(),
                std::find(whole.begin(), whole.end(), size) != whole.end())
        << key << " of " << size << " bytes";
      EXPECT_TRUE(FindPaletteFormat(key)->recognises(prefix) || size < bytes.size());
    }
  }
}

TEST(BinaryFormats, AreWrittenAsTheirDocumentationHasThem)
{
  const SwatchBook book = BookOf({RgbSwatch("R", 1, 0, 0.25), Spot(CmykSwatch("Ink", 0, 0.5, 1, 0))}, {{"G", 1}});
  const SwatchBook four = BookOf({RgbSwatch("R", 1, 0, 0.2), CmykSwatch("\u00FC", 1, 0, 0.2, 0),
                                  LabSwatch("\U0001F3A8", 50, -10, 20.5), GraySwatch("", 0.25)});
  const SwatchBook two = BookOf({RgbSwatch("", 1, 0, 128 / 255.0), RgbSwatch("", 0, 1, 0)});
  std::string bytes;
  EXPECT_EQ(Write("ase", book, bytes), "");
  EXPECT_EQ(bytes, kAse);
  EXPECT_EQ(Write("aco", four, bytes), "");
  EXPECT_EQ(bytes, kAco1 + kAco2);
  EXPECT_EQ(Write("act", two, bytes), "");
  EXPECT_EQ(bytes, ActOf(Hex("FF0080 00FF00"), Hex("0002 FFFF")));
  EXPECT_EQ(Write("riff", two, bytes), "");
  EXPECT_EQ(bytes, kRiff);

  SwatchBook kpl = BookOf({RgbSwatch("R & B", 1, 0, 2.5), Spot(LabSwatch("Ink", 50, -64, 127)),
                           CmykSwatch("C", 0, 0.5, 1, 0), GraySwatch("", 0.25)},
                          {{"", 1}, {"G", 3}, {"G", 4}});
  kpl.name = "N";
  kpl.columns = 2;
  EXPECT_EQ(Write("kpl", kpl, bytes), "#2 groups got another name ");
  std::string reason;
  EXPECT_EQ(ZelUtl::ZipEntryNames(bytes), (std::vector<std::string>{"mimetype", "colorset.xml", "profiles.xml"}));
  EXPECT_EQ(ZelUtl::ReadZipEntry(bytes, "mimetype", 100, reason), "application/x-krita-palette");
  EXPECT_EQ(ZelUtl::ReadZipEntry(bytes, "colorset.xml", 10000, reason), R"(<?xml version="1.0" encoding="UTF-8"?>
<Colorset version="1.0" name="N" comment="" columns="2" rows="1" readonly="false">
  <ColorSetEntry name="R &amp; B" id="1" bitdepth="F32" spot="false">
    <sRGB r="1" g="0" b="2.5"/>
    <Position row="0" column="0"/>
  </ColorSetEntry>
  <Group name="Group" rows="1">
  <ColorSetEntry name="Ink" id="2" bitdepth="U16" spot="true">
    <Lab L="0.5" a="0.25" b="1" space="Lab identity built-in"/>
    <Position row="0" column="0"/>
  </ColorSetEntry>
  <ColorSetEntry name="C" id="3" bitdepth="U16" spot="false">
    <CMYK c="0" m="0.5" y="1" k="0" space=""/>
    <Position row="0" column="1"/>
  </ColorSetEntry>
  </Group>
  <Group name="G" rows="1">
  <ColorSetEntry name="" id="4" bitdepth="U16" spot="false">
    <Gray g="0.25" space="Gray-D50-elle-V2-srgbtrc.icc"/>
    <Position row="0" column="0"/>
  </ColorSetEntry>
  </Group>
  <Group name="G 2" rows="0">
  </Group>
</Colorset>
)");
}

TEST(BinaryFormats, WritersSayWhatIsLostAndRefuseWhatDoesNotFit)
{
  std::string bytes;
  const SwatchBook spots = BookOf({Spot(CmykSwatch("Ink", 0, 0.5, 1, 0)), Spot(CmykSwatch("Half", 0, 0.5, 1, 0), 0.5)});
  EXPECT_EQ(Write("ase", spots, bytes), "#1 tint of a spot colour became a process colour ");
  EXPECT_EQ(Read("ase", bytes), "!Ink=CMYK(0,0.5,1,0) Half=CMYK(0,0.25,0.5,0) ");
  EXPECT_EQ(Write("aco", BookOf({Spot(LabSwatch("Far", 50, 0, -200))}), bytes),
            "#1 spot colour became a process colour #1 colour was clipped to the range of the model ");
  EXPECT_EQ(Read("aco", bytes), "Far=Lab(50,0,-128) ");
  EXPECT_EQ(Write("act", BookOf({GraySwatch("A", 1)}, {{"G", 0}}), bytes),
            "#1 gray colour became RGB #1 group was left out #1 name of a colour was left out ");
  EXPECT_EQ(Read("act", bytes), "=RGB(1,1,1) ");

  for (const char *const key : {"ase", "aco", "act", "riff", "kpl"})
    EXPECT_EQ(Write(key, {}, bytes), "no colours") << key;
  EXPECT_NE(Write("act", BookOf(std::vector(257, GraySwatch("", 1))), bytes).find("more than 256 colours"),
            std::string::npos);
  EXPECT_NE(Write("aco", BookOf(std::vector(65536, GraySwatch("", 1))), bytes).find("more than 65535"),
            std::string::npos);
  EXPECT_NE(Write("ase", BookOf({GraySwatch(std::string(65535, 'n'), 1)}), bytes).find("a name of more than"),
            std::string::npos);

  // A table of colours that would pass for text says its size, and so does not.
  EXPECT_EQ(Write("act", BookOf(std::vector(256, GraySwatch("", 64 / 255.0))), bytes), "#256 gray colours became RGB ");
  EXPECT_EQ(RecognisePaletteFormat(bytes), FindPaletteFormat("act"));
}

TEST(BinaryFormats, WhatWasWrittenIsReadAgain)
{
  struct
  {
    const char *key;
    bool isRgbOnly, hasNames, hasSpots;
    double tolerance; // a step of its numbers, of 1
  } const kFormats[] = {{"ase", false, true, true, 1e-7},
                        {"aco", false, true, false, 0.5e-4},
                        {"act", true, false, false, 0.5 / 255},
                        {"riff", true, false, false, 0.5 / 255},
                        {"kpl", false, true, true, 1e-12}};
  std::mt19937 random(7);
  const auto number = [&random](double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  };
  const std::string kNames[] = {"", "Orange", "Gr\u00FCn \U0001F3A8", "a<b>&\"c\"", " blanks ", "\u65E5\u672C"};
  for (const auto &format : kFormats) {
    for (int round = 0; round < 40; ++round) {
      SwatchBook book;
      for (std::size_t i = random() % 200 + 1; i-- > 0;) {
        if (random() % 20 == 0)
          book.groups.push_back({"Group " + std::to_string(book.groups.size()), book.swatches.size()});
        const std::string name = kNames[random() % std::size(kNames)];
        switch (format.isRgbOnly ? 0 : random() % 4) {
        case 0:
          book.swatches.push_back(RgbSwatch(name, number(0, 1), number(0, 1), number(0, 1)));
          break;
        case 1:
          book.swatches.push_back(CmykSwatch(name, number(0, 1), number(0, 1), number(0, 1), number(0, 1)));
          break;
        case 2:
          book.swatches.push_back(LabSwatch(name, number(0, 100), number(-128, 127), number(-128, 127)));
          break;
        default:
          book.swatches.push_back(GraySwatch(name, number(0, 1)));
        }
        book.swatches.back().spot = format.hasSpots && !name.empty() && random() % 3 == 0;
      }
      std::string bytes, second;
      Write(format.key, book, bytes);
      ReadProblem problem;
      const auto read = ReadSwatchBook(bytes, problem);
      ASSERT_TRUE(read) << format.key << ": " << problem.reason;
      ASSERT_EQ(read->swatches.size(), book.swatches.size()) << format.key;
      for (std::size_t i = 0; i < book.swatches.size(); ++i) {
        const Swatch &wanted = book.swatches[i];
        const Swatch &found = read->swatches[i];
        EXPECT_TRUE(found.model == wanted.model && found.spot == wanted.spot && found.line == i + 1);
        EXPECT_TRUE(!format.hasNames || found.name == wanted.name) << format.key << ": " << found.name;
        const double scale = wanted.model == SwatchModel::Lab ? 128.0 : 1.0;
        for (std::size_t c = 0; c < 4; ++c)
          EXPECT_NEAR(found.values[c], wanted.values[c], format.tolerance * scale * 1.01) << format.key;
      }
      Write(format.key, *read, second);
      EXPECT_TRUE(bytes == second || format.tolerance < 1e-6) << format.key << " is not stable";
    }
  }
}
