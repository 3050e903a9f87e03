// A file that is written aside, piece by piece, and takes the place of another in one step; ReplaceFile (files.h) is
// the same for bytes that are all there.
//
// Threads: one object, one thread. Errors: an empty result or false, with the reason in English.
#pragma once

#include "zelclr/platform/export.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace ZelUtl {

class ZELCLR_API ReplacementFile
{
public:
  /// Makes an empty file in the folder of `path`, UTF-8; what stands at the path stays until Commit. A symbolic link is
  /// followed. Refused where a folder, a pipe or a device stands.
  static std::optional<ReplacementFile> Create(const std::string &path, std::string &reason);

  ReplacementFile(ReplacementFile &&other) noexcept;
  ReplacementFile &operator=(ReplacementFile &&) = delete;
  /// Deletes the file aside when it was not committed.
  ~ReplacementFile();

  /// Bytes from `offset` on, at the end or over earlier ones; a gap reads as zeros.
  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes, std::string &reason);
  /// Fills the whole span; false when the file is shorter.
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;
  /// Flushes the bytes, gives them the name, and flushes the folder, so that at every instant the old or the new file
  /// is there, whole. The permissions of an old file stay, its owner where the system allows that. On failure the old
  /// file is as it was; only when the folder's flush fails is the new file in place, whole, but maybe not after a loss
  /// of power. Afterwards the object is of no use.
  bool Commit(std::string &reason);

private:
  ReplacementFile(std::intptr_t handle, std::string aside, std::string target)
    : handle_(handle),
      aside_(std::move(aside)),
      target_(std::move(target))
  {}

  std::intptr_t handle_; // a descriptor, or the system's handle; -1 when none
  std::string aside_;    // empty when nothing is to be deleted
  std::string target_;
};

} // namespace ZelUtl
