// Calls to whoever asked to be told.
//
// Threads: registering, unregistering and notifying are safe from any thread; listeners run on the notifying thread,
// without a lock held, so that they may register and unregister. One that is unregistered while another thread notifies
// may still be called once.
// Errors: what a listener throws reaches the notifier, and the listeners behind it are not called.
#pragma once

#include "zelclr/platform/thread_lock.h"

#include <algorithm>
#include <vector>

namespace ZelUtl {

/// A member function of an object, not owned. Equal delegates call the same function of the same object.
class Delegate
{
public:
  template <auto Member, class Object>
  static Delegate To(Object &object)
  {
    return Delegate(&object, [](void *target) { (static_cast<Object *>(target)->*Member)(); });
  }

  void operator()() const { call_(object_); }
  friend bool operator==(const Delegate &, const Delegate &) = default;

private:
  using Call = void(void *object);

  Delegate(void *object, Call *call) : object_(object), call_(call) {}

  void *object_;
  Call *call_;
};

/// Listeners in the order of their registration, each once.
class Event
{
public:
  void Register(const Delegate &listener)
  {
    const WriteLock guard(lock_);
    if (std::find(listeners_.begin(), listeners_.end(), listener) == listeners_.end())
      listeners_.push_back(listener);
  }
  void Unregister(const Delegate &listener)
  {
    const WriteLock guard(lock_);
    std::erase(listeners_, listener);
  }
  void Notify() const
  {
    for (const Delegate &listener : Listeners())
      listener();
  }

private:
  std::vector<Delegate> Listeners() const
  {
    const ReadLock guard(lock_);
    return listeners_;
  }

  ThreadLock lock_;
  std::vector<Delegate> listeners_ ZELCLR_GUARDED_BY(lock_);
};

} // namespace ZelUtl
