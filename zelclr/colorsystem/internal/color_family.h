// The way between models that may share a profile: Rgb, Hls and Hsv; Cmyk and Cmy.
// Source: A. R. Smith, "Color Gamut Transform Pairs", SIGGRAPH 1978 (HSV); G. Joblove, D. Greenberg, "Color Spaces for
// Computer Graphics", SIGGRAPH 1978 (HLS).
#pragma once

#include "zelclr/colorsystem/color_model.h"

#include <array>

namespace ColorSystem::Internal {

/// As many channels as the largest model has.
using Channels = std::array<double, 6>;

/// The channels of one model as those of another of its family: a hue is its degrees divided by 255; cyan, magenta and
/// yellow without black are 1 - (1 - c)(1 - k), and the black of these three is none. Channels of models that are not
/// of one family come back as they are.
Channels WithinFamily(ColorModel from, ColorModel to, const Channels &channels);

} // namespace ColorSystem::Internal
