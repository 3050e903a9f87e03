#include "zelclr/colorsystem/engines/color_management_system.h"

#include "zelclr/colorsystem/engines/engines.h"
#include "zelclr/platform/folders.h"
#include "zelclr/platform/little_cms.h"
#include "zelclr/platform/system_colour_management.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>
#include <mutex>

namespace ColorSystem {

namespace {

namespace System = ZelUtl::SystemColourManagement;

template <class Engine>
std::shared_ptr<ColorManagementSystem> Make()
{
  return std::make_shared<Engine>();
}

struct EngineRow
{
  ColorManagementModule module;
  std::string_view name;
  bool (*canExist)();
  std::shared_ptr<ColorManagementSystem> (*make)();
};

/// In the order of the numbers.
constexpr EngineRow kEngines[] = {
  {ColorManagementModule::Icm, "Icm", System::HasIcm, Make<IcmColorManagementSystem>},
  {ColorManagementModule::Wcs, "Wcs", System::HasWcs, Make<WcsColorManagementSystem>},
  {ColorManagementModule::Adobe, "Adobe", System::HasAdobeModule, Make<AdobeColorManagementSystem>},
  {ColorManagementModule::Linear, "Linear", [] { return true; }, Make<LinearColorManagementSystem>},
  {ColorManagementModule::LCMS, "LCMS", [] { return ZelUtl::LittleCms::Load() != nullptr; },
   Make<LcmsColorManagementSystem>},
};

/// The engines that were asked for. Never destroyed: what they made may outlive every static object.
struct Registry
{
  std::array<std::once_flag, std::size(kEngines)> once;
  std::array<std::shared_ptr<ColorManagementSystem>, std::size(kEngines)> engines;
};

Registry &TheRegistry()
{
  static auto &registry = *new Registry;
  return registry;
}

} // namespace

std::string_view NameOfColorManagementModule(ColorManagementModule module)
{
  const auto number = static_cast<std::size_t>(module);
  return number < std::size(kEngines) ? kEngines[number].name : std::string_view();
}

std::optional<ColorManagementModule> ColorManagementModuleFromName(std::string_view name)
{
  const auto *const row = std::find_if(std::begin(kEngines), std::end(kEngines),
                                       [&](const EngineRow &candidate) { return candidate.name == name; });
  return row == std::end(kEngines) ? std::nullopt : std::optional(row->module);
}

bool MatchesProfilePatterns(const std::wstring &path, const std::wstring &patterns)
{
  const auto lower = [](const std::wstring &text) { return ZelUtl::LowerAscii(ZelUtl::Utf8FromWide(text)); };
  const std::string pattern = "*" + ZelUtl::ExtensionOfPath(lower(path)) + ";";
  return pattern != "*;" && (lower(patterns) + ";*.tmp;").find(pattern) != std::string::npos;
}

ColorManagementSystem::~ColorManagementSystem() = default;

bool ColorManagementSystem::Activate()
{
  const ZelUtl::WriteLock guard(lock_);
  return System::SelectModule(System::kSystemModule);
}

void ColorManagementSystem::Deactivate()
{
  const ZelUtl::WriteLock guard(lock_);
  System::SelectModule(System::kSystemModule);
}

std::wstring ColorManagementSystem::GetProfileFilePatterns() const
{
  return L"*.icc;*.icm;*.cc";
}

std::shared_ptr<ColorManagementSystem> ColorManagementSystem::Get(ColorManagementModule module)
{
  const auto number = static_cast<std::size_t>(module);
  if (number >= std::size(kEngines))
    return nullptr;
  Registry &registry = TheRegistry();
  std::call_once(registry.once[number], [&] {
    if (kEngines[number].canExist())
      registry.engines[number] = kEngines[number].make();
  });
  return registry.engines[number];
}

bool WcsColorManagementSystem::Activate()
{
  return System::HasWcs() && ColorManagementSystem::Activate();
}

std::wstring WcsColorManagementSystem::GetProfileFilePatterns() const
{
  return L"*.icc;*.icm;*.cdmp";
}

bool AdobeColorManagementSystem::Activate()
{
  const ZelUtl::WriteLock guard(lock_);
  return System::SelectModule(System::kAdobeModule);
}

bool LcmsColorManagementSystem::Activate()
{
  return ZelUtl::LittleCms::Load() != nullptr && ColorManagementSystem::Activate();
}

} // namespace ColorSystem
