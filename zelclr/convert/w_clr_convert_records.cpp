// The record converters: check the source's model, compute, make the target.

#include "zelclr/colour/scaling.h"
#include "zelclr/convert/w_clr_convert.h"

#include <cmath>

namespace Model = ZelClr::ClrModel;
using namespace ZelClr;
using Colour = CLR_COLORSPEC;

namespace {

constexpr std::uint8_t Byte(int value)
{
  return static_cast<std::uint8_t>(value);
}
constexpr std::uint16_t Word(int value)
{
  return static_cast<std::uint16_t>(value);
}
constexpr std::int16_t Hue(int value)
{
  return static_cast<std::int16_t>(value);
}

/// The components of a source as numbers; read before the destination is written, for both may be one record.
struct Components
{
  explicit Components(const Colour &colour) : bytes_(colour.GetRAWColor()) {}

  int U8(std::size_t offset) const { return bytes_[offset]; }
  int I8(std::size_t offset) const { return static_cast<std::int8_t>(bytes_[offset]); }
  int U16(std::size_t offset) const { return Number<std::uint16_t>(offset); }
  int I16(std::size_t offset) const { return Number<std::int16_t>(offset); }
  int I32(std::size_t offset) const { return Number<std::int32_t>(offset); }
  float F32(std::size_t offset) const { return Number<float>(offset); }
  Formulas::Rgb Rgb() const { return {U8(2), U8(1), U8(0)}; }
  Formulas::Rgb Rgb48() const { return {U16(6), U16(4), U16(2)}; }

private:
  template <class T>
  T Number(std::size_t offset) const
  {
    T value;
    std::memcpy(&value, bytes_ + offset, sizeof value);
    return value;
  }

  const std::uint8_t *bytes_;
};

/// Calls `make` with the source's components when it is of the model, else makes the destination invalid.
template <class Make>
void From(unsigned model, Colour *destination, const Colour *source, Make make)
{
  if (source->GetType() == model)
    make(Components(*source));
  else
    Colour::MakeINVALID(*destination);
}

void PutRgb(Colour *destination, const Formulas::Rgb &rgb)
{
  Colour::MakeRGB(*destination, Byte(rgb.red), Byte(rgb.green), Byte(rgb.blue));
}

void PutRgb48(Colour *destination, const Formulas::Rgb &rgb)
{
  Colour::MakeRGB48(*destination, Word(rgb.red), Word(rgb.green), Word(rgb.blue));
}

void PutHsb(Colour *destination, const Formulas::Hsb &hsb)
{
  Colour::MakeHSB(*destination, Hue(hsb.hue), Byte(hsb.saturation), Byte(hsb.brightness));
}

void PutHls(Colour *destination, const Formulas::Hls &hls)
{
  Colour::MakeHLS(*destination, Hue(hls.hue), Byte(hls.lightness), Byte(hls.saturation));
}

void PutGray(Colour *destination, int gray)
{
  Colour::MakeGRAY(*destination, Byte(gray));
}

void PutGray16(Colour *destination, int gray)
{
  Colour::MakeGRAY16(*destination, Word(gray));
}

Formulas::Rgb UpperBytes(const Formulas::Rgb &rgb48)
{
  return {ByteFromWord(rgb48.red), ByteFromWord(rgb48.green), ByteFromWord(rgb48.blue)};
}

Formulas::Rgb Repeated(const Formulas::Rgb &rgb)
{
  return {WordFromByte(rgb.red), WordFromByte(rgb.green), WordFromByte(rgb.blue)};
}

Formulas::Rgb Complement(const Formulas::Rgb &rgb)
{
  return {255 - rgb.red, 255 - rgb.green, 255 - rgb.blue};
}

Formulas::Rgb Cmy(const Components &c)
{
  return {c.U8(0), c.U8(1), c.U8(2)};
}

/// value * full + 0.5 rounded down, cut off to 0 to full; 0 for what is no number.
int WholeOf(double value, int full)
{
  const double scaled = std::floor(value * full + 0.5);
  return scaled > 0 ? static_cast<int>(std::min<double>(scaled, full)) : 0;
}

} // namespace

// --- CMYK, CMY ------------------------------------------------------------------------------------------------------

void WClrConvert::ConvertCMYKToCMYK255(Colour *destination, const Colour *source)
{
  From(Model::Cmyk, destination, source, [&](Components c) {
    Colour::MakeCMYK255(*destination, ByteFromPercent(c.U8(0)), ByteFromPercent(c.U8(1)), ByteFromPercent(c.U8(2)),
                        ByteFromPercent(c.U8(3)));
  });
}

