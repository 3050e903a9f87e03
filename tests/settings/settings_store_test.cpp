// The file among processes, failures and kills: nothing that anybody wrote may be lost.
#include "tests/settings/support/settings_folders.h"
#include "tests/support/children.h"
#include "tests/support/sanitized.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/inter_process_mutex.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/xml.h"

#include <gmock/gmock.h>

#include <atomic>
#include <set>

using namespace ColorSystem;
using namespace std::chrono_literals;

namespace {

constexpr const char *kMutex = "cda6a4c3-279d-ec9a-48d7-75b2502fc85f";

// --- The works of children, which begin with the folders of data and user
// ---------------------------------------------

void BeginChild(const tests::Words &words)
{
  ZelUtl::Folders folders;
  folders.data = words.at(0);
  folders.user = words.at(1);
  folders.temporary = words.at(1);
  ZelUtl::SetFolders(folders);
}

void Add(const std::string &prefix, int count)
{
  for (int i = 0; i < count; ++i)
    ColorSettingsManager::GetInstance().AddColorSettings(
      ColorSettings(ZelUtl::WideFromUtf8(prefix + "-" + std::to_string(i))));
}

/// add DATA USER PREFIX COUNT: presets PREFIX-0 and on.
const tests::ChildWork kAdding("add", [](const tests::Words &words) {
  BeginChild(words);
  Add(words.at(2), std::stoi(words.at(3)));
  return 0;
});

/// die DATA USER STEP PREFIX: starts, adds two presets and chooses one; killed at that step of all the files that are
/// replaced.
const tests::ChildWork kDying("die", [](const tests::Words &words) {
  BeginChild(words);
  static std::atomic<int> left = std::stoi(words.at(2));
  ZelUtl::SetFileFaults([](ZelUtl::FileStep) {
    if (left-- == 0)
      tests::KillThisProcess();
    return 0;
  });
  Add(words.at(3), 2);
  auto &manager = ColorSettingsManager::GetInstance();
  manager.SetApplicationColorSettings(*manager.GetColorSettings(L"Europe Prepress"));
  return 0;
});

class SettingsStoreTest : public tests::SettingsFolders
{
protected:
  SettingsStoreTest() { host.name = L"ZelClr"; } // as processes without a host are called

