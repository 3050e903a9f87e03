// Windows Color System profiles: ICC files, and device models (.cdmp, XML), for which an ICC companion is generated
// where the system can do that.
//
// The companion has the device model's file name with the extension "icc" and stands among the user's profiles, that of
// a transient device model in the temporary folder. One that is there already is taken as it is. What is asked of a
// device model comes from its companion, but for the display name, which is its own.
//
// Threads and errors: as ColorProfile. A device model is not valid on a system that cannot make its companion.
#pragma once

#include "zelclr/colorsystem/icc_color_profile.h"

namespace ColorSystem {

class ZELCLR_API WcsColorProfile : public IccColorProfile
{
public:
  WcsColorProfile(const std::wstring &path, bool transient);

  bool IsDeviceModel() const { return deviceModel_; }
  /// The bytes of an ICC profile of a device model, made anew, and the display name of the model; empty when there is
  /// none.
  static std::vector<std::uint8_t> IccBytesOf(const std::wstring &path, std::wstring &name);
  ProfileHandle Open() override;
  /// Of a device model only the name in memory changes.
  bool SetDisplayName(const std::wstring &name) override;
  std::wstring CreatePsColorSourceArray(RenderingIntent intent) override;

protected:
  bool LoadNoLock(Content &content) override ZELCLR_REQUIRES(lock_);

private:
  std::shared_ptr<IccColorProfile> Companion() const;
  /// Where the companion is, made when it was not there; empty when it cannot be.
  std::string MakeCompanionNoLock() const ZELCLR_REQUIRES(lock_);

  const bool deviceModel_;
  std::shared_ptr<IccColorProfile> companion_ ZELCLR_GUARDED_BY(lock_);
};

} // namespace ColorSystem
