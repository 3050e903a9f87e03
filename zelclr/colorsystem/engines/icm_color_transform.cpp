#include "zelclr/colorsystem/engines/icm_color_transform.h"

#include "zelclr/colorsystem/engines/icm_pixels.h"
#include "zelclr/platform/text.h"

#include <algorithm>
#include <cstring>

namespace ColorSystem {

namespace {

namespace System = ZelUtl::SystemColourManagement;

using Internal::CopyPixels;
using Internal::PixelRange;
using System::Bitmap;
using System::ProfileInterface;

// dwFlags of CreateMultiProfileTransform: BEST_MODE and ENABLE_GAMUT_CHECKING; for the Windows Color System WCS_ALWAYS,
// too, since ICC profiles would be converted by the other interface.
constexpr std::uint32_t kBestWithGamut = 0x10003;
constexpr std::uint32_t kAlwaysWcs = 0x200000;

/// Pixels that go through a block of our own at a time: not more than there are.
constexpr std::uint32_t kMostBandPixels = 16384;

std::uint32_t BandPixelsOf(const ColorData &view)
{
  const std::uint64_t all = std::uint64_t{view.GetWidth()} * view.GetHeight();
  return static_cast<std::uint32_t>(std::min<std::uint64_t>(all, kMostBandPixels));
}

System::Profile Opened(const ColorProfile &profile, ProfileInterface with)
{
  return System::OpenProfile(ZelUtl::Utf8FromWide(profile.GetPath()), with);
}

ColorModel ModelOf(const ColorProfile &profile)
{
  return ColorProfile(profile).GetColorModel();
}

bool CanConvert(const PixelFormat &source, const PixelFormat &destination)
{
  return (Internal::BitmapFormatOf(source) && Internal::BitmapFormatOf(destination)) ||
         (Internal::ColourTypeOf(source) && Internal::ColourTypeOf(destination) && System::HasColours());
}

/// Whether the system can be given the rows as they lie. Rows that it writes are padded to 4 bytes: of a view into a
/// larger image that would be its neighbours' pixels, and of the last row memory that is not ours. Between rows without
/// gaps, of a multiple of 4 bytes, there is nothing to pad, and nothing that depends on how strides are understood.
bool IsSolid(const ColorData &view)
{
  return view.GetRowStride() == view.GetWidth() * std::uint64_t{view.GetPixelFormat().BytesPerPixel()} &&
         view.GetRowStride() % 4 == 0;
}

Bitmap BitmapOf(const ColorData &view, System::BitmapFormat format)
{
  return {const_cast<std::uint8_t *>(view.GetRow(0)), format, view.GetRowStride()};
}

/// A row of pixels without gaps, padded to 4 bytes.
struct Band
{
  Band(const ColorData &view, System::BitmapFormat bitmapFormat)
    : format(bitmapFormat),
      pixelSize(view.GetPixelFormat().BytesPerPixel()),
      bytes((std::size_t{BandPixelsOf(view)} * pixelSize + 3) / 4 * 4)
  {}
  Bitmap Row(std::uint32_t pixels) { return {bytes.data(), format, (pixels * pixelSize + 3) / 4 * 4}; }

