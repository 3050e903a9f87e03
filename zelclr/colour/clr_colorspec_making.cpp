// Making colours: each operation fills a given colour; the forms that return one call it.

#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/colour/palette_types.h"
#include "zelclr/colour/scaling.h"

namespace Model = ZelClr::ClrModel;

void CLR_COLORSPEC::MakeCOLORREF(CLR_COLORSPEC &colour, COLORREF value)
{
  MakeRGB(colour, static_cast<Byte>(value), static_cast<Byte>(value >> 8), static_cast<Byte>(value >> 16));
}

void CLR_COLORSPEC::MakeCMY(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow)
{
  colour.Begin(Model::Cmy255);
  colour.Store(0, CLR_CMY{cyan, magenta, yellow});
}

void CLR_COLORSPEC::MakeCMYK(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black)
{
  colour.Begin(Model::Cmyk);
  colour.Store(0, CLR_CMY{cyan, magenta, yellow});
  colour.Store(3, black);
}

void CLR_COLORSPEC::MakeCMYK255(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black)
{
  MakeCMYK(colour, cyan, magenta, yellow, black);
  colour.model_ = Model::Cmyk255;
}

void CLR_COLORSPEC::MakeCMYK100(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black)
{
  MakeCMYK(colour, cyan, magenta, yellow, black);
  colour.model_ = Model::Cmyk100;
}

void CLR_COLORSPEC::MakeREGCOLOR(CLR_COLORSPEC &colour)
{
  MakeCMYK(colour, 100, 100, 100, 100);
  colour.Store(4, Byte{100});
  colour.model_ = Model::Registration;
}

void CLR_COLORSPEC::MakeHSB(CLR_COLORSPEC &colour, SignedWord hue, Byte saturation, Byte brightness)
{
  colour.Begin(Model::Hsb);
  colour.Store(0, hue);
  colour.Store(2, saturation);
  colour.Store(3, brightness);
}

void CLR_COLORSPEC::MakeHLS(CLR_COLORSPEC &colour, SignedWord hue, Byte lightness, Byte saturation)
{
  MakeHSB(colour, hue, lightness, saturation);
  colour.model_ = Model::Hls;
}

void CLR_COLORSPEC::MakeUSERINKS(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue, Byte density)
{
  MakeRGB(colour, red, green, blue);
  colour.Store(3, density);
  colour.model_ = Model::UserInks;
}

void CLR_COLORSPEC::MakeINDEXEDUSERINKS(CLR_COLORSPEC &colour, SignedWord ink, Byte density)
{
  colour.Begin(Model::IndexedUserInk);
  colour.Store(0, ink);
  colour.Store(2, density);
}

void CLR_COLORSPEC::MakeYIQ255(CLR_COLORSPEC &colour, Byte y, Byte i, Byte q)
{
  MakeCMY(colour, y, i, q);
  colour.model_ = Model::Yiq255;
}

void CLR_COLORSPEC::MakeLAB(CLR_COLORSPEC &colour, Byte l, std::int8_t a, std::int8_t b)
{
  MakeCMY(colour, l, static_cast<Byte>(a), static_cast<Byte>(b));
  colour.model_ = Model::Lab;
}

void CLR_COLORSPEC::MakeLAB255(CLR_COLORSPEC &colour, Byte l, Byte a, Byte b)
{
  MakeCMY(colour, l, a, b);
  colour.model_ = Model::Lab255;
}

void CLR_COLORSPEC::MakeXYZ(CLR_COLORSPEC &colour, Byte x, Byte y, Byte z)
{
  MakeCMY(colour, x, y, z);
  colour.model_ = Model::Xyz;
}

void CLR_COLORSPEC::MakeGRAY(CLR_COLORSPEC &colour, Byte gray)
{
  colour.Begin(Model::Gray255);
  colour.Store(0, gray);
}

void CLR_COLORSPEC::MakeBW(CLR_COLORSPEC &colour, std::int32_t white)
{
  colour.Begin(Model::BlackWhite);
  colour.Store(0, white);
}

