// Colours of one model, with names for their channels. All are values as Color is; constructors throw as it does.
#pragma once

#include "zelclr/colorsystem/color.h"

#include <string>

namespace ColorSystem {

// A pair of accessors for one channel. Undefined again below.
#define ZELCLR_CHANNEL(Name, index)                                                                                    \
  const ColorChannel &Get##Name() const                                                                                \
  {                                                                                                                    \
    return (*this)[index];                                                                                             \
  }                                                                                                                    \
  void Set##Name(double value)                                                                                         \
  {                                                                                                                    \
    SetChannel(index, value);                                                                                          \
  }

class ZELCLR_API RgbColor : public Color
{
public:
  explicit RgbColor(const ColorSpace &space) : Color(ColorModel::Rgb, space) {}
  RgbColor(double red, double green, double blue, const ColorSpace &space) : RgbColor(space)
  {
    SetChannels({red, green, blue});
  }
  ZELCLR_CHANNEL(Red, 0)
  ZELCLR_CHANNEL(Green, 1)
  ZELCLR_CHANNEL(Blue, 2)
};

class ZELCLR_API CmykColor : public Color
{
public:
  explicit CmykColor(const ColorSpace &space) : Color(ColorModel::Cmyk, space) {}
  CmykColor(double cyan, double magenta, double yellow, double black, const ColorSpace &space) : CmykColor(space)
  {
    SetChannels({cyan, magenta, yellow, black});
  }
  ZELCLR_CHANNEL(Cyan, 0)
  ZELCLR_CHANNEL(Magenta, 1)
  ZELCLR_CHANNEL(Yellow, 2)
  ZELCLR_CHANNEL(Black, 3)
};

/// In the space of "CIE Lab.icc", without a profile where that is not installed: L*/100, (a* + 128)/255,
/// (b* + 128)/255.
class ZELCLR_API LabColor : public Color
{
public:
  LabColor();
  LabColor(double l, double a, double b);
  /// Converted when it is of another model; all channels 0 when that fails.
  LabColor(const Color &other);
  LabColor(const LabColor &other) = default;
  LabColor &operator=(const LabColor &other) = default;
  ZELCLR_CHANNEL(L, 0)
  ZELCLR_CHANNEL(A, 1)
  ZELCLR_CHANNEL(B, 2)
};

/// A hue is its degrees divided by 255: see Color's conversion to records.
class ZELCLR_API HlsColor : public Color
{
public:
  explicit HlsColor(const ColorSpace &space) : Color(ColorModel::Hls, space) {}
  HlsColor(double hue, double lightness, double saturation, const ColorSpace &space) : HlsColor(space)
  {
    SetChannels({hue, lightness, saturation});
  }
  ColorModel GetColorModel() const override { return ColorModel::Hls; }
  ZELCLR_CHANNEL(Hue, 0)
  ZELCLR_CHANNEL(Lightness, 1)
  ZELCLR_CHANNEL(Saturation, 2)
};

/// A hue is its degrees divided by 255: see Color's conversion to records.
class ZELCLR_API HsvColor : public Color
{
public:
  explicit HsvColor(const ColorSpace &space) : Color(ColorModel::Hsv, space) {}
  HsvColor(double hue, double saturation, double value, const ColorSpace &space) : HsvColor(space)
  {
    SetChannels({hue, saturation, value});
  }
  ColorModel GetColorModel() const override { return ColorModel::Hsv; }
  ZELCLR_CHANNEL(Hue, 0)
  ZELCLR_CHANNEL(Saturation, 1)
  ZELCLR_CHANNEL(Value, 2)
};

class ZELCLR_API HexachromeColor : public Color
{
public:
  explicit HexachromeColor(const ColorSpace &space) : Color(ColorModel::Hexachrome, space) {}
  HexachromeColor(double cyan, double magenta, double yellow, double black, double orange, double green,
                  const ColorSpace &space)
    : HexachromeColor(space)
  {
    SetChannels({cyan, magenta, yellow, black, orange, green});
  }
  ZELCLR_CHANNEL(Cyan, 0)
  ZELCLR_CHANNEL(Magenta, 1)
  ZELCLR_CHANNEL(Yellow, 2)
  ZELCLR_CHANNEL(Black, 3)
  ZELCLR_CHANNEL(Orange, 4)
  ZELCLR_CHANNEL(Green, 5)
};

/// An ink: its name, and what it looks like at full density.
class ZELCLR_API SpotColor : public Color
{
public:
  SpotColor(const std::wstring &name, const Color &alternativeColor, double density)
    : Color(ColorModel::Spot, std::wstring()),
      name_(name),
      alternativeColor_(alternativeColor)
  {
    SetChannels({density});
  }
  const std::wstring &GetName() const { return name_; }
  const Color &GetAlternativeColor() const { return alternativeColor_; }
  ZELCLR_CHANNEL(Density, 0)

private:
  std::wstring name_;
  Color alternativeColor_;
};

/// Printed on every plate.
class ZELCLR_API RegistrationColor : public Color
{
public:
  explicit RegistrationColor(double density) : Color(ColorModel::Registration, std::wstring())
  {
    SetChannels({density});
  }
  ZELCLR_CHANNEL(Density, 0)
};

#undef ZELCLR_CHANNEL

} // namespace ColorSystem
