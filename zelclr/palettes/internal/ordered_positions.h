// The items of a list ordered by a key: an index that is made when it is first asked, and kept by edits.
//
// Threads: one at a time. Errors: none.
#pragma once

#include "zelclr/palettes/internal/placed_list.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace ZelClr::Internal {

/// Items of equal keys are in the order of the list, so that the first of them is the one that a look-up means.
///
/// A look-up takes the logarithm of the size, an edit besides moves pointers. The places of items are looked at only
/// among equal keys. An item's key must not change while the item is in here: take it out, change it, put it back.
/// `KeyOf` is a function object that gives the key of an item; keys are compared by <.
template <class Item, class KeyOf>
class OrderedPositions
{
public:
  explicit OrderedPositions(const PlacedList<Item> &list) : list_(list) {}
  OrderedPositions(const OrderedPositions &) = delete;
  OrderedPositions &operator=(const OrderedPositions &) = delete;

  /// Until the next look-up edits cost nothing.
  void Forget()
  {
    items_.clear();
    isMade_ = false;
  }
  bool IsMade() const { return isMade_; }

  /// The items of this key in the order of the list; good until the next edit.
  template <class Key>
  std::span<Item *const> Find(const Key &key)
  {
    Make();
    const auto [first, last] = std::equal_range(items_.begin(), items_.end(), key, ByKey{});
    return {first, last};
  }

  // Of an item that is in the list, where the index is made; else they do nothing.
  void Add(Item &item)
  {
    if (isMade_)
      items_.insert(PlaceIn(item), &item);
  }
  /// Before it leaves the list.
  void Remove(Item &item)
  {
    if (isMade_)
      items_.erase(PlaceIn(item));
  }
  /// As Add; many at once take one pass.
  void Add(std::span<const std::unique_ptr<Item>> items)
  {
    if (!isMade_)
      return;
    if (items.size() < kFewItems) {
      for (const auto &item : items)
        Add(*item);
      return;
    }
    const auto old = static_cast<std::ptrdiff_t>(items_.size());
    for (const auto &item : items)
      items_.push_back(item.get());
    std::sort(items_.begin() + old, items_.end(), ByKeyAndPlace{list_});
    std::inplace_merge(items_.begin(), items_.begin() + old, items_.end(), ByKeyAndPlace{list_});
  }

  static constexpr std::size_t kFewItems = 16;

private:
  struct ByKey
  {
    bool operator()(const Item *item, const auto &key) const { return KeyOf{}(*item) < key; }
    bool operator()(const auto &key, const Item *item) const { return key < KeyOf{}(*item); }
  };
  struct ByKeyAndPlace
  {
    const PlacedList<Item> &list;
    bool operator()(const Item *a, const Item *b) const
    {
      const auto order = KeyOf{}(*a) <=> KeyOf{}(*b);
      return order < 0 || (order == 0 && list.PlaceOf(*a) < list.PlaceOf(*b));
    }
  };

  void Make()
  {
    if (isMade_)
      return;
    isMade_ = true;
    items_.reserve(list_.Size());
    for (const auto &item : list_)
      items_.push_back(item.get());
    // Palettes are often in the order of their names already.
    if (!std::is_sorted(items_.begin(), items_.end(), ByKeyAndPlace{list_}))
      std::sort(items_.begin(), items_.end(), ByKeyAndPlace{list_});
  }

  /// Where the item stands, or belongs.
  auto PlaceIn(const Item &item)
  {
    const auto [first, last] = std::equal_range(items_.begin(), items_.end(), KeyOf{}(item), ByKey{});
    if (first == last)
      return first;
    return std::partition_point(
      first, last, [place = list_.PlaceOf(item), this](const Item *other) { return list_.PlaceOf(*other) < place; });
  }

  const PlacedList<Item> &list_;
  std::vector<Item *> items_;
  bool isMade_ = false;
};

} // namespace ZelClr::Internal
