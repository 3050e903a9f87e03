// A colour and a row of pixels from a screen to a press, through their profiles.

#include <zelclr/zelclr.h>

#include <cstdio>
#include <stdexcept>

using namespace ColorSystem;

namespace {

/// What the numbers of a document mean: one installed profile, by its file name or its description.
ColorContext ContextOf(const wchar_t *profileName)
{
  const auto profile = ColorProfileManager::GetInstance().GetColorProfile(profileName);
  if (profile == nullptr)
    throw std::runtime_error("the profile is not installed");
  return ColorContext(*profile, RenderingIntent::RelativeColorimetric);
}

void Convert(const ColorContext &design, const ColorContext &print)
{
  const auto screen = design.GetRgbColorProfile();
  const auto press = print.GetCmykColorProfile();

  // One colour: channels of 0 to 1 in the space of a profile.
  const RgbColor orange(1.0, 0.5, 0.0, ColorSpace(*screen));
  const auto inks = orange.ConvertToColorProfile(*press, print.GetRenderingIntent());
  if (inks == nullptr)
    throw std::runtime_error("no engine converts between the profiles");
  std::printf("orange:");
  for (unsigned channel = 0; channel < inks->GetChannelCount(); ++channel)
    std::printf(" %.0f %%", 100.0 * (*inks)[channel]);

  // A row of pixels: views of the caller's buffers, and a transform made once for their formats.
  std::uint8_t row[] = {255, 255, 255, 255, 128, 0, 0, 0, 0};
  std::uint8_t plates[3 * 4];
  TransformOptions options;
  options.intent = print.GetRenderingIntent();
  options.source = {ColorModel::Rgb, SampleType::UInt8};
  options.destination = {ColorModel::Cmyk, SampleType::UInt8};
  const auto source = CreateColorData(options.source, 3, 1, 0, row);
  const auto destination = CreateColorData(options.destination, 3, 1, 0, plates);
  const auto transform = ColorManagementSystem::GetCurrent()->CreateTransform(*screen, *press, options);
  if (transform == nullptr || !transform->Convert(*source, *destination))
    throw std::runtime_error("no engine converts the pixels");
  std::printf("\npixels:");
  for (std::size_t i = 0; i < std::size(plates); ++i)
    std::printf(i % 4 == 0 && i > 0 ? " | %d" : " %d", plates[i]);
  std::printf("\n");
}

} // namespace

int main()
{
  try {
    Convert(ContextOf(L"sRGB_v4.icc"), ContextOf(L"ISO Coated (FOGRA39)"));
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
