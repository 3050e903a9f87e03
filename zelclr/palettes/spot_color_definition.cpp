#include "zelclr/palettes/spot_color_definition.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <utility>

namespace Model = ZelClr::ClrModel;

namespace {

constexpr std::wstring_view kSeparator = L" : ";

/// What the content string says of a model. Frozen.
struct ContentRow
{
  std::uint16_t model;
  std::wstring_view name;
  std::size_t channels;                // at
  std::array<std::uint8_t, 4> offsets; // of
  ZelClr::ComponentType first, others;
};

using enum ZelClr::ComponentType;

constexpr ContentRow kContentRows[] = {
  {Model::Cmyk, L"CMYK", 4, {0, 1, 2, 3}, U8, U8},    {Model::Cmyk255, L"CMYK", 4, {0, 1, 2, 3}, U8, U8},
  {Model::Rgb255, L"RGB", 3, {0, 1, 2}, U8, U8},      {Model::Lab, L"LAB", 3, {0, 1, 2}, U8, I8},
  {Model::Cmyk100, L"CMYK", 4, {0, 1, 2, 3}, U8, U8}, {Model::Lab255, L"LAB", 3, {0, 1, 2}, U8, U8},
  {Model::UserInks, L"", 3, {0, 1, 2}, U8, U8},       {Model::Rgb48, L"", 3, {2, 4, 6}, U16, U16},
  {Model::ScRgb, L"", 3, {0, 4, 8}, F32, F32},
};

const ContentRow *FindContentRow(unsigned model)
{
  const auto row =
    std::find_if(std::begin(kContentRows), std::end(kContentRows), [&](const auto &r) { return r.model == model; });
  return row == std::end(kContentRows) ? nullptr : row;
}

void AppendNumber(std::wstring &text, float number)
{
  const std::string digits = ZelUtl::TextFromNumber(number);
  text.append(digits.begin(), digits.end());
}

void AppendNumber(std::wstring &text, int number)
{
  std::array<char, 12> digits;
  text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

void AppendValues(std::wstring &text, const CLR_COLORSPEC &color)
{
  const ContentRow *const row = FindContentRow(color.GetType());
  for (std::size_t i = 0; row && i < row->channels; ++i) {
    if (i > 0)
      text += L' ';
    ZelClr::WithComponentType(i == 0 ? row->first : row->others,
                              [&]<class T>(T) { AppendNumber(text, color.GetComponent<T>(row->offsets[i])); });
  }
}

} // namespace

SpotColorDefinition::SpotColorDefinition(std::wstring colorName, std::wstring colorSpaceName,
                                         const CLR_COLORSPEC &appearance)
  : SpotColorDefinition(std::move(colorName), std::move(colorSpaceName),
                        Alternatives{{appearance.GetType(), appearance}})
{}

SpotColorDefinition::SpotColorDefinition(std::wstring colorName, std::wstring colorSpaceName, Alternatives alternatives)
  : colorName_(std::move(colorName)),
    colorSpaceName_(std::move(colorSpaceName)),
    alternatives_(std::move(alternatives))
{
  GenerateContentString();
}

void SpotColorDefinition::SetColorName(std::wstring name)
{
  colorName_ = std::move(name);
  GenerateContentString();
}

void SpotColorDefinition::SetColorSpaceName(std::wstring name)
{
  colorSpaceName_ = std::move(name);
  GenerateContentString();
}

void SpotColorDefinition::SetAlternativeColors(Alternatives alternatives)
{
  alternatives_ = std::move(alternatives);
  GenerateContentString();
}

std::wstring SpotColorDefinition::GenerateColorSpaceName(const std::wstring &name, const Alternatives &alternatives)
{
  std::wstring text = name;
  for (const auto &[model, color] : alternatives) {
    if (model == Model::Invalid)
      continue;
    text += kSeparator;
    AppendValues(text, color);
  }
  return text;
}

std::wstring SpotColorDefinition::ColorSpecValuesToString(const CLR_COLORSPEC &color)
{
  std::wstring text;
  AppendValues(text, color);
  return text;
}

void SpotColorDefinition::GenerateContentString()
{
  contentString_ = colorName_;
  contentString_ += kSeparator;
  contentString_ += colorSpaceName_;
  for (const auto &[model, color] : alternatives_) {
    const ContentRow *const row = FindContentRow(model);
    contentString_ += kSeparator;
    contentString_ += row ? row->name : std::wstring_view();
    contentString_ += kSeparator;
    AppendValues(contentString_, color);
  }
}
