// Managed colours: channels of 0 to 1 in a colour space.
//
// Threads: channels are read and written each under its own lock; what changes the array itself (Reference, Detach,
// assignment of the space) needs that no other thread uses the colour.
// Errors: constructors throw ColorSystemError "Color: Failed to get color model" when the space does not take the
// model, and what ColorSpace throws. Conversions answer null.
#pragma once

#include "zelclr/colorsystem/color_channel_array.h"
#include "zelclr/colorsystem/color_space.h"
#include "zelclr/colour/clr_colorspec.h"
#include "zelclr/platform/shared_data.h"

namespace ColorSystem {

class ColorContext;
class LabColor;

class ZELCLR_API Color : public ZelUtl::Shared<ColorChannelArray>
{
public:
  /// Every channel 0.
  explicit Color(const ColorSpace &space);
  /// A copy of the values, in an array of its own.
  Color(const Color &other);
  ~Color() override;
  /// Takes over model and profile, and the values into this colour's own array (which others may share by Reference).
  Color &operator=(const Color &other);

  /// Shares the channels of a colour of the same model from here on; false, with nothing changed, for any other.
  bool Reference(ZelUtl::Shared<ColorChannelArray> &other) override;
  virtual ColorModel GetColorModel() const;

  unsigned GetChannelCount() const { return space_.GetChannelCount(); }
  ColorSpace GetColorSpace() const { return space_; }
  std::shared_ptr<ColorProfile> GetColorProfile() const { return space_.GetColorProfile(); }

  /// The index is not checked.
  ColorChannel &operator[](unsigned index) { return GetDataRef()[index]; }
  const ColorChannel &operator[](unsigned index) const { return GetDataRef()[index]; }
  void SetChannel(unsigned index, double value) { GetDataRef()[index] = value; }

  /// The mean of all channels.
  double GetCompositeDensity() const;
  void MultiplyChannels(double factor);
  Color &operator*=(double factor);
  Color operator*(double factor) const;

  /// Equal spaces (see there: of one model) and equal channels. A colour with a NaN equals nothing.
  bool operator==(const Color &other) const;

  /// Gives the channels another meaning without changing them; false, with nothing changed, when the models differ.
  bool AssignColorProfile(const ColorProfile &profile);
  bool AssignColorSpace(const ColorSpace &space);

  /// The difference of the two in "CIE Lab.icc": in form a CIEDE2000, on channels of 0 to 1.
  ///
  /// KEPT: the formula departs from CIE 142-2001 where it says so in color_distance.cpp, and the channels are not
  /// brought to the scale of L*, where one would expect the textbook; stored thresholds depend on it. The textbook is
  /// ZelClr::Formulas::Ciede2000.
  double GetDistance(const Color &other) const;
  /// All channels 0 when the conversion fails.
  LabColor ConvertToLabColor() const;
  /// The colour in another space through the engine in force; null when there is no way there.
  std::shared_ptr<Color> ConvertToColorProfile(const ColorProfile &profile, RenderingIntent intent) const;
  std::shared_ptr<Color> ConvertToColorSpace(const ColorSpace &space, RenderingIntent intent) const;

  // --- Records: defined in color_record.cpp -------------------------------------------------------------------------

  /// Channels times their full scale, truncated, cut off to the component: Rgb as RGB48, Cmyk as CMYK255, Grayscale as
  /// GRAY16, Lab as LAB255, Cmy, Hls, Hsv and Hexachrome by their names, Registration with its density; an invalid
  /// record for Spot and Indexed.
  ///
  /// KEPT: a hue is its degrees divided by 255, where one would expect 360; LAB255 holds a* + 128 and b* + 128 as
  /// profiles do, where one would expect the record's own scale of 60/127. Callers rely on the way back.
  operator CLR_COLORSPEC() const;
  /// The inverse of the conversion above; scaled records by their full scale: 255, 65535 of the 16-bit forms, 100 of
  /// percentages and densities, 1 of scRGB and black-and-white. YIQ becomes Rgb and XYZ becomes Lab by formula; a spot
  /// colour brings its appearance; a DeviceN colour and a user ink become what they look like, Cmyk or Rgb. The profile
  /// is the context's, else the application's for the model or one that interchanges with it. Null for a record without
  /// an appearance, and where no context has a profile.
  static std::shared_ptr<Color> ColorSpecToColor(const CLR_COLORSPEC &record, const ColorContext &context);

protected:
  Color(ColorModel model, const ColorSpace &space);
  /// An empty name stands for no profile.
  Color(ColorModel model, const std::wstring &profileName);
  struct AnySpace
  {};
  /// Without a look at whether the space takes colours.
  Color(AnySpace, const ColorSpace &space);
  void SetChannels(std::initializer_list<double> values);

private:
  ColorSpace space_;
};

} // namespace ColorSystem