  /// See the works of children above.
  tests::Process Start(const std::string &work, const tests::Words &words) const
  {
    tests::Words all = {shipped, user};
    all.insert(all.end(), words.begin(), words.end());
    return tests::StartChild(work, all);
  }
  /// The names in all lists of presets; nothing when the file is not whole.
  static std::optional<std::multiset<std::wstring>> NamesIn(const std::string &text)
  {
    std::string untold;
    const auto document = ZelUtl::WXmlDoc::FromBytes(text, untold);
    if (!document)
      return std::nullopt;
    std::multiset<std::wstring> names;
    for (const auto &preset : document->Root().SelectNodes("./ColorSettingsPresets/ColorSettings"))
      names.insert(preset.Attribute("id").value_or(L""));
    return names;
  }
  std::optional<std::multiset<std::wstring>> NamesInFile() const { return NamesIn(tests::TextOf(file)); }
  /// Puts a file in place as programs do that know nothing of the mutex.
  void PutOutside(const std::string &text) const
  {
    tests::WriteBytes(file + ".outside", tests::BytesOf(text));
    // On Windows it fails while somebody reads the old file.
    EXPECT_TRUE(tests::Within(2s, [&] {
      std::error_code error;
      std::filesystem::rename(file + ".outside", file, error);
      return !error;
    }));
  }
};

TEST_F(SettingsStoreTest, AProcessThatDiesAtAnyStepLeavesAFileThatIsWhole)
{
  Settings();
  Restart();
  const std::string before = tests::TextOf(file);
  int kills = 0;
  std::set<std::size_t> counts;
  for (int step = 0;; ++step) {
    SCOPED_TRACE(step);
    tests::WriteBytes(file, tests::BytesOf(before));
    const int status = tests::WaitFor(Start("die", {std::to_string(step), "Dies"}));
    const auto names = NamesInFile();
    ASSERT_TRUE(names) << tests::TextOf(file);
    counts.insert(names->size());
    EXPECT_EQ(Settings().EnumerateColorSettings().size(), names->size()) << "and is read, and the mutex is free";
    EXPECT_TRUE(Settings().AddColorSettings(ColorSettings(L"After")));
    EXPECT_EQ(NamesInFile()->count(L"After"), 1u);
    Restart();
    if (status != tests::kKilled)
      break;
    ++kills;
  }
  EXPECT_EQ(kills, 15) << "three files, five steps each";
  EXPECT_EQ(counts, (std::set<std::size_t>{12, 13, 14}));
}

TEST_F(SettingsStoreTest, AFirstStartThatDiesAtAnyStepLeavesNoFileOrAWholeOne)
{
  for (int step = 0;; ++step) {
    SCOPED_TRACE(step);
    std::filesystem::remove_all(user);
    const int status = tests::WaitFor(Start("die", {std::to_string(step), "Dies"}));
    EXPECT_TRUE(!std::filesystem::exists(file) || NamesInFile()->size() >= 12u);
    EXPECT_GE(Settings().EnumerateColorSettings().size(), 12u);
    Restart();
    if (status != tests::kKilled)
      break;
    ASSERT_LT(step, 40);
  }
}

TEST_F(SettingsStoreTest, ACallThatFailsLeavesTheOldFileAndIsReported)
{
  Settings();
  int number = 0;
  for (const int error : {ENOSPC, EACCES, EROFS, EINTR, EIO}) {
    for (const ZelUtl::FileStep failing : ZelUtl::kFileSteps) {
      SCOPED_TRACE(testing::Message() << "error " << error << " step " << static_cast<int>(failing));
      const std::string before = tests::TextOf(file);
      ColorSettings settings(L"Preset " + std::to_wstring(++number));
      settings.SetPreservePureBlack(number % 2 == 1);
      ZelUtl::SetFileFaults([=](ZelUtl::FileStep step) { return step == failing ? error : 0; });
      EXPECT_TRUE(Settings().AddColorSettings(settings)) << "it is in memory";
      EXPECT_FALSE(Settings().SetApplicationColorSettings(settings));
      ZelUtl::SetFileFaults({});
      EXPECT_EQ(InForce().GetName(), settings.GetName());
      EXPECT_EQ(InForce().GetPreservePureBlack(), settings.GetPreservePureBlack());
      const bool replaced = failing == ZelUtl::FileStep::FlushFolder;
      EXPECT_EQ(tests::TextOf(file) == before, !replaced);
      EXPECT_TRUE(NamesInFile());
      EXPECT_TRUE(Settings().SetApplicationColorSettings(settings)) << "when it works again it is written";
    }
  }
  Restart();
  EXPECT_EQ(InForce().GetName(), L"Preset " + std::to_wstring(number));
}

TEST_F(SettingsStoreTest, ManyProcessesAddAtOnceAndAllIsThereAndWholeAtEveryMoment)
{
  constexpr int kProcesses = 8;
  constexpr int kPresets = tests::kSanitized ? 5 : 25; // every addition rewrites what all have added
  Settings();
  std::atomic<bool> done = false;
  std::atomic<int> partial = 0;
  std::atomic<int> looks = 0;
  std::thread reader([&] {
    while (!done) {
      const std::string text = tests::TextOf(file);
      if (text.empty() && !tests::NamesAreBytes())
        continue; // Windows lets nobody open it while it is replaced
      partial += !text.starts_with("<?xml") || !text.ends_with("</ColorManagementSettingsCollection>\n");
      ++looks;
      std::this_thread::sleep_for(1ms);
    }
  });
  std::vector<tests::Process> children;
  for (int i = 0; i < kProcesses; ++i)
    children.push_back(Start("add", {"P" + std::to_string(i), std::to_string(kPresets)}));
  for (const tests::Process child : children)
    EXPECT_EQ(tests::WaitFor(child), 0);
  done = true;
  reader.join();
  EXPECT_EQ(partial, 0);
  EXPECT_GT(looks, 10);
  const auto names = NamesInFile();
  ASSERT_TRUE(names);
  EXPECT_EQ(names->size(), std::size_t{12 + kProcesses * kPresets});
  for (int i = 0; i < kProcesses; ++i) {
    for (int k = 0; k < kPresets; ++k)
      EXPECT_EQ(names->count(L"P" + std::to_wstring(i) + L"-" + std::to_wstring(k)), 1u);
  }
  EXPECT_TRUE(tests::Within(4s, [&] { return NamesOfPresets().size() == names->size(); })) << "and is seen here";
}

TEST_F(SettingsStoreTest, TwoProcessesThatStartAtOnceKeepTheirPresets)
{
  constexpr int kRounds = tests::kSanitized ? 10 : 100;
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove_all(user);
    const tests::Process first = Start("add", {"A", "1"});
    const tests::Process second = Start("add", {"B", "1"});
    EXPECT_EQ(tests::WaitFor(first), 0);
    EXPECT_EQ(tests::WaitFor(second), 0);
    const auto names = NamesInFile();
    ASSERT_TRUE(names) << round;
    EXPECT_EQ(names->size(), 14u) << round;
    EXPECT_EQ(names->count(L"A-0") + names->count(L"B-0"), 2u) << round;
  }
}

