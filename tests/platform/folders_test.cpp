// Paths, files and the application: the plain functions that profiles rely on.
#include "tests/support/temporary_folder.h"
#include "zelclr/platform/application.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/regular_file.h"

#include <gtest/gtest.h>

#include <array>

using namespace ZelUtl;

namespace {

TEST(Paths, AreTakenApartAndPutTogether)
{
  struct Row
  {
    const char *path, *folder, *name, *extension;
  };
  constexpr Row kRows[] = {
    {"/a/b.icc", "/a", "b.icc", ".icc"},
    {"b.tar.gz", "", "b.tar.gz", ".gz"},
    {"/b", "/", "b", ""},
    {"a.d/b", "a.d", "b", ""},
    {"a/", "a", "", ""},
    {"", "", "", ""},
  };
  for (const Row &row : kRows) {
    EXPECT_EQ(FolderOfPath(row.path), row.folder) << row.path;
    EXPECT_EQ(FileNameOfPath(row.path), row.name) << row.path;
    EXPECT_EQ(ExtensionOfPath(row.path), row.extension) << row.path;
  }
  EXPECT_EQ(JoinPath("/a", "b"), "/a/b");
  EXPECT_EQ(JoinPath("/a/", "b"), "/a/b");
  EXPECT_EQ(JoinPath("", "b"), "b");
}

TEST(ValidFileName, MakesAnyTextTheNameOfAFile)
{
  constexpr std::pair<const char *, const char *> kRows[] = {
    {"Press 1", "Press 1"},
    {"../../etc/passwd", "etcpasswd"},
    {"a\\b:c*d?e\"f<g>h|i", "abcdefghi"},
    {" .name. ", "name"},
    {"", "Unnamed"},
    {"...", "Unnamed"},
    {"a\x01\x7F\nb", "ab"},
    {"\xC3\x84\xFF", "\xC3\x84"},
    {"nul", "_nul"},
    {"COM1.icc", "_COM1.icc"},
    {"console", "console"},
  };
  for (const auto &[text, name] : kRows)
    EXPECT_EQ(ValidFileName(text), name) << text;
  EXPECT_EQ(ValidFileName(std::string(199, 'a') + " b"), std::string(199, 'a')) << "no blank where it was cut";
  EXPECT_EQ(ValidFileName(std::string(500, 'a')).size(), 200u);
  std::string chinese;
  for (int i = 0; i < 200; ++i)
    chinese += "\xE4\xB8\xAD";
  EXPECT_LE(ValidFileName(chinese).size(), 255u - 20) << "file systems count bytes, and an extension needs some";
}

TEST(Folders, AreTheHostsUntilTheyAreReset)
{
  ResetFolders();
  const Folders customary = GetFolders();
  Folders folders;
  folders.data = "/data";
  folders.systemProfiles = {"/one", "/two"};
  SetFolders(folders);
  EXPECT_EQ(GetFolders().data, "/data");
  EXPECT_EQ(GetFolders().systemProfiles, folders.systemProfiles);
  EXPECT_EQ(GetFolders().user, "");
  ResetFolders();
  EXPECT_EQ(GetFolders().data, customary.data);
  EXPECT_TRUE(std::filesystem::is_directory(customary.data + "/color/profiles")) << customary.data;
}

TEST(RegularFile, IsReadAnywhereWithinAndNowhereElse)
{
  const tests::TemporaryFolder folder;
  std::string reason;
  const std::string path = folder.Write("ten", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
  auto file = RegularFile::Open(path, reason);
  ASSERT_TRUE(file) << reason;
  std::array<std::uint8_t, 4> bytes = {};
  EXPECT_TRUE(file->ReadAt(6, bytes));
  EXPECT_EQ(bytes[3], 9);
  for (const std::uint64_t offset : {std::uint64_t{7}, std::uint64_t{10}, std::uint64_t{1} << 40, ~std::uint64_t{0}})
    EXPECT_FALSE(file->ReadAt(offset, bytes)) << offset;
  EXPECT_TRUE(file->ReadAt(10, {})) << "nothing is always there";
  RegularFile moved = std::move(*file);
  EXPECT_TRUE(moved.ReadAt(0, bytes));

  EXPECT_EQ(moved.Stamp(), StampOfFile(path));
  tests::WriteBytes(path, {1});
  EXPECT_NE(moved.Stamp(), StampOfFile(path));
  std::vector<std::string> others = tests::PipeAndDevice(folder.Path());
  others.insert(others.end(), {folder.Path(), folder.Path("missing")});
  for (const std::string &other : others) {
    reason.clear();
    EXPECT_FALSE(RegularFile::Open(other, reason)) << other;
    EXPECT_NE(reason, "") << other;
    EXPECT_FALSE(StampOfFile(other)) << other;
  }
}

struct Listener
{
  void Hear() { heard += name; }
  void HearAndLeave()
  {
    Hear();
    event->Unregister(Delegate::To<&Listener::HearAndLeave>(*this));
  }
  char name;
  Event *event;
  static inline std::string heard;
};

TEST(Event, CallsEachListenerOnceInOrderAndLetsItLeaveMeanwhile)
{
  Event event;
  Listener a{'a', &event}, b{'b', &event}, c{'c', &event};
  Listener::heard.clear();
  event.Register(Delegate::To<&Listener::Hear>(a));
  event.Register(Delegate::To<&Listener::HearAndLeave>(b));
  event.Register(Delegate::To<&Listener::Hear>(c));
  event.Register(Delegate::To<&Listener::Hear>(a));
  event.Register(Delegate::To<&Listener::HearAndLeave>(a)); // another function of the same object
  event.Notify();
  EXPECT_EQ(Listener::heard, "abca");
  Listener::heard.clear();
  event.Unregister(Delegate::To<&Listener::Hear>(c));
  event.Notify();
  EXPECT_EQ(Listener::heard, "a");
}

TEST(Application, ReportsTheClosingOfDocuments)
{
  Listener a{'a', nullptr};
  const Delegate listener = Delegate::To<&Listener::Hear>(a);
  Listener::heard.clear();
  RegisterToCloseDocument(listener);
  ReportCloseDocument();
  UnregisterToCloseDocument(listener);
  ReportCloseDocument();
  EXPECT_EQ(Listener::heard, "a");
}

} // namespace
