// Which colours of a palette stand on which page.
//
// Threads: a value. Errors: none; indices must be in range.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ZelClr::Internal {

/// Pages in order, each a stretch of the list of colours; a page may be empty. There is always one.
class PalettePages
{
public:
  std::size_t Count() const { return starts_.size(); }
  /// The page of a colour; of an index behind the last colour, the last page.
  std::size_t PageOf(std::size_t index) const
  {
    return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), index) - starts_.begin()) - 1;
  }
  std::size_t StartOf(std::size_t page) const { return starts_[page]; }

  void Append(std::size_t start) { starts_.push_back(start); }
  /// So many new colours on a page.
  void Insert(std::size_t count, std::size_t page)
  {
    for (std::size_t p = page + 1; p < starts_.size(); ++p)
      starts_[p] += count;
  }
  /// The page of which it was the last colour goes with it; that page, else Count of before.
  std::size_t Remove(std::size_t index, std::size_t colors)
  {
    const std::size_t page = PageOf(index);
    const std::size_t count = Count();
    const std::size_t end = page + 1 < count ? starts_[page + 1] : colors;
    const bool goes = count > 1 && end - starts_[page] == 1;
    for (std::size_t p = page + 1; p < count; ++p)
      --starts_[p];
    if (!goes)
      return count;
    starts_.erase(starts_.begin() + static_cast<std::ptrdiff_t>(page));
    return page;
  }

private:
  std::vector<std::size_t> starts_{0}; // index of the first colour of each page; the first of the first page is 0
};

} // namespace ZelClr::Internal
