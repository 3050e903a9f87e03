// Replacing a file: whatever step fails, and wherever the process dies, the old or the new file is there, whole.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

using namespace ZelUtl;

namespace {

namespace fs = std::filesystem;

/// Larger than what one write takes, so that a half-written file would show.
const std::string kOld(300'000, 'o');
const std::string kNew(500'000, 'n');

void Write(const std::string &path, const std::string &text)
{
  tests::WriteBytes(path, {text.begin(), text.end()});
}

std::size_t FilesIn(const std::string &folder)
{
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

mode_t PermissionsOf(const std::string &path)
{
  struct stat status = {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

class ReplaceFileTest : public testing::Test
{
protected:
  ~ReplaceFileTest() override { SetFileFaults({}); }

  const tests::TemporaryFolder folder_;
  const std::string path_ = folder_.Path("file");
  std::string reason_;
};

TEST_F(ReplaceFileTest, AFailureAtAnyStepIsToldAndLeavesNothingBehind)
{
  for (const bool exists : {true, false}) {
    for (const FileStep failing : kFileSteps) {
      SCOPED_TRACE(static_cast<int>(failing));
      SetFileFaults({});
      fs::remove(path_);
      if (exists)
        Write(path_, kOld);
      SetFileFaults([failing](FileStep step) { return step == failing ? ENOSPC : 0; });
      reason_.clear();
      EXPECT_FALSE(ReplaceFile(path_, kNew, reason_));
      EXPECT_EQ(reason_, "No space left on device");
      const bool replaced = failing == FileStep::FlushFolder;
      EXPECT_EQ(tests::TextOf(path_), replaced ? kNew : exists ? kOld : "");
      EXPECT_EQ(FilesIn(folder_.Path()), exists || replaced ? 1u : 0u);
    }
  }
  SetFileFaults({});
  EXPECT_TRUE(ReplaceFile(path_, kNew, reason_)) << reason_;
}

TEST_F(ReplaceFileTest, AProcessThatDiesAtAnyStepLeavesTheOldOrTheNewFile)
{
  for (const FileStep last : kFileSteps) {
    SCOPED_TRACE(static_cast<int>(last));
    Write(path_, kOld);
    const pid_t child = ::fork();
    if (child == 0) {
      SetFileFaults([last](FileStep step) { return step == last ? ::raise(SIGKILL) : 0; });
      std::string untold;
      ReplaceFile(path_, kNew, untold);
      ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the step was taken";
    EXPECT_EQ(tests::TextOf(path_), last == FileStep::FlushFolder ? kNew : kOld);
    EXPECT_TRUE(ReplaceFile(path_, kNew, reason_)) << "what was left behind is in nobody's way: " << reason_;
    EXPECT_EQ(tests::TextOf(path_), kNew);
  }
}

TEST_F(ReplaceFileTest, LinksAndPermissionsStay)
{
  fs::create_directory(folder_.Path("far"));
  const std::string target = folder_.Path("far/target");
  fs::create_symlink("far/target", folder_.Path("second"));
  fs::create_symlink("second", path_);
  EXPECT_TRUE(ReplaceFile(path_, kOld, reason_)) << "the target is made: " << reason_;
  for (const mode_t permissions : {0600u, 0640u, 0444u, 0755u}) {
    ::chmod(target.c_str(), permissions);
    EXPECT_TRUE(ReplaceFile(path_, kNew, reason_)) << reason_;
    EXPECT_EQ(PermissionsOf(target), permissions);
  }
  EXPECT_TRUE(fs::is_symlink(path_));
  EXPECT_EQ(tests::TextOf(target), kNew);
  EXPECT_EQ(FilesIn(folder_.Path("far")), 1u);

  fs::create_symlink("ring", folder_.Path("ring"));
  EXPECT_FALSE(ReplaceFile(folder_.Path("ring"), kNew, reason_)) << "a link that leads to itself";
  EXPECT_TRUE(fs::is_symlink(folder_.Path("ring")));
}

TEST_F(ReplaceFileTest, ASecretIsNeverReadableMeanwhile)
{
  Write(path_, kOld);
  ::chmod(path_.c_str(), 0600);
  SetFileFaults([this](FileStep step) {
    for (const auto &entry : fs::directory_iterator(folder_.Path()))
      EXPECT_EQ(PermissionsOf(entry.path().string()) & 077, 0u) << static_cast<int>(step);
    return 0;
  });
  EXPECT_TRUE(ReplaceFile(path_, kNew, reason_)) << reason_;
}

TEST_F(ReplaceFileTest, DamagedBytesAreKeptOnceUnderAFreeName)
{
  fs::create_directory(path_ + ".damaged-2");
  EXPECT_EQ(KeepDamagedBytes(path_, "one", reason_), path_ + ".damaged");
  EXPECT_EQ(KeepDamagedBytes(path_, "one", reason_), path_ + ".damaged");
  EXPECT_EQ(KeepDamagedBytes(path_, "two", reason_), path_ + ".damaged-3");
  EXPECT_EQ(KeepDamagedBytes(path_, "on", reason_), path_ + ".damaged-4");
  EXPECT_EQ(tests::TextOf(path_ + ".damaged"), "one");
  EXPECT_EQ(KeepDamagedBytes("/nowhere/file", "one", reason_), "");
  EXPECT_NE(reason_, "");
}

} // namespace
