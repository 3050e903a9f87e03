#include "zelclr/platform/windows/native_path.h"

#include "zelclr/platform/text.h"

#include <windows.h>

#include <algorithm>

namespace ZelUtl {

namespace {

/// From the root on, without "." and ".."; empty where that is not to be had.
std::wstring Whole(const std::wstring &path)
{
  std::wstring whole(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  whole.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
  return whole;
}

} // namespace

std::wstring NativePath(std::string_view utf8)
{
  constexpr std::size_t kShort = 200; // of the 260 characters that every function takes, folders only 248
  std::wstring path = WideFromUtf8(utf8);
  std::replace(path.begin(), path.end(), L'/', L'\\');
  if (path.size() < kShort || path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\"))
    return path;
  const std::wstring whole = Whole(path);
  if (whole.empty() || whole.starts_with(L"\\\\?\\"))
    return path;
  return whole.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + whole.substr(2) : L"\\\\?\\" + whole;
}

} // namespace ZelUtl
