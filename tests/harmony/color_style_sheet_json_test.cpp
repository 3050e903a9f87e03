// Style sheets as JSON and back.
#include "tests/harmony/support/documents.h"
#include "tests/support/colours.h"
#include "zelclr/harmony/color_style_sheet.h"
#include "zelclr/platform/json_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ZelClr;
using Colour = CLR_COLORSPEC;
using RuleType = Harmony::RuleType;
using Texts = std::vector<std::wstring>;
using ZelUtl::FindMember;
using ZelUtl::JsonValue;
namespace Model = ZelClr::ClrModel;

namespace {

JsonValue Json(std::string_view text)
{
  std::size_t line = 0;
  std::string reason;
  auto value = ZelUtl::ReadJson(text, line, reason);
  EXPECT_TRUE(value) << text << reason;
  return value.value_or(JsonValue());
}

/// A palette of grays with these names, with what else the sheet has.
std::string Sheet(const std::vector<std::string> &names, const std::string &rest, const std::string &attributes = {})
{
  std::string colors;
  for (const std::string &name : names)
    colors += std::string(colors.empty() ? "" : ",") + R"({"name":"color","attributes":{"cs":"Gray","tints":"0.)" +
              std::to_string(colors.size() % 9 + 1) + R"(","name":")" + name + "\"}}";
  return R"({"palette_xml":{"name":"palette","attributes":{"name":"Styles")" + attributes +
         R"(},"children":[{"name":"colors","children":[{"name":"page","children":[)" + colors + "]}]}]}" +
         (rest.empty() ? "" : ",") + rest + "}";
}

struct StyleSheetJson : tests::Documents
{
  StyleSheetJson() : palette(Manager().CreateStylesPalette(one)), sheet(palette) {}
  ~StyleSheetJson() override { sheet.SetStylesPalette(nullptr); }

  std::vector<Texts> Harmonies() const
  {
    std::vector<Texts> colors;
    for (std::size_t i = 0; i < sheet.GetHarmonyCount(); ++i)
      colors.push_back(sheet.GetHarmony(i)->GetColors());
    return colors;
  }

  ZelUtl::Document one, two;
  WClrPalette *palette;
  ColorStyleSheet sheet;
};

TEST_F(StyleSheetJson, ComesBackAsItWas)
{
  const auto ink =
    SpotColorDefinitionManager::GetInstance().CreateSpotColorDefinition(L"Gold", L"Gold", Colour::MakeRGB(9, 8, 7));
  ASSERT_TRUE(sheet.AddColorStyle(L"Re\"d <\u00FC>", Colour::MakeRGB(255, 0, 0)));
  ASSERT_TRUE(sheet.AddColorStyle(L"Ink", Colour::MakeSPOT(tests::GuidOf(5), 1, 40, ink.get())));
  ASSERT_TRUE(sheet.AddColorStyle(L"Press", Colour::MakeCMYK255(1, 2, 3, 4)));
  ASSERT_GE(sheet.GenerateHarmony(RuleType::AccentedAnalogous, L"Press", 4), 0);
  ASSERT_GE(sheet.GenerateHarmony(RuleType::Custom, L"Ink", 1), 0);
  sheet.CreateHarmony(0);
  sheet.SetExternalID(L"outer");
  ASSERT_TRUE(sheet.SetExternalColorStyle({L"Press", L"id-1", L"Their press"}));
  ASSERT_TRUE(sheet.SetExternalColorStyle({L"Left out", L"", L"without an identifier"}));
  ASSERT_TRUE(sheet.SetExternalColorStyle({L"Later", L"", L""}));
  palette->SetPaletteSizeLimit(50);
  palette->SetLocked(true);
  const std::string text = sheet.ExportJsonText();

  WClrPalette other;
  ColorStyleSheet copy(&other);
  std::string reason;
  Manager().RemoveStylesPalette(two);
  sheet.SetStylesPalette(nullptr);
  Manager().RemoveStylesPalette(one); // its identifier is free again
  ASSERT_TRUE(copy.ImportJsonText(text, reason)) << reason;
  EXPECT_EQ(copy.ExportJsonText(), text);
  EXPECT_EQ(copy.GetHarmony(1)->GetRuleType(), RuleType::AccentedAnalogous);
  EXPECT_EQ(copy.GetColorStyleNames()[0], L"Re\"d <\u00FC>");
  EXPECT_EQ(copy.FindColorStyle(L"ink")->GetDensity(), 40);
  EXPECT_EQ(copy.GetExternalColorStyles().size(), 2u);
  EXPECT_TRUE(other.IsLocked());
  EXPECT_FALSE(copy.ImportJsonText(text, reason)) << "locked";
  copy.SetStylesPalette(nullptr);
}

