#include "zelclr/platform/text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>

using namespace ZelUtl;

namespace {

TEST(Text, Utf8AndWideTextComeBack)
{
  for (const char *text : {"", "abc", "Grün", "日本", "\U0001F3A8", "\xEF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(IsValidUtf8(text)) << text;
    EXPECT_EQ(Utf8FromWide(WideFromUtf8(text)), text);
  }
  EXPECT_EQ(WideFromUtf8(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
  EXPECT_EQ(WideFromUtf8("\U0001F3A8"), L"\U0001F3A8");
}

TEST(Text, MalformedUtf8BecomesReplacementCharacters)
{
  const struct
  {
    const char *bytes;
    const wchar_t *wide;
  } kRows[] = {
    {"a\x80z", L"a\uFFFDz"},         // a trail byte alone
    {"a\xFFz", L"a\uFFFDz"},         // no byte of UTF-8
    {"a\xC0\xAFz", L"a\uFFFDz"},     // overlong
    {"a\xED\xA0\x80z", L"a\uFFFDz"}, // a surrogate
    {"a\xF4\x90\x80\x80z", L"a\uFFFDz"},
    {"a\xE2\x82", L"a\uFFFD"}, // cut off
    {"a\xF0\x9F\x8E", L"a\uFFFD"},
    {"a\xE2zz", L"a\uFFFDzz"} // the next character is not swallowed
  };
  for (const auto &row : kRows) {
    EXPECT_EQ(WideFromUtf8(row.bytes), row.wide) << testing::PrintToString(row.bytes);
    EXPECT_FALSE(IsValidUtf8(row.bytes));
  }
}

RC_GTEST_PROP(Text, AnyBytesGiveValidText, (const std::string &bytes))
{
  RC_ASSERT(IsValidUtf8(Utf8FromWide(WideFromUtf8(bytes))));
}

TEST(Text, LoneSurrogatesAndImpossibleNumbersBecomeReplacementCharacters)
{
  for (const std::uint32_t codePoint : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
    if (sizeof(wchar_t) == 2 && codePoint > 0xFFFF)
      continue;
    EXPECT_EQ(Utf8FromWide(std::wstring{L'a', static_cast<wchar_t>(codePoint), L'z'}), "a\uFFFDz") << codePoint;
  }
}

TEST(Text, ReadsOnlyWholeNumbersInTheCLocale)
{
  EXPECT_EQ(DoubleFromText("-12.5e1"), -125.0);
  EXPECT_EQ(DoubleFromText("5e-324"), 5e-324);
  for (const char *text : {"", " 1", "1 ", "+1", "1,5", "0x10", "inf", "-inf", "nan", "1e999", "1e", ".", "--1"})
    EXPECT_FALSE(DoubleFromText(text)) << text;
  EXPECT_EQ(IntegerFromText<std::uint8_t>("255"), 255);
  EXPECT_EQ(IntegerFromText<std::int32_t>("-2147483648"), std::numeric_limits<std::int32_t>::min());
  for (const char *text : {"", "256", "-1", "+1", "1 ", "1.0"})
    EXPECT_FALSE(IntegerFromText<std::uint8_t>(text)) << text;
}

TEST(Text, NumbersAsText)
{
  EXPECT_EQ(TextFromNumber(0.1), "0.1");
  EXPECT_EQ(TextFromNumber(0.1f), "0.1");
  const struct
  {
    double number;
    int decimals;
    const char *text;
  } kRows[] = {{100, 2, "100"},   {53.3333, 2, "53.33"}, {-0.001, 2, "0"},   {-0.5, 0, "0"},
               {-1.5, 1, "-1.5"}, {0.25, 1, "0.2"},      {99.999, 2, "100"}, {2147483648.0, 2, "2147483648"}};
  for (const auto &row : kRows)
    EXPECT_EQ(TextFromNumber(row.number, row.decimals), row.text) << row.number << " with " << row.decimals;
  EXPECT_FALSE(TextFromNumber(-std::numeric_limits<double>::max(), 15).empty());
}

RC_GTEST_PROP(Text, EveryNumberComesBackFromItsText, (std::uint64_t bits))
{
  double number;
  std::memcpy(&number, &bits, sizeof number);
  RC_PRE(std::isfinite(number));
  RC_ASSERT(DoubleFromText(TextFromNumber(number)) == number);
}

TEST(Text, TheProcessesLocaleDoesNotMatter)
{
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char *name : {"de_DE.UTF-8", "tr_TR.UTF-8", "C.UTF-8"}) {
    if (!std::setlocale(LC_ALL, name))
      continue;
    EXPECT_EQ(TextFromNumber(1.5, 2), "1.5") << name;
    EXPECT_EQ(DoubleFromText("1.5"), 1.5) << name;
    EXPECT_EQ(LowerAscii("RGBI\xC4"), "rgbi\xC4") << name;
  }
  std::setlocale(LC_ALL, before.c_str());
}

} // namespace
