// zelclr palette: files and installed palettes in; lists, sheets, files of every format and comparisons out.

#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"
#include "zelclr/platform/xml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// An ink with two looks and a tint of it, one that nobody knows, and process colours on two pages.
constexpr const char *kOwn = R"(<?xml version="1.0" encoding="UTF-8"?>
<palette guid="{11111111-2222-3333-4444-555555555555}" name="Mine" resid="n" locked="true">
  <colorspaces>
    <cs name="House" fixedID="7"><color cs="CMYK" tints="0,0.5,1,0"/><color cs="RGB" tints="1,0.5,0"/></cs>
    <cs name="Unseen" fixedID="8"/>
  </colorspaces>
  <colors>
    <page>
      <color cs="House" name="a" tints="1"/>
      <color cs="House" name="b" tints="0.4"/>
      <color cs="Unseen" name="c"/>
    </page>
    <page>
      <color cs="LAB" name="Lab" tints="0.5,0.6,0.4"/>
      <color cs="Gray" name="Gray" tints="0.25"/>
    </page>
  </colors>
  <localization><resource id="n"><EN>Mine</EN><DE>Meine</DE></resource></localization>
</palette>
)";

constexpr const char *kGroups = R"({
  "Warm": {"$type": "color", "Red": {"$value": "#ff0000"}, "Amber": {"$value": "#ffbf00"}, "Gray 10": {"$value": "#808080"}},
  "Cold": {"$type": "color", "Blue": {"$value": "#0000ff"}, "Cyan": {"$value": "#00ffff"}}
})";

/// A user without settings, in Germany, where CMYK is that of FOGRA39.
class PaletteCommand : public testing::Test
{
protected:
  tests::ToolResult Run(const std::string &words) const
  {
    return tests::RunTool("palette " + words, tests::UserBelow(folder_.Path("home")) + " LC_ALL=de_DE.UTF-8");
  }
  std::string Write(const std::string &name, const std::string &text) const { return folder_.WriteText(name, text); }
  std::string Path(const std::string &name) const { return folder_.Path(name); }
  std::string Read(const std::string &name) const { return tests::TextOf(folder_.Path(name)); }
  json ParsedJson(const std::string &words, int exitCode = 0) const
  {
    const auto result = Run(words + " --json");
    EXPECT_EQ(result.exitCode, exitCode) << words << "\n" << result.errors;
    return json::parse(result.output, nullptr, false);
  }
  /// The names of a palette's colours, group by group.
  std::vector<std::string> NamesOf(const std::string &palette) const
  {
    std::vector<std::string> names;
    const json sheet = ParsedJson("show " + palette);
    for (const json &group : sheet["groups"]) {
      for (const json &colour : group["colours"])
        names.push_back(colour["name"]);
    }
    return names;
  }

  tests::TemporaryFolder folder_;
  const std::string custom_ = "home/" + tests::UsersFolderName() + "/color/Palettes/Custom/";
};

} // namespace

// --- Installed palettes ----------------------------------------------------------------------------------------------

TEST_F(PaletteCommand, ListsWhatIsInstalledAndTheUsers)
{
  Write(custom_ + "own file.xml", kOwn);
  Write(custom_ + "web.gpl", "GIMP Palette\nName: Web \x1b[31m\n255 0 0 Red\n");
  Write(custom_ + "readme.bin", "\x01\x02");
  const json palettes = ParsedJson("list")["palettes"];
  const auto find = [&](const std::string &end) {
    const auto found = std::find_if(palettes.begin(), palettes.end(),
                                    [&](const json &row) { return row["path"].get<std::string>().ends_with(end); });
    return found == palettes.end() ? json() : *found;
  };
  EXPECT_GT(palettes.size(), 100u);
  const json own = find("own file.xml");
  EXPECT_EQ(own["name"], "Meine");
  EXPECT_EQ(own["colours"], 5);
  EXPECT_EQ(own["spots"], 3);
  EXPECT_EQ(own["models"], json({"CMYK", "SPOT", "Lab", "Gray"}));
  EXPECT_EQ(own["locked"], true);
  EXPECT_EQ(own["custom"], true);
  EXPECT_EQ(own["identifier"], "{11111111-2222-3333-4444-555555555555}");
  EXPECT_EQ(find("web.gpl")["locked"], true) << "palettes of other programs are never written to";
  EXPECT_EQ(find("defrgb.xml")["custom"], false);
  EXPECT_EQ(find("readme.bin"), json());

  const std::string text = Run("list").output;
  EXPECT_THAT(text, HasSubstr("Web \uFFFD[31m"));
  EXPECT_THAT(text, HasSubstr("CMYK SPOT Lab "));
  EXPECT_THAT(Run("list --color always").output, HasSubstr("\x1b[48;2;255;0;0m \x1b[0m"));
}

