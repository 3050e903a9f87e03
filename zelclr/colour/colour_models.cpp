#include "zelclr/colour/colour_models.h"

#include <algorithm>

namespace ZelClr {

namespace {

using enum ComponentType;

constexpr double kPercent = 100.0 / 255.0; // of a byte
constexpr double kLabAb = 60.0 / 127.0;    // of a signed byte

constexpr ColourComponent kPantone[] = {{"number", 0, U16}, {"density", 2, U16}};
constexpr ColourComponent kCmyk[] = {{"cyan", 0}, {"magenta", 1}, {"yellow", 2}, {"black", 3}};
constexpr ColourComponent kCmy[] = {{"cyan", 0}, {"magenta", 1}, {"yellow", 2}};
constexpr ColourComponent kRgb[] = {{"red", 2}, {"green", 1}, {"blue", 0}};
constexpr ColourComponent kHsb[] = {{"hue", 0, I16}, {"saturation", 2, U8, kPercent}, {"brightness", 3, U8, kPercent}};
constexpr ColourComponent kHls[] = {{"hue", 0, I16}, {"lightness", 2, U8, kPercent}, {"saturation", 3, U8, kPercent}};
constexpr ColourComponent kBlackWhite[] = {{"white", 0, I32}};
constexpr ColourComponent kGray255[] = {{"gray", 0}};
constexpr ColourComponent kYiq[] = {{"Y", 0}, {"I", 1}, {"Q", 2}};
constexpr ColourComponent kLab[] = {{"L", 0, U8, kPercent}, {"a", 1, I8, kLabAb}, {"b", 2, I8, kLabAb}};
constexpr ColourComponent kIndex[] = {{"index", 0, U16}};
constexpr ColourComponent kHexachrome[] = {{"cyan", 2},   {"magenta", 3}, {"yellow", 4}, {"black", 5},
                                           {"orange", 6}, {"green", 7},   {"density", 0}};
constexpr ColourComponent kLab255[] = {{"L", 0}, {"a", 1}, {"b", 2}};
constexpr ColourComponent kXyz[] = {{"X", 0}, {"Y", 1}, {"Z", 2}};
constexpr ColourComponent kRegistration[] = {{"cyan", 0}, {"magenta", 1}, {"yellow", 2}, {"black", 3}, {"density", 4}};
constexpr ColourComponent kUserInks[] = {{"red", 2}, {"green", 1}, {"blue", 0}, {"density", 3}};
constexpr ColourComponent kIndexedUserInk[] = {{"ink", 0, I16}, {"density", 2}};
constexpr ColourComponent kRgb48[] = {{"red", 6, U16}, {"green", 4, U16}, {"blue", 2, U16}, {"density", 0, U16}};
constexpr ColourComponent kGray16[] = {{"gray", 0, U16}};
constexpr ColourComponent kSpot[] = {{"number", 0, I16}, {"density", 2, U16}};
constexpr ColourComponent kScRgb[] = {{"red", 0, F32}, {"green", 4, F32}, {"blue", 8, F32}};
constexpr ColourComponent kRgba[] = {{"red", 0}, {"green", 1}, {"blue", 2}, {"alpha", 3}};
constexpr ColourComponent kBgra[] = {{"red", 2}, {"green", 1}, {"blue", 0}, {"alpha", 3}};

constexpr ColourModel kModels[] = {
  {0, "CSINVALID", "", "CSINVALID", {}},
  {1, "PANTONE", "Pantone", "PANTONE", kPantone},
  {2, "CMYK", "CMYK", "CMYK", kCmyk},
  {3, "CMYK255", "CMYK", "CMYK255", kCmyk},
  {4, "CMY255", "CMY", "CMY255", kCmy},
  {5, "RGB255", "RGB", "RGB255", kRgb},
  {6, "HSB", "HSB", "HSB", kHsb},
  {7, "HLS", "HLS", "HLS", kHls},
  {8, "BW", "BW", "BW", kBlackWhite},
  {9, "GRAY255", "Gray", "GRAY255", kGray255},
  {11, "YIQ255", "YIQ", "YIQ255", kYiq},
  {12, "LAB", "LAB", "LAB", kLab},
  {13, "", "Indexed", "INDEX", kIndex},
  {14, "PANTONEHX", "PantoneHex", "PANTONEHX", kPantone},
  {15, "HEXA", "Hexachrome", "HEXA", kHexachrome},
  {17, "CMYK100", "CMYK", "CMYK100", kCmyk},
  {18, "LAB255", "LAB", "LAB255", kLab255},
  {19, "", "XYZ", "XYZ255", kXyz},
  {20, "REGCOLOR", "Registration", "REGCOLOR", kRegistration},
  {21, "USERINK", "UserInks", "USERINK", kUserInks},
  {22, "IDXUSRINK", "IndexedUserInks", "IDXUSRINK", kIndexedUserInk},
  {23, "RGB48", "RGB48", "RGB48", kRgb48},
  {24, "GRAY16", "Gray16", "GRAY16", kGray16},
  {25, "SPOT", "Spot", "SPOT", kSpot},
  {26, "DEVICEN", "DeviceN", "DEVICEN", {}},
  {27, "", "SCRGB", "SCRGB", kScRgb},
  {28, "", "", "", {}},
  {29, "RGBA", "RGBA", "RGBA", kRgba},
  {30, "BGRA", "", "BGRA", kBgra},
};

struct NamedModel
{
  std::string_view name;
  std::uint16_t model;
};

// What palette files may say, and the model that it is read as.
constexpr NamedModel kModelsOfSpaceNames[] = {
  {"CMYK", ClrModel::Cmyk255},
  {"LAB", ClrModel::Lab},
  {"CMY", ClrModel::Cmy255},
  {"RGB", ClrModel::Rgb255},
  {"HksRGB", ClrModel::Rgb255},
  {"sRGB", ClrModel::Rgb255},
  {"AdobeRGB", ClrModel::Rgb255},
  {"RGB48", ClrModel::Rgb48},
  {"SCRGB", ClrModel::ScRgb},
  {"HSB", ClrModel::Hsb},
  {"HLS", ClrModel::Hls},
  {"YIQ", ClrModel::Yiq255},
  {"XYZ", ClrModel::Xyz},
  {"Pantone", ClrModel::Pantone},
  {"PantoneHex", ClrModel::PantoneHex},
  {"Hexachrome", ClrModel::Hexachrome},
  {"Spot", ClrModel::Spot},
  {"BW", ClrModel::BlackWhite},
  {"Gray", ClrModel::Gray255},
  {"Gray16", ClrModel::Gray16},
  {"Indexed", ClrModel::Index},
  {"DeviceN", ClrModel::DeviceN},
  {"UserInks", ClrModel::UserInks},
  {"IndexedUserInks", ClrModel::IndexedUserInk},
  {"Registration", ClrModel::Registration},
};

} // namespace

std::span<const ColourModel> ColourModels()
{
  return kModels;
}

const ColourModel *FindColourModel(unsigned model)
{
  const auto row =
    std::find_if(std::begin(kModels), std::end(kModels), [&](const auto &m) { return m.number == model; });
  return row == std::end(kModels) ? nullptr : row;
}

std::string_view ModelName(unsigned model)
{
  const ColourModel *row = FindColourModel(model);
  return row ? row->name : std::string_view();
}

std::uint16_t ModelFromName(std::string_view name)
{
  const auto row = std::find_if(std::begin(kModels), std::end(kModels),
                                [&](const auto &m) { return !m.name.empty() && m.name == name; });
  return row == std::end(kModels) ? std::uint16_t{ClrModel::Invalid} : row->number;
}

std::string_view SpaceNameFromModel(unsigned model)
{
  const ColourModel *row = FindColourModel(model);
  return row ? row->spaceName : std::string_view();
}

std::uint16_t ModelFromSpaceName(std::string_view name)
{
  const auto row = std::find_if(std::begin(kModelsOfSpaceNames), std::end(kModelsOfSpaceNames),
                                [&](const auto &m) { return m.name == name; });
  return row == std::end(kModelsOfSpaceNames) ? std::uint16_t{ClrModel::Invalid} : row->model;
}

} // namespace ZelClr
