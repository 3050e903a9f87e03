// Windows Color System profiles: ICC files, and device models (.cdmp, XML), for which an ICC companion is generated
// where the system can do that.
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
  ProfileHandle Open() override;

protected:
  bool LoadNoLock(Content &content) override ZELCLR_REQUIRES(lock_);

private:
  const bool deviceModel_;
  std::shared_ptr<IccColorProfile> companion_ ZELCLR_GUARDED_BY(lock_);
};

} // namespace ColorSystem
