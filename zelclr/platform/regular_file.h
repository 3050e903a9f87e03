// A file on disk, read piece by piece. Folders, pipes and devices are refused, without waiting for them.
//
// Threads: a RegularFile may be read by many threads at once.
// Errors: an empty result; where there is a `reason`, it is stored in English. A file that shrinks while it is read
// gives failing reads and nothing worse.
#pragma once

#include "zelclr/platform/export.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace ZelUtl {

/// What tells one state of a file from another without reading it: a file that is replaced or written to gets another.
struct FileStamp
{
  std::uint64_t volume = 0;
  std::uint64_t number = 0;
  std::uint64_t size = 0;
  std::int64_t modified = 0; ///< in the system's own unit

  friend bool operator==(const FileStamp &, const FileStamp &) = default;
};

/// Empty where no regular file stands. Paths are UTF-8 in this header.
ZELCLR_API std::optional<FileStamp> StampOfFile(const std::string &path);

/// An open file, closed at the end. Others may write to it and delete it meanwhile.
class ZELCLR_API RegularFile
{
public:
  static std::optional<RegularFile> Open(const std::string &path, std::string &reason);

  RegularFile(RegularFile &&other) noexcept;
  RegularFile &operator=(RegularFile &&other) noexcept;
  ~RegularFile();

  /// As it was when the file was opened.
  const FileStamp &Stamp() const { return stamp_; }
  /// Fills the whole span from `offset` on; false when the file is shorter or cannot be read, the span then
  /// unspecified.
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;

private:
  RegularFile(std::intptr_t handle, const FileStamp &stamp) : handle_(handle), stamp_(stamp) {}

  std::intptr_t handle_; // a descriptor, or the system's handle; -1 when none
  FileStamp stamp_;
};

} // namespace ZelUtl
