#include "zelclr/colorsystem/simple_color_converter.h"

#include "zelclr/colorsystem/color_system_error.h"
#include "zelclr/colorsystem/engines/baking_color_transform.h"
#include "zelclr/colorsystem/formula_pixels.h"
#include "zelclr/colorsystem/internal/raster_rows.h"
#include "zelclr/colorsystem/internal/record_samples.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_color_device_n.h"
#include "zelclr/convert/w_clr_convert.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace ColorSystem {

namespace {

namespace ClrModel = ZelClr::ClrModel;
using Internal::RecordPixel;
using Words = TypedColorData<std::uint16_t, false, false, 65535>;
using Bytes = TypedColorData<std::uint8_t, false, false, 255>;

/// Fewer than are ever converted by a table: each colour of a list becomes what it becomes alone.
constexpr std::size_t kMostNeighbours = BakingColorTransform::kFewPixels - 1;

/// `use(view)` with the view of one pixel.
bool WithView(RecordPixel &pixel, const auto &use)
{
  if (Internal::RecordPixelFormat(pixel.model).type == SampleType::UInt8) {
    Bytes view(pixel.model, 1, 1, static_cast<std::uint32_t>(pixel.bytes.size()), pixel.bytes.data());
    return use(view);
  }
  Words view(pixel.model, 1, 1, static_cast<std::uint32_t>(pixel.bytes.size()), pixel.bytes.data());
  return use(view);
}

/// The model of pixels that a record model is made of.
std::optional<ColorModel> PixelModelOf(unsigned type)
{
  ColorModel model{};
  double fullScale = 0.0;
  if (!SimpleColorConverter::ColorTypeToColorModel(SimpleColorConverter::NormalizeColorType(type), model, fullScale) ||
      model == ColorModel::Spot || model == ColorModel::Registration)
    return std::nullopt;
  return model;
}

bool HasAlpha(unsigned type)
{
  return type == ClrModel::Rgba || type == ClrModel::Bgra;
}

/// 255 for a model without.
std::uint8_t AlphaOf(const CLR_COLORSPEC &colour)
{
  return HasAlpha(colour.GetType()) ? static_cast<std::uint8_t>(colour.Resolved().GetBlack()) : std::uint8_t{255};
}

void CopyTo(const CLR_COLORSPEC &source, CLR_COLORSPEC &target)
{
  if (&source != &target || source.IsReference())
    target.Copy(source);
}

} // namespace

SimpleColorConverter::SimpleColorConverter(const ColorContext &target)
  : ownTarget_(std::in_place, target),
    target_(&*ownTarget_)
{}

SimpleColorConverter::SimpleColorConverter(Borrowed, const ColorContext &target) : target_(&target) {}

SimpleColorConverter::~SimpleColorConverter() = default;

const ColorContext &SimpleColorConverter::GetTargetColorContext() const
{
  return *target_;
}

bool SimpleColorConverter::GetColorConversionRequired(const ColorModel &from, const ColorModel &to) const
{
  return from != to;
}

bool SimpleColorConverter::GetColorConversionRequired(unsigned from, unsigned to) const
{
  return from != to;
}

bool SimpleColorConverter::IsColorInGamut(const CLR_COLORSPEC & /*colour*/) const
{
  return true;
}

// --- Colours ---------------------------------------------------------------------------------------------------------

bool SimpleColorConverter::Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target) const
{
  if (source.GetType() != ClrModel::Invalid)
    CopyTo(source, target);
  return true;
}

bool SimpleColorConverter::Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, const ColorModel &model) const
{
  unsigned type = 0;
  double fullScale = 0.0;
  return ColorModelToColorType(model, type, fullScale) && Convert(source, target, type, 0);
}

bool SimpleColorConverter::Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType,
                                   unsigned secondType) const
{
  if (targetType == 0)
    return false;
  const unsigned type = source.GetType();
  if (type == ClrModel::Invalid)
    return true;
  const unsigned normalized = GetNormalizedColorSpecType(source);
  if (type == targetType && !GetColorConversionRequired(type, targetType) &&
      (secondType == 0 || (normalized == secondType && !GetColorConversionRequired(normalized, secondType))))
  {
    CopyTo(source, target);
    return true;
  }
  if (type == ClrModel::Registration)
    return ConvertColorSpecRegistration(source, target, targetType);
  if (type == ClrModel::DeviceN && targetType == ClrModel::DeviceN)
    return ConvertDeviceN(source, target, secondType);
  return ConvertProcess(source, target, targetType);
}

bool SimpleColorConverter::ConvertProcess(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType) const
{
  const auto targetModel = PixelModelOf(targetType);
  RecordPixel from;
  // The common colours are in their canonical model already, and need no other record.
  bool loaded = Internal::PixelFromRecord(source.Resolved(), from);
  if (!loaded) {
    CLR_COLORSPEC normalized;
    const bool known = source.IsSpot() ? NormalizeSpotColorSpecToProcess(source, convertSpotColors_.second, normalized)
                                       : NormalizeColorSpec(source, normalized);
    loaded = known && Internal::PixelFromRecord(normalized, from);
  }
  if (!loaded || !targetModel)
    return false;
  RecordPixel to;
  to.model = *targetModel;
  const bool converted = WithView(from, [&](const ColorData &sourceView) {
    return WithView(to, [&](ColorData &targetView) { return ConvertColorData(sourceView, targetView); });
  });
  CLR_COLORSPEC made;
  if (!converted || !Internal::RecordFromPixel(to, targetType, AlphaOf(source), made))
    return false;
  target = std::move(made);
  return true;
}