void WClrConvert::ConvertCMYK255ToCMYK(Colour *destination, const Colour *source)
{
  From(Model::Cmyk255, destination, source, [&](Components c) {
    Colour::MakeCMYK(*destination, PercentFromByte(c.U8(0)), PercentFromByte(c.U8(1)), PercentFromByte(c.U8(2)),
                     PercentFromByte(c.U8(3)));
  });
}

void WClrConvert::ConvertCMY255ToCMYK255(Colour *destination, const Colour *source)
{
  From(Model::Cmy255, destination, source,
       [&](Components c) { Colour::MakeCMYK255(*destination, Byte(c.U8(0)), Byte(c.U8(1)), Byte(c.U8(2)), 0); });
}

void WClrConvert::ConvertCMYK255ToCMY255(Colour *destination, const Colour *source)
{
  From(Model::Cmyk255, destination, source, [&](Components c) {
    const auto cmy = Complement(Formulas::RgbFromCmyk(c.U8(0), c.U8(1), c.U8(2), c.U8(3)));
    Colour::MakeCMY(*destination, Byte(cmy.red), Byte(cmy.green), Byte(cmy.blue));
  });
}

void WClrConvert::ConvertCMY255ToRGB(Colour *destination, const Colour *source)
{
  From(Model::Cmy255, destination, source, [&](Components c) { PutRgb(destination, Complement(Cmy(c))); });
}

void WClrConvert::ConvertCMY255ToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Cmy255, destination, source, [&](Components c) { PutRgb48(destination, Repeated(Complement(Cmy(c)))); });
}

void WClrConvert::ConvertCMYK255ToRGB(Colour *destination, const Colour *source)
{
  From(Model::Cmyk255, destination, source,
       [&](Components c) { PutRgb(destination, Formulas::RgbFromCmyk(c.U8(0), c.U8(1), c.U8(2), c.U8(3))); });
}

void WClrConvert::ConvertRGBToCMY255(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source, [&](Components c) {
    const auto cmy = Complement(c.Rgb());
    Colour::MakeCMY(*destination, Byte(cmy.red), Byte(cmy.green), Byte(cmy.blue));
  });
}

void WClrConvert::ConvertRGB48ToCMY255(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    const auto cmy = Complement(UpperBytes(c.Rgb48()));
    Colour::MakeCMY(*destination, Byte(cmy.red), Byte(cmy.green), Byte(cmy.blue));
  });
}

void WClrConvert::ConvertHexToRGB(Colour *destination, const Colour *source)
{
  From(Model::Hexachrome, destination, source, [&](Components c) {
    const auto cmyk = Formulas::CmykFromHexachrome(c.U8(2), c.U8(3), c.U8(4), c.U8(5), c.U8(6), c.U8(7));
    PutRgb(destination, Formulas::RgbFromCmyk(cmyk.cyan, cmyk.magenta, cmyk.yellow, cmyk.black));
  });
}

// --- RGB255, RGB48 --------------------------------------------------------------------------------------------------

void WClrConvert::ConvertRGBToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source, [&](Components c) { PutRgb48(destination, Repeated(c.Rgb())); });
}

void WClrConvert::ConvertRGB48ToRGB(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) { PutRgb(destination, UpperBytes(c.Rgb48())); });
}

// --- Gray, black and white ------------------------------------------------------------------------------------------

void WClrConvert::ConvertRGBToGray(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source,
       [&](Components c) { PutGray(destination, Formulas::GrayFromRgb(c.U8(2), c.U8(1), c.U8(0))); });
}

void WClrConvert::ConvertRGBToGray16(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source,
       [&](Components c) { PutGray16(destination, Formulas::Gray16FromRgb(c.U8(2), c.U8(1), c.U8(0))); });
}

void WClrConvert::ConvertRGB48ToGray(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    PutGray(destination, ByteFromWord(ConvertRGB48toGray16(Word(c.U16(6)), Word(c.U16(4)), Word(c.U16(2)))));
  });
}

void WClrConvert::ConvertRGB48ToGray16(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    PutGray16(destination, ConvertRGB48toGray16(Word(c.U16(6)), Word(c.U16(4)), Word(c.U16(2))));
  });
}

