// Subfolders that were there before their folder was watched.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/folder_watch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

TEST(WatchedSubfolders, MayHaveBeenThereBefore)
{
  using namespace std::chrono_literals;
  const tests::TemporaryFolder folder;
  std::filesystem::create_directories(folder.Path("deep/a/b"));
  std::atomic<int> calls = 0;
  ZelUtl::FolderWatch watch([&calls](const std::string &) { ++calls; });
  ASSERT_TRUE(watch.Watch(folder.Path("deep"), 1));
  folder.WriteText("deep/a/b/file", "too deep");
  std::this_thread::sleep_for(300ms);
  EXPECT_EQ(calls, 0);
  folder.WriteText("deep/a/file", "deep enough");
  const auto latest = std::chrono::steady_clock::now() + 5s;
  while (calls == 0 && std::chrono::steady_clock::now() < latest)
    std::this_thread::sleep_for(1ms);
  EXPECT_EQ(calls, 1);
  watch.Stop();
}

} // namespace
