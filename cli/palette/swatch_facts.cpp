#include "cli/palette/swatch_facts.h"

#include "zelclr/colour/colour_models.h"
#include "zelclr/colour/colour_text.h"
#include "zelclr/convert/formulas/colour_difference.h"
#include "zelclr/platform/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace cli {

using ZelClr::Swatch;
using ZelClr::SwatchModel;

namespace {

/// One row for each model of swatches with numbers, in their order.
struct ModelRow
{
  const char *name;
  std::size_t channels;
  double people; ///< full scale of the numbers that people read; 1 where they read them as they are
  double steps;  ///< of one unit, in which colours are told apart
};
constexpr ModelRow kModels[] = {
  {"RGB", 3, 255.0, 65535.0}, {"CMYK", 4, 100.0, 65535.0}, {"Gray", 1, 100.0, 65535.0}, {"Lab", 3, 1.0, 100.0}};

/// Null for a colour that only its record states.
const ModelRow *RowOf(const Swatch &swatch)
{
  return swatch.model == SwatchModel::Record ? nullptr : &kModels[static_cast<std::size_t>(swatch.model)];
}

std::uint8_t ByteOf(double value)
{
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255.0));
}

/// The number's step, in text. Steps end beside their middles, where whole percents in 16 bits lie.
std::string StepOf(double value, double steps)
{
  constexpr double kMost = 1e9; // beyond every colour
  constexpr double kBesideMiddle = 0.51;
  const double step = std::floor(std::isfinite(value) ? value * steps + kBesideMiddle : 0.0);
  return std::to_string(static_cast<std::int64_t>(std::clamp(step, -kMost, kMost)));
}

} // namespace

CLR_COLORSPEC ScreenOf(const Swatch &swatch)
{
  if (!ZelClr::HasAppearance(swatch))
    return {};
  const auto rgb = ZelClr::RgbOfSwatch(swatch);
  return CLR_COLORSPEC::MakeRGB(ByteOf(rgb[0]), ByteOf(rgb[1]), ByteOf(rgb[2]));
}

std::optional<ZelClr::Formulas::Lab> LabOf(const Swatch &swatch)
{
  if (!ZelClr::HasAppearance(swatch))
    return std::nullopt;
  const auto lab = ZelClr::LabOfSwatch(swatch);
  return ZelClr::Formulas::Lab{lab[0], lab[1], lab[2]};
}

std::optional<double> DifferenceOf(const Swatch &a, const Swatch &b)
{
  const auto labA = LabOf(a);
  const auto labB = LabOf(b);
  return labA && labB ? std::optional(ZelClr::Formulas::Ciede2000(*labA, *labB)) : std::nullopt;
}

std::string ModelInWords(const Swatch &swatch)
{
  if (const ModelRow *const row = RowOf(swatch))
    return row->name;
  const ZelClr::ColourModel *const model = ZelClr::FindColourModel(swatch.record.GetType());
  return model == nullptr ? "unknown" : std::string(model->textName);
}

std::string ValueInWords(const Swatch &swatch)
{
  const ModelRow *const row = RowOf(swatch);
  if (row == nullptr) {
    const std::string text = swatch.spot ? std::string() : ZelClr::TextFromColorSpec(swatch.record);
    return text.empty() ? ModelInWords(swatch) : text;
  }
  const double steps = row->people > 100.0 ? 1.0 : 10.0; // of a unit; nobody speaks of tenths of 255
  std::string text = row->name;
  for (std::size_t i = 0; i < row->channels; ++i) {
    const double rounded = std::round(swatch.values[i] * row->people * steps) / steps;
    text += " " + ZelUtl::TextFromNumber(rounded == 0.0 ? 0.0 : rounded, 1); // never "-0"
  }
  return text;
}

std::string NameInWords(const Swatch &swatch)
{
  return swatch.name.empty() ? ValueInWords(swatch) : Harmless(swatch.name);
}

std::string InkInWords(const Swatch &swatch)
{
  if (!swatch.spot)
    return {};
  return swatch.tint == 1.0 ? "spot" : "spot, " + ZelUtl::TextFromNumber(swatch.tint * 100.0, 1) + " %";
}

std::string ScreenInWords(const CLR_COLORSPEC &screen)
{
  return screen.IsInvalid() ? "no known look" : HexFromColorSpec(screen);
}

Json JsonOfSwatch(const Swatch &swatch)
{
  Json values = Json::array();
  if (const ModelRow *const row = RowOf(swatch)) {
    for (std::size_t i = 0; i < row->channels; ++i)
      values.push_back(swatch.values[i]);
  }
  const CLR_COLORSPEC screen = ScreenOf(swatch);
  return {{"name", swatch.name},
          {"model", ModelInWords(swatch)},
          {"values", values},
          {"record", ZelClr::TextFromColorSpec(swatch.record)},
          {"screen", screen.IsInvalid() ? Json() : Json(HexFromColorSpec(screen))},
          {"spot", swatch.spot},
          {"tint", swatch.tint}};
}

std::string ColourKey(const Swatch &swatch)
{
  const ModelRow *const row = RowOf(swatch);
  std::string key = row == nullptr ? ZelClr::TextFromColorSpec(swatch.record) : row->name;
  for (std::size_t i = 0; row != nullptr && i < row->channels; ++i)
    key += ' ' + StepOf(swatch.values[i], row->steps);
  return swatch.spot ? key + " spot " + StepOf(swatch.tint, 1000.0) : key;
}

std::string Counted(std::size_t count, const std::string &what)
{
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace cli
