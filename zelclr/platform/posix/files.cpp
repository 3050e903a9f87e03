#include "zelclr/platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
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

/// The permissions that a new file gets.
mode_t DefaultMode()
{
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

/// Where the links of a path lead; the path itself where nothing stands yet.
std::string Followed(const std::string &path)
{
  const std::unique_ptr<char, void (*)(void *)> real(::realpath(path.c_str(), nullptr), std::free);
  return real ? std::string(real.get()) : path;
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

  std::string aside = target + ".XXXXXX";
  Descriptor file(::mkstemp(aside.data()));
  if (!file.IsOpen())
    return failed();
  const bool written = WriteAll(file.Number(), bytes) &&
                       ::fchmod(file.Number(), exists ? old.st_mode & 07777 : DefaultMode()) == 0 &&
                       ::fsync(file.Number()) == 0 && file.Close() && ::rename(aside.c_str(), target.c_str()) == 0;
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
