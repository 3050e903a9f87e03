// The models of a colour record: their numbers, their names in both directions, and where each component stands.
//
// Threads: constant tables. Errors: an unknown number has an empty name, an unknown name is model 0.
#pragma once

#include "zelclr/platform/export.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace ZelClr {

/// Model numbers. Frozen: documents hold them. 10 and 16 were never assigned.
namespace ClrModel {
enum : std::uint16_t
{
  Invalid = 0,
  Pantone = 1,
  Cmyk = 2,
  Cmyk255 = 3,
  Cmy255 = 4,
  Rgb255 = 5,
  Hsb = 6,
  Hls = 7,
  BlackWhite = 8,
  Gray255 = 9,
  Yiq255 = 11,
  Lab = 12,
  Index = 13,
  PantoneHex = 14,
  Hexachrome = 15,
  Cmyk100 = 17,
  Lab255 = 18,
  Xyz = 19,
  Registration = 20,
  UserInks = 21,
  IndexedUserInk = 22,
  Rgb48 = 23,
  Gray16 = 24,
  Spot = 25,
  DeviceN = 26,
  ScRgb = 27,
  Reference = 28,
  Rgba = 29,
  Bgra = 30,
  Last = 30,
};
}

enum class ComponentType : std::uint8_t
{
  U8,
  I8,
  U16,
  I16,
  I32,
  F32
};

/// Calls `use(T{})` with the number type.
template <class Use>
auto WithComponentType(ComponentType type, Use use)
{
  switch (type) {
  case ComponentType::U8:
    return use(std::uint8_t{});
  case ComponentType::I8:
    return use(std::int8_t{});
  case ComponentType::U16:
    return use(std::uint16_t{});
  case ComponentType::I16:
    return use(std::int16_t{});
  case ComponentType::I32:
    return use(std::int32_t{});
  case ComponentType::F32:
    break;
  }
  return use(float{});
}

/// One component of a model: where it stands in the record and what a stored unit means.
struct ColourComponent
{
  std::string_view name;
  std::uint8_t offset = 0; ///< byte position in the component data; numbers are stored as the processor stores them
  ComponentType type = ComponentType::U8;
  /// Text value = stored value * scale: 1 for stored units, 100/255 where the text form states a percentage.
  double scale = 1;
};

/// One row of the table of models.
struct ColourModel
{
  std::uint16_t number = 0;
  std::string_view name;                       ///< "CMYK255"; empty for the four models that files never named
  std::string_view spaceName;                  ///< "CMYK": the name in palette files; empty where they have none
  std::string_view textName;                   ///< the name in the text form: `name`, or one in its style; empty for 28
  std::span<const ColourComponent> components; ///< in the order in which people state them
};

/// Every assigned model, in ascending order of number.
ZELCLR_API std::span<const ColourModel> ColourModels();
/// The row of a model, null for an unassigned number.
ZELCLR_API const ColourModel *FindColourModel(unsigned model);

/// "CMYK255" for 3; empty for an unassigned number and for the models without a name.
ZELCLR_API std::string_view ModelName(unsigned model);
/// 3 for "CMYK255"; 0 for a name that no model has. Exact, upper case.
ZELCLR_API std::uint16_t ModelFromName(std::string_view name);

/// The name of a model in palette files: "CMYK" for 2, 3 and 17; empty where they have none.
ZELCLR_API std::string_view SpaceNameFromModel(unsigned model);
/// The model that a name in a palette file stands for, 0 when none.
///
/// KEPT: "CMYK" gives 3 and "LAB" 12, whichever model wrote the name, and "RGBA" gives 0, where one would expect the
/// inverse of SpaceNameFromModel; palette files depend on it.
ZELCLR_API std::uint16_t ModelFromSpaceName(std::string_view name);

} // namespace ZelClr
