// Folders that are watched: what is told, once, and what is not.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folder_watch.h"
#include "zelclr/platform/folders.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

using namespace ZelUtl;
using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

constexpr auto kLong = 5000ms; // what is waited for comes within it
constexpr auto kQuiet = 300ms; // and within it comes what should not

/// Counts what it is told of each folder.
class Ear
{
public:
  void Hear(const std::string &folder)
  {
    const std::lock_guard guard(mutex_);
    ++calls_[folder];
    heard_.notify_all();
  }
  int Calls(const std::string &folder)
  {
    const std::lock_guard guard(mutex_);
    return calls_[folder];
  }
  /// Whether the folder is told of more often than so many times.
  bool HearsMoreThan(int calls, const std::string &folder)
  {
    std::unique_lock guard(mutex_);
    return heard_.wait_for(guard, kLong, [&] { return calls_[folder] > calls; });
  }

private:
  std::mutex mutex_;
  std::condition_variable heard_;
  std::map<std::string, int> calls_;
};

class FolderWatchTest : public testing::Test
{
protected:
  ~FolderWatchTest() override { watch_.Stop(); }

  std::string MakeFolder(const std::string &name) const
  {
    std::string reason;
    EXPECT_TRUE(MakeFolders(folder_.Path(name), reason)) << reason;
    return folder_.Path(name);
  }
  /// Whether the folder is told of after this.
  template <class Change>
  bool IsToldOf(const std::string &folder, Change change)
  {
    const int before = ear_.Calls(folder);
    change();
    const bool told = ear_.HearsMoreThan(before, folder);
    std::this_thread::sleep_for(kQuiet); // until all of it has been told
    return told;
  }
  /// Whether nobody is told of anything after this.
  template <class Change>
  bool IsUntold(const std::string &folder, Change change)
  {
    const int before = ear_.Calls(folder);
    change();
    std::this_thread::sleep_for(kQuiet);
    return ear_.Calls(folder) == before;
  }

  const tests::TemporaryFolder folder_;
  Ear ear_;
  FolderWatch watch_{[this](const std::string &folder) { ear_.Hear(folder); }};
};

TEST_F(FolderWatchTest, TellsOfFilesThatComeChangeAndGo)
{
  const std::string one = MakeFolder("Gr\xC3\xB6\xC3\x9F"
                                     "e/\xE6\x97\xA5\xE6\x9C\xAC");
  const std::string other = MakeFolder("other");
  ASSERT_TRUE(watch_.Watch(one));
  ASSERT_TRUE(watch_.Watch(other));
  std::string reason;
  EXPECT_TRUE(IsToldOf(one, [&] { tests::WriteBytes(one + "/a", {1}); }));
  EXPECT_TRUE(IsToldOf(one, [&] { tests::WriteBytes(one + "/a", {1, 2}); })) << "in place";
  EXPECT_TRUE(IsToldOf(one, [&] { EXPECT_TRUE(ReplaceFile(one + "/a", "new", reason)) << reason; }));
  EXPECT_TRUE(IsToldOf(one, [&] { fs::rename(tests::PathOf(one + "/a"), tests::PathOf(one + "/b")); }));
  EXPECT_TRUE(IsToldOf(one, [&] { fs::remove(tests::PathOf(one + "/b")); }));
  EXPECT_TRUE(IsUntold(one, [&] { tests::WriteBytes(folder_.Path("beside"), {1}); }));
  EXPECT_EQ(ear_.Calls(other), 0);
}

TEST_F(FolderWatchTest, TellsOfManyChangesAtOnceAFewTimes)
{
  const std::string folder = MakeFolder("many");
  ASSERT_TRUE(watch_.Watch(folder));
  EXPECT_TRUE(IsToldOf(folder, [&] {
    for (int i = 0; i < 500; ++i)
      tests::WriteBytes(
        folder + "/a file with a name of some length, so that the system's buffer overflows " + std::to_string(i), {1});
  }));
  EXPECT_LE(ear_.Calls(folder), 10);
}

TEST_F(FolderWatchTest, LooksAsDeepAsItIsToldTo)
{
  const std::string flat = MakeFolder("flat");
  const std::string deep = MakeFolder("deep");
  MakeFolder("flat/a");
  ASSERT_TRUE(watch_.Watch(flat));
  ASSERT_TRUE(watch_.Watch(deep, 1));
  EXPECT_TRUE(IsToldOf(deep, [&] { MakeFolder("deep/a"); }));
  EXPECT_TRUE(IsToldOf(deep, [&] { MakeFolder("deep/a/b"); }));
  EXPECT_TRUE(IsUntold(flat, [&] { tests::WriteBytes(flat + "/a/file", {1}); }));
  EXPECT_TRUE(IsToldOf(deep, [&] { tests::WriteBytes(deep + "/a/file", {1}); }));
  EXPECT_TRUE(IsUntold(deep, [&] { tests::WriteBytes(deep + "/a/b/file", {1}); }));
}

TEST_F(FolderWatchTest, WaitsForFoldersThatAreMissingOrGo)
{
  const std::string late = folder_.Path("not/yet/there");
  ASSERT_TRUE(watch_.Watch(late));
  EXPECT_TRUE(IsToldOf(late, [&] { MakeFolder("not/yet/there"); })) << "with the folders above it";
  EXPECT_TRUE(IsToldOf(late, [&] { tests::WriteBytes(late + "/file", {1}); }));
  EXPECT_TRUE(IsToldOf(late, [&] { fs::rename(late, folder_.Path("moved")); }));
  EXPECT_TRUE(IsUntold(late, [&] { tests::WriteBytes(folder_.Path("moved/file"), {1, 2}); })) << "it is another now";
  EXPECT_TRUE(IsToldOf(late, [&] { MakeFolder("not/yet/there"); })) << "again";
  EXPECT_TRUE(IsToldOf(late, [&] { tests::WriteBytes(late + "/file", {1}); }));
  EXPECT_TRUE(IsToldOf(late, [&] { fs::remove_all(late); }));
}

TEST_F(FolderWatchTest, IsStoppedByAnybodyAndWaitsForItsListenerOnlyThere)
{
  const std::string folder = MakeFolder("a");
  std::atomic<bool> begun = false, ended = false;
  FolderWatch slow([&](const std::string &) {
    begun = true;
    std::this_thread::sleep_for(200ms);
    ended = true;
  });
  ASSERT_TRUE(slow.Watch(folder));
  tests::WriteBytes(folder + "/file", {1});
  while (!begun)
    std::this_thread::sleep_for(1ms);
  slow.Stop();
  EXPECT_TRUE(ended);
  begun = false;
  tests::WriteBytes(folder + "/file", {1, 2});
  std::this_thread::sleep_for(kQuiet);
  EXPECT_FALSE(begun) << "nothing is told any more";

  FolderWatch *own = nullptr;
  std::atomic<bool> stopped = false;
  FolderWatch stopping([&](const std::string &) {
    own->Stop();
    stopped = true;
  });
  own = &stopping;
  ASSERT_TRUE(stopping.Watch(folder));
  tests::WriteBytes(folder + "/file", {1});
  const auto latest = std::chrono::steady_clock::now() + kLong;
  while (!stopped && std::chrono::steady_clock::now() < latest)
    std::this_thread::sleep_for(1ms);
  EXPECT_TRUE(stopped) << "by the listener itself";
  std::this_thread::sleep_for(kQuiet); // its thread has left by then
}

} // namespace
