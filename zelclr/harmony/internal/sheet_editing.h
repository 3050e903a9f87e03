// One operation on a style sheet: the palette's news are not answered one by one but at its end, and listeners hear of
// it once.
//
// Threads: as ColorStyleSheet. Errors: what the work throws; the sheet then follows the palette with its next news.
#pragma once

#include "zelclr/harmony/color_style_sheet.h"

namespace ZelClr {

/// One more edit within others, for as long as it lives.
struct EditScope
{
  explicit EditScope(int &depth) : count(depth) { ++count; }
  ~EditScope() { --count; }
  EditScope(const EditScope &) = delete;
  EditScope &operator=(const EditScope &) = delete;
  int &count;
};

template <class Work>
auto ColorStyleSheet::Edit(Work work)
{
  const auto run = [&] {
    const EditScope scope(editing_);
    return work();
  };
  if constexpr (std::is_void_v<decltype(work())>) {
    run();
    if (editing_ == 0)
      Settle();
  } else {
    const auto result = run();
    if (editing_ == 0)
      Settle();
    return result;
  }
}

} // namespace ZelClr
