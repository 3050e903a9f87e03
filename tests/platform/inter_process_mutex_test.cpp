// The mutex among threads, objects and processes. Each test has lock files of its own.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/inter_process_mutex.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <mutex>
#include <thread>

using namespace ZelUtl;
using namespace std::chrono_literals;

namespace {

constexpr auto kLong = 20'000ms;

class InterProcessMutexTest : public testing::Test
{
protected:
  InterProcessMutexTest()
  {
    ::setenv("XDG_RUNTIME_DIR", folder_.Path().c_str(), 1);
    ::chmod(folder_.Path().c_str(), 0700);
  }
  ~InterProcessMutexTest() override
  {
    ::unsetenv("XDG_RUNTIME_DIR");
    ResetFolders();
  }

  /// Runs work in a child; its number.
  static pid_t InChild(const std::function<void()> &work)
  {
    const pid_t child = ::fork();
    if (child == 0) {
      work();
      ::_exit(0);
    }
    return child;
  }
  static int StatusOf(pid_t child)
  {
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
  }
  /// Whether another process gets the mutex at once.
  static bool IsFreeForOthers(const char *name)
  {
    return StatusOf(InChild([name] { ::_exit(InterProcessMutex(name).try_lock() ? 0 : 1); })) == 0;
  }

  const tests::TemporaryFolder folder_;
};

/// Reads, waits and writes: without exclusion numbers get lost.
void CountUp(const std::string &path)
{
  const auto before = tests::ReadBytes(path).size();
  std::this_thread::sleep_for(50us);
  tests::WriteBytes(path, tests::Bytes(before + 1));
}

TEST_F(InterProcessMutexTest, ThreadsObjectsAndProcessesTakeTurns)
{
  constexpr int kProcesses = 4;
  constexpr int kThreads = 3;
  constexpr int kRounds = 30;
  const std::string counter = folder_.Write("counter", {});
  std::vector<pid_t> children;
  for (int i = 0; i < kProcesses; ++i) {
    children.push_back(InChild([&counter] {
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
    }));
  }
  for (const pid_t child : children)
    EXPECT_EQ(StatusOf(child), 0);
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
  const pid_t child = InChild([] { ::_exit(InterProcessMutex("a").try_lock_for(30ms) ? 1 : 0); });
  EXPECT_EQ(StatusOf(child), 0) << "the time is up in another process, too";
}

TEST_F(InterProcessMutexTest, AHolderThatIsKilledFreesIt)
{
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const pid_t child = InChild([&pipe] {
    InterProcessMutex mutex("killed");
    mutex.lock();
    [[maybe_unused]] const auto told = ::write(pipe[1], "!", 1);
    ::pause();
  });
  char ready = 0;
  ASSERT_EQ(::read(pipe[0], &ready, 1), 1);
  InterProcessMutex mutex("killed");
  EXPECT_FALSE(mutex.try_lock());
  ::kill(child, SIGKILL);
  StatusOf(child);
  ASSERT_TRUE(mutex.try_lock_for(kLong));
  mutex.unlock();
  ::close(pipe[0]);
  ::close(pipe[1]);
}

TEST_F(InterProcessMutexTest, AForkedCopyNeitherHoldsNorFreesWhatItsParentHolds)
{
  InterProcessMutex mutex("fork");
  mutex.lock();
  const pid_t sleeper = InChild([] { ::pause(); }); // with a copy of everything that is open
  const pid_t child = InChild([&mutex] { ::_exit(mutex.try_lock() ? 1 : 0); });
  EXPECT_EQ(StatusOf(child), 0) << "the copy of a held mutex is not held";
  EXPECT_FALSE(IsFreeForOthers("fork")) << "and giving it up frees nothing";
  const pid_t waiting = InChild([&mutex] { ::_exit(mutex.try_lock_for(kLong) ? 0 : 1); });
  mutex.unlock();
  EXPECT_EQ(StatusOf(waiting), 0) << "the copy waits for its parent, not for itself";
  EXPECT_TRUE(IsFreeForOthers("fork")) << "a copy does not hold on to it";
  ::kill(sleeper, SIGKILL);
  StatusOf(sleeper);
}

TEST_F(InterProcessMutexTest, ALockFileThatIsTidiedAwayMeanwhileExcludesStill)
{
  InterProcessMutex mutex("tidied");
  std::filesystem::path file;
  {
    const std::lock_guard guard(mutex);
    file = std::filesystem::directory_iterator(folder_.Path())->path();
    EXPECT_NE(std::filesystem::status(file).permissions() & std::filesystem::perms::sticky_bit,
              std::filesystem::perms::none);
  }
  mutex.lock();
  const pid_t waiting = InChild([] { // on the file that goes
    InterProcessMutex again("tidied");
    const std::lock_guard guard(again);
    ::_exit(IsFreeForOthers("tidied") ? 1 : 0);
  });
  std::this_thread::sleep_for(50ms);
  std::filesystem::remove(file);
  mutex.unlock();
  EXPECT_EQ(StatusOf(waiting), 0) << "it holds the file that others find";
}

TEST_F(InterProcessMutexTest, OnlyAPrivateFolderIsTrusted)
{
  Folders folders;
  folders.temporary = folder_.Path();
  SetFolders(folders);
  const std::string own = folder_.Path("zelclr-" + std::to_string(::geteuid()));
  const auto excludesOthers = [] {
    InterProcessMutex mutex("folder");
    const std::lock_guard guard(mutex);
    std::thread([] { EXPECT_FALSE(InterProcessMutex("folder").try_lock()); }).join();
    return mutex.ExcludesOtherProcesses();
  };
  const bool hasRunFolder = IsFolder("/run/user/" + std::to_string(::geteuid()));
  ::setenv("XDG_RUNTIME_DIR", "relative", 1);
  EXPECT_TRUE(excludesOthers());
  if (hasRunFolder)
    return; // a better place than the temporary folder
  EXPECT_TRUE(IsFolder(own));
  ::chmod(own.c_str(), 0777);
  EXPECT_FALSE(excludesOthers()) << "anybody could write there";
  std::filesystem::remove_all(own);
  std::filesystem::create_directory(folder_.Path("elsewhere"));
  ::chmod(folder_.Path("elsewhere").c_str(), 0700);
  std::filesystem::create_directory_symlink("elsewhere", own);
  EXPECT_FALSE(excludesOthers()) << "a link that somebody else may have laid";
}

} // namespace
