#include "zelclr/colorsystem/color_channel_array.h"

#include <algorithm>

namespace ColorSystem {

ColorChannelArray &ColorChannelArray::operator=(const ColorChannelArray &other)
{
  // What a vector does is what is promised: it assigns to the elements that are there and copies the rest whole.
  if (this != &other)
    channels_ = other.channels_;
  return *this;
}

bool ColorChannelArray::operator==(const ColorChannelArray &other) const
{
  return std::equal(channels_.begin(), channels_.end(), other.channels_.begin(), other.channels_.end(),
                    [](double a, double b) { return a == b; });
}

void ColorChannelArray::Init(unsigned count, double value)
{
  const ZelUtl::WriteLock guard(*lock_);
  channels_.reserve(channels_.size() + count);
  for (unsigned i = 0; i < count; ++i)
    channels_.emplace_back(lock_, value);
}

} // namespace ColorSystem
