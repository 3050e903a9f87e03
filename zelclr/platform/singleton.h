// One object of a class for the whole process.
//
// Threads: creation, look-up and release are safe from any thread; the caller makes sure that nobody still uses an
// object that it releases.
// Errors: what the constructor throws reaches the caller, and the next call tries again.
#pragma once

#include "zelclr/platform/thread_lock.h"

#include <atomic>
#include <memory>

namespace ZelUtl {

/// Creates its object on first use. Declare one as a static member and name it in one source file only, so that the
/// process has one and not one for each library that includes the header.
template <class T>
class Singleton
{
public:
  /// The object, made with `make()` (a std::unique_ptr<T>) by the first call.
  template <class Make>
  T &Get(Make make)
  {
    if (T *object = current_.load(std::memory_order_acquire))
      return *object;
    const WriteLock guard(lock_);
    if (!object_) {
      object_ = make();
      current_.store(object_.get(), std::memory_order_release);
    }
    return *object_;
  }
  T &Get()
  {
    return Get([] { return std::make_unique<T>(); });
  }

  bool HasInstance() const { return current_.load(std::memory_order_acquire) != nullptr; }

  /// Destroys the object; the next Get makes a new one.
  void Release()
  {
    std::unique_ptr<T> last;
    {
      const WriteLock guard(lock_);
      current_.store(nullptr, std::memory_order_release);
      last = std::move(object_);
    }
  }

private:
  ThreadLock lock_;
  std::unique_ptr<T> object_ ZELCLR_GUARDED_BY(lock_);
  std::atomic<T *> current_{nullptr};
};

} // namespace ZelUtl
