// What the application's colour settings decide for the floor below: what contexts start with, and the engine in force.
#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/platform/application.h"
#include "zelclr/settings/color_settings_manager.h"

#include <atomic>

namespace ColorSystem {

namespace {

/// Null in an installation without settings and profiles.
const ColorSettings *InForce()
{
  try {
    return &ColorSettings::GetApplicationColorSettings();
  } catch (const ColorSystemError &) {
    return nullptr;
  }
}

} // namespace

ColorContext::ColorContext()
  : blendingModel_(ColorSettingsManager::GetApplicationBlendingColorModel()),
    intent_(ColorSettingsManager::GetApplicationRenderingIntent())
{}

ColorContext ColorContext::GetApplicationDefaultColorContext()
{
  const ColorSettings *const settings = InForce();
  return settings == nullptr ? ColorContext() : settings->GetDefaultColorContext();
}

ColorContext ColorContext::GetActiveColorContext()
{
  const ColorContext *const active = ZelUtl::GetActiveColorContext();
  return active == nullptr ? GetApplicationDefaultColorContext() : ColorContext(*active);
}

std::shared_ptr<ColorManagementSystem> ColorManagementSystem::GetCurrent()
{
  // Settings travel between systems, and name modules that have no engine on this one. Little CMS takes their place,
  // and where that is not installed, the formulas: the one place where one engine stands in for another.
  static std::atomic<std::uint32_t> current{~0u}; // what was chosen last, and the engine that was activated for it
  const ColorSettings *const settings = InForce();
  const auto chosen = settings == nullptr ? ColorManagementModule::Icm : settings->GetColorManagementModule();
  const std::uint32_t known = current.load(std::memory_order_relaxed);
  if (known >> 8 == static_cast<std::uint32_t>(chosen))
    return Get(static_cast<ColorManagementModule>(known & 0xFF));
  for (const auto module : {chosen, ColorManagementModule::LCMS, ColorManagementModule::Linear}) {
    const auto engine = Get(module);
    if (engine == nullptr || !engine->Activate())
      continue;
    current.store(static_cast<std::uint32_t>(chosen) << 8 | static_cast<std::uint32_t>(module),
                  std::memory_order_relaxed);
    return engine;
  }
  return nullptr;
}

} // namespace ColorSystem
