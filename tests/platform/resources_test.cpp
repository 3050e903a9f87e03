// Texts in the user's language: those that ship, and what happens to files that are none.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/resources.h"

#include <gtest/gtest.h>

#include <set>

using Framework::Resources::GetString;

namespace {

class ResourcesTest : public testing::Test
{
protected:
  ~ResourcesTest() override
  {
    ZelLocale::ResetLocale();
    ZelUtl::ResetFolders();
  }
  static std::wstring TextIn(const std::string &language, std::string_view identifier)
  {
    ZelLocale::SetLocale({"", language});
    return GetString(identifier);
  }
};

constexpr std::string_view kShipped[] = {
  "c4d4e8af-a00e-4c91-9205-9b35cfcde9cd", "8896c8c4-e965-4d89-9527-a1ed371efb46",
  "ccab38a2-d887-4807-9f89-e4966d87b9e5", "79cb7075-7723-4743-8ad4-2aac727501be",
  "0daa1d06-eaeb-4c2f-806e-e229a043a610", "4d642392-b0d7-4f7b-9a14-3f3a67e3185b",
  "c340c553-e719-4b54-8b0a-9ed51c253f9c", "3ad4e2d8-42df-47c7-80cf-1a0832f3fe31",
  "3ca61ccd-3543-4804-b862-1338e321b0cb", "d23f0d67-288d-4b01-a86f-e9ba915d38e0",
  "943e5644-604b-4f94-8d6a-4aaa47862c87", "792cf436-8ad7-4a9c-8d80-761587465b00",
  "33d3f765-8839-43bd-81e6-757137de71da", "4a04e5fe-32aa-49c8-80c8-ef4ad263ce32"};

TEST_F(ResourcesTest, EveryShippedTextIsThereInEveryLanguage)
{
  EXPECT_EQ(TextIn("en", kShipped[1]), L"North America Prepress");
  EXPECT_EQ(TextIn("en", kShipped[10]), L"Simulate Color Management Off");
  std::set<std::wstring> prepress;
  for (const char *language : {"en", "de", "fr", "es", "ja", "zh-Hans", "pl", "pt-BR"}) {
    std::set<std::wstring> texts;
    for (const std::string_view identifier : kShipped) {
      const std::wstring text = TextIn(language, identifier);
      EXPECT_EQ(text.find(L'\uFFFD'), std::wstring::npos);
      EXPECT_NE(text, L"") << language << ' ' << identifier;
      texts.insert(text);
    }
    EXPECT_EQ(texts.size(), std::size(kShipped)) << language << ": no two presets look the same";
    prepress.insert(TextIn(language, kShipped[1]));
  }
  EXPECT_EQ(prepress.size(), 8u) << "each is translated";
}

TEST_F(ResourcesTest, TheNearestLanguageSpeaks)
{
  const std::wstring german = TextIn("de", kShipped[1]);
  EXPECT_EQ(german, L"Nordamerika \u2013 Druckvorstufe");
  EXPECT_EQ(TextIn("de-AT", kShipped[1]), german);
  EXPECT_EQ(TextIn("pt-PT", kShipped[1]), TextIn("pt-BR", kShipped[1]));
  EXPECT_EQ(TextIn("zh-CN", kShipped[1]), TextIn("zh-Hans", kShipped[1]));
  for (const char *unknown : {"sv-SE", "", "C", "../strings/de", "de/../de"})
    EXPECT_EQ(TextIn(unknown, kShipped[1]), L"North America Prepress") << unknown;
  EXPECT_EQ(TextIn("de", "{8896C8C4-E965-4D89-9527-A1ED371EFB46}"), german);
  EXPECT_EQ(TextIn("de", "00000000-0000-0000-0000-000000000000"), L"");
}

TEST_F(ResourcesTest, BadFilesAreAsGoodAsNone)
{
  const tests::TemporaryFolder folder;
  const auto write = [&folder](const std::string &language, const std::string &text) {
    folder.Write("strings/" + language + ".json", {text.begin(), text.end()});
  };
  write("en", R"({"A": "English", "b": 5})");
  write("aa", "{\"a\": \"trunc");
  write("bb", "[\"a\"]");
  write("cc", std::string(100'000, '['));
  write("dd", "{\"a\": \"\xFF\"}");
  write("ee", R"({"a": {"a": "b"}})");
  std::filesystem::create_directories(folder.Path("strings/ff.json"));
  ZelUtl::Folders folders;
  folders.data = folder.Path();
  ZelUtl::SetFolders(folders);
  for (const char *language : {"aa", "bb", "cc", "dd", "ee", "ff"})
    EXPECT_EQ(TextIn(language, "a"), L"English") << language;
  EXPECT_EQ(TextIn("en", "b"), L"") << "no text";
  ZelUtl::SetFolders({});
  EXPECT_EQ(TextIn("en", "a"), L"") << "nothing is installed";
}

} // namespace
