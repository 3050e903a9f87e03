// What excludes processes from each other, and nothing else: the system's half of InterProcessMutex, which makes sure
// that one thread at a time uses it.
//
// Threads: taken and released by the same thread.
// Errors: where processes cannot be reached, taking it succeeds at once and IsHeld stays false.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace ZelUtl {

using Deadline = std::optional<std::chrono::steady_clock::time_point>; // none: for ever

// In posix/ and windows/.
class ProcessLock
{
public:
  /// A name of ASCII letters, digits and "-_.%".
  explicit ProcessLock(std::string name) : name_(std::move(name)) {}
  ~ProcessLock();
  ProcessLock(const ProcessLock &) = delete;
  ProcessLock &operator=(const ProcessLock &) = delete;

  /// False when the time is up.
  bool Take(const Deadline &deadline);
  void Release();
  bool IsHeld() const { return handle_ != kNone; }
  /// In a copy of the process: leaves the lock to the original, which holds it still.
  void LeaveToParent();

private:
  static constexpr std::intptr_t kNone = -1;

  std::string name_;
  std::intptr_t handle_ = kNone; // a descriptor, or the system's handle
};

/// The number of this process.
std::uint64_t CurrentProcess();

} // namespace ZelUtl
