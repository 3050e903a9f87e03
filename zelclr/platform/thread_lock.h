// The reader-writer lock of every shared object, annotated for clang's thread-safety analysis.
//
// Threads: that is what it is for. Not recursive: a thread that holds the lock in either form must not take it again.
// Errors: none; taking a lock blocks until it is free.
#pragma once

#include "zelclr/platform/export.h"

#include <shared_mutex>

#if defined(__clang__)
#define ZELCLR_THREAD_ANNOTATION(x) __attribute__((x))
#else
#define ZELCLR_THREAD_ANNOTATION(x)
#endif
#define ZELCLR_GUARDED_BY(x) ZELCLR_THREAD_ANNOTATION(guarded_by(x))
#define ZELCLR_PT_GUARDED_BY(x) ZELCLR_THREAD_ANNOTATION(pt_guarded_by(x))
#define ZELCLR_REQUIRES(...) ZELCLR_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))
#define ZELCLR_REQUIRES_SHARED(...) ZELCLR_THREAD_ANNOTATION(requires_shared_capability(__VA_ARGS__))
#define ZELCLR_EXCLUDES(...) ZELCLR_THREAD_ANNOTATION(locks_excluded(__VA_ARGS__))
#define ZELCLR_RETURN_CAPABILITY(x) ZELCLR_THREAD_ANNOTATION(lock_returned(x))

namespace ZelUtl {

#if defined(_WIN32)
/// The system's own, one pointer; in windows/. MinGW's std::shared_mutex makes kernel objects when it is first taken
/// and never lets go of them.
class ZELCLR_API SystemLock
{
public:
  void lock();
  void unlock();
  void lock_shared();
  void unlock_shared();

private:
  void *state_ = nullptr;
};
#else
using SystemLock = std::shared_mutex;
#endif

/// Many readers or one writer. Held through ReadLock and WriteLock. A copy is a fresh lock: values move, locks stay.
class ZELCLR_THREAD_ANNOTATION(capability("lock")) ThreadLock
{
public:
  ThreadLock() = default;
  ThreadLock(const ThreadLock &) {}
  ThreadLock &operator=(const ThreadLock &) { return *this; }

  void LockWrite() const ZELCLR_THREAD_ANNOTATION(acquire_capability()) { mutex_.lock(); }
  void UnlockWrite() const ZELCLR_THREAD_ANNOTATION(release_capability()) { mutex_.unlock(); }
  void LockRead() const ZELCLR_THREAD_ANNOTATION(acquire_shared_capability()) { mutex_.lock_shared(); }
  void UnlockRead() const ZELCLR_THREAD_ANNOTATION(release_shared_capability()) { mutex_.unlock_shared(); }

private:
  mutable SystemLock mutex_;
};

/// Holds a lock for reading for as long as it lives.
class ZELCLR_THREAD_ANNOTATION(scoped_lockable) ReadLock
{
public:
  explicit ReadLock(const ThreadLock &lock) ZELCLR_THREAD_ANNOTATION(acquire_shared_capability(lock)) : lock_(lock)
  {
    lock_.LockRead();
  }
  ~ReadLock() ZELCLR_THREAD_ANNOTATION(release_capability()) { lock_.UnlockRead(); }
  ReadLock(const ReadLock &) = delete;
  ReadLock &operator=(const ReadLock &) = delete;

private:
  const ThreadLock &lock_;
};

/// Holds a lock for writing for as long as it lives.
class ZELCLR_THREAD_ANNOTATION(scoped_lockable) WriteLock
{
public:
  explicit WriteLock(const ThreadLock &lock) ZELCLR_THREAD_ANNOTATION(acquire_capability(lock)) : lock_(lock)
  {
    lock_.LockWrite();
  }
  ~WriteLock() ZELCLR_THREAD_ANNOTATION(release_capability()) { lock_.UnlockWrite(); }
  WriteLock(const WriteLock &) = delete;
  WriteLock &operator=(const WriteLock &) = delete;

private:
  const ThreadLock &lock_;
};

/// Base of an object that carries its own lock; members are declared ZELCLR_GUARDED_BY(lock_).
class Lockable
{
public:
  const ThreadLock &GetLock() const ZELCLR_RETURN_CAPABILITY(lock_) { return lock_; }

protected:
  ~Lockable() = default;

  ThreadLock lock_;
};

} // namespace ZelUtl
