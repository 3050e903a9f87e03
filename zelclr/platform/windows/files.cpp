#include "zelclr/platform/files.h"

#include "zelclr/platform/replacement_file.h"
#include "zelclr/platform/text.h"

// It makes a macro of a name of ours.
#include <windows.h>
#undef ReplaceFile

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
  auto file = ReplacementFile::Create(path, reason);
  const std::span content(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
  return file && file->WriteAt(0, content, reason) && file->Commit(reason);
}

} // namespace ZelUtl
