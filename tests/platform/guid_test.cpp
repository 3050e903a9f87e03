#include "zelclr/platform/guid.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using ZelUtils::Guid;

namespace {

constexpr std::string_view kText = "{0AF3491B-0EC0-0F94-4D60-F38448BBB5F2}";

TEST(Guid, TextStatesTheNumbersInTheOrderOfTheSystemsStructure)
{
  const auto guid = Guid::FromText(kText);
  ASSERT_TRUE(guid);
  const std::array<std::uint8_t, 16> bytes = {0x1B, 0x49, 0xF3, 0x0A, 0xC0, 0x0E, 0x94, 0x0F,
                                              0x4D, 0x60, 0xF3, 0x84, 0x48, 0xBB, 0xB5, 0xF2};
  EXPECT_EQ(guid->bytes, bytes);
  EXPECT_EQ(guid->ToText(), kText);
  EXPECT_EQ(Guid::FromText(std::string_view("{0af3491b-0ec0-0f94-4d60-f38448bbb5f2}")), guid);
  EXPECT_EQ(Guid::FromText(guid->ToWideText()), guid);
}

RC_GTEST_PROP(Guid, EveryIdentifierComesBackFromItsText, (const std::array<std::uint8_t, 16> &bytes))
{
  const Guid guid{bytes};
  RC_ASSERT(Guid::FromText(guid.ToText()) == guid);
  RC_ASSERT(Guid::FromText(guid.ToWideText()) == guid);
  RC_ASSERT(guid.IsNull() == (guid == Guid{}));
}

TEST(Guid, RefusesEveryDamagedText)
{
  for (std::size_t length = 0; length < kText.size(); ++length)
    EXPECT_FALSE(Guid::FromText(kText.substr(0, length))) << length;
  EXPECT_FALSE(Guid::FromText(std::string(kText) + " "));
  // One wrong character in every place, also one that a careless test of digits would take.
  for (std::size_t i = 0; i < kText.size(); ++i) {
    for (const char wrong : {'G', 'g', ' ', '-', '{', '}', '/', ':', '@', '`', '\0', '\xC4'}) {
      std::string text(kText);
      if (text[i] == wrong)
        continue;
      text[i] = wrong;
      EXPECT_FALSE(Guid::FromText(text)) << text;
    }
  }
  std::wstring wide = Guid{}.ToWideText();
  wide[1] = static_cast<wchar_t>(L'0' + 256);
  EXPECT_FALSE(Guid::FromText(wide)) << "a wide character whose low byte is a digit";
}

TEST(Guid, ComparesByteByByte)
{
  Guid low;
  Guid high;
  low.bytes[15] = 255;
  high.bytes[0] = 1;
  EXPECT_LT(low, high);
}

} // namespace
