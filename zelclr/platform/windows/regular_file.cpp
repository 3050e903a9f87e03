#include "zelclr/platform/regular_file.h"

#include "zelclr/platform/windows/error_text.h"
#include "zelclr/platform/windows/native_path.h"
#include "zelclr/platform/windows/open_file.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace ZelUtl {

namespace {

std::optional<FileStamp> StampFrom(HANDLE handle)
{
  BY_HANDLE_FILE_INFORMATION status = {};
  if (::GetFileType(handle) != FILE_TYPE_DISK || ::GetFileInformationByHandle(handle, &status) == 0 ||
      (status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
    return std::nullopt;
  const auto joined = [](DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; };
  return FileStamp{
    status.dwVolumeSerialNumber, joined(status.nFileIndexHigh, status.nFileIndexLow),
    joined(status.nFileSizeHigh, status.nFileSizeLow),
    static_cast<std::int64_t>(joined(status.ftLastWriteTime.dwHighDateTime, status.ftLastWriteTime.dwLowDateTime))};
}

} // namespace

std::optional<FileStamp> StampOfFile(const std::string &path)
{
  std::string reason;
  const auto file = RegularFile::Open(path, reason);
  return file ? std::optional(file->Stamp()) : std::nullopt;
}

std::optional<RegularFile> RegularFile::Open(const std::string &path, std::string &reason)
{
  const std::wstring native = NativePath(path);
  const HANDLE handle = OpenForReading(native);
  if (handle == INVALID_HANDLE_VALUE) {
    reason = LastErrorText();
    const DWORD attributes = ::GetFileAttributesW(native.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
      reason = "a folder";
    return std::nullopt;
  }
  RegularFile file(reinterpret_cast<std::intptr_t>(handle), {});
  const auto stamp = StampFrom(handle);
  if (!stamp) {
    reason = "not a regular file";
    return std::nullopt;
  }
  file.stamp_ = *stamp;
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
  if (handle_ != -1)
    ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

bool RegularFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const
{
  while (!bytes.empty()) {
    OVERLAPPED at = {};
    at.Offset = static_cast<DWORD>(offset);
    at.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
    if (::ReadFile(reinterpret_cast<HANDLE>(handle_), bytes.data(), wanted, &count, &at) == 0 || count == 0)
      return false;
    offset += count;
    bytes = bytes.subspan(count);
  }
  return true;
}

} // namespace ZelUtl
