// zelclr harmony and zelclr contrast.

#include "tests/support/tool.h"
#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/palettes/xml_color_palette.h"
#include "zelclr/platform/xml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <string>

namespace {

using nlohmann::json;
using testing::HasSubstr;

const std::string kPress = ZELCLR_PROFILES "/USWebCoatedSWOP.icc";

json ParsedJson(const std::string &words)
{
  const auto result = tests::RunTool(words + " --json");
  EXPECT_EQ(result.errors, "") << words;
  return json::parse(result.output);
}

// --- harmony ---------------------------------------------------------------------------------------------------------

TEST(HarmonyCommand, TellsTheColours)
{
  const auto text = tests::RunTool("harmony '#f00' --rule tetrad");
  EXPECT_EQ(text.exitCode, 0);
  EXPECT_EQ(text.output, "Tetrad\n"
                         "RGB255(255,0,0)             #ff0000  0\u00B0\n"
                         "RGB255(255,200,0)           #ffc800  90\u00B0\n"
                         "RGB255(0,255,72)            #00ff48  180\u00B0\n"
                         "RGB255(0,21,255)            #0015ff  270\u00B0\n");

  const json all = ParsedJson("harmony yellow --all --to HSB");
  EXPECT_EQ(all["schema"], "zelclr.harmony");
  EXPECT_EQ(all["base"], "HSB(60,100,100)");
  ASSERT_EQ(all["harmonies"].size(), 6u);
  EXPECT_EQ(all["harmonies"][0]["arms"], json({108, 288}));
  const json &triad = all["harmonies"][1];
  EXPECT_EQ(triad["rule"], "triad");
  EXPECT_EQ(triad["colours"][1], (json{{"value", "HSB(189,100,100)"},
                                       {"screen", "#00d9ff"},
                                       {"wheelHue", 228},
                                       {"saturation", 255},
                                       {"brightness", 255}}));
  EXPECT_EQ(ParsedJson("harmony red --rule analogous --step -20 --count 3")["harmonies"][0]["arms"],
            json({0, 340, 320}));
  EXPECT_EQ(ParsedJson("harmony 'CMYK100(0,50,100,0)'")["harmonies"][0]["colours"][0]["value"], "CMYK100(0,50,100,0)");
}

TEST(HarmonyCommand, DrawsTheWheel)
{
  const tests::TemporaryFolder folder;
  for (const auto &[words, dots] : {std::pair{"--rule triad", 3}, {"--all", 2 + 3 + 4 + 3 + 4 + 4}}) {
    ASSERT_EQ(tests::RunTool("harmony '#ff8000' " + std::string(words) + " -o " + folder.Path("a.svg")).exitCode, 0);
    std::string reason;
    const auto svg = ZelUtl::WXmlDoc::FromFile(folder.Path("a.svg"), reason);
    ASSERT_TRUE(svg) << reason;
    EXPECT_EQ(svg->Root().SelectNodes("//*[@class='dot']").size(), static_cast<std::size_t>(dots));
    EXPECT_EQ(svg->Root().SelectNodes("//*[@class='swatch']").size(), static_cast<std::size_t>(dots));
    EXPECT_FALSE(svg->Root().SelectNodes("//*[@class='dot' and @fill='#ff8000']").empty());
  }
}

TEST(HarmonyCommand, DrawsNoDotOverAnotherNorOutsideTheWheel)
{
  const tests::TemporaryFolder folder;
  for (const char *words : {"--rule monochromatic --count 20", "--rule monochromatic --count 100",
                            "--rule tetrad --count 100", "--rule custom --count 60"})
  {
    ASSERT_EQ(tests::RunTool(std::string("harmony '#c02030' ") + words + " -o " + folder.Path("a.svg")).exitCode, 0);
    std::string reason;
    const auto svg = ZelUtl::WXmlDoc::FromFile(folder.Path("a.svg"), reason);
    ASSERT_TRUE(svg) << reason;
    const auto number = [](const ZelUtl::WXmlNode &node, const char *name) { return std::stod(*node.Attribute(name)); };
    const auto rims = svg->Root().SelectNodes("//*[@class='rim']");
    const ZelUtl::WXmlNode grid = svg->Root().SelectNodes("//*[@class='grid']").back(); // of full saturation
    for (std::size_t i = 0; i < rims.size(); ++i) {
      const auto distance = [&](const ZelUtl::WXmlNode &other) {
        return std::hypot(number(rims[i], "cx") - number(other, "cx"), number(rims[i], "cy") - number(other, "cy"));
      };
      EXPECT_LE(distance(grid) + number(rims[i], "r"), number(grid, "r") * 0.84 / 0.74 + 0.1) << words << i;
      for (std::size_t j = 0; j < i; ++j)
        EXPECT_GE(distance(rims[j]), number(rims[i], "r") + number(rims[j], "r")) << words << i << " " << j;
    }
  }
  // However many there are side by side, every swatch has a width.
  ASSERT_EQ(tests::RunTool("harmony red --all --count 100 -o " + folder.Path("all.svg")).exitCode, 0);
  EXPECT_EQ(tests::TextOf(folder.Path("all.svg")).find("=\"-"), std::string::npos);
}

TEST(HarmonyCommand, WritesPalettes)
{
  const tests::TemporaryFolder folder;
  ASSERT_EQ(tests::RunTool("harmony red --all -o " + folder.Path("a.gpl")).exitCode, 0);
  ZelClr::ReadProblem problem;
  const auto book = ZelClr::ReadSwatchBook(tests::TextOf(folder.Path("a.gpl")), problem);
  ASSERT_TRUE(book) << problem.reason;
  EXPECT_EQ(book->swatches.size(), 20u);
  EXPECT_EQ(book->swatches[2].name, "Triad 1");
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(
      tests::RunTool("harmony 'CMYK100(0,50,100,0)' -o " + folder.Path("b" + std::to_string(i) + ".xml")).exitCode, 0);
    WXmlColorPalette palette;
    std::string reason;
    ASSERT_TRUE(palette.LoadFromBytes(tests::TextOf(folder.Path("b" + std::to_string(i) + ".xml")), reason)) << reason;
    EXPECT_EQ(palette.GetColorCount(), 3u);
    EXPECT_FALSE(palette.GetHeader().guid.IsNull());
  }
  EXPECT_EQ(tests::TextOf(folder.Path("b0.xml")), tests::TextOf(folder.Path("b1.xml"))) << "the same identifier";
}

