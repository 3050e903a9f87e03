// The process bases of DeviceN spaces: their plates in printing order, and how their colours are stored.
//
// Threads: constant tables.
#pragma once

#include "zelclr/convert/w_clr_color_space_device_n.h"

#include <algorithm>
#include <array>
#include <span>

namespace ZelClr {

/// One plate of a base, and where its component stands in a record of the base's model.
struct BasePlate
{
  DeviceN_Plate_Type type;
  std::uint8_t offset;
};

struct DeviceNBase
{
  std::uint16_t model; ///< of the records that hold a colour of the base
  int full;            ///< of a component in that record: 100 or 255
  int divisor;         ///< of a plate's value: 100 or 255
  bool light;          ///< components are light, not ink: layers multiply
  std::string_view name;
  std::span<const BasePlate> plates;
};

inline constexpr BasePlate kCmykPlates[] = {
  {DeviceN_Plate_Cyan, 0}, {DeviceN_Plate_Magenta, 1}, {DeviceN_Plate_Yellow, 2}, {DeviceN_Plate_Black, 3}};
inline constexpr BasePlate kRgbPlates[] = {{DeviceN_Plate_Red, 2}, {DeviceN_Plate_Green, 1}, {DeviceN_Plate_Blue, 0}};
inline constexpr BasePlate kHexachromePlates[] = {{DeviceN_Plate_Cyan, 2},      {DeviceN_Plate_Magenta, 3},
                                                  {DeviceN_Plate_Yellow, 4},    {DeviceN_Plate_Black, 5},
                                                  {DeviceN_Plate_HexOrange, 6}, {DeviceN_Plate_HexGreen, 7}};

/// By process type.
inline constexpr std::array<DeviceNBase, 4> kDeviceNBases = {{
  {ClrModel::Invalid, 100, 100, false, "NONE", {}},
  {ClrModel::Rgb255, 255, 255, true, "RGB", kRgbPlates},
  {ClrModel::Cmyk100, 100, 100, false, "CMYK", kCmykPlates},
  {ClrModel::Hexachrome, 255, 100, false, "HEXA", kHexachromePlates},
}};

constexpr bool IsKnownBase(std::int32_t processType)
{
  return processType >= 0 && processType < 4;
}

/// The base of a process type; that of 0 for an unknown one.
constexpr const DeviceNBase &BaseOf(std::int32_t processType)
{
  return kDeviceNBases[IsKnownBase(processType) ? static_cast<std::size_t>(processType) : 0u];
}

constexpr bool IsPlateOf(const DeviceNBase &base, DeviceN_Plate_Type type)
{
  return std::any_of(base.plates.begin(), base.plates.end(), [&](const BasePlate &p) { return p.type == type; });
}

constexpr int DivisorOfPlate(DeviceN_Plate_Type type)
{
  return (type >= DeviceN_Plate_Red && type <= DeviceN_Plate_Blue) || type == DeviceN_Plate_SoftMask ? 255 : 100;
}

} // namespace ZelClr
