#include "zelclr/platform/files.h"

#include "zelclr/platform/replacement_file.h"
#include "zelclr/platform/windows/error_text.h"
#include "zelclr/platform/windows/native_path.h"
#include "zelclr/platform/windows/open_file.h"

// It makes a macro of a name of ours.
#include <windows.h>
#undef ReplaceFile

#include <algorithm>
#include <array>
#include <utility>

namespace ZelUtl {

namespace {

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
      reason = LastErrorText();
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
    if (!::WriteFile(handle, bytes.data(), static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 20)), &count,
                     nullptr))
      return false;
    bytes.remove_prefix(count);
  }
  return true;
}

} // namespace

std::optional<std::string> ReadFile(const std::string &path, std::size_t most, std::string &reason)
{
  const File file(OpenForReading(NativePath(path)));
  if (!file.IsOpen()) {
    reason = LastErrorText();
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
  const auto open = [](const std::string &path) {
    return ::CreateFileW(NativePath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  };
  const File files[] = {File(open(a)), File(open(b))};
  BY_HANDLE_FILE_INFORMATION first = {}, second = {};
  return ::GetFileInformationByHandle(files[0].Handle(), &first) != 0 &&
         ::GetFileInformationByHandle(files[1].Handle(), &second) != 0 &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber && first.nFileIndexHigh == second.nFileIndexHigh &&
         first.nFileIndexLow == second.nFileIndexLow;
}

bool IsNameTaken(const std::string &path)
{
  return ::GetFileAttributesW(NativePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool ReplaceFile(const std::string &path, std::string_view bytes, std::string &reason)
{
  {
    File device(::CreateFileW(NativePath(path).c_str(), GENERIC_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (device.IsOpen() && ::GetFileType(device.Handle()) != FILE_TYPE_DISK) {
      if (WriteAll(device.Handle(), bytes) && device.Close())
        return true;
      reason = LastErrorText();
      return false;
    }
  }
  auto file = ReplacementFile::Create(path, reason);
  const std::span content(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
  return file && file->WriteAt(0, content, reason) && file->Commit(reason);
}

} // namespace ZelUtl
