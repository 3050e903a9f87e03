// zelclr profile, on shipped profiles and on built ones, right and wrong.

#include "tests/support/icc_profile.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/tool.h"
#include "zelclr/platform/xml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using tests::Bytes;

constexpr const char *kHostile = "\x1b]0;owned\x07</title><script>alert(1)</script>&\"' ]]> <svg onload=\"x\">";

/// A user's folder of profiles, beside those that are shipped and those of the system.
class ProfileCommand : public testing::Test
{
protected:
  std::string Install(const std::string &name, const Bytes &bytes) const
  {
    return folder_.Write(tests::UsersFolderName() + "/color/profiles/" + name, bytes);
  }
  std::string Write(const std::string &name, const Bytes &bytes) const { return folder_.Write(name, bytes); }
  tests::ToolResult Run(const std::string &words) const
  {
    return tests::RunTool("profile " + words,
                          "XDG_CONFIG_HOME=" + folder_.Path("config") + " " + tests::UserBelow(folder_.Path()));
  }
  json RunJson(const std::string &words, int exitCode = 0) const
  {
    const auto result = Run(words + " --json");
    EXPECT_EQ(result.exitCode, exitCode) << words << "\n" << result.errors;
    return json::parse(result.output);
  }
  std::string Read(const std::string &name) const { return tests::TextOf(folder_.Path(name)); }

  tests::TemporaryFolder folder_;
};

/// Why a page is not well-formed XML without a document type; empty when it is.
std::string FaultOfXml(const std::string &xml)
{
  std::string reason = xml.find("<!DOCTYPE") == std::string::npos ? "" : "a document type";
  if (reason.empty())
    ZelUtl::WXmlDoc::FromBytes(xml, reason);
  return reason;
}

std::set<std::string> MatchesOf(const std::string &text, const char *pattern)
{
  const std::regex expression(pattern);
  std::set<std::string> matches;
  for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator(); ++match)
    matches.insert((*match)[1]);
  return matches;
}

} // namespace

TEST_F(ProfileCommand, ListGoesByModelClassAndName)
{
  Install("1.icc", tests::NamedProfile("Zebra", "RGB ", "mntr"));
  Install("2.icc", tests::NamedProfile("Ant", "RGB ", "spac"));
  Install("3.icc", tests::NamedProfile("Bee", "RGB ", "mntr"));
  Install("4.icc", tests::NamedProfile("Yak", "RGB ", "scnr"));
  Install("5.icc", tests::NamedProfile("Ant", "GRAY", "prtr"));
  Install("6.icc", tests::NamedProfile("Yak", "CMYK", "prtr"));
  Install("7.icc", {'n', 'o', 'n', 'e'});
  Install("8.icc", tests::NamedProfile("a link", "RGB ", "link"));

  const auto ours = [this](const std::string &filter) {
    std::vector<std::string> rows;
    const json list = RunJson("list" + filter);
    EXPECT_EQ(list["schema"], "zelclr.profile.list");
    EXPECT_EQ(list["schemaVersion"], 1);
    for (const auto &row : list["profiles"]) {
      if (row["path"].get<std::string>().starts_with(folder_.Path()))
        rows.push_back(row["model"].get<std::string>() + " " + row["class"].get<std::string>() + " " +
                       row["name"].get<std::string>() + " " + row["file"].get<std::string>());
    }
    return rows;
  };
  using Rows = std::vector<std::string>;
  const Rows rgb = {"rgb input Yak 4.icc", "rgb display Bee 3.icc", "rgb display Zebra 1.icc", "rgb space Ant 2.icc"};
  Rows all = rgb;
  all.insert(all.end(), {"cmyk output Yak 6.icc", "gray output Ant 5.icc"});
  EXPECT_EQ(ours(""), all);
  EXPECT_EQ(ours(" --model RGB"), rgb);
  EXPECT_EQ(ours(" --class output"), (Rows{"cmyk output Yak 6.icc", "gray output Ant 5.icc"}));
  EXPECT_EQ(ours(" --model cmyk --class display"), Rows{});
  EXPECT_EQ(Run("list --model hls --class input").output, "No such profile is installed.\n");

  // One name leads to one file: the file's name before a description, and either without regard to case.
  EXPECT_EQ(Run("path 3.icc").output, folder_.Path(tests::UsersFolderName() + "/color/profiles/3.icc") + "\n");
  EXPECT_EQ(Run("path zebra").output, folder_.Path(tests::UsersFolderName() + "/color/profiles/1.icc") + "\n");
  EXPECT_EQ(RunJson("path")["folders"][0]["path"], folder_.Path(tests::UsersFolderName() + "/color/profiles"));
}

