#include "zelclr/colorsystem/proofing/proof_color_converter.h"

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colour/colour_models.h"

#include <algorithm>

namespace ColorSystem {

ProofColorConverter::ProofColorConverter(const ColorContext &source, const ProofColorSettings &proof,
                                         const ColorContext &target)
  : ColorConverter(source, target)
{
  SetProofColorSettings(proof);
}

ProofColorConverter::~ProofColorConverter() = default;

void ProofColorConverter::SetProofColorSettings(const ProofColorSettings &settings)
{
  settings_ = settings;
  environment_ = settings_.GetEnvironmentToSimulate();
}

bool ProofColorConverter::GetColorConversionRequired(const ColorModel &from, const ColorModel &to) const
{
  return environment_ != nullptr || ColorConverter::GetColorConversionRequired(from, to);
}

bool ProofColorConverter::IsColorInGamut(const CLR_COLORSPEC &colour) const
{
  if (environment_ == nullptr)
    return ColorConverter::IsColorInGamut(colour);
  CLR_COLORSPEC normalized;
  ColorModel model{};
  double fullScale = 0.0;
  const bool known = colour.IsSpot()
                       ? NormalizeSpotColorSpecToProcess(colour, GetConvertSpotColors().second, normalized)
                       : NormalizeColorSpec(colour, normalized);
  if (!known || !ColorTypeToColorModel(normalized.GetType(), model, fullScale) ||
      GetShouldPreserveNumbers(model, ColorModel::Rgb))
    return true;
  const auto profile = ProfileFor(GetSourceColorContext(), model);
  return profile == nullptr || *profile == *environment_ || GamutCheck(profile, environment_).Holds(normalized);
}

bool ProofColorConverter::GetShouldPreserveNumbers(const ColorModel &from, const ColorModel & /*to*/) const
{
  if (environment_ == nullptr || environment_->GetColorModel() != from)
    return false;
  switch (from) {
  case ColorModel::Rgb:
    return settings_.GetPreserveRgbNumbers();
  case ColorModel::Cmyk:
    return settings_.GetPreserveCmykNumbers();
  case ColorModel::Grayscale:
    return settings_.GetPreserveGrayscaleNumbers();
  default:
    return false;
  }
}

bool ProofColorConverter::ConvertPreserveNumbers(const ColorData &source, ColorData &destination,
                                                 const ColorModel & /*model*/) const
{
  return Run(&ProofColorConverter::CreateManagedTransform, *environment_, source, destination);
}

std::shared_ptr<ColorTransform> ProofColorConverter::CreateColorTransformW(const ColorProfile &source,
                                                                           const ColorContext &target,
                                                                           const PixelFormat &from,
                                                                           const PixelFormat &to) const
{
  if (environment_ == nullptr)
    return CreateManagedTransform(source, target, from, to);
  const auto engine = ColorManagementSystem::GetCurrent();
  const auto display = ProfileFor(target, to.model);
  if (engine == nullptr || display == nullptr)
    return nullptr;
  TransformOptions options;
  options.intent = settings_.GetRenderingIntent();
  options.displayIntent = target.GetRenderingIntent();
  options.source = from;
  options.destination = to;
  return engine->CreateProofTransform(source, *environment_, display.get(), options);
}

bool ProofColorConverter::ConvertProofed(const ColorData &source, ColorData &destination) const
{
  const ColorModel from = source.GetColorModel();
  return GetShouldPreserveNumbers(from, destination.GetColorModel()) ? ConvertPreserveNumbers(source, destination, from)
                                                                     : ConvertToColorProfile(source, destination);
}

bool ProofColorConverter::ConvertColorData(const ColorData &source, ColorData &destination) const
{
  if (environment_ == nullptr)
    return ColorConverter::ConvertColorData(source, destination);
  if (!settings_.GetDisplayGamutWarning())
    return ConvertProofed(source, destination);
  // The mask comes first: both may be views of one buffer.
  const std::vector<std::uint8_t> mask = GetGamutWarningData(source);
  return ConvertProofed(source, destination) && ApplyGamutWarningData(mask, destination);
}

COLORREF ProofColorConverter::ConvertToColorRef(const CLR_COLORSPEC &colour, bool markGamut) const
{
  CLR_COLORSPEC shown;
  if (!Convert(colour, shown, ZelClr::ClrModel::Rgb255, 0))
    return 0;
  std::uint8_t pixel[] = {shown.GetBlue(), shown.GetI255(), shown.GetRed()};
  const auto view = CreateColorData({ColorModel::Rgb, SampleType::UInt8, true, false}, 1, 1, 0, pixel);
  if (markGamut && !settings_.GetDisplayGamutWarning() && !IsColorInGamut(colour)) // else it is marked already
    ApplyGamutWarningData({255}, *view);
  return static_cast<COLORREF>(pixel[2] | pixel[1] << 8 | pixel[0] << 16);
}

std::vector<std::uint8_t> ProofColorConverter::GetGamutWarningData(const ColorData &source) const
{
  std::vector<std::uint8_t> mask(std::size_t{source.GetWidth()} * source.GetHeight());
  const ColorModel model = source.GetColorModel();
  const auto profile = ProfileFor(GetSourceColorContext(), model);
  if (environment_ == nullptr || profile == nullptr || *profile == *environment_ ||
      GetShouldPreserveNumbers(model, ColorModel::Rgb))
    return mask;
  std::vector<float> distances(mask.size());
  if (GamutCheck(profile, environment_).Distances(source, distances))
    std::transform(distances.begin(), distances.end(), mask.begin(), [](float distance) {
      return distance > GamutCheck::kTolerance ? std::uint8_t{255} : std::uint8_t{0};
    });
  return mask;
}

bool ProofColorConverter::ApplyGamutWarningData(const std::vector<std::uint8_t> &mask, ColorData &pixels) const
{
  const auto target = ProfileFor(GetTargetColorContext(), pixels.GetColorModel());
  const auto warning =
    target == nullptr
      ? nullptr
      : settings_.GetGamutWarningLabelColor()->ConvertToColorProfile(*target, RenderingIntent::RelativeColorimetric);
  if (mask.size() < std::size_t{pixels.GetWidth()} * pixels.GetHeight() || warning == nullptr ||
      warning->GetColorModel() != pixels.GetColorModel())
    return false;
  const auto below = static_cast<float>(std::clamp(settings_.GetGamutWarningLabelTransparency(), 0.0, 1.0));
  std::size_t i = 0;
  for (std::uint32_t row = 0; row < pixels.GetHeight(); ++row) {
    for (std::uint32_t column = 0; column < pixels.GetWidth(); ++column) {
      if (mask[i++] == 0)
        continue;
      for (unsigned channel = 0; channel < warning->GetChannelCount(); ++channel) {
        const auto label = static_cast<float>((*warning)[channel]);
        pixels.SetSample(row, column, channel, label + (pixels.GetSample(row, column, channel) - label) * below);
      }
    }
  }
  return true;
}

// --- Display ---------------------------------------------------------------------------------------------------------

DisplayColorConverter::DisplayColorConverter(const ColorContext &source)
  : DisplayColorConverter(source, ColorContext::GetDisplayColorContextImp())
{}

DisplayColorConverter::DisplayColorConverter(const ColorContext &source, const ColorContext &display)
  : ColorConverter(source, display)
{}

DisplayColorConverter::~DisplayColorConverter() = default;

std::shared_ptr<ColorConverter> DisplayColorConverter::Create(const ColorContext &source,
                                                              const ProofColorSettings *proof)
{
  if (proof != nullptr && proof->GetEnvironmentToSimulate() != nullptr)
    return ColorConverter::Create(source, proof, ColorContext::GetDisplayColorContextImp());
  if (GetColorConverterFactoryForTests() != nullptr)
    return ColorConverter::Create(source, nullptr, ColorContext::GetDisplayColorContextImp());
  return std::make_shared<DisplayColorConverter>(source);
}

std::shared_ptr<ColorConverter> DisplayColorConverter::Create(const ColorContext &source, const ViewProofSettings &view)
{
  return Create(source, view.GetDisplayProof() ? &view.GetProofSettings() : nullptr);
}

std::shared_ptr<ColorConverter> ColorConverter::Create(const ColorContext &source, const ProofColorSettings *proof,
                                                       const ColorContext &target)
{
  if (IColorConverterFactory *const factory = GetColorConverterFactoryForTests())
    return factory->Create(source, proof, target);
  if (proof != nullptr && proof->GetEnvironmentToSimulate() != nullptr)
    return std::make_shared<ProofColorConverter>(source, *proof, target);
  return std::make_shared<ColorConverter>(source, target);
}

} // namespace ColorSystem
