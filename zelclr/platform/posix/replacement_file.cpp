#include "zelclr/platform/replacement_file.h"

#include "zelclr/platform/file_faults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <system_error>
#include <utility>

namespace ZelUtl {

namespace {

bool Failed(std::string &reason)
{
  reason = std::generic_category().message(errno);
  return false;
}

/// Whether an offset can be told to the system; errno says so.
bool Reaches(std::uint64_t offset)
{
  const bool reaches = offset <= static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
  if (!reaches)
    errno = EFBIG;
  return reaches;
}

std::string FolderOf(const std::string &path)
{
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

/// Where the links at the end of a path lead, also when nothing stands there yet; nowhere when they form a ring.
std::optional<std::string> Followed(std::string path)
{
  constexpr int kMostLinks = 40; // as the kernel
  for (int i = 0; i < kMostLinks; ++i) {
    std::array<char, 4096> target;
    const auto length = ::readlink(path.c_str(), target.data(), target.size());
    if (length <= 0)
      return path;
    const std::string link(target.data(), static_cast<std::size_t>(length));
    path = link.front() == '/' ? link : FolderOf(path) + "/" + link;
  }
  errno = ELOOP;
  return std::nullopt;
}

/// Whether a step may be taken; errno says why not.
bool MayTake(FileStep step)
{
  const int fault = FaultOfFileStep(step);
  if (fault != 0)
    errno = fault;
  return fault == 0;
}

/// Makes a file in the folder under a name that nobody has, with these permissions less those that new files do not
/// get; -1 on failure.
int MakeFileAside(const std::string &folder, mode_t permissions, std::string &name)
{
  static std::atomic<unsigned> count{0};
  if (!MayTake(FileStep::Make))
    return -1;
  for (int attempt = 0; attempt < 100; ++attempt) {
    name = folder + "/.zelclr-" + std::to_string(::getpid()) + "-" + std::to_string(count++);
    const int file = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    if (file >= 0 || errno != EEXIST)
      return file;
  }
  return -1;
}

/// Gives a new file the owner of the old one, where that is allowed, and its permissions.
bool TakeOver(int file, const struct stat &old)
{
  struct stat mine = {};
  if (::fstat(file, &mine) != 0)
    return false;
  if (mine.st_uid != old.st_uid || mine.st_gid != old.st_gid) [[maybe_unused]]
    const int allowed = ::fchown(file, old.st_uid, old.st_gid);
  return ::fchmod(file, old.st_mode & 07777) == 0;
}

/// Makes the names in a folder survive a loss of power. Folders that may not be read, and file systems that cannot do
/// it, are as safe as they get.
bool FlushFolder(const std::string &path)
{
  const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0)
    return errno == EACCES;
  const bool flushed = ::fsync(folder) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
  ::close(folder);
  return flushed;
}

} // namespace

std::optional<ReplacementFile> ReplacementFile::Create(const std::string &path, std::string &reason)
{
  const std::optional<std::string> target = Followed(path);
  struct stat old = {};
  const bool exists = target && ::stat(target->c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) {
    reason = S_ISDIR(old.st_mode) ? "a folder" : "not a regular file";
    return std::nullopt;
  }
  // Nobody else sees bytes that he could not see in the old file.
  std::string aside;
  const int file = target ? MakeFileAside(FolderOf(*target), exists ? 0600 : 0666, aside) : -1;
  if (file < 0) {
    Failed(reason);
    return std::nullopt;
  }
  return ReplacementFile(file, std::move(aside), *target);
}

ReplacementFile::ReplacementFile(ReplacementFile &&other) noexcept
  : handle_(std::exchange(other.handle_, -1)),
    aside_(std::exchange(other.aside_, {})),
    target_(std::move(other.target_))
{}

ReplacementFile::~ReplacementFile()
{
  if (handle_ >= 0)
    ::close(static_cast<int>(handle_));
  if (!aside_.empty())
    ::unlink(aside_.c_str());
}

bool ReplacementFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes, std::string &reason)
{
  if (!MayTake(FileStep::Write))
    return Failed(reason);
  while (!bytes.empty()) {
    const auto count = Reaches(offset)
                         ? ::pwrite(static_cast<int>(handle_), bytes.data(), bytes.size(), static_cast<off_t>(offset))
                         : -1;
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      return Failed(reason);
    offset += static_cast<std::uint64_t>(count);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool ReplacementFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const
{
  while (!bytes.empty()) {
    const auto count =
      Reaches(offset) ? ::pread(static_cast<int>(handle_), bytes.data(), bytes.size(), static_cast<off_t>(offset)) : -1;
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      return false;
    offset += static_cast<std::uint64_t>(count);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

bool ReplacementFile::Commit(std::string &reason)
{
  const int file = static_cast<int>(handle_);
  struct stat old = {};
  const bool exists = ::stat(target_.c_str(), &old) == 0;
  if ((exists && !TakeOver(file, old)) || !MayTake(FileStep::Flush) || ::fsync(file) != 0)
    return Failed(reason);
  handle_ = -1;
  if (::close(file) != 0 || !MayTake(FileStep::Rename) || std::rename(aside_.c_str(), target_.c_str()) != 0)
    return Failed(reason);
  aside_.clear();
  return MayTake(FileStep::FlushFolder) && FlushFolder(FolderOf(target_)) ? true : Failed(reason);
}

} // namespace ZelUtl
