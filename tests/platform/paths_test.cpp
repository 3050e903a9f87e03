// Files whose paths are long or have letters of any script; the environment as it is now.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/console.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"

#include <gtest/gtest.h>

#include <array>

using namespace ZelUtl;

namespace {

/// Folders of more than 260 characters, which is more than many functions of Windows take.
std::string LongName()
{
  std::string name;
  for (int i = 0; i < 8; ++i)
    name += std::string(60, static_cast<char>('a' + i)) + "/";
  return name + "end";
}

TEST(Paths, MayBeLongAndInAnyScript)
{
  const tests::TemporaryFolder temporary;
  for (const std::string &name : {std::string("plain"),
                                  std::string("Gr\xC3\xB6\xC3\x9F"
                                              "e/\xE6\x97\xA5\xE6\x9C\xAC"),
                                  std::string("\xF0\x9F\x8E\xA8"), LongName()})
  {
    SCOPED_TRACE(name);
    const std::string folder = temporary.Path(name);
    const std::string file = folder + "/\xE6\x97\xA5\xE6\x9C\xAC.icc";
    std::string reason;
    EXPECT_FALSE(IsFolder(folder));
    ASSERT_TRUE(MakeFolders(folder, reason)) << reason;
    EXPECT_TRUE(MakeFolders(folder, reason)) << "it is there already";
    EXPECT_TRUE(IsFolder(folder));
    EXPECT_FALSE(StampOfFile(file));
    ASSERT_TRUE(ReplaceFile(file, "old", reason)) << reason;
    ASSERT_TRUE(ReplaceFile(file, "new", reason)) << reason;
    EXPECT_EQ(ReadFile(file, 100, reason), "new") << reason;
    EXPECT_TRUE(StampOfFile(file));
    auto opened = RegularFile::Open(file, reason);
    ASSERT_TRUE(opened) << reason;
    std::array<std::uint8_t, 3> bytes = {};
    EXPECT_TRUE(opened->ReadAt(0, bytes));
    EXPECT_EQ(bytes[2], 'w');
    opened.reset();
    EXPECT_TRUE(IsSameFile(file, folder + "/../" + FileNameOfPath(folder) + "/./" + FileNameOfPath(file)));
    EXPECT_FALSE(IsSameFile(file, folder));

    std::vector<std::string> subfolders;
    EXPECT_EQ(FilesOfFolder(folder), std::vector<std::string>{FileNameOfPath(file)}) << "and nothing left aside";
    FilesOfFolder(FolderOfPath(folder), &subfolders);
    EXPECT_EQ(subfolders, std::vector<std::string>{FileNameOfPath(folder)});

    EXPECT_TRUE(IsFileWritable(file));
    EXPECT_TRUE(SetFileWritable(file, false));
    EXPECT_FALSE(IsFileWritable(file));
    EXPECT_TRUE(DeleteFileAt(file)) << "read-only files, too";
    EXPECT_FALSE(DeleteFileAt(file));
    EXPECT_TRUE(DeleteFileAt(folder));
    EXPECT_FALSE(IsFolder(folder));
    for (std::string above = folder; above != temporary.Path(); above = FolderOfPath(above))
      DeleteFileAt(above);
  }
}

TEST(Environment, IsReadAsItIsNow)
{
  EXPECT_EQ(EnvironmentVariable("ZELCLR_TEST"), std::nullopt);
  for (const std::string &value : {std::string("one"), std::string("\xE6\x97\xA5\xE6\x9C\xAC"), std::string(3000, 'a')})
  {
    tests::SetVariable("ZELCLR_TEST", value);
    EXPECT_EQ(EnvironmentVariable("ZELCLR_TEST"), value);
  }
  tests::UnsetVariable("ZELCLR_TEST");
  EXPECT_EQ(EnvironmentVariable("ZELCLR_TEST"), std::nullopt);
}

} // namespace
