#include "zelclr/palettes/legacy_palette.h"

namespace ZelClr::LegacyPalette {

namespace {

constexpr std::uint16_t LowByte(std::uint16_t type)
{
  return type & 0xFF;
}

} // namespace

ZelUtils::Guid PaletteTypeToGuid(unsigned type)
{
  return PaletteIdentifierFromType(type);
}

std::uint16_t PaletteGuidToType(const ZelUtils::Guid &guid)
{
  return PaletteTypeFromIdentifier(guid);
}

std::uint16_t GetOriginPaletteType(std::uint16_t type)
{
  const std::uint16_t low = LowByte(type);
  const auto high = static_cast<std::uint16_t>(type >> 8);
  const bool mayCarry = low == PaletteType::UserInks || low == PaletteType::User;
  return mayCarry && high != 0 ? high : low;
}

bool IsLegacySpotPaletteType(unsigned type)
{
  return IsSpotPaletteType(type);
}

bool IsLegacyUserInksPaletteType(std::uint16_t type)
{
  return LowByte(type) == PaletteType::UserInks;
}

bool IsLegacyUserInks(const CLR_COLORSPEC &color)
{
  switch (color.GetType()) {
  case ClrModel::UserInks:
    return true;
  case ClrModel::IndexedUserInk:
    return false;
  default:
    return color.GetPaletteGuid() == PaletteTypeToGuid(PaletteType::UserInks);
  }
}

} // namespace ZelClr::LegacyPalette
