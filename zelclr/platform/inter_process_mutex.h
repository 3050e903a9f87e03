// A mutex that processes share by its name, for files that several of them read and write.
//
// Threads: it excludes the threads of one process from each other, too, also through different objects of one name. Not
// recursive. The thread that locked it unlocks it.
// Errors: locking never fails. Where the processes of the user cannot be reached it excludes threads only, and says so.
#pragma once

#include "zelclr/platform/export.h"

#include <chrono>
#include <memory>
#include <string_view>

namespace ZelUtl {

/// Reaches the processes of one user on one machine: on Linux by a lock on a file in the first of these folders that
/// belongs to the user alone: $XDG_RUNTIME_DIR, /run/user/<uid>, zelclr-<uid> in the temporary folder; on Windows by a
/// mutex of the session. A holder that dies frees it, however it dies, once no copy that it forked without another
/// program lives on.
///
/// The names of its operations are the standard library's, for std::lock_guard and std::unique_lock.
class ZELCLR_API InterProcessMutex
{
public:
  /// Any text; names are told apart by their first 60 bytes, and by case.
  explicit InterProcessMutex(std::string_view name);
  ~InterProcessMutex();
  InterProcessMutex(const InterProcessMutex &) = delete;
  InterProcessMutex &operator=(const InterProcessMutex &) = delete;

  void lock();
  bool try_lock() { return try_lock_for(std::chrono::milliseconds(0)); }
  /// False when it was not to be had in that time.
  bool try_lock_for(std::chrono::milliseconds time);
  void unlock();

  /// While it is locked: whether other processes are excluded, too.
  bool ExcludesOtherProcesses() const;

  struct State;

private:
  std::shared_ptr<State> state_; // one for each name
};

} // namespace ZelUtl
