// What the palette commands say of one colour: how it looks, in numbers and in words.
//
// Threads: plain functions. Errors: empty results, as said.
#pragma once

#include "cli/output.h"
#include "zelclr/convert/formulas/record_lab.h"
#include "zelclr/palettes/formats/swatch_book.h"

#include <optional>
#include <string>

namespace cli {

/// RGB255 by the profiles of the application, tint applied; invalid for an ink whose looks nobody knows.
CLR_COLORSPEC ScreenOf(const ZelClr::Swatch &swatch);
/// CIE Lab on D50, tint applied; empty for an ink whose looks nobody knows.
std::optional<ZelClr::Formulas::Lab> LabOf(const ZelClr::Swatch &swatch);
/// CIEDE2000; empty where either is not known.
std::optional<double> DifferenceOf(const ZelClr::Swatch &a, const ZelClr::Swatch &b);

/// "RGB", "CMYK", "Gray", "Lab"; else the name of the record's model.
std::string ModelInWords(const ZelClr::Swatch &swatch);
/// "RGB 255 128 0", "CMYK 0 50 100 0": in the units of people, rounded to tenths, RGB to whole ones.
std::string ValueInWords(const ZelClr::Swatch &swatch);
/// The name, harmless; the value for a colour without one.
std::string NameInWords(const ZelClr::Swatch &swatch);
/// "spot", "spot, 40 %"; empty for a process colour.
std::string InkInWords(const ZelClr::Swatch &swatch);
/// The hexadecimal screen value, "no known look" without one.
std::string ScreenInWords(const CLR_COLORSPEC &screen);

Json JsonOfSwatch(const ZelClr::Swatch &swatch);

/// Equal for colours that are the same to 16 bits: model, numbers, whether it is an ink of its own, tint; names do not
/// count.
std::string ColourKey(const ZelClr::Swatch &swatch);

/// "1 colour", "32 colours"
std::string Counted(std::size_t count, const std::string &what);

} // namespace cli
