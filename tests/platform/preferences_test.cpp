// Preferences, the locale and the application's own answers: what settings start from.
#include "tests/support/children.h"
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/preferences.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <map>
#include <thread>

using namespace ZelUtl;

namespace {

class PreferencesTest : public testing::Test
{
protected:
  PreferencesTest()
  {
    tests::SetVariable("XDG_RUNTIME_DIR", folder_.Path());
    Folders folders;
    folders.user = folder_.Path("user");
    SetFolders(folders);
  }
  ~PreferencesTest() override
  {
    SetFileFaults({});
    ResetFolders();
    tests::UnsetVariable("XDG_RUNTIME_DIR");
  }

  std::string File() const { return tests::TextOf(folder_.Path("user/preferences.json")); }
  void Write(const std::string &text) const { folder_.WriteText("user/preferences.json", text); }

  const tests::TemporaryFolder folder_;
  CAppPrefManager &manager_ = CAppPrefManager::GetInstance();
  std::string reason_;
};

TEST_F(PreferencesTest, TypedValuesComeBackAndDefaultsStandInForNonsense)
{
  const CPrefObject<bool> flag("Options - Display", "ColorProofing", false);
  const CPrefObject<int> number("Numbers", "One", 7);
  const CPrefObject<std::wstring> text("Texts", "\xC3\x84 \"quoted\"", L"none");
  EXPECT_FALSE(flag.Get());
  EXPECT_EQ(number.Get(), 7);
  EXPECT_TRUE(flag.Set(true));
  EXPECT_TRUE(number.Set(-12));
  EXPECT_TRUE(text.Set(L"\u4E2D\n\\"));
  EXPECT_TRUE(flag.Get());
  EXPECT_EQ(number.Get(), -12);
  EXPECT_EQ(text.Get(), L"\u4E2D\n\\");

  Write(R"({"Numbers": {"One": 99999999999, "Two": 3.5}, "Options - Display": {"ColorProofing": true}, "Texts": {}})");
  EXPECT_EQ(number.Get(), 7) << "too large for the type";
  EXPECT_TRUE(flag.Get()) << "written without quotes";
  EXPECT_TRUE(flag.Set(false));
  EXPECT_NE(File().find("3.5"), std::string::npos) << "what we do not know stays";
  EXPECT_TRUE(manager_.Remove("Numbers", "One", reason_));
  EXPECT_EQ(File().find("One"), std::string::npos);
}

constexpr int kThreads = 2, kKeys = 10;

CPrefObject<int> Preference(const std::string &process, int thread, int key)
{
  return CPrefObject<int>("S" + process, std::to_string(thread) + "." + std::to_string(key), -1);
}

/// preferences FOLDER NAME: writes the keys of that process.
const tests::ChildWork kWriting("preferences", [](const tests::Words &words) {
  Folders folders;
  folders.user = words.at(0);
  SetFolders(folders);
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int key = 0; key < kKeys; ++key)
        wrong += !Preference(words.at(1), t, key).Set(key) || Preference(words.at(1), t, key).Get() != key;
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  return wrong.load();
});

TEST_F(PreferencesTest, ProcessesAndThreadsKeepEachOthersKeys)
{
  constexpr int kProcesses = 4;
  std::vector<tests::Process> children;
  for (int p = 0; p < kProcesses; ++p)
    children.push_back(tests::StartChild("preferences", {folder_.Path("user"), std::to_string(p)}));
  for (const tests::Process child : children)
    EXPECT_EQ(tests::WaitFor(child), 0);
  for (int p = 0; p < kProcesses; ++p) {
    for (int i = 0; i < kThreads * kKeys; ++i)
      EXPECT_EQ(Preference(std::to_string(p), i / kKeys, i % kKeys).Get(), i % kKeys) << p << ' ' << i;
  }
}

