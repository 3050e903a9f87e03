// Converters of colours and pixels: the family's base, which converts by formula (formula_pixels.h), without profiles.
//
// Record models (clr_colorspec.h) and models of this layer meet in two tables. A record is brought to the canonical
// model of its family before it is converted and back after it:
//
//   CMYK, CMYK100, CMY           as CMYK255 (3)        HSB, HLS      as RGB255 (5)
//   black-and-white, GRAY255     as GRAY16 (24)        YIQ, scRGB    as RGB48 (23)
//   LAB, XYZ                     as LAB255 (18)        BGRA          as RGBA (29)
//
// LAB255 holds L* 255/100, a* + 128 and b* + 128 here, as profiles do; LAB its own scale of 60/127; XYZ is on D50,
// white 246, 255, 210.
//
// Threads: a converter may be used by many threads at once, but for its setters. Errors: false, with the target as it
// was; of pixel views the destination is unspecified then.
#pragma once

#include "zelclr/colorsystem/color_context.h"
#include "zelclr/colorsystem/color_data.h"
#include "zelclr/colour/clr_colorspec.h"

#include <cstdint>
#include <optional>
#include <span>
#include <utility>

namespace ColorSystem {

class ZELCLR_API SimpleColorConverter
{
public:
  explicit SimpleColorConverter(const ColorContext &target);
  virtual ~SimpleColorConverter();
  SimpleColorConverter(const SimpleColorConverter &) = delete;
  SimpleColorConverter &operator=(const SimpleColorConverter &) = delete;

  // --- Colours ------------------------------------------------------------------------------------------------------
  // Source and target may be one record. A source without a model is left alone, and that counts as success.

  /// Into the target context, in the colour's own model.
  virtual bool Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target) const;
  /// Into a record model. `secondType`, when it is not 0, is the model that the process plates of a DeviceN colour are
  /// converted to.
  virtual bool Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType,
                       unsigned secondType) const;
  virtual bool Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, const ColorModel &model) const;
  /// Many colours into one record model, with one conversion for all neighbours of one family. Both spans have one
  /// length; what cannot be converted stays, and makes the answer false.
  bool ConvertList(std::span<const CLR_COLORSPEC> source, std::span<CLR_COLORSPEC> target, unsigned targetType) const;
  /// Whether the target shows the colour as it is. Always true by formula.
  virtual bool IsColorInGamut(const CLR_COLORSPEC &colour) const;
  /// For windows: 0x00BBGGRR in the target context; 0 for a colour without an appearance. With `markGamut`, a converter
  /// of a proof gives its warning colour for a colour out of gamut.
  virtual COLORREF ConvertToColorRef(const CLR_COLORSPEC &colour, bool markGamut) const;

  // --- Pixels -------------------------------------------------------------------------------------------------------

  /// The views have one size; they may be of one buffer when their pixels have one size and their rows one stride.
  virtual bool ConvertColorData(const ColorData &source, ColorData &destination) const;
  /// Rows of record models: samples of 8 bits, 0 to 255 (percentages 0 to 100, black-and-white 0 and 1); of 16 bits for
  /// RGB48 and GRAY16; floats for scRGB. RGB255 lies as B G R, RGBA and BGRA as they are called, all others in the
  /// order of the names of their components. Without strides, or with 0 for one, rows are padded to 4 bytes. False for
  /// models without rows: spot, DeviceN and registration colours, inks and indices, and HSB and HLS, whose hue does not
  /// fit a byte.
  virtual bool ConvertRasterLines(const void *source, unsigned sourceType, std::uint32_t sourceStride,
                                  void *destination, unsigned destinationType, std::uint32_t destinationStride,
                                  std::uint32_t width, std::uint32_t height) const;
  virtual bool ConvertRasterLines(const void *source, unsigned sourceType, void *destination, unsigned destinationType,
                                  std::uint32_t width, std::uint32_t height) const;

  // --- What a conversion does ---------------------------------------------------------------------------------------

  virtual bool GetColorConversionRequired(const ColorModel &from, const ColorModel &to) const;
  /// Of record models.
  virtual bool GetColorConversionRequired(unsigned from, unsigned to) const;
  virtual const ColorContext &GetTargetColorContext() const;

  /// Whether spot colours, and DeviceN colours with spot plates, are converted, and by which of their numbers: the
  /// alternative of that model in the ink's definition. Else they stay what they are.
  std::pair<bool, ColorModel> GetConvertSpotColors() const { return convertSpotColors_; }
  void SetConvertSpotColors(const std::pair<bool, ColorModel> &setting) { convertSpotColors_ = setting; }

  // --- Models (color_type_models.cpp) -------------------------------------------------------------------------------

  /// The model of a record model's channels and their full scale, 255 unless the table says otherwise. False for record
  /// models without one.
  static bool ColorTypeToColorModel(unsigned type, ColorModel &model, double &fullScale);
  /// The record model that the library makes for a model; false, with type 0, for those that have none.
  static bool ColorModelToColorType(ColorModel model, unsigned &type, double &fullScale);
  /// The canonical record model of a family; types below 2 and above 30 stay.
  static unsigned NormalizeColorType(unsigned type);
  /// The colour's own model, seen through references. A DeviceN colour has that of its space: RGB255, CMYK, or 0 when
  /// the space has no base; its own when it has no space.
  static unsigned GetNormalizedColorSpecType(const CLR_COLORSPEC &colour);

  // --- Records (record_normalization.cpp) ---------------------------------------------------------------------------

  /// The colour in the canonical model of its family. A DeviceN colour gives all its plates overprinted by formula; a
  /// registration colour and a user's ink as they look. False, with the result as it was, for a colour without one.
  static bool NormalizeColorSpec(const CLR_COLORSPEC &colour, CLR_COLORSPEC &normalized);
  /// A spot colour's appearance at its density: the alternative of the model, else the first.
  static bool NormalizeSpotColorSpecToProcess(const CLR_COLORSPEC &spot, ColorModel model, CLR_COLORSPEC &process);
  /// The way back: a colour of a canonical model as another model of its family; of LAB255 also XYZ.
  static bool DenormalizeColorSpec(const CLR_COLORSPEC &normalized, unsigned type, CLR_COLORSPEC &colour);

  // --- Formulas -----------------------------------------------------------------------------------------------------
  // formula_pixels.h. False when a view is not of the model in the name.

