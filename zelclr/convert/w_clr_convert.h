// Conversion of colour records from model to model by fixed formulas, without profiles.
//
// Threads: plain functions. Errors: a source of the wrong model makes the destination invalid; functions that answer
// bool return false and leave the destination as it was.
#pragma once

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/convert/formulas.h"

#include <optional>
#include <vector>

namespace ColorSystem {
class ColorContext;
}

class ZELCLR_API WClrConvert
{
public:
  // --- Record converters --------------------------------------------------------------------------------------------
  // Convert<source model>To<target model>(destination, source). The source is read through its references; when its
  // model is not the one in the name, the destination becomes invalid. Otherwise the destination gets the target model,
  // its components, and no palette. Destination and source may be the same record; neither may be null.
  using Converter = void(CLR_COLORSPEC *destination, const CLR_COLORSPEC *source);

  // Scalings of the CMYK family: value * 255 / 100 and value * 100 / 255, rounded; a percentage above 100 gives 255.
  static Converter ConvertCMYKToCMYK255, ConvertCMYK255ToCMYK;

  // CMY and CMYK255: formulas/cmyk.h. To CMY, with k' = 255 - K: 255 - (255 - C) k' / 255, truncated.
  static Converter ConvertCMY255ToCMYK255, ConvertCMYK255ToCMY255;
  static Converter ConvertCMY255ToRGB, ConvertCMY255ToRGB48, ConvertCMYK255ToRGB;
  static Converter ConvertRGBToCMY255, ConvertRGB48ToCMY255;

  // RGB255 and RGB48: byte * 257 with density 100, and the upper byte (truncation).
  static Converter ConvertRGBToRGB48, ConvertRGB48ToRGB;

  // Gray: formulas/gray.h. Gray16 = gray * 257 and its upper byte; BW is white above the middle, 127 or 32767; gray of
  // BW is full above 0. RGB48 to GRAY255 is the upper byte of its GRAY16, HSB to GRAY255 goes through RGB255.
  static Converter ConvertRGBToGray, ConvertRGBToGray16, ConvertRGB48ToGray, ConvertRGB48ToGray16, ConvertHSBToGray;
  static Converter ConvertGrayToGray16, ConvertGray16ToGray;
  static Converter ConvertGrayToRGB, ConvertGray16ToRGB, ConvertGrayToRGB48, ConvertGray16ToRGB48;
  static Converter ConvertGrayToBW, ConvertGray16ToBW;
  static Converter ConvertBWToGray, ConvertBWToGray16, ConvertBWToRGB, ConvertBWToRGB48;

  // HSB and HLS: formulas/hsb.h and formulas/hls.h.
  static Converter ConvertRGBToHSB, ConvertRGB48ToHSB, ConvertHSBToRGB, ConvertHSBToRGB48;
  static Converter ConvertRGBToHLS, ConvertRGB48ToHLS, ConvertHLSToRGB, ConvertHLSToRGB48;

  // YIQ: formulas/yiq.h. RGB255 components are the results truncated. An RGB48 component counts as its 257th part and
  // is made as the result * 257, truncated.
  static Converter ConvertRGBToYIQ255, ConvertYIQ255ToRGB, ConvertRGB48ToYIQ255, ConvertYIQ255ToRGB48;

  // Lab and XYZ as stored: formulas/record_lab.h.
  // LAB255 is LAB with 128 added to a and b, modulo 256.
  static Converter ConvertLABToLAB255, ConvertLAB255ToLAB;
  /// KEPT: X, Y and Z with Y = 1 for white are stored truncated to whole numbers, so that most colours give 0, where
  /// one would expect them scaled to the byte; stored data depends on it. For measured XYZ use ConvertToBasicType.
  static Converter ConvertLABToXYZ, ConvertLAB255ToXYZ;
  /// KEPT: the bytes count as X, Y, Z themselves, and L, a and b are stored doubled and truncated, modulo 256, where
  /// one would expect the scale of LAB; stored data depends on it. LAB255 is that LAB with 128 added to a and b.
  static Converter ConvertXYZToLAB, ConvertXYZToLAB255;
  /// X, Y and Z as bytes of 255 (white is 246, 255, 210: D50) to sRGB, rounded and cut off to its gamut:
  /// formulas/srgb_lab.h.
  static Converter ConvertXYZToRGB;

