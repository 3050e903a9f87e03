// Records in the canonical model of their family, and as pixels.
#include "zelclr/colorsystem/internal/record_samples.h"
#include "zelclr/colorsystem/simple_color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/formulas/record_lab.h"
#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ColorSystem {

namespace {

namespace ClrModel = ZelClr::ClrModel;
namespace Formulas = ZelClr::Formulas;

double Rounded(double value, double least, double most)
{
  return std::clamp(std::floor(value + 0.5), least, most);
}

/// What LAB and XYZ mean, on the white of D50.
Formulas::Lab LabOf(const CLR_COLORSPEC &record)
{
  const auto byte = [&record](std::size_t i) { return record.GetComponent<std::uint8_t>(i); };
  if (record.GetType() == ClrModel::Lab)
    return Formulas::LabFromRecord(byte(0), static_cast<std::int8_t>(byte(1)), static_cast<std::int8_t>(byte(2)));
  return Formulas::CieLabFromXyz({byte(0) / 255.0, byte(1) / 255.0, byte(2) / 255.0});
}

CLR_COLORSPEC Lab255From(const Formulas::Lab &lab)
{
  const auto byte = [](double value) { return static_cast<std::uint8_t>(Rounded(value, 0.0, 255.0)); };
  return CLR_COLORSPEC::MakeLAB255(byte(lab.l * 2.55), byte(lab.a + 128.0), byte(lab.b + 128.0));
}

/// L* of 0 to 100, a* and b* of -128 to 127.
CLR_COLORSPEC LabFrom(const Formulas::Lab &lab)
{
  const auto byte = [](double value) {
    return static_cast<std::int8_t>(Rounded(value / Formulas::kLabAbPerByte, -127.0, 127.0));
  };
  CLR_COLORSPEC record;
  CLR_COLORSPEC::MakeLAB(record, static_cast<std::uint8_t>(Rounded(lab.l * 2.55, 0.0, 255.0)), byte(lab.a),
                         byte(lab.b));
  return record;
}

CLR_COLORSPEC XyzFrom(const Formulas::Xyz &xyz)
{
  const auto byte = [](double value) { return static_cast<std::uint8_t>(Rounded(value * 255.0, 0.0, 255.0)); };
  CLR_COLORSPEC record;
  CLR_COLORSPEC::MakeXYZ(record, byte(xyz.x), byte(xyz.y), byte(xyz.z));
  return record;
}

/// The same colour by the formulas of records.
bool ByFormula(const CLR_COLORSPEC &colour, unsigned type, CLR_COLORSPEC &result)
{
  CLR_COLORSPEC made;
  if (!WClrConvert::ConvertToBasicType(&made, type, &colour))
    return false;
  result = std::move(made);
  return true;
}

std::uint16_t Widened(std::uint8_t byte)
{
  return static_cast<std::uint16_t>(byte * 257);
}

std::uint8_t Narrowed(std::uint16_t word)
{
  return static_cast<std::uint8_t>((word + 128u) / 257u);
}

} // namespace

bool SimpleColorConverter::NormalizeColorSpec(const CLR_COLORSPEC &colour, CLR_COLORSPEC &normalized)
{
  const CLR_COLORSPEC &source = colour.Resolved();
  const unsigned type = source.GetType();
  switch (type) {
  case ClrModel::Lab:
  case ClrModel::Xyz:
    normalized = Lab255From(LabOf(source));
    return true;
  case ClrModel::Registration:
    return ByFormula(source, ClrModel::Cmyk255, normalized);
  case ClrModel::UserInks:
  case ClrModel::IndexedUserInk: {
    CLR_COLORSPEC process;
    return CLR_COLORSPEC::MakeProcessFromUserInks(source, process) && NormalizeColorSpec(process, normalized);
  }
  case ClrModel::DeviceN: {
    const unsigned base = GetNormalizedColorSpecType(source);
    return base != ClrModel::DeviceN && base != 0 && ByFormula(source, NormalizeColorType(base), normalized);
  }
  default:
    break;
  }
  const unsigned canonical = NormalizeColorType(type);
  if (canonical != type)
    return ByFormula(source, canonical, normalized);
  ColorModel model{};
  double fullScale = 0.0;
  if (!ColorTypeToColorModel(type, model, fullScale) || model == ColorModel::Spot)
    return false;
  normalized = CLR_COLORSPEC(source);
  return true;
}

bool SimpleColorConverter::NormalizeSpotColorSpecToProcess(const CLR_COLORSPEC &spot, ColorModel model,
                                                           CLR_COLORSPEC &process)
{
  unsigned type = 0;
  double fullScale = 0.0;
  CLR_COLORSPEC appearance;
  ColorModelToColorType(model, type, fullScale);
  if (!spot.Resolved().GetSpotAppearance(type, appearance))
    return false;
  WClrConvert::ApplyDensity(&appearance, spot.GetDensity());
  return NormalizeColorSpec(appearance, process);
}

bool SimpleColorConverter::DenormalizeColorSpec(const CLR_COLORSPEC &normalized, unsigned type, CLR_COLORSPEC &colour)
{
  Internal::RecordPixel pixel;
  CLR_COLORSPEC made;
  if (!Internal::PixelFromRecord(normalized.Resolved(), pixel) || !Internal::RecordFromPixel(pixel, type, 255, made))
    return false;
  colour = std::move(made);
  return true;
}