TEST_F(PaletteCommand, NamesLeadToInstalledPalettes)
{
  const std::string path = Write(custom_ + "own file.xml", kOwn);
  for (const char *name : {"Meine", "mINE", "'OWN file'", "'own file.xml'", "'{11111111-2222-3333-4444-555555555555}'"})
    EXPECT_EQ(ParsedJson("show " + std::string(name))["file"], path) << name;
  const auto twins = Run("show Autumn");
  EXPECT_EQ(twins.exitCode, 2);
  EXPECT_THAT(twins.errors, HasSubstr("cAutumn.xml, rAutumn.xml"));
  EXPECT_EQ(ParsedJson("show cautumn")["name"], "Autumn");
  EXPECT_EQ(Run("show nowhere").exitCode, 3);
  EXPECT_EQ(Run("convert mine -o '" + path + "'").exitCode, 2) << "the name leads to the output";
}

// --- Formats ---------------------------------------------------------------------------------------------------------

TEST_F(PaletteCommand, EveryFormatComesBack)
{
  const std::string source = Write("brand.gpl", "GIMP Palette\nName: Brand\nColumns: 4\n#\n255 128 0 Orange\n"
                                                "0 0 0 Ink\n12 35 64 Deep Harbour\n250 243 230 Paper\n");
  struct Row
  {
    const char *key;
    bool names; ///< whether it keeps them
  };
  for (const auto &[key, names] : {Row{"xml", true}, Row{"ase", true}, Row{"kpl", true}, Row{"aco", true},
                                   Row{"gpl", true}, Row{"scribus", true}, Row{"soc", true}, Row{"tokens", true},
                                   Row{"list", true}, Row{"jasc", false}, Row{"riff", false}, Row{"act", false}})
  {
    const std::string target = Path(std::string("out.") + key);
    const auto told = Run("convert --json " + source + " -o " + target + " --to " + key);
    ASSERT_EQ(told.exitCode, 0) << key << told.errors;
    const json converted = json::parse(told.output);
    EXPECT_EQ(converted["output"]["format"], key);
    EXPECT_EQ(converted["inputs"][0]["format"], "gpl");
    EXPECT_EQ(std::count(told.errors.begin(), told.errors.end(), '\n'), converted["notes"].size()) << told.errors;
    EXPECT_EQ(ParsedJson("show " + target)["format"], key);
    const json diff = ParsedJson("diff " + source + " " + target, names ? 0 : 1);
    EXPECT_EQ(diff["same"], names) << key;
    EXPECT_EQ(diff["renamed"].size(), names ? 0u : 4u) << key;
    EXPECT_EQ(diff["changed"].size() + diff["added"].size() + diff["removed"].size() + diff["moved"].size(), 0u) << key;
  }
  // By the name of the output; ".xml" is ours.
  for (const auto &[name, key] : {std::pair{"a.XML", "xml"},
                                  {"a.tokens.json", "tokens"},
                                  {"a.pal", "jasc"},
                                  {"a.css", "css"},
                                  {"a.svg", "svg"},
                                  {"a.ase", "ase"}})
    EXPECT_EQ(ParsedJson("convert " + source + " -o " + Path(name))["output"]["format"], key) << name;
  const auto printed = Run("convert - --to list -o - <" + source);
  EXPECT_THAT(printed.output, HasSubstr("RGB255(255,128,0) Orange\n"));
  EXPECT_EQ(printed.output.find("GPL palette"), std::string::npos);
}

