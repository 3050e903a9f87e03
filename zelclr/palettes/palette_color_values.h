// The values of a colour in palette files, "0.2,0.4,1", and the record that they state.
//
// Which numbers stand for a model, and on which scale, is one table in palette_color_values.cpp. Where a model has a
// density, it follows as one more value when it is not full.
// Threads: plain functions. Errors: a value counts as far as it is a number ("0.5x" is 0.5); what is none, NaN and
// infinity too, is 0, what is beyond a component's range is its nearest end, and a model without values (named and spot
// colours, XYZ, DeviceN, RGBA) gives an invalid colour and an empty text.
#pragma once

#include "zelclr/colour/clr_colorspec.h"

#include <string>
#include <string_view>

namespace ZelClr {

/// The colour of a model that values state, in the C locale; missing ones are 0, more are not looked at.
ZELCLR_API CLR_COLORSPEC ColorFromPaletteValues(unsigned model, std::string_view values);
/// Each value in the shortest decimals that ColorFromPaletteValues reads as the same component again. Components that
/// their model cannot have are brought to their nearest end, hues into one turn.
ZELCLR_API std::string PaletteValuesFromColor(const CLR_COLORSPEC &color);
/// Whether a palette file can state a colour of this model by itself, and gives it back as the same model.
ZELCLR_API bool HasPaletteValues(unsigned model);
/// The same colour in a model for which HasPaletteValues holds: CMYK and CMYK100 as CMYK255, LAB255 and XYZ as LAB,
/// RGBA and BGRA as RGB255, a spot colour in the model of its definition, an RGB-based DeviceN colour as RGB255, all
/// else as CMYK255, by the formulas; invalid for a colour that has no appearance.
ZELCLR_API CLR_COLORSPEC StorableColor(const CLR_COLORSPEC &color);

} // namespace ZelClr
