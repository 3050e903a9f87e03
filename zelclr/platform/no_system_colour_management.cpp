// For systems that have none, and for Windows until its own is called.
#include "zelclr/platform/system_colour_management.h"

namespace ZelUtl::SystemColourManagement {

bool HasIcm()
{
  return false;
}

bool HasWcs()
{
  return false;
}

bool HasAdobeModule()
{
  return false;
}

bool SelectModule(std::uint32_t signature)
{
  return signature == IccSignature("Win ");
}

} // namespace ZelUtl::SystemColourManagement
