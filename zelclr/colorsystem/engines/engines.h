// The five engines. Which of them can exist on a system, ColorManagementSystem::Get knows.
#pragma once

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/engines/icm_color_transform.h"
#include "zelclr/colorsystem/engines/lcms_color_transform.h"
#include "zelclr/colorsystem/engines/linear_color_transform.h"
#include "zelclr/colorsystem/icc_color_profile.h"
#include "zelclr/colorsystem/wcs_color_profile.h"

namespace ColorSystem {

class IcmColorManagementSystem : public TColorManagementSystem<IccColorProfile, IcmColorTransform>
{
public:
  IcmColorManagementSystem() : TColorManagementSystem(ColorManagementModule::Icm) {}
};

class WcsColorManagementSystem : public TColorManagementSystem<WcsColorProfile, WcsColorTransform>
{
public:
  WcsColorManagementSystem() : TColorManagementSystem(ColorManagementModule::Wcs) {}
  /// Needs the functions of the Windows Color System. Their library stays loaded after Deactivate, since transforms
  /// that it made may still be held.
  bool Activate() override;
  /// "*.icc;*.icm;*.cdmp"
  std::wstring GetProfileFilePatterns() const override;
};

class AdobeColorManagementSystem : public TColorManagementSystem<IccColorProfile, AdobeCmmColorTransform>
{
public:
  AdobeColorManagementSystem() : TColorManagementSystem(ColorManagementModule::Adobe) {}
  /// Selects the module for Image Color Management; Deactivate selects the system's own again.
  bool Activate() override;
};

class LinearColorManagementSystem : public TColorManagementSystem<IccColorProfile, LinearColorTransform>
{
public:
  LinearColorManagementSystem() : TColorManagementSystem(ColorManagementModule::Linear) {}
};

class LcmsColorManagementSystem : public TColorManagementSystem<IccColorProfile, LcmsColorTransform>
{
public:
  LcmsColorManagementSystem() : TColorManagementSystem(ColorManagementModule::LCMS) {}
  /// Loads the library, once in the process; it stays loaded, since transforms that it made may still be held.
  bool Activate() override;
};

} // namespace ColorSystem
