// zelclr report, against values of other programs, against the library, and against input that is hostile or not there.

#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colour/colour_names.h"
#include "zelclr/harmony/wheel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr const char *kFogra39 = "'ISO Coated FOGRA39.icc'";

/// A user without settings, in Germany, where CMYK is that of FOGRA39 and RGB is sRGB.
class ReportCommand : public testing::Test
{
protected:
  tests::ToolResult Run(const std::string &words) const
  {
    return tests::RunTool(words, tests::UserBelow(folder_.Path("home")) + " LC_ALL=de_DE.UTF-8");
  }
  std::string Write(const std::string &name, const std::string &text) const { return folder_.WriteText(name, text); }
  std::string Read(const std::string &name) const { return tests::TextOf(folder_.Path(name)); }
  json ReportOf(const std::string &colours, const std::string &words = "", int exitCode = -1) const
  {
    const auto result = Run("report --json " + Write("palette", colours) + " " + words);
    EXPECT_TRUE(result.exitCode == exitCode || (exitCode < 0 && result.exitCode < 2))
      << result.exitCode << " " << words << "\n"
      << result.errors;
    return json::parse(result.output, nullptr, false);
  }

  tests::TemporaryFolder folder_;
};

std::vector<double> Numbers(const std::string &text)
{
  std::istringstream stream(text);
  std::vector<double> numbers;
  for (double number; stream >> number;)
    numbers.push_back(number);
  return numbers;
}

/// "RGB255(51,0,255)" or "CMYK100(35,0,0,100)"; empty for channels that are no whole components.
std::string TextOf(const std::vector<double> &channels)
{
  const double scale = channels.size() == 3 ? 255.0 : 100.0;
  std::string text;
  for (const double channel : channels) {
    const long component = std::lround(channel * scale);
    if (std::abs(static_cast<double>(component) / scale - channel) > 1e-6)
      return "";
    text += (text.empty() ? channels.size() == 3 ? "RGB255(" : "CMYK100(" : ",") + std::to_string(component);
  }
  return text + ")\n";
}

} // namespace

TEST_F(ReportCommand, BuildsAndScreenValuesAreThoseOfOtherPrograms)
{
  // By destination, source and intent: tests/data/golden/README.md says how they were made.
  std::map<std::vector<std::string>, std::pair<std::string, std::vector<std::vector<double>>>> tables;
  std::ifstream file(ZELCLR_GOLDEN "/press.csv");
  std::string line, part[6];
  std::getline(file, line);
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    for (std::string &field : part)
      std::getline(fields, field, ',');
    const std::string colour = TextOf(Numbers(part[3]));
    const bool toPress = part[1].find("sRGB") == std::string::npos;
    // Towards the screen, the settings' press is meant, and the intent is relative.
    if (colour.empty() || (!toPress && (part[0].find("FOGRA39") == std::string::npos || part[2] != "1")))
      continue;
    auto &[colours, wanted] = tables[{toPress ? "press" : "screen", toPress ? part[1] : part[0], part[2]}];
    colours += colour;
    wanted.push_back(Numbers(part[4]));
  }
  ASSERT_EQ(tables.size(), 6u); // four intents and the relative one of SWOP, and one towards the screen
  for (const auto &[key, table] : tables) {
    const char *const intents[] = {"perceptual", "relative", "saturation", "absolute"};
    const auto &[colours, wanted] = table;
    const json report = ReportOf(colours, "--profile '" + key[1] + "' --intent " + intents[std::stoi(key[2])]);
    ASSERT_EQ(report["colours"].size(), wanted.size());
    ASSERT_GT(wanted.size(), 200u);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const json &row = report["colours"][i];
      for (std::size_t channel = 0; channel < wanted[i].size(); ++channel) {
        // Half a step of rounding, and what the programs themselves differ by.
        if (key[0] == "press") {
          EXPECT_NEAR(row["cmyk"][channel].get<int>(), wanted[i][channel] * 100.0, 0.53) << key[1] << key[2] << row;
        } else {
          const int byte = std::stoi(row["screen"].get<std::string>().substr(1 + 2 * channel, 2), nullptr, 16);
          EXPECT_NEAR(byte, wanted[i][channel] * 255.0, 0.9) << row;
        }
      }
    }
  }
}

