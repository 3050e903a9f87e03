// A palette as files of any program state it: the value that every format reads into and writes from.
//
// Numbers are kept as finely as files have them; records are made of them at the end. Texts are UTF-8.
// Threads: values. Errors: none.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZelClr {

/// In which terms a swatch states its colour.
enum class SwatchModel : std::uint8_t
{
  Rgb,    ///< red, green, blue of 0 to 1, encoded (sRGB where no profile is named); beyond that for wider gamuts
  Cmyk,   ///< cyan, magenta, yellow, black of 0 (paper) to 1 (full ink)
  Gray,   ///< 0 (black) to 1 (white), encoded like RGB
  Lab,    ///< CIE L* of 0 to 100, a*, b* of D50
  Record, ///< a colour that only a record states: six inks, registration, user inks; the numbers are unused
};

/// One colour with its name. Make it with one of the functions below: they keep the numbers and the record one colour.
struct Swatch
{
  std::string name; ///< empty when the file gives none
  SwatchModel model = SwatchModel::Record;
  std::array<double, 4> values{}; ///< as the model says; of a spot colour, what its full ink looks like
  CLR_COLORSPEC record; ///< the same colour as records hold it: RGB255, CMYK255, GRAY255, LAB255 (by the scale of
                        ///< profiles: a* + 128), or any other
  bool spot = false;    ///< an ink of its own, called `name`
  double tint = 1;      ///< of a spot colour: 0 (paper) to 1 (full ink)
  std::optional<std::size_t> profile; ///< of SwatchBook::profiles, that the numbers are meant by
  std::size_t line = 0;               ///< where it stands in a text file, from 1; in others its number, from 1
};

ZELCLR_API Swatch RgbSwatch(std::string name, double red, double green, double blue);
ZELCLR_API Swatch CmykSwatch(std::string name, double cyan, double magenta, double yellow, double black);
ZELCLR_API Swatch GraySwatch(std::string name, double gray);
ZELCLR_API Swatch LabSwatch(std::string name, double l, double a, double b);
/// Of any record; those of one of the four models, and HSB, HLS, YIQ, CMY, LAB and XYZ of their families, state their
/// numbers, too. An RGB48, SCRGB or GRAY16 keeps all of its precision. A spot record states what its definition looks
/// like where it has one, and its density as the tint; without a name it takes the definition's.
ZELCLR_API Swatch RecordSwatch(std::string name, const CLR_COLORSPEC &colour);

/// Where a named group of swatches begins. Groups are in order; what stands before the first belongs to none.
struct SwatchGroup
{
  std::string name;
  std::size_t first = 0; ///< index of its first swatch
};

struct SwatchBook
{
  std::string name;        ///< empty when the file gives none
  std::string description; ///< of more lines, maybe
  std::size_t columns = 0; ///< swatches in a row; 0 when the file does not say
  std::vector<SwatchGroup> groups;
  std::vector<Swatch> swatches;
  std::vector<std::string> profiles; ///< bytes of the ICC profiles that came with it
  std::vector<std::string> notes;    ///< what the reader could not keep, a sentence each; never silent
};

/// Brings what is meant by a profile of the file into the profiles of the application, through the converter: RGB stays
/// RGB, CMYK stays CMYK. Afterwards no swatch names a profile; what could not be converted keeps its numbers, and a
/// note says so.
ZELCLR_API void ConvertProfiles(SwatchBook &book);

/// Whether it is known what the swatch looks like: not for an ink, an index or a spot colour whose palette is not at
/// hand.
ZELCLR_API bool HasAppearance(const Swatch &swatch);

/// The colours of a swatch for formats that hold but one model: RGB of 0 to 1 (clipped), CMYK of 0 to 1, Lab. What
/// changes model goes through the converter of the application's context, to 16 bits, but for gray, which is an RGB of
/// three equal numbers; a tint lightens first, as ink on paper does. Numbers count as those of the application's
/// profiles: ConvertProfiles comes before. A swatch without an appearance is black.
ZELCLR_API std::array<double, 3> RgbOfSwatch(const Swatch &swatch);
ZELCLR_API std::array<double, 4> CmykOfSwatch(const Swatch &swatch);
ZELCLR_API std::array<double, 3> LabOfSwatch(const Swatch &swatch);

} // namespace ZelClr