TEST_F(PreferencesTest, AFileThatNobodyUnderstandsIsKeptBeside)
{
  const CPrefObject<int> number("Damage", "Number", 1);
  const std::string deep = R"({"a": {"b": )" + std::string(100'000, '[') + std::string(100'000, ']') + "}}";
  const std::string all[] = {"{\"Damage\": {\"Number\": 5}", "[]", "{\"Damage\": 5}", deep,
                             "{\"a\": {\"b\": \"\xFF\"}}",   ""};
  std::size_t kept = 0;
  for (const std::string &damaged : all) {
    SCOPED_TRACE(damaged.substr(0, 30));
    Write(damaged);
    EXPECT_EQ(number.Get(), 1);
    EXPECT_TRUE(number.Set(2, reason_)) << reason_;
    EXPECT_EQ(number.Get(), 2);
    const std::string name = "user/preferences.json.damaged" + (++kept == 1 ? "" : "-" + std::to_string(kept));
    EXPECT_TRUE(std::filesystem::exists(folder_.Path(name)));
    EXPECT_EQ(tests::TextOf(folder_.Path(name)), damaged);
  }
}

TEST_F(PreferencesTest, WhatCannotBeSavedHoldsInThisProcessAndIsSavedLater)
{
  const CPrefObject<int> first("Failing", "First", 0);
  const CPrefObject<int> second("Failing", "Second", 0);
  EXPECT_TRUE(first.Set(1));
  const std::string before = File();
  SetFileFaults([](FileStep step) { return step == FileStep::Write ? ENOSPC : 0; });
  EXPECT_FALSE(first.Set(2, reason_));
  EXPECT_EQ(reason_, "No space left on device");
  EXPECT_EQ(File(), before);
  EXPECT_EQ(first.Get(), 2);
  SetFileFaults({});
  EXPECT_TRUE(second.Set(3));
  EXPECT_NE(File().find("\"First\": \"2\""), std::string::npos) << File();

  Folders nowhere;
  SetFolders(nowhere);
  EXPECT_FALSE(IsConfigurationInitialized());
  EXPECT_TRUE(second.Set(4)) << "without a folder there is nothing to fail";
  EXPECT_EQ(second.Get(), 4);
}

TEST(Locale, IsReadFromTheEnvironment)
{
  struct Row
  {
    std::map<std::string, std::string> variables;
    const char *country, *language;
  };
  const Row kRows[] = {
    {{}, "", "en"},
    {{{"LANG", "pt_BR.UTF-8"}}, "BR", "pt-BR"},
    {{{"LANG", "en_US.UTF-8"}, {"LC_PAPER", "de_DE.UTF-8"}}, "DE", "en-US"},
    {{{"LANG", "en_US"}, {"LC_MEASUREMENT", "fr_CH@euro"}}, "CH", "en-US"},
    {{{"LANG", "en_US"}, {"LC_PAPER", "C"}, {"LC_MESSAGES", "pl"}}, "US", "pl"},
    {{{"LANG", "en_US"}, {"LC_ALL", "ja_JP.eucJP"}, {"LC_MESSAGES", "de_DE"}}, "JP", "ja-JP"},
    {{{"LANG", "en_GB"}, {"LANGUAGE", "C::de_AT.UTF-8:fr"}}, "GB", "de-AT"},
    {{{"LANG", "C"}, {"LANGUAGE", "de"}}, "", "en"},
    {{{"LANG", "sr_RS.UTF-8@latin"}}, "RS", "sr-Latn-RS"},
    {{{"LANG", "es_419"}}, "", "es"},
    {{{"LANG", "../../etc_US"}}, "", "en"},
    {{{"LANG", "_US"}}, "", "en"},
  };
  static const std::map<std::string, std::string> *variables; // what a plain function can see
  for (const Row &row : kRows) {
    variables = &row.variables;
    const ZelLocale::Locale locale = ZelLocale::LocaleFromEnvironment([](const char *name) {
      const auto found = variables->find(name);
      return found == variables->end() ? std::string() : found->second;
    });
    EXPECT_EQ(locale, (ZelLocale::Locale{row.country, row.language}))
      << testing::PrintToString(row.variables) << " gave " << locale.country << ", " << locale.language;
  }
  ZelLocale::SetLocale({"AT", "de-AT"});
  EXPECT_EQ(ZelLocale::GetCurrentCountryISOCode(), "AT");
  EXPECT_EQ(ZelLocale::GetUILanguage(), "de-AT");
  ZelLocale::ResetLocale();
}

TEST(ApplicationHost, AnswersWhereThereIsOne)
{
  struct Host : ApplicationHost
  {
    unsigned GetOpenDocumentCount() const override { return 2; }
    std::wstring GetApplicationName() const override { return name; }
    bool IsConfigurationInitialized() const override { return ready; }
    std::wstring name = L"Draw";
    bool ready = true;
  } host;
  Folders folders;
  folders.user = "/user";
  folders.data = "/installed";
  SetFolders(folders);
  EXPECT_EQ(GetUserProfileColorDir(), "/user/color");
  EXPECT_EQ(INIGetColorDir(), "/installed/color");
  EXPECT_EQ(INIGetConfigDir(), "/installed/config");

  EXPECT_EQ(GetApplicationName(), L"ZelClr");
  EXPECT_EQ(GetOpenDocumentCount(), 0u);
  EXPECT_TRUE(IsConfigurationInitialized());
  SetApplicationHost(&host);
  EXPECT_EQ(GetApplicationName(), L"Draw");
  EXPECT_EQ(GetOpenDocumentCount(), 2u);
  host.ready = false;
  host.name.clear();
  EXPECT_FALSE(IsConfigurationInitialized());
  EXPECT_EQ(GetApplicationName(), L"ZelClr");
  SetApplicationHost(nullptr);
  ResetFolders();
}

} // namespace
