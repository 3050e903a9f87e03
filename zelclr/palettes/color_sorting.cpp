#include "zelclr/palettes/color_sorting.h"

#include "zelclr/palettes/internal/managed_values.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace ZelClr {

namespace {

constexpr double kGraySpread = 0.03;

/// By sort type. Frozen with PalSortType.
constexpr ColorComparator *kComparators[] = {CompareColorHue, CompareColorSaturation, CompareColorBrightness,
                                             CompareColorHSB, CompareColorRGB};

bool IsDigit(wchar_t character)
{
  return character >= L'0' && character <= L'9';
}

/// The digits at the front without leading zeros, taken out of the text.
std::wstring_view TakeNumber(std::wstring_view &text)
{
  const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
  std::wstring_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
  text.remove_prefix(digits.size());
  digits.remove_prefix(std::min(digits.find_first_not_of(L'0'), digits.size()));
  return digits;
}

/// Negative, zero or positive, of names in folded case.
int CompareNatural(std::wstring_view first, std::wstring_view second)
{
  while (!first.empty() && !second.empty()) {
    if (IsDigit(first.front()) && IsDigit(second.front())) {
      const auto a = TakeNumber(first);
      const auto b = TakeNumber(second);
      if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
      if (const int order = a.compare(b); order != 0)
        return order;
      continue;
    }
    if (first.front() != second.front())
      return first.front() < second.front() ? -1 : 1;
    first.remove_prefix(1);
    second.remove_prefix(1);
  }
  return static_cast<int>(second.empty()) - static_cast<int>(first.empty());
}

template <class IsBefore>
std::vector<std::size_t> StableOrder(std::size_t count, IsBefore isBefore)
{
  std::vector<std::size_t> order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), isBefore);
  return order;
}

} // namespace

ComparedColor ComparedFromRgb(double red, double green, double blue)
{
  const double most = std::max({red, green, blue});
  const double spread = most - std::min({red, green, blue});
  ComparedColor color{red, green, blue, 0, 0, most};
  if (spread <= 0)
    return color;
  color.saturation = spread / most;
  const double sixth = most == red     ? (green - blue) / spread
                       : most == green ? 2.0 + (blue - red) / spread
                                       : 4.0 + (red - green) / spread;
  color.hue = 60.0 * (sixth < 0 ? sixth + 6.0 : sixth);
  if (color.hue >= 360.0) // a tiny negative number was rounded up
    color.hue = 0;
  return color;
}

bool IsGray(const ComparedColor &color)
{
  return color.saturation * color.brightness <= kGraySpread;
}

bool CompareColorHue(const ComparedColor &first, const ComparedColor &second)
{
  const bool firstIsGray = IsGray(first);
  if (firstIsGray != IsGray(second))
    return firstIsGray;
  const auto key = [firstIsGray](const ComparedColor &c) {
    return firstIsGray ? std::tuple(c.brightness, c.hue, c.saturation) : std::tuple(c.hue, c.saturation, c.brightness);
  };
  return key(first) < key(second);
}

bool CompareColorSaturation(const ComparedColor &first, const ComparedColor &second)
{
  return std::tie(first.saturation, first.hue, first.brightness) <
         std::tie(second.saturation, second.hue, second.brightness);
}

bool CompareColorBrightness(const ComparedColor &first, const ComparedColor &second)
{
  return std::tie(first.brightness, first.saturation, first.hue) <
         std::tie(second.brightness, second.saturation, second.hue);
}

bool CompareColorHSB(const ComparedColor &first, const ComparedColor &second)
{
  const auto key = [](const ComparedColor &c) {
    const long hue = std::lround(c.hue);
    return std::tuple(hue == 360 ? 0 : hue, std::lround(c.saturation * 100.0), std::lround(c.brightness * 100.0));
  };
  return key(first) < key(second);
}

bool CompareColorRGB(const ComparedColor &first, const ComparedColor &second)
{
  return std::tie(first.red, first.green, first.blue) < std::tie(second.red, second.green, second.blue);
}

bool CompareColorName(std::wstring_view first, std::wstring_view second)
{
  const int order = CompareNatural(ZelUtl::FoldedCase(std::wstring(first)), ZelUtl::FoldedCase(std::wstring(second)));
  return order != 0 ? order < 0 : first < second;
}

bool CompareColorFrequencyOrder(int first, int second)
{
  return first < second;
}

std::vector<std::size_t> OrderOfColors(std::span<const CLR_COLORSPEC> colors, int sortType,
                                       const ColorSystem::ColorContext &context)
{
  if (sortType < 0 || static_cast<std::size_t>(sortType) >= std::size(kComparators))
    return {};
  std::vector<std::optional<ComparedColor>> compared(colors.size());
  const auto rgb = RgbOfColors(colors, ColorSystem::ColorConverter(context, context));
  for (std::size_t i = 0; i < colors.size(); ++i) {
    if (rgb[i])
      compared[i] = ComparedFromRgb((*rgb[i])[0], (*rgb[i])[1], (*rgb[i])[2]);
  }
  ColorComparator *const isBefore = kComparators[sortType];
  return StableOrder(colors.size(), [&](std::size_t a, std::size_t b) {
    if (!compared[a] || !compared[b])
      return compared[a].has_value() && !compared[b].has_value();
    if (isBefore(*compared[a], *compared[b]))
      return true;
    return !isBefore(*compared[b], *compared[a]) && colors[a] < colors[b];
  });
}

std::vector<std::size_t> OrderOfNames(std::span<const std::wstring> names, std::span<const CLR_COLORSPEC> colors)
{
  std::vector<std::wstring> folded;
  folded.reserve(names.size());
  for (const std::wstring &name : names)
    folded.push_back(ZelUtl::FoldedCase(name));
  return StableOrder(names.size(), [&](std::size_t a, std::size_t b) {
    if (const int order = CompareNatural(folded[a], folded[b]); order != 0)
      return order < 0;
    return std::tie(names[a], colors[a]) < std::tie(names[b], colors[b]);
  });
}

} // namespace ZelClr