void CLR_COLORSPEC::MakeHEX(CLR_COLORSPEC &colour, Byte cyan, Byte magenta, Byte yellow, Byte black, Byte orange,
                            Byte green)
{
  colour.Begin(Model::Hexachrome);
  colour.Store(0, Byte{100});
  const Byte inks[] = {cyan, magenta, yellow, black, orange, green};
  std::memcpy(colour.components_ + 2, inks, sizeof inks);
}

void CLR_COLORSPEC::MakePANTONEHEX(CLR_COLORSPEC &colour, Word paletteType, SignedWord number, Word density)
{
  MakePANTONE(colour, number, density);
  colour.model_ = Model::PantoneHex;
  colour.palette_ = ZelClr::PaletteIdentifierFromType(paletteType);
}

void CLR_COLORSPEC::MakePANTONE(CLR_COLORSPEC &colour, SignedWord number, Word density)
{
  colour.Begin(Model::Pantone);
  colour.Store(0, number);
  colour.Store(2, density);
  colour.palette_ = ZelClr::kPantonePaletteIdentifier;
}

void CLR_COLORSPEC::MakeRGB48(CLR_COLORSPEC &colour, Word red, Word green, Word blue)
{
  colour.Begin(Model::Rgb48);
  colour.Store(0, Word{100});
  colour.Store(2, blue);
  colour.Store(4, green);
  colour.Store(6, red);
}

void CLR_COLORSPEC::MakeGRAY16(CLR_COLORSPEC &colour, Word gray)
{
  colour.Begin(Model::Gray16);
  colour.Store(0, gray);
}

void CLR_COLORSPEC::MakeDEVICEN(CLR_COLORSPEC &colour, WClrColorDeviceN *value)
{
  // The value may be the colour's own, or that of the colour it refers to: then it must outlive the release.
  if (value && value == colour.GetDeviceN()) {
    if (!colour.IsReference())
      return colour.SetPaletteGuid({});
    value = CloneDeviceN(*value);
  }
  colour.Begin(Model::DeviceN);
  colour.Store(0, value);
}

void CLR_COLORSPEC::MakeSPOT(CLR_COLORSPEC &colour, const Guid &palette, SignedWord number, Word density,
                             const SpotColorDefinition *definition)
{
  const Guid identifier = palette; // may be the colour's own
  colour.Begin(Model::Spot);
  colour.Store(0, number);
  colour.Store(2, density);
  colour.Store(8, definition);
  colour.palette_ = identifier;
}

void CLR_COLORSPEC::MakeSPOT(CLR_COLORSPEC &colour, Word paletteType, SignedWord number, Word density,
                             const SpotColorDefinition *definition)
{
  MakeSPOT(colour, ZelClr::PaletteIdentifierFromType(paletteType), number, density, definition);
}

void CLR_COLORSPEC::MakeINDEX(CLR_COLORSPEC &colour, Word index)
{
  colour.Begin(Model::Index);
  colour.Store(0, index);
}

void CLR_COLORSPEC::MakeSCRGB(CLR_COLORSPEC &colour, float red, float green, float blue)
{
  colour.Begin(Model::ScRgb);
  colour.Store(0, red);
  colour.Store(4, green);
  colour.Store(8, blue);
}

void CLR_COLORSPEC::MakeRGBA(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue, Byte alpha)
{
  MakeCMYK(colour, red, green, blue, alpha);
  colour.model_ = Model::Rgba;
}

void CLR_COLORSPEC::MakeBGRA(CLR_COLORSPEC &colour, Byte red, Byte green, Byte blue, Byte alpha)
{
  MakeCMYK(colour, blue, green, red, alpha);
  colour.model_ = Model::Bgra;
}

