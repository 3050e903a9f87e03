// A system without colour management of its own.
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

bool HasColours()
{
  return false;
}

bool SelectModule(std::uint32_t signature)
{
  return signature == kSystemModule;
}

Profile OpenProfile(const std::string & /*path*/, ProfileInterface /*with*/)
{
  return nullptr;
}

Transform CreateTransform(std::span<const Profile> /*profiles*/, std::span<const std::uint32_t> /*intents*/,
                          std::uint32_t /*flags*/, std::uint32_t /*module*/)
{
  return nullptr;
}

bool TranslateBitmap(const Transform & /*transform*/, std::uint32_t /*width*/, std::uint32_t /*height*/,
                     const Bitmap & /*source*/, const Bitmap & /*destination*/)
{
  return false;
}

bool CheckBitmap(const Transform & /*transform*/, std::uint32_t /*width*/, std::uint32_t /*height*/,
                 const Bitmap & /*source*/, std::uint8_t * /*distances*/)
{
  return false;
}

bool TranslateColours(const Transform & /*transform*/, std::span<const Colour> /*source*/, ColourType /*sourceType*/,
                      Colour * /*destination*/, ColourType /*destinationType*/)
{
  return false;
}

bool CheckColours(const Transform & /*transform*/, std::span<const Colour> /*source*/, ColourType /*sourceType*/,
                  std::uint8_t * /*distances*/)
{
  return false;
}

std::string PostScriptColorSpaceArray(const std::string & /*path*/, std::uint32_t /*colourSpace*/,
                                      std::uint32_t /*intent*/)
{
  return {};
}

std::vector<std::uint8_t> IccProfileOfDeviceModel(const std::string & /*path*/)
{
  return {};
}

} // namespace ZelUtl::SystemColourManagement