  // scRGB: component * 255 + 0.5 (or * 65535 + 0.5) rounded down and cut off to the range; component / 255 (or / 65535)
  // in single precision. No transfer curve in either direction. What is no number becomes 0.
  static Converter ConvertSCRGBToRGB, ConvertSCRGBToRGB48, ConvertRGBToSCRGB, ConvertRGB48ToSCRGB;

  // RGBA and BGRA hold the same four components in two orders. Without alpha it is dropped, and made as 255 (opaque);
  // RGB48 gives its upper bytes.
  static Converter ConvertRGBAToRGB, ConvertRGBAToBGRA, ConvertRGBToRGBA, ConvertRGB48ToRGBA;
  static Converter ConvertBGRAToRGB, ConvertBGRAToRGBA, ConvertRGBToBGRA, ConvertRGB48ToBGRA;

  /// Hexachrome to RGB255: orange and green counted as the CMYK inks that they stand in for (formulas/cmyk.h).
  static Converter ConvertHexToRGB;

  // --- Component functions ------------------------------------------------------------------------------------------
  // Plain numbers; outputs first. Inline: they cost what their arithmetic costs. Components of 8 bits are 0 to 255, of
  // 16 bits 0 to 65535, hues degrees, saturation, brightness and lightness 0 to 255; other arguments give some number.

  static short ConvertRGBtoGray(short red, short green, short blue)
  {
    return static_cast<short>(ZelClr::Formulas::GrayFromRgb(red, green, blue));
  }
  /// White gives 65280; see formulas/gray.h.
  static std::uint16_t ConvertRGBtoGray16(short red, short green, short blue)
  {
    return static_cast<std::uint16_t>(ZelClr::Formulas::Gray16FromRgb(red, green, blue));
  }
  static std::uint16_t ConvertRGB48toGray16(std::uint16_t red, std::uint16_t green, std::uint16_t blue)
  {
    return static_cast<std::uint16_t>(ZelClr::Formulas::Gray16FromRgb48(red, green, blue));
  }
  static void ConvertRGBCompToHSBComp(short &hue, short &saturation, short &brightness, short red, short green,
                                      short blue)
  {
    const auto hsb = ZelClr::Formulas::HsbFromRgb(red, green, blue);
    Put(hue, saturation, brightness, hsb.hue, hsb.saturation, hsb.brightness);
  }
  static void ConvertHSBCompToRGBComp(short &red, short &green, short &blue, short hue, short saturation,
                                      short brightness)
  {
    const auto rgb = ZelClr::Formulas::RgbFromHsb(WithinTurn(hue), LowByte(saturation), LowByte(brightness));
    Put(red, green, blue, rgb.red, rgb.green, rgb.blue);
  }
  static void ConvertRGB48toHSB(short &hue, short &saturation, short &brightness, std::uint16_t red,
                                std::uint16_t green, std::uint16_t blue)
  {
    const auto hsb = ZelClr::Formulas::HsbFromRgb48(red, green, blue);
    Put(hue, saturation, brightness, hsb.hue, hsb.saturation, hsb.brightness);
  }
  static void ConvertHSBtoRGB48(std::uint16_t &red, std::uint16_t &green, std::uint16_t &blue, short hue,
                                short saturation, short brightness)
  {
    const auto rgb = ZelClr::Formulas::Rgb48FromHsb(WithinTurn(hue), LowByte(saturation), LowByte(brightness));
    Put(red, green, blue, rgb.red, rgb.green, rgb.blue);
  }
  static void ConvertRGBtoHLS(short &hue, short &lightness, short &saturation, short red, short green, short blue)
  {
    const auto hls = ZelClr::Formulas::HlsFromRgb(red, green, blue);
    Put(hue, lightness, saturation, hls.hue, hls.lightness, hls.saturation);
  }
  static void ConvertRGB48toHLS(short &hue, short &lightness, short &saturation, std::uint16_t red, std::uint16_t green,
                                std::uint16_t blue)
  {
    const auto hls = ZelClr::Formulas::HlsFromRgb48(red, green, blue);
    Put(hue, lightness, saturation, hls.hue, hls.lightness, hls.saturation);
  }
  static void ConvertHLStoRGB(short &red, short &green, short &blue, short hue, short lightness, short saturation)
  {
    const auto rgb = ZelClr::Formulas::RgbFromHls(hue, LowByte(lightness), LowByte(saturation));
    Put(red, green, blue, rgb.red, rgb.green, rgb.blue);
  }
  static void ConvertHLStoRGB48(std::uint16_t &red, std::uint16_t &green, std::uint16_t &blue, short hue,
                                short lightness, short saturation)
  {
    const auto rgb = ZelClr::Formulas::Rgb48FromHls(hue, LowByte(lightness), LowByte(saturation));
    Put(red, green, blue, rgb.red, rgb.green, rgb.blue);
  }
  /// Components 0 to 255 as doubles. I and Q are cut off to the byte; Y, which only components beyond that range bring
  /// out of it, is stored modulo 256.
  static void ConvertRGBToYIQ255(double red, double green, double blue, std::uint8_t &y, std::uint8_t &i,
                                 std::uint8_t &q);
  static void ConvertYIQ255ToRGB(std::uint8_t y, std::uint8_t i, std::uint8_t q, double &red, double &green,
                                 double &blue);
  /// L*, a* and b* of a LAB colour, rounded half away from zero to a number of decimals (0 to 15); below 0, not
  /// rounded. A colour of another model gives three zeros.
  static void ConvertLABToDouble(double &l, double &a, double &b, int decimals, const CLR_COLORSPEC &lab);
  /// The stored byte of L* (0 to 100), rounded half away from zero; cut off to the byte.
  static void ConvertDoubleToLAB_L(std::uint8_t &byte, double l);
  /// The stored byte of a value already in stored units, rounded half away from zero; cut off to the byte.
  static void ConvertDoubleToLAB_A(std::int8_t &byte, double stored);

