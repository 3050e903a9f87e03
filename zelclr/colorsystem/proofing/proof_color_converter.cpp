#include "zelclr/colorsystem/proofing/proof_color_converter.h"

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/colorsystem/gamut_check.h"
#include "zelclr/colour/colour_models.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

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
  if (!known || !ColorTypeToColorModel(normalized.GetType(), model, fullScale))
    return true;
  const auto check = GamutCheckOf(model);
  return !check || check->Holds(normalized);
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
  const std::vector<std::uint8_t> mask = ScreenGamutWarningData(source);
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

std::optional<GamutCheck> ProofColorConverter::GamutCheckOf(ColorModel model) const
{
  const auto profile = ProfileFor(GetSourceColorContext(), model);
  if (environment_ == nullptr || profile == nullptr || *profile == *environment_ ||
      GetShouldPreserveNumbers(model, ColorModel::Rgb))
    return std::nullopt;
  return GamutCheck(profile, environment_);
}

std::vector<std::uint8_t> ProofColorConverter::GetGamutWarningData(const ColorData &source) const
{
  std::vector<std::uint8_t> mask(std::size_t{source.GetWidth()} * source.GetHeight());
  const auto check = GamutCheckOf(source.GetColorModel());
  std::vector<float> distances(check ? mask.size() : 0);
  if (check && check->Distances(source, distances))
    std::transform(distances.begin(), distances.end(), mask.begin(), [](float distance) {
      return distance > GamutCheck::kTolerance ? std::uint8_t{255} : std::uint8_t{0};
    });
  return mask;
}

std::vector<std::uint8_t> ProofColorConverter::ScreenGamutWarningData(const ColorData &source) const
{
  std::vector<std::uint8_t> mask(std::size_t{source.GetWidth()} * source.GetHeight());
  if (mask.size() < BakingColorTransform::kPixelsBeforeBaking)
    return GetGamutWarningData(source);
  const auto check = GamutCheckOf(source.GetColorModel());
  return !check || check->Mask(source, mask) ? mask : GetGamutWarningData(source);
}

namespace {

/// Moves the samples of marked pixels towards the label, which is in memory's order. `below` is the pixels' share.
template <class Sample>
void Mark(const std::vector<std::uint8_t> &mask, const std::vector<float> &label, float below, ColorData &pixels)
{
  constexpr bool kIsFloat = std::is_same_v<Sample, float>;
  const std::size_t step = pixels.GetPixelFormat().ChannelsPerPixel();
  const std::uint8_t *marked = mask.data();
  for (std::uint32_t row = 0; row < pixels.GetHeight(); ++row) {
    std::uint8_t *bytes = pixels.GetRow(row);
    for (std::uint32_t column = 0; column < pixels.GetWidth(); ++column, bytes += step * sizeof(Sample)) {
      if (*marked++ == 0)
        continue;
      for (std::size_t i = 0; i < label.size(); ++i) {
        Sample sample;
        std::memcpy(&sample, bytes + i * sizeof sample, sizeof sample);
        const float aim = kIsFloat ? label[i] : label[i] * static_cast<float>(std::numeric_limits<Sample>::max());
        const float mixed = aim + (static_cast<float>(sample) - aim) * below;
        sample = static_cast<Sample>(kIsFloat ? mixed : mixed + 0.5f);
        std::memcpy(bytes + i * sizeof sample, &sample, sizeof sample);
      }
    }
  }
}

/// The same for samples of 8 bits, many at once, with shares in 256ths.
template <std::size_t kStep>
void MarkBytes(const std::vector<std::uint8_t> &mask, const std::vector<float> &label, float below, ColorData &pixels)
{
  constexpr std::size_t kAtOnce = 32;
  constexpr std::size_t kSamples = kAtOnce * kStep;
  const auto share = static_cast<std::uint16_t>(below * 256.0f + 0.5f);
  std::array<std::uint16_t, kSamples> aims{};
  std::array<std::uint8_t, kSamples> isColour{};
  for (std::size_t i = 0; i < kSamples; ++i) {
    if (const std::size_t place = i % kStep; place < label.size()) {
      aims[i] = static_cast<std::uint16_t>(std::lround(label[place] * 255.0f) * (256 - share) + 128);
      isColour[i] = 255;
    }
  }
  std::array<std::uint8_t, kSamples> samples{}, marks{};
  const std::uint8_t *marked = mask.data();
  for (std::uint32_t row = 0; row < pixels.GetHeight(); ++row) {
    std::uint8_t *bytes = pixels.GetRow(row);
    for (std::size_t rest = pixels.GetWidth(); rest != 0;) {
      const std::size_t count = std::min(rest, kAtOnce);
      for (std::size_t i = 0; i < count; ++i)
        for (std::size_t place = 0; place < kStep; ++place)
          marks[i * kStep + place] = marked[i];
      std::memcpy(samples.data(), bytes, count * kStep);
      for (std::size_t i = 0; i < kSamples; ++i) {
        const std::uint8_t wanted = marks[i] & isColour[i];
        const auto mixed = static_cast<std::uint8_t>(static_cast<std::uint16_t>(samples[i] * share + aims[i]) >> 8);
        samples[i] = static_cast<std::uint8_t>((mixed & wanted) | (samples[i] & ~wanted));
      }
      std::memcpy(bytes, samples.data(), count * kStep);
      bytes += count * kStep;
      marked += count;
      rest -= count;
    }
  }
}

} // namespace

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
  std::vector<float> label;
  for (unsigned channel = 0; channel < warning->GetChannelCount(); ++channel)
    label.push_back(std::clamp(static_cast<float>((*warning)[channel]), 0.0f, 1.0f));
  if (pixels.GetPixelFormat().IsReversed())
    std::reverse(label.begin(), label.end());
  const PixelFormat &format = pixels.GetPixelFormat();
  if (format.BytesPerSample() == 4)
    Mark<float>(mask, label, below, pixels);
  else if (format.BytesPerSample() == 2)
    Mark<std::uint16_t>(mask, label, below, pixels);
  else if (format.ChannelsPerPixel() == 3)
    MarkBytes<3>(mask, label, below, pixels);
  else if (format.ChannelsPerPixel() == 4)
    MarkBytes<4>(mask, label, below, pixels);
  else
    Mark<std::uint8_t>(mask, label, below, pixels);
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