void WClrConvert::ConvertHSBToGray(Colour *destination, const Colour *source)
{
  From(Model::Hsb, destination, source, [&](Components c) {
    const auto rgb = Formulas::RgbFromHsb(Formulas::TurnedHue(c.I16(0)), c.U8(2), c.U8(3));
    PutGray(destination, Formulas::GrayFromRgb(rgb.red, rgb.green, rgb.blue));
  });
}

void WClrConvert::ConvertGrayToGray16(Colour *destination, const Colour *source)
{
  From(Model::Gray255, destination, source, [&](Components c) { PutGray16(destination, WordFromByte(c.U8(0))); });
}

void WClrConvert::ConvertGray16ToGray(Colour *destination, const Colour *source)
{
  From(Model::Gray16, destination, source, [&](Components c) { PutGray(destination, ByteFromWord(c.U16(0))); });
}

void WClrConvert::ConvertGrayToRGB(Colour *destination, const Colour *source)
{
  From(Model::Gray255, destination, source, [&](Components c) { PutRgb(destination, {c.U8(0), c.U8(0), c.U8(0)}); });
}

void WClrConvert::ConvertGray16ToRGB(Colour *destination, const Colour *source)
{
  From(Model::Gray16, destination, source, [&](Components c) {
    const int gray = ByteFromWord(c.U16(0));
    PutRgb(destination, {gray, gray, gray});
  });
}

void WClrConvert::ConvertGrayToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Gray255, destination, source, [&](Components c) {
    PutRgb48(destination, Repeated({c.U8(0), c.U8(0), c.U8(0)}));
  });
}

void WClrConvert::ConvertGray16ToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Gray16, destination, source, [&](Components c) {
    PutRgb48(destination, {c.U16(0), c.U16(0), c.U16(0)});
  });
}

void WClrConvert::ConvertGrayToBW(Colour *destination, const Colour *source)
{
  From(Model::Gray255, destination, source, [&](Components c) { Colour::MakeBW(*destination, c.U8(0) > 127); });
}

void WClrConvert::ConvertGray16ToBW(Colour *destination, const Colour *source)
{
  From(Model::Gray16, destination, source, [&](Components c) { Colour::MakeBW(*destination, c.U16(0) > 32767); });
}

void WClrConvert::ConvertBWToGray(Colour *destination, const Colour *source)
{
  From(Model::BlackWhite, destination, source, [&](Components c) { PutGray(destination, c.I32(0) > 0 ? 255 : 0); });
}

void WClrConvert::ConvertBWToGray16(Colour *destination, const Colour *source)
{
  From(Model::BlackWhite, destination, source, [&](Components c) { PutGray16(destination, c.I32(0) > 0 ? 65535 : 0); });
}

void WClrConvert::ConvertBWToRGB(Colour *destination, const Colour *source)
{
  From(Model::BlackWhite, destination, source, [&](Components c) {
    const int gray = c.I32(0) > 0 ? 255 : 0;
    PutRgb(destination, {gray, gray, gray});
  });
}

void WClrConvert::ConvertBWToRGB48(Colour *destination, const Colour *source)
{
  From(Model::BlackWhite, destination, source, [&](Components c) {
    const int gray = c.I32(0) > 0 ? 65535 : 0;
    PutRgb48(destination, {gray, gray, gray});
  });
}

// --- HSB, HLS -------------------------------------------------------------------------------------------------------

void WClrConvert::ConvertRGBToHSB(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source,
       [&](Components c) { PutHsb(destination, Formulas::HsbFromRgb(c.U8(2), c.U8(1), c.U8(0))); });
}

void WClrConvert::ConvertRGB48ToHSB(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source,
       [&](Components c) { PutHsb(destination, Formulas::HsbFromRgb48(c.U16(6), c.U16(4), c.U16(2))); });
}

void WClrConvert::ConvertHSBToRGB(Colour *destination, const Colour *source)
{
  From(Model::Hsb, destination, source, [&](Components c) {
    PutRgb(destination, Formulas::RgbFromHsb(Formulas::TurnedHue(c.I16(0)), c.U8(2), c.U8(3)));
  });
}

void WClrConvert::ConvertHSBToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Hsb, destination, source, [&](Components c) {
    PutRgb48(destination, Formulas::Rgb48FromHsb(Formulas::TurnedHue(c.I16(0)), c.U8(2), c.U8(3)));
  });
}

void WClrConvert::ConvertRGBToHLS(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source,
       [&](Components c) { PutHls(destination, Formulas::HlsFromRgb(c.U8(2), c.U8(1), c.U8(0))); });
}

