#include "zelclr/platform/files.h"

#include "zelclr/platform/replacement_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
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

bool IsNameTaken(const std::string &path)
{
  struct stat status = {};
  return ::lstat(path.c_str(), &status) == 0 || errno != ENOENT;
}

bool ReplaceFile(const std::string &path, std::string_view bytes, std::string &reason)
{
  struct stat old = {};
  if (::stat(path.c_str(), &old) == 0 && !S_ISREG(old.st_mode)) {
    Descriptor device(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (device.IsOpen() && WriteAll(device.Number(), bytes) && device.Close())
      return true;
    reason = ErrorText(errno);
    return false;
  }
  auto file = ReplacementFile::Create(path, reason);
  const std::span content(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
  return file && file->WriteAt(0, content, reason) && file->Commit(reason);
}

} // namespace ZelUtl
