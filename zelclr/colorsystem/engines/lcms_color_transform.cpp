#include "zelclr/colorsystem/engines/lcms_color_transform.h"

#include "zelclr/platform/text.h"

#include <algorithm>
#include <array>

namespace ColorSystem {

namespace {

using ZelUtl::LittleCms;
using Format = ZelUtl::LittleCmsFormat;
using Paths = std::vector<std::string>;

/// A buffer of so many pixels is converted by a table that is sampled once (8 ms), any smaller one by the profiles
/// themselves. Fixed, so that what a buffer becomes does not depend on what was converted before: a page of tiles of
/// one size has no seams.
constexpr std::uint64_t kPixelsWorthATable = 65536;

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

ZelUtl::LittleCmsOptions OptionsFor(const TransformOptions &options, bool exact)
{
  return {options.blackPointCompensation, exact, options.source.HasAlpha() && options.destination.HasAlpha()};
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

LcmsColorTransform::LcmsColorTransform(std::shared_ptr<const LittleCms> library, LittleCms::Transform exact,
                                       const TransformOptions &options, Make make, Paths paths)
  : BaseColorTransform(std::move(exact), options, LittleCmsFormatOf(options.source),
                       LittleCmsFormatOf(options.destination)),
    library_(std::move(library)),
    make_(std::move(make)),
    paths_(std::move(paths))
{
  for (const std::string &path : paths_)
    stamps_.push_back(ZelUtl::StampOfFile(path));
}

std::shared_ptr<ColorTransform> LcmsColorTransform::Made(const TransformOptions &options, Make make, Paths paths)
{
  const auto library = LittleCms::Load();
  if (library == nullptr || LittleCmsFormatOf(options.source) == Format::None ||
      LittleCmsFormatOf(options.destination) == Format::None)
    return nullptr;
  auto exact = make(*library, true);
  if (exact == nullptr)
    return nullptr;
  return std::shared_ptr<ColorTransform>(
    new LcmsColorTransform(library, std::move(exact), options, std::move(make), std::move(paths)));
}

std::shared_ptr<ColorTransform> LcmsColorTransform::Create(const ColorProfile &source, const ColorProfile &destination,
                                                           const TransformOptions &options)
{
  Paths paths = {PathOf(source), PathOf(destination)};
  const auto make = [options, paths](const LittleCms &library, bool exact) -> LittleCms::Transform {
    const auto from = library.OpenProfile(paths[0]);
    const auto to = library.OpenProfile(paths[1]);
    if (from == nullptr || to == nullptr)
      return nullptr;
    return library.CreateTransform(from, LittleCmsFormatOf(options.source), to, LittleCmsFormatOf(options.destination),
                                   Number(options.intent), OptionsFor(options, exact));
  };
  return Made(options, make, std::move(paths));
}

std::shared_ptr<ColorTransform> LcmsColorTransform::CreateProof(const ColorProfile &source, const ColorProfile &proof,
                                                                const ColorProfile *display,
                                                                const TransformOptions &options)
{
  Paths paths = {PathOf(source), PathOf(proof)};
  if (display != nullptr)
    paths.push_back(PathOf(*display));
  const ColorModel proofModel = ColorProfile(proof).GetColorModel();
  const auto make = [options, paths, proofModel](const LittleCms &library, bool exact) -> LittleCms::Transform {
    std::vector<LittleCms::Profile> profiles;
    for (const std::string &path : paths) {
      profiles.push_back(library.OpenProfile(path));
      if (profiles.back() == nullptr)
        return nullptr;
    }
    if (!CanProof(library, profiles[0], profiles[1], proofModel, options))
      return nullptr;
    const Format from = LittleCmsFormatOf(options.source);
    const Format to = LittleCmsFormatOf(options.destination);
    const LittleCms::Step in = {profiles[0], Number(options.intent)};
    const LittleCms::Step proofed = {profiles[1], Number(options.intent)};
    if (profiles.size() == 2)
      return library.CreateGamutMask(in, from, proofed, to, OptionsFor(options, exact));
    const std::array<LittleCms::Step, 4> chain = {
      in, proofed, {profiles[1], Number(options.displayIntent)}, {profiles[2], Number(options.displayIntent)}};
    return options.gamutCheck ? library.CreateCheckedChain(chain, from, to, OptionsFor(options, exact))
                              : library.CreateChain(chain, from, to, OptionsFor(options, exact));
  };
  return Made(options, make, std::move(paths));
}

const LittleCms::Transform &LcmsColorTransform::HandleFor(const ColorData &source) const
{
  if (std::uint64_t{source.GetWidth()} * source.GetHeight() < kPixelsWorthATable)
    return handle_;
  std::call_once(fastOnce_, [this] {
    const bool same =
      std::equal(paths_.begin(), paths_.end(), stamps_.begin(),
                 [](const auto &path, const auto &stamp) { return ZelUtl::StampOfFile(path) == stamp; });
    if (same)
      fast_ = make_(*library_, false);
  });
  return fast_ == nullptr ? handle_ : fast_;
}

bool LcmsColorTransform::Convert(const ColorData &source, ColorData &destination) const
{
  if (!Fits(source, destination))
    return false;
  library_->Run(HandleFor(source), source.GetRow(0), destination.GetRow(0), source.GetWidth(), source.GetHeight(),
                source.GetRowStride(), destination.GetRowStride());
  if (!options_.source.HasAlpha()) // afterwards: both may be views of one buffer
    destination.FillAlpha();
  return true;
}

} // namespace ColorSystem