void WClrConvert::ConvertRGB48ToHLS(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source,
       [&](Components c) { PutHls(destination, Formulas::HlsFromRgb48(c.U16(6), c.U16(4), c.U16(2))); });
}

void WClrConvert::ConvertHLSToRGB(Colour *destination, const Colour *source)
{
  From(Model::Hls, destination, source,
       [&](Components c) { PutRgb(destination, Formulas::RgbFromHls(c.I16(0), c.U8(2), c.U8(3))); });
}

void WClrConvert::ConvertHLSToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Hls, destination, source,
       [&](Components c) { PutRgb48(destination, Formulas::Rgb48FromHls(c.I16(0), c.U8(2), c.U8(3))); });
}

// --- YIQ ------------------------------------------------------------------------------------------------------------

void WClrConvert::ConvertRGBToYIQ255(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source, [&](Components c) {
    const auto yiq = Formulas::YiqFromRgb(c.U8(2), c.U8(1), c.U8(0));
    Colour::MakeYIQ255(*destination, Byte(yiq.y), Byte(yiq.i), Byte(yiq.q));
  });
}

void WClrConvert::ConvertYIQ255ToRGB(Colour *destination, const Colour *source)
{
  From(Model::Yiq255, destination, source, [&](Components c) {
    const auto rgb = Formulas::RgbFromYiq(c.U8(0), c.U8(1), c.U8(2));
    PutRgb(destination, {static_cast<int>(rgb.red), static_cast<int>(rgb.green), static_cast<int>(rgb.blue)});
  });
}

void WClrConvert::ConvertRGB48ToYIQ255(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    const auto yiq = Formulas::YiqFromRgb(c.U16(6) / 257.0, c.U16(4) / 257.0, c.U16(2) / 257.0);
    Colour::MakeYIQ255(*destination, Byte(yiq.y), Byte(yiq.i), Byte(yiq.q));
  });
}

void WClrConvert::ConvertYIQ255ToRGB48(Colour *destination, const Colour *source)
{
  From(Model::Yiq255, destination, source, [&](Components c) {
    const auto rgb = Formulas::RgbFromYiq(c.U8(0), c.U8(1), c.U8(2));
    PutRgb48(destination, {static_cast<int>(rgb.red * 257.0), static_cast<int>(rgb.green * 257.0),
                           static_cast<int>(rgb.blue * 257.0)});
  });
}

// --- Lab, XYZ -------------------------------------------------------------------------------------------------------

void WClrConvert::ConvertLABToLAB255(Colour *destination, const Colour *source)
{
  From(Model::Lab, destination, source, [&](Components c) {
    Colour::MakeLAB255(*destination, Byte(c.U8(0)), Byte(c.U8(1) + 128), Byte(c.U8(2) + 128));
  });
}

void WClrConvert::ConvertLAB255ToLAB(Colour *destination, const Colour *source)
{
  From(Model::Lab255, destination, source, [&](Components c) {
    Colour::MakeLAB(*destination, Byte(c.U8(0)), static_cast<std::int8_t>(c.U8(1) + 128),
                    static_cast<std::int8_t>(c.U8(2) + 128));
  });
}

void WClrConvert::ConvertLABToXYZ(Colour *destination, const Colour *source)
{
  From(Model::Lab, destination, source, [&](Components c) {
    const auto xyz = Formulas::XyzFromLab(Formulas::LabFromRecord(c.U8(0), c.I8(1), c.I8(2)));
    Colour::MakeXYZ(*destination, Byte(static_cast<int>(xyz.x)), Byte(static_cast<int>(xyz.y)),
                    Byte(static_cast<int>(xyz.z)));
  });
}

void WClrConvert::ConvertLAB255ToXYZ(Colour *destination, const Colour *source)
{
  Colour lab;
  ConvertLAB255ToLAB(&lab, source);
  ConvertLABToXYZ(destination, &lab);
}

void WClrConvert::ConvertXYZToLAB(Colour *destination, const Colour *source)
{
  From(Model::Xyz, destination, source, [&](Components c) {
    const auto lab =
      Formulas::LabFromXyz({static_cast<double>(c.U8(0)), static_cast<double>(c.U8(1)), static_cast<double>(c.U8(2))});
    const auto stored = [](double value) { return static_cast<int>(value * 2.0); };
    Colour::MakeLAB(*destination, Byte(stored(lab.l)), static_cast<std::int8_t>(stored(lab.a)),
                    static_cast<std::int8_t>(stored(lab.b)));
  });
}