  // --- Between any two models ---------------------------------------------------------------------------------------

  /// Whether colours can be converted to the model by formula: 2 to 9, 11, 12, 15, 17 to 19, 23, 24, 27, 29 and 30.
  static bool IsBasicType(unsigned model);
  /// Converts by formula into a basic model. False, with the
  /// destination untouched, for another target and for a source without an appearance (invalid, Pantone, index, an
  /// ink or a spot colour whose palette is not at hand).
  ///
  /// A pair with a converter above goes through it (but for the stored Lab and XYZ arithmetic), any other pair through
  /// RGB48, CMYK255, LAB or RGB255, the first that both have a step to. CMYK is made from RGB
  /// with all gray in the black (formulas/cmyk.h); Lab and XYZ are measured colours of sRGB on D50
  /// (formulas/srgb_lab.h), cut off to what the record holds; spot colours and user inks are thinned to their density.
  static bool ConvertToBasicType(CLR_COLORSPEC *destination, unsigned model, const CLR_COLORSPEC *source);

  /// 0x00BBGGRR of the colour as converted to RGB255; empty for a colour without an appearance.
  static std::optional<COLORREF> ConvertColorSpecToCOLORREF(const CLR_COLORSPEC &colour);

  /// The colour as the exchange metafile can hold it, which knows models 1 to 12: those stay; RGB48, scRGB, RGBA and
  /// BGRA become RGB255, GRAY16 GRAY255, CMYK100 and the registration colour CMYK, LAB255 and XYZ LAB, all else
  /// CMYK255.
  static bool ConvertToCMXColor(CLR_COLORSPEC *destination, const CLR_COLORSPEC *source);

  /// The colour as an ink that a duotone may be printed with: spot and Pantone colours, user inks and the CMYK family
  /// stay, every other colour becomes CMYK255.
  static bool ConvertToValidDuotone(CLR_COLORSPEC *destination, const CLR_COLORSPEC *source);

  /// The colour as a DeviceN colour: CMYK models, RGB models and Hexachrome on the plates of their base, a spot colour
  /// on one spot plate at its density, the registration colour on a registration plate; gray and black-and-white on a
  /// black plate; every other colour by way of RGB255.
  static bool ConvertToDeviceN(CLR_COLORSPEC *destination, const CLR_COLORSPEC *source);

