// Colours between colours: what a fountain fill is made of. docs/fountains.md states the rules and draws them.
//
// What colours blend in. With `keepInks`, what prints on plates of its own stays there: tints of one ink blend by their
// density, with white as its lack; DeviceN colours of one space blend plate by plate, with white and with what the
// space can hold. All else, and everything without `keepInks`, blends as process colours: colours of one model in that
// model (HSB and HLS in RGB255, black-and-white in GRAY255), others in the highest of their families
//
//   gray  <  RGB  <  Lab  <  CMYK  <  Hexachrome
//
// on its scale of 255, or in RGB48 and GRAY16 where one of them has more than 8 bits. An ink counts as its appearance.
//
// Conversions go through WClrConvert::ConvertColorSpec with the context, but change of scale within CMYK, which it does
// not do. Blends belong to no palette, but those of inks.
//
// Threads: plain functions. Errors: 0 or false where a colour has no appearance (an index, an ink without its palette)
// or cannot be converted; results stay as they were.
#pragma once

#include "zelclr/colour/fills/clr_fountcolor_array.h"

#include <span>

namespace ColorSystem {
class ColorContext;
}

/// A model number of colour_models.h.
using CLR_TYPE_ENUM = std::uint16_t;

/// The model that the stops of a fill blend in, and that its samples have; 0 for an empty array.
ZELCLR_API CLR_TYPE_ENUM CMGGetBlendColorSpace(const CLR_FOUNTCOLOR_ARRAY &fountain, bool keepInks);

/// The colour at a share of the way from one to another; below 0, and what is no number, counts as 0, above 1 as 1.
/// Straight, each component moves evenly. Round the wheel, hue, saturation and brightness of the two in RGB do; a
/// neutral colour has the other's hue, gray and inks blend straight.
ZELCLR_API bool CMGBlendColorSpec(CLR_COLORSPEC &result, const CLR_COLORSPEC &from, const CLR_COLORSPEC &to,
                                  double share, ClrBlendMode mode, bool keepInks, ColorSystem::ColorContext &context);

/// Colours mixed by ratios, one for each colour: the sum of ratio * component by that of the ratios. A ratio that is
/// not above 0, or not finite, counts as 0; its colour still counts for the model. False where no ratio is above 0.
ZELCLR_API bool CMGBlendColorSpecByRatios(CLR_COLORSPEC &result, std::span<const CLR_COLORSPEC> colours,
                                          std::span<const double> ratios, bool keepInks,
                                          ColorSystem::ColorContext &context);
