#include "cli/profile/profile_colours.h"

#include "zelclr/colorsystem/color_profile_manager.h"

#include <algorithm>

namespace cli {

namespace {

using namespace ColorSystem;

constexpr const wchar_t *kLabProfile = L"CIE Lab.icc";
constexpr const wchar_t *kSrgbProfile = L"sRGB-Placeholder!";
/// Engines convert a row of this length by the profiles themselves, a longer one perhaps by a table sampled from them.
constexpr std::size_t kRowLength = 4096;

std::optional<Channels> Converted(const ColorProfile &from, const ColorProfile &to, std::span<const float> channels,
                                  RenderingIntent intent)
{
  const auto engine = EngineForProfiles();
  if (engine == nullptr)
    return std::nullopt;
  TransformOptions options;
  options.intent = intent;
  options.precision = TransformPrecision::Exact;
  std::shared_ptr<ColorTransform> transform;
  for (const auto &[fromType, toType] : {std::pair{SampleType::UInt16, SampleType::UInt16},
                                         {SampleType::UInt8, SampleType::UInt16},
                                         {SampleType::UInt16, SampleType::UInt8},
                                         {SampleType::UInt8, SampleType::UInt8}})
  {
    options.source = {ColorProfile(from).GetColorModel(), fromType};
    options.destination = {ColorProfile(to).GetColorModel(), toType};
    transform = engine->CreateTransform(from, to, options);
    if (transform != nullptr)
      break;
  }
  if (transform == nullptr)
    return std::nullopt;

  const unsigned fromChannels = options.source.ColourChannels();
  const unsigned toChannels = options.destination.ColourChannels();
  const std::size_t count = channels.size() / fromChannels;
  Channels converted(count * toChannels);
  for (std::size_t first = 0; first < count; first += kRowLength) {
    const auto length = static_cast<std::uint32_t>(std::min(kRowLength, count - first));
    const auto source = CreateColorData(options.source, length, 1);
    const auto destination = CreateColorData(options.destination, length, 1);
    for (std::uint32_t column = 0; column < length; ++column) {
      for (unsigned channel = 0; channel < fromChannels; ++channel)
        source->SetSample(0, column, channel, channels[(first + column) * fromChannels + channel]);
    }
    if (!transform->Convert(*source, *destination))
      return std::nullopt;
    for (std::uint32_t column = 0; column < length; ++column) {
      for (unsigned channel = 0; channel < toChannels; ++channel)
        converted[(first + column) * toChannels + channel] = destination->GetSample(0, column, channel);
    }
  }
  return converted;
}

std::shared_ptr<ColorProfile> Installed(const wchar_t *name)
{
  return ColorProfileManager::GetInstance().GetColorProfile(name);
}

} // namespace

std::shared_ptr<ColorManagementSystem> EngineForProfiles()
{
  auto engine = ColorManagementSystem::GetCurrent();
  return engine == nullptr || engine->GetModule() == ColorManagementModule::Linear ? nullptr : engine;
}

// Samples of Lab are L*/100, (a* + 128)/255, (b* + 128)/255: ICC.1:2022, 6.3.4.2.

std::optional<std::vector<Lab>> LabFromDevice(const ColorProfile &profile, std::span<const float> device,
                                              RenderingIntent intent)
{
  const auto lab = Installed(kLabProfile);
  const auto samples = lab == nullptr ? std::nullopt : Converted(profile, *lab, device, intent);
  if (!samples)
    return std::nullopt;
  std::vector<Lab> colours;
  for (std::size_t i = 0; i + 2 < samples->size(); i += 3) {
    const auto value = [&](std::size_t channel) { return static_cast<double>((*samples)[i + channel]); };
    colours.push_back({value(0) * 100.0, value(1) * 255.0 - 128.0, value(2) * 255.0 - 128.0});
  }
  return colours;
}

std::optional<Channels> DeviceFromLab(const ColorProfile &profile, std::span<const Lab> colours, RenderingIntent intent)
{
  const auto lab = Installed(kLabProfile);
  Channels samples;
  for (const Lab &colour : colours) {
    for (const double value : {colour.l / 100.0, (colour.a + 128.0) / 255.0, (colour.b + 128.0) / 255.0})
      samples.push_back(static_cast<float>(value));
  }
  return lab == nullptr ? std::nullopt : Converted(*lab, profile, samples, intent);
}

std::optional<Channels> DeviceFromSrgb(const ColorProfile &profile, std::span<const float> srgb, RenderingIntent intent)
{
  const auto screen = Installed(kSrgbProfile);
  return screen == nullptr ? std::nullopt : Converted(*screen, profile, srgb, intent);
}

} // namespace cli
