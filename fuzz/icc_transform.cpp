// Any bytes as a profile that colours are converted with, both ways, and proofed by: refused or used, never a crash.

#include "zelclr/colorsystem/engines/color_management_system.h"
#include "zelclr/platform/text.h"

#include "fuzz/scratch_file.h"

namespace {

using namespace ColorSystem;

void ConvertOnce(const std::shared_ptr<ColorTransform> &transform, const TransformOptions &options)
{
  if (transform == nullptr)
    return;
  const auto source = CreateColorData(options.source, 5, 3);
  const auto destination = CreateColorData(options.destination, 5, 3);
  for (std::uint32_t x = 0; x < 15; ++x) {
    for (unsigned channel = 0; channel < options.source.ColourChannels(); ++channel)
      source->SetSample(x / 5, x % 5, channel, static_cast<float>((x * (channel + 3)) % 8) / 7.0f);
  }
  transform->Convert(*source, *destination);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
  const auto engine = ColorManagementSystem::Get(ColorManagementModule::LCMS);
  if (engine == nullptr || !engine->Activate())
    return 0;
  // The seeds hold profiles that are whole; one of them is what is converted from and to.
  static const auto other = engine->CreateProfile(L"fuzz/corpus/fuzz_icc_transform/rgb_matrix.icc", false);
  const auto profile = engine->CreateProfile(ZelUtl::WideFromUtf8(ScratchFile(".icc", data, size)), false);
  if (profile == nullptr || other == nullptr)
    return 0;

  // One way through for each input, chosen by its bytes: checking a gamut takes the library long.
  unsigned choice = 0;
  for (std::size_t i = 0; i < size; ++i)
    choice = choice * 31 + data[i];
  const auto intent = static_cast<RenderingIntent>(choice % 4);
  const bool checked = choice / 4 % 8 == 0;

  const PixelFormat own = {profile->GetColorModel(), SampleType::UInt8};
  const PixelFormat rgb = {ColorModel::Rgb, SampleType::UInt8};
  const auto options = [&](bool compensated, bool gamut, const PixelFormat &from, const PixelFormat &to) {
    TransformOptions made;
    made.intent = made.displayIntent = intent;
    made.blackPointCompensation = compensated;
    made.gamutCheck = gamut;
    // Tables of few nodes, for the library is slow under sanitizers.
    made.precision = choice / 32 % 2 == 0 ? TransformPrecision::Automatic : TransformPrecision::Baked;
    made.gridPoints = static_cast<std::uint16_t>(2 + choice / 64 % 4);
    made.source = from;
    made.destination = to;
    return made;
  };
  const auto out = options(true, false, own, rgb), in = options(true, false, rgb, own);
  const auto proof = options(false, checked, rgb, rgb);
  const auto mask = options(false, true, rgb, {ColorModel::Grayscale, SampleType::UInt8});
  ConvertOnce(engine->CreateTransform(*profile, *other, out), out);
  ConvertOnce(engine->CreateTransform(*other, *profile, in), in);
  ConvertOnce(engine->CreateProofTransform(*other, *profile, other.get(), proof), proof);
  if (checked)
    ConvertOnce(engine->CreateProofTransform(*other, *profile, nullptr, mask), mask);
  if (profile->GetChannelCount() == 1) // the arrays of tables are long, and slow under sanitizers
    profile->CreatePsColorSourceArray(intent);
  engine->ClearTransformCache();
  return 0;
}
