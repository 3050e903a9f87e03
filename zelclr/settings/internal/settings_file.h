// The file that several processes keep their settings in. Nothing in it may be lost:
//
// - Every reading and writing happens under one mutex of all processes, every writing beside the old file, flushed and
//   renamed over it.
// - A change reads the file again, alters its own elements only, and leaves what other applications and newer versions
//   wrote.
// - A file that cannot be understood is kept under another name before a new one takes its place.
// - What another process has written is told from what this one wrote by its bytes: a file's date does not tell changes
//   within a tick of the clock apart. So the watch stays up while this process writes: there is no moment in which a
//   change can slip by.
//
// Threads: Lock excludes threads, too; whatever says "locked" is for its holder. The mutex is taken before every other
// lock. Errors: empty results and false.
#pragma once

#include "zelclr/platform/folder_watch.h"
#include "zelclr/platform/inter_process_mutex.h"
#include "zelclr/platform/xml.h"

#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace ColorSystem::Internal {

class SettingsFile
{
public:
  using Edit = std::function<bool(ZelUtl::WXmlNode root)>;

  /// Paths are UTF-8; an empty one is a file that is never there.
  SettingsFile(std::string userPath, std::string factoryPath, const char *root, const char *mutex);
  /// Ends the watch and waits for its listener.
  ~SettingsFile();
  SettingsFile(const SettingsFile &) = delete;
  SettingsFile &operator=(const SettingsFile &) = delete;

  [[nodiscard]] std::unique_lock<ZelUtl::InterProcessMutex> Lock() { return std::unique_lock(mutex_); }
  /// From now on, on the watch's own thread, whenever something changes in the folder of the user's file. False where
  /// the system has no watch.
  bool Watch(std::function<void()> onChange);

  // --- Locked -------------------------------------------------------------------------------------------------------

  bool HasUserFile() const;
  /// Whether the user's file is another than the one that this process read or wrote last; false when it cannot be
  /// read.
  bool HasForeignChange() const;
  enum class Source
  {
    None, ///< there is no file
    Damaged,
    User,
    Factory
  };
  /// The user's file, else the factory's.
  std::pair<Source, ZelUtl::WXmlNode> Load();
  /// Alters the user's file. One that is missing or damaged is begun anew: from the factory's file, by `begin`.
  /// False, with the file as it was, when either edit fails or the file cannot be written. A foreign change stays one.
  bool Change(const Edit &edit, const Edit &begin);
  /// Why the last Change failed, in English; empty when it did not.
  const std::string &Failure() const { return failure_; }

private:
  std::optional<ZelUtl::WXmlDoc> Parsed(const std::string &bytes) const;
  ZelUtl::WXmlDoc NewDocument() const;

  const std::string userPath_;
  const std::string factoryPath_;
  const std::string root_;
  ZelUtl::InterProcessMutex mutex_;
  std::optional<std::string> known_; // the bytes of the user's file; under the mutex
  std::string failure_;              // under the mutex
  std::optional<ZelUtl::FolderWatch> watch_;
};

} // namespace ColorSystem::Internal
