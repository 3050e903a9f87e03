// zelclr settings, as a prepress person uses it, and against files that are damaged, hostile or not to be written.

#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

/// A user without settings, in Germany.
class SettingsCommand : public testing::Test
{
protected:
  tests::ToolResult Run(const std::string &words, const std::string &more = "") const
  {
    return tests::RunTool("settings " + words, tests::UserBelow(folder_.Path()) + " LC_ALL=de_DE.UTF-8 " + more);
  }
  json RunJson(const std::string &words, int exitCode = 0, const std::string &more = "") const
  {
    const auto result = Run(words + " --json", more);
    EXPECT_EQ(result.exitCode, exitCode) << words << "\n" << result.errors;
    return json::parse(result.output);
  }
  json Shown(const std::string &words = "") const { return RunJson("show " + words)["values"]; }
  json Row(const std::string &name, const std::string &kind = "") const
  {
    const json list = RunJson(kind + "list");
    for (const json &row : list["presets"]) {
      if (row["name"] == name)
        return row;
    }
    return nullptr;
  }
  void Write(const std::string &path, const std::string &text) const { folder_.WriteText(path, text); }
  std::string Read(const std::string &path) const { return tests::TextOf(folder_.Path(path)); }
  /// In the user's file.
  void Replace(const std::string &from, const std::string &to) const
  {
    std::string text = Read(kFile);
    ASSERT_NE(text.find(from), std::string::npos) << from;
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
      text.replace(at, from.size(), to);
    Write(kFile, text);
  }

  static inline const std::string kFile = tests::UsersFolderName() + "/color/Settings/ColorSettings.xml";
  tests::TemporaryFolder folder_;
};

} // namespace

TEST_F(SettingsCommand, ListSaysWhatIsInForceByContentAndByName)
{
  const json list = RunJson("list");
  EXPECT_EQ(list["schema"], "zelclr.settings.list");
  EXPECT_EQ(list["presets"].size(), 12u);
  EXPECT_EQ(Row("Europe Web")["inForce"], true);
  EXPECT_EQ(Row("Europe Web")["localizedName"], "Europa – Web");
  EXPECT_EQ(Row("Europe Prepress")["sameValues"], false);

  EXPECT_EQ(Run("use 'Europa – Druckvorstufe'").exitCode, 0);
  EXPECT_EQ(Run("add 'A twin'").exitCode, 0); // of what is in force
  EXPECT_EQ(Row("Europe Prepress")["inForce"], true);
  EXPECT_EQ(Row("A twin")["inForce"], false);
  EXPECT_EQ(Row("A twin")["sameValues"], true);
  EXPECT_EQ(Row("A twin")["factory"], false);
  EXPECT_EQ(Run("add 'A twin' --replace --intent saturation").exitCode, 0);
  EXPECT_EQ(Row("A twin")["sameValues"], false);
  EXPECT_THAT(Run("list").output, HasSubstr("Europe Prepress                factory  in force     Europa"));
}

TEST_F(SettingsCommand, AddTakesEveryValue)
{
  const std::string profile = folder_.Path("own.icc");
  const std::string installed = Shown("'Europe Prepress'")["cmykProfile"]["value"]["path"];
  std::filesystem::copy_file(installed, profile);
  const auto added = Run("add Mine --from 'Europe Web' --use --rgb CompatibleWithAdobeRGB1998.icc --cmyk " + profile +
                         " --gray 'Dot Gain 15%.icc' --blend gray --intent absolute --module linear --spot cmyk"
                         " --pure-black --no-gray-to-black --open-rgb assign-embedded --open-cmyk assign-baseline"
                         " --open-gray convert-baseline --import-rgb convert-embedded --import-cmyk assign-embedded"
                         " --import-gray assign-baseline --warn-open-mismatch --warn-open-missing"
                         " --warn-import-mismatch --warn-import-missing");
  ASSERT_EQ(added.exitCode, 0) << added.errors;
  const json values = Shown();
  EXPECT_THAT(values["rgbProfile"]["value"]["path"].get<std::string>(), HasSubstr("CompatibleWithAdobeRGB1998.icc"));
  EXPECT_EQ(values["cmykProfile"]["value"]["path"], profile);
  EXPECT_THAT(values["grayProfile"]["value"]["path"].get<std::string>(), HasSubstr("Dot Gain 15%.icc"));
  const std::pair<const char *, json> expected[] = {
    {"blendingModel", "gray"},
    {"intent", "absolute"},
    {"module", "linear"},
    {"engine", "linear"},
    {"spot", "cmyk"},
    {"pureBlack", true},
    {"grayToBlack", false},
    {"openRgb", "assign-embedded"},
    {"openCmyk", "assign-baseline"},
    {"openGray", "convert-baseline"},
    {"importRgb", "convert-embedded"},
    {"importCmyk", "assign-embedded"},
    {"importGray", "assign-baseline"},
    {"warnOpenMismatch", true},
    {"warnOpenMissing", true},
    {"warnImportMismatch", true},
    {"warnImportMissing", true},
  };
  for (const auto &[key, value] : expected)
    EXPECT_EQ(values[key]["value"], value) << key;
  EXPECT_EQ(values.size(), std::size(expected) + 3);
  EXPECT_EQ(Run("add Other --from Mine --no-pure-black --no-warn-import-missing").exitCode, 0);
  EXPECT_EQ(Shown("Other")["pureBlack"]["value"], false);
  EXPECT_EQ(Shown("Other")["warnImportMissing"]["value"], false);
  EXPECT_EQ(Shown("Other")["warnImportMismatch"]["value"], true);
}

