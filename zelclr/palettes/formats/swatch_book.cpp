#include "zelclr/palettes/formats/swatch_book.h"

#include "zelclr/convert/formulas/srgb_lab.h"
#include "zelclr/convert/w_clr_convert.h"
#include "zelclr/palettes/spot_color_definition.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cmath>

namespace ZelClr {

namespace {

/// 0 to 1 as a byte; a NaN is 0.
std::uint8_t ByteOf(double value)
{
  return value > 0.0 ? static_cast<std::uint8_t>(std::lround(std::min(value, 1.0) * 255.0)) : std::uint8_t{0};
}

Swatch MadeOf(std::string name, SwatchModel model, std::array<double, 4> values, CLR_COLORSPEC record)
{
  Swatch swatch;
  swatch.name = std::move(name);
  swatch.model = model;
  swatch.values = values;
  swatch.record = std::move(record);
  return swatch;
}

struct Numbers
{
  SwatchModel model = SwatchModel::Record;
  std::array<double, 4> values{};
};

Numbers RgbOf(double red, double green, double blue)
{
  return {SwatchModel::Rgb, {red, green, blue, 0.0}};
}

Numbers LabOf(const Formulas::Lab &lab)
{
  return {SwatchModel::Lab, {lab.l, lab.a, lab.b, 0.0}};
}

/// The numbers of a record that is no reference; SwatchModel::Record where it has none.
Numbers NumbersOf(const CLR_COLORSPEC &record)
{
  const std::uint8_t *const bytes = record.GetRAWColor();
  const auto inks = [bytes](double most) -> Numbers {
    const auto ink = [=](int i) { return std::min(bytes[i] / most, 1.0); };
    return {SwatchModel::Cmyk, {ink(0), ink(1), ink(2), ink(3)}};
  };
  const auto gray = [](double value) { return Numbers{SwatchModel::Gray, {value, 0.0, 0.0, 0.0}}; };
  const auto finite = [](float value) { return std::isfinite(value) ? value : 0.0; };
  switch (record.GetType()) {
  case ClrModel::Rgb255:
    return RgbOf(bytes[2] / 255.0, bytes[1] / 255.0, bytes[0] / 255.0);
  case ClrModel::Rgba:
    return RgbOf(bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0);
  case ClrModel::Bgra:
    return RgbOf(bytes[2] / 255.0, bytes[1] / 255.0, bytes[0] / 255.0);
  case ClrModel::Rgb48:
    return RgbOf(record.GetRed16() / 65535.0, record.GetGreen16() / 65535.0, record.GetBlue16() / 65535.0);
  case ClrModel::ScRgb:
    return RgbOf(finite(record.GetSCRed()), finite(record.GetSCGreen()), finite(record.GetSCBlue()));
  case ClrModel::Hsb:
  case ClrModel::Hls:
  case ClrModel::Yiq255: {
    CLR_COLORSPEC rgb;
    return WClrConvert::ConvertToBasicType(&rgb, ClrModel::Rgb48, &record) ? NumbersOf(rgb) : Numbers{};
  }
  case ClrModel::Cmyk:
  case ClrModel::Cmyk100:
    return inks(100.0);
  case ClrModel::Cmyk255:
    return inks(255.0);
  case ClrModel::Cmy255:
    return {SwatchModel::Cmyk, {bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0, 0.0}};
  case ClrModel::BlackWhite:
    return gray(record.GetBW() > 0 ? 1.0 : 0.0);
  case ClrModel::Gray255:
    return gray(bytes[0] / 255.0);
  case ClrModel::Gray16:
    return gray(record.GetComponent<std::uint16_t>(0) / 65535.0);
  case ClrModel::Lab:
    return LabOf(
      Formulas::LabFromRecord(bytes[0], static_cast<std::int8_t>(bytes[1]), static_cast<std::int8_t>(bytes[2])));
  case ClrModel::Lab255:
    return LabOf({bytes[0] / 2.55, bytes[1] - 128.0, bytes[2] - 128.0});
  case ClrModel::Xyz:
    return LabOf(Formulas::CieLabFromXyz({bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0}));
  case ClrModel::Spot: {
    CLR_COLORSPEC appearance;
    return record.GetSpotAppearance(ClrModel::Lab, appearance) ? NumbersOf(appearance.Resolved()) : Numbers{};
  }
  default:
    return {};
  }
}

} // namespace

Swatch RgbSwatch(std::string name, double red, double green, double blue)
{
  return MadeOf(std::move(name), SwatchModel::Rgb, {red, green, blue, 0.0},
                CLR_COLORSPEC::MakeRGB(ByteOf(red), ByteOf(green), ByteOf(blue)));
}

Swatch CmykSwatch(std::string name, double cyan, double magenta, double yellow, double black)
{
  return MadeOf(std::move(name), SwatchModel::Cmyk, {cyan, magenta, yellow, black},
                CLR_COLORSPEC::MakeCMYK255(ByteOf(cyan), ByteOf(magenta), ByteOf(yellow), ByteOf(black)));
}

Swatch GraySwatch(std::string name, double gray)
{
  return MadeOf(std::move(name), SwatchModel::Gray, {gray, 0.0, 0.0, 0.0}, CLR_COLORSPEC::MakeGRAY(ByteOf(gray)));
}

Swatch LabSwatch(std::string name, double l, double a, double b)
{
  return MadeOf(std::move(name), SwatchModel::Lab, {l, a, b, 0.0},
                CLR_COLORSPEC::MakeLAB255(ByteOf(l / 100.0), ByteOf((a + 128.0) / 255.0), ByteOf((b + 128.0) / 255.0)));
}

Swatch RecordSwatch(std::string name, const CLR_COLORSPEC &colour)
{
  CLR_COLORSPEC plain;
  plain.Copy(colour);
  const Numbers numbers = NumbersOf(plain);
  Swatch swatch = MadeOf(std::move(name), numbers.model, numbers.values, plain);
  swatch.spot = plain.IsSpot();
  if (swatch.spot)
    swatch.tint = std::min<unsigned>(plain.GetDensity(), 100) / 100.0;
  if (swatch.spot && swatch.name.empty())
    swatch.name = ZelUtl::Utf8FromWide(plain.GetSpotColorName());
  return swatch;
}

} // namespace ZelClr
