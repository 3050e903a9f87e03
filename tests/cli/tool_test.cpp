// The tool as its users run it: arguments and files in, text and exit codes out.

#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace {

class Tool : public testing::Test
{
protected:
  std::string Write(const std::string &name, const std::string &text) const { return folder_.WriteText(name, text); }
  static tests::ToolResult Run(const std::string &words) { return tests::RunTool(words); }

  tests::TemporaryFolder folder_;
};

} // namespace

TEST_F(Tool, ConvertPrintsValuesOnly)
{
  const auto arguments = Run("convert '#ff8000' 'CMYK100(0,50,100,0)' tomato --to HSB");
  EXPECT_EQ(arguments.output, "HSB(30,100,100)\nHSB(30,100,100)\nHSB(9,72.16,100)\n");
  EXPECT_EQ(arguments.exitCode, 0);
  const auto lines = Run("convert - --to CMYK100 <" + Write("in", "\xEF\xBB\xBF// two\n\n#000\n  white  \r\n"));
  EXPECT_EQ(lines.output, "CMYK100(0,0,0,100)\nCMYK100(0,0,0,0)\n");
  EXPECT_EQ(lines.errors, "");
}

TEST_F(Tool, ConvertRefusesJunkWithItsPlace)
{
  const auto line = Run("convert - --to HSB <" + Write("in", "#000000\nrgb(1,2)\n"));
  EXPECT_EQ(line.exitCode, 3);
  EXPECT_EQ(line.errors.substr(0, 13), "zelclr: -:2: ");
  EXPECT_EQ(Run("convert 'CMYK100(0,101,0,0)' --to HSB").exitCode, 2);
  EXPECT_EQ(Run("convert red --to nonsense").exitCode, 2);
  EXPECT_EQ(Run("convert red --to SPOT").exitCode, 2);
  EXPECT_EQ(Run("convert red --to ''").exitCode, 2) << "some models have no name of one kind";
  EXPECT_EQ(Run("convert red").exitCode, 2);
  EXPECT_EQ(Run("").exitCode, 2);
  const auto spot = Run("convert 'SPOT(1,100)@{00000000-0000-0000-0000-000000000000}' --to HSB");
  EXPECT_EQ(spot.exitCode, 4);
  EXPECT_EQ(spot.output, "");
}

TEST_F(Tool, ColoursAreDrawnOnlyWhereWanted)
{
  EXPECT_EQ(Run("convert red --to RGB255").output, "RGB255(255,0,0)\n") << "a pipe is no terminal";
  EXPECT_EQ(Run("convert red --to RGB255 --color always").output, "\x1b[48;2;255;0;0m    \x1b[0m RGB255(255,0,0)\n");
  EXPECT_EQ(Run("convert red --to RGB255 --color perhaps").exitCode, 2);
}

TEST_F(Tool, InfoStatesEveryReading)
{
  const auto json = nlohmann::json::parse(Run("info 'CMYK100(0,0,0,50)' --json").output);
  EXPECT_EQ(json["schema"], "zelclr.info");
  EXPECT_EQ(json["schemaVersion"], 1);
  EXPECT_EQ(json["screen"], "#7f7f7f");
  EXPECT_EQ(json["is"]["prints as gray"], true);
  EXPECT_EQ(json["is"]["spot"], false);
  EXPECT_EQ(json["models"]["values"]["GRAY255"], "GRAY255(127)");
  EXPECT_EQ(json["models"]["values"].size(), 19u);
  EXPECT_EQ(json["nearestName"]["name"], "gray");
  const auto spot = Run("info 'SPOT(7,40)@{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}'");
  EXPECT_NE(spot.output.find("40"), std::string::npos);
  EXPECT_NE(spot.output.find("Without its palette"), std::string::npos);
}

TEST_F(Tool, UnreadableInputIsSaidInOneLine)
{
  for (const std::string &file : {folder_.Path("none"), folder_.Path(), Write("nul", std::string("a\0b", 3))}) {
    const auto result = Run("report " + file);
    EXPECT_EQ(result.exitCode, 3) << file;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
    EXPECT_EQ(result.output, "") << file;
  }
  // What a file says never steers the terminal.
  const auto hostile = Run("report " + Write("esc", "#ff0000 \x1b]0;owned\x07\n"));
  EXPECT_EQ(hostile.output.find('\x1b'), std::string::npos);
  EXPECT_EQ(hostile.output.find('\x07'), std::string::npos);
}
