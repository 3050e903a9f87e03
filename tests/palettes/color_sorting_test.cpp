#include "tests/support/colours.h"
#include "zelclr/palettes/color_sorting.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

using Colour = CLR_COLORSPEC;
using namespace ZelClr;

namespace {

const ColorSystem::ColorContext kFormulas(nullptr, nullptr, nullptr, ColorSystem::ColorModel::Rgb,
                                          ColorSystem::RenderingIntent::RelativeColorimetric);
constexpr ColorComparator *kComparators[] = {CompareColorHue, CompareColorSaturation, CompareColorBrightness,
                                             CompareColorHSB, CompareColorRGB};

} // namespace

TEST(ColorSorting, OrdersByWhatEachOrderIsCalled)
{
  // Red, dark red, pink, green, blue, black, white, mid gray, a gray that is a little warm.
  const std::vector<Colour> colors = {
    Colour::MakeRGB(255, 0, 0),     Colour::MakeRGB(100, 0, 0),     Colour::MakeRGB(255, 128, 128),
    Colour::MakeRGB(0, 255, 0),     Colour::MakeRGB(0, 0, 255),     Colour::MakeRGB(0, 0, 0),
    Colour::MakeRGB(255, 255, 255), Colour::MakeRGB(128, 128, 128), Colour::MakeRGB(66, 64, 62)};
  using Order = std::vector<std::size_t>;
  const Order orders[] = {{5, 8, 7, 6, 2, 1, 0, 3, 4},  // hue: grays by brightness, then reds from pale to full
                          {5, 7, 6, 8, 2, 1, 0, 3, 4},  // saturation
                          {5, 8, 1, 7, 6, 2, 0, 3, 4},  // brightness
                          {5, 7, 6, 2, 1, 0, 8, 3, 4},  // HSB: the warm gray has a hue of 30 degrees
                          {5, 4, 3, 8, 1, 7, 0, 2, 6}}; // RGB
  for (int type = SortHue; type <= SortRGB; ++type)
    EXPECT_EQ(OrderOfColors(colors, type, kFormulas), orders[type]) << type;
  for (const int type : {-1, 5, 7, 1 << 30})
    EXPECT_TRUE(OrderOfColors(colors, type, kFormulas).empty());
}

TEST(ColorSorting, ColoursOfAllKindsAreEachThereOnceAndThoseWithoutALookAreLast)
{
  const auto colors = tests::NastyColours();
  for (int type = SortHue; type <= SortRGB; ++type) {
    auto order = OrderOfColors(colors, type, kFormulas);
    const auto last = order;
    // An invalid colour has no look: no colour that has one stands behind it.
    const auto firstInvalid =
      std::find_if(last.begin(), last.end(), [&](std::size_t i) { return colors[i].IsInvalid(); });
    EXPECT_TRUE(
      std::none_of(firstInvalid, last.end(), [&](std::size_t i) { return colors[i].GetType() == ClrModel::Rgb255; }));
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i < colors.size(); ++i)
      ASSERT_EQ(order.at(i), i) << type;
  }
}

RC_GTEST_PROP(ColorSortingProperty, ComparatorsAreTotalOrders, ())
{
  // Few values, so that ties and near ties are common.
  const auto level = rc::gen::element(0.0, 0.01, 0.03, 0.5, 0.504, 1.0);
  const auto colors =
    *rc::gen::container<std::vector<ComparedColor>>(8, rc::gen::apply(ComparedFromRgb, level, level, level));
  for (ColorComparator *const isBefore : kComparators) {
    for (const auto &a : colors) {
      RC_ASSERT(a.hue >= 0.0 && a.hue < 360.0 && a.saturation <= 1.0);
      RC_ASSERT(!isBefore(a, a));
      for (const auto &b : colors) {
        RC_ASSERT(!(isBefore(a, b) && isBefore(b, a)));
        for (const auto &c : colors) {
          RC_ASSERT(!(isBefore(a, b) && isBefore(b, c)) || isBefore(a, c));
          const auto isSame = [isBefore](const auto &x, const auto &y) { return !isBefore(x, y) && !isBefore(y, x); };
          RC_ASSERT(!(isSame(a, b) && isSame(b, c)) || isSame(a, c));
        }
      }
    }
  }
}

TEST(ColorSorting, EqualColoursStayAsTheyStood)
{
  const std::vector<Colour> colors(50, Colour::MakeRGB(1, 2, 3));
  for (int type = SortHue; type <= SortRGB; ++type) {
    const auto order = OrderOfColors(colors, type, kFormulas);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  }
}

TEST(ColorSorting, NamesAreInTheOrderOfPeople)
{
  const std::vector<std::wstring> sorted = {L"",       L" 2",      L"2",        L"10",     L"Gray",    L"Gray 09",
                                            L"gray 9", L"Gray 10", L"Gray 10a", L"Grün 1", L"Grün 12", L"Z"};
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    for (std::size_t j = 0; j < sorted.size(); ++j)
      EXPECT_EQ(CompareColorName(sorted[i], sorted[j]), i < j) << i << " " << j;
  }
  std::vector<std::wstring> names(sorted.rbegin(), sorted.rend());
  const std::vector<Colour> colors(names.size());
  const auto order = OrderOfNames(names, colors);
  for (std::size_t i = 0; i < order.size(); ++i)
    EXPECT_EQ(names[order[i]], sorted[i]);
}
