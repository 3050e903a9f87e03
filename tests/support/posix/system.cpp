#include "tests/support/system.h"

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace tests {

std::string MakeFolderAside()
{
  std::string path = (std::filesystem::temp_directory_path() / "zelclr_test_XXXXXX").string();
  if (::mkdtemp(path.data()) == nullptr)
    throw std::runtime_error("no temporary folder");
  return path;
}

void RemoveFolder(const std::string &path)
{
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

void SetVariable(const char *name, const std::string &value)
{
  ::setenv(name, value.c_str(), 1);
}

void UnsetVariable(const char *name)
{
  ::unsetenv(name);
}

std::string UserBelow(const std::string &folder)
{
  return "XDG_DATA_HOME=" + folder;
}

std::string UsersFolderName()
{
  return "zelclr";
}

std::vector<std::string> PipeAndDevice(const std::string &folder)
{
  const std::string pipe = folder + "/pipe.icc";
  if (::mkfifo(pipe.c_str(), 0600) != 0)
    throw std::runtime_error("no pipe at " + pipe);
  return {pipe, "/dev/zero"};
}

std::string FullDevice()
{
  return "/dev/full";
}

bool NamesAreBytes()
{
  return true;
}

bool LinkFolder(const std::string &target, const std::string &link)
{
  std::filesystem::create_directory_symlink(target, link);
  return true;
}

Process StartThisProgram(const std::vector<std::string> &words)
{
  std::vector<std::string> all = {"/proc/self/exe"};
  all.insert(all.end(), words.begin(), words.end());
  std::vector<char *> arguments;
  for (std::string &word : all)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child = -1;
  if (::posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
    throw std::runtime_error("cannot start this program again");
  return child;
}

int WaitFor(Process process)
{
  int status = 0;
  if (::waitpid(static_cast<pid_t>(process), &status, 0) != process)
    throw std::runtime_error("no such child");
  return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled;
}

void Kill(Process process)
{
  ::kill(static_cast<pid_t>(process), SIGKILL);
}

void KillThisProcess()
{
  ::raise(SIGKILL);
  std::abort();
}

} // namespace tests
