#include "zelclr/colour/colour_text.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ZelClr {

namespace {

using ZelUtils::Guid;

/// Enough that neighbouring stored values have different texts: the smallest step is 100 / 255.
constexpr int kDecimals = 2;

bool IsPaletteInk(unsigned model)
{
  return model == ClrModel::Pantone || model == ClrModel::PantoneHex || model == ClrModel::Spot ||
         model == ClrModel::IndexedUserInk;
}

/// Whether the last component is a density that may be left out where it is 100.
bool HasOptionalDensity(const ColourModel &model)
{
  return model.number == ClrModel::Hexachrome || model.number == ClrModel::Registration ||
         model.number == ClrModel::Rgb48;
}

std::string ComponentText(const CLR_COLORSPEC &colour, const ColourComponent &component)
{
  return WithComponentType(component.type, [&](auto type) {
    const auto value = colour.GetComponent<decltype(type)>(component.offset);
    if constexpr (std::is_floating_point_v<decltype(type)>)
      return ZelUtl::TextFromNumber(value);
    else
      return ZelUtl::TextFromNumber(value * component.scale, kDecimals);
  });
}

bool IsFinite(const CLR_COLORSPEC &colour, const ColourModel &model)
{
  return std::all_of(model.components.begin(), model.components.end(), [&](const ColourComponent &component) {
    return component.type != ComponentType::F32 || std::isfinite(colour.GetComponent<float>(component.offset));
  });
}

bool StoreComponent(CLR_COLORSPEC &colour, const ColourComponent &component, double text)
{
  return WithComponentType(component.type, [&](auto type) {
    using T = decltype(type);
    if constexpr (std::is_floating_point_v<T>) {
      const auto value = static_cast<T>(text);
      if (!std::isfinite(value))
        return false;
      colour.SetComponent(component.offset, value);
    } else {
      constexpr double kSlack = 1e-6; // of the division; far below any unit
      const double exact = text / component.scale;
      if (exact < std::numeric_limits<T>::min() - kSlack || exact > std::numeric_limits<T>::max() + kSlack)
        return false;
      const double value = std::round(exact);
      // A whole unit must be stated as one: 12.5 of 255 is a slip, 12.5 % is not.
      if (component.scale == 1 && value != text)
        return false;
      colour.SetComponent(component.offset, static_cast<T>(value));
    }
    return true;
  });
}

std::vector<std::string_view> SplitAtCommas(std::string_view text)
{
  std::vector<std::string_view> parts;
  if (ZelUtl::Trimmed(text).empty())
    return parts;
  for (;;) {
    const auto comma = text.find(',');
    parts.push_back(ZelUtl::Trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos)
      return parts;
    text.remove_prefix(comma + 1);
  }
}

/// Thrown and caught in this file: the reading of a text has many places to fail and one to report.
struct BadText
{
  std::string reason;
};

std::string Quoted(std::string_view text)
{
  constexpr std::size_t kEnough = 40;
  std::string quoted = "\"";
  quoted += text.substr(0, kEnough);
  return quoted += text.size() > kEnough ? "...\"" : "\"";
}

const ColourModel &ModelFromTextName(std::string_view name)
{
  const std::string lower = ZelUtl::LowerAscii(name);
  for (const ColourModel &model : ColourModels()) {
    if (!model.textName.empty() && ZelUtl::LowerAscii(model.textName) == lower && model.number != ClrModel::DeviceN)
      return model;
  }
  throw BadText{Quoted(name) + " is no colour model"};
}

Guid PaletteFromText(std::string_view text)
{
  const auto palette = text.starts_with('@') ? Guid::FromText(text.substr(1)) : std::nullopt;
  if (!palette)
    throw BadText{Quoted(text) + " is no palette identifier of the form @{00000000-0000-0000-0000-000000000000}"};
  return *palette;
}

CLR_COLORSPEC ParseHex(std::string_view text)
{
  const auto number = text.size() == 7 ? ZelUtl::IntegerFromText<std::uint32_t>(text.substr(1), 16) : std::nullopt;
  if (!number)
    throw BadText{Quoted(text) + " is not # and six hexadecimal digits"};
  return CLR_COLORSPEC::MakeRGB(static_cast<std::uint8_t>(*number >> 16), static_cast<std::uint8_t>(*number >> 8),
                                static_cast<std::uint8_t>(*number));
}

CLR_COLORSPEC Parse(std::string_view text)
{
  if (text.starts_with('#'))
    return ParseHex(text);
  const auto open = text.find('(');
  const auto close = text.find(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open)
    throw BadText{Quoted(text) + " is neither #rrggbb nor a model with its components in parentheses"};

  const ColourModel &model = ModelFromTextName(ZelUtl::Trimmed(text.substr(0, open)));
  auto parts = SplitAtCommas(text.substr(open + 1, close - open - 1));
  const std::string_view rest = text.substr(close + 1);

  Guid palette;
  if (IsPaletteInk(model.number)) {
    palette = PaletteFromText(rest);
  } else if (!rest.empty()) {
    throw BadText{Quoted(rest) + " follows the closing parenthesis"};
  } else if (!parts.empty() && parts.back().starts_with('@')) {
    palette = PaletteFromText(parts.back());
    parts.pop_back();
    // An identifier that says nothing is not written, so that every colour has one text.
    if (palette.IsNull())
      throw BadText{"an all-zero palette identifier is left out"};
  }

  auto components = model.components;
  const bool withoutDensity = HasOptionalDensity(model) && parts.size() + 1 == components.size();
  if (parts.size() != components.size() && !withoutDensity) {
    throw BadText{std::string(model.textName) + " has " + std::to_string(components.size()) + " components, not " +
                  std::to_string(parts.size())};
  }

  CLR_COLORSPEC colour;
  colour.SetType(model.number);
  colour.SetPaletteGuid(palette);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto number = ZelUtl::DoubleFromText(parts[i]);
    if (!number)
      throw BadText{std::string(components[i].name) + " " + Quoted(parts[i]) + " is not a number"};
    if (!StoreComponent(colour, components[i], *number))
      throw BadText{std::string(components[i].name) + " " + std::string(parts[i]) + " does not fit " +
                    std::string(model.textName)};
  }
  if (withoutDensity)
    StoreComponent(colour, components.back(), 100);
  return colour;
}

} // namespace

std::string TextFromColorSpec(const CLR_COLORSPEC &colour)
{
  const ColourModel *model = FindColourModel(colour.GetType());
  if (!model || model->number == ClrModel::DeviceN || !IsFinite(colour, *model))
    return {};
  auto components = model->components;
  if (HasOptionalDensity(*model) && ComponentText(colour, components.back()) == "100")
    components = components.first(components.size() - 1);

  std::string text(model->textName);
  char separator = '(';
  const auto append = [&](const std::string &part) {
    text += separator;
    text += part;
    separator = ',';
  };
  for (const ColourComponent &component : components)
    append(ComponentText(colour, component));
  const Guid &palette = colour.GetPaletteGuid();
  if (!IsPaletteInk(model->number) && !palette.IsNull())
    append(std::string("@").append(palette.ToText()));
  if (separator == '(')
    text += separator;
  text += ')';
  if (IsPaletteInk(model->number))
    text.append("@").append(palette.ToText());
  return text;
}

std::optional<CLR_COLORSPEC> ColorSpecFromText(std::string_view text, std::string *reason)
{
  try {
    return Parse(text);
  } catch (const BadText &bad) {
    if (reason)
      *reason = bad.reason;
    return std::nullopt;
  }
}

} // namespace ZelClr
