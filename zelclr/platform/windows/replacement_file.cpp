#include "zelclr/platform/replacement_file.h"

#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/text.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace ZelUtl {

namespace {

std::string ErrorText(DWORD error)
{
  wchar_t *text = nullptr;
  const DWORD length = ::FormatMessageW(
    FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
    MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), reinterpret_cast<wchar_t *>(&text), 0, nullptr);
  const std::string message = length ? Utf8FromWide({text, length}) : "error " + std::to_string(error);
  ::LocalFree(text);
  return std::string(Trimmed(message));
}

bool Failed(std::string &reason)
{
  reason = ErrorText(::GetLastError());
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

/// Where the links at the end of a path lead; the path itself when nothing stands there.
std::wstring Followed(const std::wstring &path)
{
  constexpr DWORD kMostCharacters = 32768;
  const HANDLE file = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return path;
  std::wstring target(kMostCharacters, L'\0');
  const DWORD length = ::GetFileType(file) == FILE_TYPE_DISK
                         ? ::GetFinalPathNameByHandleW(file, target.data(), kMostCharacters, FILE_NAME_NORMALIZED)
                         : 0;
  ::CloseHandle(file);
  target.resize(length < kMostCharacters ? length : 0);
  return target.empty() ? path : target;
}

/// Whether a step may be taken; the system's last error says why not.
bool MayTake(FileStep step)
{
  const int fault = FaultOfFileStep(step);
  if (fault != 0)
    ::SetLastError(static_cast<DWORD>(fault));
  return fault == 0;
}

} // namespace

std::optional<ReplacementFile> ReplacementFile::Create(const std::string &path, std::string &reason)
{
  const std::wstring target = Followed(WideFromUtf8(path));
  const DWORD attributes = ::GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    reason = "a folder";
    return std::nullopt;
  }
  std::wstring aside;
  HANDLE handle = INVALID_HANDLE_VALUE;
  if (MayTake(FileStep::Make)) {
    for (unsigned attempt = 0; attempt < 100 && handle == INVALID_HANDLE_VALUE; ++attempt) {
      aside = NameAside(target, attempt);
      handle = ::CreateFileW(aside.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                             nullptr);
      if (handle == INVALID_HANDLE_VALUE && ::GetLastError() != ERROR_FILE_EXISTS)
        break;
    }
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
  if (!MayTake(FileStep::Write))
    return Failed(reason);
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
  if (!MayTake(FileStep::Flush) || !::FlushFileBuffers(file))
    return Failed(reason);
  handle_ = -1;
  if (!::CloseHandle(file) || !MayTake(FileStep::Rename) ||
      !::MoveFileExW(WideFromUtf8(aside_).c_str(), WideFromUtf8(target_).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    return Failed(reason);
  aside_.clear();
  return MayTake(FileStep::FlushFolder) ? true : Failed(reason);
}

} // namespace ZelUtl
