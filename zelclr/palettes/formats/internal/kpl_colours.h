// The colours of KPL palettes: the element that states one, both ways. The numbers are explained in kpl_palette.h.
//
// Threads: plain functions. Errors: an empty result, with the reason in English.
#pragma once

#include "zelclr/palettes/formats/swatch_book.h"
#include "zelclr/platform/xml_reader.h"

#include <span>

namespace ZelClr {

/// The largest number of a float of 16 bits, and of any component.
inline constexpr double kMostKplFloat = 65504.0;

/// The colour of an element at a bit depth ("U8", "U16", "F16", "F32"), without a name.
std::optional<Swatch> ReadKplColour(std::string_view element, std::span<const ZelUtl::XmlAttribute> attributes,
                                    std::string_view depth, std::string &reason);

struct KplColour
{
  std::string element; ///< "<Lab L=... space=.../>"
  std::string depth;
};

/// Of any model but SwatchModel::Record, as Fitted leaves it, without its profile. Floats only for RGB beyond 0 to 1.
KplColour KplColourOf(const Swatch &swatch);

} // namespace ZelClr
