#include "zelclr/platform/folders.h"

#include "zelclr/platform/guid.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/thread_lock.h"

#include <filesystem>
#include <optional>

namespace ZelUtl {

namespace {

namespace fs = std::filesystem;

struct SetByHost
{
  ThreadLock lock;
  std::optional<Folders> folders ZELCLR_GUARDED_BY(lock);
};

SetByHost &Host()
{
  static auto &host = *new SetByHost; // never destroyed: threads may still ask when the process ends
  return host;
}

fs::path PathFrom(std::string_view utf8)
{
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Utf8From(const fs::path &path)
{
  const std::u8string text = path.generic_u8string();
  return {text.begin(), text.end()};
}

bool IsSeparator(char character)
{
  return character == '/' || character == static_cast<char>(fs::path::preferred_separator);
}

std::size_t StartOfFileName(std::string_view path)
{
  std::size_t start = path.size();
  while (start > 0 && !IsSeparator(path[start - 1]))
    --start;
  return start;
}

/// Whether Windows takes the name for a device, with any extension: "con", "NUL.txt", "com1".
bool IsDeviceName(std::wstring_view name)
{
  const std::string stem = LowerAscii(Utf8FromWide(name.substr(0, name.find(L'.'))));
  const bool numbered =
    stem.size() == 4 && (stem.starts_with("com") || stem.starts_with("lpt")) && stem[3] >= '0' && stem[3] <= '9';
  return numbered || stem == "con" || stem == "prn" || stem == "aux" || stem == "nul";
}

std::string FolderBelow(const std::string &folder, const char *name)
{
  return folder.empty() ? "" : JoinPath(folder, name);
}

} // namespace

Folders GetFolders()
{
  {
    const ReadLock guard(Host().lock);
    if (Host().folders)
      return *Host().folders;
  }
  return CustomaryFolders();
}

void SetFolders(const Folders &folders)
{
  const WriteLock guard(Host().lock);
  Host().folders = folders;
}

void ResetFolders()
{
  const WriteLock guard(Host().lock);
  Host().folders.reset();
}

std::string GetUserFolder()
{
  {
    const ReadLock guard(Host().lock);
    if (Host().folders)
      return Host().folders->user;
  }
  return CustomaryUserFolder();
}

std::string GetUserProfileColorDir()
{
  return FolderBelow(GetUserFolder(), "color");
}

std::string INIGetColorDir()
{
  return FolderBelow(GetFolders().data, "color");
}

std::string INIGetConfigDir()
{
  return FolderBelow(GetFolders().data, "config");
}

std::string JoinPath(std::string_view folder, std::string_view name)
{
  std::string path(folder);
  if (!path.empty() && !IsSeparator(path.back()))
    path += '/';
  return path.append(name);
}

std::string FileNameOfPath(std::string_view path)
{
  return std::string(path.substr(StartOfFileName(path)));
}

std::string ExtensionOfPath(std::string_view path)
{
  const std::string name = FileNameOfPath(path);
  const auto point = name.rfind('.');
  return point == std::string::npos ? std::string() : name.substr(point);
}

std::string FolderOfPath(std::string_view path)
{
  const std::size_t start = StartOfFileName(path);
  return std::string(path.substr(0, start > 1 ? start - 1 : start));
}

std::string AbsolutePath(const std::string &path)
{
  std::error_code error;
  const fs::path absolute = fs::absolute(PathFrom(path), error);
  return error ? path : Utf8From(absolute.lexically_normal());
}

std::string ValidFileName(std::string_view text)
{
  constexpr std::size_t kMostBytes = 200; // of the 255 that file systems take, with room for what is added
  constexpr std::wstring_view kReserved = L"<>:\"/\\|?*\uFFFD";
  std::wstring name;
  for (const wchar_t character : WideFromUtf8(text.substr(0, 4 * kMostBytes))) {
    if (character >= 32 && character != 127 && kReserved.find(character) == std::wstring_view::npos)
      name += character;
  }
  while (Utf8FromWide(name).size() > kMostBytes)
    name.pop_back();
  const auto first = name.find_first_not_of(L" .");
  if (first == std::wstring::npos)
    return "Unnamed";
  name = name.substr(first, name.find_last_not_of(L" .") + 1 - first);
  return (IsDeviceName(name) ? "_" : "") + Utf8FromWide(name);
}

std::string MakeTemporaryFolder(std::string &reason)
{
  const std::string parent = GetFolders().temporary;
  if (parent.empty()) {
    reason = "there is no temporary folder";
    return {};
  }
  std::string path = JoinPath(parent, "zelclr-" + ZelUtils::NewGuid().ToText().substr(1, 36));
  return MakePrivateFolder(path, reason) ? path : std::string();
}

} // namespace ZelUtl
