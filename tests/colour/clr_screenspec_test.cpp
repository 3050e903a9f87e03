// Halftone screens: their order and their XML.
#include "zelclr/colour/clr_screenspec.h"

#include <gtest/gtest.h>

#include <limits>

using Screen = CLR_SCREENSPEC;
using ZelUtl::WXmlDoc;

namespace {

Screen Make(std::int16_t spot, std::int32_t overprint, std::int32_t angle, std::uint16_t frequency, std::uint16_t user)
{
  Screen screen;
  screen.spot = spot;
  screen.overprint = overprint;
  screen.angle = angle;
  screen.frequency = frequency;
  screen.userFunction = user;
  return screen;
}

WXmlDoc Document(const std::string &text)
{
  std::string reason;
  return WXmlDoc::FromBytes(text, reason).value();
}

TEST(ScreenSpec, OrdersByItsFieldsAsNumbers)
{
  const Screen ascending[] = {
    Make(-1, 9, 9, 9, 9),           Make(0, -2, 9, 9, 9),       Make(0, 1, -5, 9, 9),
    Make(0, 1, 45000000, 8, 9),     Make(0, 1, 45000000, 9, 8), Make(0, 1, 45000000, 9, 65535),
    Make(0, 1, 45000000, 65535, 0), Make(256, 0, 0, 0, 0),
  };
  for (std::size_t i = 0; i < std::size(ascending); ++i) {
    for (std::size_t j = 0; j < std::size(ascending); ++j) {
      EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
      EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << " " << j;
      EXPECT_EQ(ascending[i].CompareTo(ascending[j], false), i < j ? -1 : i > j ? 1 : 0) << i << " " << j;
    }
  }
}

TEST(ScreenSpec, Kept_OverprintComparesByDifference)
{
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min(), kMost = -1 - kLeast;
  EXPECT_EQ(Make(5, 7, 1, 2, 3).CompareTo(Make(9, 2, 0, 0, 0), true), 5);
  EXPECT_EQ(Make(5, 1, 1, 2, 3).CompareTo(Make(9, 1, 0, 0, 0), true), 0);
  EXPECT_EQ(Make(0, kMost, 0, 0, 0).CompareTo(Make(0, -1, 0, 0, 0), true), kMost);
  EXPECT_EQ(Make(0, kLeast, 0, 0, 0).CompareTo(Make(0, 1, 0, 0, 0), true), kLeast);
}

TEST(ScreenSpec, Kept_IsSavedInTheParentAndLoadedFromTheElement)
{
  WXmlDoc document = Document("<plate><ScreenSpec Other=\"kept\" Spot=\"3\"/></plate>");
  const Screen saved = Make(-32768, 7, -45000000, 65535, 12);
  ASSERT_TRUE(saved.SaveScreenSpecIn(document.Root()));
  EXPECT_EQ(document.Bytes(), Document("<plate><ScreenSpec Other=\"kept\" Spot=\"-32768\" Overprint=\"true\" "
                                       "Angle=\"-45000000\" Freq=\"65535\" UserFn=\"12\"/></plate>")
                                .Bytes());
  Screen loaded;
  ASSERT_TRUE(loaded.LoadScreenSpecFrom(document.Root().FirstChild()));
  EXPECT_EQ(loaded, Make(-32768, 1, -45000000, 65535, 12)) << "a flag comes back as 1";

  loaded = saved;
  EXPECT_FALSE(loaded.LoadScreenSpecFrom(document.Root()));
  Screen initial = saved;
  initial.Init();
  EXPECT_EQ(loaded, initial);
  EXPECT_EQ(initial, Make(0, 0, 45000000, 60, 0));

  WXmlDoc empty = Document("<plate/>");
  ASSERT_TRUE(initial.SaveScreenSpecIn(empty.Root()));
  EXPECT_EQ(empty.Root().FirstChild("ScreenSpec").Attribute("Angle"), L"45000000");
  EXPECT_EQ(empty.Root().FirstChild("ScreenSpec").Attribute("Overprint"), L"false");
  EXPECT_FALSE(initial.SaveScreenSpecIn({}));
  EXPECT_FALSE(loaded.LoadScreenSpecFrom({}));
}

TEST(ScreenSpec, KeepsDefaultsForWhatIsMissingEmptyOrCannotBe)
{
  const struct
  {
    const char *attributes;
    Screen expected;
  } rows[] = {
    {"", Make(0, 0, 45000000, 60, 0)},
    {"Spot=\"\" Overprint=\"\" Angle=\"\" Freq=\"\" UserFn=\"\"", Make(0, 0, 45000000, 60, 0)},
    {"Spot=\"9\" UserFn=\"8\"", Make(9, 0, 45000000, 60, 8)},
    {"Overprint=\"1\" Angle=\" -1 \"", Make(0, 1, -1, 60, 0)},
    {"Overprint=\"yes\" Angle=\"45.5\" Freq=\"85\"", Make(0, 0, 45000000, 85, 0)},
    {"Spot=\"32768\" Angle=\"2147483648\" Freq=\"-1\" UserFn=\"65536\"", Make(0, 0, 45000000, 60, 0)},
  };
  for (const auto &row : rows) {
    Screen screen = Make(1, 1, 1, 1, 1);
    EXPECT_TRUE(screen.LoadScreenSpecFrom(Document("<ScreenSpec " + std::string(row.attributes) + "/>").Root()));
    EXPECT_EQ(screen, row.expected) << row.attributes;
  }
}

} // namespace
