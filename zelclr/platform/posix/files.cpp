#include "zelclr/platform/files.h"

#include "zelclr/platform/file_faults.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>
#include <utility>

namespace ZelUtl {

namespace {

std::string ErrorText(int error)
{
  return std::generic_category().message(error);
}

/// A file descriptor, closed at the end.
class Descriptor
{
public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }
  bool Close()
  {
    const int number = std::exchange(number_, -1);
    return number < 0 || ::close(number) == 0;
  }

private:
  int number_;
};

std::optional<std::string> ReadToEnd(int descriptor, std::size_t most, std::string &reason)
{
  std::string bytes;
  std::array<char, 65536> buffer;
  for (;;) {
    const auto count = ::read(descriptor, buffer.data(), buffer.size());
    if (count == 0)
      return bytes;
    if (count < 0) {
      if (errno == EINTR)
        continue;
      reason = ErrorText(errno);
      return std::nullopt;
    }
    if (bytes.size() + static_cast<std::size_t>(count) > most) {
      reason = "larger than " + std::to_string(most) + " bytes";
      return std::nullopt;
    }
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

bool WriteAll(int descriptor, std::string_view bytes)
{
  while (!bytes.empty()) {
    const auto count = ::write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR)
      return false;
    if (count > 0)
      bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
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
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
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
  const Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.IsOpen())
    return errno == EACCES;
  return ::fsync(folder.Number()) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

} // namespace

std::optional<std::string> ReadFile(const std::string &path, std::size_t most, std::string &reason)
{
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status = {};
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0) {
    reason = ErrorText(errno);
    return std::nullopt;
  }
  if (S_ISREG(status.st_mode) && static_cast<std::uintmax_t>(status.st_size) > most) {
    reason = "larger than " + std::to_string(most) + " bytes";
    return std::nullopt;
  }
  return ReadToEnd(file.Number(), most, reason);
}

std::optional<std::string> ReadStandardInput(std::size_t most, std::string &reason)
{
  return ReadToEnd(STDIN_FILENO, most, reason);
}

bool IsSameFile(const std::string &a, const std::string &b)
{
  struct stat first = {};
  struct stat second = {};
  return ::stat(a.c_str(), &first) == 0 && ::stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

bool ReplaceFile(const std::string &path, std::string_view bytes, std::string &reason)
{
  const auto failed = [&reason] {
    reason = ErrorText(errno);
    return false;
  };
  const std::optional<std::string> followed = Followed(path);
  if (!followed)
    return failed();
  const std::string &target = *followed;
  struct stat old = {};
  const bool exists = ::stat(target.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) {
    Descriptor device(::open(target.c_str(), O_WRONLY | O_CLOEXEC));
    return device.IsOpen() && WriteAll(device.Number(), bytes) && device.Close() ? true : failed();
  }

  std::string aside;
  // Nobody else sees bytes that he could not see in the old file.
  Descriptor file(MakeFileAside(FolderOf(target), exists ? 0600 : 0666, aside));
  if (!file.IsOpen())
    return failed();
  const bool replaced = MayTake(FileStep::Write) && WriteAll(file.Number(), bytes) &&
                        (!exists || TakeOver(file.Number(), old)) && MayTake(FileStep::Flush) &&
                        ::fsync(file.Number()) == 0 && file.Close() && MayTake(FileStep::Rename) &&
                        ::rename(aside.c_str(), target.c_str()) == 0;
  if (!replaced) {
    failed();
    ::unlink(aside.c_str());
    return false;
  }
  return MayTake(FileStep::FlushFolder) && FlushFolder(FolderOf(target)) ? true : failed();
}

} // namespace ZelUtl
