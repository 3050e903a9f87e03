// zelclr gradient: colours in, strips of blends out.

#include "cli/image/image_file.h"
#include "tests/support/tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

namespace {

using nlohmann::json;
using testing::HasSubstr;

const std::string kPress = ZELCLR_PROFILES "/USWebCoatedSWOP.icc";

tests::ToolResult Gradient(const std::string &words)
{
  return tests::RunTool("gradient " + words);
}

json ParsedJson(const std::string &words)
{
  const auto result = Gradient(words + " --json");
  EXPECT_EQ(result.errors, "");
  return json::parse(result.output);
}

TEST(GradientCommand, ListsTheShades)
{
  const auto text = Gradient("'#000' '#fff' --samples 3");
  EXPECT_EQ(
    text.output,
    "straight, in RGB255\n   0.0 %  RGB255(0,0,0)\n  50.0 %  RGB255(128,128,128)\n 100.0 %  RGB255(255,255,255)\n");
  EXPECT_EQ(text.exitCode, 0);

  const json all = ParsedJson("red 'blue 20%' lime '#00f 80%' --blend all --samples 5");
  EXPECT_EQ(all["schema"], "zelclr.gradient");
  EXPECT_EQ(all["press"], json());
  ASSERT_EQ(all["strips"].size(), 3u);
  EXPECT_EQ(all["strips"][1]["blend"], "hue");
  EXPECT_EQ(all["strips"][0]["stops"], json({0.0, 20.0, 50.0, 80.0}));
  EXPECT_EQ(all["strips"][2]["samples"][1],
            (json{{"position", 20.0}, {"value", "RGB255(0,0,255)"}, {"screen", "#0000ff"}}));

  const json mixed = ParsedJson("red lime blue --blend straight,hue --samples 5");
  EXPECT_EQ(mixed["strips"][0]["blend"], "straight,hue");
  EXPECT_EQ(mixed["strips"][0]["samples"][1]["value"], "RGB255(128,128,0)");
  EXPECT_EQ(mixed["strips"][0]["samples"][3]["value"], "RGB255(0,255,255)");
  EXPECT_EQ(ParsedJson("'#000' '#fff' --midpoint 75 --samples 5")["strips"][0]["samples"][3]["screen"], "#808080");
  EXPECT_EQ(ParsedJson("'#000' '#fff' --acceleration 1 --samples 3")["strips"][0]["samples"][1]["screen"], "#404040");
  EXPECT_EQ(
    ParsedJson("'#000' '#fff' --acceleration 1 --method eased --samples 5")["strips"][0]["samples"][1]["screen"],
    "#282828");
  EXPECT_EQ(ParsedJson("red 'CMYK100(0,0,0,100)'")["strips"][0]["model"], "CMYK255");
  EXPECT_EQ(ParsedJson("red blue --model lab")["strips"][0]["model"], "LAB");
}

TEST(GradientCommand, TellsWhereThePressCannotFollow)
{
  const auto text = Gradient("white '#00f' --profile " + kPress);
  EXPECT_EQ(text.exitCode, 1);
  EXPECT_THAT(text.output, HasSubstr("RGB255(0,0,255)  out of gamut\n"));
  EXPECT_THAT(text.output, HasSubstr("Beyond the gamut of "));
  const json paper = ParsedJson("'CMYK100(100,100,0,0)' 'CMYK100(0,0,0,0)' --profile " + kPress);
  EXPECT_EQ(paper["strips"][0]["gamutEdges"], json::array()) << "inks of the press itself";
  EXPECT_EQ(paper["strips"][0]["samples"][0]["inGamut"], true);
}

TEST(GradientCommand, DrawsPictures)
{
  const tests::TemporaryFolder folder;
  ASSERT_EQ(Gradient("red '#00f 100%' --blend all --profile " + kPress + " -o " + folder.Path("a.svg")).exitCode, 1);
  const std::string svg = tests::TextOf(folder.Path("a.svg"));
  EXPECT_EQ(svg.substr(0, 4), "<svg");
  for (const char *part :
       {"stop-color=\"#ff0000\"", "stop-color=\"#0000ff\"", "hue-back, in RGB255", "class=\"out\"", "</svg>\n"})
    EXPECT_THAT(svg, HasSubstr(part));

  ASSERT_EQ(Gradient("red blue --blend all -o " + folder.Path("a.PNG")).exitCode, 0);
  const auto reader = cli::OpenImage(folder.Path("a.PNG"));
  EXPECT_EQ(reader->Info().width, 1024u);
  EXPECT_TRUE(reader->Info().isSrgb);
  tests::Bytes row(reader->Info().ColourBytesPerRow());
  reader->ReadRows(1, row.data(), nullptr);
  EXPECT_EQ(tests::Bytes(row.begin(), row.begin() + 3), (tests::Bytes{255, 0, 0}));
  EXPECT_EQ(tests::Bytes(row.end() - 3, row.end()), (tests::Bytes{0, 0, 255}));
}

TEST(GradientCommand, RefusesWhatMakesNoSense)
{
  for (const char *words :
       {"red", "red blue --blend round", "red blue --blend hue,hue", "red blue --blend ''", "'red 101%' blue",
        "'red x%' blue", "'red 50%' 'blue 20%'", "red nonsense", "red blue --samples 0", "red blue --samples 99999999",
        "red blue --midpoint 0", "red blue --acceleration nan", "red blue --method none", "red blue --model nonsense",
        "red blue -o a.gif", "red blue --profile 'CIE Lab.icc'"})
  {
    const auto result = Gradient(words);
    EXPECT_EQ(result.exitCode, 2) << words << result.errors;
    EXPECT_EQ(result.output, "") << words;
  }
  EXPECT_EQ(Gradient("red 'SPOT(1,100)@{00000000-0000-0000-0000-000000000000}'").exitCode, 4);
  EXPECT_EQ(Gradient("red blue -o /nowhere/a.png").exitCode, 3);
  EXPECT_EQ(Gradient("red blue -o /nowhere/a.svg").exitCode, 3);
  EXPECT_EQ(Gradient("red blue --profile /nowhere/press.icc").exitCode, 3);
}

} // namespace
