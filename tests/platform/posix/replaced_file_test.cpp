// Replacing a file where there are links and permissions.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace ZelUtl;

namespace {

namespace fs = std::filesystem;

constexpr const char *kOld = "old";
constexpr const char *kNew = "new";

mode_t PermissionsOf(const std::string &path)
{
  struct stat status = {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

class ReplacedFileTest : public testing::Test
{
protected:
  ~ReplacedFileTest() override { SetFileFaults({}); }

  const tests::TemporaryFolder folder_;
  const std::string path_ = folder_.Path("file");
  std::string reason_;
};

TEST_F(ReplacedFileTest, LinksAndPermissionsStay)
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
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path("far")), {}), 1);

  fs::create_symlink("ring", folder_.Path("ring"));
  EXPECT_FALSE(ReplaceFile(folder_.Path("ring"), kNew, reason_)) << "a link that leads to itself";
  EXPECT_TRUE(fs::is_symlink(folder_.Path("ring")));
}

TEST_F(ReplacedFileTest, ASecretIsNeverReadableMeanwhile)
{
  folder_.WriteText("file", kOld);
  ::chmod(path_.c_str(), 0600);
  SetFileFaults([this](FileStep step) {
    for (const auto &entry : fs::directory_iterator(folder_.Path()))
      EXPECT_EQ(PermissionsOf(entry.path().string()) & 077, 0u) << static_cast<int>(step);
    return 0;
  });
  EXPECT_TRUE(ReplaceFile(path_, kNew, reason_)) << reason_;
}

} // namespace
