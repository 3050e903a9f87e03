// DeviceN spaces and colours with colours of other models, through a context.
#include "tests/colorsystem/support/profile_folders.h"
#include "tests/support/colours.h"
#include "zelclr/colorsystem/color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/palettes/spot_color_definition.h"

using namespace ColorSystem;
using C = CLR_COLORSPEC;
namespace ClrModel = ZelClr::ClrModel;

namespace {

class ManagedDeviceN : public tests::ShippedProfiles
{
protected:
  /// What the converters make of it: these operations must give the same.
  C Brought(const C &colour, unsigned type) const
  {
    C made;
    EXPECT_TRUE(ColorConverter(context, context).Convert(colour, made, type, 0));
    return made;
  }
  static C ProcessOf(const WClrColorDeviceN &colour)
  {
    C process;
    EXPECT_TRUE(colour.GetProcessColor(process));
    return process;
  }
  static std::shared_ptr<WClrColorSpaceDeviceN> SpaceOf(DeviceN_Process_Type base)
  {
    auto space = std::make_shared<WClrColorSpaceDeviceN>(1, base);
    space->AddColorPlate(DeviceN_Plate_Process);
    return space;
  }
  const ColorContext context{srgb, swop, gray, ColorModel::Cmyk, RenderingIntent::RelativeColorimetric};
  const SpotColorDefinition definition{L"Warm", L"inks", C::MakeCMYK100(0, 80, 100, 0)};
  const C ink = C::MakeSPOT(23, 5, 40, &definition), orange = C::MakeRGB(255, 128, 0);
};

TEST_F(ManagedDeviceN, PlatesTakeColoursOfAnyModel)
{
  auto space = SpaceOf(DeviceN_Process_CMYK);
  EXPECT_GE(space->AddColorPlate(ink, context), 0);
  EXPECT_TRUE(space->HasAnySpotPlate());
  EXPECT_GE(space->AddColorPlate(C::MakeREGCOLOR(), context), 0);
  EXPECT_TRUE(space->HasColorPlate(DeviceN_Plate_Registration));
  const int plates = space->GetNumPlates();
  EXPECT_GE(space->AddColorPlate(orange, context), 0); // one of the base, which is there
  EXPECT_EQ(space->GetNumPlates(), plates);
  EXPECT_EQ(space->AddColorPlate(C::CLRMakeIndex(3), context), -1);
  EXPECT_EQ(space->AddColorPlate(C(), context), -1);
  EXPECT_EQ(space->GetNumPlates(), plates);

  WClrColorSpaceDeviceN bare(1, DeviceN_Process_CMYK);
  const int index = bare.AddColorPlate(DeviceN_Plate_Magenta, orange, context);
  ASSERT_EQ(index, 0);
  DeviceN_Plate_Type type;
  C plate, painted;
  ASSERT_TRUE(bare.GetPlate(index, type, plate));
  EXPECT_EQ(plate, Brought(orange, ClrModel::Cmyk100));
  EXPECT_EQ(bare.AddColorPlate(DeviceN_Plate_Magenta, C::MakeRGB(0, 0, 9), context), index); // it is there
  ASSERT_TRUE(space->GetPaintColor(space->GetSpotColorPlateIndex(ink), painted, context));
  EXPECT_EQ(painted, C::MakeCMYK100(0, 80, 100, 0));
  const C before = painted;
  EXPECT_FALSE(space->GetPaintColor(99, painted, context));
  EXPECT_EQ(painted, before);
}

TEST_F(ManagedDeviceN, ValuesTakeColoursOfAnyModel)
{
  for (const auto &[base, type] :
       {std::pair(DeviceN_Process_CMYK, ClrModel::Cmyk100), std::pair(DeviceN_Process_RGB, ClrModel::Rgb255),
        std::pair(DeviceN_Process_Hexachrome, ClrModel::Hexachrome)})
  {
    auto space = SpaceOf(base);
    space->AddSpotColorPlate(ink);
    WClrColorDeviceN colour(space, 7);
    for (const C &given : {orange, C::MakeCMYK255(10, 200, 30, 5), C::MakeLAB255(150, 140, 120)}) {
      ASSERT_TRUE(colour.SetProcessColor(given, context, false)) << base;
      if (base != DeviceN_Process_Hexachrome) { // six inks are on percent plates: rounded twice
        EXPECT_EQ(ProcessOf(colour), Brought(given, type)) << base;
      }
      ASSERT_TRUE(colour.SetColorComponent(given, context));
      EXPECT_EQ(colour.GetValues().back(), 0u); // no ink
    }
    const C process = ProcessOf(colour);
    ASSERT_TRUE(colour.MergeColorComponent(ink, context)); // its own plate; the process stays
    EXPECT_EQ(colour.GetValues().back(), 40u);
    EXPECT_EQ(ProcessOf(colour), process);
    ASSERT_TRUE(colour.SetColorComponent(ink, context)); // nothing but the ink
    EXPECT_EQ(colour.GetValues().back(), 40u);
    C white;
    space->MakeDeviceWhiteCS(white);
    EXPECT_EQ(ProcessOf(colour), Brought(white, type)) << base;

    const auto values = colour.GetValues(); // failures change nothing
    EXPECT_FALSE(colour.SetProcessColor(C::CLRMakeIndex(1), context, true));
    EXPECT_FALSE(colour.SetColorComponent(C(), context));
    EXPECT_FALSE(colour.SetColorComponent(orange, 99, context));
    EXPECT_FALSE(colour.BlendColorComponent(C(), 0.5, 0.5, context));
    EXPECT_EQ(colour.GetValues(), values);
  }
  WClrColorDeviceN nowhere(nullptr, 0);
  EXPECT_FALSE(nowhere.SetProcessColor(orange, context, false));
  EXPECT_FALSE(nowhere.SetColorComponent(orange, context));
  EXPECT_FALSE(nowhere.MergeColorComponent(orange, context));
}

TEST_F(ManagedDeviceN, ColoursAddBlendAndOverprint)
{
  auto space = SpaceOf(DeviceN_Process_CMYK);
  space->AddSpotColorPlate(ink);
  WClrColorDeviceN colour(space, 7);
  ASSERT_TRUE(colour.SetProcessColor(C::MakeCMYK100(70, 20, 0, 0), context, false));
  ASSERT_TRUE(colour.SetProcessColor(C::MakeCMYK100(60, 20, 5, 0), context, true)); // up to full
  EXPECT_EQ(ProcessOf(colour), C::MakeCMYK100(100, 40, 5, 0));
  ASSERT_TRUE(colour.BlendColorComponent(ink, 0.5, 0.5, context));
  EXPECT_EQ(colour.GetValues(), (std::vector<std::uint32_t>{50, 20, 3, 0, 20})); // rounded up

  C byFormula, printed;
  ASSERT_TRUE(colour.OverprintToCMYK(byFormula));
  ASSERT_TRUE(colour.Overprint(printed, context));
  EXPECT_EQ(printed, Brought(byFormula, ClrModel::Cmyk255));
  ASSERT_TRUE(colour.Overprint(printed, context, ClrModel::Rgb255));
  EXPECT_EQ(printed, Brought(byFormula, ClrModel::Rgb255));
  EXPECT_FALSE(colour.Overprint(printed, context, ClrModel::Spot));
  EXPECT_EQ(printed.GetType(), ClrModel::Rgb255);
}

} // namespace
