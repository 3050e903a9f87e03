// A fresh folder on disk for each test, and small files in it.
#pragma once

#include "tests/support/system.h"
#include "zelclr/platform/text.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {

using Bytes = std::vector<std::uint8_t>;

/// The path of UTF-8: text of one byte a letter means something else on Windows.
inline std::filesystem::path PathOf(const std::string &path)
{
  return std::u8string(path.begin(), path.end());
}

inline void WriteBytes(const std::string &path, const Bytes &bytes)
{
  std::ofstream out(PathOf(path), std::ios::binary | std::ios::trunc);
  if (!out.write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size())).flush())
    throw std::runtime_error("cannot write " + path);
}

inline Bytes ReadBytes(const std::string &path)
{
  std::ifstream in(PathOf(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// The whole of a file; empty when there is none.
inline std::string TextOf(const std::string &path)
{
  const Bytes bytes = ReadBytes(path);
  return {bytes.begin(), bytes.end()};
}

/// Goes with everything in it.
class TemporaryFolder
{
public:
  TemporaryFolder() : path_(MakeFolderAside()) {}
  ~TemporaryFolder() { RemoveFolder(path_); }
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  std::string Path(const std::string &name = "") const { return name.empty() ? path_ : path_ + "/" + name; }
  std::wstring Wide(const std::string &name = "") const { return ZelUtl::WideFromUtf8(Path(name)); }
  /// Makes the folders on the way; answers the whole path.
  std::string Write(const std::string &name, const Bytes &bytes) const
  {
    const std::string path = Path(name);
    std::filesystem::create_directories(PathOf(path).parent_path());
    WriteBytes(path, bytes);
    return path;
  }
  std::string WriteText(const std::string &name, const std::string &text) const
  {
    return Write(name, {text.begin(), text.end()});
  }

private:
  const std::string path_;
};

} // namespace tests