TEST_F(SettingsCommand, ShowSaysWhereEachValueComesFrom)
{
  EXPECT_EQ(RunJson("show")["source"], "factory");
  EXPECT_EQ(RunJson("show")["country"], "DE");
  EXPECT_EQ(RunJson("use 'Japan Web'")["action"], "use");
  EXPECT_EQ(RunJson("show")["source"], "own");
  EXPECT_EQ(Shown()["rgbProfile"]["source"], "own");
  EXPECT_EQ(RunJson("show 'Japan Web'")["source"], "factoryPreset");
  EXPECT_EQ(RunJson("--application Draw show")["source"], "factory"); // each application has its own

  Replace("<ColorManagementModule id=\"ColorManagementModule\">Icm<",
          "<ColorManagementModule id=\"ColorManagementModule\">Wcs<");
  Replace("<PreservePureBlack>false</PreservePureBlack>", "");
  Replace("<ColorProfile id=\"Grayscale\">Gray Gamma 22.icc</ColorProfile>", "");
  const json values = Shown();
  EXPECT_EQ(values["module"]["value"], "icm");
  EXPECT_THAT(values["module"]["note"].get<std::string>(), HasSubstr("Wcs"));
  EXPECT_NE(values["engine"]["value"], "icm");
  EXPECT_EQ(values["pureBlack"]["source"], "default");
  EXPECT_EQ(values["grayProfile"]["source"], "filledIn");
  EXPECT_THAT(values["grayProfile"]["value"]["path"].get<std::string>(), HasSubstr("Dot Gain 20%.icc"));
  EXPECT_EQ(values["rgbProfile"]["source"], "own");
}

TEST_F(SettingsCommand, RefusesWhatItCannotDo)
{
  EXPECT_EQ(Run("add Mine").exitCode, 0);
  const struct
  {
    const char *words;
    int exitCode;
    const char *reason;
  } rows[] = {
    {"use Nix", 4, "no preset \"Nix\""},
    {"show '\x1b[31m\xFF'", 4, "no preset \"\uFFFD[31m\uFFFD\""},
    {"remove Nix", 4, "no preset \"Nix\""},
    {"remove 'Europe Web'", 2, "came with the installation"},
    {"add Mine", 2, "--replace"},
    {"add 'Europe Web'", 2, "--replace"},
    {"add ''", 2, "no name"},
    {"add 'a\x1b[31mb'", 2, "no name"},
    {"add X --from Nix", 4, "no preset \"Nix\""},
    {"add X --rgb 'ISO Coated FOGRA39.icc'", 2, "no profile of RGB"},
    {"add X --cmyk nowhere.icc", 3, "nowhere.icc"},
    {"add X --module wcs", 4, "wcs"},
    {"add X --intent best", 2, "perceptual"},
    {"--application Factory list", 2, "no name of an application"},
    {"export Nix -", 4, "no preset"},
    {"export --all Mine x.xml", 2, "--all"},
    {"export /nowhere/x.xml", 3, "/nowhere/x.xml"},
    {"import nowhere.xml", 3, "nowhere.xml"},
    {"proof add X --warning-transparency nan", 2, "from 0 to 1"},
    {"proof add X --warning-transparency 1.5", 2, "from 0 to 1"},
    {"proof add X --warning-color none", 2, "none"},
    {"frobnicate", 2, ""},
  };
  const std::string before = Read(kFile);
  for (const auto &row : rows) {
    const auto result = Run(row.words);
    EXPECT_EQ(result.exitCode, row.exitCode) << row.words << "\n" << result.errors;
    EXPECT_THAT(result.errors, HasSubstr(row.reason)) << row.words;
    EXPECT_THAT(result.errors, Not(HasSubstr("\x1b"))) << row.words;
  }
  EXPECT_EQ(Run("export " + folder_.Path(kFile)).exitCode, 2); // the file itself
  EXPECT_EQ(Read(kFile), before);
}

