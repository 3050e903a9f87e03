// The mutex where processes are forked and locks are files.
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

class ProcessLockTest : public testing::Test
{
protected:
  ProcessLockTest()
  {
    tests::SetVariable("XDG_RUNTIME_DIR", folder_.Path());
    ::chmod(folder_.Path().c_str(), 0700);
  }
  ~ProcessLockTest() override
  {
    tests::UnsetVariable("XDG_RUNTIME_DIR");
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

TEST_F(ProcessLockTest, AForkedCopyNeitherHoldsNorFreesWhatItsParentHolds)
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

TEST_F(ProcessLockTest, ALockFileThatIsTidiedAwayMeanwhileExcludesStill)
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

TEST_F(ProcessLockTest, OnlyAPrivateFolderIsTrusted)
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
  tests::SetVariable("XDG_RUNTIME_DIR", "relative");
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