TEST(HarmonyCommand, RefusesWhatMakesNoSense)
{
  for (const char *words :
       {"", "nonsense", "red --rule round", "red --rule", "red --all --rule triad", "red --count 0", "red --count 101",
        "red --step 181", "red --rule triad --step 20", "red --to nonsense", "red -o a.gif", "red -o a"})
  {
    const auto result = tests::RunTool(std::string("harmony ") + words);
    EXPECT_EQ(result.exitCode, 2) << words << result.errors;
    EXPECT_EQ(result.output, "") << words;
  }
  EXPECT_EQ(tests::RunTool("harmony 'SPOT(1,100)@{00000000-0000-0000-0000-000000000000}'").exitCode, 4);
  EXPECT_EQ(tests::RunTool("harmony red -o /nowhere/a.svg").exitCode, 3);
}

// --- contrast --------------------------------------------------------------------------------------------------------

TEST(ContrastCommand, MeasuresPairs)
{
  const struct
  {
    const char *words;
    double ratio; // by the formula of WCAG 2, cut off
    int exitCode;
  } rows[] = {{"'#000' '#fff'", 21.0, 0},
              {"'#fff' '#000'", 21.0, 0},
              {"red red", 1.0, 1},
              {"'#767676' white", 4.542, 0},
              {"'#777777' white", 4.478, 1},
              {"'#777777' white --need aa-large", 4.478, 0},
              {"'#777777' white --need ui", 4.478, 0},
              {"'#595959' white --need aaa", 7.004, 0},
              {"'#5a5a5a' white --need aaa", 6.896, 1},
              {"'#777777' white --need aaa-large", 4.478, 1}};
  for (const auto &row : rows) {
    const auto result = tests::RunTool(std::string("contrast ") + row.words + " --json");
    const json content = json::parse(result.output);
    EXPECT_EQ(content["screen"]["ratio"], row.ratio) << row.words;
    EXPECT_EQ(result.exitCode, row.exitCode) << row.words;
    EXPECT_EQ(content["print"], json());
  }
  const json gray = ParsedJson("contrast '#777' white");
  EXPECT_EQ(gray["screen"]["levels"],
            (json{{"textAA", false}, {"textAAA", false}, {"largeAA", true}, {"largeAAA", false}, {"controls", true}}));
  const auto text = tests::RunTool("contrast '#777' white");
  EXPECT_EQ(text.output, "        contrast  text AA    text AAA   large AA   large AAA  controls\n"
                         "screen  4.47:1    no         no         yes        no         yes\n");
}

TEST(ContrastCommand, TellsWhatIsLostInPrint)
{
  // No press prints the blue of screens as dark as it is there.
  const json lost = ParsedJson("contrast '#00f' white --profile " + kPress);
  EXPECT_GT(lost["screen"]["ratio"], 7.0);
  EXPECT_LT(lost["print"]["ratio"], lost["screen"]["ratio"]);
  const json black = ParsedJson("contrast black white --profile " + kPress);
  EXPECT_EQ(black["print"]["survives"], true);
  EXPECT_LT(black["print"]["ratio"], 21.0) << "ink is never without light";
  const json paper = ParsedJson("contrast black white --paper --profile " + kPress);
  EXPECT_LT(paper["print"]["ratio"], black["print"]["ratio"]);
  const auto gone = tests::RunTool("contrast '#f00' black --profile " + kPress);
  EXPECT_EQ(gone.exitCode, 1);
  EXPECT_THAT(gone.output, HasSubstr("In print the pair loses what it reaches on screen.\n"));
}

TEST(ContrastCommand, RefusesWhatMakesNoSense)
{
  for (const char *words : {"", "red", "red nonsense", "red blue --need b", "red blue --paper",
                            "red blue --profile 'CIE Lab.icc'", "red blue white"})
  {
    const auto result = tests::RunTool(std::string("contrast ") + words);
    EXPECT_EQ(result.exitCode, 2) << words << result.errors;
    EXPECT_EQ(result.output, "") << words;
  }
  EXPECT_EQ(tests::RunTool("contrast red 'SPOT(1,100)@{00000000-0000-0000-0000-000000000000}'").exitCode, 4);
  EXPECT_EQ(tests::RunTool("contrast red blue --profile /nowhere/press.icc").exitCode, 3);
}

} // namespace