TEST_F(PaletteCommand, OwnPalettesStayWhatTheyAre)
{
  const std::string own = Write("own.xml", kOwn);
  ASSERT_EQ(Run("convert " + own + " -o " + Path("copy.xml")).exitCode, 0);
  const std::string copy = Read("copy.xml");
  for (const char *part : {"guid=\"{11111111-2222-3333-4444-555555555555}\"", "locked=\"true\"", "fixedID=\"8\"",
                           "<DE>Meine</DE>", "tints=\"1,0.5,0\""})
    EXPECT_THAT(copy, HasSubstr(part));

  // Another name makes another palette, the same one every time.
  for (const char *name : {"x.xml", "y.xml"})
    ASSERT_EQ(Run("convert " + own + " --name New -o " + Path(name)).exitCode, 0);
  EXPECT_EQ(Read("x.xml"), Read("y.xml"));
  EXPECT_THAT(Read("x.xml"), HasSubstr("name=\"New\""));
  EXPECT_THAT(Read("x.xml"), Not(HasSubstr("11111111")));
  EXPECT_THAT(Read("x.xml"), Not(HasSubstr("locked")));

  const json lost = ParsedJson("convert " + own + " -o " + Path("a.ase"));
  EXPECT_THAT(lost["notes"].dump(), HasSubstr("1 colour space keeps only the first of several looks"));
  EXPECT_THAT(lost["notes"].dump(), HasSubstr("names in other languages were left out"));
  const json spots = ParsedJson("show " + Path("a.ase"))["groups"];
  EXPECT_EQ(spots[0]["name"], "Page 1");
  EXPECT_EQ(spots[0]["colours"][0]["spot"], true);
  EXPECT_EQ(spots[0]["colours"][0]["values"], json({0.0, 0.5, 1.0, 0.0}));
}

TEST_F(PaletteCommand, ReportReadsEveryPalette)
{
  const std::string own = Write("own.xml", kOwn);
  const std::string groups = Write("g.json", kGroups);
  for (const auto &[palette, colours] : {std::pair{own, 5}, {groups, 5}}) {
    const auto report = tests::RunTool("report --json " + palette, tests::UserBelow(Path("home")));
    EXPECT_LE(report.exitCode, 1) << report.errors;
    EXPECT_EQ(json::parse(report.output)["colours"].size(), colours);
  }
  EXPECT_EQ(tests::RunTool("report " + Write("none.xml", "<palette/>")).exitCode, 3) << "nothing to report on";
}

// --- Order, unions ---------------------------------------------------------------------------------------------------

