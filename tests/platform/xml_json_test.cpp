// XML as JSON and back, and JSON as text.
#include "zelclr/platform/json_writer.h"
#include "zelclr/platform/xml_json.h"

#include <gtest/gtest.h>

#include <limits>

using namespace ZelUtl;

namespace {

JsonValue Json(std::string_view text)
{
  std::size_t line = 0;
  std::string reason;
  return ReadJson(text, line, reason).value();
}

std::optional<WXmlDoc> Xml(std::string_view bytes)
{
  std::string reason;
  return WXmlDoc::FromBytes(bytes, reason);
}

TEST(XmlJson, ComesBackAsItWas)
{
  for (const char *xml :
       {"<a/>", "<a b=\"\"/>", "<a b=\"1\" c=\"&quot;&lt;&#10;\"><d e=\"\u00FC\"/><d/><f>text &amp; more</f></a>",
        "<palette><localization><resource id=\"x\"><de>\u00DC</de><en> </en></resource></localization></palette>"})
  {
    const auto document = Xml(xml);
    const JsonValue json = JsonFromXml(document->Root());
    std::string reason;
    const auto back = XmlFromJson(Json(JsonText(json)), reason);
    ASSERT_TRUE(back) << xml << reason;
    EXPECT_EQ(back->Bytes(), document->Bytes());
  }
  EXPECT_EQ(JsonText(JsonFromXml(Xml("<a b=\"1\"><c/>lost<d>t</d></a>")->Root())),
            JsonText(Json(R"({"name": "a", "attributes": {"b": "1"},
                              "children": [{"name": "c"}, {"name": "d", "text": "t"}]})")));
}

TEST(XmlJson, RefusesWhatIsNoElement)
{
  std::string deep = "{\"name\":\"a\"}";
  for (const char *json :
       {"1", "[]", "{}", R"({"name": 1})", R"({"name": ""})", R"({"name": "a b='c'"})", R"({"name": "a/><b"})",
        R"({"name": "a "})", R"({"name": "a", "attributes": []})", R"({"name": "a", "attributes": {"b": 1}})",
        R"({"name": "a", "attributes": {"b c": "1"}})", R"({"name": "a", "children": {}})",
        R"({"name": "a", "children": ["b"]})", R"({"name": "a", "children": [{"name": "<"}]})",
        R"({"name": "a", "text": 1})", R"({"name": "a\u0000"})"})
  {
    std::string reason;
    EXPECT_FALSE(XmlFromJson(Json(json), reason)) << json;
    EXPECT_NE(reason, "") << json;
  }
  JsonValue nested = Json(deep);
  for (int i = 0; i < 1'000; ++i) {
    JsonValue outer = Json(R"({"name": "a", "children": []})");
    std::get<JsonValue::Array>(std::get<JsonValue::Members>(outer.value)[1].value.value).push_back(std::move(nested));
    nested = std::move(outer);
  }
  std::string reason;
  EXPECT_FALSE(XmlFromJson(nested, reason));
  EXPECT_NE(JsonText(nested).find("null"), std::string::npos) << "deeper than JSON is read";
}

TEST(JsonText, IsReadAsTheSameValue)
{
  const char *text = R"({"a": [1, -0.1, 1e300, true, null, "\u0001\"\\\u00fc"], "b": {}, "c": [], "d": [{"e": [[]]}]})";
  const std::string written = JsonText(Json(text));
  EXPECT_EQ(JsonText(Json(written)), written);
  EXPECT_NE(written.find("\"a\": [1, -0.1, 1e+300, true, null, "), std::string::npos) << written;
  EXPECT_EQ(JsonText({std::numeric_limits<double>::infinity()}), "null\n");
  EXPECT_EQ(JsonText({std::string("\xFF")}), "\"\uFFFD\"\n");
}

} // namespace
