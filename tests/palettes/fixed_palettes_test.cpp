#include "zelclr/colour/palette_types.h"
#include "zelclr/palettes/fixed_palettes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

using namespace ZelClr;
using namespace ZelUtils::literals;

TEST(FixedPalettes, HaveOneIdentifierAndOnePathEach)
{
  std::set<ZelUtils::Guid> identifiers;
  std::set<std::string_view> paths;
  std::map<std::string_view, int> folders;
  for (const auto &[identifier, path] : FixedPalettes()) {
    EXPECT_FALSE(identifier.IsNull()) << path;
    EXPECT_TRUE(path.ends_with(".xml")) << path;
    EXPECT_TRUE(identifiers.insert(identifier).second) << path;
    EXPECT_TRUE(paths.insert(path).second) << path;
    ++folders[path.substr(0, std::max<std::size_t>(path.rfind('/'), 0) + 1)];
    EXPECT_EQ(FindFixedPalette(identifier), FindFixedPalette(path)) << path;
    ASSERT_TRUE(FindFixedPalette(identifier)) << path;
    EXPECT_EQ(FindFixedPalette(identifier)->path, path);
  }
  const std::map<std::string_view, int> expected = {
    {"", 2},
    {"Process/", 4},
    {"Process/CMYK/Misc/", 13},
    {"Process/CMYK/Nature/", 17},
    {"Process/CMYK/People/", 8},
    {"Process/CMYK/Things/", 11},
    {"Process/PANTONE/PANTONE+/", 4},
    {"Process/PANTONE/Previous Version/", 11},
    {"Process/RGB/", 1},
    {"Process/RGB/256 Colors/", 4},
    {"Process/RGB/Misc/", 14},
    {"Process/RGB/Nature/", 17},
    {"Process/RGB/People/", 8},
    {"Process/RGB/Things/", 11},
    {"Spot/", 4},
    {"Spot/HKS/", 5},
    {"Spot/ONYX Graphics/", 6},
    {"Spot/PANTONE/", 12},
    {"Spot/PANTONE/PANTONE+/", 6},
    {"Spot/PANTONE/Previous Version/", 12},
    {"Spot/Roland/", 3},
  };
  EXPECT_EQ(folders, expected);
  EXPECT_EQ(FixedPalettes().size(), 173u);
}

TEST(FixedPalettes, AreUnderTheIdentifierOfTheirType)
{
  const std::map<int, std::string> files = {
    {1, "trumatch"},  {2, "pantone"},   {3, "pantone8"},  {7, "rgbstd"},    {8, "focolton"},  {9, "dupont"},
    {10, "toyo"},     {11, "dic"},      {12, "panhexc"},  {17, "panguidc"}, {18, "panguidu"}, {20, "panmetlu"},
    {21, "panpastc"}, {22, "panpastu"}, {23, "hks"},      {24, "panhexu"},  {25, "WebSafe"},  {26, "HKS_K"},
    {27, "HKS_N"},    {28, "HKS_Z"},    {29, "HKS_E"},    {30, "panmetlc"}, {31, "panpasc"},  {32, "panpasu"},
    {33, "panhexac"}, {34, "panhexau"}, {35, "pantonem"}, {36, "pantonec"}, {37, "pantoneu"}, {38, "paneuroc"},
    {39, "pans2pec"}, {40, "SVGColor"},
  };
  std::map<int, std::string> found;
  for (const auto &[identifier, path] : FixedPalettes()) {
    if (const int type = PaletteTypeFromIdentifier(identifier); type != PaletteType::User) {
      const auto name = path.substr(path.rfind('/') + 1);
      found[type] = name.substr(0, name.size() - 4);
    }
  }
  EXPECT_EQ(found, files);
}

TEST(FixedPalettes, AreFoundByPathInAnyCaseAndWithEitherSlash)
{
  const auto *webSafe = FindFixedPalette("Process/RGB/WebSafe.xml");
  ASSERT_TRUE(webSafe);
  EXPECT_EQ(FindFixedPalette("process\\rgb/WEBSAFE.XML"), webSafe);
  for (const char *unknown : {"", "WebSafe.xml", "/Process/RGB/WebSafe.xml", "Process/RGB/WebSafe", "defrgb.xml"})
    EXPECT_FALSE(FindFixedPalette(unknown)) << unknown;
  EXPECT_FALSE(FindFixedPalette(ZelUtils::Guid{}));
  EXPECT_FALSE(FindFixedPalette("{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"_guid));
}

// Documents hold them.
TEST(FixedPalettes, KeepTheirIdentifiers)
{
  const struct
  {
    const char *path;
    ZelUtils::Guid identifier;
  } rows[] = {
    {"Gray100.xml", "{280EEAB2-2AA5-48F0-BF7F-9EC8B197FEF6}"_guid},
    {"dynamic.xml", "{10F1E00C-C047-4554-988E-C59EEDDC46BA}"_guid},
    {"Process/UniversalLaserSystems.xml", "{77B1B02D-FB04-4C60-B031-264D9EF38AC9}"_guid},
    {"Process/CMYK/Misc/cApples.xml", "{39C007B4-5928-4DE2-A82D-9C35F1565B1A}"_guid},
    {"Process/RGB/256 Colors/gray.xml", "{14354A65-343B-4DDF-873B-09706A658987}"_guid},
    {"Process/RGB/Misc/blkbody.xml", "{FBCE4D86-C613-414C-BEE9-EBEB7EED5302}"_guid},
    {"Process/RGB/Things/rWood.xml", "{B78FB1D9-E0E5-4FF3-B10F-1E4A94BA0128}"_guid},
    {"Spot/ONYX Graphics/Summa_Cutting.xml", "{2052D2E9-A463-4FF9-8E13-D5BB99FC020E}"_guid},
    {"Spot/PANTONE/PANTONE+/PantonePlusSolidCoated.xml", "{DD1222A8-9B8E-4122-AC7B-CC3D4C2F182C}"_guid},
  };
  for (const auto &[path, identifier] : rows) {
    ASSERT_TRUE(FindFixedPalette(path)) << path;
    EXPECT_EQ(FindFixedPalette(path)->identifier, identifier) << path;
  }
}
