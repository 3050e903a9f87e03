// Tells when files of a folder appear, change or go.
//
// Threads: the listener runs on a thread of the watch's own, never two calls at once.
// Errors: Watch answers false where the system has no watch to give.
#pragma once

#include "zelclr/platform/export.h"

#include <functional>
#include <memory>
#include <string>

namespace ZelUtl {

/// Watches folders until it is stopped or destroyed.
class ZELCLR_API FolderWatch
{
public:
  /// Gets the folder's path as it was given to Watch. Changes that come close together are told once.
  using Listener = std::function<void(const std::string &folder)>;

  explicit FolderWatch(Listener listener);
  /// Does not wait: a call that has begun may still run, and the listener must bear that. See Stop.
  ~FolderWatch();
  FolderWatch(const FolderWatch &) = delete;
  FolderWatch &operator=(const FolderWatch &) = delete;

  /// The folder with its subfolders down to `depth`; it need not be there yet.
  bool Watch(const std::string &folder, int depth = 0);
  /// Ends the watch and waits for the listener, unless the listener itself calls this. Never called from a static
  /// object's destructor: a thread cannot be waited for while the process unloads.
  void Stop();

private:
  struct State; // shared with the thread

  std::shared_ptr<State> state_;
};

} // namespace ZelUtl
