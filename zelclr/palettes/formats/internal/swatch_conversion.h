// What writers of palette formats do first: bring the swatches of a book into what the format can hold, and say what
// that costs.
//
// Threads: plain functions. Errors: none; what is lost becomes a note.
#pragma once

#include "zelclr/palettes/formats/swatch_book.h"

#include <limits>
#include <span>

namespace ZelClr {

/// "1 group", "2 groups"; the plural when it is not the singular with an "s".
std::string CountOf(std::size_t count, std::string_view singular, std::string_view plural = {});

/// The numbers of many swatches in one model, which is not SwatchModel::Record: RgbOfSwatch and its siblings for all of
/// them with one conversion for each model that they come from.
std::vector<std::array<double, 4>> ValuesOfSwatches(std::span<const Swatch> swatches, SwatchModel model);

/// For FormatLimits::rgbBeyond: as far as a record of floats goes.
inline constexpr double kAnyRgb = std::numeric_limits<float>::max();

/// What a format can hold.
struct FormatLimits
{
  bool rgb = true;
  bool cmyk = false;
  bool gray = false;
  bool lab = false;
  bool spot = false;                                          ///< that a colour is an ink of its own
  bool (*keepsRecord)(const CLR_COLORSPEC &record) = nullptr; ///< of what no model above states; null: none
  bool tints = false;                                         ///< of spot colours
  bool names = true;                                          ///< of swatches
  bool bookName = false;
  bool description = false;
  bool columns = false;
  bool groups = false;
  double rgbBeyond = 0;                     ///< how far beyond 0 to 1 RGB may go
  double rgbSteps = 0;                      ///< full scale of RGB in whole numbers; 0 where it holds any number
  SwatchModel otherwise = SwatchModel::Rgb; ///< what a colour becomes whose model the format cannot hold
};

/// The book as the format can hold it, with a note for each kind of loss. ConvertProfiles has been called; swatches
/// without an appearance are left out; the model of every swatch is one that the limits name, or Record where they keep
/// it; RGB, CMYK and gray are 0 to 1, RGB beyond by `rgbBeyond`; Lab is what profiles hold, a* and b* of -128 to 127.
/// Names are valid UTF-8.
SwatchBook Fitted(SwatchBook book, const FormatLimits &limits, std::vector<std::string> &notes);

/// Whether a format of at most so many colours takes it; none takes a book without any.
bool IsWritable(const SwatchBook &book, std::size_t most, std::string &reason);

/// The registration colour, for FormatLimits::keepsRecord.
bool IsRegistration(const CLR_COLORSPEC &record);

} // namespace ZelClr
