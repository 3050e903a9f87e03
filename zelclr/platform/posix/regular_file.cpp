#include "zelclr/platform/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

namespace ZelUtl {

namespace {

FileStamp StampFrom(const struct stat &status)
{
  return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
          static_cast<std::uint64_t>(status.st_size),
          static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec};
}

} // namespace

std::optional<FileStamp> StampOfFile(const std::string &path)
{
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
    return std::nullopt;
  return StampFrom(status);
}

std::optional<RegularFile> RegularFile::Open(const std::string &path, std::string &reason)
{
  // Non-blocking, since opening a pipe would wait for its other end.
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  struct stat status = {};
  if (descriptor < 0 || ::fstat(descriptor, &status) != 0) {
    reason = std::generic_category().message(errno);
    if (descriptor >= 0)
      ::close(descriptor);
    return std::nullopt;
  }
  RegularFile file(descriptor, StampFrom(status));
  if (!S_ISREG(status.st_mode)) {
    reason = S_ISDIR(status.st_mode) ? "a folder" : "not a regular file";
    return std::nullopt;
  }
  return file;
}

RegularFile::RegularFile(RegularFile &&other) noexcept : handle_(std::exchange(other.handle_, -1)), stamp_(other.stamp_)
{}

RegularFile &RegularFile::operator=(RegularFile &&other) noexcept
{
  std::swap(handle_, other.handle_);
  stamp_ = other.stamp_;
  return *this;
}

RegularFile::~RegularFile()
{
  if (handle_ >= 0)
    ::close(static_cast<int>(handle_));
}

bool RegularFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const
{
  while (!bytes.empty()) {
    if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()))
      return false;
    const auto count = ::pread(static_cast<int>(handle_), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      return false;
    offset += static_cast<std::uint64_t>(count);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
  return true;
}

} // namespace ZelUtl
