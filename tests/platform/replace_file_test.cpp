// Replacing a file: whatever step fails, and wherever the process dies, the old or the new file is there, whole.
#include "tests/support/children.h"
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/files.h"

#include <gtest/gtest.h>

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

/// replace PATH STEP: dies before that step.
const tests::ChildWork kReplacing("replace", [](const tests::Words &words) {
  static const int last = std::stoi(words.at(1));
  SetFileFaults([](FileStep step) {
    if (static_cast<int>(step) == last)
      tests::KillThisProcess();
    return 0;
  });
  std::string untold;
  ReplaceFile(words.at(0), kNew, untold);
  return 0;
});

TEST_F(ReplaceFileTest, AProcessThatDiesAtAnyStepLeavesTheOldOrTheNewFile)
{
  for (const FileStep last : kFileSteps) {
    const std::string step = std::to_string(static_cast<int>(last));
    SCOPED_TRACE(step);
    Write(path_, kOld);
    ASSERT_EQ(tests::WaitFor(tests::StartChild("replace", {path_, step})), tests::kKilled) << "the step was taken";
    EXPECT_EQ(tests::TextOf(path_), last == FileStep::FlushFolder ? kNew : kOld);
    EXPECT_TRUE(ReplaceFile(path_, kNew, reason_)) << "what was left behind is in nobody's way: " << reason_;
    EXPECT_EQ(tests::TextOf(path_), kNew);
  }
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
