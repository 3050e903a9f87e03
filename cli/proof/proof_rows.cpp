#include "cli/proof/proof_rows.h"

#include "cli/failure.h"
#include "cli/image/alpha.h"

#include <algorithm>
#include <future>
#include <thread>
#include <vector>

namespace cli {

namespace {

using namespace ColorSystem;

ColorContext ContextOf(ColorModel model, const std::shared_ptr<ColorProfile> &profile)
{
  ColorContext context = ColorContext::GetApplicationDefaultColorContext();
  context.SetColorProfile(model, profile);
  return context;
}

/// The mark is laid on here, by the mask that is counted.
ProofColorSettings WithoutWarning(const ProofColorSettings &settings)
{
  ProofColorSettings plain = settings;
  plain.SetDisplayGamutWarning(false);
  return plain;
}

/// One of the pictures that lie beside each other in the rows.
std::unique_ptr<ColorData> Pane(const ImageInfo &result, std::uint32_t width, std::uint32_t number, MadeRows &made)
{
  const std::size_t left = std::size_t{number} * width * result.format.BytesPerPixel();
  return CreateColorData(result.format, width, made.rows, static_cast<std::uint32_t>(result.ColourBytesPerRow()),
                         made.colours.data() + left);
}

void Convert(const ColorConverter &converter, const ColorData &source, ColorData &destination)
{
  if (!converter.ConvertColorData(source, destination))
    throw Failure(ExitCode::Missing, "the engine could not convert the colours");
}

/// By strips on all processors, since it is most of the work; no pixel's answer depends on its neighbours.
std::vector<std::uint8_t> GamutMask(const ProofColorConverter &converter, const PixelFormat &format,
                                    std::uint32_t width, const Band &band)
{
  const std::size_t rowBytes = std::size_t{width} * format.BytesPerPixel();
  const std::uint32_t workers = std::clamp(std::thread::hardware_concurrency(), 1u, band.rows);
  std::vector<std::future<std::vector<std::uint8_t>>> strips;
  for (std::uint32_t i = 0; i < workers; ++i) {
    const auto top = static_cast<std::uint32_t>(std::uint64_t{band.rows} * i / workers);
    const auto bottom = static_cast<std::uint32_t>(std::uint64_t{band.rows} * (i + 1) / workers);
    strips.push_back(std::async(std::launch::async, [=, &converter] {
      return converter.GetGamutWarningData(*CreateColorData(
        format, width, bottom - top, static_cast<std::uint32_t>(rowBytes), band.colours + top * rowBytes));
    }));
  }
  std::vector<std::uint8_t> mask;
  for (auto &strip : strips) {
    const auto part = strip.get();
    mask.insert(mask.end(), part.begin(), part.end());
  }
  return mask;
}

/// The original comes first as people see the image, on the left or on top; its orientation may turn the rows.
bool ProofIsFirstInRows(unsigned orientation)
{
  return orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
}

} // namespace

ImageInfo ProofImageOf(const ImageInfo &image, ProofView view, ImageKind kind)
{
  ImageInfo result = image;
  result.isSrgb = false;
  result.profile.clear();
  result.format.model = view == ProofView::Mask ? ColorModel::Grayscale : ColorModel::Rgb;
  if (view == ProofView::Mask || kind == ImageKind::Jpeg) {
    result.format.type = SampleType::UInt8;
    result.hasAlpha = false;
  }
  if (view == ProofView::SideBySide)
    result.width *= 2;
  return result;
}

ProofRows::ProofRows(const ImageInfo &image, const std::shared_ptr<ColorProfile> &profile, const ProofOptions &options,
                     const ImageInfo &result)
  : image_(image),
    result_(result),
    view_(options.view),
    warns_(options.settings.GetDisplayGamutWarning()),
    proof_(ContextOf(image.format.model, profile), WithoutWarning(options.settings),
           ColorContext(*options.display,
                        options.paper ? RenderingIntent::AbsoluteColorimetric : RenderingIntent::RelativeColorimetric)),
    original_(ContextOf(image.format.model, profile),
              ColorContext(*options.display, RenderingIntent::RelativeColorimetric))
{}

bool ProofRows::Works() const
{
  const auto pixel = CreateColorData(image_.format, 1, 1);
  const auto shown = CreateColorData({ColorModel::Rgb, image_.format.type}, 1, 1);
  return original_.ConvertColorData(*pixel, *shown) && proof_.ConvertColorData(*pixel, *shown);
}

std::vector<std::uint8_t> ProofRows::MaskOf(const Band &band)
{
  auto mask = GamutMask(proof_, image_.format, image_.width, band);
  const unsigned bytes = image_.format.BytesPerSample();
  for (std::size_t i = 0; i < mask.size(); ++i) {
    const bool seen = band.alpha == nullptr || std::any_of(band.alpha + i * bytes, band.alpha + (i + 1) * bytes,
                                                           [](std::uint8_t byte) { return byte != 0; });
    if (!seen)
      mask[i] = 0;
    seen_ += seen;
    outOfGamut_ += mask[i] != 0;
  }
  return mask;
}

void ProofRows::PutAlpha(const Band &band, MadeRows &made) const
{
  const unsigned from = image_.format.BytesPerSample();
  const unsigned to = result_.format.BytesPerSample();
  made.alpha.resize(std::size_t{made.rows} * result_.width * to);
  std::uint8_t *out = made.alpha.data();
  for (std::uint32_t row = 0; row < made.rows; ++row) {
    for (std::uint32_t left = 0; left < result_.width; left += image_.width) {
      ConvertAlpha(image_.width, from, to, band.alpha + std::size_t{row} * image_.width * from, out);
      out += std::size_t{image_.width} * to;
    }
  }
  if (!result_.hasAlpha)
    FlattenOnWhite(std::size_t{made.rows} * result_.width, result_.format, made.alpha.data(), made.colours.data());
}

void ProofRows::Make(const Band &band, MadeRows &made)
{
  auto mask = MaskOf(band);
  if (view_ == ProofView::Mask) {
    made.colours = std::move(mask);
    return;
  }
  made.colours.resize(band.rows * result_.ColourBytesPerRow());
  const auto source = CreateColorData(image_.format, image_.width, band.rows,
                                      static_cast<std::uint32_t>(image_.ColourBytesPerRow()), band.colours);
  const bool both = view_ == ProofView::SideBySide;
  const bool proofFirst = !both || ProofIsFirstInRows(image_.orientation);
  const auto proof = Pane(result_, image_.width, proofFirst ? 0 : 1, made);
  Convert(proof_, *source, *proof);
  if (warns_ && !proof_.ApplyGamutWarningData(mask, *proof))
    throw Failure(ExitCode::Missing, "the colour of the warning cannot be had on the display");
  if (both)
    Convert(original_, *source, *Pane(result_, image_.width, proofFirst ? 1 : 0, made));
  if (image_.hasAlpha)
    PutAlpha(band, made);
}

} // namespace cli
