#include "zelclr/colour/palette_types.h"

#include <algorithm>
#include <iterator>

namespace ZelClr {

using ZelUtils::Guid;
using namespace ZelUtils::literals;

namespace {

constexpr std::array<PaletteTypeRow, 40> kRows = {{
  {4, "IMAGE", Guid{}},
  {14, "NETSCAPE", Guid{}},
  {15, "EXPLORER", Guid{}},
  {0, "NONE", "{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}"_guid},
  {1, "TRU", "{720D9300-EBCC-4781-B222-A66C9CF6ADAD}"_guid},
  {2, "PAN_PROC", "{3CB1291E-9AE1-4B4A-8142-02E23EFBEFE9}"_guid},
  {3, "PAN_SPOT", "{A47941A5-802A-4566-8CF6-EFDE9C7E8C3D}"_guid},
  {7, "RGBSTD", "{723FDDF4-53D8-4BA6-AA30-35BFCC890692}"_guid},
  {8, "FOCTONE", "{30BE0259-8C63-4DE3-BEE3-A722A01E5F93}"_guid},
  {9, "DUPONT", "{1AB32094-7C1F-4EDB-A3BF-CC9621EEE409}"_guid},
  {10, "TOYO", "{DED1E45A-0CE1-4DDB-885B-5E1726507C7D}"_guid},
  {11, "DIC", "{5A45ECEF-49A7-4979-AE03-69EE817E0A0D}"_guid},
  {12, "PAN_HEX", "{E3DAFA5C-1E43-4853-90DC-8A9252946F64}"_guid},
  {13, "LABPAL", "{5E9EAC3D-2583-48EC-B58F-7FD738078375}"_guid},
  {16, "USERINKS", "{BC43E88E-8924-4B3B-8E77-E4950F05C850}"_guid},
  {17, "PANGUIDC", "{18C28107-FC82-46D1-91EB-5A1A77A503C1}"_guid},
  {18, "PANGUIDU", "{43215C2E-A992-44DD-B037-9ED3FF06B220}"_guid},
  {19, "PANMETV", "{FB85E902-4194-45A1-AD7D-BA74E78C02A3}"_guid},
  {20, "PANMETU", "{26A703A8-DDE7-4CD2-BE3C-5CA8A9EBB75A}"_guid},
  {21, "PANPASTC", "{43F3F153-6445-4D1E-998F-EF8DB815E914}"_guid},
  {22, "PANPASTU", "{B61BCD92-061A-4A7C-B426-9A1CD6091678}"_guid},
  {23, "HKS", "{8AC714BD-36EC-4D18-85BD-F117DEEF1702}"_guid},
  {24, "PAN_HEXU", "{B4AA703B-CF5D-4A91-AA3B-8AF4B7F62571}"_guid},
  {26, "HKS_K", "{43F08022-C9D9-46F5-B14B-53B0ACB15BD3}"_guid},
  {27, "HKS_N", "{7F5B91EA-2A7C-46CB-A09B-C873DAA9E57F}"_guid},
  {28, "HKS_Z", "{704AD09B-581F-4538-A6AA-9719F0B7DE17}"_guid},
  {29, "HKS_E", "{14FD2506-B415-4EBC-82F9-E7DCEB0C8B6C}"_guid},
  {30, "PANMETLC", "{1F7F8879-A39D-4787-A5B4-D67B1AC2A9B1}"_guid},
  {31, "PANPASC", "{BC88EEDF-FA1E-4C79-9469-FA9E6327118E}"_guid},
  {32, "PANPASU", "{02145DD0-786F-416C-8F1B-1AE267C6B50A}"_guid},
  {33, "PANHEXAC", "{13BD54EA-D584-4464-A192-CA2A9457A223}"_guid},
  {34, "PANHEXAU", "{5D99E896-8B12-45AA-9F4E-C84BDE9B9642}"_guid},
  {35, "PANTONEM", "{B6228543-D7C9-457F-93D8-8AABFF674DE7}"_guid},
  {36, "PANTONEC", "{31FF98FD-11DE-49C0-918D-584675C67540}"_guid},
  {37, "PANTONEU", "{7F912332-2DF8-4BF5-ACC6-AC8D63AD48BA}"_guid},
  {38, "PANEUROC", "{C4DD6B06-3D41-4406-9E56-70E91087FE4C}"_guid},
  {39, "PANS2PEC", "{4688F047-ADD0-40A1-ABFD-C9BB1C355EF3}"_guid},
  {40, "SVGCOLOR", "{9C124DB0-7163-4721-8A04-A409201A99B9}"_guid},
  {25, "WEBSAFE", "{C6CD3CB4-E8DA-4B3E-977E-9DBD2CF20872}"_guid},
  {5, "USER", Guid{}},
}};

// The one type that never had a palette identifier.
constexpr PaletteTypeRow kCustomFixed = {6, "CUSFIXED", Guid{}};

constexpr const PaletteTypeRow *LastRowOfType(unsigned type)
{
  const auto row = std::find_if(kRows.rbegin(), kRows.rend(), [&](const auto &r) { return r.type == type; });
  return row == kRows.rend() ? nullptr : &*row;
}

constexpr bool OneOf(unsigned type, std::initializer_list<unsigned> types)
{
  return std::find(types.begin(), types.end(), type) != types.end();
}

} // namespace

constinit const std::array<PaletteTypeRow, 40> kPaletteTypes = kRows;
constinit const Guid kPantonePaletteIdentifier = LastRowOfType(PaletteType::PantoneSpot)->identifier;

Guid PaletteIdentifierFromType(unsigned type)
{
  const PaletteTypeRow *row = LastRowOfType(type);
  return row ? row->identifier : Guid{};
}

std::uint16_t PaletteTypeFromIdentifier(const Guid &identifier)
{
  if (identifier.IsNull())
    return PaletteType::User; // the last row
  const auto row =
    std::find_if(kRows.rbegin(), kRows.rend(), [&](const auto &r) { return r.identifier == identifier; });
  return row == kRows.rend() ? std::uint16_t{PaletteType::User} : row->type;
}

std::string_view PaletteTypeName(unsigned type)
{
  const PaletteTypeRow *row = type == kCustomFixed.type ? &kCustomFixed : LastRowOfType(type);
  return row ? row->name : std::string_view();
}

std::optional<std::uint16_t> PaletteTypeFromName(std::string_view name)
{
  if (name == kCustomFixed.name)
    return kCustomFixed.type;
  const auto row = std::find_if(kRows.begin(), kRows.end(), [&](const auto &r) { return r.name == name; });
  return row == kRows.end() ? std::nullopt : std::optional(row->type);
}

bool IsSpotPaletteType(unsigned type)
{
  return OneOf(type, {3, 8, 9, 10, 11, 16, 17, 18, 20, 21, 22, 23, 26, 27, 28, 29, 30, 31, 32, 35, 36, 37});
}

bool IsPantoneHexachromePaletteType(unsigned type)
{
  return OneOf(type, {PaletteType::PantoneHexachrome, PaletteType::PantoneHexachromeUncoated,
                      PaletteType::PantoneHexachromeCoated2, PaletteType::PantoneHexachromeUncoated2});
}

} // namespace ZelClr