TEST_F(ReportCommand, TheVerdictIsTheLibrarys)
{
  using namespace ColorSystem;
  const auto profile = [](const wchar_t *name) { return ColorProfileManager::GetInstance().GetColorProfile(name); };
  const GamutCheck check(profile(L"sRGB-Placeholder!"), profile(L"Newsprint SNAP TR002.icc"));
  std::string palette;
  for (const ZelClr::NamedRgb &row : ZelClr::SvgColourNames())
    palette += std::string(row.name) + '\n';
  for (const char *const intent : {"relative", "perceptual"}) {
    const json report =
      ReportOf(palette, "--profile 'Newsprint SNAP TR002.icc' --intent " + std::string(intent), 1)["colours"];
    std::size_t i = 0, beyond = 0;
    for (const ZelClr::NamedRgb &row : ZelClr::SvgColourNames()) {
      const bool holds = check.Holds(row.Colour());
      EXPECT_EQ(report[i++]["verdict"], holds ? "prints" : "beyond") << row.name;
      beyond += !holds;
    }
    EXPECT_TRUE(beyond > 30 && beyond < 120) << beyond;
  }
}

TEST_F(ReportCommand, CmykIsThePressesOwnUnlessThePressIsAnother)
{
  const std::string colours = "CMYK100(10,20,30,0)\nCMYK100(0,0,0,100)\nCMYK100(90,90,90,90)\n";
  fs::copy(ZELCLR_PROFILES "/ISO Coated FOGRA39.icc", folder_.Path("copy.icc"));
  for (const std::string &own :
       {std::string(), "--profile " + std::string(kFogra39), "--profile " + folder_.Path("copy.icc")})
  {
    const json report = ReportOf(colours, own, 1);
    EXPECT_EQ(report["colours"][0]["cmyk"], json({10, 20, 30, 0})) << own;
    EXPECT_EQ(report["colours"][1]["cmyk"], json({0, 0, 0, 100})) << own;
    for (const json &row : report["colours"]) {
      EXPECT_EQ(row["deltaE2000"], 0.0) << row;
      EXPECT_EQ(row["libraryDistance"], 0.0) << row;
      EXPECT_EQ(row["verdict"], "prints") << row;
      EXPECT_EQ(row["paper"], row["screen"]) << row;
    }
    // What exceeds the profile's own builds is too much, and prints almost the same with less.
    EXPECT_EQ(report["press"]["inkLimit"], 330);
    EXPECT_EQ(report["summary"]["tooMuchInk"], 1);
    EXPECT_LE(report["colours"][2]["nearest"]["ink"], 330);
    EXPECT_LT(report["colours"][2]["nearest"]["deltaE2000"], 0.5);
  }
  const json other = ReportOf(colours, "--profile USWebCoatedSWOP.icc", 0);
  EXPECT_NE(other["colours"][0]["cmyk"], json({10, 20, 30, 0}));
  EXPECT_GT(other["colours"][1]["cmyk"][0], 50) << "black ink is matched by all inks";
  EXPECT_LE(other["colours"][2]["ink"], 300);
}