bool SimpleColorConverter::ConvertDeviceN(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned secondType) const
{
  // Its process plates are converted, and all others stay.
  CLR_COLORSPEC process;
  const WClrColorDeviceN *const value = source.GetDeviceN();
  if (value == nullptr || !value->GetProcessColor(process)) {
    CopyTo(source, target);
    return true;
  }
  auto changed = std::make_unique<WClrColorDeviceN>(*value);
  const unsigned base = GetNormalizedColorSpecType(source);
  unsigned wanted = secondType == 0 ? base : secondType;
  const auto wantedModel = PixelModelOf(wanted);
  const bool isLight = wantedModel == ColorModel::Rgb;
  if (isLight != value->IsRGBBased() &&
      !changed->ConvertToProcessType(isLight ? DeviceN_Process_RGB : DeviceN_Process_CMYK))
    return false;
  wanted = isLight                 ? unsigned{ClrModel::Rgb255}
           : changed->IsHexBased() ? unsigned{ClrModel::Hexachrome}
                                   : unsigned{ClrModel::Cmyk100};
  CLR_COLORSPEC converted;
  if (!ConvertProcess(process, converted, wanted) || !changed->SetProcessColor(converted, *target_, false))
    return false;
  CLR_COLORSPEC made(source.Resolved());
  CLR_COLORSPEC::MakeDEVICEN(made, changed.release());
  target = std::move(made);
  return true;
}

bool SimpleColorConverter::ConvertColorSpecRegistration(const CLR_COLORSPEC &source, CLR_COLORSPEC &target,
                                                        unsigned targetType) const
{
  if (targetType != ClrModel::Registration)
    return ConvertProcess(source, target, targetType);
  CopyTo(source, target);
  return true;
}

COLORREF SimpleColorConverter::ConvertToColorRef(const CLR_COLORSPEC &colour, bool /*markGamut*/) const
{
  CLR_COLORSPEC rgb;
  return Convert(colour, rgb, ClrModel::Rgb255, 0) && rgb.GetType() == ClrModel::Rgb255 ? rgb.GetCOLORREF()
                                                                                        : COLORREF{0};
}

bool SimpleColorConverter::ConvertList(std::span<const CLR_COLORSPEC> source, std::span<CLR_COLORSPEC> target,
                                       unsigned targetType) const
{
  const auto targetModel = PixelModelOf(targetType);
  if (source.size() != target.size())
    return false;
  bool all = true;
  std::vector<std::uint8_t> from, to;
  for (std::size_t first = 0; first < source.size();) {
    // As many neighbours as are plain colours of one canonical model and need the same conversion.
    const unsigned type = source[first].GetType();
    RecordPixel pixel;
    std::size_t end = first;
    from.clear();
    const bool converts =
      targetModel && !HasAlpha(type) && (type != targetType || GetColorConversionRequired(type, targetType));
    while (converts && end < source.size() && end - first < kMostNeighbours && source[end].GetType() == type &&
           Internal::PixelFromRecord(source[end].Resolved(), pixel))
    {
      const std::size_t size = Internal::RecordPixelFormat(pixel.model).BytesPerPixel();
      from.insert(from.end(), pixel.bytes.begin(), pixel.bytes.begin() + static_cast<std::ptrdiff_t>(size));
      ++end;
    }
    if (end == first) { // one by one
      all = Convert(source[first], target[first], targetType, 0) && all;
      ++first;
      continue;
    }
    RecordPixel made;
    made.model = *targetModel;
    const PixelFormat toFormat = Internal::RecordPixelFormat(made.model);
    const auto width = static_cast<std::uint32_t>(end - first);
    to.assign((end - first) * toFormat.BytesPerPixel(), 0);
    const auto fromView = CreateColorData(Internal::RecordPixelFormat(pixel.model), width, 1, 0, from.data());
    const auto toView = CreateColorData(toFormat, width, 1, 0, to.data());
    bool converted = ConvertColorData(*fromView, *toView);
    for (std::size_t i = 0; converted && i < end - first; ++i) {
      std::memcpy(made.bytes.data(), to.data() + i * toFormat.BytesPerPixel(), toFormat.BytesPerPixel());
      CLR_COLORSPEC record;
      converted = Internal::RecordFromPixel(made, targetType, 255, record);
      if (converted)
        target[first + i] = std::move(record);
    }
    all = converted && all;
    first = end;
  }
  return all;
}

// --- Pixels ----------------------------------------------------------------------------------------------------------

bool SimpleColorConverter::ConvertPixels(const ColorData &source, ColorModel from, ColorData &destination,
                                         ColorModel to)
{
  return source.GetColorModel() == from && destination.GetColorModel() == to && ConvertByFormula(source, destination);
}

bool SimpleColorConverter::ConvertColorData(const ColorData &source, ColorData &destination) const
{
  return ConvertByFormula(source, destination);
}

bool SimpleColorConverter::ConvertRasterLines(const void *source, unsigned sourceType, std::uint32_t sourceStride,
                                              void *destination, unsigned destinationType,
                                              std::uint32_t destinationStride, std::uint32_t width,
                                              std::uint32_t height) const
try {
  const auto from = Internal::RasterFormatOf(sourceType);
  const auto to = Internal::RasterFormatOf(destinationType);
  return from && to && source != nullptr && destination != nullptr &&
         Internal::ConvertRaster(*this, source, *from, sourceStride, destination, *to, destinationStride, width,
                                 height);
} catch (const ColorSystemError &) {
  return false;
}

bool SimpleColorConverter::ConvertRasterLines(const void *source, unsigned sourceType, void *destination,
                                              unsigned destinationType, std::uint32_t width, std::uint32_t height) const
{
  return ConvertRasterLines(source, sourceType, 0, destination, destinationType, 0, width, height);
}

} // namespace ColorSystem
