#include "zelclr/colorsystem/color_converter.h"

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/formula_pixels.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colorsystem/internal/kept_transforms.h"
#include "zelclr/colour/colour_models.h"
#include "zelclr/convert/w_clr_color_device_n.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>

namespace ColorSystem {

namespace {

namespace ClrModel = ZelClr::ClrModel;

std::atomic<IColorConverterFactory *> theFactory{nullptr};

/// Bands are of this size where pixels must go through another format: enough for an engine's fast way.
constexpr std::uint32_t kBandPixels = 65536;

std::unique_ptr<ColorData> ViewOfRows(const ColorData &whole, std::uint32_t first, std::uint32_t rows)
{
  return CreateColorData(whole.GetPixelFormat(), whole.GetWidth(), rows, whole.GetRowStride(),
                         const_cast<std::uint8_t *>(whole.GetRow(first)));
}

/// Engines have no formats for Xyz, and Lab is the same by formula.
ColorModel EngineModel(ColorModel model)
{
  return model == ColorModel::Xyz ? ColorModel::Lab : model;
}

/// What every engine has formats for.
PixelFormat CommonFormat(ColorModel pixels)
{
  const ColorModel model = EngineModel(pixels);
  return {model, model == ColorModel::Hexachrome ? SampleType::UInt8 : SampleType::UInt16};
}

/// Black that is printed or shown as black and nothing else.
bool IsPureBlack(const std::uint8_t *pixel, const PixelFormat &format)
{
  const std::size_t sample = format.BytesPerSample();
  const auto isAll = [&](unsigned channel, bool full) {
    if (format.type == SampleType::Float32) {
      float value;
      std::memcpy(&value, pixel + channel * sample, sizeof value);
      return value == (full ? 1.0f : 0.0f);
    }
    return std::all_of(pixel + channel * sample, pixel + (channel + 1) * sample,
                       [full](std::uint8_t byte) { return byte == (full ? 0xFF : 0); });
  };
  if (format.model != ColorModel::Cmyk) {
    for (unsigned channel = 0; channel < format.ColourChannels(); ++channel) {
      if (!isAll(channel, false))
        return false;
    }
    return true;
  }
  const unsigned black = format.IsReversed() ? 0 : 3;
  for (unsigned channel = 0; channel < 4; ++channel) {
    if (!isAll(channel, channel == black))
      return false;
  }
  return true;
}

/// A flag for each pixel; empty when none is pure black.
std::vector<bool> PureBlackOf(const ColorData &source)
{
  std::vector<bool> black;
  const PixelFormat &format = source.GetPixelFormat();
  const std::size_t size = format.BytesPerPixel();
  for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
    const std::uint8_t *pixel = source.GetRow(row);
    for (std::uint32_t column = 0; column < source.GetWidth(); ++column, pixel += size) {
      if (!IsPureBlack(pixel, format))
        continue;
      black.resize(std::size_t{source.GetWidth()} * source.GetHeight());
      black[std::size_t{row} * source.GetWidth() + column] = true;
    }
  }
  return black;
}

void PutPureBlack(const std::vector<bool> &black, ColorData &cmyk)
{
  for (std::size_t i = 0; i < black.size(); ++i) {
    for (unsigned channel = 0; black[i] && channel < 4; ++channel)
      cmyk.SetSample(static_cast<std::uint32_t>(i / cmyk.GetWidth()), static_cast<std::uint32_t>(i % cmyk.GetWidth()),
                     channel, channel == 3 ? 1.0f : 0.0f);
  }
}

bool CanBePureBlack(ColorModel model)
{
  return model == ColorModel::Rgb || model == ColorModel::Grayscale || model == ColorModel::Cmyk;
}

std::optional<ColorModel> ModelOf(unsigned type)
{
  ColorModel model{};
  double fullScale = 0.0;
  return SimpleColorConverter::ColorTypeToColorModel(type, model, fullScale) ? std::optional(model) : std::nullopt;
}

} // namespace

struct ColorConverter::Held
{
  using ByModel = std::array<std::shared_ptr<ColorProfile>, 8>;

