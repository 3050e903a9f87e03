// What profiles of every kind have in common: a file, what was read of it, and a lock.
//
// Threads and errors: as ColorProfile. Make them with std::make_shared only; handles share them.
#pragma once

#include "zelclr/colorsystem/color_profile.h"
#include "zelclr/platform/thread_lock.h"

#include <atomic>

namespace ColorSystem {

class ZELCLR_API BaseColorProfile : public ColorProfile,
                                    public ZelUtl::Lockable,
                                    public std::enable_shared_from_this<BaseColorProfile>
{
public:
  /// The path is kept as it is given. A transient profile's file is made read-only.
  BaseColorProfile(const std::wstring &path, bool transient);
  /// The file stays, as it is.
  ~BaseColorProfile() override;

  std::shared_ptr<ColorProfile> GetSafePtr() const override;
  std::wstring GetPath() const override;
  std::wstring GetName() override;
  std::wstring GetDisplayName() const override;
  std::uint64_t GetSize() const override;
  std::wstring GetDeviceManufacturerDescription() const override;
  std::wstring GetDeviceModelDescription() const override;
  std::uint32_t GetChannelCount() const override;
  ColorModel GetColorModel() override;
  DeviceClass GetDeviceClass() override;
  std::uint32_t GetMajorVersionNumber() const override;
  std::uint32_t GetMinorVersionNumber() const override;
  std::wstring CreatePsColorSourceArray(RenderingIntent intent) override;
  /// A profile has one file for life: this one takes nothing over.
  ColorProfile &operator=(const ColorProfile &other) override;
  bool IsValid() const override;
  bool IsValidForPrinting() const override;
  bool IsTransient() const override;
  void UpdateFromDisk() override;
  std::uint64_t GetContentNumber() const override;

  /// Reads the file, once; whether the profile is valid.
  bool Init() final;
  /// Here only the name in memory changes.
  bool SetDisplayName(const std::wstring &name) override;
  /// A transient file is read-only for as long as it is transient, when it was not before.
  void SetTransient(bool transient) override;

protected:
  /// What a file says of its profile.
  struct Content
  {
    std::wstring displayName; ///< empty: the file name without its extension
    ColorModel model = ColorModel::Rgb;
    std::wstring manufacturer;
    std::wstring deviceModel;
    DeviceClass deviceClass = DeviceClass::Display;
    std::uint32_t majorVersion = 0;
    std::uint32_t minorVersion = 0;
    ZelUtl::FileStamp stamp;
  };

  /// The one way in which kinds of profiles differ; false for a file that is no profile.
  virtual bool LoadNoLock(Content &content) ZELCLR_REQUIRES(lock_) = 0;
  /// Forgets what was read, and that reading failed.
  void UnloadNoLock() ZELCLR_REQUIRES(lock_);
  bool IsTransientNoLock() const ZELCLR_REQUIRES(lock_) { return transient_; }
  const std::string &Utf8Path() const { return utf8Path_; }

private:
  friend class ColorProfileManager;

  /// A field of the content, which is read first when it was not.
  template <class Field>
  Field Get(Field Content::*field) const;
  void EnsureLoaded() const;
  /// As the file was when it was read.
  ZelUtl::FileStamp GetStamp() const;

  const std::wstring path_;
  const std::string utf8Path_;
  Content content_ ZELCLR_GUARDED_BY(lock_);
  bool valid_ ZELCLR_GUARDED_BY(lock_) = false;
  bool transient_ ZELCLR_GUARDED_BY(lock_) = false;
  bool madeReadOnly_ ZELCLR_GUARDED_BY(lock_) = false;
  std::atomic<bool> tried_{false}; // reading was tried, for better or worse
  std::atomic<std::uint64_t> contentNumber_{0};
};

} // namespace ColorSystem
