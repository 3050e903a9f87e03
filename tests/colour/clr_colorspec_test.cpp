#include "tests/support/colours.h"
#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/clr_colorspec_125x.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

using tests::Bytes;
using tests::BytesOf;
using tests::Chain;
using tests::ColourOfModel;
using ZelUtils::Guid;
using C = CLR_COLORSPEC;

namespace {

const Guid kSomePalette = {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};

Bytes Counting()
{
  Bytes bytes(16);
  for (std::size_t i = 0; i < 16; ++i)
    bytes[i] = static_cast<std::uint8_t>(0x90 + i);
  return bytes;
}

struct MakeRow
{
  const char *name;
  unsigned model;
  std::size_t offset; // of the model's own bytes
  Bytes bytes;
  unsigned paletteType; // 5: none
  std::function<void(C &)> fill;
  C made;
};

// clang-format off
#define BOTH(fill, make, ...) [](C &c) { C::fill(c, __VA_ARGS__); }, C::make(__VA_ARGS__)
const std::vector<MakeRow> &MakeRows()
{
  static const std::vector<MakeRow> kRows = {
    {"COLORREF", 5, 0, {0xBC, 0x9A, 0x78}, 5, BOTH(MakeCOLORREF, MakeCOLORREF, 0xFFBC9A78)},
    {"RGB", 5, 0, {3, 2, 1}, 5, BOTH(MakeRGB, MakeRGB, 1, 2, 3)},
    {"FromRGB", 5, 0, {3, 2, 1}, 5, BOTH(MakeFromRGB, MakeFromRGB, 1, 2, 3)},
    {"CMY", 4, 0, {1, 2, 3}, 5, BOTH(MakeCMY, MakeCMY, 1, 2, 3)},
    {"CMYK", 2, 0, {1, 2, 3, 4}, 5, BOTH(MakeCMYK, MakeCMYK, 1, 2, 3, 4)},
    {"CMYK255", 3, 0, {1, 2, 3, 4}, 5, BOTH(MakeCMYK255, MakeCMYK255, 1, 2, 3, 4)},
    {"CMYK100", 17, 0, {1, 2, 3, 4}, 5, BOTH(MakeCMYK100, MakeCMYK100, 1, 2, 3, 4)},
    {"REGCOLOR", 20, 0, {100, 100, 100, 100, 100}, 5, [](C &c) { C::MakeREGCOLOR(c); }, C::MakeREGCOLOR()},
    {"HSB", 6, 0, {0xFE, 0xFF, 2, 3}, 5, BOTH(MakeHSB, MakeHSB, -2, 2, 3)},
    {"HLS", 7, 0, {0x67, 0x01, 2, 3}, 5, BOTH(MakeHLS, MakeHLS, 359, 2, 3)},
    {"USERINKS", 21, 0, {3, 2, 1, 4}, 5, BOTH(MakeUSERINKS, MakeUserInks, 1, 2, 3, 4)},
    {"INDEXEDUSERINKS", 22, 0, {0xFF, 0xFF, 9}, 5, BOTH(MakeINDEXEDUSERINKS, MakeIndexedUserInks, -1, 9)},
    {"YIQ255", 11, 0, {1, 2, 3}, 5, BOTH(MakeYIQ255, MakeYIQ255, 1, 2, 3)},
    {"LAB", 12, 0, {200, 0x81, 0x7F}, 5, BOTH(MakeLAB, MakeLAB, 200, -127, 127)},
    {"LAB255", 18, 0, {1, 2, 3}, 5, BOTH(MakeLAB255, MakeLAB255, 1, 2, 3)},
    {"XYZ", 19, 0, {1, 2, 3}, 5, BOTH(MakeXYZ, MakeXYZ, 1, 2, 3)},
    {"GRAY", 9, 0, {7}, 5, BOTH(MakeGRAY, MakeGRAY, 7)},
    {"BW", 8, 0, {0xFF, 0xFF, 0xFF, 0xFF}, 5, BOTH(MakeBW, MakeBW, -1)},
    {"PANTONEHEX", 14, 0, {0x34, 0x12, 50, 0}, 33, BOTH(MakePANTONEHEX, MakePANTONEHEX, 33, 0x1234, 50)},
    {"PANTONEHEX without a row", 14, 0, {1, 0, 50, 0}, 5, BOTH(MakePANTONEHEX, MakePANTONEHEX, 6, 1, 50)},
    {"PANTONE", 1, 0, {0xFF, 0xFF, 0x2C, 0x01}, 3, BOTH(MakePANTONE, MakePANTONE, -1, 300)},
    {"RGB48", 23, 0, {100, 0, 6, 5, 4, 3, 2, 1}, 5, BOTH(MakeRGB48, MakeRGB48, 0x0102, 0x0304, 0x0506)},
    {"GRAY16", 24, 0, {2, 1}, 5, BOTH(MakeGRAY16, MakeGRAY16, 0x0102)},
    {"SPOT", 25, 0, {17, 0, 80, 0}, 23, BOTH(MakeSPOT, MakeSPOT, 23, 17, 80, nullptr)},
    {"SPOT's definition", 25, 8, Bytes(8), 5, BOTH(MakeSPOT, MakeSPOT, Guid{}, 17, 80, nullptr)},
    {"INDEX", 13, 0, {0xFE, 0xFF}, 5, BOTH(MakeINDEX, CLRMakeIndex, 65534)},
    {"HEX", 15, 2, {1, 2, 3, 4, 5, 6}, 5, BOTH(MakeHEX, MakeHEX, 1, 2, 3, 4, 5, 6)},
    {"HEX's density", 15, 0, {100}, 5, BOTH(MakeHEX, MakeHEX, 1, 2, 3, 4, 5, 6)},
    {"SCRGB", 27, 0, {0, 0, 0x80, 0x3F, 0, 0, 0, 0xC0, 0, 0, 0, 0x3F}, 5, BOTH(MakeSCRGB, MakeSCRGB, 1.0f, -2.0f, 0.5f)},
    {"RGBA", 29, 0, {1, 2, 3, 4}, 5, BOTH(MakeRGBA, MakeRGBA, 1, 2, 3, 4)},
    {"BGRA", 30, 0, {3, 2, 1, 4}, 5, BOTH(MakeBGRA, MakeBGRA, 1, 2, 3, 4)},
    {"INVALID", 0, 0, {}, 5, [](C &c) { C::MakeINVALID(c); }, C::MakeInvalid()},
  };
  return kRows;
}
#undef BOTH
// clang-format on

TEST(ClrColorspec, MakingWritesTheModelsOwnBytesAndNoOther)
{
  for (const MakeRow &row : MakeRows()) {
    SCOPED_TRACE(row.name);
    C filled = ColourOfModel(5, Counting());
    filled.SetPaletteGuid(kSomePalette);
    row.fill(filled);
    for (const C &colour : {filled, row.made}) {
      EXPECT_EQ(colour.GetType(), row.model);
      EXPECT_EQ(colour.GetPaletteType(), row.paletteType);
      EXPECT_EQ(colour.GetPaletteGuid().IsNull(), row.paletteType == 5);
      const Bytes all = BytesOf(colour);
      EXPECT_TRUE(std::equal(row.bytes.begin(), row.bytes.end(), all.begin() + static_cast<long>(row.offset)));
    }
    // No model but scRGB reaches beyond byte 7; a spot colour's pointer does.
    EXPECT_TRUE(row.model == 25 || row.model == 27 || BytesOf(filled)[8] == 0x98);
    // What a colour owned is released by being filled.
    C reference = Chain(C::MakeRGB(9, 9, 9), 2);
    row.fill(reference);
    EXPECT_EQ(reference.GetType(), row.model);
    C deviceN = tests::DeviceNColour(DeviceN_Process_CMYK, 5);
    row.fill(deviceN);
    EXPECT_EQ(deviceN.GetType(), row.model);
  }
  EXPECT_EQ(C(ARGB{9, 1, 2, 3}), C::MakeRGB(1, 2, 3));
  EXPECT_EQ(C::MakeCOLORREF(0xFF123456).GetCOLORREF(), 0x123456u);
}

TEST(ClrColorspec, AccessorsStandAtTheirBytes)
{
  const C read = ColourOfModel(0, {0x80, 0x91, 0xA2, 0xB3, 0xC4, 0xD5, 0xE6, 0xF7});
  EXPECT_EQ(read.GetBlue(), 0x80);
  EXPECT_EQ(read.GetI255(), 0x91);
  EXPECT_EQ(read.GetRed(), 0xA2);
  EXPECT_EQ(read.GetBlack(), 0xB3);
  EXPECT_EQ(read.GetHue(), static_cast<std::int16_t>(0x9180));
  EXPECT_EQ(read.GetBW(), static_cast<std::int32_t>(0xB3A29180));
  EXPECT_EQ(read.GetBlue16(), 0xB3A2);
  EXPECT_EQ(read.GetGreen16(), 0xD5C4);
  EXPECT_EQ(read.GetRed16(), 0xF7E6);
  EXPECT_EQ(read.GetREGCOLORBlack(), 0xB3);
  EXPECT_EQ(read.GetREGCOLORDensity(), 0xC4);
  EXPECT_EQ(read.GetCOLORREF(), 0x8091A2u);
  EXPECT_EQ(read.GetCMY().yellow, 0xA2);

  const struct
  {
    std::function<void(C &)> set;
    std::size_t offset;
    Bytes bytes;
  } kSetters[] = {
    {[](C &c) { c.SetBlue(1); }, 0, {1}},
    {[](C &c) { c.SetI255(1); }, 1, {1}},
    {[](C &c) { c.SetRed(1); }, 2, {1}},
    {[](C &c) { c.SetBlack(1); }, 3, {1}},
    {[](C &c) { c.SetHue(-2); }, 0, {0xFE, 0xFF}},
    {[](C &c) { c.SetBW(-2); }, 0, {0xFE, 0xFF, 0xFF, 0xFF}},
    {[](C &c) { c.SetBlue16(0x0102); }, 2, {2, 1}},
    {[](C &c) { c.SetGreen16(0x0102); }, 4, {2, 1}},
    {[](C &c) { c.SetRed16(0x0102); }, 6, {2, 1}},
    {[](C &c) { c.SetHEXMagenta(1); }, 4, {1}},
    {[](C &c) { c.SetHEXCyan(1); }, 5, {1}},
    {[](C &c) { c.SetHEXGreen(1); }, 6, {1}},
    {[](C &c) { c.SetHEXBlack(1); }, 7, {1}},
    {[](C &c) { c.SetSCRed(1); }, 0, {0, 0, 0x80, 0x3F}},
    {[](C &c) { c.SetSCGreen(1); }, 4, {0, 0, 0x80, 0x3F}},
    {[](C &c) { c.SetSCBlue(1); }, 8, {0, 0, 0x80, 0x3F}},
  };
  for (const auto &row : kSetters) {
    C colour = ColourOfModel(9, Counting());
    row.set(colour);
    Bytes expected = Counting();
    std::copy(row.bytes.begin(), row.bytes.end(), expected.begin() + static_cast<long>(row.offset));
    EXPECT_EQ(BytesOf(colour), expected) << "setter number " << &row - kSetters;
    EXPECT_EQ(colour.GetType(), 9);
  }
}

TEST(ClrColorspec, Kept_NamedHexachromeAccessorsReadBytesFourToSeven)
{
  const C hex = C::MakeHEX(1, 2, 3, 4, 5, 6);
  EXPECT_EQ(hex.GetHEXMagenta(), 3);
  EXPECT_EQ(hex.GetHEXCyan(), 4);
  EXPECT_EQ(hex.GetHEXGreen(), 5);
  EXPECT_EQ(hex.GetHEXBlack(), 6);
}

TEST(ClrColorspec, SettersDoNotDamagePointers)
{
  const SpotColorDefinition definition(L"n", L"s", C::MakeRGB(1, 2, 3));
  std::vector<C> owners = {tests::DeviceNColour(DeviceN_Process_RGB, 1), C::MakeReference(C::MakeGRAY(5)),
                           C::MakeSPOT(3, 1, 100, &definition)};
  for (C &colour : owners) {
    for (std::size_t at = 0; at < 16; ++at)
      colour.SetComponent(at, std::uint8_t{0xEE});
    for (std::size_t at = 0; at <= 8; ++at)
      colour.SetComponent(at, std::uint64_t{0xEEEEEEEEEEEEEEEE});
  }
  EXPECT_TRUE(owners[0].GetDeviceN()->IsRGBBased());
  EXPECT_EQ(owners[1].GetBlue(), 5);
  EXPECT_EQ(owners[2].GetSpotColorName(), L"n");
}

TEST(ClrColorspec, Kept_ModelNumbersWithoutMeaningCountAsValidUpTo1013)
{
  for (unsigned model = 0; model <= 65535; ++model) {
    if (model == 28)
      continue; // a reference to nothing, below
    const C colour = ColourOfModel(model, {0});
    ASSERT_EQ(colour.IsInvalid(), model == 0 || model > 1013) << model;
    ASSERT_EQ(colour.GetType(), model);
  }
  C nothing = ColourOfModel(28, {255});
  EXPECT_TRUE(nothing.IsReference());
  EXPECT_TRUE(nothing.IsInvalid());
  EXPECT_EQ(nothing.GetType(), 0);
  EXPECT_EQ(nothing.GetReference(), nullptr);
  EXPECT_FALSE(C::MakeReference(nothing).IsReference()) << "a reference to nothing makes an invalid colour";
}

TEST(ClrColorspec, Validates)
{
  const auto with = [](C colour, unsigned paletteType) {
    colour.SetPaletteType(static_cast<std::uint16_t>(paletteType));
    return colour;
  };
  for (unsigned model = 0; model <= 65535; ++model) {
    const bool listed = (model >= 2 && model <= 9) || (model >= 11 && model <= 13) || model == 15 || model == 17 ||
                        model == 18 || (model >= 20 && model <= 25);
    ASSERT_EQ(ColourOfModel(model, {0}).Validate(), listed) << model;
  }
  const C kValid[] = {C::MakePANTONE(5, 100),
                      C::MakeCMYK(100, 100, 100, 100),
                      C::MakeCMYK100(0, 0, 101, 0),
                      C::MakeCMYK255(255, 255, 255, 255),
                      C::MakeHSB(360, 255, 255),
                      C::MakeBW(1),
                      C::MakePANTONEHEX(12, 1, 100),
                      C::MakePANTONEHEX(24, 1, 0),
                      C::MakePANTONEHEX(33, 1, 100),
                      C::MakeUserInks(255, 255, 255, 100),
                      C::MakeIndexedUserInks(-5, 100),
                      C::MakeSPOT(3, 1, 100, nullptr),
                      with(C::MakeRGB(1, 2, 3), 40),
                      C::MakeREGCOLOR(),
                      tests::DeviceNColour(DeviceN_Process_CMYK, 100),
                      C::MakeReference(C::MakeBW(1))};
  const C kInvalid[] = {C::MakePANTONE(5, 101),
                        with(C::MakePANTONE(5, 100), 8),
                        C::MakeCMYK(0, 0, 101, 0),
                        C::MakeHSB(361, 0, 0),
                        C::MakeHLS(-1, 0, 0),
                        C::MakeBW(2),
                        C::MakeBW(-1),
                        C::MakePANTONEHEX(34, 1, 101),
                        C::MakePANTONEHEX(3, 1, 100),
                        C::MakeUserInks(0, 0, 0, 101),
                        C::MakeIndexedUserInks(0, 101),
                        C::MakeSPOT(3, 1, 101, nullptr),
                        with(C::MakeRGB(1, 2, 3), 0),
                        with(C::MakeRGB(1, 2, 3), 19),
                        tests::DeviceNColour(DeviceN_Process_CMYK, 101),
                        C::MakeDEVICEN(nullptr),
                        C::MakeReference(C::MakeBW(2))};
  for (const C &colour : kValid)
    EXPECT_TRUE(colour.Validate()) << testing::PrintToString(colour);
  for (const C &colour : kInvalid)
    EXPECT_FALSE(colour.Validate()) << testing::PrintToString(colour);
}

TEST(ClrColorspec, PaletteTypesDecideWhatIsASpotColour)
{
  const std::vector<unsigned> spot = {3,  8,  9,  10, 11, 17, 18, 20, 21, 22, 23,
                                      26, 27, 28, 29, 30, 31, 32, 35, 36, 37}; // and 16, which is stored as 5
  const std::vector<unsigned> hexachrome = {12, 24, 33, 34};
  const auto has = [](const auto &list, unsigned type) { return std::count(list.begin(), list.end(), type) != 0; };
  for (unsigned type = 0; type <= 45; ++type) {
    C colour = C::MakeRGB(1, 2, 3);
    colour.SetPaletteType(static_cast<std::uint16_t>(type));
    EXPECT_EQ(colour.IsSpot(), has(spot, type)) << type;
    EXPECT_EQ(colour.IsTintable(), has(spot, type) || has(hexachrome, type)) << type;
    EXPECT_EQ(C::MakeReference(colour).IsSpot(), has(spot, type)) << type;
  }
  C colour = C::MakePANTONE(1, 100);
  colour.SetPaletteGuid(kSomePalette);
  EXPECT_TRUE(colour.IsSpot()) << "Pantone of an unknown palette";
  colour.SetPaletteType(2);
  EXPECT_FALSE(colour.IsSpot()) << "Pantone of a process palette";
  colour = C::MakeRGB(1, 2, 3);
  colour.SetPaletteGuid(ZelClr::PaletteIdentifierFromType(16));
  EXPECT_TRUE(colour.IsSpot()) << "the user inks' own palette";
  EXPECT_TRUE(C::MakeSPOT(2, 1, 1, nullptr).IsSpot());
  for (const C &tintable : {C::MakeREGCOLOR(), C::MakeUserInks(1, 2, 3, 4), C::MakeIndexedUserInks(1, 2)})
    EXPECT_TRUE(tintable.IsTintable() && !tintable.IsSpot()) << testing::PrintToString(tintable);
}

TEST(ClrColorspec, DensityStandsWhereTheModelKeepsIt)
{
  const Bytes pattern = {1, 2, 3, 4, 5, 6, 7, 8};
  for (unsigned model = 0; model <= 40; ++model) {
    C colour = ColourOfModel(model, pattern);
    const bool wide = model == 1 || model == 14 || model == 25;
    const int at = wide ? 2 : model == 15 || model == 23 ? 0 : model == 20 ? 4 : model == 21 ? 3 : model == 22 ? 2 : -1;
    const unsigned density = wide ? 0x0403u : at < 0 ? 100u : pattern[static_cast<std::size_t>(at)];
    EXPECT_EQ(colour.GetDensity(), density) << model;
    Bytes expected = BytesOf(colour);
    if (at >= 0)
      expected[static_cast<std::size_t>(at)] = 0x34;
    if (wide)
      expected[3] = 0x12;
    C reference = Chain(colour, 2);
    reference.SetDensity(0x1234);
    colour.SetDensity(0x1234);
    if (model != 26 && model != 28) {
      EXPECT_EQ(BytesOf(colour), expected) << model;
      EXPECT_EQ(BytesOf(reference), expected) << model;
    }
  }
}

TEST(ClrColorspec, Kept_OneReferenceExchangesBlackAndDensityOfARegistrationColour)
{
  C colour = C::MakeREGCOLOR();
  colour.SetBlack(80);
  colour.SetDensity(40);
  for (int links = 0; links <= 5; ++links) {
    const C holder = links == 0 ? colour : Chain(colour, links);
    const bool exchanged = links % 2 != 0;
    EXPECT_EQ(holder.GetREGCOLORBlack(), exchanged ? 40 : 80) << links;
    EXPECT_EQ(holder.GetREGCOLORDensity(), exchanged ? 80 : 40) << links;
    EXPECT_EQ(holder.GetDensity(), exchanged ? 80 : 40) << links;
    EXPECT_EQ(holder.GetBlack(), 80) << links;
  }
}

TEST(ClrColorspec, WhiteOfEachModel)
{
  const struct
  {
    unsigned model;
    std::size_t offset;
    Bytes bytes;
  } kRows[] = {{2, 0, {0, 0, 0, 0}},    {3, 0, {0, 0, 0, 0}},     {17, 0, {0, 0, 0, 0}},  {4, 0, {0, 0, 0}},
               {5, 0, {255, 255, 255}}, {6, 2, {0, 255}},         {7, 2, {255}},          {8, 0, {1, 0, 0, 0}},
               {9, 0, {255}},           {11, 0, {255, 100, 100}}, {12, 0, {255, 0, 0}},   {14, 2, {0, 0}},
               {15, 2, Bytes(6)},       {18, 0, {255, 128, 128}}, {23, 2, Bytes(6, 255)}, {24, 0, {255, 255}}};
  for (unsigned model = 0; model <= 40; ++model) {
    if (model == 26 || model == 28)
      continue;
    C colour = ColourOfModel(model, Counting());
    colour.SetPaletteGuid(kSomePalette);
    Bytes expected = BytesOf(colour);
    for (const auto &row : kRows) {
      if (row.model == model)
        std::copy(row.bytes.begin(), row.bytes.end(), expected.begin() + static_cast<long>(row.offset));
    }
    C reference = Chain(colour, 2);
    C::MakeWhite(colour);
    C::MakeWhite(reference);
    EXPECT_EQ(BytesOf(colour), expected) << model;
    EXPECT_EQ(BytesOf(reference), expected) << model;
    EXPECT_EQ(colour.GetType(), model);
    EXPECT_EQ(colour.GetPaletteGuid(), kSomePalette);
  }
}

// --- Ownership and references ---------------------------------------------------------------------------------------

TEST(ClrColorspec, Kept_ACopyOfADeviceNColourLosesItsPaletteAndItsReference)
{
  C colour = tests::DeviceNColour(DeviceN_Process_CMYK, 30);
  colour.SetPaletteGuid(kSomePalette);
  const C copy(colour);
  EXPECT_EQ(copy, colour);
  EXPECT_NE(copy.GetDeviceN(), colour.GetDeviceN());
  EXPECT_TRUE(copy.GetPaletteGuid().IsNull());
  C reference = C::MakeReference(C::MakeGRAY(1));
  reference.SetReferenceColorValue(colour);
  const C ofReference(reference);
  EXPECT_FALSE(ofReference.IsReference());
  EXPECT_NE(ofReference.GetDeviceN(), reference.GetDeviceN());
  EXPECT_EQ(C(std::move(colour)).GetPaletteGuid(), kSomePalette) << "a move keeps it";
}

TEST(ClrColorspec, Kept_AColourMadeAReferenceKeepsItsOwnPalette)
{
  C colour = C::MakeRGB(1, 2, 3);
  colour.SetPaletteGuid(kSomePalette);
  C::MakeReference(colour, C::MakeGRAY(7));
  EXPECT_TRUE(colour.GetPaletteGuid().IsNull()) << "reading follows the reference";
  colour.SetType(9);
  EXPECT_EQ(colour.GetPaletteGuid(), kSomePalette);
}

TEST(ClrColorspec, AMovedFromColourOwnsNothing)
{
  for (const C &colour : tests::NastyColours()) {
    C source(colour);
    const C moved(std::move(source));
    EXPECT_EQ(source.GetType(), 0) << testing::PrintToString(colour);
    EXPECT_TRUE(source.GetPaletteGuid().IsNull());
    EXPECT_EQ(moved, C(colour)) << testing::PrintToString(colour);
  }
}

TEST(ClrColorspec, FillsAndAssignsFromItsOwnParts)
{
  C chain = Chain(C::MakeRGB(1, 2, 3), 3);
  chain = *&chain;
  chain = *chain.GetReference();
  EXPECT_TRUE(chain.IsReference());
  chain = std::move(*&chain);
  C::MakeReference(chain, *chain.GetReference());
  chain.SetReferenceColorValue(*chain.GetReference());
  EXPECT_EQ(chain.GetRed(), 1);
  chain.Copy(*chain.GetReference());
  EXPECT_EQ(chain, C::MakeRGB(1, 2, 3));

  C spot = C::MakeReference(C::MakeSPOT(23, 1, 50, nullptr));
  C::MakeSPOT(spot, spot.GetPaletteGuid(), 2, 60, nullptr);
  EXPECT_EQ(spot.GetPaletteType(), 23);
  C deviceN = tests::DeviceNColour(DeviceN_Process_RGB, 3);
  C::MakeDEVICEN(deviceN, deviceN.GetDeviceN());
  EXPECT_TRUE(deviceN.Validate());
  C shared;
  C::MakeReference(shared, deviceN);
  C::MakeDEVICEN(shared, shared.GetDeviceN());
  EXPECT_TRUE(shared.Validate() && !shared.IsReference());
  C ink = C::MakeReference(C::MakeUserInks(0, 100, 200, 50));
  ASSERT_TRUE(C::MakeProcessFromUserInks(ink, ink));
  EXPECT_EQ(ink, C::MakeRGB(127, 177, 227)); // 255 - 127.5 rounded away from zero
}

TEST(ClrColorspec, ChainsOfAnyLengthDoNotUseTheStack)
{
  constexpr int kLinks = 200000;
  C chain = Chain(C::MakeCMYK(1, 2, 3, 4), kLinks);
  EXPECT_EQ(chain.GetType(), 2);
  EXPECT_EQ(chain.GetReference()->GetReference()->GetRed(), 3);
  EXPECT_FALSE(chain.IsInvalid());
  C copy(chain);
  copy.BreakReference();
  EXPECT_EQ(copy, C::MakeCMYK(1, 2, 3, 4));
  const C held = *chain.GetReference()->GetReference(); // the tail outlives the head
  chain = copy;
  EXPECT_EQ(held.GetBlack(), 4);
}

TEST(ClrColorspec, RandomEditsAgreeWithATrivialModel)
{
  struct Value
  {
    int cell = -1; // of a reference
    unsigned number = 0;
  };
  constexpr std::size_t kHandles = 5;
  std::mt19937 random(20);
  const auto below = [&](std::size_t count) { return random() % count; };
  for (int sequence = 0; sequence < 200; ++sequence) {
    std::vector<C> colours(kHandles, C::MakeCOLORREF(0));
    std::vector<Value> values(kHandles);
    std::vector<Value> cells;
    const auto resolved = [&](Value value) {
      while (value.cell >= 0)
        value = cells[static_cast<std::size_t>(value.cell)];
      return value;
    };
    for (int step = 0; step < 60; ++step) {
      const std::size_t a = below(kHandles);
      const std::size_t b = below(kHandles);
      const auto edit = below(7);
      SCOPED_TRACE(testing::Message() << "sequence " << sequence << " step " << step << " edit " << edit << " of " << a
                                      << " with " << b);
      switch (edit) {
      case 0:
        values[a] = {-1, static_cast<unsigned>(step)};
        C::MakeCOLORREF(colours[a], static_cast<COLORREF>(step));
        break;
      case 1:
        if (values[b].cell < 0) {
          cells.push_back(values[b]);
          values[a] = {static_cast<int>(cells.size()) - 1, 0};
        } else {
          values[a] = values[b];
        }
        C::MakeReference(colours[a], colours[b]);
        break;
      case 2:
      case 3: {
        bool ring = false;
        for (Value v = values[b]; v.cell >= 0 && !ring; v = cells[static_cast<std::size_t>(v.cell)])
          ring = v.cell == values[a].cell;
        if (values[a].cell >= 0 && !ring)
          cells[static_cast<std::size_t>(values[a].cell)] = values[b];
        colours[a].SetReferenceColorValue(colours[b]);
        break;
      }
      case 4:
        values[a] = resolved(values[a]);
        colours[a].BreakReference();
        break;
      case 5:
        values[a] = values[b];
        colours[a] = colours[b];
        break;
      default:
        std::swap(values[a], values[b]);
        std::swap(colours[a], colours[b]);
        break;
      }
      for (std::size_t i = 0; i < kHandles; ++i) {
        ASSERT_EQ(colours[i].IsReference(), values[i].cell >= 0) << i;
        ASSERT_EQ(colours[i].GetCOLORREF(), resolved(values[i]).number) << i;
        ASSERT_EQ(colours[i].IsSameReference(colours[a]), values[i].cell >= 0 && values[i].cell == values[a].cell) << i;
      }
    }
  }
}

// --- Inks, spot colours, older records ------------------------------------------------------------------------------

TEST(ClrColorspec, UserInksAsProcessColours)
{
  const struct
  {
    C ink;
    C process;
  } kRows[] = {
    {C::MakeUserInks(0, 100, 200, 100), C::MakeRGB(0, 100, 200)},
    {C::MakeUserInks(0, 100, 200, 0), C::MakeRGB(255, 255, 255)},
    {C::MakeUserInks(0, 100, 200, 255), C::MakeRGB(0, 100, 200)},
    {C::MakeIndexedUserInks(0, 30), C::MakeCMYK100(30, 0, 0, 0)},
    {C::MakeIndexedUserInks(3, 200), C::MakeCMYK100(0, 0, 0, 100)},
    {C::MakeReference(C::MakeIndexedUserInks(1, 7)), C::MakeCMYK100(0, 7, 0, 0)},
  };
  for (const auto &row : kRows) {
    C process;
    EXPECT_TRUE(C::MakeProcessFromUserInks(row.ink, process));
    EXPECT_EQ(process, row.process) << testing::PrintToString(row.ink);
    EXPECT_EQ(process.GetType(), row.process.GetType());
  }
  C ofPalette = C::MakeIndexedUserInks(0, 30);
  ofPalette.SetPaletteType(8);
  for (const C &unknown :
       {C::MakeIndexedUserInks(4, 1), C::MakeIndexedUserInks(-1, 1), C::MakeRGB(1, 2, 3), C(), ofPalette})
  {
    C process = C::MakeGRAY(77);
    EXPECT_FALSE(C::MakeProcessFromUserInks(unknown, process)) << testing::PrintToString(unknown);
    EXPECT_EQ(process, C::MakeGRAY(77));
  }
}

TEST(ClrColorspec, OlderRecordsOfEveryModelNumber)
{
  for (unsigned model = 0; model <= 65535; ++model) {
    CLR_COLORSPEC_125X older;
    older.model = {static_cast<std::uint8_t>(model), static_cast<std::uint8_t>(model >> 8)};
    older.paletteType = {23, 0xFF};
    older.components = {1, 2, 3, 4, 5, 6, 7, 8};
    C colour = Chain(tests::DeviceNColour(DeviceN_Process_RGB, 1), 1);
    colour = older;
    const bool known = model >= 1 && model <= 25 && model != 10 && model != 16;
    ASSERT_EQ(colour.GetType(), known ? model : 0) << model;
    ASSERT_EQ(colour.GetPaletteType(), known ? 23 : 5) << model;
    ASSERT_EQ(colour.GetSpotDefinition(), nullptr) << model;
    ASSERT_TRUE(!known || BytesOf(colour, 8) == Bytes({1, 2, 3, 4, 5, 6, 7, 8})) << model;
  }
}

} // namespace
