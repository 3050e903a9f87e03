// A list whose items know their place in it.
//
// Threads: one at a time. Errors: none; indices must be in range.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace ZelClr::Internal {

/// Items stay where they are in memory. After an edit, the places of those behind it are counted anew when one is asked
/// for. `Item` has `mutable std::size_t place`.
template <class Item>
class PlacedList
{
public:
  using Items = std::vector<std::unique_ptr<Item>>;

  std::size_t Size() const { return items_.size(); }
  Item &operator[](std::size_t index) const { return *items_[index]; }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  std::size_t PlaceOf(const Item &item) const
  {
    for (; counted_ < items_.size(); ++counted_)
      items_[counted_]->place = counted_;
    return item.place;
  }

  Item &Append(std::unique_ptr<Item> item) { return *items_.emplace_back(std::move(item)); }
  void Insert(std::size_t index, Items items)
  {
    items_.insert(At(index), std::move_iterator(items.begin()), std::move_iterator(items.end()));
    Recount(index);
  }
  void Remove(std::size_t index)
  {
    items_.erase(At(index));
    Recount(index);
  }
  template <class Goes>
  void RemoveIf(Goes goes)
  {
    std::erase_if(items_, [&](const auto &item) { return goes(*item); });
    Recount(0);
  }
  void Move(std::size_t from, std::size_t to)
  {
    if (from < to)
      std::rotate(At(from), At(from) + 1, At(to) + 1);
    else
      std::rotate(At(to), At(from), At(from) + 1);
    Recount(std::min(from, to));
  }
  /// order[i] is the index of the item that comes to stand at i.
  void Reorder(std::span<const std::size_t> order)
  {
    Items reordered;
    reordered.reserve(items_.size());
    for (const std::size_t index : order)
      reordered.push_back(std::move(items_[index]));
    items_ = std::move(reordered);
    Recount(0);
  }
  void Clear()
  {
    items_.clear();
    Recount(0);
  }

private:
  auto At(std::size_t index) { return items_.begin() + static_cast<std::ptrdiff_t>(index); }
  void Recount(std::size_t first) { counted_ = std::min(counted_, first); }

  Items items_;
  mutable std::size_t counted_ = 0; // so many places are right, from the first on
};

} // namespace ZelClr::Internal