void WClrConvert::ConvertXYZToLAB255(Colour *destination, const Colour *source)
{
  Colour lab;
  ConvertXYZToLAB(&lab, source);
  ConvertLABToLAB255(destination, &lab);
}

void WClrConvert::ConvertXYZToRGB(Colour *destination, const Colour *source)
{
  From(Model::Xyz, destination, source, [&](Components c) {
    const auto rgb = Formulas::SrgbFromXyz({c.U8(0) / 255.0, c.U8(1) / 255.0, c.U8(2) / 255.0});
    PutRgb(destination, {WholeOf(rgb.red, 255), WholeOf(rgb.green, 255), WholeOf(rgb.blue, 255)});
  });
}

// --- scRGB ----------------------------------------------------------------------------------------------------------

void WClrConvert::ConvertSCRGBToRGB(Colour *destination, const Colour *source)
{
  From(Model::ScRgb, destination, source, [&](Components c) {
    PutRgb(destination, {WholeOf(c.F32(0), 255), WholeOf(c.F32(4), 255), WholeOf(c.F32(8), 255)});
  });
}

void WClrConvert::ConvertSCRGBToRGB48(Colour *destination, const Colour *source)
{
  From(Model::ScRgb, destination, source, [&](Components c) {
    PutRgb48(destination, {WholeOf(c.F32(0), 65535), WholeOf(c.F32(4), 65535), WholeOf(c.F32(8), 65535)});
  });
}

void WClrConvert::ConvertRGBToSCRGB(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source, [&](Components c) {
    const auto unit = [](int byte) { return static_cast<float>(byte) / 255.0f; };
    Colour::MakeSCRGB(*destination, unit(c.U8(2)), unit(c.U8(1)), unit(c.U8(0)));
  });
}

void WClrConvert::ConvertRGB48ToSCRGB(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    const auto unit = [](int word) { return static_cast<float>(word) / 65535.0f; };
    Colour::MakeSCRGB(*destination, unit(c.U16(6)), unit(c.U16(4)), unit(c.U16(2)));
  });
}

// --- RGBA, BGRA -----------------------------------------------------------------------------------------------------

void WClrConvert::ConvertRGBAToRGB(Colour *destination, const Colour *source)
{
  From(Model::Rgba, destination, source, [&](Components c) { PutRgb(destination, {c.U8(0), c.U8(1), c.U8(2)}); });
}

void WClrConvert::ConvertRGBAToBGRA(Colour *destination, const Colour *source)
{
  From(Model::Rgba, destination, source, [&](Components c) {
    Colour::MakeBGRA(*destination, Byte(c.U8(0)), Byte(c.U8(1)), Byte(c.U8(2)), Byte(c.U8(3)));
  });
}

void WClrConvert::ConvertRGBToRGBA(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source,
       [&](Components c) { Colour::MakeRGBA(*destination, Byte(c.U8(2)), Byte(c.U8(1)), Byte(c.U8(0)), 255); });
}

void WClrConvert::ConvertRGB48ToRGBA(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    const auto rgb = UpperBytes(c.Rgb48());
    Colour::MakeRGBA(*destination, Byte(rgb.red), Byte(rgb.green), Byte(rgb.blue), 255);
  });
}

void WClrConvert::ConvertBGRAToRGB(Colour *destination, const Colour *source)
{
  From(Model::Bgra, destination, source, [&](Components c) { PutRgb(destination, c.Rgb()); });
}

void WClrConvert::ConvertBGRAToRGBA(Colour *destination, const Colour *source)
{
  From(Model::Bgra, destination, source, [&](Components c) {
    Colour::MakeRGBA(*destination, Byte(c.U8(2)), Byte(c.U8(1)), Byte(c.U8(0)), Byte(c.U8(3)));
  });
}

void WClrConvert::ConvertRGBToBGRA(Colour *destination, const Colour *source)
{
  From(Model::Rgb255, destination, source,
       [&](Components c) { Colour::MakeBGRA(*destination, Byte(c.U8(2)), Byte(c.U8(1)), Byte(c.U8(0)), 255); });
}

void WClrConvert::ConvertRGB48ToBGRA(Colour *destination, const Colour *source)
{
  From(Model::Rgb48, destination, source, [&](Components c) {
    const auto rgb = UpperBytes(c.Rgb48());
    Colour::MakeBGRA(*destination, Byte(rgb.red), Byte(rgb.green), Byte(rgb.blue), 255);
  });
}
