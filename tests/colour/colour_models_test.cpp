#include "zelclr/colour/colour_models.h"

#include <gtest/gtest.h>

#include <map>

using namespace ZelClr;

namespace {

// Frozen: number, name, name in palette files.
const struct
{
  std::uint16_t number;
  std::string_view name;
  std::string_view spaceName;
} kModels[] = {{0, "CSINVALID", ""},
               {1, "PANTONE", "Pantone"},
               {2, "CMYK", "CMYK"},
               {3, "CMYK255", "CMYK"},
               {4, "CMY255", "CMY"},
               {5, "RGB255", "RGB"},
               {6, "HSB", "HSB"},
               {7, "HLS", "HLS"},
               {8, "BW", "BW"},
               {9, "GRAY255", "Gray"},
               {11, "YIQ255", "YIQ"},
               {12, "LAB", "LAB"},
               {13, "", "Indexed"},
               {14, "PANTONEHX", "PantoneHex"},
               {15, "HEXA", "Hexachrome"},
               {17, "CMYK100", "CMYK"},
               {18, "LAB255", "LAB"},
               {19, "", "XYZ"},
               {20, "REGCOLOR", "Registration"},
               {21, "USERINK", "UserInks"},
               {22, "IDXUSRINK", "IndexedUserInks"},
               {23, "RGB48", "RGB48"},
               {24, "GRAY16", "Gray16"},
               {25, "SPOT", "Spot"},
               {26, "DEVICEN", "DeviceN"},
               {27, "", "SCRGB"},
               {28, "", ""},
               {29, "RGBA", "RGBA"},
               {30, "BGRA", ""}};

TEST(ColourModels, NumbersAndNamesAreFrozen)
{
  ASSERT_EQ(ColourModels().size(), std::size(kModels));
  for (std::size_t i = 0; i < std::size(kModels); ++i) {
    const auto &row = kModels[i];
    EXPECT_EQ(ColourModels()[i].number, row.number);
    EXPECT_EQ(ModelName(row.number), row.name) << row.number;
    EXPECT_EQ(SpaceNameFromModel(row.number), row.spaceName) << row.number;
    EXPECT_EQ(ModelFromName(row.name), row.name.empty() ? 0 : row.number) << row.name;
  }
  for (const char *name : {"", "rgb255", "RGB", "RGB255 ", "XYZ", "SCRGB", "INDEX"})
    EXPECT_EQ(ModelFromName(name), 0) << name;
  for (const unsigned model : {10u, 16u, 31u, 1013u, 65535u, 65541u}) {
    EXPECT_EQ(FindColourModel(model), nullptr) << model;
    EXPECT_EQ(ModelName(model), "") << model;
    EXPECT_EQ(SpaceNameFromModel(model), "") << model;
  }
}

TEST(ColourModels, Kept_SpaceNamesAreNotTheInverse)
{
  const std::map<std::string_view, int> models = {{"CMYK", 3},          {"LAB", 12},      {"CMY", 4},
                                                  {"RGB", 5},           {"HksRGB", 5},    {"sRGB", 5},
                                                  {"AdobeRGB", 5},      {"RGB48", 23},    {"SCRGB", 27},
                                                  {"HSB", 6},           {"HLS", 7},       {"YIQ", 11},
                                                  {"XYZ", 19},          {"Pantone", 1},   {"PantoneHex", 14},
                                                  {"Hexachrome", 15},   {"Spot", 25},     {"BW", 8},
                                                  {"Gray", 9},          {"Gray16", 24},   {"Indexed", 13},
                                                  {"DeviceN", 26},      {"UserInks", 21}, {"IndexedUserInks", 22},
                                                  {"Registration", 20}, {"RGBA", 0},      {"", 0},
                                                  {"cmyk", 0},          {"BGRA", 0},      {"CMYK255", 0}};
  for (const auto &[name, model] : models)
    EXPECT_EQ(ModelFromSpaceName(name), model) << name;
}

TEST(ColourModels, ComponentsLieInTheirDataAndDoNotOverlap)
{
  for (const ColourModel &model : ColourModels()) {
    unsigned taken = 0;
    for (const ColourComponent &component : model.components) {
      const unsigned size = WithComponentType(component.type, [](auto number) { return unsigned{sizeof number}; });
      const unsigned bits = ((1u << size) - 1) << component.offset;
      EXPECT_EQ(taken & bits, 0u) << model.textName << " " << component.name;
      EXPECT_LE(component.offset + size, 12u) << model.textName << " " << component.name;
      taken |= bits;
    }
  }
}

} // namespace
