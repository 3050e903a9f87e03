#include "zelclr/palettes/generated_color_name.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>

namespace ZelClr {

namespace {

namespace Model = ClrModel;

constexpr double kPercentOfByte = 100.0 / 255.0;

/// Number = (text value of the component, as colour_models.h has it) * scale + offset.
struct Part
{
  char letter = 0;
  double scale = 1;
  double offset = 0;
};

struct Form
{
  std::uint16_t model;
  Part parts[6] = {}; // in the order of the model's components; those without a letter are not told
};

constexpr Part InkOfByte(char letter)
{
  return {letter, kPercentOfByte, 0};
}

constexpr Form kForms[] = {
  {Model::Cmyk, {{'C'}, {'M'}, {'Y'}, {'K'}}},
  {Model::Cmyk100, {{'C'}, {'M'}, {'Y'}, {'K'}}},
  {Model::Cmyk255, {InkOfByte('C'), InkOfByte('M'), InkOfByte('Y'), InkOfByte('K')}},
  {Model::Cmy255, {InkOfByte('C'), InkOfByte('M'), InkOfByte('Y')}},
  {Model::Rgb255, {{'R'}, {'G'}, {'B'}}},
  {Model::Rgba, {{'R'}, {'G'}, {'B'}}},
  {Model::Bgra, {{'R'}, {'G'}, {'B'}}},
  {Model::Rgb48, {{'R', 1 / 257.0}, {'G', 1 / 257.0}, {'B', 1 / 257.0}}},
  {Model::ScRgb, {{'R', 255}, {'G', 255}, {'B', 255}}},
  {Model::Hsb, {{'H'}, {'S'}, {'B'}}},
  {Model::Hls, {{'H'}, {'L'}, {'S'}}},
  {Model::Yiq255, {{'Y'}, {'I'}, {'Q'}}},
  {Model::Lab, {{'L'}, {'A'}, {'B'}}},
  {Model::Lab255, {{'L', kPercentOfByte}, {'A', 1, -128}, {'B', 1, -128}}},
  {Model::Xyz, {{'X'}, {'Y'}, {'Z'}}},
  {Model::Gray255, {{'K', -kPercentOfByte, 100}}},
  {Model::Gray16, {{'K', -100 / 65535.0, 100}}},
  {Model::BlackWhite, {{'K', -100, 100}}},
  {Model::UserInks, {{'R'}, {'G'}, {'B'}}},
  {Model::Hexachrome, {InkOfByte('C'), InkOfByte('M'), InkOfByte('Y'), InkOfByte('K'), InkOfByte('O'), InkOfByte('G')}},
};

std::string NumberText(double value)
{
  return std::to_string(std::lround(std::isnan(value) ? 0.0 : std::clamp(value, -1e6, 1e6)));
}

double TextValue(const CLR_COLORSPEC &color, const ColourComponent &component)
{
  return component.scale * WithComponentType(component.type, [&]<class T>(T) {
           return static_cast<double>(color.GetComponent<T>(component.offset));
         });
}

std::string TintText(const CLR_COLORSPEC &color)
{
  return color.GetDensity() < 100 ? " " + std::to_string(color.GetDensity()) + " %" : std::string();
}

} // namespace

std::wstring GeneratedColorName(const CLR_COLORSPEC &colour)
{
  const CLR_COLORSPEC &color = colour.Resolved();
  const unsigned model = color.GetType();
  const ColourModel *const row = FindColourModel(model);
  if (row == nullptr || model == Model::Invalid)
    return {};
  std::string text;
  const auto form = std::find_if(std::begin(kForms), std::end(kForms), [&](const Form &f) { return f.model == model; });
  if (form == std::end(kForms)) {
    text = ZelUtl::Utf8FromWide(color.GetSpotColorName());
    if (text.empty()) {
      text = row->spaceName;
      const bool hasNumber = !row->components.empty() && model != Model::Registration;
      text += hasNumber ? " " + NumberText(TextValue(color, row->components.front())) : std::string();
    }
    return ZelUtl::WideFromUtf8(text + TintText(color));
  }
  for (std::size_t i = 0; i < std::size(form->parts) && form->parts[i].letter != 0; ++i) {
    const Part &part = form->parts[i];
    text += text.empty() ? "" : " ";
    text += part.letter + NumberText(TextValue(color, row->components[i]) * part.scale + part.offset);
  }
  if (form->parts[1].letter == 0)
    text += " %";
  else if (model == Model::UserInks)
    text += TintText(color);
  return ZelUtl::WideFromUtf8(text);
}

} // namespace ZelClr
