#include "tests/settings/support/children.h"

#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"
#include "zelclr/settings/color_settings_manager.h"

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

using namespace ColorSystem;

namespace tests {

namespace {

constexpr const char *kFlag = "--child";

using Words = std::vector<std::string>;

void Add(const std::string &prefix, int count)
{
  for (int i = 0; i < count; ++i)
    ColorSettingsManager::GetInstance().AddColorSettings(
      ColorSettings(ZelUtl::WideFromUtf8(prefix + "-" + std::to_string(i))));
}

/// add PREFIX COUNT: presets PREFIX-0 and on.
int AddMany(const Words &words)
{
  Add(words.at(0), std::stoi(words.at(1)));
  return 0;
}

/// die STEP PREFIX: starts, adds two presets and chooses one; killed at that step of all the files that are replaced.
int DieAtStep(const Words &words)
{
  static std::atomic<int> left = std::stoi(words.at(0));
  ZelUtl::SetFileFaults([](ZelUtl::FileStep) { return left-- == 0 ? ::raise(SIGKILL) : 0; });
  Add(words.at(1), 2);
  auto &manager = ColorSettingsManager::GetInstance();
  manager.SetApplicationColorSettings(*manager.GetColorSettings(L"Europe Prepress"));
  return 0;
}

constexpr struct
{
  const char *name;
  int (*run)(const Words &words);
} kCommands[] = {{"add", &AddMany}, {"die", &DieAtStep}};

int RunChild(const Words &words)
{
  ZelUtl::Folders folders;
  folders.data = words.at(0);
  folders.user = words.at(1);
  folders.temporary = words.at(1);
  ZelUtl::SetFolders(folders);
  for (const auto &command : kCommands) {
    if (words.at(2) == command.name)
      return command.run({words.begin() + 3, words.end()});
  }
  return 2;
}

} // namespace

pid_t StartChild(const std::string &data, const std::string &user, const Words &words)
{
  Words all = {"/proc/self/exe", kFlag, data, user};
  all.insert(all.end(), words.begin(), words.end());
  std::vector<char *> arguments;
  for (std::string &word : all)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child = -1;
  EXPECT_EQ(::posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ), 0);
  return child;
}

int WaitForChild(pid_t child)
{
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return status;
}

} // namespace tests

int main(int count, char **words)
{
  if (count > 3 && std::string(words[1]) == tests::kFlag)
    return tests::RunChild({words + 2, words + count});
  testing::InitGoogleTest(&count, words);
  return RUN_ALL_TESTS();
}
