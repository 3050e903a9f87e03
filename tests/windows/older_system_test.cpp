// A system without the Windows Color System and without conversion of single colours.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/windows/mscms_double.h"
#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/settings/color_settings.h"

using namespace ColorSystem;
using namespace tests;

namespace {

class OlderSystem : public WithMscmsDouble, public ShippedProfiles
{
protected:
  OlderSystem() : WithMscmsDouble(L"older") {}
};

TEST_F(OlderSystem, HasNoWindowsColorSystem)
{
  EXPECT_EQ(ColorManagementSystem::Get(ColorManagementModule::Wcs), nullptr);
  EXPECT_FALSE(ColorSettings::IsColorManagementModuleAvailable(ColorManagementModule::Wcs));
  ColorSettings settings;
  settings.SetColorManagementModule(ColorManagementModule::Linear);
  settings.SetColorManagementModule(ColorManagementModule::Wcs);
  EXPECT_EQ(settings.GetColorManagementModule(), ColorManagementModule::Icm);
}

TEST_F(OlderSystem, ConvertsBitmapsAndNothingElse)
{
  const auto icm = ColorManagementSystem::Get(ColorManagementModule::Icm);
  ASSERT_NE(icm, nullptr);
  TransformOptions options;
  options.source = {ColorModel::Rgb, SampleType::UInt8};
  options.destination = {ColorModel::Cmyk, SampleType::UInt8};
  EXPECT_NE(icm->CreateTransform(*srgb, *swop, options), nullptr);
  options.destination.type = SampleType::UInt16;
  EXPECT_EQ(icm->CreateTransform(*srgb, *swop, options), nullptr);
}

} // namespace
