#include "zelclr/palettes/formats/internal/kpl_colours.h"

#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/palettes/formats/internal/binary_palette.h"
#include "zelclr/palettes/formats/internal/palette_text.h"
#include "zelclr/platform/text.h"

#include <algorithm>

namespace ZelClr {

namespace {

using Values = std::array<double, 4>;

/// How the components of an element are bounded and made a swatch.
struct ElementRow
{
  std::string_view element;
  std::string_view attributes[4];
  bool isUnbounded; ///< as floats
  Swatch (*swatch)(const Values &values, bool isFloat);
};

Swatch SwatchOfGray(const Values &v, bool)
{
  return v[0] >= 0.0 && v[0] <= 1.0 ? GraySwatch({}, v[0]) : RgbSwatch({}, v[0], v[0], v[0]);
}

/// a* or b* of a fraction of its range, and back.
double AbFromFraction(double fraction)
{
  return fraction <= 0.5 ? -128.0 + 256.0 * fraction : (fraction - 0.5) * 254.0;
}

double FractionFromAb(double ab)
{
  return ab <= 0.0 ? (ab + 128.0) / 256.0 : 0.5 + ab / 254.0;
}

Swatch SwatchOfLab(const Values &v, bool isFloat)
{
  return isFloat ? LabSwatch({}, std::clamp(v[0], 0.0, 100.0), v[1], v[2])
                 : LabSwatch({}, v[0] * 100.0, AbFromFraction(v[1]), AbFromFraction(v[2]));
}

/// Lab, or RGB for what is brighter than white.
Swatch SwatchOfXyz(const Values &v, bool isFloat)
{
  const double scale = isFloat ? 1.0 : 65535.0 / 32768.0;
  const Formulas::Xyz xyz = {v[0] * scale, v[1] * scale, v[2] * scale};
  const Formulas::Lab lab = Formulas::CieLabFromXyz(xyz);
  if (lab.l >= 0.0 && lab.l <= 100.0)
    return LabSwatch({}, lab.l, lab.a, lab.b);
  const auto encoded = [&](const double(&row)[3]) {
    return Formulas::SrgbFromLinear(Formulas::RowTimes(row, xyz.x, xyz.y, xyz.z));
  };
  return RgbSwatch({}, encoded(Formulas::kLinearSrgbFromXyz[0]), encoded(Formulas::kLinearSrgbFromXyz[1]),
                   encoded(Formulas::kLinearSrgbFromXyz[2]));
}

/// ITU-R BT.601 with the full range, as in JFIF 1.02:
///
///   R = Y + 1.402 Cr    G = Y - 0.344136 Cb - 0.714136 Cr    B = Y + 1.772 Cb,  Cb and Cr less one half
Swatch SwatchOfYCbCr(const Values &v, bool)
{
  const double cb = v[1] - 0.5;
  const double cr = v[2] - 0.5;
  const auto cut = [](double value) { return std::clamp(value, 0.0, 1.0); };
  return RgbSwatch({}, cut(v[0] + 1.402 * cr), cut(v[0] - 0.344136 * cb - 0.714136 * cr), cut(v[0] + 1.772 * cb));
}

Swatch SwatchOfRgb(const Values &v, bool)
{
  return RgbSwatch({}, v[0], v[1], v[2]);
}

Swatch SwatchOfCmyk(const Values &v, bool)
{
  return CmykSwatch({}, v[0], v[1], v[2], v[3]);
}

constexpr ElementRow kElements[] = {
  {"RGB", {"r", "g", "b"}, true, SwatchOfRgb},         {"sRGB", {"r", "g", "b"}, true, SwatchOfRgb},
  {"CMYK", {"c", "m", "y", "k"}, false, SwatchOfCmyk}, {"Gray", {"g"}, true, SwatchOfGray},
  {"Lab", {"L", "a", "b"}, true, SwatchOfLab},         {"XYZ", {"x", "y", "z"}, true, SwatchOfXyz},
  {"YCbCr", {"Y", "Cb", "Cr"}, false, SwatchOfYCbCr},
};

std::string Attribute(std::string_view name, double value)
{
  return " " + std::string(name) + "=\"" + ZelUtl::TextFromNumber(value) + "\"";
}

bool IsFraction(double value)
{
  return value >= 0.0 && value <= 1.0;
}

} // namespace

std::optional<Swatch> ReadKplColour(std::string_view element, std::span<const ZelUtl::XmlAttribute> attributes,
                                    std::string_view depth, std::string &reason)
{
  const bool isFloat = depth == "F16" || depth == "F32";
  if (!isFloat && depth != "U8" && depth != "U16" && !depth.empty()) {
    reason = "\"" + std::string(depth.substr(0, 40)) + "\" is no known bit depth";
    return std::nullopt;
  }
  const auto row =
    std::find_if(std::begin(kElements), std::end(kElements), [&](const ElementRow &r) { return r.element == element; });
  if (row == std::end(kElements)) {
    reason = "\"" + std::string(element.substr(0, 40)) + "\" is no known colour model";
    return std::nullopt;
  }
  Values values{};
  const bool isUnbounded = isFloat && row->isUnbounded;
  for (std::size_t i = 0; i < values.size() && !row->attributes[i].empty(); ++i) {
    const std::string_view *const text = FindAttribute(attributes, row->attributes[i]);
    const auto number = text == nullptr ? std::nullopt : ZelUtl::DoubleFromText(*text);
    const auto value = WithinRange(number.value_or(kMostKplFloat * 2.0), isUnbounded ? -kMostKplFloat : 0.0,
                                   isUnbounded ? kMostKplFloat : 1.0);
    if (!value) {
      reason = "the component " + std::string(row->attributes[i]) + " of " + std::string(element) +
               (number ? " is out of its range" : " is not there or no number");
      return std::nullopt;
    }
    values[i] = *value;
  }
  return row->swatch(values, isFloat);
}

KplColour KplColourOf(const Swatch &swatch)
{
  const Values &v = swatch.values;
  switch (swatch.model) {
  case SwatchModel::Cmyk:
    return {"<CMYK" + Attribute("c", v[0]) + Attribute("m", v[1]) + Attribute("y", v[2]) + Attribute("k", v[3]) +
              " space=\"\"/>",
            "U16"};
  case SwatchModel::Gray:
    return {"<Gray" + Attribute("g", v[0]) + " space=\"Gray-D50-elle-V2-srgbtrc.icc\"/>", "U16"};
  case SwatchModel::Lab:
    return {"<Lab" + Attribute("L", v[0] / 100.0) + Attribute("a", FractionFromAb(v[1])) +
              Attribute("b", FractionFromAb(v[2])) + " space=\"Lab identity built-in\"/>",
            "U16"};
  default:
    return {"<sRGB" + Attribute("r", v[0]) + Attribute("g", v[1]) + Attribute("b", v[2]) + "/>",
            std::all_of(v.begin(), v.begin() + 3, IsFraction) ? "U16" : "F32"};
  }
}

} // namespace ZelClr
