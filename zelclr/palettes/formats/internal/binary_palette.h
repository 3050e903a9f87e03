// What binary palette formats share: their bytes and names, ranges of their numbers, the end of reading.
//
// Threads: plain functions. Errors: those of ByteReader; text that is no UTF becomes U+FFFD.
#pragma once

#include "zelclr/palettes/formats/palette_format.h"
#include "zelclr/platform/bytes.h"

namespace ZelClr {

inline std::span<const std::uint8_t> BytesOf(std::string_view text)
{
  return {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()};
}

inline std::string TextOf(std::span<const std::uint8_t> bytes)
{
  return {bytes.begin(), bytes.end()};
}

/// UTF-8 of so many units of UTF-16, most significant byte first, up to the first NUL. The reader fails when there are
/// not so many.
std::string ReadUtf16(ZelUtl::ByteReader &reader, std::size_t units);
/// UTF-16 without NULs, for names that end with one.
std::u16string Utf16FromUtf8(std::string_view text);
/// The units, most significant byte first, and a NUL behind them.
void WriteUtf16(ZelUtl::ByteWriter &writer, std::u16string_view text);

/// IEEE 754 single precision, most significant byte first.
float ReadBigFloat(ZelUtl::ByteReader &reader);
void WriteBigFloat(ZelUtl::ByteWriter &writer, double value);

/// 0 to 1 as 0 to `most`, to the nearest; what lies beyond is cut off, and a NaN is 0.
std::uint16_t Scaled(double value, double most);
/// The number within the range; empty when it lies further outside than a rounded float may, or is none.
std::optional<double> WithinRange(double value, double least, double most);

/// A swatch of the model's numbers; never of SwatchModel::Record.
Swatch SwatchOfValues(std::string name, SwatchModel model, const std::array<double, 4> &values);

/// The book with its swatches numbered; empty, with a problem, when it has none.
std::optional<SwatchBook> Finished(SwatchBook book, ReadProblem &problem);

} // namespace ZelClr
