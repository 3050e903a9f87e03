#include "zelclr/platform/internal/process_lock.h"

#include "zelclr/platform/folders.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <thread>
#include <utility>

namespace ZelUtl {

namespace {

using namespace std::chrono_literals;

/// Whether it is a folder, not a link to one, in which nobody but the user may write, read or look.
bool IsPrivate(const std::string &folder)
{
  struct stat status = {};
  return ::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
         (status.st_mode & 077) == 0;
}

/// Empty when there is none. A folder of that name in /tmp that someone else has made is not taken.
std::string FolderOfLocks()
{
  const std::string user = std::to_string(::geteuid());
  const char *const runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime != nullptr && runtime[0] == '/' && IsPrivate(runtime))
    return runtime;
  const std::string customary = "/run/user/" + user;
  if (IsPrivate(customary))
    return customary;
  const std::string own = JoinPath(GetFolders().temporary, "zelclr-" + user);
  ::mkdir(own.c_str(), 0700);
  return IsPrivate(own) ? own : "";
}

int OpenLockFile(const std::string &path)
{
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  struct stat status = {};
  if (file >= 0 && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
    ::fchmod(file, 0600 | S_ISVTX); // so that what tidies runtime folders leaves it, says the XDG specification
    return file;
  }
  if (file >= 0)
    ::close(file);
  return -1;
}

/// Whether the path still leads to the open file; a tidied-away one would exclude nobody who comes later.
bool IsStillThere(int file, const std::string &path)
{
  struct stat open = {};
  struct stat named = {};
  return ::fstat(file, &open) == 0 && ::lstat(path.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
         open.st_ino == named.st_ino;
}

enum class Locking
{
  Done,
  TimeIsUp,
  Impossible
};

Locking LockFile(int file, const Deadline &deadline)
{
  auto pause = 1ms;
  for (;;) {
    if (::flock(file, deadline ? LOCK_EX | LOCK_NB : LOCK_EX) == 0)
      return Locking::Done;
    if (errno == EINTR)
      continue;
    if (errno != EWOULDBLOCK)
      return Locking::Impossible;
    const auto now = std::chrono::steady_clock::now();
    if (now >= *deadline)
      return Locking::TimeIsUp;
    std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(pause, *deadline - now));
    pause = std::min(2 * pause, 16ms);
  }
}

} // namespace

ProcessLock::~ProcessLock()
{
  LeaveToParent();
}

bool ProcessLock::Take(const Deadline &deadline)
{
  const std::string folder = FolderOfLocks();
  if (folder.empty())
    return true;
  const std::string path = JoinPath(folder, name_ + ".lock");
  constexpr int kMostTries = 100; // each needs somebody who deletes the file meanwhile
  for (int i = 0; i < kMostTries; ++i) {
    const int file = OpenLockFile(path);
    if (file < 0)
      return true;
    const Locking locking = LockFile(file, deadline);
    if (locking == Locking::Done && IsStillThere(file, path)) {
      handle_ = file;
      return true;
    }
    ::close(file);
    if (locking == Locking::TimeIsUp)
      return false;
    if (locking == Locking::Impossible)
      return true;
  }
  return true;
}

void ProcessLock::Release()
{
  if (!IsHeld())
    return;
  ::flock(static_cast<int>(handle_), LOCK_UN); // closing is not enough where a forked child has a copy
  LeaveToParent();
}

void ProcessLock::LeaveToParent()
{
  if (IsHeld())
    ::close(static_cast<int>(std::exchange(handle_, kNone)));
}

std::uint64_t CurrentProcess()
{
  return static_cast<std::uint64_t>(::getpid());
}

} // namespace ZelUtl