TEST_F(PaletteCommand, SortsEachGroupByItself)
{
  const std::string groups = Write("g.json", kGroups);
  const std::string sorted = Path("s.json");
  struct Row
  {
    const char *words;
    std::vector<std::string> names;
  };
  const Row rows[] = {
    {"--by hue", {"Gray 10", "Red", "Amber", "Cyan", "Blue"}},
    {"--by hue --reverse", {"Amber", "Red", "Gray 10", "Blue", "Cyan"}},
    {"--by HUE --across-groups", {"Gray 10", "Red", "Amber", "Cyan", "Blue"}},
    {"--by name", {"Amber", "Gray 10", "Red", "Blue", "Cyan"}},
    {"--by name --across-groups --reverse", {"Red", "Gray 10", "Cyan", "Blue", "Amber"}},
    {"--by brightness", {"Gray 10", "Red", "Amber", "Cyan", "Blue"}},
    {"--by rgb --across-groups", {"Blue", "Cyan", "Gray 10", "Red", "Amber"}},
  };
  for (const Row &row : rows) {
    ASSERT_EQ(Run("sort " + groups + " -o " + sorted + " " + row.words).exitCode, 0);
    EXPECT_EQ(NamesOf(sorted), row.names) << row.words;
    EXPECT_EQ(ParsedJson("show " + sorted)["groups"].size(),
              std::string(row.words).find("across") == std::string::npos ? 2u : 1u);
  }
  // A palette of our own keeps its pages and all else; colours without a look come last.
  ASSERT_EQ(Run("sort " + Write("own.xml", kOwn) + " --by brightness -o " + Path("s.xml")).exitCode, 0);
  EXPECT_THAT(NamesOf(Path("s.xml")), ElementsAre("House", "House", "Unseen", "Gray", "Lab"));
  EXPECT_THAT(Read("s.xml"), HasSubstr("11111111-2222"));
  EXPECT_EQ(Run("sort " + groups + " --by size -o " + sorted).exitCode, 2);
}

TEST_F(PaletteCommand, MergesAndTellsConflicts)
{
  const auto ink = [](const char *look) {
    return std::string("<palette name='P'><colorspaces><cs name='Brand'><color cs='RGB' tints='") + look +
           "'/></cs></colorspaces><colors><page><color cs='Brand'/></page></colors></palette>";
  };
  const std::string a = Write("a.gpl", "GIMP Palette\nName: A\n#\n255 0 0 Red\n0 0 255 Blue\n");
  const std::string b = Write("b.txt", "#ff0000 Red\n#ff0000 Scarlet\n#00ff00 Red\n");
  const std::string one = Write("one.xml", ink("1,0,0"));
  const std::string two = Write("two.xml", ink("0,1,0"));
  const auto result = Run("merge --json " + a + " " + b + " " + one + " " + two + " " + a + " -o " + Path("m.ase"));
  const json told = json::parse(result.output);
  EXPECT_EQ(told["colours"], 6);
  EXPECT_EQ(told["dropped"], 3) << "Red of b, and all of the second a";
  ASSERT_EQ(told["conflicts"].size(), 1u);
  EXPECT_THAT(result.errors, HasSubstr("\"Brand\" does not look the same"));
  const json groups = ParsedJson("show " + Path("m.ase"))["groups"];
  std::vector<std::string> names;
  for (const json &group : groups)
    names.push_back(group["name"]);
  EXPECT_THAT(names, ElementsAre("A", "b", "P", "P"));
  EXPECT_THAT(NamesOf(Path("m.ase")), ElementsAre("Red", "Blue", "Scarlet", "Red", "Brand", "Brand"));
  EXPECT_EQ(told["output"]["name"], "A + b + P + 2 more");
}

// --- What is wrong, what differs, what is near -----------------------------------------------------------------------