  static ByModel Of(const ColorContext &context)
  {
    ByModel profiles;
    for (auto &profile : context.GetColorProfiles()) {
      if (const auto model = static_cast<std::size_t>(profile->GetColorModel()); model < profiles.size())
        profiles[model] = std::move(profile);
    }
    return profiles;
  }

  ByModel source, target;
  RenderingIntent intent; ///< of the target
  mutable Internal::KeptTransforms transforms{};
};

ColorConverter::ColorConverter(const ColorContext &source, const ColorContext &target)
  : SimpleColorConverter(target),
    ownSource_(std::in_place, source),
    source_(&*ownSource_),
    held_(new Held{Held::Of(*source_), Held::Of(SimpleColorConverter::GetTargetColorContext()),
                   target.GetRenderingIntent()})
{}

ColorConverter::ColorConverter(Borrowed borrowed, const ColorContext &source, const ColorContext &target)
  : SimpleColorConverter(borrowed, target),
    source_(&source)
{}

ColorConverter::~ColorConverter() = default;

void ColorConverter::SetColorConverterFactoryForTests(IColorConverterFactory *factory)
{
  theFactory = factory;
}

IColorConverterFactory *ColorConverter::GetColorConverterFactoryForTests()
{
  return theFactory;
}

const ColorContext &ColorConverter::GetTargetColorContext() const
{
  return SimpleColorConverter::GetTargetColorContext();
}

std::shared_ptr<ColorProfile> ColorConverter::ProfileFor(const ColorContext &context, ColorModel model) const
{
  if (const auto i = static_cast<std::size_t>(model); held_ != nullptr && i < held_->source.size()) {
    ColorProfile *const held = &context == source_                    ? held_->source[i].get()
                               : &context == &GetTargetColorContext() ? held_->target[i].get()
                                                                      : nullptr;
    if (held != nullptr)
      return {std::shared_ptr<ColorProfile>(), held}; // counts nothing
  }
  auto profile = context.GetColorProfile(model);
  return profile != nullptr ? profile : ColorContext::GetApplicationDefaultColorContext().GetColorProfile(model);
}

// --- Colours ---------------------------------------------------------------------------------------------------------

bool ColorConverter::GetColorConversionRequired(const ColorModel &from, const ColorModel &to) const
{
  const auto source = source_->GetColorProfile(from);
  const auto target = GetTargetColorContext().GetColorProfile(to);
  return source != nullptr && target != nullptr && *source != *target;
}

bool ColorConverter::GetColorConversionRequired(unsigned from, unsigned to) const
{
  const auto source = ModelOf(from);
  const auto target = ModelOf(to);
  return source && target && GetColorConversionRequired(*source, *target);
}

bool ColorConverter::Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target) const
{
  const unsigned type = source.GetType();
  if (type == ClrModel::Invalid)
    return true;
  if (type == ClrModel::Registration)
    return ConvertColorSpecRegistration(source, target, type);
  unsigned targetType = NormalizeColorType(GetNormalizedColorSpecType(source));
  const auto *const value = type == ClrModel::DeviceN ? source.GetDeviceN() : nullptr;
  const auto *const space = value == nullptr ? nullptr : value->GetColorSpace();
  const bool isSpot = source.IsSpot();
  const bool convertSpot =
    GetConvertSpotColors().first && (isSpot || (space != nullptr && space->HasColorPlate(DeviceN_Plate_Spot)));
  double fullScale = 0.0;
  if (convertSpot)
    ColorModelToColorType(GetConvertSpotColors().second, targetType, fullScale);
  const auto model = isSpot && !convertSpot ? std::nullopt : ModelOf(targetType);
  if (!model)
    return SimpleColorConverter::Convert(source, target);

  const ColorContext &context = GetTargetColorContext();
  if (context.GetColorProfile(*model) == nullptr && context.GetBlendingColorProfile() != nullptr)
    ColorModelToColorType(context.GetBlendingColorModel(), targetType, fullScale);
  const bool staysDeviceN = type == ClrModel::DeviceN && !convertSpot;
  return Convert(source, target, staysDeviceN ? unsigned{ClrModel::DeviceN} : targetType, targetType);
}

