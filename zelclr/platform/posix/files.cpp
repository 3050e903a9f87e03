#include "zelclr/platform/files.h"

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

/// Where the links at the end of a path lead, also when nothing stands there yet.
std::string Followed(std::string path)
{
  constexpr int kMostLinks = 40; // as the kernel
  for (int i = 0; i < kMostLinks; ++i) {
    std::array<char, 4096> target;
    const auto length = ::readlink(path.c_str(), target.data(), target.size());
    if (length <= 0)
      break;
    const std::string link(target.data(), static_cast<std::size_t>(length));
    path = link.front() == '/' ? link : FolderOf(path) + "/" + link;
  }
  return path;
}

/// Makes a file in the folder under a name that nobody has, with the permissions that new files get; -1 on failure.
int MakeFileAside(const std::string &folder, std::string &name)
{
  static std::atomic<unsigned> count{0};
  for (int attempt = 0; attempt < 100; ++attempt) {
    name = folder + "/.zelclr-" + std::to_string(::getpid()) + "-" + std::to_string(count++);
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file >= 0 || errno != EEXIST)
      return file;
  }
  return -1;
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
  const std::string target = Followed(path);
  struct stat old = {};
  const bool exists = ::stat(target.c_str(), &old) == 0;
  const auto failed = [&] {
    reason = ErrorText(errno);
    return false;
  };
  if (exists && !S_ISREG(old.st_mode)) {
    Descriptor device(::open(target.c_str(), O_WRONLY | O_CLOEXEC));
    return device.IsOpen() && WriteAll(device.Number(), bytes) && device.Close() ? true : failed();
  }

  std::string aside;
  Descriptor file(MakeFileAside(FolderOf(target), aside));
  if (!file.IsOpen())
    return failed();
  const bool written = WriteAll(file.Number(), bytes) &&
                       (!exists || ::fchmod(file.Number(), old.st_mode & 07777) == 0) && ::fsync(file.Number()) == 0 &&
                       file.Close() && ::rename(aside.c_str(), target.c_str()) == 0;
  if (!written) {
    failed();
    ::unlink(aside.c_str());
    return false;
  }
  const Descriptor folder(::open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen())
    ::fsync(folder.Number()); // the new name survives a crash, too; some file systems refuse, and the file is whole
  return true;
}

} // namespace ZelUtl