TEST_F(PaletteCommand, ValidatesWithLineAndReason)
{
  struct Row
  {
    std::string file;
    int line; ///< 0 for none, -1 for a sound palette
    const char *reason;
  };
  const Row rows[] = {
    {Write("good.xml", kOwn), -1, ""},
    {Write("good.gpl", "GIMP Palette\n255 0 0 Red\n"), -1, ""},
    {Write("empty.xml", "<palette/>"), -1, ""},
    {Write("bad.gpl", "GIMP Palette\n255 0 0 Red\n256 0 0 Redder\n"), 3, ""},
    {Write("root.xml", "<?xml version='1.0'?>\n<svg/>\n"), 2, "svg"},
    {Write("cut.xml", "<palette>\n<colors>\n<page"), 3, ""},
    {Write("schema.xml", "<palette>\n<colors>\n<page wide='3'/></colors></palette>"), 3, "wide"},
    {Write("model.xml", "<palette><colors><page><color cs='Nope' name='X'/></page></colors></palette>"), 0, "\"Nope\""},
    {Write("twice.xml", "<palette><colorspaces><cs name='A' fixedID='1'/><cs name='A' fixedID='2'/></colorspaces>"
                        "</palette>"),
     0, "more than one colour space is called \"A\""},
    {Write("zip.zip", "PK\x03\x04nonsense"), 0, "archive"},
    {Write("old.cpl", "ZCPL\x01"), 0, ""},
    {Write("nul.txt", std::string("\0\0\0", 3)), 0, ""},
  };
  for (const Row &row : rows) {
    const json told = ParsedJson("validate " + row.file, row.line < 0 ? 0 : 1)["files"][0];
    EXPECT_EQ(told["valid"], row.line < 0) << told;
    if (row.line < 0)
      continue;
    ASSERT_EQ(told["problems"].size(), 1u) << told;
    EXPECT_EQ(told["problems"][0]["line"], row.line == 0 ? json() : json(row.line)) << told;
    EXPECT_THAT(told["problems"][0]["reason"].get<std::string>(), HasSubstr(row.reason));
    EXPECT_THAT(Run("validate " + row.file).output, testing::StartsWith(row.file + ":"));
  }
  EXPECT_EQ(Run("validate " + rows[0].file + " " + rows[3].file + " " + rows[1].file).exitCode, 1);
  const auto missing = Run("validate " + Path("none") + " " + rows[3].file);
  EXPECT_EQ(missing.exitCode, 3);
  EXPECT_EQ(std::count(missing.output.begin(), missing.output.end(), '\n'), 2) << missing.output;
}

TEST_F(PaletteCommand, DiffFindsTheFewestChanges)
{
  const std::string a = Write("a.txt", "#ff0000 Red\n#00ff00 Green\n#0000ff Blue\n#ffffff\n#808080 Gray\n");
  struct Row
  {
    const char *b;
    std::vector<int> counts; ///< added, removed, renamed, changed, moved
    const char *words = "";
  };
  const Row rows[] = {
    {"#ff0000 Red\n#00ff00 Green\n#0000ff Blue\n#ffffff\n#808080 Gray\n", {0, 0, 0, 0, 0}},
    {"#ff0000 Red\n#00ff00 Lime\n#0000ff Blue\n#ffffff\n#808080 Gray\n", {0, 0, 1, 0, 0}},
    {"#00ff00 Red\n#ff0000 Green\n#0000ff Blue\n#ffffff\n#808080 Gray\n", {0, 0, 0, 2, 0}},
    {"#ff0000 Red\n#0000ff Blue\n#ffffff\n#808080 Gray\n#123456 New\n", {1, 1, 0, 0, 0}},
    {"#0000ff Blue\n#ff0000 Red\n#00ff00 Green\n#ffffff\n#808080 Gray\n", {0, 0, 0, 0, 1}},
    {"#808080 Gray\n#ffffff\n#0000ff Blue\n#00ff00 Green\n#ff0000 Red\n", {0, 0, 0, 0, 4}},
    {"#ff0000 Red\n#ff0000 Red\n#00ff00 Green\n#0000ff Blue\n#ffffff\n#808080 Gray\n", {1, 0, 0, 0, 0}},
    {"#fe0000 Red\n#00ff00 Green\n#0000ff Blue\n#ffffff\nGRAY255(128) Gray\n", {0, 0, 0, 2, 0}},
    {"#fe0000 Red\n#00ff00 Green\n#0000ff Blue\n#ffffff\nGRAY255(128) Gray\n", {0, 0, 0, 0, 0}, "--tolerance 0.5"},
  };
  for (const Row &row : rows) {
    const std::string b = Write("b.txt", row.b);
    const bool isSame = std::all_of(row.counts.begin(), row.counts.end(), [](int count) { return count == 0; });
    const json there = ParsedJson("diff " + a + " " + b + " " + row.words, isSame ? 0 : 1);
    const json back = ParsedJson("diff " + b + " " + a + " " + row.words, isSame ? 0 : 1);
    const auto count = [](const json &diff, const char *list) { return static_cast<int>(diff[list].size()); };
    EXPECT_EQ((std::vector{count(there, "added"), count(there, "removed"), count(there, "renamed"),
                           count(there, "changed"), count(there, "moved")}),
              row.counts)
      << row.b << there;
    EXPECT_EQ(count(back, "added"), row.counts[1]) << row.b;
    EXPECT_EQ(count(back, "changed"), row.counts[3]) << row.b;
    EXPECT_EQ(count(back, "moved"), row.counts[4]) << row.b;
  }
  // Black to white is as far as it goes: 100 by definition of L*.
  const json far = ParsedJson("diff " + Write("k.txt", "#000 X\n") + " " + Write("w.txt", "#fff X\n"), 1);
  EXPECT_NEAR(far["changed"][0]["deltaE2000"].get<double>(), 100.0, 0.05);
  EXPECT_EQ(Run("diff - - </dev/null").exitCode, 2);
}