bool ColorConverter::Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, unsigned targetType,
                             unsigned secondType) const
{
  return SimpleColorConverter::Convert(source, target, targetType, secondType);
}

bool ColorConverter::Convert(const CLR_COLORSPEC &source, CLR_COLORSPEC &target, const ColorModel &model) const
{
  return SimpleColorConverter::Convert(source, target, model);
}

bool ColorConverter::ConvertOnce(const ColorContext &source, const ColorContext &target, const CLR_COLORSPEC &record,
                                 CLR_COLORSPEC &result, unsigned type)
{
  const ColorConverter converter(Borrowed(), source, target);
  return converter.Convert(record, result, type, 0);
}

bool ColorConverter::IsColorInGamut(const CLR_COLORSPEC &colour) const
{
  CLR_COLORSPEC normalized;
  const bool known = colour.IsSpot()
                       ? NormalizeSpotColorSpecToProcess(colour, GetConvertSpotColors().second, normalized)
                       : NormalizeColorSpec(colour, normalized);
  const auto model = known ? ModelOf(normalized.GetType()) : std::nullopt;
  if (!model)
    return true;
  const ColorContext &context = GetTargetColorContext();
  auto shown = context.GetColorProfile(*model);
  if (shown == nullptr)
    shown = context.GetBlendingColorProfile();
  const auto profile = ProfileFor(*source_, *model);
  if (profile == nullptr || shown == nullptr || *profile == *shown)
    return true;
  return GamutCheck(profile, shown).Holds(normalized);
}

// --- Pixels ----------------------------------------------------------------------------------------------------------

bool ColorConverter::GetShouldPreserveNumbers(const ColorModel &from, const ColorModel &to) const
{
  return from == to && preserveNumbers_.first && preserveNumbers_.second == from;
}

bool ColorConverter::ConvertPreserveNumbers(const ColorData &source, ColorData &destination,
                                            const ColorModel & /*model*/) const
{
  return ConvertByFormula(source, destination);
}

bool ColorConverter::ConvertColorData(const ColorData &source, ColorData &destination) const
{
  const ColorModel from = source.GetColorModel();
  const ColorModel to = destination.GetColorModel();
  if (GetShouldPreserveNumbers(from, to))
    return ConvertPreserveNumbers(source, destination, from);
  if (mapGrayscaleToBlackChannel_ && from == ColorModel::Grayscale && to == ColorModel::Cmyk)
    return ConvertGrayscaleToCmyk(source, destination);
  if (!preservePureBlack_ || to != ColorModel::Cmyk || !CanBePureBlack(from))
    return ConvertToColorProfile(source, destination);
  // It is looked for first: both may be views of one buffer.
  const std::vector<bool> black = PureBlackOf(source);
  if (!ConvertToColorProfile(source, destination))
    return false;
  PutPureBlack(black, destination);
  return true;
}

bool ColorConverter::ConvertToColorProfile(const ColorData &source, ColorData &destination) const
{
  const auto from = ProfileFor(*source_, EngineModel(source.GetColorModel()));
  const auto to = ProfileFor(GetTargetColorContext(), EngineModel(destination.GetColorModel()));
  if (from == nullptr || to == nullptr)
    return ConvertByFormula(source, destination);
  return Run(&ColorConverter::CreateColorTransformW, *from, source, destination);
}

std::shared_ptr<ColorTransform> ColorConverter::CreateColorTransformW(const ColorProfile &source,
                                                                      const ColorContext &target,
                                                                      const PixelFormat &from,
                                                                      const PixelFormat &to) const
{
  return CreateManagedTransform(source, target, from, to);
}

namespace {

/// Where a profile is converted to itself.
class SamePixels final : public ColorTransform
{
public:
  bool Convert(const ColorData &source, ColorData &destination) const override
  {
    return ConvertByFormula(source, destination);
  }
};

} // namespace