namespace Internal {

bool PixelFromRecord(const CLR_COLORSPEC &normalized, RecordPixel &pixel)
{
  const auto words = [&pixel](ColorModel model, std::initializer_list<std::uint16_t> samples) {
    pixel.model = model;
    std::memcpy(pixel.bytes.data(), samples.begin(), samples.size() * sizeof(std::uint16_t));
    return true;
  };
  const auto byte = [&normalized](std::size_t i) { return Widened(normalized.GetComponent<std::uint8_t>(i)); };
  const auto light = [&] {
    return words(ColorModel::Rgb,
                 {Widened(normalized.GetRed()), Widened(normalized.GetI255()), Widened(normalized.GetBlue())});
  };
  switch (normalized.GetType()) {
  case ClrModel::Cmyk255:
    return words(ColorModel::Cmyk, {byte(0), byte(1), byte(2), byte(3)});
  case ClrModel::Lab255:
    return words(ColorModel::Lab, {byte(0), byte(1), byte(2)});
  case ClrModel::Lab: // their own steps are finer than those of LAB255
  case ClrModel::Xyz: {
    const Formulas::Lab lab = LabOf(normalized);
    const auto word = [](double value) { return static_cast<std::uint16_t>(Rounded(value, 0.0, 65535.0)); };
    return words(ColorModel::Lab, {word(lab.l * 655.35), word((lab.a + 128.0) * 257.0), word((lab.b + 128.0) * 257.0)});
  }
  case ClrModel::Gray16:
    return words(ColorModel::Grayscale, {normalized.GetComponent<std::uint16_t>(0)});
  case ClrModel::Rgb255:
    return light();
  case ClrModel::Rgba: {
    CLR_COLORSPEC rgb;
    WClrConvert::ConvertRGBAToRGB(&rgb, &normalized);
    return words(ColorModel::Rgb, {Widened(rgb.GetRed()), Widened(rgb.GetI255()), Widened(rgb.GetBlue())});
  }
  case ClrModel::Rgb48: {
    const auto components = ZelClr::FindColourModel(ClrModel::Rgb48)->components;
    const auto word = [&](std::size_t i) { return normalized.GetComponent<std::uint16_t>(components[i].offset); };
    return words(ColorModel::Rgb, {word(0), word(1), word(2)});
  }
  case ClrModel::Hexachrome: {
    const auto components = ZelClr::FindColourModel(ClrModel::Hexachrome)->components;
    pixel.model = ColorModel::Hexachrome;
    for (std::size_t i = 0; i < 6; ++i)
      pixel.bytes[i] = normalized.GetComponent<std::uint8_t>(components[i].offset);
    return true;
  }
  default:
    return false;
  }
}

bool RecordFromPixel(const RecordPixel &pixel, unsigned type, std::uint8_t alpha, CLR_COLORSPEC &record)
{
  std::array<std::uint16_t, 6> words;
  std::memcpy(words.data(), pixel.bytes.data(), sizeof words);
  const auto byte = [&words](std::size_t i) { return Narrowed(words[i]); };
  const auto percent = [&words](std::size_t i) {
    return static_cast<std::uint8_t>((words[i] * 100u + 32767u) / 65535u);
  };
  const auto lab = [&words] {
    return Formulas::Lab{words[0] / 655.35, words[1] / 257.0 - 128.0, words[2] / 257.0 - 128.0};
  };
  switch (pixel.model) {
  case ColorModel::Cmyk:
    switch (type) {
    case ClrModel::Cmyk:
      record = CLR_COLORSPEC::MakeCMYK(percent(0), percent(1), percent(2), percent(3));
      return true;
    case ClrModel::Cmyk100:
      record = CLR_COLORSPEC::MakeCMYK100(percent(0), percent(1), percent(2), percent(3));
      return true;
    default:
      record = CLR_COLORSPEC::MakeCMYK255(byte(0), byte(1), byte(2), byte(3));
      return type == ClrModel::Cmyk255 || (type == ClrModel::Cmy255 && ByFormula(record, type, record));
    }
  case ColorModel::Rgb: {
    if (type == ClrModel::Rgba)
      CLR_COLORSPEC::MakeRGBA(record, byte(0), byte(1), byte(2), alpha);
    else if (type == ClrModel::Bgra)
      CLR_COLORSPEC::MakeBGRA(record, byte(0), byte(1), byte(2), alpha);
    else if (type == ClrModel::Rgb48 || type == ClrModel::Yiq255 || type == ClrModel::ScRgb)
      record = CLR_COLORSPEC::MakeRGB48(words[0], words[1], words[2]);
    else
      record = CLR_COLORSPEC::MakeRGB(byte(0), byte(1), byte(2));
    return record.GetType() == type || (SimpleColorConverter::NormalizeColorType(type) ==
                                          SimpleColorConverter::NormalizeColorType(record.GetType()) &&
                                        ByFormula(record, type, record));
  }
  case ColorModel::Grayscale:
    record = type == ClrModel::Gray255 ? CLR_COLORSPEC::MakeGRAY(byte(0)) : CLR_COLORSPEC::MakeGRAY16(words[0]);
    return record.GetType() == type || (type == ClrModel::BlackWhite && ByFormula(record, type, record));
  case ColorModel::Lab:
    switch (type) {
    case ClrModel::Lab255:
      record = CLR_COLORSPEC::MakeLAB255(byte(0), byte(1), byte(2));
      return true;
    case ClrModel::Lab:
      record = LabFrom(lab());
      return true;
    case ClrModel::Xyz:
      record = XyzFrom(Formulas::XyzFromCieLab(lab()));
      return true;
    default:
      return false;
    }
  case ColorModel::Hexachrome:
    record = CLR_COLORSPEC::MakeHEX(pixel.bytes[0], pixel.bytes[1], pixel.bytes[2], pixel.bytes[3], pixel.bytes[4],
                                    pixel.bytes[5]);
    return type == ClrModel::Hexachrome;
  default:
    return false;
  }
}

} // namespace Internal

} // namespace ColorSystem