TEST_F(PaletteCommand, FindsTheNearest)
{
  const std::string a =
    Write("a.txt", "#ff0000 Red\n#fa0505 Nearly\n#0000ff Blue\nSPOT(1,100)@{00000000-0000-0000-0000-"
                   "000000000001} Ink\n");
  const std::string own = Write("own.xml", kOwn);
  const json near = ParsedJson("find '#ff0000' --in " + a + " " + own + " -n 3");
  ASSERT_EQ(near["nearest"].size(), 3u);
  EXPECT_EQ(near["colours"], 9);
  EXPECT_EQ(near["nearest"][0]["colour"]["name"], "Red");
  EXPECT_EQ(near["nearest"][0]["deltaE2000"], 0.0);
  EXPECT_EQ(near["nearest"][1]["colour"]["name"], "Nearly");
  EXPECT_EQ(near["nearest"][2]["file"], own);
  EXPECT_EQ(ParsedJson("find '#ff0000' --in " + a + " -n 100")["nearest"].size(), 3u) << "the ink has no known look";
  // The tint of an ink is what it looks like: its own screen colour leads to it.
  const json tint = ParsedJson("show " + own)["groups"][0]["colours"][1];
  EXPECT_EQ(tint["tint"], 0.4);
  const json found = ParsedJson("find '" + tint["screen"].get<std::string>() + "' --in " + own + " -n 1");
  EXPECT_EQ(found["nearest"][0]["colour"]["tint"], 0.4);

  const json everywhere = ParsedJson("find '#ff8000'");
  EXPECT_GT(everywhere["palettes"], 100);
  EXPECT_EQ(everywhere["nearest"].size(), 5u);
  EXPECT_EQ(everywhere["nearest"][0]["deltaE2000"], 0.0);
  EXPECT_EQ(Run("find nonsense --in " + a).exitCode, 2);
  EXPECT_EQ(Run("find red --in " + Write("none.xml", "<palette/>")).exitCode, 4);
  EXPECT_EQ(Run("find red -n 0").exitCode, 2);
}

// --- Sheets ----------------------------------------------------------------------------------------------------------