#define ZELCLR_FORMULA(A, B)                                                                                           \
  static bool Convert##A##To##B(const ColorData &source, ColorData &destination)                                       \
  {                                                                                                                    \
    return ConvertPixels(source, ColorModel::A, destination, ColorModel::B);                                           \
  }
#define ZELCLR_FORMULAS(From, A, B, C, D, E)                                                                           \
  ZELCLR_FORMULA(From, A)                                                                                              \
  ZELCLR_FORMULA(From, B) ZELCLR_FORMULA(From, C) ZELCLR_FORMULA(From, D) ZELCLR_FORMULA(From, E)
  ZELCLR_FORMULAS(Rgb, Cmyk, Hexachrome, Grayscale, Lab, Xyz)
  ZELCLR_FORMULAS(Cmyk, Rgb, Hexachrome, Grayscale, Lab, Xyz)
  ZELCLR_FORMULAS(Hexachrome, Rgb, Cmyk, Grayscale, Lab, Xyz)
  ZELCLR_FORMULAS(Grayscale, Rgb, Cmyk, Hexachrome, Lab, Xyz)
  ZELCLR_FORMULAS(Lab, Rgb, Cmyk, Hexachrome, Grayscale, Xyz)
  ZELCLR_FORMULAS(Xyz, Rgb, Cmyk, Hexachrome, Grayscale, Lab)
#undef ZELCLR_FORMULAS
#undef ZELCLR_FORMULA

protected:
  /// For converters that live shorter than their context.
  struct Borrowed
  {};
  SimpleColorConverter(Borrowed, const ColorContext &target);

  /// A registration colour: on every plate. It stays one where no model is wanted, and looks as NormalizeColorSpec has
  /// it in any other.
  bool ConvertColorSpecRegistration(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType) const;

private:
  static bool ConvertPixels(const ColorData &source, ColorModel from, ColorData &destination, ColorModel to);
  bool ConvertDeviceN(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned secondType) const;
  bool ConvertProcess(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType) const;

  std::optional<ColorContext> ownTarget_;
  const ColorContext *target_;
  std::pair<bool, ColorModel> convertSpotColors_{false, ColorModel::Cmyk};
};

} // namespace ColorSystem
