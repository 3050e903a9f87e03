// Profiles in ICC files: .icc, .icm, .cc.
//
// Threads and errors: as ColorProfile.
#pragma once

#include "zelclr/colorsystem/base_color_profile.h"

#include <optional>

namespace ColorSystem {

class ZELCLR_API IccColorProfile : public BaseColorProfile
{
public:
  using BaseColorProfile::BaseColorProfile;

  /// Opens the file and keeps it open until Close; null when it is no ICC file. The handle belongs to the profile.
  ProfileHandle Open() override;
  void Close() override;
  /// Writes the name into the description of the file, which is replaced as a whole; false, with nothing changed, when
  /// that fails.
  bool SetDisplayName(const std::wstring &name) override;
  std::wstring CreatePsColorSourceArray(RenderingIntent intent) override;

protected:
  bool LoadNoLock(Content &content) override ZELCLR_REQUIRES(lock_);

private:
  ProfileHandle OpenNoLock() ZELCLR_REQUIRES(lock_);

  std::optional<ZelUtl::IccFile> file_ ZELCLR_GUARDED_BY(lock_);
};

} // namespace ColorSystem
