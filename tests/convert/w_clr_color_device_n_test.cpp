#include "tests/support/colours.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

using C = CLR_COLORSPEC;
using tests::Bytes;

namespace {

using Values = std::vector<std::uint32_t>;
using Space = WClrColorSpaceDeviceN;

std::shared_ptr<Space> SpaceOf(DeviceN_Process_Type process, std::initializer_list<DeviceN_Plate_Type> plates)
{
  auto space = std::make_shared<Space>(1, process);
  for (const DeviceN_Plate_Type plate : plates)
    space->AddColorPlate(plate);
  return space;
}

WClrColorDeviceN With(std::shared_ptr<Space> space, const Values &values)
{
  WClrColorDeviceN colour(std::move(space), 7);
  for (std::size_t i = 0; i < values.size(); ++i)
    colour.SetColorComponent(static_cast<int>(i), values[i], 255, false);
  return colour;
}

std::vector<int> Types(const Space &space)
{
  std::vector<int> types;
  for (const DeviceN_Plate &plate : space.GetColorPlates())
    types.push_back(plate.type);
  return types;
}

/// One colour of each kind that a document may hold.
std::vector<WClrColorDeviceN> Samples()
{
  auto inks = SpaceOf(DeviceN_Process_CMYK, {DeviceN_Plate_Process, DeviceN_Plate_SoftMask});
  inks->AddSpotColorPlate(C::MakeSPOT(23, -17, 30, nullptr));
  inks->AddSpotColorPlate(C::MakeSCRGB(0.1f, -0.0f, 1e-42f));
  auto any = SpaceOf(DeviceN_Process_Hexachrome, {DeviceN_Plate_Process});
  any->EnableUniqueColorPlates(false);
  any->AddColorPlate(DeviceN_Plate_Registration);
  any->AddColorPlate(DeviceN_Plate_Registration);
  return {WClrColorDeviceN(nullptr, -5), WClrColorDeviceN(std::make_shared<Space>(-1, DeviceN_Process_None), 0),
          With(inks, {10, 20, 30, 40, 50, 60, 255}), With(any, {1, 2, 3, 4, 5, 6, 7, 4294967295u}),
          With(SpaceOf(DeviceN_Process_RGB, {DeviceN_Plate_Process}), {1, 2, 3})};
}

TEST(WClrColorSpaceDeviceN, PlatesStartWithTheColourOfTheirType)
{
  const struct
  {
    DeviceN_Plate_Type type;
    C colour;
    int divisor;
  } kPlates[] = {{2, C::MakeCMYK100(100, 0, 0, 0), 100},
                 {3, C::MakeCMYK100(0, 100, 0, 0), 100},
                 {4, C::MakeCMYK100(0, 0, 100, 0), 100},
                 {5, C::MakeCMYK100(0, 0, 0, 100), 100},
                 {6, C::MakeRGB(255, 0, 0), 255},
                 {7, C::MakeRGB(0, 255, 0), 255},
                 {8, C::MakeRGB(0, 0, 255), 255},
                 {9, C::MakeHEX(0, 0, 0, 0, 255, 0), 100},
                 {10, C::MakeHEX(0, 0, 0, 0, 0, 255), 100},
                 {16, C::MakeREGCOLOR(), 100},
                 {17, C::MakeGRAY(255), 255}};
  for (const auto &row : kPlates) {
    const auto space = SpaceOf(DeviceN_Process_None, {row.type});
    ASSERT_EQ(space->GetNumPlates(), 1) << row.type;
    DeviceN_Plate_Type type = -1;
    C colour;
    ASSERT_TRUE(space->GetPlate(0, type, colour));
    EXPECT_EQ(type, row.type);
    EXPECT_EQ(colour.GetType(), row.colour.GetType()) << row.type;
    EXPECT_EQ(colour, row.colour) << row.type;
    EXPECT_EQ(WClrColorDeviceN(space, 0).GetPlateDivisor(0), row.divisor) << row.type;
  }
  for (const DeviceN_Plate_Type none : {-1, 0, 11, 14, 15, 18, 1000})
    EXPECT_EQ(Space(0, DeviceN_Process_None).AddColorPlate(none), -1) << none;
  for (const int unknown : {0, 10, 16, 26, 31, 1013, 65535}) {
    C colour;
    colour.SetType(static_cast<std::uint16_t>(unknown));
    EXPECT_EQ(Space(0, DeviceN_Process_None).AddSpotColorPlate(colour), -1) << unknown;
  }
  Space two(0, DeviceN_Process_None);
  for (const std::uint16_t palette : {std::uint16_t{23}, std::uint16_t{11}}) {
    C ink = C::MakeRGB(9, 9, 9);
    ink.SetPaletteType(palette);
    two.AddSpotColorPlate(ink);
  }
  EXPECT_EQ(two.GetNumPlates(), 2) << "one look, two inks";
  Space odd(0, static_cast<DeviceN_Process_Type>(7));
  EXPECT_FALSE(odd.HasProcess()) << "what no file can state";
  odd.SetProcessType(static_cast<DeviceN_Process_Type>(-1));
  EXPECT_FALSE(odd.HasProcess());
}

TEST(WClrColorSpaceDeviceN, RandomPlatesStandInOrderOfTypeBehindTheirEquals)
{
  std::mt19937 random(3);
  for (int sequence = 0; sequence < 300; ++sequence) {
    Space space(0, DeviceN_Process_CMYK);
    EXPECT_EQ(space.FindBestPositionFor(5), 0);
    std::vector<std::pair<int, int>> model; // type, number of the spot ink
    bool unique = true;
    for (int step = 0; step < 40; ++step) {
      const int type = std::vector<int>{2, 3, 5, 8, 10, 15, 15, 15, 16, 17, -1, -2, -3}[random() % 13];
      SCOPED_TRACE(testing::Message() << "sequence " << sequence << " step " << step << " type " << type);
      if (type == -1) {
        unique = !unique;
        space.EnableUniqueColorPlates(unique);
      } else if (type < 0) {
        const int gone = type == -2 ? 16 : 17;
        EXPECT_EQ(type == -2 ? space.RemoveRegistrationPlate() : space.RemoveSoftMaskPlate(),
                  std::erase_if(model, [&](const auto &plate) { return plate.first == gone; }) > 0);
      } else {
        const int ink = type == 15 ? static_cast<int>(random() % 4) : 0;
        const auto same = std::find(model.begin(), model.end(), std::pair(type, ink));
        auto at = same;
        if (!unique || same == model.end())
          at = model.insert(
            std::find_if(model.begin(), model.end(), [&](const auto &plate) { return plate.first > type; }),
            {type, ink});
        const C spot = C::MakeSPOT(23, static_cast<std::int16_t>(ink), static_cast<std::uint16_t>(step), nullptr);
        EXPECT_EQ(type == 15 ? space.AddSpotColorPlate(spot) : space.AddColorPlate(type), at - model.begin());
        EXPECT_EQ(space.HasSpotColorPlate(spot),
                  type == 15 || std::count(model.begin(), model.end(), std::pair(15, 0)) > 0);
      }
      std::vector<int> types;
      for (const auto &plate : model)
        types.push_back(plate.first);
      ASSERT_EQ(Types(space), types);
    }
  }
}

TEST(WClrColorDeviceN, ConstructionSeparatesTheProcessPlate)
{
  const auto cmyk = SpaceOf(DeviceN_Process_CMYK, {DeviceN_Plate_Process, DeviceN_Plate_Yellow});
  EXPECT_EQ(WClrColorDeviceN(cmyk, 0).GetValues(), Values(4));
  EXPECT_EQ(Types(*cmyk), (std::vector<int>{2, 3, 4, 5}));
  const auto hexachrome = SpaceOf(DeviceN_Process_Hexachrome, {DeviceN_Plate_Process});
  EXPECT_EQ(WClrColorDeviceN(hexachrome, 0).GetValues(), Values(6));
  EXPECT_EQ(WClrColorDeviceN(nullptr, 0).GetValues(), Values());
  EXPECT_FALSE(WClrColorDeviceN(nullptr, 0).Validate());
}

TEST(WClrColorDeviceN, Kept_TheRedPlateOfAnRgbSpaceStartsAtFull)
{
  EXPECT_EQ(WClrColorDeviceN(SpaceOf(DeviceN_Process_RGB, {DeviceN_Plate_Process}), 0).GetValues(),
            (Values{255, 0, 0}));
}

TEST(WClrColorDeviceN, Values)
{
  const auto space = SpaceOf(DeviceN_Process_None, {2, 3, 17});
  WClrColorDeviceN colour = With(space, {1, 3, 255});
  colour.ApplyDensity(150);
  EXPECT_EQ(colour.GetValues(), (::Values{1, 3, 255}));
  EXPECT_TRUE(colour.ApplyDensity(50));
  EXPECT_EQ(colour.GetValues(), (::Values{1, 2, 128}));
  colour.ApplyDensity(-1);
  EXPECT_EQ(colour.GetValues(), (::Values{0, 0, 0}));
  const struct
  {
    std::uint32_t old, value;
    double oldFactor, newFactor;
    std::uint32_t result;
  } kBlends[] = {{100, 50, 0.5, 0.5, 75}, {1, 0, 0.5, 0.5, 1}, {10, 0, 0.1, 0, 1},     {255, 1, 1, 1, 0},
                 {1, 0, -1, 0, 255},      {1, 1, NAN, 0, 0},   {1, 1, INFINITY, 0, 0}, {4294967295u, 0, 1e300, 0, 0}};
  for (const auto &row : kBlends) {
    colour.SetColorComponent(0, row.old, 0, false);
    colour.BlendColorComponent(0, row.value, row.oldFactor, row.newFactor);
    EXPECT_EQ(colour.GetValues()[0], row.result) << row.old << " " << row.oldFactor;
  }
  colour.SetColorComponent(1, 4294967295u, 100, true);
  EXPECT_EQ(colour.GetValues()[1], 100u);
  colour.SetColorComponent(1, 5, 100, true);
  EXPECT_EQ(colour.GetValues()[1], 100u);
  const auto before = colour.GetValues();
  for (const int index : {-1, 3, 2147483647, -2147483647 - 1}) {
    colour.SetColorComponent(index, 9, 100, true);
    colour.BlendColorComponent(index, 9, 1, 1);
    EXPECT_EQ(colour.GetPlateDivisor(index), 100);
  }
  EXPECT_EQ(colour.GetValues(), before);
}

TEST(WClrColorDeviceN, OverprintsInksAndLights)
{
  for (int a = 0; a <= 100; ++a) {
    EXPECT_EQ(WClrColorDeviceN::OverprintCMYK(100, a), 100);
    EXPECT_EQ(WClrColorDeviceN::OverprintCMYK(a, 0), a);
    EXPECT_EQ(WClrColorDeviceN::OverprintRGB(a, 255), a);
  }
  EXPECT_EQ(WClrColorDeviceN::OverprintCMYK(50, 50), 75);
  EXPECT_EQ(WClrColorDeviceN::OverprintRGB(128, 128), 64);

  const auto inks = SpaceOf(DeviceN_Process_CMYK, {DeviceN_Plate_Process, DeviceN_Plate_SoftMask});
  inks->AddSpotColorPlate(C::MakeCMYK100(100, 0, 0, 0));
  const WClrColorDeviceN colour = With(inks, {50, 20, 0, 0, 50, 255});
  C mixed;
  ASSERT_TRUE(colour.GetProcessColor(mixed));
  EXPECT_EQ(mixed, C::MakeCMYK100(50, 20, 0, 0));
  EXPECT_EQ(mixed.GetType(), 17);
  ASSERT_TRUE(colour.OverprintToCMYK(mixed));
  EXPECT_EQ(mixed, C::MakeCMYK100(75, 20, 0, 0)) << "the soft mask prints nothing";
  C parts;
  C::MakeDEVICEN(parts, new WClrColorDeviceN(colour));
  EXPECT_EQ(WClrConvert::SplitDeviceN(parts),
            (std::vector<C>{C::MakeCMYK100(50, 20, 0, 0), C::MakeCMYK100(50, 0, 0, 0)}));

  auto unknown = SpaceOf(DeviceN_Process_RGB, {DeviceN_Plate_Process});
  unknown->AddSpotColorPlate(C::MakeSPOT(3, 1, 1, nullptr));
  mixed = C::MakeGRAY(77);
  EXPECT_FALSE(With(unknown, {1, 2, 3, 4}).OverprintToRGB(mixed));
  EXPECT_EQ(mixed, C::MakeGRAY(77));
  EXPECT_TRUE(With(unknown, {1, 2, 3, 0}).OverprintToRGB(mixed));
  EXPECT_EQ(mixed, C::MakeRGB(1, 2, 3));
}

TEST(WClrColorDeviceN, EveryProcessColourSurvivesItsPlates)
{
  std::mt19937 random(9);
  const auto byte = [&](unsigned top) { return static_cast<std::uint8_t>(random() % (top + 1)); };
  for (int i = 0; i < 500; ++i) {
    for (const C &colour : {C::MakeRGB(byte(255), byte(255), byte(255)),
                            C::MakeCMYK100(byte(100), byte(100), byte(100), byte(100)), C::MakeREGCOLOR()})
    {
      C deviceN, back;
      ASSERT_TRUE(WClrConvert::ConvertToDeviceN(&deviceN, &colour));
      ASSERT_TRUE(deviceN.Validate()) << testing::PrintToString(colour);
      ASSERT_TRUE(WClrConvert::ConvertToBasicType(&back, colour.GetType() == 5 ? 5 : 17, &deviceN));
      ASSERT_EQ(tests::BytesOf(back, 3), tests::BytesOf(colour, 3)) << testing::PrintToString(colour);
    }
  }
}

TEST(WClrColorDeviceN, ChangesItsBaseAndDropsWhatDoesNotPrint)
{
  WClrColorDeviceN colour = Samples()[2];
  ASSERT_TRUE(colour.ConvertToProcessType(DeviceN_Process_RGB));
  EXPECT_TRUE(colour.Validate());
  EXPECT_EQ(Types(*colour.GetColorSpace()), (std::vector<int>{6, 7, 8, 15, 15, 17}));
  // 10 20 30 40 % are 26 51 77 102 of 255: light 229 204 178 through 153.
  EXPECT_EQ(colour.GetValues(), (Values{137, 122, 106, 50, 60, 255}));
  EXPECT_FALSE(colour.ConvertToProcessType(DeviceN_Process_None));
  // An ink on top of the lights becomes a process plate; nothing of it is lost.
  WClrColorDeviceN shaded(SpaceOf(DeviceN_Process_RGB, {5, 6, 7, 8}), 0);
  for (const int light : {1, 2, 3})
    shaded.SetColorComponent(light, 255, 255, false);
  shaded.SetColorComponent(0, 80, 100, false);
  ASSERT_TRUE(shaded.ConvertToProcessType(DeviceN_Process_CMYK));
  EXPECT_EQ(shaded.GetValues(), (Values{0, 0, 0, 80}));
  EXPECT_FALSE(WClrColorDeviceN(nullptr, 0).ConvertToProcessType(DeviceN_Process_RGB));
  colour.SetColorComponent(3, 0, 0, false);
  colour.SetColorComponent(0, 0, 0, false);
  colour.SimplifyColor();
  EXPECT_EQ(colour.GetValues(), (Values{0, 122, 106, 60, 255}));
  EXPECT_EQ(Types(*colour.GetColorSpace()), (std::vector<int>{6, 7, 8, 15, 17}));
}

TEST(WClrColorDeviceN, OrderIsTotal)
{
  auto pool = Samples();
  const auto more = Samples();
  pool.insert(pool.end(), more.begin(), more.end());
  pool.push_back(With(SpaceOf(DeviceN_Process_RGB, {DeviceN_Plate_Process}), {1, 2, 4}));
  pool.push_back(WClrColorDeviceN(nullptr, 5));
  for (const auto &a : pool) {
    const auto before = [&](const WClrColorDeviceN &x) {
      return std::count_if(pool.begin(), pool.end(), [&](const auto &c) { return c.CompareTo(x) < 0; });
    };
    for (const auto &b : pool)
      ASSERT_EQ(a.CompareTo(b) < 0, before(a) < before(b)) << a.SaveInStr() << " " << b.SaveInStr();
  }
}

// --- Persistence ----------------------------------------------------------------------------------------------------

Bytes Form(const WClrColorDeviceN &colour)
{
  Bytes form(colour.GetSizeBuf());
  EXPECT_TRUE(colour.SaveInBuf(form));
  return form;
}

TEST(DeviceNPersistence, TheBytesAreFrozen)
{
  const Bytes expected = {'Z', 'D', 'N', 'C', 80, 0, 0, 0, 1, 0, 1, 0, 7, 0, 0, 0, 40, 0, 0, 0,             // colour
                          'Z', 'D', 'N', 'S', 60, 0, 0, 0, 1, 0, 1, 0, 1, 0, 0, 0, 2,  0, 0, 0, 1, 0, 0, 0, // space
                          5,   0,   0,   0,   17, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0,
                          0,   0,   0,   100, 0,  0, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(Form(With(SpaceOf(DeviceN_Process_CMYK, {DeviceN_Plate_Black}), {40})), expected);
  EXPECT_EQ(With(SpaceOf(DeviceN_Process_CMYK, {DeviceN_Plate_Black}), {40}).SaveInStr(),
            "DEVICEN/1(7 CMYK 1 unique; 5 CMYK100(0,0,0,100) 40)");
  EXPECT_EQ(WClrColorDeviceN(nullptr, -5).SaveInStr(), "DEVICEN/1(-5)");
}

TEST(DeviceNPersistence, ComesBackFromEveryForm)
{
  std::stringstream stream;
  for (const WClrColorDeviceN &colour : Samples()) {
    SCOPED_TRACE(colour.SaveInStr());
    WClrColorDeviceN fromBytes(nullptr, 99), fromText(nullptr, 99);
    EXPECT_TRUE(fromBytes.LoadFromBuf(Form(colour)));
    EXPECT_EQ(fromBytes.CompareTo(colour), 0);
    EXPECT_TRUE(fromText.LoadFromStr(colour.SaveInStr()));
    EXPECT_EQ(fromText.CompareTo(colour), 0);
    EXPECT_TRUE(colour.SaveIn(stream)); // one behind the other
    Bytes small(colour.GetSizeBuf() - 1);
    EXPECT_FALSE(colour.SaveInBuf(small));
    if (const Space *space = colour.GetColorSpace()) {
      Bytes form(space->GetSizeBuf());
      Space back(0, DeviceN_Process_None);
      EXPECT_TRUE(space->SaveInBuf(form) && back.LoadFromBuf(form));
      EXPECT_EQ(back, *space);
    }
  }
  for (const WClrColorDeviceN &colour : Samples()) {
    WClrColorDeviceN back(nullptr, 99);
    EXPECT_TRUE(back.LoadFrom(stream));
    EXPECT_EQ(back.CompareTo(colour), 0);
  }
  WClrColorDeviceN back(nullptr, 99);
  EXPECT_FALSE(back.LoadFrom(stream));
}

TEST(DeviceNPersistence, EveryProperPrefixAndEverySurplusIsRefusedAndChangesNothing)
{
  const WClrColorDeviceN before = Samples()[4];
  for (const WClrColorDeviceN &colour : Samples()) {
    const Bytes form = Form(colour);
    const std::string text = colour.SaveInStr();
    WClrColorDeviceN target(before);
    for (std::size_t length = 0; length < form.size(); ++length) {
      EXPECT_FALSE(target.LoadFromBuf(std::span(form).first(length))) << length;
      std::istringstream stream(std::string(form.begin(), form.begin() + static_cast<long>(length)));
      EXPECT_FALSE(target.LoadFrom(stream)) << length;
    }
    for (std::size_t length = 0; length < text.size(); ++length)
      EXPECT_FALSE(target.LoadFromStr(std::string_view(text).substr(0, length))) << text.substr(0, length);
    Bytes longer(form);
    longer.push_back(0);
    EXPECT_FALSE(target.LoadFromBuf(longer));
    EXPECT_FALSE(target.LoadFromStr(text + ")"));
    EXPECT_EQ(target.CompareTo(before), 0);
    if (const Space *space = colour.GetColorSpace()) {
      Bytes bytes(space->GetSizeBuf());
      space->SaveInBuf(bytes);
      Space spaceTarget(before.GetColorSpace()[0]);
      for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(spaceTarget.LoadFromBuf(std::span(bytes).first(length))) << length;
      EXPECT_EQ(spaceTarget, *before.GetColorSpace());
    }
  }
}

TEST(DeviceNPersistence, EveryDamagedByteIsRefusedOrAnotherWholeColour)
{
  for (const WClrColorDeviceN &colour : Samples()) {
    const Bytes form = Form(colour);
    for (std::size_t at = 0; at < form.size(); ++at) {
      for (const int damage : {1, 2, 0x10, 0x80, 0xFF}) {
        Bytes damaged(form);
        damaged[at] = static_cast<std::uint8_t>(damaged[at] ^ damage);
        WClrColorDeviceN target(nullptr, 99);
        if (!target.LoadFromBuf(damaged)) {
          EXPECT_EQ(target.GetIdentifier(), 99);
          continue;
        }
        WClrColorDeviceN again(nullptr, 99);
        EXPECT_TRUE(again.LoadFromBuf(Form(target))) << at;
        EXPECT_EQ(again.CompareTo(target), 0) << at;
      }
    }
  }
}

TEST(DeviceNPersistence, RefusesTextThatIsNotTheForm)
{
  for (const char *text : {"",
                           "DEVICEN/2(7)",
                           "DEVICEN/1()",
                           "DEVICEN/1(7",
                           "DEVICEN/1(7))",
                           "devicen/1(7)",
                           "DEVICEN/1(7 CMYK 0)",
                           "DEVICEN/1(7 CMYK 0 some)",
                           "DEVICEN/1(7 RGBX 0 any)",
                           "DEVICEN/1(7 CMYK 0 any; 2 CMYK100(100,0,0,0))",
                           "DEVICEN/1(7 CMYK 0 any;2 CMYK100(100,0,0,0) 1)",
                           "DEVICEN/1(7 CMYK 0 any; 2 CMYK100(100,0,0,0) -1)",
                           "DEVICEN/1(7 CMYK 0 any; 2 CMYK100(100,0,0,0) 4294967296)",
                           "DEVICEN/1(7 CMYK 0 any; 3 GRAY255(1) 1; 2 GRAY255(1) 1)",
                           "DEVICEN/1(2147483648)",
                           "DEVICEN/1(7; 2 GRAY255(1) 1)",
                           "DEVICEN/1(7 )",
                           "DEVICEN/1(7;)",
                           "DEVICEN/1(7 CMYK 0 any;)",
                           "DEVICEN/1(7 CMYK 0 any; 2 GRAY255(1) 1;)"})
  {
    WClrColorDeviceN target(nullptr, 99);
    EXPECT_FALSE(target.LoadFromStr(text)) << text;
    EXPECT_EQ(target.GetIdentifier(), 99) << text;
  }
}

} // namespace
