// What Windows itself sees of us, and we of it.
#include "tests/support/children.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/windows/command_line.h"
#include "zelclr/platform/console.h"
#include "zelclr/platform/display_profile.h"
#include "zelclr/platform/files.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/inter_process_mutex.h"
#include "zelclr/platform/locale.h"
#include "zelclr/platform/regular_file.h"
#include "zelclr/platform/thread_lock.h"

#include <gtest/gtest.h>

// It makes a macro of a name of ours.
#include <windows.h>
#undef ReplaceFile

#include <mutex>
#include <thread>

using namespace ZelUtl;

namespace {

TEST(System, UsersFilesAreBelowTheFolderThatTheSystemNamesNow)
{
  const tests::TemporaryFolder folder;
  const std::string before = EnvironmentVariable("APPDATA").value_or("");
  tests::SetVariable("APPDATA", folder.Path("\xE6\x97\xA5"));
  EXPECT_EQ(GetUserFolder(), folder.Path("\xE6\x97\xA5/ZelClr"));
  tests::UnsetVariable("APPDATA");
  EXPECT_EQ(GetUserFolder(), "");
  tests::SetVariable("APPDATA", before);
}

TEST(System, ProfilesOfTheSystemAreInItsColourFolder)
{
  const std::vector<std::string> folders = GetFolders().systemProfiles;
  ASSERT_EQ(folders.size(), 1u);
  EXPECT_TRUE(IsFolder(folders[0]));
  EXPECT_EQ(FileNameOfPath(folders[0]), "color");
  const auto expected = EnvironmentVariable("SystemRoot").value_or("") + "/System32/spool/drivers/color";
  EXPECT_TRUE(IsSameFile(folders[0], expected));
}

TEST(System, DisplaysAreThoseOfTheDesktopWithTheirProfiles)
{
  const std::vector<Display> displays = AttachedDisplays();
  EXPECT_EQ(displays.size(), static_cast<std::size_t>(::GetSystemMetrics(SM_CMONITORS)));
  for (const Display &display : displays) {
    EXPECT_TRUE(display.device.starts_with("\\\\.\\DISPLAY")) << display.device;
    EXPECT_TRUE(display.profile.empty() || StampOfFile(display.profile)) << display.profile;
  }
  tests::SetVariable("ZELCLR_DISPLAY_PROFILE", "C:/Gr\xC3\xB6\xC3\x9F"
                                               "e.icc");
  EXPECT_EQ(PathOfDisplayProfile(), "C:/Gr\xC3\xB6\xC3\x9F"
                                    "e.icc");
  tests::UnsetVariable("ZELCLR_DISPLAY_PROFILE");
  EXPECT_EQ(PathOfDisplayProfile(), displays.empty() ? "" : displays[0].profile);
}

TEST(System, MutexesAreTheKernelsUnderTheirNames)
{
  const auto isThere = [] {
    const HANDLE mutex = ::OpenMutexW(SYNCHRONIZE, FALSE, L"Local\\zelclr-seen%2Foutside");
    if (mutex != nullptr)
      ::CloseHandle(mutex);
    return mutex != nullptr;
  };
  InterProcessMutex mutex("seen/outside");
  EXPECT_FALSE(isThere());
  {
    const std::lock_guard guard(mutex);
    EXPECT_TRUE(mutex.ExcludesOtherProcesses());
    EXPECT_TRUE(isThere());
  }
  EXPECT_FALSE(isThere()) << "no handle is left";
}

TEST(System, LocksOfObjectsTakeNoHandles)
{
  const auto handles = [] {
    DWORD count = 0;
    EXPECT_NE(::GetProcessHandleCount(::GetCurrentProcess(), &count), 0);
    return count;
  };
  const DWORD before = handles();
  for (int i = 0; i < 1000; ++i) {
    const ThreadLock lock;
    {
      const WriteLock written(lock);
    }
    const ReadLock read(lock);
  }
  EXPECT_LT(handles(), before + 100);
}

TEST(System, TheEnvironmentMayNameTheLocale)
{
  const std::string before = EnvironmentVariable("LC_ALL").value_or("");
  tests::SetVariable("LC_ALL", "de_AT.UTF-8");
  ZelLocale::ResetLocale();
  EXPECT_EQ(ZelLocale::GetCurrentCountryISOCode(), "AT");
  EXPECT_EQ(ZelLocale::GetUILanguage(), "de-AT");
  tests::SetVariable("LC_ALL", "C.UTF-8");
  ZelLocale::ResetLocale();
  EXPECT_EQ(ZelLocale::GetUILanguage().substr(0, 2), "en") << "the system's own";
  tests::SetVariable("LC_ALL", before);
}

TEST(System, AFileThatSomebodyReadsIsReplacedWhenHeHasRead)
{
  const tests::TemporaryFolder folder;
  const std::string path = folder.WriteText("file", "old");
  const HANDLE reader =
    ::CreateFileW(folder.Wide("file").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  std::thread leaving([reader] {
    ::Sleep(100);
    ::CloseHandle(reader);
  });
  std::string reason;
  EXPECT_TRUE(ReplaceFile(path, "new", reason)) << reason;
  leaving.join();
  EXPECT_EQ(tests::TextOf(path), "new");
}

TEST(System, DevicesAreWrittenToAndFoldersNever)
{
  const tests::TemporaryFolder folder;
  std::string reason;
  EXPECT_TRUE(ReplaceFile("NUL", "gone", reason)) << reason;
  EXPECT_FALSE(ReplaceFile(folder.Path(), "text", reason));
  EXPECT_EQ(reason, "a folder");
}

/// words FILE ...: writes its words down, one a line.
const tests::ChildWork kWords("words", [](const tests::Words &words) {
  std::string all;
  for (const std::string &word : ProgramArguments(0, nullptr))
    all += word + "\n";
  tests::WriteBytes(words.at(0), {all.begin(), all.end()});
  return 0;
});

TEST(System, WordsOfTheCommandLineAreInAnyScript)
{
  const tests::TemporaryFolder folder;
  const std::vector<std::string> words = {"Gr\xC3\xB6\xC3\x9F"
                                          "e \xE6\x97\xA5\xE6\x9C\xAC",
                                          "\"quoted\"", "a\\\\\"b\\", "", "\xF0\x9F\x8E\xA8"};
  std::vector<std::string> all = {folder.Path("words")};
  all.insert(all.end(), words.begin(), words.end());
  EXPECT_EQ(tests::WaitFor(tests::StartChild("words", all)), 0);
  std::string expected;
  for (const std::string &word : words)
    expected += word + "\n";
  EXPECT_TRUE(tests::TextOf(folder.Path("words")).ends_with(expected)) << tests::TextOf(folder.Path("words"));
}

} // namespace
