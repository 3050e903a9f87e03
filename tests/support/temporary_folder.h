// A fresh folder on disk for each test, and small files in it.
#pragma once

#include "zelclr/platform/text.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace tests {

using Bytes = std::vector<std::uint8_t>;

inline void WriteBytes(const std::string &path, const Bytes &bytes)
{
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out.write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size())).flush())
    throw std::runtime_error("cannot write " + path);
}

inline Bytes ReadBytes(const std::string &path)
{
  std::ifstream in(path, std::ios::binary);
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
  TemporaryFolder()
  {
    path_ = (std::filesystem::temp_directory_path() / "zelclr_test_XXXXXX").string();
    if (::mkdtemp(path_.data()) == nullptr)
      throw std::runtime_error("no temporary folder");
  }
  ~TemporaryFolder()
  {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  std::string Path(const std::string &name = "") const { return name.empty() ? path_ : path_ + "/" + name; }
  std::wstring Wide(const std::string &name = "") const { return ZelUtl::WideFromUtf8(Path(name)); }
  /// Makes the folders on the way; answers the whole path.
  std::string Write(const std::string &name, const Bytes &bytes) const
  {
    const std::filesystem::path path = Path(name);
    std::filesystem::create_directories(path.parent_path());
    WriteBytes(path.string(), bytes);
    return path.string();
  }
  std::string WriteText(const std::string &name, const std::string &text) const
  {
    return Write(name, {text.begin(), text.end()});
  }

private:
  std::string path_;
};

} // namespace tests
