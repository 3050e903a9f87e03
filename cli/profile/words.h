// What people call models, classes and intents.
//
// Threads and errors: constant tables.
#pragma once

#include "zelclr/colorsystem/color_model.h"
#include "zelclr/colorsystem/color_profile.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

namespace cli {

struct ModelWords
{
  ColorSystem::ColorModel model;
  const char *option; ///< on the command line and in JSON
  const char *name;
  std::string_view inks;      ///< a letter for each; empty for what is no ink
  std::optional<float> white; ///< of every channel where the device shows its white
};

/// The models that profiles have.
inline constexpr ModelWords kModelWords[] = {
  {ColorSystem::ColorModel::Rgb, "rgb", "RGB", "", 1.0f},
  {ColorSystem::ColorModel::Cmyk, "cmyk", "CMYK", "CMYK", 0.0f},
  {ColorSystem::ColorModel::Grayscale, "gray", "Gray", "", 1.0f},
  {ColorSystem::ColorModel::Lab, "lab", "Lab", "", {}},
  {ColorSystem::ColorModel::Cmy, "cmy", "CMY", "CMY", 0.0f},
  {ColorSystem::ColorModel::Hls, "hls", "HLS", "", {}},
  {ColorSystem::ColorModel::Hsv, "hsv", "HSV", "", {}},
  {ColorSystem::ColorModel::Hexachrome, "6clr", "Six inks", "CMYKOG", 0.0f},
};

struct ClassWords
{
  ColorSystem::DeviceClass deviceClass;
  const char *option;
};

inline constexpr ClassWords kClassWords[] = {
  {ColorSystem::DeviceClass::Input, "input"},
  {ColorSystem::DeviceClass::Display, "display"},
  {ColorSystem::DeviceClass::Output, "output"},
  {ColorSystem::DeviceClass::ColorSpace, "space"},
};

struct IntentWords
{
  ColorSystem::RenderingIntent intent;
  const char *option;
  const char *name;
};

inline constexpr IntentWords kIntentWords[] = {
  {ColorSystem::RenderingIntent::Perceptual, "perceptual", "perceptual"},
  {ColorSystem::RenderingIntent::RelativeColorimetric, "relative", "relative colorimetric"},
  {ColorSystem::RenderingIntent::Saturation, "saturation", "saturation"},
  {ColorSystem::RenderingIntent::AbsoluteColorimetric, "absolute", "absolute colorimetric"},
};

/// The rows of values that tables have all of: every model of a profile, every class, every intent.
inline const ModelWords &WordsOf(ColorSystem::ColorModel model)
{
  return *std::find_if(std::begin(kModelWords), std::end(kModelWords) - 1,
                       [model](const ModelWords &row) { return row.model == model; });
}
inline const ClassWords &WordsOf(ColorSystem::DeviceClass deviceClass)
{
  return kClassWords[static_cast<std::size_t>(deviceClass)];
}
inline const IntentWords &WordsOf(ColorSystem::RenderingIntent intent)
{
  return kIntentWords[static_cast<std::size_t>(intent)];
}

} // namespace cli