TEST_F(SettingsCommand, ExportedPresetsComeBackWhole)
{
  const std::string file = folder_.Path("out.xml");
  const std::string name = R"("O'Neil \"A\" <b>&amp; \$x")"; // as the shell has it
  EXPECT_EQ(Run("add " + name + " --blend cmyk --no-gray-to-black").exitCode, 0);
  EXPECT_EQ(Run("add Second --spot rgb").exitCode, 0);
  const json values = Shown(name);
  EXPECT_EQ(Run("export --all " + file).exitCode, 0);
  EXPECT_EQ(Run("import " + file).output, "All of it is here already.\n");
  EXPECT_EQ(Run("remove " + name).exitCode, 0);
  EXPECT_EQ(Run("add Second --replace --spot lab").exitCode, 0);

  const std::string before = Read(kFile); // "Second" is taken, so that nothing comes in
  EXPECT_EQ(Run("import " + file).exitCode, 2);
  EXPECT_EQ(Read(kFile), before);
  EXPECT_EQ(RunJson("import --replace " + file)["presets"].size(), 2u);
  EXPECT_EQ(Shown(name), values);
  EXPECT_EQ(Shown("Second")["spot"]["value"], "rgb");

  EXPECT_EQ(Run("remove Second").exitCode, 0);
  EXPECT_EQ(Run("--application Draw import - < " + file).exitCode, 0);
  EXPECT_EQ(RunJson("--application Draw list")["presets"].size(), 14u);
  EXPECT_EQ(RunJson("list")["presets"].size(), 13u);
  EXPECT_THAT(Run("export 'Europe Web' -").output, HasSubstr("<ColorSettings id=\"Europe Web\">"));
}

TEST_F(SettingsCommand, ImportTakesAllOrNothing)
{
  EXPECT_EQ(Run("add One").exitCode, 0);
  EXPECT_EQ(Run("add Two --intent perceptual").exitCode, 0);
  EXPECT_EQ(Run("export --all " + folder_.Path("good.xml")).exitCode, 0);
  EXPECT_EQ(Run("remove One").exitCode, 0);
  EXPECT_EQ(Run("remove Two").exitCode, 0);
  const std::string good = Read("good.xml");
  const std::string before = Read(kFile);
  const auto changed = [&good](const std::string &from, const std::string &to) {
    std::string text = good;
    return text.replace(text.rfind(from), from.size(), to); // in the second preset
  };
  const std::pair<std::string, const char *> rows[] = {
    {changed("Perceptual", "Best"), "\\\"Best\\\" is no value for RenderingIntent"},
    {changed("<Name>Two", "<Name>&#9;Two"), "no name for a preset"},
    {changed("<Name>Two", "<Name>One"), "two presets"},
    {changed("<ColorProfile id=\"Cmyk\">", "<ColorProfile id=\"Cmyk\">\u202Eno"), "is not installed"},
    {changed("ColorContext", "Context"), "line"},
    {good.substr(0, good.size() / 2), "line"},
    {"", ""},
    {"<a/>", "its root is neither"},
    {"<ColorSettings/>", "it has no ColorContext"},
    {"<!DOCTYPE a [<!ENTITY b \"c\">]><a/>", ""},
  };
  for (const auto &[text, reason] : rows) {
    Write("bad.xml", text);
    const auto result = Run("import --replace " + folder_.Path("bad.xml"));
    EXPECT_EQ(result.exitCode, 3) << text;
    std::string plain = reason;
    std::erase(plain, '\\');
    EXPECT_THAT(result.errors, HasSubstr(plain)) << text;
  }
  Write("bad.xml", "<ColorManagementSettingsCollection/>");
  EXPECT_EQ(Run("import " + folder_.Path("bad.xml")).exitCode, 4);
  EXPECT_EQ(Read(kFile), before);
}

TEST_F(SettingsCommand, DamagedFilesAreToldOfAndKept)
{
  EXPECT_EQ(Run("add Mine").exitCode, 0);
  const std::string damaged = Read(kFile).substr(0, 3000);
  Write(kFile, damaged);
  for (const char *words : {"list", "show"}) {
    const auto result = Run(words);
    EXPECT_EQ(result.exitCode, 3) << words;
    EXPECT_THAT(result.errors, HasSubstr("is damaged: line ")) << words;
  }
  EXPECT_EQ(RunJson("where", 1)["files"][0]["state"], "damaged");
  EXPECT_EQ(Read(kFile), damaged);
  EXPECT_EQ(Run("add After").exitCode, 0);
  EXPECT_EQ(Read(std::string(kFile) + ".damaged"), damaged);
  EXPECT_EQ(RunJson("where")["files"][1]["kind"], "kept");
  EXPECT_EQ(RunJson("list")["presets"].size(), 13u);

  Replace("ISO Coated FOGRA39.icc", "\xC2\x9B"
                                    "31mGone.icc"); // a preset or two of which a profile is missing
  const auto result = Run("list");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("\"Europe Prepress\" of the list \"Factory\" is left out: its profile"));
  EXPECT_THAT(result.errors, Not(HasSubstr("\xC2\x9B")));
}

