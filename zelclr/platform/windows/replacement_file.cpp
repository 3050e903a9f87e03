#include "zelclr/platform/replacement_file.h"

#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/windows/error_text.h"
#include "zelclr/platform/windows/native_path.h"

#include <windows.h>

#include <algorithm>
#include <system_error>
#include <utility>

namespace ZelUtl {

namespace {

bool Failed(std::string &reason)
{
  reason = LastErrorText();
  return false;
}

OVERLAPPED At(std::uint64_t offset)
{
  OVERLAPPED at = {};
  at.Offset = static_cast<DWORD>(offset);
  at.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return at;
}

/// As much of so many bytes as the system takes at once.
DWORD Part(std::size_t bytes)
{
  return static_cast<DWORD>(std::min<std::size_t>(bytes, 1u << 20));
}

/// A name beside the target that nobody has.
std::wstring NameAside(const std::wstring &target, unsigned attempt)
{
  return target + L"." + std::to_wstring(::GetCurrentProcessId()) + L"." + std::to_wstring(::GetTickCount64()) + L"." +
         std::to_wstring(attempt);
}

/// Where the links at the end of a path lead; the path itself when nothing stands there, and nowhere when it is not a
/// file but a device or a pipe.
std::optional<std::wstring> Followed(const std::wstring &path)
{
  constexpr DWORD kMostCharacters = 32768;
  const HANDLE file = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return path;
  std::wstring target(kMostCharacters, L'\0');
  const bool isFile = ::GetFileType(file) == FILE_TYPE_DISK;
  const DWORD length = ::GetFinalPathNameByHandleW(file, target.data(), kMostCharacters, FILE_NAME_NORMALIZED);
  ::CloseHandle(file);
  if (!isFile)
    return std::nullopt;
  target.resize(length < kMostCharacters ? length : 0);
  return target.empty() ? path : target;
}

/// Whether a step may be taken, else why not.
bool MayTake(FileStep step, std::string &reason)
{
  const int fault = FaultOfFileStep(step);
  if (fault != 0)
    reason = std::generic_category().message(fault);
  return fault == 0;
}

/// Takes the place of the other. Who reads that one at the moment, as indexers and scanners do, lets nobody do so: they
/// are waited for, half a second at most.
bool Move(const std::wstring &from, const std::wstring &to)
{
  constexpr DWORD kPause = 10, kMostPauses = 50;
  for (DWORD pauses = 0;; ++pauses) {
    if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
      return true;
    const DWORD error = ::GetLastError();
    const bool maySoonBeFree = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (!maySoonBeFree || pauses == kMostPauses) {
      ::SetLastError(error);
      return false;
    }
    ::Sleep(kPause);
  }
}

} // namespace

std::optional<ReplacementFile> ReplacementFile::Create(const std::string &path, std::string &reason)
{
  const std::optional<std::wstring> followed = Followed(NativePath(path));
  if (!followed) {
    reason = "not a regular file";
    return std::nullopt;
  }
  const std::wstring &target = *followed;
  const DWORD attributes = ::GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    reason = "a folder";
    return std::nullopt;
  }
  std::wstring aside;
  HANDLE handle = INVALID_HANDLE_VALUE;
  if (!MayTake(FileStep::Make, reason))
    return std::nullopt;
  for (unsigned attempt = 0; attempt < 100 && handle == INVALID_HANDLE_VALUE; ++attempt) {
    aside = NameAside(target, attempt);
    handle = ::CreateFileW(aside.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    if (handle == INVALID_HANDLE_VALUE && ::GetLastError() != ERROR_FILE_EXISTS)
      break;
  }
  if (handle == INVALID_HANDLE_VALUE) {
    Failed(reason);
    return std::nullopt;
  }
  return ReplacementFile(reinterpret_cast<std::intptr_t>(handle), Utf8FromWide(aside), Utf8FromWide(target));
}

ReplacementFile::ReplacementFile(ReplacementFile &&other) noexcept
  : handle_(std::exchange(other.handle_, -1)),
    aside_(std::exchange(other.aside_, {})),
    target_(std::move(other.target_))
{}

ReplacementFile::~ReplacementFile()
{
  if (handle_ != -1)
    ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
  if (!aside_.empty())
    ::DeleteFileW(WideFromUtf8(aside_).c_str());
}

bool ReplacementFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes, std::string &reason)
{
  if (!MayTake(FileStep::Write, reason))
    return false;
  while (!bytes.empty()) {
    OVERLAPPED at = At(offset);
    DWORD count = 0;
    if (!::WriteFile(reinterpret_cast<HANDLE>(handle_), bytes.data(), Part(bytes.size()), &count, &at))
      return Failed(reason);
    offset += count;
    bytes = bytes.subspan(count);
  }
  return true;
}

bool ReplacementFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const
{
  while (!bytes.empty()) {
    OVERLAPPED at = At(offset);
    DWORD count = 0;
    if (!::ReadFile(reinterpret_cast<HANDLE>(handle_), bytes.data(), Part(bytes.size()), &count, &at) || count == 0)
      return false;
    offset += count;
    bytes = bytes.subspan(count);
  }
  return true;
}

bool ReplacementFile::Commit(std::string &reason)
{
  // A new file has the permissions that its folder hands down. The move writes the folder through to the disk.
  const auto file = reinterpret_cast<HANDLE>(handle_);
  if (!MayTake(FileStep::Flush, reason))
    return false;
  if (!::FlushFileBuffers(file))
    return Failed(reason);
  handle_ = -1;
  if (!::CloseHandle(file))
    return Failed(reason);
  if (!MayTake(FileStep::Rename, reason))
    return false;
  if (!Move(WideFromUtf8(aside_), WideFromUtf8(target_)))
    return Failed(reason);
  aside_.clear();
  return MayTake(FileStep::FlushFolder, reason);
}

} // namespace ZelUtl
