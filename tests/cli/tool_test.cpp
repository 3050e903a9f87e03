// The tool as its users run it: arguments and files in, text and exit codes out.

#include "tests/support/tool.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

class Tool : public testing::Test
{
protected:
  Tool() : folder_(fs::temp_directory_path() / ("zelclr_tool_" + std::to_string(::getpid())))
  {
    fs::create_directories(folder_);
  }
  ~Tool() override { fs::remove_all(folder_); }

  std::string Path(const std::string &name) const { return (folder_ / name).string(); }
  std::string Write(const std::string &name, const std::string &bytes) const
  {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }
  static std::string Read(const std::string &path)
  {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
  }
  static tests::ToolResult Run(const std::string &words) { return tests::RunTool(words); }

  fs::path folder_;
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
  EXPECT_EQ(Run("convert red --to RGB255 --color never").output, "RGB255(255,0,0)\n");
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

TEST_F(Tool, ReportSaysTheSameInEveryForm)
{
  const std::string list = Write("list.txt", "#ffffff Paper <white> & \"co\"\n#00d68f Radar\n"
                                             "CMYK100(90,90,90,90) Heavy\n"
                                             "SPOT(1,100)@{00000000-0000-0000-0000-000000000001} Ink\n");
  const auto result = Run("report " + list + " --json -o " + Path("page.html"));
  EXPECT_EQ(result.exitCode, 1);
  const auto json = nlohmann::json::parse(result.output);
  EXPECT_EQ(json["build"], "formula");
  EXPECT_EQ(json["summary"]["colours"], 4);
  EXPECT_EQ(json["summary"]["tooMuchInk"], 1);
  EXPECT_EQ(json["summary"]["own-ink"], 1);
  EXPECT_EQ(json["colours"][0]["verdict"], "prints");
  EXPECT_EQ(json["colours"][0]["buildDeltaE2000"], 0.0);
  EXPECT_EQ(json["colours"][1]["cmyk"], nlohmann::json({100, 0, 33, 16}));
  EXPECT_EQ(json["colours"][1]["verdict"], "beyond");
  EXPECT_EQ(json["colours"][2]["verdict"], "prints") << "an ink build prints as itself";
  EXPECT_EQ(json["colours"][2]["ink"], 360);

  const std::string page = Read(Path("page.html"));
  EXPECT_NE(page.find("Paper &lt;white&gt; &amp; &quot;co&quot;"), std::string::npos);
  for (const auto &colour : json["colours"]) {
    if (colour.contains("paper")) {
      const std::string paper = colour["paper"];
      EXPECT_NE(page.find("fill=\"" + paper + "\""), std::string::npos) << paper;
    }
  }
  for (const char *outside : {"http:", "https:", "<script", "<link", "<img", "url("})
    EXPECT_EQ(page.find(outside), std::string::npos) << outside;
  const std::string table = Run("report " + list).output;
  EXPECT_NE(table.find("4 colours: 2 can be printed, 1 beyond the press, 1 its own ink, 1 with too much ink\n"),
            std::string::npos)
    << table;
}

TEST_F(Tool, ReportWritesAllOrNothing)
{
  const std::string page = Write("page.html", "old");
  EXPECT_EQ(Run("report " + Write("bad", "#12\n") + " -o " + page).exitCode, 3);
  EXPECT_EQ(Read(page), "old");
  EXPECT_EQ(Run("report " + Write("good", "#ffffff\n") + " -o " + Path("no/such/folder.html")).exitCode, 3);
  fs::create_symlink(page, Path("link.html"));
  EXPECT_EQ(Run("report " + Path("good") + " -o " + Path("link.html")).exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(Path("link.html")));
  EXPECT_EQ(Read(page).substr(0, 15), "<!DOCTYPE html>");
  for (const auto &entry : fs::directory_iterator(folder_))
    EXPECT_EQ(entry.path().filename().string().find(".zelclr-"), std::string::npos) << "left beside it";
  EXPECT_EQ(Run("report " + Path("good") + " -o -").output.substr(0, 15), "<!DOCTYPE html>");
  // A link to nothing yet, and a name that leaves no room behind it.
  fs::create_symlink("new.html", Path("early.html"));
  EXPECT_EQ(Run("report " + Path("good") + " -o " + Path("early.html")).exitCode, 0);
  EXPECT_TRUE(fs::is_symlink(Path("early.html")) && fs::is_regular_file(Path("new.html")));
  EXPECT_EQ(Run("report " + Path("good") + " -o " + Path(std::string(255, 'n'))).exitCode, 0);
  // Never over the palette itself, whatever it is called.
  fs::create_symlink(Path("good"), Path("alias"));
  EXPECT_EQ(Run("report " + Path("good") + " -o " + Path("alias")).exitCode, 2);
  EXPECT_EQ(Read(Path("good")), "#ffffff\n");
  EXPECT_EQ(Run("report " + Path("good") + " -o ''").exitCode, 2);
  EXPECT_EQ(Run("report " + Path("good") + " -o - --json").exitCode, 2);
}

TEST_F(Tool, UnreadableInputIsSaidInOneLine)
{
  for (const std::string &file : {Path("none"), folder_.string(), Write("nul", std::string("a\0b", 3))}) {
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