void CLR_COLORSPEC::MakeWhite(CLR_COLORSPEC &colour)
{
  if (colour.IsReference()) {
    if (CLR_COLORSPEC *end = colour.EndOfReferences())
      MakeWhite(*end);
    return;
  }
  constexpr Byte kFull = 255;
  constexpr Word kFull16 = 65535;
  switch (colour.model_) {
  case Model::Cmyk:
  case Model::Cmyk255:
  case Model::Cmyk100:
    colour.Store(0, std::uint32_t{0});
    break;
  case Model::Cmy255:
    colour.Store(0, CLR_CMY{0, 0, 0});
    break;
  case Model::Rgb255:
    colour.Store(0, CLR_CMY{kFull, kFull, kFull});
    break;
  case Model::Hsb:
    colour.Store(2, Byte{0});
    colour.Store(3, kFull);
    break;
  case Model::Hls:
    colour.Store(2, kFull);
    break;
  case Model::BlackWhite:
    colour.Store(0, std::int32_t{1});
    break;
  case Model::Gray255:
    colour.Store(0, kFull);
    break;
  case Model::Yiq255:
    colour.Store(0, CLR_CMY{kFull, 100, 100});
    break;
  case Model::Lab:
    colour.Store(0, CLR_CMY{kFull, 0, 0});
    break;
  case Model::Lab255:
    colour.Store(0, CLR_CMY{kFull, 128, 128});
    break;
  case Model::PantoneHex:
    colour.Store(2, Word{0});
    break;
  case Model::Hexachrome:
    std::memset(colour.components_ + 2, 0, 6);
    break;
  case Model::Rgb48:
    colour.Store(2, kFull16);
    colour.Store(4, kFull16);
    colour.Store(6, kFull16);
    break;
  case Model::Gray16:
    colour.Store(0, kFull16);
    break;
  default:
    break;
  }
}

bool CLR_COLORSPEC::MakeProcessFromUserInks(const CLR_COLORSPEC &userInk, CLR_COLORSPEC &process)
{
  const CLR_COLORSPEC &ink = userInk.Resolved();
  const int density = std::min<int>(ink.GetDensity(), 100);
  if (ink.model_ == Model::UserInks) {
    const auto thinned = [&](std::size_t offset) {
      return static_cast<Byte>(255 - ZelClr::MulDiv(255 - ink.Load<Byte>(offset), density, 100));
    };
    MakeRGB(process, thinned(2), thinned(1), thinned(0));
    return true;
  }
  const int index = ink.Load<SignedWord>(0);
  if (ink.model_ != Model::IndexedUserInk || !ink.palette_.IsNull() || index < 0 || index > 3)
    return false;
  MakeCMYK100(process, 0, 0, 0, 0);
  process.Store(static_cast<std::size_t>(index), static_cast<Byte>(density));
  return true;
}

// --- The forms that return the colour -------------------------------------------------------------------------------

