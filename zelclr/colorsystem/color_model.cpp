#include "zelclr/colorsystem/color_model.h"

#include "zelclr/platform/icc_file.h"

#include <algorithm>
#include <array>

namespace ColorSystem {

namespace {

using ZelUtl::IccSignature;

struct ModelRow
{
  ColorModel model;
  std::string_view name;
  unsigned channels;
  std::uint32_t signature; ///< in the header of a profile; 0 when none
};

constexpr ModelRow kModels[] = {
  {ColorModel::Rgb, "Rgb", 3, IccSignature("RGB ")},
  {ColorModel::Cmyk, "Cmyk", 4, IccSignature("CMYK")},
  {ColorModel::Grayscale, "Grayscale", 1, IccSignature("GRAY")},
  {ColorModel::Lab, "Lab", 3, IccSignature("Lab ")},
  {ColorModel::Cmy, "Cmy", 3, IccSignature("CMY ")},
  {ColorModel::Hls, "Hls", 3, IccSignature("HLS ")},
  {ColorModel::Hsv, "Hsv", 3, IccSignature("HSV ")},
  {ColorModel::Hexachrome, "Hexachrome", 6, IccSignature("6CLR")},
  {ColorModel::Spot, "Spot", 1, 0},
  {ColorModel::Indexed, "Indexed", 1, 0},
  {ColorModel::Registration, "Registration", 1, 0},
};
constexpr auto kOtherSixChannels = IccSignature("MCH6");

constexpr std::string_view kIntents[] = {"Perceptual", "RelativeColorimetric", "Saturation", "AbsoluteColorimetric"};

template <class Field, class Value>
const ModelRow *FindRow(Field field, const Value &value)
{
  const auto *const row = std::find_if(std::begin(kModels), std::end(kModels),
                                       [&](const ModelRow &candidate) { return candidate.*field == value; });
  return row == std::end(kModels) ? nullptr : row;
}

std::optional<ColorModel> ModelOf(const ModelRow *row)
{
  return row == nullptr ? std::nullopt : std::optional(row->model);
}

} // namespace

std::string_view NameOfColorModel(ColorModel model)
{
  const ModelRow *const row = FindRow(&ModelRow::model, model);
  return row == nullptr ? std::string_view() : row->name;
}

std::optional<ColorModel> ColorModelFromName(std::string_view name)
{
  return ModelOf(FindRow(&ModelRow::name, name));
}

unsigned ChannelCountOfColorModel(ColorModel model, unsigned beyond)
{
  const ModelRow *const row = FindRow(&ModelRow::model, model);
  return row == nullptr ? beyond : row->channels;
}

std::optional<ColorModel> ColorModelFromIccSignature(std::uint32_t signature)
{
  if (signature == 0)
    return std::nullopt;
  return ModelOf(FindRow(&ModelRow::signature, signature == kOtherSixChannels ? IccSignature("6CLR") : signature));
}

std::string_view NameOfRenderingIntent(RenderingIntent intent)
{
  const auto number = static_cast<std::size_t>(intent);
  return number < std::size(kIntents) ? kIntents[number] : std::string_view();
}

std::optional<RenderingIntent> RenderingIntentFromName(std::string_view name)
{
  const auto *const found = std::find(std::begin(kIntents), std::end(kIntents), name);
  if (found == std::end(kIntents))
    return std::nullopt;
  return static_cast<RenderingIntent>(found - std::begin(kIntents));
}

} // namespace ColorSystem
