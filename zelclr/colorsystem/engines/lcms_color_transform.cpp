#include "zelclr/colorsystem/engines/lcms_color_transform.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>

namespace ColorSystem {

namespace {

using ZelUtl::LittleCms;
using Format = ZelUtl::LittleCmsFormat;

/// 8 bits plain, reversed, with alpha, with both; 16 bits plain, reversed.
struct FormatRow
{
  ColorModel model;
  std::array<Format, 4> of8;
  std::array<Format, 2> of16;
};

constexpr std::array<Format, 4> Always(Format format)
{
  return {format, format, format, format};
}

constexpr FormatRow kFormats[] = {
  {ColorModel::Rgb, {Format::Rgb8, Format::Bgr8, Format::Rgba8, Format::Bgra8}, {Format::Rgb16, Format::Bgr16}},
  {ColorModel::Cmyk, Always(Format::Cmyk8), {Format::Cmyk16, Format::Kymc16}},
  {ColorModel::Grayscale, Always(Format::Gray8), {Format::Gray16, Format::None}},
  {ColorModel::Lab, Always(Format::Lab8), {Format::Lab16, Format::None}},
  {ColorModel::Cmy, Always(Format::Cmy8), {Format::Cmy16, Format::None}},
  {ColorModel::Hls, Always(Format::Cmy8), {Format::Cmy16, Format::None}},
  {ColorModel::Hsv, Always(Format::Cmy8), {Format::Cmy16, Format::None}},
  {ColorModel::Hexachrome, Always(Format::Cmyk6_8), {Format::None, Format::None}},
};

std::string PathOf(const ColorProfile &profile)
{
  return ZelUtl::Utf8FromWide(profile.GetPath());
}

std::uint32_t Number(RenderingIntent intent)
{
  return static_cast<std::uint32_t>(intent);
}

ZelUtl::LittleCmsOptions OptionsFor(const TransformOptions &options)
{
  return {options.blackPointCompensation, options.source.HasAlpha() && options.destination.HasAlpha()};
}

/// Whether colours can go into a proof profile and out of it by the intent of the chain and by the relative one, which
/// the library's own check of the gamut goes by. A profile that fails here would give a transform that crashes when it
/// is used.
bool CanProof(const LittleCms &library, const LittleCms::Profile &source, const LittleCms::Profile &proof,
              ColorModel proofModel, const TransformOptions &options)
{
  const auto anywhere = library.NullProfile();
  const Format sourceFormat = LittleCmsFormatOf(options.source);
  const Format proofFormat = LittleCmsFormatOf({proofModel, SampleType::UInt8});
  for (const std::uint32_t intent : {Number(options.intent), Number(RenderingIntent::RelativeColorimetric)}) {
    if (library.CreateTransform(source, sourceFormat, anywhere, Format::Gray8, intent, {}) == nullptr ||
        library.CreateTransform(source, sourceFormat, proof, proofFormat, intent, {}) == nullptr ||
        library.CreateTransform(proof, proofFormat, anywhere, Format::Gray8, intent, {}) == nullptr)
      return false;
  }
  return true;
}

} // namespace

Format LittleCmsFormatOf(const PixelFormat &format)
{
  const auto *const row =
    std::find_if(std::begin(kFormats), std::end(kFormats), [&](const FormatRow &r) { return r.model == format.model; });
  if (row == std::end(kFormats))
    return Format::None;
  switch (format.BytesPerSample()) {
  case 1:
    return row->of8[(format.reversed ? 1u : 0u) + (format.alpha ? 2u : 0u)];
  case 2:
    return format.alpha ? Format::None : row->of16[format.reversed ? 1u : 0u];
  default:
    return Format::None;
  }
}

LcmsColorTransform::LcmsColorTransform(std::shared_ptr<const LittleCms> library, LittleCms::Transform handle,
                                       const TransformOptions &options)
  : BaseColorTransform(std::move(handle), options, LittleCmsFormatOf(options.source),
                       LittleCmsFormatOf(options.destination)),
    library_(std::move(library))
{}

template <class Make>
std::shared_ptr<ColorTransform> LcmsColorTransform::Made(const TransformOptions &options, Make make)
{
  const auto library = LittleCms::Load();
  const Format from = LittleCmsFormatOf(options.source), to = LittleCmsFormatOf(options.destination);
  if (library == nullptr || from == Format::None || to == Format::None)
    return nullptr;
  auto handle = make(*library, from, to);
  if (handle == nullptr)
    return nullptr;
  return std::shared_ptr<ColorTransform>(new LcmsColorTransform(library, std::move(handle), options));
}

std::shared_ptr<ColorTransform> LcmsColorTransform::Create(const ColorProfile &source, const ColorProfile &destination,
                                                           const TransformOptions &options)
{
  return Made(options, [&](const LittleCms &library, Format from, Format to) -> LittleCms::Transform {
    const auto opened = library.OpenProfile(PathOf(source));
    const auto target = library.OpenProfile(PathOf(destination));
    if (opened == nullptr || target == nullptr)
      return nullptr;
    return library.CreateTransform(opened, from, target, to, Number(options.intent), OptionsFor(options));
  });
}

std::shared_ptr<ColorTransform> LcmsColorTransform::CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                                const ColorProfile *display,
                                                                const TransformOptions &options)
{
  const ColorModel proofModel = ColorProfile(proof).GetColorModel();
  return Made(options, [&](const LittleCms &library, Format from, Format to) -> LittleCms::Transform {
    const LittleCms::Step in = {library.OpenProfile(PathOf(source)), Number(options.intent)};
    const LittleCms::Step proofed = {library.OpenProfile(PathOf(proof)), Number(options.intent)};
    if (in.profile == nullptr || proofed.profile == nullptr ||
        !CanProof(library, in.profile, proofed.profile, proofModel, options))
      return nullptr;
    if (display == nullptr)
      return library.CreateGamutMask(in, from, proofed, to, OptionsFor(options));
    const std::array<LittleCms::Step, 4> chain = {
      in,
      proofed,
      {proofed.profile, Number(options.displayIntent)},
      {library.OpenProfile(PathOf(*display)), Number(options.displayIntent)}};
    if (chain[3].profile == nullptr)
      return nullptr;
    return options.gamutCheck ? library.CreateCheckedChain(chain, from, to, OptionsFor(options))
                              : library.CreateChain(chain, from, to, OptionsFor(options));
  });
}

bool LcmsColorTransform::Convert(const ColorData &source, ColorData &destination) const
{
  if (!Fits(source, destination))
    return false;
  library_->Run(handle_, source.GetRow(0), destination.GetRow(0), source.GetWidth(), source.GetHeight(),
                source.GetRowStride(), destination.GetRowStride());
  if (!options_.source.HasAlpha()) // afterwards: both may be views of one buffer
    destination.FillAlpha();
  return true;
}

} // namespace ColorSystem
