#include "zelclr/platform/files.h"

#include "zelclr/platform/file_faults.h"
#include "zelclr/platform/text.h"

// It makes a macro of a name of ours.
#include <windows.h>
#undef ReplaceFile

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
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

/// A file handle, closed at the end.
class File
{
public:
  explicit File(HANDLE handle) : handle_(handle) {}
  ~File() { Close(); }
  File(const File &) = delete;
  File &operator=(const File &) = delete;

  HANDLE Handle() const { return handle_; }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool Close()
  {
    const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
    return handle == INVALID_HANDLE_VALUE || ::CloseHandle(handle) != 0;
  }

private:
  HANDLE handle_;
};

std::string TooLarge(std::size_t most)
{
  return "larger than " + std::to_string(most) + " bytes";
}

std::optional<std::string> ReadToEnd(HANDLE handle, std::size_t most, std::string &reason)
{
  std::string bytes;
  std::array<char, 65536> buffer;
  for (;;) {
    DWORD count = 0;
    if (!::ReadFile(handle, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) &&
        ::GetLastError() != ERROR_BROKEN_PIPE)
    {
      reason = ErrorText(::GetLastError());
      return std::nullopt;
    }
    if (count == 0)
      return bytes;
    if (bytes.size() + count > most) {
      reason = TooLarge(most);
      return std::nullopt;
    }
    bytes.append(buffer.data(), count);
  }
}

bool WriteAll(HANDLE handle, std::string_view bytes)
{
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto part = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 20));
    if (!::WriteFile(handle, bytes.data(), part, &count, nullptr))
      return false;
    bytes.remove_prefix(count);
  }
  return true;
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
  const File file(::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen() || ::GetFileType(file.Handle()) != FILE_TYPE_DISK)
    return path;
  std::wstring target(kMostCharacters, L'\0');
  const DWORD length = ::GetFinalPathNameByHandleW(file.Handle(), target.data(), kMostCharacters, FILE_NAME_NORMALIZED);
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

std::optional<std::string> ReadFile(const std::string &path, std::size_t most, std::string &reason)
{
  const File file(::CreateFileW(WideFromUtf8(path).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) {
    reason = ErrorText(::GetLastError());
    return std::nullopt;
  }
  LARGE_INTEGER size = {};
  if (::GetFileType(file.Handle()) == FILE_TYPE_DISK && ::GetFileSizeEx(file.Handle(), &size) &&
      static_cast<unsigned long long>(size.QuadPart) > most)
  {
    reason = TooLarge(most);
    return std::nullopt;
  }
  return ReadToEnd(file.Handle(), most, reason);
}

std::optional<std::string> ReadStandardInput(std::size_t most, std::string &reason)
{
  return ReadToEnd(::GetStdHandle(STD_INPUT_HANDLE), most, reason);
}

bool IsSameFile(const std::string &a, const std::string &b)
{
  std::error_code ignored;
  return std::filesystem::equivalent(WideFromUtf8(a), WideFromUtf8(b), ignored);
}

bool ReplaceFile(const std::string &path, std::string_view bytes, std::string &reason)
{
  const std::wstring target = Followed(WideFromUtf8(path));
  const auto failed = [&reason] {
    reason = ErrorText(::GetLastError());
    return false;
  };
  if (!MayTake(FileStep::Make))
    return failed();
  std::wstring aside;
  HANDLE handle = INVALID_HANDLE_VALUE;
  for (unsigned attempt = 0; attempt < 100 && handle == INVALID_HANDLE_VALUE; ++attempt) {
    aside = NameAside(target, attempt);
    handle = ::CreateFileW(aside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE && ::GetLastError() != ERROR_FILE_EXISTS)
      break;
  }
  if (handle == INVALID_HANDLE_VALUE)
    return failed();
  File file(handle);
  // A new file has the permissions that its folder hands down. The move writes the folder through to the disk.
  const bool replaced =
    MayTake(FileStep::Write) && WriteAll(file.Handle(), bytes) && MayTake(FileStep::Flush) &&
    ::FlushFileBuffers(file.Handle()) && file.Close() && MayTake(FileStep::Rename) &&
    ::MoveFileExW(aside.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  if (!replaced) {
    failed();
    file.Close();
    ::DeleteFileW(aside.c_str());
    return false;
  }
  return MayTake(FileStep::FlushFolder) ? true : failed();
}

} // namespace ZelUtl
