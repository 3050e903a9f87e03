#include "zelclr/colorsystem/proofing/pixel_conversion.h"

#include "zelclr/colorsystem/color_profile_manager.h"
#include "zelclr/colorsystem/internal/raster_rows.h"
#include "zelclr/colorsystem/proofing/proof_color_converter.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/settings/color_settings.h"

#include <limits>
#include <memory>

namespace {

using namespace ColorSystem;

constexpr const wchar_t *kRgb = L"sRGB-Placeholder!";
constexpr const wchar_t *kPress = L"USWebCoatedSWOP.icc";
constexpr const wchar_t *kGray = L"Gray Gamma 22.icc";

/// Whose rows of CMYK have a stride.
constexpr std::uint32_t kWidestRendering = std::numeric_limits<std::uint32_t>::max() / 4;

std::shared_ptr<ColorProfile> Installed(const wchar_t *name)
{
  return ColorProfileManager::GetInstance().GetColorProfile(name);
}

/// Null for a model without one.
const wchar_t *UsualProfileOf(ColorModel model, bool renderingOfCmyk)
{
  switch (model) {
  case ColorModel::Rgb:
    return renderingOfCmyk ? kPress : kRgb;
  case ColorModel::Cmyk:
    return kPress;
  case ColorModel::Grayscale:
    return kGray;
  default:
    return nullptr;
  }
}

bool Recover(const void *source, void *destination, std::uint32_t width, std::uint32_t height)
{
  const auto rgb = Installed(kRgb);
  const auto press = Installed(kPress);
  if (width > kWidestRendering || rgb == nullptr || press == nullptr)
    return false;
  const ColorSettings &settings = ColorSettings::GetApplicationColorSettings();
  ColorConverter converter(ColorContext(*rgb, RenderingIntent::RelativeColorimetric),
                           ColorContext(*press, settings.GetDefaultColorContext().GetRenderingIntent()));
  converter.SetPreservePureBlack(settings.GetPreservePureBlack());
  converter.SetMapGrayscalToBlackChannel(settings.GetMapGrayToCmykBlackChannel());
  return converter.ConvertRasterLines(source, ZelClr::ClrModel::Rgb255, 3 * width, destination,
                                      ZelClr::ClrModel::Cmyk255, 4 * width, width, height);
}

bool ConvertForDisplay(const wchar_t *profileName, const void *source, std::uint32_t type, std::uint32_t sourceStride,
                       std::uint32_t flags, void *destination, std::uint32_t destinationStride, bool destinationAlpha,
                       std::uint32_t width, std::uint32_t height)
{
  ColorModel model{};
  double fullScale = 0.0;
  if (!SimpleColorConverter::ColorTypeToColorModel(type, model, fullScale))
    return false;
  const bool renderingOfCmyk = (flags & kSourceIsRenderingOfCmyk) != 0;
  const bool named = profileName != nullptr && profileName[0] != L'\0';
  const wchar_t *const name = named ? profileName : UsualProfileOf(model, renderingOfCmyk);
  const auto profile = name == nullptr ? nullptr : Installed(name);
  if (profile == nullptr)
    return false;
  if (width == 0 || height == 0)
    return true;
  if (source == nullptr || destination == nullptr)
    return false;

  // What is recovered has a buffer of its own: the destination's rows may be shorter than those of CMYK.
  std::unique_ptr<std::uint8_t[]> recovered;
  if (renderingOfCmyk) {
    if (width > kWidestRendering ||
        std::uint64_t{width} * height > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()) / 4)
      return false;
    recovered = std::make_unique_for_overwrite<std::uint8_t[]>(std::size_t{4} * width * height);
    if (!Recover(source, recovered.get(), width, height))
      return false;
    type = ZelClr::ClrModel::Cmyk255;
    source = recovered.get();
    sourceStride = 4 * width;
  }
  auto from = Internal::RasterFormatOf(type);
  const auto to = Internal::RasterFormatOf(destinationAlpha ? ZelClr::ClrModel::Bgra : ZelClr::ClrModel::Rgb255);
  if (!from)
    return false;
  // KEPT: RGB of every kind lies as B G R here, and has alpha as the flags say, where one would expect the order and
  // the alpha of RGBA, BGRA and RGB48; renderers depend on it.
  if (from->recordType == 0 && !renderingOfCmyk) {
    from->format.reversed = model == ColorModel::Rgb;
    from->format.alpha = (flags & kSourceHasAlpha) != 0; // counts where the format can have it
  }
  const DisplayColorConverter converter(ColorContext(*profile, RenderingIntent::RelativeColorimetric));
  return Internal::ConvertRaster(converter, source, *from, sourceStride, destination, *to, destinationStride, width,
                                 height);
}

} // namespace

bool ConvertPixelsForDisplay(const wchar_t *profileName, const void *source, uint32_t colourType, uint32_t sourceStride,
                             uint32_t flags, void *destination, uint32_t destinationStride, uint8_t destinationAlpha,
                             uint32_t width, uint32_t height)
try {
  return ConvertForDisplay(profileName, source, colourType, sourceStride, flags, destination, destinationStride,
                           (destinationAlpha & kDestinationHasAlpha) != 0, width, height);
} catch (...) { // callers are not of C++
  return false;
}

bool RecoverCmykPixels(const void *source, void *destination, uint32_t width, uint32_t height)
try {
  return width == 0 || height == 0 ||
         (source != nullptr && destination != nullptr && Recover(source, destination, width, height));
} catch (...) {
  return false;
}