std::shared_ptr<ColorTransform> ColorConverter::CreateManagedTransform(const ColorProfile &source,
                                                                       const ColorContext &target,
                                                                       const PixelFormat &from,
                                                                       const PixelFormat &to) const
{
  const auto profile = ProfileFor(target, to.model);
  const auto engine = ColorManagementSystem::GetCurrent();
  if (profile == nullptr || engine == nullptr)
    return nullptr;
  TransformOptions options;
  options.intent =
    held_ != nullptr && &target == &GetTargetColorContext() ? held_->intent : target.GetRenderingIntent();
  options.source = from;
  options.destination = to;
  const auto make = [&]() -> std::shared_ptr<ColorTransform> {
    if (from.model == to.model && source == *profile) {
      static const auto same = std::make_shared<SamePixels>();
      return same;
    }
    return engine->CreateTransform(source, *profile, options);
  };
  if (held_ == nullptr)
    return make();
  // The numbers are read before anything is made: what is made of a newer file is not found under them again.
  const ColorTransformKey key{{source.GetContentNumber(), profile->GetContentNumber(), 0}, false, options};
  return held_->transforms.FindOrMake({engine.get(), key}, make);
}

bool ColorConverter::Run(MakeTransform make, const ColorProfile &profile, const ColorData &source,
                         ColorData &destination) const
{
  const PixelFormat &from = source.GetPixelFormat();
  const PixelFormat &to = destination.GetPixelFormat();
  const ColorContext &target = GetTargetColorContext();
  if (source.GetWidth() != destination.GetWidth() || source.GetHeight() != destination.GetHeight())
    return false;
  if (const auto transform = (this->*make)(profile, target, from, to))
    return transform->Convert(source, destination);
  const PixelFormat commonFrom = CommonFormat(from.model);
  const PixelFormat commonTo = CommonFormat(to.model);
  const auto transform = (this->*make)(profile, target, commonFrom, commonTo);
  if (transform == nullptr)
    return false;
  if (source.GetWidth() == 0 || source.GetHeight() == 0)
    return true;
  const std::uint32_t rows = std::clamp(kBandPixels / source.GetWidth() + 1, 1u, source.GetHeight());
  const auto before = CreateColorData(commonFrom, source.GetWidth(), rows);
  const auto after = CreateColorData(commonTo, source.GetWidth(), rows);
  // Alpha has no place in the bands; it is carried beside them.
  std::vector<float> alpha(from.HasAlpha() && to.HasAlpha() ? std::size_t{rows} * source.GetWidth() : 0);
  for (std::uint32_t first = 0; first < source.GetHeight(); first += rows) {
    // The last band reaches back, so that all are of one size: what converts them must not change from band to band.
    const std::uint32_t start = std::min(first, source.GetHeight() - rows);
    const std::uint32_t skipped = first - start;
    const auto sourceRows = ViewOfRows(source, first, rows - skipped);
    const auto destinationRows = ViewOfRows(destination, first, rows - skipped);
    const auto used = ViewOfRows(*before, skipped, rows - skipped);
    const auto made = ViewOfRows(*after, skipped, rows - skipped);
    for (std::size_t i = 0; i < alpha.size() && i < std::size_t{rows - skipped} * source.GetWidth(); ++i)
      alpha[i] = sourceRows->GetSample(static_cast<std::uint32_t>(i / source.GetWidth()),
                                       static_cast<std::uint32_t>(i % source.GetWidth()), from.ColourChannels());
    if (!ConvertByFormula(*sourceRows, *used) || !transform->Convert(*before, *after) ||
        !ConvertByFormula(*made, *destinationRows))
      return false;
    for (std::size_t i = 0; i < alpha.size() && i < std::size_t{rows - skipped} * source.GetWidth(); ++i)
      destinationRows->SetSample(static_cast<std::uint32_t>(i / source.GetWidth()),
                                 static_cast<std::uint32_t>(i % source.GetWidth()), to.ColourChannels(), alpha[i]);
  }
  return true;
}

} // namespace ColorSystem
