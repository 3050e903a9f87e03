// The mutex among threads, objects and processes. Each test has locks of its own.
#include "tests/support/children.h"
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/inter_process_mutex.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

using namespace ZelUtl;
using namespace std::chrono_literals;

namespace {

constexpr auto kLong = 20'000ms;
constexpr int kThreads = 3;
constexpr int kRounds = 30;

/// Reads, waits and writes: without exclusion numbers get lost.
void CountUp(const std::string &path)
{
  const auto before = tests::ReadBytes(path).size();
  std::this_thread::sleep_for(50us);
  tests::WriteBytes(path, tests::Bytes(before + 1));
}

const tests::ChildWork kCounting("count up", [](const tests::Words &words) {
  const std::string &counter = words.at(0);
  InterProcessMutex shared("turns");
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&counter, &shared, t] {
      InterProcessMutex own("turns");
      for (int round = 0; round < kRounds; ++round) {
        const std::lock_guard guard(t == 0 ? own : shared);
        CountUp(counter);
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  return 0;
});

/// try NAME MILLISECONDS: 0 when it gets the mutex in that time.
const tests::ChildWork kTrying("try", [](const tests::Words &words) {
  return InterProcessMutex(words.at(0)).try_lock_for(std::chrono::milliseconds(std::stoi(words.at(1)))) ? 0 : 1;
});

/// hold NAME FILE: tells by the file that it has the mutex, and keeps it.
const tests::ChildWork kHolding("hold", [](const tests::Words &words) {
  InterProcessMutex mutex(words.at(0));
  mutex.lock();
  tests::WriteBytes(words.at(1), {1});
  std::this_thread::sleep_for(10 * kLong);
  return 0;
});

class InterProcessMutexTest : public testing::Test
{
protected:
  InterProcessMutexTest()
  {
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::owner_all);
    tests::SetVariable("XDG_RUNTIME_DIR", folder_.Path());
  }
  ~InterProcessMutexTest() override { tests::UnsetVariable("XDG_RUNTIME_DIR"); }

  /// Whether another process gets the mutex in that time.
  static bool IsFreeForOthers(const char *name, int milliseconds = 0)
  {
    return tests::WaitFor(tests::StartChild("try", {name, std::to_string(milliseconds)})) == 0;
  }

  const tests::TemporaryFolder folder_;
};

TEST_F(InterProcessMutexTest, ThreadsObjectsAndProcessesTakeTurns)
{
  constexpr int kProcesses = 4;
  const std::string counter = folder_.Write("counter", {});
  std::vector<tests::Process> children;
  for (int i = 0; i < kProcesses; ++i)
    children.push_back(tests::StartChild("count up", {counter}));
  for (const tests::Process child : children)
    EXPECT_EQ(tests::WaitFor(child), 0);
  EXPECT_EQ(tests::ReadBytes(counter).size(), std::size_t{kProcesses * kThreads * kRounds});
}

TEST_F(InterProcessMutexTest, WaitsAsLongAsItIsToldTo)
{
  InterProcessMutex held("a");
  InterProcessMutex again("a");
  InterProcessMutex other("a/../b");
  const std::lock_guard guard(held);
  EXPECT_TRUE(held.ExcludesOtherProcesses());
  EXPECT_FALSE(IsFreeForOthers("a"));
  EXPECT_TRUE(IsFreeForOthers("A"));
  EXPECT_TRUE(other.try_lock()) << "names are no paths";
  other.unlock();
  std::thread([&again] {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(again.try_lock());
    EXPECT_FALSE(again.try_lock_for(30ms));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 30ms);
  }).join();
  EXPECT_FALSE(IsFreeForOthers("a", 30)) << "the time is up in another process, too";
}

TEST_F(InterProcessMutexTest, AHolderThatIsKilledFreesIt)
{
  const std::string told = folder_.Path("told");
  const tests::Process child = tests::StartChild("hold", {"killed", told});
  while (tests::ReadBytes(told).empty())
    std::this_thread::sleep_for(1ms);
  InterProcessMutex mutex("killed");
  EXPECT_FALSE(mutex.try_lock());
  tests::Kill(child);
  EXPECT_EQ(tests::WaitFor(child), tests::kKilled);
  ASSERT_TRUE(mutex.try_lock_for(kLong));
  mutex.unlock();
}

} // namespace