// The witnesses: volumes by Argyll's iccgamut, whites and blacks by transicc of Little CMS without compensation. A
// volume depends on how finely a body is cut, by about one in two hundred; a Lab is rounded to two decimals from 16
// bits.
TEST_F(ProfileCommand, InfoMeasuresAsOthersDo)
{
  struct Row
  {
    const char *name;
    const char *model;
    double volume;
    std::array<double, 3> white; ///< absolute
    std::array<double, 3> black; ///< relative
    double leastInk, mostInk;
  };
  for (const Row &row : {Row{"sRGB_v4.icc", "rgb", 833'600, {100, 0, 0}, {0, 0, 0}, 0, 0},
                         {"CompatibleWithAdobeRGB1998.icc", "rgb", 1'209'500, {100, 0, 0}, {0, 0, 0}, 0, 0},
                         {"ISO Coated FOGRA39.icc", "cmyk", 453'100, {95.03, 0, -2}, {11.61, 0.51, -0.18}, 320, 330},
                         {"USWebCoatedSWOP.icc", "cmyk", 433'400, {92.49, 0.01, 0}, {12.57, 0.34, -0.16}, 295, 305}})
  {
    SCOPED_TRACE(row.name);
    const json info = RunJson("info '" + std::string(row.name) + "'");
    EXPECT_EQ(info["schema"], "zelclr.profile.info");
    EXPECT_EQ(info["model"], row.model);
    EXPECT_EQ(info["damaged"], false);
    EXPECT_NEAR(info["relative"]["gamutVolume"], row.volume, row.volume / 200);
    std::size_t i = 0;
    for (const char *const axis : {"l", "a", "b"}) {
      EXPECT_NEAR(info["absolute"]["white"][axis], row.white[i], 0.02) << axis;
      EXPECT_NEAR(info["relative"]["black"][axis], row.black[i++], 0.02) << axis;
    }
    EXPECT_EQ(info["relative"]["white"], (json{{"l", 100.0}, {"a", 0.0}, {"b", 0.0}}));
    EXPECT_EQ(info["mostInk"].empty(), row.mostInk == 0);
    for (const auto &[intent, percent] : info["mostInk"].items())
      EXPECT_TRUE(percent >= row.leastInk && percent <= row.mostInk) << intent << " " << percent;
  }
  const json six = RunJson("info Hexachrome.icc");
  EXPECT_EQ(six["relative"]["blackChannels"].size(), 6u);
  EXPECT_GT(six["relative"]["gamutVolume"], 453'100) << "six inks reach further than four";
  for (const char *const without : {"'Gray Gamma 22.icc'", "'Dot Gain 20%.icc'", "'CIE Lab.icc'"}) {
    const json info = RunJson("info " + std::string(without));
    EXPECT_TRUE(info["relative"]["gamutVolume"].is_null()) << without;
    EXPECT_NE(info["noGamut"], "") << without;
  }
}

TEST_F(ProfileCommand, CompareIsTheSameBothWaysRound)
{
  const std::string press = "'ISO Coated FOGRA39.icc' ", screen = "sRGB_v4.icc ";
  for (const char *const intent : {"--intent relative", "--intent absolute"}) {
    const json there = RunJson("compare " + press + screen + intent);
    const json back = RunJson("compare " + screen + press + intent);
    EXPECT_EQ(there["schema"], "zelclr.profile.compare");
    EXPECT_EQ(there["a"], back["b"]);
    EXPECT_EQ(there["b"], back["a"]);
    EXPECT_EQ(there["deltaE2000"], back["deltaE2000"]);
    EXPECT_EQ(there["gamut"]["commonVolume"], back["gamut"]["commonVolume"]);
    EXPECT_EQ(there["gamut"]["shareOfAWithinB"], back["gamut"]["shareOfBWithinA"]);
    // Cyan and yellow inks lie beyond a screen, most of a screen's colours beyond the inks.
    const double inks = there["gamut"]["shareOfAWithinB"], lights = there["gamut"]["shareOfBWithinA"];
    EXPECT_TRUE(inks > 0.85 && inks < 0.97 && lights > 0.4 && lights < 0.6) << inks << " " << lights;
  }
  const json shared = RunJson("compare " + press + screen)["gamut"];
  char shares[80];
  std::snprintf(shares, sizeof shares, "%.1f %% of A is within B %15s%.1f %% of B is within A",
                100.0 * shared["shareOfAWithinB"].get<double>(), "", 100.0 * shared["shareOfBWithinA"].get<double>());
  EXPECT_THAT(Run("compare " + press + screen).output, HasSubstr(shares));
  const json same = RunJson("compare " + screen + screen);
  EXPECT_EQ(same["gamut"]["shareOfAWithinB"], 1.0);
  EXPECT_EQ(same["deltaE2000"]["black"]["absolute"], 0.0);
  // Of nothing, nothing is shared.
  auto dark = tests::MatrixProfile("dark");
  for (auto &[signature, bytes] : dark.tags) {
    if (signature.ends_with("XYZ"))
      bytes = tests::FixedTag("XYZ ", {0, 0, 0});
  }
  const std::string path = Write("dark.icc", dark.Build());
  EXPECT_EQ(RunJson("compare " + screen + path)["gamut"]["shareOfBWithinA"], 0.0);
  const auto drawn = Run("compare " + screen + path + " --svg -");
  EXPECT_EQ(FaultOfXml(drawn.output), "");
  EXPECT_THAT(MatchesOf(drawn.output, "(\\bnan\\b|\\binf\\b)"), testing::IsEmpty());
  EXPECT_TRUE(RunJson("compare " + screen + "'CIE Lab.icc'")["gamut"].is_null());
}

TEST_F(ProfileCommand, WrongUseAndBadFilesAreSaidInOneLine)
{
  const std::string good = Write("good.icc", tests::MatrixProfile("good").Build());
  const std::string long128 = Write("header.icc", Bytes(128, 'x'));
  if (tests::NamesAreBytes())
    Write("\xFF.icc", tests::MatrixProfile("good").Build());

  struct Row
  {
    std::string words;
    int exitCode;
    const char *message;
  };
  for (const auto &[words, exitCode, message] :
       {Row{"", 2, "subcommand"},
        {"info", 2, "required"},
        {"info ''", 2, "empty"},
        {"compare " + good, 2, "required"},
        {"list --model quadrichrome", 2, "\"quadrichrome\", only rgb, cmyk"},
        {"list --class 1", 2, "only input, display"},
        {"info " + good + " --intent perceptual", 2, "only relative, absolute"},
        {"info " + good + " --svg ''", 2, "empty"},
        {"info " + good + " --svg - --json", 2, "both print"},
        {"info " + good + " --svg " + good, 2, "the profile itself"},
        {"compare sRGB_v4.icc " + good + " --svg " + good, 2, "the profile itself"},
        {"info " + good + " --svg " + folder_.Path("none/x.svg"), 3, "none/x.svg: "},
        {"info nonsuch", 3, "nonsuch: not installed"},
        {"compare sRGB_v4.icc " + folder_.Path("nonsuch"), 3, "nonsuch: "},
        {"info " + folder_.Path(), 3, "a folder"},
        {"info " + tests::PipeAndDevice(folder_.Path()).back(), 3, "not a regular file"},
        {"info " + folder_.Path("\xFF.icc"), 3, tests::NamesAreBytes() ? "not UTF-8" : "\uFFFD.icc: "},
        {"info " + long128, 3, "not an ICC profile"},
        {"info 'no\x1b[31m'", 3, "no\uFFFD[31m: "}})
  {
    const auto result = Run(words);
    EXPECT_EQ(result.exitCode, exitCode) << words;
    EXPECT_THAT(result.errors, HasSubstr(message)) << words;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
    EXPECT_EQ(result.output, "") << words;
  }
  if (const std::string full = tests::FullDevice(); !full.empty()) {
    EXPECT_THAT(Run("info " + good + " --svg " + full).errors, HasSubstr(full + ": "));
    for (const char *const words : {"list", "path", "info sRGB_v4.icc", "info sRGB_v4.icc --json",
                                    "info sRGB_v4.icc --svg -", "compare sRGB_v4.icc sRGB_v4.icc"})
      EXPECT_EQ(Run(words + (" >" + full)).exitCode, 3) << words;
  }
  EXPECT_EQ(tests::ReadBytes(good), tests::MatrixProfile("good").Build());
}

TEST_F(ProfileCommand, APartOfAProfileIsNeverFine)
{
  const Bytes whole = tests::MatrixProfile("whole").Build();
  const std::size_t endOfTable = 132 + 12 * 8;
  for (const std::size_t size : {std::size_t{0}, endOfTable - 1, endOfTable, whole.size() - 1}) {
    const std::string path = Write("part.icc", Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    const auto result = Run("info --json " + path);
    EXPECT_EQ(result.exitCode, size < endOfTable ? 3 : 1) << size;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << size << result.errors;
    if (result.exitCode == 1)
      EXPECT_EQ(json::parse(result.output)["damaged"], true) << size;
    else
      EXPECT_EQ(result.output, "") << size;
  }
  Bytes outside = whole;
  outside[136] = 0xFF; // the first tag's offset
  const std::string path = Write("outside.icc", outside);
  EXPECT_THAT(Run("info " + path).output, HasSubstr("OUTSIDE THE FILE"));
  for (const std::string &words : {"info " + path, "compare sRGB_v4.icc " + path}) {
    const auto result = Run(words);
    EXPECT_EQ(result.exitCode, 1) << words;
    EXPECT_THAT(result.errors, HasSubstr("'desc' lies outside the file")) << words;
  }
}

TEST_F(ProfileCommand, WhatAProfileSaysSteersNothing)
{
  const std::string profile =
    Install(tests::NamesAreBytes() ? "hostile <b>&.icc" : "hostile b&.icc", tests::MatrixProfile(kHostile).Build());
  const std::string quoted = "'" + profile + "'";
  for (const std::string &words :
       {std::string("list"), "info " + quoted, "compare " + quoted + " sRGB_v4.icc", "info " + quoted + " --json",
        "info " + quoted + " --svg " + folder_.Path("info.svg"),
        "compare sRGB_v4.icc " + quoted + " --svg " + folder_.Path("compare.svg"), "path " + quoted})
  {
    const auto result = Run(words);
    EXPECT_EQ(result.exitCode, 0) << words << result.errors;
    EXPECT_THAT(result.output, Not(HasSubstr("\x1b"))) << words;
    EXPECT_THAT(result.output, Not(HasSubstr("\x07"))) << words;
  }
  for (const char *const picture : {"info.svg", "compare.svg"}) {
    SCOPED_TRACE(picture);
    const std::string svg = Read(picture);
    EXPECT_EQ(FaultOfXml(svg), "");
    EXPECT_THAT(svg, HasSubstr("&lt;/title&gt;&lt;script&gt;"));
    const auto elements = MatchesOf(svg, "<([a-zA-Z]+)");
    EXPECT_THAT(elements, testing::IsSubsetOf({"svg", "title", "style", "rect", "line", "path", "text", "defs",
                                               "clipPath", "linearGradient", "stop", "g"}));
    const auto attributes = MatchesOf(svg, " ([\\w:-]+)=\"");
    EXPECT_THAT(attributes, Not(testing::Contains(testing::AnyOf(testing::StartsWith("on"), HasSubstr("href")))));
    EXPECT_EQ(MatchesOf(svg, "url\\(#([^)]+)\\)"), MatchesOf(svg, " id=\"([^\"]+)\"")) << "what is used is there";
  }
}

TEST_F(ProfileCommand, APictureIsDrawnWholeOrNotAtAll)
{
  const std::string path = Write("picture.svg", {'o', 'l', 'd'});
  for (const char *const words :
       {"info 'Gray Gamma 22.icc'", "info 'CIE Lab.icc'", "compare sRGB_v4.icc 'CIE Lab.icc'"}) {
    const auto result = Run(words + std::string(" --svg ") + path);
    EXPECT_EQ(result.exitCode, 4) << words;
    EXPECT_THAT(result.errors, HasSubstr("no picture is drawn")) << words;
    EXPECT_NE(result.output, "") << "the facts are said all the same";
    EXPECT_EQ(Read("picture.svg"), "old") << words;
  }
  EXPECT_EQ(Run("info Hexachrome.icc --svg " + path).exitCode, 0);
  EXPECT_EQ(Run("info Hexachrome.icc --svg -").output, Read("picture.svg"));
  const std::string absolute = Run("info Hexachrome.icc --intent absolute --svg -").output;
  EXPECT_THAT(absolute, HasSubstr("absolute colorimetric"));
  EXPECT_NE(absolute, Read("picture.svg"));
}
