// The channels of a colour, each read and written under the lock of its array.
//
// Threads: channels of one array may be read and written by many threads; each access is one step, several together are
// not. Growing and assigning an array needs that nobody else uses it.
// Errors: none; an index is not checked.
#pragma once

#include "zelclr/platform/export.h"
#include "zelclr/platform/thread_lock.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace ColorSystem {

/// One number, 0 to 1 in every model.
class ColorChannel
{
public:
  /// `lock` must outlive the channel.
  ColorChannel(const ZelUtl::ThreadLock &lock, double value)
    : ColorChannel(std::shared_ptr<const ZelUtl::ThreadLock>(std::shared_ptr<void>(), &lock), value)
  {}
  ColorChannel(std::shared_ptr<const ZelUtl::ThreadLock> lock, double value) : lock_(std::move(lock)), value_(value) {}
  /// Copies the value and takes part in the other's lock.
  ColorChannel(const ColorChannel &other) : lock_(other.lock_), value_(other) {}
  /// Storage that grows moves its channels; nobody else uses them then.
  ColorChannel(ColorChannel &&other) noexcept : lock_(std::move(other.lock_)), value_(other.value_) {}
  /// Copies the value under this channel's own lock, which it keeps.
  ColorChannel &operator=(const ColorChannel &other) { return *this = static_cast<double>(other); }

  operator double() const
  {
    const ZelUtl::ReadLock guard(*lock_);
    return value_;
  }
  ColorChannel &operator=(double value)
  {
    return Change([=](double) { return value; });
  }
  ColorChannel &operator+=(double value)
  {
    return Change([=](double old) { return old + value; });
  }
  ColorChannel &operator-=(double value)
  {
    return Change([=](double old) { return old - value; });
  }
  ColorChannel &operator*=(double value)
  {
    return Change([=](double old) { return old * value; });
  }
  ColorChannel &operator/=(double value)
  {
    return Change([=](double old) { return old / value; });
  }

private:
  template <class Function>
  ColorChannel &Change(Function function)
  {
    const ZelUtl::WriteLock guard(*lock_);
    value_ = function(value_);
    return *this;
  }

  std::shared_ptr<const ZelUtl::ThreadLock> lock_; // the array's, which it may outlive
  double value_;
};

class ZELCLR_API ColorChannelArray
{
public:
  ColorChannelArray() = default;
  virtual ~ColorChannelArray() = default;
  ColorChannelArray(const ColorChannelArray &) = delete;

  /// Copies the values and drops surplus channels.
  ///
  /// KEPT: channels that this array did not have yet (all of them when its storage grows) come with the lock of the
  /// other array, where one would expect this array's; callers that change both rely on the common lock.
  ColorChannelArray &operator=(const ColorChannelArray &other);
  /// Equal counts and equal values. A NaN equals nothing, not even itself.
  bool operator==(const ColorChannelArray &other) const;

  ColorChannel &operator[](unsigned index) { return channels_[index]; }
  const ColorChannel &operator[](unsigned index) const { return channels_[index]; }
  std::size_t GetCount() const { return channels_.size(); }

  /// Appends channels of one value; those that are there stay.
  void Init(unsigned count, double value);

private:
  std::shared_ptr<const ZelUtl::ThreadLock> lock_ = std::make_shared<ZelUtl::ThreadLock>();
  std::vector<ColorChannel> channels_;
};

} // namespace ColorSystem
