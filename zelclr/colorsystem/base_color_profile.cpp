#include "zelclr/colorsystem/base_color_profile.h"

#include "zelclr/platform/folders.h"
#include "zelclr/platform/text.h"

namespace ColorSystem {

using ZelUtl::ReadLock;
using ZelUtl::WriteLock;

BaseColorProfile::BaseColorProfile(const std::wstring &path, bool transient)
  : path_(path),
    utf8Path_(ZelUtl::Utf8FromWide(path))
{
  content_.displayName = GetName();
  if (transient)
    SetTransient(true);
}

BaseColorProfile::~BaseColorProfile() = default;

std::shared_ptr<ColorProfile> BaseColorProfile::GetSafePtr() const
{
  return std::const_pointer_cast<BaseColorProfile>(weak_from_this().lock());
}

std::wstring BaseColorProfile::GetPath() const
{
  return path_;
}

std::wstring BaseColorProfile::GetName()
{
  return ZelUtl::WideFromUtf8(ZelUtl::FileNameOfPath(utf8Path_));
}

template <class Field>
Field BaseColorProfile::Get(Field Content::*field) const
{
  EnsureLoaded();
  const ReadLock guard(lock_);
  return content_.*field;
}

void BaseColorProfile::EnsureLoaded() const
{
  if (!tried_.load(std::memory_order_acquire))
    const_cast<BaseColorProfile *>(this)->Init(); // what is read on first use is no change that anyone sees
}

bool BaseColorProfile::Init()
{
  static std::atomic<std::uint64_t> numbers{0};
  const WriteLock guard(lock_);
  if (tried_.load(std::memory_order_relaxed))
    return valid_;
  Content content;
  valid_ = LoadNoLock(content);
  if (valid_) {
    if (content.displayName.empty()) {
      const std::string name = ZelUtl::FileNameOfPath(utf8Path_);
      content.displayName =
        ZelUtl::WideFromUtf8(name.substr(0, name.size() - ZelUtl::ExtensionOfPath(utf8Path_).size()));
    }
    content_ = std::move(content);
    contentNumber_.store(++numbers);
  }
  tried_.store(true, std::memory_order_release);
  return valid_;
}

void BaseColorProfile::UnloadNoLock()
{
  content_ = {};
  content_.displayName = GetName();
  valid_ = false;
  contentNumber_.store(0);
  tried_.store(false, std::memory_order_release);
}

void BaseColorProfile::UpdateFromDisk()
{
  const WriteLock guard(lock_);
  UnloadNoLock();
}

std::wstring BaseColorProfile::GetDisplayName() const
{
  return Get(&Content::displayName);
}

std::uint64_t BaseColorProfile::GetSize() const
{
  const auto stamp = ZelUtl::StampOfFile(utf8Path_);
  return stamp ? stamp->size : 0;
}

std::wstring BaseColorProfile::GetDeviceManufacturerDescription() const
{
  return Get(&Content::manufacturer);
}

std::wstring BaseColorProfile::GetDeviceModelDescription() const
{
  return Get(&Content::deviceModel);
}

std::uint32_t BaseColorProfile::GetChannelCount() const
{
  return ChannelCountOfColorModel(Get(&Content::model), 0);
}

ColorModel BaseColorProfile::GetColorModel()
{
  return Get(&Content::model);
}

DeviceClass BaseColorProfile::GetDeviceClass()
{
  return Get(&Content::deviceClass);
}

std::uint32_t BaseColorProfile::GetMajorVersionNumber() const
{
  return Get(&Content::majorVersion);
}

std::uint32_t BaseColorProfile::GetMinorVersionNumber() const
{
  return Get(&Content::minorVersion);
}

std::wstring BaseColorProfile::CreatePsColorSourceArray(RenderingIntent /*intent*/)
{
  return {};
}

ColorProfile &BaseColorProfile::operator=(const ColorProfile & /*other*/)
{
  return *this;
}

bool BaseColorProfile::IsValid() const
{
  EnsureLoaded();
  const ReadLock guard(lock_);
  return valid_;
}

bool BaseColorProfile::IsValidForPrinting() const
{
  const DeviceClass deviceClass = Get(&Content::deviceClass);
  return deviceClass == DeviceClass::Display || deviceClass == DeviceClass::Output;
}

bool BaseColorProfile::IsTransient() const
{
  const ReadLock guard(lock_);
  return transient_;
}

std::uint64_t BaseColorProfile::GetContentNumber() const
{
  EnsureLoaded();
  return contentNumber_.load(std::memory_order_acquire);
}

ZelUtl::FileStamp BaseColorProfile::GetStamp() const
{
  return Get(&Content::stamp);
}

bool BaseColorProfile::SetDisplayName(const std::wstring &name)
{
  EnsureLoaded();
  const WriteLock guard(lock_);
  content_.displayName = name;
  return true;
}

void BaseColorProfile::SetTransient(bool transient)
{
  const WriteLock guard(lock_);
  if (transient == transient_)
    return;
  transient_ = transient;
  if (!ZelUtl::StampOfFile(utf8Path_))
    return;
  const bool writable = ZelUtl::IsFileWritable(utf8Path_);
  if (transient && writable)
    madeReadOnly_ = ZelUtl::SetFileWritable(utf8Path_, false);
  else if (!transient && madeReadOnly_ && !writable)
    madeReadOnly_ = !ZelUtl::SetFileWritable(utf8Path_, true);
}

} // namespace ColorSystem
