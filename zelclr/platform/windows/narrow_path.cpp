#include "zelclr/platform/narrow_path.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"
#include "zelclr/platform/windows/native_path.h"

#include <windows.h>

namespace ZelUtl {

namespace {

/// In the code page of the process, letter for letter; empty where it has not all of them.
std::optional<std::string> InCodePage(const std::wstring &text)
{
  const bool isUtf8 = ::GetACP() == CP_UTF8; // which has all, and may not be asked
  const DWORD flags = isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const auto length = static_cast<int>(text.size());
  BOOL replaced = FALSE;
  BOOL *const ask = isUtf8 ? nullptr : &replaced;
  std::string narrow(
    static_cast<std::size_t>(::WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, ask)),
    '\0');
  ::WideCharToMultiByte(CP_ACP, flags, text.data(), length, narrow.data(), static_cast<int>(narrow.size()), nullptr,
                        ask);
  if (narrow.empty() || replaced != FALSE)
    return std::nullopt;
  return narrow;
}

/// As it stands, else by its short name, which a volume need not have.
std::optional<std::string> WithoutCopy(const std::wstring &path)
{
  if (auto narrow = InCodePage(path))
    return narrow;
  std::wstring shortName(::GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
  shortName.resize(::GetShortPathNameW(path.c_str(), shortName.data(), static_cast<DWORD>(shortName.size())));
  return shortName.empty() ? std::nullopt : InCodePage(shortName);
}

/// A folder with one file.
struct Copy
{
  ~Copy()
  {
    DeleteFileAt(file);
    DeleteFileAt(folder);
  }
  std::string folder;
  std::string file;
};

} // namespace

std::optional<NarrowPath> NarrowPathOf(const std::string &path)
{
  const std::wstring native = NativePath(path);
  if (auto narrow = WithoutCopy(native))
    return NarrowPath{std::move(*narrow), nullptr};
  std::string reason;
  auto copy = std::make_shared<Copy>();
  copy->folder = MakeTemporaryFolder(reason);
  copy->file = JoinPath(copy->folder, "file");
  if (copy->folder.empty() || ::CopyFileW(native.c_str(), NativePath(copy->file).c_str(), TRUE) == 0)
    return std::nullopt;
  auto narrow = WithoutCopy(NativePath(copy->file));
  return narrow ? std::optional(NarrowPath{std::move(*narrow), std::move(copy)}) : std::nullopt;
}

} // namespace ZelUtl