TEST_F(PaletteCommand, SheetsSayWhatThePaletteSays)
{
  const std::string hard = Write("hard.txt", "#00d68f <script>alert('x')</script>&\n#0000ff\nCMYK100(0,60,100,0) "
                                             "\u05d0 \u202E Warm\n");
  const std::string press = " --profile 'ISO Coated FOGRA39.icc'";
  EXPECT_EQ(Run("show " + hard).exitCode, 0) << "nothing is judged without a press";
  for (const char *name : {"a.svg", "a.html"}) {
    const auto result = Run("show " + hard + press + " -o " + Path(name));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.output, HasSubstr("2 are beyond the gamut of ISO Coated (FOGRA39).\n"));
    EXPECT_THAT(result.output, HasSubstr("#0000ff        out of gamut\n"));
    const std::string sheet = Read(name);
    for (const char *part : {"fill=\"#00d68f\"", "&lt;script&gt;", "CMYK 0 60 100 0", "\uFFFD Warm", "M76 0H100V24Z"})
      EXPECT_THAT(sheet, HasSubstr(part)) << name;
    EXPECT_THAT(sheet, Not(HasSubstr("<script")));
    EXPECT_THAT(sheet, Not(HasSubstr("<circle"))) << "no ink, no mark";
  }
  const std::string own = Write("own.xml", kOwn);
  for (const char *name : {"b.svg", "b.html"}) {
    ASSERT_EQ(Run("show " + own + " -o " + Path(name)).exitCode, 0);
    for (const char *part : {"spot, 40 %", "no known look", "Page 2", "<circle"})
      EXPECT_THAT(Read(name), HasSubstr(part)) << name;
    EXPECT_THAT(Read(name), Not(HasSubstr("M76 0H"))) << name;
  }
  for (const char *name : {"a.svg", "b.svg"}) {
    std::string reason;
    EXPECT_TRUE(ZelUtl::WXmlDoc::FromBytes(Read(name), reason)) << reason;
  }
  const json sheet = ParsedJson("show " + hard + press, 1);
  EXPECT_EQ(sheet["press"], "ISO Coated (FOGRA39)");
  EXPECT_EQ(sheet["groups"][0]["colours"][0]["inGamut"], false);
  EXPECT_EQ(sheet["groups"][0]["colours"][2]["inGamut"], true) << "the press's own numbers";
  EXPECT_EQ(sheet["groups"][0]["colours"][2]["record"], "CMYK100(0,60,100,0)");
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST_F(PaletteCommand, FailuresAreOneLineAndLeaveTheOutputAlone)
{
  const std::string good = Write("good.txt", "#ff0000 Red\n");
  std::string many;
  for (int i = 0; i < 300; ++i)
    many += "RGB255(" + std::to_string(i % 256) + "," + std::to_string(i / 256) + ",0)\n";
  Write("many.txt", many);
  Write("junk.ase", "ASEF, and nothing else");
  const std::string out = Write("out.act", "what was there");
  struct Row
  {
    std::string words;
    int exitCode;
  };
  const Row rows[] = {
    {"convert many.txt -o out.act", 2},
    {"convert junk.ase -o out.act", 3},
    {"convert nowhere.gpl -o out.act", 3},
    {"convert good.txt -o out.act --to acb", 2},
    {"convert good.txt -o out.act --to x", 2},
    {"convert good.txt -o good.txt", 2},
    {"convert good.txt -o plain", 2},
    {"convert good.txt -o -", 2},
    {"convert good.txt -o - --to gpl --json", 2},
    {"convert good.txt -o none/out.gpl", 3},
    {"convert good.txt -o out.act --name ''", 2},
    {"merge good.txt junk.ase -o out.act", 3},
    {"merge good.txt many.txt -o many.txt", 2},
    {"sort junk.ase --by hue -o out.act", 3},
    {"show good.txt -o out.act", 2},
    {"show good.txt -o out.svg --profile nowhere.icc", 3},
    {"show ''", 2},
    {"diff good.txt junk.ase", 3},
    {"find red --in junk.ase", 3},
    {"", 2},
  };
  for (const Row &row : rows) {
    std::string words;
    for (std::size_t from = 0; from <= row.words.size();) { // file names become paths
      const std::size_t to = std::min(row.words.find(' ', from), row.words.size());
      const std::string word = row.words.substr(from, to - from);
      const bool isFile = word == "plain" || (word.find('.') != std::string::npos && word != "nowhere.icc");
      words += (isFile ? Path(word) : word) + " ";
      from = to + 1;
    }
    const auto result = Run(words);
    EXPECT_EQ(result.exitCode, row.exitCode) << words << result.errors;
    EXPECT_EQ(result.output, "") << words;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << words << result.errors;
    EXPECT_EQ(Read("out.act"), "what was there") << words;
  }
  EXPECT_FALSE(std::filesystem::exists(Path("out.svg")));
  EXPECT_FALSE(std::filesystem::exists(Path("plain")));
}