TEST_F(StyleSheetJson, WritesWhatThereIs)
{
  // Members of the sheet's that another one left there go.
  JsonValue value = Json(R"({"other": 1, "ruled-harmonies": 2, "css-id": "x", "external-info": [], "harmonies": []})");
  ASSERT_TRUE(sheet.ExportJson(value));
  EXPECT_NE(FindMember(value, "other"), nullptr) << "stays";
  EXPECT_EQ(FindMember(value, "css-id"), nullptr);
  EXPECT_EQ(FindMember(value, "external-info"), nullptr);
  EXPECT_EQ(FindMember(value, "harmonies"), nullptr);
  EXPECT_EQ(ZelUtl::JsonText(*FindMember(value, "ruled-harmonies")), "[]\n");
  const JsonValue *const guid = FindMember(*FindMember(*FindMember(value, "palette_xml"), "attributes"), "guid");
  EXPECT_EQ(*guid->Text(), palette->GetPaletteGuid().ToText());
  JsonValue list = Json("[1]");
  EXPECT_TRUE(sheet.ExportJson(list));
  EXPECT_NE(list.Object(), nullptr);
  ColorStyleSheet none;
  EXPECT_FALSE(none.ExportJson(list));
  EXPECT_EQ(none.ExportJsonText(), "");
}