  /// The parts of a DeviceN colour that are printed one after the other: first the mix of the process plates where the
  /// space has a base, then each further plate's colour at its value; plates at 0 are left out. A colour of another
  /// model is its own only part.
  static std::vector<CLR_COLORSPEC> SplitDeviceN(const CLR_COLORSPEC &colour);

  // --- Questions about colours --------------------------------------------------------------------------------------

  /// Negative, zero or positive as CLR_COLORSPEC::CompareTo, of the colours that references refer to.
  static int CompareColors(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b);
  /// Whether CompareColors finds no difference: a reference is the same as its colour.
  static bool ColorsAreSame(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b) { return CompareColors(a, b) == 0; }
  /// CIE Lab on D50: a LAB colour as it stands, any other as sRGB by formula (formulas/srgb_lab.h); empty for a colour
  /// without an appearance.
  static std::optional<ZelClr::Formulas::Lab> GetLab(const CLR_COLORSPEC &colour);
  /// CIEDE2000 between the Lab of the two; empty when one has no appearance. The library's managed measure is another.
  static std::optional<double> GetColorDistance(const CLR_COLORSPEC &a, const CLR_COLORSPEC &b);
  /// Whether the colour has no hue by formula: equal components of RGB or CMY, no chroma of YIQ or Lab, no saturation,
  /// black or gray. False for inks, which may have any colour, unless their density is 0.
  static bool IsAchromaticColor(const CLR_COLORSPEC &colour);
  /// Whether it is achromatic and nothing of it would print: white as RGB255.
  static bool IsAchromaticWhite(const CLR_COLORSPEC &colour);
  /// Whether it prints the same with black ink alone: an achromatic colour that is not mixed from cyan, magenta and
  /// yellow or from the other inks of a press.
  static bool CanTreatColorAsGrayscale(const CLR_COLORSPEC &colour);
  /// Thins the colour towards white of its own model: 100 leaves it, 0 makes it white; more counts as 100. The colours
  /// that are inks (Pantone, spot, user inks, registration) have their density multiplied; the others have each
  /// component moved, rounded; alpha stays. An index, black-and-white and an invalid colour stay; a reference becomes a
  /// copy.
  static void ApplyDensity(CLR_COLORSPEC *colour, unsigned density);

  // --- Colour-managed conversion ------------------------------------------------------------------------------------

  /// The part of ConvertColorSpec that needs no colour management: true when it did the whole work. A source already of
  /// the target model is copied, a reference as a plain copy of its colour. Models 3 and 17 are relabelled into each
  /// other: the four bytes stay as they are.
  ///
  /// KEPT: the relabelling does not scale between 0-255 and 0-100, where one would expect it to; stored data depends
  /// on it. Targets 1, 13, 20, 21 and 22 are never done here, not even from the same model.
  static bool CopyOrRelabel(CLR_COLORSPEC *destination, unsigned model, const CLR_COLORSPEC *source);

  // Defined in colorsystem/managed_records.cpp.

  /// Brings a colour into another model: CopyOrRelabel, and every genuine change through the colour-managed converter
  /// of the context. False, with the destination untouched, when that fails.
  static bool ConvertColorSpec(CLR_COLORSPEC *destination, unsigned model, const CLR_COLORSPEC *source,
                               ColorSystem::ColorContext &context);
  /// The same between two contexts.
  static bool ConvertColorSpec(CLR_COLORSPEC *destination, unsigned model,
                               ColorSystem::ColorContext &destinationContext, const CLR_COLORSPEC *source,
                               ColorSystem::ColorContext &sourceContext);

private:
  static short GetValue(short m1, short m2, short hue)
  {
    return static_cast<short>(ZelClr::Formulas::HlsValue(m1, m2, hue));
  }
  static constexpr int WithinTurn(short hue)
  {
    return static_cast<unsigned>(hue) < 360u ? hue : ZelClr::Formulas::TurnedHue(hue);
  }
  static constexpr int LowByte(short value) { return static_cast<std::uint8_t>(value); }
  template <class T>
  static void Put(T &first, T &second, T &third, int a, int b, int c)
  {
    first = static_cast<T>(a);
    second = static_cast<T>(b);
    third = static_cast<T>(c);
  }
};
