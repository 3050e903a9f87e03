// What the application's colour settings decide for the layer below: the default context and the engine in force. As
// long as no settings are stored, they are the ones that the library has built in.
#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/engines/color_management_system.h"

namespace ColorSystem {

ColorContext ColorContext::GetApplicationDefaultColorContext()
{
  ColorProfileManager &profiles = ColorProfileManager::GetInstance();
  return ColorContext(profiles.GetColorProfile(L"sRGB-Placeholder!"), profiles.GetColorProfile(L"USWebCoatedSWOP.icc"),
                      profiles.GetColorProfile(L"Dot Gain 20%.icc"), ColorModel::Rgb,
                      RenderingIntent::RelativeColorimetric);
}

std::shared_ptr<ColorManagementSystem> ColorManagementSystem::GetCurrent()
{
  // The settings name a module of the home system, Icm. Where that has no engine, Little CMS takes its place, and
  // where that is not installed, the formulas: the one place where one engine stands in for another.
  static const std::shared_ptr<ColorManagementSystem> current = [] {
    for (const auto module : {ColorManagementModule::Icm, ColorManagementModule::LCMS, ColorManagementModule::Linear}) {
      const auto engine = Get(module);
      if (engine != nullptr && engine->Activate())
        return engine;
    }
    return std::shared_ptr<ColorManagementSystem>();
  }();
  return current;
}

} // namespace ColorSystem