TEST_F(ReportCommand, OptionsAndSettingsDecideTheBuild)
{
  const std::string colours = "#000000\n#ff0000\n#ffffff\n#0066ff\nCMYK100(0,0,0,100)\n#40a040\n";
  EXPECT_EQ(ReportOf(colours, "--preserve-black")["colours"][0]["cmyk"], json({0, 0, 0, 100}));
  EXPECT_GT(ReportOf(colours)["colours"][0]["ink"], 250);
  EXPECT_EQ(ReportOf(colours, "--preserve-black --profile USWebCoatedSWOP.icc")["colours"][4]["cmyk"],
            json({0, 0, 0, 100}));

  // White is the paper's, simulated for the absolute intent only.
  const json relative = ReportOf(colours), absolute = ReportOf(colours, "--intent absolute");
  EXPECT_EQ(relative["press"]["paperWhite"], "adapted");
  EXPECT_EQ(relative["colours"][2]["paper"], "#ffffff");
  EXPECT_EQ(relative["colours"][2]["deltaE2000"], 0.0);
  EXPECT_EQ(absolute["press"]["paperWhite"], "simulated");
  EXPECT_NE(absolute["colours"][2]["paper"], "#ffffff");
  EXPECT_GT(absolute["colours"][2]["deltaE2000"], 2.0);

  // Within any limit there is something to print, and no more ink than that; more ink never prints worse.
  double last = 100.0;
  for (const int limit : {1, 50, 150, 250, 320, 400}) {
    const json report = ReportOf(colours, "--ink-limit " + std::to_string(limit), 1);
    EXPECT_EQ(report["press"]["inkLimit"], limit);
    for (const json &row : report["colours"]) {
      EXPECT_EQ(row["tooMuchInk"], row["ink"] > limit) << row;
      EXPECT_EQ(row.contains("nearest"), row["tooMuchInk"] || row["verdict"] == "beyond") << row;
      if (row.contains("nearest")) {
        EXPECT_LE(row["nearest"]["ink"], limit) << row;
        EXPECT_TRUE(row["tooMuchInk"] || row["nearest"]["deltaE2000"] <= row["deltaE2000"]) << row;
      }
    }
    const double red = report["colours"][1]["nearest"]["deltaE2000"];
    EXPECT_LE(red, last);
    last = red;
  }

  // What the settings in force say, where nothing else is asked for.
  EXPECT_EQ(Run("settings add Mine --from 'Europe Prepress' --pure-black --cmyk 'USWebCoatedSWOP.icc' --use").exitCode,
            0);
  const json mine = ReportOf(colours);
  EXPECT_EQ(mine["press"]["profile"], "US Web Coated SWOP (TR003)");
  EXPECT_EQ(mine["colours"][0]["cmyk"], json({0, 0, 0, 100}));
  EXPECT_GT(ReportOf(colours, "--no-preserve-black")["colours"][0]["ink"], 250);
  EXPECT_NE(mine["colours"][5]["screen"], "#40a040") << "RGB is read by the settings' profile, which is wider";
}

TEST_F(ReportCommand, SaysTheSameInEveryForm)
{
  const std::string list = Write("list.txt", "#ffffff Paper <white> & \"co\"\n#00d68f Radar\n"
                                             "CMYK100(90,90,90,90) Heavy\n"
                                             "SPOT(1,100)@{00000000-0000-0000-0000-000000000001} Ink\n");
  const auto result = Run("report " + list + " --json -o " + folder_.Path("page.html"));
  EXPECT_EQ(result.exitCode, 1);
  const json report = json::parse(result.output);
  EXPECT_EQ(report["schema"], "zelclr.report");
  EXPECT_EQ(report["schemaVersion"], 2);
  EXPECT_EQ(report["press"]["profile"], "ISO Coated (FOGRA39)");
  EXPECT_EQ(report["summary"], json({{"colours", 4},
                                     {"willNotPrint", 2},
                                     {"prints", 2},
                                     {"beyond", 1},
                                     {"own-ink", 1},
                                     {"unknown", 0},
                                     {"tooMuchInk", 1}}));
  EXPECT_EQ(report["colours"][1]["verdict"], "beyond");
  EXPECT_EQ(report["colours"][3]["verdict"], "own-ink");

  const std::string page = Read("page.html");
  const std::string table = Run("report " + list).output;
  EXPECT_THAT(page, HasSubstr("Paper &lt;white&gt; &amp; &quot;co&quot;"));
  for (const char *outside : {"http:", "https:", "<script", "<link", "<img", "url("})
    EXPECT_THAT(page, Not(HasSubstr(outside)));
  for (const json &colour : report["colours"]) {
    for (const json &build : {colour, colour.value("nearest", json())}) {
      if (!build.contains("paper"))
        continue;
      char row[128];
      std::snprintf(row, sizeof row, "%s %s %3d %3d %3d %3d  %3d %%%9.1f%10.3f",
                    colour["screen"].get<std::string>().c_str(), build["paper"].get<std::string>().c_str(),
                    build["cmyk"][0].get<int>(), build["cmyk"][1].get<int>(), build["cmyk"][2].get<int>(),
                    build["cmyk"][3].get<int>(), build["ink"].get<int>(), build["deltaE2000"].get<double>(),
                    build["libraryDistance"].get<double>());
      EXPECT_THAT(table, HasSubstr(row));
      EXPECT_THAT(page, HasSubstr("fill=\"" + build["paper"].get<std::string>() + "\""));
    }
  }
  const std::string summary = "4 colours: 2 in gamut, 1 out of gamut, 1 its own ink, 1 with too much ink";
  EXPECT_THAT(table.substr(0, table.find("\n\n")), HasSubstr(summary)) << "the summary comes first";
  EXPECT_THAT(page, HasSubstr(summary));
  const std::string harmony = "monochromatic, the colours are 0.0\u00B0 off on average; 2 are nearly neutral";
  EXPECT_THAT(page, HasSubstr(harmony));
  EXPECT_THAT(table, HasSubstr("harmony    " + harmony));
  EXPECT_EQ(Run("report " + Write("fine.txt", "#808080\n")).exitCode, 0);
}

