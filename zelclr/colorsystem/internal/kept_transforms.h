// The first few transforms that a converter has used, found again without a lock.
//
// Threads: all operations may be called by many threads. Errors: none of its own.
#pragma once

#include "zelclr/colorsystem/engines/color_management_system.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>

namespace ColorSystem::Internal {

/// In front of the engines' own caches. What is kept stays for the keeper's life; there is room for all that one
/// converter is asked for, and where profiles or engines change so often that it fills up, the engine's cache serves.
class KeptTransforms
{
public:
  struct Key
  {
    const ColorManagementSystem *engine = nullptr;
    ColorTransformKey transform;

    friend bool operator==(const Key &, const Key &) = default;
  };

  /// What is kept under the key, else what `make` makes; null, and what profiles without content give, is not kept.
  template <class Make>
  std::shared_ptr<ColorTransform> FindOrMake(const Key &key, Make make)
  {
    const auto end = entries_.begin() + count_.load(std::memory_order_acquire);
    const auto found = std::find_if(entries_.begin(), end, [&key](const Entry &entry) { return entry.key == key; });
    if (found != end)
      return found->transform;
    std::shared_ptr<ColorTransform> made = make();
    const auto &contents = key.transform.contents;
    if (made != nullptr && contents[0] != 0 && contents[1] != 0)
      Keep(key, made);
    return made;
  }

private:
  struct Entry
  {
    Key key;
    std::shared_ptr<ColorTransform> transform;
  };

  void Keep(const Key &key, const std::shared_ptr<ColorTransform> &transform)
  {
    const ZelUtl::WriteLock guard(lock_);
    const unsigned count = count_.load(std::memory_order_relaxed);
    if (count == entries_.size())
      return;
    entries_[count] = {key, transform};
    count_.store(count + 1, std::memory_order_release); // nobody has looked at the entry before
  }

  ZelUtl::ThreadLock lock_; // one writer at a time
  std::array<Entry, 8> entries_;
  std::atomic<unsigned> count_{0};
};

} // namespace ColorSystem::Internal
