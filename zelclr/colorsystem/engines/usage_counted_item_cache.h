// A bounded cache that keeps what is used most.
//
// Threads: all operations may be called by many threads; those that find something do not wait for each other.
// Errors: none of its own.
#pragma once

#include "zelclr/platform/thread_lock.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace ColorSystem {

/// At most `kMost` items. When one more comes, the least used goes, of several such the one that came first. With every
/// twentieth part of `kMost` that has gone, all uses count half: what was used much once makes room, and newcomers do
/// not drive out each other for ever.
template <class Key, class Item, std::size_t kMost, class Hash = std::hash<Key>>
class UsageCountedItemCache
{
public:
  /// Counts a use when there is one.
  std::optional<Item> Find(const Key &key) const
  {
    const ZelUtl::ReadLock guard(lock_);
    const auto entry = entries_.find(key);
    if (entry == entries_.end())
      return std::nullopt;
    entry->second.uses.fetch_add(1, std::memory_order_relaxed);
    return entry->second.item;
  }
  /// Replaces what is there under the key; the item counts one use.
  void Add(const Key &key, Item item)
  {
    std::optional<Item> gone; // outlives the lock: what goes may take long to go
    const ZelUtl::WriteLock guard(lock_);
    if (const auto old = entries_.find(key); old != entries_.end()) {
      gone = std::move(old->second.item);
      entries_.erase(old);
    } else if (entries_.size() >= kMost) {
      auto least = entries_.begin();
      for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        if (entry->second.Rank() < least->second.Rank())
          least = entry;
      }
      gone = std::move(least->second.item);
      entries_.erase(least);
      if (++gone_ % kHalvedAfter == 0) {
        for (auto &[other, entry] : entries_)
          entry.uses.store(entry.uses.load(std::memory_order_relaxed) / 2, std::memory_order_relaxed);
      }
    }
    entries_.try_emplace(key, std::move(item), ++count_);
  }
  void Clear()
  {
    std::unordered_map<Key, Entry, Hash> gone;
    const ZelUtl::WriteLock guard(lock_);
    gone.swap(entries_);
  }
  std::size_t GetCount() const
  {
    const ZelUtl::ReadLock guard(lock_);
    return entries_.size();
  }

private:
  static constexpr std::size_t kHalvedAfter = kMost < 20 ? 1 : kMost / 20;

  struct Entry
  {
    Entry(Item entryItem, std::uint64_t entryNumber) : item(std::move(entryItem)), number(entryNumber) {}
    std::pair<std::uint64_t, std::uint64_t> Rank() const { return {uses.load(std::memory_order_relaxed), number}; }

    Item item;
    std::uint64_t number;
    mutable std::atomic<std::uint64_t> uses{1};
  };

  ZelUtl::ThreadLock lock_;
  std::unordered_map<Key, Entry, Hash> entries_ ZELCLR_GUARDED_BY(lock_);
  std::uint64_t count_ ZELCLR_GUARDED_BY(lock_) = 0;
  std::uint64_t gone_ ZELCLR_GUARDED_BY(lock_) = 0;
};

} // namespace ColorSystem