  System::BitmapFormat format;
  std::uint32_t pixelSize;
  std::vector<std::uint8_t> bytes;
};

/// Calls `convert` with one range of pixels after the other until it fails.
template <class Convert>
bool InBands(const ColorData &view, Convert convert)
{
  const std::uint64_t all = std::uint64_t{view.GetWidth()} * view.GetHeight();
  for (std::uint64_t first = 0; first < all; first += kMostBandPixels) {
    if (!convert(PixelRange{first, static_cast<std::uint32_t>(std::min<std::uint64_t>(all - first, kMostBandPixels))}))
      return false;
  }
  return true;
}

void CopyAlpha(const ColorData &source, ColorData &destination)
{
  const unsigned from = source.GetPixelFormat().ColourChannels();
  const unsigned to = destination.GetPixelFormat().ColourChannels();
  for (std::uint32_t row = 0; row < source.GetHeight(); ++row) {
    for (std::uint32_t column = 0; column < source.GetWidth(); ++column)
      *destination.GetSampleAddress(row, column, to) = *source.GetSampleAddress(row, column, from); // of 8 bits
  }
}

} // namespace

IcmColorTransform::IcmColorTransform(const TransformOptions &options)
  : BaseColorTransform(nullptr, options, Internal::BitmapFormatOf(options.source),
                       Internal::BitmapFormatOf(options.destination))
{}

// --- Making ----------------------------------------------------------------------------------------------------------

std::shared_ptr<ColorTransform> IcmColorTransform::CreateAs(const Kind &kind, const ColorProfile &source,
                                                            const ColorProfile &destination,
                                                            const TransformOptions &options)
{
  if (!CanConvert(options.source, options.destination) || ModelOf(source) != options.source.model ||
      ModelOf(destination) != options.destination.model)
    return nullptr;
  const System::Profile profiles[] = {Opened(source, kind.profiles), Opened(destination, kind.profiles)};
  const auto intent = static_cast<std::uint32_t>(options.intent);
  const std::uint32_t intents[] = {intent, intent};
  const std::shared_ptr<IcmColorTransform> made(new IcmColorTransform(options));
  made->handle_ = System::CreateTransform(profiles, intents, kind.flags, kind.module);
  return made->handle_ == nullptr ? nullptr : made;
}

std::shared_ptr<ColorTransform> IcmColorTransform::CreateProofAs(const Kind &kind, const ColorProfile &source,
                                                                 const ColorProfile &proof, const ColorProfile *display,
                                                                 const TransformOptions &options)
{
  const bool fits =
    display == nullptr
      ? options.destination.model == ColorModel::Grayscale && CanConvert(options.source, options.source)
      : ModelOf(*display) == options.destination.model && CanConvert(options.source, options.destination);
  if (!fits || ModelOf(source) != options.source.model || (display == nullptr && !options.gamutCheck))
    return nullptr;
  std::vector<System::Profile> profiles = {Opened(source, kind.profiles), Opened(proof, kind.profiles)};
  if (display != nullptr)
    profiles.push_back(Opened(*display, kind.profiles));
  if (std::find(profiles.begin(), profiles.end(), nullptr) != profiles.end())
    return nullptr;
  const auto intent = static_cast<std::uint32_t>(options.intent);
  const std::uint32_t intents[] = {intent, intent, static_cast<std::uint32_t>(options.displayIntent)};
  const std::shared_ptr<IcmColorTransform> made(new IcmColorTransform(options));
  if (options.gamutCheck) {
    made->check_ =
      System::CreateTransform(std::span(profiles).first(2), std::span(intents).first(2), kind.flags, kind.module);
    if (made->check_ == nullptr)
      return nullptr;
  }
  if (display == nullptr)
    return made;
  made->handle_ = System::CreateTransform(profiles, intents, kind.flags, kind.module);
  if (made->handle_ != nullptr)
    return made;

  const ColorModel model = ModelOf(proof);
  TransformOptions to = options, from = options;
  to.destination = from.source = made->between_ = {
    model, model == ColorModel::Hexachrome ? SampleType::UInt8 : SampleType::UInt16, false, options.source.HasAlpha()};
  from.intent = options.displayIntent;
  const bool keepsAlpha = !options.destination.HasAlpha() || options.source.HasAlpha() == made->between_.HasAlpha();
  made->steps_ = {CreateAs(kind, source, proof, to), CreateAs(kind, proof, *display, from)};
  return keepsAlpha && made->steps_[0] != nullptr && made->steps_[1] != nullptr ? made : nullptr;
}

// --- Converting ------------------------------------------------------------------------------------------------------

bool IcmColorTransform::TranslateBitmaps(const ColorData &source, ColorData &destination) const
{
  if (IsSolid(source) && IsSolid(destination))
    return System::TranslateBitmap(handle_, source.GetWidth(), source.GetHeight(), BitmapOf(source, *sourceFormat_),
                                   BitmapOf(destination, *destinationFormat_));
  Band before(source, *sourceFormat_), after(destination, *destinationFormat_);
  return InBands(source, [&](const PixelRange &range) {
    CopyPixels(source, range, before.bytes.data());
    if (!System::TranslateBitmap(handle_, range.count, 1, before.Row(range.count), after.Row(range.count)))
      return false;
    CopyPixels(after.bytes.data(), range, destination);
    return true;
  });
}

bool IcmColorTransform::TranslateByColours(const ColorData &source, ColorData &destination) const
{
  const auto from = *Internal::ColourTypeOf(options_.source), to = *Internal::ColourTypeOf(options_.destination);
  std::vector<System::Colour> colours(BandPixelsOf(source));
  std::vector<std::uint16_t> alpha(options_.destination.HasAlpha() ? colours.size() : 0, 0xFFFF);
  return InBands(source, [&](const PixelRange &range) {
    Internal::LoadColours(source, range, colours.data(), alpha);
    if (!System::TranslateColours(handle_, std::span(colours).first(range.count), from, colours.data(), to))
      return false;
    Internal::StoreColours(colours.data(), alpha, range, destination);
    return true;
  });
}

bool IcmColorTransform::TranslateInSteps(const ColorData &source, ColorData &destination) const
{
  const auto rowsOf = [](const ColorData &view, std::uint32_t first, std::uint32_t rows) {
    return CreateColorData(view.GetPixelFormat(), view.GetWidth(), rows, view.GetRowStride(),
                           const_cast<std::uint8_t *>(view.GetRow(first)));
  };
  const std::uint32_t most = std::clamp(kMostBandPixels / source.GetWidth(), 1u, source.GetHeight());
  const auto between = CreateColorData(between_, source.GetWidth(), most);
  for (std::uint32_t first = 0; first < source.GetHeight(); first += most) {
    const std::uint32_t rows = std::min(most, source.GetHeight() - first);
    const auto proofed = rowsOf(*between, 0, rows), shown = rowsOf(destination, first, rows);
    if (!steps_[0]->Convert(*rowsOf(source, first, rows), *proofed) || !steps_[1]->Convert(*proofed, *shown))
      return false;
  }
  return true;
}

bool IcmColorTransform::Translate(const ColorData &source, ColorData &destination) const
{
  if (!steps_.empty())
    return TranslateInSteps(source, destination);
  if (!sourceFormat_ || !destinationFormat_)
    return TranslateByColours(source, destination);
  if (!TranslateBitmaps(source, destination))
    return false;
  // The system is to keep the fourth byte from quads to quads, and does not everywhere.
  if (!options_.source.HasAlpha()) // afterwards: both may be views of one buffer
    destination.FillAlpha();
  else if (options_.destination.HasAlpha() && source.GetRow(0) != destination.GetRow(0))
    CopyAlpha(source, destination);
  return true;
}

std::optional<std::vector<std::uint8_t>> IcmColorTransform::OutOfGamut(const ColorData &source) const
{
  std::vector<std::uint8_t> distances(std::size_t{source.GetWidth()} * source.GetHeight());
  if (sourceFormat_ && IsSolid(source)) {
    const bool checked = System::CheckBitmap(check_, source.GetWidth(), source.GetHeight(),
                                             BitmapOf(source, *sourceFormat_), distances.data());
    return checked ? std::optional(std::move(distances)) : std::nullopt;
  }
  std::optional<Band> band;
  if (sourceFormat_)
    band.emplace(source, *sourceFormat_);
  std::vector<System::Colour> colours(sourceFormat_ ? 0 : BandPixelsOf(source));
  std::vector<std::uint16_t> noAlpha;
  const bool checked = InBands(source, [&](const PixelRange &range) {
    std::uint8_t *const result = distances.data() + range.first;
    if (!band) {
      Internal::LoadColours(source, range, colours.data(), noAlpha);
      return System::CheckColours(check_, std::span(colours).first(range.count),
                                  *Internal::ColourTypeOf(options_.source), result);
    }
    CopyPixels(source, range, band->bytes.data());
    return System::CheckBitmap(check_, range.count, 1, band->Row(range.count), result);
  });
  return checked ? std::optional(std::move(distances)) : std::nullopt;
}

bool IcmColorTransform::Convert(const ColorData &source, ColorData &destination) const
{
  if (!Fits(source, destination))
    return false;
  if (source.GetWidth() == 0 || source.GetHeight() == 0)
    return true;
  std::optional<std::vector<std::uint8_t>> outside;
  if (check_ != nullptr && !(outside = OutOfGamut(source))) // first: both may be views of one buffer
    return false;
  const bool mask = IsMask();
  if (!mask && !Translate(source, destination))
    return false;
  if (!outside)
    return true;
  for (std::size_t i = 0; i < outside->size(); ++i) {
    const bool marked = (*outside)[i] != 0;
    for (unsigned channel = 0; (mask || marked) && channel < options_.destination.ColourChannels(); ++channel)
      destination.SetSample(static_cast<std::uint32_t>(i / source.GetWidth()),
                            static_cast<std::uint32_t>(i % source.GetWidth()), channel, marked ? 1.0f : 0.0f);
  }
  if (mask)
    destination.FillAlpha();
  return true;
}

// --- The three engines -----------------------------------------------------------------------------------------------

const IcmColorTransform::Kind IcmColorTransform::kIcm = {ProfileInterface::Icm, kBestWithGamut, System::kSystemModule};
const IcmColorTransform::Kind IcmColorTransform::kWcs = {ProfileInterface::Wcs, kBestWithGamut | kAlwaysWcs,
                                                         System::kSystemModule};
const IcmColorTransform::Kind IcmColorTransform::kAdobe = {ProfileInterface::Icm, kBestWithGamut, System::kAdobeModule};

std::shared_ptr<ColorTransform> IcmColorTransform::Create(const ColorProfile &source, const ColorProfile &destination,
                                                          const TransformOptions &options)
{
  return CreateAs(kIcm, source, destination, options);
}

std::shared_ptr<ColorTransform> IcmColorTransform::CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                               const ColorProfile *display,
                                                               const TransformOptions &options)
{
  return CreateProofAs(kIcm, source, proof, display, options);
}

std::shared_ptr<ColorTransform> WcsColorTransform::Create(const ColorProfile &source, const ColorProfile &destination,
                                                          const TransformOptions &options)
{
  return CreateAs(kWcs, source, destination, options);
}

std::shared_ptr<ColorTransform> WcsColorTransform::CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                               const ColorProfile *display,
                                                               const TransformOptions &options)
{
  return CreateProofAs(kWcs, source, proof, display, options);
}

std::shared_ptr<ColorTransform> AdobeCmmColorTransform::Create(const ColorProfile &source,
                                                               const ColorProfile &destination,
                                                               const TransformOptions &options)
{
  return CreateAs(kAdobe, source, destination, options);
}

std::shared_ptr<ColorTransform> AdobeCmmColorTransform::CreateProof(const ColorProfile &source,
                                                                    const ColorProfile &proof,
                                                                    const ColorProfile *display,
                                                                    const TransformOptions &options)
{
  return CreateProofAs(kAdobe, source, proof, display, options);
}

} // namespace ColorSystem