TEST_F(StyleSheetJson, ReadsHarmoniesAsTheyAreStated)
{
  ASSERT_TRUE(sheet.ImportJson(Json(Sheet({"A", "B", "C"}, R"("ruled-harmonies": [
    {"rule": "triad", "colors": ["A", "a", "Nobody", "", "B"]}, {"colors": ["B", "C"], "more": 1},
    {"rule": "no such rule"}, {}])"))));
  EXPECT_EQ(Harmonies(), (std::vector<Texts>{{L"A", L"Nobody", L"B"}, {L"C"}, {}, {}}));
  EXPECT_EQ(sheet.GetHarmony(0)->GetRuleType(), RuleType::Triad);
  for (const std::size_t i : {1u, 2u, 3u})
    EXPECT_EQ(sheet.GetHarmony(i)->GetRuleType(), RuleType::Custom);
  EXPECT_EQ(sheet.GetPositions(0)[1], std::nullopt);
  EXPECT_TRUE(sheet.ChangeColorStyle(L"A", Colour::MakeRGB(1, 2, 3))) << "rules pass over what is not there";

  // A style that comes later takes its place; an import begins anew.
  ASSERT_TRUE(sheet.AddColorStyle(L"Nobody", Colour::MakeRGB(1, 2, 3)));
  EXPECT_EQ(sheet.FindHarmonyOf(L"nobody"), 0);
  ASSERT_TRUE(sheet.ImportJson(Json(Sheet({"A"}, R"("ruled-harmonies": [])"))));
  EXPECT_EQ(sheet.GetHarmonyCount(), 0u);
  EXPECT_EQ(sheet.GetColorStyleCount(), 1u);
}

TEST_F(StyleSheetJson, ReadsTheOlderForm)
{
  const std::vector<std::string> names = {"A", "B", "C"};
  ASSERT_TRUE(sheet.ImportJson(Json(Sheet(names, R"("harmonies": [
    {"type": 6, "colors": [2, 0, 2]}, [1], {"type": 99, "colors": []}, {"colors": [0]}])"))));
  EXPECT_EQ(Harmonies(), (std::vector<Texts>{{L"C", L"A"}, {L"B"}, {}, {}}));
  EXPECT_EQ(sheet.GetHarmony(0)->GetRuleType(), RuleType::Triad);
  EXPECT_EQ(sheet.GetHarmony(2)->GetRuleType(), RuleType::Custom);
  ASSERT_TRUE(sheet.ImportJson(
    Json(Sheet(names, R"("ruled-harmonies": [{"colors": ["A"]}, 1], "harmonies": [{"type": 2, "colors": [0]}])"))));
  EXPECT_EQ(Harmonies(), (std::vector<Texts>{{L"A"}})) << "in place of what could not be read";
  EXPECT_EQ(sheet.GetHarmony(0)->GetRuleType(), RuleType::Analogous);
  for (const char *older :
       {"{}", "[1]", "[{}]", R"([{"type": "6", "colors": [0]}])", R"([{"colors": ["A"]}])", R"([{"colors": [3]}])",
        R"([{"colors": [-1]}])", R"([{"colors": [0.5]}])", R"([{"colors": [0]}, {"colors": [1e300]}])"})
  {
    EXPECT_FALSE(sheet.ImportJson(Json(Sheet(names, std::string("\"harmonies\": ") + older)))) << older;
    EXPECT_EQ(sheet.GetHarmonyCount(), 0u) << older;
  }
}

TEST_F(StyleSheetJson, KeepsWhatItHadChangedBeforeAFailure)
{
  ASSERT_TRUE(sheet.AddColorStyle(L"Old", Colour::MakeRGB(1, 2, 3)));
  const Colour holder = *sheet.FindColorStyle(L"Old");
  const struct
  {
    const char *what;
    std::string json;
    std::wstring id;
    Texts styles;
    std::vector<Texts> harmonies;
  } rows[] = {
    {"no object", "[]", L"", {L"Old"}, {}},
    {"an identifier that is no text", R"({"css-id": 1})", L"", {L"Old"}, {}},
    {"nothing but an identifier", R"({"css-id": "new"})", L"new", {L"Old"}, {}},
    {"a palette that is none", R"({"palette_xml": {"name": "pallet"}, "ruled-harmonies": []})", L"new", {L"Old"}, {}},
    {"a palette that is no object", R"({"palette_xml": "<palette/>", "ruled-harmonies": []})", L"new", {L"Old"}, {}},
    {"no harmonies", Sheet({"A"}, ""), L"new", {L"A"}, {}},
    {"a number for a colour",
     Sheet({"A"}, R"("ruled-harmonies": [{"colors": ["A"]}, {"colors": [1]}])"),
     L"new",
     {L"A"},
     {{L"A"}, {}}},
    {"a rule that is no text",
     Sheet({"A"}, R"("ruled-harmonies": [{"rule": 6, "colors": ["A"]}])"),
     L"new",
     {L"A"},
     {{}}},
    {"both forms of harmonies bad",
     Sheet({"A"}, R"("ruled-harmonies": [{"colors": ["A"]}, 1], "harmonies": [[0], [1]])"),
     L"new",
     {L"A"},
     {{L"A"}}},
    {"a harmony that is no object",
     Sheet({"A"}, R"("ruled-harmonies": [{"colors": ["A"]}, "x", {}])"),
     L"new",
     {L"A"},
     {{L"A"}}},
    {"a bad alias",
     Sheet({"A"}, R"("ruled-harmonies": [], "external-info": [{"alias": "A"}, {"alias": 1}])"),
     L"new",
     {L"A"},
     {}},
    {"no alias", Sheet({"A"}, R"("ruled-harmonies": [], "external-info": [{"id": "1"}])"), L"new", {L"A"}, {}},
    {"aliases that are no list", Sheet({"A"}, R"("ruled-harmonies": [], "external-info": {})"), L"new", {L"A"}, {}},
  };
  for (const auto &row : rows) {
    EXPECT_FALSE(sheet.ImportJson(Json(row.json))) << row.what;
    EXPECT_EQ(sheet.GetExternalID(), row.id) << row.what;
    EXPECT_EQ(sheet.GetColorStyleNames(), row.styles) << row.what;
    EXPECT_EQ(Harmonies(), row.harmonies) << row.what;
    EXPECT_TRUE(sheet.GetExternalColorStyles().empty()) << row.what;
  }
  EXPECT_EQ(holder.GetCOLORREF(), Colour::MakeRGB(1, 2, 3).GetCOLORREF()) << "holders keep what is gone";
  std::string reason;
  EXPECT_FALSE(sheet.ImportJsonText("{\n\"css-id\": \"\\ud800\"}", reason));
  EXPECT_THAT(reason, testing::StartsWith("line 2: "));
  EXPECT_FALSE(sheet.ImportJsonText("{}", reason));
  ColorStyleSheet none;
  EXPECT_FALSE(none.ImportJson(Json(Sheet({"A"}, R"("ruled-harmonies": [])"))));
}

TEST_F(StyleSheetJson, MakesEveryColourAStyle)
{
  ASSERT_TRUE(sheet.AddColorStyle(L"b", Colour::MakeRGB(1, 2, 3)));
  const Colour holder = *sheet.FindColorStyle(L"b");
  ASSERT_TRUE(sheet.ImportJson(Json(Sheet({"A", "B", "a", "", "A (2)", "A"}, R"("ruled-harmonies": [])"))));
  EXPECT_EQ(sheet.GetColorStyleNames(), (Texts{L"A", L"B", L"a (3)", L"K10 %", L"A (2)", L"A (4)"}));
  EXPECT_EQ(holder.GetType(), Model::Gray255) << "of the same name";

  // One that follows another style would follow what goes.
  std::string json = Sheet({"A"}, R"("ruled-harmonies": [])");
  json.replace(json.find("\"cs\""), 4, R"("colorStyleRef":"B","cs")");
  ASSERT_TRUE(sheet.ImportJson(Json(json)));
  EXPECT_EQ(sheet.GetColorStyleCount(), 1u);
  EXPECT_EQ(sheet.FindColorStyle(L"A")->GetType(), Model::Gray255);
}

TEST_F(StyleSheetJson, TakesTheIdentifierOfThePaletteUnlessItIsTaken)
{
  const auto own = palette->GetPaletteGuid();
  const auto with = [](const std::string &guid) {
    return Json(Sheet({"A"}, R"("ruled-harmonies": [])", R"(,"guid":")" + guid + "\""));
  };
  ASSERT_TRUE(sheet.ImportJson(with(tests::GuidText(7))));
  EXPECT_EQ(palette->GetPaletteGuid(), tests::GuidOf(7));
  EXPECT_EQ(Manager().GetMappedPaletteGuid(one, own), tests::GuidOf(7)) << "records of before are found";
  for (const char *bad : {"", "garbage", "{00000000-0000-0000-0000-000000000000}"}) {
    ASSERT_TRUE(sheet.ImportJson(with(bad))) << bad;
    EXPECT_EQ(palette->GetPaletteGuid(), tests::GuidOf(7)) << bad;
  }
  WClrPalette *const other = Manager().CreateStylesPalette(two);
  other->SetPaletteGuid(tests::GuidOf(8));
  ASSERT_TRUE(sheet.ImportJson(with(tests::GuidText(8))));
  EXPECT_EQ(palette->GetPaletteGuid(), tests::GuidOf(7));
  EXPECT_EQ(Manager().GetMappedPaletteGuid(one, tests::GuidOf(8)), tests::GuidOf(7));
}

TEST_F(StyleSheetJson, KnowsAliases)
{
  ASSERT_TRUE(sheet.ImportJson(Json(Sheet({"A", "B"}, R"("ruled-harmonies": [], "external-info": [
    {"alias": "A", "id": "1", "original": "Z"}, {"alias": "b", "id": "2"}, {"alias": "a", "id": "3", "original": "Y"}])"))));
  EXPECT_EQ(sheet.GetExternalColorStyles(), (std::vector<ExternalColorStyle>{{L"a", L"3", L"Y"}, {L"b", L"2", L""}}));
  EXPECT_EQ(sheet.FindColorStyle(L"y"), sheet.FindColorStyle(L"A"));
  EXPECT_EQ(sheet.FindColorStyle(L"2"), sheet.FindColorStyle(L"B"));
  EXPECT_EQ(sheet.FindColorStyle(L"z"), nullptr);
  EXPECT_TRUE(sheet.RemoveExternalColorStyle(L"B"));
  EXPECT_FALSE(sheet.RemoveExternalColorStyle(L"B"));
  EXPECT_FALSE(sheet.SetExternalColorStyle({L"", L"1", L"1"}));
  EXPECT_EQ(sheet.FindColorStyle(L"2"), nullptr);
}

} // namespace
