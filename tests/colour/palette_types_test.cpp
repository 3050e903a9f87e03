#include "zelclr/colour/palette_types.h"

#include <gtest/gtest.h>

#include <set>

using namespace ZelClr;
using ZelUtils::Guid;

namespace {

// Frozen, in the order that decides which type an identifier stands for.
const struct
{
  unsigned type;
  std::string_view name;
  const char *identifier; // null: all zero
} kFrozen[] = {
  {4, "IMAGE", nullptr},
  {14, "NETSCAPE", nullptr},
  {15, "EXPLORER", nullptr},
  {0, "NONE", "{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}"},
  {1, "TRU", "{720D9300-EBCC-4781-B222-A66C9CF6ADAD}"},
  {2, "PAN_PROC", "{3CB1291E-9AE1-4B4A-8142-02E23EFBEFE9}"},
  {3, "PAN_SPOT", "{A47941A5-802A-4566-8CF6-EFDE9C7E8C3D}"},
  {7, "RGBSTD", "{723FDDF4-53D8-4BA6-AA30-35BFCC890692}"},
  {8, "FOCTONE", "{30BE0259-8C63-4DE3-BEE3-A722A01E5F93}"},
  {9, "DUPONT", "{1AB32094-7C1F-4EDB-A3BF-CC9621EEE409}"},
  {10, "TOYO", "{DED1E45A-0CE1-4DDB-885B-5E1726507C7D}"},
  {11, "DIC", "{5A45ECEF-49A7-4979-AE03-69EE817E0A0D}"},
  {12, "PAN_HEX", "{E3DAFA5C-1E43-4853-90DC-8A9252946F64}"},
  {13, "LABPAL", "{5E9EAC3D-2583-48EC-B58F-7FD738078375}"},
  {16, "USERINKS", "{BC43E88E-8924-4B3B-8E77-E4950F05C850}"},
  {17, "PANGUIDC", "{18C28107-FC82-46D1-91EB-5A1A77A503C1}"},
  {18, "PANGUIDU", "{43215C2E-A992-44DD-B037-9ED3FF06B220}"},
  {19, "PANMETV", "{FB85E902-4194-45A1-AD7D-BA74E78C02A3}"},
  {20, "PANMETU", "{26A703A8-DDE7-4CD2-BE3C-5CA8A9EBB75A}"},
  {21, "PANPASTC", "{43F3F153-6445-4D1E-998F-EF8DB815E914}"},
  {22, "PANPASTU", "{B61BCD92-061A-4A7C-B426-9A1CD6091678}"},
  {23, "HKS", "{8AC714BD-36EC-4D18-85BD-F117DEEF1702}"},
  {24, "PAN_HEXU", "{B4AA703B-CF5D-4A91-AA3B-8AF4B7F62571}"},
  {26, "HKS_K", "{43F08022-C9D9-46F5-B14B-53B0ACB15BD3}"},
  {27, "HKS_N", "{7F5B91EA-2A7C-46CB-A09B-C873DAA9E57F}"},
  {28, "HKS_Z", "{704AD09B-581F-4538-A6AA-9719F0B7DE17}"},
  {29, "HKS_E", "{14FD2506-B415-4EBC-82F9-E7DCEB0C8B6C}"},
  {30, "PANMETLC", "{1F7F8879-A39D-4787-A5B4-D67B1AC2A9B1}"},
  {31, "PANPASC", "{BC88EEDF-FA1E-4C79-9469-FA9E6327118E}"},
  {32, "PANPASU", "{02145DD0-786F-416C-8F1B-1AE267C6B50A}"},
  {33, "PANHEXAC", "{13BD54EA-D584-4464-A192-CA2A9457A223}"},
  {34, "PANHEXAU", "{5D99E896-8B12-45AA-9F4E-C84BDE9B9642}"},
  {35, "PANTONEM", "{B6228543-D7C9-457F-93D8-8AABFF674DE7}"},
  {36, "PANTONEC", "{31FF98FD-11DE-49C0-918D-584675C67540}"},
  {37, "PANTONEU", "{7F912332-2DF8-4BF5-ACC6-AC8D63AD48BA}"},
  {38, "PANEUROC", "{C4DD6B06-3D41-4406-9E56-70E91087FE4C}"},
  {39, "PANS2PEC", "{4688F047-ADD0-40A1-ABFD-C9BB1C355EF3}"},
  {40, "SVGCOLOR", "{9C124DB0-7163-4721-8A04-A409201A99B9}"},
  {25, "WEBSAFE", "{C6CD3CB4-E8DA-4B3E-977E-9DBD2CF20872}"},
  {5, "USER", nullptr},
};

TEST(PaletteTypes, RowsAreFrozen)
{
  ASSERT_EQ(kPaletteTypes.size(), std::size(kFrozen));
  std::set<Guid> identifiers;
  for (std::size_t i = 0; i < std::size(kFrozen); ++i) {
    const auto &row = kPaletteTypes[i];
    EXPECT_EQ(row.type, kFrozen[i].type) << i;
    EXPECT_EQ(row.name, kFrozen[i].name) << i;
    EXPECT_EQ(row.identifier.ToText(), kFrozen[i].identifier ? kFrozen[i].identifier : Guid{}.ToText()) << i;
    const bool nameless = row.type == 4 || row.type == 14 || row.type == 15 || row.type == 5;
    EXPECT_EQ(row.identifier.IsNull(), nameless) << row.name;
    EXPECT_EQ(identifiers.insert(row.identifier).second, !nameless || i == 0) << row.name;
  }
  EXPECT_EQ(kPantonePaletteIdentifier, PaletteIdentifierFromType(3));
}

TEST(PaletteTypes, IdentifiersAndTypes)
{
  for (unsigned type = 0; type <= 70000; ++type) {
    const bool nameless = type == 4 || type == 14 || type == 15 || type == 5 || type == 6 || type > 40;
    const Guid identifier = PaletteIdentifierFromType(type);
    ASSERT_EQ(identifier.IsNull(), nameless) << type;
    ASSERT_EQ(PaletteTypeFromIdentifier(identifier), nameless ? 5 : type) << type;
  }
  EXPECT_EQ(PaletteTypeFromIdentifier(Guid{{1}}), 5);
}

TEST(PaletteTypes, Names)
{
  const char *const kNames[] = {"NONE",     "TRU",      "PAN_PROC", "PAN_SPOT", "IMAGE",    "USER",     "CUSFIXED",
                                "RGBSTD",   "FOCTONE",  "DUPONT",   "TOYO",     "DIC",      "PAN_HEX",  "LABPAL",
                                "NETSCAPE", "EXPLORER", "USERINKS", "PANGUIDC", "PANGUIDU", "PANMETV",  "PANMETU",
                                "PANPASTC", "PANPASTU", "HKS",      "PAN_HEXU", "WEBSAFE",  "HKS_K",    "HKS_N",
                                "HKS_Z",    "HKS_E",    "PANMETLC", "PANPASC",  "PANPASU",  "PANHEXAC", "PANHEXAU",
                                "PANTONEM", "PANTONEC", "PANTONEU", "PANEUROC", "PANS2PEC", "SVGCOLOR"};
  ASSERT_EQ(std::size(kNames), 41u);
  for (unsigned type = 0; type <= 40; ++type) {
    EXPECT_EQ(PaletteTypeName(type), kNames[type]) << type;
    EXPECT_EQ(PaletteTypeFromName(kNames[type]), type) << kNames[type];
  }
  for (const unsigned type : {41u, 65535u, 65536u})
    EXPECT_EQ(PaletteTypeName(type), "") << type;
  for (const char *name : {"", "none", "USER "})
    EXPECT_FALSE(PaletteTypeFromName(name)) << name;
}

TEST(PaletteTypes, Kept_PanmetvIsNoSpotPalette)
{
  EXPECT_FALSE(IsSpotPaletteType(19));
  EXPECT_TRUE(IsSpotPaletteType(20));
  EXPECT_TRUE(IsSpotPaletteType(16));
  for (unsigned type = 38; type < 300; ++type)
    EXPECT_FALSE(IsSpotPaletteType(type) || IsPantoneHexachromePaletteType(type)) << type;
}

} // namespace