TEST_F(SettingsCommand, ChangesThatCannotBeWrittenAreFailures)
{
  folder_.Write("file", {'x'}); // where the user's folder should be
  for (const char *words : {"add Mine", "use 'Japan Web'", "proof add Mine", "proof use 'Web Display (sRGB)'"}) {
    const auto result = Run(words, tests::UserBelow(folder_.Path("file")));
    EXPECT_EQ(result.exitCode, 3) << words;
    EXPECT_THAT(result.errors, HasSubstr("cannot be written: ")) << words;
    EXPECT_EQ(result.output, "") << words;
  }
  EXPECT_EQ(Run("show", tests::UserBelow(folder_.Path("file"))).exitCode, 0);
  EXPECT_THAT(Run("add Mine", tests::UserBelow("") + " HOME=").errors, HasSubstr("no folder for the user"));
  if (!tests::FullDevice().empty()) {
    EXPECT_EQ(Run("list > " + tests::FullDevice()).exitCode, 3);
  }
}

TEST_F(SettingsCommand, WhereNamesTheFilesAndMakesNone)
{
  const json where = RunJson("where", 0, "LC_ALL=ja_JP.UTF-8");
  ASSERT_EQ(where["files"].size(), 3u);
  EXPECT_EQ(where["files"][0]["path"], folder_.Path(kFile));
  EXPECT_EQ(where["files"][0]["state"], "missing");
  EXPECT_EQ(where["files"][1]["presets"]["Factory"], 12);
  EXPECT_EQ(where["files"][2]["region"], "Asia");
  EXPECT_EQ(where["files"][2]["startsWith"], "Japan Web");
  EXPECT_EQ(where["environment"]["ZELCLR_COLORSETTINGS_XML"], nullptr);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("zelclr")));
  EXPECT_EQ(RunJson("where", 1, "ZELCLR_COLORSETTINGS_XML=none.xml")["files"][1]["state"], "missing");
}

TEST_F(SettingsCommand, ProofSettingsGoTheSameWay)
{
  EXPECT_EQ(RunJson("proof show")["values"]["simulated"]["value"], nullptr);
  const auto added = Run("proof add Paper --simulate 'ISO Uncoated FOGRA29.icc' --intent absolute --preserve-numbers"
                         " --warning --warning-color '#ff00ff' --warning-transparency 0.25 --use");
  ASSERT_EQ(added.exitCode, 0) << added.errors;
  json values = RunJson("proof show")["values"];
  EXPECT_THAT(values["simulated"]["value"]["path"].get<std::string>(), HasSubstr("ISO Uncoated FOGRA29.icc"));
  EXPECT_EQ(values["intent"]["value"], "absolute");
  EXPECT_EQ(values["preserveNumbers"]["value"], true);
  EXPECT_EQ(values["warning"]["value"], true);
  EXPECT_EQ(values["warningColor"]["value"]["channels"], json({1.0, 0.0, 1.0}));
  EXPECT_EQ(values["warningTransparency"]["value"], 0.25);
  EXPECT_EQ(Row("Paper", "proof ")["inForce"], true);

  // What is only drawn counts in a file, too.
  const std::string file = folder_.Path("paper.xml");
  EXPECT_EQ(Run("proof export Paper " + file).exitCode, 0);
  EXPECT_EQ(Run("proof add Paper --replace --no-warning").exitCode, 0);
  EXPECT_EQ(Run("proof import " + file).exitCode, 2);
  EXPECT_EQ(Run("proof import --replace " + file).exitCode, 0);
  EXPECT_EQ(RunJson("proof show Paper")["values"]["warning"]["value"], true);
  EXPECT_EQ(Run("import " + file).exitCode, 3); // of the other kind

  EXPECT_EQ(Run("proof add Nothing --from Paper --simulate none --use").exitCode, 0);
  EXPECT_EQ(RunJson("proof show")["values"]["simulated"]["value"], nullptr);
  EXPECT_EQ(Run("proof remove Paper").exitCode, 0);
  EXPECT_EQ(RunJson("proof list")["presets"].size(), 15u);
  EXPECT_EQ(RunJson("proof where")["files"][0]["presets"]["ZelClr"], 1);
}