CLR_COLORSPEC CLR_COLORSPEC::MakeCOLORREF(COLORREF value)
{
  return Made(&CLR_COLORSPEC::MakeCOLORREF, value);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeFromRGB(Byte red, Byte green, Byte blue)
{
  return Made(&CLR_COLORSPEC::MakeFromRGB, red, green, blue);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeCMY(Byte cyan, Byte magenta, Byte yellow)
{
  return Made(&CLR_COLORSPEC::MakeCMY, cyan, magenta, yellow);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeCMYK(Byte cyan, Byte magenta, Byte yellow, Byte black)
{
  return Made(&CLR_COLORSPEC::MakeCMYK, cyan, magenta, yellow, black);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeCMYK255(Byte cyan, Byte magenta, Byte yellow, Byte black)
{
  return Made(&CLR_COLORSPEC::MakeCMYK255, cyan, magenta, yellow, black);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeCMYK100(Byte cyan, Byte magenta, Byte yellow, Byte black)
{
  return Made(&CLR_COLORSPEC::MakeCMYK100, cyan, magenta, yellow, black);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeREGCOLOR()
{
  return Made(&CLR_COLORSPEC::MakeREGCOLOR);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeHSB(SignedWord hue, Byte saturation, Byte brightness)
{
  return Made(&CLR_COLORSPEC::MakeHSB, hue, saturation, brightness);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeHLS(SignedWord hue, Byte lightness, Byte saturation)
{
  return Made(&CLR_COLORSPEC::MakeHLS, hue, lightness, saturation);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeUserInks(Byte red, Byte green, Byte blue, Byte density)
{
  return Made(&CLR_COLORSPEC::MakeUSERINKS, red, green, blue, density);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeIndexedUserInks(SignedWord ink, Byte density)
{
  return Made(&CLR_COLORSPEC::MakeINDEXEDUSERINKS, ink, density);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeYIQ255(Byte y, Byte i, Byte q)
{
  return Made(&CLR_COLORSPEC::MakeYIQ255, y, i, q);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeLAB(Byte l, std::int8_t a, std::int8_t b)
{
  return Made(&CLR_COLORSPEC::MakeLAB, l, a, b);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeLAB255(Byte l, Byte a, Byte b)
{
  return Made(&CLR_COLORSPEC::MakeLAB255, l, a, b);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeXYZ(Byte x, Byte y, Byte z)
{
  return Made(&CLR_COLORSPEC::MakeXYZ, x, y, z);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeGRAY(Byte gray)
{
  return Made(&CLR_COLORSPEC::MakeGRAY, gray);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeBW(std::int32_t white)
{
  return Made(&CLR_COLORSPEC::MakeBW, white);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeHEX(Byte cyan, Byte magenta, Byte yellow, Byte black, Byte orange, Byte green)
{
  return Made(&CLR_COLORSPEC::MakeHEX, cyan, magenta, yellow, black, orange, green);
}

CLR_COLORSPEC CLR_COLORSPEC::MakePANTONEHEX(Word paletteType, SignedWord number, Word density)
{
  return Made(&CLR_COLORSPEC::MakePANTONEHEX, paletteType, number, density);
}

CLR_COLORSPEC CLR_COLORSPEC::MakePANTONE(SignedWord number, Word density)
{
  return Made(&CLR_COLORSPEC::MakePANTONE, number, density);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeRGB48(Word red, Word green, Word blue)
{
  return Made(&CLR_COLORSPEC::MakeRGB48, red, green, blue);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeGRAY16(Word gray)
{
  return Made(&CLR_COLORSPEC::MakeGRAY16, gray);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeDEVICEN(WClrColorDeviceN *value)
{
  return Made(&CLR_COLORSPEC::MakeDEVICEN, value);
}

CLR_COLORSPEC CLR_COLORSPEC::CLRMakeIndex(Word index)
{
  return Made(&CLR_COLORSPEC::MakeINDEX, index);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeSCRGB(float red, float green, float blue)
{
  return Made(&CLR_COLORSPEC::MakeSCRGB, red, green, blue);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeRGBA(Byte red, Byte green, Byte blue, Byte alpha)
{
  return Made(&CLR_COLORSPEC::MakeRGBA, red, green, blue, alpha);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeBGRA(Byte red, Byte green, Byte blue, Byte alpha)
{
  return Made(&CLR_COLORSPEC::MakeBGRA, red, green, blue, alpha);
}

CLR_COLORSPEC CLR_COLORSPEC::MakeSPOT(const Guid &palette, SignedWord number, Word density,
                                      const SpotColorDefinition *definition)
{
  CLR_COLORSPEC colour;
  MakeSPOT(colour, palette, number, density, definition);
  return colour;
}

CLR_COLORSPEC CLR_COLORSPEC::MakeSPOT(Word paletteType, SignedWord number, Word density,
                                      const SpotColorDefinition *definition)
{
  CLR_COLORSPEC colour;
  MakeSPOT(colour, paletteType, number, density, definition);
  return colour;
}

CLR_COLORSPEC CLR_COLORSPEC::MakeReference(const CLR_COLORSPEC &source)
{
  CLR_COLORSPEC colour;
  MakeReference(colour, source);
  return colour;
}
