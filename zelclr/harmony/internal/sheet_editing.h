// One operation on a style sheet: the palette's news are not answered one by one but at its end, and listeners hear of
// it once.
//
// Threads: as ColorStyleSheet. Errors: what the work throws; the sheet then follows the palette with its next news.
#pragma once

#include "zelclr/harmony/color_style_sheet.h"

namespace ZelClr {

template <class Work>
auto ColorStyleSheet::Edit(Work work)
{
  struct Scope
  {
    explicit Scope(int &depth) : count(depth) { ++count; }
    ~Scope() { --count; }
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;
    int &count;
  };
  const auto run = [&] {
    const Scope scope(editing_);
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