// --- The wheel -------------------------------------------------------------------------------------------------------

TEST_F(ReportCommand, FindsTheHarmonyThatAPaletteWasMadeFrom)
{
  const struct
  {
    const char *rule;
    std::vector<int> arms; // from the base; those that turn into themselves may be found at any of them
    int turn;
  } rows[] = {{"monochromatic", {0}, 360},
              {"complementary", {0, 180}, 180},
              {"triad", {0, 120, 240}, 120},
              {"tetrad", {0, 90, 180, 270}, 90},
              {"analogous", {0, 30, 60}, 360},
              {"accented-analogous", {0, 30, 60, 180}, 360},
              {"accented-analogous", {0, -30, -60, 180}, 360}}; // neighbours to the other side
  std::mt19937 random(20240607);
  const auto upTo = [&random](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
  for (const auto &row : rows) {
    for (const int noise : {0, 5, 10}) {
      const int base = upTo(359);
      std::string palette = "#808080\n#f7f6f5\n"; // without a hue to speak of
      for (std::size_t i = 0; i < 4 * row.arms.size(); ++i) {
        const int hue = ZelClr::WithinTurn(base + row.arms[i % row.arms.size()] + upTo(2 * noise) - noise);
        palette += "HSB(" + std::to_string(ZelClr::HsbHueFromWheel(hue)) + "," + std::to_string(50 + upTo(50)) + "," +
                   std::to_string(50 + upTo(50)) + ")\n";
      }
      const json wheel = ReportOf(palette, "--ink-limit 300")["wheel"];
      const std::string told = row.rule + (" from " + std::to_string(base)) + ": " + wheel.dump();
      EXPECT_EQ(wheel["nearlyNeutral"], 2) << told;
      ASSERT_EQ(wheel["rules"].size(), 6u) << told;
      const json &nearest = wheel["rules"][0];
      EXPECT_EQ(nearest["rule"], row.rule) << told;
      EXPECT_EQ(nearest["near"], true) << told;
      // The wheel's own rounding is a degree, and near red two.
      EXPECT_LE(nearest["distance"], noise + 2.0) << told;
      const double off = ZelClr::WrappedDegrees(nearest["arms"][0].get<int>() - base);
      EXPECT_LE(std::abs(std::remainder(off, row.turn)), noise + 2.0) << told;
    }
  }
}

TEST_F(ReportCommand, SaysWhenColoursKeepToNoHarmony)
{
  std::string around;
  for (int hue = 0; hue < 360; hue += 20)
    around += "HSB(" + std::to_string(ZelClr::HsbHueFromWheel(hue)) + ",90,90)\n";
  EXPECT_EQ(ReportOf(around)["wheel"]["rules"][0]["near"], false);
  EXPECT_THAT(Run("report " + Write("around", around)).output, HasSubstr("harmony    none; "));

  const std::string grays = "#808080\n#202020\n#fffefc\nSPOT(1,100)@{00000000-0000-0000-0000-000000000001} Ink\n";
  const json report = ReportOf(grays);
  EXPECT_EQ(report["wheel"], (json{{"nearlyNeutral", 3}, {"rules", json::array()}}));
  EXPECT_EQ(report["colours"][0]["wheel"], (json{{"hue", 0}, {"saturation", 0}, {"nearlyNeutral", true}}));
  EXPECT_FALSE(report["colours"][3].contains("wheel")) << "an ink without an appearance";
  EXPECT_EQ(ReportOf("#ff0000\n")["wheel"]["rules"][0]["rule"], "monochromatic");
  EXPECT_EQ(ReportOf("#ff0000\n")["colours"][0]["wheel"],
            (json{{"hue", 0}, {"saturation", 255}, {"nearlyNeutral", false}}));
  // By chroma: what is faint does not turn a palette.
  const std::string red = "HSB(0,100,90)\nHSB(0,90,80)\nHSB(0,95,70)\n";
  EXPECT_EQ(ReportOf(red + "HSB(137,100,90)\n")["wheel"]["rules"][0]["rule"], "complementary");
  const json faint = ReportOf(red + "HSB(137,100,90)\nHSB(40,12,90)\n")["wheel"]["rules"][0];
  EXPECT_EQ(faint["rule"], "complementary");
  EXPECT_LT(faint["distance"], 5.0);
}

TEST_F(ReportCommand, APressThatCannotBeIsRefusedInOneLine)
{
  const std::string palette = Write("palette", "#808080\n");
  const std::string cut = Write("cut.icc", "no profile at all");
  for (const auto &[words, exitCode] : std::vector<std::pair<std::string, int>>{{"--profile sRGB_v4.icc", 2},
                                                                                {"--profile 'CIE Lab.icc'", 2},
                                                                                {"--profile Hexachrome.icc", 2},
                                                                                {"--profile ''", 2},
                                                                                {"--profile none.icc", 3},
                                                                                {"--profile " + cut, 3},
                                                                                {"--intent bright", 2},
                                                                                {"--ink-limit 0", 2},
                                                                                {"--ink-limit 401", 2}})
  {
    const auto result = Run("report " + palette + " " + words);
    EXPECT_EQ(result.exitCode, exitCode) << words;
    EXPECT_EQ(result.output, "") << words;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << words << ": " << result.errors;
  }
  EXPECT_EQ(Run("settings use 'Simulate Color Management Off'").exitCode, 0);
  const auto byFormula = Run("report " + palette);
  EXPECT_EQ(byFormula.exitCode, 4);
  EXPECT_THAT(byFormula.errors, HasSubstr("by formula"));
}

TEST_F(ReportCommand, WritesAllOrNothing)
{
  const std::string page = Write("page.html", "old");
  EXPECT_EQ(Run("report " + Write("bad", "#12\n") + " -o " + page).exitCode, 3);
  EXPECT_EQ(Read("page.html"), "old");
  EXPECT_EQ(Run("report " + Write("good", "#ffffff\n") + " -o " + folder_.Path("no/such/folder.html")).exitCode, 3);
  EXPECT_EQ(Run("report " + folder_.Path("good") + " -o " + page).exitCode, 0);
  EXPECT_EQ(Read("page.html").substr(0, 15), "<!DOCTYPE html>");
  EXPECT_EQ(Run("report " + folder_.Path("good") + " -o -").output.substr(0, 15), "<!DOCTYPE html>");
  // Never over the palette itself, whatever it is called.
  fs::create_hard_link(folder_.Path("good"), folder_.Path("alias"));
  EXPECT_EQ(Run("report " + folder_.Path("good") + " -o " + folder_.Path("alias")).exitCode, 2);
  EXPECT_EQ(Read("good"), "#ffffff\n");
  EXPECT_EQ(Run("report " + folder_.Path("good") + " -o ''").exitCode, 2);
  EXPECT_EQ(Run("report " + folder_.Path("good") + " -o - --json").exitCode, 2);
}