TEST_F(SettingsStoreTest, OutsideChangesAreSeenWhateverIsSavedMeanwhile)
{
  constexpr int kChanges = tests::kSanitized ? 200 : 1000;
  Settings().AddColorSettings(ColorSettings(L"Outside 0000"));
  const std::string text = tests::TextOf(file);
  const auto numbered = [&](int number) {
    std::string four = std::to_string(number);
    four.insert(0, 4 - four.size(), '0');
    const std::string renamed = tests::Replaced(text, "id=\"Outside 0000\"", "id=\"Outside " + four + "\"");
    return tests::Replaced(renamed, "<Name>Outside 0000<", "<Name>Outside " + four + "<");
  };
  std::atomic<bool> done = false;
  std::thread saver([&] {
    while (!done) {
      Settings().AddColorSettings(ColorSettings(L"Ours"));
      Settings().EnumerateColorSettings();
      std::this_thread::sleep_for(7ms);
    }
  });
  for (int i = 1; i <= kChanges; ++i) {
    PutOutside(numbered(i)); // all of one size, many within one tick of the clock
    if (i % 10 == 0)
      std::this_thread::sleep_for(10ms);
  }
  done = true;
  saver.join();
  PutOutside(numbered(9998));
  std::this_thread::sleep_for(300ms); // long enough to be read
  for (int i = 0; i < 3; ++i)
    PutOutside(numbered(9997 + i)); // the last of them may look like the one that was read
  EXPECT_TRUE(tests::Within(2s, [] { return Settings().GetColorSettings(L"Outside 9999") != nullptr; }));
  EXPECT_EQ(NamesOfPresets().size(), 13u);
  EXPECT_EQ(tests::TextOf(file), numbered(9999));
}

TEST_F(SettingsStoreTest, ASteadyStreamOfChangesHidesNone)
{
  Settings().AddColorSettings(ColorSettings(L"Outside"));
  const std::string text = tests::TextOf(file);
  Settings().RemoveColorSetting(L"Outside");
  PutOutside(text);
  std::atomic<bool> done = false;
  std::thread busy([&] {
    while (!done) {
      tests::WriteBytes(file + ".busy", {1});
      std::this_thread::sleep_for(20ms);
    }
  });
  EXPECT_TRUE(tests::Within(2s, [] { return Settings().GetColorSettings(L"Outside") != nullptr; }));
  done = true;
  busy.join();
}

TEST_F(SettingsStoreTest, WhatAnotherProcessChoosesIsToldHereOnce)
{
  struct Ear
  {
    void Hear() { ++calls; }
    std::atomic<int> calls = 0;
  } ear;
  const auto listener = ZelUtl::Delegate::To<&Ear::Hear>(ear);
  Settings().SetApplicationColorSettings(*Settings().GetColorSettings(L"Europe Web"));
  const std::string text = tests::TextOf(file);
  Settings().SetApplicationColorSettings(*Settings().GetColorSettings(L"Japan Prepress"));
  Manager().RegisterToColorProfilesChange(listener);
  PutOutside(text);
  EXPECT_TRUE(tests::Within(2s, [&] { return ear.calls > 0; }));
  EXPECT_EQ(InForce().GetName(), L"Europe Web");
  PutOutside(text);
  std::this_thread::sleep_for(300ms);
  EXPECT_EQ(ear.calls, 1) << "the same again is no change";
  Manager().UnRegisterToColorProfilesChange(listener);
}

TEST_F(SettingsStoreTest, LookingWaitsForNobody)
{
  Settings();
  ZelUtl::InterProcessMutex mutex(kMutex);
  const std::lock_guard held(mutex);
  std::thread([] { EXPECT_EQ(Settings().EnumerateColorSettings().size(), 12u); }).join();
}

TEST_F(SettingsStoreTest, ThreadsMayDoEverythingAtOnce)
{
  Settings();
  std::vector<std::thread> threads;
  std::atomic<int> wrong = 0;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < (tests::kSanitized ? 5 : 25); ++i) {
        const std::wstring name = L"T" + std::to_wstring(t);
        ColorSettings settings(*Settings().GetColorSettings(i % 2 == 0 ? L"Europe Prepress" : L"Japan Web"));
        settings.SetName(name);
        Settings().AddColorSettings(settings);
        Settings().SetApplicationColorSettings(settings);
        wrong += Settings().GetColorSettings(name) == nullptr;
        wrong += ColorContext::GetApplicationDefaultColorContext().GetColorProfiles().size() != 3;
        ColorManagementSystem::GetCurrent();
        for (const auto &preset : Settings().EnumerateColorSettings())
          preset->GetLocalizedName();
        if (t == 0)
          ColorSettingsManager::ReLoad();
        wrong += !Settings().RemoveColorSetting(name);
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(NamesInFile()->size(), 12u);
}

} // namespace