TEST_F(PaletteCommand, HostileBytesAreRefusedOrHarmless)
{
  const std::string own = kOwn;
  std::vector<std::string> files;
  for (std::size_t size = 1; size < own.size() - 11; size += 97)
    files.push_back(own.substr(0, size));
  for (const std::string &prefix : files)
    EXPECT_EQ(Run("show " + Write("prefix.xml", prefix)).exitCode, 3) << prefix;
  const std::string hostile =
    Write("esc.xml", "<palette name='\xC2\x9B"
                     "31m'><colorspaces><cs name='\xE2\x80\xAEknI'><color cs='RGB' tints='nan,1e999,-5'/>"
                     "</cs></colorspaces><colors><page width='-7'><color cs='\xE2\x80\xAEknI' tints='1e99'/>"
                     "<color cs='SCRGB' tints='1e38,-1e38,nan'/></page></colors></palette>");
  for (const std::string &words :
       {"show " + hostile, "show " + hostile + " -o " + Path("h.svg"), "show " + hostile + " -o " + Path("h.html"),
        "convert " + hostile + " -o " + Path("h.ase"), "merge " + hostile + " " + hostile + " -o " + Path("h.gpl"),
        "diff " + hostile + " " + hostile, "find red --in " + hostile,
        "sort " + hostile + " --by hue -o " + Path("h.kpl")})
  {
    const auto result = Run(words);
    EXPECT_EQ(result.exitCode, 0) << words << result.errors;
    EXPECT_THAT(result.output + result.errors, Not(HasSubstr("\xE2\x80\xAE"))) << words;
    EXPECT_THAT(result.output + result.errors, Not(HasSubstr("\xC2\x9B"))) << words;
  }
}

TEST_F(PaletteCommand, ContextsMoveProcessColoursAndLeaveInksAlone)
{
  const std::string own = Write("own.xml", "<palette guid=\"{11111111-2222-3333-4444-555555555555}\"><colorspaces>"
                                           "<cs name=\"Ink\" fixedID=\"1\"><color cs=\"CMYK\" tints=\"0,1,0,0\"/></cs>"
                                           "</colorspaces><colors><page><color cs=\"CMYK\" name=\"Orange\" "
                                           "tints=\"0,0.6,1,0\"/><color cs=\"Ink\" name=\"Ink\"/>"
                                           "<color cs=\"LAB\" name=\"Lab\" tints=\"0.5,0.6,0.6\"/></page></colors>"
                                           "</palette>");
  const std::string press = "'GRACoL Coated TR006.icc'";
  const auto result = Run("convert --json " + own + " -o " + Path("moved.xml") + " --context " + press);
  ASSERT_EQ(result.exitCode, 0) << result.errors;
  const json changed = json::parse(result.output)["changed"];
  ASSERT_EQ(changed.size(), 1U);
  EXPECT_EQ(changed[0]["before"]["name"], "Orange");
  EXPECT_THAT(Read("moved.xml"), HasSubstr("{11111111-2222-3333-4444-555555555555}"));
  EXPECT_EQ(Run("diff " + own + " " + Path("moved.xml") + " --tolerance 0.01").exitCode, 1);

  // The same profile changes nothing; what is no profile of documents, or none at all, is refused.
  EXPECT_THAT(Run("convert " + own + " -o " + Path("same.xml") + " --context 'ISO Coated FOGRA39.icc'").output,
              HasSubstr("0 of 3 colours changed"));
  EXPECT_EQ(Run("convert " + own + " -o " + Path("none.xml") + " --context nowhere").exitCode, 3);
  EXPECT_FALSE(std::filesystem::exists(Path("none.xml")));
}
